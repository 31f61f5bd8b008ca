#include "issuing/TicketGroup.h"

#include "issuing/TicketRules.h"
#include "store/Recordset.h"
#include "values/Formats.h"
#include "values/Numbers.h"

namespace marlet {

namespace {

// Enough seconds for every batch a café's servers could start at once.
constexpr int GroupAttempts = 60;

// A batch of the most tickets runs a few minutes; a group started longer ago than this and never
// completed belongs to no running batch.
constexpr qint64 AbandonedAfterSeconds = 15 * 60;

QDateTime groupMoment(const QString& group)
{
    return QDateTime::fromString(QStringLiteral("20") + group, QStringLiteral("yyyyMMddHHmmss"));
}

bool groupTaken(Connection& connection, const QString& group)
{
    return Recordset::countRows(
               Statement(QStringLiteral("Select * from TicketInfo where TicketGrp = '{}'"), {group}), connection)
        > 0
        || Recordset::countRows(
               Statement(QStringLiteral("Select * from Account where TicketGrp = '{}'"), {group}), connection)
        > 0;
}

bool isDuplicateGroup(const QString& storeError)
{
    return storeError.contains(QLatin1String("UNIQUE constraint failed"), Qt::CaseInsensitive)
        || storeError.contains(QLatin1String("duplicate key"), Qt::CaseInsensitive);
}

} // namespace

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

NewTicketGroup addTicketGroup(Recordset& row, Connection& connection, TicketGroupValues values, const QDateTime& now)
{
    QDateTime moment = now;
    for (int attempt = 0; attempt < GroupAttempts; ++attempt, moment = moment.addSecs(1)) {
        values.TicketGrp = ticketGroupNumber(moment);
        if (groupTaken(connection, values.TicketGrp))
            continue;
        const bool added = openTicketGroup(row, connection, values.TicketGrp) && row.AddNew()
            && writeGroupStart(row, values, now) && row.Update();
        if (added || !isDuplicateGroup(row.lastError()))
            return {values.TicketGrp, added};
        row.CancelUpdate();
        row.Close();
    }
    return {values.TicketGrp, false};
}

int reconcileInterruptedGroups(Connection& connection, const QDateTime& now)
{
    const QString started = QStringLiteral("Started at ");
    Recordset groups;
    if (!groups.Open(QStringLiteral("Select * from TicketInfo where TimeGenerated like 'Started at %'"),
            connection,
            CursorType::Static,
            LockType::Optimistic))
        return 0;
    int reconciled = 0;
    for (; !groups.Eof(); groups.MoveNext()) {
        const QString group = groups.value(QStringLiteral("TicketGrp")).toString();
        const QDateTime moment = groupMoment(group);
        if (!moment.isValid() || moment.secsTo(now) < AbandonedAfterSeconds)
            continue;
        const long made = Recordset::countRows(
            Statement(QStringLiteral("Select * from Account where TicketGrp = '{}'"), {group}), connection);
        const double price = values::leadingNumber(groups.value(QStringLiteral("Amount")).toString());
        const QString stamp = groups.value(QStringLiteral("TimeGenerated")).toString().mid(started.size());
        groups.setValue(QStringLiteral("Number"), double(made));
        groups.setValue(QStringLiteral("TotalCost"), price * double(made));
        groups.setValue(QStringLiteral("TimeGenerated"),
            QString(QStringLiteral("Interrupted at ") + stamp + QStringLiteral(" [RANDOM]")));
        if (groups.Update())
            ++reconciled;
    }
    return reconciled;
}

bool writeGroupCompletion(Recordset& row, GroupKind kind, const QVariant& number, const QDateTime& now, GroupEnd end)
{
    const QString tag = kind == GroupKind::Random ? QStringLiteral(" [RANDOM]") : QStringLiteral(" [CUSTOM]");
    const QString what
        = end == GroupEnd::Completed ? QStringLiteral("Completed at ") : QStringLiteral("Interrupted at ");
    const bool stamped = row.setValue(QStringLiteral("TimeGenerated"), QString(groupTimeStamp(what, now) + tag));
    return row.setValue(QStringLiteral("Number"), number) && stamped;
}

} // namespace marlet
