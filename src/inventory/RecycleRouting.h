#pragma once

#include "store/PreferenceKeys.h"

#include <QDateTime>
#include <QString>

namespace marlet {

class Recordset;

// Rows a full recycle bin loses at one stroke before it takes the next ticket.
inline constexpr int RecyclePurgeRounds = 500;

// What a long deletion shows around the purge of a full bin. The screen's "&Delete Selection"
// pauses, requeries the bin and reports on its progress panel; the single-ticket deletes purge
// without a reporter.
class PurgeReporter
{
public:
    virtual ~PurgeReporter() = default;
    // Before the first round; the bin is the result set about to be purged.
    virtual void purgeStarting(Recordset& bin) = 0;
    virtual void purgeRound() = 0;
    virtual void purgeFinished() = 0;
};

// What a failing step of the routing does: ends the routing at once (the caller's error handler
// takes over), or is skipped so that the next step runs.
enum class RoutingErrors { EndRouting, SkipStep };

struct RecycleRouting
{
    SessionPreferences preferences; // RecycleBinSize, read at each routing
    RoutingErrors errors = RoutingErrors::SkipStep;
    PurgeReporter* reporter = nullptr;

    // Copies the current row of `ticket` into `bin`, an updatable result set on RecycleBin: column
    // by column by position, then DateTimeDeleted from `deletedAt` and the reason. A bin size of
    // 500 or less keeps nothing; a bin whose row count has reached the size is purged first. The
    // ticket stays in Account: the caller deletes it. True when every step went through.
    bool route(const Recordset& ticket, Recordset& bin, const QDateTime& deletedAt) const;
};

// The first 500 rows of the bin's result set in its order, one at a time; failing steps are skipped.
void purgeRecycleBin(Recordset& bin, PurgeReporter* reporter = nullptr);

// DateTimeDeleted of a ticket deleted at that moment: "dd/mm/yy/HH:mm".
QString recycleDeletedText(const QDateTime& deletedAt);

} // namespace marlet
