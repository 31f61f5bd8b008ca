#include "session/Session.h"

#include "platform/Platform.h"
#include "store/Connection.h"

namespace marlet {

Session::Session(Platform& platform, Preferences& preferences, QString applicationFolder)
    : m_platform(platform)
    , m_preferences(preferences)
    , m_applicationFolder(std::move(applicationFolder))
{
}

Connection& Session::connection()
{
    if (!general.SharedConnection) {
        general.SharedConnection = std::make_unique<Connection>();
        // `now` in statements is the session's clock, the one every screen reads.
        general.SharedConnection->setClock([this] { return m_platform.now(); });
    }
    return *general.SharedConnection;
}

} // namespace marlet
