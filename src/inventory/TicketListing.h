#pragma once

namespace marlet {

class Control;
class GenAcc;

// The "Existing Ticket" tab's selection: five options, two entry boxes and "&View Selection",
// which lists the chosen tickets in the screen's grid; the grid's row click and context menu; and
// the text commands beside the grid.
class TicketListing
{
public:
    explicit TicketListing(GenAcc& screen);

    // Creates the tab's selection controls, menu and text commands in the frame.
    static void build(GenAcc& screen, Control& frame);

    // "&View Selection".
    void viewSelection();

private:
    void chooseOption(int option);
    void rowClicked();
    void gridMouseDown(int button);

    GenAcc& m_screen;
};

} // namespace marlet
