#include "script/ScenarioParser.h"

#include <QTest>

using namespace marlet;

Q_DECLARE_METATYPE(marlet::CommandId)

namespace {

// The arguments of a command in a stable order: "name=value" pairs, then rest, block and inner.
QString describe(const ScenarioCommand& command)
{
    QStringList parts;
    for (auto it = command.args.cbegin(); it != command.args.cend(); ++it)
        parts << it.key() + u'=' + it.value();
    parts.sort();
    if (!command.rest.isEmpty())
        parts << QStringLiteral("rest=[") + command.rest.join(u',') + u']';
    if (!command.block.isEmpty())
        parts << QStringLiteral("block=[") + command.block.join(u',') + u']';
    if (command.inner)
        parts << QStringLiteral("inner={") + describe(*command.inner) + u'}';
    return parts.join(QStringLiteral("; "));
}

} // namespace

class TestScenarioParser : public QObject
{
    Q_OBJECT

private slots:
    void testEveryCommandParses_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<CommandId>("id");
        QTest::addColumn<QString>("arguments");
        QTest::newRow("clock with seconds")
            << "clock 2026-11-21 10:00:00" << CommandId::Clock << "date=2026-11-21; time=10:00:00";
        QTest::newRow("clock without seconds")
            << "clock 2009-01-05 23:59" << CommandId::Clock << "date=2009-01-05; time=23:59";
        QTest::newRow("clock advance") << "clock advance 1500" << CommandId::ClockAdvance << "ms=1500";
        QTest::newRow("database new") << "database new" << CommandId::DatabaseNew << "";
        QTest::newRow("sql") << "sql \"INSERT INTO Users (Username) VALUES ('BOB')\"" << CommandId::Sql
                             << "statement=INSERT INTO Users (Username) VALUES ('BOB')";
        QTest::newRow("pref") << "pref Norvantis Option TPlen 5" << CommandId::Pref
                              << "application=Norvantis; key=TPlen; section=Option; value=5";
        QTest::newRow("pref with a quoted value") << "pref MyApp Settings Amount \"\"" << CommandId::Pref
                                                  << "application=MyApp; key=Amount; section=Settings; value=";
        QTest::newRow("printer") << "printer \"PDF\"" << CommandId::Printer << "name=PDF";
        QTest::newRow("no printer") << "printer none" << CommandId::Printer << "";
        QTest::newRow("component") << "component Vellum.Sheets" << CommandId::Component << "progid=Vellum.Sheets";
        QTest::newRow("failing component")
            << "component Brisling.Tidy fails" << CommandId::Component << "fails=true; progid=Brisling.Tidy";
        QTest::newRow("expect message") << "expect message \"Wrong Password!\" style 48" << CommandId::ExpectMessage
                                        << "style=48; text=Wrong Password!";
        QTest::newRow("expect message with options in any order")
            << "expect message \"Sure?\" style 292 answer Yes title \"Norvantis\"" << CommandId::ExpectMessage
            << "answer=yes; style=292; text=Sure?; title=Norvantis";
        QTest::newRow("expect input") << "expect input \"100\" prompt \"Quota?\" default \"100\" title Norvantis"
                                      << CommandId::ExpectInput
                                      << "answer=100; default=100; prompt=Quota?; title=Norvantis";
        QTest::newRow("expect a cancelled input") << "expect input \"\"" << CommandId::ExpectInput << "answer=";
        QTest::newRow("expect menu") << "expect menu \"&Delete Ticket\"" << CommandId::ExpectMenu
                                     << "item=&Delete Ticket";
        QTest::newRow("expect a dismissed menu") << "expect menu none" << CommandId::ExpectMenu << "";
        QTest::newRow("expect a menu item called none")
            << "expect menu \"none\"" << CommandId::ExpectMenu << "item=none";
        QTest::newRow("expect file") << "expect file \"/tmp/a.bmp\"" << CommandId::ExpectFile << "path=/tmp/a.bmp";
        QTest::newRow("expect a cancelled file dialog") << "expect file none" << CommandId::ExpectFile << "";
        QTest::newRow("expect colour") << "expect color 255" << CommandId::ExpectColor << "color=255";
        QTest::newRow("open with arguments") << "open load-gen-acc --user ADMINISTRATOR --power 0" << CommandId::Open
                                             << "operation=load-gen-acc; rest=[--user,ADMINISTRATOR,--power,0]";
        QTest::newRow("open without arguments") << "open demo" << CommandId::Open << "operation=demo";
        QTest::newRow("type") << "type Text1 \"123\"" << CommandId::Type << "control=Text1; text=123";
        QTest::newRow("type into an array element")
            << "type Text7(8) abc" << CommandId::Type << "control=Text7(8); text=abc";
        QTest::newRow("press a named key") << "press Text1 Enter" << CommandId::Press << "control=Text1; key=Enter";
        QTest::newRow("press a character") << "press Text1 \"x\"" << CommandId::Press << "control=Text1; key=x";
        QTest::newRow("press a key code") << "press Text1 46" << CommandId::Press << "control=Text1; key=46";
        QTest::newRow("set") << "set Text1 \"abc\"" << CommandId::Set << "control=Text1; text=abc";
        QTest::newRow("tab out of") << "tab out of Text1" << CommandId::TabOut << "control=Text1";
        QTest::newRow("focus") << "focus Text2" << CommandId::Focus << "control=Text2";
        QTest::newRow("click by label") << "click \"&Generate New Ticket(s)\"" << CommandId::Click
                                        << "control=&Generate New Ticket(s)";
        QTest::newRow("pick by text") << "pick Combo1 \"Never Expire\"" << CommandId::Pick
                                      << "control=Combo1; item=Never Expire";
        QTest::newRow("pick by index") << "pick Combo1 #2" << CommandId::Pick << "control=Combo1; index=2";
        QTest::newRow("pick a quoted text that looks like an index")
            << "pick Combo1 \"#2\"" << CommandId::Pick << "control=Combo1; item=#2";
        QTest::newRow("tick") << "tick Check1" << CommandId::Tick << "control=Check1";
        QTest::newRow("untick") << "untick Check1" << CommandId::Untick << "control=Check1";
        QTest::newRow("choose a tab") << "tab GenTab 4" << CommandId::ChooseTab << "control=GenTab; tab=4";
        QTest::newRow("choose a tab that is refused")
            << "tab GenTab 2 refused" << CommandId::ChooseTab << "control=GenTab; refused=true; tab=2";
        QTest::newRow("drop down") << "drop down Combo1" << CommandId::DropDown << "control=Combo1";
        QTest::newRow("grid click") << "grid PrintList click row 2 col 3" << CommandId::GridClick
                                    << "button=click; col=3; control=PrintList; row=2";
        QTest::newRow("grid right click") << "grid PrintList right-click row 2" << CommandId::GridClick
                                          << "button=right-click; control=PrintList; row=2";
        QTest::newRow("at yield") << "at yield 5 click Command6" << CommandId::AtYield
                                  << "n=5; inner={control=Command6}";
        QTest::newRow("close") << "close" << CommandId::Close << "";
        QTest::newRow("close refused") << "close refused" << CommandId::Close << "refused=true";
        QTest::newRow("check a text") << "check Text1 text \"50\"" << CommandId::CheckControl
                                      << "control=Text1; expected=50; property=text";
        QTest::newRow("check enabled") << "check Text1 enabled false" << CommandId::CheckControl
                                       << "control=Text1; expected=false; property=enabled";
        QTest::newRow("check an item") << "check Combo1 item(2) \"Never Expire\"" << CommandId::CheckControl
                                       << "control=Combo1; expected=Never Expire; property=item(2)";
        QTest::newRow("check a cell") << "check PrintList cell(1,3) 60min(s)" << CommandId::CheckControl
                                      << "control=PrintList; expected=60min(s); property=cell(1,3)";
        QTest::newRow("check grid rows") << "check PrintList rows 11" << CommandId::CheckControl
                                         << "control=PrintList; expected=11; property=rows";
        QTest::newRow("check form caption") << "check form caption \"Generate Ticket\"" << CommandId::CheckForm
                                            << "expected=Generate Ticket; property=caption";
        QTest::newRow("check focus") << "check focus Text2" << CommandId::CheckFocus << "control=Text2";
        QTest::newRow("check messages shown") << "check messages shown 3" << CommandId::CheckMessages << "count=3";
        QTest::newRow("check no pending messages") << "check no pending messages" << CommandId::CheckNoPending << "";
        QTest::newRow("check slept") << "check slept 550" << CommandId::CheckCount << "count=550; what=slept";
        QTest::newRow("check yields") << "check yields 10" << CommandId::CheckCount << "count=10; what=yields";
        QTest::newRow("check a log with one row")
            << "check forms is GenAcc" << CommandId::CheckLog << "log=forms; block=[GenAcc]";
        QTest::newRow("check rows with one value")
            << "check rows \"select count(*) from Account\" is \"10\"" << CommandId::CheckRows
            << "query=select count(*) from Account; block=[10]";
        QTest::newRow("check pref") << "check pref MyApp Settings Number \"50\"" << CommandId::CheckPref
                                    << "application=MyApp; expected=50; key=Number; section=Settings";
        QTest::newRow("keywords in another case")
            << "EXPECT Message \"x\" STYLE 0" << CommandId::ExpectMessage << "style=0; text=x";
    }

    void testEveryCommandParses()
    {
        QFETCH(QString, line);
        QFETCH(CommandId, id);
        QFETCH(QString, arguments);
        const ScenarioScript script = parseScenario(
            QStringLiteral("\n  ") + line + QStringLiteral("  # comment\n"), QStringLiteral("t.scenario"));
        QVERIFY2(script.errors.isEmpty(), qPrintable(script.errors.join(u'\n')));
        QCOMPARE(script.commands.size(), 1);
        const ScenarioCommand& command = script.commands.first();
        QCOMPARE(command.id, id);
        QCOMPARE(describe(command), arguments);
        QCOMPARE(command.line, 2);
        QCOMPARE(command.source, line);
    }

    void testQuotedTextsTakeEscapes_data()
    {
        QTest::addColumn<QString>("quoted");
        QTest::addColumn<QString>("text");
        QTest::newRow("an escaped quote") << "\"say \\\"hi\\\"\""
                                          << "say \"hi\"";
        QTest::newRow("an escaped backslash") << "\"a\\\\b\""
                                              << "a\\b";
        QTest::newRow("a tab and a line break") << "\"a\\tb\\nc\""
                                                << "a\tb\nc";
        QTest::newRow("a carriage return before a line break") << "\"a\\r\\nb\""
                                                               << "a\r\nb";
        QTest::newRow("any other backslash stands for itself") << "\"C:\\Server\\pic\""
                                                               << "C:\\Server\\pic";
        QTest::newRow("a hash inside quotes") << "\"No. #1 # not a comment\""
                                              << "No. #1 # not a comment";
        QTest::newRow("trailing blanks") << "\"Wrong Password!  \""
                                         << "Wrong Password!  ";
        QTest::newRow("an empty text") << "\"\""
                                       << "";
    }

    void testQuotedTextsTakeEscapes()
    {
        QFETCH(QString, quoted);
        QFETCH(QString, text);
        const ScenarioScript script
            = parseScenario(QStringLiteral("set Text1 ") + quoted + QStringLiteral(" # done"), QStringLiteral("q"));
        QVERIFY2(script.errors.isEmpty(), qPrintable(script.errors.join(u'\n')));
        QCOMPARE(script.commands.first().arg(QStringLiteral("text")), text);
    }

    void testCommentsAndBlankLinesAreSkipped()
    {
        const ScenarioScript script = parseScenario(
            QStringLiteral("# a heading\n\n   \nclose # closes\n#2 is no comment?\n"), QStringLiteral("c"));
        QCOMPARE(script.commands.size(), 1);
        QCOMPARE(script.commands.first().line, 4);
        QCOMPARE(script.errors, QStringList({QStringLiteral("c:5: unknown command #2\n  #2 is no comment?")}));
    }

    void testErrorsNameTheLineAndWhatIsWrong_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("error");
        QTest::newRow("an unknown command") << "jump Text1"
                                            << "unknown command jump";
        QTest::newRow("an unterminated quote") << "type Text1 \"abc"
                                               << "unterminated quoted text";
        QTest::newRow("text glued to a quote") << "type Text1 \"abc\"def"
                                               << "a blank must follow the closing quote";
        QTest::newRow("a missing argument") << "type Text1"
                                            << "missing <text>; expected type <control> <text>";
        QTest::newRow("an extra argument") << "click Command1 twice"
                                           << "unexpected twice; expected click <control>";
        QTest::newRow("a number that is not one") << "clock advance soon"
                                                  << "soon is not a valid int for <ms>; expected clock advance "
                                                     "<ms:int>\n  or clock <date:date> <time:time>";
        QTest::newRow("an invalid date") << "clock 2026-13-01 10:00"
                                         << "2026-13-01 is not a valid date for <date>; expected clock advance "
                                            "<ms:int>\n  or clock <date:date> <time:time>";
        QTest::newRow("an unknown answer")
            << "expect message \"x\" style 0 answer maybe"
            << "maybe is not a valid choice for <answer>; expected expect message <text> style <style:int> [title "
               "<title>] [answer <answer:ok|cancel|abort|retry|ignore|yes|no>]\n  or expect input <answer> [prompt "
               "<prompt>] [title <title>] [default <default>]\n  or expect menu none\n  or expect menu <item>\n  or "
               "expect file none\n  or expect file <path>\n  or expect color none\n  or expect color <color:int>";
        QTest::newRow("an option given twice") << "close refused refused"
                                               << "unexpected refused; expected close [refused]";
        QTest::newRow("a message without its style") << "expect message \"x\""
                                                     << "missing style; expected expect message";
        QTest::newRow("an unknown property") << "check Text1 colour 5"
                                             << "colour is not a valid prop for <property>";
        QTest::newRow("an unknown key") << "press Text1 Delete"
                                        << "Delete is not a valid key for <key>";
        QTest::newRow("a bad command after at yield") << "at yield 2 jump"
                                                      << "unknown command jump";
    }

    void testErrorsNameTheLineAndWhatIsWrong()
    {
        QFETCH(QString, line);
        QFETCH(QString, error);
        const ScenarioScript script = parseScenario(
            QStringLiteral("close\n\n") + line + QStringLiteral("\nclose\n"), QStringLiteral("e.scenario"));
        QCOMPARE(script.errors.size(), 1);
        const QString prefix = QStringLiteral("e.scenario:3: ");
        QVERIFY2(script.errors.first().startsWith(prefix + error), qPrintable(script.errors.first()));
        QVERIFY(script.errors.first().endsWith(QStringLiteral("\n  ") + line));
        QCOMPARE(script.commands.size(), 2);
    }

    void testEveryErrorOfAScriptIsReported()
    {
        const ScenarioScript script = parseScenario(QStringLiteral("jump\nclose\ntype\n\"open\n"), QStringLiteral("m"));
        QCOMPARE(script.errors.size(), 3);
        QVERIFY(script.errors[0].startsWith(QStringLiteral("m:1: ")));
        QVERIFY(script.errors[1].startsWith(QStringLiteral("m:3: ")));
        QVERIFY(script.errors[2].startsWith(QStringLiteral("m:4: unterminated")));
    }

    void testIndentedRowsBelowACheckAreItsExpectedRows()
    {
        const QString source = QStringLiteral("  check rows \"select Username, Type from Users\" is   # all staff\n"
                                              "      ADMINISTRATOR | ADMINISTRATOR   # the built-in one\n"
                                              "      # a comment among the rows\n"
                                              "      \"  BOB | STAFF # really \"\n"
                                              "      #1 | none\n"
                                              "  check rows \"select 1 where 0\" is\n"
                                              "  close\n");
        const ScenarioScript script = parseScenario(source, QStringLiteral("b"));
        QVERIFY2(script.errors.isEmpty(), qPrintable(script.errors.join(u'\n')));
        QCOMPARE(script.commands.size(), 3);
        QCOMPARE(script.commands[0].block,
            QStringList({QStringLiteral("ADMINISTRATOR | ADMINISTRATOR"),
                QStringLiteral("  BOB | STAFF # really "),
                QStringLiteral("#1 | none")}));
        QCOMPARE(script.commands[1].block, QStringList());
        QCOMPARE(script.commands[1].line, 6);
        QCOMPARE(script.commands[2].id, CommandId::Close);
    }

    void testABlankLineEndsABlock()
    {
        const ScenarioScript script
            = parseScenario(QStringLiteral("check forms is\n  Demo\n\n  close\n"), QStringLiteral("b"));
        QVERIFY2(script.errors.isEmpty(), qPrintable(script.errors.join(u'\n')));
        QCOMPARE(script.commands.size(), 2);
        QCOMPARE(script.commands[0].block, QStringList({QStringLiteral("Demo")}));
    }

    void testAQuotedRowMustStandAlone()
    {
        const ScenarioScript script
            = parseScenario(QStringLiteral("check forms is\n  \"Demo\" extra\n"), QStringLiteral("b"));
        QCOMPARE(script.errors,
            QStringList({QStringLiteral("b:2: a quoted row must be one quoted text\n  \"Demo\" extra")}));
    }

    void testTheSyntaxListNamesEveryCommand()
    {
        const QStringList syntax = scenarioSyntax();
        QVERIFY(syntax.contains(QStringLiteral("type <control> <text>")));
        QVERIFY(syntax.contains(QStringLiteral("at yield <n:int> <command:command>")));
        QVERIFY(syntax.contains(QStringLiteral("slide <control> <value:int>")));
        QVERIFY(syntax.contains(QStringLiteral("serial ports <state:work|none>")));
        QVERIFY(syntax.contains(QStringLiteral("component <progid> [fails] [built-in]")));
        QVERIFY(syntax.contains(QStringLiteral("file <path> size <bytes:int>")));
        QVERIFY(syntax.contains(QStringLiteral("check files <folder> is <expected:block>")));
        QVERIFY(syntax.contains(QStringLiteral("write file <path> <form:lines|records> <content:block>")));
        QVERIFY(syntax.contains(
            QStringLiteral("check file <path> <form:lines|records> line <line:int> is <expected:block>")));
        QVERIFY(syntax.contains(QStringLiteral("machine new")));
        QCOMPARE(syntax.size(), 52);
    }
};

QTEST_GUILESS_MAIN(TestScenarioParser)
#include "TestScenarioParser.moc"
