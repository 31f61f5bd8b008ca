#pragma once

#include "platform/Form.h"
#include "screens/OptionsTab.h"

#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace marlet {

class ScreenOpener;
class Session;

// The settings screen: ten tabs over their panels, each page loaded on the first visit of its tab,
// one Apply that checks and then saves the loaded pages in a fixed order, Ok, Cancel, and the
// question about the clients when the screen closes. The pages themselves are OptionsTab objects.
class Options : public Form
{
public:
    // Tab-loaded flags: 0 to 9 belong to the tabs, 10 to the SMS panel, 11 to 13 to nothing.
    static constexpr int FlagCount = 14;
    static constexpr int SmsFlag = 10;

    explicit Options(Session& session);
    // With the screens it opens: the password gate in front of guarded settings.
    Options(Session& session, ScreenOpener& screens);
    ~Options() override;

    Session& session() const { return m_session; }
    // Shows the password gate for the mode set in PassMode. Without a gate to show, PassMode comes
    // back 0: a gate that cannot ask never grants.
    void askPassword();

    bool tabLoaded(int flag) const;
    // A change of the field enables Apply, once the page of that flag has been loaded: the page's
    // own load changes its fields while the flag is still clear, and marks nothing.
    void trackChanges(Control& field, int flag);
    // A change made by a page's own operation (a list entry added or removed, texts cleared):
    // enables Apply once the page of that flag has been loaded, as a change of a field does.
    void fieldChanged(int flag);
    // Selects the tab that shows the page of that flag, wherever it stands. False when no tab does.
    bool selectTab(int flag);
    // The Apply button's work: the checks of the loaded pages, then their saving.
    void applySettings();
    // Forgets which pages were loaded and empties the lists and combo boxes, then shows the first tab
    // loaded anew, with Apply disabled: every page reads the stores again on its next visit.
    void reloadPages();

    // The settings menu: the settings and the lists written to a settings file, and read back.
    void saveToFile();
    void loadFromFile();

protected:
    void build() override;

private:
    void buildTabs();
    void buildButtons();
    void buildSettingsField();

    void open();
    void switchTab();
    bool checkPages();
    void savePages();
    void ok();
    void askAboutClients();
    void setApplyEnabled(bool enabled);

    Session& m_session;
    ScreenOpener* m_screens = nullptr;
    std::array<bool, FlagCount> m_tabLoaded {};
    // The page flag of each tab, by position; the User Account tab may be left out.
    std::vector<int> m_tabFlags;
    std::array<std::unique_ptr<OptionsTab>, SmsFlag + 1> m_pages;
    std::array<Control*, SmsFlag + 1> m_panels {};
    // Each tracked field's own rule and the flag of its page. The field's handler refers to its
    // entry, which stays where it is while the controls live: a handler of two pointers needs no
    // allocation of its own, and the screen tracks some ninety fields on every opening.
    struct TrackedField
    {
        std::function<void()> rule;
        int flag;
    };
    std::deque<TrackedField> m_tracked;
};

} // namespace marlet
