#include "inventory/TicketListing.h"

#include "inventory/TicketDeletion.h"
#include "inventory/TicketRecharge.h"
#include "inventory/TicketSearch.h"
#include "issuing/GenAcc.h"
#include "issuing/GenAccControls.h"
#include "issuing/TicketRow.h"
#include "platform/GridData.h"
#include "platform/KeyRules.h"
#include "platform/Platform.h"
#include "shell/General.h"
#include "store/Recordset.h"
#include "values/Numbers.h"

#include <climits>
#include <limits>

namespace marlet {

namespace {

constexpr int Hover = 64;
constexpr int OptionCount = 5;

QString name(const char* text)
{
    return QLatin1String(text);
}

QString optionName(int option)
{
    return QStringLiteral("Option") + QString::number(option);
}

// The two entry boxes take digits, the full stop and Backspace; any other key has no effect.
void filterEntryKeys(Control& box)
{
    keyrules::lockUntilReleased(box, keyrules::isNumericKey);
    keyrules::selectAllOnFocus(box);
}

void addTextCommand(GenAcc& screen, Control& frame, const char* name, const QString& caption)
{
    Control& command = screen.addToFrame(frame, ControlKind::Label, QLatin1String(name), caption);
    command.onMouseMove = [&screen, &command](int, int, int, int) {
        for (const char* other : {"m_search", "m_password", "m_del", "m_change", "m_recharge"})
            screen[QLatin1String(other)].setForeColor(Colour::Black);
        command.setForeColor(Hover);
    };
    command.onMouseDown = [&command](int, int, int, int) { command.setForeColor(Colour::Red); };
    command.onMouseUp = [&command](int, int, int, int) { command.setForeColor(Hover); };
}

void addMenuItem(GenAcc& screen, Control& menu, const char* name, const QString& caption)
{
    Control& item = screen.addLabelled(ControlKind::Menu, QLatin1String(name), caption);
    item.setParentMenu(&menu);
}

} // namespace

TicketListing::TicketListing(GenAcc& screen)
    : m_screen(screen)
{
}

void TicketListing::build(GenAcc& screen, Control& frame)
{
    Control& selection = screen.addToFrame(frame, ControlKind::Frame, name("FSelection"), QStringLiteral("Selection"));
    const QString captions[OptionCount] = {QStringLiteral("&All"),
                                           QStringLiteral("Un&used"),
                                           QStringLiteral("U&sed"),
                                           QStringLiteral("By &Time"),
                                           QStringLiteral("By Ticket Group")};
    for (int option = 1; option <= OptionCount; ++option) {
        Control& button = screen.addToFrame(selection, ControlKind::OptionButton, optionName(option),
                                        captions[option - 1]);
        button.onClick = [&screen, option] { TicketListing(screen).chooseOption(option); };
    }
    Control& time = screen.addToFrame(selection, ControlKind::TextBox, name("Text1"), QStringLiteral("Minutes:"));
    time.setMaxLength(4);
    filterEntryKeys(time);
    time.onKeyPress = [&screen](int& key) {
        if (key == Key::Enter)
            TicketListing(screen).viewSelection();
    };
    time.onLostFocus = [&screen, &time] {
        if (!values::isNumeric(time.text())) {
            time.setText(QStringLiteral("0"));
        } else if (values::leadingNumber(time.text()) > 5000) {
            screen.platform().messageBox(QStringLiteral("Time Can't be greater than 5000!"), MsgStyle::Warning);
            time.setText(QStringLiteral("5000"));
        }
    };
    Control& group = screen.addToFrame(selection, ControlKind::TextBox, name("Text5"), QStringLiteral("Ticket Group:"));
    group.setMaxLength(12);
    filterEntryKeys(group);
    screen.addToFrame(selection, ControlKind::CommandButton, name("Command2"), QStringLiteral("&View Selection"))
        .onClick = [&screen] { TicketListing(screen).viewSelection(); };

    Control& grid = screen[name("PrintList")];
    grid.onClick = [&screen] { TicketListing(screen).rowClicked(); };
    grid.onMouseDown = [&screen](int button, int, int, int) { TicketListing(screen).gridMouseDown(button); };

    Control& menu = screen.add(ControlKind::Menu, name("m_click"));
    menu.setVisible(false);
    addMenuItem(screen, menu, "m_searchs", QStringLiteral("&Search for Ticket..."));
    screen[name("m_searchs")].onClick = [&screen] { TicketSearch(screen).search(SearchByUsername); };
    addMenuItem(screen, menu, "m_Dels", QStringLiteral("&Delete Ticket"));
    screen[name("m_Dels")].onClick = [&screen] { TicketDeletion(screen).deleteGridTicket(); };
    addMenuItem(screen, menu, "m_Rec", QStringLiteral("&Recharge Ticket"));
    screen[name("m_Rec")].onClick = [&screen] { TicketRecharge(screen).recharge(TicketSource::GridRow); };
    addMenuItem(screen, menu, "m_ChangePass", QStringLiteral("Change Ticket's &Password"));
    screen[name("m_ChangePass")].onClick = [&screen] { TicketSearch(screen).changePassword(TicketSource::GridRow); };
    addMenuItem(screen, menu, "m_separator", QStringLiteral("-"));
    addMenuItem(screen, menu, "m_cancel", QStringLiteral("Can&cel"));

    addTextCommand(screen, frame, "m_search", QStringLiteral("Search for a Ticket by Username"));
    screen[name("m_search")].onClick = [&screen] { TicketSearch(screen).search(SearchByUsername); };
    addTextCommand(screen, frame, "m_password", QStringLiteral("Search for a Ticket by Password"));
    screen[name("m_password")].onClick = [&screen] { TicketSearch(screen).search(SearchByPassword); };
    addTextCommand(screen, frame, "m_del", QStringLiteral("Delete a Ticket by Username"));
    screen[name("m_del")].onClick = [&screen] { TicketDeletion(screen).deleteByUsername(); };
    addTextCommand(screen, frame, "m_change", QStringLiteral("Change Password of a Ticket"));
    screen[name("m_change")].onClick = [&screen] { TicketSearch(screen).changePassword(TicketSource::Typed); };
    addTextCommand(screen, frame, "m_recharge", QStringLiteral("Recharge a Ticket"));
    screen[name("m_recharge")].onClick = [&screen] { TicketRecharge(screen).recharge(TicketSource::Typed); };
}

void TicketListing::chooseOption(int option)
{
    for (int other = 1; other <= OptionCount; ++other)
        m_screen[optionName(other)].setForeColor(other == option ? Colour::Red : Colour::Black);
    Control& time = m_screen[name("Text1")];
    Control& group = m_screen[name("Text5")];
    time.setEnabled(option == 4);
    group.setEnabled(option == 5);
    if (option == 4)
        m_screen.setFocus(time);
    else if (option == 5)
        m_screen.setFocus(group);
}

void TicketListing::viewSelection()
{
    Platform& platform = m_screen.platform();
    Control& bar = m_screen[name("ProgressBar1")];
    m_screen.StartProgress();
    platform.yield();
    bar.setValue(bar.maximum());
    platform.yield();
    platform.sleep(100);

    Control& gridControl = m_screen[name("PrintList")];
    GridData& grid = gridControl.grid();
    grid.setColSel(0);
    grid.setRows(1);

    Statement statement(QStringLiteral("select * from Account where member=false"));
    if (m_screen[name("Option2")].isChecked()) {
        statement = Statement(QStringLiteral("select * from Account where NEW = TRUE and member=false"));
    } else if (m_screen[name("Option3")].isChecked()) {
        statement = Statement(QStringLiteral("select * from Account where NEW <> TRUE and member=false"));
    } else if (m_screen[name("Option4")].isChecked()) {
        // The whole part is taken before the multiplication: 5.7 selects 300 seconds.
        const double minutes = values::floorToWhole(values::leadingNumber(m_screen[name("Text1")].text()));
        statement = Statement(QStringLiteral("select * from Account where member=false and Time = {}"), {minutes * 60});
    } else if (m_screen[name("Option5")].isChecked()) {
        statement = Statement(QStringLiteral("select * from Account where member=false and TicketGrp like '{}%'"),
                              {m_screen[name("Text5")].text()});
    }

    Recordset tickets;
    tickets.Open(statement, m_screen.session().connection());
    const long count = tickets.RecordCount();
    if (count > 0) {
        bar.setRange(bar.minimum(), int(qMin<long>(count, INT_MAX)));
        bar.setValue(0);
        m_screen[name("Label4")].setCaption(QStringLiteral("Listing "));
        m_screen.ProgressAdjust();
        tickets.MoveFirst();
        // The running number is a 16-bit counter: the listing ends when it can count no further.
        const long last = qMin<long>(count, std::numeric_limits<qint16>::max());
        for (long i = 1; i <= last; ++i) {
            const bool masked = m_screen[name("Check4")].value() == CheckState::Checked;
            grid.addItem(ticketRowLine(QString::number(i), ticketRowFields(tickets), masked));
            if (!tickets.Eof())
                tickets.MoveNext();
            platform.yield();
            bar.setValue(bar.value() + 1);
            if (m_screen.StopRequested) {
                tickets.Close();
                m_screen.EndProgress();
                return;
            }
        }
    }
    gridControl.setToolTip(QString::number(qMax<long>(count, 0)) + QStringLiteral(" Record(s)"));
    tickets.Close();
    m_screen.EndProgress();
}

void TicketListing::rowClicked()
{
    const GridData& grid = m_screen[name("PrintList")].grid();
    const QString group = grid.textMatrix(grid.row(), 4);
    if (group.isEmpty() || group == QLatin1String("Ticket Group"))
        return;
    if (m_screen[name("Option4")].isChecked()) {
        const QString time = grid.textMatrix(grid.row(), 3);
        const QString minutes = time.left(time.size() - 6);
        Control& text1 = m_screen[name("Text1")];
        text1.setText(values::isNumeric(minutes) ? minutes : QStringLiteral("0"));
        m_screen.setFocus(text1);
    } else if (m_screen[name("Option5")].isChecked()) {
        Control& text5 = m_screen[name("Text5")];
        text5.setText(group.left(12));
        m_screen.setFocus(text5);
    }
}

void TicketListing::gridMouseDown(int button)
{
    GridData& grid = m_screen[name("PrintList")].grid();
    if (button != MouseButton::Right || grid.mouseRow() == 0)
        return;
    grid.setRow(grid.mouseRow());
    grid.setColSel(3);
    const bool rows = grid.rows() >= 2;
    for (const char* item : {"m_Dels", "m_Rec", "m_ChangePass"})
        m_screen[name(item)].setEnabled(rows);
    m_screen[name("m_searchs")].setEnabled(true);
    m_screen.popupMenu(m_screen[name("m_click")]);
}

} // namespace marlet
