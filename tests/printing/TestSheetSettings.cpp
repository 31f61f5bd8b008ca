#include "printing/SheetSettings.h"

#include "store/Preferences.h"
#include "store/Recordset.h"
#include "support/StoreTestDatabase.h"

#include <QTemporaryDir>
#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

using Field = QuickTicketAddition::Field;
Q_DECLARE_METATYPE(QuickTicketAddition::Field)

class TestSheetSettings : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testEntryText_data();
    void testEntryText();
    void testAdditionIsChecked_data();
    void testAdditionIsChecked();
    void testSameDefinitionWithAndWithoutVipAreTwoEntries();
    void testFreshMachineLoadsTheDefaults();
    void testLoadReadsTheProductWordAndTheTable();
    void testPrintTypeOutsideTheFourShowsLarge();
    void testSaveWritesPreferencesOptionsAndTable();
    void testSaveRewritesTheWholeTable();
    void testLongPrefixGoesToOptionsAsTheProductPrefix();
    void testEntryWithAQuoteIsStoredAsIs();

private:
    QStringList quickTickets();
    QString stored(const QString& key) const;
    QString ticketIniName();

    std::unique_ptr<test::StoreTestDatabase> m_db;
    std::unique_ptr<QTemporaryDir> m_prefsDir;
    std::unique_ptr<Preferences> m_prefs;
};

void TestSheetSettings::init()
{
    m_db = std::make_unique<test::StoreTestDatabase>();
    QVERIFY2(m_db->isValid(), qPrintable(m_db->error()));
    m_prefsDir = std::make_unique<QTemporaryDir>();
    m_prefs = std::make_unique<Preferences>(m_prefsDir->path());
}

QStringList TestSheetSettings::quickTickets()
{
    Recordset rows;
    rows.Open(Statement(u"Select * from QuickT"_s), m_db->connection());
    QStringList texts;
    for (; !rows.Eof(); rows.MoveNext())
        texts.append(rows.value(u"TicketType"_s).toString());
    return texts;
}

QString TestSheetSettings::stored(const QString& key) const
{
    return m_prefs->GetSetting(u"Norvantis"_s, u"Option"_s, key, u"<absent>"_s);
}

QString TestSheetSettings::ticketIniName()
{
    Recordset options;
    options.Open(Statement(u"Select TicketIniName from Options"_s), m_db->connection());
    return options.value(u"TicketIniName"_s).toString();
}

void TestSheetSettings::testEntryText_data()
{
    QTest::addColumn<bool>("timeTicket");
    QTest::addColumn<bool>("once");
    QTest::addColumn<bool>("vip");
    QTest::addColumn<QString>("expected");
    QTest::newRow("time ticket") << true << false << false << u"60min(s) - N50 [Time Ticket]"_s;
    QTest::newRow("time ticket for VIP") << true << false << true << u"60min(s) - N50 [Time Ticket] - VIP"_s;
    QTest::newRow("time ticket used once") << true << true << false << u"60min(s) - N50 [Time Once]"_s;
    QTest::newRow("normal ticket ignores once") << false << true << false << u"60min(s) - N50 [Normal Ticket]"_s;
}

void TestSheetSettings::testEntryText()
{
    QFETCH(bool, timeTicket);
    QFETCH(bool, once);
    QFETCH(bool, vip);
    QFETCH(QString, expected);
    QCOMPARE(quickTicketEntry({u"60"_s, u"50"_s, timeTicket, once, vip}, u"N"_s), expected);
}

void TestSheetSettings::testAdditionIsChecked_data()
{
    QTest::addColumn<QString>("minutes");
    QTest::addColumn<QString>("cost");
    QTest::addColumn<QString>("refusal");
    QTest::addColumn<Field>("focus");
    QTest::addColumn<QString>("entry");
    const QString numeric = u"Numeric Value required!"_s;
    QTest::newRow("cost that is no number") << u"60"_s << u"fifty"_s << numeric << Field::Cost << QString();
    QTest::newRow("cost is checked before the time") << u"x"_s << u""_s << numeric << Field::Cost << QString();
    QTest::newRow("time that is no number") << u"an hour"_s << u"50"_s << numeric << Field::Time << QString();
    QTest::newRow("an entry already in the list")
        << u"60"_s << u"50"_s << u"Quick-Ticket entry already exist!"_s << Field::None << QString();
    QTest::newRow("decimals are numbers")
        << u"1.5"_s << u"2.5"_s << QString() << Field::None << u"1.5min(s) - NGN2.5 [Normal Ticket]"_s;
}

void TestSheetSettings::testAdditionIsChecked()
{
    QFETCH(QString, minutes);
    QFETCH(QString, cost);
    QFETCH(QString, refusal);
    QFETCH(Field, focus);
    QFETCH(QString, entry);
    const QStringList existing = {u"60min(s) - NGN50 [Normal Ticket]"_s};
    const QuickTicketAddition addition = addQuickTicket(existing, {minutes, cost, false, false, false}, u"NGN"_s);
    QCOMPARE(addition.refusal, refusal);
    QCOMPARE(addition.focus, focus);
    QCOMPARE(addition.entry, entry);
    QCOMPARE(addition.added(), refusal.isEmpty());
}

void TestSheetSettings::testSameDefinitionWithAndWithoutVipAreTwoEntries()
{
    QStringList list;
    const QuickTicketAddition plain = addQuickTicket(list, {u"30"_s, u"20"_s, true, false, false}, u"N"_s);
    QVERIFY(plain.added());
    list.append(plain.entry);
    const QuickTicketAddition vip = addQuickTicket(list, {u"30"_s, u"20"_s, true, false, true}, u"N"_s);
    QVERIFY(vip.added());
    QCOMPARE(vip.entry, u"30min(s) - N20 [Time Ticket] - VIP"_s);
    list.append(vip.entry);
    QVERIFY(!addQuickTicket(list, {u"30"_s, u"20"_s, true, false, true}, u"N"_s).added());
}

void TestSheetSettings::testFreshMachineLoadsTheDefaults()
{
    const SheetSettings settings = SheetSettings::load(*m_prefs, m_db->connection());
    QCOMPARE(settings.prefix, u"NVT"_s);
    QCOMPARE(settings.printType, 3);
    QCOMPARE(settings.quickTicket, false);
    QCOMPARE(settings.quickTickets, QStringList());
    QCOMPARE(settings.currency, u"N"_s);
}

void TestSheetSettings::testLoadReadsTheProductWordAndTheTable()
{
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"STR"_s, u"ABCDEF"_s);
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"PrintType"_s, u"2"_s);
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"QuickTicket"_s, u"1"_s);
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"Currency"_s, u"GHS"_s);
    m_prefs->SaveSetting(u"Other Host"_s, u"Option"_s, u"PrintType"_s, u"1"_s);
    QVERIFY(m_db->connection().Execute(Statement(u"Insert into QuickT (TicketType) values ('{}')"_s, {u"B"_s})));
    QVERIFY(m_db->connection().Execute(Statement(u"Insert into QuickT (TicketType) values ('{}')"_s, {u"A"_s})));
    const SheetSettings settings = SheetSettings::load(*m_prefs, m_db->connection());
    QCOMPARE(settings.prefix, u"ABC"_s);
    QCOMPARE(settings.printType, 2);
    QCOMPARE(settings.quickTicket, true);
    QCOMPARE(settings.currency, u"GHS"_s);
    QCOMPARE(settings.quickTickets, (QStringList {u"B"_s, u"A"_s}));
}

void TestSheetSettings::testPrintTypeOutsideTheFourShowsLarge()
{
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"PrintType"_s, u"0"_s);
    QCOMPARE(SheetSettings::load(*m_prefs, m_db->connection()).printType, 3);
    m_prefs->SaveSetting(u"Norvantis"_s, u"Option"_s, u"PrintType"_s, u"4"_s);
    QCOMPARE(SheetSettings::load(*m_prefs, m_db->connection()).printType, 4);
}

void TestSheetSettings::testSaveWritesPreferencesOptionsAndTable()
{
    SheetSettings settings;
    settings.prefix = u"abc"_s;
    settings.printType = 1;
    settings.quickTicket = true;
    settings.quickTickets = {u"60min(s) - N50 [Time Ticket]"_s, u"30min(s) - N20 [Normal Ticket] - VIP"_s};
    QString error;
    QVERIFY2(settings.save(*m_prefs, m_db->connection(), &error), qPrintable(error));
    QCOMPARE(stored(u"STR"_s), u"ABC"_s);
    QCOMPARE(stored(u"PrintType"_s), u"1"_s);
    QCOMPARE(stored(u"QuickTicket"_s), u"1"_s);
    QCOMPARE(ticketIniName(), u"ABC"_s);
    QCOMPARE(quickTickets(), settings.quickTickets);

    settings.quickTicket = false;
    QVERIFY(settings.save(*m_prefs, m_db->connection()));
    QCOMPARE(stored(u"QuickTicket"_s), u"0"_s);
}

void TestSheetSettings::testSaveRewritesTheWholeTable()
{
    QVERIFY(m_db->connection().Execute(Statement(u"Insert into QuickT (TicketType) values ('OLD')"_s)));
    SheetSettings settings = SheetSettings::load(*m_prefs, m_db->connection());
    settings.quickTickets = {u"NEW"_s};
    QVERIFY(settings.save(*m_prefs, m_db->connection()));
    QCOMPARE(quickTickets(), QStringList {u"NEW"_s});
    settings.quickTickets.clear();
    QVERIFY(settings.save(*m_prefs, m_db->connection()));
    QCOMPARE(quickTickets(), QStringList());
}

void TestSheetSettings::testLongPrefixGoesToOptionsAsTheProductPrefix()
{
    SheetSettings settings = SheetSettings::load(*m_prefs, m_db->connection());
    settings.prefix = u"abcd"_s;
    QVERIFY(settings.save(*m_prefs, m_db->connection()));
    QCOMPARE(stored(u"STR"_s), u"ABCD"_s);
    QCOMPARE(ticketIniName(), u"NVT"_s);
}

void TestSheetSettings::testEntryWithAQuoteIsStoredAsIs()
{
    // Rows are written through the result set, so a quote in a text needs no care.
    SheetSettings settings = SheetSettings::load(*m_prefs, m_db->connection());
    settings.quickTickets = {u"60min(s) - N'50 [Time Ticket]"_s};
    QVERIFY(settings.save(*m_prefs, m_db->connection()));
    QCOMPARE(quickTickets(), settings.quickTickets);
}

QTEST_GUILESS_MAIN(TestSheetSettings)
#include "TestSheetSettings.moc"
