#pragma once

#include "issuing/TicketRules.h"

#include <QDate>
#include <QDateTime>
#include <QLatin1StringView>
#include <QString>
#include <QVariant>

#include <optional>

namespace marlet {

class SessionPreferences;

// The entries of every issuing tab's expiry list, in list order.
enum class ExpiryKind {
    Fixed, // "Fixed Expiration Date": a date, the days field counted from today
    Flexible, // "Flexible Expiration Date": the days field counted from the first use
    Never, // "Never Expire"
};
// The kind at a list position; a list without a selection counts as "Never Expire".
ExpiryKind expiryKind(int listIndex);

// The expiry columns of a new ticket. Days 0 means that Expire rules; Days above 0 starts the
// ticket's clock at its first use, with Expire null until the host sets it.
struct ExpiryColumns
{
    bool writesExpire = true; // a flexible batch ticket leaves Expire unwritten
    QVariant Expire; // the date, or null
    double Days = 0;
};
// `fieldDays` is the numeric value of the days field. Fixed: Expire today plus those days, Days 0.
// Flexible: Days the field's days if above 0, otherwise 1; Expire is not written by a batch and
// null on the other paths. Never: Expire null, Days 0.
ExpiryColumns expiryColumns(ExpiryKind kind, double fieldDays, const QDate& today, TicketPath path);

// A day plus a number of days, fractions counting as parts of a day as the form language adds them.
// Null when the result lies outside the calendar the store can hold.
QVariant daysAfter(const QDate& day, double days);

// How every list shows a ticket's expiry: when Days is 0 the Expire date as "dd/mmm/yy", otherwise
// the days directly followed by "day(s)". A null Days compares as unknown, not as 0, and shows as
// "day(s)" alone.
QString expiryListText(const QVariant& days, const QVariant& expire);

// The <expiry> part of the issuing confirmations: "NONE" for "Never Expire"; for a fixed expiry
// today plus the Expire preference (not the days field) as "dd, mmm yyyy"; otherwise the days
// field's text and " days".
QString expiryConfirmationText(
    const SessionPreferences& preferences, ExpiryKind kind, const QString& daysField, const QDate& today);

// The text that a refused days field gets back.
inline constexpr QLatin1StringView DaysFieldResetText {"20"};

struct DaysFieldResult
{
    QString text; // what the field holds afterwards
    std::optional<QString> message; // shown with the exclamation icon when the entry was refused
};
// Leaving a days field: a text that is no number is refused with "Non numeric entry!", more than 365
// days with "Value should not be greater than 365 days!"; both put "20" back. The number test comes
// first, so "400d" is refused as no number. A valid entry is saved as typed, under Expire when the
// expiry list stands on its first entry and under ExLog otherwise.
DaysFieldResult leaveDaysField(SessionPreferences& preferences, int listIndex, const QString& text);

} // namespace marlet
