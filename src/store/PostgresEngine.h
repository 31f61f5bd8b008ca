#pragma once

#include "store/StoreEngine.h"

#include <QByteArray>
#include <QHash>
#include <QList>

#include <memory>
#include <utility>

struct pg_conn;
struct pg_result;

namespace marlet {

// The engine over a PostgreSQL server, through libpq. Statements are prepared on the server once
// and kept; values go as parameters, converted to what the server says each parameter is: a
// boolean column takes -1/0 as true/false, a timestamp takes the store's date text. Results come
// back in the store's forms: booleans as -1/0, timestamps as "yyyy-MM-dd HH:mm:ss".
//
// A row's key is the hidden column PostgresRowKey, numbered as rows are added (see SqlTranslator).
// A table the schema does not know goes by ctid, the row's place, which moves when the row is
// written: an update hands the new one back.
class PostgresEngine final : public StoreEngine
{
public:
    // Opens a connection ("postgresql://..." or "host=... dbname=..."). Waits on other servers'
    // locks end after `lockTimeout` milliseconds. Null with the reason in `error` on failure.
    static std::unique_ptr<PostgresEngine> connect(const QString& target, int lockTimeout, QString* error);
    ~PostgresEngine() override;
    PostgresEngine(const PostgresEngine&) = delete;
    PostgresEngine& operator=(const PostgresEngine&) = delete;

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
    bool lastFailureWasDuplicate() const override { return m_sqlState == "23505"; }

    // The declared type a column is created with.
    static QString typeName(ColumnType type);
    // The statement's '?' markers as $1, $2, ... (string literals and quoted names left alone).
    static QString numberedParameters(const QString& sql);

private:
    struct Prepared
    {
        QByteArray name;
        QList<unsigned int> parameterTypes;
        bool described = false;
        QList<ResultColumn> columns;
    };
    using Result = std::unique_ptr<pg_result, void (*)(pg_result*)>;

    PostgresEngine(pg_conn* connection, int lockTimeout);
    Result run(const QString& sql, const QVariantList& values, Prepared** used);
    Prepared* prepare(const QString& sql);
    const QList<ResultColumn>& describedColumns(Prepared& prepared, const pg_result* result);
    QString tableColumnName(unsigned int table, int column, QString* tableName);
    bool fail(const pg_result* result);
    bool fail(const QString& message);

    pg_conn* m_connection;
    int m_lockTimeout;
    QHash<QString, Prepared> m_prepared;
    int m_nextName = 0;
    // Table and column names by the server's numbers, for describing result columns.
    QHash<unsigned int, std::pair<QString, QHash<int, QString>>> m_tables;
    QString m_error;
    QByteArray m_sqlState;
};

} // namespace marlet
