#pragma once

#include "platform/Platform.h"
#include "store/Preferences.h"

#include <QLatin1StringView>
#include <QString>

#include <optional>

namespace marlet {

// The maintenance component built into Marlet, reached by the name "Brisling.Tidy". Each operation
// is handed the shared connection:
//   LoadCleanUp (connection, server path): after a question, removes the tickets that were used
//     and have no time left, through the recycle routing;
//   LoadBackUp (connection): asks where to write, then writes a consistent copy of the live
//     database there (SQLite's online backup), while the host goes on using it;
//   LoadRestore (connection): asks for a backup, checks it, asks for a confirmation, keeps a copy
//     of the database as it stands beside it, and then brings the backup back.
// It talks through the platform's dialogs and returns true when the operation ran (also when the
// operator cancelled it), false when it could not do its work.
class TidyComponent : public NamedComponent
{
public:
    static constexpr QLatin1StringView ProgId {"Brisling.Tidy"};

    // `preferencesFolder`: the preference file whose RecycleBinSize the clean-up's routing reads
    // (under the product word, since the host's title is not handed over). `backupFolder`: where
    // the backup dialog starts.
    TidyComponent(Platform& platform, const QString& preferencesFolder, QString backupFolder);

    bool call(const QString& operation, const QVariantList& arguments) override;
    bool callWithConnection(const QString& operation, Connection& connection, const QVariantList& arguments) override;

    bool LoadCleanUp(Connection& connection);
    bool LoadBackUp(Connection& connection);
    bool LoadRestore(Connection& connection);

    // Where a restore keeps the database as it stood before: beside the backup it restores,
    // "<backup>.before-restore", which is a place of files for either kind of store.
    static QString keptCopyPath(const QString& backupFile);

private:
    bool failed(const QString& message);
    // A file dialog over the backup folder: a save dialog proposing `proposed`, or an open dialog
    // when nothing is proposed. Nothing when the operator cancels.
    std::optional<QString> askForFile(const QString& title, const QString& proposed);

    Platform& m_platform;
    Preferences m_preferences;
    QString m_backupFolder;
};

} // namespace marlet
