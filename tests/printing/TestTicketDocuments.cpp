#include "printing/TicketDocuments.h"

#include "printing/LoginCode.h"

#include "support/HtmlOutline.h"
#include "support/PrintingFixture.h"

#include <QTest>

using namespace marlet;
using namespace marlet::test;

namespace {

const QString CrLf = QStringLiteral("\r\n");
const QString StopQuestion = QStringLiteral("Ticket already generated, Cancel Preview?");

enum class Design { Small, Medium, Large };

QString lines(const QStringList& pieces)
{
    QString text;
    for (const QString& piece : pieces)
        text += CrLf + piece;
    return text;
}

QString head(const QString& design, const QString& fontSize, const QStringList& styles)
{
    return lines(QStringList {QStringLiteral("<html>"),
                     QStringLiteral("<head>"),
                     QStringLiteral("<title>Norvantis - ") + design + QStringLiteral(" Ticket</title>"),
                     QStringLiteral("<meta http-equiv='Content-Type' content='text/html; charset=iso-8859-1'>"),
                     QStringLiteral("<script language=javascript>function Nomouse(){if (event.button==2){"),
                     QStringLiteral("alert('You cannot right click!')}}"),
                     QStringLiteral("document.onmousedown=Nomouse</script>"),
                     QStringLiteral("<style type='text/css'>"),
                     QStringLiteral("<!--"),
                     QStringLiteral("body,td,th {"),
                     QStringLiteral("    font-family: Arial, Helvetica, sans-serif;"),
                     QStringLiteral("    font-size: ") + fontSize + u';',
                     QStringLiteral("}")}
        + styles + QStringList {QStringLiteral("-->"), QStringLiteral("</style></head>"), QStringLiteral("<body>")});
}

bool write(PrintingFixture& f, Design design, const QString& group = TicketSetup().group)
{
    std::unique_ptr<Recordset> tickets = f.openGroup(group);
    TicketDocuments documents(*f.screen);
    switch (design) {
    case Design::Small:
        return documents.WriteSmallTickets(*tickets);
    case Design::Medium:
        return documents.WriteMediumTickets(*tickets);
    case Design::Large:
        return documents.WriteLargeTickets(*tickets);
    }
    return false;
}

// A night ticket with a fixed date, as the box tests show it.
TicketSetup nightTicket()
{
    TicketSetup t;
    t.group = QStringLiteral("261121104512");
    t.number = 7;
    t.username = QStringLiteral("NVT1234567");
    t.password = QStringLiteral("54321");
    t.seconds = 5430; // 90.5 minutes
    t.amount = QStringLiteral("N100");
    t.expire = QDateTime(QDate(2026, 12, 5), QTime(0, 0));
    t.night = true;
    t.start = QTime(22, 0);
    t.end = QTime(6, 0);
    return t;
}

} // namespace

class TestTicketDocuments : public QObject
{
    Q_OBJECT

private slots:
    void testMediumPageOfOneTicket();
    void testSmallBox();
    void testLargeBox();
    void testStatusText_data();
    void testStatusText();
    void testExpiryText_data();
    void testExpiryText();
    void testHeadingCut_data();
    void testHeadingCut();
    void testThirtyOneTicketsOnTheMediumPage();
    void testFiftyTwoTicketsOnTheSmallPageLeaveTheLastOut();
    void testLargePageIsOpenedButNotWritten();
    void testLargePageKeepsWhatBlock300Flushed();
    void testStopBetweenBlocks_data();
    void testStopBetweenBlocks();
    void testStopInTheLastMediumBlockLeavesThePageUnwritten();
    void testMissingPageFileFails();
    void testPageIsLatin1WithCarriageReturns();
    void testPageIsReadableByItsOwnerOnly();
    void testSamples_data();
    void testSamples();
    void testPageStructure_data();
    void testPageStructure();
    void testLoginTemplatePutsACodeUnderEachBox_data();
    void testLoginTemplatePutsACodeUnderEachBox();
};

void TestTicketDocuments::testMediumPageOfOneTicket()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTicket(nightTicket()));

    QVERIFY(write(f, Design::Medium, nightTicket().group));

    const QString expected = head(QStringLiteral("Medium"),
                                 QStringLiteral("10px"),
                                 {QStringLiteral(".style4 {font-size: 10px; font-weight: bold; color: #000000; }"),
                                     QStringLiteral(".style5 {font-size: 7; color: #000000}"),
                                     QStringLiteral(".style7 {font-size: 8}")})
        + lines({
            QStringLiteral("<table width='670' border='0' cellpadding='2'>"),
            QStringLiteral("  <tr>"),
            QStringLiteral("    <td width='33%'>"),
            QStringLiteral("    <table width='100%'  border='1' cellpadding='1' cellspacing='0' "
                           "bordercolor='#000000'>"),
            QStringLiteral("      <tr align='center' bordercolor='#000000' bgcolor='#FFFFFF'>"),
            QStringLiteral("        <td><span class='style4'>Norvantis</span><em><br>"),
            QStringLiteral("          <div align='right' class='style5'>Norvantis</em><br>"),
            QStringLiteral("          </div></td>"),
            QStringLiteral("        <td bgcolor='#FFFFFF'><div align='left' class='style7'> Time "
                           "Ticket [10:00PM-06:00AM] "),
            QStringLiteral("          (Printed:21-Nov-26)</div></td>"),
            QStringLiteral("      </tr>"),
            QStringLiteral("      <tr bordercolor='#000000'>"),
            QStringLiteral("        <td colspan='2'><p align='center'><strong>Username: "
                           "NVT1234567<br>"),
            QStringLiteral("  Password: 54321</strong></p>          </td>"),
            QStringLiteral("        </tr>"),
            QStringLiteral("      <tr bordercolor='#000000'>"),
            QStringLiteral("        <td><strong>Cost:</strong> N100</td>"),
            QStringLiteral("        <td width='50%'><strong>Time:</strong> 90min(s)</td>"),
            QStringLiteral("      </tr>"),
            QStringLiteral("      <tr bordercolor='#000000'>"),
            QStringLiteral("        <td><div align='left'><strong>Expire:</strong> "
                           "05-Dec-26</div></td>"),
            QStringLiteral("        <td><div align='left'><strong>261121104512-0007</strong>"
                           "</div></td>"),
            QStringLiteral("      </tr>"),
            QStringLiteral("    </table></td>"),
            QStringLiteral("  </td>"),
            QStringLiteral("    <td width='33%'>"),
            QStringLiteral("  </td>"),
            QStringLiteral("    <td width='33%'>"),
            QStringLiteral("  </td>"),
            QStringLiteral("  </tr>"),
            QStringLiteral("</body>"),
            QStringLiteral("</html>"),
        });
    const QString page = f.page();
    QVERIFY2(page == expected, qPrintable(ScriptedPlatform::describeDifference(expected, page)));
    QCOMPARE(f.platform.documentsOpened(), QStringList {f.pagePath()});
    QVERIFY(!f.screen->busy());
}

void TestTicketDocuments::testSmallBox()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTicket(nightTicket()));

    QVERIFY(write(f, Design::Small, nightTicket().group));

    const QString box = lines({
        QStringLiteral("    <td width='33%'>"),
        QStringLiteral(
            "      <table width='100%'  border='1' cellpadding='1' cellspacing='0' bordercolor='#000000'><tr "
            "align='center' bordercolor='#000000'>"),
        QStringLiteral("        <td colspan='4'><div align='center'><span class='style10'>*Norvantis</span><em> "
                       "(Norvantis)</em><br>"),
        QStringLiteral("          </div>"),
        QStringLiteral("          <div align='right' class='style5'></div>          <div align='left' "
                       "class='style7'></div></td>"),
        QStringLiteral("      </tr>"),
        QStringLiteral("      <tr bordercolor='#000000'>"),
        QStringLiteral("        <td colspan='2'><p align='center'><strong>User: NVT1234567<br>"),
        QStringLiteral("  </strong></p>          </td>"),
        QStringLiteral("        <td colspan='2'><div align='center'><strong>Pwd: 54321</strong></div></td>"),
        QStringLiteral("      </tr>"),
        QStringLiteral("      <tr bordercolor='#000000'>"),
        QStringLiteral("        <td> <div align='center'>N100</div></td>"),
        QStringLiteral("        <td><div align='center'>90min(s)</div></td>"),
        QStringLiteral("        <td width='25%'><div align='center'>05-Dec-26</div></td>"),
        QStringLiteral("        <td width='25%'><div align='center'>+4512-0007</div></td>"),
        QStringLiteral("      </tr></table>"),
        QStringLiteral("    </td>"),
        QStringLiteral("  </td>"),
    });
    const QString page = f.page();
    QVERIFY2(page.contains(box), qPrintable(page));
    QVERIFY(page.startsWith(head(QStringLiteral("Small"),
                                QStringLiteral("9px"),
                                {QStringLiteral(".style5 {color: #000000}"),
                                    QStringLiteral(".style7 {font-size: 9}"),
                                    QStringLiteral(".style10 {font-size: 11px; font-weight: bold; color: #000000; }")})
        + lines({QStringLiteral("<table width='670' border='0' cellpadding='2'>"), QStringLiteral("  <tr>")})));
    // One grid table for the whole page, closed at its end; the page is not shown.
    QVERIFY(page.endsWith(lines({QStringLiteral("  </tr>"),
        QStringLiteral("</table>"),
        QStringLiteral("</body>"),
        QStringLiteral("</html>")})));
    QVERIFY(f.platform.documentsOpened().isEmpty());
}

void TestTicketDocuments::testLargeBox()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    // The Large page reaches the file only from block 300 on: enough tickets to get there.
    QVERIFY(f.addTickets(321, nightTicket()));

    QVERIFY(write(f, Design::Large, nightTicket().group));

    const QString box = lines({
        QStringLiteral("    <td width='50%'>"),
        QStringLiteral("    <table width='100%'  border='1' cellpadding='1' cellspacing='0' bordercolor='#000000'>"),
        QStringLiteral("      <tr align='center' bordercolor='#000000'>"),
        QStringLiteral("        <td colspan='4'><span class='style4'>Norvantis </span>           (Time Ticket "
                       "[10:00PM-06:00AM])"),
        QStringLiteral("          <div align='right' class='style5'></div></td>"),
        QStringLiteral("      </tr>"),
        QStringLiteral("      <tr bordercolor='#000000'>"),
        QStringLiteral("        <td colspan='2'><p><strong>Username:</strong> USER001<br>"),
        QStringLiteral("          </p>          </td>"),
        QStringLiteral("        <td colspan='2'><strong>Password:</strong> P0001</td>"),
        QStringLiteral("      </tr>"),
        QStringLiteral("      <tr bordercolor='#000000'>"),
        QStringLiteral("        <td width='30%'><strong>Time:</strong> 90min(s))</td>"),
        QStringLiteral("        <td colspan='2'><strong>Expire:</strong> 05-Dec-26</td>"),
        QStringLiteral("        <td width='30%'><strong>Cost:</strong> N100 </td>"),
        QStringLiteral("      </tr>"),
        QStringLiteral("      <tr bordercolor='#000000'>"),
        QStringLiteral("        <td colspan='2'><em>Norvantis</em><br>"),
        QStringLiteral("            <span class='style6'>(Printed: 21-Nov-26) </span></td>"),
        QStringLiteral("        <td colspan='2'><strong>Grp-No:</strong> 261121104512-0001<br>"),
        QStringLiteral("            <strong>Printed by:</strong> ADMINISTRATOR</td>"),
        QStringLiteral("      </tr>"),
        QStringLiteral("    </table></td>"),
        QStringLiteral("  </td>"),
    });
    const QString page = f.page();
    QVERIFY2(page.contains(box), qPrintable(page.left(6000)));
    QVERIFY(page.contains(QStringLiteral("<title>Norvantis - Large Ticket</title>")));
}

void TestTicketDocuments::testStatusText_data()
{
    QTest::addColumn<bool>("night");
    QTest::addColumn<QVariant>("autorecharge");
    QTest::addColumn<QVariant>("flexy");
    QTest::addColumn<QString>("expected");

    QTest::newRow("a ticket without time frame is all day") << false << QVariant() << QVariant() << "All Day";
    QTest::newRow("recharge and flexy follow the time frame in that order")
        << true << QVariant(QStringLiteral("1 day(s)")) << QVariant(true)
        << "Time Ticket [10:00PM-06:00AM]/ReCharge/Flexy";
    QTest::newRow("a recharge of NONE adds nothing")
        << false << QVariant(QStringLiteral("NONE")) << QVariant(false) << "All Day";
    QTest::newRow("flexy alone") << false << QVariant() << QVariant(true) << "All Day/Flexy";
    QTest::newRow("a recharge alone") << false << QVariant(QStringLiteral("5 day(s)")) << QVariant(false)
                                      << "All Day/ReCharge";
}

void TestTicketDocuments::testStatusText()
{
    QFETCH(bool, night);
    QFETCH(QVariant, autorecharge);
    QFETCH(QVariant, flexy);
    QFETCH(QString, expected);

    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    TicketSetup t = nightTicket();
    t.group = QStringLiteral("261121100000");
    t.night = night;
    t.autorecharge = autorecharge;
    t.flexy = flexy;
    QVERIFY(f.addTicket(t));

    QVERIFY(write(f, Design::Medium));

    const QString line = QStringLiteral("<div align='left' class='style7'> ") + expected + u' ' + CrLf;
    QVERIFY2(f.page().contains(line), qPrintable(f.page()));
}

void TestTicketDocuments::testExpiryText_data()
{
    QTest::addColumn<int>("design");
    QTest::addColumn<double>("days");
    QTest::addColumn<QVariant>("expire");
    QTest::addColumn<QString>("expected");

    const QVariant date = QDateTime(QDate(2027, 1, 9), QTime(0, 0));
    QTest::newRow("days above 0 win over a date") << int(Design::Medium) << 5.0 << date << "5day(s)";
    QTest::newRow("a fixed date") << int(Design::Medium) << 0.0 << date << "09-Jan-27";
    QTest::newRow("neither days nor a date on the medium design") << int(Design::Medium) << 0.0 << QVariant() << "None";
    QTest::newRow("neither days nor a date on the small design")
        << int(Design::Small) << 0.0 << QVariant() << "No Expire";
    QTest::newRow("days on the small design") << int(Design::Small) << 30.0 << QVariant() << "30day(s)";
}

void TestTicketDocuments::testExpiryText()
{
    QFETCH(int, design);
    QFETCH(double, days);
    QFETCH(QVariant, expire);
    QFETCH(QString, expected);

    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    TicketSetup t = nightTicket();
    t.group = QStringLiteral("261121100000");
    t.days = days;
    t.expire = expire;
    QVERIFY(f.addTicket(t));

    QVERIFY(write(f, Design(design)));

    const QString cell = Design(design) == Design::Small
        ? QStringLiteral("<td width='25%'><div align='center'>") + expected + QStringLiteral("</div>")
        : QStringLiteral("<strong>Expire:</strong> ") + expected + QStringLiteral("</div>");
    QVERIFY2(f.page().contains(cell), qPrintable(f.page()));
}

void TestTicketDocuments::testHeadingCut_data()
{
    QTest::addColumn<int>("design");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("titleShown");
    QTest::addColumn<QString>("addressShown");

    const QString twenty = QStringLiteral("Harbour Cafe Lagos 1");
    const QString twentyOne = QStringLiteral("Harbour Cafe Lagos 12");
    QTest::newRow("twenty characters are not cut") << int(Design::Medium) << twenty << twenty << twenty << twenty;
    QTest::newRow("twenty-one characters give twenty and dots")
        << int(Design::Medium) << twentyOne << twentyOne << twenty + QStringLiteral("...")
        << twenty + QStringLiteral("...");
    QTest::newRow("the small design cuts the title after seventeen")
        << int(Design::Small) << QStringLiteral("Harbour Cafe Lago") + QStringLiteral("s") << twenty
        << QStringLiteral("Harbour Cafe Lago...") << twenty;
    QTest::newRow("the small design keeps a title of seventeen")
        << int(Design::Small) << QStringLiteral("Harbour Cafe Lago") << twentyOne << QStringLiteral("Harbour Cafe Lago")
        << twenty + QStringLiteral("...");
}

void TestTicketDocuments::testHeadingCut()
{
    QFETCH(int, design);
    QFETCH(QString, title);
    QFETCH(QString, address);
    QFETCH(QString, titleShown);
    QFETCH(QString, addressShown);

    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.setPreference(QStringLiteral("Title"), title);
    // The address key is written in the spelling the settings screen uses elsewhere.
    f.setPreference(QStringLiteral("address"), address);
    TicketSetup t = nightTicket();
    t.group = QStringLiteral("261121100000");
    t.night = false;
    QVERIFY(f.addTicket(t));

    QVERIFY(write(f, Design(design)));

    const QString page = f.page();
    if (Design(design) == Design::Small) {
        QVERIFY2(page.contains(QStringLiteral("<span class='style10'>") + titleShown + QStringLiteral("</span><em> (")
                     + addressShown + QStringLiteral(")</em><br>")),
            qPrintable(page));
    } else {
        QVERIFY2(page.contains(QStringLiteral("<span class='style4'>") + titleShown + QStringLiteral("</span>")),
            qPrintable(page));
        QVERIFY2(page.contains(QStringLiteral("class='style5'>") + addressShown + QStringLiteral("</em>")),
            qPrintable(page));
    }
}

void TestTicketDocuments::testThirtyOneTicketsOnTheMediumPage()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTickets(31));

    QVERIFY(write(f, Design::Medium));

    const QString page = f.page();
    QCOMPARE(page.count(QStringLiteral("<table width='670' border='0' cellpadding='2'>")), 2);
    QCOMPARE(page.count(QStringLiteral("border='1'")), 31);
    QCOMPARE(page.count(lines({QStringLiteral("<tr height=25><td></td></tr>"), QStringLiteral("</table>")})), 1);
    // The second block: the last ticket, then two cells that hold nothing; the grid table stays open.
    const qsizetype secondBlock = page.lastIndexOf(QStringLiteral("<table width='670'"));
    QVERIFY(page.indexOf(QStringLiteral("USER030"), secondBlock) < 0);
    QVERIFY(page.indexOf(QStringLiteral("USER031"), secondBlock) > 0);
    QVERIFY(page.endsWith(lines({QStringLiteral("    </table></td>"),
        QStringLiteral("  </td>"),
        QStringLiteral("    <td width='33%'>"),
        QStringLiteral("  </td>"),
        QStringLiteral("    <td width='33%'>"),
        QStringLiteral("  </td>"),
        QStringLiteral("  </tr>"),
        QStringLiteral("</body>"),
        QStringLiteral("</html>")})));
}

void TestTicketDocuments::testFiftyTwoTicketsOnTheSmallPageLeaveTheLastOut()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTickets(52));

    QVERIFY(write(f, Design::Small));

    const QString page = f.page();
    QCOMPARE(page.count(QStringLiteral("border='1'")), 51);
    QVERIFY(page.contains(QStringLiteral("User: USER051<br>")));
    QVERIFY(!page.contains(QStringLiteral("USER052")));
    QCOMPARE(page.count(QStringLiteral("<table width='670'")), 1);
    QVERIFY(page.endsWith(lines({QStringLiteral("  </tr>"),
        QStringLiteral("<tr height=5><td></td></tr>"),
        QStringLiteral("</table>"),
        QStringLiteral("</body>"),
        QStringLiteral("</html>")})));
}

void TestTicketDocuments::testLargePageIsOpenedButNotWritten()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTickets(30));

    QVERIFY(write(f, Design::Large));

    QVERIFY(f.pageBytes().isEmpty());
    QVERIFY(QFile::exists(f.pagePath()));
    QCOMPARE(f.platform.documentsOpened(), QStringList {f.pagePath()});
    QVERIFY(!f.screen->busy());
}

void TestTicketDocuments::testLargePageKeepsWhatBlock300Flushed()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    // Blocks start at 1, 24, ..., 300; 13 blocks of 22 boxes come before block 300, whose rows of two
    // are flushed while tickets remain: 11 rows, up to ticket 308. The block after 300 starts beyond
    // the count, so tickets 309 to 320 are never reached.
    QVERIFY(f.addTickets(320));

    QVERIFY(write(f, Design::Large));

    const QString page = f.page();
    QVERIFY(page.startsWith(CrLf + QStringLiteral("<html>")));
    QCOMPARE(page.count(QStringLiteral("border='1'")), 308);
    QVERIFY(page.contains(QStringLiteral("USER308<br>")));
    QVERIFY(!page.contains(QStringLiteral("USER309")));
    QVERIFY(page.endsWith(CrLf + QStringLiteral("  </tr>")));
    QVERIFY(!page.contains(QStringLiteral("</body>")));
    QCOMPARE(f.platform.documentsOpened(), QStringList {f.pagePath()});
}

void TestTicketDocuments::testStopBetweenBlocks_data()
{
    QTest::addColumn<int>("design");
    QTest::addColumn<int>("tickets");
    QTest::addColumn<bool>("cancel");
    QTest::addColumn<int>("boxes"); // in the file after the run
    QTest::addColumn<bool>("opened");

    QTest::newRow("medium, Stop then Yes: nothing written, nothing shown")
        << int(Design::Medium) << 61 << true << 0 << false;
    QTest::newRow("medium, Stop then No: the whole page") << int(Design::Medium) << 61 << false << 61 << true;
    QTest::newRow("small, the question comes even in the last block")
        << int(Design::Small) << 10 << false << 10 << false;
    QTest::newRow("small, Stop then Yes: nothing written") << int(Design::Small) << 10 << true << 0 << false;
    QTest::newRow("large, Stop then Yes still shows the page") << int(Design::Large) << 61 << true << 0 << true;
}

void TestTicketDocuments::testStopBetweenBlocks()
{
    QFETCH(int, design);
    QFETCH(int, tickets);
    QFETCH(bool, cancel);
    QFETCH(int, boxes);
    QFETCH(bool, opened);

    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTickets(tickets));
    f.screen->StopRequested = true; // a request left from before is forgotten when the page starts
    f.platform.atYield(1, [&f] { f.screen->StopRequested = true; });
    f.platform.expectMessage(StopQuestion, MsgStyle::YesNoQuestionNoDefault, cancel ? MsgResult::Yes : MsgResult::No);

    QVERIFY(write(f, Design(design)));

    f.platform.finish();
    QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    QCOMPARE(f.page().count(QStringLiteral("border='1'")), boxes);
    QCOMPARE(f.platform.documentsOpened().size(), opened ? 1 : 0);
    // A cancelled page leaves the request standing.
    QCOMPARE(f.screen->StopRequested, cancel);
}

void TestTicketDocuments::testStopInTheLastMediumBlockLeavesThePageUnwritten()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTickets(5));
    f.platform.atYield(1, [&f] { f.screen->StopRequested = true; });

    QVERIFY(write(f, Design::Medium));

    // The tickets end before the question would be asked.
    QVERIFY(f.platform.messages().empty());
    QVERIFY(f.pageBytes().isEmpty());
    QVERIFY(f.platform.documentsOpened().isEmpty());
    QVERIFY(f.screen->StopRequested);
}

void TestTicketDocuments::testMissingPageFileFails()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTickets(2));
    QVERIFY(QFile::remove(f.pagePath()));

    QVERIFY(!write(f, Design::Medium));
    QVERIFY(!TicketDocuments(*f.screen).WriteLargeSample());

    QVERIFY(!QFile::exists(f.pagePath()));
    QVERIFY(f.platform.documentsOpened().isEmpty());
}

void TestTicketDocuments::testPageIsLatin1WithCarriageReturns()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.setPreference(QStringLiteral("Title"), QStringLiteral("Caf\u00e9 Sol"));
    QVERIFY(f.addTickets(4));

    QVERIFY(write(f, Design::Medium));

    const QByteArray bytes = f.pageBytes();
    QVERIFY(bytes.startsWith("\r\n<html>\r\n<head>\r\n"));
    QVERIFY(bytes.contains("<span class='style4'>Caf\xe9 Sol</span>"));
    QCOMPARE(bytes.count('\n'), bytes.count("\r\n"));
    QVERIFY(!bytes.endsWith("\r\n"));
}

void TestTicketDocuments::testPageIsReadableByItsOwnerOnly()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTickets(2));
    QVERIFY(write(f, Design::Medium));
    // The page holds the tickets' passwords.
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QCOMPARE(QFile::permissions(f.pagePath()) & others, QFile::Permissions());
}

void TestTicketDocuments::testSamples_data()
{
    QTest::addColumn<int>("design");
    QTest::addColumn<int>("boxes");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<bool>("opened");

    QTest::newRow("small sample: 17 rows of 3, not shown")
        << int(Design::Small) << 51
        << QStringList {QStringLiteral("<span class='style10'>Norvantis Cybercafe</span><em> (36 Norvantis Office)"),
               QStringLiteral("User: ABCDEFGHOO<br>"),
               QStringLiteral("Pwd: ABCDEFGHOO<"),
               QStringLiteral("<div align='center'>N10000</div>"),
               QStringLiteral("<div align='center'>9999min(s)</div>"),
               QStringLiteral("<div align='center'>01/Jan/2005</div>"),
               QStringLiteral("<div align='center'>+0000-0000</div>")}
        << false;
    QTest::newRow("medium sample: 8 rows of 3 with its own styles")
        << int(Design::Medium) << 24
        << QStringList {QStringLiteral(".style4 {font-size: 12px; font-weight: bold; color: #000000; }\r\n"
                                       ".style5 {color: #000000}\r\n.style7 {font-size: 9}\r\n-->"),
               QStringLiteral("<span class='style4'>Norvantis</span>"),
               QStringLiteral("class='style5'>36 Norvantis Office</em>"),
               QStringLiteral("class='style7'> (24hrs of the day) \r\n          (Printed:12/12/2005)"),
               QStringLiteral("<strong>Expire:</strong> 1/Jan/2005<"),
               QStringLiteral("<strong>123456789012-0000</strong>")}
        << true;
    QTest::newRow("large sample: 11 rows of 2")
        << int(Design::Large) << 22
        << QStringList {QStringLiteral("Norvantis Cybercafe </span>           (24hrs of the day)"),
               QStringLiteral("<strong>Time:</strong> 9999min(s))</td>"),
               QStringLiteral("<strong>Expire:</strong> 01/Jan/2005<"),
               QStringLiteral("(Printed: 01/01/2005)"),
               QStringLiteral("<strong>Grp-No:</strong> 123456789012-0000<br>"),
               QStringLiteral("<strong>Printed by:</strong> Adminstrator</td>")}
        << true;
}

void TestTicketDocuments::testSamples()
{
    QFETCH(int, design);
    QFETCH(int, boxes);
    QFETCH(QStringList, texts);
    QFETCH(bool, opened);

    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    TicketDocuments documents(*f.screen);
    const bool written = Design(design) == Design::Small ? documents.WriteSmallSample()
        : Design(design) == Design::Medium               ? documents.WriteMediumSample()
                                                         : documents.WriteLargeSample();
    QVERIFY(written);

    const QString page = f.page();
    QCOMPARE(page.count(QStringLiteral("border='1'")), boxes);
    for (const QString& text : texts)
        QVERIFY2(page.count(text) == (text.contains(QStringLiteral("-->")) ? 1 : boxes), qPrintable(text));
    QVERIFY(page.endsWith(lines({QStringLiteral("</table>"), QStringLiteral("</body>"), QStringLiteral("</html>")})));
    QCOMPARE(f.platform.documentsOpened().size(), opened ? 1 : 0);
    const HtmlOutline outline = HtmlOutline::of(page);
    QCOMPARE(outline.boxesInGridCells, boxes);
    QVERIFY(outline.leftOpen.isEmpty());
}

void TestTicketDocuments::testPageStructure_data()
{
    QTest::addColumn<int>("design");
    QTest::addColumn<int>("tickets");
    QTest::addColumn<int>("boxes");
    QTest::addColumn<QStringList>("stray"); // per box
    QTest::addColumn<QStringList>("implied"); // per box
    QTest::addColumn<QStringList>("impliedAtEnd");

    const QStringList td {QStringLiteral("td")};
    QTest::newRow("small page of 40 tickets") << int(Design::Small) << 40 << 40 << td << QStringList() << QStringList();
    // The address of a medium box sits in a div that its <em> closes early.
    QTest::newRow("medium page of 31 tickets ends in an open grid table")
        << int(Design::Medium) << 31 << 31 << QStringList {QStringLiteral("td"), QStringLiteral("div")}
        << QStringList {QStringLiteral("div")} << QStringList {QStringLiteral("table")};
    QTest::newRow("medium page of 45 tickets")
        << int(Design::Medium) << 45 << 45 << QStringList {QStringLiteral("td"), QStringLiteral("div")}
        << QStringList {QStringLiteral("div")} << QStringList {QStringLiteral("table")};
}

void TestTicketDocuments::testPageStructure()
{
    QFETCH(int, design);
    QFETCH(int, tickets);
    QFETCH(int, boxes);
    QFETCH(QStringList, stray);
    QFETCH(QStringList, implied);
    QFETCH(QStringList, impliedAtEnd);

    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTickets(tickets, nightTicket()));

    QVERIFY(write(f, Design(design), nightTicket().group));

    const HtmlOutline outline = HtmlOutline::of(f.page());
    QVERIFY2(outline.syntaxErrors.isEmpty(), qPrintable(outline.syntaxErrors.join(u'\n')));
    QCOMPARE(outline.boxes, boxes);
    QCOMPARE(outline.boxesInGridCells, boxes);
    QVERIFY2(outline.leftOpen.isEmpty(), qPrintable(outline.leftOpen.join(u' ')));
    // Every leaning on the browser's tolerance is one the design makes in each box.
    QStringList expectedStray;
    QStringList expectedImplied = impliedAtEnd;
    for (int i = 0; i < boxes; ++i) {
        expectedStray += stray;
        expectedImplied += implied;
    }
    QCOMPARE(HtmlOutline::tally(outline.strayEndTags), HtmlOutline::tally(expectedStray));
    QCOMPARE(HtmlOutline::tally(outline.impliedCloses), HtmlOutline::tally(expectedImplied));
}

QTEST_GUILESS_MAIN(TestTicketDocuments)
#include "TestTicketDocuments.moc"

void TestTicketDocuments::testLoginTemplatePutsACodeUnderEachBox_data()
{
    QTest::addColumn<int>("design");
    QTest::addColumn<QString>("boxEnd");
    QTest::newRow("small") << int(Design::Small) << QStringLiteral("      </tr></table>\r\n    </td>");
    QTest::newRow("medium") << int(Design::Medium) << QStringLiteral("    </table></td>");
    // The Large writer leaves its page unwritten but for block 300 (testLargePageKeepsWhatBlock300Flushed).
}

// Without a template the page is exactly as before (the other tests); with one, each box is
// followed by its code and nothing else changes.
void TestTicketDocuments::testLoginTemplatePutsACodeUnderEachBox()
{
    QFETCH(int, design);
    QFETCH(QString, boxEnd);
    PrintingFixture plain;
    QVERIFY2(plain.isValid(), qPrintable(plain.error()));
    QVERIFY(plain.addTicket(nightTicket()));
    QVERIFY(write(plain, Design(design), nightTicket().group));

    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    QVERIFY(f.addTicket(nightTicket()));
    const QString pattern = QStringLiteral("http://10.0.0.1/login?u={username}&p={password}");
    f.preferences.SaveSetting(
        QStringLiteral("Norvantis"), QStringLiteral("Option"), QStringLiteral("LoginTemplate"), pattern);
    QVERIFY(write(f, Design(design), nightTicket().group));

    const QString code = CrLf + QStringLiteral("    <div align='center'>")
        + qrSvg(QStringLiteral("http://10.0.0.1/login?u=NVT1234567&p=54321"), 96) + QStringLiteral("</div>");
    QVERIFY(code.contains(QStringLiteral("<svg ")));
    QString page = f.page();
    QCOMPARE(page.count(code), 1);
    QVERIFY2(page.contains(boxEnd + code + CrLf + QStringLiteral("  </td>")), qPrintable(page));
    page.remove(code);
    QVERIFY2(page == plain.page(), qPrintable(ScriptedPlatform::describeDifference(plain.page(), page)));
}
