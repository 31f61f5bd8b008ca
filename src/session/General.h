#pragma once

#include "session/PasswordAttempts.h"
#include "values/HostFlags.h"

#include <QString>

#include <memory>

namespace marlet {

class Connection;

// The session variables that every screen reads and writes. They live from one entry operation to
// the next and are never reset as a whole: an operation overwrites only the variables it takes.
struct General
{
    General();
    ~General();
    General(const General&) = delete;
    General& operator=(const General&) = delete;

    // Taken from the host's arguments by the entry operations.
    QString AppTitle;
    QString CurrentStaff;
    QString ServerPath;
    qint16 AdminPowered = 0;
    qint16 HideAccount = 0;
    qint16 MaxComputers = 0;
    QString TicketName;
    QString ServerPorts;
    QString ServerPortName;

    // Set by the screens during a session.
    std::unique_ptr<Connection> SharedConnection;
    QString SecondStaff;
    qint16 ClientUp = 0;
    qint16 PassMode = 0;
    QString GateUsername;
    PasswordAttempts WrongPasswords;

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
