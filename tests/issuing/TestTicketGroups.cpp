#include "issuing/TicketGroup.h"
#include "store/Connection.h"
#include "store/Recordset.h"
#include "support/StoreTestDatabase.h"

#include <QTest>

namespace marlet {

namespace {

const QDateTime tenOClock(QDate(2026, 11, 21), QTime(10, 0));

TicketGroupValues batchOfFive()
{
    return {QString(), 5.0f, 60, QStringLiteral("50"), 250, QStringLiteral("ADMINISTRATOR")};
}

} // namespace

// A new ticket group is unique in the store: the clock's second, or the next second that no group
// holds, however the other group came there.
class TestTicketGroups : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void testTheFirstGroupIsTheClocksSecond();
    void testASecondGroupInTheSameSecondTakesTheNext();
    void testTicketsOfAGroupWithoutItsRowKeepTheSecondTaken();
    void testAGroupAddedAtTheVeryMomentMovesOn();
    void testTheStoreRefusesASecondRowOfAGroup();
    void testAKilledBatchIsReconciled();
    void testARunningBatchIsLeftAlone();
    void testACompletedGroupIsLeftAlone();

private:
    QString groups();
    // A group row as a batch of ten leaves it when killed after `made` tickets.
    void startedBatch(const QDateTime& start, int made);
    QString groupColumn(const char* column);

    std::unique_ptr<test::StoreTestDatabase> m_database;
};

void TestTicketGroups::init()
{
    m_database = std::make_unique<test::StoreTestDatabase>();
    QVERIFY2(m_database->isValid(), qPrintable(m_database->error()));
}

QString TestTicketGroups::groups()
{
    Recordset rows;
    if (!rows.Open(QStringLiteral("Select * from TicketInfo order by TicketGrp"), m_database->connection()))
        return rows.lastError();
    QStringList found;
    for (; !rows.Eof(); rows.MoveNext())
        found << rows.value(QStringLiteral("TicketGrp")).toString();
    return found.join(u' ');
}

void TestTicketGroups::testTheFirstGroupIsTheClocksSecond()
{
    Recordset row;
    const NewTicketGroup group = addTicketGroup(row, m_database->connection(), batchOfFive(), tenOClock);
    QCOMPARE(group.TicketGrp, QStringLiteral("261121100000"));
    QVERIFY(group.added);
    QCOMPARE(groups(), QStringLiteral("261121100000"));
}

void TestTicketGroups::testASecondGroupInTheSameSecondTakesTheNext()
{
    Recordset first;
    Recordset second;
    Recordset third;
    addTicketGroup(first, m_database->connection(), batchOfFive(), tenOClock);
    QCOMPARE(addTicketGroup(second, m_database->connection(), batchOfFive(), tenOClock).TicketGrp,
        QStringLiteral("261121100001"));
    QCOMPARE(addTicketGroup(third, m_database->connection(), batchOfFive(), tenOClock).TicketGrp,
        QStringLiteral("261121100002"));
    QCOMPARE(groups(), QStringLiteral("261121100000 261121100001 261121100002"));
}

void TestTicketGroups::testTicketsOfAGroupWithoutItsRowKeepTheSecondTaken()
{
    QVERIFY(m_database->connection().Execute(QStringLiteral(
        "INSERT INTO Account (Username,Password,TicketGrp) Values ('NVT1234567','123','261121100000')")));
    Recordset row;
    QCOMPARE(addTicketGroup(row, m_database->connection(), batchOfFive(), tenOClock).TicketGrp,
        QStringLiteral("261121100001"));
}

void TestTicketGroups::testAGroupAddedAtTheVeryMomentMovesOn()
{
    // Another server adds the same group between the look and the insert: the store's unique index
    // refuses the second row, as this trigger does once (a failing statement keeps what its trigger
    // did before the failure, so the refusal is noted).
    Connection& connection = m_database->connection();
    QVERIFY(connection.executeNative(QStringLiteral("CREATE TABLE Raced (n INTEGER)")));
    QVERIFY(connection.executeNative(QStringLiteral(
        "CREATE TRIGGER race BEFORE INSERT ON TicketInfo WHEN (SELECT count(*) FROM Raced) = 0 BEGIN "
        "INSERT INTO Raced VALUES (1); SELECT RAISE(FAIL, 'UNIQUE constraint failed: TicketInfo.TicketGrp'); END")));
    Recordset row;
    const NewTicketGroup group = addTicketGroup(row, connection, batchOfFive(), tenOClock);
    QCOMPARE(group.TicketGrp, QStringLiteral("261121100001"));
    QVERIFY(group.added);
    QCOMPARE(groups(), QStringLiteral("261121100001"));
}

void TestTicketGroups::testTheStoreRefusesASecondRowOfAGroup()
{
    Recordset row;
    addTicketGroup(row, m_database->connection(), batchOfFive(), tenOClock);
    QVERIFY(!m_database->connection().Execute(
        QStringLiteral("INSERT INTO TicketInfo (TicketGrp) Values ('261121100000')")));
}

void TestTicketGroups::startedBatch(const QDateTime& start, int made)
{
    Recordset row;
    TicketGroupValues values = batchOfFive();
    values.Number = 10.0f;
    values.TotalCost = 500;
    const QString group = addTicketGroup(row, m_database->connection(), values, start).TicketGrp;
    for (int ticket = 1; ticket <= made; ++ticket) {
        QVERIFY(m_database->connection().Execute(Statement(
            QStringLiteral("INSERT INTO Account (Username,Password,TicketGrp) Values ('NVT000000{}','1','{}')"),
            {QString::number(ticket), group})));
    }
}

QString TestTicketGroups::groupColumn(const char* column)
{
    Recordset row;
    if (!row.Open(QStringLiteral("Select * from TicketInfo"), m_database->connection()) || row.Eof())
        return QStringLiteral("<none>");
    return row.value(QLatin1String(column)).toString();
}

void TestTicketGroups::testAKilledBatchIsReconciled()
{
    startedBatch(tenOClock, 3);
    QCOMPARE(groupColumn("TimeGenerated"), QStringLiteral("Started at 10:00, 21/11/26"));
    QCOMPARE(reconcileInterruptedGroups(m_database->connection(), tenOClock.addSecs(20 * 60)), 1);
    QCOMPARE(groupColumn("Number"), QStringLiteral("3"));
    QCOMPARE(groupColumn("TotalCost"), QStringLiteral("150"));
    QCOMPARE(groupColumn("TimeGenerated"), QStringLiteral("Interrupted at 10:00, 21/11/26 [RANDOM]"));
    QCOMPARE(reconcileInterruptedGroups(m_database->connection(), tenOClock.addSecs(30 * 60)), 0);
}

void TestTicketGroups::testARunningBatchIsLeftAlone()
{
    startedBatch(tenOClock, 3);
    QCOMPARE(reconcileInterruptedGroups(m_database->connection(), tenOClock.addSecs(2 * 60)), 0);
    QCOMPARE(groupColumn("Number"), QStringLiteral("10"));
    QCOMPARE(groupColumn("TimeGenerated"), QStringLiteral("Started at 10:00, 21/11/26"));
}

void TestTicketGroups::testACompletedGroupIsLeftAlone()
{
    Recordset row;
    addTicketGroup(row, m_database->connection(), batchOfFive(), tenOClock);
    QVERIFY(writeGroupCompletion(row, GroupKind::Random, 6.0f, tenOClock.addSecs(60)));
    QVERIFY(row.Update());
    QCOMPARE(reconcileInterruptedGroups(m_database->connection(), tenOClock.addDays(1)), 0);
    QCOMPARE(groupColumn("Number"), QStringLiteral("6"));
}

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestTicketGroups)
#include "TestTicketGroups.moc"
