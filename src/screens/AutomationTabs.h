#pragma once

#include "screens/OptionsTab.h"

#include <QString>

namespace marlet {

class Options;

// The Automated Action tab: the ping monitor (the address to ping, how many failures make the host
// act, pausing the clients, refusing logins, the messages to send) and the shutdown at a set time.
class AutomatedActionTab : public OptionsTab
{
public:
    explicit AutomatedActionTab(Options& screen);

    void build(Control& panel) override;
    void load() override;
    void apply(Recordset& options) override;

    // What is saved for a ping timeout typed or picked: the number the text begins with.
    static QString timeoutValue(const QString& listText);

private:
    void buildPing(Control& panel);
    void buildMessages(Control& panel);
    void buildShutdown(Control& panel);

    void switchPing();
    void switchReactions();
    // A field that may not be left blank or not numeric gets `fallback` back, after the warning.
    void putBack(const QString& field, const QString& message, const QString& fallback);

    Options& m_screen;
};

// The Maintenance tab: the clean-up and backup schedules, the recycle bin's size and what it keeps,
// and the buttons that run clean-up, backup and restore at once through the maintenance component.
class MaintenanceTab : public OptionsTab
{
public:
    explicit MaintenanceTab(Options& screen);

    void build(Control& panel) override;
    // Who may use the buttons, the recycle box and the slider: decided at every selection.
    void selected() override;
    void load() override;
    void apply(Recordset& options) override;

    // The slider's caption for a size: "Disabled" at 500, "Full Size" at 10000, else the number.
    static QString sizeCaption(int size);

private:
    void buildSchedules(Control& panel);
    void buildBin(Control& panel);

    void moveSlider();
    // Runs one operation of the maintenance component, when it is there.
    void runTidy(const QString& operation, const QVariantList& arguments);

    Options& m_screen;
};

} // namespace marlet
