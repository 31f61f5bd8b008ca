#pragma once

#include "issuing/SingleTicket.h"
#include "store/Recordset.h"

#include <QString>

namespace marlet {

class Form;
class WorkHost;
class SessionPreferences;

// "Create a Customized New Ticket": one ticket whose name and password the operator typed, alone in
// a group of its own. It validates the Custom tab, asks for a quota, a confirmation and the print
// preview, then writes the TicketInfo row and the Account row. It leaves no SysUsage, Activated or
// Register row and is never refused for a full store.
//
// Unlike a batch it ends at the first step that fails at run time: it closes its record sets and
// ends without a word, and rows already written stay.
class CustomTicket
{
public:
    explicit CustomTicket(WorkHost& host);

    void run();

private:
    // Validation and questions; false when the operation ends.
    bool checkUsername();
    bool checkPassword();
    bool checkTerms();
    bool confirm();
    bool askPrint();

    // Making the ticket; false at the first step that fails.
    bool addGroup();
    bool addTicket();
    bool completeGroup();
    void finish();

    bool warn(const QString& message) const;
    SessionPreferences settings() const;

    WorkHost& m_host;
    Form& m_form;
    QString m_username; // as stored: upper case, with the VIP prefix
    TypedTicketTerms m_terms;
    bool m_printAfter = false;
    QString m_group;
    Recordset m_ticket; // the name lookup, on which the new ticket is added
    Recordset m_groupRow;
};

} // namespace marlet
