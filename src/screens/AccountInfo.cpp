#include "screens/AccountInfo.h"

#include "inventory/BinReport.h"
#include "platform/Platform.h"
#include "screens/AccountInfoNames.h"
#include "session/Session.h"
#include "store/Connection.h"
#include "store/Recordset.h"

#include <algorithm>

namespace marlet {

namespace {

constexpr int UsernameLength = 10;
constexpr int GroupLength = 16;
// A group name and a ticket number as the generator writes them: "000000000000-000".
constexpr int GroupNameLength = 12;
constexpr int TicketNumberLength = 3;
// More tickets than this are counted but not shown.
constexpr long ShownTickets = 10;

const QString LineBreak = QStringLiteral("\r\n");
const QString WrongGroup = QStringLiteral("Incorrect Ticket Group-No (e.g. 000000000000-000)!");
const QString BinQuestion = QStringLiteral("Ticket not found!, Check Recycle Bin too? ");

// A statement with values bound to its {} places, never joined into its text.
Statement bound(const char* pattern, const QVariantList& values)
{
    return Statement(QLatin1String(pattern), values);
}

} // namespace

AccountInfo::AccountInfo(Session& session)
    : Form(session.platform(), accountinfo::FormName)
    , m_session(session)
{
}

Control& AccountInfo::entry() const
{
    return (*this)[accountinfo::Text2];
}

Control& AccountInfo::report() const
{
    return (*this)[accountinfo::Text1];
}

// ---- building -------------------------------------------------------------------------------

void AccountInfo::build()
{
    setCaption(QStringLiteral("Ticket Information"));
    setSize(7860, 6900);
    buildSearchBy();
    addLabelled(ControlKind::Label, accountinfo::Label1, QStringLiteral("Enter Ticket Username:"));
    Control& text = add(ControlKind::TextBox, accountinfo::Text2);
    text.setMaxLength(UsernameLength);
    text.onGotFocus = [&text] { text.selectAll(); };
    addLabelled(ControlKind::CommandButton, accountinfo::OKButton, QStringLiteral("&Search")).onClick
        = [this] { search(); };
    addLabelled(ControlKind::CommandButton, accountinfo::Command1, QStringLiteral("&Print")).onClick
        = [this] { print(); };
    addLabelled(ControlKind::CommandButton, accountinfo::CancelButton, QStringLiteral("&Close")).onClick
        = [this] { unload(); };
    add(ControlKind::TextBox, accountinfo::Text1);
    add(ControlKind::Label, accountinfo::Label2);
    onLoad = [this] {
        if (!m_session.general.TicketName.isEmpty())
            entry().setText(m_session.general.TicketName);
    };
    onActivate = [this] { open(); };
}

void AccountInfo::buildSearchBy()
{
    Control& frame = addLabelled(ControlKind::Frame, accountinfo::Frame1, QStringLiteral("Search By"));
    Control& byName = addLabelled(ControlKind::OptionButton, accountinfo::Option1, QStringLiteral("Username"));
    byName.setContainer(&frame);
    byName.onClick = [this] { chooseUsernameMode(); };
    Control& byGroup = addLabelled(ControlKind::OptionButton, accountinfo::Option2, QStringLiteral("TGrp-No"));
    byGroup.setContainer(&frame);
    byGroup.onClick = [this] { chooseGroupMode(); };
}

// A ticket name handed over by the host is looked up at once; otherwise the screen waits for one.
void AccountInfo::open()
{
    if (!m_session.general.TicketName.isEmpty()) {
        search();
    } else {
        report().setText(QString());
        setStatus(QStringLiteral("Please enter a Username and Click Search."));
    }
    (*this)[accountinfo::Option1].setValue(1);
    setFocus(entry());
}

void AccountInfo::chooseUsernameMode()
{
    (*this)[accountinfo::Option1].setBackColor(Colour::Red);
    (*this)[accountinfo::Option2].setBackColor(Colour::White);
    entry().setMaxLength(UsernameLength);
}

void AccountInfo::chooseGroupMode()
{
    (*this)[accountinfo::Option1].setBackColor(Colour::White);
    (*this)[accountinfo::Option2].setBackColor(Colour::Red);
    entry().setMaxLength(GroupLength);
}

bool AccountInfo::groupMode() const
{
    return (*this)[accountinfo::Option2].isChecked();
}

void AccountInfo::setStatus(const QString& text)
{
    (*this)[accountinfo::Label2].setCaption(text);
}

// ---- searching ----------------------------------------------------------------------------------

QStringList AccountInfo::groupAndNumber() const
{
    const QStringList parts = entry().text().split(u'-');
    return {parts.value(0), parts.value(1)};
}

bool AccountInfo::findInAccount(Recordset& tickets)
{
    Connection& connection = m_session.connection();
    const QString text = entry().text();
    if (!groupMode()) {
        tickets.Open(bound("select * from Account where Username = '{}'", {text}), connection);
    } else {
        if (!text.contains(u'-')) {
            setStatus(WrongGroup);
            return false;
        }
        const QStringList parts = groupAndNumber();
        // Either part of the right length will do.
        if (parts[0].size() != GroupNameLength && parts[1].size() != TicketNumberLength) {
            setStatus(WrongGroup);
            return false;
        }
        tickets.Open(bound("select * from Account where TicketGrp = '{}' and TicketNo = '{}'", {parts[0], parts[1]}),
            connection);
    }
    // Nothing found: the whole entry is tried as the start of a user name, in either mode.
    if (tickets.RecordCount() <= 0) {
        tickets.Close();
        tickets.Open(bound("select * from Account where Username like '{}%'", {text}), connection);
    }
    return true;
}

void AccountInfo::search()
{
    if (entry().text().isEmpty())
        return;
    report().setText(QString());
    Recordset tickets;
    if (!findInAccount(tickets))
        return;
    Control& searchButton = (*this)[accountinfo::OKButton];
    entry().setEnabled(false);
    searchButton.setEnabled(false);
    if (tickets.RecordCount() > 0)
        showTickets(tickets);
    else if (platform().messageBox(BinQuestion, MsgStyle::YesNoQuestion) == MsgResult::Yes)
        searchBin(tickets);
    tickets.Close();
    entry().setEnabled(true);
    searchButton.setEnabled(true);
}

void AccountInfo::showTickets(Recordset& tickets)
{
    const long count = tickets.RecordCount();
    const long shown = std::min(count, ShownTickets);
    setStatus(shown > 1 ? QString::number(count) + QStringLiteral(" Ticket found in main Ticket database.")
                        : QStringLiteral("Ticket found in main Ticket database."));
    const BinReportOptions options = BinReportOptions::read(m_session.settings());
    const auto seller = [this](const QString& username) { return posSeller(username); };
    QString text;
    for (long i = 1; i <= shown; ++i) {
        if (i > 1)
            text += LineBreak;
        text += binReport(tickets, BinReportKind::Ticket, options, seller);
        // The next ticket's number stands above it, from "2." on.
        if (shown > 1 && i < shown)
            text += LineBreak + QString::number(i + 1) + QStringLiteral(".");
        if (!tickets.Eof())
            tickets.MoveNext();
        report().setText(text);
        platform().yield();
    }
}

void AccountInfo::searchBin(Recordset& tickets)
{
    Connection& connection = m_session.connection();
    const QString text = entry().text();
    tickets.Close();
    if (!groupMode()) {
        tickets.Open(bound("Select * from RecycleBin where Username = '{}'", {text}), connection);
        if (tickets.RecordCount() <= 0) {
            tickets.Close();
            tickets.Open(bound("select * from RecycleBin where Username like '{}%'", {text}), connection);
        }
    } else {
        const QStringList parts = groupAndNumber();
        tickets.Open(bound("select * from RecycleBin where TicketGrp = '{}' and TicketNo = '{}'", {parts[0], parts[1]}),
            connection);
        // The second look goes to Account, not to the bin, and so finds nothing the first search
        // did not find.
        if (tickets.RecordCount() <= 0) {
            tickets.Close();
            tickets.Open(bound("select * from Account where Username like '{}%'", {text}), connection);
        }
    }
    if (tickets.RecordCount() > 0) {
        setStatus(QStringLiteral("Ticket found in Recycle Bin."));
        const auto seller = [this](const QString& username) { return posSeller(username); };
        report().setText(
            binReport(tickets, BinReportKind::TicketInBin, BinReportOptions::read(m_session.settings()), seller));
    } else {
        report().setText(QStringLiteral("Search not Successful!"));
        setStatus(QString());
    }
}

QString AccountInfo::posSeller(const QString& username) const
{
    Recordset sales;
    sales.Open(bound("Select ByWhom from POS where Username = '{}'", {username}), m_session.connection());
    if (sales.RecordCount() <= 0)
        return QString();
    const QVariant seller = sales.value(QStringLiteral("ByWhom"));
    return seller.isNull() ? QString() : seller.toString();
}

// ---- printing -----------------------------------------------------------------------------------

void AccountInfo::print()
{
    if (platform().printers().isEmpty()) {
        platform().messageBox(QStringLiteral("No Printer Installed!"), MsgStyle::Warning);
        return;
    }
    const QString text = report().text();
    if (text.isEmpty())
        return;
    const QList<PrintedLine> page = {
        {MessageTitle(), true, 14},
        {QStringLiteral("------------"), true, 14},
        {QString(), true, 14},
        {QStringLiteral("Ticket Information"), true, 12},
        {QString(), true, 12},
        {text, false, 12},
    };
    if (platform().printLines(page))
        platform().messageBox(QStringLiteral("Ticket Information Printed Successfully!"), MsgStyle::Info);
    else
        platform().messageBox(QStringLiteral("Printer Error!"), MsgStyle::Stop);
}

} // namespace marlet
