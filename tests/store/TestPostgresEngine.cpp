#include "store/Connection.h"
#include "store/PostgresEngine.h"
#include "store/Recordset.h"
#include "store/ScratchDatabase.h"
#include "support/StoreTestDatabase.h"

#include <QElapsedTimer>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace marlet {

// The store on a live PostgreSQL server (MARLET_TEST_POSTGRES): values come back as from SQLite,
// record sets write by the hidden key, waits on locks end with a clear message.
class TestPostgresEngine : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScratchDatabase> m_database;
    Connection m_connection;

private slots:
    void testParametersAreNumbered()
    {
        QCOMPARE(PostgresEngine::numberedParameters(u"SELECT ? FROM \"a?\" WHERE x = '?' AND y = ?"_s),
            u"SELECT $1 FROM \"a?\" WHERE x = '?' AND y = $2"_s);
    }

    void initTestCase()
    {
        if (ScratchDatabase::server().isEmpty())
            return;
        m_database = std::make_unique<ScratchDatabase>();
        const QString error = m_database->create(u"ADMIN"_s);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QVERIFY2(m_connection.Open(m_database->connectionString()), qPrintable(m_connection.lastError()));
    }

    void init()
    {
        if (!m_database && QString::fromLatin1(QTest::currentTestFunction()) != u"testParametersAreNumbered"_s)
            QSKIP("no PostgreSQL server given (MARLET_TEST_POSTGRES)");
    }

    void cleanupTestCase()
    {
        m_connection.Close();
        m_database.reset();
    }

    void testValuesComeBackInTheStoresTypes()
    {
        Recordset rs;
        QVERIFY(rs.Open(Statement(u"select * from Account"_s), m_connection, CursorType::Static, LockType::Optimistic));
        QVERIFY(rs.AddNew());
        rs.setValue(u"Username"_s, u"TYPES01"_s);
        rs.setValue(u"Time"_s, 342.5);
        rs.setValue(u"NEW"_s, true);
        rs.setValue(u"Member"_s, false);
        rs.setValue(u"DateCreated"_s, QDate(2026, 11, 15));
        rs.setValue(u"LastUsed"_s, QDateTime(QDate(2026, 11, 16), QTime(18, 35, 7)));
        rs.setValue(u"StartTime"_s, QTime(8, 30));
        rs.setValue(u"Days"_s, 2.5);
        rs.setValue(u"NoLogIn"_s, 7);
        QVERIFY2(rs.Update(), qPrintable(rs.lastError()));

        Recordset read;
        QVERIFY(read.Open(Statement(u"select * from Account where Username = 'types01'"_s), m_connection));
        QCOMPARE(read.RecordCount(), 1L);
        QCOMPARE(read.fieldCount(), 33);
        QCOMPARE(read.fieldName(0), u"TicketGrp"_s);
        QCOMPARE(read.value(u"Time"_s), QVariant(342.5f));
        QCOMPARE(read.value(u"NEW"_s), QVariant(true));
        QCOMPARE(read.value(u"Member"_s), QVariant(false));
        QCOMPARE(read.value(u"DateCreated"_s), QVariant(QDateTime(QDate(2026, 11, 15), QTime(0, 0))));
        QCOMPARE(read.value(u"LastUsed"_s), QVariant(QDateTime(QDate(2026, 11, 16), QTime(18, 35, 7))));
        QCOMPARE(read.value(u"StartTime"_s), QVariant(QDateTime(QDate(1899, 12, 30), QTime(8, 30))));
        QCOMPARE(read.value(u"Days"_s).toDouble(), 2.5);
        QCOMPARE(read.value(u"NoLogIn"_s).toLongLong(), 7);
        QVERIFY(read.value(u"Password"_s).isNull());
        QCOMPARE(test::queryRows(m_connection, u"select count(*) from Account where NEW = true and Time = 342.5"_s),
            QStringList {u"1"_s});
        QCOMPARE(
            test::queryRows(m_connection, u"select count(*) from Account where Member = 0"_s), QStringList {u"1"_s});
        QVERIFY(m_connection.Execute(Statement(u"Delete * from Account"_s)));
    }

    void testTextComparesWithoutCase()
    {
        QVERIFY(m_connection.Execute(Statement(u"Insert into Capt (Caption) values ('Solitaire')"_s)));
        QCOMPARE(test::queryRows(m_connection, u"select * from Capt where Caption = 'SOLITAIRE'"_s),
            QStringList {u"Solitaire"_s});
        QCOMPARE(test::queryRows(m_connection, u"select * from Capt where Caption like 'sol%'"_s),
            QStringList {u"Solitaire"_s});
        // No escape character: a backslash is a letter like any other.
        QCOMPARE(test::queryRows(m_connection, u"select * from Capt where Caption like 'sol\\%'"_s), QStringList {});
        QVERIFY(m_connection.Execute(Statement(u"Delete * from Capt"_s)));
    }

    // The key stays the row's after each write, and rows come in the order they were added.
    void testARowWrittenTwiceIsFoundAgain()
    {
        for (const char* name : {"ONE", "TWO", "THREE"})
            QVERIFY(m_connection.Execute(
                Statement(u"Insert into Capt (Caption) values ('{}')"_s, {QString::fromLatin1(name)})));
        QVERIFY(m_connection.Execute(Statement(u"Update Capt set Caption = 'ONE!' where Caption = 'ONE'"_s)));
        QCOMPARE(
            test::queryRows(m_connection, u"select * from Capt"_s), (QStringList {u"ONE!"_s, u"TWO"_s, u"THREE"_s}));
        Recordset rs;
        QVERIFY(rs.Open(Statement(u"select * from Capt"_s), m_connection, CursorType::Static, LockType::Optimistic));
        rs.MoveNext();
        QVERIFY(rs.setValue(0, u"TWO-A"_s));
        QVERIFY2(rs.Update(), qPrintable(rs.lastError()));
        QVERIFY(rs.setValue(0, u"TWO-B"_s));
        QVERIFY2(rs.Update(), qPrintable(rs.lastError()));
        QVERIFY2(rs.Delete(), qPrintable(rs.lastError()));
        QCOMPARE(test::queryRows(m_connection, u"select * from Capt"_s), (QStringList {u"ONE!"_s, u"THREE"_s}));
        QVERIFY(m_connection.Execute(Statement(u"Delete * from Capt"_s)));
    }

    // A copy by column position, as the recycle bin takes a deleted ticket: every column lands.
    void testACopyByPositionIsExact()
    {
        QVERIFY(m_connection.Execute(Statement(u"Insert into Account (TicketGrp, Username, Password, Time, NEW, "
                                               u"Member, Print) values ('G1', 'COPY01', 'PW', 60, true, false, 3)"_s)));
        Recordset account;
        QVERIFY(account.Open(Statement(u"select * from Account where Username = 'COPY01'"_s), m_connection));
        Recordset bin;
        QVERIFY(
            bin.Open(Statement(u"select * from RecycleBin"_s), m_connection, CursorType::Static, LockType::Optimistic));
        QCOMPARE(bin.fieldCount(), account.fieldCount() + 2);
        QVERIFY(bin.AddNew());
        for (int column = 0; column < account.fieldCount(); ++column)
            QVERIFY(bin.setValue(column, account.value(column)));
        QVERIFY(bin.setValue(u"Reason"_s, u"test"_s));
        QVERIFY2(bin.Update(), qPrintable(bin.lastError()));
        QCOMPARE(test::queryRows(m_connection,
                     u"select TicketGrp, Username, Password, Time, NEW, Member, Print, Reason from RecycleBin"_s),
            QStringList {u"G1 | COPY01 | PW | 60 | True | False | 3 | test"_s});
        QVERIFY(m_connection.Execute(Statement(u"Delete * from RecycleBin"_s)));
        QVERIFY(m_connection.Execute(Statement(u"Delete * from Account"_s)));
    }

    void testASecondRowOfAGroupIsRefusedAsADuplicate()
    {
        Recordset rs;
        QVERIFY(
            rs.Open(Statement(u"select * from TicketInfo"_s), m_connection, CursorType::Static, LockType::Optimistic));
        for (const QString& group : {u"G-SAME"_s, u"g-same"_s}) {
            QVERIFY(rs.AddNew());
            rs.setValue(u"TicketGrp"_s, group);
            if (group == u"G-SAME"_s)
                QVERIFY2(rs.Update(), qPrintable(rs.lastError()));
        }
        QVERIFY(!rs.Update());
        QVERIFY(rs.lastFailureWasDuplicate());
        QVERIFY2(rs.lastError().contains(u"ticketinfo_ticketgrp"_s), qPrintable(rs.lastError()));
        QVERIFY(rs.CancelUpdate());
        QVERIFY(m_connection.Execute(Statement(u"Delete * from TicketInfo"_s)));
        // Names may repeat in Account, as tickets another program wrote may.
        QVERIFY(m_connection.Execute(Statement(u"Insert into Account (Username) values ('TWIN')"_s)));
        QVERIFY(m_connection.Execute(Statement(u"Insert into Account (Username) values ('twin')"_s)));
        QVERIFY(m_connection.Execute(Statement(u"Delete * from Account"_s)));
    }

    // The lock that one server holds while it draws a ticket name and stores the ticket.
    void testASharedLockIsHeldByOneServerAtATime()
    {
        Connection first;
        QVERIFY(first.Open(m_database->connectionString()));
        Connection second;
        second.setBusyTimeout(300);
        QVERIFY(second.Open(m_database->connectionString()));
        QVERIFY2(first.holdSharedLock(u"names"_s), qPrintable(first.lastError()));
        QVERIFY(!second.holdSharedLock(u"names"_s));
        QCOMPARE(second.lastError(),
            u"The database is busy: another server held a lock on the rows for more than 0.3 seconds. Try again."_s);
        QVERIFY2(second.holdSharedLock(u"other work"_s), qPrintable(second.lastError()));
        first.releaseSharedLock(u"names"_s);
        QVERIFY2(second.holdSharedLock(u"names"_s), qPrintable(second.lastError()));
        second.releaseSharedLock(u"names"_s);
        second.releaseSharedLock(u"other work"_s);
    }

    void testAWaitForAnotherServersLockEnds()
    {
        Connection holder;
        QVERIFY(holder.Open(m_database->connectionString()));
        QVERIFY(holder.executeNative(u"BEGIN"_s));
        QVERIFY(holder.executeNative(u"LOCK TABLE register IN EXCLUSIVE MODE"_s));
        Connection waiting;
        waiting.setBusyTimeout(300);
        QVERIFY(waiting.Open(m_database->connectionString()));
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!waiting.Execute(Statement(u"UPDATE Register SET TotGenerated = TotGenerated + 1"_s)));
        QVERIFY(timer.elapsed() < 5000);
        QCOMPARE(waiting.lastError(),
            u"The database is busy: another server held a lock on the rows for more than 0.3 seconds. Try again."_s);
        QVERIFY(holder.executeNative(u"ROLLBACK"_s));
        QVERIFY2(waiting.Execute(Statement(u"UPDATE Register SET TotGenerated = TotGenerated + 1"_s)),
            qPrintable(waiting.lastError()));
    }
};

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestPostgresEngine)
#include "TestPostgresEngine.moc"
