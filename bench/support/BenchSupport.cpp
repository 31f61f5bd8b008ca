#include "support/BenchSupport.h"

#include "component/Component.h"
#include "component/TimerDll.h"
#include "issuing/TicketRow.h"
#include "platform/Operator.h"
#include "screens/GenAcc.h"
#include "script/ScriptedPlatform.h"
#include "store/DatabaseInit.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QThread>

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace marlet::bench {

namespace {

// SQLITE_TRANSIENT without the C cast of its macro: SQLite copies what is bound, as Marlet's engine
// has it copy too.
const sqlite3_destructor_type copyOnBind = reinterpret_cast<sqlite3_destructor_type>(std::intptr_t(-1));

// The highest mark seen before the last reset, so that the whole run's peak survives resets.
double earlierPeak = 0;

QString procField(const QString& file, const QString& field)
{
    QFile proc(file);
    if (!proc.open(QIODevice::ReadOnly))
        return QString();
    const QRegularExpression line(u'^' + QRegularExpression::escape(field) + QStringLiteral("\\s*:\\s*(.*)$"),
        QRegularExpression::MultilineOption);
    return line.match(QString::fromLatin1(proc.readAll())).captured(1).trimmed();
}

QString loadAverage()
{
    QFile proc(QStringLiteral("/proc/loadavg"));
    if (!proc.open(QIODevice::ReadOnly))
        return QStringLiteral("unknown");
    return QString::fromLatin1(proc.readAll()).section(u' ', 0, 2);
}

QString formatted(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

QString milliseconds(double value)
{
    return formatted(value, value < 10 ? 3 : 1);
}

QString targetText(const Target& target)
{
    switch (target.kind) {
    case Target::Kind::BelowMilliseconds:
        return QStringLiteral("< ") + milliseconds(target.value) + QStringLiteral(" ms");
    case Target::Kind::RatioAtMost:
        return QStringLiteral("ratio <= ") + formatted(target.value, 1);
    case Target::Kind::None:
        break;
    }
    return QString();
}

QString targetText(const Figure& figure)
{
    QString text = targetText(figure.target);
    if (figure.peakLimit)
        text += (text.isEmpty() ? QString() : QStringLiteral(", ")) + QStringLiteral("peak <= ")
            + formatted(*figure.peakLimit, 0) + QStringLiteral(" MB");
    return text;
}

// The highest mark of the whole run, resets or not.
double runPeakMegabytes()
{
    return std::max(earlierPeak, peakMegabytes());
}

constexpr Timing NoRunYet {1e300, 0};

void keepFaster(Timing& best, const Timing& run)
{
    if (run.wall < best.wall)
        best = run;
}

} // namespace

int rowsArgument(int argc, char** argv, int fallback)
{
    int rows = fallback;
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == "--rows" && i + 1 < argc)
            rows = QByteArray(argv[++i]).toInt();
        else if (argument.startsWith("--rows="))
            rows = argument.mid(7).toInt();
        else if (!argument.startsWith('-'))
            rows = argument.toInt();
    }
    return std::max(100, rows);
}

Timing timed(const std::function<void()>& work)
{
    timespec cpuStart {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &cpuStart);
    QElapsedTimer timer;
    timer.start();
    work();
    const double wall = double(timer.nsecsElapsed()) / 1e6;
    timespec cpuEnd {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &cpuEnd);
    const double cpu = double(cpuEnd.tv_sec - cpuStart.tv_sec) * 1e3 + double(cpuEnd.tv_nsec - cpuStart.tv_nsec) / 1e6;
    return {wall, cpu};
}

Timing fastestOf(int runs, const std::function<void()>& work)
{
    Timing best = NoRunYet;
    for (int i = 0; i < runs; ++i)
        keepFaster(best, timed(work));
    return best;
}

double peakMegabytes()
{
    // "VmHWM:   123456 kB"
    return procField(QStringLiteral("/proc/self/status"), QStringLiteral("VmHWM")).section(u' ', 0, 0).toDouble()
        / 1024.0;
}

void resetPeak()
{
    earlierPeak = runPeakMegabytes();
    // Writing 5 to clear_refs resets the high-water mark to the present resident size (Linux 4.0 on).
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
}

void printHeader(const char* title, int rows)
{
    std::printf("%s, %d tickets\n", title, rows);
    std::printf("  machine: %s, %d cores, load average %s\n",
        qPrintable(procField(QStringLiteral("/proc/cpuinfo"), QStringLiteral("model name"))),
        QThread::idealThreadCount(),
        qPrintable(loadAverage()));
    std::printf("  build: %s, Qt %s, SQLite %s\n", MARLET_BUILD_TYPE, qVersion(), sqlite3_libversion());
    std::printf("  Marlet and plain are wall milliseconds of real work, CPU is Marlet's processor time; the\n"
                "  pauses that the screens prescribe run on a virtual clock and are shown apart. Peak is the\n"
                "  resident high-water mark in MB while Marlet worked.\n\n");
    std::fflush(stdout);
}

void Figure::timeMarlet(const std::function<void()>& work, int runs, int per)
{
    resetPeak();
    const Timing timing = fastestOf(runs, work);
    peak = peakMegabytes();
    marlet = timing.wall / per;
    marletCpu = timing.cpu / per;
}

void Figure::timePlain(const std::function<void()>& work, int runs, int per)
{
    const Timing timing = fastestOf(runs, work);
    plain = timing.wall / per;
    plainCpu = timing.cpu / per;
}

void Figure::timeInTurns(const std::function<void()>& marletWork,
    const std::function<void()>& plainWork,
    int runs,
    int per,
    const std::function<void()>& prepareMarlet,
    const std::function<void()>& preparePlain)
{
    Timing bestMarlet = NoRunYet;
    Timing bestPlain = NoRunYet;
    double marletPeak = 0;
    for (int i = 0; i < runs; ++i) {
        if (prepareMarlet)
            prepareMarlet();
        resetPeak();
        keepFaster(bestMarlet, timed(marletWork));
        marletPeak = std::max(marletPeak, peakMegabytes());
        if (preparePlain)
            preparePlain();
        keepFaster(bestPlain, timed(plainWork));
    }
    peak = marletPeak;
    marlet = bestMarlet.wall / per;
    marletCpu = bestMarlet.cpu / per;
    plain = bestPlain.wall / per;
    plainCpu = bestPlain.cpu / per;
}

std::optional<double> Figure::cpuRatio() const
{
    if (!marletCpu || !plainCpu || *plainCpu <= 0)
        return std::nullopt;
    return *marletCpu / *plainCpu;
}

std::optional<double> Figure::ratio() const
{
    if (!plain || *plain <= 0)
        return std::nullopt;
    return marlet / *plain;
}

std::optional<bool> Figure::met() const
{
    const bool withinPeak = !peakLimit || (peak && *peak <= *peakLimit);
    switch (target.kind) {
    case Target::Kind::BelowMilliseconds:
        return marlet < target.value && withinPeak;
    case Target::Kind::RatioAtMost:
        return ratio() ? std::optional<bool>(*ratio() <= target.value && withinPeak) : std::nullopt;
    case Target::Kind::None:
        break;
    }
    return peakLimit ? std::optional<bool>(withinPeak) : std::nullopt;
}

void printFigures(const std::vector<Figure>& figures)
{
    std::printf("  %-46s %10s %10s %10s %7s %10s %9s %10s %8s  %s\n",
        "operation",
        "Marlet ms",
        "CPU ms",
        "plain ms",
        "ratio",
        "plain CPU",
        "CPU ratio",
        "pauses ms",
        "peak MB",
        "target");
    for (const Figure& figure : figures) {
        const std::optional<double> ratio = figure.ratio();
        const std::optional<bool> met = figure.met();
        QString target = targetText(figure);
        if (met)
            target += *met ? QStringLiteral(": met") : QStringLiteral(": MISSED");
        if (!figure.note.isEmpty())
            target += (target.isEmpty() ? QString() : QStringLiteral("; ")) + figure.note;
        const std::optional<double> cpuRatio = figure.cpuRatio();
        std::printf("  %-46s %10s %10s %10s %7s %10s %9s %10s %8s  %s\n",
            qPrintable(figure.operation),
            qPrintable(milliseconds(figure.marlet)),
            figure.marletCpu ? qPrintable(milliseconds(*figure.marletCpu)) : "-",
            figure.plain ? qPrintable(milliseconds(*figure.plain)) : "-",
            ratio ? qPrintable(formatted(*ratio, 2)) : "-",
            figure.plainCpu ? qPrintable(milliseconds(*figure.plainCpu)) : "-",
            cpuRatio ? qPrintable(formatted(*cpuRatio, 2)) : "-",
            figure.pausedMilliseconds > 0 ? qPrintable(formatted(figure.pausedMilliseconds, 0)) : "-",
            figure.peak ? qPrintable(formatted(*figure.peak, 1)) : "-",
            qPrintable(target));
    }
    std::printf("\n  peak resident memory of the whole run: %.1f MB\n", runPeakMegabytes());
    std::fflush(stdout);
}

void fail(const QString& why)
{
    std::fflush(stdout);
    std::fprintf(stderr, "benchmark failed: %s\n", qPrintable(why));
    std::exit(1);
}

QString ticketName(int index)
{
    return QStringLiteral("NVT") + QString::number(index).rightJustified(7, u'0');
}

QString ticketPassword(int index)
{
    return QString::number(10000 + (qint64(index) * 7919) % 90000);
}

Database::Database()
    : m_path(m_dir.filePath(QStringLiteral("bench.db")))
{
    const InitResult created = DatabaseInit {m_path, QStringLiteral("ADMIN"), false}.run();
    if (!m_dir.isValid() || !created.ok())
        fail(QStringLiteral("could not create the database: ") + created.error);
}

void fillTickets(const QString& path, int rows)
{
    PlainDatabase db(path);
    db.exec("BEGIN");
    PlainStatement insert(db,
        "INSERT INTO \"Account\" (\"TicketGrp\",\"TicketNo\",\"Username\",\"Password\",\"Time\",\"BackTime\","
        "\"ByWhom\",\"Expire\",\"Days\",\"DateCreated\",\"Amount\",\"OrgTime\",\"LastUsed\",\"NEW\",\"StartTime\","
        "\"EndTime\",\"ComputerUsed\",\"AccountAdded\",\"NoAdded\",\"POS\",\"Member\",\"Quota\",\"Night\",\"Once\") "
        "VALUES (?1,?2,?3,?4,?5,?5,'ADMINISTRATOR',?6,?7,'2024-03-15 00:00:00','N50',?5,'2024-03-15 00:00:00',?8,"
        "'2024-03-15 22:00:00','2024-03-16 06:00:00','NONE','NONE',0,0,?9,0,0,0)");
    for (int i = 0; i < rows; ++i) {
        const QByteArray group = QByteArray::number(240315000000LL + i / 1000);
        const QByteArray number = QByteArray::number(i % 1000 + 1).rightJustified(3, '0');
        const QByteArray name = ticketName(i).toLatin1();
        const QByteArray password = ticketPassword(i).toLatin1();
        const bool fixedExpiry = i % 3 == 0;
        insert.bindText(1, group);
        insert.bindText(2, number);
        insert.bindText(3, name);
        insert.bindText(4, password);
        insert.bindInt(5, 60 * (30 + 30 * (i % 4)));
        if (fixedExpiry)
            insert.bindText(6, "2024-04-04 00:00:00");
        else
            insert.bindNull(6);
        insert.bindInt(7, fixedExpiry ? 0 : 5);
        insert.bindInt(8, i % 4 == 0 ? 0 : -1);
        insert.bindInt(9, i % 50 == 0 ? -1 : 0);
        if (!insert.run())
            fail(QStringLiteral("could not fill the ticket table: ") + QString::fromUtf8(sqlite3_errmsg(db.handle())));
    }
    db.exec("COMMIT");
}

void makeDataSet(const Database& database, int rows)
{
    const double filled = timed([&] { fillTickets(database.path(), rows); }).wall;
    std::printf("  data set: %d tickets filled in %.0f ms (plain SQLite, one transaction)\n\n", rows, filled);
    std::fflush(stdout);
}

void onScreen(const Database& database,
    ScriptedPlatform& platform,
    const std::function<void(TimerDll&)>& open,
    const std::function<void(Form&)>& work)
{
    Component component(
        platform, database.folder() + QStringLiteral("/prefs"), database.folder() + QStringLiteral("/app"));
    bool shown = false;
    platform.queueAction([&](Form& top) {
        shown = true;
        work(top);
        if (!Operator::closeWindow(top))
            fail(top.name() + QStringLiteral(" refused to close"));
    });
    open(component.timerDll());
    platform.finish();
    if (!shown || !platform.failures().isEmpty())
        fail(QStringLiteral("the screen did not go as expected:\n") + platform.failures().join(u'\n'));
}

void onGenerateScreen(const Database& database, ScriptedPlatform& platform, const std::function<void(GenAcc&)>& work)
{
    const auto open = [&](TimerDll& host) {
        host.LoadGenAc(database.connectionString(),
            QStringLiteral("Norvantis"),
            QStringLiteral("ADMINISTRATOR"),
            0,
            QStringLiteral("C:\\Norvantis\\Server.exe"));
    };
    onScreen(database, platform, open, [&](Form& top) {
        auto* screen = dynamic_cast<GenAcc*>(&top);
        if (!screen)
            fail(QStringLiteral("the generate screen did not open, ") + top.name() + QStringLiteral(" did"));
        work(*screen);
    });
}

PlainDatabase::PlainDatabase(const QString& path)
{
    if (sqlite3_open_v2(path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr)
        != SQLITE_OK)
        fail(QStringLiteral("the plain program cannot open ") + path);
    sqlite3_busy_timeout(m_db, 5000);
    exec("PRAGMA synchronous = NORMAL");
}

PlainDatabase::~PlainDatabase()
{
    sqlite3_close(m_db);
}

void PlainDatabase::exec(const char* sql)
{
    if (sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(QStringLiteral("the plain program failed on ") + QLatin1String(sql) + QStringLiteral(": ")
            + QString::fromUtf8(sqlite3_errmsg(m_db)));
}

PlainStatement::PlainStatement(const PlainDatabase& db, const QByteArray& sql)
{
    if (sqlite3_prepare_v2(db.handle(), sql.constData(), int(sql.size()), &m_statement, nullptr) != SQLITE_OK)
        fail(QStringLiteral("the plain program cannot prepare ") + QString::fromUtf8(sql) + QStringLiteral(": ")
            + QString::fromUtf8(sqlite3_errmsg(db.handle())));
}

PlainStatement::~PlainStatement()
{
    sqlite3_finalize(m_statement);
}

void PlainStatement::bindText(int index, const QByteArray& text)
{
    sqlite3_bind_text(m_statement, index, text.constData(), int(text.size()), copyOnBind);
}

void PlainStatement::bindInt(int index, qint64 value)
{
    sqlite3_bind_int64(m_statement, index, value);
}

void PlainStatement::bindDouble(int index, double value)
{
    sqlite3_bind_double(m_statement, index, value);
}

void PlainStatement::bindNull(int index)
{
    sqlite3_bind_null(m_statement, index);
}

bool PlainStatement::run()
{
    int rc = SQLITE_ROW;
    while (rc == SQLITE_ROW)
        rc = sqlite3_step(m_statement);
    sqlite3_reset(m_statement);
    return rc == SQLITE_DONE;
}

qint64 PlainStatement::readAll()
{
    qint64 checksum = 0;
    while (sqlite3_step(m_statement) == SQLITE_ROW)
        checksum += readRow(m_statement);
    sqlite3_reset(m_statement);
    return checksum;
}

qint64 readRow(sqlite3_stmt* statement)
{
    qint64 checksum = 0;
    const int columns = sqlite3_column_count(statement);
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
    return checksum;
}

PlainTicketInsert::PlainTicketInsert(const PlainDatabase& db)
    : m_insert(db,
        "INSERT INTO \"Account\" (\"TicketGrp\",\"TicketNo\",\"Username\",\"Password\",\"Time\",\"BackTime\","
        "\"ByWhom\",\"Days\",\"DateCreated\",\"Amount\",\"OrgTime\",\"LastUsed\",\"NEW\",\"StartTime\","
        "\"EndTime\",\"ComputerUsed\",\"AccountAdded\",\"NoAdded\",\"POS\",\"Member\",\"Quota\",\"Night\","
        "\"Once\") VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)")
{
}

bool PlainTicketInsert::add(const TicketValues& ticket)
{
    const QByteArray created = ticket.created.toString(Qt::ISODate).toLatin1() + " 00:00:00";
    const QString stamp = QStringLiteral("yyyy-MM-dd HH:mm:ss");
    int i = 0;
    m_insert.bindText(++i, ticket.TicketGrp.toUtf8());
    m_insert.bindText(++i, ticket.TicketNo.toUtf8());
    m_insert.bindText(++i, ticket.Username.toUtf8());
    m_insert.bindText(++i, ticket.Password.toUtf8());
    m_insert.bindDouble(++i, ticket.seconds);
    m_insert.bindDouble(++i, ticket.seconds);
    m_insert.bindText(++i, ticket.ByWhom.toUtf8());
    m_insert.bindDouble(++i, ticket.expiry.Days);
    m_insert.bindText(++i, created);
    m_insert.bindText(++i, ticket.Amount.toUtf8());
    m_insert.bindDouble(++i, ticket.seconds);
    m_insert.bindText(++i, created);
    m_insert.bindInt(++i, -1);
    m_insert.bindText(++i, ticket.StartTime.toString(stamp).toLatin1());
    m_insert.bindText(++i, ticket.EndTime.toString(stamp).toLatin1());
    m_insert.bindText(++i, "NONE");
    m_insert.bindText(++i, "NONE");
    m_insert.bindInt(++i, 0);
    m_insert.bindInt(++i, 0);
    m_insert.bindInt(++i, 0);
    m_insert.bindDouble(++i, ticket.Quota);
    m_insert.bindInt(++i, ticket.Night ? -1 : 0);
    m_insert.bindInt(++i, ticket.Once ? -1 : 0);
    return m_insert.run();
}

} // namespace marlet::bench
