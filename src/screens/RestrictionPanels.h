#pragma once

#include "settings/RestrictionLists.h"

#include <QString>

#include <functional>

namespace marlet {

class Control;
class Options;

// The two panels of the "Client Option" tab: "Program Restriction" (the allowed and the forbidden
// programs with their switches) and "Site/Caption Restriction" (the captions with theirs). Entries
// are written the moment they are added or removed; the five switches are saved with the tab.
class RestrictionPanels
{
public:
    explicit RestrictionPanels(Options& screen);

    // Creates both panels inside the tab's panel, hidden; `open` shows one in place of the tab's
    // own controls, or the tab's own again for a null panel.
    void build(Control& tabPanel, std::function<void(Control*)> open);
    // Reads the five switches; a program switch turned on counts as a change for the clients.
    void load();
    // Writes MessClose, SiteRestrict, ApplyIE, Restrict and Disallow, in this order.
    void save();

private:
    using ProgramFields = restrictions::ListControls<restrictions::ProgramList>;

    void buildPrograms(Control& panel, const ProgramFields& fields, const char* switchCaption);
    void buildCaptions(Control& panel);

    void openPrograms();
    void openCaptions();
    void switchPrograms(const ProgramFields& fields);
    void addProgram(const ProgramFields& fields);
    void removeProgram(const ProgramFields& fields);
    void switchCaptions();
    void addCaption();
    void removeCaption();

    bool loaded() const;
    // A change the clients must be told of: ClientUp, and Apply once the tab is loaded.
    void clientsChanged();
    void setClientUp();
    restrictions::Store store() const;

    Options& m_screen;
    std::function<void(Control*)> m_open;
};

} // namespace marlet
