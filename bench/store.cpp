// Speed of the data store: a ticket table of N rows (100,000 unless given), the static result set
// against a plain SQLite loop over the same rows, lookups and inserts of single tickets, memory.
//
//   bench_store [rows]

#include "store/Connection.h"
#include "store/DatabaseInit.h"
#include "store/Recordset.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <sqlite3.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <functional>

using namespace marlet;
using namespace Qt::StringLiterals;

namespace {

const QString listing = u"select * from Account where member=false"_s;

QString username(int i)
{
    return u"NVT"_s + QString::number(i).rightJustified(7, u'0');
}

// Milliseconds of the fastest of `runs` calls, so that a busy neighbour on the machine counts less.
double bestOf(int runs, const std::function<void()>& work)
{
    double best = 1e300;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, double(timer.nsecsElapsed()) / 1e6);
    }
    return best;
}

double residentMegabytes()
{
    QFile statm(u"/proc/self/statm"_s);
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

double peakMegabytes()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024.0;
}

void fill(const QString& path, int rows)
{
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db,
        "INSERT INTO \"account\" (\"ticketgrp\",\"ticketno\",\"username\",\"password\",\"time\","
        "\"backtime\",\"bywhom\",\"days\",\"datecreated\",\"amount\",\"orgtime\",\"lastused\",\"new\","
        "\"starttime\",\"endtime\",\"computerused\",\"accountadded\",\"noadded\",\"pos\",\"member\","
        "\"quota\",\"night\",\"once\") VALUES (?,?,?,?,3600,3600,'ADMINISTRATOR',0,'2024-03-15 "
        "00:00:00','N50',3600,'2024-03-15 00:00:00',-1,'1899-12-30 22:00:00','1899-12-30 06:00:00',"
        "'NONE','NONE',0,0,?,0,0,0)",
        -1,
        &insert,
        nullptr);
    for (int i = 0; i < rows; ++i) {
        const QByteArray group = QByteArray("NVT2403150") + QByteArray::number(10 + i / 1000);
        const QByteArray number = QByteArray::number(i % 1000 + 1).rightJustified(3, '0');
        const QByteArray name = username(i).toUtf8();
        const QByteArray password = QByteArray::number(10000 + (i * 7919) % 90000);
        sqlite3_bind_text(insert, 1, group.constData(), int(group.size()), nullptr);
        sqlite3_bind_text(insert, 2, number.constData(), int(number.size()), nullptr);
        sqlite3_bind_text(insert, 3, name.constData(), int(name.size()), nullptr);
        sqlite3_bind_text(insert, 4, password.constData(), int(password.size()), nullptr);
        sqlite3_bind_int(insert, 5, i % 50 == 0 ? -1 : 0); // one member ticket in fifty
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

// What a plain C program needs for the same rows on a connection it keeps open: step through them
// and read every column.
qint64 plainLoop(sqlite3* db, const QByteArray& sql)
{
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, sql.constData(), -1, &statement, nullptr);
    const int columns = sqlite3_column_count(statement);
    qint64 checksum = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int c = 0; c < columns; ++c) {
            switch (sqlite3_column_type(statement, c)) {
            case SQLITE_INTEGER:
                checksum += sqlite3_column_int64(statement, c);
                break;
            case SQLITE_FLOAT:
                checksum += qint64(sqlite3_column_double(statement, c));
                break;
            case SQLITE_TEXT:
                checksum += sqlite3_column_text(statement, c)[0] + sqlite3_column_bytes(statement, c);
                break;
            default:
                break;
            }
        }
    }
    sqlite3_finalize(statement);
    return checksum;
}

qint64 qtLoop(const QString& path, const QString& sql)
{
    qint64 count = 0;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"bench"_s);
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
    QSqlDatabase::removeDatabase(u"bench"_s);
    return count;
}

void row(const char* what, double milliseconds, const char* note = "")
{
    std::printf("  %-54s %10.3f ms  %s\n", what, milliseconds, note);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int rows = argc > 1 ? std::max(100, QString::fromLocal8Bit(argv[1]).toInt()) : 100000;
    QTemporaryDir dir;
    const QString path = dir.filePath(u"bench.db"_s);
    if (!DatabaseInit {path, u"ADMIN"_s, false}.run().ok()) {
        std::fprintf(stderr, "could not create the database\n");
        return 1;
    }
    std::printf("Store benchmark: %d tickets of 33 columns, SQLite %s\n\n", rows, sqlite3_libversion());

    QElapsedTimer timer;
    timer.start();
    fill(path, rows);
    row("fill (one transaction, plain SQLite)", double(timer.nsecsElapsed()) / 1e6);

    Connection connection;
    if (!connection.Open(path)) {
        std::fprintf(stderr, "%s\n", qPrintable(connection.lastError()));
        return 1;
    }
    const QByteArray engineSql = connection.translate(listing).sql.toUtf8();
    long listed = 0;
    qint64 checksum = 0;

    sqlite3* plainDb = nullptr;
    sqlite3_open(path.toUtf8().constData(), &plainDb);
    const double plain = bestOf(3, [&] { checksum += plainLoop(plainDb, engineSql); });
    sqlite3_close(plainDb);
    const double walk = bestOf(3, [&] {
        Recordset rs;
        rs.Open(listing, connection);
        listed = rs.RecordCount();
        while (!rs.Eof())
            rs.MoveNext();
    });
    const double walkRead = bestOf(3, [&] {
        Recordset rs;
        rs.Open(listing, connection);
        for (; !rs.Eof(); rs.MoveNext()) {
            for (int c = 0; c < rs.fieldCount(); ++c)
                checksum += rs.value(c).isNull() ? 0 : 1;
        }
    });
    const double count = bestOf(3, [&] {
        Recordset rs;
        rs.Open(listing, connection);
        listed = rs.RecordCount();
    });
    const double qt = bestOf(1, [&] { checksum += qtLoop(path, QString::fromUtf8(engineSql)); });

    std::printf("\n  \"%s\": %ld rows\n", qPrintable(listing), listed);
    row("plain sqlite3 loop reading every column", plain);
    row("Recordset open + walk", walk, qPrintable(u"ratio %1 (target <= 3)"_s.arg(walk / plain, 0, 'f', 2)));
    row("Recordset open + walk + every field as value",
        walkRead,
        qPrintable(u"ratio %1"_s.arg(walkRead / plain, 0, 'f', 2)));
    row("Recordset open + RecordCount", count, qPrintable(u"ratio %1"_s.arg(count / plain, 0, 'f', 2)));
    row("QSqlQuery forward-only reading every column",
        qt,
        qPrintable(u"ratio %1 (for comparison)"_s.arg(qt / plain, 0, 'f', 2)));

    const double before = residentMegabytes();
    {
        Recordset rs;
        rs.Open(listing, connection);
        std::printf(
            "\n  memory held by a result set of %ld rows: %.1f MB\n", rs.RecordCount(), residentMegabytes() - before);
    }

    const int lookups = 10000;
    QRandomGenerator random(42);
    timer.restart();
    for (int i = 0; i < lookups; ++i) {
        Recordset rs;
        rs.Open(
            Statement(u"Select * from Account where Username = '{}'"_s, {username(random.bounded(rows))}), connection);
        checksum += rs.value(u"Time"_s).toInt();
    }
    const double lookup = double(timer.nsecsElapsed()) / 1e6 / lookups;

    const int inserts = 1000;
    Recordset added;
    added.Open(
        u"Select * from Account where Username = 'NONE'"_s, connection, CursorType::Static, LockType::Optimistic);
    timer.restart();
    for (int i = 0; i < inserts; ++i) {
        added.AddNew();
        added.setValue(u"TicketGrp"_s, u"NVT240315099999"_s);
        added.setValue(u"TicketNo"_s, u"001"_s);
        added.setValue(u"Username"_s, username(rows + i));
        added.setValue(u"Password"_s, u"12345"_s);
        added.setValue(u"Time"_s, 3600);
        added.setValue(u"BackTime"_s, 3600);
        added.setValue(u"OrgTime"_s, 3600);
        added.setValue(u"ByWhom"_s, u"ADMINISTRATOR"_s);
        added.setValue(u"DateCreated"_s, QDate(2024, 3, 15));
        added.setValue(u"LastUsed"_s, QDate(2024, 3, 15));
        added.setValue(u"NEW"_s, true);
        added.setValue(u"Member"_s, false);
        added.setValue(u"Amount"_s, u"N50"_s);
        added.Update();
    }
    const double insert = double(timer.nsecsElapsed()) / 1e6 / inserts;
    timer.restart();
    for (int i = 0; i < inserts; ++i) {
        connection.Execute(Statement(u"INSERT INTO Account (TicketGrp,Username,Password,Time,NEW,Member) Values "
                                     u"('{}','{}','{}',{},true,false)"_s,
            {u"NVT240315099998"_s, username(rows + inserts + i), u"12345"_s, 3600}));
    }
    const double execute = double(timer.nsecsElapsed()) / 1e6 / inserts;

    std::printf("\n");
    row("lookup by Username (average of 10,000)", lookup, "target < 0.2");
    row("insert of a ticket row by AddNew (average of 1,000)", insert, "target < 0.2");
    row("insert of a ticket row by Execute (average of 1,000)", execute);
    std::printf(
        "\n  peak resident memory: %.1f MB   (checksum %lld)\n", peakMegabytes(), static_cast<long long>(checksum));
    return 0;
}
