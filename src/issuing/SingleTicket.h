#pragma once

#include "issuing/TicketRules.h"

#include <QString>

#include <optional>

namespace marlet {

class Recordset;
class WorkHost;

// What the custom and the membership ticket share: one typed ticket alone in a group of its own.
// The checks show their refusal with the exclamation icon and give nothing; the caller then ends.

// The terms of a typed ticket, checked in this order: the credit from the hours and minutes fields
// (0 is "Time is Zero!", below 1 or above the path's limit "Time Value small or large or
// invalid!"), the cost (below 0 or above 10000 "Cost Value small or large or invalid!"), and the
// quota, asked only when quotas are on. A fixed credit replaces the time fields and their check.
struct TypedTicketFields
{
    QString hours;
    QString minutes;
    QString cost;
    double maxMinutes = 0;
    TicketPath path = TicketPath::Custom;
    std::optional<double> fixedMinutes;
};
struct TypedTicketTerms
{
    double minutes = 0;
    double cost = 0;
    bool quotas = false;
    qint32 quota = 0;
};
std::optional<TypedTicketTerms> typedTicketTerms(WorkHost& host, const TypedTicketFields& fields);

// Empties the grid, takes a new group number (the clock's second, or the next free one) and adds
// the group's starting row for one ticket of that credit and cost. The group number is returned;
// nothing when a step failed.
std::optional<QString> addSingleTicketGroup(WorkHost& host, Recordset& groupRow, double minutes, double cost);

// The end of a typed ticket that was made: without printing the success message, the progress
// display ended and a pause; then the pause every typed ticket takes.
void announceSingleTicket(WorkHost& host, bool printAfter, const QString& success);

} // namespace marlet
