// libFuzzer entry for the reading of a whole settings file. The input is the file's content; it is
// loaded into a database and a preference store of its own. Whatever it holds, the load ends, the
// staff accounts, tickets and the Options row stay as they were, and every line is counted either
// as applied or as skipped.

#include "settings/SettingsFile.h"
#include "store/Connection.h"
#include "store/DatabaseInit.h"
#include "store/Preferences.h"
#include "store/Recordset.h"

#include "FuzzCheck.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdint>

namespace {

using marlet::fuzz::require;

QStringList rows(marlet::Connection& connection, const char* statement)
{
    QStringList found;
    marlet::Recordset rs;
    require(rs.Open(marlet::Statement(QString::fromLatin1(statement)), connection));
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList cells;
        for (int i = 0; i < rs.fieldCount(); ++i)
            cells << marlet::Statement::valueText(rs.value(i));
        found << cells.join(QStringLiteral(" | "));
    }
    return found;
}

struct Machine
{
    // Preferences are synced to disk on every write: a memory file system keeps the fuzzing fast.
    QTemporaryDir folder {QDir(QStringLiteral("/dev/shm")).exists()
            ? QStringLiteral("/dev/shm/marlet-fuzz-XXXXXX")
            : QDir::tempPath() + QStringLiteral("/marlet-fuzz-XXXXXX")};
    marlet::Connection connection;
    QStringList users;
    QStringList options;

    Machine()
    {
        const QString database = QStringLiteral("sqlite:") + folder.filePath(QStringLiteral("marlet.db"));
        require(marlet::DatabaseInit {database, QStringLiteral("ADMIN"), false}.run().ok());
        require(connection.Open(database));
        connection.executeNative(QStringLiteral("INSERT INTO account (username, password) VALUES ('KEEP', 'PW')"));
        users = rows(connection, "select * from Users");
        options = rows(connection, "select * from Options");
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Machine machine;
    const QByteArray content(reinterpret_cast<const char*>(data), qsizetype(size));

    // A store of its own for each input, so that keys from earlier inputs do not pile up.
    const QString prefsFolder = machine.folder.filePath(QStringLiteral("prefs"));
    QDir(prefsFolder).removeRecursively();
    marlet::Preferences store(prefsFolder);
    const marlet::settingsfile::LoadResult result
        = marlet::settingsfile::load(content, store, QStringLiteral("CafeHost"), machine.connection);
    require(result.applied + result.skipped == marlet::settingsfile::readFields(content).size());

    require(rows(machine.connection, "select * from Users") == machine.users);
    require(rows(machine.connection, "select * from Options") == machine.options);
    require(rows(machine.connection, "select Username from Account") == QStringList {QStringLiteral("KEEP")});
    require(store.GetSetting(QStringLiteral("Norvantis"), QStringLiteral("POS"), QStringLiteral("COM"), {}).isEmpty());
    return 0;
}
