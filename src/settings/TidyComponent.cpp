#include "settings/TidyComponent.h"

#include "settings/DatabaseCopy.h"
#include "settings/TicketCleanUp.h"
#include "store/Connection.h"

#include <QDir>
#include <QFileInfo>

namespace marlet {

namespace {

const QString BackupFilter = QStringLiteral("Database backups (*.bak)|*.bak|All files (*.*)|*.*");

} // namespace

TidyComponent::TidyComponent(Platform& platform, const QString& preferencesFolder, QString backupFolder)
    : m_platform(platform)
    , m_preferences(preferencesFolder)
    , m_backupFolder(std::move(backupFolder))
{
}

bool TidyComponent::call(const QString&, const QVariantList&)
{
    // Every operation works on the shared connection.
    return false;
}

bool TidyComponent::callWithConnection(const QString& operation, Connection& connection, const QVariantList&)
{
    if (operation.compare(QLatin1String("LoadCleanUp"), Qt::CaseInsensitive) == 0)
        return LoadCleanUp(connection);
    if (operation.compare(QLatin1String("LoadBackUp"), Qt::CaseInsensitive) == 0)
        return LoadBackUp(connection);
    if (operation.compare(QLatin1String("LoadRestore"), Qt::CaseInsensitive) == 0)
        return LoadRestore(connection);
    return false;
}

QString TidyComponent::keptCopyPath(const QString& backupFile)
{
    return backupFile + QStringLiteral(".before-restore");
}

bool TidyComponent::failed(const QString& message)
{
    m_platform.messageBox(message, MsgStyle::Stop);
    return false;
}

bool TidyComponent::LoadCleanUp(Connection& connection)
{
    if (m_platform.messageBox(QStringLiteral("Remove all used-up tickets (used, with no time left) now?\nThey go to "
                                             "the Recycle Bin as deleted tickets do."),
            MsgStyle::YesNoQuestionNoDefault)
        != MsgResult::Yes)
        return true;
    const TicketCleanUp cleanUp {SessionPreferences(m_preferences, QString(ProductWord))};
    const TicketCleanUp::Result result = cleanUp.run(connection, m_platform.now());
    if (!result.error.isEmpty())
        return failed(
            QStringLiteral("The clean-up stopped after %1 ticket(s): %2").arg(result.removed).arg(result.error));
    m_platform.messageBox(QStringLiteral("%1 used-up ticket(s) removed.").arg(result.removed), MsgStyle::Info);
    return true;
}

std::optional<QString> TidyComponent::askForFile(const QString& title, const QString& proposed)
{
    FileDialogRequest request;
    request.title = title;
    request.filter = BackupFilter;
    request.initialDir = m_backupFolder;
    request.fileName = proposed;
    request.save = !proposed.isEmpty();
    std::optional<QString> path = m_platform.fileDialog(request);
    if (path && path->isEmpty())
        return std::nullopt;
    return path;
}

bool TidyComponent::LoadBackUp(Connection& connection)
{
    const QString proposed
        = QDir(m_backupFolder)
              .filePath(
                  QStringLiteral("marlet-%1.bak").arg(m_platform.now().toString(QStringLiteral("yyyyMMdd-HHmm"))));
    const std::optional<QString> path = askForFile(QStringLiteral("Backup the Database"), proposed);
    if (!path)
        return true;
    if (const QString error = databasecopy::backup(connection, *path); !error.isEmpty())
        return failed(QStringLiteral("The backup failed: ") + error);
    m_platform.messageBox(QStringLiteral("The database was backed up to %1").arg(*path), MsgStyle::Info);
    return true;
}

bool TidyComponent::LoadRestore(Connection& connection)
{
    const std::optional<QString> path = askForFile(QStringLiteral("Restore the Database from a Backup"), QString());
    if (!path)
        return true;
    if (const QString error = databasecopy::checkBackup(*path); !error.isEmpty())
        return failed(QStringLiteral("This backup cannot be restored: ") + error);
    if (m_platform.messageBox(QStringLiteral("Restore the database from %1?\nEverything written to it since that "
                                             "backup was taken will be lost.")
                                  .arg(*path),
            MsgStyle::YesNoQuestionNoDefault)
        != MsgResult::Yes)
        return true;
    // The database as it stands is kept first: a restore that was a mistake can be undone.
    const QString kept = keptCopyPath(*path);
    if (const QString error = databasecopy::backup(connection, kept); !error.isEmpty())
        return failed(QStringLiteral("Nothing was restored: the database could not be kept first: ") + error);
    if (const QString error = databasecopy::restore(connection, *path); !error.isEmpty())
        return failed(QStringLiteral("The restore failed: ") + error);
    m_platform.messageBox(
        QStringLiteral("The database was restored from %1\nThe database as it was before is kept in %2")
            .arg(*path, kept),
        MsgStyle::Info);
    return true;
}

} // namespace marlet
