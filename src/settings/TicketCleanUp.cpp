#include "settings/TicketCleanUp.h"

#include "inventory/RecycleRouting.h"
#include "store/Connection.h"
#include "store/Recordset.h"

namespace marlet {

namespace {

// Used, and no time left. A ticket that was never used keeps its row whatever its time says.
const QString UsedUpTickets = QStringLiteral("Select * from Account where member=false and NEW = FALSE and Time <= 0");
// The same condition again, so that a ticket of the same name that still has time is never taken.
const QString DeleteUsedUpTicket
    = QStringLiteral("DELETE FROM Account where member=false and NEW = FALSE and Time <= 0 and Username = '{}'");

} // namespace

TicketCleanUp::Result TicketCleanUp::run(Connection& connection, const QDateTime& now) const
{
    Result result;
    Recordset tickets;
    if (!tickets.Open(Statement(UsedUpTickets), connection, CursorType::Static, LockType::ReadOnly)) {
        result.error = tickets.lastError();
        return result;
    }
    Recordset bin;
    if (!bin.Open(Statement(QStringLiteral("Select * from RecycleBin")),
            connection,
            CursorType::Static,
            LockType::Optimistic)) {
        result.error = bin.lastError();
        return result;
    }
    // A ticket the bin could not take is not deleted: the clean-up never loses a ticket by a
    // failing copy.
    const RecycleRouting routing {preferences, RoutingErrors::EndRouting, nullptr};
    for (; !tickets.Eof(); tickets.MoveNext()) {
        if (!routing.route(tickets, bin, now)) {
            result.error = bin.lastError();
            break;
        }
        long deleted = 0;
        if (!connection.Execute(Statement(DeleteUsedUpTicket, {tickets.value(QStringLiteral("Username"))}), &deleted)) {
            result.error = connection.lastError();
            break;
        }
        result.removed += deleted;
    }
    return result;
}

} // namespace marlet
