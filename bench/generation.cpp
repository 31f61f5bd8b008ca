// "&Generate New Ticket(s)" for a batch of 999 one-hour tickets with N tickets already stored, and
// the print staging of that batch, against a plain SQLite program doing the same statements: the
// log line, the storage rule's count, the group row, for each ticket a name lookup and an insert,
// the closing rows; then the batch read back and packed two to a row into the scratch table.
// The prescribed pauses (50 ms before each ticket, the waits of print staging) pass on a virtual
// clock and are reported apart from the real work.
//
//   bench_generation [--rows N]   N tickets stored, 100,000 unless given

#include "support/BenchSupport.h"

#include "issuing/TicketRow.h"
#include "platform/GridData.h"
#include "platform/Operator.h"
#include "printing/PrintStaging.h"
#include "screens/GenAcc.h"
#include "script/ScriptedPlatform.h"
#include "session/Session.h"
#include "store/Connection.h"

#include <QCoreApplication>

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

using namespace marlet;
using namespace marlet::bench;

namespace {

constexpr int BatchSize = 999;
// The plain program's group number; Marlet's comes from the clock.
const QString PlainGroup = QStringLiteral("240320100001");
const QDateTime Now(QDate(2024, 3, 20), QTime(10, 0));

QString translated(Connection& connection, const QString& pattern, const QVariantList& values = {})
{
    return connection.translate(Statement(pattern, values)).sql;
}

// A count for checking what a run left behind; `value` is bound to the statement's one parameter.
qint64 count(const QString& path, const QByteArray& sql, const QByteArray& value = {})
{
    PlainDatabase db(path);
    PlainStatement statement(db, sql);
    if (!value.isNull())
        statement.bindText(1, value);
    return sqlite3_step(statement.get()) == SQLITE_ROW ? sqlite3_column_int64(statement.get(), 0) : -1;
}

// ---- Marlet --------------------------------------------------------------------------------------

Figure generate(GenAcc& screen, ScriptedPlatform& platform)
{
    Operator::setText(screen[QStringLiteral("cboNumber")], QString::number(BatchSize));
    Operator::setText(screen[QStringLiteral("cboHours")], QStringLiteral("1"));
    platform.expectMessage(QStringLiteral("You have choosen to Generate %1 number(s) of 1hour(s) 0min(s)' Ticket(s) "
                                          "of Cost N50 with Expiration Date of 5 days, Continue?")
                               .arg(BatchSize),
        MsgStyle::YesNoQuestionNoDefault,
        MsgResult::Yes);
    platform.expectMessage(
        QStringLiteral("And Print Preview Ticket(s) with Large Print? "), MsgStyle::YesNoCancelQuestion, MsgResult::No);
    platform.expectMessage(QStringLiteral("Ticket Generation Completed Successfully!"), MsgStyle::Info);

    Figure figure {QStringLiteral("generate %1 tickets").arg(BatchSize)};
    const qint64 sleptBefore = platform.sleptMilliseconds();
    figure.timeMarlet([&] { Operator::click(screen[QStringLiteral("cmdGenerate")]); });
    figure.pausedMilliseconds = double(platform.sleptMilliseconds() - sleptBefore);
    figure.target = Target::below(300);
    figure.note = QStringLiteral("%1 rows in the grid").arg(screen[QStringLiteral("PrintList")].grid().rows() - 1);
    if (platform.pendingMessages() != 0)
        fail(QStringLiteral("the batch did not ask and answer as expected"));
    return figure;
}

Figure stage(GenAcc& screen, ScriptedPlatform& platform, const QString& group)
{
    platform.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
    Figure figure {QStringLiteral("print staging of the batch, two to a row")};
    const qint64 sleptBefore = platform.sleptMilliseconds();
    figure.timeMarlet([&] {
        BuildPrintPreview(screen, Statement(QStringLiteral("Select * From Account where TicketGrp = '{}'"), {group}));
    });
    figure.pausedMilliseconds = double(platform.sleptMilliseconds() - sleptBefore);
    const auto& calls = platform.componentCalls();
    if (calls.empty() || calls.back().operation != QLatin1String("Generated2Preview"))
        fail(QStringLiteral("print staging did not call the report component's Generated2Preview"));
    return figure;
}

// ---- the plain program ---------------------------------------------------------------------------

// Random text as the generate screen draws it with the default PassGenType of 1: codes 0 to 254,
// of which only the digits are kept.
class PlainRandom
{
public:
    std::string text(int length)
    {
        std::string drawn;
        while (int(drawn.size()) < length) {
            const int code = int(std::floor(m_uniform(m_engine) * 255));
            if (code >= '0' && code <= '9')
                drawn += char(code);
        }
        return drawn;
    }

private:
    std::mt19937_64 m_engine {20240320};
    std::uniform_real_distribution<double> m_uniform {0.0, 1.0};
};

class PlainBatch
{
public:
    PlainBatch(const QString& path, Connection& connection)
        : m_db(path)
        , m_log(
              m_db, "INSERT INTO \"SysUsage\" (\"SystemUsage\",\"Times\",\"Dates\") VALUES ('Ticket(s) Generated',?,?)")
        , m_stored(m_db,
              "SELECT count(*) FROM ("
                  + translated(connection, QStringLiteral("Select * from Account where member=false")).toUtf8()
                  + ") AS counted")
        , m_groupLookup(m_db,
              translated(connection, QStringLiteral("Select * from TicketInfo where TicketGrp  = '{}'"), {QString()})
                  .toUtf8())
        , m_groupInsert(m_db,
              "INSERT INTO \"TicketInfo\" (\"TicketGrp\",\"Number\",\"Time\",\"Amount\",\"TotalCost\",\"GeneratedBy\","
              "\"TimeGenerated\") VALUES (?,?,60,'50',?,'ADMINISTRATOR','Started at 10:00, 20/03/24')")
        , m_nameLookup(m_db,
              translated(connection, QStringLiteral("Select * from Account where Username = '{}'"), {QString()})
                  .toUtf8())
        , m_ticket(m_db)
        , m_groupUpdate(m_db,
              "UPDATE \"TicketInfo\" SET \"TimeGenerated\" = 'Completed at 10:00, 20/03/24 [RANDOM]', \"Number\" = ? "
              "WHERE rowid = ?")
        , m_activated(m_db,
              "INSERT INTO \"Activated\" (\"TicketGrp\",\"Times\",\"Amount\",\"Staff\",\"Status\",\"Activator\","
              "\"numbers\") VALUES (?,60,'N50','ADMINISTRATOR',0,'',?)")
        , m_register(
              m_db, "UPDATE \"Register\" SET \"TotGenerated\" = \"TotGenerated\" + ?, \"TotCost\" = \"TotCost\" + ?")
    {
    }

    void run(const QByteArray& group)
    {
        m_log.bindText(1, "10:00:00");
        m_log.bindText(2, "20/03/2024");
        m_log.run();
        m_checksum += m_stored.readAll();
        m_groupLookup.bindText(1, group);
        m_checksum += m_groupLookup.readAll();
        m_groupInsert.bindText(1, group);
        m_groupInsert.bindInt(2, BatchSize);
        m_groupInsert.bindDouble(3, 50.0 * BatchSize);
        m_groupInsert.run();
        const qint64 groupRow = sqlite3_last_insert_rowid(m_db.handle());
        for (int i = 1; i <= BatchSize; ++i)
            makeTicket(group, i);
        m_groupUpdate.bindInt(1, BatchSize + 1);
        m_groupUpdate.bindInt(2, groupRow);
        m_groupUpdate.run();
        m_activated.bindText(1, group);
        m_activated.bindInt(2, BatchSize + 1);
        m_activated.run();
        m_register.bindInt(1, BatchSize + 1);
        m_register.bindDouble(2, 50.0 * (BatchSize + 1));
        m_register.run();
    }

    const std::vector<std::string>& grid() const { return m_grid; }

private:
    std::string freeName()
    {
        for (;;) {
            const std::string name = "NVT" + m_random.text(7);
            m_nameLookup.bindText(1, QByteArray::fromStdString(name));
            bool taken = false;
            while (sqlite3_step(m_nameLookup.get()) == SQLITE_ROW) {
                m_checksum += readRow(m_nameLookup.get());
                taken = true;
            }
            sqlite3_reset(m_nameLookup.get());
            if (!taken)
                return name;
        }
    }

    void makeTicket(const QByteArray& group, int position)
    {
        TicketValues ticket;
        ticket.TicketGrp = QString::fromLatin1(group);
        ticket.TicketNo = QString::number(position).rightJustified(3, u'0');
        ticket.Username = QString::fromStdString(freeName());
        ticket.Password = QString::fromStdString(m_random.text(5));
        ticket.seconds = 3600;
        ticket.ByWhom = QStringLiteral("ADMINISTRATOR");
        ticket.expiry = {false, QVariant(), 5};
        ticket.created = Now.date();
        ticket.Amount = QStringLiteral("N50");
        ticket.StartTime = QDateTime(Now.date(), QTime(0, 0));
        ticket.EndTime = QDateTime(Now.date(), QTime(6, 0));
        if (!m_ticket.add(ticket))
            fail(QStringLiteral("the plain program could not add a ticket"));
        m_grid.push_back(std::to_string(position) + '\t' + ticket.Username.toStdString() + "\t*****\t60min(s)\t"
            + group.toStdString() + "\t5day(s)\t20/Mar/24");
    }

    PlainDatabase m_db;
    PlainStatement m_log;
    PlainStatement m_stored;
    PlainStatement m_groupLookup;
    PlainStatement m_groupInsert;
    PlainStatement m_nameLookup;
    PlainTicketInsert m_ticket;
    PlainStatement m_groupUpdate;
    PlainStatement m_activated;
    PlainStatement m_register;
    PlainRandom m_random;
    std::vector<std::string> m_grid;
    qint64 m_checksum = 0;
};

// The plain program's print staging: read the group's tickets, empty the scratch table, write the
// tickets two to a row, every row its own statement.
class PlainStaging
{
public:
    PlainStaging(const QString& path, Connection& connection, const QString& group)
        : m_db(path)
        , m_tickets(m_db,
              translated(connection, QStringLiteral("Select * From Account where TicketGrp = '{}'"), {group}).toUtf8())
        , m_row(m_db, rowInsert())
        , m_group(group.toUtf8())
    {
    }

    void run()
    {
        m_tickets.bindText(1, m_group);
        std::vector<std::vector<QByteArray>> tickets;
        while (sqlite3_step(m_tickets.get()) == SQLITE_ROW)
            tickets.push_back(slotValues(m_tickets.get()));
        sqlite3_reset(m_tickets.get());
        m_db.exec("DELETE FROM \"RowPrintTemp\"");
        for (std::size_t i = 0; i < tickets.size(); i += 2) {
            bindSlot(0, tickets[i]);
            bindSlot(1, i + 1 < tickets.size() ? tickets[i + 1] : emptySlot());
            if (!m_row.run())
                fail(QStringLiteral("the plain program could not write a scratch row"));
        }
    }

private:
    static QByteArray rowInsert()
    {
        QByteArray sql = "INSERT INTO \"RowPrintTemp\" VALUES (?";
        for (int i = 1; i < 18; ++i)
            sql += ",?";
        return sql + ')';
    }

    static QByteArray column(sqlite3_stmt* row, int index)
    {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, index));
        return text ? QByteArray(text) : QByteArray();
    }

    // Group-number, name, password, time, amount, expiry, time rule, quota, days. Account's columns
    // by position: TicketGrp 0, TicketNo 1, Username 2, Password 3, Time 4, Expire 7, Days 8,
    // Amount 10, Quota 26.
    static std::vector<QByteArray> slotValues(sqlite3_stmt* row)
    {
        return {column(row, 0) + '-' + column(row, 1),
            column(row, 2),
            column(row, 3),
            column(row, 4),
            column(row, 10),
            column(row, 7),
            "Any Time",
            column(row, 26),
            column(row, 8)};
    }

    static std::vector<QByteArray> emptySlot()
    {
        return {" ", " ", " ", "0", " ", "2024-03-20 00:00:00", " ", "0", "0"};
    }

    void bindSlot(int slot, const std::vector<QByteArray>& values)
    {
        for (int field = 0; field < 9; ++field) {
            const QByteArray& value = values[std::size_t(field)];
            if (value.isNull())
                m_row.bindNull(9 * slot + field + 1);
            else
                m_row.bindText(9 * slot + field + 1, value);
        }
    }

    PlainDatabase m_db;
    PlainStatement m_tickets;
    PlainStatement m_row;
    QByteArray m_group;
};

void checkBatch(const Database& data, const GenAcc& screen, const QString& group, int rows)
{
    const GridData& grid = screen[QStringLiteral("PrintList")].grid();
    const qint64 made
        = count(data.path(), "SELECT count(*) FROM \"Account\" WHERE \"TicketGrp\" = ?", group.toLatin1());
    const qint64 stored = count(data.path(), "SELECT count(*) FROM \"Account\"");
    if (made != BatchSize || stored != rows + BatchSize || grid.rows() != BatchSize + 1)
        fail(QStringLiteral("the batch made %1 tickets (%2 stored, %3 grid rows)")
                 .arg(made)
                 .arg(stored)
                 .arg(grid.rows()));
    const QString last = grid.rowCells(BatchSize).mid(0, 7).join(u'\t');
    const QString expected = QStringLiteral("%1\t%2\t*****\t60min(s)\t%3\t5day(s)\t20/Mar/24")
                                 .arg(BatchSize)
                                 .arg(grid.textMatrix(BatchSize, 1), group);
    if (last != expected)
        fail(QStringLiteral("the last grid line is \"%1\"").arg(last));
}

// A grid line with its random user name and its group number put as placeholders; the name must
// be the prefix and seven digits.
QString lineShape(const QString& line, const QString& group)
{
    QStringList cells = line.split(u'\t');
    if (cells.size() < 7)
        return line;
    const QString& name = cells[1];
    const bool digits = std::all_of(
        name.begin() + std::min<qsizetype>(3, name.size()), name.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    cells[1] = name.size() == 10 && name.startsWith(QLatin1String("NVT")) && digits ? QStringLiteral("<name>") : name;
    if (cells[4] == group)
        cells[4] = QStringLiteral("<group>");
    return cells.mid(0, 7).join(u'\t');
}

// The scratch table as text, row by row: each value with its stored type.
std::vector<std::string> scratchRows(const QString& path)
{
    PlainDatabase db(path);
    PlainStatement rows(db, "SELECT * FROM \"RowPrintTemp\" ORDER BY rowid");
    std::vector<std::string> texts;
    while (sqlite3_step(rows.get()) == SQLITE_ROW) {
        std::string text;
        for (int c = 0; c < sqlite3_column_count(rows.get()); ++c) {
            const auto* value = reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), c));
            text += std::to_string(sqlite3_column_type(rows.get(), c)) + ':' + (value ? value : "") + '|';
        }
        texts.push_back(text);
    }
    return texts;
}

// Marlet's grid and the plain program's lines must agree line by line, up to the random names and
// the group number.
void expectSameLines(const GridData& grid, const std::vector<std::string>& plain, const QString& group)
{
    if (plain.size() != std::size_t(BatchSize) || grid.rows() != BatchSize + 1)
        fail(QStringLiteral("the plain program made %1 grid lines, Marlet %2").arg(plain.size()).arg(grid.rows() - 1));
    for (int row = 1; row <= BatchSize; ++row) {
        const QString marlet = lineShape(grid.rowCells(row).mid(0, 7).join(u'\t'), group);
        const QString other = lineShape(QString::fromStdString(plain[std::size_t(row - 1)]), PlainGroup);
        if (marlet != other)
            fail(QStringLiteral("grid line %1 reads \"%2\", the plain program's \"%3\"").arg(row).arg(marlet, other));
    }
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int rows = rowsArgument(argc, argv);
    printHeader("Generation benchmark: a batch of 999 tickets and its print staging", rows);
    Database data;
    makeDataSet(data, rows);

    ScriptedPlatform platform;
    platform.setNow(Now);
    std::vector<Figure> figures;
    onGenerateScreen(data, platform, [&](GenAcc& screen) {
        figures.push_back(generate(screen, platform));
        const QString group = screen[QStringLiteral("PrintList")].grid().textMatrix(1, 4);
        checkBatch(data, screen, group, rows);
        figures.push_back(stage(screen, platform, group));
        const qint64 staged = count(data.path(), "SELECT count(*) FROM \"RowPrintTemp\"");
        if (staged != (BatchSize + 1) / 2)
            fail(QStringLiteral("print staging wrote %1 rows").arg(staged));

        Connection& connection = screen.session().connection();
        PlainBatch batch(data.path(), connection);
        figures[0].timePlain([&] { batch.run(PlainGroup.toLatin1()); });
        expectSameLines(screen[QStringLiteral("PrintList")].grid(), batch.grid(), group);
        const std::vector<std::string> marletRows = scratchRows(data.path());
        PlainStaging staging(data.path(), connection, group);
        figures[1].timePlain([&] { staging.run(); });
        const std::vector<std::string> plainStaged = scratchRows(data.path());
        for (std::size_t i = 0; i < std::max(marletRows.size(), plainStaged.size()); ++i) {
            if (i >= marletRows.size() || i >= plainStaged.size() || marletRows[i] != plainStaged[i])
                fail(QStringLiteral("scratch row %1 differs: Marlet \"%2\", the plain program \"%3\"")
                         .arg(i + 1)
                         .arg(QString::fromStdString(i < marletRows.size() ? marletRows[i] : std::string()),
                             QString::fromStdString(i < plainStaged.size() ? plainStaged[i] : std::string())));
        }
    });
    printFigures(figures);
    return 0;
}
