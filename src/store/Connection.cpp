#include "store/Connection.h"

#include "store/PostgresEngine.h"
#include "store/RowStore.h"
#include "store/SqliteEngine.h"

#include <QAtomicInteger>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>

#include <sqlite3.h>

namespace marlet {

namespace {

const QString memoryDatabase = QStringLiteral(":memory:");

QString connectionName()
{
    static QAtomicInteger<quint64> counter;
    return QStringLiteral("marlet-connection-") + QString::number(counter.fetchAndAddRelaxed(1));
}

// The value of one key of a "Key=Value;Key=Value" string, or nothing.
std::optional<QString> attribute(const QString& text, QStringView key)
{
    for (const QString& part : text.split(u';', Qt::SkipEmptyParts)) {
        const qsizetype equals = part.indexOf(u'=');
        if (equals > 0 && QStringView(part).left(equals).trimmed().compare(key, Qt::CaseInsensitive) == 0) {
            QString value = part.mid(equals + 1).trimmed();
            if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') && value.back() == value.front())
                value = value.mid(1, value.size() - 2);
            return value;
        }
    }
    return std::nullopt;
}

// PostgreSQL's own "host=... dbname=..." form: words of key=value, no semicolons.
bool isPostgresKeywords(const QString& text)
{
    static const QRegularExpression keyword(QStringLiteral(
        "^(host|hostaddr|port|dbname|user|password|passfile|service|sslmode|connect_timeout|application_name)\\s*="));
    return !text.contains(u';') && keyword.match(text).hasMatch();
}

} // namespace

ConnectionTarget parseConnectionString(const QString& connectionString)
{
    const QString text = connectionString.trimmed();
    if (text.isEmpty())
        return {SqlDialect::Sqlite, QString(), QStringLiteral("The connection string is empty.")};
    if (text.startsWith(u"postgresql://", Qt::CaseInsensitive) || text.startsWith(u"postgres://", Qt::CaseInsensitive))
        return {SqlDialect::Postgres, text, QString()};
    if (isPostgresKeywords(text))
        return {SqlDialect::Postgres, text, QString()};
    // Another scheme ("mysql://...") would otherwise be taken for a file name and reported missing.
    static const QRegularExpression otherScheme(QStringLiteral("^([A-Za-z][A-Za-z0-9+.-]*)://"));
    if (const QRegularExpressionMatch scheme = otherScheme.match(text); scheme.hasMatch()) {
        return {SqlDialect::Sqlite,
            QString(),
            QStringLiteral("The connection string names a kind of database that Marlet does not support (%1). "
                           "Give an SQLite file (a path or sqlite:PATH) or a PostgreSQL database "
                           "(postgresql://...).")
                .arg(scheme.captured(1))};
    }
    if (text.startsWith(u"sqlite:", Qt::CaseInsensitive)) {
        const QString path = text.mid(7);
        if (path.isEmpty())
            return {SqlDialect::Sqlite, QString(), QStringLiteral("The connection string names no database file.")};
        return {SqlDialect::Sqlite, path, QString()};
    }
    if (text.contains(u'=') && text.contains(u';')) {
        const auto source = attribute(text, u"Data Source");
        if (!source || source->isEmpty())
            return {SqlDialect::Sqlite, QString(), QStringLiteral("The connection string has no Data Source.")};
        return {SqlDialect::Sqlite, *source, QString()};
    }
    return {SqlDialect::Sqlite, text, QString()};
}

QString shownConnection(const QString& connectionString)
{
    static const QRegularExpression uriPassword(
        QStringLiteral("^(postgres(ql)?://[^:@/]*):[^@/]*@"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression keywordPassword(QStringLiteral("\\bpassword\\s*=\\s*('[^']*'|\\S*)"));
    QString shown = connectionString.trimmed();
    shown.replace(uriPassword, QStringLiteral("\\1@"));
    shown.replace(keywordPassword, QStringLiteral("password=..."));
    return shown;
}

namespace {

// Kept plans beyond this number are dropped all at once.
constexpr qsizetype keptPlans = 256;

} // namespace

Connection::Connection()
    : m_name(connectionName())
    , m_translator(TranslatorOptions {[this] { return now(); }, {}})
{
}

Connection::~Connection()
{
    Close();
}

bool Connection::fail(const QString& message)
{
    m_lastError = message;
    return false;
}

bool Connection::Open(const QString& connectionString)
{
    if (State() == 1)
        return fail(QStringLiteral("Operation is not allowed when the object is open."));
    const ConnectionTarget target = parseConnectionString(connectionString);
    if (!target.ok())
        return fail(target.error);
    if (target.dialect == SqlDialect::Postgres) {
        QString error;
        m_engine = PostgresEngine::connect(target.location, m_busyTimeout, &error);
        if (!m_engine)
            return fail(error);
    } else if (!openSqlite(target.location)) {
        return false;
    }
    if (m_dialect != target.dialect)
        m_plans.clear();
    m_dialect = target.dialect;
    m_connectionString = connectionString;
    m_lastError.clear();
    return true;
}

bool Connection::openSqlite(const QString& path)
{
    // The desktop store never makes a database by opening it; a mistyped path must fail.
    if (path != memoryDatabase && !QFileInfo(path).isFile())
        return fail(QStringLiteral("Could not find file '%1'.").arg(path));
    QString error;
    sqlite3* handle = nullptr;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        db.setDatabaseName(path);
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(m_busyTimeout));
        if (db.open()) {
            const QVariant driverHandle = db.driver()->handle();
            if (qstrcmp(driverHandle.typeName(), "sqlite3*") == 0)
                handle = *static_cast<sqlite3* const*>(driverHandle.constData());
        }
        error = handle ? QString() : db.lastError().text();
    }
    if (!handle) {
        QSqlDatabase::removeDatabase(m_name);
        return fail(error.isEmpty() ? QStringLiteral("The database could not be opened.") : error);
    }
    // A misspelt column in double quotes must be an error, not a string.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_busy_timeout(handle, m_busyTimeout);
    m_engine = std::make_unique<SqliteEngine>(handle);

    RowStore mode;
    QList<ResultColumn> columns;
    if (!m_engine->select(QStringLiteral("PRAGMA journal_mode"), {}, columns, mode)) {
        error = m_engine->lastError();
        Close();
        return fail(error);
    }
    // With a write-ahead log a commit need not wait for the disk; the file stays consistent.
    std::vector<Cell> cells;
    mode.decodeRow(0, cells);
    if (cells.front().bytes() == "wal")
        m_engine->execute(QStringLiteral("PRAGMA synchronous = NORMAL"), {});
    return true;
}

void Connection::Close()
{
    if (!m_engine)
        return;
    m_engine.reset();
    if (!QSqlDatabase::contains(m_name))
        return;
    QSqlDatabase::database(m_name, false).close();
    QSqlDatabase::removeDatabase(m_name);
}

int Connection::State() const
{
    return m_engine ? 1 : 0;
}

void Connection::setClock(std::function<QDateTime()> clock)
{
    m_clock = std::move(clock);
}

QDateTime Connection::now() const
{
    return m_clock ? m_clock() : QDateTime::currentDateTime();
}

TranslationResult Connection::translate(const Statement& statement) const
{
    auto plan = m_plans.constFind(statement.pattern());
    if (plan == m_plans.constEnd()) {
        if (m_plans.size() >= keptPlans)
            m_plans.clear();
        plan = m_plans.insert(statement.pattern(), m_translator.plan(statement.pattern(), m_dialect));
    }
    return m_translator.apply(**plan, statement.values());
}

bool Connection::Execute(const Statement& statement, long* rowsAffected)
{
    if (!m_engine)
        return fail(QStringLiteral("Operation is not allowed when the object is closed."));
    const TranslationResult translation = translate(statement);
    if (!translation.ok())
        return fail(translation.error);
    if (translation.kind == StatementKind::MultiTableDelete)
        return runMultiTableDelete(translation, rowsAffected);
    return m_engine->execute(translation.sql, translation.values, rowsAffected) || fail(m_engine->lastError());
}

bool Connection::runMultiTableDelete(const TranslationResult& translation, long* rowsAffected)
{
    // Every table's rows are found before any is deleted: deleting from one table would change
    // which rows of the other still take part in the join.
    QList<QVariantList> keys;
    for (const KeyedDeleteStep& step : translation.steps) {
        RowStore rows;
        QList<ResultColumn> columns;
        if (!m_engine->select(step.selectKeysSql, translation.values, columns, rows))
            return fail(m_engine->lastError());
        QVariantList stepKeys;
        std::vector<Cell> cells;
        for (qsizetype row = 0; row < rows.rowCount(); ++row) {
            rows.decodeRow(row, cells);
            stepKeys.append(cells.front().toVariant());
        }
        keys.append(stepKeys);
    }
    long total = 0;
    for (qsizetype i = 0; i < translation.steps.size(); ++i) {
        for (const QVariant& key : std::as_const(keys.at(i))) {
            long changes = 0;
            if (!m_engine->execute(translation.steps.at(i).deleteByKeySql, {key}, &changes))
                return fail(m_engine->lastError());
            total += changes;
        }
    }
    if (rowsAffected)
        *rowsAffected = total;
    return true;
}

bool Connection::holdSharedLock(const QString& name)
{
    if (!m_engine)
        return fail(QStringLiteral("Operation is not allowed when the object is closed."));
    if (m_dialect == SqlDialect::Sqlite)
        return true;
    return m_engine->execute(QStringLiteral("SELECT pg_advisory_lock(hashtext(?))"), {name})
        || fail(m_engine->lastError());
}

void Connection::releaseSharedLock(const QString& name)
{
    if (m_engine && m_dialect == SqlDialect::Postgres)
        m_engine->execute(QStringLiteral("SELECT pg_advisory_unlock(hashtext(?))"), {name});
}

bool Connection::executeNative(const QString& sql, const QVariantList& values)
{
    if (!m_engine)
        return fail(QStringLiteral("Operation is not allowed when the object is closed."));
    return m_engine->execute(sql, values) || fail(m_engine->lastError());
}

} // namespace marlet
