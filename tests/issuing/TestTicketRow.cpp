#include "issuing/TicketNames.h"
#include "issuing/TicketRow.h"
#include "support/IssuingFixtures.h"

#include <QTest>

#include <memory>

using namespace marlet;
using namespace Qt::StringLiterals;

namespace {

const QDate today(2024, 3, 15);

TicketValues batchTicket()
{
    TicketValues ticket;
    ticket.TicketGrp = u"240315090703"_s;
    ticket.TicketNo = u"001"_s;
    ticket.Username = u"NVT0123456"_s;
    ticket.Password = u"48213"_s;
    ticket.seconds = 3600;
    ticket.ByWhom = u"ADA & BOLA"_s;
    ticket.expiry = expiryColumns(ExpiryKind::Fixed, 20, today, TicketPath::Batch);
    ticket.created = today;
    ticket.Amount = u"N200"_s;
    ticket.StartTime = QDateTime(today, QTime(22, 0));
    ticket.EndTime = QDateTime(today, QTime(6, 0));
    ticket.Quota = -9999;
    ticket.Night = true;
    ticket.Once = true;
    return ticket;
}

TicketValues memberTicket()
{
    TicketValues ticket = batchTicket();
    ticket.TicketNo = QString(CustomTicketNo);
    ticket.Username = u"JOHN"_s;
    ticket.Password = u"SECRET"_s;
    ticket.seconds = 86400;
    ticket.expiry = expiryColumns(ExpiryKind::Flexible, 0, today, TicketPath::Membership);
    ticket.Quota = 0;
    ticket.Night = false;
    ticket.member = MemberSchedule {u"1 day(s)"_s, u"SUN - SAT (ALL DAYS)"_s, today, u"24 hour(s)"_s};
    return ticket;
}

} // namespace

class TestTicketRow : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testBatchTicketColumns();
    void testMemberTicketColumns();
    void testFlexibleBatchTicketLeavesExpireAlone();
    void testRowLine_data();
    void testRowLine();
    void testRowLineOfANewTicketReadsLikeItsStoredRow();

private:
    // Adds the ticket as an issuing path does: the name's lookup, AddNew on it, the columns, Update.
    void addTicket(const TicketValues& ticket);
    // The stored row, read afresh.
    void readBack(Recordset& row, const QString& username);

    std::unique_ptr<test::TemporaryStore> m_db;
};

void TestTicketRow::init()
{
    m_db = std::make_unique<test::TemporaryStore>();
    const QString problem = m_db->open();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void TestTicketRow::addTicket(const TicketValues& ticket)
{
    Recordset recordset;
    QCOMPARE(lookUpUsername(recordset, m_db->connection, ticket.Username), NameLookup::Free);
    QVERIFY2(recordset.AddNew(), qPrintable(recordset.lastError()));
    QVERIFY2(writeTicketRow(recordset, ticket), qPrintable(recordset.lastError()));
    QVERIFY2(recordset.Update(), qPrintable(recordset.lastError()));
}

void TestTicketRow::readBack(Recordset& row, const QString& username)
{
    QVERIFY(row.Open(Statement(u"Select * from Account where Username = '{}'"_s, {username}), m_db->connection));
    QCOMPARE(row.RecordCount(), 1L);
}

void TestTicketRow::testBatchTicketColumns()
{
    addTicket(batchTicket());
    Recordset row;
    readBack(row, u"NVT0123456"_s);
    QCOMPARE(row.value(u"TicketGrp"_s), QVariant(u"240315090703"_s));
    QCOMPARE(row.value(u"TicketNo"_s), QVariant(u"001"_s));
    QCOMPARE(row.value(u"Password"_s), QVariant(u"48213"_s));
    QCOMPARE(row.value(u"Time"_s).toDouble(), 3600.0);
    QCOMPARE(row.value(u"BackTime"_s).toDouble(), 3600.0);
    QCOMPARE(row.value(u"OrgTime"_s).toDouble(), 3600.0);
    QCOMPARE(row.value(u"ByWhom"_s), QVariant(u"ADA & BOLA"_s));
    QCOMPARE(row.value(u"Expire"_s).toDateTime(), QDateTime(QDate(2024, 4, 4), QTime(0, 0)));
    QCOMPARE(row.value(u"Days"_s).toDouble(), 0.0);
    QCOMPARE(row.value(u"DateCreated"_s).toDateTime(), QDateTime(today, QTime(0, 0)));
    QCOMPARE(row.value(u"LastUsed"_s).toDateTime(), QDateTime(today, QTime(0, 0)));
    QCOMPARE(row.value(u"Amount"_s), QVariant(u"N200"_s));
    QCOMPARE(row.value(u"NEW"_s), QVariant(true));
    QCOMPARE(row.value(u"StartTime"_s).toDateTime(), QDateTime(today, QTime(22, 0)));
    QCOMPARE(row.value(u"EndTime"_s).toDateTime(), QDateTime(today, QTime(6, 0)));
    QCOMPARE(row.value(u"ComputerUsed"_s), QVariant(u"NONE"_s));
    QCOMPARE(row.value(u"AccountAdded"_s), QVariant(u"NONE"_s));
    QCOMPARE(row.value(u"NoAdded"_s).toLongLong(), 0LL);
    QCOMPARE(row.value(u"POS"_s), QVariant(false));
    QCOMPARE(row.value(u"Member"_s), QVariant(false));
    QCOMPARE(row.value(u"Quota"_s).toDouble(), -9999.0);
    QCOMPARE(row.value(u"Night"_s), QVariant(true));
    QCOMPARE(row.value(u"Once"_s), QVariant(true));
    // Columns that only a member ticket carries stay untouched.
    for (const QString& column : {u"Flexy"_s, u"Autorecharge"_s, u"Reday"_s, u"Redate"_s, u"Retime"_s})
        QVERIFY2(row.value(column).isNull(), qPrintable(column));
}

void TestTicketRow::testMemberTicketColumns()
{
    addTicket(memberTicket());
    Recordset row;
    readBack(row, u"JOHN"_s);
    QCOMPARE(row.value(u"TicketNo"_s), QVariant(u"000"_s));
    QCOMPARE(row.value(u"Time"_s).toDouble(), 86400.0);
    QCOMPARE(row.value(u"Member"_s), QVariant(true));
    QCOMPARE(row.value(u"Flexy"_s), QVariant(false));
    QCOMPARE(row.value(u"Autorecharge"_s), QVariant(u"1 day(s)"_s));
    QCOMPARE(row.value(u"Reday"_s), QVariant(u"SUN - SAT (ALL DAYS)"_s));
    QCOMPARE(row.value(u"Redate"_s).toDateTime(), QDateTime(today, QTime(0, 0)));
    QCOMPARE(row.value(u"Retime"_s), QVariant(u"24 hour(s)"_s));
    QCOMPARE(row.value(u"Days"_s).toDouble(), 1.0);
    QVERIFY(row.value(u"Expire"_s).isNull());
    QCOMPARE(row.value(u"Quota"_s).toDouble(), 0.0);
    QCOMPARE(row.value(u"Night"_s), QVariant(false));
    // A member ticket does not write POS and Once.
    QVERIFY(row.value(u"POS"_s).isNull());
    QVERIFY(row.value(u"Once"_s).isNull());
}

void TestTicketRow::testFlexibleBatchTicketLeavesExpireAlone()
{
    TicketValues ticket = batchTicket();
    ticket.expiry = expiryColumns(ExpiryKind::Flexible, 5, today, TicketPath::Batch);
    Recordset recordset;
    QCOMPARE(lookUpUsername(recordset, m_db->connection, ticket.Username), NameLookup::Free);
    QVERIFY(recordset.AddNew());
    // A value standing in the new row's Expire stays: the batch does not write the column.
    QVERIFY(recordset.setValue(u"Expire"_s, QDate(2030, 1, 1)));
    QVERIFY(writeTicketRow(recordset, ticket));
    QVERIFY(recordset.Update());

    Recordset row;
    readBack(row, ticket.Username);
    QCOMPARE(row.value(u"Expire"_s).toDateTime(), QDateTime(QDate(2030, 1, 1), QTime(0, 0)));
    QCOMPARE(row.value(u"Days"_s).toDouble(), 5.0);
}

void TestTicketRow::testRowLine_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QVariant>("time");
    QTest::addColumn<QVariant>("days");
    QTest::addColumn<QVariant>("expire");
    QTest::addColumn<bool>("hidePassword");
    QTest::addColumn<QString>("expected");

    const QVariant jan5(QDateTime(QDate(2009, 1, 5), QTime(0, 0)));
    QTest::newRow("a fixed date") << u"1"_s << QVariant(3600.0f) << QVariant(qint64(0)) << jan5 << false
                                  << u"1\tNVT0123456\t48213\t60min(s)\t090105101500\t05/Jan/09\t05/Jan/09"_s;
    QTest::newRow("days after first use") << u"12"_s << QVariant(3600.0f) << QVariant(qint64(3)) << QVariant() << false
                                          << u"12\tNVT0123456\t48213\t60min(s)\t090105101500\t3day(s)\t05/Jan/09"_s;
    QTest::newRow("minutes are cut") << u"2"_s << QVariant(3599.0f) << QVariant(qint64(3)) << QVariant() << false
                                     << u"2\tNVT0123456\t48213\t59min(s)\t090105101500\t3day(s)\t05/Jan/09"_s;
    QTest::newRow("a hidden password") << u"3"_s << QVariant(60.0f) << QVariant(qint64(0)) << jan5 << true
                                       << u"3\tNVT0123456\t*****\t1min(s)\t090105101500\t05/Jan/09\t05/Jan/09"_s;
    QTest::newRow("a single ticket numbered 1.")
        << u"1."_s << QVariant(0.0f) << QVariant(qint64(0)) << QVariant() << false
        << u"1.\tNVT0123456\t48213\t0min(s)\t090105101500\t\t05/Jan/09"_s;
    QTest::newRow("a null time") << u"4"_s << QVariant() << QVariant(qint64(1)) << QVariant() << false
                                 << u"4\tNVT0123456\t48213\tmin(s)\t090105101500\t1day(s)\t05/Jan/09"_s;
}

void TestTicketRow::testRowLine()
{
    QFETCH(QString, number);
    QFETCH(QVariant, time);
    QFETCH(QVariant, days);
    QFETCH(QVariant, expire);
    QFETCH(bool, hidePassword);
    QFETCH(QString, expected);
    const TicketRowFields fields {
        u"NVT0123456"_s, u"48213"_s, time, u"090105101500"_s, days, expire, QDateTime(QDate(2009, 1, 5), QTime(0, 0))};
    const QString line = ticketRowLine(number, fields, hidePassword);
    QCOMPARE(line, expected);
    QCOMPARE(line.count(u'\t'), 6);
}

void TestTicketRow::testRowLineOfANewTicketReadsLikeItsStoredRow()
{
    const TicketValues ticket = batchTicket();
    addTicket(ticket);
    Recordset row;
    readBack(row, ticket.Username);
    const QString expected = u"7\tNVT0123456\t48213\t60min(s)\t240315090703\t04/Apr/24\t15/Mar/24"_s;
    QCOMPARE(ticketRowLine(u"7"_s, ticketRowFields(ticket), false), expected);
    QCOMPARE(ticketRowLine(u"7"_s, ticketRowFields(row), false), expected);
}

QTEST_GUILESS_MAIN(TestTicketRow)
#include "TestTicketRow.moc"
