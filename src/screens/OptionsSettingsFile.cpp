// The settings menu of the settings screen: "Save to File" and "Load from file".

#include "screens/Options.h"

#include "platform/Platform.h"
#include "session/Session.h"
#include "settings/SettingsFile.h"

#include <QFile>
#include <QFileInfo>

namespace marlet {

namespace {

const QString SettingsFilter = QStringLiteral("Settings files (*.Sav)|*.Sav|All files (*.*)|*.*");
constexpr int FileQuestion = MsgStyle::YesNo + MsgStyle::Information + MsgStyle::DefaultButton2;

std::optional<QString> askForSettingsFile(Session& session, const QString& title, bool save)
{
    FileDialogRequest request;
    request.title = title;
    request.filter = SettingsFilter;
    request.initialDir = session.applicationFolder();
    request.fileName = settingsfile::defaultPath(session.applicationFolder());
    request.save = save;
    std::optional<QString> path = session.platform().fileDialog(request);
    if (path && path->isEmpty())
        return std::nullopt;
    return path;
}

// The file's content, or the reason it cannot be a settings file.
std::optional<QByteArray> readSettingsFile(const QString& path, QString& error)
{
    if (!QFileInfo(path).isFile()) {
        error = QStringLiteral("it is not a file.");
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString();
        return std::nullopt;
    }
    // Read one byte beyond the limit, so that a file growing meanwhile is caught as well.
    QByteArray content = file.read(settingsfile::MaxFileSize + 1);
    if (content.size() > settingsfile::MaxFileSize) {
        error = QStringLiteral("it is too large to be a settings file.");
        return std::nullopt;
    }
    return content;
}

} // namespace

void Options::saveToFile()
{
    if (platform().messageBox(QStringLiteral("Save Setting and also settings to a file?"), FileQuestion)
        != MsgResult::Yes)
        return;
    // What the screen shows reaches the stores first.
    applySettings();
    const std::optional<QString> path = askForSettingsFile(m_session, QStringLiteral("Save Settings to File"), true);
    if (!path)
        return;
    const QStringList records = settingsfile::fixedRecords(m_session.settings(), m_session.general.MaxComputers)
        + settingsfile::listRecords(m_session.connection());
    // The old file is replaced only once the new one is written whole.
    if (const QString error = settingsfile::writeFile(*path, settingsfile::fileContent(records)); !error.isEmpty()) {
        platform().messageBox(
            QStringLiteral("The settings could not be saved to %1: %2").arg(*path, error), MsgStyle::Stop);
        return;
    }
    platform().messageBox(QStringLiteral("Option settings saved!"), MsgStyle::Info);
}

void Options::loadFromFile()
{
    const std::optional<QString> path = askForSettingsFile(m_session, QStringLiteral("Load Settings from File"), false);
    if (!path)
        return;
    if (!QFileInfo::exists(*path)) {
        platform().messageBox(QStringLiteral("No file settings found!"), MsgStyle::Warning);
        return;
    }
    if (platform().messageBox(QStringLiteral("Load the previously saved settings from file?"), FileQuestion)
        != MsgResult::Yes)
        return;
    QString error;
    const std::optional<QByteArray> content = readSettingsFile(*path, error);
    if (!content) {
        platform().messageBox(
            QStringLiteral("The settings could not be loaded from %1: %2").arg(*path, error), MsgStyle::Stop);
        return;
    }
    settingsfile::load(*content, m_session.preferences(), m_session.general.AppTitle, m_session.connection());
    reloadPages();
    platform().messageBox(QStringLiteral("Option settings loaded!"), MsgStyle::Info);
}

} // namespace marlet
