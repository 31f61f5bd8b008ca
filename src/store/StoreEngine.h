#pragma once

#include "store/Schema.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace marlet {

class RowStore;

// A column of a result: its name as the statement gives it, the declared type that reading uses,
// and the table column it comes from (empty for an expression such as count(*)).
struct ResultColumn
{
    QString name;
    std::optional<ColumnType> type;
    QString table;
    QString column;
};

// What Connection and Recordset need of a database engine. Each engine speaks its own SQL: the
// statements come translated for it, and the write-back of a result set row is built here, by the
// row's key (SQLite's rowid, PostgreSQL's ctid). Nothing here keeps a transaction open between calls.
class StoreEngine
{
public:
    virtual ~StoreEngine() = default;

    // Runs one statement; `changes` gets the rows it changed.
    virtual bool execute(const QString& sql, const QVariantList& values, long* changes = nullptr) = 0;
    // Runs a query and packs all of its rows.
    virtual bool select(const QString& sql, const QVariantList& values, QList<ResultColumn>& columns, RowStore& rows)
        = 0;

    // Write-back of one row of a single-table result set. Columns are names of the table. An engine
    // whose row keys move when a row is written puts the row's new key in `key`.
    virtual bool updateRow(
        const QString& table, const QStringList& columns, const QVariantList& values, QVariant& key, long* changes)
        = 0;
    virtual bool insertRow(const QString& table, const QStringList& columns, const QVariantList& values, QVariant* key)
        = 0;
    virtual bool deleteRow(const QString& table, const QVariant& key, long* changes) = 0;

    // The statements that create the tables and indexes of a schema in a new database.
    virtual QStringList schemaSql(const Schema& schema) const = 0;

    virtual QString lastError() const = 0;
    // True when the last failure was a unique index refusing a second row with the same value.
    virtual bool lastFailureWasDuplicate() const = 0;
};

} // namespace marlet
