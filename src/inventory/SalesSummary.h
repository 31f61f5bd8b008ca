#pragma once

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QMap>
#include <QString>

namespace marlet {

class Connection;

// Takings of one day or one staff member: tickets made, tickets the host has seen used, recharges
// made at the counter, and the money of the groups made.
struct SalesLine
{
    qint64 made = 0;
    qint64 sold = 0;
    qint64 recharges = 0;
    double money = 0;
};

// The café's takings between two dates, read from what the screens already write: the ticket
// groups (TicketInfo: number, total cost, who and when), the tickets the host marked used
// (Account.NEW false, on their LastUsed day), the recharge log and the register's running totals.
struct SalesSummary
{
    QDate from; // invalid: from the first day on record
    QDate to; // invalid: up to the last
    QMap<QDate, SalesLine> days;
    QMap<QString, SalesLine> staff;
    SalesLine total;
    // The register's all-time counters; -1 when the table holds no row.
    double registerTickets = -1;
    double registerMoney = -1;
};

// False with error set when the store refuses a select.
bool readSalesSummary(Connection& connection, SalesSummary& summary, QString& error);

// The summary as the terminal shows it: a table per day, a table per staff member, the totals.
QString salesTable(const SalesSummary& summary);
// The same as CSV: a header, then lines "day" or "staff", the key, made, sold, recharges, money,
// and a line "total".
QByteArray salesCsv(const SalesSummary& summary);

// The day in a group's "Started at HH:mm, dd/mm/yy" or "Completed at ..." stamp; invalid when the
// stamp holds none.
QDate groupStampDay(const QString& stamp);

} // namespace marlet
