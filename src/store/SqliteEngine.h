#pragma once

#include "store/StoreEngine.h"

#include <QByteArray>
#include <QHash>

#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace marlet {

// The engine over an SQLite handle that a QSqlDatabase connection owns. Statements run on the handle
// directly: Qt's per-column fill costs several times what SQLite itself needs for a large listing.
// Prepared statements are kept for reuse, since lookups and inserts repeat the same texts.
class SqliteEngine final : public StoreEngine
{
public:
    explicit SqliteEngine(sqlite3* handle);
    ~SqliteEngine() override;
    SqliteEngine(const SqliteEngine&) = delete;
    SqliteEngine& operator=(const SqliteEngine&) = delete;

    bool execute(const QString& sql, const QVariantList& values, long* changes = nullptr) override;
    bool select(const QString& sql, const QVariantList& values, QList<ResultColumn>& columns, RowStore& rows) override;
    bool updateRow(const QString& table,
        const QStringList& columns,
        const QVariantList& values,
        QVariant& key,
        long* changes) override;
    bool insertRow(
        const QString& table, const QStringList& columns, const QVariantList& values, QVariant* key) override;
    bool deleteRow(const QString& table, const QVariant& key, long* changes) override;
    QStringList schemaSql(const Schema& schema) const override;
    QString lastError() const override { return m_error; }
    bool lastFailureWasDuplicate() const override { return m_duplicate; }

    // Drops the kept statements; the handle can then be closed.
    void finalizeAll();
    // The database handle, for the work that copies a whole database (backup and restore).
    sqlite3* handle() const { return m_handle; }

    // The declared type a column is created with, and back.
    static QString typeName(ColumnType type);
    static std::optional<ColumnType> typeFromName(const char* declared);

private:
    sqlite3_stmt* prepare(const QString& sql, const QVariantList& values);
    const QList<ResultColumn>& describedColumns(sqlite3_stmt* statement);
    bool bind(sqlite3_stmt* statement, const QVariantList& values);
    int bindValue(sqlite3_stmt* statement, int place, const QVariant& value); // as toBindable gives it
    int bindText(sqlite3_stmt* statement, int place, const QString& text);
    bool fail();
    bool fail(const QString& message);

    sqlite3* m_handle;
    QHash<QString, sqlite3_stmt*> m_statements;
    // The result columns of kept statements: describing them looks every column up in the schema,
    // which costs more than a lookup by name itself.
    QHash<sqlite3_stmt*, QList<ResultColumn>> m_columns;
    // Texts of the inserts that result sets write back, by table and column list.
    using InsertKey = std::pair<QString, QStringList>;
    QHash<InsertKey, QString> m_insertTexts;
    // The texts bound to the statement that runs now (bound without a copy).
    std::vector<QByteArray> m_boundTexts;
    QString m_error;
    bool m_duplicate = false;
    // Set at the first report of a damaged file; from then on every statement is refused with it.
    QString m_damage;
};

} // namespace marlet
