#include "inventory/SalesSummary.h"

#include "inventory/TicketExport.h"
#include "store/Connection.h"
#include "store/Recordset.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

namespace marlet {

namespace {

bool inRange(const SalesSummary& summary, const QDate& day)
{
    return day.isValid() && (!summary.from.isValid() || day >= summary.from)
        && (!summary.to.isValid() || day <= summary.to);
}

bool openAll(Recordset& rows, const QString& select, Connection& connection, QString& error)
{
    if (rows.Open(Statement(select), connection))
        return true;
    error = rows.lastError();
    return false;
}

QString staffName(const QString& name)
{
    const QString trimmed = name.trimmed();
    return trimmed.isEmpty() ? QStringLiteral("(unknown)") : trimmed;
}

QString money(double value)
{
    return QString::number(value, 'f', 2);
}

QStringList lineFields(const QString& kind, const QString& key, const SalesLine& line)
{
    return {kind,
        key,
        QString::number(line.made),
        QString::number(line.sold),
        QString::number(line.recharges),
        money(line.money)};
}

void addTable(QString& text, const QString& title, const QList<QStringList>& rows)
{
    const QStringList header
        = {title, QStringLiteral("Made"), QStringLiteral("Sold"), QStringLiteral("Recharges"), QStringLiteral("Money")};
    QList<qsizetype> widths;
    for (const QString& cell : header)
        widths.append(cell.size());
    for (const QStringList& row : rows) {
        for (qsizetype col = 0; col < row.size(); ++col)
            widths[col] = std::max(widths[col], row[col].size());
    }
    const auto lineOf = [&](const QStringList& cells) -> QString {
        QString line = cells[0].leftJustified(widths[0]);
        for (qsizetype col = 1; col < cells.size(); ++col)
            line += QStringLiteral("  ") + cells[col].rightJustified(widths[col]);
        return line + u'\n';
    };
    text += lineOf(header);
    for (const QStringList& row : rows)
        text += lineOf(row);
}

QString rangeText(const SalesSummary& summary)
{
    const QString from = summary.from.isValid() ? summary.from.toString(Qt::ISODate) : QStringLiteral("the start");
    const QString to = summary.to.isValid() ? summary.to.toString(Qt::ISODate) : QStringLiteral("today");
    return QStringLiteral("Sales from %1 to %2\n").arg(from, to);
}

} // namespace

QDate groupStampDay(const QString& stamp)
{
    static const QRegularExpression day(QStringLiteral("(\\d{2})/(\\d{2})/(\\d{2})"));
    const QRegularExpressionMatch match = day.match(stamp);
    if (!match.hasMatch())
        return {};
    return QDate(2000 + match.captured(3).toInt(), match.captured(2).toInt(), match.captured(1).toInt());
}

// Tickets per group as they stand in Account and in the recycle bin: the group row's own count is
// one more than the batch made.
bool countTickets(Connection& connection, const QString& table, QHash<QString, qint64>& counts, QString& error)
{
    Recordset rows;
    if (!openAll(rows, QStringLiteral("Select TicketGrp From ") + table, connection, error))
        return false;
    for (; !rows.Eof(); rows.MoveNext())
        ++counts[rows.value(0).toString()];
    return true;
}

// One more of `counter` for each row of the select, on the day in `dayColumn` and for the staff
// member in `staffColumn`.
bool countOnDays(Connection& connection,
    SalesSummary& summary,
    const QString& select,
    const QString& dayColumn,
    const QString& staffColumn,
    qint64 SalesLine::*counter,
    QString& error)
{
    Recordset rows;
    if (!openAll(rows, select, connection, error))
        return false;
    for (; !rows.Eof(); rows.MoveNext()) {
        const QDate day = rows.value(dayColumn).toDateTime().date();
        if (!inRange(summary, day))
            continue;
        for (SalesLine* line :
            {&summary.days[day], &summary.staff[staffName(rows.value(staffColumn).toString())], &summary.total})
            ++(line->*counter);
    }
    return true;
}

bool readSalesSummary(Connection& connection, SalesSummary& summary, QString& error)
{
    QHash<QString, qint64> ticketsOfGroup;
    if (!countTickets(connection, QStringLiteral("Account"), ticketsOfGroup, error)
        || !countTickets(connection, QStringLiteral("RecycleBin"), ticketsOfGroup, error))
        return false;
    Recordset groups;
    if (!openAll(groups, QStringLiteral("Select * From TicketInfo"), connection, error))
        return false;
    for (; !groups.Eof(); groups.MoveNext()) {
        const QDate day = groupStampDay(groups.value(QStringLiteral("TimeGenerated")).toString());
        if (!inRange(summary, day))
            continue;
        const qint64 made = ticketsOfGroup.value(groups.value(QStringLiteral("TicketGrp")).toString());
        const double takings = groups.value(QStringLiteral("TotalCost")).toDouble();
        for (SalesLine* line : {&summary.days[day],
                 &summary.staff[staffName(groups.value(QStringLiteral("GeneratedBy")).toString())],
                 &summary.total}) {
            line->made += made;
            line->money += takings;
        }
    }
    // Tickets the host used, on the day of their last use, for who made them; recharges on their
    // day, for who recharged.
    if (!countOnDays(connection,
            summary,
            QStringLiteral("Select * From Account where NEW = false"),
            QStringLiteral("LastUsed"),
            QStringLiteral("ByWhom"),
            &SalesLine::sold,
            error)
        || !countOnDays(connection,
            summary,
            QStringLiteral("Select * From Rechargeinfo"),
            QStringLiteral("timedate"),
            QStringLiteral("Rechargeduser"),
            &SalesLine::recharges,
            error))
        return false;
    Recordset totals;
    if (!openAll(totals, QStringLiteral("Select * From Register"), connection, error))
        return false;
    if (!totals.Eof()) {
        summary.registerTickets = totals.value(QStringLiteral("TotGenerated")).toDouble();
        summary.registerMoney = totals.value(QStringLiteral("TotCost")).toDouble();
    }
    return true;
}

QString salesTable(const SalesSummary& summary)
{
    QString text = rangeText(summary) + u'\n';
    QList<QStringList> rows;
    for (auto day = summary.days.cbegin(); day != summary.days.cend(); ++day)
        rows.append(lineFields({}, day.key().toString(Qt::ISODate), day.value()).mid(1));
    rows.append(lineFields({}, QStringLiteral("Total"), summary.total).mid(1));
    addTable(text, QStringLiteral("Day"), rows);
    text += u'\n';
    rows.clear();
    for (auto staff = summary.staff.cbegin(); staff != summary.staff.cend(); ++staff)
        rows.append(lineFields({}, staff.key(), staff.value()).mid(1));
    addTable(text, QStringLiteral("Staff"), rows);
    if (summary.registerTickets >= 0) {
        text += QStringLiteral("\nRegister, all time: %1 tickets, %2\n")
                    .arg(QString::number(summary.registerTickets, 'f', 0), money(summary.registerMoney));
    }
    return text;
}

QByteArray salesCsv(const SalesSummary& summary)
{
    QByteArray csv = csvLine({QStringLiteral("kind"),
        QStringLiteral("key"),
        QStringLiteral("made"),
        QStringLiteral("sold"),
        QStringLiteral("recharges"),
        QStringLiteral("money")});
    for (auto day = summary.days.cbegin(); day != summary.days.cend(); ++day)
        csv += csvLine(lineFields(QStringLiteral("day"), day.key().toString(Qt::ISODate), day.value()));
    for (auto staff = summary.staff.cbegin(); staff != summary.staff.cend(); ++staff)
        csv += csvLine(lineFields(QStringLiteral("staff"), staff.key(), staff.value()));
    csv += csvLine(lineFields(QStringLiteral("total"), {}, summary.total));
    return csv;
}

} // namespace marlet
