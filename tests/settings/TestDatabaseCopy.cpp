#include "settings/DatabaseCopy.h"

#include "store/DatabaseInit.h"
#include "store/Recordset.h"
#include "store/ScratchDatabase.h"
#include "support/StoreTestDatabase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <sqlite3.h>

#include <atomic>
#include <thread>

using namespace marlet;

namespace {

// The first column of the first row of a query, read through a handle of the test's own.
QString firstValue(const QString& file, const QString& sql)
{
    sqlite3* handle = nullptr;
    QString value;
    if (sqlite3_open_v2(QFile::encodeName(file).constData(), &handle, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(handle, sql.toUtf8().constData(), -1, &statement, nullptr) == SQLITE_OK
            && sqlite3_step(statement) == SQLITE_ROW)
            value = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
        sqlite3_finalize(statement);
    }
    sqlite3_close_v2(handle);
    return value;
}

bool addTicket(Connection& connection, const QString& username)
{
    return connection.executeNative(
        QStringLiteral("INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, NEW, Member) "
                       "VALUES ('261121100000', '001', ?, 'PW', 3600, 1, 0)"),
        {username});
}

long countOf(Connection& connection, const QString& statement)
{
    Recordset rows;
    if (!rows.Open(Statement(statement), connection, CursorType::Static, LockType::ReadOnly))
        return -1;
    return rows.RecordCount();
}

} // namespace

class TestDatabaseCopy : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_db = std::make_unique<test::StoreTestDatabase>();
        QVERIFY2(m_db->isValid(), qPrintable(m_db->error()));
        m_dir = std::make_unique<QTemporaryDir>();
    }

    void testBackupIsAnIntactSingleFile()
    {
        for (int i = 0; i < 20; ++i)
            QVERIFY(addTicket(m_db->connection(), QStringLiteral("T%1").arg(i)));
        const QString path = m_dir->filePath(QStringLiteral("copy.bak"));
        QCOMPARE(databasecopy::backup(m_db->connection(), path), QString());
        QCOMPARE(firstValue(path, QStringLiteral("PRAGMA integrity_check")), QStringLiteral("ok"));
        QCOMPARE(firstValue(path, QStringLiteral("PRAGMA journal_mode")), QStringLiteral("delete"));
        QCOMPARE(firstValue(path, QStringLiteral("select count(*) from Account")), QStringLiteral("20"));
        QVERIFY(!QFile::exists(path + QStringLiteral(".part")));
        QCOMPARE(databasecopy::checkBackup(path), QString());
    }

    void testBackupReplacesAnOlderFileOnlyWhenItWorked()
    {
        const QString path = m_dir->filePath(QStringLiteral("copy.bak"));
        QFile old(path);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("older backup");
        old.close();
        m_db->connection().Close();
        QCOMPARE(databasecopy::backup(m_db->connection(), path), QStringLiteral("The database is not open."));
        QVERIFY(old.open(QIODevice::ReadOnly));
        QCOMPARE(old.readAll(), QByteArray("older backup"));
    }

    void testBackupOverTheDatabaseItselfIsRefused()
    {
        QCOMPARE(databasecopy::backup(m_db->connection(), m_db->path()),
            QStringLiteral("A backup cannot be written over the database itself."));
        QCOMPARE(firstValue(m_db->path(), QStringLiteral("PRAGMA integrity_check")), QStringLiteral("ok"));
    }

    void testCheckRefusesWhatIsNoTicketBackup()
    {
        const QString junk = m_dir->filePath(QStringLiteral("junk.bak"));
        QFile file(junk);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(8192, 'x'));
        file.close();
        QVERIFY(!databasecopy::checkBackup(junk).isEmpty());

        const QString other = m_dir->filePath(QStringLiteral("other.db"));
        sqlite3* handle = nullptr;
        QCOMPARE(sqlite3_open(QFile::encodeName(other).constData(), &handle), SQLITE_OK);
        QCOMPARE(sqlite3_exec(handle, "CREATE TABLE Notes (x TEXT)", nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(handle);
        QCOMPARE(databasecopy::checkBackup(other), other + QStringLiteral(" is not a backup of a ticket database."));
        QCOMPARE(databasecopy::checkBackup(m_dir->filePath(QStringLiteral("missing.bak"))),
            QStringLiteral("The file %1 does not exist.").arg(m_dir->filePath(QStringLiteral("missing.bak"))));

        // A refused backup leaves the live database as it was.
        QVERIFY(addTicket(m_db->connection(), QStringLiteral("KEEP")));
        QVERIFY(!databasecopy::restore(m_db->connection(), other).isEmpty());
        QCOMPARE(countOf(m_db->connection(), QStringLiteral("Select * from Account where Username = 'KEEP'")), 1L);
    }

    // A backup is an SQLite file whichever store it was taken from, so a café's file moves to a
    // server and back with every value as it was.
    void testABackupMovesBetweenTheEngines()
    {
        if (ScratchDatabase::server().isEmpty())
            QSKIP("No PostgreSQL server is given (MARLET_TEST_POSTGRES).");
        const QString file = QStringLiteral("sqlite:") + m_dir->filePath(QStringLiteral("cafe.db"));
        QCOMPARE((DatabaseInit {file, QStringLiteral("FILEPASS"), false}.run().error), QString());
        Connection cafe;
        QVERIFY(cafe.Open(file));
        QVERIFY(addTicket(cafe, QStringLiteral("FROMFILE")));
        QVERIFY(cafe.Execute(Statement(QStringLiteral(
            "INSERT INTO Account (TicketGrp,TicketNo,Username,Password,Time,NEW,Member,DateCreated) Values "
            "('MEMBER01','000','it''s','PW',-60,false,true,'2026-11-24 09:30:00')"))));
        const QString fromFile = m_dir->filePath(QStringLiteral("file.bak"));
        QCOMPARE(databasecopy::backup(cafe, fromFile), QString());

        ScratchDatabase scratch;
        QCOMPARE(scratch.create(QStringLiteral("SERVERPASS")), QString());
        Connection server;
        QVERIFY(server.Open(scratch.connectionString()));
        QCOMPARE(databasecopy::restore(server, fromFile), QString());
        const QString tickets = QStringLiteral("select Username, Password, Time, NEW, Member, DateCreated, TicketGrp "
                                               "from Account order by Username");
        const QString staff = QStringLiteral("select Username, Password, Type from Users");
        QCOMPARE(test::queryRows(server, tickets), test::queryRows(cafe, tickets));
        QCOMPARE(test::queryRows(server, staff), QStringList {QStringLiteral("ADMINISTRATOR | FILEPASS | ADMINISTRATOR")});
        // The server goes on taking tickets, and its backup comes back into the file.
        QVERIFY(server.Execute(Statement(
            QStringLiteral("INSERT INTO Account (TicketGrp,TicketNo,Username,Password,Time,NEW,Member) Values "
                           "('261121100000','002','FROMSERVER','PW',1800,true,false)"))));
        const QString fromServer = m_dir->filePath(QStringLiteral("server.bak"));
        QCOMPARE(databasecopy::backup(server, fromServer), QString());
        QCOMPARE(databasecopy::restore(cafe, fromServer), QString());
        QCOMPARE(test::queryRows(cafe, tickets).size(), 3);
        QCOMPARE(test::queryRows(cafe, tickets), test::queryRows(server, tickets));
    }

    void testRestoreBringsTheBackupBack()
    {
        for (int i = 0; i < 5; ++i)
            QVERIFY(addTicket(m_db->connection(), QStringLiteral("OLD%1").arg(i)));
        const QString path = m_dir->filePath(QStringLiteral("copy.bak"));
        QCOMPARE(databasecopy::backup(m_db->connection(), path), QString());

        // Changes after the backup: one ticket gone, two new ones.
        QVERIFY(m_db->connection().Execute(Statement(QStringLiteral("DELETE FROM Account where Username = 'OLD0'"))));
        QVERIFY(addTicket(m_db->connection(), QStringLiteral("NEW1")));
        QVERIFY(addTicket(m_db->connection(), QStringLiteral("NEW2")));
        // Another program holds the database open too.
        Connection other;
        QVERIFY(other.Open(m_db->connectionString()));
        QCOMPARE(countOf(other, QStringLiteral("Select * from Account")), 6L);

        QCOMPARE(databasecopy::restore(m_db->connection(), path), QString());
        QCOMPARE(m_db->connection().State(), 1);
        QCOMPARE(countOf(m_db->connection(), QStringLiteral("Select * from Account")), 5L);
        QCOMPARE(countOf(m_db->connection(), QStringLiteral("Select * from Account where Username = 'OLD0'")), 1L);
        QCOMPARE(countOf(m_db->connection(), QStringLiteral("Select * from Account where Username like 'NEW%'")), 0L);
        QCOMPARE(countOf(other, QStringLiteral("Select * from Account")), 5L);
        // The restored database goes on taking tickets.
        QVERIFY(addTicket(m_db->connection(), QStringLiteral("AFTER")));
        QCOMPARE(countOf(other, QStringLiteral("Select * from Account")), 6L);
        other.Close();
        m_db->connection().Close();
        QCOMPARE(firstValue(m_db->path(), QStringLiteral("PRAGMA integrity_check")), QStringLiteral("ok"));
    }

    // Another connection (a thread of its own, as another program would be) adds tickets one by one
    // while the backup runs. The backup holds every ticket committed before it began, restores to a
    // database that passes the integrity check, and the writer is never stopped by it.
    void testBackupWhileAnotherWriterAddsTickets()
    {
        // Enough rows that the copy takes a while.
        QVERIFY(m_db->connection().executeNative(QStringLiteral(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 30000) "
            "INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, NEW, Member, ComputerUsed) "
            "SELECT '261121100000', '001', 'BULK' || i, 'PW', 3600, 1, 0, hex(randomblob(64)) FROM n")));

        std::atomic<int> committed {0};
        std::atomic<bool> stop {false};
        std::atomic<bool> writerFailed {false};
        const QString connectionString = m_db->connectionString();
        std::thread writer([&] {
            Connection connection;
            if (!connection.Open(connectionString)) {
                writerFailed = true;
                return;
            }
            for (int i = 1; !stop; ++i) {
                if (!addTicket(connection, QStringLiteral("W%1").arg(i))) {
                    writerFailed = true;
                    return;
                }
                committed = i;
            }
        });
        while (committed < 50 && !writerFailed)
            QThread::msleep(1);
        const int before = committed;
        const QString path = m_dir->filePath(QStringLiteral("busy.bak"));
        const QString error = databasecopy::backup(m_db->connection(), path);
        const int afterBackup = committed;
        // The writer goes on after the backup as well.
        while (committed < afterBackup + 20 && !writerFailed)
            QThread::msleep(1);
        stop = true;
        writer.join();
        QVERIFY(!writerFailed);
        QCOMPARE(error, QString());

        QCOMPARE(firstValue(path, QStringLiteral("PRAGMA integrity_check")), QStringLiteral("ok"));
        const int copied = firstValue(path,
            QStringLiteral("select count(*) from Account where Username glob 'W*' and cast(substr(Username, 2) as "
                           "integer) <= %1")
                .arg(before))
                               .toInt();
        QCOMPARE(copied, before);
        QCOMPARE(firstValue(path, QStringLiteral("select count(*) from Account where Username glob 'BULK*'")),
            QStringLiteral("30000"));
        // Whatever the copy holds of the writer, it holds it without a gap: one moment's state.
        const int held
            = firstValue(path, QStringLiteral("select count(*) from Account where Username glob 'W*'")).toInt();
        QCOMPARE(firstValue(path,
                     QStringLiteral("select max(cast(substr(Username, 2) as integer)) from Account where Username "
                                    "glob 'W*'"))
                     .toInt(),
            held);

        // Restored, the live database is that state, intact.
        QCOMPARE(databasecopy::restore(m_db->connection(), path), QString());
        QCOMPARE(
            countOf(m_db->connection(), QStringLiteral("Select * from Account where Username like 'W%'")), long(held));
        m_db->connection().Close();
        QCOMPARE(firstValue(m_db->path(), QStringLiteral("PRAGMA integrity_check")), QStringLiteral("ok"));
    }

    // The same with another program, the sqlite3 shell, adding tickets one statement at a time.
    void testBackupWhileAnotherProcessAddsTickets()
    {
        const QString shell = QStandardPaths::findExecutable(QStringLiteral("sqlite3"));
        QVERIFY2(!shell.isEmpty(), "the sqlite3 shell is needed (scripts/packages.txt)");
        // Each statement commits on its own; the writer need not wait for the disk.
        QByteArray script = ".timeout 10000\nPRAGMA synchronous = OFF;\n";
        for (int i = 1; i <= 5000; ++i)
            script += "INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, NEW, Member) VALUES "
                      "('261121100000', '001', 'P"
                + QByteArray::number(i) + "', 'PW', 3600, 1, 0);\n";
        const QString scriptFile = m_dir->filePath(QStringLiteral("writer.sql"));
        QFile file(scriptFile);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(script);
        file.close();
        QProcess writer;
        writer.start(shell, {m_db->path(), QStringLiteral(".read ") + scriptFile});
        QVERIFY(writer.waitForStarted());

        const QString written = QStringLiteral("Select * from Account where Username like 'P%'");
        QElapsedTimer waited;
        waited.start();
        while (countOf(m_db->connection(), written) < 100 && waited.elapsed() < 10000)
            QThread::msleep(2);
        // Everything the other program has committed by now.
        const long before = countOf(m_db->connection(), written);
        const QString path = m_dir->filePath(QStringLiteral("process.bak"));
        QCOMPARE(databasecopy::backup(m_db->connection(), path), QString());
        // The other program was writing all along.
        QCOMPARE(writer.state(), QProcess::Running);
        QVERIFY(writer.waitForFinished(60000));
        QCOMPARE(writer.exitCode(), 0);
        QCOMPARE(countOf(m_db->connection(), written), 5000L);

        QCOMPARE(firstValue(path, QStringLiteral("PRAGMA integrity_check")), QStringLiteral("ok"));
        QCOMPARE(firstValue(path,
                     QStringLiteral("select count(*) from Account where Username glob 'P*' and cast(substr(Username, 2) "
                                    "as integer) <= %1")
                         .arg(before))
                     .toLong(),
            before);
        QCOMPARE(databasecopy::restore(m_db->connection(), path), QString());
        QVERIFY(countOf(m_db->connection(), written) >= before);
        m_db->connection().Close();
        QCOMPARE(firstValue(m_db->path(), QStringLiteral("PRAGMA integrity_check")), QStringLiteral("ok"));
    }

private:
    std::unique_ptr<test::StoreTestDatabase> m_db;
    std::unique_ptr<QTemporaryDir> m_dir;
};

QTEST_GUILESS_MAIN(TestDatabaseCopy)
#include "TestDatabaseCopy.moc"
