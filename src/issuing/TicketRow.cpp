#include "issuing/TicketRow.h"

#include "issuing/TicketRules.h"
#include "store/Recordset.h"
#include "values/Formats.h"
#include "values/Numbers.h"

#include <QList>
#include <QStringList>

#include <utility>

namespace marlet {

namespace {

using Columns = QList<std::pair<QString, QVariant>>;

// The columns in the order in which a new ticket is filled.
Columns ticketColumns(const TicketValues& ticket)
{
    const bool member = ticket.member.has_value();
    Columns columns;
    columns.reserve(28);
    auto add = [&columns](const QString& name, const QVariant& value) { columns.append({name, value}); };
    add(QStringLiteral("TicketGrp"), ticket.TicketGrp);
    add(QStringLiteral("TicketNo"), ticket.TicketNo);
    add(QStringLiteral("Username"), ticket.Username);
    add(QStringLiteral("Password"), ticket.Password);
    add(QStringLiteral("Time"), ticket.seconds);
    add(QStringLiteral("BackTime"), ticket.seconds);
    add(QStringLiteral("ByWhom"), ticket.ByWhom);
    if (ticket.expiry.writesExpire)
        add(QStringLiteral("Expire"), ticket.expiry.Expire);
    add(QStringLiteral("Days"), ticket.expiry.Days);
    add(QStringLiteral("DateCreated"), ticket.created);
    add(QStringLiteral("Amount"), ticket.Amount);
    add(QStringLiteral("OrgTime"), ticket.seconds);
    add(QStringLiteral("LastUsed"), ticket.created);
    add(QStringLiteral("NEW"), true);
    add(QStringLiteral("StartTime"), ticket.StartTime);
    add(QStringLiteral("EndTime"), ticket.EndTime);
    add(QStringLiteral("ComputerUsed"), QStringLiteral("NONE"));
    add(QStringLiteral("AccountAdded"), QStringLiteral("NONE"));
    add(QStringLiteral("NoAdded"), 0);
    if (!member)
        add(QStringLiteral("POS"), false);
    add(QStringLiteral("Member"), member);
    if (member) {
        add(QStringLiteral("Flexy"), false);
        add(QStringLiteral("Autorecharge"), ticket.member->Autorecharge);
        add(QStringLiteral("Reday"), ticket.member->Reday);
        add(QStringLiteral("Redate"), ticket.member->Redate);
        add(QStringLiteral("Retime"), ticket.member->Retime);
    }
    add(QStringLiteral("Quota"), ticket.Quota);
    add(QStringLiteral("Night"), ticket.Night);
    if (!member)
        add(QStringLiteral("Once"), ticket.Once);
    return columns;
}

} // namespace

bool writeTicketRow(Recordset& recordset, const TicketValues& ticket)
{
    bool allSet = true;
    for (const auto& [name, value] : ticketColumns(ticket))
        allSet = recordset.setValue(name, value) && allSet;
    return allSet;
}

namespace {

// The names a listing line reads, in the order of TicketRowFields.
const std::array<QString, 7>& ticketRowNames()
{
    static const std::array<QString, 7> names {QStringLiteral("Username"),
        QStringLiteral("Password"),
        QStringLiteral("Time"),
        QStringLiteral("TicketGrp"),
        QStringLiteral("days"),
        QStringLiteral("Expire"),
        QStringLiteral("datecreated")};
    return names;
}

} // namespace

TicketRowReader::TicketRowReader(const Recordset& rows)
{
    for (std::size_t i = 0; i < m_positions.size(); ++i)
        m_positions[i] = rows.fieldIndex(ticketRowNames()[i]);
}

TicketRowFields TicketRowReader::fields(const Recordset& row) const
{
    // A field the select lacks is asked for by name, which leaves its own error behind.
    const auto field = [&](std::size_t i) {
        return m_positions[i] >= 0 ? row.value(m_positions[i]) : row.value(ticketRowNames()[i]);
    };
    return {field(0), field(1), field(2), field(3), field(4), field(5), field(6)};
}

TicketRowFields ticketRowFields(const Recordset& row)
{
    return TicketRowReader(row).fields(row);
}

TicketRowFields ticketRowFields(const TicketValues& ticket)
{
    return {ticket.Username,
        ticket.Password,
        ticket.seconds,
        ticket.TicketGrp,
        ticket.expiry.Days,
        ticket.expiry.Expire,
        QDateTime(ticket.created, QTime(0, 0))};
}

QString ticketRowLine(const QString& number, const TicketRowFields& fields, bool hidePassword)
{
    // A null Time gives a null number of minutes, which joins as nothing.
    const QString minutes = fields.Time.isNull() ? QString() : values::numberText(wholeMinutes(fields.Time.toDouble()));
    // One string grown in place: a listing makes tens of thousands of these lines.
    QString line;
    line.reserve(96);
    line += number;
    line += u'\t';
    line += fields.Username.toString();
    line += u'\t';
    line += hidePassword ? QStringLiteral("*****") : fields.Password.toString();
    line += u'\t';
    line += minutes;
    line += QLatin1String("min(s)\t");
    line += fields.TicketGrp.toString();
    line += u'\t';
    line += expiryListText(fields.Days, fields.Expire);
    line += u'\t';
    line += values::format(fields.DateCreated, QStringLiteral("dd/mmm/yy"));
    return line;
}

} // namespace marlet
