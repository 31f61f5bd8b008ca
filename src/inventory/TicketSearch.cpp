#include "inventory/TicketSearch.h"

#include "issuing/GenAccNames.h"
#include "issuing/TicketNames.h"
#include "issuing/TicketRow.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/Connection.h"
#include "store/Recordset.h"

namespace marlet {

namespace {

// Names and passwords of tickets hold at most 10 characters.
constexpr int MaxTicketText = 10;

} // namespace

QString ticketName(WorkHost& host, TicketSource source, const QString& prompt, const QString& title)
{
    if (source == TicketSource::Typed)
        return host.platform().inputBox(prompt, title, QString());
    const GridData& grid = host.ticketGrid().grid();
    return grid.textMatrix(grid.row(), 1);
}

TicketSearch::TicketSearch(WorkHost& host)
    : m_host(host)
{
}

bool TicketSearch::passwordsHidden() const
{
    return m_host.form()[genacc::Check4].ticked();
}

// ---- the searches -----------------------------------------------------------------------------

void TicketSearch::search(const SearchTexts& texts)
{
    Platform& platform = m_host.platform();
    const QString entry = platform.inputBox(QString(texts.prompt), MessageTitle(), QString());
    // The record count of the last listing no longer describes the grid, whatever follows.
    Control& grid = m_host.ticketGrid();
    grid.setToolTip(QString());
    if (entry.isEmpty())
        return;
    if (entry.size() > MaxTicketText) {
        platform.messageBox(QString(texts.tooLong), MsgStyle::Warning);
        return;
    }
    Recordset found;
    found.Open(Statement(QString(texts.statement), {entry}),
        m_host.session().connection(),
        CursorType::Static,
        LockType::Optimistic);
    // A set that failed to open has no row either; the grid keeps its rows.
    if (found.Eof()) {
        platform.messageBox(QStringLiteral("Ticket not Found!"), MsgStyle::Warning);
        return;
    }
    grid.grid().setColSel(0);
    grid.grid().setRows(1);
    listFound(found);
    m_host.EndProgress();
    found.Close();
}

// Several tickets are listed with running numbers under the progress panel, a single one as "1.".
// The search takes no notice of "Stop".
void TicketSearch::listFound(Recordset& found)
{
    GridData& grid = m_host.ticketGrid().grid();
    const long count = found.RecordCount();
    if (count == 1) {
        grid.addItem(ticketRowLine(QStringLiteral("1."), ticketRowFields(found), passwordsHidden()));
        return;
    }
    Control& bar = m_host.progressBar();
    m_host.setProgressText(QStringLiteral("Searching "));
    bar.setMaximum(int(count + 1));
    bar.setValue(0);
    m_host.ProgressAdjust();
    m_host.StartProgress();
    for (long i = 1; i <= count; ++i) {
        m_host.stepProgress();
        m_host.platform().yield();
        grid.addItem(ticketRowLine(QString::number(i), ticketRowFields(found), passwordsHidden()));
        if (!found.Eof())
            found.MoveNext();
    }
}

// ---- the password changes ---------------------------------------------------------------------

QString TicketSearch::newPassword(TicketSource source, const QString& name) const
{
    Platform& platform = m_host.platform();
    const bool fromGrid = source == TicketSource::GridRow;
    const QString prompt = fromGrid ? QStringLiteral("Enter Ticket's new Password for ") + name + QStringLiteral("?")
                                    : QStringLiteral("Enter Ticket's new Password?");
    const QString typed = platform.inputBox(prompt, MessageTitle(), QString());
    // Only the length is tested: the character rules of new tickets don't apply here.
    const QString password = fromGrid ? typedUpperCase(typed) : typed;
    if (password.isEmpty()) {
        platform.messageBox(QStringLiteral("Nothing Done!"), MsgStyle::Warning);
        return QString();
    }
    if (password.size() > MaxTicketText) {
        platform.messageBox(QStringLiteral("Password must be between 1-10 characters!"), MsgStyle::Warning);
        return QString();
    }
    return password;
}

void TicketSearch::changePassword(TicketSource source)
{
    const QString username
        = ticketName(m_host, source, QStringLiteral("Enter Ticket's Username to Change Password?"), MessageTitle());
    if (username.isEmpty())
        return;
    Platform& platform = m_host.platform();
    // No member test: a member's ticket takes a new password this way as well. A failing step ends
    // the change without a word, leaving the row as it was.
    Recordset ticket;
    if (!ticket.Open(
            Statement(QStringLiteral("select * from Account where Username = '{}'"), {username.left(MaxTicketText)}),
            m_host.session().connection(),
            CursorType::Static,
            LockType::Optimistic))
        return;
    if (ticket.Eof()) {
        platform.messageBox(QStringLiteral("Username ") + username + QStringLiteral(" not found!"), MsgStyle::Stop);
        return;
    }
    const QString password = newPassword(source, username);
    if (password.isEmpty())
        return;
    if (!ticket.setValue(QStringLiteral("Password"), password)
        || !ticket.setValue(QStringLiteral("AccountAdded"), QStringLiteral("Password Changed"))
        || !ticket.setValue(QStringLiteral("ComputerUsed"), m_host.session().general.CurrentStaff) || !ticket.Update())
        return;
    if (source == TicketSource::GridRow) {
        GridData& grid = m_host.ticketGrid().grid();
        grid.setTextMatrix(grid.row(), 2, passwordsHidden() ? QStringLiteral("*****") : password);
    }
    ticket.Close();
    platform.messageBox(QStringLiteral("Ticket's Password Changed!"), MsgStyle::Info);
}

} // namespace marlet
