#include "issuing/CustomTicket.h"

#include "issuing/Expiry.h"
#include "issuing/GenAccNames.h"
#include "issuing/Quota.h"
#include "issuing/TicketGroup.h"
#include "issuing/TicketNames.h"
#include "issuing/TicketRow.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "printing/PrintDispatch.h"
#include "printing/PrintStaging.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/Connection.h"
#include "values/Numbers.h"

#include <optional>

namespace marlet {

namespace {

// The longest credit a custom ticket takes: 360 hours, in minutes.
constexpr double MaxMinutes = 21600;
constexpr double MaxCost = 10000;

} // namespace

CustomTicket::CustomTicket(WorkHost& host)
    : m_host(host)
    , m_form(host.form())
{
}

SessionPreferences CustomTicket::settings() const
{
    return m_host.session().settings();
}

// Shows a refusal with the exclamation icon; false, so that the caller ends.
bool CustomTicket::warn(const QString& message) const
{
    m_host.platform().messageBox(message, MsgStyle::Warning);
    return false;
}

void CustomTicket::run()
{
    const bool go
        = checkUsername() && checkPassword() && checkTime() && checkCost() && askForQuota() && confirm() && askPrint();
    if (go && addGroup() && addTicket() && completeGroup())
        finish();
    // Whatever ended the operation, its record sets do not outlive it.
    m_ticket.Close();
    m_groupRow.Close();
}

// ---- validation and questions -----------------------------------------------------------------

bool CustomTicket::checkUsername()
{
    const QString typed = m_form[genacc::txtCustomUsername].text();
    const bool vip = m_form[genacc::chkCustomVIP].ticked();
    if (const std::optional<QString> problem = usernameProblem(typed, TicketPath::Custom, vip))
        return warn(*problem);
    m_username = typedUsername(settings(), typed, vip);
    switch (lookUpUsername(m_ticket, m_host.session().connection(), m_username)) {
    case NameLookup::Free:
        return true; // the record set stays open: the ticket is added on it
    case NameLookup::Taken:
        return warn(existingNameMessage(TicketPath::Custom));
    case NameLookup::Failed:
        break;
    }
    return false;
}

bool CustomTicket::checkPassword()
{
    if (const std::optional<QString> problem
        = passwordProblem(m_form[genacc::txtCustomPassword].text(), TicketPath::Custom))
        return warn(*problem);
    return true;
}

bool CustomTicket::checkTime()
{
    m_minutes = values::leadingNumber(m_form[genacc::cboCustomMinutes].text())
        + values::leadingNumber(m_form[genacc::cboCustomHours].text()) * 60;
    if (m_minutes == 0)
        return warn(QStringLiteral("Time is Zero!"));
    if (m_minutes < 1 || m_minutes > MaxMinutes)
        return warn(QStringLiteral("Time Value small or large or invalid!"));
    return true;
}

bool CustomTicket::checkCost()
{
    m_cost = values::leadingNumber(m_form[genacc::cboCustomCost].text());
    if (m_cost < 0 || m_cost > MaxCost)
        return warn(QStringLiteral("Cost Value small or large or invalid!"));
    return true;
}

bool CustomTicket::askForQuota()
{
    m_quotas = quotasOn(settings());
    if (!m_quotas)
        return true;
    const std::optional<qint32> quota = askQuota(m_host.platform(), TicketPath::Custom);
    if (!quota)
        return false;
    m_quota = *quota;
    return true;
}

bool CustomTicket::confirm()
{
    const SessionPreferences prefs = settings();
    const QString expiry = expiryConfirmationText(prefs,
        expiryKind(m_form[genacc::cboCustomExpiry].listIndex()),
        m_form[genacc::txtCustomDays].text(),
        m_host.platform().today());
    const QString question = QStringLiteral("You have choosen to Generate a ticket of ") + values::numberText(m_minutes)
        + QStringLiteral("min(s)' Ticket(s) of Cost ") + prefs.text(keys::Currency) + values::numberText(m_cost)
        + QStringLiteral(" with Expiration Date of ") + expiry
        + (m_form[genacc::chkCustomTimePeriod].ticked() ? QStringLiteral(" and for Time Ticket") : QString())
        + (m_form[genacc::chkCustomOnce].ticked() ? QStringLiteral(" to be used Once") : QString())
        + quotaConfirmationText(m_quotas, m_quota) + QStringLiteral(", Continue?");
    // Unlike a batch, Yes is the default here.
    return m_host.platform().messageBox(question, MsgStyle::YesNoQuestion) == MsgResult::Yes;
}

bool CustomTicket::askPrint()
{
    const PrintAnswer answer
        = askPrintQuestion(m_host.session(), PrintCreator::Custom, m_form[genacc::cboSizeType].text());
    m_printAfter = answer == PrintAnswer::Print;
    return answer != PrintAnswer::Cancel;
}

// ---- making the ticket ------------------------------------------------------------------------

bool CustomTicket::addGroup()
{
    m_host.resetTicketGrid();
    // A custom group holds one ticket; Amount is the cost as a number, not the field's text.
    const NewTicketGroup group = addTicketGroup(m_groupRow,
        m_host.session().connection(),
        {QString(), 1, m_minutes, m_cost, m_cost, m_host.session().general.byWhom()},
        m_host.platform().now());
    m_group = group.TicketGrp;
    return group.added;
}

bool CustomTicket::addTicket()
{
    TicketValues ticket;
    ticket.TicketGrp = m_group;
    ticket.TicketNo = CustomTicketNo;
    ticket.Username = m_username;
    ticket.Password = typedPassword(m_form[genacc::txtCustomPassword].text());
    ticket.seconds = m_minutes * 60;
    ticket.ByWhom = m_host.session().general.byWhom();
    ticket.created = m_host.platform().today();
    ticket.expiry = expiryColumns(expiryKind(m_form[genacc::cboCustomExpiry].listIndex()),
        values::leadingNumber(m_form[genacc::txtCustomDays].text()),
        ticket.created,
        TicketPath::Custom);
    ticket.Amount = ticketAmount(settings(), values::numberText(m_cost));
    ticket.StartTime = m_form[genacc::dtCustomStart].dateTime();
    ticket.EndTime = m_form[genacc::dtCustomEnd].dateTime();
    ticket.Quota = m_quotas ? m_quota : 0;
    ticket.Night = m_form[genacc::chkCustomTimePeriod].value() == 1;
    ticket.Once = m_form[genacc::chkCustomOnce].value() == 1;
    if (!m_ticket.AddNew() || !writeTicketRow(m_ticket, ticket) || !m_ticket.Update())
        return false;

    if (!m_form[genacc::chkNoList].ticked()) {
        GridData& grid = m_host.ticketGrid().grid();
        grid.addItem(ticketRowLine(QStringLiteral("1"), ticketRowFields(ticket), m_form[genacc::Check4].ticked()));
    }
    return true;
}

bool CustomTicket::completeGroup()
{
    if (!writeGroupCompletion(m_groupRow, GroupKind::Custom, 1, m_host.platform().now()) || !m_groupRow.Update())
        return false;
    m_form[genacc::chkCustomTimePeriod].setValue(CheckState::Unchecked);
    m_ticket.Close();
    m_groupRow.Close();
    return true;
}

void CustomTicket::finish()
{
    Platform& platform = m_host.platform();
    if (!m_printAfter) {
        platform.messageBox(QStringLiteral("Ticket Created Successfully!"), MsgStyle::Info);
        platform.yield();
        m_host.EndProgress();
        platform.yield();
        platform.sleep(500);
    }
    platform.sleep(500);
    m_form[genacc::chkCustomVIP].setValue(CheckState::Unchecked);
    m_form[genacc::chkCustomTimePeriod].setValue(CheckState::Unchecked);
    m_form[genacc::txtCustomUsername].setText(QString());
    m_form[genacc::txtCustomPassword].setText(QString());
    platform.yield();
    if (m_printAfter)
        BuildPrintPreview(m_host, Statement(QStringLiteral("Select * From Account where TicketGrp = '{}'"), {m_group}));
}

} // namespace marlet
