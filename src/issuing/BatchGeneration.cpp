#include "issuing/BatchGeneration.h"

#include "issuing/GenAccNames.h"
#include "issuing/Quota.h"
#include "issuing/TicketGroup.h"
#include "issuing/TicketNames.h"
#include "issuing/TicketRow.h"
#include "issuing/TicketRules.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "printing/PrintDispatch.h"
#include "printing/PrintStaging.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/Connection.h"
#include "store/Recordset.h"
#include "values/Formats.h"
#include "values/Numbers.h"

namespace marlet {

namespace {

// More stored tickets than this refuse a new batch; the new ones are not counted.
constexpr long StorageLimit = 100000;

const QString StopQuestion = QStringLiteral("Are you sure you want to Cancel Ticket Generation?");

// Tickets on one sheet of a quick-ticket size.
int ticketsPerPage(const QString& size)
{
    if (size == QLatin1String("Small Size"))
        return 72;
    if (size == QLatin1String("Medium Size"))
        return 39;
    return 22;
}

} // namespace

BatchGeneration::BatchGeneration(WorkHost& host)
    : m_host(host)
    , m_form(host.form())
{
}

SessionPreferences BatchGeneration::settings() const
{
    return m_host.session().settings();
}

void BatchGeneration::run()
{
    m_quick = settings().number(keys::QuickTicket) == 1;
    if (!m_quick && !checkManualTime())
        return;
    if (!askForQuota())
        return;
    if (m_quick && !readQuickTicket())
        return;
    if (!confirm() || !askPrint())
        return;

    m_host.resetTicketGrid();
    settings().save(
        keys::ExType, m_form[genacc::cboExpiry].listIndex() == 0 ? QStringLiteral("1") : QStringLiteral("2"));
    m_host.StartProgress();
    if (!m_quick) {
        m_time = creditSeconds(values::leadingNumber(m_form[genacc::cboHours].text()),
            values::leadingNumber(m_form[genacc::cboMinutes].text()));
        m_number = values::toSingle(values::leadingNumber(m_form[genacc::cboNumber].text()));
    }
    Control& bar = m_host.progressBar();
    bar.setRange(0, values::toInt16(m_number).value_or(0));
    bar.setValue(0);
    m_host.setProgressText(QStringLiteral("Calculating "));
    m_host.ProgressAdjust();
    m_host.platform().sleep(50);

    Connection& connection = m_host.session().connection();
    const QDateTime now = m_host.platform().now();
    if (settings().number(keys::ProgramLog) == 1) {
        connection.Execute(Statement(QStringLiteral("INSERT INTO SysUsage (SystemUsage,Times,Dates) Values "
                                                    "('Ticket(s) Generated','{}','{}')"),
            {values::machineTime(now.time()), values::machineDate(now.date())}));
    }
    m_prefix = batchPrefix(settings(), m_form[genacc::chkVIP].ticked());
    m_form[genacc::chkVIP].setValue(CheckState::Unchecked);
    if (storageFull())
        return;
    openGroup();
    if (!makeTickets())
        return;
    closeGroup();
    reportStoreFailure();

    Platform& platform = m_host.platform();
    if (!m_printAfter) {
        if (settings().number(keys::AutoSave) == 1) {
            updateRegister();
            if (m_storeFailure.isEmpty())
                platform.messageBox(QStringLiteral("Ticket Generation Completed Successfully!"), MsgStyle::Info);
        }
        platform.yield();
        m_host.EndProgress();
        platform.yield();
        platform.sleep(500);
    }
    platform.sleep(500);
    m_form[genacc::chkTimePeriod].setValue(CheckState::Unchecked);
    platform.yield();
    if (m_printAfter)
        BuildPrintPreview(m_host, Statement(QStringLiteral("Select * From Account where TicketGrp = '{}'"), {m_group}));
    if (settings().number(keys::AutoSave) == 0)
        offerSave();
}

// ---- validation and questions -----------------------------------------------------------------

bool BatchGeneration::checkManualTime()
{
    const QString hours = m_form[genacc::cboHours].text();
    const QString minutes = m_form[genacc::cboMinutes].text();
    if (!values::isNumeric(hours) || !values::isNumeric(minutes)) {
        m_host.platform().messageBox(QStringLiteral("Time must be numeric!"), MsgStyle::Warning);
        return false;
    }
    if (!(values::leadingNumber(hours) > 0) && !(values::leadingNumber(minutes) > 0)) {
        m_host.platform().messageBox(QStringLiteral("Hour and Minutes can't both be Zero!"), MsgStyle::Warning);
        return false;
    }
    return true;
}

bool BatchGeneration::askForQuota()
{
    m_quotas = quotasOn(settings());
    if (!m_quotas) {
        m_quota = UnlimitedQuota;
        return true;
    }
    const std::optional<qint32> quota = askQuota(m_host.platform(), TicketPath::Batch);
    if (!quota)
        return false;
    m_quota = *quota;
    return true;
}

bool BatchGeneration::readQuickTicket()
{
    Platform& platform = m_host.platform();
    const QString type = m_form[genacc::cboTicketType].text();
    const QString pages = m_form[genacc::cboPages].text();
    if (type.isEmpty() || type == QLatin1String("None") || pages.isEmpty() || pages == QLatin1String("None")) {
        platform.messageBox(QStringLiteral("Quick-Ticket entry blank!"), MsgStyle::Warning);
        return false;
    }
    // The form: minutes, "min(s) - ", currency and price, " [", kind, "]", and " - VIP" for VIP.
    const qsizetype minutesEnd = type.indexOf(QStringLiteral("min(s) - "));
    const QString minutes = minutesEnd < 0 ? type : type.left(minutesEnd);
    if (!values::isNumeric(minutes)) {
        platform.messageBox(QStringLiteral("Time Error!"), MsgStyle::Warning);
        return false;
    }
    m_time = values::leadingNumber(minutes);
    const QString rest = minutesEnd < 0 ? QString() : type.mid(minutesEnd + 9);
    const qsizetype kindStart = rest.indexOf(QStringLiteral(" ["));
    const QString price = kindStart < 0 ? rest : rest.left(kindStart);
    QString kind = kindStart < 0 ? QString() : u'[' + rest.mid(kindStart + 2);

    if (kind.contains(QStringLiteral(" - VIP"))) {
        if (!clientSeparationOn(settings())) {
            platform.messageBox(QStringLiteral("The Client Reservation/Seperation has not been enabled, Please goto "
                                               "Include/Exclude in Option to enable this feature."),
                                MsgStyle::Info);
            m_form[genacc::chkVIP].setValue(CheckState::Unchecked);
            return false;
        }
        m_form[genacc::chkVIP].setValue(CheckState::Checked);
        // The blank in front of "- VIP" stays, so a VIP kind never equals a timed kind below.
        kind.remove(QStringLiteral("- VIP"));
    }
    const bool timed = kind == QLatin1String("[Time Ticket]") || kind == QLatin1String("[Time Once]");
    m_form[genacc::chkTimePeriod].setValue(timed ? CheckState::Checked : CheckState::Unchecked);
    m_form[genacc::chkOnce].setValue(
        kind == QLatin1String("[Time Once]") ? CheckState::Checked : CheckState::Unchecked);

    m_number = float(m_form[genacc::cboPages].listIndex() * ticketsPerPage(m_form[genacc::cboSizeType].text()));
    QString cost = price;
    cost.remove(settings().text(keys::Currency));
    m_form[genacc::cboCost].setText(values::isNumeric(cost) ? cost : QStringLiteral("0"));
    return true;
}

bool BatchGeneration::confirm()
{
    const SessionPreferences prefs = settings();
    const QString expiry = expiryConfirmationText(prefs,
        expiryKind(m_form[genacc::cboExpiry].listIndex()),
        m_form[genacc::txtDays].text(),
        m_host.platform().today());
    const QString tail = QStringLiteral("min(s)' Ticket(s) of Cost ") + prefs.text(keys::Currency)
        + m_form[genacc::cboCost].text() + QStringLiteral(" with Expiration Date of ") + expiry
        + (m_form[genacc::chkTimePeriod].ticked() ? QStringLiteral(" and for Time Only") : QString())
        + (m_form[genacc::chkOnce].ticked() ? QStringLiteral(" to be used Once") : QString())
        + quotaConfirmationText(m_quotas, m_quota) + QStringLiteral(", Continue?");
    const QString question = m_quick
        ? QStringLiteral("You have choosen to Generate [") + values::singleText(m_number) + QStringLiteral("Tks] in ")
            + m_form[genacc::cboPages].text() + QStringLiteral(" of ") + values::numberText(m_time) + tail
        : QStringLiteral("You have choosen to Generate ") + m_form[genacc::cboNumber].text()
            + QStringLiteral(" number(s) of ") + m_form[genacc::cboHours].text() + QStringLiteral("hour(s) ")
            + m_form[genacc::cboMinutes].text() + tail;
    if (m_host.platform().messageBox(question, MsgStyle::YesNoQuestionNoDefault) != MsgResult::Yes)
        return false;
    if (m_quick)
        m_time *= 60;
    return true;
}

bool BatchGeneration::askPrint()
{
    const PrintAnswer answer
        = askPrintQuestion(m_host.session(), PrintCreator::Batch, m_form[genacc::cboSizeType].text());
    m_printAfter = answer == PrintAnswer::Print;
    return answer != PrintAnswer::Cancel;
}

// ---- making the batch -------------------------------------------------------------------------

bool BatchGeneration::storageFull()
{
    Platform& platform = m_host.platform();
    // Only the count of the stored tickets matters: the store counts them rather than handing over
    // a hundred thousand rows.
    const long stored = Recordset::countRows(
        Statement(QStringLiteral("Select * from Account where member=false")), m_host.session().connection());
    m_host.stepProgress();
    platform.sleep(100);
    if (stored > StorageLimit) {
        platform.messageBox(QStringLiteral("The Ticket Storage is full! Use the Clean Up utility in OPTION to remove "
                                           "redundant tickets or Delete it manually!"),
                            MsgStyle::Stop);
        m_host.EndProgress();
        platform.messageBox(QStringLiteral("Ticket generation terminated!"), MsgStyle::OkOnly);
        return true;
    }
    return false;
}

void BatchGeneration::openGroup()
{
    Session& session = m_host.session();
    const QString cost = m_form[genacc::cboCost].text();
    m_groupRow = std::make_unique<Recordset>();
    m_group = addTicketGroup(*m_groupRow,
        session.connection(),
        {QString(),
            m_number,
            m_time / 60,
            cost,
            values::leadingNumber(cost) * double(m_number),
            session.general.byWhom()},
        m_host.platform().now())
                  .TicketGrp;

    m_host.progressBar().setValue(0);
    SessionPreferences prefs = settings();
    prefs.save(keys::Number, values::singleText(m_number));
    prefs.save(keys::Min, m_form[genacc::cboMinutes].text());
    prefs.save(keys::Hr, m_form[genacc::cboHours].text());
    prefs.save(keys::Amount, cost);
    m_host.setProgressText(QStringLiteral("Generating "));
    m_amount = ticketAmount(prefs, cost);
}

bool BatchGeneration::makeTickets()
{
    Platform& platform = m_host.platform();
    Recordset tickets;
    // The counter is a 16-bit number; after the loop it stands one above the last ticket.
    qint16 position = 1;
    for (; position <= qint16(values::toInt16(m_number).value_or(0)); ++position) {
        platform.sleep(50);
        if (m_host.StopRequested && stopAnswered()) {
            tickets.Close();
            return false;
        }
        if (!makeTicket(position, tickets))
            break;
        platform.yield();
        m_host.stepProgress();
    }
    tickets.Close();
    // A batch cut short counts the tickets stored; a whole one stands one above them.
    m_number = float(m_storeFailure.isEmpty() ? position : position - 1);
    return true;
}

// Stop was pressed: true when the operator confirmed and the batch has been removed.
bool BatchGeneration::stopAnswered()
{
    if (m_host.platform().messageBox(StopQuestion, MsgStyle::YesNoQuestionNoDefault) != MsgResult::Yes) {
        m_host.StopRequested = false;
        return false;
    }
    discard();
    if (m_groupRow)
        m_groupRow->Close();
    m_host.EndProgress();
    return true;
}

namespace {

// The draw of a free name and the write of the ticket, one server at a time where several share
// the database: another server's batch cannot take the name between the look-up and the write.
class TicketNameLock
{
public:
    explicit TicketNameLock(Connection& connection)
        : m_connection(connection)
        , m_held(connection.holdSharedLock(name))
    {
    }
    ~TicketNameLock()
    {
        if (m_held)
            m_connection.releaseSharedLock(name);
    }
    TicketNameLock(const TicketNameLock&) = delete;
    TicketNameLock& operator=(const TicketNameLock&) = delete;

    bool held() const { return m_held; }

private:
    static inline const QString name = QStringLiteral("marlet ticket names");
    Connection& m_connection;
    bool m_held;
};

} // namespace

bool BatchGeneration::makeTicket(int position, Recordset& tickets)
{
    Session& session = m_host.session();
    const SessionPreferences prefs = settings();
    const TicketNameLock lock(session.connection());
    if (!lock.held()) {
        m_failedPosition = position;
        m_storeFailure = session.connection().lastError();
        return false;
    }
    const std::optional<QString> name = drawFreeUsername(tickets, session.connection(), prefs, m_prefix, m_source);
    if (!name) {
        m_failedPosition = position;
        m_storeFailure = tickets.lastError();
        return false;
    }

    TicketValues ticket;
    ticket.TicketGrp = m_group;
    ticket.TicketNo = ticketNumberText(position);
    ticket.Username = *name;
    ticket.Password = batchPassword(prefs, m_source);
    ticket.seconds = m_time;
    ticket.ByWhom = session.general.byWhom();
    ticket.created = m_host.platform().today();
    ticket.expiry = expiryColumns(expiryKind(m_form[genacc::cboExpiry].listIndex()),
        values::leadingNumber(m_form[genacc::txtDays].text()),
        ticket.created,
        TicketPath::Batch);
    ticket.Amount = m_amount;
    ticket.StartTime = m_form[genacc::dtStart].dateTime();
    ticket.EndTime = m_form[genacc::dtEnd].dateTime();
    ticket.Quota = m_quotas ? m_quota : 0;
    ticket.Night = m_form[genacc::chkTimePeriod].value() == 1;
    ticket.Once = m_form[genacc::chkOnce].value() == 1;
    // A ticket counts once the store has it. A refusal is tried once more, after the store's own
    // wait for a lock another program holds; a second refusal ends the batch. A name refused as a
    // duplicate (another program's row, stored since the draw looked the name up) is drawn again.
    bool stored = false;
    for (int draw = 1;; ++draw) {
        stored = tickets.AddNew();
        if (stored) {
            writeTicketRow(tickets, ticket);
            stored = tickets.Update() || (!tickets.lastFailureWasDuplicate() && tickets.Update());
        }
        if (stored || !tickets.lastFailureWasDuplicate() || draw >= UsernameDrawAttempts)
            break;
        tickets.CancelUpdate();
        const std::optional<QString> again = drawFreeUsername(tickets, session.connection(), prefs, m_prefix, m_source);
        if (!again)
            break;
        ticket.Username = *again;
    }
    if (!stored) {
        m_failedPosition = position;
        m_storeFailure = tickets.lastError();
        tickets.CancelUpdate();
        return false;
    }

    if (!m_form[genacc::chkNoList].ticked()) {
        GridData& grid = m_host.ticketGrid().grid();
        grid.addItem(
            ticketRowLine(QString::number(position), ticketRowFields(ticket), m_form[genacc::Check4].ticked()));
    }
    return true;
}

void BatchGeneration::reportStoreFailure()
{
    if (m_storeFailure.isEmpty())
        return;
    const int stored = m_failedPosition - 1;
    m_host.platform().messageBox(QString(BatchStoppedMessage) + QStringLiteral("the database did not store ticket ")
            + QString::number(m_failedPosition) + QStringLiteral(" (") + m_storeFailure + QStringLiteral("). The ")
            + QString::number(stored) + QStringLiteral(" ticket(s) stored before it are kept in Ticket Group ")
            + m_group + u'.',
        MsgStyle::Stop);
}

void BatchGeneration::closeGroup()
{
    if (m_groupRow) {
        writeGroupCompletion(*m_groupRow,
            GroupKind::Random,
            m_number,
            m_host.platform().now(),
            m_storeFailure.isEmpty() ? GroupEnd::Completed : GroupEnd::Interrupted);
        m_groupRow->Update();
    }
    m_host.session().connection().Execute(Statement(
        QStringLiteral("INSERT INTO Activated (TicketGrp,Times,Amount,Staff,Status,Activator,numbers) Values  "
                       "('{}',{},'{}','{}',false,'',{})"),
        {m_group, m_time / 60, m_amount, m_host.session().general.CurrentStaff, m_number}));
    if (m_groupRow)
        m_groupRow->Close();
    m_groupRow.reset();
}

void BatchGeneration::discard()
{
    Connection& connection = m_host.session().connection();
    connection.Execute(Statement(QStringLiteral("Delete * from Account where member=false and TicketGrp = '{}'"), {m_group}));
    connection.Execute(Statement(QStringLiteral("Delete * from TicketInfo where TicketGrp = '{}'"), {m_group}));
    m_host.resetTicketGrid();
}

void BatchGeneration::updateRegister()
{
    const double cost = values::leadingNumber(m_form[genacc::cboCost].text());
    m_host.session().connection().Execute(
        Statement(QStringLiteral("UPDATE Register SET TotGenerated = TotGenerated + {}, TotCost = TotCost + {}"),
            {m_number, cost * double(m_number)}));
}

void BatchGeneration::offerSave()
{
    Platform& platform = m_host.platform();
    const QString group = u'[' + m_group + u']';
    const QString saved = QStringLiteral("Ticket(s) with Ticket Group ") + group + QStringLiteral(" saved!");
    if (platform.messageBox(QStringLiteral("Do you want to Save Generated Tickets with Ticket Group ") + group + u'?',
                            MsgStyle::YesNoQuestion)
        == MsgResult::Yes) {
        platform.messageBox(saved, MsgStyle::Warning);
        return;
    }
    if (platform.messageBox(QStringLiteral("Are you sure you don't want to Save Generated Tickets with Ticket Group ")
                                + group + u'?',
                            MsgStyle::YesNoQuestionNoDefault)
        == MsgResult::Yes) {
        discard();
        return;
    }
    platform.messageBox(saved, MsgStyle::Warning);
    updateRegister();
}

} // namespace marlet
