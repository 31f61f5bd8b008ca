#include "platform/Control.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Operator.h"
#include "script/ScriptedPlatform.h"

#include <QTest>

#include <algorithm>
#include <vector>

using namespace marlet;

namespace {

// A form whose controls write every event they receive into one log, so that a test can assert
// the order in which the model fires them.
class LoggingForm : public Form
{
public:
    explicit LoggingForm(Platform& platform)
        : Form(platform, QStringLiteral("Logging"))
    {
    }

    QStringList log;
    int loads = 0;

    Control& watched(ControlKind kind, const QString& name, int index = -1)
    {
        Control& c = add(kind, name, index);
        const QString key = c.key();
        c.onGotFocus = [this, key] { log << key + QStringLiteral(" GotFocus"); };
        c.onLostFocus = [this, key] { log << key + QStringLiteral(" LostFocus"); };
        c.onClick = [this, key] { log << key + QStringLiteral(" Click"); };
        c.onChange = [this, &c, key] { log << key + QStringLiteral(" Change ") + c.text(); };
        c.onKeyDown = [this, key](int& code, int) { log << key + QStringLiteral(" KeyDown ") + QString::number(code); };
        c.onKeyPress = [this, key](int& ascii) { log << key + QStringLiteral(" KeyPress ") + QString::number(ascii); };
        c.onKeyUp = [this, key](int& code, int) { log << key + QStringLiteral(" KeyUp ") + QString::number(code); };
        c.onMouseDown = [this, key](int button, int, int, int) {
            log << key + QStringLiteral(" MouseDown ") + QString::number(button);
        };
        c.onMouseUp = [this, key](int button, int, int, int) {
            log << key + QStringLiteral(" MouseUp ") + QString::number(button);
        };
        return c;
    }

protected:
    void build() override
    {
        ++loads;
        Control& frame1 = add(ControlKind::Frame, QStringLiteral("Frame1"));
        Control& frame2 = add(ControlKind::Frame, QStringLiteral("Frame2"));
        watched(ControlKind::TextBox, QStringLiteral("Text1"));
        watched(ControlKind::TextBox, QStringLiteral("Text2"));
        add(ControlKind::Label, QStringLiteral("Label1"));
        for (int i = 1; i <= 4; ++i)
            watched(ControlKind::OptionButton, QStringLiteral("Option") + QString::number(i))
                .setContainer(i <= 2 ? &frame1 : &frame2);
        watched(ControlKind::TextBox, QStringLiteral("Text3")).setContainer(&frame2);
        watched(ControlKind::CheckBox, QStringLiteral("Check1"));
        watched(ControlKind::ComboBox, QStringLiteral("Combo1"))
            .addItems({QStringLiteral("Never Expire"),
                QStringLiteral("Fixed Expiration Date"),
                QStringLiteral("Days after first use")});
        watched(ControlKind::ListBox, QStringLiteral("List1")).addItems({QStringLiteral("a"), QStringLiteral("b")});
        Control& tabs = watched(ControlKind::TabStrip, QStringLiteral("TabStrip1"));
        tabs.addItems({QStringLiteral("New"), QStringLiteral("Existing"), QStringLiteral("Settings")});
        tabs.setSelectedTab(1);
        watched(ControlKind::Grid, QStringLiteral("PrintList"));
        addLabelled(ControlKind::CommandButton, QStringLiteral("Command1"), QStringLiteral("&Generate New Ticket(s)"));
        add(ControlKind::TextBox, QStringLiteral("Text7"), 8);
        onLoad = [this] { log << QStringLiteral("Form Load"); };
    }
};

// Writes down what its control tells it.
class RecordingWatcher : public ControlWatcher
{
public:
    std::vector<Property> changes;
    bool gone = false;

    void controlChanged(Property property) override { changes.push_back(property); }
    void controlGone() override { gone = true; }
};

} // namespace

class TestControlModel : public QObject
{
    Q_OBJECT

private:
    ScriptedPlatform m_platform;
    std::unique_ptr<LoggingForm> m_form;

    Control& c(const char* name) { return (*m_form)[QLatin1String(name)]; }

private slots:
    void init()
    {
        m_form = std::make_unique<LoggingForm>(m_platform);
        m_form->load();
        m_form->log.clear();
    }

    void testTypingFiresFocusThenKeyDownPressChangeAndUpPerKey()
    {
        Operator::type(c("Text1"), QStringLiteral("ab"));
        QCOMPARE(m_form->log,
            QStringList({QStringLiteral("Text1 GotFocus"),
                QStringLiteral("Text1 KeyDown 65"),
                QStringLiteral("Text1 KeyPress 97"),
                QStringLiteral("Text1 Change a"),
                QStringLiteral("Text1 KeyUp 65"),
                QStringLiteral("Text1 KeyDown 66"),
                QStringLiteral("Text1 KeyPress 98"),
                QStringLiteral("Text1 Change ab"),
                QStringLiteral("Text1 KeyUp 66")}));
        QCOMPARE(c("Text1").text(), QStringLiteral("ab"));
    }

    void testMovingTheFocusFiresLostFocusBeforeGotFocus()
    {
        QVERIFY(Operator::focus(c("Text1")));
        QVERIFY(Operator::focus(c("Text2")));
        QVERIFY(Operator::focus(c("Text2")));
        QCOMPARE(m_form->log,
            QStringList({QStringLiteral("Text1 GotFocus"),
                QStringLiteral("Text1 LostFocus"),
                QStringLiteral("Text2 GotFocus")}));
        QCOMPARE(m_form->focused(), &c("Text2"));
    }

    void testTabOutSkipsLabelsFramesAndDisabledControls()
    {
        c("Text2").setEnabled(false);
        QVERIFY(Operator::focus(c("Text1")));
        QVERIFY(Operator::tabOut(c("Text1")));
        QCOMPARE(m_form->focused(), &c("Option1"));
    }

    void testFocusFailsOnControlsThatCannotTakeIt_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("setUp");
        QTest::newRow("a disabled text box") << "Text2"
                                             << "disable";
        QTest::newRow("a hidden text box") << "Text2"
                                           << "hide";
        QTest::newRow("a text box inside a hidden frame") << "Text3"
                                                          << "hide frame";
        QTest::newRow("a text box inside a disabled frame") << "Text3"
                                                            << "disable frame";
        QTest::newRow("a label") << "Label1"
                                 << "";
    }

    void testFocusFailsOnControlsThatCannotTakeIt()
    {
        QFETCH(QString, control);
        QFETCH(QString, setUp);
        if (setUp == QLatin1String("disable"))
            (*m_form)[control].setEnabled(false);
        else if (setUp == QLatin1String("hide"))
            (*m_form)[control].setVisible(false);
        else if (setUp == QLatin1String("hide frame"))
            c("Frame2").setVisible(false);
        else if (setUp == QLatin1String("disable frame"))
            c("Frame2").setEnabled(false);
        QVERIFY(Operator::focus(c("Text1")));
        m_form->log.clear();

        QVERIFY(!Operator::focus((*m_form)[control]));
        QCOMPARE(m_form->focused(), &c("Text1"));
        QVERIFY(m_form->log.isEmpty());
        Operator::type((*m_form)[control], QStringLiteral("x"));
        QCOMPARE((*m_form)[control].text(), QString());
    }

    void testALostFocusHandlerThatTakesTheFocusBackKeepsIt()
    {
        c("Text1").onLostFocus = [this] {
            m_form->log << QStringLiteral("Text1 LostFocus");
            m_form->setFocus(c("Text1"));
        };
        QVERIFY(Operator::focus(c("Text1")));
        m_form->log.clear();
        QVERIFY(Operator::focus(c("Text2")));
        QCOMPARE(m_form->focused(), &c("Text1"));
        // The focus had reached Text2 when Text1 took it back, so Text2 loses it without a got-focus.
        QCOMPARE(m_form->log,
            QStringList({QStringLiteral("Text1 LostFocus"),
                QStringLiteral("Text2 LostFocus"),
                QStringLiteral("Text1 GotFocus")}));
    }

    void testOptionButtonsAreExclusiveWithinTheirContainerOnly()
    {
        QVERIFY(Operator::click(c("Option1")));
        QVERIFY(Operator::click(c("Option3")));
        QVERIFY(Operator::click(c("Option2")));
        QCOMPARE(c("Option1").value(), 0);
        QCOMPARE(c("Option2").value(), 1);
        QCOMPARE(c("Option3").value(), 1);
        QCOMPARE(c("Option4").value(), 0);
        QCOMPARE(m_form->log.filter(QStringLiteral("Click")),
            QStringList(
                {QStringLiteral("Option1 Click"), QStringLiteral("Option3 Click"), QStringLiteral("Option2 Click")}));
    }

    void testClickingAChosenOptionAgainFiresNoClick()
    {
        QVERIFY(Operator::click(c("Option1")));
        QVERIFY(Operator::click(c("Option1")));
        QCOMPARE(m_form->log.filter(QStringLiteral("Click")).size(), 1);
    }

    void testAKeyFilterDropsKeys()
    {
        c("Text1").onKeyPress = [](int& ascii) {
            if (!(ascii >= '0' && ascii <= '9') && ascii != '.' && ascii != Key::Backspace)
                ascii = 0;
        };
        Operator::type(c("Text1"), QStringLiteral("1a2.b5"));
        QCOMPARE(c("Text1").text(), QStringLiteral("12.5"));
    }

    void testAKeyFilterReplacesKeys()
    {
        c("Text1").onKeyPress = [](int& ascii) { ascii = QChar(ascii).toUpper().unicode(); };
        Operator::type(c("Text1"), QStringLiteral("nvt1"));
        QCOMPARE(c("Text1").text(), QStringLiteral("NVT1"));
    }

    void testABoxLockedFromKeyDownToKeyUpIgnoresTheKey()
    {
        Control& box = c("Text1");
        box.onKeyDown = [&box](int& code, int) { box.setLocked(!(code >= '0' && code <= '9')); };
        box.onKeyUp = [&box](int&, int) { box.setLocked(false); };
        Operator::type(box, QStringLiteral("4x2"));
        QCOMPARE(box.text(), QStringLiteral("42"));
        QVERIFY(!box.locked());
    }

    void testEnterReachesTheKeyPressButChangesNoText()
    {
        int seen = 0;
        c("Text1").onKeyPress = [&seen](int& ascii) { seen = ascii; };
        Operator::type(c("Text1"), QStringLiteral("5"));
        Operator::pressKey(c("Text1"), Key::Enter);
        QCOMPARE(seen, Key::Enter);
        QCOMPARE(c("Text1").text(), QStringLiteral("5"));
    }

    void testMaxLengthStopsTypingButLetsASelectionBeReplaced()
    {
        Control& box = c("Text1");
        box.setMaxLength(4);
        Operator::type(box, QStringLiteral("123456"));
        QCOMPARE(box.text(), QStringLiteral("1234"));
        box.setSelection(1, 2);
        Operator::type(box, QStringLiteral("xyz"));
        // "23" gives way to "x"; "y" fits again, "z" finds the box full.
        QCOMPARE(box.text(), QStringLiteral("1xy4"));
    }

    void testTypingReplacesTheSelectionThatGotFocusMade()
    {
        Control& box = c("Text1");
        box.setText(QStringLiteral("50"));
        box.onGotFocus = [&box] { box.selectAll(); };
        Operator::type(box, QStringLiteral("7"));
        QCOMPARE(box.text(), QStringLiteral("7"));
        QCOMPARE(box.selStart(), 1);
    }

    void testBackspaceRemovesTheSelectionOrTheCharacterBefore()
    {
        Control& box = c("Text1");
        Operator::type(box, QStringLiteral("abcd"));
        Operator::pressKey(box, Key::Backspace);
        QCOMPARE(box.text(), QStringLiteral("abc"));
        box.setSelection(0, 2);
        Operator::pressKey(box, Key::Backspace);
        QCOMPARE(box.text(), QStringLiteral("c"));
        box.setSelection(0, 0);
        Operator::pressKey(box, Key::Backspace);
        QCOMPARE(box.text(), QStringLiteral("c"));
    }

    void testPastingFiresOneChangeAndNoKeys()
    {
        Operator::setText(c("Text1"), QStringLiteral("pasted"));
        QCOMPARE(m_form->log, QStringList({QStringLiteral("Text1 GotFocus"), QStringLiteral("Text1 Change pasted")}));
    }

    void testACheckBoxClickTogglesAndTickOnlyClicksOnAChange()
    {
        QVERIFY(Operator::click(c("Check1")));
        QCOMPARE(c("Check1").value(), int(CheckState::Checked));
        QVERIFY(Operator::tick(c("Check1"), true));
        QVERIFY(Operator::tick(c("Check1"), false));
        QCOMPARE(c("Check1").value(), int(CheckState::Unchecked));
        QCOMPARE(m_form->log.filter(QStringLiteral("Click")).size(), 2);
        c("Check1").setEnabled(false);
        QVERIFY(!Operator::click(c("Check1")));
        QCOMPARE(c("Check1").value(), int(CheckState::Unchecked));
    }

    void testPickingAComboEntrySetsItsTextAndClicks()
    {
        QVERIFY(Operator::pick(c("Combo1"), QStringLiteral("Fixed Expiration Date")));
        QCOMPARE(c("Combo1").listIndex(), 1);
        QCOMPARE(c("Combo1").text(), QStringLiteral("Fixed Expiration Date"));
        QVERIFY(!Operator::pick(c("Combo1"), QStringLiteral("Tomorrow")));
        QVERIFY(!Operator::pick(c("Combo1"), 3));
        QCOMPARE(m_form->log.filter(QStringLiteral("Click")), QStringList({QStringLiteral("Combo1 Click")}));
    }

    void testPickingInAMultiSelectListTogglesEntries()
    {
        Control& list = c("List1");
        list.setMultiSelect(true);
        QVERIFY(Operator::pick(list, 1));
        QVERIFY(Operator::pick(list, 0));
        QVERIFY(Operator::pick(list, 1));
        QVERIFY(list.selected(0));
        QVERIFY(!list.selected(1));
        QCOMPARE(list.selectedCount(), 1);
        // The entry picked last is the current one, also when the pick cleared it.
        QCOMPARE(list.listIndex(), 1);
        QVERIFY(Operator::pick(list, 1));
        QVERIFY(list.selected(1));
        QCOMPARE(m_form->log.filter(QStringLiteral("Click")).size(), 4);
    }

    void testTheSelectedCountFollowsRemovalsAndClearing()
    {
        Control& list = c("List1");
        list.clear();
        list.setMultiSelect(false);
        for (const char* entry : {"NVT1", "NVT2", "NVT3", "NVT4", "NVT5"})
            list.addItem(QString::fromLatin1(entry));
        // Made a multiple choice list after its entries were added: they have no flags yet.
        list.setMultiSelect(true);
        list.removeItem(4);
        QCOMPARE(list.selectedCount(), 0);
        list.addItem(QStringLiteral("NVT5"));
        for (int i : {0, 2, 4})
            list.setSelected(i, true);
        list.setSelected(4, true);
        QCOMPARE(list.selectedCount(), 3);
        list.removeItem(2);
        QCOMPARE(list.selectedCount(), 2);
        QVERIFY(list.selected(3));
        list.removeItem(1);
        QCOMPARE(list.selectedCount(), 2);
        list.setSelected(2, false);
        list.setSelected(2, false);
        QCOMPARE(list.selectedCount(), 1);
        QCOMPARE(list.items(), QStringList({QStringLiteral("NVT1"), QStringLiteral("NVT4"), QStringLiteral("NVT5")}));
        list.clear();
        QCOMPARE(list.selectedCount(), 0);
        list.addItem(QStringLiteral("NVT6"));
        QCOMPARE(list.selectedCount(), 0);
        QVERIFY(!list.selected(0));
    }

    void testBeforeClickCanRefuseATab()
    {
        Control& tabs = c("TabStrip1");
        bool refuse = true;
        tabs.onBeforeClick = [&refuse](bool& cancel) { cancel = refuse; };
        QVERIFY(!Operator::chooseTab(tabs, 2));
        QCOMPARE(tabs.selectedTab(), 1);
        refuse = false;
        QVERIFY(Operator::chooseTab(tabs, 3));
        QCOMPARE(tabs.selectedTab(), 3);
        QVERIFY(!Operator::chooseTab(tabs, 4));
        QCOMPARE(m_form->log.filter(QStringLiteral("Click")), QStringList({QStringLiteral("TabStrip1 Click")}));
    }

    void testGridRowsAreTabSeparatedLines()
    {
        GridData& grid = c("PrintList").grid();
        grid.setCols(8);
        grid.setRows(1);
        grid.addItem(QStringLiteral("1\tNVT1234\tpass\t60min(s)\t201106211000\t20day(s)\t21/Nov/26"));
        grid.addItem(QStringLiteral("2\tfirst\tsecond\t3\t4\t5\t6\t7\tbeyond the columns"));
        QCOMPARE(grid.rows(), 3);
        QCOMPARE(grid.textMatrix(1, 1), QStringLiteral("NVT1234"));
        QCOMPARE(grid.textMatrix(1, 7), QString());
        QCOMPARE(grid.rowCells(1).size(), 8);
        QCOMPARE(grid.rowCells(2).last(), QStringLiteral("7"));
        grid.setTextMatrix(1, 2, QStringLiteral("*****\there"));
        QCOMPARE(grid.textMatrix(1, 2), QStringLiteral("***** here"));
        QCOMPARE(grid.textMatrix(1, 3), QStringLiteral("60min(s)"));
        grid.addItem(QStringLiteral("0\tinserted"), 1);
        QCOMPARE(grid.textMatrix(1, 1), QStringLiteral("inserted"));
        grid.removeItem(1);
        QCOMPARE(grid.textMatrix(1, 1), QStringLiteral("NVT1234"));
        QCOMPARE(grid.textMatrix(9, 0), QString());
    }

    void testGridStartsWithTwoRowsAndClearCellsKeepsTheShape()
    {
        GridData& grid = c("PrintList").grid();
        QCOMPARE(grid.rows(), 2);
        QCOMPARE(grid.cols(), 2);
        QCOMPARE(grid.fixedRows(), 1);
        grid.setTextMatrix(0, 1, QStringLiteral("Username"));
        grid.clearCells();
        QCOMPARE(grid.rows(), 2);
        QCOMPARE(grid.textMatrix(0, 1), QString());
    }

    void testALeftClickOnTheGridMovesTheCurrentCellARightClickDoesNot()
    {
        GridData& grid = c("PrintList").grid();
        grid.setCols(8);
        for (int i = 0; i < 3; ++i)
            grid.addItem(QStringLiteral("row"));
        Operator::clickGrid(c("PrintList"), 2, 3, MouseButton::Left);
        QCOMPARE(grid.row(), 2);
        QCOMPARE(grid.col(), 3);
        Operator::clickGrid(c("PrintList"), 4, 1, MouseButton::Right);
        QCOMPARE(grid.row(), 2);
        QCOMPARE(grid.mouseRow(), 4);
        QCOMPARE(grid.mouseCol(), 1);
        QCOMPARE(m_form->log,
            QStringList({QStringLiteral("PrintList GotFocus"),
                QStringLiteral("PrintList MouseDown 1"),
                QStringLiteral("PrintList MouseUp 1"),
                QStringLiteral("PrintList Click"),
                QStringLiteral("PrintList MouseDown 2"),
                QStringLiteral("PrintList MouseUp 2")}));
    }

    void testQueryUnloadCanRefuseTheOperatorButNotAForcedClose()
    {
        QList<int> modes;
        m_form->onQueryUnload = [&modes](bool& cancel, int mode) {
            modes << mode;
            cancel = mode == UnloadMode::FormControlMenu;
        };
        int closedSignals = 0;
        QObject receiver;
        connect(m_form.get(), &Form::closed, &receiver, [&closedSignals] { ++closedSignals; });
        QVERIFY(!Operator::closeWindow(*m_form));
        QVERIFY(m_form->isLoaded());
        QVERIFY(m_form->unload(UnloadMode::FormCode));
        QVERIFY(!m_form->isLoaded());
        QCOMPARE(modes, QList<int>({UnloadMode::FormControlMenu, UnloadMode::FormCode}));
        QCOMPARE(closedSignals, 1);
    }

    void testUnloadCanRefuseToo()
    {
        m_form->onUnload = [](bool& cancel) { cancel = true; };
        QVERIFY(!m_form->unload());
        QVERIFY(m_form->isLoaded());
        m_form->forceUnload();
        QVERIFY(!m_form->isLoaded());
        QCOMPARE(m_form->focused(), nullptr);
    }

    void testLoadingAgainBuildsFreshControls()
    {
        Operator::type(c("Text1"), QStringLiteral("old"));
        m_form->load();
        QCOMPARE(m_form->loads, 1);
        QVERIFY(m_form->unload());
        m_form->load();
        QCOMPARE(m_form->loads, 2);
        QCOMPARE(c("Text1").text(), QString());
        QCOMPARE(m_form->focused(), nullptr);
        QCOMPARE(m_form->log.last(), QStringLiteral("Form Load"));
    }

    void testAControlAskedForBeforeALoadIsTheNewOneAfterIt()
    {
        Control& before = c("Text1");
        QCOMPARE(&c("TEXT1"), &before);
        QVERIFY(m_form->unload());
        m_form->load();
        Control& after = c("Text1");
        const auto& controls = m_form->controls();
        QVERIFY(
            std::any_of(controls.begin(), controls.end(), [&after](const Control* owned) { return owned == &after; }));
        QCOMPARE(&c("TEXT1"), &after);
    }

    void testWatchersAreToldOfEachChangeUntilTheyStop()
    {
        RecordingWatcher first;
        RecordingWatcher second;
        Control& text = c("Text1");
        text.addWatcher(first);
        text.addWatcher(second);
        text.setText(QStringLiteral("abc"));
        text.setText(QStringLiteral("abc"));
        text.setEnabled(false);
        text.removeWatcher(first);
        text.setCaption(QStringLiteral("Name"));
        QCOMPARE(first.changes, (std::vector<Property> {Property::Text, Property::Enabled}));
        QCOMPARE(second.changes, (std::vector<Property> {Property::Text, Property::Enabled, Property::Caption}));
        text.removeWatcher(second);
    }

    void testAnOptionClearedByAnotherTellsItsWatcher()
    {
        RecordingWatcher watcher;
        c("Option1").addWatcher(watcher);
        Operator::click(c("Option1"));
        Operator::click(c("Option2"));
        QCOMPARE(c("Option1").value(), 0);
        QCOMPARE(watcher.changes, (std::vector<Property> {Property::Value, Property::Value}));
        c("Option1").removeWatcher(watcher);
    }

    void testWatchersLearnWhenTheControlsAreBuiltAnew()
    {
        RecordingWatcher watcher;
        c("Text1").addWatcher(watcher);
        QVERIFY(m_form->unload());
        QVERIFY(!watcher.gone);
        m_form->load();
        QVERIFY(watcher.gone);
        c("Text1").setText(QStringLiteral("new"));
        QVERIFY(watcher.changes.empty());
    }

    void testAFormOfManyControlsKeepsThemAllInCreationOrder()
    {
        // More than one block of controls, built twice.
        class LargeForm : public Form
        {
        public:
            using Form::Form;

        protected:
            void build() override
            {
                for (int i = 0; i < 100; ++i)
                    add(ControlKind::TextBox, QStringLiteral("Text"), i).setText(QString::number(i));
            }
        };
        LargeForm form(m_platform, QStringLiteral("Large"));
        RecordingWatcher watcher;
        for (int round = 0; round < 2; ++round) {
            form.load();
            QCOMPARE(form.controls().size(), size_t(100));
            for (int i = 0; i < 100; ++i) {
                QCOMPARE(form.controls()[size_t(i)]->index(), i);
                QCOMPARE(form.at(QStringLiteral("TEXT"), i).text(), QString::number(i));
            }
            if (round == 0) {
                form.at(QStringLiteral("Text"), 99).addWatcher(watcher);
                QVERIFY(form.unload());
            }
        }
        QVERIFY(watcher.gone);
    }

    void testAFormBuiltAfterAnotherClosedStartsWithFreshControls()
    {
        // The second form takes the blocks the first gave back.
        class PlainForm : public Form
        {
        public:
            using Form::Form;

        protected:
            void build() override
            {
                for (int i = 0; i < 70; ++i)
                    add(ControlKind::CheckBox, QStringLiteral("Check"), i);
            }
        };
        {
            PlainForm first(m_platform, QStringLiteral("First"));
            first.load();
            for (Control* control : first.controls()) {
                control->setValue(CheckState::Checked);
                control->setText(QStringLiteral("old"));
                control->setEnabled(false);
            }
        }
        PlainForm second(m_platform, QStringLiteral("Second"));
        second.load();
        QCOMPARE(second.controls().size(), size_t(70));
        for (const Control* control : second.controls()) {
            QCOMPARE(control->value(), CheckState::Unchecked);
            QCOMPARE(control->text(), QString());
            QVERIFY(control->enabled());
            QCOMPARE(&control->form(), &second);
        }
    }

    void testControlsAreFoundByNameIndexOrLabel_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("found");
        QTest::newRow("a plain name") << "Text1"
                                      << "Text1";
        QTest::newRow("a name in another case") << "text1"
                                                << "Text1";
        QTest::newRow("an array element") << "Text7(8)"
                                          << "Text7(8)";
        QTest::newRow("an array name without its index") << "Text7"
                                                         << "";
        QTest::newRow("a label with its accelerator") << "&Generate New Ticket(s)"
                                                      << "Command1";
        QTest::newRow("a label without its accelerator") << "Generate New Ticket(s)"
                                                         << "Command1";
        QTest::newRow("an unknown name") << "Text99"
                                         << "";
    }

    void testControlsAreFoundByNameIndexOrLabel()
    {
        QFETCH(QString, key);
        QFETCH(QString, found);
        Control* control = m_form->find(key);
        QCOMPARE(control ? control->key() : QString(), found);
    }
};

QTEST_GUILESS_MAIN(TestControlModel)
#include "TestControlModel.moc"
