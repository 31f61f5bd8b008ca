#include "inventory/TicketExport.h"

#include "store/Connection.h"
#include "store/Recordset.h"

#include <QDate>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <cmath>

namespace marlet {

namespace {

const QStringList exportColumns = {QStringLiteral("username"),
    QStringLiteral("password"),
    QStringLiteral("minutes"),
    QStringLiteral("group"),
    QStringLiteral("expiry"),
    QStringLiteral("days"),
    QStringLiteral("cost"),
    QStringLiteral("state")};

Statement exportStatement(ExportScope scope, const QString& group)
{
    switch (scope) {
    case ExportScope::Group:
        return Statement(
            QStringLiteral("Select * From Account where TicketGrp = '{}' order by TicketGrp, TicketNo"), {group});
    case ExportScope::Unused:
        return Statement(QStringLiteral("Select * From Account where NEW = true order by TicketGrp, TicketNo"));
    case ExportScope::All:
        break;
    }
    return Statement(QStringLiteral("Select * From Account order by TicketGrp, TicketNo"));
}

// A ticket whose own date has passed is expired whatever its use; otherwise one the host has not
// touched yet is unused.
QString stateOf(bool isNew, qint64 days, const QDate& expiry)
{
    if (days <= 0 && expiry.isValid() && expiry < QDate::currentDate())
        return QStringLiteral("expired");
    return isNew ? QStringLiteral("unused") : QStringLiteral("used");
}

QStringList fieldsOf(const ExportedTicket& ticket)
{
    return {ticket.username,
        ticket.password,
        QString::number(ticket.minutes),
        ticket.group,
        ticket.expiry,
        QString::number(ticket.days),
        ticket.cost,
        ticket.state};
}

} // namespace

bool readExportedTickets(
    Connection& connection, ExportScope scope, const QString& group, QList<ExportedTicket>& tickets, QString& error)
{
    Recordset rows;
    if (!rows.Open(exportStatement(scope, group), connection)) {
        error = rows.lastError();
        return false;
    }
    for (; !rows.Eof(); rows.MoveNext()) {
        ExportedTicket ticket;
        ticket.username = rows.value(QStringLiteral("Username")).toString();
        ticket.password = rows.value(QStringLiteral("Password")).toString();
        ticket.minutes = qint64(std::floor(rows.value(QStringLiteral("Time")).toDouble() / 60));
        ticket.group = rows.value(QStringLiteral("TicketGrp")).toString();
        ticket.days = qint64(rows.value(QStringLiteral("Days")).toDouble());
        const QDate expiry = rows.value(QStringLiteral("Expire")).toDateTime().date();
        if (ticket.days <= 0 && expiry.isValid())
            ticket.expiry = expiry.toString(Qt::ISODate);
        ticket.cost = rows.value(QStringLiteral("Amount")).toString();
        ticket.state = stateOf(rows.value(QStringLiteral("NEW")).toBool(), ticket.days, expiry);
        tickets.append(ticket);
    }
    return true;
}

QByteArray csvLine(const QStringList& fields)
{
    QByteArray line;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        QString field = fields.at(i);
        if (field.contains(u',') || field.contains(u'"') || field.contains(u'\n') || field.contains(u'\r'))
            field = u'"' + field.replace(u'"', QStringLiteral("\"\"")) + u'"';
        if (i > 0)
            line += ',';
        line += field.toUtf8();
    }
    return line + "\r\n";
}

QByteArray exportCsv(const QList<ExportedTicket>& tickets)
{
    QByteArray csv = csvLine(exportColumns);
    for (const ExportedTicket& ticket : tickets)
        csv += csvLine(fieldsOf(ticket));
    return csv;
}

QByteArray exportJson(const QList<ExportedTicket>& tickets)
{
    QJsonArray array;
    for (const ExportedTicket& ticket : tickets) {
        array.append(QJsonObject {{exportColumns[0], ticket.username},
            {exportColumns[1], ticket.password},
            {exportColumns[2], ticket.minutes},
            {exportColumns[3], ticket.group},
            {exportColumns[4], ticket.expiry},
            {exportColumns[5], ticket.days},
            {exportColumns[6], ticket.cost},
            {exportColumns[7], ticket.state}});
    }
    return QJsonDocument(array).toJson(QJsonDocument::Indented);
}

} // namespace marlet
