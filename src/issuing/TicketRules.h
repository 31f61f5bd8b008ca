#pragma once

#include <QDateTime>
#include <QLatin1StringView>
#include <QString>

namespace marlet {

class SessionPreferences;

// The ways a ticket comes into being or has its credentials changed. The rules below are shared by
// all of them; where a path words a message differently or allows other values, the rule takes the
// path and says so.
enum class TicketPath {
    Batch, // "&Generate New Ticket(s)": random names and passwords
    Custom, // "Create a Customized New Ticket"
    Membership, // "Create a Membership Ticket >>", the first step of a member ticket
    MembershipFinish, // "Finish Registration ||", the second step, which checks everything again
    CredentialChange, // "Change Username" and "Change Password" of a member
};

// TicketNo of a custom or member ticket, which is alone in its group.
inline constexpr QLatin1StringView CustomTicketNo {"000"};

// The group number: two-digit year, month, day, hours (24), minutes and seconds, twelve digits.
// It is taken once per batch or ticket and nothing checks that it is free: two groups started in
// the same second share it.
QString ticketGroupNumber(const QDateTime& now);

// A ticket's position in its group: "001" to "009", "010" to "099", then the number as it is.
QString ticketNumberText(int position);

// Time credit in seconds from the screens' hours and minutes.
double creditSeconds(double hours, double minutes);
// The credit in minutes, as TicketInfo and the operator's texts hold it.
double creditMinutes(double seconds);
// Whole minutes as lists show a ticket's time: the fraction is cut, 3599 seconds are 59 minutes.
double wholeMinutes(double seconds);

// Account.Amount: the first three characters of the currency, then the price, all upper case.
// A currency shorter than three characters is taken whole.
QString ticketAmount(const QString& currency, const QString& price);
QString ticketAmount(const SessionPreferences& preferences, const QString& price);
// How a price is shown to the operator: the whole currency in front of it, without a blank.
QString priceText(const SessionPreferences& preferences, const QString& price);

// Client separation is on: either reservation rule equals 1. VIP tickets need it.
bool clientSeparationOn(const SessionPreferences& preferences);

} // namespace marlet
