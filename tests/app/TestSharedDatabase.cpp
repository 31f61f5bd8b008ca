#include "store/Connection.h"
#include "store/ScratchDatabase.h"
#include "support/StoreTestDatabase.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace marlet {

// Several servers of one café chain writing to one PostgreSQL database at once (runs where
// MARLET_TEST_POSTGRES names a server).
class TestSharedDatabase : public QObject
{
    Q_OBJECT

private:
    // Starts `marlet generate` for one batch on the shared database, as one server of the chain.
    static std::unique_ptr<QProcess> startBatch(
        const QString& database, const QTemporaryDir& folder, int server, const QString& number = u"999"_s)
    {
        auto process = std::make_unique<QProcess>();
        const QString own = folder.filePath(u"server%1"_s.arg(server));
        process->start(QStringLiteral(MARLET_BINARY),
            {u"generate"_s,
                u"--db"_s,
                database,
                u"--password"_s,
                u"ADMIN"_s,
                u"--number"_s,
                number,
                u"--minutes"_s,
                u"60"_s,
                u"--cost"_s,
                u"100"_s,
                u"--yes"_s,
                u"--print"_s,
                u"no"_s,
                u"--no-pause"_s,
                u"--app-dir"_s,
                own + u"/app"_s,
                u"--prefs"_s,
                own + u"/prefs"_s});
        return process;
    }

private slots:
    void testFourBatchesAtOnce()
    {
        if (ScratchDatabase::server().isEmpty())
            QSKIP("no PostgreSQL server given (MARLET_TEST_POSTGRES)");
        ScratchDatabase database;
        const QString error = database.create(u"ADMIN"_s);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QTemporaryDir folder;
        std::vector<std::unique_ptr<QProcess>> batches;
        for (int server = 1; server <= 4; ++server)
            batches.push_back(startBatch(database.connectionString(), folder, server));
        for (const auto& batch : batches) {
            QVERIFY(batch->waitForFinished(120000));
            QVERIFY2(batch->exitCode() == 0, batch->readAllStandardError().constData());
        }

        Connection connection;
        QVERIFY2(connection.Open(database.connectionString()), qPrintable(connection.lastError()));
        QCOMPARE(test::queryRows(connection, u"select count(*) from Account"_s), QStringList {u"3996"_s});
        // Every name once, whichever server drew it.
        QCOMPARE(
            test::queryRows(connection, u"select count(*) from Account where member=false"_s), QStringList {u"3996"_s});
        QVERIFY(connection.executeNative(u"CREATE TEMPORARY TABLE names AS SELECT DISTINCT upper(username::text) "
                                         u"AS name FROM account"_s));
        QVERIFY(connection.executeNative(u"CREATE TEMPORARY TABLE numbers AS SELECT DISTINCT ticketgrp || ticketno "
                                         u"AS number FROM account"_s));
        Recordset names;
        QVERIFY(names.Open(Statement(u"select * from names"_s), connection));
        QCOMPARE(names.RecordCount(), 3996L);
        Recordset numbers;
        QVERIFY(numbers.Open(Statement(u"select * from numbers"_s), connection));
        QCOMPARE(numbers.RecordCount(), 3996L);
        // Four groups of 999 tickets, each counted as a whole batch counts, and the register
        // holding the sum of the four.
        Recordset groups;
        QVERIFY(groups.Open(Statement(u"select * from TicketInfo"_s), connection));
        QCOMPARE(groups.RecordCount(), 4L);
        double numbered = 0;
        for (; !groups.Eof(); groups.MoveNext()) {
            const QString group = groups.value(u"TicketGrp"_s).toString();
            QCOMPARE(
                Recordset::countRows(Statement(u"select * from Account where TicketGrp = '{}'"_s, {group}), connection),
                999L);
            QCOMPARE(groups.value(u"Number"_s).toDouble(), 1000.0);
            QVERIFY2(groups.value(u"TimeGenerated"_s).toString().startsWith(u"Completed at "_s),
                qPrintable(groups.value(u"TimeGenerated"_s).toString()));
            numbered += groups.value(u"Number"_s).toDouble();
        }
        QCOMPARE(test::queryRows(connection, u"select TotGenerated, TotCost from Register"_s),
            QStringList {u"%1 | %2"_s.arg(numbered).arg(numbered * 100)});
    }

    // A write refused as a duplicate (a unique index a café added, another program's row stored
    // between the look-up and the write): the batch draws another name instead of stopping.
    void testANameTakenAfterTheDrawIsDrawnAgain()
    {
        if (ScratchDatabase::server().isEmpty())
            QSKIP("no PostgreSQL server given (MARLET_TEST_POSTGRES)");
        ScratchDatabase database;
        const QString error = database.create(u"ADMIN"_s);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        Connection connection;
        QVERIFY2(connection.Open(database.connectionString()), qPrintable(connection.lastError()));
        // The first two writes meet another server's rows; a sequence counts the writes, since it
        // keeps its count when the refused statement is undone. Writing the same name again would
        // meet the row again: each refusal must bring a new draw.
        QVERIFY2(connection.executeNative(u"CREATE SEQUENCE writes"_s), qPrintable(connection.lastError()));
        QVERIFY2(
            connection.executeNative(u"CREATE FUNCTION squat() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
                                     u"IF nextval('writes') <= 2 THEN RAISE unique_violation USING MESSAGE = "
                                     u"'duplicate key value violates unique constraint \"account_username\"'; END IF; "
                                     u"RETURN NEW; END $$"_s),
            qPrintable(connection.lastError()));
        QVERIFY2(connection.executeNative(
                     u"CREATE TRIGGER squat BEFORE INSERT ON account FOR EACH ROW EXECUTE FUNCTION squat()"_s),
            qPrintable(connection.lastError()));
        QTemporaryDir folder;
        const auto batch = startBatch(database.connectionString(), folder, 1, u"3"_s);
        QVERIFY(batch->waitForFinished(60000));
        const QByteArray output = batch->readAllStandardOutput() + batch->readAllStandardError();
        QVERIFY2(batch->exitCode() == 0, output.constData());
        QVERIFY2(!output.contains("Ticket generation stopped"), output.constData());
        QCOMPARE(test::queryRows(connection, u"select count(*) from Account"_s), QStringList {u"3"_s});
        QCOMPARE(test::queryRows(connection, u"select TicketNo from Account"_s),
            (QStringList {u"001"_s, u"002"_s, u"003"_s}));
        // Three tickets stored, two refused writes before them.
        QCOMPARE(
            test::queryRows(connection, u"select count(*) from Account where member = false"_s), QStringList {u"3"_s});
        QVERIFY(connection.executeNative(u"CREATE TEMPORARY TABLE counted AS SELECT last_value FROM writes"_s));
        QCOMPARE(test::queryRows(connection, u"select * from counted"_s), QStringList {u"5"_s});
    }
};

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestSharedDatabase)
#include "TestSharedDatabase.moc"
