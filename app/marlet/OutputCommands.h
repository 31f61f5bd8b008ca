#pragma once

#include <QByteArray>
#include <QString>
#include <QTextStream>

namespace marlet::host {

class HostOptions;

// "marlet export": the tickets of one group, all tickets or the unused ones as CSV or JSON, to a
// file or to standard output.
int runExport(const HostOptions& options, QTextStream& out, QTextStream& err);

// "marlet report": tickets made and sold, recharges and money per day and per staff member, as a
// table or CSV, and with --chart a bar chart of money per day.
int runReport(const HostOptions& options, QTextStream& out, QTextStream& err);

// "marlet receipt": a group's tickets as receipts, one a ticket, in ESC/POS to a serial port or a
// raw print queue, or as a PDF preview.
int runReceipt(const HostOptions& options, QTextStream& out, QTextStream& err);

// "marlet login-template": shows the login template, or sets it (--set) or clears it (--clear).
int runLoginTemplate(const HostOptions& options, QTextStream& out, QTextStream& err);

// The tickets of one group written to a file, JSON when its name ends in ".json", CSV otherwise.
// False with error set when the store or the file refuses.
bool exportGroup(const QString& connectionString, const QString& group, const QString& file, QString& error);

} // namespace marlet::host
