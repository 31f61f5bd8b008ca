#include "screens/RecycleBin.h"

#include "inventory/BinReport.h"
#include "platform/Platform.h"
#include "screens/RecycleBinNames.h"
#include "session/Session.h"
#include "store/Connection.h"
#include "store/Recordset.h"
#include "values/Numbers.h"

#include <limits>

namespace marlet {

namespace {

const QString CloseCaption = QStringLiteral("&Close Recycle");

// A statement on the rows of one ticket name; the name is bound, never joined into the text.
Statement byUsername(const QString& pattern, const QString& username)
{
    return Statement(pattern, {username});
}

} // namespace

RecycleBin::RecycleBin(Session& session)
    : Form(session.platform(), recyclebin::FormName)
    , m_session(session)
{
}

Control& RecycleBin::list() const
{
    return (*this)[recyclebin::List1];
}

Control& RecycleBin::report() const
{
    return (*this)[recyclebin::Text1];
}

// ---- building -------------------------------------------------------------------------------

void RecycleBin::build()
{
    setCaption(QStringLiteral("Recycle Bin - Norvantis"));
    setSize(9840, 6420);
    Control& frame = addLabelled(ControlKind::Frame,
        recyclebin::Frame2,
        QStringLiteral("List of Available Tickets (Click on a ticket to see more information)"));
    Control& tickets = add(ControlKind::ListBox, recyclebin::List1);
    tickets.setContainer(&frame);
    tickets.setMultiSelect(true);
    tickets.onClick = [this] { showClickedTicket(); };
    Control& text = add(ControlKind::TextBox, recyclebin::Text1);
    text.setContainer(&frame);
    text.setLocked(true);
    add(ControlKind::Label, recyclebin::Label3);
    add(ControlKind::ProgressBar, recyclebin::ProgressBar1);
    buildUtilities();
    addLabelled(ControlKind::CommandButton, recyclebin::Command5, CloseCaption).onClick = [this] { unload(); };
    // Coming back to the screen keeps what the list shows.
    onActivate = [this] {
        if (list().listCount() == 0)
            loadList();
    };
}

void RecycleBin::buildUtilities()
{
    Control& frame = addLabelled(ControlKind::Frame, recyclebin::Frame1, QStringLiteral("Recycle Bin Utility"));
    const auto button = [this, &frame](const QString& name, const QString& caption, void (RecycleBin::*action)()) {
        Control& command = addLabelled(ControlKind::CommandButton, name, caption);
        command.setContainer(&frame);
        command.onClick = [this, action] { (this->*action)(); };
    };
    button(recyclebin::Command4, QStringLiteral("&Search"), &RecycleBin::search);
    button(recyclebin::Command1, QStringLiteral("&Restore"), &RecycleBin::restore);
    button(recyclebin::Command2, QStringLiteral("&Delete"), &RecycleBin::deleteTickets);
    button(recyclebin::Command7, QStringLiteral("Re&fresh"), &RecycleBin::refreshList);
    button(recyclebin::Command6, QStringLiteral("Restore All"), &RecycleBin::restoreAll);
    button(recyclebin::Command3, QStringLiteral("Empty Recycle &Bin"), &RecycleBin::emptyBin);
}

// ---- small rules --------------------------------------------------------------------------------

bool RecycleBin::ask(const QString& question, int style)
{
    return platform().messageBox(question, style) == MsgResult::Yes;
}

void RecycleBin::inform(const QString& message)
{
    platform().messageBox(message, MsgStyle::Info);
}

void RecycleBin::showStatus(const QString& text)
{
    (*this)[recyclebin::Label3].setCaption(text);
}

void RecycleBin::setTotal(long count)
{
    if (const auto total = values::toInt16(double(count)))
        m_total = *total;
}

void RecycleBin::lowerTotal()
{
    if (const auto total = values::toInt16(double(m_total) - 1))
        m_total = *total;
}

void RecycleBin::setBarMaximum(long maximum)
{
    Control& bar = (*this)[recyclebin::ProgressBar1];
    if (maximum > bar.minimum() && maximum <= std::numeric_limits<int>::max())
        bar.setMaximum(int(maximum));
}

void RecycleBin::setBarValue(long value)
{
    setBarValue(bar(), value);
}

void RecycleBin::setBarValue(Control& bar, long value)
{
    if (value >= bar.minimum() && value <= bar.maximum())
        bar.setValue(int(value));
}

Control& RecycleBin::bar() const
{
    return (*this)[recyclebin::ProgressBar1];
}

int RecycleBin::barValue() const
{
    return bar().value();
}

bool RecycleBin::currentEntryChosen()
{
    const int current = list().listIndex();
    if (current >= 0 && !list().item(current).isEmpty() && list().selected(current))
        return true;
    platform().messageBox(QStringLiteral("No Ticket(s) selection made!"), MsgStyle::Warning);
    return false;
}

long RecycleBin::deleteFromBin(const QString& username)
{
    long affected = 0;
    m_session.connection().Execute(
        byUsername(QStringLiteral("Delete * from RecycleBin where Username = '{}'"), username), &affected);
    return affected;
}

// ---- listing and looking ------------------------------------------------------------------------

void RecycleBin::loadList()
{
    Control& tickets = list();
    Control& utilities = (*this)[recyclebin::Frame1];
    tickets.setEnabled(false);
    utilities.setEnabled(false);
    Recordset bin;
    bin.Open(Statement(QStringLiteral("select * from RecycleBin")), m_session.connection());
    const long count = bin.RecordCount();
    if (count > 0) {
        showStatus(QStringLiteral("Loading ..."));
        setBarValue(0);
        setTotal(count);
        setBarMaximum(m_total);
        Control& progress = bar();
        for (long row = 0; row < count; ++row) {
            // A Null name cannot be added to a list: that row is passed over.
            const QVariant username = bin.value(QStringLiteral("username"));
            if (!username.isNull())
                tickets.addItem(username.toString());
            if (!bin.Eof())
                bin.MoveNext();
            setBarValue(progress, progress.value() + 1);
            platform().yield();
        }
    }
    setBarValue(0);
    showStatus(QStringLiteral("Total: ") + QString::number(m_total));
    bin.Close();
    tickets.setEnabled(true);
    utilities.setEnabled(true);
}

void RecycleBin::refreshList()
{
    if (!ask(QStringLiteral("Refresh ReCycle Bin List?"), MsgStyle::YesNoQuestion))
        return;
    list().clear();
    loadList();
    report().setText(QString());
}

void RecycleBin::showClickedTicket()
{
    const Control& tickets = list();
    const int current = tickets.listIndex();
    if (current < 0)
        return;
    Recordset bin;
    bin.Open(byUsername(QStringLiteral("select * from RecycleBin where Username = '{}'"), tickets.item(current)),
        m_session.connection());
    if (bin.RecordCount() > 0)
        report().setText(binReport(bin, BinReportKind::ListClick, BinReportOptions::read(m_session.settings())));
}

void RecycleBin::search()
{
    if (list().listCount() == 0) {
        platform().messageBox(QStringLiteral("No Ticket(s) in Recycle Bin!"), MsgStyle::Warning);
        return;
    }
    const QString entry = platform().inputBox(QStringLiteral("Enter Ticket Username?"), MessageTitle(), QString());
    if (entry.isEmpty()) {
        report().setText(QString());
        return;
    }
    Recordset bin;
    // A lookup that fails leaves nothing to report from, and the box as it was.
    if (!bin.Open(byUsername(QStringLiteral("select * from RecycleBin where Username = '{}'"), entry),
            m_session.connection()))
        return;
    report().setText(bin.RecordCount() > 0
            ? binReport(bin, BinReportKind::Search, BinReportOptions::read(m_session.settings()))
            : QString());
}

// ---- restoring ----------------------------------------------------------------------------------

RecycleBin::RestoreOutcome RecycleBin::restoreEntry(int index, Recordset& bin, Recordset& account)
{
    const QString entry = list().item(index);
    Connection& connection = m_session.connection();
    bin.Close();
    if (!bin.Open(byUsername(QStringLiteral("Select * from RecycleBin where username = '{}'"), entry), connection)
        || bin.RecordCount() <= 0)
        return RestoreOutcome::NotInBin;
    account.Close();
    account.Open(byUsername(QStringLiteral("Select * from Account where username = '{}'"), entry),
        connection,
        CursorType::Static,
        LockType::Optimistic);
    if (account.RecordCount() > 0) {
        if (!ask(QStringLiteral("Ticket ") + entry + QStringLiteral(" already exist, Overwrite?"),
                MsgStyle::YesNoQuestionNoDefault))
            return RestoreOutcome::Kept;
    } else {
        account.AddNew();
    }
    // By position: the bin's first columns are Account's, its own two come after them.
    for (int column = 0; column < account.fieldCount(); ++column)
        account.copyValue(column, bin, column);
    account.Update();
    deleteFromBin(entry);
    list().removeItem(index);
    lowerTotal();
    showStatus(QStringLiteral("Total:") + QString::number(m_total));
    return RestoreOutcome::Restored;
}

void RecycleBin::restore()
{
    list().setEnabled(false);
    const int selectedCount = list().selectedCount();
    if (selectedCount > 1)
        restoreSelected(selectedCount);
    else
        restoreCurrent();
    list().setEnabled(true);
    showStatus(QStringLiteral("Total:") + QString::number(list().listCount()));
}

void RecycleBin::restoreSelected(int selectedCount)
{
    if (!ask(QStringLiteral("Restore ") + QString::number(selectedCount) + QStringLiteral(" Selected Items?"),
            MsgStyle::YesNoQuestion))
        return;
    setBarMaximum(selectedCount);
    setBarValue(0);
    Recordset bin;
    Recordset account;
    const Control& entries = list(); // looked up once: the loop visits every entry of the bin
    for (int i = entries.listCount() - 1; i >= 0; --i) {
        if (entries.selected(i) && restoreEntry(i, bin, account) != RestoreOutcome::NotInBin)
            setBarValue(entries.selectedCount());
    }
    bin.Close();
    account.Close();
    report().setText(QString());
    inform(QStringLiteral("Selected Item Restored Successfully!"));
}

void RecycleBin::restoreCurrent()
{
    if (!currentEntryChosen())
        return;
    const int current = list().listIndex();
    if (!ask(
            QStringLiteral("Restore ") + list().item(current) + QStringLiteral(" ?"), MsgStyle::YesNoQuestionNoDefault))
        return;
    Recordset bin;
    Recordset account;
    restoreEntry(current, bin, account);
}

void RecycleBin::restoreAll()
{
    if (list().listCount() == 0) {
        platform().messageBox(QStringLiteral("No Ticket(s) to Restore!"), MsgStyle::Warning);
        return;
    }
    if (!ask(QStringLiteral("Restore ALL? "), MsgStyle::YesNoQuestion))
        return;
    // The answer makes no difference: tickets without time left come back like all others.
    ask(QStringLiteral("Include Zero Tickets also? "), MsgStyle::YesNoQuestion);
    Control& utilities = (*this)[recyclebin::Frame1];
    list().setEnabled(false);
    utilities.setEnabled(false);
    setBarMaximum(m_total);
    showStatus(QStringLiteral("Restoring ... "));
    Recordset bin;
    Recordset account;
    for (int i = list().listCount() - 1; i >= 0; --i) {
        restoreEntry(i, bin, account);
        setBarValue(m_total);
        platform().yield();
    }
    report().setText(QString());
    showStatus(QStringLiteral("Done"));
    showStatus(QStringLiteral("Total:") + QString::number(m_total));
    list().setEnabled(true);
    utilities.setEnabled(true);
    setBarValue(0);
    bin.Close();
    account.Close();
    inform(QStringLiteral("Ticket(s) Restored Successfully!"));
    showStatus(QString());
}

// ---- destroying ---------------------------------------------------------------------------------

void RecycleBin::deleteTickets()
{
    list().setEnabled(false);
    const int selectedCount = list().selectedCount();
    if (selectedCount > 1)
        deleteSelected(selectedCount);
    else
        deleteCurrent();
    list().setEnabled(true);
}

void RecycleBin::deleteSelected(int selectedCount)
{
    if (!ask(QStringLiteral("Delete ") + QString::number(selectedCount)
                + QStringLiteral(" Selected Items Permanently? "),
            MsgStyle::YesNoQuestionNoDefault))
        return;
    setBarMaximum(selectedCount);
    Control& entries = list(); // looked up once: the loop visits every entry of the bin
    for (int i = entries.listCount() - 1; i >= 0; --i) {
        if (!entries.selected(i))
            continue;
        if (deleteFromBin(entries.item(i)) > 0) {
            lowerTotal();
            showStatus(QStringLiteral("Total:") + QString::number(m_total));
            setBarValue(barValue() - 1);
        }
        // The entry leaves the list also when its row had gone already.
        entries.removeItem(i);
    }
    report().setText(QString());
    showStatus(QStringLiteral("Total:") + QString::number(list().listCount()));
    inform(QStringLiteral("Selected Items Deleted Successfully!"));
}

void RecycleBin::deleteCurrent()
{
    if (!currentEntryChosen())
        return;
    const int current = list().listIndex();
    const QString entry = list().item(current);
    if (!ask(QStringLiteral("Delete ") + entry + QStringLiteral(" Permanently? "), MsgStyle::YesNoQuestion))
        return;
    // A row that has gone already leaves the entry in the list.
    if (deleteFromBin(entry) <= 0)
        return;
    list().removeItem(current);
    inform(entry + QStringLiteral(" Deleted Successfully!"));
    showStatus(QStringLiteral("Total:") + QString::number(list().listCount()));
}

void RecycleBin::emptyBin()
{
    if (!ask(QStringLiteral("Empty Recycle Bin"), MsgStyle::YesNoQuestion))
        return;
    Control& close = (*this)[recyclebin::Command5];
    Control& utilities = (*this)[recyclebin::Frame1];
    showStatus(QStringLiteral("Emptying ..."));
    // The button reads "Stop" meanwhile but still closes the screen: it does not stop anything.
    close.setCaption(QStringLiteral("Stop"));
    list().setEnabled(false);
    utilities.setEnabled(false);
    m_stopRequested = false;
    setBarValue(0);
    Control& entries = list();
    Control& progress = bar();
    setBarMaximum(entries.listCount());
    const int count = entries.listCount();
    for (int i = 0; i < count; ++i) {
        setBarValue(progress, progress.value() + 1);
        entries.removeItem(0);
        platform().yield();
        if (m_stopRequested)
            break;
    }
    if (!m_stopRequested) {
        // Every row goes, member tickets' too.
        m_session.connection().Execute(Statement(QStringLiteral("Delete * from RecycleBin")));
        report().setText(QString());
        inform(QStringLiteral("Recycle Bin Emptied!"));
        m_total = 0;
        showStatus(QStringLiteral("Total:0"));
    }
    setBarValue(0);
    list().setEnabled(true);
    utilities.setEnabled(true);
    close.setCaption(QStringLiteral("&Close"));
    m_stopRequested = false;
}

} // namespace marlet
