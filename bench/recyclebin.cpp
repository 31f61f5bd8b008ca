// The recycle bin screen with 10,000 deleted tickets in the bin, against a plain SQLite program
// doing the same statements: loading the list, a click on an entry and a search (each showing one
// bin row; the fastest of five runs of 1,000), restoring and destroying 1,000 selected entries and
// emptying the bin (the fastest of five runs, each on the whole bin), and "Restore All". The reports
// and the changes run the screen's and the plain program's work in turns. The bin's tickets are
// taken out of a ticket table of N rows, as deleting them would.
//
//   bench_recyclebin [--rows N]   N tickets stored, 100,000 unless given; the bin holds 10,000 of
//                                 them, or half of N when N is smaller

#include "support/BenchSupport.h"

#include "component/TimerDll.h"
#include "platform/Control.h"
#include "platform/Form.h"
#include "platform/Operator.h"
#include "script/ScriptedPlatform.h"
#include "store/Connection.h"

#include <QCoreApplication>

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

using namespace marlet;
using namespace marlet::bench;

namespace {

constexpr int MostSelected = 1000;
constexpr int Lookups = 1000;
// Runs of the 1,000 reports and of each change to many entries; the fastest counts.
constexpr int LookupRuns = 5;
constexpr int BinRuns = 5;
// Bulk work may take at most three times the plain program's time; showing one bin row, a lookup
// by user name, stays under the lookup bound of the ticket store.
constexpr double MostRatio = 3.0;
constexpr double LookupMilliseconds = 0.2;
const QDateTime Now(QDate(2024, 3, 20), QTime(10, 0));

QString name(const char* text)
{
    return QLatin1String(text);
}

// ---- the data ------------------------------------------------------------------------------------

// Moves the first `size` tickets into the bin once, and keeps a copy of the bin in a table of the
// benchmark's own, so that every run can start from the same bin and ticket table.
void takeIntoBin(const QString& path, int size)
{
    PlainDatabase db(path);
    db.exec("BEGIN");
    const QByteArray copy = "CREATE TABLE \"BenchBin\" AS SELECT *, '15/03/24/09:00' AS \"DateTimeDeleted\", "
                            "'Deleted by User.' AS \"Reason\" FROM \"Account\" WHERE \"Username\" < '"
        + ticketName(size).toLatin1() + "'";
    db.exec(copy.constData());
    db.exec("COMMIT");
}

void resetBin(const QString& path)
{
    PlainDatabase db(path);
    db.exec("BEGIN");
    db.exec("DELETE FROM \"Account\" WHERE \"Username\" IN (SELECT \"Username\" FROM \"BenchBin\")");
    db.exec("DELETE FROM \"RecycleBin\"");
    db.exec("INSERT INTO \"RecycleBin\" SELECT * FROM \"BenchBin\"");
    db.exec("COMMIT");
}

qint64 count(const QString& path, const QByteArray& sql)
{
    PlainDatabase db(path);
    PlainStatement statement(db, sql);
    return sqlite3_step(statement.get()) == SQLITE_ROW ? sqlite3_column_int64(statement.get(), 0) : -1;
}

void expectCount(const QString& path, const QByteArray& sql, qint64 expected, const QString& what)
{
    const qint64 found = count(path, sql);
    if (found != expected)
        fail(QStringLiteral("%1: %2 rows, %3 expected").arg(what).arg(found).arg(expected));
}

void expectBin(const QString& path, qint64 expected, const QString& what)
{
    expectCount(path, "SELECT count(*) FROM \"RecycleBin\"", expected, what);
}

// ---- Marlet --------------------------------------------------------------------------------------

void openBin(const Database& data, ScriptedPlatform& platform, const std::function<void(Form&)>& work)
{
    const auto open = [&](TimerDll& host) { host.LoadRecycleBin(data.connectionString(), QStringLiteral("Norvantis")); };
    onScreen(data, platform, open, [&](Form& screen) {
        if (screen.name() != QLatin1String("RecycleBin"))
            fail(QStringLiteral("the recycle bin did not open, ") + screen.name() + QStringLiteral(" did"));
        work(screen);
    });
}

void expectAnswered(const ScriptedPlatform& platform, const QString& what)
{
    if (platform.pendingMessages() != 0 || platform.pendingInputs() != 0)
        fail(what + QStringLiteral(" did not ask and answer as expected:\n") + platform.failures().join(u'\n'));
}

// Reloads the list as "Re&fresh" does, after the bin was set up again behind the screen's back.
void reload(Form& screen, ScriptedPlatform& platform)
{
    platform.expectMessage(QStringLiteral("Refresh ReCycle Bin List?"), MsgStyle::YesNoQuestion, MsgResult::Yes);
    Operator::click(screen[name("Command7")]);
}

Figure refresh(Form& screen, ScriptedPlatform& platform, int size)
{
    Figure figure {QStringLiteral("load the list (Re&fresh)")};
    figure.target = Target::ratioAtMost(MostRatio);
    figure.timeMarlet([&] { reload(screen, platform); });
    expectAnswered(platform, figure.operation);
    if (screen[name("List1")].listCount() != size
        || screen[name("Label3")].caption() != QStringLiteral("Total: %1").arg(size))
        fail(QStringLiteral("the list holds %1 entries").arg(screen[name("List1")].listCount()));
    figure.note = QStringLiteral("%1 entries").arg(size);
    return figure;
}

// How many entries are restored and then destroyed: a tenth of the bin, 1,000 at most.
int selectedOf(int size)
{
    return std::min(MostSelected, size / 10);
}

// The positions of `count` entries spread evenly over a list, from its end.
std::vector<int> spread(int entries, int count)
{
    const int step = std::max(1, entries / count);
    std::vector<int> positions;
    for (int i = entries - 1; i >= 0 && int(positions.size()) < count; i -= step)
        positions.push_back(i);
    return positions;
}

void selectSome(Control& list, int size)
{
    for (int i = 0; i < list.listCount(); ++i)
        list.setSelected(i, false);
    for (int position : spread(list.listCount(), selectedOf(size)))
        list.setSelected(position, true);
}

Figure restoreAll(Form& screen, ScriptedPlatform& platform)
{
    platform.expectMessage(QStringLiteral("Restore ALL? "), MsgStyle::YesNoQuestion, MsgResult::Yes);
    platform.expectMessage(QStringLiteral("Include Zero Tickets also? "), MsgStyle::YesNoQuestion, MsgResult::Yes);
    platform.expectMessage(QStringLiteral("Ticket(s) Restored Successfully!"), MsgStyle::Info);
    Figure figure {QStringLiteral("Restore All")};
    figure.target = Target::ratioAtMost(MostRatio);
    figure.note = QStringLiteral("%1 entries").arg(screen[name("List1")].listCount());
    figure.timeMarlet([&] { Operator::click(screen[name("Command6")]); });
    expectAnswered(platform, figure.operation);
    return figure;
}

// ---- the plain program ---------------------------------------------------------------------------

// The same statements as the screen, prepared once. Where the screen reads a row, every column of it
// is read.
class PlainBin
{
public:
    PlainBin(const QString& path, Connection& connection, int accountColumns)
        : m_db(path)
        , m_accountColumns(accountColumns)
        , m_all(m_db, sql(connection, QStringLiteral("select * from RecycleBin")))
        , m_one(m_db, sql(connection, QStringLiteral("select * from RecycleBin where Username = '{}'"), {QString()}))
        , m_ticket(m_db, sql(connection, QStringLiteral("Select * from Account where username = '{}'"), {QString()}))
        , m_insert(m_db, "INSERT INTO \"Account\" VALUES (" + placeholders(accountColumns) + ")")
        , m_remove(m_db, sql(connection, QStringLiteral("Delete * from RecycleBin where Username = '{}'"), {QString()}))
        , m_empty(m_db, sql(connection, QStringLiteral("Delete * from RecycleBin")))
    {
    }

    std::vector<QByteArray> load()
    {
        std::vector<QByteArray> names;
        while (sqlite3_step(m_all.get()) == SQLITE_ROW) {
            m_checksum += readRow(m_all.get());
            names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(m_all.get(), 2)));
        }
        sqlite3_reset(m_all.get());
        return names;
    }

    // The report the screen shows for a bin row, made from the row's columns as a plain program
    // would make it: a click's report starts with the deletion, a search's with group and number.
    std::string show(const QByteArray& entry, bool clicked)
    {
        m_one.bindText(1, entry);
        std::string report;
        if (sqlite3_step(m_one.get()) == SQLITE_ROW)
            report = reportOf(m_one.get(), clicked);
        sqlite3_reset(m_one.get());
        return report;
    }

    void restore(const QByteArray& entry)
    {
        m_one.bindText(1, entry);
        if (sqlite3_step(m_one.get()) == SQLITE_ROW) {
            m_ticket.bindText(1, entry);
            m_checksum += m_ticket.readAll();
            for (int c = 0; c < m_accountColumns; ++c)
                sqlite3_bind_value(m_insert.get(), c + 1, sqlite3_column_value(m_one.get(), c));
            if (!m_insert.run())
                fail(QStringLiteral("the plain program could not restore ") + QString::fromLatin1(entry));
        }
        sqlite3_reset(m_one.get());
        destroy(entry);
    }

    void destroy(const QByteArray& entry)
    {
        m_remove.bindText(1, entry);
        m_remove.run();
    }

    void empty() { m_empty.run(); }

private:
    // The bin's columns by name, found once.
    int column(const char* wanted) const
    {
        for (int c = 0; c < sqlite3_column_count(m_one.get()); ++c) {
            if (sqlite3_stricmp(sqlite3_column_name(m_one.get(), c), wanted) == 0)
                return c;
        }
        fail(QStringLiteral("the bin has no column ") + QLatin1String(wanted));
        return -1;
    }

    static std::string text(sqlite3_stmt* row, int c)
    {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(row, c));
        return bytes ? std::string(bytes, std::size_t(sqlite3_column_bytes(row, c))) : std::string();
    }

    static std::string number(sqlite3_stmt* row, int c)
    {
        return sqlite3_column_type(row, c) == SQLITE_NULL ? std::string()
                                                          : std::to_string(sqlite3_column_int64(row, c));
    }

    static std::string truth(sqlite3_stmt* row, int c) { return sqlite3_column_int64(row, c) != 0 ? "True" : "False"; }

    // "yyyy-mm-dd hh:mm:ss" as "dd/mm/yyyy".
    static std::string date(sqlite3_stmt* row, int c)
    {
        const std::string stored = text(row, c);
        if (stored.size() < 10)
            return {};
        return stored.substr(8, 2) + '/' + stored.substr(5, 2) + '/' + stored.substr(0, 4);
    }

    static std::string minutes(sqlite3_stmt* row, int c)
    {
        return std::to_string(qint64(std::floor(sqlite3_column_double(row, c) / 60))) + "min(s)";
    }

    std::string reportOf(sqlite3_stmt* row, bool clicked) const
    {
        const Columns& c = m_columns;
        std::string r;
        r.reserve(512);
        const auto line = [&r](const char* caption, const std::string& value) {
            if (!r.empty())
                r += "\r\n";
            r += caption;
            r += value;
        };
        if (clicked) {
            line("Date/Time Deleted: \t", text(row, c.deleted));
            line("Reason Deleted: \t", text(row, c.reason));
            line("TicketGrp&No: \t", text(row, c.group));
        } else {
            line("TicketGrp&No: \t", text(row, c.group) + " - " + text(row, c.number));
        }
        const bool unused = sqlite3_column_int64(row, c.isNew) != 0;
        line("Username: \t\t", text(row, c.username));
        line("Time Left: \t\t", minutes(row, c.time));
        line("Time Used: \t", number(row, c.used) + "min(s)");
        line("Original Time: \t", minutes(row, c.original));
        line("Amount: \t\t", text(row, c.amount));
        line("Last Time Used: \t",
            sqlite3_column_type(row, c.lastTime) == SQLITE_NULL || unused ? std::string("NEW") : text(row, c.lastTime));
        line("Last Date Used: \t", unused ? std::string("NEW") : date(row, c.lastDate));
        line("Date Created: \t", date(row, c.created));
        line("Expire Date: \t",
            sqlite3_column_int64(row, c.days) > 0 ? number(row, c.days) + " days after Login" : date(row, c.expire));
        line("Computer Used: \t", text(row, c.computer));
        line("Ticket Added: \t", text(row, c.added));
        line("# of Acct(s) Added: \t", number(row, c.addedCount));
        line("Time Ticket: \t", truth(row, c.night));
        if (sqlite3_column_int64(row, c.night) != 0)
            fail(QStringLiteral("the plain report has no time frame for a time ticket"));
        line("Used Once: \t", truth(row, c.once));
        line("Created By: \t", text(row, c.byWhom));
        return r;
    }

    struct Columns
    {
        int deleted, reason, group, number, username, time, used, original, amount, lastTime, lastDate, created, days,
            expire, computer, added, addedCount, night, once, byWhom, isNew;
    };

    Columns columns() const
    {
        return {column("DateTimeDeleted"),
            column("Reason"),
            column("TicketGrp"),
            column("TicketNo"),
            column("Username"),
            column("Time"),
            column("TotalTimeUsed"),
            column("OrgTime"),
            column("Amount"),
            column("TimeLastUsed"),
            column("LastUsed"),
            column("DateCreated"),
            column("Days"),
            column("Expire"),
            column("ComputerUsed"),
            column("AccountAdded"),
            column("NoAdded"),
            column("Night"),
            column("Once"),
            column("ByWhom"),
            column("NEW")};
    }

    static QByteArray sql(Connection& connection, const QString& pattern, const QVariantList& values = {})
    {
        return connection.translate(Statement(pattern, values)).sql.toUtf8();
    }

    static QByteArray placeholders(int count)
    {
        QByteArray list = "?";
        for (int i = 1; i < count; ++i)
            list += ",?";
        return list;
    }

    PlainDatabase m_db;
    int m_accountColumns;
    PlainStatement m_all;
    PlainStatement m_one;
    PlainStatement m_ticket;
    PlainStatement m_insert;
    PlainStatement m_remove;
    PlainStatement m_empty;
    Columns m_columns = columns();
    qint64 m_checksum = 0;
};

// Each of the plain program's reports must read as the screen's did.
void expectReports(const std::vector<QString>& marlet, const std::vector<std::string>& plain, const QString& what)
{
    if (marlet.size() != plain.size())
        fail(QStringLiteral("%1: %2 reports against the plain program's %3")
                 .arg(what)
                 .arg(marlet.size())
                 .arg(plain.size()));
    for (std::size_t i = 0; i < marlet.size(); ++i) {
        if (marlet[i] != QString::fromStdString(plain[i]))
            fail(QStringLiteral("%1: the screen's report\n%2\nand the plain program's\n%3")
                     .arg(what, marlet[i], QString::fromStdString(plain[i])));
    }
}

std::vector<QByteArray> chosenOf(const std::vector<QByteArray>& names, int size)
{
    std::vector<QByteArray> chosen;
    for (int position : spread(int(names.size()), selectedOf(size)))
        chosen.push_back(names[std::size_t(position)]);
    return chosen;
}

// ---- Marlet and the plain program in turns --------------------------------------------------

// A thousand reports of bin rows, the screen's and the plain program's, timed in turns; each of the
// plain program's reports must read as the screen's did.
Figure reportsInTurns(const QString& operation,
    const std::function<QString(int)>& marletReport,
    const std::function<std::string(int)>& plainReport,
    const std::function<void()>& prepareMarlet)
{
    std::vector<QString> marlet;
    std::vector<std::string> plain;
    marlet.reserve(Lookups);
    plain.reserve(Lookups);
    Figure figure {operation};
    figure.target = Target::below(LookupMilliseconds);
    figure.timeInTurns(
        [&] {
            for (int i = 0; i < Lookups; ++i)
                marlet.push_back(marletReport(i));
        },
        [&] {
            for (int i = 0; i < Lookups; ++i)
                plain.push_back(plainReport(i));
        },
        LookupRuns,
        Lookups,
        [&] {
            marlet.clear();
            if (prepareMarlet)
                prepareMarlet();
        },
        [&] { plain.clear(); });
    expectReports(marlet, plain, operation);
    figure.note = QStringLiteral("average of %1").arg(Lookups);
    return figure;
}

Figure clickEntries(Form& screen, PlainBin& bin, const std::vector<QByteArray>& names)
{
    Control& list = screen[name("List1")];
    const Control& report = screen[name("Text1")];
    const int size = int(names.size());
    Figure figure = reportsInTurns(
        QStringLiteral("click on an entry, its report"),
        [&](int i) {
            Operator::pick(list, (i * 7) % list.listCount());
            return report.text();
        },
        [&](int i) { return bin.show(names[std::size_t((i * 7) % size)], true); },
        {});
    if (!report.text().startsWith(QStringLiteral("Date/Time Deleted: \t15/03/24/09:00")))
        fail(QStringLiteral("the report reads \"%1\"").arg(report.text()));
    return figure;
}

Figure search(Form& screen, ScriptedPlatform& platform, PlainBin& bin, const std::vector<QByteArray>& names)
{
    Control& button = screen[name("Command4")];
    const Control& report = screen[name("Text1")];
    const int size = int(names.size());
    Figure figure = reportsInTurns(
        QStringLiteral("&Search, its report"),
        [&](int) {
            Operator::click(button);
            return report.text();
        },
        [&](int i) { return bin.show(names[std::size_t((i * 13) % size)], false); },
        [&] {
            for (int i = 0; i < Lookups; ++i)
                platform.expectInput(ticketName((i * 13) % size));
        });
    expectAnswered(platform, figure.operation);
    if (!report.text().startsWith(QStringLiteral("TicketGrp&No: \t")))
        fail(QStringLiteral("the search report reads \"%1\"").arg(report.text()));
    return figure;
}

// A change to many entries, the screen's and the plain program's in turns, the fastest of several
// runs of each, each on the whole bin set up anew (and listed again on the screen): a single run of
// a few milliseconds swings too much with the machine.
Figure changeBin(Form& screen,
    ScriptedPlatform& platform,
    const Database& data,
    const QString& operation,
    const char* button,
    const std::function<void()>& expectMessages,
    const std::function<void()>& plainWork,
    const std::function<void()>& preparePlain)
{
    Figure figure {operation};
    figure.target = Target::ratioAtMost(MostRatio);
    figure.timeInTurns([&] { Operator::click(screen[name(button)]); },
        plainWork,
        BinRuns,
        1,
        [&] {
            resetBin(data.path());
            reload(screen, platform);
            expectMessages();
        },
        [&] {
            resetBin(data.path());
            if (preparePlain)
                preparePlain();
        });
    expectAnswered(platform, figure.operation);
    return figure;
}

// Restoring or destroying the selected tenth of the bin: the screen asks, then tells it is done;
// the plain program does the same to the same entries.
Figure changeSelected(Form& screen,
    ScriptedPlatform& platform,
    const Database& data,
    PlainBin& bin,
    void (PlainBin::*plainChange)(const QByteArray&),
    const QString& operation,
    const char* button,
    const QString& question,
    int questionStyle,
    const QString& done,
    int size)
{
    std::vector<QByteArray> chosen;
    Figure figure = changeBin(
        screen,
        platform,
        data,
        operation,
        button,
        [&] {
            selectSome(screen[name("List1")], size);
            platform.expectMessage(question, questionStyle, MsgResult::Yes);
            platform.expectMessage(done, MsgStyle::Info);
        },
        [&] {
            for (const QByteArray& entry : chosen)
                (bin.*plainChange)(entry);
        },
        [&] { chosen = chosenOf(bin.load(), size); });
    figure.note = QStringLiteral("%1 entries").arg(selectedOf(size));
    return figure;
}

Figure restoreSelected(Form& screen, ScriptedPlatform& platform, const Database& data, PlainBin& bin, int size)
{
    const int selected = selectedOf(size);
    return changeSelected(screen,
        platform,
        data,
        bin,
        &PlainBin::restore,
        QStringLiteral("&Restore selected entries"),
        "Command1",
        QStringLiteral("Restore %1 Selected Items?").arg(selected),
        MsgStyle::YesNoQuestion,
        QStringLiteral("Selected Item Restored Successfully!"),
        size);
}

Figure deleteSelected(Form& screen, ScriptedPlatform& platform, const Database& data, PlainBin& bin, int size)
{
    const int selected = selectedOf(size);
    return changeSelected(screen,
        platform,
        data,
        bin,
        &PlainBin::destroy,
        QStringLiteral("&Delete selected entries"),
        "Command2",
        QStringLiteral("Delete %1 Selected Items Permanently? ").arg(selected),
        MsgStyle::YesNoQuestionNoDefault,
        QStringLiteral("Selected Items Deleted Successfully!"),
        size);
}

Figure empty(Form& screen, ScriptedPlatform& platform, const Database& data, PlainBin& bin, int size)
{
    Figure figure = changeBin(
        screen,
        platform,
        data,
        QStringLiteral("Empty Recycle &Bin"),
        "Command3",
        [&] {
            platform.expectMessage(QStringLiteral("Empty Recycle Bin"), MsgStyle::YesNoQuestion, MsgResult::Yes);
            platform.expectMessage(QStringLiteral("Recycle Bin Emptied!"), MsgStyle::Info);
        },
        [&] { bin.empty(); },
        {});
    figure.note = QStringLiteral("%1 entries").arg(size);
    return figure;
}

int accountColumns(const QString& path)
{
    PlainDatabase probe(path);
    PlainStatement columns(probe, "SELECT * FROM \"Account\" LIMIT 0");
    return sqlite3_column_count(columns.get());
}

// The plain program's work that is not timed in turns with the screen's: loading the list and
// "Restore All".
void timePlain(std::vector<Figure>& figures, const Database& data, PlainBin& bin)
{
    resetBin(data.path());
    std::vector<QByteArray> names;
    figures[0].timePlain([&] { names = bin.load(); });
    resetBin(data.path());
    names = bin.load();
    figures[6].timePlain([&] {
        for (auto entry = names.rbegin(); entry != names.rend(); ++entry)
            bin.restore(*entry);
    });
    expectBin(data.path(), 0, QStringLiteral("the bin after the plain program's Restore All"));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int rows = rowsArgument(argc, argv);
    const int size = std::min(10000, rows / 2);
    printHeader("Recycle bin benchmark: the screen over a bin of 10,000 tickets", rows);
    Database data;
    makeDataSet(data, rows);
    takeIntoBin(data.path(), size);
    resetBin(data.path());

    Connection plainConnection;
    plainConnection.Open(data.connectionString());
    PlainBin bin(data.path(), plainConnection, accountColumns(data.path()));
    const std::vector<QByteArray> names = bin.load(); // in the order the screen lists them

    ScriptedPlatform platform;
    platform.setNow(Now);
    std::vector<Figure> figures;
    openBin(data, platform, [&](Form& screen) {
        figures.push_back(refresh(screen, platform, size));
        figures.push_back(clickEntries(screen, bin, names));
        figures.push_back(search(screen, platform, bin, names));
        figures.push_back(restoreSelected(screen, platform, data, bin, size));
        expectBin(data.path(), size - selectedOf(size), QStringLiteral("the bin after restoring"));
        figures.push_back(deleteSelected(screen, platform, data, bin, size));
        expectBin(data.path(), size - selectedOf(size), QStringLiteral("the bin after destroying"));
        figures.push_back(empty(screen, platform, data, bin, size));
        expectBin(data.path(), 0, QStringLiteral("the emptied bin"));
    });
    resetBin(data.path());
    openBin(data, platform, [&](Form& screen) {
        figures.push_back(restoreAll(screen, platform));
        expectBin(data.path(), 0, QStringLiteral("the bin after Restore All"));
        expectCount(data.path(), "SELECT count(*) FROM \"Account\"", rows, QStringLiteral("the tickets after Restore All"));
    });
    timePlain(figures, data, bin);
    printFigures(figures);
    return 0;
}
