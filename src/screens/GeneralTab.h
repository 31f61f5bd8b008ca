#pragma once

#include "screens/OptionsTab.h"

#include <QString>

namespace marlet {

class Options;
class SessionPreferences;

// The General tab of the settings screen: ticket prefix and currency, the switches of the server's
// behaviour towards clients, the server's port and the adaptor it binds to, the character set of
// generated tickets, and the login limit of generated tickets.
class GeneralTab : public OptionsTab
{
public:
    explicit GeneralTab(Options& screen);

    void build(Control& panel) override;
    void load() override;
    // Puts a port that is no number back to 1001 and writes SimComp from it; then refuses a blank
    // bind text and a login limit that is no number.
    bool check() override;
    void apply(Recordset& options) override;

    // What is stored for a ticket prefix: a prefix longer than three characters gives way to "NVT".
    static QString storedPrefix(const QString& prefix);
    // A port that the server may listen on: 1001, or 1006 to 63553 but 2000. A text that a 16-bit
    // integer cannot hold is refused too, whatever the bound says.
    static bool portAllowed(const QString& port);

private:
    SessionPreferences settings() const;

    void buildTicketFields(Control& panel);
    void buildClientSwitches(Control& panel);
    void buildBindFields(Control& panel);
    void buildPassGenFields(Control& panel);
    void buildPortFields(Control& panel);
    void buildLoginLimit(Control& panel);

    void loadBind();
    void loadPassGenType();
    void loadPort();

    void showBindChoice();
    void markPassGenType();
    void leaveCurrency();
    void leaveBindText();
    void leaveServerPort();
    void leaveLoginLimit();

    void saveBind();

    Options& m_screen;
};

} // namespace marlet
