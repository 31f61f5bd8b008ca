#pragma once

#include "screens/OptionsTab.h"

#include <QString>

namespace marlet {

class Options;
class SessionPreferences;

// The Print Monitor tab of the settings screen: whether the server watches the clients' printing,
// in which mode (authorization, deduction or no printing), how the deduction bills (minutes or cost
// a page, with a rate of its own for one printer), and what the clients do around a print.
class PrintMonitorTab : public OptionsTab
{
public:
    explicit PrintMonitorTab(Options& screen);

    void build(Control& panel) override;
    void selected() override;
    void load() override;
    void apply(Recordset& options) override;

private:
    SessionPreferences settings() const;

    void buildModes(Control& panel);
    void buildBill(Control& panel);
    void buildClientBoxes(Control& panel);

    // The rules by which the fields switch each other on and off.
    void masterSwitch();
    void pickMode();
    void pickBill();

    Options& m_screen;
};

} // namespace marlet
