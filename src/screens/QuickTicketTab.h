#pragma once

#include "screens/OptionsTab.h"

namespace marlet {

class Options;

// The Quick-Ticket page of the settings screen: the switch of quick-ticket generation and the
// kinds of ticket the generate screen offers in that mode, one text a kind, written anew to table
// QuickT at Apply.
class QuickTicketTab : public OptionsTab
{
public:
    explicit QuickTicketTab(Options& screen);

    void build(Control& panel) override;
    void load() override;
    void apply(Recordset& options) override;

private:
    void add();
    void remove();

    Options& m_screen;
};

} // namespace marlet
