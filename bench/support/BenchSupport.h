#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace marlet {
class Form;
class GenAcc;
class TimerDll;
class ScriptedPlatform;
struct TicketValues;
} // namespace marlet

namespace marlet::bench {

// ---- command line, clock and memory ------------------------------------------------------------

// "--rows N" or a bare N; `fallback` when neither is given. Never fewer than 100.
int rowsArgument(int argc, char** argv, int fallback = 100000);

// Wall and processor milliseconds of one call; of the fastest of several calls (a busy neighbour
// on the machine counts less). The processor time tells how much of a wall time that a loaded
// machine stretched was the program's own work.
struct Timing
{
    double wall = 0;
    double cpu = 0;
};
Timing timed(const std::function<void()>& work);
Timing fastestOf(int runs, const std::function<void()>& work);

// Peak resident memory (VmHWM) in MB. resetPeak() starts a new high-water mark at the present size,
// so that the peak read afterwards belongs to the work in between.
double peakMegabytes();
void resetPeak();

// The benchmark's title, the machine, its load and the versions, so that figures can be compared.
void printHeader(const char* title, int rows);

// ---- figures -------------------------------------------------------------------------------------

// What a figure is held to: Marlet's milliseconds below a bound, or its ratio to the plain program
// at most a bound.
struct Target
{
    enum class Kind { None, BelowMilliseconds, RatioAtMost };
    Kind kind = Kind::None;
    double value = 0;

    static Target below(double milliseconds) { return {Kind::BelowMilliseconds, milliseconds}; }
    static Target ratioAtMost(double ratio) { return {Kind::RatioAtMost, ratio}; }
};

// One operation: Marlet's wall time for the real work, the plain SQLite program's time for the same
// work in the same run, the prescribed pauses that Marlet's virtual clock skipped, and the peak
// resident memory while Marlet worked.
struct Figure
{
    explicit Figure(QString name)
        : operation(std::move(name))
    {
    }

    QString operation;
    double marlet = 0;
    std::optional<double> marletCpu;
    std::optional<double> plain;
    std::optional<double> plainCpu;
    double pausedMilliseconds = 0;
    std::optional<double> peak;
    Target target;
    std::optional<double> peakLimit; // MB
    QString note;

    // Times the work: the fastest of `runs`, divided by `per` when it repeats one operation `per`
    // times. Marlet's peak memory is taken over all of its runs.
    void timeMarlet(const std::function<void()>& work, int runs = 1, int per = 1);
    void timePlain(const std::function<void()>& work, int runs = 1, int per = 1);
    // Times Marlet's work and the plain program's in turns, the fastest of `runs` of each, each
    // run after its own preparation: a neighbour on the machine that comes and goes weighs on both
    // alike. For work of a few milliseconds, whose single runs swing with the machine.
    void timeInTurns(const std::function<void()>& marletWork,
        const std::function<void()>& plainWork,
        int runs,
        int per,
        const std::function<void()>& prepareMarlet = {},
        const std::function<void()>& preparePlain = {});

    std::optional<double> ratio() const;
    // Marlet's processor time to the plain program's: what a busy neighbour on the machine changes
    // least.
    std::optional<double> cpuRatio() const;
    // Nullopt when the figure has no target.
    std::optional<bool> met() const;
};

// Prints the figures as a table, each with whether it met its target, and the whole run's peak.
void printFigures(const std::vector<Figure>& figures);

// A benchmark that found Marlet doing the wrong work stops with this message and exit code 1.
[[noreturn]] void fail(const QString& why);

// ---- data sets -----------------------------------------------------------------------------------

// The data sets' ticket names and passwords: "NVT" and seven digits, five digits.
QString ticketName(int index);
QString ticketPassword(int index);

// A new database in a temporary folder with every table and the rows that must exist.
class Database
{
public:
    Database();
    const QString& path() const { return m_path; }
    QString connectionString() const { return QStringLiteral("sqlite:") + m_path; }
    QString folder() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
    QString m_path;
};

// Adds `rows` tickets named ticketName(0) onwards, by plain SQLite inserts in one transaction. Groups of 1000; one
// ticket in fifty is a member ticket, one in four is used, one in three has a fixed expiry date, the others expire five
// days after first use.
void fillTickets(const QString& path, int rows);
// The same, with a line saying how long it took.
void makeDataSet(const Database& database, int rows);

// Runs `open`, an entry operation of the host, on the scripted platform over the database, with a
// preference store of the database's folder; runs `work` on the screen it shows and closes it.
// Whatever the platform found unexpected fails the benchmark.
void onScreen(const Database& database,
    ScriptedPlatform& platform,
    const std::function<void(TimerDll&)>& open,
    const std::function<void(Form&)>& work);

// Opens the generate screen as the host does (LoadGenAc) on the scripted platform, over the
// database, with a preference store of the database's folder; runs `work` on the open screen and
// closes it. Whatever the platform found unexpected fails the benchmark.
void onGenerateScreen(const Database& database, ScriptedPlatform& platform, const std::function<void(GenAcc&)>& work);

// ---- the plain SQLite program --------------------------------------------------------------------

// A connection of the plain program, set up as Marlet's own: the same journal and sync level, and
// no mutex of SQLite's own, as Qt's driver opens its connections.
class PlainDatabase
{
public:
    explicit PlainDatabase(const QString& path);
    ~PlainDatabase();
    PlainDatabase(const PlainDatabase&) = delete;
    PlainDatabase& operator=(const PlainDatabase&) = delete;

    sqlite3* handle() const { return m_db; }
    void exec(const char* sql);

private:
    sqlite3* m_db = nullptr;
};

// A prepared statement of the plain program, kept for reuse as a C program would keep it.
class PlainStatement
{
public:
    PlainStatement(const PlainDatabase& db, const QByteArray& sql);
    ~PlainStatement();
    PlainStatement(const PlainStatement&) = delete;
    PlainStatement& operator=(const PlainStatement&) = delete;

    sqlite3_stmt* get() const { return m_statement; }
    // Binding copies the value, as Marlet's engine does.
    void bindText(int index, const QByteArray& text);
    void bindInt(int index, qint64 value);
    void bindDouble(int index, double value);
    void bindNull(int index);
    // Steps to the end, then resets; false when a step failed.
    bool run();
    // Steps through every row reading every column; returns a checksum of what it read.
    qint64 readAll();

private:
    sqlite3_stmt* m_statement = nullptr;
};

// Reads every column of the statement's current row into a checksum, as a program that uses the
// values would.
qint64 readRow(sqlite3_stmt* statement);

// A new batch ticket's row, written with one prepared insert of the columns that the generate screen
// fills.
class PlainTicketInsert
{
public:
    explicit PlainTicketInsert(const PlainDatabase& db);
    bool add(const TicketValues& ticket);

private:
    PlainStatement m_insert;
};

} // namespace marlet::bench
