#include "screens/CafeListTab.h"

#include "platform/Platform.h"
#include "screens/Options.h"
#include "screens/OptionsNames.h"
#include "session/Session.h"
#include "settings/CafeBranches.h"
#include "store/Connection.h"
#include "store/Recordset.h"
#include "values/Numbers.h"
#include "values/Texts.h"

namespace marlet {

CafeListTab::CafeListTab(Options& screen)
    : m_screen(screen)
{
}

void CafeListTab::build(Control& panel)
{
    Control& frame = m_screen.addToFrame(panel, ControlKind::Frame, options::FCafeList, QStringLiteral("Cafe List"));
    m_screen.addToFrame(frame, ControlKind::ComboBox, options::cboCafeName, QStringLiteral("Cafe Name:"));
    Control& system
        = m_screen.addToFrame(frame, ControlKind::TextBox, options::txtCafeSystem, QStringLiteral("Computer Name:"));
    system.setMaxLength(30);
    Control& addButton = m_screen.addToFrame(
        frame, ControlKind::CommandButton, options::cmdAddCafeClient, QStringLiteral("Add Client"));
    addButton.setEnabled(false);
    addButton.onClick = [this] { add(); };
    system.onChange = [&system, &addButton] { addButton.setEnabled(!values::trimBlanks(system.text()).isEmpty()); };
    m_screen
        .addToFrame(frame, ControlKind::CommandButton, options::cmdRemoveCafeClient, QStringLiteral("Remove Client"))
        .onClick
        = [this] { remove(); };
    m_screen.addToFrame(frame, ControlKind::ListBox, options::lstCafes);
}

void CafeListTab::load()
{
    Control& branches = m_screen[options::cboCafeName];
    branches.addItems(cafe::branchChoices(m_screen.session().general.MaxComputers));
    branches.setListIndex(0);
    Recordset rows;
    rows.Open(Statement(QStringLiteral("Select * from Cafe Order by Cafename Asc")),
        m_screen.session().connection(),
        CursorType::Static,
        LockType::ReadOnly);
    Control& list = m_screen[options::lstCafes];
    for (; !rows.Eof(); rows.MoveNext())
        list.addItem(cafe::entry(values::numberText(rows.value(QStringLiteral("Cafename")).toDouble()),
            rows.value(QStringLiteral("SystemName")).toString()));
}

void CafeListTab::add()
{
    Platform& platform = m_screen.platform();
    Control& branches = m_screen[options::cboCafeName];
    Control& system = m_screen[options::txtCafeSystem];
    const QString branch = branches.text();
    if (branch == cafe::NoBranch) {
        platform.messageBox(QStringLiteral("Cafe name is Blank!"), MsgStyle::Warning);
        return;
    }
    if (values::trimBlanks(system.text()).isEmpty()) {
        platform.messageBox(QStringLiteral("System Name is Blank!"), MsgStyle::Warning);
        return;
    }
    const QString number = cafe::branchNumber(branch);
    const QString name = system.text().toUpper();
    Recordset rows;
    if (!rows.Open(
            Statement(QStringLiteral("select * from Cafe where Cafename = {} or SystemName = '{}'"), {number, name}),
            m_screen.session().connection(),
            CursorType::Static,
            LockType::Optimistic)) {
        // A name that breaks the statement is refused with the store's reason; nothing is written.
        platform.messageBox(rows.lastError(), MsgStyle::Stop);
        return;
    }
    if (!rows.Eof()) {
        platform.messageBox(
            QStringLiteral("Cafe Name or System Name already added, Delete first and add again!"), MsgStyle::Warning);
        return;
    }
    rows.AddNew();
    rows.setValue(QStringLiteral("cafename"), values::leadingNumber(number));
    rows.setValue(QStringLiteral("systemname"), name);
    if (!rows.Update())
        return;
    m_screen[options::lstCafes].addItem(cafe::entry(number, name));
    platform.messageBox(
        branch + QStringLiteral(" - [") + name + QStringLiteral("] added successfully!"), MsgStyle::Info);
    branches.setListIndex(0);
    system.setText(QString());
    rows.Close();
}

void CafeListTab::remove()
{
    Platform& platform = m_screen.platform();
    Control& list = m_screen[options::lstCafes];
    if (list.listCount() == 0) {
        platform.messageBox(QStringLiteral("No List avaliable!"), MsgStyle::Warning);
        return;
    }
    if (list.listIndex() < 0) {
        platform.messageBox(QStringLiteral("No Selection made!"), MsgStyle::Warning);
        return;
    }
    const QString entry = list.item(list.listIndex());
    const std::optional<QString> number = cafe::entryNumber(entry);
    if (!number) {
        platform.messageBox(QStringLiteral("Invalid Selection, try again!"), MsgStyle::Warning);
        return;
    }
    m_screen.session().connection().Execute(
        Statement(QStringLiteral("Delete * from Cafe where Cafename = {}"), {*number}));
    platform.messageBox(entry + QStringLiteral(" removed!"), MsgStyle::Info);
    list.removeItem(list.listIndex());
}

} // namespace marlet
