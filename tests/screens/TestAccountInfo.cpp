#include "component/Component.h"
#include "component/ScreenRegistry.h"
#include "inventory/BinReport.h"
#include "platform/Form.h"
#include "platform/Operator.h"
#include "script/ScriptedPlatform.h"
#include "store/Recordset.h"
#include "support/ScriptedCafe.h"

#include <QTemporaryDir>
#include <QTest>

namespace marlet {

namespace {

QString latin(const char* text)
{
    return QLatin1String(text);
}

// A member ticket sold through the point of sale, in Account and, under another name, in the bin.
const char* const MemberColumns
    = "(TicketGrp, TicketNo, Username, Password, Time, ByWhom, Days, DateCreated, Amount, OrgTime, LastUsed, NEW, "
      "ComputerUsed, AccountAdded, NoAdded, POS, Member, Autorecharge, Reday, Retime, Night, Once, TotalTimeUsed, "
      "NoLogIn, Print)";
const char* const MemberValues
    = "('MEM001', '000', '{}', 'P', 600, 'ADMINISTRATOR', 1, '2026-11-01', 'N5', 600, '2026-11-01', true, 'NONE', "
      "'NONE', 0, true, true, '7 day(s)', 'SUNDAY', '5 mins', false, false, 0, 3, 1)";

} // namespace

// The ticket information screen's page on the printer, its printer failure, and the tests of its
// reports that a Null makes fail: a failed test counts as passed.
class TestAccountInfo : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void testThePrintedPageHasTheTitleTheCaptionAndTheReport();
    void testAFailedJobShowsPrinterErrorOnly();
    void testNullFactsCountAsPassedTests_data();
    void testNullFactsCountAsPassedTests();
    void testTheBinReportOrdersTheSameFactsOtherwise();

private:
    void openScreen();
    void execute(const QString& statement);
    QString report(const char* table, BinReportKind kind);
    Control& control(const char* name) { return m_cafe->control(name); }

    std::unique_ptr<test::ScriptedCafe> m_cafe;
};

void TestAccountInfo::init()
{
    m_cafe = std::make_unique<test::ScriptedCafe>();
    const QString problem = m_cafe->prepare();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    for (const char* table : {"Account", "RecycleBin"}) {
        execute(latin("INSERT INTO ") + latin(table) + latin(" ") + latin(MemberColumns) + latin(" Values ")
            + QString(latin(MemberValues)).replace(latin("{}"), latin("MEMBER1")));
    }
    execute(latin("INSERT INTO POS (Username, ByWhom) Values ('MEMBER1', 'CLERK')"));
}

void TestAccountInfo::cleanup()
{
    const QStringList failures = m_cafe->finish();
    m_cafe.reset();
    QCOMPARE(failures, QStringList());
}

void TestAccountInfo::openScreen()
{
    m_cafe->open(Screen::AccountInfo);
}

void TestAccountInfo::execute(const QString& statement)
{
    QVERIFY2(m_cafe->database.connection().Execute(Statement(statement)),
        qPrintable(m_cafe->database.connection().lastError()));
}

QString TestAccountInfo::report(const char* table, BinReportKind kind)
{
    Recordset row;
    if (!row.Open(Statement(latin("select * from ") + latin(table) + latin(" where Username = 'MEMBER1'")),
            m_cafe->database.connection())
        || row.RecordCount() != 1)
        return latin("no row: ") + row.lastError();
    return binReport(row, kind, BinReportOptions {}, [](const QString& username) -> QString {
        return latin("seller of ") + username;
    });
}

void TestAccountInfo::testThePrintedPageHasTheTitleTheCaptionAndTheReport()
{
    m_cafe->platform.setDefaultPrinter(latin("PDF"));
    openScreen();
    Operator::type(control("Text2"), latin("MEMBER1"));
    QVERIFY(Operator::click(control("OKButton")));
    const QString shown = control("Text1").text();
    QVERIFY(shown.startsWith(latin("TicketGrp/No: \tMEM001 - 000\r\n")));

    m_cafe->platform.expectMessage(latin("Ticket Information Printed Successfully!"), MsgStyle::Info);
    QVERIFY(Operator::click(control("Command1")));
    const QList<PrintedLine> page = {
        {latin("Norvantis v2.3.1"), true, 14},
        {latin("------------"), true, 14},
        {QString(), true, 14},
        {latin("Ticket Information"), true, 12},
        {QString(), true, 12},
        {shown, false, 12},
    };
    QCOMPARE(m_cafe->platform.printJobs().size(), 1);
    QCOMPARE(m_cafe->platform.printJobs().first(), page);
}

void TestAccountInfo::testAFailedJobShowsPrinterErrorOnly()
{
    m_cafe->platform.setDefaultPrinter(latin("PDF"));
    m_cafe->platform.setPrintingWorks(false);
    openScreen();
    control("Text1").setText(latin("a report"));
    m_cafe->platform.expectMessage(latin("Printer Error!"), MsgStyle::Stop);
    QVERIFY(Operator::click(control("Command1")));
    QCOMPARE(m_cafe->platform.messages().size(), size_t(1));
    QVERIFY(m_cafe->platform.printJobs().isEmpty());
}

void TestAccountInfo::testNullFactsCountAsPassedTests_data()
{
    QTest::addColumn<QString>("assignments");
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QStringList>("absent");
    const QString schedule = latin("AutoRecharge: \t7 day(s)\r\nAccount Day(s): \tSUNDAY\r\n");
    const QString recharge = latin("AutoCharge Time: \t5 mins\r\n");
    const QString seller = latin("POS/Activated By: \tseller of MEMBER1\r\n");
    QTest::newRow("a member sold at the point of sale shows all three")
        << latin("Member = true") << QStringList {schedule, recharge, seller} << QStringList {};
    QTest::newRow("a Null member shows the schedule")
        << latin("Member = NULL") << QStringList {latin("Member Account: \t\r\n") + schedule} << QStringList {};
    QTest::newRow("a plain ticket has no schedule but its recharge time")
        << latin("Member = false") << QStringList {latin("Member Account: \tFalse\r\n") + recharge}
        << QStringList {schedule};
    QTest::newRow("NONE takes the recharge time away")
        << latin("Autorecharge = 'NONE'") << QStringList {latin("AutoRecharge: \tNONE\r\n")} << QStringList {recharge};
    QTest::newRow("a Null recharge text shows the recharge time")
        << latin("Autorecharge = NULL") << QStringList {recharge} << QStringList {};
    QTest::newRow("a ticket not sold at the point of sale has no seller")
        << latin("POS = false") << QStringList {} << QStringList {latin("POS/Activated By")};
    QTest::newRow("a Null point-of-sale flag asks for the seller")
        << latin("POS = NULL") << QStringList {seller} << QStringList {};
}

void TestAccountInfo::testNullFactsCountAsPassedTests()
{
    QFETCH(QString, assignments);
    QFETCH(QStringList, present);
    QFETCH(QStringList, absent);
    execute(latin("UPDATE Account SET ") + assignments);
    const QString text = report("Account", BinReportKind::Ticket);
    QVERIFY(text.endsWith(latin("\r\n")));
    for (const QString& part : present)
        QVERIFY2(text.contains(part), qPrintable(ScriptedPlatform::visible(text)));
    for (const QString& part : absent)
        QVERIFY2(!text.contains(part), qPrintable(ScriptedPlatform::visible(text)));
}

void TestAccountInfo::testTheBinReportOrdersTheSameFactsOtherwise()
{
    const QStringList ticket = report("Account", BinReportKind::Ticket).split(latin("\r\n"));
    const QStringList inBin = report("RecycleBin", BinReportKind::TicketInBin).split(latin("\r\n"));
    // The ticket's report ends with a line end, the bin's does not.
    QCOMPARE(ticket.last(), QString());
    QCOMPARE(inBin.last(), latin("POS/Activated By: \tseller of MEMBER1"));
    QCOMPARE(inBin.first(), latin("TicketGrp&No: \tMEM001 - 000"));
    QCOMPARE(ticket.first(), latin("TicketGrp/No: \tMEM001 - 000"));
    // Lines 2 to 11 are alike.
    QCOMPARE(inBin.mid(1, 10), ticket.mid(1, 10));
    QCOMPARE(inBin.mid(11, 8),
        QStringList({latin("# of LogIn(s): \t3 page(s)"),
            latin("# of Print(s): \t1"),
            latin("Ticket Added: \tNONE"),
            latin("# of Acct(s) Added: \t0"),
            latin("Ticket Added: \tNONE"),
            latin("Member Account: \tTrue"),
            latin("AutoRecharge: \t7 day(s)"),
            latin("Account Day(s): \tSUNDAY")}));
    QCOMPARE(ticket.mid(11, 8),
        QStringList({latin("# of LogIn(s): \t3"),
            latin("# of Print(s): \t1 page(s)"),
            latin("Ticket Added: \tNONE"),
            latin("Member Account: \tTrue"),
            latin("AutoRecharge: \t7 day(s)"),
            latin("Account Day(s): \tSUNDAY"),
            latin("AutoCharge Time: \t5 mins"),
            latin("# of Acct(s) Added: \t0")}));
}

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestAccountInfo)
#include "TestAccountInfo.moc"
