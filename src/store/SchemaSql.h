#pragma once

#include "store/Schema.h"
#include "store/SqlTranslator.h"

#include <QStringList>

#include <functional>

namespace marlet {

// The statements that create a schema's tables and indexes, as both engines write them: each
// engine gives a column's definition after its name, and what a table has after its columns.
inline QStringList schemaStatements(
    const Schema& schema, const std::function<QString(const ColumnDef&)>& columnType, const QString& tableTail = {})
{
    QStringList statements;
    for (const TableDef& table : schema.tables()) {
        QStringList columns;
        for (const ColumnDef& column : table.columns)
            columns.append(SqlTranslator::quoteIdentifier(column.name) + u' ' + columnType(column));
        if (!tableTail.isEmpty())
            columns.append(tableTail);
        statements.append(QStringLiteral("CREATE TABLE ") + SqlTranslator::quoteIdentifier(table.name)
            + QStringLiteral(" (") + columns.join(QStringLiteral(", ")) + u')');
    }
    for (const IndexDef& index : schema.indexes()) {
        statements.append(QLatin1String(index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ")
            + SqlTranslator::quoteIdentifier(index.name) + QStringLiteral(" ON ")
            + SqlTranslator::quoteIdentifier(index.table) + QStringLiteral(" (")
            + SqlTranslator::quoteIdentifier(index.column) + u')');
    }
    return statements;
}

} // namespace marlet
