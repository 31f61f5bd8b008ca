#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace marlet {

class Connection;

// Which tickets leave the café for another system, e.g. a hotspot's user list.
enum class ExportScope { Group, All, Unused };

// One ticket as it is handed over: time in minutes, cost as entered, expiry as an ISO date (empty
// when the ticket runs from first use or never expires), days counted from first use (0 when the
// date rules), and a state of "unused", "used" or "expired".
struct ExportedTicket
{
    QString username;
    QString password;
    qint64 minutes = 0;
    QString group;
    QString expiry;
    qint64 days = 0;
    QString cost;
    QString state;
};

// The tickets of the scope in ticket order. False with error set when the store refuses the
// select; a group holding a quote is such a refusal, as everywhere else.
bool readExportedTickets(
    Connection& connection, ExportScope scope, const QString& group, QList<ExportedTicket>& tickets, QString& error);

// CSV as RFC 4180 has it: a header line, CRLF line ends, and a field holding a comma, a quote or a
// line break in double quotes with its quotes doubled.
QByteArray exportCsv(const QList<ExportedTicket>& tickets);
// A JSON array of objects with the same names as the CSV header.
QByteArray exportJson(const QList<ExportedTicket>& tickets);

// One CSV line of fields, CRLF at the end; shared with the sales summary.
QByteArray csvLine(const QStringList& fields);

} // namespace marlet
