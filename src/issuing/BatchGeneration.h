#pragma once

#include "issuing/Expiry.h"
#include "issuing/RandomText.h"

#include <QString>

#include <memory>
#include <optional>

namespace marlet {

// The start of the message that ends a batch whose ticket the store would not take.
inline constexpr QLatin1StringView BatchStoppedMessage {"Ticket generation stopped: "};

class Form;
class WorkHost;
class Recordset;
class SessionPreferences;

// "&Generate New Ticket(s)": validates the New tab, asks for a quota, a confirmation and the print
// preview, then makes one ticket group: a TicketInfo row, N tickets in Account with a pause before
// each, an Activated row and a SysUsage line, and offers to keep or discard the batch.
class BatchGeneration
{
public:
    explicit BatchGeneration(WorkHost& host);

    void run();

private:
    // Validation and questions; false when the operation ends.
    bool checkManualTime();
    bool askForQuota();
    bool readQuickTicket();
    bool confirm();
    bool askPrint();

    // Making the batch.
    bool storageFull();
    void openGroup();
    bool makeTickets();
    // False when the store did not take the ticket, not even on a second try; the reason is kept.
    bool makeTicket(int position, Recordset& tickets);
    void reportStoreFailure();
    bool stopAnswered();
    void closeGroup();
    void discard();
    void updateRegister();
    void offerSave();

    SessionPreferences settings() const;

    WorkHost& m_host;
    Form& m_form;
    bool m_quick = false;
    bool m_quotas = false;
    qint32 m_quota = -9999;
    float m_number = 0;       // N; it ends one above the tickets made
    double m_time = 0;        // minutes in quick-ticket mode until confirmed, then seconds
    QString m_prefix;
    QString m_group;
    QString m_amount;         // Account.Amount of every ticket
    bool m_printAfter = false;
    std::unique_ptr<Recordset> m_groupRow;
    // Why the store refused a ticket; empty while every ticket is stored.
    QString m_storeFailure;
    int m_failedPosition = 0;
    // The secure source of the batch's names and passwords, which it fetches a block at a time.
    UniformSource m_source = systemUniformSource();
};

} // namespace marlet
