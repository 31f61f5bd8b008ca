#include "store/SqliteEngine.h"

#include "store/RowStore.h"
#include "store/SchemaSql.h"
#include "store/SqlTranslator.h"
#include "store/StoreValue.h"

#include <sqlite3.h>

namespace marlet {

namespace {

// SQLITE_TRANSIENT without the C cast of its macro: SQLite copies what is bound.
const sqlite3_destructor_type copyOnBind = reinterpret_cast<sqlite3_destructor_type>(std::intptr_t(-1));
// SQLITE_STATIC: the bound bytes outlive the statement's run.
const sqlite3_destructor_type keepOnBind = nullptr;

// Kept statements beyond this number are dropped all at once; the screens use a few dozen texts.
constexpr qsizetype keptStatements = 64;

// Puts a statement back to its start when a run ends, so that no read or write lock outlives it.
class ResetOnExit
{
public:
    explicit ResetOnExit(sqlite3_stmt* statement)
        : m_statement(statement)
    {
    }
    ~ResetOnExit()
    {
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
    }
    ResetOnExit(const ResetOnExit&) = delete;
    ResetOnExit& operator=(const ResetOnExit&) = delete;

private:
    sqlite3_stmt* m_statement;
};

QString placeholders(qsizetype count)
{
    QStringList marks;
    marks.fill(QStringLiteral("?"), count);
    return marks.join(QStringLiteral(", "));
}

QString quotedList(const QStringList& names, const QString& suffix)
{
    QStringList quoted;
    for (const QString& name : names)
        quoted.append(SqlTranslator::quoteIdentifier(name) + suffix);
    return quoted.join(QStringLiteral(", "));
}

QString utf8(const char* text)
{
    return text ? QString::fromUtf8(text) : QString();
}

void addCell(sqlite3_stmt* statement, int column, RowStore& rows)
{
    // The column's value is taken once and read through: each column call looks the column up
    // again. The connection runs without SQLite's mutex, so the value needs no protection.
    sqlite3_value* value = sqlite3_column_value(statement, column);
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        rows.addInteger(sqlite3_value_int64(value));
        break;
    case SQLITE_FLOAT:
        rows.addReal(sqlite3_value_double(value));
        break;
    case SQLITE_TEXT: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        rows.addText(text, std::size_t(sqlite3_value_bytes(value)));
        break;
    }
    case SQLITE_BLOB: {
        const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
        rows.addBlob(bytes, std::size_t(sqlite3_value_bytes(value)));
        break;
    }
    default:
        rows.addNull();
    }
}

ResultColumn describeColumn(sqlite3_stmt* statement, int column)
{
    ResultColumn result {utf8(sqlite3_column_name(statement, column)),
        std::nullopt,
        utf8(sqlite3_column_table_name(statement, column)),
        utf8(sqlite3_column_origin_name(statement, column))};
    // The schema decides, and gives the column's name its own spelling; a table it does not know
    // falls back to the declared type.
    const ColumnDef* def = Schema::standard().column(result.table, result.column);
    if (!def) {
        result.type = SqliteEngine::typeFromName(sqlite3_column_decltype(statement, column));
        return result;
    }
    result.type = def->type;
    if (result.name.compare(def->name, Qt::CaseInsensitive) == 0)
        result.name = def->name;
    return result;
}

} // namespace

SqliteEngine::SqliteEngine(sqlite3* handle)
    : m_handle(handle)
{
}

SqliteEngine::~SqliteEngine()
{
    finalizeAll();
}

void SqliteEngine::finalizeAll()
{
    for (sqlite3_stmt* statement : std::as_const(m_statements))
        sqlite3_finalize(statement);
    m_statements.clear();
    m_columns.clear();
}

QString SqliteEngine::typeName(ColumnType type)
{
    switch (type) {
    case ColumnType::Text:
        return QStringLiteral("TEXT");
    case ColumnType::Boolean:
        return QStringLiteral("BOOLEAN");
    case ColumnType::Integer:
        return QStringLiteral("INTEGER");
    case ColumnType::Single:
        return QStringLiteral("FLOAT");
    case ColumnType::Double:
        return QStringLiteral("DOUBLE");
    case ColumnType::Date:
        return QStringLiteral("DATETIME");
    case ColumnType::Number:
        break;
    }
    return QStringLiteral("NUMERIC");
}

std::optional<ColumnType> SqliteEngine::typeFromName(const char* declared)
{
    const QString name = utf8(declared);
    for (ColumnType type : {ColumnType::Text,
             ColumnType::Boolean,
             ColumnType::Integer,
             ColumnType::Single,
             ColumnType::Double,
             ColumnType::Date,
             ColumnType::Number}) {
        if (name.compare(typeName(type), Qt::CaseInsensitive) == 0)
            return type;
    }
    return std::nullopt;
}

bool SqliteEngine::fail()
{
    const int code = sqlite3_errcode(m_handle) & 0xff;
    if (code == SQLITE_CORRUPT || code == SQLITE_NOTADB) {
        m_damage = QStringLiteral("The database is damaged (%1). Nothing more is read from it or written to it; "
                                  "restore it from a backup.")
                       .arg(utf8(sqlite3_errmsg(m_handle)));
        return fail(m_damage);
    }
    fail(utf8(sqlite3_errmsg(m_handle)));
    m_duplicate = sqlite3_extended_errcode(m_handle) == SQLITE_CONSTRAINT_UNIQUE;
    return false;
}

bool SqliteEngine::fail(const QString& message)
{
    m_error = message;
    m_duplicate = false;
    return false;
}

sqlite3_stmt* SqliteEngine::prepare(const QString& sql, const QVariantList& values)
{
    // What a damaged file returns cannot be trusted, and writing to it can spread the damage.
    if (!m_damage.isEmpty()) {
        fail(m_damage);
        return nullptr;
    }
    sqlite3_stmt* statement = m_statements.value(sql);
    if (!statement) {
        const QByteArray text = sql.toUtf8();
        const char* tail = nullptr;
        if (sqlite3_prepare_v3(
                m_handle, text.constData(), int(text.size()), SQLITE_PREPARE_PERSISTENT, &statement, &tail)
            != SQLITE_OK) {
            fail();
            return nullptr;
        }
        if (!statement || !QByteArrayView(tail).trimmed().isEmpty()) {
            sqlite3_finalize(statement);
            fail(QStringLiteral("Characters found after end of SQL statement."));
            return nullptr;
        }
        if (m_statements.size() >= keptStatements)
            finalizeAll();
        m_statements.insert(sql, statement);
    }
    return bind(statement, values) ? statement : nullptr;
}

bool SqliteEngine::bind(sqlite3_stmt* statement, const QVariantList& values)
{
    if (sqlite3_bind_parameter_count(statement) != values.size())
        return fail(QStringLiteral("Number of values (%1) does not match the statement's parameters (%2).")
                        .arg(values.size())
                        .arg(sqlite3_bind_parameter_count(statement)));
    // Every statement run ends with its bindings cleared, so the texts of the last one are free.
    m_boundTexts.clear();
    for (int i = 0; i < values.size(); ++i) {
        const QVariant& given = values.at(i);
        // A text, as nearly every bound value is, is bound from the list without a copy of it.
        const int rc = given.typeId() == QMetaType::QString
            ? bindText(statement, i + 1, *static_cast<const QString*>(given.constData()))
            : bindValue(statement, i + 1, storevalue::toBindable(given));
        if (rc != SQLITE_OK) {
            fail();
            sqlite3_clear_bindings(statement);
            return false;
        }
    }
    return true;
}

int SqliteEngine::bindValue(sqlite3_stmt* statement, int place, const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return sqlite3_bind_null(statement, place);
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float)
        return sqlite3_bind_double(statement, place, value.toDouble());
    if (value.typeId() == QMetaType::QByteArray) {
        const QByteArray bytes = value.toByteArray();
        return sqlite3_bind_blob64(statement, place, bytes.constData(), sqlite3_uint64(bytes.size()), copyOnBind);
    }
    if (value.typeId() == QMetaType::QString || !value.canConvert<qint64>())
        return bindText(statement, place, value.toString());
    return sqlite3_bind_int64(statement, place, value.toLongLong());
}

int SqliteEngine::bindText(sqlite3_stmt* statement, int place, const QString& text)
{
    // Bound as UTF-8, the database's own encoding, and held until the next bind: SQLite neither
    // copies nor converts it.
    const QByteArray& utf8 = m_boundTexts.emplace_back(text.toUtf8());
    return sqlite3_bind_text64(
        statement, place, utf8.constData(), sqlite3_uint64(utf8.size()), keepOnBind, SQLITE_UTF8);
}

bool SqliteEngine::execute(const QString& sql, const QVariantList& values, long* changes)
{
    sqlite3_stmt* statement = prepare(sql, values);
    if (!statement)
        return false;
    const ResetOnExit reset(statement);
    int rc = SQLITE_ROW;
    while (rc == SQLITE_ROW)
        rc = sqlite3_step(statement);
    if (rc != SQLITE_DONE)
        return fail();
    if (changes)
        *changes = sqlite3_stmt_readonly(statement) ? 0 : long(sqlite3_changes64(m_handle));
    return true;
}

bool SqliteEngine::select(const QString& sql, const QVariantList& values, QList<ResultColumn>& columns, RowStore& rows)
{
    sqlite3_stmt* statement = prepare(sql, values);
    if (!statement)
        return false;
    const ResetOnExit reset(statement);
    const int count = sqlite3_column_count(statement);
    columns = describedColumns(statement);
    rows.clear(count);
    int rc = SQLITE_OK;
    while ((rc = sqlite3_step(statement)) == SQLITE_ROW) {
        rows.beginRow();
        for (int column = 0; column < count; ++column)
            addCell(statement, column, rows);
        rows.endRow();
    }
    return rc == SQLITE_DONE || fail();
}

const QList<ResultColumn>& SqliteEngine::describedColumns(sqlite3_stmt* statement)
{
    // SQLite prepares a kept statement again after a change of the schema; a changed column count
    // shows that its description is out of date.
    const int count = sqlite3_column_count(statement);
    auto kept = m_columns.find(statement);
    if (kept == m_columns.end() || kept->size() != count) {
        QList<ResultColumn> columns;
        for (int column = 0; column < count; ++column)
            columns.append(describeColumn(statement, column));
        kept = m_columns.insert(statement, columns);
    }
    return *kept;
}

bool SqliteEngine::updateRow(
    const QString& table, const QStringList& columns, const QVariantList& values, QVariant& key, long* changes)
{
    const QString sql = QStringLiteral("UPDATE ") + SqlTranslator::quoteIdentifier(table) + QStringLiteral(" SET ")
        + quotedList(columns, QStringLiteral(" = ?")) + QStringLiteral(" WHERE rowid = ?");
    return execute(sql, QVariantList(values) << key, changes);
}

bool SqliteEngine::insertRow(
    const QString& table, const QStringList& columns, const QVariantList& values, QVariant* key)
{
    const InsertKey textKey {table, columns};
    auto sql = m_insertTexts.constFind(textKey);
    if (sql == m_insertTexts.constEnd()) {
        const QString head = QStringLiteral("INSERT INTO ") + SqlTranslator::quoteIdentifier(table);
        sql = m_insertTexts.insert(textKey,
            columns.isEmpty() ? QString(head + QStringLiteral(" DEFAULT VALUES"))
                              : QString(head + QStringLiteral(" (") + quotedList(columns, QString())
                                  + QStringLiteral(") VALUES (") + placeholders(columns.size()) + u')'));
    }
    if (!execute(*sql, values))
        return false;
    if (key)
        *key = QVariant(qint64(sqlite3_last_insert_rowid(m_handle)));
    return true;
}

bool SqliteEngine::deleteRow(const QString& table, const QVariant& key, long* changes)
{
    const QString sql
        = QStringLiteral("DELETE FROM ") + SqlTranslator::quoteIdentifier(table) + QStringLiteral(" WHERE rowid = ?");
    return execute(sql, {key}, changes);
}

QStringList SqliteEngine::schemaSql(const Schema& schema) const
{
    return schemaStatements(schema, [](const ColumnDef& column) -> QString {
        return typeName(column.type)
            + (column.type == ColumnType::Text ? QStringLiteral(" COLLATE NOCASE") : QString());
    });
}

} // namespace marlet
