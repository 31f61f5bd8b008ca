#include "store/DatabaseInit.h"

#include "store/Connection.h"
#include "store/DatabaseCheck.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "store/ScratchDatabase.h"
#include "support/StoreTestDatabase.h"

#include <QCoreApplication>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

namespace {

InitResult runInit(const QString& connectionString, const QString& password, bool force)
{
    return DatabaseInit {connectionString, password, force}.run();
}

} // namespace

class TestDatabaseInit : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testNewDatabaseHasEveryTableWithItsColumnsInOrder();
    void testOptionsRowHoldsTheDefaults();
    void testAdministratorAccountHasItsFixedRights();
    void testRegisterStartsAtZero();
    void testChosenPasswordIsStoredInUpperCase();
    void testGeneratedPasswordsAreReadableAndDiffer();
    void testUnfitPasswordsAreRefused_data();
    void testUnfitPasswordsAreRefused();
    void testExistingDatabaseIsRefusedUnlessForced();
    void testForceReplacesTheDatabase();
    void testForceLeavesAFileThatIsNoDatabase();
    void testForceReplacesAnEmptyFile();
    void testTheDatabaseIsMadeAsideAndRenamedIntoPlace();
    void testTheDatabaseIsReadableByItsOwnerOnly();
    void testConnectionStringForms_data();
    void testConnectionStringForms();
    void testPostgresServerThatIsNotThere();
    void testPostgresDatabase();
    void testTextColumnsIgnoreCase();

private:
    QString databasePath() const { return m_dir->filePath(u"marlet.db"_s); }
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestDatabaseInit::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void TestDatabaseInit::testNewDatabaseHasEveryTableWithItsColumnsInOrder()
{
    const InitResult result = runInit(databasePath(), u"secret"_s, false);
    QVERIFY2(result.ok(), qPrintable(result.error));
    Connection connection;
    QVERIFY(connection.Open(databasePath()));
    for (const TableDef& table : Schema::standard().tables()) {
        Recordset rs;
        QVERIFY2(
            rs.Open(QString(u"Select * from "_s + table.name), connection), qPrintable(table.name + rs.lastError()));
        QCOMPARE(rs.fieldCount(), table.columns.size());
        for (int i = 0; i < rs.fieldCount(); ++i)
            QCOMPARE(rs.fieldName(i), table.columns.at(i).name);
    }
}

void TestDatabaseInit::testOptionsRowHoldsTheDefaults()
{
    QVERIFY(runInit(databasePath(), {}, false).ok());
    Connection connection;
    QVERIFY(connection.Open(databasePath()));
    Recordset rs;
    QVERIFY(rs.Open(u"Select * FROM Options"_s, connection));
    QCOMPARE(rs.RecordCount(), 1);
    QCOMPARE(rs.value(u"TicketIniName"_s), QVariant(u"NVT"_s));
    QCOMPARE(rs.value(u"Currency"_s), QVariant(u"N"_s));
    QCOMPARE(rs.value(u"NoUser"_s), QVariant(false));
    QCOMPARE(rs.value(u"AdministratorPower"_s), QVariant(false));
    QCOMPARE(rs.value(u"LogIn"_s), QVariant(true));
    QCOMPARE(rs.value(u"NightTimeStart"_s), QVariant(u"00:00"_s));
    QCOMPARE(rs.value(u"NightTimeEnd"_s), QVariant(u"06:00"_s));
    QCOMPARE(rs.value(u"Title"_s), QVariant(u"Norvantis v2.3.1"_s));
    QCOMPARE(rs.value(u"RecycleBinSize"_s), QVariant(qint64(5000)));
}

void TestDatabaseInit::testAdministratorAccountHasItsFixedRights()
{
    QVERIFY(runInit(databasePath(), u"pass"_s, false).ok());
    Connection connection;
    QVERIFY(connection.Open(databasePath()));
    Recordset rs;
    QVERIFY(
        rs.Open(Statement(u"Select * from Users where Username = '{}' and Type = 'ADMINISTRATOR' and Password = '{}'"_s,
                    {u"ADMINISTRATOR"_s, u"PASS"_s}),
            connection));
    QCOMPARE(rs.RecordCount(), 1);
    QCOMPARE(rs.value(u"Expire"_s), QVariant(u"999"_s));
    QCOMPARE(rs.value(u"Solotime"_s), QVariant(60.0));
    for (const QString& right : {u"Allocate"_s, u"Shutrest"_s, u"XView"_s, u"Pass"_s, u"enabled"_s})
        QCOMPARE(rs.value(right), QVariant(true));
    for (const QString& right : {u"Generate"_s, u"Print"_s, u"Pause"_s, u"Option"_s, u"POS"_s, u"ActBox"_s})
        QCOMPARE(rs.value(right), QVariant(false));
}

void TestDatabaseInit::testRegisterStartsAtZero()
{
    QVERIFY(runInit(databasePath(), {}, false).ok());
    Connection connection;
    QVERIFY(connection.Open(databasePath()));
    long changed = 0;
    QVERIFY(connection.Execute(
        Statement(u"UPDATE Register SET TotGenerated = TotGenerated + {}, TotCost = TotCost + {}"_s, {10, 500}),
        &changed));
    QCOMPARE(changed, 1L);
    Recordset rs;
    QVERIFY(rs.Open(u"Select * from Register"_s, connection));
    QCOMPARE(rs.RecordCount(), 1);
    QCOMPARE(rs.value(u"TotGenerated"_s), QVariant(qint64(10)));
    QCOMPARE(rs.value(u"TotCost"_s), QVariant(qint64(500)));
}

void TestDatabaseInit::testChosenPasswordIsStoredInUpperCase()
{
    const InitResult result = runInit(databasePath(), u"Secret9"_s, false);
    QCOMPARE(result.error, QString());
    QCOMPARE(result.administratorPassword, u"SECRET9"_s);
    Connection connection;
    QVERIFY(connection.Open(databasePath()));
    Recordset rs;
    QVERIFY(rs.Open(u"Select * from Users"_s, connection));
    QCOMPARE(rs.value(u"Password"_s), QVariant(u"SECRET9"_s));
}

void TestDatabaseInit::testGeneratedPasswordsAreReadableAndDiffer()
{
    const InitResult result = runInit(databasePath(), {}, false);
    QVERIFY(result.ok());
    static const QRegularExpression shape(u"^[A-HJ-NP-Z2-9]{12}$"_s);
    QVERIFY2(shape.match(result.administratorPassword).hasMatch(), qPrintable(result.administratorPassword));
    QSet<QString> seen;
    for (int i = 0; i < 50; ++i)
        seen.insert(DatabaseInit::generatePassword());
    QCOMPARE(seen.size(), 50);
}

void TestDatabaseInit::testUnfitPasswordsAreRefused_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("problem");
    QTest::newRow("a password with a quote") << u"O'NEIL"_s << u"The administrator password must not hold a quote."_s;
    QTest::newRow("a password of sixteen characters")
        << u"ABCDEFGHIJKLMNOP"_s << u"The administrator password is longer than 15 characters."_s;
}

void TestDatabaseInit::testUnfitPasswordsAreRefused()
{
    QFETCH(QString, password);
    QFETCH(QString, problem);
    const InitResult result = runInit(databasePath(), password, false);
    QCOMPARE(result.error, problem);
    QVERIFY(!QFile::exists(databasePath()));
}

void TestDatabaseInit::testExistingDatabaseIsRefusedUnlessForced()
{
    QVERIFY(runInit(databasePath(), u"FIRST"_s, false).ok());
    const InitResult again = runInit(databasePath(), u"SECOND"_s, false);
    QVERIFY(!again.ok());
    QVERIFY(again.error.contains(databasePath()));
    QCOMPARE(again.administratorPassword, QString());
    Connection connection;
    QVERIFY(connection.Open(databasePath()));
    Recordset rs;
    QVERIFY(rs.Open(u"Select * from Users"_s, connection));
    QCOMPARE(rs.value(u"Password"_s), QVariant(u"FIRST"_s));
}

void TestDatabaseInit::testForceReplacesTheDatabase()
{
    QVERIFY(runInit(databasePath(), u"FIRST"_s, false).ok());
    {
        Connection connection;
        QVERIFY(connection.Open(databasePath()));
        QVERIFY(connection.Execute(u"INSERT INTO Capt (Caption) Values ('GAMES')"_s));
    }
    QVERIFY(runInit(databasePath(), u"SECOND"_s, true).ok());
    Connection connection;
    QVERIFY(connection.Open(databasePath()));
    Recordset rs;
    QVERIFY(rs.Open(u"Select * from Capt"_s, connection));
    QCOMPARE(rs.RecordCount(), 0);
    rs.Close();
    QVERIFY(rs.Open(u"Select * from Users"_s, connection));
    QCOMPARE(rs.value(u"Password"_s), QVariant(u"SECOND"_s));
}

void TestDatabaseInit::testForceLeavesAFileThatIsNoDatabase()
{
    QFile notes(databasePath());
    QVERIFY(notes.open(QIODevice::WriteOnly));
    notes.write("the café's notes\n");
    notes.close();
    const InitResult result = runInit(databasePath(), u"secret"_s, true);
    QCOMPARE(result.error, u"'%1' is not a database; it is left as it is."_s.arg(databasePath()));
    QVERIFY(notes.open(QIODevice::ReadOnly));
    QCOMPARE(notes.readAll(), QByteArray("the café's notes\n"));
}

void TestDatabaseInit::testForceReplacesAnEmptyFile()
{
    QFile empty(databasePath());
    QVERIFY(empty.open(QIODevice::WriteOnly));
    empty.close();
    QVERIFY(runInit(databasePath(), u"secret"_s, true).ok());
    Connection connection;
    QVERIFY(connection.Open(databasePath()));
    Recordset rs;
    QVERIFY(rs.Open(u"Select * from Users"_s, connection));
    QCOMPARE(rs.RecordCount(), 1);
}

void TestDatabaseInit::testTheDatabaseIsMadeAsideAndRenamedIntoPlace()
{
    QVERIFY(runInit(databasePath(), u"secret"_s, false).ok());
    // Only the database is left in the folder: no half-made file beside it, no journal.
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files | QDir::Hidden), QStringList {u"marlet.db"_s});
}

void TestDatabaseInit::testTheDatabaseIsReadableByItsOwnerOnly()
{
    QVERIFY(runInit(databasePath(), u"secret"_s, false).ok());
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QCOMPARE(QFile::permissions(databasePath()) & others, QFile::Permissions());
    QVERIFY(QFile::permissions(databasePath()) & QFile::ReadOwner);
}

void TestDatabaseInit::testConnectionStringForms_data()
{
    QTest::addColumn<QString>("form");
    QTest::newRow("a bare path") << u"%1"_s;
    QTest::newRow("an sqlite: prefix") << u"sqlite:%1"_s;
    QTest::newRow("a provider string")
        << u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=%1;Persist Security Info=False"_s;
}

void TestDatabaseInit::testConnectionStringForms()
{
    QFETCH(QString, form);
    const QString connectionString = form.arg(databasePath());
    QVERIFY(runInit(connectionString, {}, false).ok());
    QVERIFY(QFile::exists(databasePath()));
    Connection connection;
    QVERIFY2(connection.Open(connectionString), qPrintable(connection.lastError()));
    Recordset rs;
    QVERIFY(rs.Open(u"Select * from Options"_s, connection));
    QCOMPARE(rs.RecordCount(), 1);
}

void TestDatabaseInit::testPostgresServerThatIsNotThere()
{
    const InitResult result = runInit(u"host=/nonexistent-marlet-folder dbname=marlet"_s, {}, false);
    QVERIFY2(result.error.startsWith(u"The PostgreSQL server could not be reached: "_s), qPrintable(result.error));
}

// On the test server (MARLET_TEST_POSTGRES): an empty database gets the tables, a second run is
// refused, a forced one replaces what was written.
void TestDatabaseInit::testPostgresDatabase()
{
    if (ScratchDatabase::server().isEmpty())
        QSKIP("no PostgreSQL server given (MARLET_TEST_POSTGRES)");
    const QString server = ScratchDatabase::server();
    const QString name = u"marlet_init_%1"_s.arg(QCoreApplication::applicationPid());
    Connection maintenance;
    QVERIFY2(maintenance.Open(server + u" dbname=postgres"_s), qPrintable(maintenance.lastError()));
    QVERIFY(maintenance.executeNative(u"DROP DATABASE IF EXISTS "_s + name));
    QVERIFY2(maintenance.executeNative(u"CREATE DATABASE "_s + name), qPrintable(maintenance.lastError()));
    const QString connectionString = server + u" dbname="_s + name;
    const InitResult made = runInit(connectionString, u"secret"_s, false);
    QVERIFY2(made.ok(), qPrintable(made.error));
    QCOMPARE(made.administratorPassword, u"SECRET"_s);
    {
        Connection connection;
        QVERIFY2(connection.Open(connectionString), qPrintable(connection.lastError()));
        QCOMPARE(test::queryRows(connection, u"select Username, Password, Allocate, Generate from Users"_s),
            QStringList {u"ADMINISTRATOR | SECRET | True | False"_s});
        QVERIFY(connection.Execute(Statement(u"Insert into Capt (Caption) values ('SOLITAIRE')"_s)));
        QCOMPARE(test::queryRows(connection, u"select * from Capt where Caption = 'solitaire'"_s),
            QStringList {u"SOLITAIRE"_s});
        QCOMPARE(databaseProblem(connectionString), QString());
    }
    const InitResult again = runInit(connectionString, {}, false);
    QCOMPARE(again.error,
        u"The database '%1' already holds ticket tables; they are replaced only when forced."_s.arg(connectionString));
    const InitResult forced = runInit(connectionString, u"OTHER"_s, true);
    QVERIFY2(forced.ok(), qPrintable(forced.error));
    {
        Connection connection;
        QVERIFY(connection.Open(connectionString));
        QCOMPARE(test::queryRows(connection, u"select count(*) from Capt"_s), QStringList {u"0"_s});
        QCOMPARE(test::queryRows(connection, u"select Password from Users"_s), QStringList {u"OTHER"_s});
    }
    QVERIFY(maintenance.executeNative(u"DROP DATABASE "_s + name + u" WITH (FORCE)"_s));
    QCOMPARE(databaseProblem(connectionString).isEmpty(), false);
}

void TestDatabaseInit::testTextColumnsIgnoreCase()
{
    QVERIFY(runInit(databasePath(), {}, false).ok());
    Connection connection;
    QVERIFY(connection.Open(databasePath()));
    QVERIFY(connection.Execute(u"INSERT INTO Capt (Caption) Values ('SOLITAIRE')"_s));
    Recordset rs;
    QVERIFY(rs.Open(Statement(u"Select * from Capt where Caption = '{}'"_s, {u"solitaire"_s}), connection));
    QCOMPARE(rs.RecordCount(), 1);
    rs.Close();
    QVERIFY(rs.Open(Statement(u"Select * from capt where caption like '{}%'"_s, {u"soli"_s}), connection));
    QCOMPARE(rs.RecordCount(), 1);
}

QTEST_GUILESS_MAIN(TestDatabaseInit)
#include "TestDatabaseInit.moc"
