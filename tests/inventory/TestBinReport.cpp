#include "inventory/BinReport.h"
#include "store/PreferenceKeys.h"
#include "store/Preferences.h"
#include "store/Recordset.h"
#include "support/StoreTestDatabase.h"

#include <QTemporaryDir>
#include <QTest>

namespace marlet {

namespace {

QString latin(const char* text)
{
    return QLatin1String(text);
}

// A deleted ticket as the deletion leaves it in the bin: used once, recharged, a time ticket.
const char* const UsedTicket
    = "INSERT INTO RecycleBin (TicketGrp, TicketNo, Username, Password, Time, BackTime, ByWhom, Expire, Days, "
      "DateCreated, Amount, OrgTime, LastUsed, NEW, StartTime, EndTime, ComputerUsed, AccountAdded, NoAdded, "
      "POS, Member, Quota, Night, Once, TotalTimeUsed, TimeLastUsed, DateTimeDeleted, Reason) Values "
      "('261101080000', '007', 'AAA0000007', 'PW7', 5430, 9030, 'ADMINISTRATOR & BOSS', '2026-12-31', 0, "
      "'2026-11-01', 'N200', 3600, '2026-11-14', false, '1899-12-30 22:00:00', '1899-12-30 06:30:00', "
      "'PC-04', 'RECHARGED', 1, false, false, 250, true, false, 30, '09:15 PM', '15/11/26/18:35', "
      "'Deleted by User.')";

QString lines(std::initializer_list<const char*> parts)
{
    QStringList all;
    for (const char* part : parts)
        all << QString::fromUtf8(part);
    return all.join(latin("\r\n"));
}

} // namespace

// The report of one bin row: every line with its tabs, CR LF between lines and none after the last,
// the two variants of the list click and the search, and the lines that depend on the ticket and on
// the preferences.
class TestBinReport : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void testListClickReportHasEveryLineInOrder();
    void testSearchReportStartsAtTheGroupAndItsNumber();
    void testLastUseOfANewTicket_data();
    void testLastUseOfANewTicket();
    void testExpiryByDaysOrByDate_data();
    void testExpiryByDaysOrByDate();
    void testTimeFrameFollowsTheGeneralTimeSetting_data();
    void testTimeFrameFollowsTheGeneralTimeSetting();
    void testQuotaLineFollowsDownloadAndDownType_data();
    void testQuotaLineFollowsDownloadAndDownType();
    void testNullFieldsJoinAsNothing();
    void testValuesStoredInAnotherFormPrintAsTheyRead_data();
    void testValuesStoredInAnotherFormPrintAsTheyRead();

private:
    QString report(BinReportKind kind, const BinReportOptions& options = {});
    void change(const QString& assignments);
    QStringList reportLines(const BinReportOptions& options = {})
    {
        return report(BinReportKind::Search, options).split(latin("\r\n"));
    }

    std::unique_ptr<test::StoreTestDatabase> m_database;
};

void TestBinReport::init()
{
    m_database = std::make_unique<test::StoreTestDatabase>();
    QVERIFY2(m_database->isValid(), qPrintable(m_database->error()));
    QVERIFY2(m_database->connection().Execute(Statement(latin(UsedTicket))),
        qPrintable(m_database->connection().lastError()));
}

QString TestBinReport::report(BinReportKind kind, const BinReportOptions& options)
{
    Recordset row;
    if (!row.Open(Statement(latin("select * from RecycleBin where Username = '{}'"), {latin("AAA0000007")}),
            m_database->connection())
        || row.RecordCount() != 1)
        return latin("no row: ") + row.lastError();
    return binReport(row, kind, options);
}

void TestBinReport::change(const QString& assignments)
{
    QVERIFY2(m_database->connection().Execute(Statement(latin("UPDATE RecycleBin SET ") + assignments)),
        qPrintable(m_database->connection().lastError()));
}

void TestBinReport::testListClickReportHasEveryLineInOrder()
{
    QCOMPARE(report(BinReportKind::ListClick),
        lines({"Date/Time Deleted: \t15/11/26/18:35",
            "Reason Deleted: \tDeleted by User.",
            "TicketGrp&No: \t261101080000",
            "Username: \t\tAAA0000007",
            "Time Left: \t\t90min(s)",
            "Time Used: \t30min(s)",
            "Original Time: \t60min(s)",
            "Amount: \t\tN200",
            "Last Time Used: \t09:15 PM",
            "Last Date Used: \t14/11/2026",
            "Date Created: \t01/11/2026",
            "Expire Date: \t31/12/2026",
            "Computer Used: \tPC-04",
            "Ticket Added: \tRECHARGED",
            "# of Acct(s) Added: \t1",
            "Time Ticket: \tTrue",
            "Time Frame: \t10:00PM to 06:30AM",
            "Used Once: \tFalse",
            "Created By: \tADMINISTRATOR & BOSS"}));
}

void TestBinReport::testSearchReportStartsAtTheGroupAndItsNumber()
{
    const QString searched = report(BinReportKind::Search);
    QVERIFY(searched.startsWith(latin("TicketGrp&No: \t261101080000 - 007\r\nUsername: \t\tAAA0000007\r\n")));
    QVERIFY(!searched.contains(latin("Deleted")));
    // The rest is the list click's report from its fourth line on.
    const QString clicked = report(BinReportKind::ListClick);
    QCOMPARE(searched.section(latin("\r\n"), 1), clicked.section(latin("\r\n"), 3));
    QVERIFY(searched.endsWith(latin("Created By: \tADMINISTRATOR & BOSS")));
}

void TestBinReport::testLastUseOfANewTicket_data()
{
    QTest::addColumn<QString>("assignments");
    QTest::addColumn<QString>("lastTime");
    QTest::addColumn<QString>("lastDate");
    QTest::newRow("a used ticket shows its last time and date")
        << latin("NEW = false") << latin("09:15 PM") << latin("14/11/2026");
    QTest::newRow("a new ticket shows NEW twice") << latin("NEW = true") << latin("NEW") << latin("NEW");
    QTest::newRow("no last time shows NEW while the date still shows")
        << latin("NEW = false, TimeLastUsed = NULL") << latin("NEW") << latin("14/11/2026");
    QTest::newRow("a Null NEW counts as used") << latin("NEW = NULL") << latin("09:15 PM") << latin("14/11/2026");
}

void TestBinReport::testLastUseOfANewTicket()
{
    QFETCH(QString, assignments);
    QFETCH(QString, lastTime);
    QFETCH(QString, lastDate);
    change(assignments);
    const QStringList shown = reportLines();
    QCOMPARE(shown.at(6), latin("Last Time Used: \t") + lastTime);
    QCOMPARE(shown.at(7), latin("Last Date Used: \t") + lastDate);
}

void TestBinReport::testExpiryByDaysOrByDate_data()
{
    QTest::addColumn<QString>("assignments");
    QTest::addColumn<QString>("expiry");
    QTest::newRow("days above 0 count from the login")
        << latin("Days = 5, Expire = NULL") << latin("Expire Date: \t5 days after Login");
    QTest::newRow("days above 0 win over a date") << latin("Days = 3") << latin("Expire Date: \t3 days after Login");
    QTest::newRow("days 0 show the date") << latin("Days = 0") << latin("Expire Date: \t31/12/2026");
    QTest::newRow("days 0 without a date show nothing") << latin("Days = 0, Expire = NULL") << latin("Expire Date: \t");
    QTest::newRow("Null days show the date") << latin("Days = NULL") << latin("Expire Date: \t31/12/2026");
}

void TestBinReport::testExpiryByDaysOrByDate()
{
    QFETCH(QString, assignments);
    QFETCH(QString, expiry);
    change(assignments);
    QCOMPARE(reportLines().at(9), expiry);
}

void TestBinReport::testTimeFrameFollowsTheGeneralTimeSetting_data()
{
    QTest::addColumn<QString>("useGTime");
    QTest::addColumn<QString>("beginTime");
    QTest::addColumn<QString>("endTime");
    QTest::addColumn<QString>("frame");
    QTest::newRow("UseGTime 0 shows the ticket's own frame")
        << latin("0") << latin("21:00") << latin("05:00") << latin("Time Frame: \t10:00PM to 06:30AM");
    QTest::newRow("UseGTime 1 shows the general night time")
        << latin("1") << latin("21:30") << latin("5:00") << latin("Time Frame: \t09:30PM to 05:00AM");
    QTest::newRow("a text that is no number counts as 0")
        << latin("yes") << latin("21:30") << latin("5:00") << latin("Time Frame: \t10:00PM to 06:30AM");
    QTest::newRow("keys left out give midnight to six")
        << latin("1") << QString() << QString() << latin("Time Frame: \t12:00AM to 06:00AM");
}

void TestBinReport::testTimeFrameFollowsTheGeneralTimeSetting()
{
    QFETCH(QString, useGTime);
    QFETCH(QString, beginTime);
    QFETCH(QString, endTime);
    QFETCH(QString, frame);
    QTemporaryDir folder;
    Preferences store(folder.path());
    SessionPreferences preferences(store, latin("Norvantis Cafe"));
    preferences.save(keys::UseGTime, useGTime);
    if (!beginTime.isEmpty())
        preferences.save(keys::BeginTime, beginTime);
    if (!endTime.isEmpty())
        preferences.save(keys::EndTime, endTime);
    const QStringList shown = reportLines(BinReportOptions::read(preferences));
    QCOMPARE(shown.at(13), latin("Time Ticket: \tTrue"));
    QCOMPARE(shown.at(14), frame);
    QCOMPARE(shown.at(15), latin("Used Once: \tFalse"));

    // A ticket without a time frame has no such line, whatever the setting.
    change(latin("Night = false, Once = true"));
    const QStringList dayTicket = reportLines(BinReportOptions::read(preferences));
    QCOMPARE(dayTicket.at(13), latin("Time Ticket: \tFalse"));
    QCOMPARE(dayTicket.at(14), latin("Used Once: \tTrue"));
    QCOMPARE(dayTicket.size(), 16);
}

void TestBinReport::testQuotaLineFollowsDownloadAndDownType_data()
{
    QTest::addColumn<QString>("download");
    QTest::addColumn<QString>("downType");
    QTest::addColumn<bool>("shown");
    QTest::newRow("no keys: no quota line") << QString() << QString() << false;
    QTest::newRow("download on with type 2: no quota line") << latin("True") << latin("2") << false;
    QTest::newRow("download on with type 1: the quota line") << latin("True") << latin("1") << true;
    QTest::newRow("download as a number with type 3: the quota line") << latin("-1") << latin("3") << true;
    QTest::newRow("download off with type 1: no quota line") << latin("False") << latin("1") << false;
}

void TestBinReport::testQuotaLineFollowsDownloadAndDownType()
{
    QFETCH(QString, download);
    QFETCH(QString, downType);
    QFETCH(bool, shown);
    QTemporaryDir folder;
    Preferences store(folder.path());
    SessionPreferences preferences(store, latin("Norvantis Cafe"));
    if (!download.isEmpty())
        preferences.save(keys::Download, download);
    if (!downType.isEmpty())
        preferences.save(keys::DownType, downType);
    const QStringList all = reportLines(BinReportOptions::read(preferences));
    QCOMPARE(all.contains(latin("Quota Left: \t250MB")), shown);
    QCOMPARE(all.size(), shown ? 18 : 17);
    QCOMPARE(all.at(all.size() - 2), shown ? latin("Quota Left: \t250MB") : latin("Used Once: \tFalse"));
    QCOMPARE(all.last(), latin("Created By: \tADMINISTRATOR & BOSS"));
}

void TestBinReport::testNullFieldsJoinAsNothing()
{
    change(latin("Time = NULL, OrgTime = NULL, TotalTimeUsed = NULL, Amount = NULL, DateCreated = NULL, "
                 "ComputerUsed = NULL, NoAdded = NULL, Night = NULL, Once = NULL, ByWhom = NULL, NEW = true"));
    BinReportOptions options;
    options.quotaLine = true;
    change(latin("Quota = NULL"));
    QCOMPARE(report(BinReportKind::Search, options),
        lines({"TicketGrp&No: \t261101080000 - 007",
            "Username: \t\tAAA0000007",
            "Time Left: \t\tmin(s)",
            "Time Used: \tmin(s)",
            "Original Time: \tmin(s)",
            "Amount: \t\t",
            "Last Time Used: \tNEW",
            "Last Date Used: \tNEW",
            "Date Created: \t",
            "Expire Date: \t31/12/2026",
            "Computer Used: \t",
            "Ticket Added: \tRECHARGED",
            "# of Acct(s) Added: \t",
            "Time Ticket: \t",
            "Used Once: \t",
            "Quota Left: \tMB",
            "Created By: \t"}));
}

// Another program may leave a value in a form the column does not declare: the report prints it
// as the field reads through its typed value, as the form language would join it.
void TestBinReport::testValuesStoredInAnotherFormPrintAsTheyRead_data()
{
    QTest::addColumn<QString>("assignments");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("expected");
    // Rows that SQLite alone can hold: a PostgreSQL column takes values of its own type only.
    QTest::addColumn<bool>("sqliteOnly");
    QTest::newRow("a text in a date column")
        << latin("DateCreated = 'soon'") << 8 << latin("Date Created: \tsoon") << true;
    QTest::newRow("a day that does not exist")
        << latin("DateCreated = '2026-02-30'") << 8 << latin("Date Created: \t2026-02-30") << true;
    QTest::newRow("a date with its time")
        << latin("DateCreated = '2026-11-01 23:59:59'") << 8 << latin("Date Created: \t01/11/2026") << false;
    QTest::newRow("a text in a whole-number column")
        << latin("NoAdded = 'three'") << 12 << latin("# of Acct(s) Added: \tthree") << true;
    QTest::newRow("a fraction of days") << latin("Days = 2.5") << 9 << latin("Expire Date: \t2.5 days after Login")
                                        << false;
    QTest::newRow("a whole number of 16 digits")
        << latin("TotalTimeUsed = 1234567890123456") << 3 << latin("Time Used: \t1.23456789012346E+15min(s)") << false;
    QTest::newRow("a negative number") << latin("TotalTimeUsed = -30") << 3 << latin("Time Used: \t-30min(s)") << false;
    QTest::newRow("a number in a text column") << latin("Amount = 200") << 5 << latin("Amount: \t\t200") << false;
    QTest::newRow("a fraction of a second") << latin("Time = 119.5") << 2 << latin("Time Left: \t\t1min(s)") << false;
    QTest::newRow("a truth value stored as 1") << latin("Once = 1") << 15 << latin("Used Once: \tTrue") << true;
    QTest::newRow("a text beyond the ASCII letters")
        << QStringLiteral("ByWhom = 'ANA ÑAÑEZ'") << 16 << QStringLiteral("Created By: \tANA ÑAÑEZ") << false;
    QTest::newRow("a text longer than a report usually is") << (latin("ByWhom = '") + QString(3000, u'Ñ') + u'\'') << 16
                                                            << (latin("Created By: \t") + QString(3000, u'Ñ')) << false;
}

void TestBinReport::testValuesStoredInAnotherFormPrintAsTheyRead()
{
    QFETCH(QString, assignments);
    QFETCH(int, line);
    QFETCH(QString, expected);
    QFETCH(bool, sqliteOnly);
    if (sqliteOnly && m_database->connection().dialect() == SqlDialect::Postgres)
        QSKIP("a PostgreSQL column holds values of its own type only");
    change(assignments);
    const QStringList shown = reportLines();
    QVERIFY2(shown.size() > line, qPrintable(shown.join(u'|')));
    QCOMPARE(shown.at(line), expected);
}

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestBinReport)
#include "TestBinReport.moc"
