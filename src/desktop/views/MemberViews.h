#pragma once

class QGroupBox;
class QWidget;

namespace marlet {

class Form;
class ViewWidgets;

namespace views {

class ViewKit;

// The member's personal fields in two columns with the picture and its commands beside them, as
// the member record and the generate screen's member page share them; the hint `Label8` above.
QWidget* memberFields(ViewKit& kit, QWidget* parent);
// The frame `Frame28`, "Ticket Information": the ticket's user name and the display-only fields.
QGroupBox* memberTicketFrame(ViewKit& kit, QWidget* parent);

// The member record: the personal fields on the left, the ticket information and the member's
// settings taking turns on the right, "<< Back" and the screen's buttons at the foot.
void buildMemberinfoView(Form& form, QWidget& root, ViewWidgets& widgets);
// The member directory: the search along the top, the grid with the row's picture and the buttons
// beside it, "<< Back" at the foot.
void buildMemberListView(Form& form, QWidget& root, ViewWidgets& widgets);

} // namespace views

} // namespace marlet
