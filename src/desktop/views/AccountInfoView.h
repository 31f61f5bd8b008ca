#pragma once

class QWidget;

namespace marlet {

class Form;
class ViewWidgets;

namespace views {

// The ticket information screen: the "Search By" choice and the entry with "&Search" along the
// top, the report below, taking what room the window gains, and the status line with "&Print" and
// "&Close" at the foot.
void buildAccountInfoView(Form& form, QWidget& root, ViewWidgets& widgets);

} // namespace views

} // namespace marlet
