#pragma once

#include "store/Statement.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QVariant>

#include <optional>

namespace marlet {

class Connection;
class Preferences;
class Recordset;
class SessionPreferences;

// The two lines every ticket box carries above the credentials: the organisation's title and its
// address, as the café set them for its printed tickets.
struct SheetHeading
{
    QString title;
    QString address;
    QString loginTemplate; // what each ticket's QR code holds; empty: user name and password

    // Title, Address and LoginTemplate of section Option, read under the product word as every ticket print-out
    // reads them, with their defaults.
    static SheetHeading fromPreferences(Preferences& preferences);
};

// One ticket box of a sheet, every text ready to print. A default-constructed ticket is an empty
// slot: the box is left blank.
struct SheetTicket
{
    QString title;
    QString number; // group and running number, "202611211000-001"
    QString userName;
    QString password;
    QString timeText; // "45 min(s)", "1 hr(s)", "2 hr(s) 30 min(s)"
    QString price; // the ticket's Amount: currency and cost
    QString expiryText; // a whole phrase: it needs no caption
    QString timeRule; // "Any Time", "Time-Once" or a time frame "22:00-06:00"
    QString quotaText; // empty when the ticket has no data quota
    QString address;
    QString loginCode; // the text of the ticket's QR code

    bool isEmpty() const { return userName.isEmpty(); }
};

// A whole sheet: rows of tickets, each row exactly ticketsPerRow boxes wide.
struct TicketSheet
{
    int ticketsPerRow = 2;
    QList<QList<SheetTicket>> rows;

    int ticketCount() const;
    // Rows that fit on one printed page: the quick-ticket page counts (72, 39 and 22 tickets for
    // six-, three- and two-up) assume these.
    int rowsPerPage() const;
    int pageCount() const;
};

// Texts of a ticket's values as a box shows them.
QString sheetTimeText(double seconds);
// Days above 0 count from the first login ("5 day(s) after first use"); otherwise the fixed date
// rules ("Expires 12-Dec-26"), and without one the ticket never expires ("Never expires").
QString sheetExpiryText(const QVariant& expire, double days);
// -9999 is unlimited, 0 means the ticket has no quota and shows nothing.
QString sheetQuotaText(double quota);

// When a ticket may be used, as every print-out states it: "Any Time" for a ticket without a time
// frame (also when it is for one use), "Time-Once" for a night ticket used once, else the time frame
// "HH:mm-HH:mm": the ticket's own, or the general night time when UseGTime is set.
QString ticketTimeRule(
    bool night, bool once, const QVariant& start, const QVariant& end, const SessionPreferences& settings);

// Reads a print scratch table (nine columns per ticket slot, read by position) into a sheet of
// ticketsPerRow boxes a row. Slots whose user name is blank stay empty. Nothing on failure, with
// the reason in *error.
std::optional<TicketSheet> readTicketSheet(Connection& connection,
    const Statement& source,
    int ticketsPerRow,
    const SheetHeading& heading,
    QString* error = nullptr);

// The box of one ticket slot of the scratch table's current row; slot counts from 0.
SheetTicket slotTicket(const Recordset& row, int slot, const SheetHeading& heading);

// A sheet from tickets already made, in the order given, packed ticketsPerRow to a row.
TicketSheet packTicketSheet(const QList<SheetTicket>& tickets, int ticketsPerRow);

// A ticket group that can be printed again, with the texts of its TicketInfo row.
struct PrintableGroup
{
    QString group;
    QString tickets;
    QString minutes;
    QString cost;
    QString generated;
};

// Every ticket group, the latest first. Nothing when the store cannot be read.
std::optional<QList<PrintableGroup>> printableGroups(Connection& connection, QString* error = nullptr);

// The boxes of a group's tickets in ticket order, with the heading, the time rule and the other
// texts exactly as a freshly generated batch prints them.
std::optional<QList<SheetTicket>> groupTickets(
    Connection& connection, const QString& group, Preferences& preferences, QString* error = nullptr);

} // namespace marlet
