#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace marlet {

// What a column holds, as the program requires it. The store keeps booleans as -1/0 integers and
// every date, date-time and time of day as text "yyyy-MM-dd HH:mm:ss" (a date alone at 00:00:00, a
// time alone on 1899-12-30), so that values sort and compare as they should; reading converts back
// by these types, whatever the engine returns.
enum class ColumnType {
    Text, // case-insensitive text
    Boolean, // True -1, False 0
    Integer, // whole number
    Single, // 32-bit float
    Double, // 64-bit float
    Date, // date, date-time or time of day
    Number // whole or fractional, kept as given
};

struct ColumnDef
{
    QString name;
    ColumnType type;
};

struct TableDef
{
    QString name;
    QList<ColumnDef> columns;

    // Position of a column, matched without regard to case, or -1.
    qsizetype columnIndex(QStringView column) const;
    const ColumnDef* column(QStringView column) const;
};

struct IndexDef
{
    QString name;
    QString table;
    QString column;
    bool unique = false;
};

// The tables that the component requires, with their columns in the stated order. The order binds:
// RecycleBin and the print scratch tables are copied and filled by column position.
class Schema
{
public:
    static const Schema& standard();

    const QList<TableDef>& tables() const { return m_tables; }
    const QList<IndexDef>& indexes() const { return m_indexes; }
    // A table by name, matched without regard to case, or null.
    const TableDef* table(QStringView name) const;
    // The declared type of table.column, both matched without regard to case, or null.
    const ColumnDef* column(QStringView table, QStringView column) const;

private:
    Schema();

    QList<TableDef> m_tables;
    QList<IndexDef> m_indexes;
    // "table.column" in lower case -> the column; every result set asks for each of its columns.
    QHash<QString, const ColumnDef*> m_columnIndex;
};

// Name and type of a scratch-table column for the ticket at `slot` (1-based) and `field` (0 to 8).
ColumnDef printSlotColumn(int slot, int field);
// Columns per ticket slot of the print scratch tables.
inline constexpr int PrintSlotColumns = 9;

} // namespace marlet
