#pragma once

#include "issuing/SingleTicket.h"
#include "store/Recordset.h"

#include <QString>

namespace marlet {

class Form;
class WorkHost;
class SessionPreferences;

// The membership ticket of the generate screen, in two steps. "Create a Membership Ticket >>"
// checks the ticket data on the tab and opens the member page; "Finish Registration ||" checks
// everything again and writes the Account row, its group and the Members row, and saves the
// member's picture in the picture folder.
class MembershipTicket
{
public:
    explicit MembershipTicket(WorkHost& host);

    // The first step. Returns the name of an existing member ticket when the operator wants to
    // see that member (the caller opens the member directory on it), otherwise an empty text.
    QString begin();
    // The second step.
    void finish();
    // "<< Back" on the member page: the page goes, its entries stay.
    void back();

private:
    bool checkUsername(bool finishing, QString& existingMember);
    bool checkPassword(bool finishing);
    bool checkTerms(double maxMinutes);
    void applyUseTime();
    bool askToClearPage();
    void fillTicketPanels();
    bool confirm();

    bool addGroup();
    bool addTicket();
    bool completeGroup();
    bool addMember();
    void clearAfterFinish();
    void closePage();

    bool warn(const QString& message) const;
    SessionPreferences settings() const;

    WorkHost& m_host;
    Form& m_form;
    QString m_username;
    TypedTicketTerms m_terms;
    bool m_printAfter = false;
    bool m_skipped = false;
    QString m_group;
    Recordset m_ticket;
    Recordset m_groupRow;
    Recordset m_member;
};

} // namespace marlet
