#include "members/MembershipTicket.h"

#include "issuing/Expiry.h"
#include "issuing/GenAccNames.h"
#include "issuing/Quota.h"
#include "issuing/SingleTicket.h"
#include "issuing/TicketGroup.h"
#include "issuing/TicketNames.h"
#include "issuing/TicketRow.h"
#include "members/MemberRecord.h"
#include "members/MemberinfoNames.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "printing/PrintDispatch.h"
#include "printing/PrintStaging.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/Connection.h"
#include "values/Formats.h"
#include "values/Numbers.h"

#include <optional>

namespace marlet {

namespace {

// The first step takes up to 360 hours; the second only 5000 minutes, with the same message.
constexpr double FirstStepMaxMinutes = 21600;
constexpr double FinishMaxMinutes = 5000;
// A member without a set time gets a day's credit, recharged every day.
constexpr double DayMinutes = 1440;

const QString PageHint
    = QStringLiteral("Items with * must be filled, if membership information is not marked skipped below.");
const QString ErrorMessage = QStringLiteral("An Error occurred, please restart server!");

} // namespace

MembershipTicket::MembershipTicket(WorkHost& host)
    : m_host(host)
    , m_form(host.form())
{
}

SessionPreferences MembershipTicket::settings() const
{
    return m_host.session().settings();
}

bool MembershipTicket::warn(const QString& message) const
{
    m_host.platform().messageBox(message, MsgStyle::Warning);
    return false;
}

// ---- the first step ---------------------------------------------------------------------------

QString MembershipTicket::begin()
{
    QString existingMember;
    const bool go = checkUsername(false, existingMember) && checkPassword(false) && checkTerms(FirstStepMaxMinutes);
    m_ticket.Close();
    if (!go)
        return existingMember;
    applyUseTime();
    if (!askToClearPage())
        return QString();
    fillTicketPanels();
    m_form[memberinfo::Label8].setCaption(PageHint);
    m_form[genacc::cmdFinishMember].setEnabled(true);
    m_form[genacc::FMemberPage].setVisible(true);
    m_form[genacc::FMember].setVisible(false);
    m_form.setCaption(QStringLiteral("Generate Ticket - Membership Information"));
    return QString();
}

void MembershipTicket::back()
{
    closePage();
}

bool MembershipTicket::checkUsername(bool finishing, QString& existingMember)
{
    const TicketPath path = finishing ? TicketPath::MembershipFinish : TicketPath::Membership;
    const QString typed = m_form[genacc::txtMemberUsername].text();
    // The length follows the Custom tab's VIP box, the prefix this tab's own.
    const bool vipLength = m_form[genacc::chkCustomVIP].ticked();
    if (const std::optional<QString> problem = usernameProblem(typed, path, vipLength))
        return warn(*problem);
    m_username = typedUsername(settings(), typed, m_form[genacc::chkMemberVIP].ticked());
    switch (lookUpUsername(m_ticket, m_host.session().connection(), m_username)) {
    case NameLookup::Free:
        return true;
    case NameLookup::Taken: {
        const bool member = m_ticket.value(QStringLiteral("member")).toBool();
        if (finishing || !member)
            return warn(existingNameMessage(path, member));
        if (m_host.platform().messageBox(existingNameMessage(path, true), MsgStyle::YesNoQuestion) == MsgResult::Yes)
            existingMember = m_username;
        return false;
    }
    case NameLookup::Failed:
        break;
    }
    return false;
}

bool MembershipTicket::checkPassword(bool finishing)
{
    const TicketPath path = finishing ? TicketPath::MembershipFinish : TicketPath::Membership;
    if (const std::optional<QString> problem = passwordProblem(m_form[genacc::txtMemberPassword].text(), path))
        return warn(*problem);
    return true;
}

bool MembershipTicket::checkTerms(double maxMinutes)
{
    // Without "Use Time" the credit is a day's, and the time fields are not looked at.
    const std::optional<TypedTicketTerms> terms = typedTicketTerms(m_host,
        {m_form[genacc::cboMemberHours].text(),
            m_form[genacc::cboMemberMinutes].text(),
            m_form[genacc::cboMemberCost].text(),
            maxMinutes,
            TicketPath::Membership,
            m_form[genacc::chkUseTime].ticked() ? std::nullopt : std::optional<double>(DayMinutes)});
    m_terms = terms.value_or(TypedTicketTerms());
    return terms.has_value();
}

// Without "Use Time" the member recharges a day's credit every day: the lists show it, the box
// is ticked and the lists are locked.
void MembershipTicket::applyUseTime()
{
    if (m_form[genacc::chkUseTime].ticked())
        return;
    Control& days = m_form[genacc::cboRechargeDays];
    Control& period = m_form[genacc::cboRechargePeriod];
    days.setListIndex(days.findItem(QStringLiteral("1 day(s)")));
    period.setListIndex(period.findItem(QStringLiteral("24 hour(s)")));
    m_form[genacc::chkRecharge].setValue(CheckState::Checked);
    days.setEnabled(false);
    period.setEnabled(false);
}

bool MembershipTicket::askToClearPage()
{
    const QString pageName = m_form.at(memberinfo::Text7, TicketUsername).text();
    if (pageName.isEmpty() || pageName == typedUpperCase(m_form[genacc::txtMemberUsername].text()))
        return true;
    const MsgResult answer = m_host.platform().messageBox(
        QStringLiteral("You must have pressed '<< Back' and made changes to the Ticket Username. Clear previous "
                       "Membership information?"),
        MsgStyle::YesNoCancelQuestion);
    if (answer == MsgResult::Cancel)
        return false;
    if (answer == MsgResult::Yes)
        clearMemberFields(m_form, m_host.platform().today());
    return true;
}

void MembershipTicket::fillTicketPanels()
{
    const auto field = [this](MemberField index) -> Control& { return m_form.at(memberinfo::Text7, index); };
    const QDate today = m_host.platform().today();
    field(TicketUsername).setText(typedUpperCase(m_form[genacc::txtMemberUsername].text()));
    field(TimeText).setText(m_form[genacc::cboMemberHours].text() + QStringLiteral("hr(s) ")
        + m_form[genacc::cboMemberMinutes].text() + QStringLiteral("min(s)"));
    field(CostText).setText(ticketAmount(settings(), m_form[genacc::cboMemberCost].text()));

    const QString days = m_form[genacc::txtMemberDays].text();
    switch (expiryKind(m_form[genacc::cboMemberExpiry].listIndex())) {
    case ExpiryKind::Fixed:
        field(ExpireText)
            .setText(
                values::format(daysAfter(today, values::leadingNumber(days)).toDate(), QStringLiteral("dd-mmmm-yyyy")));
        break;
    case ExpiryKind::Flexible:
        field(ExpireText).setText(days + QStringLiteral(" day(s) after use"));
        break;
    case ExpiryKind::Never:
        field(ExpireText).setText(QStringLiteral("Never Expire"));
        break;
    }

    const Control& useTime = m_form[genacc::chkUseTime];
    const bool scheduled = useTime.ticked() && m_form[genacc::chkRecharge].ticked();
    if (!scheduled && useTime.enabled()) {
        field(RechargeableText).setText(QStringLiteral("No"));
        field(RechargeDays).setText(QStringLiteral("None"));
        field(RechargeTime).setText(QStringLiteral("None"));
    } else {
        field(RechargeableText).setText(QStringLiteral("Yes"));
        field(RechargeDays).setText(m_form[genacc::cboRechargeDays].text());
        field(RechargeTime).setText(m_form[genacc::cboRechargePeriod].text());
    }

    QString period;
    if (m_form[genacc::chkMemberTimePeriod].ticked())
        period = values::format(m_form[genacc::dtMemberStart].dateTime(), QStringLiteral("HH:MM")) + u'-'
            + values::format(m_form[genacc::dtMemberEnd].dateTime(), QStringLiteral("HH:MM")) + u'|';
    field(TimePeriodText).setText(period + m_form[genacc::cboWeekday].text());
}

// ---- the second step --------------------------------------------------------------------------

void MembershipTicket::finish()
{
    m_skipped = m_form[memberinfo::Check16].ticked();
    if (!m_skipped) {
        if (const std::optional<MemberProblem> problem
            = memberProblem(readMemberDetails(m_form), m_host.platform().today())) {
            warn(problem->message);
            if (!problem->focusControl.isEmpty())
                m_form.setFocus(m_form.at(problem->focusControl, problem->focusIndex));
            return;
        }
    }
    QString unused;
    const bool go = checkUsername(true, unused) && checkPassword(true) && checkTerms(FinishMaxMinutes);
    if (!go) {
        m_ticket.Close();
        return;
    }
    applyUseTime();
    if (!confirm()) {
        m_ticket.Close();
        return;
    }
    const PrintAnswer answer
        = askPrintQuestion(m_host.session(), PrintCreator::Custom, m_form[genacc::cboSizeType].text());
    if (answer == PrintAnswer::Cancel) {
        m_ticket.Close();
        return;
    }
    m_printAfter = answer == PrintAnswer::Print;

    m_form[genacc::cmdFinishMember].setEnabled(false);
    const bool written = addGroup() && addTicket() && completeGroup() && addMember();
    if (!written) {
        m_host.platform().messageBox(ErrorMessage, MsgStyle::Critical);
    } else {
        announceSingleTicket(m_host, m_printAfter, QStringLiteral("Member Ticket Created Successfully!"));
        clearAfterFinish();
        if (m_printAfter)
            BuildPrintPreview(
                m_host, Statement(QStringLiteral("Select * From Account where TicketGrp = '{}'"), {m_group}));
    }
    m_ticket.Close();
    m_groupRow.Close();
    m_member.Close();
    closePage();
}

bool MembershipTicket::confirm()
{
    const SessionPreferences prefs = settings();
    QString kind = QStringLiteral("a");
    if (m_form[genacc::chkRecharge].ticked())
        kind = QStringLiteral("an Autorecharge[") + m_form[genacc::cboRechargeDays].text() + QStringLiteral(" - ")
            + m_form[genacc::cboRechargePeriod].text() + u']';
    const QString expiry = expiryConfirmationText(prefs,
        expiryKind(m_form[genacc::cboMemberExpiry].listIndex()),
        m_form[genacc::txtMemberDays].text(),
        m_host.platform().today());
    const QString question = QStringLiteral("You have choosen to generate a Membership Ticket ") + kind
        + QStringLiteral(" Membership ticket of ") + values::numberText(m_terms.minutes)
        + QStringLiteral("min(s)' Ticket(s) of Cost ") + prefs.text(keys::Currency) + values::numberText(m_terms.cost)
        + QStringLiteral(" with Expiration Date of ") + expiry
        + (m_form[genacc::chkMemberTimePeriod].ticked() ? QStringLiteral(" and for Time Ticket") : QString())
        + quotaConfirmationText(m_terms.quotas, m_terms.quota) + QStringLiteral(", ")
        + (m_skipped ? QStringLiteral("Continue without member's information")
                     : QStringLiteral("Continue and save information?"));
    return m_host.platform().messageBox(question, MsgStyle::YesNoQuestion) == MsgResult::Yes;
}

bool MembershipTicket::addGroup()
{
    const std::optional<QString> group = addSingleTicketGroup(m_host, m_groupRow, m_terms.minutes, m_terms.cost);
    m_group = group.value_or(QString());
    return group.has_value();
}

bool MembershipTicket::addTicket()
{
    const QDate today = m_host.platform().today();
    TicketValues ticket;
    ticket.TicketGrp = m_group;
    ticket.TicketNo = CustomTicketNo;
    ticket.Username = m_username;
    ticket.Password = typedPassword(m_form[genacc::txtMemberPassword].text());
    ticket.seconds = m_terms.minutes * 60;
    ticket.ByWhom = m_host.session().general.byWhom();
    ticket.created = today;
    ticket.expiry = expiryColumns(expiryKind(m_form[genacc::cboMemberExpiry].listIndex()),
        values::leadingNumber(m_form[genacc::txtMemberDays].text()),
        today,
        TicketPath::MembershipFinish);
    ticket.Amount = ticketAmount(settings(), values::numberText(m_terms.cost));
    ticket.StartTime = m_form[genacc::dtMemberStart].dateTime();
    ticket.EndTime = m_form[genacc::dtMemberEnd].dateTime();
    ticket.Quota = m_terms.quotas ? m_terms.quota : 0;
    ticket.Night = m_form[genacc::chkMemberTimePeriod].ticked();
    MemberSchedule schedule;
    schedule.Autorecharge
        = m_form[genacc::chkRecharge].ticked() ? m_form[genacc::cboRechargeDays].text() : QStringLiteral("NONE");
    schedule.Reday = m_form[genacc::cboWeekday].text();
    schedule.Redate = today;
    schedule.Retime = m_form[genacc::cboRechargePeriod].text();
    ticket.member = schedule;
    if (!m_ticket.AddNew() || !writeTicketRow(m_ticket, ticket) || !m_ticket.Update())
        return false;

    if (!m_form[genacc::chkNoList].ticked()) {
        GridData& grid = m_host.ticketGrid().grid();
        grid.addItem(ticketRowLine(QStringLiteral("1"), ticketRowFields(ticket), m_form[genacc::Check4].ticked()));
    }
    return true;
}

bool MembershipTicket::completeGroup()
{
    if (!writeGroupCompletion(m_groupRow, GroupKind::Custom, 1, m_host.platform().now()) || !m_groupRow.Update())
        return false;
    // The Custom tab's box, not this tab's, as it always has been.
    m_form[genacc::chkCustomTimePeriod].setValue(CheckState::Unchecked);
    m_ticket.Close();
    m_groupRow.Close();
    return true;
}

bool MembershipTicket::addMember()
{
    Connection& connection = m_host.session().connection();
    if (!m_member.Open(Statement(QStringLiteral("select * from Members where Member_ID='{}'"), {m_group}),
            connection,
            CursorType::Static,
            LockType::Optimistic))
        return false;
    if (m_member.RecordCount() > 0 ? !m_member.MoveFirst() : !m_member.AddNew())
        return false;
    const MemberDetails details = readMemberDetails(m_form);
    bool written = m_member.setValue(QStringLiteral("Member_ID"), m_group.toUpper());
    written
        = (m_skipped ? blankMemberColumns(m_member, m_host.platform().today()) : writeMemberColumns(m_member, details))
        && written;

    // The picture keeps the name given here for as long as the member exists.
    const General& general = m_host.session().general;
    const QString picture = m_skipped ? m_group : pictureFileName(m_group, details[Surname]);
    ensurePictureFolder(general);
    const QByteArray image = m_form[memberinfo::mPicture].picture();
    if (!image.isEmpty())
        writePicture(general, picture, image);
    written = m_member.setValue(QStringLiteral("Picture"), picture) && written;
    return written && m_member.Update();
}

void MembershipTicket::clearAfterFinish()
{
    for (const QString& box :
        {genacc::chkUseTime, genacc::chkRecharge, genacc::chkMemberVIP, genacc::chkMemberTimePeriod})
        m_form[box].setValue(CheckState::Unchecked);
    m_form[genacc::txtMemberUsername].setText(QString());
    m_form[genacc::txtMemberPassword].setText(QString());
    for (const QString& list : {genacc::cboMemberHours,
             genacc::cboMemberMinutes,
             genacc::cboMemberCost,
             genacc::cboRechargeDays,
             genacc::cboRechargePeriod,
             genacc::cboWeekday})
        m_form[list].setListIndex(0);
    clearMemberFields(m_form, m_host.platform().today());
}

void MembershipTicket::closePage()
{
    m_form[genacc::FMemberPage].setVisible(false);
    m_form[genacc::FMember].setVisible(true);
    m_form.setCaption(QStringLiteral("Generate Ticket"));
}

} // namespace marlet
