#pragma once

class QWidget;

namespace marlet {

class Form;
class ViewWidgets;

namespace views {

// The administrator logins in front of the generate screen: one or two frames of user name and
// password beside OK and Cancel. The second frame shows only when the form asks for two approvers.
void buildGenPasstoAccsView(Form& form, QWidget& root, ViewWidgets& widgets);

} // namespace views

} // namespace marlet
