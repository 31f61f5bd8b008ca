#pragma once

#include "screens/OptionsTab.h"

namespace marlet {

class Options;
class SessionPreferences;

// The Ticket Setting page of the settings screen: the night time frame, the texts printed on
// tickets, ticket group activation, the print size (written the moment it is picked) and the port
// on which another server may use this server's database.
class TicketSettingTab : public OptionsTab
{
public:
    explicit TicketSettingTab(Options& screen);

    void build(Control& panel) override;
    void load() override;
    // Refuses a night time start or end that is no time of day.
    bool check() override;
    void apply(Recordset& options) override;

private:
    SessionPreferences settings() const;

    void buildTimeFields(Control& panel);
    void buildTextFields(Control& panel);
    void buildPrintFields(Control& panel);
    void buildExternalFields(Control& panel);

    void loadActivation();
    void clearTexts();
    void clickActivation();
    void showPrintSizes();
    void pickPrintSize(int printType);
    void leaveExternalPort();

    Options& m_screen;
};

} // namespace marlet
