#pragma once

#include "store/PreferenceKeys.h"

#include <QString>

#include <functional>
#include <optional>

namespace marlet {

class Recordset;

// Which report of a ticket row is asked for. The recycle bin screen's: a click in the list shows
// when and why the ticket went to the bin, then its group; a search starts at the group and adds
// the ticket's number to it. The ticket information screen's: its report of an Account row, which
// tells logins, prints and the member's recharge schedule too and ends with a line end, and its
// report of a bin row, which has the same facts in another order and does not end with one.
enum class BinReportKind { ListClick, Search, Ticket, TicketInBin };

// The general night time: a time ticket shows it instead of its own time frame when UseGTime is
// not 0.
struct GeneralNightTime
{
    bool used = false;
    QString begin = QStringLiteral("00:00");
    QString end = QStringLiteral("06:00");
};

// The preferences the report reads at the moment it is made. The night time matters to time
// tickets alone, so its three keys are read when a time ticket is reported, not for every report.
struct BinReportOptions
{
    // Download is true and DownType is not "2": the ticket's quota is shown.
    bool quotaLine = false;
    // Where the night time is read from; without a store, the night time is its defaults.
    std::optional<SessionPreferences> preferences;

    static BinReportOptions read(const SessionPreferences& preferences);
    GeneralNightTime nightTime() const;
};

// Who sold or activated a ticket through the point of sale, by its user name; empty when the
// lookup finds nobody or fails.
using PosSellerLookup = std::function<QString(const QString& username)>;

// The report of the current row of `row`: one line per fact, each ended by CR LF but the last of a
// bin row. Times are whole minutes, dates "dd/mm/yyyy", time frames "hh:mmAMPM"; a ticket still new
// shows "NEW" for its last use. The ticket information reports ask `posSeller` for the seller of a
// point-of-sale ticket.
QString binReport(
    const Recordset& row, BinReportKind kind, const BinReportOptions& options, const PosSellerLookup& posSeller = {});

} // namespace marlet
