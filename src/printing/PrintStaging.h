#pragma once

#include "store/Statement.h"

namespace marlet {

class WorkHost;

// Prints the tickets of one finished group. `query` selects them from Account in ticket order
// ("Select * From Account where TicketGrp = '{}'"). The tickets are packed into the scratch table of
// the print type, six, three or two to a row, and the report component "Vellum.Sheets" previews that
// table; the export type writes the medium ticket page instead. The screen's progress panel shows the
// packing and its "Stop" ends it without a preview. An empty query does nothing; any failing step
// ends in "Print Generation Error!, Print Preview Aborted!". Account itself is only read.
void BuildPrintPreview(WorkHost& host, const Statement& query);

} // namespace marlet
