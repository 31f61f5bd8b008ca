// Deleting tickets through the recycle routing, against a plain SQLite program doing the same
// statements: "&Delete Selection" of one ticket group of 1,000 (20 of them member tickets, which
// stay) from N stored tickets, first into an empty recycle bin and then into a full one, which
// purges 500 rows whenever it reaches its size; and "Delete a Ticket by Username", one ticket at a
// time. The pauses of the progress panel pass on a virtual clock and are reported apart.
//
//   bench_deletion [--rows N]     N tickets stored (at least 10,000), 100,000 unless given

#include "support/BenchSupport.h"

#include "platform/GridData.h"
#include "platform/Operator.h"
#include "screens/GenAcc.h"
#include "script/ScriptedPlatform.h"
#include "session/Session.h"
#include "store/Connection.h"

#include <QCoreApplication>

#include <sqlite3.h>

#include <algorithm>
#include <vector>

using namespace marlet;
using namespace marlet::bench;

namespace {

constexpr int BinSize = 5000; // the bin's size when none is set
constexpr int PurgeCount = 500;
constexpr int SingleDeletes = 100;
constexpr int UsernameColumn = 2; // of Account
constexpr double MostRatio = 3.0; // at most three times the plain program's time
const QDateTime Now(QDate(2024, 3, 20), QTime(10, 0));

QString translated(Connection& connection, const QString& pattern, const QVariantList& values = {})
{
    return connection.translate(Statement(pattern, values)).sql;
}

// The data set's group of tickets `index` * 1000 onwards.
QString groupOf(int index)
{
    return QString::number(240315000000LL + index);
}

// ---- Marlet --------------------------------------------------------------------------------------

Figure deleteGroup(GenAcc& screen, ScriptedPlatform& platform, const QString& group, const QString& operation)
{
    Operator::chooseTab(screen[QStringLiteral("TabStrip1")], 4);
    Operator::click(screen[QStringLiteral("Option5")]);
    Operator::setText(screen[QStringLiteral("Text5")], group);
    platform.expectMessage(QStringLiteral("Delete Record(s)?"), MsgStyle::YesNoQuestionNoDefault, MsgResult::Yes);
    platform.expectMessage(QStringLiteral("Continue to delete %1 Ticket(s) Selected Ticket(s)?").arg(group),
        MsgStyle::YesNoQuestion,
        MsgResult::Yes);
    platform.expectMessage(QStringLiteral("Delete Ticket(s) group list ?"), MsgStyle::YesNoQuestion, MsgResult::Yes);
    platform.expectMessage(QStringLiteral("All Selected Ticket(s) Deleted Successfully!"), MsgStyle::Info);

    Figure figure {operation};
    figure.target = Target::ratioAtMost(MostRatio);
    const qint64 sleptBefore = platform.sleptMilliseconds();
    figure.timeMarlet([&] { Operator::click(screen[QStringLiteral("Command4")]); });
    figure.pausedMilliseconds = double(platform.sleptMilliseconds() - sleptBefore);
    if (platform.pendingMessages() != 0)
        fail(QStringLiteral("deleting group %1 did not ask and answer as expected").arg(group));
    figure.note = QStringLiteral("%1 rows listed as deleted").arg(screen[QStringLiteral("PrintList")].grid().rows() - 1);
    return figure;
}

Figure deleteByName(GenAcc& screen, ScriptedPlatform& platform, const std::vector<QString>& names)
{
    for (const QString& name : names) {
        platform.expectInput(name);
        platform.expectMessage(QStringLiteral("Delete Ticket[%1]?").arg(name), MsgStyle::YesNoQuestionNoDefault, MsgResult::Yes);
        platform.expectMessage(QStringLiteral("Ticket %1 has been Deleted!").arg(name.toUpper()), MsgStyle::Info);
    }
    Figure figure {QStringLiteral("Delete a Ticket by Username")};
    figure.target = Target::ratioAtMost(MostRatio);
    figure.timeMarlet(
        [&] {
            for (std::size_t i = 0; i < names.size(); ++i)
                Operator::click(screen[QStringLiteral("m_del")]);
        },
        1,
        int(names.size()));
    if (platform.pendingMessages() != 0 || platform.pendingInputs() != 0)
        fail(QStringLiteral("deleting by user name did not ask and answer as expected"));
    figure.note = QStringLiteral("average of %1, bin of %2 rows").arg(names.size()).arg(BinSize);
    return figure;
}

// ---- the plain program ---------------------------------------------------------------------------

// The rows of a statement, every value copied out, as a static cursor holds them.
class PlainRows
{
public:
    PlainRows() = default;
    PlainRows(const PlainRows&) = delete;
    PlainRows& operator=(const PlainRows&) = delete;
    ~PlainRows() { clear(); }

    void read(sqlite3_stmt* statement)
    {
        clear();
        m_columns = sqlite3_column_count(statement);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int c = 0; c < m_columns; ++c)
                m_values.push_back(sqlite3_value_dup(sqlite3_column_value(statement, c)));
        }
        sqlite3_reset(statement);
    }

    std::size_t count() const { return m_columns ? m_values.size() / std::size_t(m_columns) : 0; }
    int columns() const { return m_columns; }
    sqlite3_value* value(std::size_t row, int column) const
    {
        return m_values[row * std::size_t(m_columns) + std::size_t(column)];
    }

private:
    void clear()
    {
        for (sqlite3_value* value : m_values)
            sqlite3_value_free(value);
        m_values.clear();
    }

    int m_columns = 0;
    std::vector<sqlite3_value*> m_values;
};

QByteArray placeholders(int count)
{
    QByteArray list = "?";
    for (int i = 1; i < count; ++i)
        list += ",?";
    return list;
}

// The plain program's routing: the bin's rows are read once, as the screen's static cursor reads
// them; a full bin loses its first 500 rows one statement each; the ticket goes in with its deletion
// stamp; then the ticket leaves the ticket table.
class PlainDeletion
{
public:
    PlainDeletion(const QString& path, Connection& connection, int accountColumns)
        : m_db(path)
        , m_accountColumns(accountColumns)
        , m_tickets(m_db,
              translated(connection,
                  QStringLiteral("Select * from Account where member=false and TicketGrp like '{}%'"),
                  {QString()})
                  .toUtf8())
        , m_binRows(m_db, "SELECT rowid, * FROM \"RecycleBin\"")
        , m_ticket(m_db,
              translated(connection,
                  QStringLiteral("Select * from Account where member=false and Username = '{}'"),
                  {QString()})
                  .toUtf8())
        , m_ticketBinRows(m_db, "SELECT rowid, * FROM \"RecycleBin\" WHERE \"Member\" = 0")
        , m_purge(m_db, "DELETE FROM \"RecycleBin\" WHERE rowid = ?")
        , m_keep(m_db, "INSERT INTO \"RecycleBin\" VALUES (" + placeholders(accountColumns + 2) + ")")
        , m_delete(m_db,
              translated(connection,
                  QStringLiteral("DELETE FROM Account where member=false and account.username = '{}'"),
                  {QString()})
                  .toUtf8())
        , m_groupTickets(m_db,
              translated(connection,
                  QStringLiteral("DELETE account.* FROM Account where member=false and account.TicketGrp like '{}%'"),
                  {QString()})
                  .toUtf8())
        , m_groupList(m_db,
              translated(connection,
                  QStringLiteral("DELETE TicketInfo.* FROM TicketInfo where  TicketInfo.TicketGrp like '{}%'"),
                  {QString()})
                  .toUtf8())
    {
    }

    void deleteGroup(const QByteArray& group)
    {
        m_tickets.bindText(1, group);
        PlainRows tickets;
        tickets.read(m_tickets.get());
        readBin(m_binRows);
        for (std::size_t row = 0; row < tickets.count(); ++row) {
            route(tickets, row);
            m_delete.bindText(1, QByteArray(reinterpret_cast<const char*>(sqlite3_value_text(tickets.value(row, UsernameColumn)))));
            m_delete.run();
        }
        m_groupTickets.bindText(1, group);
        m_groupTickets.run();
        m_groupList.bindText(1, group);
        m_groupList.run();
    }

    // "Delete a Ticket by Username": the ticket, the bin's non-member rows, the routing, the delete.
    void deleteByName(const QByteArray& name)
    {
        m_ticket.bindText(1, name);
        PlainRows ticket;
        ticket.read(m_ticket.get());
        if (ticket.count() == 0)
            fail(QStringLiteral("the plain program found no ticket ") + QString::fromLatin1(name));
        readBin(m_ticketBinRows);
        route(ticket, 0);
        m_delete.bindText(1, name);
        m_delete.run();
    }

private:
    // The bin's rows are only counted and purged, so of each row its key is kept; every column is
    // still read, as the screen's cursor reads them.
    void readBin(const PlainStatement& rows)
    {
        m_binKeys.clear();
        while (sqlite3_step(rows.get()) == SQLITE_ROW) {
            m_checksum += readRow(rows.get());
            m_binKeys.push_back(sqlite3_column_int64(rows.get(), 0));
        }
        sqlite3_reset(rows.get());
        m_binCount = m_binKeys.size();
        m_nextPurged = 0;
    }

    void route(const PlainRows& tickets, std::size_t row)
    {
        if (m_binCount >= std::size_t(BinSize)) {
            for (int i = 0; i < PurgeCount && m_nextPurged < m_binKeys.size(); ++i, ++m_nextPurged) {
                m_purge.bindInt(1, m_binKeys[m_nextPurged]);
                m_purge.run();
                --m_binCount;
            }
        }
        for (int c = 0; c < m_accountColumns; ++c)
            sqlite3_bind_value(m_keep.get(), c + 1, tickets.value(row, c));
        m_keep.bindText(m_accountColumns + 1, "20/03/24/10:00");
        m_keep.bindText(m_accountColumns + 2, "Deleted by User.");
        if (!m_keep.run())
            fail(QStringLiteral("the plain program could not keep a ticket in the bin"));
        ++m_binCount;
    }

    PlainDatabase m_db;
    int m_accountColumns;
    PlainStatement m_tickets;
    PlainStatement m_binRows;
    PlainStatement m_ticket;
    PlainStatement m_ticketBinRows;
    PlainStatement m_purge;
    PlainStatement m_keep;
    PlainStatement m_delete;
    PlainStatement m_groupTickets;
    PlainStatement m_groupList;
    std::vector<qint64> m_binKeys;
    qint64 m_checksum = 0;
    std::size_t m_binCount = 0;
    std::size_t m_nextPurged = 0;
};

// ---- checks and data -----------------------------------------------------------------------------

qint64 count(const QString& path, const QByteArray& sql)
{
    PlainDatabase db(path);
    PlainStatement statement(db, sql);
    return sqlite3_step(statement.get()) == SQLITE_ROW ? sqlite3_column_int64(statement.get(), 0) : -1;
}

int accountColumns(const QString& path)
{
    PlainDatabase db(path);
    PlainStatement statement(db, "SELECT * FROM \"Account\" LIMIT 0");
    return sqlite3_column_count(statement.get());
}

void expectCount(const QString& path, const QByteArray& sql, qint64 expected, const QString& what)
{
    const qint64 found = count(path, sql);
    if (found != expected)
        fail(QStringLiteral("%1: %2 rows, %3 expected").arg(what).arg(found).arg(expected));
}

QByteArray groupCount(const QString& group)
{
    return "SELECT count(*) FROM \"Account\" WHERE \"TicketGrp\" = '" + group.toLatin1() + "'";
}

// The group's own member tickets stay: one ticket in fifty of the data set.
qint64 membersOf(int groupIndex)
{
    qint64 members = 0;
    for (int i = groupIndex * 1000; i < (groupIndex + 1) * 1000; ++i)
        members += i % 50 == 0 ? 1 : 0;
    return members;
}

// Fills the bin to its size with copies of tickets that stay stored, as earlier deletions would have.
void fillBin(const QString& path)
{
    PlainDatabase db(path);
    db.exec("DELETE FROM \"RecycleBin\"");
    const QByteArray copies = "INSERT INTO \"RecycleBin\" SELECT *, '15/03/24/09:00', 'Deleted by User.' "
                              "FROM \"Account\" WHERE \"Member\" = 0 ORDER BY rowid DESC LIMIT "
        + QByteArray::number(BinSize);
    db.exec(copies.constData());
    if (sqlite3_changes(db.handle()) != BinSize)
        fail(QStringLiteral("the data set has too few tickets to fill the bin"));
}

std::vector<QString> lastNames(int rows, int count)
{
    std::vector<QString> names;
    for (int i = rows - 1; int(names.size()) < count; --i)
        if (i % 50 != 0)
            names.push_back(ticketName(i));
    return names;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    // Four groups deleted and a full bin of copies of the tickets that remain need 10,000 tickets.
    const int rows = std::max(rowsArgument(argc, argv), 10000);
    printHeader("Deletion benchmark: tickets through the recycle routing", rows);
    Database data;
    makeDataSet(data, rows);
    const int columns = accountColumns(data.path());

    ScriptedPlatform platform;
    platform.setNow(Now);
    std::vector<Figure> figures;
    onGenerateScreen(data, platform, [&](GenAcc& screen) {
        figures.push_back(deleteGroup(screen, platform, groupOf(1), QStringLiteral("Delete Selection, empty bin")));
        expectCount(data.path(), groupCount(groupOf(1)), membersOf(1), QStringLiteral("group 1 after its deletion"));
        expectCount(data.path(), "SELECT count(*) FROM \"RecycleBin\"", 1000 - membersOf(1), QStringLiteral("the bin"));

        fillBin(data.path());
        figures.push_back(deleteGroup(screen, platform, groupOf(2), QStringLiteral("Delete Selection, full bin")));
        expectCount(data.path(), groupCount(groupOf(2)), membersOf(2), QStringLiteral("group 2 after its deletion"));
        // 5,000 rows, then a purge before the first ticket and another when the bin is full again.
        expectCount(data.path(), "SELECT count(*) FROM \"RecycleBin\"", BinSize - 2 * PurgeCount + 1000 - membersOf(2),
            QStringLiteral("the full bin"));

        fillBin(data.path());
        const std::vector<QString> names = lastNames(rows, SingleDeletes);
        figures.push_back(deleteByName(screen, platform, names));
        expectCount(data.path(), "SELECT count(*) FROM \"RecycleBin\"", BinSize - PurgeCount + SingleDeletes,
            QStringLiteral("the bin after deletions by name"));

        Connection& connection = screen.session().connection();
        PlainDeletion plain(data.path(), connection, columns);
        PlainDatabase(data.path()).exec("DELETE FROM \"RecycleBin\"");
        figures[0].timePlain([&] { plain.deleteGroup(groupOf(3).toLatin1()); });
        fillBin(data.path());
        figures[1].timePlain([&] { plain.deleteGroup(groupOf(4).toLatin1()); });
        expectCount(data.path(), groupCount(groupOf(4)), membersOf(4), QStringLiteral("the plain program's group"));
        fillBin(data.path());
        const std::vector<QString> others = lastNames(rows - 200, SingleDeletes);
        figures[2].timePlain(
            [&] {
                for (const QString& name : others)
                    plain.deleteByName(name.toLatin1());
            },
            1,
            SingleDeletes);
    });
    printFigures(figures);
    return 0;
}
