#include "issuing/TicketGroup.h"

#include "store/Recordset.h"
#include "values/Formats.h"

namespace marlet {

QString groupTimeStamp(const QString& what, const QDateTime& now)
{
    return what + values::format(now, QStringLiteral("HH:mm")) + QStringLiteral(", ")
        + values::format(now, QStringLiteral("dd/mm/yy"));
}

bool openTicketGroup(Recordset& row, Connection& connection, const QString& group)
{
    // Two blanks before "=", as the statement has always been written.
    return row.Open(Statement(QStringLiteral("Select * from TicketInfo where TicketGrp  = '{}'"), {group}),
        connection,
        CursorType::Static,
        LockType::Optimistic);
}

bool writeGroupStart(Recordset& row, const TicketGroupValues& values, const QDateTime& now)
{
    bool ok = row.setValue(QStringLiteral("TicketGrp"), values.TicketGrp);
    ok = row.setValue(QStringLiteral("Number"), values.Number) && ok;
    ok = row.setValue(QStringLiteral("Time"), values.minutes) && ok;
    ok = row.setValue(QStringLiteral("Amount"), values.Amount) && ok;
    ok = row.setValue(QStringLiteral("TotalCost"), values.TotalCost) && ok;
    ok = row.setValue(QStringLiteral("GeneratedBy"), values.GeneratedBy) && ok;
    return row.setValue(QStringLiteral("TimeGenerated"), groupTimeStamp(QStringLiteral("Started at "), now)) && ok;
}

bool writeGroupCompletion(Recordset& row, GroupKind kind, const QVariant& number, const QDateTime& now, GroupEnd end)
{
    const QString tag = kind == GroupKind::Random ? QStringLiteral(" [RANDOM]") : QStringLiteral(" [CUSTOM]");
    const QString what = end == GroupEnd::Completed ? QStringLiteral("Completed at ") : QStringLiteral("Interrupted at ");
    const bool stamped = row.setValue(QStringLiteral("TimeGenerated"), QString(groupTimeStamp(what, now) + tag));
    return row.setValue(QStringLiteral("Number"), number) && stamped;
}

} // namespace marlet
