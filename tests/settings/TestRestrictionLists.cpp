#include "platform/Platform.h"
#include "settings/RestrictionLists.h"
#include "store/Recordset.h"
#include "support/StoreTestDatabase.h"

#include <QTest>

using namespace marlet;
using namespace marlet::restrictions;

namespace {

QString latin(const char* text)
{
    return QLatin1String(text);
}

// The rows of a query, cells joined by " | ".
QStringList rows(Connection& connection, const char* statement)
{
    return test::queryRows(connection, latin(statement));
}

} // namespace

// The restriction lists beneath the settings screen: the checks of an entry before the store is
// looked at, and the writes of each list, with values bound and never executed.
class TestRestrictionLists : public QObject
{
    Q_OBJECT

private slots:
    void testProgramRefusals_data();
    void testProgramRefusals();
    void testCaptionRefusals_data();
    void testCaptionRefusals();
    void testExamplesReadDownTheColumns();
    void testProgramsAreStoredLowerCasedOnceByList();
    void testProgramRemovalTakesTheTextAsTyped();
    void testQuotedOrSqlEntriesAreNeverExecuted();
    void testCaptionsAreStoredUpperCased();
    void testClientsKeepTimeAndStaff();
    void testClientRemovalNeedsNoListEntry();
};

void TestRestrictionLists::testProgramRefusals_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("message");
    QTest::newRow("five characters go in") << latin("a.exe") << 0 << QString();
    QTest::newRow("four are short") << latin("a.ex") << 0 << latin("Entry is Blank or Short!");
    QTest::newRow("blanks around do not count") << latin("  a.e  ") << 0 << latin("Entry is Blank or Short!");
    QTest::newRow("no dot") << latin("winword") << 0 << latin("Invalid Entry! (e.g filename.exe)");
    QTest::newRow("a twenty-first entry still goes in") << latin("b.exe") << 20 << QString();
    QTest::newRow("the twenty-second is refused")
        << latin("b.exe") << 21 << latin("You can only enter 20 program name(s) in total!");
    QTest::newRow("shortness is told before the count") << latin("b.e") << 21 << latin("Entry is Blank or Short!");
}

void TestRestrictionLists::testProgramRefusals()
{
    QFETCH(QString, text);
    QFETCH(int, count);
    QFETCH(QString, message);
    const std::optional<Refusal> refusal = programRefusal(text, count);
    QCOMPARE(refusal.has_value(), !message.isEmpty());
    if (refusal) {
        QCOMPARE(refusal->text, message);
        QCOMPARE(refusal->style, MsgStyle::Warning);
    }
}

void TestRestrictionLists::testCaptionRefusals_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("refused");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("style");
    QTest::newRow("blanks only: refused without a word") << latin("   ") << 0 << true << QString() << 0;
    QTest::newRow("two letters") << latin("ab") << 0 << true << latin("Blank or short Entry!") << MsgStyle::Stop;
    QTest::newRow("three letters") << latin("abc") << 0 << false << QString() << 0;
    QTest::newRow("a thirty-first still goes in") << latin("abc") << 30 << false << QString() << 0;
    QTest::newRow("the thirty-second is refused")
        << latin("abc") << 31 << true << latin("You can only enter 30 name(s) in total!") << MsgStyle::Warning;
}

void TestRestrictionLists::testCaptionRefusals()
{
    QFETCH(QString, text);
    QFETCH(int, count);
    QFETCH(bool, refused);
    QFETCH(QString, message);
    QFETCH(int, style);
    const std::optional<Refusal> refusal = captionRefusal(text, count);
    QCOMPARE(refusal.has_value(), refused);
    if (refusal) {
        QCOMPARE(refusal->text, message);
        QCOMPARE(refusal->style, style);
    }
}

void TestRestrictionLists::testExamplesReadDownTheColumns()
{
    const QStringList lines = examplesText().split(latin("\r\n"));
    QCOMPARE(lines.size(), 21);
    QCOMPARE(lines.first(), latin("Examples for Common Programs"));
    QCOMPARE(lines.at(1), latin("Microsoft Word: winword.exe"));
    QCOMPARE(lines.at(9), latin("MSN Messenger: msmsgs.exe"));
    QCOMPARE(lines.at(10), latin("Internet Explorer: iexplore.exe"));
    QCOMPARE(lines.last(), latin("Setup File: setup.exe"));
}

void TestRestrictionLists::testProgramsAreStoredLowerCasedOnceByList()
{
    test::StoreTestDatabase database;
    QVERIFY2(database.isValid(), qPrintable(database.error()));
    Store store(database.connection());
    QCOMPARE(store.addProgram(ProgramList::Allowed, latin("WinWord.EXE")), Added::Added);
    QCOMPARE(store.addProgram(ProgramList::Allowed, latin("winword.exe")), Added::AlreadyThere);
    QCOMPARE(store.addProgram(ProgramList::Forbidden, latin("WINWORD.exe")), Added::Added);
    QCOMPARE(rows(database.connection(), "select Name, Type from RestrictDisallow"),
        QStringList({latin("winword.exe | True"), latin("winword.exe | False")}));
    QCOMPARE(store.programs(ProgramList::Allowed), QStringList {latin("winword.exe")});
    QCOMPARE(store.programs(ProgramList::Forbidden), QStringList {latin("winword.exe")});
}

void TestRestrictionLists::testProgramRemovalTakesTheTextAsTyped()
{
    test::StoreTestDatabase database;
    QVERIFY2(database.isValid(), qPrintable(database.error()));
    Store store(database.connection());
    QCOMPARE(store.addProgram(ProgramList::Forbidden, latin("game.exe")), Added::Added);
    QVERIFY(!store.removeProgram(ProgramList::Allowed, latin("game.exe")));
    QVERIFY(!store.removeProgram(ProgramList::Forbidden, latin("other.exe")));
    QVERIFY(store.removeProgram(ProgramList::Forbidden, latin("game.exe")));
    QCOMPARE(rows(database.connection(), "select count(*) from RestrictDisallow"), QStringList {latin("0")});
}

void TestRestrictionLists::testQuotedOrSqlEntriesAreNeverExecuted()
{
    test::StoreTestDatabase database;
    QVERIFY2(database.isValid(), qPrintable(database.error()));
    Store store(database.connection());
    // A quote breaks the statement: nothing is written.
    QCOMPARE(store.addProgram(ProgramList::Allowed, latin("o'neil.exe")), Added::Failed);
    QCOMPARE(store.addCaption(latin("it's")), Added::Failed);
    QCOMPARE(
        store.addClient(ClientList::Excluded, latin("PC'1"), QDateTime::currentDateTime(), latin("A")), Added::Failed);
    QVERIFY(!store.removeCaption(latin("x' or '1'='1")));
    // SQL text without a quote is an entry like any other.
    const QString drop = latin("x.exe; drop table account");
    QCOMPARE(store.addProgram(ProgramList::Forbidden, drop), Added::Added);
    QCOMPARE(store.programs(ProgramList::Forbidden), QStringList {drop});
    QCOMPARE(rows(database.connection(), "select count(*) from Capt"), QStringList {latin("0")});
    QCOMPARE(rows(database.connection(), "select count(*) from Restriction"), QStringList {latin("0")});
    QCOMPARE(rows(database.connection(), "select count(*) from Account"), QStringList {latin("0")});
}

void TestRestrictionLists::testCaptionsAreStoredUpperCased()
{
    test::StoreTestDatabase database;
    QVERIFY2(database.isValid(), qPrintable(database.error()));
    Store store(database.connection());
    QCOMPARE(store.addCaption(latin("Poker")), Added::Added);
    QCOMPARE(store.addCaption(latin("poker")), Added::AlreadyThere);
    QCOMPARE(store.captions(), QStringList {latin("POKER")});
    QVERIFY(store.removeCaption(latin("POKER")));
    QCOMPARE(store.captions(), QStringList());
}

void TestRestrictionLists::testClientsKeepTimeAndStaff()
{
    test::StoreTestDatabase database;
    QVERIFY2(database.isValid(), qPrintable(database.error()));
    Store store(database.connection());
    const QDateTime now(QDate(2026, 11, 21), QTime(10, 30, 5));
    QCOMPARE(store.addClient(ClientList::Excluded, latin("pc01"), now, latin("ADMINISTRATOR")), Added::Added);
    QCOMPARE(store.addClient(ClientList::Excluded, latin("PC01"), now, latin("ADMINISTRATOR")), Added::AlreadyThere);
    QCOMPARE(store.addClient(ClientList::Reserved, latin("VIP"), now, latin("ANNE")), Added::Added);
    QCOMPARE(rows(database.connection(), "select ComputerName, Times, User from Restriction"),
        QStringList {latin("PC01 | 2026-11-21T10:30:05.000 | ADMINISTRATOR")});
    QCOMPARE(store.clients(ClientList::Reserved), QStringList {latin("VIP")});
}

void TestRestrictionLists::testClientRemovalNeedsNoListEntry()
{
    test::StoreTestDatabase database;
    QVERIFY2(database.isValid(), qPrintable(database.error()));
    Store store(database.connection());
    QVERIFY(database.connection().Execute(Statement(latin("INSERT INTO RClient (ComputerName) VALUES ('PC09')"))));
    QVERIFY(store.removeClient(ClientList::Reserved, latin("PC09")));
    QCOMPARE(store.clients(ClientList::Reserved), QStringList());
}

QTEST_GUILESS_MAIN(TestRestrictionLists)
#include "TestRestrictionLists.moc"
