#pragma once

#include "session/General.h"
#include "store/PreferenceKeys.h"

#include <QString>

namespace marlet {

class Connection;
class Platform;

// What every screen of a loaded component works with: the session variables, and the services
// around them - the platform the screens show on, this machine's preference store, the shared
// connection and the component's own folder.
class Session
{
public:
    // applicationFolder: where the ticket page and the settings export are written.
    Session(Platform& platform, Preferences& preferences, QString applicationFolder);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Platform& platform() const { return m_platform; }
    Preferences& preferences() const { return m_preferences; }
    const QString& applicationFolder() const { return m_applicationFolder; }

    // The preference store addressed as this session does: under AppTitle or the product word.
    SessionPreferences settings() const { return SessionPreferences(m_preferences, general.AppTitle); }

    // The shared connection, created on first use (not opened by that).
    Connection& connection();

    General general;

private:
    Platform& m_platform;
    Preferences& m_preferences;
    QString m_applicationFolder;
};

} // namespace marlet
