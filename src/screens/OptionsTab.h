#pragma once

namespace marlet {

class Control;
class Recordset;

// One page of the settings screen: a tab's panel, or the SMS panel that no tab shows. The screen
// builds every page's controls when it is built, runs a page's load on the first visit of its
// tab, and runs the checks and the saving of the pages that were loaded, in the order of their
// flags, when the operator applies.
class OptionsTab
{
public:
    virtual ~OptionsTab() = default;

    // Creates the page's controls inside its panel. Runs on every build of the screen, before any
    // page is loaded, so a page's rules may reach a field of another page.
    virtual void build(Control& panel) = 0;
    // Fills the fields from the stores. Its flag is still clear, so filling marks no change.
    virtual void load() = 0;
    // Runs every time the page's tab is selected, before the load of the first visit.
    virtual void selected() { }
    // Runs first when the operator applies, before anything is saved: false stops the saving (the
    // page has shown its message and put the focus where it belongs).
    virtual bool check() { return true; }
    // Saves the page. `options` is the row of table Options opened for update: open for the pages
    // of flags 0 to 6, whose columns go out in the row's one Update after the last of them, and
    // closed by then for the later pages.
    virtual void apply(Recordset& options) = 0;
};

} // namespace marlet
