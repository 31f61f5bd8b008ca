#include "store/PostgresEngine.h"

#include "store/RowStore.h"
#include "store/SchemaSql.h"
#include "store/SqlTranslator.h"
#include "store/StoreValue.h"

#include <libpq-fe.h>

#include <cstdlib>
#include <tuple>
#include <vector>

namespace marlet {

namespace {

// The server's numbers of the built-in types that the store meets.
enum TypeOid : Oid {
    BoolOid = 16,
    ByteaOid = 17,
    Int8Oid = 20,
    Int2Oid = 21,
    Int4Oid = 23,
    OidOid = 26,
    Float4Oid = 700,
    Float8Oid = 701,
    DateOid = 1082,
    TimeOid = 1083,
    TimestampOid = 1114,
    TimestampTzOid = 1184,
    NumericOid = 1700,
};

// Kept statements beyond this number are dropped all at once; the screens use a few dozen texts.
constexpr qsizetype keptStatements = 256;

// How long one statement may run at most, whatever it waits for.
constexpr int statementTimeout = 300000;

void clearResult(pg_result* result)
{
    PQclear(result);
}

QString quotedList(const QStringList& names, const QString& suffix)
{
    QStringList quoted;
    for (const QString& name : names)
        quoted.append(SqlTranslator::quoteIdentifier(name) + suffix);
    return quoted.join(QStringLiteral(", "));
}

QString placeholders(qsizetype count)
{
    QStringList marks;
    marks.fill(QStringLiteral("?"), count);
    return marks.join(QStringLiteral(", "));
}

// Statements that the server prepares; anything else (BEGIN, CREATE ...) runs as it stands.
bool isPreparable(const QString& sql)
{
    const QStringView head = QStringView(sql).trimmed().left(7);
    for (const char* verb : {"SELECT", "INSERT", "UPDATE", "DELETE"}) {
        if (head.startsWith(QLatin1String(verb), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

// A value as text for a parameter of the given type; nothing for Null.
std::optional<QByteArray> parameterText(const QVariant& given, Oid type)
{
    if (!given.isValid() || given.isNull())
        return std::nullopt;
    const QVariant value = storevalue::toBindable(given);
    if (type == BoolOid) {
        if (value.typeId() == QMetaType::QString) {
            const QString text = value.toString().trimmed();
            bool number = false;
            const double asNumber = text.toDouble(&number);
            if (number)
                return QByteArray(asNumber != 0 ? "t" : "f");
            return text.toUtf8();
        }
        return QByteArray(value.toDouble() != 0 ? "t" : "f");
    }
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float)
        return QByteArray::number(value.toDouble(), 'g', 17);
    return value.toString().toUtf8();
}

// One value of a result in the store's form, by the type the server gave it.
void addCell(const pg_result* result, int row, int column, RowStore& rows)
{
    if (PQgetisnull(result, row, column)) {
        rows.addNull();
        return;
    }
    const char* text = PQgetvalue(result, row, column);
    const auto size = std::size_t(PQgetlength(result, row, column));
    switch (PQftype(result, column)) {
    case BoolOid:
        rows.addInteger(text[0] == 't' ? -1 : 0);
        return;
    case Int2Oid:
    case Int4Oid:
    case Int8Oid:
    case OidOid:
        rows.addInteger(std::strtoll(text, nullptr, 10));
        return;
    case Float4Oid:
    case Float8Oid:
        rows.addReal(std::strtod(text, nullptr));
        return;
    case NumericOid:
        if (QByteArrayView(text, qsizetype(size)).contains('.'))
            rows.addReal(std::strtod(text, nullptr));
        else
            rows.addInteger(std::strtoll(text, nullptr, 10));
        return;
    case TimestampOid:
    case TimestampTzOid: {
        // Whole seconds, as the store writes them.
        const QByteArrayView value(text, qsizetype(size));
        const qsizetype fraction = value.indexOf('.');
        rows.addText(text, fraction < 0 ? size : std::size_t(fraction));
        return;
    }
    case DateOid: {
        const std::string value = std::string(text, size) + " 00:00:00";
        rows.addText(value.data(), value.size());
        return;
    }
    case TimeOid: {
        const std::string value = "1899-12-30 " + std::string(text, std::min<std::size_t>(size, 8));
        rows.addText(value.data(), value.size());
        return;
    }
    case ByteaOid: {
        std::size_t length = 0;
        unsigned char* bytes = PQunescapeBytea(reinterpret_cast<const unsigned char*>(text), &length);
        rows.addBlob(reinterpret_cast<const char*>(bytes), length);
        PQfreemem(bytes);
        return;
    }
    default:
        rows.addText(text, size);
    }
}

// Waits end in a clear message instead of hanging a screen; notices would go to stderr.
QString sessionSetup(int lockTimeout)
{
    return QStringLiteral("SET lock_timeout = %1; SET statement_timeout = %2; "
                          "SET client_min_messages = warning; SET datestyle = 'ISO, YMD'")
        .arg(lockTimeout)
        .arg(statementTimeout);
}

QString utf8(const char* text)
{
    return text ? QString::fromUtf8(text).trimmed() : QString();
}

} // namespace

std::unique_ptr<PostgresEngine> PostgresEngine::connect(const QString& target, int lockTimeout, QString* error)
{
    pg_conn* connection = PQconnectdb(target.toUtf8().constData());
    if (!connection || PQstatus(connection) != CONNECTION_OK) {
        *error = QStringLiteral("The PostgreSQL server could not be reached: %1")
                     .arg(connection ? utf8(PQerrorMessage(connection)) : QStringLiteral("out of memory"));
        PQfinish(connection);
        return nullptr;
    }
    PQsetClientEncoding(connection, "UTF8");
    std::unique_ptr<PostgresEngine> engine(new PostgresEngine(connection, lockTimeout));
    if (!engine->execute(sessionSetup(lockTimeout), {})) {
        *error = engine->lastError();
        return nullptr;
    }
    return engine;
}

PostgresEngine::PostgresEngine(pg_conn* connection, int lockTimeout)
    : m_connection(connection)
    , m_lockTimeout(lockTimeout)
{
}

PostgresEngine::~PostgresEngine()
{
    PQfinish(m_connection);
}

QString PostgresEngine::typeName(ColumnType type)
{
    switch (type) {
    case ColumnType::Text:
        return QStringLiteral("CITEXT");
    case ColumnType::Boolean:
        return QStringLiteral("BOOLEAN");
    case ColumnType::Integer:
        return QStringLiteral("INTEGER");
    case ColumnType::Single:
        return QStringLiteral("REAL");
    case ColumnType::Double:
        return QStringLiteral("DOUBLE PRECISION");
    case ColumnType::Date:
        return QStringLiteral("TIMESTAMP(0)");
    case ColumnType::Number:
        break;
    }
    return QStringLiteral("NUMERIC");
}

QString PostgresEngine::numberedParameters(const QString& sql)
{
    QString result;
    result.reserve(sql.size() + 16);
    int number = 0;
    QChar quote;
    for (const QChar c : sql) {
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
        } else if (c == u'\'' || c == u'"') {
            quote = c;
        } else if (c == u'?') {
            result += u'$' + QString::number(++number);
            continue;
        }
        result += c;
    }
    return result;
}

bool PostgresEngine::fail(const QString& message)
{
    m_error = message;
    return false;
}

bool PostgresEngine::fail(const pg_result* result)
{
    m_sqlState = result ? QByteArray(PQresultErrorField(result, PG_DIAG_SQLSTATE)) : QByteArray();
    if (PQstatus(m_connection) == CONNECTION_BAD) {
        const QString reason = utf8(PQerrorMessage(m_connection));
        // The next statement tries again on a new connection, set up as the first one was.
        PQreset(m_connection);
        if (PQstatus(m_connection) == CONNECTION_OK) {
            PQsetClientEncoding(m_connection, "UTF8");
            Result done(PQexec(m_connection, sessionSetup(m_lockTimeout).toUtf8().constData()), clearResult);
        }
        m_prepared.clear();
        return fail(QStringLiteral("The connection to the PostgreSQL server was lost: %1").arg(reason));
    }
    const QString message
        = result ? utf8(PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY)) : utf8(PQerrorMessage(m_connection));
    if (m_sqlState == "55P03")
        return fail(QStringLiteral("The database is busy: another server held a lock on the rows for more than "
                                   "%1 seconds. Try again.")
                        .arg(m_lockTimeout / 1000.0));
    if (m_sqlState == "57014")
        return fail(
            QStringLiteral("The statement was stopped after running for %1 seconds.").arg(statementTimeout / 1000));
    if (m_sqlState == "40P01")
        return fail(QStringLiteral("The database stopped the statement: two servers waited for each other's "
                                   "rows. Try again."));
    return fail(message.isEmpty() ? QStringLiteral("The PostgreSQL server gave no reason for the failure.") : message);
}

PostgresEngine::Prepared* PostgresEngine::prepare(const QString& sql)
{
    auto kept = m_prepared.find(sql);
    if (kept != m_prepared.end())
        return &*kept;
    if (m_prepared.size() >= keptStatements) {
        Result done(PQexec(m_connection, "DEALLOCATE ALL"), clearResult);
        m_prepared.clear();
    }
    Prepared prepared;
    prepared.name = "marlet_" + QByteArray::number(++m_nextName);
    const QByteArray text = numberedParameters(sql).toUtf8();
    Result made(PQprepare(m_connection, prepared.name.constData(), text.constData(), 0, nullptr), clearResult);
    if (PQresultStatus(made.get()) != PGRES_COMMAND_OK) {
        fail(made.get());
        return nullptr;
    }
    Result described(PQdescribePrepared(m_connection, prepared.name.constData()), clearResult);
    if (PQresultStatus(described.get()) != PGRES_COMMAND_OK) {
        fail(described.get());
        return nullptr;
    }
    for (int i = 0; i < PQnparams(described.get()); ++i)
        prepared.parameterTypes.append(PQparamtype(described.get(), i));
    return &*m_prepared.insert(sql, prepared);
}

PostgresEngine::Result PostgresEngine::run(const QString& sql, const QVariantList& values, Prepared** used)
{
    m_sqlState.clear();
    *used = nullptr;
    if (values.isEmpty() && !isPreparable(sql)) {
        Result result(PQexec(m_connection, sql.toUtf8().constData()), clearResult);
        const ExecStatusType status = PQresultStatus(result.get());
        if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
            fail(result.get());
            return Result(nullptr, clearResult);
        }
        return result;
    }
    // A kept statement fails once after a table it uses was made again; it is prepared anew.
    for (int attempt = 0; attempt < 2; ++attempt) {
        Prepared* prepared = prepare(sql);
        if (!prepared)
            return Result(nullptr, clearResult);
        if (prepared->parameterTypes.size() != values.size()) {
            fail(QStringLiteral("Number of values (%1) does not match the statement's parameters (%2).")
                     .arg(values.size())
                     .arg(prepared->parameterTypes.size()));
            return Result(nullptr, clearResult);
        }
        std::vector<std::optional<QByteArray>> texts;
        std::vector<const char*> pointers;
        texts.reserve(std::size_t(values.size()));
        for (qsizetype i = 0; i < values.size(); ++i) {
            texts.push_back(parameterText(values.at(i), prepared->parameterTypes.at(i)));
            pointers.push_back(texts.back() ? texts.back()->constData() : nullptr);
        }
        Result result(
            PQexecPrepared(
                m_connection, prepared->name.constData(), int(values.size()), pointers.data(), nullptr, nullptr, 0),
            clearResult);
        const ExecStatusType status = PQresultStatus(result.get());
        if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK) {
            *used = prepared;
            return result;
        }
        const QByteArray state(PQresultErrorField(result.get(), PG_DIAG_SQLSTATE));
        if (attempt == 0 && state == "0A000" && PQtransactionStatus(m_connection) == PQTRANS_IDLE) {
            const QByteArray drop = "DEALLOCATE " + prepared->name;
            Result done(PQexec(m_connection, drop.constData()), clearResult);
            m_prepared.remove(sql);
            continue;
        }
        fail(result.get());
        break;
    }
    return Result(nullptr, clearResult);
}

bool PostgresEngine::execute(const QString& sql, const QVariantList& values, long* changes)
{
    Prepared* used = nullptr;
    const Result result = run(sql, values, &used);
    if (!result)
        return false;
    if (changes)
        *changes = std::atol(PQcmdTuples(result.get()));
    return true;
}

bool PostgresEngine::select(
    const QString& sql, const QVariantList& values, QList<ResultColumn>& columns, RowStore& rows)
{
    Prepared* used = nullptr;
    const Result result = run(sql, values, &used);
    if (!result)
        return false;
    const pg_result* data = result.get();
    const int count = PQnfields(data);
    if (used) {
        columns = describedColumns(*used, data);
    } else {
        Prepared once;
        columns = describedColumns(once, data);
    }
    rows.clear(count);
    const int rowCount = PQntuples(data);
    for (int row = 0; row < rowCount; ++row) {
        rows.beginRow();
        for (int column = 0; column < count; ++column)
            addCell(data, row, column, rows);
        rows.endRow();
    }
    return true;
}

QString PostgresEngine::tableColumnName(unsigned int table, int column, QString* tableName)
{
    auto known = m_tables.find(table);
    if (known == m_tables.end()) {
        std::pair<QString, QHash<int, QString>> names;
        const QByteArray oid = QByteArray::number(table);
        const char* parameters[] = {oid.constData()};
        Result result(PQexecParams(m_connection,
                          "SELECT c.relname, a.attnum, a.attname FROM pg_class c JOIN pg_attribute a ON "
                          "a.attrelid = c.oid WHERE c.oid = $1::oid AND a.attnum > 0",
                          1,
                          nullptr,
                          parameters,
                          nullptr,
                          nullptr,
                          0),
            clearResult);
        for (int row = 0; PQresultStatus(result.get()) == PGRES_TUPLES_OK && row < PQntuples(result.get()); ++row) {
            names.first = utf8(PQgetvalue(result.get(), row, 0));
            names.second.insert(std::atoi(PQgetvalue(result.get(), row, 1)), utf8(PQgetvalue(result.get(), row, 2)));
        }
        known = m_tables.insert(table, names);
    }
    *tableName = known->first;
    return known->second.value(column);
}

const QList<ResultColumn>& PostgresEngine::describedColumns(Prepared& prepared, const pg_result* result)
{
    const int count = PQnfields(result);
    if (prepared.described && prepared.columns.size() == count)
        return prepared.columns;
    prepared.columns.clear();
    for (int column = 0; column < count; ++column) {
        ResultColumn described {utf8(PQfname(result, column)), std::nullopt, QString(), QString()};
        if (const Oid table = PQftable(result, column); table != InvalidOid)
            described.column = tableColumnName(table, PQftablecol(result, column), &described.table);
        // The schema decides, and gives the column's name its own spelling.
        if (const ColumnDef* def = Schema::standard().column(described.table, described.column)) {
            described.type = def->type;
            if (described.name.compare(def->name, Qt::CaseInsensitive) == 0)
                described.name = def->name;
        }
        prepared.columns.append(described);
    }
    prepared.described = true;
    return prepared.columns;
}

bool PostgresEngine::updateRow(
    const QString& table, const QStringList& columns, const QVariantList& values, QVariant& key, long* changes)
{
    // A row found by its place (a table the schema does not know) moves with the write: its new
    // place is the key from now on.
    const QString sql = QStringLiteral("UPDATE ") + SqlTranslator::quoteIdentifier(table) + QStringLiteral(" SET ")
        + quotedList(columns, QStringLiteral(" = ?")) + QStringLiteral(" WHERE ")
        + SqlTranslator::rowKeyCondition(table, SqlDialect::Postgres) + QStringLiteral(" RETURNING ")
        + SqlTranslator::rowKeyColumn(table, SqlDialect::Postgres);
    RowStore moved;
    QList<ResultColumn> described;
    if (!select(sql, QVariantList(values) << key, described, moved))
        return false;
    if (changes)
        *changes = long(moved.rowCount());
    if (moved.rowCount() == 1) {
        std::vector<Cell> cells;
        moved.decodeRow(0, cells);
        key = cells.front().toVariant();
    }
    return true;
}

bool PostgresEngine::insertRow(
    const QString& table, const QStringList& columns, const QVariantList& values, QVariant* key)
{
    const QString head = QStringLiteral("INSERT INTO ") + SqlTranslator::quoteIdentifier(table);
    const QString sql = (columns.isEmpty() ? QString(head + QStringLiteral(" DEFAULT VALUES"))
                                           : QString(head + QStringLiteral(" (") + quotedList(columns, QString())
                                               + QStringLiteral(") VALUES (") + placeholders(columns.size()) + u')'))
        + QStringLiteral(" RETURNING ") + SqlTranslator::rowKeyColumn(table, SqlDialect::Postgres);
    RowStore added;
    QList<ResultColumn> described;
    if (!select(sql, values, described, added))
        return false;
    if (key && added.rowCount() == 1) {
        std::vector<Cell> cells;
        added.decodeRow(0, cells);
        *key = cells.front().toVariant();
    }
    return true;
}

bool PostgresEngine::deleteRow(const QString& table, const QVariant& key, long* changes)
{
    const QString sql = QStringLiteral("DELETE FROM ") + SqlTranslator::quoteIdentifier(table)
        + QStringLiteral(" WHERE ") + SqlTranslator::rowKeyCondition(table, SqlDialect::Postgres);
    return execute(sql, {key}, changes);
}

QStringList PostgresEngine::schemaSql(const Schema& schema) const
{
    QStringList statements {QStringLiteral("CREATE EXTENSION IF NOT EXISTS citext")};
    // A boolean column compared with the store's -1/0, as statements written for SQLite do.
    for (const auto& [op, function, body] : {std::tuple {"=", "marlet_bool_eq_int", "$1 = ($2 <> 0)"},
             std::tuple {"<>", "marlet_bool_ne_int", "$1 <> ($2 <> 0)"}}) {
        statements.append(QStringLiteral("DROP OPERATOR IF EXISTS %1 (boolean, integer)").arg(QLatin1String(op)));
        statements.append(QStringLiteral("CREATE OR REPLACE FUNCTION %1(boolean, integer) RETURNS boolean "
                                         "LANGUAGE sql IMMUTABLE AS 'SELECT %2'")
                              .arg(QLatin1String(function), QLatin1String(body)));
        statements.append(QStringLiteral("CREATE OPERATOR %1 (LEFTARG = boolean, RIGHTARG = integer, FUNCTION = %2)")
                              .arg(QLatin1String(op), QLatin1String(function)));
    }
    // The hidden key comes last, so that an insert of values by position never reaches it.
    return statements
        + schemaStatements(
            schema,
            [](const ColumnDef& column) { return typeName(column.type); },
            SqlTranslator::quoteIdentifier(PostgresRowKey)
                + QStringLiteral(" BIGINT GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY"));
}

} // namespace marlet
