#pragma once

// Translation of statements written in the desktop store's dialect into SQLite or PostgreSQL.
//
// Agreements with the schema and the connection (Schema, Connection, Recordset follow them):
//
// - Identifiers. Every table and column name is written double-quoted in lower case
//   (Account.TicketGrp -> "account"."ticketgrp"; Time, Type, Print, Option, User... need no special
//   care). Tables and columns are therefore created with lower-case quoted names; use
//   SqlTranslator::quoteIdentifier for that so both sides fold case the same way.
// - Text comparison. Written statements compare text with '=' and 'like' and expect case not to
//   matter. The translator does not rewrite comparisons: SQLite text columns are declared
//   COLLATE NOCASE (and SQLite's LIKE folds ASCII anyway); PostgreSQL text columns are citext and
//   'like' becomes ILIKE ... ESCAPE '' (no escape character, as in the desktop store).
// - Booleans are stored as the integers -1 (true) and 0 (false) in SQLite, and as booleans in
//   PostgreSQL. The literals true/false in any case are written as -1 and 0 for SQLite, TRUE and
//   FALSE for PostgreSQL; bound values are converted by the engine to what the column takes.
// - Dates. `now` (a bare identifier now, or Now()) becomes a bound parameter holding the local
//   date-time from the translator's clock: the text "yyyy-MM-dd HH:mm:ss" for SQLite, a
//   QDateTime (timestamp) for PostgreSQL. See dateTimeValue().
// - Parameters are positional '?' markers for both engines (the PostgreSQL driver renumbers
//   them). Every string literal of the statement is bound, whether it holds a {} or not; numbers
//   written in the statement stay in the text.
// - SQLite must run with double-quoted string literals switched off
//   (SQLITE_DBCONFIG_DQS_DML and SQLITE_DBCONFIG_DQS_DDL set to 0), or a misspelt column name
//   would silently become a string instead of an error.
// - Row keys. Keyed statements use SQLite's rowid, so tables are ordinary rowid tables in SQLite.
//   PostgreSQL tables have a last, hidden column PostgresRowKey that numbers the rows as they are
//   added: `*` and `table.*` are written out as the schema's columns so that it never shows, and a
//   select without aggregates is ordered by it (after its own ORDER BY), as SQLite hands rows
//   over in the order they were added. Tables unknown to the schema go by ctid.
//
// Statement kinds and how to run them:
// - Select: run `sql` with `values`. For a select from one table `keyedSql` is the same query with
//   that table's row key as an extra first column, for result sets that write back by key.
// - Insert, Update, Delete: run `sql` with `values`.
// - MultiTableDelete ("Delete account.*,members.* from Account,Members where ..."): the rows of
//   every named table that take part in the join are deleted. Run it in two phases so that
//   deleting from one table cannot change which rows of another table match:
//     1. for each step, run `selectKeysSql` with `values` and keep the keys it returns
//        (one column, distinct keys);
//     2. then for each step and each of its keys, run `deleteByKeySql` with the key as its only
//        parameter.
//   The rows affected are the sum over all deletes. `sql` is empty for this kind.

#include "store/SqlTokenizer.h"
#include "store/Statement.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

namespace marlet {

enum class SqlDialect { Sqlite, Postgres };

// The hidden key column of every PostgreSQL table.
inline constexpr QStringView PostgresRowKey = u"marlet_row";

enum class StatementKind { Select, Insert, Update, Delete, MultiTableDelete };

// One table of a multi-table delete: how to find its rows, and how to delete one of them.
struct KeyedDeleteStep
{
    QString table; // lower case, as in the schema
    QString selectKeysSql; // bound with TranslationResult::values
    QString deleteByKeySql; // bound with one key
};

struct TranslationResult
{
    QString error; // empty on success; a message fit to show
    qsizetype errorPosition = -1; // index into the statement's pattern, -1 when not tied to a place
    StatementKind kind = StatementKind::Select;
    QString sql;
    QString keyedSql; // Select from a single table only, else empty
    QVariantList values; // bound in order to the '?' markers of sql, keyedSql, selectKeysSql
    QStringList tables; // tables named after FROM, INTO or UPDATE, lower case, in order
    QList<KeyedDeleteStep> steps; // MultiTableDelete only

    bool ok() const { return error.isEmpty(); }
};

// A pattern translated before its values are placed. The engine SQL depends on the pattern alone,
// so a connection keeps the plans of the patterns it runs again.
struct TranslationPlan
{
    TranslationResult tokenizeError; // set when the text cannot be split into tokens
    QList<SqlToken> tokens;
    TranslationResult shape; // the result without values, or the grammar's error
    QList<qsizetype> sources; // for each '?' in order: the token whose value it binds, -1 for `now`
    SqlDialect dialect = SqlDialect::Sqlite;
};

struct TranslatorOptions
{
    // Local date-time for `now`; the current time when not set.
    std::function<QDateTime()> clock;
    // When not empty, tables must be among these (any case) or the statement is refused.
    QStringList knownTables;
};

class SqlTranslator
{
public:
    explicit SqlTranslator(TranslatorOptions options = {});

    // Never throws; anything not understood comes back as an error result.
    TranslationResult translate(const Statement& statement, SqlDialect dialect) const;
    // The two halves of translate: the plan of a pattern, then a statement's values placed in it.
    std::shared_ptr<const TranslationPlan> plan(const QString& pattern, SqlDialect dialect) const;
    TranslationResult apply(const TranslationPlan& plan, const QVariantList& values) const;

    // A table or column name as it is written in the engine's SQL: quoted, lower case.
    static QString quoteIdentifier(QStringView name);
    // The column that keys a table's rows, and the condition that finds one row by its key.
    static QString rowKeyColumn(const QString& table, SqlDialect dialect);
    static QString rowKeyCondition(const QString& table, SqlDialect dialect);
    // A date-time as it is bound for the engine (see the agreements above).
    static QVariant dateTimeValue(const QDateTime& value, SqlDialect dialect);

private:
    TranslatorOptions m_options;
};

} // namespace marlet
