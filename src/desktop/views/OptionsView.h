#pragma once

class QWidget;

namespace marlet {

class Form;
class ViewWidgets;

namespace views {

// The settings screen: the tab bar over the pages' panels (only the chosen one shows), with the
// General, User Account, Ticket Setting, Quick-Ticket and Include/Exclude pages laid out, and the
// "Settings" field, Help, Ok, Cancel and Apply below.
void buildOptionsView(Form& form, QWidget& root, ViewWidgets& widgets);

} // namespace views

} // namespace marlet
