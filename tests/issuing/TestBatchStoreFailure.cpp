#include "component/ScreenRegistry.h"
#include "issuing/BatchGeneration.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Operator.h"
#include "store/Recordset.h"
#include "support/ScriptedCafe.h"

#include <QTest>

namespace marlet {

namespace {

const QString confirmation = QStringLiteral(
    "You have choosen to Generate 5 number(s) of 1hour(s) 0min(s)' Ticket(s) of Cost N50 with Expiration Date of 5 "
    "days, Continue?");
const QString printQuestion = QStringLiteral("And Print Preview Ticket(s) with Large Print? ");

} // namespace

// A batch is a success only for the tickets the store took: a ticket the store refuses twice ends
// the batch with the store's reason, and the group counts the tickets it holds.
class TestBatchStoreFailure : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void testARefusedTicketStopsTheBatchAndKeepsWhatWasStored();
    void testARefusalThatPassesIsTriedOnceMore();
    void testABatchOfNoStoredTicketCountsNothing();
    void testOpeningTheScreenReconcilesAKilledBatch();
    void testADamagedDatabaseStopsTheBatchAtItsFirstError();

private:
    // Refuses every insert into Account once the table holds `limit` rows.
    bool limitTickets(int limit, const char* reason);
    QString one(const QString& query);
    void generateFive();

    std::unique_ptr<test::ScriptedCafe> m_cafe;
};

void TestBatchStoreFailure::init()
{
    m_cafe = std::make_unique<test::ScriptedCafe>();
    QCOMPARE(m_cafe->prepare(), QString());
    m_cafe->platform.setNow(QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
    m_cafe->open(Screen::GenAcc);
}

void TestBatchStoreFailure::cleanup()
{
    const QStringList failures = m_cafe->finish();
    QCOMPARE(failures.join(u'\n'), QString());
    m_cafe.reset();
}

bool TestBatchStoreFailure::limitTickets(int limit, const char* reason)
{
    return m_cafe->database.connection().executeNative(
        QStringLiteral("CREATE TRIGGER refuse BEFORE INSERT ON Account WHEN (SELECT count(*) FROM Account) >= %1 "
                       "BEGIN SELECT RAISE(ABORT, '%2'); END")
            .arg(limit)
            .arg(QLatin1String(reason)));
}

QString TestBatchStoreFailure::one(const QString& query)
{
    Recordset rows;
    if (!rows.Open(query, m_cafe->database.connection()) || rows.Eof())
        return QStringLiteral("<none>");
    return rows.value(0).toString();
}

void TestBatchStoreFailure::generateFive()
{
    Operator::setText(m_cafe->control("cboNumber"), QStringLiteral("5"));
    Operator::setText(m_cafe->control("cboHours"), QStringLiteral("1"));
    m_cafe->platform.expectMessage(confirmation, MsgStyle::YesNoQuestionNoDefault, MsgResult::Yes);
    m_cafe->platform.expectMessage(printQuestion, MsgStyle::YesNoCancelQuestion, MsgResult::No);
}

void TestBatchStoreFailure::testARefusedTicketStopsTheBatchAndKeepsWhatWasStored()
{
    QVERIFY(limitTickets(3, "database or disk is full"));
    generateFive();
    m_cafe->platform.expectMessage(
        QStringLiteral("Ticket generation stopped: the database did not store ticket 4 (database or disk is full). "
                       "The 3 ticket(s) stored before it are kept in Ticket Group 261121100000."),
        MsgStyle::Stop);
    Operator::click(m_cafe->control("cmdGenerate"));
    QCOMPARE(m_cafe->platform.pendingMessages(), 0);

    QCOMPARE(one(QStringLiteral("select count(*) from Account")), QStringLiteral("3"));
    QCOMPARE(m_cafe->control("PrintList").grid().rows(), 4);
    QCOMPARE(one(QStringLiteral("select Number from TicketInfo")), QStringLiteral("3"));
    QCOMPARE(one(QStringLiteral("select TimeGenerated from TicketInfo")),
        QStringLiteral("Interrupted at 10:00, 21/11/26 [RANDOM]"));
    QCOMPARE(one(QStringLiteral("select numbers from Activated")), QStringLiteral("3"));
    QCOMPARE(one(QStringLiteral("select TotGenerated from Register")), QStringLiteral("3"));
}

void TestBatchStoreFailure::testARefusalThatPassesIsTriedOnceMore()
{
    // The store refuses the fourth ticket once, as a lock held a moment too long would.
    QVERIFY(m_cafe->database.connection().executeNative(QStringLiteral("CREATE TABLE Refused (n INTEGER)")));
    // A failing statement keeps what its trigger did before the failure: the refusal is noted.
    QVERIFY(m_cafe->database.connection().executeNative(
        QStringLiteral("CREATE TRIGGER refuse BEFORE INSERT ON Account WHEN (SELECT count(*) FROM Account) = 3 "
                       "AND (SELECT count(*) FROM Refused) = 0 "
                       "BEGIN INSERT INTO Refused VALUES (1); SELECT RAISE(FAIL, 'database is locked'); END")));
    generateFive();
    m_cafe->platform.expectMessage(QStringLiteral("Ticket Generation Completed Successfully!"), MsgStyle::Info);
    Operator::click(m_cafe->control("cmdGenerate"));
    QCOMPARE(m_cafe->platform.pendingMessages(), 0);
    QCOMPARE(one(QStringLiteral("select count(*) from Refused")), QStringLiteral("1"));
    QCOMPARE(one(QStringLiteral("select count(*) from Account")), QStringLiteral("5"));
    QCOMPARE(one(QStringLiteral("select Number from TicketInfo")), QStringLiteral("6"));
}

void TestBatchStoreFailure::testABatchOfNoStoredTicketCountsNothing()
{
    QVERIFY(limitTickets(0, "attempt to write a readonly database"));
    generateFive();
    m_cafe->platform.expectMessage(
        QStringLiteral("Ticket generation stopped: the database did not store ticket 1 (attempt to write a readonly "
                       "database). The 0 ticket(s) stored before it are kept in Ticket Group 261121100000."),
        MsgStyle::Stop);
    Operator::click(m_cafe->control("cmdGenerate"));
    QCOMPARE(m_cafe->platform.pendingMessages(), 0);
    QCOMPARE(one(QStringLiteral("select count(*) from Account")), QStringLiteral("0"));
    QCOMPARE(one(QStringLiteral("select Number from TicketInfo")), QStringLiteral("0"));
    QCOMPARE(one(QStringLiteral("select TotGenerated from Register")), QStringLiteral("0"));
}

void TestBatchStoreFailure::testOpeningTheScreenReconcilesAKilledBatch()
{
    // Yesterday's batch of ten was killed after two tickets.
    Connection& connection = m_cafe->database.connection();
    QVERIFY(connection.Execute(QStringLiteral(
        "INSERT INTO TicketInfo (TicketGrp,[Number],[Time],Amount,TotalCost,GeneratedBy,TimeGenerated) Values "
        "('261120180000',10,60,'50',500,'ADMINISTRATOR','Started at 18:00, 20/11/26')")));
    for (const char* name : {"NVT1111111", "NVT2222222"}) {
        QVERIFY(connection.Execute(Statement(
            QStringLiteral("INSERT INTO Account (Username,Password,TicketGrp) Values ('{}','1','261120180000')"),
            {QLatin1String(name)})));
    }
    m_cafe->open(Screen::GenAcc);
    QCOMPARE(one(QStringLiteral("select Number from TicketInfo")), QStringLiteral("2"));
    QCOMPARE(one(QStringLiteral("select TotalCost from TicketInfo")), QStringLiteral("100"));
    QCOMPARE(one(QStringLiteral("select TimeGenerated from TicketInfo")),
        QStringLiteral("Interrupted at 18:00, 20/11/26 [RANDOM]"));
}

void TestBatchStoreFailure::testADamagedDatabaseStopsTheBatchAtItsFirstError()
{
    Connection& connection = m_cafe->session().connection();
    connection.Close();
    m_cafe->database.connection().Close();
    QVERIFY(test::damageTable(m_cafe->database.path(), "account"));
    QVERIFY(connection.Open(m_cafe->database.connectionString()));
    generateFive();
    m_cafe->platform.expectMessage(
        QStringLiteral("Ticket generation stopped: the database did not store ticket 1 (The database is damaged "
                       "(database disk image is malformed). Nothing more is read from it or written to it; restore "
                       "it from a backup.). The 0 ticket(s) stored before it are kept in Ticket Group 261121100000."),
        MsgStyle::Stop);
    Operator::click(m_cafe->control("cmdGenerate"));
    QCOMPARE(m_cafe->platform.pendingMessages(), 0);
    // Nothing old is listed as new. The program log's line went in before the damage showed; after
    // it nothing was written: no group, no activation, no count.
    QCOMPARE(m_cafe->control("PrintList").grid().rows(), 1);
    connection.Close();
    QVERIFY(m_cafe->database.connection().Open(m_cafe->database.connectionString()));
    QCOMPARE(one(QStringLiteral("select SystemUsage from SysUsage")), QStringLiteral("Ticket(s) Generated"));
    QCOMPARE(one(QStringLiteral("select count(*) from TicketInfo")), QStringLiteral("0"));
    QCOMPARE(one(QStringLiteral("select count(*) from Activated")), QStringLiteral("0"));
    QCOMPARE(one(QStringLiteral("select TotGenerated from Register")), QStringLiteral("0"));
}

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestBatchStoreFailure)
#include "TestBatchStoreFailure.moc"
