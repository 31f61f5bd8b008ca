#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

namespace marlet {

class Connection;
class Recordset;

// A leading word and the moment as "HH:mm, dd/mm/yy": the form of TicketInfo.TimeGenerated.
QString groupTimeStamp(const QString& what, const QDateTime& now);

// Opens "Select * from TicketInfo where TicketGrp  = '<group>'" for changes, the record set on
// which an issuing path adds its group row and later completes it. False when it cannot be opened.
bool openTicketGroup(Recordset& row, Connection& connection, const QString& group);

// The values of a new TicketInfo row. Number and Amount keep the type each path writes them in: a
// batch gives the cost field's text, a custom ticket the cost as a number.
struct TicketGroupValues
{
    QString TicketGrp;
    QVariant Number;
    double minutes = 0; // Time: the credit of each ticket
    QVariant Amount;
    double TotalCost = 0;
    QString GeneratedBy;
};

// Writes a starting group row, TimeGenerated "Started at " and the stamp, into a record set that
// stands on a row begun with AddNew; the caller then calls Update. Every column is tried; false
// when one of them could not be set.
bool writeGroupStart(Recordset& row, const TicketGroupValues& values, const QDateTime& now);

// A new group: its number, and whether its TicketInfo row was stored.
struct NewTicketGroup
{
    QString TicketGrp;
    bool added = false;
};

// Adds the TicketInfo row of a new group on `row` (left open on it for the completion): the
// group of the clock's second, or of the first later second that no group holds yet, so that two
// operators who start in the same second get a group each. A start at the very same moment is
// settled by the store's unique index: the later row moves on to the next second. values.TicketGrp
// is ignored. A failure of the store is passed over, as the issuing paths pass over failed steps.
NewTicketGroup addTicketGroup(Recordset& row, Connection& connection, TicketGroupValues values, const QDateTime& now);

// How a group came into being, as the completed TimeGenerated names it.
enum class GroupKind { Random, Custom };

// How the making of a group ended: every ticket made, or cut short because the store refused one.
enum class GroupEnd { Completed, Interrupted };

// Marks the group row as ended: TimeGenerated "Completed at " (or "Interrupted at "), the stamp and
// " [RANDOM]" or " [CUSTOM]", and Number as the path counts it. The caller then calls Update. False
// when a column could not be set.
bool writeGroupCompletion(
    Recordset& row, GroupKind kind, const QVariant& number, const QDateTime& now, GroupEnd end = GroupEnd::Completed);

// A batch whose program was killed half way leaves its group row saying "Started at" with the
// counters of the whole batch. A group that has said so for longer than any batch runs is
// reconciled: Number and TotalCost count the tickets that exist, and TimeGenerated reads
// "Interrupted at" with the time it started. Returns how many groups were reconciled.
int reconcileInterruptedGroups(Connection& connection, const QDateTime& now);

} // namespace marlet
