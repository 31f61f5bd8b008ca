#include "store/DatabaseInit.h"

#include "store/Connection.h"
#include "store/PrivateFiles.h"
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

QString createTables(Connection& connection, const QString& password)
{
    StoreEngine& engine = *connection.engine();
    if (!connection.executeNative(QStringLiteral("PRAGMA journal_mode = WAL")))
        return connection.lastError();
    // One transaction for the whole setup: quick, and a failure leaves nothing half made.
    engine.execute(QStringLiteral("BEGIN"), {});
    for (const QString& sql : engine.schemaSql(Schema::standard())) {
        if (!engine.execute(sql, {}))
            return engine.lastError();
    }
    if (!insert(engine, "Options", optionsRow()) || !insert(engine, "Users", administratorRow(password))
        || !insert(engine, "Register", registerRow()))
        return engine.lastError();
    return engine.execute(QStringLiteral("COMMIT"), {}) ? QString() : engine.lastError();
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
    if (target.dialect == SqlDialect::Postgres)
        return {QStringLiteral("PostgreSQL databases are not available yet."), {}};
    const QString chosen = password.isEmpty() ? generatePassword() : password.toUpper();
    if (const QString problem = passwordProblem(chosen); !problem.isEmpty())
        return {problem, {}};

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
