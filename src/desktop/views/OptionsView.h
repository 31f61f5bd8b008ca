#pragma once

class QWidget;

namespace marlet {

class Form;
class ViewWidgets;

namespace views {

// The settings screen: the tab bar over the pages' panels (only the chosen one shows), with the
// General page laid out in two columns, the Client Option page with its restriction panels in one
// cell, the Include/Exclude page, and the "Settings" field, Help, Ok, Cancel and Apply below.
void buildOptionsView(Form& form, QWidget& root, ViewWidgets& widgets);

} // namespace views

} // namespace marlet
