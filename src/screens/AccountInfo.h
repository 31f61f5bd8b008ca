#pragma once

#include "platform/Form.h"

namespace marlet {

class Session;
class Recordset;

// The ticket information screen: looks one ticket up by user name or by group and number, in
// Account first and, when the operator agrees, in the recycle bin, and shows what is known of it
// as text that can be printed. Store failures are passed over in silence, step by step.
class AccountInfo : public Form
{
public:
    explicit AccountInfo(Session& session);

protected:
    void build() override;

private:
    void buildSearchBy();
    void open();
    void chooseUsernameMode();
    void chooseGroupMode();

    void search();
    // Opens the Account rows the entry names; false when the entry is no group and number.
    bool findInAccount(Recordset& tickets);
    void showTickets(Recordset& tickets);
    void searchBin(Recordset& tickets);
    // The entry split at its first "-": the group and the number of a ticket.
    QStringList groupAndNumber() const;
    bool groupMode() const;
    QString posSeller(const QString& username) const;

    void print();

    void setStatus(const QString& text);
    Control& entry() const;
    Control& report() const;

    Session& m_session;
};

} // namespace marlet
