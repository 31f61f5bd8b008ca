#pragma once

#include "platform/Form.h"
#include "session/WorkHost.h"

#include <initializer_list>

namespace marlet {

class ScreenOpener;
class Session;

// The generate screen: five tabs (new batch, custom ticket, membership ticket, existing tickets,
// settings) over one ticket grid, a progress panel and the close button that turns into "Stop"
// while a long operation runs. This class builds the controls and keeps the screen's own rules;
// the work behind the big buttons lives in classes of its own that run on this screen as their
// WorkHost.
class GenAcc : public Form, public WorkHost
{
public:
    GenAcc(Session& session, ScreenOpener& screens);
    ~GenAcc() override;

    using Form::platform;

    // WorkHost
    Session& session() const override { return m_session; }
    Form& form() override { return *this; }
    void StartProgress() override;
    void EndProgress() override;
    void ProgressAdjust() override;
    void setProgressText(const QString& text) override;
    Control& progressBar() override;
    Control& ticketGrid() override;

    // A long operation runs: the close button reads "Stop", and tabs and closing wait for it.
    bool busy() const { return m_busy; }
    // The administrator-power rule for the destructive tools of this screen.
    bool restricted() const;

protected:
    void build() override;

private:
    // The tabs and panels, built in GenAccTabs.cpp.
    void buildFrame();
    void buildNewTab(Control& frame);
    void buildCustomTab(Control& frame);
    void buildMemberTab(Control& frame);
    void buildMemberPage();
    void buildExistingTab(Control& frame);
    void buildSelection(Control& frame);
    void buildGridMenu();
    void buildTextCommands(Control& frame);
    void buildSettingsTab(Control& frame);
    void buildProgressPanel();

    void load();
    void fillLists();
    void loadLastBatch();
    void loadQuickTickets();
    void activate();
    // Sets time pickers from the general night time.
    void setPickers(std::initializer_list<QString> starts, std::initializer_list<QString> ends);

    void changeTab();
    void closeOrStop();
    void showHelp();
    void savePrefix();
    void saveNightTime(bool start);
    void saveSettingsTab();
    void openPrintSettings();
    void printExistingTickets();

    Session& m_session;
    ScreenOpener& m_screens;
    bool m_busy = false;
};

} // namespace marlet
