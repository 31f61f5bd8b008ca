#include "issuing/CustomTicket.h"

#include "issuing/Expiry.h"
#include "issuing/GenAccNames.h"
#include "issuing/Quota.h"
#include "issuing/SingleTicket.h"
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
    const bool go = checkUsername() && checkPassword() && checkTerms() && confirm() && askPrint();
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

bool CustomTicket::checkTerms()
{
    const std::optional<TypedTicketTerms> terms = typedTicketTerms(m_host,
        {m_form[genacc::cboCustomHours].text(),
            m_form[genacc::cboCustomMinutes].text(),
            m_form[genacc::cboCustomCost].text(),
            MaxMinutes,
            TicketPath::Custom,
            std::nullopt});
    m_terms = terms.value_or(TypedTicketTerms());
    return terms.has_value();
}

bool CustomTicket::confirm()
{
    const SessionPreferences prefs = settings();
    const QString expiry = expiryConfirmationText(prefs,
        expiryKind(m_form[genacc::cboCustomExpiry].listIndex()),
        m_form[genacc::txtCustomDays].text(),
        m_host.platform().today());
    const QString question = QStringLiteral("You have choosen to Generate a ticket of ")
        + values::numberText(m_terms.minutes) + QStringLiteral("min(s)' Ticket(s) of Cost ")
        + prefs.text(keys::Currency) + values::numberText(m_terms.cost) + QStringLiteral(" with Expiration Date of ")
        + expiry + (m_form[genacc::chkCustomTimePeriod].ticked() ? QStringLiteral(" and for Time Ticket") : QString())
        + (m_form[genacc::chkCustomOnce].ticked() ? QStringLiteral(" to be used Once") : QString())
        + quotaConfirmationText(m_terms.quotas, m_terms.quota) + QStringLiteral(", Continue?");
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
    const std::optional<QString> group = addSingleTicketGroup(m_host, m_groupRow, m_terms.minutes, m_terms.cost);
    m_group = group.value_or(QString());
    return group.has_value();
}

bool CustomTicket::addTicket()
{
    TicketValues ticket;
    ticket.TicketGrp = m_group;
    ticket.TicketNo = CustomTicketNo;
    ticket.Username = m_username;
    ticket.Password = typedPassword(m_form[genacc::txtCustomPassword].text());
    ticket.seconds = m_terms.minutes * 60;
    ticket.ByWhom = m_host.session().general.byWhom();
    ticket.created = m_host.platform().today();
    ticket.expiry = expiryColumns(expiryKind(m_form[genacc::cboCustomExpiry].listIndex()),
        values::leadingNumber(m_form[genacc::txtCustomDays].text()),
        ticket.created,
        TicketPath::Custom);
    ticket.Amount = ticketAmount(settings(), values::numberText(m_terms.cost));
    ticket.StartTime = m_form[genacc::dtCustomStart].dateTime();
    ticket.EndTime = m_form[genacc::dtCustomEnd].dateTime();
    ticket.Quota = m_terms.quotas ? m_terms.quota : 0;
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
    announceSingleTicket(m_host, m_printAfter, QStringLiteral("Ticket Created Successfully!"));
    m_form[genacc::chkCustomVIP].setValue(CheckState::Unchecked);
    m_form[genacc::chkCustomTimePeriod].setValue(CheckState::Unchecked);
    m_form[genacc::txtCustomUsername].setText(QString());
    m_form[genacc::txtCustomPassword].setText(QString());
    m_host.platform().yield();
    if (m_printAfter)
        BuildPrintPreview(m_host, Statement(QStringLiteral("Select * From Account where TicketGrp = '{}'"), {m_group}));
}

} // namespace marlet
