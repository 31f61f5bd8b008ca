#include "script/ScenarioRunner.h"

#include "platform/Control.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "script/ScriptedPlatform.h"
#include "settings/TidyComponent.h"
#include "store/Preferences.h"

#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

namespace {

// The second screen of the probe: a text box and a button that closes it.
class InnerForm : public Form
{
public:
    explicit InnerForm(Platform& platform)
        : Form(platform, QStringLiteral("Inner"))
    {
    }

protected:
    void build() override
    {
        setCaption(QStringLiteral("Inner Screen"));
        add(ControlKind::TextBox, QStringLiteral("Text1"));
        addLabelled(ControlKind::CommandButton, QStringLiteral("Command1"), QStringLiteral("OK")).onClick
            = [this] { unload(); };
    }
};

// A screen with one control of each kind a runner test needs.
class ProbeForm : public Form
{
public:
    explicit ProbeForm(Platform& platform)
        : Form(platform, QStringLiteral("Probe"))
    {
    }

protected:
    void build() override
    {
        setCaption(QStringLiteral("Probe"));
        Control& text = add(ControlKind::TextBox, QStringLiteral("Text1"));
        Control& label = add(ControlKind::Label, QStringLiteral("Label1"));
        addLabelled(ControlKind::CommandButton, QStringLiteral("Command1"), QStringLiteral("&Open Inner")).onClick
            = [this, &label] {
                  InnerForm inner(platform());
                  inner.showModal();
                  label.setCaption(QStringLiteral("inner closed"));
              };
        addLabelled(ControlKind::CommandButton, QStringLiteral("Command2"), QStringLiteral("&Count")).onClick
            = [this, &label] { count(label); };
        addLabelled(ControlKind::CommandButton, QStringLiteral("Command3"), QStringLiteral("Stop")).onClick
            = [this] { m_stop = true; };
        addLabelled(ControlKind::CommandButton, QStringLiteral("Command4"), QStringLiteral("&Ask")).onClick
            = [this, &label, &text] {
                  const bool yes = platform().messageBox(QStringLiteral("Continue?"), 292) == MsgResult::Yes;
                  label.setCaption(yes ? QStringLiteral("yes") : QStringLiteral("no"));
                  text.setText(platform().inputBox(
                      QStringLiteral("Amount?"), QStringLiteral("Norvantis"), QStringLiteral("100")));
              };
        Control& disabled = addLabelled(ControlKind::CommandButton, QStringLiteral("Command5"), QStringLiteral("Dead"));
        disabled.setEnabled(false);
        Control& refuse = add(ControlKind::CheckBox, QStringLiteral("Check1"));
        onQueryUnload
            = [&refuse](bool& cancel, int mode) { cancel = refuse.isChecked() && mode == UnloadMode::FormControlMenu; };
        add(ControlKind::DateTimePicker, QStringLiteral("DTPicker1"));
        add(ControlKind::ComboBox, QStringLiteral("Combo1"))
            .addItems({QStringLiteral("Never Expire"), QStringLiteral("Fixed Expiration Date")});
        Control& slider = add(ControlKind::Slider, QStringLiteral("Slider1"));
        slider.setRange(0, 100);
        slider.onChange
            = [&label, &slider] { label.setCaption(QStringLiteral("slid to ") + QString::number(slider.value())); };
        buildGrid(label);
    }

private:
    void buildGrid(Control& label)
    {
        Control& grid = add(ControlKind::Grid, QStringLiteral("Grid1"));
        grid.grid().setRows(1);
        grid.grid().setTextMatrix(0, 0, QStringLiteral("Name"));
        grid.grid().addItem(QStringLiteral("a\t1"));
        grid.grid().addItem(QStringLiteral("b\t2"));
        Control& menu = add(ControlKind::Menu, QStringLiteral("m_click"));
        grid.onMouseDown = [this, &menu](int button, int, int, int) {
            if (button == MouseButton::Right)
                popupMenu(menu);
        };
        Control& alpha = addLabelled(ControlKind::Menu, QStringLiteral("m_alpha"), QStringLiteral("&Alpha"));
        alpha.setParentMenu(&menu);
        alpha.onClick = [&label] { label.setCaption(QStringLiteral("alpha")); };
        Control& beta = addLabelled(ControlKind::Menu, QStringLiteral("m_beta"), QStringLiteral("&Beta"));
        beta.setParentMenu(&menu);
        beta.setEnabled(false);
    }

    void count(Control& label)
    {
        m_stop = false;
        for (int i = 1; i <= 10; ++i) {
            if (m_stop)
                break;
            platform().yield();
            label.setCaption(QStringLiteral("counted ") + QString::number(i));
        }
    }

    bool m_stop = false;
};

// What the probe operation was given, for the test to look at.
struct ProbeCall
{
    QString user;
    QString path;
    QStringList positional;
    QString connectionString;
    QString preference;
};

} // namespace

class TestScenarioRunner : public QObject
{
    Q_OBJECT

private:
    ScenarioOperations m_operations = ScenarioOperations::builtin();
    QList<ProbeCall> m_calls;

    int run(const QString& script, QString& output)
    {
        QTextStream out(&output);
        return runScenarioText(script, QStringLiteral("t.scenario"), out, m_operations);
    }

private slots:
    void initTestCase()
    {
        m_operations.add(QStringLiteral("probe"), [this](ScenarioContext& context, const ScenarioArguments& arguments) {
            m_calls << ProbeCall {arguments.value(QStringLiteral("user")),
                arguments.value(QStringLiteral("path")),
                arguments.positional(),
                context.connectionString,
                context.preferences.GetSetting(QStringLiteral("Norvantis"),
                    QStringLiteral("Option"),
                    QStringLiteral("TPlen"),
                    QStringLiteral("unset"))};
            ProbeForm form(context.platform);
            form.showModal();
        });
    }

    void init() { m_calls.clear(); }

    void testAPassingScriptReportsSuccess()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\n"
                                              "check form caption Probe\n"
                                              "type Text1 \"abc\"\n"
                                              "check Text1 text abc\n"
                                              "pick Combo1 #1\n"
                                              "check Combo1 text \"Fixed Expiration Date\"\n"
                                              "check Grid1 line(2) \"b | 2\"\n"
                                              "close\n"
                                              "check forms is Probe\n"),
            output);
        QCOMPARE(status, 0);
        QCOMPARE(output, QStringLiteral("t.scenario: passed, 9 commands, 0 failure(s)\n"));
    }

    void testAFailedCheckReportsItsLineAndTheDifference()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\n"
                                              "# a comment line\n"
                                              "type Text1 \"50 \"\n"
                                              "check Text1 text \"50\"   # no blank expected\n"
                                              "check Text1 enabled true\n"
                                              "close\n"),
            output);
        QCOMPARE(status, 1);
        QCOMPARE(output,
            QStringLiteral("t.scenario:4: check Text1 text \"50\"\n"
                           "  expected: \"50\"\n"
                           "  actual:   \"50 \"\n"
                           "  actual has more after character 2\n"
                           "t.scenario: FAILED, 5 commands, 1 failure(s)\n"));
    }

    void testAScenarioWithAWrongExpectationFails()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("wrong.scenario"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("open demo\n"
                   "type Text1 \"abc\"\n"
                   "expect message \"A numeric value is required! (eg. 123)\" style 48\n"
                   "tab out of Text1\n"
                   "close\n");
        file.close();
        QString output;
        QTextStream out(&output);
        QCOMPARE(runScenarioFile(path, out), 1);
        QVERIFY2(output.contains(path
                     + QStringLiteral(":4: tab out of Text1\n"
                                      "  message box is not the one expected (expected at ")
                     + path + QStringLiteral(":3)\n  text:\n    expected: \"A numeric value")),
            qPrintable(output));
        QVERIFY(output.contains(QStringLiteral("first difference at character 11")));
    }

    void testUnexpectedDialogsAreReportedAtTheLineThatCausedThem()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\nclick \"&Ask\"\ncheck Label1 caption no\nclose\n"), output);
        QCOMPARE(status, 1);
        QCOMPARE(output,
            QStringLiteral("t.scenario:2: click \"&Ask\"\n"
                           "  unexpected message box: \"Continue?\" (style 292, title \"Norvantis v2.3.1\")\n"
                           "t.scenario:2: click \"&Ask\"\n"
                           "  unexpected input box: \"Amount?\"\n"
                           "t.scenario: FAILED, 4 commands, 2 failure(s)\n"));
    }

    void testExpectedDialogsAnswerTheScreen()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\n"
                                              "expect message \"Continue?\" style 292 answer yes\n"
                                              "expect input \"250\" prompt \"Amount?\" title Norvantis default 100\n"
                                              "click Ask\n"
                                              "check Label1 caption yes\n"
                                              "check Text1 text 250\n"
                                              "check messages shown 1\n"
                                              "check no pending messages\n"
                                              "close\n"),
            output);
        QVERIFY2(status == 0, qPrintable(output));
    }

    void testANestedModalFormTakesTheLinesUntilItCloses()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\n"
                                              "  click \"&Open Inner\"\n"
                                              "    check form name Inner\n"
                                              "    check form caption \"Inner Screen\"\n"
                                              "    type Text1 \"inside\"\n"
                                              "    click OK\n"
                                              "  check form name Probe\n"
                                              "  check Text1 text \"\"\n"
                                              "  check Label1 caption \"inner closed\"\n"
                                              "  close\n"
                                              "check forms is\n"
                                              "  Probe\n"
                                              "  Inner\n"),
            output);
        QVERIFY2(status == 0, qPrintable(output));
    }

    void testAtYieldPressesAButtonInTheMiddleOfALoop()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\n"
                                              "at yield 3 click Stop\n"
                                              "click \"&Count\"\n"
                                              "check Label1 caption \"counted 3\"\n"
                                              "check yields 3\n"
                                              "click \"&Count\"\n"
                                              "check Label1 caption \"counted 10\"\n"
                                              "close\n"),
            output);
        QVERIFY2(status == 0, qPrintable(output));
    }

    void testAFailureInsideAYieldHookNamesTheHooksLine()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\nat yield 1 click Dead\nclick \"&Count\"\nclose\n"), output);
        QCOMPARE(status, 1);
        QVERIFY2(output.startsWith(QStringLiteral("t.scenario:2: at yield 1 click Dead\n"
                                                  "  Command5 (button) is disabled or hidden\n")),
            qPrintable(output));
    }

    void testTheScriptEndingWhileAFormIsOpenIsAFailure()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\ntick Check1\n"), output);
        QCOMPARE(status, 1);
        QCOMPARE(output,
            QStringLiteral("t.scenario:2: tick Check1\n"
                           "  script ended while Probe (\"Probe\") was open\n"
                           "t.scenario: FAILED, 2 commands, 1 failure(s)\n"));
    }

    void testCloseCanBeExpectedToBeRefused()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\n"
                                              "tick Check1\n"
                                              "close refused\n"
                                              "close\n"
                                              "untick Check1\n"
                                              "close refused\n"),
            output);
        QCOMPARE(status, 1);
        QCOMPARE(output,
            QStringLiteral("t.scenario:4: close\n"
                           "  Probe refused to close\n"
                           "t.scenario:6: close refused\n"
                           "  Probe closed, but it was expected to refuse\n"
                           "t.scenario: FAILED, 6 commands, 2 failure(s)\n"));
    }

    void testPopUpMenusAreAnsweredInAdvance()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\n"
                                              "expect menu \"&Alpha\"\n"
                                              "grid Grid1 right-click row 1\n"
                                              "check Label1 caption alpha\n"
                                              "expect menu Beta\n"
                                              "grid Grid1 right-click row 2\n"
                                              "expect menu none\n"
                                              "grid Grid1 right-click row 2\n"
                                              "grid Grid1 click row 2 col 1\n"
                                              "check Grid1 row 2\n"
                                              "check Grid1 cell(2,1) 2\n"
                                              "close\n"),
            output);
        QCOMPARE(status, 1);
        QCOMPARE(output,
            QStringLiteral("t.scenario:6: grid Grid1 right-click row 2\n"
                           "  menu item \"&Beta\" cannot be chosen: it is disabled or hidden (expected "
                           "at t.scenario:5)\n"
                           "t.scenario: FAILED, 12 commands, 1 failure(s)\n"));
    }

    void testActionsThatAPersonCouldNotDoAreFailures_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("failure");
        QTest::newRow("a click on a disabled button") << "click Dead"
                                                      << "Command5 (button) is disabled or hidden";
        QTest::newRow("a control the form does not have") << "click Command9"
                                                          << "Probe has no control \"Command9\"";
        QTest::newRow("typing into a button") << "type Command1 \"x\""
                                              << "Command1 (button) takes no text";
        QTest::newRow("ticking a text box") << "tick Text1"
                                            << "Text1 (text box) cannot do that";
        QTest::newRow("an entry a list does not have") << "pick Combo1 \"Tomorrow\""
                                                       << "Combo1 has no entry \"Tomorrow\"; its entries:\n"
                                                          "  \"Never Expire\"\n  \"Fixed Expiration Date\"";
        QTest::newRow("an index beyond the list") << "pick Combo1 #2"
                                                  << "Combo1 has no entry #2 (it has 2, counted from 0)";
        QTest::newRow("a row beyond the grid") << "grid Grid1 click row 3 col 0"
                                               << "Grid1 has no cell (3,0): it has 3 rows and 2 columns";
        QTest::newRow("a grid property of a text box") << "check Text1 rows 1"
                                                       << "Text1 is a text box, not a grid";
        QTest::newRow("a cell beyond the grid") << "check Grid1 cell(1,5) x"
                                                << "column 5 does not exist (there are 2)";
    }

    void testActionsThatAPersonCouldNotDoAreFailures()
    {
        QFETCH(QString, line);
        QFETCH(QString, failure);
        QString output;
        const int status = run(QStringLiteral("open probe\n") + line + QStringLiteral("\nclose\n"), output);
        QCOMPARE(status, 1);
        QString expected = QStringLiteral("t.scenario:2: ") + line + u'\n';
        for (const QString& part : failure.split(u'\n'))
            expected += QStringLiteral("  ") + part + u'\n';
        QCOMPARE(output, expected + QStringLiteral("t.scenario: FAILED, 3 commands, 1 failure(s)\n"));
    }

    void testChecksOfAFormNeedAnOpenForm()
    {
        QString output;
        QCOMPARE(run(QStringLiteral("check Text1 text \"\"\nclose\n"), output), 1);
        QCOMPARE(output,
            QStringLiteral("t.scenario:1: check Text1 text \"\"\n  no form is open\n"
                           "t.scenario:2: close\n  no form is open\n"
                           "t.scenario: FAILED, 2 commands, 2 failure(s)\n"));
    }

    void testExpectationsNeverUsedFailAtTheEnd()
    {
        QString output;
        QCOMPARE(run(QStringLiteral("expect message \"Bye\" style 64\n"), output), 1);
        QCOMPARE(output,
            QStringLiteral("t.scenario: at the end of the script\n"
                           "  expected message never shown: \"Bye\" (expected at t.scenario:1)\n"
                           "t.scenario: FAILED, 1 commands, 1 failure(s)\n"));
    }

    void testTheDatabaseIsSetUpAndCheckedByStatements()
    {
        QString output;
        const int status = run(
            QStringLiteral("sql \"INSERT INTO Capt (Caption) VALUES ('x')\"\n"
                           "database new\n"
                           "check rows \"select Username, Type from Users\" is \"ADMINISTRATOR | ADMINISTRATOR\"\n"
                           "sql \"INSERT INTO Users (Username, Type, Solotime, Generate) VALUES ('BOB', "
                           "'STAFF', 1.5, true)\"\n"
                           "sql \"INSERT INTO SysUsage (SystemUsage, Dates) VALUES ('Ticket(s) Generated', "
                           "'21/11/26')\"\n"
                           "check rows \"select count(*) from Users\" is \"2\"\n"
                           "check rows \"select Username, Solotime from Users order by Username\" is\n"
                           "    ADMINISTRATOR | 60\n"
                           "    BOB | 1.5\n"
                           "check rows \"select Username, Generate from Users where Username = 'BOB'\" is\n"
                           "    BOB | True\n"
                           "check rows \"select SystemUsage, Times from SysUsage\" is\n"
                           "    Ticket(s) Generated | NULL\n"
                           "check rows \"select Username from Users where Generate = true\" is\n"
                           "    ADMINISTRATOR\n"
                           "    BOB\n"
                           "sql \"INSERT INTO Nowhere VALUES (1)\"\n"
                           "check rows \"select * from Users where Username = 'NOBODY'\" is\n"),
            output);
        QCOMPARE(status, 1);
        const QStringList lines = output.split(u'\n');
        QCOMPARE(lines.at(0), QStringLiteral("t.scenario:1: sql \"INSERT INTO Capt (Caption) VALUES ('x')\""));
        QCOMPARE(lines.at(1), QStringLiteral("  there is no database: write \"database new\" first"));
        QVERIFY2(
            output.contains(QStringLiteral("t.scenario:14: check rows \"select Username from Users where Generate = "
                                           "true\" is\n  expected 2 rows:\n    \"ADMINISTRATOR\"\n    \"BOB\"\n"
                                           "  actual 1 row:\n    \"BOB\"\n")),
            qPrintable(output));
        QVERIFY2(output.contains(QStringLiteral("t.scenario:17: sql \"INSERT INTO Nowhere VALUES (1)\"\n"
                                                "  the statement failed: ")),
            qPrintable(output));
        QVERIFY2(output.endsWith(QStringLiteral("FAILED, 12 commands, 3 failure(s)\n")), qPrintable(output));
    }

    void testARowThatDiffersIsShownWithItsPosition()
    {
        QString output;
        const int status
            = run(QStringLiteral("database new\n"
                                 "sql \"INSERT INTO Cafe (Cafename, SystemName) VALUES (1, 'a')\"\n"
                                 "sql \"INSERT INTO Cafe (Cafename, SystemName) VALUES (2, 'b')\"\n"
                                 "check rows \"select SystemName, Cafename from Cafe order by Cafename\" is\n"
                                 "  a | 1\n"
                                 "  b | 3\n"),
                output);
        QCOMPARE(status, 1);
        QVERIFY2(output.contains(QStringLiteral("  row 2:\n  expected: \"b | 3\"\n  actual:   \"b | 2\"\n")),
            qPrintable(output));
    }

    void testOpenHandsArgumentsDatabaseAndPreferencesToTheOperation()
    {
        QString output;
        const int status = run(QStringLiteral("pref Norvantis Option TPlen 5\n"
                                              "database new\n"
                                              "open probe --user ADMINISTRATOR extra\n"
                                              "close\n"
                                              "check pref norvantis option tplen \"5\"\n"),
            output);
        QVERIFY2(status == 0, qPrintable(output));
        QCOMPARE(m_calls.size(), 1);
        QCOMPARE(m_calls[0].user, QStringLiteral("ADMINISTRATOR"));
        QCOMPARE(m_calls[0].positional, QStringList({QStringLiteral("extra")}));
        QVERIFY(m_calls[0].connectionString.startsWith(QStringLiteral("sqlite:")));
        QVERIFY(m_calls[0].connectionString.endsWith(QStringLiteral("/marlet.db")));
        QCOMPARE(m_calls[0].preference, QStringLiteral("5"));
    }

    void testWithoutADatabaseTheOperationGetsNoConnectionString()
    {
        QString output;
        QCOMPARE(run(QStringLiteral("open probe\nclose\n"), output), 0);
        QCOMPARE(m_calls[0].connectionString, QString());
        QCOMPARE(m_calls[0].preference, QStringLiteral("unset"));
    }

    void testSyntaxErrorsAndUnknownOperationsStopTheRunBeforeItStarts()
    {
        QString output;
        QCOMPARE(run(QStringLiteral("open nothing\njump\nopen probe\n"), output), 2);
        QCOMPARE(output,
            QStringLiteral("t.scenario:2: unknown command jump\n  jump\n"
                           "t.scenario:1: open nothing\n  unknown operation; known: demo, probe\n"
                           "t.scenario: not run\n"));
        QVERIFY(m_calls.isEmpty());
    }

    void testAFileThatCannotBeReadIsNotRun()
    {
        QString output;
        QTextStream out(&output);
        QCOMPARE(runScenarioFile(QStringLiteral("/nonexistent/x.scenario"), out), 2);
        QVERIFY(output.startsWith(QStringLiteral("/nonexistent/x.scenario: cannot read: ")));
    }

    void testASliderIsMovedWithinItsRange()
    {
        QString output;
        const int status = run(QStringLiteral("open probe\n"
                                              "slide Slider1 40\n"
                                              "check Label1 caption \"slid to 40\"\n"
                                              "check focus Slider1\n"
                                              "slide Slider1 250\n"
                                              "check Slider1 value 100\n"
                                              "check Label1 caption \"slid to 100\"\n"
                                              "slide Text1 5\n"
                                              "close\n"),
            output);
        QCOMPARE(status, 1);
        QVERIFY2(output.contains(QStringLiteral("t.scenario:8: slide Text1 5\n  Text1 (text box) cannot do that")),
            qPrintable(output));
        QVERIFY2(output.contains(QStringLiteral("1 failure(s)")), qPrintable(output));
    }

    void testSerialPortsAndTheBuiltInMaintenanceComponent()
    {
        const ScenarioScript script = parseScenario(
            QStringLiteral("serial ports none\ncomponent Brisling.Tidy built-in\n"), QStringLiteral("c"));
        QString output;
        QTextStream out(&output);
        ScenarioRunner runner(script, m_operations, out);
        QCOMPARE(runner.run(), 0);
        QVERIFY(!runner.platform().serialPort()->open(QStringLiteral("COM1"), 9600));
        std::unique_ptr<NamedComponent> tidy = runner.platform().createComponent(QStringLiteral("Brisling.Tidy"));
        QVERIFY(dynamic_cast<TidyComponent*>(tidy.get()));

        QString refused;
        QCOMPARE(run(QStringLiteral("component Vellum.Sheets built-in\n"), refused), 1);
        QVERIFY2(refused.contains(QStringLiteral("there is no built-in component Vellum.Sheets")), qPrintable(refused));
    }

    // The report holds each of the parts and ends with the summary.
    static void verifyReport(const QString& output, const QStringList& parts, const QString& summary)
    {
        for (const QString& part : parts)
            QVERIFY2(output.contains(part), qPrintable(output));
        QVERIFY2(output.endsWith(summary), qPrintable(output));
    }

    void testFilesAreWrittenAndCheckedAsLinesOrScrambledRecords()
    {
        QString output;
        const int status = run(QStringLiteral("write file \"<run>/a.Sav\" records\n"
                                              "    AB\n"
                                              "    \"O :- Expire :- 7\"\n"
                                              "check file \"<run>/a.Sav\" lines line 0 is \"765665\"\n"
                                              "check file \"<run>/a.Sav\" records is\n"
                                              "    AB\n"
                                              "    \"O :- Expire :- 7\"\n"
                                              "write file \"<run>/b.Sav\" lines\n"
                                              "    765665\n"
                                              "    12a\n"
                                              "    \"\"\n"
                                              "check file \"<run>/b.Sav\" records from 1 is\n"
                                              "    \"garbled: 12a\"\n"
                                              "    \"\"\n"
                                              "check file \"<run>/b.Sav\" records is \"BA\"\n"
                                              "check file \"<run>/none.Sav\" lines is\n"),
            output);
        QCOMPARE(status, 1);
        verifyReport(output,
            {QStringLiteral("t.scenario:15: check file \"<run>/b.Sav\" records is \"BA\"\n"
                            "  expected 1 row:\n    \"BA\"\n  actual 3 rows:\n    \"AB\"\n"),
                QStringLiteral("t.scenario:16: check file \"<run>/none.Sav\" lines is\n  cannot read the file ")},
            QStringLiteral("FAILED, 7 commands, 2 failure(s)\n"));
    }

    void testAnotherMachineHasItsOwnPreferencesAndDatabase()
    {
        QString output;
        const int status = run(QStringLiteral("pref CafeHost Option STR VIP\n"
                                              "database new\n"
                                              "sql \"INSERT INTO Capt (Caption) VALUES ('X')\"\n"
                                              "write file \"<run>/app.Sav\" lines 123\n"
                                              "machine new\n"
                                              "check pref CafeHost Option STR \"\"\n"
                                              "check rows \"select count(*) from Capt\" is \"0\"\n"
                                              "database new\n"
                                              "check rows \"select count(*) from Capt\" is \"0\"\n"
                                              "check file \"<run>/app.Sav\" lines is 123\n"
                                              "open probe\n"
                                              "close\n"),
            output);
        QCOMPARE(status, 1);
        verifyReport(output,
            {QStringLiteral("t.scenario:7: check rows \"select count(*) from Capt\" is \"0\"\n"
                            "  there is no database: write \"database new\" first\n")},
            QStringLiteral("FAILED, 12 commands, 1 failure(s)\n"));
    }

    void testTheClockAndDevicesAreSetByTheScript()
    {
        const ScenarioScript script = parseScenario(QStringLiteral("clock 2009-01-05 23:59\n"
                                                                   "clock advance 60000\n"
                                                                   "printer \"PDF\"\n"
                                                                   "component Vellum.Sheets\n"
                                                                   "check slept 0\n"),
            QStringLiteral("c"));
        QString output;
        QTextStream out(&output);
        ScenarioRunner runner(script, m_operations, out);
        QCOMPARE(runner.run(), 0);
        QCOMPARE(runner.platform().now(), QDateTime(QDate(2009, 1, 6), QTime(0, 0)));
        QCOMPARE(runner.platform().defaultPrinter(), QStringLiteral("PDF"));
        QVERIFY(runner.platform().createComponent(QStringLiteral("Vellum.Sheets")));
    }

    void testFilesPickersClipboardAndTheRunFolder()
    {
        const ScenarioScript script = parseScenario(QStringLiteral("file \"<run>/pic/a.jpg\" size 12\n"
                                                                   "file \"<run>/pic/b\" size 0\n"
                                                                   "check files \"<run>/pic\" is\n"
                                                                   "    a.jpg | 12\n"
                                                                   "    b | 0\n"
                                                                   "check files \"<run>/nothing\" is\n"
                                                                   "clipboard picture 7\n"
                                                                   "programs fail\n"
                                                                   "open probe --path \"<run>/server/x.exe\"\n"
                                                                   "set DTPicker1 \"1990-05-01\"\n"
                                                                   "check DTPicker1 datetime \"1990-05-01 00:00:00\"\n"
                                                                   "set DTPicker1 \"2001-02-03 04:05:06\"\n"
                                                                   "check DTPicker1 datetime \"2001-02-03 04:05:06\"\n"
                                                                   "close\n"
                                                                   "check printed is\n"
                                                                   "check scanners is\n"),
            QStringLiteral("f"));
        QString output;
        QTextStream out(&output);
        ScenarioRunner runner(script, m_operations, out);
        QVERIFY2(runner.run() == 0, qPrintable(output));
        QCOMPARE(runner.platform().clipboardImage(), QByteArray(7, 'P'));
        QVERIFY(!runner.platform().startProgram(QStringLiteral("pelcap.exe"), {}, true));
        QVERIFY(m_calls.last().path.endsWith(QStringLiteral("/server/x.exe")));
        QVERIFY(!m_calls.last().path.contains(QStringLiteral("<run>")));
    }

    void testAPickerTakesOnlyADate()
    {
        QString output;
        QCOMPARE(run(QStringLiteral("open probe\nset DTPicker1 \"soon\"\nclose\n"), output), 1);
        QVERIFY2(output.contains(QStringLiteral("\"soon\" is no date (yyyy-MM-dd [HH:mm:ss])")), qPrintable(output));
    }

    void testPrintJobsAndImageSourcesAreChecked()
    {
        const ScenarioScript script = parseScenario(QStringLiteral("check printed is\n"
                                                                   "    \"\"\n"
                                                                   "    \"Line\\r\\n\"\n"
                                                                   "check scanners is \"select image source\"\n"),
            QStringLiteral("p"));
        QString output;
        QTextStream out(&output);
        ScenarioRunner runner(script, m_operations, out);
        runner.platform().printLines({{QString(), false, 10}, {QStringLiteral("Line\r\n"), false, 10}});
        runner.platform().selectImageSource();
        QVERIFY2(runner.run() == 0, qPrintable(output));
    }
};

QTEST_GUILESS_MAIN(TestScenarioRunner)
#include "TestScenarioRunner.moc"
