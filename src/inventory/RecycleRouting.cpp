#include "inventory/RecycleRouting.h"

#include "store/Recordset.h"
#include "values/Formats.h"

namespace marlet {

QString recycleDeletedText(const QDateTime& deletedAt)
{
    return values::format(deletedAt.date(), QStringLiteral("dd/mm/yy")) + u'/'
        + values::format(deletedAt.time(), QStringLiteral("HH:mm"));
}

void purgeRecycleBin(Recordset& bin, PurgeReporter* reporter)
{
    if (reporter)
        reporter->purgeStarting(bin);
    bin.MoveFirst();
    // The first rows in the store's order go, whatever their age. A row that cannot be deleted (gone
    // already, or the set is read-only) is passed over and still counts as a round.
    for (int round = 0; round < RecyclePurgeRounds; ++round) {
        if (bin.RecordCount() > 0) {
            bin.Delete();
            if (!bin.Eof())
                bin.MoveNext();
        }
        if (reporter)
            reporter->purgeRound();
    }
    if (reporter)
        reporter->purgeFinished();
}

bool RecycleRouting::route(const Recordset& ticket, Recordset& bin, const QDateTime& deletedAt) const
{
    // A size of 500 or less is how the bin is switched off: the ticket is not kept at all.
    if (!(preferences.number(keys::RecycleBinSize) > RecyclePurgeRounds))
        return true;
    if (preferences.number(keys::RecycleBinSize) <= double(bin.RecordCount()))
        purgeRecycleBin(bin, reporter);

    bool allWent = true;
    // Whether the routing goes on after a step.
    const auto step = [this, &allWent](bool went) {
        allWent = allWent && went;
        return went || errors == RoutingErrors::SkipStep;
    };
    if (!step(bin.AddNew()))
        return false;
    // By position: RecycleBin repeats Account's columns in Account's order.
    for (int field = 0; field < ticket.fieldCount(); ++field) {
        bool read = false;
        const QVariant value = ticket.value(field, &read);
        if (!step(read && bin.setValue(field, value)))
            return false;
    }
    if (!step(bin.setValue(QStringLiteral("DateTimeDeleted"), recycleDeletedText(deletedAt))))
        return false;
    if (!step(bin.setValue(QStringLiteral("Reason"), QStringLiteral("Deleted by User."))))
        return false;
    return step(bin.Update()) && allWent;
}

} // namespace marlet
