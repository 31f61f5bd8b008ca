#include "store/DatabaseCheck.h"

#include "store/Connection.h"
#include "store/RowStore.h"
#include "store/StoreEngine.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

namespace marlet {

namespace {

QString fileProblem(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return QStringLiteral("The database '%1' does not exist.").arg(path);
    if (info.isDir())
        return QStringLiteral("'%1' is a folder, not a database.").arg(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("The database '%1' cannot be read: %2").arg(path, file.errorString());
    const QByteArray header = file.read(16);
    if (header.isEmpty())
        return QStringLiteral("The database '%1' is empty.").arg(path);
    if (header != QByteArrayLiteral("SQLite format 3\0"))
        return QStringLiteral("'%1' is not a database.").arg(path);
    return {};
}

// SQLite's quick check and the presence of the tables, on a read-only connection of its own.
QString contentProblem(const QString& path)
{
    const QString name = QStringLiteral("check-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    QString problem;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=5000"));
        if (!db.open()) {
            problem = QStringLiteral("The database '%1' cannot be opened: %2").arg(path, db.lastError().text());
        } else {
            QSqlQuery check(db);
            if (!check.exec(QStringLiteral("PRAGMA quick_check")) || !check.next())
                problem = QStringLiteral("The database '%1' is damaged: %2").arg(path, check.lastError().text());
            else if (const QString verdict = check.value(0).toString(); verdict != QLatin1String("ok"))
                problem = QStringLiteral("The database '%1' is damaged: %2").arg(path, verdict);
            else if (!db.tables().contains(QStringLiteral("Account"), Qt::CaseInsensitive)
                || !db.tables().contains(QStringLiteral("Options"), Qt::CaseInsensitive))
                problem = QStringLiteral("The database '%1' holds no ticket tables.").arg(path);
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(name);
    return problem;
}

// A PostgreSQL database: the server answers and the database holds the tables.
QString serverProblem(const QString& connectionString)
{
    Connection connection;
    if (!connection.Open(connectionString))
        return connection.lastError();
    RowStore rows;
    QList<ResultColumn> columns;
    if (!connection.engine()->select(QStringLiteral("SELECT to_regclass('account') IS NOT NULL AND "
                                                    "to_regclass('options') IS NOT NULL"),
            {},
            columns,
            rows))
        return connection.engine()->lastError();
    std::vector<Cell> cells;
    rows.decodeRow(0, cells);
    if (cells.front().integer == 0)
        return QStringLiteral("The database '%1' holds no ticket tables.").arg(shownConnection(connectionString));
    return {};
}

} // namespace

QString databaseProblem(const QString& connectionString)
{
    const ConnectionTarget target = parseConnectionString(connectionString);
    if (!target.ok())
        return target.error;
    if (target.dialect == SqlDialect::Postgres)
        return serverProblem(connectionString);
    if (const QString problem = fileProblem(target.location); !problem.isEmpty())
        return problem;
    return contentProblem(target.location);
}

} // namespace marlet
