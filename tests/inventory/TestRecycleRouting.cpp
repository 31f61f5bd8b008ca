#include "inventory/RecycleRouting.h"

#include "store/Recordset.h"
#include "support/StoreTestDatabase.h"

#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

namespace {

const QDateTime DeletedAt(QDate(2009, 1, 5), QTime(14, 30, 59));

// Counts what a purge reports.
class CountingReporter : public PurgeReporter
{
public:
    void purgeStarting(Recordset& bin) override
    {
        ++starts;
        rowsAtStart = bin.RecordCount();
    }
    void purgeRound() override { ++rounds; }
    void purgeFinished() override { ++finishes; }

    int starts = 0;
    int rounds = 0;
    int finishes = 0;
    long rowsAtStart = -1;
};

} // namespace

Q_DECLARE_METATYPE(marlet::RoutingErrors)

class TestRecycleRouting : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<test::StoreTestDatabase> m_db;
    std::unique_ptr<QTemporaryDir> m_prefDir;
    std::unique_ptr<Preferences> m_store;

    SessionPreferences preferences() { return SessionPreferences(*m_store, QStringLiteral("Norvantis")); }
    Connection& connection() { return m_db->connection(); }

    void setBinSize(const QString& size) { preferences().save(keys::RecycleBinSize, size); }

    void addTicket(const QString& username)
    {
        QVERIFY(connection().executeNative(
            QStringLiteral("INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, Member) "
                           "VALUES ('261121100000', '001', ?, 'PW', 3600, 0)"),
            {username}));
    }

    // Rows B0001, B0002 ... in the bin, stored in that order.
    void fillBin(int rows)
    {
        QVERIFY(connection().executeNative(
            QStringLiteral(
                "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                "INSERT INTO RecycleBin (Username, Member, Reason) SELECT printf('B%04d', i), 0, 'old' FROM n"),
            {rows}));
    }

    long count(const QString& sql)
    {
        Recordset rows;
        if (!rows.Open(Statement(sql), connection()))
            return -1;
        return rows.value(0).toLongLong();
    }

    QString text(const QString& sql)
    {
        Recordset rows;
        rows.Open(Statement(sql), connection());
        return rows.value(0).toString();
    }

    void openTicket(
        Recordset& ticket, const QString& select = QStringLiteral("Select * from Account where member=false"))
    {
        QVERIFY2(ticket.Open(Statement(select), connection()), qPrintable(ticket.lastError()));
        QVERIFY(ticket.RecordCount() > 0);
    }

    void openBin(Recordset& bin, LockType lock = LockType::Optimistic)
    {
        QVERIFY2(
            bin.Open(Statement(QStringLiteral("Select * from RecycleBin")), connection(), CursorType::Static, lock),
            qPrintable(bin.lastError()));
    }

private slots:
    void init()
    {
        m_db = std::make_unique<test::StoreTestDatabase>();
        QVERIFY2(m_db->isValid(), qPrintable(m_db->error()));
        m_prefDir = std::make_unique<QTemporaryDir>();
        m_store = std::make_unique<Preferences>(m_prefDir->path());
    }

    void testBinSizeDecidesWhetherTheTicketIsKept_data()
    {
        QTest::addColumn<QString>("size");
        QTest::addColumn<long>("kept");
        QTest::newRow("a size of 500 switches the bin off") << QStringLiteral("500") << 0L;
        QTest::newRow("a size of 501 keeps the ticket") << QStringLiteral("501") << 1L;
        QTest::newRow("a size below 500 keeps nothing") << QStringLiteral("100") << 0L;
        QTest::newRow("a size that is no number counts as 0") << QStringLiteral("many") << 0L;
        QTest::newRow("an absent size is 5000") << QString() << 1L;
    }
    void testBinSizeDecidesWhetherTheTicketIsKept()
    {
        QFETCH(QString, size);
        QFETCH(long, kept);
        if (!size.isNull())
            setBinSize(size);
        addTicket(QStringLiteral("NVT0000001"));
        Recordset ticket;
        Recordset bin;
        openTicket(ticket);
        openBin(bin);
        QVERIFY(RecycleRouting {preferences()}.route(ticket, bin, DeletedAt));
        QCOMPARE(count(QStringLiteral("select count(*) from RecycleBin")), kept);
        // The routing never removes the ticket: the caller does.
        QCOMPARE(count(QStringLiteral("select count(*) from Account")), 1L);
    }

    void testAFullBinLosesItsFirst500RowsAndTakesTheTicket_data()
    {
        QTest::addColumn<QString>("size");
        QTest::addColumn<int>("stored");
        QTest::addColumn<long>("after");
        QTest::addColumn<QString>("firstLeft");
        QTest::newRow("1000 rows in a bin of 1000 leave 501")
            << QStringLiteral("1000") << 1000 << 501L << QStringLiteral("B0501");
        QTest::newRow("999 rows in a bin of 1000 are not purged")
            << QStringLiteral("1000") << 999 << 1000L << QStringLiteral("B0001");
        QTest::newRow("a bin above its size loses 500 all the same")
            << QStringLiteral("600") << 700 << 201L << QStringLiteral("B0501");
        QTest::newRow("a bin of 501 at its size keeps one old row")
            << QStringLiteral("501") << 501 << 2L << QStringLiteral("B0501");
    }
    void testAFullBinLosesItsFirst500RowsAndTakesTheTicket()
    {
        QFETCH(QString, size);
        QFETCH(int, stored);
        QFETCH(long, after);
        QFETCH(QString, firstLeft);
        setBinSize(size);
        fillBin(stored);
        addTicket(QStringLiteral("NVT0000001"));
        Recordset ticket;
        Recordset bin;
        openTicket(ticket);
        openBin(bin);
        QVERIFY(RecycleRouting {preferences()}.route(ticket, bin, DeletedAt));
        QCOMPARE(count(QStringLiteral("select count(*) from RecycleBin")), after);
        QCOMPARE(text(QStringLiteral("select min(Username) from RecycleBin where Reason = 'old'")), firstLeft);
        QCOMPARE(count(QStringLiteral("select count(*) from RecycleBin where Username = 'NVT0000001'")), 1L);
        QCOMPARE(bin.RecordCount(), after);
    }

    void testThePurgeTakesTheStoresOrderNotTheAge()
    {
        setBinSize(QStringLiteral("1000"));
        fillBin(1000);
        // The first rows stored claim the latest deletion: they go all the same.
        QVERIFY(connection().executeNative(
            QStringLiteral("UPDATE RecycleBin SET DateTimeDeleted = '31/12/26/23:59' WHERE Username <= 'B0010'")));
        addTicket(QStringLiteral("NVT0000001"));
        Recordset ticket;
        Recordset bin;
        openTicket(ticket);
        openBin(bin);
        QVERIFY(RecycleRouting {preferences()}.route(ticket, bin, DeletedAt));
        QCOMPARE(count(QStringLiteral("select count(*) from RecycleBin where DateTimeDeleted = '31/12/26/23:59'")), 0L);
    }

    void testEveryColumnIsCopiedByPosition()
    {
        QVERIFY(connection().executeNative(QStringLiteral(
            "INSERT INTO Account VALUES ('261121100000', '007', 'NVT0000007', 'SECRET', 3599.5, 7200, "
            "'ADMIN & BOB', '2026-12-31', 0, '2026-11-21', 'N200', 7200, '2026-11-22', 0, "
            "'1899-12-30 22:00:00', '1899-12-30 06:00:00', 'PC01', 'RECHARGED', 2, -1, 0, -1, '3 day(s)', "
            "'SUNDAY', '2026-11-20', '5 mins', 250, -1, 0, 45, '10:15:00', 3, 12)")));
        Recordset ticket;
        Recordset bin;
        openTicket(ticket);
        openBin(bin);
        QCOMPARE(ticket.fieldCount(), 33);
        QVERIFY(RecycleRouting {preferences()}.route(ticket, bin, DeletedAt));

        Recordset copied;
        QVERIFY(copied.Open(Statement(QStringLiteral("Select * from RecycleBin")), connection()));
        QCOMPARE(copied.RecordCount(), 1L);
        QCOMPARE(copied.fieldCount(), 35);
        for (int field = 0; field < ticket.fieldCount(); ++field) {
            QCOMPARE(copied.fieldName(field).toLower(), ticket.fieldName(field).toLower());
            QCOMPARE(copied.value(field), ticket.value(field));
        }
        QCOMPARE(copied.value(QStringLiteral("Username")).toString(), QStringLiteral("NVT0000007"));
        QCOMPARE(copied.value(QStringLiteral("Time")).toDouble(), 3599.5);
        QCOMPARE(copied.value(QStringLiteral("DateTimeDeleted")).toString(), QStringLiteral("05/01/09/14:30"));
        QCOMPARE(copied.value(QStringLiteral("Reason")).toString(), QStringLiteral("Deleted by User."));
    }

    void testTheCopyGoesByPositionNotByName()
    {
        addTicket(QStringLiteral("NVT0000001"));
        Recordset ticket;
        Recordset bin;
        // Two fields only, in another order than the table's: they land in the bin's first two columns.
        openTicket(ticket, QStringLiteral("Select Username, TicketGrp from Account"));
        openBin(bin);
        QVERIFY(RecycleRouting {preferences()}.route(ticket, bin, DeletedAt));
        Recordset copied;
        QVERIFY(copied.Open(Statement(QStringLiteral("Select * from RecycleBin")), connection()));
        QCOMPARE(copied.value(QStringLiteral("TicketGrp")).toString(), QStringLiteral("NVT0000001"));
        QCOMPARE(copied.value(QStringLiteral("TicketNo")).toString(), QStringLiteral("261121100000"));
        QVERIFY(copied.value(QStringLiteral("Username")).isNull());
        QVERIFY(copied.value(QStringLiteral("Password")).isNull());
        QCOMPARE(copied.value(QStringLiteral("Reason")).toString(), QStringLiteral("Deleted by User."));
    }

    void testTheDeletionTimeText_data()
    {
        QTest::addColumn<QDateTime>("at");
        QTest::addColumn<QString>("text");
        QTest::newRow("day, month and year in two digits, then hours and minutes")
            << DeletedAt << QStringLiteral("05/01/09/14:30");
        QTest::newRow("a morning time keeps its leading zero")
            << QDateTime(QDate(2026, 11, 21), QTime(9, 5)) << QStringLiteral("21/11/26/09:05");
        QTest::newRow("midnight reads 00:00")
            << QDateTime(QDate(2026, 12, 31), QTime(0, 0, 59)) << QStringLiteral("31/12/26/00:00");
        QTest::newRow("the first year of a century reads 00")
            << QDateTime(QDate(2000, 1, 2), QTime(23, 59)) << QStringLiteral("02/01/00/23:59");
        QTest::newRow("no time at all leaves the separator alone") << QDateTime() << QStringLiteral("/");
    }
    void testTheDeletionTimeText()
    {
        QFETCH(QDateTime, at);
        QFETCH(QString, text);
        QCOMPARE(recycleDeletedText(at), text);
    }

    void testThePurgeSkipsRowsItCannotDelete()
    {
        fillBin(600);
        Recordset bin;
        openBin(bin);
        // Another program has emptied the first hundred rows since the bin was read.
        QVERIFY(connection().executeNative(QStringLiteral("DELETE FROM RecycleBin WHERE Username <= 'B0100'")));
        CountingReporter reporter;
        purgeRecycleBin(bin, &reporter);
        // A hundred rounds fail on rows already gone; the other 400 delete.
        QCOMPARE(count(QStringLiteral("select count(*) from RecycleBin")), 100L);
        QCOMPARE(text(QStringLiteral("select min(Username) from RecycleBin")), QStringLiteral("B0501"));
        QCOMPARE(reporter.starts, 1);
        QCOMPARE(reporter.rounds, 500);
        QCOMPARE(reporter.finishes, 1);
        QCOMPARE(reporter.rowsAtStart, 600L);
    }

    void testThePurgeOfASmallBinRunsAllItsRounds()
    {
        fillBin(3);
        Recordset bin;
        openBin(bin);
        CountingReporter reporter;
        purgeRecycleBin(bin, &reporter);
        QCOMPARE(count(QStringLiteral("select count(*) from RecycleBin")), 0L);
        QCOMPARE(reporter.rounds, 500);
    }

    void testAReadOnlyBinIsPurgedOfNothing()
    {
        setBinSize(QStringLiteral("501"));
        fillBin(501);
        addTicket(QStringLiteral("NVT0000001"));
        Recordset ticket;
        Recordset bin;
        openTicket(ticket);
        openBin(bin, LockType::ReadOnly);
        QVERIFY(!RecycleRouting {preferences()}.route(ticket, bin, DeletedAt));
        QCOMPARE(count(QStringLiteral("select count(*) from RecycleBin")), 501L);
    }

    void testAFailingStepEndsTheRoutingOrIsSkipped_data()
    {
        QTest::addColumn<RoutingErrors>("errors");
        QTest::addColumn<long>("kept");
        QTest::newRow("ended: the new row is never written") << RoutingErrors::EndRouting << 0L;
        QTest::newRow("skipped: the row is written without the failing column") << RoutingErrors::SkipStep << 1L;
    }
    void testAFailingStepEndsTheRoutingOrIsSkipped()
    {
        QFETCH(RoutingErrors, errors);
        QFETCH(long, kept);
        addTicket(QStringLiteral("NVT0000001"));
        Recordset ticket;
        Recordset bin;
        // The fifth field, a password, does not fit the bin's fifth column, Time.
        openTicket(ticket, QStringLiteral("Select TicketGrp, TicketNo, Username, Password, Password from Account"));
        openBin(bin);
        const RecycleRouting routing {preferences(), errors};
        QVERIFY(!routing.route(ticket, bin, DeletedAt));
        bin.Close();
        QCOMPARE(count(QStringLiteral("select count(*) from RecycleBin")), kept);
        if (kept > 0) {
            QCOMPARE(text(QStringLiteral("select Username from RecycleBin where Time is null")),
                QStringLiteral("NVT0000001"));
            QCOMPARE(text(QStringLiteral("select DateTimeDeleted from RecycleBin")), QStringLiteral("05/01/09/14:30"));
        }
    }

    void testThePurgeOfAFullBinIsReported()
    {
        setBinSize(QStringLiteral("600"));
        fillBin(600);
        addTicket(QStringLiteral("NVT0000001"));
        Recordset ticket;
        Recordset bin;
        openTicket(ticket);
        openBin(bin);
        CountingReporter reporter;
        const RecycleRouting routing {preferences(), RoutingErrors::EndRouting, &reporter};
        QVERIFY(routing.route(ticket, bin, DeletedAt));
        QCOMPARE(reporter.starts, 1);
        QCOMPARE(reporter.rowsAtStart, 600L);
        QCOMPARE(reporter.rounds, 500);
        QCOMPARE(reporter.finishes, 1);
        QCOMPARE(count(QStringLiteral("select count(*) from RecycleBin")), 101L);
        // A bin below its size is not purged, and the reporter hears nothing.
        CountingReporter quiet;
        const RecycleRouting quietRouting {preferences(), RoutingErrors::EndRouting, &quiet};
        QVERIFY(quietRouting.route(ticket, bin, DeletedAt));
        QCOMPARE(quiet.starts, 0);
        QCOMPARE(count(QStringLiteral("select count(*) from RecycleBin")), 102L);
    }
};

QTEST_GUILESS_MAIN(TestRecycleRouting)
#include "TestRecycleRouting.moc"
