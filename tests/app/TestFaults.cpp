#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

// The command-line host under the faults a café's machine meets: a database it may not write, a
// full disk, another program holding the write lock, a batch or an init killed half way. Success
// is printed only for what the store holds, and nothing is lost or left half made.
class TestFaults : public QObject
{
    Q_OBJECT

private:
    struct Run
    {
        int exitCode = -1;
        QString out;
        QString err;
    };

    static QProcessEnvironment environment()
    {
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.remove(QStringLiteral("DISPLAY"));
        variables.remove(QStringLiteral("WAYLAND_DISPLAY"));
        return variables;
    }

    // Runs marlet, as another user when `asUser` names one (the caller is root).
    static Run marlet(const QStringList& arguments, const QString& asUser = {})
    {
        QProcess process;
        process.setProcessEnvironment(environment());
        if (asUser.isEmpty()) {
            process.start(QStringLiteral(MARLET_BINARY), arguments);
        } else {
            process.start(QStringLiteral("setpriv"),
                QStringList {QStringLiteral("--reuid=") + asUser,
                    QStringLiteral("--regid=") + asUser,
                    QStringLiteral("--clear-groups"),
                    QStringLiteral(MARLET_BINARY)}
                    + arguments);
        }
        process.closeWriteChannel();
        if (!process.waitForFinished(120000))
            process.kill();
        return {process.exitCode(),
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
    }

    // One value from the database, read by SQLite itself.
    static QString value(const QString& db, const QString& query)
    {
        QString result = QStringLiteral("<none>");
        {
            QSqlDatabase native = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("faults"));
            native.setDatabaseName(db);
            if (native.open()) {
                QSqlQuery rows(query, native);
                if (rows.next())
                    result = rows.value(0).toString();
            }
        }
        QSqlDatabase::removeDatabase(QStringLiteral("faults"));
        return result;
    }

    QStringList batch(const QString& db, int number) const
    {
        return {QStringLiteral("generate"),
            QStringLiteral("--db"),
            db,
            QStringLiteral("--password"),
            QStringLiteral("secret"),
            QStringLiteral("--number"),
            QString::number(number),
            QStringLiteral("--hours"),
            QStringLiteral("1"),
            QStringLiteral("--yes"),
            QStringLiteral("--prefs"),
            m_others.filePath(QStringLiteral("prefs")),
            QStringLiteral("--app-dir"),
            m_others.filePath(QStringLiteral("app"))};
    }

    QString newDatabase(const QString& path) const
    {
        const Run init = marlet({QStringLiteral("init"),
            QStringLiteral("--db"),
            path,
            QStringLiteral("--admin-password"),
            QStringLiteral("secret"),
            QStringLiteral("--app-dir"),
            m_others.filePath(QStringLiteral("app"))});
        return init.exitCode == 0 ? QString() : init.err;
    }

    QTemporaryDir m_folder;
    QTemporaryDir m_others; // preferences and data folder, on a disk that has room

private slots:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        QVERIFY(m_others.isValid());
    }

    void testAReadOnlyDatabaseStopsTheBatchWithTheReason()
    {
        const QString folder = m_folder.filePath(QStringLiteral("readonly"));
        QVERIFY(QDir().mkpath(folder));
        const QString db = folder + QStringLiteral("/cafe.db");
        QCOMPARE(newDatabase(db), QString());
        // The folder stays open to the batch (SQLite keeps its journal there); the file is not.
        QString asUser;
        const QFile::Permissions everyone = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup
            | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
        if (geteuid() == 0) {
            // Root writes any file: the batch runs as a user who may only read it.
            asUser = QStringLiteral("65534");
            for (const QString& path : {m_folder.path(), folder, m_others.path()})
                QVERIFY(QFile::setPermissions(path, everyone));
        }
        QVERIFY(QFile::setPermissions(db, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        const Run run = marlet(batch(db, 5), asUser);
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains(QStringLiteral("readonly database")), qPrintable(run.err + run.out));
        QVERIFY2(!run.out.contains(QStringLiteral("Completed Successfully")), qPrintable(run.out));
        QCOMPARE(value(db, QStringLiteral("SELECT count(*) FROM Account")), QStringLiteral("0"));
    }

    void testAFullDiskStopsTheBatchAndKeepsWhatWasStored()
    {
        if (geteuid() != 0)
            QSKIP("a small disk is mounted only where the tests run as root");
        const QString disk = m_folder.filePath(QStringLiteral("small"));
        QVERIFY(QDir().mkpath(disk));
        QProcess mount;
        mount.start(QStringLiteral("mount"),
            {QStringLiteral("-t"),
                QStringLiteral("tmpfs"),
                QStringLiteral("-o"),
                QStringLiteral("size=640k"),
                QStringLiteral("tmpfs"),
                disk});
        QVERIFY(mount.waitForFinished());
        if (mount.exitCode() != 0)
            QSKIP(qPrintable(QStringLiteral("no small disk can be mounted here: ")
                + QString::fromLocal8Bit(mount.readAllStandardError())));
        const QString db = disk + QStringLiteral("/cafe.db");
        const QString created = newDatabase(db);
        const Run run = created.isEmpty() ? marlet(batch(db, 400)) : Run {};
        const QString integrity = value(db, QStringLiteral("PRAGMA integrity_check"));
        const QString stored = value(db, QStringLiteral("SELECT count(*) FROM Account"));
        const QString counted = value(db, QStringLiteral("SELECT Number FROM TicketInfo"));
        QProcess::execute(QStringLiteral("umount"), {disk});
        QCOMPARE(created, QString());
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains(QStringLiteral("Ticket generation stopped: the database did not store ticket")),
            qPrintable(run.err));
        QVERIFY2(run.err.contains(QStringLiteral("full")), qPrintable(run.err));
        QCOMPARE(integrity, QStringLiteral("ok"));
        QVERIFY2(stored.toInt() > 0 && stored.toInt() < 400, qPrintable(stored));
        QCOMPARE(counted, stored);
        QCOMPARE(run.out.count(QStringLiteral("60min(s)")), stored.toInt());
    }

    void testALockHeldSeveralSecondsLosesNoTicket()
    {
        const QString db = m_folder.filePath(QStringLiteral("locked.db"));
        QCOMPARE(newDatabase(db), QString());
        QProcess batchRun;
        batchRun.setProcessEnvironment(environment());
        batchRun.start(QStringLiteral(MARLET_BINARY), batch(db, 60));
        batchRun.closeWriteChannel();
        QTest::qWait(1000);
        // Another program takes the write lock for longer than one wait of the store.
        QProcess holder;
        holder.start(QStringLiteral("sqlite3"), {db});
        holder.write(".timeout 10000\nBEGIN EXCLUSIVE;\nINSERT INTO SysUsage (SystemUsage) VALUES ('held');\n.shell "
                     "sleep 7\nCOMMIT;\n");
        holder.closeWriteChannel();
        QVERIFY(holder.waitForFinished(30000));
        QVERIFY(batchRun.waitForFinished(120000));
        const QString out = QString::fromUtf8(batchRun.readAllStandardOutput());
        QCOMPARE(batchRun.exitCode(), 0);
        QVERIFY2(out.contains(QStringLiteral("Ticket Generation Completed Successfully!")), qPrintable(out));
        QCOMPARE(value(db, QStringLiteral("SELECT count(*) FROM Account")), QStringLiteral("60"));
        QCOMPARE(value(db, QStringLiteral("SELECT Number FROM TicketInfo")), QStringLiteral("61"));
        QCOMPARE(value(db, QStringLiteral("SELECT TotGenerated FROM Register")), QStringLiteral("61"));
        QCOMPARE(
            value(db, QStringLiteral("SELECT count(*) FROM SysUsage WHERE SystemUsage = 'held'")), QStringLiteral("1"));
    }

    void testABatchKilledHalfWayLeavesASoundDatabase()
    {
        const QString db = m_folder.filePath(QStringLiteral("killed.db"));
        QCOMPARE(newDatabase(db), QString());
        QProcess batchRun;
        batchRun.setProcessEnvironment(environment());
        batchRun.start(QStringLiteral(MARLET_BINARY), batch(db, 200));
        batchRun.closeWriteChannel();
        QTest::qWait(2500);
        batchRun.kill();
        QVERIFY(batchRun.waitForFinished());
        QCOMPARE(value(db, QStringLiteral("PRAGMA integrity_check")), QStringLiteral("ok"));
        const int stored = value(db, QStringLiteral("SELECT count(*) FROM Account")).toInt();
        QVERIFY2(stored > 0 && stored < 200, qPrintable(QString::number(stored)));
        QCOMPARE(
            value(db, QStringLiteral("SELECT TimeGenerated FROM TicketInfo")).left(11), QStringLiteral("Started at "));
        // The next batch runs in a group of its own.
        const Run again = marlet(batch(db, 2));
        QCOMPARE(again.exitCode, 0);
        QCOMPARE(value(db, QStringLiteral("SELECT count(DISTINCT TicketGrp) FROM TicketInfo")), QStringLiteral("2"));
        QCOMPARE(value(db, QStringLiteral("SELECT count(*) FROM Account")), QString::number(stored + 2));
    }

    void testInitKilledAtAnyMomentLeavesNoHalfDatabase()
    {
        const QString db = m_folder.filePath(QStringLiteral("init.db"));
        for (int pause = 0; pause <= 120; pause += 8) {
            QFile::remove(db);
            QProcess init;
            init.setProcessEnvironment(environment());
            init.start(QStringLiteral(MARLET_BINARY),
                {QStringLiteral("init"),
                    QStringLiteral("--db"),
                    db,
                    QStringLiteral("--admin-password"),
                    QStringLiteral("secret"),
                    QStringLiteral("--app-dir"),
                    m_others.filePath(QStringLiteral("app"))});
            QVERIFY(init.waitForStarted());
            QTest::qWait(pause);
            init.kill();
            init.waitForFinished();
            if (!QFile::exists(db))
                continue;
            // Whatever is at the path is a whole database.
            QCOMPARE(value(db, QStringLiteral("PRAGMA integrity_check")), QStringLiteral("ok"));
            QCOMPARE(value(db, QStringLiteral("SELECT Username FROM Users")), QStringLiteral("ADMINISTRATOR"));
        }
        QFile::remove(db);
        QCOMPARE(newDatabase(db), QString());
        // Nothing an interrupted run left stays beside the database.
        QCOMPARE(
            QDir(m_folder.path()).entryList({QStringLiteral(".init.db*")}, QDir::Files | QDir::Hidden), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestFaults)
#include "TestFaults.moc"
