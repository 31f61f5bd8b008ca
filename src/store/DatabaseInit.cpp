#include "store/DatabaseInit.h"

#include "store/Connection.h"
#include "store/PrivateFiles.h"
#include "store/RowStore.h"
#include "store/Schema.h"
#include "store/StoreEngine.h"
#include "store/StoreValue.h"
#include "values/Product.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <utility>

namespace marlet {

namespace {

using Row = QList<std::pair<const char*, QVariant>>;

Row optionsRow()
{
    return {{"TicketIniName", QStringLiteral("NVT")},
        {"Currency", QStringLiteral("N")},
        {"AdministratorPower", false},
        {"NoUser", false},
        {"NightTimeStart", QStringLiteral("00:00")},
        {"NightTimeEnd", QStringLiteral("06:00")},
        {"Title", MessageTitle()},
        {"Address", QString()},
        {"Information", QString()},
        {"LogIn", true},
        {"EnableBackUp", true},
        {"EnableCleanUp", true},
        {"RecycleBinSize", 5000},
        {"SMSAccount", QString()},
        {"SMSPassword", QString()},
        {"SMScost", QString()}};
}

// The built-in account with the rights its saving forces.
Row administratorRow(const QString& password)
{
    return {{"Username", QStringLiteral("ADMINISTRATOR")},
        {"Password", password},
        {"Type", QStringLiteral("ADMINISTRATOR")},
        {"Solotime", 60},
        {"Expire", QStringLiteral("999")},
        {"Allocate", true},
        {"Shutrest", true},
        {"XView", true},
        {"Pass", true},
        {"Generate", false},
        {"enabled", true},
        {"Print", false},
        {"Pause", false},
        {"Option", false},
        {"POS", false},
        {"ActBox", false}};
}

Row registerRow()
{
    return {{"TotGenerated", 0}, {"TotCost", 0}};
}

bool insert(StoreEngine& engine, const char* tableName, const Row& row)
{
    const TableDef* table = Schema::standard().table(QString::fromLatin1(tableName));
    QStringList columns;
    QVariantList values;
    for (const auto& [name, value] : row) {
        columns.append(QString::fromLatin1(name));
        values.append(storevalue::toStored(table->column(columns.last())->type, value).value_or(QVariant()));
    }
    return engine.insertRow(table->name, columns, values, nullptr);
}

// Makes the tables and their first rows; `replaced` are statements that go first in the same
// transaction (dropping the tables a forced run replaces).
QString createTables(Connection& connection, const QString& password, const QStringList& replaced = {})
{
    StoreEngine& engine = *connection.engine();
    if (connection.dialect() == SqlDialect::Sqlite
        && !connection.executeNative(QStringLiteral("PRAGMA journal_mode = WAL")))
        return connection.lastError();
    // One transaction for the whole setup: quick, and a failure leaves nothing half made.
    engine.execute(QStringLiteral("BEGIN"), {});
    const auto abandon = [&engine] {
        const QString error = engine.lastError();
        engine.execute(QStringLiteral("ROLLBACK"), {});
        return error;
    };
    for (const QString& sql : replaced + engine.schemaSql(Schema::standard())) {
        if (!engine.execute(sql, {}))
            return abandon();
    }
    if (!insert(engine, "Options", optionsRow()) || !insert(engine, "Users", administratorRow(password))
        || !insert(engine, "Register", registerRow()))
        return abandon();
    return engine.execute(QStringLiteral("COMMIT"), {}) ? QString() : abandon();
}

// The tables of the schema that a PostgreSQL database already holds.
QStringList existingTables(StoreEngine& engine, QString* error)
{
    QStringList names;
    for (const TableDef& table : Schema::standard().tables())
        names.append(table.name.toLower());
    RowStore rows;
    QList<ResultColumn> columns;
    if (!engine.select(QStringLiteral("SELECT tablename FROM pg_tables WHERE schemaname = current_schema() "
                                      "AND tablename = ANY (string_to_array(?, ','))"),
            {names.join(u',')},
            columns,
            rows)) {
        *error = engine.lastError();
        return {};
    }
    QStringList existing;
    std::vector<Cell> cells;
    for (qsizetype row = 0; row < rows.rowCount(); ++row) {
        rows.decodeRow(row, cells);
        existing.append(cells.front().toVariant().toString());
    }
    return existing;
}

// A PostgreSQL database is made in place: the server's transaction keeps a failed run from leaving
// half the tables behind.
InitResult initPostgres(const QString& connectionString, const QString& password, bool force)
{
    Connection connection;
    if (!connection.Open(connectionString))
        return {connection.lastError(), {}};
    QString error;
    const QStringList existing = existingTables(*connection.engine(), &error);
    if (!error.isEmpty())
        return {error, {}};
    if (!existing.isEmpty() && !force)
        return {QStringLiteral("The database '%1' already holds ticket tables; they are replaced only when forced.")
                    .arg(shownConnection(connectionString)),
            {}};
    QStringList drops;
    for (const QString& table : existing)
        drops.append(QStringLiteral("DROP TABLE ") + SqlTranslator::quoteIdentifier(table));
    error = createTables(connection, password, drops);
    if (!error.isEmpty())
        return {error, {}};
    return {QString(), password};
}

// True when the file is a database this may replace: an SQLite database, or an empty file (a new
// database that was never written).
bool isDatabaseFile(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray header = file.read(16);
    return header.isEmpty() || header == QByteArrayLiteral("SQLite format 3\0");
}

QString removeDatabase(const QString& path)
{
    for (const QString& suffix :
        {QString(), QStringLiteral("-wal"), QStringLiteral("-shm"), QStringLiteral("-journal")}) {
        if (QFileInfo::exists(path + suffix) && !QFile::remove(path + suffix))
            return QStringLiteral("The database '%1' could not be replaced.").arg(path + suffix);
    }
    return QString();
}

} // namespace

QString DatabaseInit::generatePassword()
{
    static const QLatin1StringView alphabet("ABCDEFGHJKLMNPQRSTUVWXYZ23456789");
    QString password;
    for (int i = 0; i < 12; ++i)
        password += QChar(alphabet.at(QRandomGenerator::system()->bounded(int(alphabet.size()))));
    return password;
}

QString DatabaseInit::passwordProblem(const QString& password)
{
    if (password.isEmpty())
        return QStringLiteral("The administrator password is empty.");
    if (password.size() > 15)
        return QStringLiteral("The administrator password is longer than 15 characters.");
    if (password.contains(u'\''))
        return QStringLiteral("The administrator password must not hold a quote.");
    return QString();
}

InitResult DatabaseInit::run() const
{
    const ConnectionTarget target = parseConnectionString(connectionString);
    if (!target.ok())
        return {target.error, {}};
    const QString chosen = password.isEmpty() ? generatePassword() : password.toUpper();
    if (const QString problem = passwordProblem(chosen); !problem.isEmpty())
        return {problem, {}};
    if (target.dialect == SqlDialect::Postgres)
        return initPostgres(target.location, chosen, force);

    const QString path = target.location;
    if (QFileInfo::exists(path)) {
        if (!force)
            return {QStringLiteral("The database '%1' already exists; it is replaced only when forced.").arg(path), {}};
        if (!isDatabaseFile(path))
            return {QStringLiteral("'%1' is not a database; it is left as it is.").arg(path), {}};
    }
    // The new database is made beside its place under another name and renamed into place when
    // complete, so that an interrupted run never leaves a half-made database at the path.
    const QFileInfo place(path);
    QDir().mkpath(place.absolutePath());
    const QString partial = QStringLiteral(".") + place.fileName() + QStringLiteral(".new-");
    // What an interrupted run left beside the path goes first.
    const QDir folder(place.absolutePath());
    for (const QString& left : folder.entryList({partial + u'*'}, QDir::Files | QDir::Hidden))
        QFile::remove(folder.filePath(left));
    const QString building = folder.filePath(partial + QString::number(QCoreApplication::applicationPid()));
    QFile file(building);
    if (!openPrivate(file, QIODevice::WriteOnly))
        return {QStringLiteral("The database '%1' could not be created: %2").arg(path, file.errorString()), {}};
    file.close();

    Connection connection;
    QString error = connection.Open(QStringLiteral("sqlite:") + building) ? createTables(connection, chosen)
                                                                          : connection.lastError();
    connection.Close();
    if (error.isEmpty())
        error = removeDatabase(path);
    if (error.isEmpty() && !QFile::rename(building, path))
        error = QStringLiteral("The database '%1' could not be put in place.").arg(path);
    if (!error.isEmpty()) {
        removeDatabase(building);
        return {error, {}};
    }
    return {QString(), chosen};
}

} // namespace marlet
