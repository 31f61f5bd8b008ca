#pragma once

#include "issuing/Expiry.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QVariant>

#include <array>
#include <optional>

namespace marlet {

class Recordset;

// The automatic recharge schedule that only a member ticket carries.
struct MemberSchedule
{
    QString Autorecharge; // "NONE" or the interval text, "<n> day(s)"
    QString Reday; // the weekday list's text
    QDate Redate; // the day the schedule was set
    QString Retime; // the period list's text
};

// One new ticket as the issuing paths write it into Account. Names and passwords are written as
// given: the rules that make them give them in upper case.
struct TicketValues
{
    QString TicketGrp;
    QString TicketNo;
    QString Username;
    QString Password;
    double seconds = 0; // the credit: Time, BackTime and OrgTime are equal at issue
    QString ByWhom;
    ExpiryColumns expiry;
    QDate created; // DateCreated and LastUsed
    QString Amount;
    QDateTime StartTime; // the tab's time pickers, also when its time-period box is off
    QDateTime EndTime;
    double Quota = 0; // 0 when quotas are off
    bool Night = false;
    bool Once = false;
    // Set for a membership ticket, which differs in its columns: Member true, Flexy written as
    // false, Once and POS not written, the four schedule columns written. Batch and custom tickets
    // write Member and POS false and their Once, and leave Flexy and the schedule alone.
    std::optional<MemberSchedule> member;
};

// Writes the ticket's columns into a record set that stands on a row begun with AddNew; the caller
// then calls Update. Every column is tried; false when one of them could not be set.
bool writeTicketRow(Recordset& recordset, const TicketValues& ticket);

// The values of a ticket that its line in a listing grid shows, as read from a row.
struct TicketRowFields
{
    QVariant Username;
    QVariant Password;
    QVariant Time;
    QVariant TicketGrp;
    QVariant Days;
    QVariant Expire;
    QVariant DateCreated;
};
TicketRowFields ticketRowFields(const Recordset& row);

// Reads the fields of listing lines from a result set by position: the positions are found once,
// for as long as the result set stays open on the same select.
class TicketRowReader
{
public:
    explicit TicketRowReader(const Recordset& rows);
    TicketRowFields fields(const Recordset& row) const;

private:
    std::array<int, 7> m_positions;
};
TicketRowFields ticketRowFields(const TicketValues& ticket);

// A ticket's line in a listing grid, seven fields separated by tabs: the number as the caller gives
// it (a running number, or "1." for a single ticket), Username, Password or "*****" when passwords
// are hidden, the whole minutes followed by "min(s)", TicketGrp, the expiry as expiryListText shows
// it, and DateCreated as "dd/mmm/yy". The grid's eighth column stays blank.
QString ticketRowLine(const QString& number, const TicketRowFields& fields, bool hidePassword);

} // namespace marlet
