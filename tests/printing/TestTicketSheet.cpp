#include "printing/TicketSheet.h"

#include "store/Preferences.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "support/StoreTestDatabase.h"

#include <QTemporaryDir>
#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

namespace {

// The nine values of one ticket slot, in column order.
QVariantList slotValues(
    const QString& name, double seconds, const QVariant& expire, const QString& rule, double quota, double days)
{
    return {QString(u"202611211000-0"_s + name.right(2)),
        name,
        QString(u"P"_s + name),
        seconds,
        u"N50"_s,
        expire,
        rule,
        quota,
        days};
}

// A slot as the staging writes it when the tickets have run out.
QVariantList emptySlot()
{
    return {u" "_s, u" "_s, u" "_s, 0, u" "_s, QDate(2026, 11, 21), u" "_s, 0, 0};
}

SheetTicket named(const QString& userName)
{
    SheetTicket ticket;
    ticket.userName = userName;
    return ticket;
}

} // namespace

class TestTicketSheet : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testTimeText_data();
    void testTimeText();
    void testExpiryText_data();
    void testExpiryText();
    void testQuotaText_data();
    void testQuotaText();
    void testHeadingComesFromTheProductWord();
    void testSevenTicketsSixUpMakeTwoRows();
    void testSlotValuesBecomeBoxTexts();
    void testTwoUpTableReadsBothSlotsOfARow();
    void testTableWithTooFewColumnsIsRefused();
    void testMissingTableIsReported();
    void testPagesHoldTheQuickTicketPageCounts_data();
    void testPagesHoldTheQuickTicketPageCounts();
    void testPackingFillsTheLastRowWithEmptySlots();
    void testGroupsAreListedLatestFirst();
    void testGroupTicketsPrintAsABatchDoes();
    void testGeneralTimeFrameReplacesTheTicketsOwn();
    void testGroupNameWithAQuoteFails();

private:
    void addScratchRow(const QString& table, const QList<QVariantList>& slotValues);
    void addTicket(const QString& group, const QString& number, const QString& name, bool night, bool once);

    std::unique_ptr<test::StoreTestDatabase> m_db;
    std::unique_ptr<QTemporaryDir> m_prefsDir;
    std::unique_ptr<Preferences> m_prefs;
};

void TestTicketSheet::init()
{
    m_db = std::make_unique<test::StoreTestDatabase>();
    QVERIFY2(m_db->isValid(), qPrintable(m_db->error()));
    m_prefsDir = std::make_unique<QTemporaryDir>();
    m_prefs = std::make_unique<Preferences>(m_prefsDir->path());
}

void TestTicketSheet::addScratchRow(const QString& table, const QList<QVariantList>& slotValues)
{
    Recordset rows;
    QVERIFY(rows.Open(
        Statement(u"Select * from "_s + table), m_db->connection(), CursorType::Static, LockType::Optimistic));
    QVERIFY(rows.AddNew());
    for (int slot = 0; slot < slotValues.size(); ++slot) {
        for (int field = 0; field < PrintSlotColumns; ++field)
            QVERIFY2(rows.setValue(slot * PrintSlotColumns + field, slotValues.at(slot).at(field)),
                qPrintable(rows.lastError()));
    }
    QVERIFY2(rows.Update(), qPrintable(rows.lastError()));
}

void TestTicketSheet::addTicket(const QString& group, const QString& number, const QString& name, bool night, bool once)
{
    Recordset account;
    QVERIFY(account.Open(
        Statement(u"Select * from Account"_s), m_db->connection(), CursorType::Static, LockType::Optimistic));
    QVERIFY(account.AddNew());
    const QList<std::pair<QString, QVariant>> values = {
        {u"TicketGrp"_s, group},
        {u"TicketNo"_s, number},
        {u"Username"_s, name},
        {u"Password"_s, QString(u"PW"_s + name)},
        {u"Time"_s, 5400},
        {u"Amount"_s, u"N200"_s},
        {u"Expire"_s, QVariant()},
        {u"Days"_s, 5},
        {u"StartTime"_s, QDateTime(QDate(1899, 12, 30), QTime(22, 0))},
        {u"EndTime"_s, QDateTime(QDate(1899, 12, 30), QTime(6, 30))},
        {u"Quota"_s, -9999},
        {u"Night"_s, night},
        {u"Once"_s, once},
        {u"Member"_s, false},
    };
    for (const auto& [column, value] : values)
        QVERIFY2(account.setValue(column, value), qPrintable(column));
    QVERIFY2(account.Update(), qPrintable(account.lastError()));
}

void TestTicketSheet::testTimeText_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no time") << 0.0 << u"0 min(s)"_s;
    QTest::newRow("part of a minute is dropped") << 3599.0 << u"59 min(s)"_s;
    QTest::newRow("a whole hour") << 3600.0 << u"1 hr(s)"_s;
    QTest::newRow("hours and minutes") << 5400.0 << u"1 hr(s) 30 min(s)"_s;
    QTest::newRow("several hours") << 36000.0 << u"10 hr(s)"_s;
}

void TestTicketSheet::testTimeText()
{
    QFETCH(double, seconds);
    QFETCH(QString, expected);
    QCOMPARE(sheetTimeText(seconds), expected);
}

void TestTicketSheet::testExpiryText_data()
{
    QTest::addColumn<QVariant>("expire");
    QTest::addColumn<double>("days");
    QTest::addColumn<QString>("expected");
    QTest::newRow("days count from the first use") << QVariant() << 5.0 << u"5 day(s) after first use"_s;
    QTest::newRow("days win over a date")
        << QVariant(QDateTime(QDate(2026, 12, 12), QTime())) << 3.0 << u"3 day(s) after first use"_s;
    QTest::newRow("a fixed date") << QVariant(QDateTime(QDate(2026, 12, 12), QTime())) << 0.0 << u"Expires 12-Dec-26"_s;
    QTest::newRow("neither never expires") << QVariant() << 0.0 << u"Never expires"_s;
}

void TestTicketSheet::testExpiryText()
{
    QFETCH(QVariant, expire);
    QFETCH(double, days);
    QFETCH(QString, expected);
    QCOMPARE(sheetExpiryText(expire, days), expected);
}

void TestTicketSheet::testQuotaText_data()
{
    QTest::addColumn<double>("quota");
    QTest::addColumn<QString>("expected");
    QTest::newRow("unlimited") << -9999.0 << u"Unlimited"_s;
    QTest::newRow("no quota shows nothing") << 0.0 << QString();
    QTest::newRow("megabytes") << 250.0 << u"250 MB"_s;
    QTest::newRow("a fraction") << 1.5 << u"1.5 MB"_s;
}

void TestTicketSheet::testQuotaText()
{
    QFETCH(double, quota);
    QFETCH(QString, expected);
    QCOMPARE(sheetQuotaText(quota), expected);
}

void TestTicketSheet::testHeadingComesFromTheProductWord()
{
    SheetHeading heading = SheetHeading::fromPreferences(*m_prefs);
    QCOMPARE(heading.title, u"Norvantis"_s);
    QCOMPARE(heading.address, u"Norvantis"_s);
    m_prefs->SaveSetting(u"Other Host"_s, u"Option"_s, u"Title"_s, u"Elsewhere"_s);
    m_prefs->SaveSetting(u"norvantis"_s, u"option"_s, u"title"_s, u"Corner Cafe"_s);
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"address"_s, u"12 Quay Street"_s);
    heading = SheetHeading::fromPreferences(*m_prefs);
    QCOMPARE(heading.title, u"Corner Cafe"_s);
    QCOMPARE(heading.address, u"12 Quay Street"_s);
}

void TestTicketSheet::testSevenTicketsSixUpMakeTwoRows()
{
    QList<QVariantList> first;
    for (int i = 1; i <= 6; ++i)
        first.append(slotValues(u"USER0"_s + QString::number(i), 3600, QVariant(), u"Any Time"_s, 0, 5));
    addScratchRow(u"Row6PrintTemp"_s, first);
    addScratchRow(u"Row6PrintTemp"_s,
        {slotValues(u"USER07"_s, 3600, QVariant(), u"Any Time"_s, 0, 5),
            emptySlot(),
            emptySlot(),
            emptySlot(),
            emptySlot(),
            emptySlot()});

    QString error;
    const auto sheet = readTicketSheet(m_db->connection(),
        Statement(u"Select * From Row6PrintTemp"_s),
        6,
        SheetHeading::fromPreferences(*m_prefs),
        &error);
    QVERIFY2(sheet, qPrintable(error));
    QCOMPARE(sheet->ticketsPerRow, 6);
    QCOMPARE(sheet->rows.size(), 2);
    QCOMPARE(sheet->ticketCount(), 7);
    QCOMPARE(sheet->rows.at(0).at(5).userName, u"USER06"_s);
    QCOMPARE(sheet->rows.at(1).at(0).userName, u"USER07"_s);
    for (int slot = 1; slot < 6; ++slot)
        QVERIFY2(sheet->rows.at(1).at(slot).isEmpty(), qPrintable(QString::number(slot)));
    QCOMPARE(sheet->pageCount(), 1);
}

void TestTicketSheet::testSlotValuesBecomeBoxTexts()
{
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"Title"_s, u"Corner Cafe"_s);
    addScratchRow(u"Row3PrintTemp"_s,
        {slotValues(u"ABCDE1"_s, 5400, QDateTime(QDate(2026, 12, 24), QTime()), u"22:00-06:00"_s, 100, 0),
            slotValues(u"ABCDE2"_s, 1800, QVariant(), u"Time-Once"_s, -9999, 3),
            emptySlot()});
    const auto sheet = readTicketSheet(
        m_db->connection(), Statement(u"Select * From Row3PrintTemp"_s), 3, SheetHeading::fromPreferences(*m_prefs));
    QVERIFY(sheet);
    QCOMPARE(sheet->rows.size(), 1);
    const SheetTicket& first = sheet->rows.at(0).at(0);
    QCOMPARE(first.title, u"Corner Cafe"_s);
    QCOMPARE(first.number, u"202611211000-0E1"_s);
    QCOMPARE(first.userName, u"ABCDE1"_s);
    QCOMPARE(first.password, u"PABCDE1"_s);
    QCOMPARE(first.timeText, u"1 hr(s) 30 min(s)"_s);
    QCOMPARE(first.price, u"N50"_s);
    QCOMPARE(first.expiryText, u"Expires 24-Dec-26"_s);
    QCOMPARE(first.timeRule, u"22:00-06:00"_s);
    QCOMPARE(first.quotaText, u"100 MB"_s);
    QCOMPARE(first.address, u"Norvantis"_s);
    const SheetTicket& second = sheet->rows.at(0).at(1);
    QCOMPARE(second.timeText, u"30 min(s)"_s);
    QCOMPARE(second.expiryText, u"3 day(s) after first use"_s);
    QCOMPARE(second.timeRule, u"Time-Once"_s);
    QCOMPARE(second.quotaText, u"Unlimited"_s);
    QVERIFY(sheet->rows.at(0).at(2).isEmpty());
}

void TestTicketSheet::testTwoUpTableReadsBothSlotsOfARow()
{
    addScratchRow(u"RowPrintTemp"_s,
        {slotValues(u"LEFT01"_s, 600, QVariant(), u"Any Time"_s, 0, 1),
            slotValues(u"RIGHT2"_s, 600, QVariant(), u"Any Time"_s, 0, 1)});
    addScratchRow(u"RowPrintTemp"_s, {slotValues(u"LAST03"_s, 600, QVariant(), u"Any Time"_s, 0, 1), emptySlot()});
    const auto sheet = readTicketSheet(
        m_db->connection(), Statement(u"Select * From RowPrintTemp"_s), 2, SheetHeading::fromPreferences(*m_prefs));
    QVERIFY(sheet);
    QCOMPARE(sheet->rows.size(), 2);
    QCOMPARE(sheet->rows.at(0).at(1).userName, u"RIGHT2"_s);
    QCOMPARE(sheet->rows.at(1).at(0).userName, u"LAST03"_s);
    QVERIFY(sheet->rows.at(1).at(1).isEmpty());
    QCOMPARE(sheet->ticketCount(), 3);
}

void TestTicketSheet::testTableWithTooFewColumnsIsRefused()
{
    QString error;
    const auto sheet = readTicketSheet(m_db->connection(),
        Statement(u"Select * From Row3PrintTemp"_s),
        6,
        SheetHeading::fromPreferences(*m_prefs),
        &error);
    QVERIFY(!sheet);
    QCOMPARE(error, u"The table has no columns for 6 ticket(s) a row."_s);
}

void TestTicketSheet::testMissingTableIsReported()
{
    QString error;
    QVERIFY(!readTicketSheet(m_db->connection(),
        Statement(u"Select * From NoSuchTable"_s),
        2,
        SheetHeading::fromPreferences(*m_prefs),
        &error));
    QVERIFY(!error.isEmpty());
}

void TestTicketSheet::testPagesHoldTheQuickTicketPageCounts_data()
{
    QTest::addColumn<int>("perRow");
    QTest::addColumn<int>("tickets");
    QTest::addColumn<int>("pages");
    QTest::newRow("72 small tickets fill one page") << 6 << 72 << 1;
    QTest::newRow("the 73rd small ticket starts a page") << 6 << 73 << 2;
    QTest::newRow("39 medium tickets fill one page") << 3 << 39 << 1;
    QTest::newRow("the 40th medium ticket starts a page") << 3 << 40 << 2;
    QTest::newRow("22 large tickets fill one page") << 2 << 22 << 1;
    QTest::newRow("the 23rd large ticket starts a page") << 2 << 23 << 2;
    QTest::newRow("no tickets, no page") << 2 << 0 << 0;
}

void TestTicketSheet::testPagesHoldTheQuickTicketPageCounts()
{
    QFETCH(int, perRow);
    QFETCH(int, tickets);
    QFETCH(int, pages);
    QList<SheetTicket> boxes;
    for (int i = 0; i < tickets; ++i)
        boxes.append(named(u"U"_s + QString::number(i)));
    const TicketSheet sheet = packTicketSheet(boxes, perRow);
    QCOMPARE(sheet.ticketCount(), tickets);
    QCOMPARE(sheet.pageCount(), pages);
}

void TestTicketSheet::testPackingFillsTheLastRowWithEmptySlots()
{
    const QList<SheetTicket> boxes = {named(u"A"_s), named(u"B"_s), named(u"C"_s), named(u"D"_s)};
    const TicketSheet sheet = packTicketSheet(boxes, 3);
    QCOMPARE(sheet.rows.size(), 2);
    QCOMPARE(sheet.rows.at(1).size(), 3);
    QCOMPARE(sheet.rows.at(1).at(0).userName, u"D"_s);
    QVERIFY(sheet.rows.at(1).at(1).isEmpty());
    QVERIFY(sheet.rows.at(1).at(2).isEmpty());
}

void TestTicketSheet::testGroupsAreListedLatestFirst()
{
    QVERIFY(m_db->connection().Execute(Statement(
        u"Insert into TicketInfo (TicketGrp, Number, Time, Amount, TotalCost, GeneratedBy, TimeGenerated) "
        "values ('202611200900', 10, 60, '50', 500, 'ADMINISTRATOR', 'Completed at 09:00, 20/11/26 [RANDOM]')"_s)));
    QVERIFY(m_db->connection().Execute(Statement(
        u"Insert into TicketInfo (TicketGrp, Number, Time, Amount, TotalCost, GeneratedBy, TimeGenerated) "
        "values ('202611211000', 1, 90, '200', 200, 'ADMINISTRATOR', 'Completed at 10:00, 21/11/26 [CUSTOM]')"_s)));
    QString error;
    const auto groups = printableGroups(m_db->connection(), &error);
    QVERIFY2(groups, qPrintable(error));
    QCOMPARE(groups->size(), 2);
    QCOMPARE(groups->at(0).group, u"202611211000"_s);
    QCOMPARE(groups->at(0).tickets, u"1"_s);
    QCOMPARE(groups->at(0).minutes, u"90"_s);
    QCOMPARE(groups->at(0).cost, u"200"_s);
    QCOMPARE(groups->at(0).generated, u"Completed at 10:00, 21/11/26 [CUSTOM]"_s);
    QCOMPARE(groups->at(1).group, u"202611200900"_s);
}

void TestTicketSheet::testGroupTicketsPrintAsABatchDoes()
{
    addTicket(u"202611211000"_s, u"001"_s, u"ALPHA1"_s, false, true);
    addTicket(u"202611211000"_s, u"002"_s, u"BRAVO2"_s, true, true);
    addTicket(u"202611211000"_s, u"003"_s, u"CHARL3"_s, true, false);
    addTicket(u"202611200900"_s, u"001"_s, u"OTHER1"_s, false, false);
    QString error;
    const auto tickets = groupTickets(m_db->connection(), u"202611211000"_s, *m_prefs, &error);
    QVERIFY2(tickets, qPrintable(error));
    QCOMPARE(tickets->size(), 3);
    const SheetTicket& first = tickets->at(0);
    QCOMPARE(first.number, u"202611211000-001"_s);
    QCOMPARE(first.userName, u"ALPHA1"_s);
    QCOMPARE(first.password, u"PWALPHA1"_s);
    QCOMPARE(first.timeText, u"1 hr(s) 30 min(s)"_s);
    QCOMPARE(first.price, u"N200"_s);
    QCOMPARE(first.expiryText, u"5 day(s) after first use"_s);
    QCOMPARE(first.quotaText, u"Unlimited"_s);
    QCOMPARE(first.title, u"Norvantis"_s);
    // Once without Night is any time; Night with Once is once; Night alone is the ticket's frame.
    QCOMPARE(first.timeRule, u"Any Time"_s);
    QCOMPARE(tickets->at(1).timeRule, u"Time-Once"_s);
    QCOMPARE(tickets->at(2).timeRule, u"22:00-06:30"_s);
}

void TestTicketSheet::testGeneralTimeFrameReplacesTheTicketsOwn()
{
    addTicket(u"202611211000"_s, u"001"_s, u"NIGHT1"_s, true, false);
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"UseGTime"_s, u"1"_s);
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"BeginTime"_s, u"21:00"_s);
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"EndTime"_s, u"7:00"_s);
    const auto tickets = groupTickets(m_db->connection(), u"202611211000"_s, *m_prefs);
    QVERIFY(tickets);
    QCOMPARE(tickets->at(0).timeRule, u"21:00-07:00"_s);
}

void TestTicketSheet::testGroupNameWithAQuoteFails()
{
    QString error;
    QVERIFY(!groupTickets(m_db->connection(), u"2026'11"_s, *m_prefs, &error));
    QVERIFY(error.startsWith(u"Syntax error in string in query expression"_s));
}

QTEST_GUILESS_MAIN(TestTicketSheet)
#include "TestTicketSheet.moc"
