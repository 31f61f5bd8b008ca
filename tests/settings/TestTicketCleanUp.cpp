#include "settings/TicketCleanUp.h"

#include "store/Recordset.h"
#include "support/StoreTestDatabase.h"

#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

namespace {

const QDateTime Now(QDate(2026, 11, 21), QTime(10, 0));

} // namespace

class TestTicketCleanUp : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<test::StoreTestDatabase> m_db;
    std::unique_ptr<QTemporaryDir> m_prefDir;
    std::unique_ptr<Preferences> m_store;

    Connection& connection() { return m_db->connection(); }
    SessionPreferences preferences() { return SessionPreferences(*m_store, QStringLiteral("Norvantis")); }

    void addTicket(const QString& username, int seconds, bool fresh, bool member = false)
    {
        QVERIFY(connection().executeNative(
            QStringLiteral("INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, NEW, Member) "
                           "VALUES ('261121100000', '001', ?, 'PW', ?, ?, ?)"),
            {username, seconds, fresh ? 1 : 0, member ? 1 : 0}));
    }

    QStringList names(const QString& table)
    {
        Recordset rows;
        rows.Open(Statement(QStringLiteral("Select Username from ") + table + QStringLiteral(" order by Username")),
            connection(),
            CursorType::Static,
            LockType::ReadOnly);
        QStringList found;
        for (; !rows.Eof(); rows.MoveNext())
            found << rows.value(0).toString();
        return found;
    }

private slots:
    void init()
    {
        m_db = std::make_unique<test::StoreTestDatabase>();
        QVERIFY2(m_db->isValid(), qPrintable(m_db->error()));
        m_prefDir = std::make_unique<QTemporaryDir>();
        m_store = std::make_unique<Preferences>(m_prefDir->path());
    }

    void testUsedUpTicketsGoToTheBin()
    {
        addTicket(QStringLiteral("USED0"), 0, false);
        addTicket(QStringLiteral("USEDNEG"), -30, false);
        addTicket(QStringLiteral("LEFT"), 60, false);
        addTicket(QStringLiteral("UNUSED0"), 0, true);
        addTicket(QStringLiteral("MEMBER0"), 0, false, true);
        const TicketCleanUp::Result result = TicketCleanUp {preferences()}.run(connection(), Now);
        QCOMPARE(result.error, QString());
        QCOMPARE(result.removed, 2L);
        QCOMPARE(names(QStringLiteral("Account")),
            QStringList({QStringLiteral("LEFT"), QStringLiteral("MEMBER0"), QStringLiteral("UNUSED0")}));
        QCOMPARE(
            names(QStringLiteral("RecycleBin")), QStringList({QStringLiteral("USED0"), QStringLiteral("USEDNEG")}));
        Recordset bin;
        QVERIFY(bin.Open(Statement(QStringLiteral("Select DateTimeDeleted, Reason from RecycleBin")),
            connection(),
            CursorType::Static,
            LockType::ReadOnly));
        QCOMPARE(bin.value(0).toString(), QStringLiteral("21/11/26/10:00"));
        QCOMPARE(bin.value(1).toString(), QStringLiteral("Deleted by User."));
    }

    void testATicketOfTheSameNameWithTimeStays()
    {
        addTicket(QStringLiteral("TWIN"), 0, false);
        addTicket(QStringLiteral("TWIN"), 600, false);
        QCOMPARE(TicketCleanUp {preferences()}.run(connection(), Now).removed, 1L);
        QCOMPARE(names(QStringLiteral("Account")), QStringList({QStringLiteral("TWIN")}));
        QCOMPARE(names(QStringLiteral("RecycleBin")), QStringList({QStringLiteral("TWIN")}));
    }

    void testASwitchedOffBinKeepsNothing_data()
    {
        QTest::addColumn<QString>("size");
        QTest::addColumn<int>("kept");
        QTest::newRow("500 switches the bin off") << QStringLiteral("500") << 0;
        QTest::newRow("501 keeps the tickets") << QStringLiteral("501") << 2;
    }

    void testASwitchedOffBinKeepsNothing()
    {
        QFETCH(QString, size);
        QFETCH(int, kept);
        preferences().save(keys::RecycleBinSize, size);
        addTicket(QStringLiteral("A"), 0, false);
        addTicket(QStringLiteral("B"), 0, false);
        QCOMPARE(TicketCleanUp {preferences()}.run(connection(), Now).removed, 2L);
        QCOMPARE(names(QStringLiteral("Account")), QStringList());
        QCOMPARE(names(QStringLiteral("RecycleBin")).size(), kept);
    }

    void testAQuoteInANameStopsTheCleanUpWithoutLosingTheTicket()
    {
        addTicket(QStringLiteral("O'NEIL"), 0, false);
        const TicketCleanUp::Result result = TicketCleanUp {preferences()}.run(connection(), Now);
        QVERIFY(!result.error.isEmpty());
        QCOMPARE(result.removed, 0L);
        QCOMPARE(names(QStringLiteral("Account")), QStringList({QStringLiteral("O'NEIL")}));
    }
};

QTEST_GUILESS_MAIN(TestTicketCleanUp)
#include "TestTicketCleanUp.moc"
