#pragma once

#include "store/PreferenceKeys.h"
#include "values/HostFlags.h"

#include <QString>

#include <memory>

namespace marlet {

class Connection;
class Form;
class Platform;

// Session state shared by every screen. It lives from one entry operation to the next and is never
// reset as a whole: an operation overwrites only the variables it takes.
struct General
{
    General(Platform& platform, Preferences& preferences);
    ~General();
    General(const General&) = delete;
    General& operator=(const General&) = delete;

    // What the session reaches outside itself.
    Platform& platform;
    Preferences& preferences;

    std::unique_ptr<Connection> SharedConnection;
    QString AppTitle;
    QString CurrentStaff;
    QString SecondStaff;
    QString ServerPath;
    qint16 AdminPowered = 0;
    qint16 HideAccount = 0;
    qint16 ClientUp = 0;
    qint16 MaxComputers = 0;
    qint16 PassMode = 0;
    QString TicketName;
    QString ServerPorts;
    QString ServerPortName;
    QString GateUsername;

    // The component's own folder, where the ticket page and the settings export are written.
    QString applicationFolder;

    // Screens that keep their object from one opening to the next within the component's life.
    std::unique_ptr<Form> GenAcc;
    std::unique_ptr<Form> GenPasstoAccs;
    std::unique_ptr<Form> ContPass;

    // The preference store addressed as this session does: under AppTitle or the product word.
    SessionPreferences settings() const { return SessionPreferences(preferences, AppTitle); }

    // The shared connection, created on first use (not opened by that).
    Connection& connection();

    // CurrentStaff is the built-in administrator.
    bool isAdministrator() const;
    // The test every screen with destructive tools applies: not the administrator while
    // Administrator-powered mode is on.
    bool restrictedByAdminPower() const;
    // The staff text recorded on tickets and groups: the second approver joined with " & ".
    QString byWhom() const;
    // The folder of the host's program: everything up to the last "\" or "/" of ServerPath.
    QString serverFolder() const;
};

} // namespace marlet
