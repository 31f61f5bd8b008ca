#pragma once

#include "store/Recordset.h"

#include <QString>

namespace marlet {

class Form;
class WorkHost;
struct RecycleRouting;

// The three ways the "Existing Ticket" tab deletes tickets, each copying a ticket into the recycle
// bin before it leaves Account: "&Delete Selection" (Command4) over the chosen selection, with the
// progress panel and "Stop"; "Delete a Ticket by Username" (m_del) for a typed name; and
// "&Delete Ticket" (m_Dels) for the grid row of the context menu. The paths differ on purpose in
// their texts, statements, bin rows and error handling.
class TicketDeletion
{
public:
    explicit TicketDeletion(WorkHost& host);

    // Command4.
    void deleteSelection();
    // m_del.
    void deleteByUsername();
    // m_Dels.
    void deleteGridTicket();

private:
    struct Branch;
    Branch selectedBranch() const;
    void startPanel(const Branch& branch);
    // The selection's work after the panel is up. It returns to the clean-up when done, and early
    // at a failing step, a stop or a refused group statement, without a message.
    void deleteBranch(const Branch& branch);
    bool deleteRows(const Branch& branch, const RecycleRouting& routing);
    bool closeBranch(const Branch& branch);
    void closeSets();

    bool nameAccepted(const QString& name) const;
    // Opens the ticket read-only; false, after saying so, when there is no such ticket.
    bool openTicket(const Statement& select, const QString& name);
    void routeSingleTicket();
    void finishSingleTicket(const Statement& deletion, const QString& name);
    bool passwordsHidden() const;

    WorkHost& m_host;
    Form& m_form;
    Recordset m_tickets;
    Recordset m_bin;
};

} // namespace marlet
