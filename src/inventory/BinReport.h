#pragma once

#include <QString>

#include <functional>

namespace marlet {

class Recordset;
class SessionPreferences;

// Which report of a ticket row is asked for. The recycle bin screen's: a click in the list shows
// when and why the ticket went to the bin, then its group; a search starts at the group and adds
// the ticket's number to it. The ticket information screen's: its report of an Account row, which
// tells logins, prints and the member's recharge schedule too and ends with a line end, and its
// report of a bin row, which has the same facts in another order and does not end with one.
enum class BinReportKind { ListClick, Search, Ticket, TicketInBin };

// The preferences the report reads at the moment it is made.
struct BinReportOptions
{
    // UseGTime is not 0: a time ticket shows the general night time instead of its own time frame.
    bool generalTime = false;
    QString beginTime = QStringLiteral("00:00");
    QString endTime = QStringLiteral("06:00");
    // Download is true and DownType is not "2": the ticket's quota is shown.
    bool quotaLine = false;

    static BinReportOptions read(const SessionPreferences& preferences);
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
