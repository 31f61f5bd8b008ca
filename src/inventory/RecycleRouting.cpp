#include "inventory/RecycleRouting.h"

#include "store/Recordset.h"
#include "values/Formats.h"

namespace marlet {

QString recycleDeletedText(const QDateTime& deletedAt)
{
    const QDate date = deletedAt.date();
    const QTime time = deletedAt.time();
    if (!date.isValid() || !time.isValid() || date.year() < 0)
        return values::format(date, QStringLiteral("dd/mm/yy")) + u'/' + values::format(time, QStringLiteral("HH:mm"));
    // "dd/mm/yy/HH:mm" put together by hand: a deletion writes it for every ticket it keeps.
    char16_t text[14];
    const auto put = [&text](int at, int value) {
        text[at] = char16_t(u'0' + value / 10 % 10);
        text[at + 1] = char16_t(u'0' + value % 10);
    };
    put(0, date.day());
    text[2] = u'/';
    put(3, date.month());
    text[5] = u'/';
    put(6, date.year() % 100);
    text[8] = u'/';
    put(9, time.hour());
    text[11] = u':';
    put(12, time.minute());
    return QString(reinterpret_cast<const QChar*>(text), 14);
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
        if (!step(bin.copyValue(field, ticket, field)))
            return false;
    }
    if (!step(bin.setValue(QStringLiteral("DateTimeDeleted"), recycleDeletedText(deletedAt))))
        return false;
    if (!step(bin.setValue(QStringLiteral("Reason"), QStringLiteral("Deleted by User."))))
        return false;
    return step(bin.Update()) && allWent;
}

} // namespace marlet
