#include "inventory/TicketSearch.h"

#include "issuing/GenAcc.h"
#include "issuing/TicketNames.h"
#include "issuing/TicketRow.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "shell/General.h"
#include "store/Connection.h"
#include "store/Recordset.h"

namespace marlet {

namespace {

QString name(const char* text)
{
    return QLatin1String(text);
}

// Names and passwords of tickets hold at most 10 characters.
constexpr int MaxTicketText = 10;

} // namespace

QString ticketName(GenAcc& screen, TicketSource source, const QString& prompt, const QString& title)
{
    if (source == TicketSource::Typed)
        return screen.platform().inputBox(prompt, title, QString());
    const GridData& grid = screen[name("PrintList")].grid();
    return grid.textMatrix(grid.row(), 1);
}

TicketSearch::TicketSearch(GenAcc& screen)
    : m_screen(screen)
{
}

bool TicketSearch::passwordsHidden() const
{
    return m_screen[name("Check4")].value() == CheckState::Checked;
}

// ---- the searches -----------------------------------------------------------------------------

void TicketSearch::search(const SearchTexts& texts)
{
    Platform& platform = m_screen.platform();
    const QString entry = platform.inputBox(QString(texts.prompt), MessageTitle(), QString());
    // The record count of the last listing no longer describes the grid, whatever follows.
    Control& grid = m_screen[name("PrintList")];
    grid.setToolTip(QString());
    if (entry.isEmpty())
        return;
    if (entry.size() > MaxTicketText) {
        platform.messageBox(QString(texts.tooLong), MsgStyle::Warning);
        return;
    }
    Recordset found;
    found.Open(Statement(QString(texts.statement), {entry}),
        m_screen.session().connection(),
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
    m_screen.EndProgress();
    found.Close();
}

// Several tickets are listed with running numbers under the progress panel, a single one as "1.".
// The search takes no notice of "Stop".
void TicketSearch::listFound(Recordset& found)
{
    GridData& grid = m_screen[name("PrintList")].grid();
    const long count = found.RecordCount();
    if (count == 1) {
        grid.addItem(ticketRowLine(QStringLiteral("1."), ticketRowFields(found), passwordsHidden()));
        return;
    }
    Control& bar = m_screen[name("ProgressBar1")];
    m_screen[name("Label4")].setCaption(QStringLiteral("Searching "));
    bar.setMaximum(int(count + 1));
    bar.setValue(0);
    m_screen.ProgressAdjust();
    m_screen.StartProgress();
    for (long i = 1; i <= count; ++i) {
        bar.setValue(bar.value() + 1);
        m_screen.platform().yield();
        grid.addItem(ticketRowLine(QString::number(i), ticketRowFields(found), passwordsHidden()));
        if (!found.Eof())
            found.MoveNext();
    }
}

// ---- the password changes ---------------------------------------------------------------------

QString TicketSearch::newPassword(TicketSource source, const QString& name) const
{
    Platform& platform = m_screen.platform();
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
        = ticketName(m_screen, source, QStringLiteral("Enter Ticket's Username to Change Password?"), MessageTitle());
    if (username.isEmpty())
        return;
    Platform& platform = m_screen.platform();
    // No member test: a member's ticket takes a new password this way as well. A failing step ends
    // the change without a word, leaving the row as it was.
    Recordset ticket;
    if (!ticket.Open(
            Statement(QStringLiteral("select * from Account where Username = '{}'"), {username.left(MaxTicketText)}),
            m_screen.session().connection(),
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
        || !ticket.setValue(QStringLiteral("ComputerUsed"), m_screen.session().CurrentStaff) || !ticket.Update())
        return;
    if (source == TicketSource::GridRow) {
        GridData& grid = m_screen[name("PrintList")].grid();
        grid.setTextMatrix(grid.row(), 2, passwordsHidden() ? QStringLiteral("*****") : password);
    }
    ticket.Close();
    platform.messageBox(QStringLiteral("Ticket's Password Changed!"), MsgStyle::Info);
}

} // namespace marlet
