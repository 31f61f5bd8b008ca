#include "printing/PrintStaging.h"

#include "support/PrintingFixture.h"

#include <QTest>

using namespace marlet;
using namespace marlet::test;

namespace {

const QString Group = QStringLiteral("261121100000");
const QString PreviewFailed = QStringLiteral("Print Generation Error!, Print Preview Aborted!");
const QStringList SlotFields = {QStringLiteral("TicketGrpNo"),
    QStringLiteral("Username"),
    QStringLiteral("Password"),
    QStringLiteral("Time"),
    QStringLiteral("Amount"),
    QStringLiteral("Expire"),
    QStringLiteral("Nightinfo"),
    QStringLiteral("Quota"),
    QStringLiteral("Days")};

Statement groupQuery(const QString& group = Group)
{
    return Statement(QStringLiteral("Select * From Account where TicketGrp = '{}'"), {group});
}

// Every row of a table, each as its columns by name.
QList<QVariantMap> tableRows(Connection& connection, const QString& table)
{
    QList<QVariantMap> rows;
    Recordset rs;
    if (!rs.Open(Statement(QStringLiteral("Select * from ") + table), connection))
        return rows;
    for (; !rs.Eof(); rs.MoveNext()) {
        QVariantMap row;
        for (int i = 0; i < rs.fieldCount(); ++i)
            row.insert(rs.fieldName(i).toLower(), rs.value(i));
        rows << row;
    }
    return rows;
}

QVariant slotValue(const QVariantMap& row, int slot, const QString& field)
{
    return row.value((field + QString::number(slot)).toLower());
}

} // namespace

class TestPrintStaging : public QObject
{
    Q_OBJECT

private slots:
    void testPacking_data();
    void testPacking();
    void testThreeTicketsOnLargePrintLeaveABlankSecondSlot();
    void testTimeRule_data();
    void testTimeRule();
    void testPrintTypeIsReadUnderTheHostTitle();
    void testStopDuringPackingKeepsTheRowsAndShowsNoPreview();
    void testReportComponentFailures_data();
    void testReportComponentFailures();
    void testEmptyGroupEndsInTheErrorHandler();
    void testQuoteInTheGroupEndsInTheErrorHandler();
    void testEmptyQueryDoesNothing();
    void testEachRunReplacesTheRowsOfItsTable();
    void testExportWritesAndOpensTheMediumPage();
    void testExportWithoutAPageFileEndsInTheErrorHandler();
};

void TestPrintStaging::testPacking_data()
{
    QTest::addColumn<QString>("printType");
    QTest::addColumn<int>("tickets");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("perRow");
    QTest::addColumn<int>("rows");

    const QString six = QStringLiteral("Row6PrintTemp");
    const QString three = QStringLiteral("Row3PrintTemp");
    const QString two = QStringLiteral("RowPrintTemp");
    QTest::newRow("seven tickets on small print make a full row and a row of one")
        << "1" << 7 << six << "Generated6Preview" << 6 << 2;
    QTest::newRow("six tickets on small print fill exactly one row")
        << "1" << 6 << six << "Generated6Preview" << 6 << 1;
    QTest::newRow("thirteen tickets on small print make three rows")
        << "1" << 13 << six << "Generated6Preview" << 6 << 3;
    QTest::newRow("four tickets on medium print leave two empty slots")
        << "2" << 4 << three << "Generated3Preview" << 3 << 2;
    QTest::newRow("three tickets on medium print fill one row") << "2" << 3 << three << "Generated3Preview" << 3 << 1;
    QTest::newRow("three tickets on large print make two rows") << "3" << 3 << two << "Generated2Preview" << 2 << 2;
    QTest::newRow("print type 0 counts as large print") << "0" << 2 << two << "Generated2Preview" << 2 << 1;
    QTest::newRow("print type 5 counts as large print") << "5" << 5 << two << "Generated2Preview" << 2 << 3;
    QTest::newRow("a fresh machine prints large") << "" << 1 << two << "Generated2Preview" << 2 << 1;
}

void TestPrintStaging::testPacking()
{
    QFETCH(QString, printType);
    QFETCH(int, tickets);
    QFETCH(QString, table);
    QFETCH(QString, operation);
    QFETCH(int, perRow);
    QFETCH(int, rows);

    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    if (!printType.isEmpty())
        f.setPreference(QStringLiteral("PrintType"), printType);
    f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    TicketSetup setup;
    setup.quota = 100;
    setup.days = 5;
    QVERIFY(f.addTickets(tickets, setup));

    BuildPrintPreview(*f.screen, groupQuery());

    const QList<QVariantMap> stored = tableRows(f.store(), table);
    QCOMPARE(stored.size(), rows);
    for (int t = 0; t < rows * perRow; ++t) {
        const QVariantMap& row = stored.at(t / perRow);
        const int slot = t % perRow + 1;
        const QString context = QStringLiteral("ticket position %1").arg(t + 1);
        auto value = [&](const char* field) { return slotValue(row, slot, QLatin1String(field)); };
        if (t < tickets) {
            const QString number = QString::number(t + 1).rightJustified(3, u'0');
            QVERIFY2(value("TicketGrpNo").toString() == Group + u'-' + number, qPrintable(context));
            QCOMPARE(value("Username").toString(), QStringLiteral("USER") + number);
            QCOMPARE(value("Password").toString(), QStringLiteral("P0") + number);
            QCOMPARE(value("Time").toDouble(), 3600.0);
            QCOMPARE(value("Amount").toString(), QStringLiteral("N50"));
            QVERIFY2(value("Expire").isNull(), qPrintable(context));
            QCOMPARE(value("Nightinfo").toString(), QStringLiteral("Any Time"));
            QCOMPARE(value("Quota").toDouble(), 100.0);
            QCOMPARE(value("Days").toDouble(), 5.0);
        } else {
            for (const char* field : {"TicketGrpNo", "Username", "Password", "Amount", "Nightinfo"})
                QVERIFY2(
                    value(field).toString() == QLatin1String(" "), qPrintable(context + u' ' + QLatin1String(field)));
            QCOMPARE(value("Expire").toDateTime(), QDateTime(f.platform.today(), QTime(0, 0)));
            QVERIFY2(!value("Time").isNull() && value("Time").toDouble() == 0, qPrintable(context));
            QVERIFY2(!value("Quota").isNull() && value("Quota").toDouble() == 0, qPrintable(context));
            QVERIFY2(!value("Days").isNull() && value("Days").toDouble() == 0, qPrintable(context));
        }
    }

    QCOMPARE((*f.screen)[QStringLiteral("ProgressBar1")].maximum(), rows);
    QCOMPARE(f.platform.componentsCreated(), QStringList {QStringLiteral("Vellum.Sheets")});
    QCOMPARE(f.platform.componentCalls().size(), size_t(1));
    const ScriptedPlatform::ComponentCall& call = f.platform.componentCalls().front();
    QCOMPARE(call.operation, operation);
    QCOMPARE(call.connection, &f.session.connection());
    QCOMPARE(call.arguments, QVariantList {QString(QStringLiteral("Select * From ") + table)});
    QVERIFY(f.platform.messages().empty());
    QVERIFY(f.platform.failures().isEmpty());

    // The panel showed the packing and is closed again; the only pause is the panel's own.
    QCOMPARE((*f.screen)[QStringLiteral("Label4")].caption(), QStringLiteral("Generating Preview "));
    QCOMPARE((*f.screen)[QStringLiteral("Command6")].caption(), QStringLiteral("Clo&se"));
    QVERIFY(!(*f.screen)[QStringLiteral("FProgress")].visible());
    QVERIFY((*f.screen)[QStringLiteral("FNew")].enabled());
    QCOMPARE(f.platform.sleptMilliseconds(), qint64(100));
}

void TestPrintStaging::testThreeTicketsOnLargePrintLeaveABlankSecondSlot()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    QVERIFY(f.addTickets(3));

    BuildPrintPreview(*f.screen, groupQuery());

    // Read by the names the two-up table is known by.
    Recordset rs;
    QVERIFY(rs.Open(Statement(QStringLiteral("Select * from RowPrintTemp")), f.store()));
    QCOMPARE(rs.RecordCount(), 2L);
    QVERIFY(rs.MoveNext());
    QCOMPARE(rs.value(QStringLiteral("Username1")).toString(), QStringLiteral("USER003"));
    for (const char* name : {"TicketGrpNo2", "Username2", "Password2", "Amount2", "NightInfo2"})
        QCOMPARE(rs.value(QLatin1String(name)).toString(), QStringLiteral(" "));
    QCOMPARE(rs.value(QStringLiteral("Expire2")).toDateTime().date(), QDate(2026, 11, 21));
    for (const char* name : {"Time2", "Quota2", "Days2"})
        QCOMPARE(rs.value(QLatin1String(name)).toDouble(), 0.0);
}

void TestPrintStaging::testTimeRule_data()
{
    QTest::addColumn<bool>("night");
    QTest::addColumn<bool>("once");
    QTest::addColumn<QString>("useGTime");
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("expected");

    QTest::newRow("a ticket without a time frame prints any time") << false << false << ""
                                                                   << ""
                                                                   << ""
                                                                   << "Any Time";
    QTest::newRow("once without night still prints any time") << false << true << ""
                                                              << ""
                                                              << ""
                                                              << "Any Time";
    QTest::newRow("night and once print time-once") << true << true << "1"
                                                    << ""
                                                    << ""
                                                    << "Time-Once";
    QTest::newRow("a night ticket prints its own frame") << true << false << ""
                                                         << "21:00"
                                                         << "5:00"
                                                         << "22:00-06:30";
    QTest::newRow("UseGTime 0 keeps the ticket's own frame") << true << false << "0"
                                                             << "21:00"
                                                             << "5:00"
                                                             << "22:00-06:30";
    QTest::newRow("UseGTime 1 prints the general night time") << true << false << "1"
                                                              << "21:00"
                                                              << "5:00"
                                                              << "21:00-05:00";
    QTest::newRow("the general night time has its defaults") << true << false << "2"
                                                             << ""
                                                             << ""
                                                             << "00:00-06:00";
}

void TestPrintStaging::testTimeRule()
{
    QFETCH(bool, night);
    QFETCH(bool, once);
    QFETCH(QString, useGTime);
    QFETCH(QString, begin);
    QFETCH(QString, end);
    QFETCH(QString, expected);

    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    if (!useGTime.isEmpty())
        f.setPreference(QStringLiteral("UseGTime"), useGTime);
    if (!begin.isEmpty())
        f.setPreference(QStringLiteral("BeginTime"), begin);
    if (!end.isEmpty())
        f.setPreference(QStringLiteral("EndTime"), end);
    TicketSetup setup;
    setup.night = night;
    setup.once = once;
    setup.start = QTime(22, 0);
    setup.end = QTime(6, 30);
    // The rule is the same in the first slot and in a slot written by index.
    f.setPreference(QStringLiteral("PrintType"), QStringLiteral("1"));
    QVERIFY(f.addTickets(2, setup));

    BuildPrintPreview(*f.screen, groupQuery());

    const QList<QVariantMap> rows = tableRows(f.store(), QStringLiteral("Row6PrintTemp"));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(slotValue(rows.front(), 1, QStringLiteral("Nightinfo")).toString(), expected);
    QCOMPARE(slotValue(rows.front(), 2, QStringLiteral("Nightinfo")).toString(), expected);
}

void TestPrintStaging::testPrintTypeIsReadUnderTheHostTitle()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.session.general.AppTitle = QStringLiteral("Harbour Cafe");
    f.setPreference(QStringLiteral("PrintType"), QStringLiteral("1"));
    f.setPreference(QStringLiteral("PrintType"), QStringLiteral("2"), QStringLiteral("Harbour Cafe"));
    f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    QVERIFY(f.addTickets(3));

    BuildPrintPreview(*f.screen, groupQuery());

    QCOMPARE(tableRows(f.store(), QStringLiteral("Row3PrintTemp")).size(), 1);
    QVERIFY(tableRows(f.store(), QStringLiteral("Row6PrintTemp")).isEmpty());
    QCOMPARE(f.platform.componentCalls().front().operation, QStringLiteral("Generated3Preview"));
}

void TestPrintStaging::testStopDuringPackingKeepsTheRowsAndShowsNoPreview()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.setPreference(QStringLiteral("PrintType"), QStringLiteral("1"));
    f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    QVERIFY(f.addTickets(13));

    // "Stop" is pressed while the screen shows the packing, once the first row is in the table.
    bool pressed = false;
    for (int n = 1; n <= 100; ++n) {
        f.platform.atYield(n, [&f, &pressed] {
            if (!pressed && tableRows(f.store(), QStringLiteral("Row6PrintTemp")).size() == 1) {
                pressed = true;
                QVERIFY(f.screen->busy());
                f.screen->StopRequested = true;
            }
        });
    }

    BuildPrintPreview(*f.screen, groupQuery());

    QVERIFY(pressed);
    // The row in progress is finished; the third is never made.
    const QList<QVariantMap> rows = tableRows(f.store(), QStringLiteral("Row6PrintTemp"));
    QCOMPARE(rows.size(), 2);
    QCOMPARE(slotValue(rows.at(1), 6, QStringLiteral("Username")).toString(), QStringLiteral("USER012"));
    QVERIFY(f.platform.componentsCreated().isEmpty());
    QVERIFY(f.platform.componentCalls().empty());
    QVERIFY(f.platform.messages().empty());
    QVERIFY(!f.screen->StopRequested);
    QVERIFY(!f.screen->busy());
}

void TestPrintStaging::testReportComponentFailures_data()
{
    QTest::addColumn<bool>("exists");
    QTest::newRow("a report component that cannot be created") << false;
    QTest::newRow("a report component whose operation fails") << true;
}

void TestPrintStaging::testReportComponentFailures()
{
    QFETCH(bool, exists);

    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    if (exists)
        f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"), false);
    QVERIFY(f.addTickets(3));
    f.platform.expectMessage(PreviewFailed, MsgStyle::Critical);

    BuildPrintPreview(*f.screen, groupQuery());

    f.platform.finish();
    QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    QCOMPARE(f.platform.componentsCreated(), QStringList {QStringLiteral("Vellum.Sheets")});
    QCOMPARE(f.platform.componentCalls().size(), size_t(exists ? 1 : 0));
    // The packed rows stay for a later preview.
    QCOMPARE(tableRows(f.store(), QStringLiteral("RowPrintTemp")).size(), 2);
    QVERIFY(!f.screen->busy());
}

void TestPrintStaging::testEmptyGroupEndsInTheErrorHandler()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    QVERIFY(f.store().executeNative(QStringLiteral("INSERT INTO RowPrintTemp (Username1) VALUES ('EARLIER')")));
    // Moving to the first row of nothing fails before the count is looked at.
    f.platform.expectMessage(PreviewFailed, MsgStyle::Critical);

    BuildPrintPreview(*f.screen, groupQuery());

    f.platform.finish();
    QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    const QList<QVariantMap> rows = tableRows(f.store(), QStringLiteral("RowPrintTemp"));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(slotValue(rows.front(), 1, QStringLiteral("Username")).toString(), QStringLiteral("EARLIER"));
    QVERIFY(f.platform.componentsCreated().isEmpty());
}

void TestPrintStaging::testQuoteInTheGroupEndsInTheErrorHandler()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    QVERIFY(f.addTickets(2));
    f.platform.expectMessage(PreviewFailed, MsgStyle::Critical);

    BuildPrintPreview(*f.screen, groupQuery(QStringLiteral("2611'21")));

    f.platform.finish();
    QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    QVERIFY(tableRows(f.store(), QStringLiteral("RowPrintTemp")).isEmpty());
    QVERIFY(f.platform.componentCalls().empty());
}

void TestPrintStaging::testEmptyQueryDoesNothing()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    QVERIFY(f.addTickets(2));
    const int yields = f.platform.yieldCount();

    BuildPrintPreview(*f.screen, Statement(QString()));

    QCOMPARE(f.platform.yieldCount(), yields);
    QCOMPARE(f.platform.sleptMilliseconds(), qint64(0));
    QVERIFY(f.platform.messages().empty());
    QVERIFY(f.platform.componentsCreated().isEmpty());
    QVERIFY(tableRows(f.store(), QStringLiteral("RowPrintTemp")).isEmpty());
}

void TestPrintStaging::testEachRunReplacesTheRowsOfItsTable()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    QVERIFY(f.addTickets(5));
    TicketSetup later;
    later.group = QStringLiteral("261121113000");
    later.username = QStringLiteral("LATER01");
    QVERIFY(f.addTicket(later));

    BuildPrintPreview(*f.screen, groupQuery());
    QCOMPARE(tableRows(f.store(), QStringLiteral("RowPrintTemp")).size(), 3);
    BuildPrintPreview(*f.screen, groupQuery(later.group));

    const QList<QVariantMap> rows = tableRows(f.store(), QStringLiteral("RowPrintTemp"));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(slotValue(rows.front(), 1, QStringLiteral("Username")).toString(), QStringLiteral("LATER01"));
    QCOMPARE(slotValue(rows.front(), 1, QStringLiteral("TicketGrpNo")).toString(), QStringLiteral("261121113000-001"));
    QCOMPARE(f.platform.componentCalls().size(), size_t(2));
}

void TestPrintStaging::testExportWritesAndOpensTheMediumPage()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.setPreference(QStringLiteral("PrintType"), QStringLiteral("4"));
    f.platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    QVERIFY(f.store().executeNative(QStringLiteral("INSERT INTO RowPrintTemp (Username1) VALUES ('EARLIER')")));
    QVERIFY(f.addTickets(4));

    BuildPrintPreview(*f.screen, groupQuery());

    QCOMPARE(f.platform.documentsOpened(), QStringList {f.pagePath()});
    const QString page = f.page();
    QVERIFY(page.contains(QStringLiteral("<title>Norvantis - Medium Ticket</title>")));
    QCOMPARE(page.count(QStringLiteral("<strong>Username: USER")), 4);
    QVERIFY(page.contains(QStringLiteral("<strong>Username: USER004<br>")));
    QVERIFY(f.platform.componentsCreated().isEmpty());
    QCOMPARE(tableRows(f.store(), QStringLiteral("RowPrintTemp")).size(), 1);
    QVERIFY(f.platform.messages().empty());
    QVERIFY(!f.screen->busy());
}

void TestPrintStaging::testExportWithoutAPageFileEndsInTheErrorHandler()
{
    PrintingFixture f;
    QVERIFY2(f.isValid(), qPrintable(f.error()));
    f.setPreference(QStringLiteral("PrintType"), QStringLiteral("4"));
    QVERIFY(f.addTickets(2));
    QVERIFY(QFile::remove(f.pagePath()));
    f.platform.expectMessage(PreviewFailed, MsgStyle::Critical);

    BuildPrintPreview(*f.screen, groupQuery());

    f.platform.finish();
    QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    QVERIFY(f.platform.documentsOpened().isEmpty());
    QVERIFY(!f.screen->busy());
}

QTEST_GUILESS_MAIN(TestPrintStaging)
#include "TestPrintStaging.moc"
