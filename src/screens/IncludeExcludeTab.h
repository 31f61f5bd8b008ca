#pragma once

#include "screens/OptionsTab.h"
#include "settings/RestrictionLists.h"

#include <QString>

namespace marlet {

class Options;

// The "Include/Exclude" tab of the settings screen: the machines excluded from all restrictions,
// and the ticket separation with the machines that serve reserved tickets. Machines are written
// the moment they are added or removed; the separation switches and prefixes at Apply.
class IncludeExcludeTab : public OptionsTab
{
public:
    explicit IncludeExcludeTab(Options& screen);

    void build(Control& panel) override;
    void load() override;
    void apply(Recordset& options) override;

private:
    // One list of machines with its name field and buttons.
    using ClientFields = restrictions::ListControls<restrictions::ClientList>;

    void buildClients(Control& frame, const ClientFields& fields);
    void buildSeparation(Control& panel);

    void followName(const ClientFields& fields);
    void addClient(const ClientFields& fields);
    void removeClient(const ClientFields& fields);
    void leavePrefix();
    // An excluded machine added or removed tells the clients; a reserved one only marks a change.
    void listChanged(const ClientFields& fields);

    Options& m_screen;
};

} // namespace marlet
