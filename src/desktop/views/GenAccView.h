#pragma once

class QWidget;

namespace marlet {

class Form;
class ViewWidgets;

namespace views {

// The generate screen: the tab bar over the five frames (only the chosen one shows), the progress
// panel in front of them while a long operation runs, the ticket grid, and Help and Close/Stop.
void buildGenAccView(Form& form, QWidget& root, ViewWidgets& widgets);

} // namespace views

} // namespace marlet
