#pragma once

#include "platform/Form.h"

#include <initializer_list>

namespace marlet {

struct General;

// The generate screen: five tabs (new batch, custom ticket, membership ticket, existing tickets,
// settings) over one ticket grid, a progress panel and the close button that turns into "Stop"
// while a long operation runs. This class builds the controls and keeps the screen's own rules;
// the work behind the big buttons lives in classes of its own that act on this screen.
class GenAcc : public Form
{
public:
    explicit GenAcc(General& session);
    ~GenAcc() override;

    General& session() const { return m_session; }

    // Set by the "Stop" button, read by long operations before each row.
    bool StopRequested = false;

    // The progress panel over the frames, shared by every long operation of the screen.
    void StartProgress();
    void EndProgress();
    void ProgressAdjust();
    // A long operation runs: the close button reads "Stop".
    bool busy() const;

    // The ticket grid with its header row only.
    void resetTicketGrid();
    // The administrator-power rule for the destructive tools of this screen.
    bool restricted() const;

protected:
    void build() override;

private:
    void buildFrame();
    void buildNewTab(Control& frame);
    void buildCustomTab(Control& frame);
    void buildMemberTab(Control& frame);
    void buildExistingTab(Control& frame);
    void buildSettingsTab(Control& frame);
    void buildProgressPanel();

    void load();
    void fillLists();
    void loadLastBatch();
    void loadQuickTickets();
    void activate();
    // Sets time pickers from the general night time.
    void setPickers(std::initializer_list<const char*> starts, std::initializer_list<const char*> ends);

    void changeTab();
    void closeOrStop();
    void showHelp();
    void savePrefix();
    void saveNightTime(bool start);
    void saveSettingsTab();
    void openPrintSettings();
    void printExistingTickets();
    void openRecycleBin();

    General& m_session;
};

} // namespace marlet
