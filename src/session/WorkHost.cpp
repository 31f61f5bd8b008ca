#include "session/WorkHost.h"

#include "platform/Control.h"
#include "platform/GridData.h"
#include "session/Session.h"

namespace marlet {

Platform& WorkHost::platform() const
{
    return session().platform();
}

void WorkHost::stepProgress()
{
    Control& bar = progressBar();
    bar.setValue(bar.value() + 1);
}

void WorkHost::resetTicketGrid()
{
    GridData& grid = ticketGrid().grid();
    grid.setColSel(0);
    grid.setRows(1);
}

} // namespace marlet
