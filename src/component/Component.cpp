#include "component/Component.h"

#include "printing/TicketDocuments.h"

#include <QDir>
#include <QStandardPaths>

namespace marlet {

Component::Component(Platform& platform, const QString& preferencesFolder, const QString& applicationFolder)
    : m_preferences(preferencesFolder)
    , m_session(platform, m_preferences, applicationFolder.isEmpty() ? defaultApplicationFolder() : applicationFolder)
    , m_screens(m_session)
    , m_timerDll(m_session, m_screens)
{
    QDir().mkpath(m_session.applicationFolder());
    provideTicketPage(m_session.applicationFolder());
}

QString Component::defaultApplicationFolder()
{
    const QString fromEnvironment = qEnvironmentVariable("MARLET_APP_DIR");
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/marlet");
}

} // namespace marlet
