#pragma once

namespace marlet {

class Form;
class WorkHost;

// The "Existing Ticket" tab's selection: five options and two entry boxes, "&View Selection", which
// lists the chosen tickets in the screen's grid, and the grid's row click and context menu.
class TicketListing
{
public:
    explicit TicketListing(WorkHost& host);

    // An option of the selection was chosen (1 "&All" to 5 "By Ticket Group").
    void chooseOption(int option);
    // "&View Selection".
    void viewSelection();
    // A click on a grid row copies its minutes or group into the entry box of the option chosen.
    void rowClicked();
    // The right button opens the grid's context menu on the row under the mouse.
    void gridMouseDown(int button);

private:
    WorkHost& m_host;
    Form& m_form;
};

} // namespace marlet
