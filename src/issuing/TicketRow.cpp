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
    auto add = [&columns](const char* name, const QVariant& value) {
        columns.append({QString::fromLatin1(name), value});
    };
    add("TicketGrp", ticket.TicketGrp);
    add("TicketNo", ticket.TicketNo);
    add("Username", ticket.Username);
    add("Password", ticket.Password);
    add("Time", ticket.seconds);
    add("BackTime", ticket.seconds);
    add("ByWhom", ticket.ByWhom);
    if (ticket.expiry.writesExpire)
        add("Expire", ticket.expiry.Expire);
    add("Days", ticket.expiry.Days);
    add("DateCreated", ticket.created);
    add("Amount", ticket.Amount);
    add("OrgTime", ticket.seconds);
    add("LastUsed", ticket.created);
    add("NEW", true);
    add("StartTime", ticket.StartTime);
    add("EndTime", ticket.EndTime);
    add("ComputerUsed", QStringLiteral("NONE"));
    add("AccountAdded", QStringLiteral("NONE"));
    add("NoAdded", 0);
    if (!member)
        add("POS", false);
    add("Member", member);
    if (member) {
        add("Flexy", false);
        add("Autorecharge", ticket.member->Autorecharge);
        add("Reday", ticket.member->Reday);
        add("Redate", ticket.member->Redate);
        add("Retime", ticket.member->Retime);
    }
    add("Quota", ticket.Quota);
    add("Night", ticket.Night);
    if (!member)
        add("Once", ticket.Once);
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

TicketRowFields ticketRowFields(const Recordset& row)
{
    return {row.value(QStringLiteral("Username")),
        row.value(QStringLiteral("Password")),
        row.value(QStringLiteral("Time")),
        row.value(QStringLiteral("TicketGrp")),
        row.value(QStringLiteral("days")),
        row.value(QStringLiteral("Expire")),
        row.value(QStringLiteral("datecreated"))};
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
    return QStringList {number,
        fields.Username.toString(),
        hidePassword ? QStringLiteral("*****") : fields.Password.toString(),
        minutes + QStringLiteral("min(s)"),
        fields.TicketGrp.toString(),
        expiryListText(fields.Days, fields.Expire),
        values::format(fields.DateCreated, QStringLiteral("dd/mmm/yy"))}
        .join(u'\t');
}

} // namespace marlet
