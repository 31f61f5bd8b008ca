#pragma once

#include "screens/OptionsTab.h"
#include "screens/RestrictionPanels.h"

#include <QString>

#include <vector>

namespace marlet {

class Options;
class SessionPreferences;

// The "Client Option" tab of the settings screen: the client settings list with the explanation of
// the picked switch, the number of browsers, the colour, "Restore to Default Setting", and the two
// restriction panels that show in place of the tab's own controls.
class ClientOptionTab : public OptionsTab
{
public:
    explicit ClientOptionTab(Options& screen);

    void build(Control& panel) override;
    void load() override;
    void apply(Recordset& options) override;

private:
    SessionPreferences settings() const;

    void buildList(Control& panel);
    void buildExplanation(Control& panel);
    void buildColour(Control& panel);
    void buildButtons(Control& panel);

    void pickSwitch();
    void followTicks();
    void chooseColour();
    void restoreDefaults();
    // Shows one of the restriction panels in place of the tab's own controls, or these again.
    void showPanel(Control* panel);

    Options& m_screen;
    RestrictionPanels m_restrictions;
    // The tab's own controls, hidden while a restriction panel shows.
    std::vector<Control*> m_ownControls;
    // The ticks as last seen, so that a click that changed one is told from a mere pick.
    std::vector<bool> m_ticks;
    int m_colour = 0;
};

} // namespace marlet
