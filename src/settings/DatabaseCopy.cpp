#include "settings/DatabaseCopy.h"

#include "store/Connection.h"
#include "store/RowStore.h"
#include "store/Schema.h"
#include "store/SqliteEngine.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QThread>

#include <optional>

#include <sqlite3.h>

namespace marlet::databasecopy {

namespace {

// How long a copy waits for another program's write to end before it gives up.
constexpr int lockWaitMs = 30000;
constexpr int lockRetryMs = 20;

QString sqliteMessage(sqlite3* handle, int code)
{
    const char* text = handle ? sqlite3_errmsg(handle) : sqlite3_errstr(code);
    return QString::fromUtf8(text ? text : sqlite3_errstr(code));
}

// An SQLite handle of our own on a file, closed with the object.
class FileHandle
{
public:
    FileHandle(const QString& path, int flags)
    {
        m_code = sqlite3_open_v2(QFile::encodeName(path).constData(), &m_handle, flags, nullptr);
        if (m_code == SQLITE_OK)
            sqlite3_busy_timeout(m_handle, lockWaitMs);
    }
    ~FileHandle() { sqlite3_close_v2(m_handle); }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    sqlite3* get() const { return m_handle; }
    Error openError() const { return m_code == SQLITE_OK ? Error() : sqliteMessage(m_handle, m_code); }

    // The first column of every row of a statement, joined by line breaks; nullopt on failure.
    std::optional<QString> column(const char* sql) const
    {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(m_handle, sql, -1, &statement, nullptr) != SQLITE_OK)
            return std::nullopt;
        QStringList rows;
        int code = SQLITE_ROW;
        while ((code = sqlite3_step(statement)) == SQLITE_ROW)
            rows.append(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0))));
        sqlite3_finalize(statement);
        if (code != SQLITE_DONE)
            return std::nullopt;
        return rows.join(u'\n');
    }

private:
    sqlite3* m_handle = nullptr;
    int m_code = SQLITE_OK;
};

// Copies every page of `from` into `to` in one step, so that the copy is the state of one moment.
// A write of another program in progress makes the step wait and try again.
Error copyPages(sqlite3* to, sqlite3* from)
{
    sqlite3_backup* copy = sqlite3_backup_init(to, "main", from, "main");
    if (!copy)
        return sqliteMessage(to, sqlite3_errcode(to));
    const QDeadlineTimer deadline(lockWaitMs);
    int code = SQLITE_OK;
    for (;;) {
        code = sqlite3_backup_step(copy, -1);
        if ((code != SQLITE_BUSY && code != SQLITE_LOCKED) || deadline.hasExpired())
            break;
        QThread::msleep(lockRetryMs);
    }
    const int finished = sqlite3_backup_finish(copy);
    if (code != SQLITE_DONE)
        return QString::fromUtf8(sqlite3_errstr(code));
    if (finished != SQLITE_OK)
        return sqliteMessage(to, finished);
    return Error();
}

Error integrityOf(const FileHandle& file)
{
    const std::optional<QString> check = file.column("PRAGMA integrity_check");
    if (!check)
        return sqliteMessage(file.get(), sqlite3_errcode(file.get()));
    if (*check != QLatin1String("ok"))
        return QStringLiteral("The copy is damaged: ") + *check;
    return Error();
}

// The open SQLite handle of the connection; null for a server store or a closed connection.
sqlite3* liveHandle(const Connection& connection)
{
    auto* engine = dynamic_cast<SqliteEngine*>(connection.engine());
    return engine ? engine->handle() : nullptr;
}

bool isServerStore(const Connection& connection)
{
    return connection.State() == 1 && connection.dialect() == SqlDialect::Postgres;
}

// The rows of a table in the order they were stored, by the engine's own row key.
QString orderedSelect(const TableDef& table, const QString& columns, SqlDialect dialect)
{
    const QString key = dialect == SqlDialect::Postgres ? SqlTranslator::quoteIdentifier(PostgresRowKey.toString())
                                                        : QStringLiteral("rowid");
    return QStringLiteral("SELECT ") + columns + QStringLiteral(" FROM ") + SqlTranslator::quoteIdentifier(table.name)
        + QStringLiteral(" ORDER BY ") + key;
}

// Replaces every row of the ticket tables in `to` with those of `from`, table by table, in one
// transaction of the target. Both stores give and take values in the same stored forms, so a copy
// goes between the engines either way.
Error copyTables(StoreEngine& from, SqlDialect fromDialect, StoreEngine& to)
{
    if (!to.execute(QStringLiteral("BEGIN"), {}))
        return to.lastError();
    for (const TableDef& table : Schema::standard().tables()) {
        QStringList names;
        for (const ColumnDef& column : table.columns)
            names.append(SqlTranslator::quoteIdentifier(column.name));
        const QString columns = names.join(QStringLiteral(", "));
        QList<ResultColumn> described;
        RowStore rows;
        QStringList marks;
        marks.fill(QStringLiteral("?"), names.size());
        const QString insert = QStringLiteral("INSERT INTO ") + SqlTranslator::quoteIdentifier(table.name)
            + QStringLiteral(" (") + columns + QStringLiteral(") VALUES (") + marks.join(QStringLiteral(", ")) + u')';
        Error error;
        if (!from.select(orderedSelect(table, columns, fromDialect), {}, described, rows))
            error = from.lastError();
        else if (!to.execute(QStringLiteral("DELETE FROM ") + SqlTranslator::quoteIdentifier(table.name), {}))
            error = to.lastError();
        std::vector<Cell> cells;
        for (qsizetype row = 0; error.isEmpty() && row < rows.rowCount(); ++row) {
            rows.decodeRow(row, cells);
            QVariantList values;
            for (const Cell& cell : cells)
                values.append(cell.toVariant());
            if (!to.execute(insert, values))
                error = to.lastError();
        }
        if (!error.isEmpty()) {
            to.execute(QStringLiteral("ROLLBACK"), {});
            return QStringLiteral("%1 (table %2)").arg(error, table.name);
        }
    }
    return to.execute(QStringLiteral("COMMIT"), {}) ? Error() : to.lastError();
}

// A backup of a server store: a new SQLite file with the ticket tables and every row, the same
// kind of file a backup of an SQLite store is, so either store restores from it.
Error copyServerStore(Connection& connection, const QString& scratch)
{
    FileHandle copy(scratch, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (Error error = copy.openError(); !error.isEmpty())
        return error;
    SqliteEngine engine(copy.get());
    for (const QString& statement : engine.schemaSql(Schema::standard())) {
        if (!engine.execute(statement, {}))
            return engine.lastError();
    }
    // One snapshot of the server for all tables, while other servers go on writing.
    StoreEngine& live = *connection.engine();
    if (!live.execute(QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"), {}))
        return live.lastError();
    const Error error = copyTables(live, SqlDialect::Postgres, engine);
    live.execute(QStringLiteral("COMMIT"), {});
    return error;
}

} // namespace

QString databaseFile(const Connection& connection)
{
    const ConnectionTarget target = parseConnectionString(connection.connectionString());
    return target.ok() && target.dialect == SqlDialect::Sqlite ? target.location : QString();
}

Error backup(Connection& connection, const QString& path)
{
    Error error;
    sqlite3* live = liveHandle(connection);
    if (!live && !isServerStore(connection))
        return QStringLiteral("The database is not open.");
    const QString liveFile = QFileInfo(databaseFile(connection)).canonicalFilePath();
    if (!liveFile.isEmpty() && QFileInfo(path).canonicalFilePath() == liveFile)
        return QStringLiteral("A backup cannot be written over the database itself.");

    const QString scratch = path + QStringLiteral(".part");
    QFile::remove(scratch);
    {
        if (!live)
            error = copyServerStore(connection, scratch);
        FileHandle copy(scratch, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        if (error.isEmpty())
            error = copy.openError();
        if (error.isEmpty() && live)
            error = copyPages(copy.get(), live);
        // One file that stands on its own, whatever log the live database keeps.
        if (error.isEmpty() && !copy.column("PRAGMA journal_mode = DELETE"))
            error = sqliteMessage(copy.get(), sqlite3_errcode(copy.get()));
        if (error.isEmpty())
            error = integrityOf(copy);
    }
    if (error.isEmpty() && QFile::exists(path) && !QFile::remove(path))
        error = QStringLiteral("The file %1 cannot be replaced.").arg(path);
    if (error.isEmpty() && !QFile::rename(scratch, path))
        error = QStringLiteral("The file %1 cannot be written.").arg(path);
    if (!error.isEmpty())
        QFile::remove(scratch);
    return error;
}

Error checkBackup(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return QStringLiteral("The file %1 does not exist.").arg(path);
    FileHandle file(path, SQLITE_OPEN_READONLY);
    if (Error error = file.openError(); !error.isEmpty())
        return error;
    if (Error error = integrityOf(file); !error.isEmpty())
        return QStringLiteral("%1 is not an intact database: %2").arg(path, error);
    const std::optional<QString> tables = file.column(
        "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND lower(name) IN ('account', 'options', 'users')");
    if (!tables || *tables != QLatin1String("3"))
        return QStringLiteral("%1 is not a backup of a ticket database.").arg(path);
    return Error();
}

Error restore(Connection& connection, const QString& path)
{
    Error error;
    sqlite3* live = liveHandle(connection);
    if (!live && !isServerStore(connection))
        return QStringLiteral("The database is not open.");
    if (!(error = checkBackup(path)).isEmpty())
        return error;
    FileHandle source(path, SQLITE_OPEN_READONLY);
    if (!(error = source.openError()).isEmpty())
        return error;
    if (!live) {
        SqliteEngine backupEngine(source.get());
        return copyTables(backupEngine, SqlDialect::Sqlite, *connection.engine());
    }
    // Kept statements of the connection would hold the old pages; they are prepared again on use.
    if (auto* engine = dynamic_cast<SqliteEngine*>(connection.engine()))
        engine->finalizeAll();
    return copyPages(live, source.get());
}

} // namespace marlet::databasecopy
