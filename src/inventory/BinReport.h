#pragma once

#include <QString>

namespace marlet {

class Recordset;
class SessionPreferences;

// Which action of the recycle bin screen asks for a ticket's report. A click in the list shows when
// and why the ticket went to the bin, then its group; a search starts at the group and adds the
// ticket's number to it.
enum class BinReportKind { ListClick, Search };

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

// The report of one bin row, the current row of `row`: one line per fact, each ended by CR LF but
// the last ("Created By: "). Times are whole minutes, dates "dd/mm/yyyy", time frames "hh:mmAMPM";
// a ticket still new shows "NEW" for its last use.
QString binReport(const Recordset& row, BinReportKind kind, const BinReportOptions& options);

} // namespace marlet
