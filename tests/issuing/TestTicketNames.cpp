#include "issuing/TicketNames.h"
#include "store/PreferenceKeys.h"
#include "support/IssuingFixtures.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace marlet;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(marlet::TicketPath)
Q_DECLARE_METATYPE(marlet::NameLookup)

namespace {

const QString characterUsername = u"Invalid Character entered in Username!\nValid entry include A-Z and 0-9."_s;
const QString characterPassword = u"Invalid Character entered in Password!\nValid entry include A-Z and 0-9."_s;
const QString reserved = u"Username not acceptable, already in use by client(s)!"_s;
const QString lengthOf10 = u"Username not correctly entered, 1-10 characters required!"_s;
const QString lengthOf7 = u"Username not correctly entered, 1-7 characters required!"_s;

} // namespace

class TestTicketNames : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testBatchPrefix_data();
    void testBatchPrefix();
    void testBatchNameOfDigitsMayStartWithZero();
    void testBatchPasswordLengthFollowsTPlen_data();
    void testBatchPasswordLengthFollowsTPlen();
    void testTPlenIsReadUnderTheProductWord();

    void testReservedWordsInAnyCase_data();
    void testReservedWordsInAnyCase();
    void testUsernameRulesInOrder_data();
    void testUsernameRulesInOrder();
    void testTypedUsernameWithAndWithoutVip_data();
    void testTypedUsernameWithAndWithoutVip();
    void testPasswordRulesInOrder_data();
    void testPasswordRulesInOrder();
    void testPasswordIsStoredInUpperCase();
    void testExistingNameMessagePerPath_data();
    void testExistingNameMessagePerPath();

    void testLookupOverAllOfAccount_data();
    void testLookupOverAllOfAccount();
    void testLookupLeavesTheRecordSetOpenOnTheRowFound();
    void testLookupThatCannotRunIsNeitherFreeNorTaken();
    void testDrawSkipsATakenName();
    void testDrawGivesUpWhenTheStoreCannotBeReached();

private:
    SessionPreferences prefs() const { return SessionPreferences(*m_store, u"Cyber Hut"_s); }
    // Only the lookups need a database; the other tests stay quick without one.
    void openDatabase();

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<Preferences> m_store;
    std::unique_ptr<test::TemporaryStore> m_db;
};

void TestTicketNames::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_store = std::make_unique<Preferences>(m_dir->path());
}

void TestTicketNames::openDatabase()
{
    m_db = std::make_unique<test::TemporaryStore>();
    const QString problem = m_db->open();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void TestTicketNames::testBatchPrefix_data()
{
    QTest::addColumn<QString>("str"); // null: absent
    QTest::addColumn<QString>("selPrefix"); // null: absent
    QTest::addColumn<bool>("vip");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a fresh machine makes NVT names") << QString() << QString() << false << u"NVT"_s;
    QTest::newRow("a fresh machine makes RSV names for VIP") << QString() << QString() << true << u"RSV"_s;
    QTest::newRow("STR is cut to three characters") << u"ABCDE"_s << QString() << false << u"ABC"_s;
    QTest::newRow("a short STR stays short") << u"AB"_s << QString() << false << u"AB"_s;
    QTest::newRow("SelPrefix is taken as it stands") << u"ABC"_s << u"vipx"_s << true << u"vipx"_s;
}

void TestTicketNames::testBatchPrefix()
{
    QFETCH(QString, str);
    QFETCH(QString, selPrefix);
    QFETCH(bool, vip);
    QFETCH(QString, expected);
    SessionPreferences session = prefs();
    if (!str.isNull())
        session.save(keys::STR, str);
    if (!selPrefix.isNull())
        session.save(keys::SelPrefix, selPrefix);
    QCOMPARE(batchPrefix(session, vip), expected);
}

void TestTicketNames::testBatchNameOfDigitsMayStartWithZero()
{
    test::ScriptedSource source = test::ScriptedSource::drawing(u"0471100"_s);
    const QString name = batchUsername(prefs(), batchPrefix(prefs(), false), source.source());
    QCOMPARE(name, u"NVT0471100"_s);
    QCOMPARE(name.size(), 10);
}

void TestTicketNames::testBatchPasswordLengthFollowsTPlen_data()
{
    QTest::addColumn<QString>("tplen"); // null: absent
    QTest::addColumn<int>("length");
    QTest::newRow("absent gives five") << QString() << 5;
    QTest::newRow("8 gives eight") << u"8"_s << 8;
    QTest::newRow("abc counts as five") << u"abc"_s << 5;
    QTest::newRow("an empty value counts as five") << u""_s << 5;
    QTest::newRow("0 gives an empty password") << u"0"_s << 0;
    QTest::newRow("a negative count gives an empty password") << u"-3"_s << 0;
    QTest::newRow("2.5 rounds to even 2") << u"2.5"_s << 2;
    QTest::newRow("a count beyond 16 bits leaves the password empty") << u"40000"_s << 0;
}

void TestTicketNames::testBatchPasswordLengthFollowsTPlen()
{
    QFETCH(QString, tplen);
    QFETCH(int, length);
    SessionPreferences session = prefs();
    if (!tplen.isNull())
        session.save(keys::TPlen, tplen);
    test::ScriptedSource source = test::ScriptedSource::drawing(u"9"_s);
    QCOMPARE(batchPassword(session, source.source()), QString(length, u'9'));
}

void TestTicketNames::testTPlenIsReadUnderTheProductWord()
{
    m_store->SaveSetting(u"Cyber Hut"_s, u"Option"_s, u"TPlen"_s, u"3"_s);
    QCOMPARE(batchPasswordLength(prefs()), 5);
    m_store->SaveSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"8"_s);
    QCOMPARE(batchPasswordLength(prefs()), 8);
}

void TestTicketNames::testReservedWordsInAnyCase_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("isReserved");
    for (const QString& word : {u"admin"_s,
             u"Admin"_s,
             u"ADMINISTRATOR"_s,
             u"solotimer"_s,
             u"ShutTimer"_s,
             u"SHUTDOWN"_s,
             u"restart"_s,
             u"LogOff"_s,
             u"info"_s})
        QTest::newRow(qPrintable(word + u" is reserved"_s)) << word << true;
    for (const QString& word : {u"ADMINX"_s, u"ADMI"_s, u"INFO1"_s, u"LOGOUT"_s, u"RSVADMIN"_s})
        QTest::newRow(qPrintable(word + u" is not"_s)) << word << false;
}

void TestTicketNames::testReservedWordsInAnyCase()
{
    QFETCH(QString, typed);
    QFETCH(bool, isReserved);
    QCOMPARE(isReservedName(typed), isReserved);
}

void TestTicketNames::testUsernameRulesInOrder_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<TicketPath>("path");
    QTest::addColumn<bool>("vipLength");
    QTest::addColumn<QString>("message"); // empty: accepted

    QTest::newRow("an empty name") << u""_s << TicketPath::Custom << false << u"Username is empty!"_s;
    QTest::newRow("ten characters pass") << u"abcdefghij"_s << TicketPath::Custom << false << QString();
    QTest::newRow("eleven characters are refused") << u"abcdefghijk"_s << TicketPath::Custom << false << lengthOf10;
    QTest::newRow("seven characters pass with VIP") << u"abcdefg"_s << TicketPath::Custom << true << QString();
    QTest::newRow("an eighth character is refused with VIP")
        << u"abcdefgh"_s << TicketPath::Custom << true << lengthOf7;
    QTest::newRow("length comes before characters") << u"abc-efghijk"_s << TicketPath::Custom << false << lengthOf10;
    QTest::newRow("length comes before reserved words")
        << u"ADMINISTRATOR"_s << TicketPath::Custom << false << lengthOf10;
    QTest::newRow("a reserved word too long for VIP") << u"SOLOTIMER"_s << TicketPath::Custom << true << lengthOf7;
    QTest::newRow("the custom tab speaks of the password")
        << u"ab_c"_s << TicketPath::Custom << false << characterPassword;
    QTest::newRow("the first member step speaks of the user name")
        << u"ab.c"_s << TicketPath::Membership << false << characterUsername;
    QTest::newRow("the finishing member step speaks of the password")
        << u"ab c"_s << TicketPath::MembershipFinish << false << characterPassword;
    QTest::newRow("a letter that upper case does not make A to Z")
        << u"stra\u00dfe"_s << TicketPath::Custom << false << characterPassword;
    QTest::newRow("characters come before reserved words")
        << u"admin!"_s << TicketPath::Custom << false << characterPassword;
    QTest::newRow("admin is refused") << u"admin"_s << TicketPath::Custom << false << reserved;
    QTest::newRow("ADMINX is accepted") << u"ADMINX"_s << TicketPath::Custom << false << QString();
    QTest::newRow("a reserved word is refused before the VIP prefix")
        << u"info"_s << TicketPath::Custom << true << reserved;
    QTest::newRow("lower case passes") << u"ab12"_s << TicketPath::Membership << false << QString();

    QTest::newRow("a changed name that is empty")
        << u""_s << TicketPath::CredentialChange << false << u"Username is empty!"_s;
    QTest::newRow("a changed name of eleven characters")
        << u"abcdefghijk"_s << TicketPath::CredentialChange << false << u"Username is greater than 10 characters!"_s;
    QTest::newRow("a changed name knows no VIP limit")
        << u"abcdefghij"_s << TicketPath::CredentialChange << true << QString();
    QTest::newRow("a changed name with a bad character")
        << u"a-b"_s << TicketPath::CredentialChange << false << characterUsername;
    QTest::newRow("a changed name that is a reserved word")
        << u"Restart"_s << TicketPath::CredentialChange << false << reserved;
}

void TestTicketNames::testUsernameRulesInOrder()
{
    QFETCH(QString, typed);
    QFETCH(TicketPath, path);
    QFETCH(bool, vipLength);
    QFETCH(QString, message);
    QCOMPARE(usernameProblem(typed, path, vipLength).value_or(QString()), message);
}

void TestTicketNames::testTypedUsernameWithAndWithoutVip_data()
{
    QTest::addColumn<QString>("selPrefix"); // null: absent
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("vip");
    QTest::addColumn<QString>("expected");
    QTest::newRow("without VIP the name in upper case") << QString() << u"ab"_s << false << u"AB"_s;
    QTest::newRow("with VIP the prefix in front") << QString() << u"ab"_s << true << u"RSVAB"_s;
    QTest::newRow("the prefix in upper case") << u"vip"_s << u"Ab1"_s << true << u"VIPAB1"_s;
    QTest::newRow("ten typed characters make thirteen") << QString() << u"abcdefghij"_s << true << u"RSVABCDEFGHIJ"_s;
}

void TestTicketNames::testTypedUsernameWithAndWithoutVip()
{
    QFETCH(QString, selPrefix);
    QFETCH(QString, typed);
    QFETCH(bool, vip);
    QFETCH(QString, expected);
    SessionPreferences session = prefs();
    if (!selPrefix.isNull())
        session.save(keys::SelPrefix, selPrefix);
    QCOMPARE(typedUsername(session, typed, vip), expected);
}

void TestTicketNames::testPasswordRulesInOrder_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<TicketPath>("path");
    QTest::addColumn<QString>("message"); // empty: accepted

    QTest::newRow("an empty password") << u""_s << TicketPath::Custom << u"Password incorrect!"_s;
    QTest::newRow("ten characters pass") << u"abcdefghij"_s << TicketPath::Custom << QString();
    QTest::newRow("one character passes") << u"x"_s << TicketPath::Custom << QString();
    QTest::newRow("eleven characters are refused")
        << u"abcdefghijk"_s << TicketPath::Custom << u"Password not correctly entered (1-10 characters required)!"_s;
    QTest::newRow("length comes before characters")
        << u"a$cdefghijk"_s << TicketPath::Custom << u"Password not correctly entered (1-10 characters required)!"_s;
    QTest::newRow("a bad character on the custom tab") << u"abc$"_s << TicketPath::Custom << characterPassword;
    QTest::newRow("a bad character on the first member step")
        << u"abc$"_s << TicketPath::Membership << characterUsername;
    QTest::newRow("a bad character on the finishing member step")
        << u"abc$"_s << TicketPath::MembershipFinish << characterPassword;
    QTest::newRow("reserved words are fine as ticket passwords") << u"RESTART"_s << TicketPath::Custom << QString();

    QTest::newRow("a changed password that is empty")
        << u""_s << TicketPath::CredentialChange << u"Password is empty!"_s;
    QTest::newRow("a changed password of eleven characters")
        << u"abcdefghijk"_s << TicketPath::CredentialChange << u"Password is greater than 10 characters!"_s;
    QTest::newRow("a changed password with a bad character")
        << u"p@ss"_s << TicketPath::CredentialChange << characterPassword;
    QTest::newRow("RESTART as a changed password speaks of a username")
        << u"restart"_s << TicketPath::CredentialChange << reserved;
}

void TestTicketNames::testPasswordRulesInOrder()
{
    QFETCH(QString, typed);
    QFETCH(TicketPath, path);
    QFETCH(QString, message);
    QCOMPARE(passwordProblem(typed, path).value_or(QString()), message);
}

void TestTicketNames::testPasswordIsStoredInUpperCase()
{
    QCOMPARE(typedPassword(u"abc12x"_s), u"ABC12X"_s);
}

void TestTicketNames::testExistingNameMessagePerPath_data()
{
    QTest::addColumn<TicketPath>("path");
    QTest::addColumn<bool>("member");
    QTest::addColumn<QString>("message");
    QTest::newRow("custom ticket over a normal ticket")
        << TicketPath::Custom << false << u"Ticket not created because it Already exist!"_s;
    QTest::newRow("custom ticket over a member ticket")
        << TicketPath::Custom << true << u"Ticket not created because it Already exist!"_s;
    QTest::newRow("first member step over a normal ticket")
        << TicketPath::Membership << false << u"Ticket ID already exist!"_s;
    QTest::newRow("first member step over a member ticket")
        << TicketPath::Membership << true
        << u"Member Ticket ID already exist, do you want to view the member's information?"_s;
    QTest::newRow("finishing member step")
        << TicketPath::MembershipFinish << false << u"Member Ticket not created because it Already exist!"_s;
    QTest::newRow("change of a member's name")
        << TicketPath::CredentialChange << true << u"Username is already existing!"_s;
}

void TestTicketNames::testExistingNameMessagePerPath()
{
    QFETCH(TicketPath, path);
    QFETCH(bool, member);
    QFETCH(QString, message);
    QCOMPARE(existingNameMessage(path, member), message);
}

void TestTicketNames::testLookupOverAllOfAccount_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("member");
    QTest::addColumn<QString>("sought");
    QTest::addColumn<NameLookup>("expected");
    QTest::newRow("a name nobody has is free")
        << u"Account"_s << u"NVT1111111"_s << false << u"NVT2222222"_s << NameLookup::Free;
    QTest::newRow("a normal ticket's name is taken")
        << u"Account"_s << u"NVT1111111"_s << false << u"NVT1111111"_s << NameLookup::Taken;
    QTest::newRow("a member ticket's name is taken")
        << u"Account"_s << u"JOHN"_s << true << u"JOHN"_s << NameLookup::Taken;
    QTest::newRow("names match in any case") << u"Account"_s << u"JOHN"_s << true << u"john"_s << NameLookup::Taken;
    QTest::newRow("a deleted ticket in the bin does not block its name")
        << u"RecycleBin"_s << u"NVT1111111"_s << false << u"NVT1111111"_s << NameLookup::Free;
}

void TestTicketNames::testLookupOverAllOfAccount()
{
    openDatabase();
    QFETCH(QString, table);
    QFETCH(QString, stored);
    QFETCH(bool, member);
    QFETCH(QString, sought);
    QFETCH(NameLookup, expected);
    QVERIFY(m_db->addTicket(table, stored, member));
    Recordset recordset;
    QCOMPARE(lookUpUsername(recordset, m_db->connection, sought), expected);
    QCOMPARE(recordset.State(), 1);
}

void TestTicketNames::testLookupLeavesTheRecordSetOpenOnTheRowFound()
{
    openDatabase();
    QVERIFY(m_db->addTicket(u"Account"_s, u"JOHN"_s, true));
    Recordset recordset;
    QCOMPARE(lookUpUsername(recordset, m_db->connection, u"NOBODY"_s), NameLookup::Free);
    // The same record set is closed and opened again for the next name.
    QCOMPARE(lookUpUsername(recordset, m_db->connection, u"JOHN"_s, LockType::ReadOnly), NameLookup::Taken);
    QCOMPARE(recordset.value(u"Username"_s).toString(), u"JOHN"_s);
    QCOMPARE(recordset.value(u"member"_s), QVariant(true));
}

void TestTicketNames::testLookupThatCannotRunIsNeitherFreeNorTaken()
{
    openDatabase();
    Recordset recordset;
    QCOMPARE(lookUpUsername(recordset, m_db->connection, u"O'BRIEN"_s), NameLookup::Failed);
    m_db->connection.Close();
    QCOMPARE(lookUpUsername(recordset, m_db->connection, u"NOBODY"_s), NameLookup::Failed);
}

void TestTicketNames::testDrawSkipsATakenName()
{
    openDatabase();
    QVERIFY(m_db->addTicket(u"Account"_s, u"NVT0000000"_s, false));
    QVERIFY(m_db->addTicket(u"RecycleBin"_s, u"NVT1111111"_s, false));
    test::ScriptedSource source = test::ScriptedSource::drawing(u"00000001111111"_s);
    Recordset recordset;
    const std::optional<QString> name
        = drawFreeUsername(recordset, m_db->connection, prefs(), u"NVT"_s, source.source());
    QCOMPARE(name, std::optional<QString>(u"NVT1111111"_s));
    QCOMPARE(source.calls(), 14);
    QCOMPARE(recordset.State(), 1);
    QCOMPARE(recordset.RecordCount(), 0L);
}

void TestTicketNames::testDrawGivesUpWhenTheStoreCannotBeReached()
{
    openDatabase();
    m_db->connection.Close();
    test::ScriptedSource source = test::ScriptedSource::drawing(u"1234567"_s);
    Recordset recordset;
    QCOMPARE(drawFreeUsername(recordset, m_db->connection, prefs(), u"NVT"_s, source.source()), std::nullopt);
    QCOMPARE(source.calls(), 7 * UsernameDrawAttempts);
}

QTEST_GUILESS_MAIN(TestTicketNames)
#include "TestTicketNames.moc"
