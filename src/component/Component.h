#pragma once

#include "component/ScreenRegistry.h"
#include "component/TimerDll.h"
#include "session/Session.h"
#include "store/Preferences.h"

#include <QString>

namespace marlet {

class Platform;

// One loaded instance of the component as a host sees it: the preference store of this machine,
// the session, the screens and the public class. The host chooses the platform the screens show on.
class Component
{
public:
    // preferencesFolder and applicationFolder may be empty for their standard locations.
    Component(Platform& platform, const QString& preferencesFolder, const QString& applicationFolder);

    TimerDll& timerDll() { return m_timerDll; }
    Session& session() { return m_session; }
    ScreenRegistry& screens() { return m_screens; }
    Preferences& preferences() { return m_preferences; }

    // The per-user data folder where the ticket page and the settings export are written:
    // the folder given, else MARLET_APP_DIR, else the standard application data location.
    static QString defaultApplicationFolder();

private:
    Preferences m_preferences;
    Session m_session;
    ScreenRegistry m_screens;
    TimerDll m_timerDll;
};

} // namespace marlet
