#include "desktop/TidyRegistration.h"

#include "desktop/ComponentRegistry.h"
#include "desktop/QtPlatform.h"
#include "settings/TidyComponent.h"
#include "store/Preferences.h"

#include <QFileInfo>

namespace marlet {

namespace {

// The maintenance component with a desktop platform of its own for its dialogs, since a component
// made by name is handed no platform and may outlive the host's.
class DesktopTidy : public NamedComponent
{
public:
    DesktopTidy(const QString& preferencesFolder, const QString& backupFolder)
        : m_tidy(m_platform, preferencesFolder, backupFolder)
    {
    }

    bool call(const QString& operation, const QVariantList& arguments) override
    {
        return m_tidy.call(operation, arguments);
    }
    bool callWithConnection(const QString& operation, Connection& connection, const QVariantList& arguments) override
    {
        return m_tidy.callWithConnection(operation, connection, arguments);
    }

private:
    QtPlatform m_platform;
    TidyComponent m_tidy;
};

} // namespace

void registerTidyComponent(const Preferences& preferences, const QString& backupFolder)
{
    const QString preferencesFolder = QFileInfo(preferences.filePath()).absolutePath();
    ComponentRegistry::add(QString(TidyComponent::ProgId),
        [preferencesFolder, backupFolder] { return std::make_unique<DesktopTidy>(preferencesFolder, backupFolder); });
}

} // namespace marlet
