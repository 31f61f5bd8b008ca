#pragma once

class QWidget;

namespace marlet {

class Form;
class ViewWidgets;

namespace views {

// The recycle bin screen: the list of deleted tickets beside the report box in their frame, the
// utility buttons in a column beside them with "&Close Recycle" at its foot, and the status text
// with the progress bar along the bottom.
void buildRecycleBinView(Form& form, QWidget& root, ViewWidgets& widgets);

} // namespace views

} // namespace marlet
