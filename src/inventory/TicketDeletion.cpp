#include "inventory/TicketDeletion.h"

#include "inventory/RecycleRouting.h"
#include "issuing/GenAccNames.h"
#include "issuing/TicketRow.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/Connection.h"
#include "values/Numbers.h"

#include <climits>
#include <limits>

namespace marlet {

namespace {

// The bar's maximum while a full bin is emptied: one more than the rows it loses.
constexpr int PurgeBarMaximum = RecyclePurgeRounds + 1;

// "&Delete Selection" shows the purge of a full bin on the progress panel, after a pause and a
// fresh look at the bin, and puts the bar back as it was afterwards.
class PanelPurgeReporter : public PurgeReporter
{
public:
    explicit PanelPurgeReporter(WorkHost& host)
        : m_host(host)
        , m_bar(host.progressBar())
    {
    }

    void purgeStarting(Recordset& bin) override
    {
        m_host.platform().sleep(200);
        bin.Requery();
        m_value = m_bar.value();
        m_maximum = m_bar.maximum();
        m_bar.setValue(0);
        m_bar.setMaximum(PurgeBarMaximum);
        m_host.setProgressText(QStringLiteral("Emptying Recycle Bin"));
        m_host.ProgressAdjust();
    }

    void purgeRound() override { m_host.stepProgress(); }

    void purgeFinished() override
    {
        m_host.setProgressText(QStringLiteral("Deleting"));
        m_host.ProgressAdjust();
        m_bar.setMaximum(m_maximum);
        m_bar.setValue(m_value);
    }

private:
    WorkHost& m_host;
    Control& m_bar;
    int m_value = 0;
    int m_maximum = 0;
};

} // namespace

// One option of the selection frame as "&Delete Selection" treats it.
struct TicketDeletion::Branch
{
    int option = 1;
    QString confirmation;
    int confirmationStyle = MsgStyle::YesNoQuestionNoDefault;
    Statement selection {QString()};
    QString deletion; // deletes one row of the selection, {} taking its Username
    QString success;
};

TicketDeletion::TicketDeletion(WorkHost& host)
    : m_host(host)
    , m_form(host.form())
{
}

bool TicketDeletion::passwordsHidden() const
{
    return m_form[genacc::Check4].ticked();
}

void TicketDeletion::closeSets()
{
    m_tickets.Close();
    m_bin.Close();
}

// ---- "&Delete Selection" ----------------------------------------------------------------------

TicketDeletion::Branch TicketDeletion::selectedBranch() const
{
    const QString eachRow = QStringLiteral("DELETE FROM Account where member=false and account.username = '{}'");
    if (m_form[genacc::Option2].isChecked()) {
        return {2,
            QStringLiteral("Continue to Delete Unused Ticket(s)?"),
            MsgStyle::YesNoQuestionNoDefault,
            Statement(QStringLiteral("Select * from Account where NEW = TRUE and member=false")),
            eachRow,
            QStringLiteral("All Unused Ticket(s) Deleted Successfully!")};
    }
    if (m_form[genacc::Option3].isChecked()) {
        // Not the listing's test for a used ticket: the two are kept apart.
        return {3,
            QStringLiteral("Continue to Delete Used Ticket(s)?"),
            MsgStyle::YesNoQuestionNoDefault,
            Statement(QStringLiteral("Select * from Account where LastUsed <> DateCreated and member=false")),
            eachRow,
            QStringLiteral("All Used Ticket(s) Deleted Successfully!")};
    }
    if (m_form[genacc::Option4].isChecked()) {
        const QString minutes = m_form[genacc::Text1].text();
        // Unlike the listing, the fraction stays: 5.7 minutes select 342 seconds.
        const float seconds = values::toSingle(values::leadingNumber(minutes)) * 60.0F;
        return {4,
            QStringLiteral("Continue to delete ") + minutes + QStringLiteral(" min(s) Selected Ticket(s)?"),
            MsgStyle::YesNoQuestionNoDefault,
            Statement(QStringLiteral("Select * from Account where member=false and time = {}"),
                {values::singleText(seconds)}),
            eachRow,
            QStringLiteral("All ") + (minutes.isEmpty() ? QStringLiteral("0") : minutes)
                + QStringLiteral(" min(s) Deleted Successfully!")};
    }
    if (m_form[genacc::Option5].isChecked()) {
        const QString group = m_form[genacc::Text5].text();
        const bool partial = group.size() >= 2 && group.size() < 12;
        return {5,
            QStringLiteral("Continue to delete ") + group + (partial ? QStringLiteral(" like group ") : QString())
                + QStringLiteral(" Ticket(s) Selected Ticket(s)?"),
            MsgStyle::YesNoQuestion,
            Statement(QStringLiteral("Select * from Account where member=false and TicketGrp like '{}%'"), {group}),
            eachRow,
            QStringLiteral("All Selected Ticket(s) Deleted Successfully!")};
    }
    // "&All", also while no option has been chosen yet.
    return {1,
        QStringLiteral("Continue to Delete All?"),
        MsgStyle::YesNoQuestionNoDefault,
        Statement(QStringLiteral("Select * from Account where member=false")),
        QStringLiteral("DELETE * FROM Account where account.member=false and account.username = '{}'"),
        QStringLiteral("All Ticket(s) Deleted Successfully!")};
}

void TicketDeletion::deleteSelection()
{
    Platform& platform = m_host.platform();
    if (platform.messageBox(QStringLiteral("Delete Record(s)?"), MsgStyle::YesNoQuestionNoDefault) != MsgResult::Yes)
        return;
    m_host.ticketGrid().setToolTip(QString());
    m_host.resetTicketGrid();
    m_host.ProgressAdjust();

    const Branch branch = selectedBranch();
    // A refused confirmation ends here too: the grid stays cleared.
    if (platform.messageBox(branch.confirmation, branch.confirmationStyle) == MsgResult::Yes) {
        startPanel(branch);
        if (branch.option == 5 && m_form[genacc::Text5].text().size() < 2) {
            platform.messageBox(QStringLiteral("Atleast you must enter 2 numbers!"), MsgStyle::Warning);
            closeSets();
            m_host.EndProgress();
            m_form.setFocus(m_form[genacc::Text5]);
            return;
        }
        deleteBranch(branch);
    }
    // The clean-up, where every way out of the deletion ends; nothing in it fails.
    closeSets();
    m_host.EndProgress();
}

void TicketDeletion::startPanel(const Branch& branch)
{
    if (branch.option == 1) {
        m_host.ProgressAdjust();
        m_host.StartProgress();
    } else {
        m_host.StartProgress();
        m_host.ProgressAdjust();
    }
    m_host.platform().sleep(100);
}

void TicketDeletion::deleteBranch(const Branch& branch)
{
    Platform& platform = m_host.platform();
    Connection& connection = m_host.session().connection();
    if (!m_tickets.Open(branch.selection, connection))
        return;
    Control& bar = m_host.progressBar();
    if (m_tickets.RecordCount() > 0)
        bar.setMaximum(int(qMin<long>(m_tickets.RecordCount(), INT_MAX)));
    if (!m_bin.Open(Statement(QStringLiteral("Select * from RecycleBin")),
            connection,
            CursorType::Static,
            LockType::Optimistic))
        return;
    bar.setValue(bar.maximum());
    m_host.setProgressText(QStringLiteral("Deleting "));
    m_host.ProgressAdjust();
    bar.setValue(0);

    PanelPurgeReporter reporter(m_host);
    const RecycleRouting routing {m_host.session().settings(), RoutingErrors::EndRouting, &reporter};
    if (!deleteRows(branch, routing) || !closeBranch(branch))
        return;
    m_host.EndProgress();
    platform.messageBox(branch.success, MsgStyle::Info);
}

// Deletes the selection row by row, listing each in the grid; false on a failing step and on Stop.
bool TicketDeletion::deleteRows(const Branch& branch, const RecycleRouting& routing)
{
    Platform& platform = m_host.platform();
    GridData& grid = m_host.ticketGrid().grid();
    Connection& connection = m_host.session().connection();
    const long count = m_tickets.RecordCount();
    // The running number is a 16-bit counter: counting past its range is a failing step.
    const long last = qMin<long>(count, std::numeric_limits<qint16>::max());
    for (long i = 1; i <= last; ++i) {
        grid.addItem(ticketRowLine(QString::number(i), ticketRowFields(m_tickets), passwordsHidden()));
        if (!routing.route(m_tickets, m_bin, platform.now()))
            return false;
        bool read = false;
        const QVariant username = m_tickets.value(QStringLiteral("Username"), &read);
        if (!read || !connection.Execute(Statement(branch.deletion, {username})))
            return false;
        if (!m_tickets.Eof())
            m_tickets.MoveNext();
        platform.yield();
        m_host.stepProgress();
        if (m_host.StopRequested)
            return false;
    }
    return count <= last;
}

// The work after the last row; false when a statement fails.
bool TicketDeletion::closeBranch(const Branch& branch)
{
    Platform& platform = m_host.platform();
    Connection& connection = m_host.session().connection();
    const QString groupQuestion = QStringLiteral("Delete Ticket(s) group list ?");
    if (branch.option == 1) {
        // Written so, this is no valid delete of the group list: the store refuses it.
        if (platform.messageBox(groupQuestion, MsgStyle::YesNoQuestionNoDefault) == MsgResult::Yes)
            return connection.Execute(Statement(QStringLiteral("DELETE account.* FROM member=false and TicketInfo")));
        return true;
    }
    if (branch.option != 5)
        return true;
    const QString group = m_form[genacc::Text5].text();
    if (!connection.Execute(Statement(
            QStringLiteral("DELETE account.* FROM Account where member=false and account.TicketGrp like '{}%'"),
            {group})))
        return false;
    if (platform.messageBox(groupQuestion, MsgStyle::YesNoQuestion) == MsgResult::Yes) {
        return connection.Execute(Statement(
            QStringLiteral("DELETE TicketInfo.* FROM TicketInfo where  TicketInfo.TicketGrp like '{}%'"), {group}));
    }
    return true;
}

// ---- the single-ticket deletes ----------------------------------------------------------------

bool TicketDeletion::nameAccepted(const QString& name) const
{
    if (name.size() <= 10)
        return true;
    m_host.platform().messageBox(QStringLiteral("Username incorrect!"), MsgStyle::Warning);
    return false;
}

bool TicketDeletion::openTicket(const Statement& select, const QString& name)
{
    m_tickets.Open(select, m_host.session().connection());
    // A set that failed to open has no row either.
    if (!m_tickets.Eof())
        return true;
    m_host.platform().messageBox(
        QStringLiteral("Ticket ") + name.toUpper() + QStringLiteral(" doesn't exist!"), MsgStyle::Warning);
    return false;
}

void TicketDeletion::routeSingleTicket()
{
    const RecycleRouting routing {m_host.session().settings(), RoutingErrors::SkipStep, nullptr};
    routing.route(m_tickets, m_bin, m_host.platform().now());
}

void TicketDeletion::finishSingleTicket(const Statement& deletion, const QString& name)
{
    m_host.session().connection().Execute(deletion);
    if (!m_tickets.Eof())
        m_tickets.MoveNext();
    m_host.platform().yield();
    m_host.platform().messageBox(
        QStringLiteral("Ticket ") + name.toUpper() + QStringLiteral(" has been Deleted!"), MsgStyle::Info);
}

void TicketDeletion::deleteByUsername()
{
    Platform& platform = m_host.platform();
    const QString username = platform.inputBox(QStringLiteral("Enter Ticket's Username to Delete?"),
        MessageTitle() + QStringLiteral(" - Deleting ..."),
        QString());
    if (username.isEmpty() || !nameAccepted(username))
        return;
    if (platform.messageBox(
            QStringLiteral("Delete Ticket[") + username + QStringLiteral("]?"), MsgStyle::YesNoQuestionNoDefault)
        == MsgResult::Yes) {
        m_host.resetTicketGrid();
        if (openTicket(
                Statement(QStringLiteral("Select * from Account where member=false and Username = '{}'"), {username}),
                username)) {
            // Only the bin's non-member rows: they alone count towards its size and are purged.
            m_bin.Open(Statement(QStringLiteral("Select * from RecycleBin where member = false")),
                m_host.session().connection(),
                CursorType::Static,
                LockType::Optimistic);
            m_host.ticketGrid().grid().addItem(
                ticketRowLine(QStringLiteral("1."), ticketRowFields(m_tickets), passwordsHidden()));
            routeSingleTicket();
            finishSingleTicket(
                Statement(
                    QStringLiteral("DELETE * FROM Account where account.member = false and account.username = '{}'"),
                    {username}),
                username);
        }
    }
    closeSets();
}

void TicketDeletion::deleteGridTicket()
{
    Platform& platform = m_host.platform();
    GridData& grid = m_host.ticketGrid().grid();
    const QString username = grid.textMatrix(grid.row(), 1);
    if (username.isEmpty() || !nameAccepted(username))
        return;
    if (platform.messageBox(
            QStringLiteral("Delete Ticket [") + username + QStringLiteral("]?"), MsgStyle::YesNoQuestionNoDefault)
            == MsgResult::Yes
        && openTicket(
            Statement(QStringLiteral("Select * from Account where member = false and Username = '{}'"), {username}),
            username)) {
        m_bin.Open(Statement(QStringLiteral("Select * from RecycleBin")),
            m_host.session().connection(),
            CursorType::Static,
            LockType::Optimistic);
        // The grid keeps a row to spare while the selected one is taken out.
        grid.addItem(QString());
        routeSingleTicket();
        grid.removeItem(grid.row());
        grid.setRows(grid.rows() - 1);
        finishSingleTicket(
            Statement(
                QStringLiteral("DELETE * FROM Account where member=false and account.username = '{}'"), {username}),
            username);
    }
    closeSets();
}

} // namespace marlet
