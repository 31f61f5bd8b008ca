#pragma once

class QWidget;

namespace marlet {

class Form;
class ViewWidgets;

namespace views {

// The settings screen: the tab bar over the pages' panels (only the chosen one shows): General in
// two columns, User Account, Ticket Setting, Client Option with its restriction panels in one cell,
// Quick-Ticket, Include/Exclude with the café list; the "Settings" field, Help, Ok, Cancel and Apply
// below.
void buildOptionsView(Form& form, QWidget& root, ViewWidgets& widgets);

} // namespace views

} // namespace marlet
