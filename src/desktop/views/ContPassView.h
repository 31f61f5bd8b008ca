#pragma once

class QWidget;

namespace marlet {

class Form;
class ViewWidgets;

namespace views {

// The password gate in front of guarded settings: the password row over OK and Cancel.
void buildContPassView(Form& form, QWidget& root, ViewWidgets& widgets);

} // namespace views

} // namespace marlet
