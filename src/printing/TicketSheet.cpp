#include "printing/TicketSheet.h"

#include "printing/LoginCode.h"
#include "store/Connection.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "values/Formats.h"
#include "values/Numbers.h"

namespace marlet {

namespace {

// Offsets of a ticket's values inside its nine columns of a scratch-table row.
enum SlotField { GroupNumber, UserName, Password, Time, Amount, Expire, TimeRule, Quota, Days };

constexpr double UnlimitedQuota = -9999;

QString numberText(double value)
{
    return values::numberText(value);
}

double numberOf(const QVariant& value)
{
    return value.isNull() ? 0 : value.toDouble();
}

std::nullopt_t failed(QString* error, const QString& reason)
{
    if (error)
        *error = reason;
    return std::nullopt;
}

SheetTicket accountTicket(const Recordset& ticket, const SheetHeading& heading, const SessionPreferences& settings)
{
    const auto text = [&ticket](const char* column) { return ticket.value(QLatin1String(column)).toString(); };
    const auto number = [&ticket](const char* column) { return numberOf(ticket.value(QLatin1String(column))); };
    return {heading.title,
        text("TicketGrp") + u'-' + text("TicketNo"),
        text("Username"),
        text("Password"),
        sheetTimeText(number("Time")),
        text("Amount"),
        sheetExpiryText(ticket.value(QStringLiteral("Expire")), number("Days")),
        ticketTimeRule(ticket.value(QStringLiteral("Night")).toBool(),
            ticket.value(QStringLiteral("Once")).toBool(),
            ticket.value(QStringLiteral("StartTime")),
            ticket.value(QStringLiteral("EndTime")),
            settings),
        sheetQuotaText(number("Quota")),
        heading.address,
        loginText(heading.loginTemplate, text("Username"), text("Password"))};
}

} // namespace

SheetHeading SheetHeading::fromPreferences(Preferences& preferences)
{
    // Both keys live under the product word, so the host's title does not matter here.
    const SessionPreferences settings(preferences, QString(ProductWord));
    return {settings.text(keys::Title), settings.text(keys::Address), settings.text(keys::LoginTemplate)};
}

int TicketSheet::ticketCount() const
{
    int count = 0;
    for (const QList<SheetTicket>& row : rows) {
        for (const SheetTicket& ticket : row)
            count += ticket.isEmpty() ? 0 : 1;
    }
    return count;
}

int TicketSheet::rowsPerPage() const
{
    switch (ticketsPerRow) {
    case 6:
        return 12;
    case 3:
        return 13;
    default:
        return 11;
    }
}

int TicketSheet::pageCount() const
{
    return int((rows.size() + rowsPerPage() - 1) / rowsPerPage());
}

QString sheetTimeText(double seconds)
{
    const qint64 minutes = qint64(values::truncateToWhole(seconds / 60));
    const auto minuteText = [](qint64 count) -> QString { return QString::number(count) + QStringLiteral(" min(s)"); };
    if (minutes < 60)
        return minuteText(minutes);
    const QString hours = QString::number(minutes / 60) + QStringLiteral(" hr(s)");
    return minutes % 60 == 0 ? hours : hours + u' ' + minuteText(minutes % 60);
}

QString sheetExpiryText(const QVariant& expire, double days)
{
    if (days > 0)
        return numberText(days) + QStringLiteral(" day(s) after first use");
    if (expire.isNull() || !expire.toDateTime().isValid())
        return QStringLiteral("Never expires");
    return QStringLiteral("Expires ") + values::format(expire.toDateTime().date(), QStringLiteral("dd-MMM-yy"));
}

QString ticketTimeRule(
    bool night, bool once, const QVariant& start, const QVariant& end, const SessionPreferences& settings)
{
    if (!night)
        return QStringLiteral("Any Time");
    if (once)
        return QStringLiteral("Time-Once");
    const QString hhmm = QStringLiteral("HH:mm");
    if (settings.number(keys::UseGTime) == 0)
        return values::format(start, hhmm) + u'-' + values::format(end, hhmm);
    return values::format(settings.text(keys::BeginTime), hhmm) + u'-'
        + values::format(settings.text(keys::EndTime), hhmm);
}

QString sheetQuotaText(double quota)
{
    if (quota == UnlimitedQuota)
        return QStringLiteral("Unlimited");
    if (quota == 0)
        return {};
    return numberText(quota) + QStringLiteral(" MB");
}

SheetTicket slotTicket(const Recordset& row, int slot, const SheetHeading& heading)
{
    const int first = slot * PrintSlotColumns;
    const auto text = [&](SlotField field) { return row.value(first + field).toString().trimmed(); };
    const auto number = [&](SlotField field) { return numberOf(row.value(first + field)); };
    if (text(UserName).isEmpty())
        return {};
    return {heading.title,
        text(GroupNumber),
        text(UserName),
        text(Password),
        sheetTimeText(number(Time)),
        text(Amount),
        sheetExpiryText(row.value(first + Expire), number(Days)),
        text(TimeRule),
        sheetQuotaText(number(Quota)),
        heading.address,
        loginText(heading.loginTemplate, text(UserName), text(Password))};
}

std::optional<TicketSheet> readTicketSheet(
    Connection& connection, const Statement& source, int ticketsPerRow, const SheetHeading& heading, QString* error)
{
    Recordset table;
    if (!table.Open(source, connection, CursorType::Static, LockType::ReadOnly))
        return failed(error, table.lastError());
    if (ticketsPerRow < 1 || table.fieldCount() < ticketsPerRow * PrintSlotColumns)
        return failed(error, QStringLiteral("The table has no columns for %1 ticket(s) a row.").arg(ticketsPerRow));
    TicketSheet sheet;
    sheet.ticketsPerRow = ticketsPerRow;
    for (; !table.Eof(); table.MoveNext()) {
        QList<SheetTicket> row;
        for (int slot = 0; slot < ticketsPerRow; ++slot)
            row.append(slotTicket(table, slot, heading));
        sheet.rows.append(row);
    }
    return sheet;
}

TicketSheet packTicketSheet(const QList<SheetTicket>& tickets, int ticketsPerRow)
{
    TicketSheet sheet;
    sheet.ticketsPerRow = qMax(1, ticketsPerRow);
    for (qsizetype first = 0; first < tickets.size(); first += sheet.ticketsPerRow) {
        QList<SheetTicket> row = tickets.mid(first, sheet.ticketsPerRow);
        row.resize(sheet.ticketsPerRow);
        sheet.rows.append(row);
    }
    return sheet;
}

std::optional<QList<PrintableGroup>> printableGroups(Connection& connection, QString* error)
{
    Recordset groups;
    if (!groups.Open(Statement(QStringLiteral("Select * from TicketInfo Order by TicketGrp desc")), connection))
        return failed(error, groups.lastError());
    QList<PrintableGroup> found;
    const auto text
        = [&groups](const char* column) { return Statement::valueText(groups.value(QLatin1String(column))); };
    for (; !groups.Eof(); groups.MoveNext())
        found.append({text("TicketGrp"), text("Number"), text("Time"), text("Amount"), text("TimeGenerated")});
    return found;
}

std::optional<QList<SheetTicket>> groupTickets(
    Connection& connection, const QString& group, Preferences& preferences, QString* error)
{
    Recordset tickets;
    if (!tickets.Open(Statement(QStringLiteral("Select * From Account where TicketGrp = '{}'"), {group}), connection))
        return failed(error, tickets.lastError());
    const SheetHeading heading = SheetHeading::fromPreferences(preferences);
    const SessionPreferences settings(preferences, QString(ProductWord));
    QList<SheetTicket> boxes;
    for (; !tickets.Eof(); tickets.MoveNext())
        boxes.append(accountTicket(tickets, heading, settings));
    return boxes;
}

} // namespace marlet
