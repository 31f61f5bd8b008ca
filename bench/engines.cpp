// The store's two engines side by side: the same work on an SQLite file and on a PostgreSQL
// database, through the store's own connection and record sets, and whole batches through
// `marlet generate` (one, then four at once on one database). PostgreSQL runs when
// MARLET_TEST_POSTGRES names a server ("host=... port=... user=..."; scripts/throwaway-postgres
// starts one); without it the PostgreSQL column stays empty.

#include "support/BenchSupport.h"

#include "store/Connection.h"
#include "store/DatabaseInit.h"
#include "store/Recordset.h"
#include "store/ScratchDatabase.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

using namespace marlet;
using namespace marlet::bench;

namespace {

struct Row
{
    const char* operation;
    const char* unit;
    std::optional<double> sqlite;
    std::optional<double> postgres;
};

// One engine's database, made ready by `marlet init`'s own code.
struct EngineDatabase
{
    QTemporaryDir folder;
    std::unique_ptr<ScratchDatabase> scratch;
    QString connectionString;

    explicit EngineDatabase(bool postgres)
    {
        if (postgres) {
            scratch = std::make_unique<ScratchDatabase>();
            if (const QString error = scratch->create(QStringLiteral("ADMIN")); !error.isEmpty())
                fail(error);
            connectionString = scratch->connectionString();
            return;
        }
        connectionString = QStringLiteral("sqlite:") + folder.filePath(QStringLiteral("cafe.db"));
        if (const InitResult made = DatabaseInit {connectionString, QStringLiteral("ADMIN"), false}.run(); !made.ok())
            fail(made.error);
    }
};

void execute(Connection& connection, const Statement& statement)
{
    if (!connection.Execute(statement))
        fail(connection.lastError());
}

const QString insertTicket = QStringLiteral(
    "INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, NEW, Member, DateCreated, LastUsed) "
    "VALUES ('{}', '{}', '{}', '{}', 3600, true, false, now, now)");

// Starts one batch of 999 tickets; `server` keeps each process's folders apart.
std::unique_ptr<QProcess> startBatch(const QString& database, const QTemporaryDir& folder, int server)
{
    auto process = std::make_unique<QProcess>();
    const QString own = folder.filePath(QStringLiteral("server%1").arg(server));
    process->start(QStringLiteral(MARLET_BINARY),
        {QStringLiteral("generate"),
            QStringLiteral("--db"),
            database,
            QStringLiteral("--password"),
            QStringLiteral("ADMIN"),
            QStringLiteral("--number"),
            QStringLiteral("999"),
            QStringLiteral("--minutes"),
            QStringLiteral("60"),
            QStringLiteral("--cost"),
            QStringLiteral("100"),
            QStringLiteral("--yes"),
            QStringLiteral("--print"),
            QStringLiteral("no"),
            QStringLiteral("--no-pause"),
            QStringLiteral("--app-dir"),
            own + QStringLiteral("/app"),
            QStringLiteral("--prefs"),
            own + QStringLiteral("/prefs")});
    return process;
}

// Runs `count` batches at once on the database; the wall time of all of them.
double batches(const QString& database, int count)
{
    QTemporaryDir folder;
    std::vector<std::unique_ptr<QProcess>> running;
    const Timing timing = timed([&] {
        for (int server = 1; server <= count; ++server)
            running.push_back(startBatch(database, folder, server));
        for (const auto& process : running) {
            if (!process->waitForFinished(600000) || process->exitCode() != 0)
                fail(QString::fromUtf8(process->readAllStandardError()));
        }
    });
    return timing.wall;
}

long distinctNames(Connection& connection)
{
    Recordset names;
    if (!names.Open(Statement(QStringLiteral("select Username from Account where TicketGrp like '26%'")), connection))
        fail(names.lastError());
    QSet<QString> seen;
    for (; !names.Eof(); names.MoveNext())
        seen.insert(names.value(0).toString().toUpper());
    return long(seen.size());
}

// The figures of one engine, in the order of the rows.
std::vector<double> measure(bool postgres, int rows)
{
    std::vector<double> figures;
    EngineDatabase database(postgres);
    Connection connection;
    if (!connection.Open(database.connectionString))
        fail(connection.lastError());

    // The data set: `rows` tickets in one transaction, then single inserts as a screen makes them.
    figures.push_back(timed([&] {
        connection.executeNative(QStringLiteral("BEGIN"));
        for (int i = 0; i < rows; ++i)
            execute(connection,
                Statement(insertTicket,
                    {QStringLiteral("2401%1").arg(i / 1000, 8, 10, QLatin1Char('0')),
                        QStringLiteral("%1").arg(i % 1000, 3, 10, QLatin1Char('0')),
                        ticketName(i),
                        ticketPassword(i)}));
        connection.executeNative(QStringLiteral("COMMIT"));
    }).wall);
    constexpr int single = 500;
    figures.push_back(timed([&] {
        Recordset tickets;
        if (!tickets.Open(Statement(QStringLiteral("select * from Account where Username = 'NONE'")),
                connection,
                CursorType::Static,
                LockType::Optimistic))
            fail(tickets.lastError());
        for (int i = 0; i < single; ++i) {
            tickets.AddNew();
            tickets.setValue(QStringLiteral("TicketGrp"), QStringLiteral("24990000"));
            tickets.setValue(QStringLiteral("Username"), ticketName(rows + i));
            tickets.setValue(QStringLiteral("Member"), false);
            if (!tickets.Update())
                fail(tickets.lastError());
        }
    }).wall
        / single);

    // A walk over every ticket, every value read, as the listing and the bin load do.
    figures.push_back(fastestOf(3, [&] {
        Recordset all;
        if (!all.Open(Statement(QStringLiteral("Select * from Account where member=false")), connection))
            fail(all.lastError());
        qint64 cells = 0;
        for (; !all.Eof(); all.MoveNext()) {
            for (int field = 0; field < all.fieldCount(); ++field)
                cells += all.value(field).isNull() ? 0 : 1;
        }
        if (cells == 0)
            fail(QStringLiteral("the walk read nothing"));
    }).wall);
    // The listing of one group, by its prefix.
    figures.push_back(fastestOf(3, [&] {
        Recordset group;
        if (!group.Open(Statement(QStringLiteral("select * from Account where member=false and TicketGrp like '{}%'"),
                            {QStringLiteral("240100000001")}),
                connection))
            fail(group.lastError());
        if (group.RecordCount() < 1)
            fail(QStringLiteral("the listing found nothing"));
    }).wall);
    // A ticket looked up by name, as every gate and search does.
    constexpr int lookups = 1000;
    figures.push_back(timed([&] {
        for (int i = 0; i < lookups; ++i) {
            if (Recordset::countRows(Statement(QStringLiteral("Select * from Account where Username = '{}'"),
                                         {ticketName((i * 7919) % rows)}),
                    connection)
                != 1)
                fail(QStringLiteral("a lookup missed"));
        }
    }).wall
        / lookups);
    connection.Close();

    // Whole batches through the program, each on a fresh database (a full one refuses them).
    EngineDatabase alone(postgres);
    figures.push_back(batches(alone.connectionString, 1));
    EngineDatabase shared(postgres);
    figures.push_back(batches(shared.connectionString, 4));
    Connection check;
    if (!check.Open(shared.connectionString))
        fail(check.lastError());
    if (distinctNames(check) != 4 * 999)
        fail(QStringLiteral("four batches did not make 3996 distinct tickets"));
    return figures;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int rows = rowsArgument(argc, argv, 20000);
    printHeader("The store's engines side by side", rows);

    std::vector<Row> table {{"fill: tickets in one transaction", "ms", {}, {}},
        {"insert: one ticket by a record set", "ms", {}, {}},
        {"walk: every value of every ticket", "ms", {}, {}},
        {"listing: one group by prefix", "ms", {}, {}},
        {"lookup: one ticket by name", "ms", {}, {}},
        {"generate: one batch of 999", "ms", {}, {}},
        {"generate: four batches of 999 at once", "ms", {}, {}}};
    const std::vector<double> sqlite = measure(false, rows);
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i].sqlite = sqlite.at(i);
    if (!ScratchDatabase::server().isEmpty()) {
        const std::vector<double> postgres = measure(true, rows);
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i].postgres = postgres.at(i);
    }

    std::printf("\n  %-42s %12s %12s\n", "operation", "SQLite", "PostgreSQL");
    for (const Row& row : table) {
        const auto cell = [&row](const std::optional<double>& value) {
            return value ? QString::asprintf("%.3f %s", *value, row.unit) : QStringLiteral("-");
        };
        std::printf("  %-42s %12s %12s\n", row.operation, qPrintable(cell(row.sqlite)), qPrintable(cell(row.postgres)));
    }
    std::printf("  (four batches at once made 3996 distinct tickets on each engine)\n");
    return 0;
}
