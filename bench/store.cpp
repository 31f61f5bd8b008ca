// Speed of the data store against a plain SQLite program doing the same work in the same run:
// filling the ticket table row by row, the static result set of "all tickets", the lookups of the
// two search commands (by user name and by password), and the insert of one ticket row.
//
//   bench_store [--rows N]        N tickets, 100,000 unless given

#include "support/BenchSupport.h"

#include "issuing/TicketRow.h"
#include "store/Connection.h"
#include "store/Recordset.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <sqlite3.h>

#include <cstdio>

using namespace marlet;
using namespace marlet::bench;

namespace {

const QString listing = QStringLiteral("select * from Account where member=false");

// A new batch ticket as the generate screen writes it.
TicketValues newTicket(int index)
{
    TicketValues ticket;
    ticket.TicketGrp = QString::number(240316000000LL + index / 1000);
    ticket.TicketNo = QString::number(index % 1000 + 1).rightJustified(3, u'0');
    ticket.Username = ticketName(index);
    ticket.Password = ticketPassword(index);
    ticket.seconds = 3600;
    ticket.ByWhom = QStringLiteral("ADMINISTRATOR");
    ticket.expiry = {false, QVariant(), 5};
    ticket.created = QDate(2024, 3, 16);
    ticket.Amount = QStringLiteral("N50");
    ticket.StartTime = QDateTime(QDate(2024, 3, 16), QTime(22, 0));
    ticket.EndTime = QDateTime(QDate(2024, 3, 17), QTime(6, 0));
    return ticket;
}

void open(Connection& connection, const QString& path)
{
    if (!connection.Open(path))
        fail(connection.lastError());
}

// Filling a table ticket by ticket, each row its own statement as the screens write them.
Figure fill(int rows)
{
    Database marletDb;
    Database plainDb;
    Connection connection;
    open(connection, marletDb.path());
    Figure figure {QStringLiteral("fill, one statement a ticket")};
    figure.timeMarlet([&] {
        Recordset added;
        added.Open(QStringLiteral("Select * from Account where Username = ''"),
            connection,
            CursorType::Static,
            LockType::Optimistic);
        for (int i = 0; i < rows; ++i) {
            added.AddNew();
            writeTicketRow(added, newTicket(i));
            if (!added.Update())
                fail(added.lastError());
        }
    });
    figure.timePlain([&] {
        PlainDatabase db(plainDb.path());
        PlainTicketInsert insert(db);
        for (int i = 0; i < rows; ++i) {
            if (!insert.add(newTicket(i)))
                fail(QStringLiteral("plain insert failed"));
        }
    });
    return figure;
}

qint64 qtLoop(const QString& path, const QString& sql)
{
    qint64 count = 0;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("bench"));
        db.setDatabaseName(path);
        db.open();
        QSqlQuery query(db);
        query.setForwardOnly(true);
        query.exec(sql);
        while (query.next()) {
            for (int c = 0; c < 33; ++c)
                count += query.value(c).isValid() ? 1 : 0;
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("bench"));
    return count;
}

// "All tickets": the static result set against a plain loop that reads every column.
std::vector<Figure> walk(const Database& data, Connection& connection, qint64& checksum)
{
    const QByteArray engineSql = connection.translate(listing).sql.toUtf8();
    PlainDatabase plainDb(data.path());
    PlainStatement plainListing(plainDb, engineSql);
    const Timing plain = fastestOf(3, [&] { checksum += plainListing.readAll(); });

    long listed = 0;
    Figure openWalk {QStringLiteral("open + walk \"all tickets\"")};
    openWalk.timeMarlet(
        [&] {
            Recordset rs;
            rs.Open(listing, connection);
            listed = rs.RecordCount();
            while (!rs.Eof())
                rs.MoveNext();
        },
        3);
    openWalk.plain = plain.wall;
    openWalk.plainCpu = plain.cpu;
    openWalk.target = Target::ratioAtMost(3);
    openWalk.note = QString::number(listed) + QStringLiteral(" rows");

    Figure walkRead {QStringLiteral("open + walk + every field as a value")};
    walkRead.timeMarlet(
        [&] {
            Recordset rs;
            rs.Open(listing, connection);
            for (; !rs.Eof(); rs.MoveNext()) {
                for (int c = 0; c < rs.fieldCount(); ++c)
                    checksum += rs.value(c).isNull() ? 0 : 1;
            }
        },
        3);
    walkRead.plain = plain.wall;
    walkRead.plainCpu = plain.cpu;

    Figure qt {QStringLiteral("QSqlQuery forward-only, every column")};
    qt.timeMarlet([&] { checksum += qtLoop(data.path(), QString::fromUtf8(engineSql)); });
    qt.plain = plain.wall;
    qt.plainCpu = plain.cpu;
    qt.note = QStringLiteral("Qt's own driver, for comparison");
    return {openWalk, walkRead, qt};
}

// A search command's lookup: the result set opened as the search opens it (static, optimistic), its
// count, and the fields of the grid line read from it.
Figure lookup(const QString& operation,
    const Database& data,
    Connection& connection,
    const QString& pattern,
    const std::vector<QString>& entries,
    qint64& checksum)
{
    PlainDatabase plainDb(data.path());
    PlainStatement plain(plainDb, connection.translate(Statement(pattern, {entries.front()})).sql.toUtf8());
    Figure figure {operation};
    long found = 0;
    const int per = int(entries.size());
    figure.timeMarlet(
        [&] {
            for (const QString& entry : entries) {
                Recordset rs;
                rs.Open(Statement(pattern, {entry}), connection, CursorType::Static, LockType::Optimistic);
                found += rs.RecordCount();
                for (; !rs.Eof(); rs.MoveNext())
                    checksum += ticketRowFields(rs).Time.toInt();
            }
        },
        1,
        per);
    long plainFound = 0;
    figure.timePlain(
        [&] {
            for (const QString& entry : entries) {
                const QByteArray text = entry.toUtf8();
                plain.bindText(1, text);
                while (sqlite3_step(plain.get()) == SQLITE_ROW) {
                    checksum += readRow(plain.get());
                    ++plainFound;
                }
                sqlite3_reset(plain.get());
            }
        },
        1,
        per);
    if (found != plainFound || found < long(entries.size()))
        fail(operation + QStringLiteral(": Marlet found %1 rows, the plain program %2").arg(found).arg(plainFound));
    figure.note = QStringLiteral("average of %1, %2 rows found").arg(entries.size()).arg(found);
    return figure;
}

std::vector<Figure> lookups(int rows, const Database& data, Connection& connection, qint64& checksum)
{
    QRandomGenerator random(42);
    std::vector<QString> names;
    for (int i = 0; i < 10000; ++i)
        names.push_back(ticketName(random.bounded(rows)));
    // Passwords have no index: each lookup reads the whole table, in Marlet as in the plain program.
    std::vector<QString> passwords;
    for (int i = 0; i < 100; ++i)
        passwords.push_back(ticketPassword(random.bounded(rows)));
    Figure byName = lookup(QStringLiteral("lookup by Username, as the search does"),
        data,
        connection,
        QStringLiteral("Select * from Account where Username = '{}'"),
        names,
        checksum);
    byName.target = Target::below(0.2);
    Figure byPassword = lookup(QStringLiteral("lookup by Password, as the search does"),
        data,
        connection,
        QStringLiteral("Select * from Account where Password = '{}'"),
        passwords,
        checksum);
    return {byName, byPassword};
}

// One more ticket row on a full table, by AddNew as the generate screen adds it.
Figure insert(int rows, const Database& data, Connection& connection)
{
    const int inserts = 1000;
    Figure figure {QStringLiteral("insert of a ticket row by AddNew")};
    Recordset added;
    added.Open(QStringLiteral("Select * from Account where Username = ''"),
        connection,
        CursorType::Static,
        LockType::Optimistic);
    figure.timeMarlet(
        [&] {
            for (int i = 0; i < inserts; ++i) {
                added.AddNew();
                writeTicketRow(added, newTicket(rows + i));
                if (!added.Update())
                    fail(added.lastError());
            }
        },
        1,
        inserts);
    PlainDatabase plainDb(data.path());
    PlainTicketInsert plain(plainDb);
    figure.timePlain(
        [&] {
            for (int i = 0; i < inserts; ++i) {
                if (!plain.add(newTicket(rows + inserts + i)))
                    fail(QStringLiteral("plain insert failed"));
            }
        },
        1,
        inserts);
    figure.target = Target::below(0.2);
    figure.note = QStringLiteral("average of %1").arg(inserts);
    return figure;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int rows = rowsArgument(argc, argv);
    printHeader("Store benchmark", rows);

    Database data;
    makeDataSet(data, rows);
    std::vector<Figure> figures {fill(rows)};
    Connection connection;
    open(connection, data.path());
    qint64 checksum = 0;
    const std::vector<Figure> listed = walk(data, connection, checksum);
    figures.insert(figures.end(), listed.begin(), listed.end());
    const std::vector<Figure> searched = lookups(rows, data, connection, checksum);
    figures.insert(figures.end(), searched.begin(), searched.end());
    figures.push_back(insert(rows, data, connection));
    printFigures(figures);
    std::printf("  (checksum %lld)\n", static_cast<long long>(checksum));
    return 0;
}
