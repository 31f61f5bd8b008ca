// "&View Selection" on the generate screen's "Existing" tab, over a ticket table of N rows, against a
// plain SQLite program that runs the same select, reads the rows and makes the same grid lines.
// The listing's running number is a 16-bit counter, so the grid ends at 32,767 rows whatever the
// count; the plain program lists as many and counts the rest for the tool tip.
//
//   bench_listing [--rows N]      N tickets, 100,000 unless given

#include "support/BenchSupport.h"

#include "platform/GridData.h"
#include "platform/Operator.h"
#include "screens/GenAcc.h"
#include "script/ScriptedPlatform.h"
#include "session/Session.h"
#include "store/Connection.h"

#include <QCoreApplication>

#include <sqlite3.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

using namespace marlet;
using namespace marlet::bench;

namespace {

constexpr int ListingLimit = std::numeric_limits<qint16>::max();
constexpr int Runs = 3;

struct Selection
{
    const char* option;
    const char* caption;
    const char* statement;
    const char* groupEntry; // Text5 for "By Ticket Group"
};

// What a listing left on the screen.
struct Listed
{
    std::vector<QString> lines;
    QString toolTip;
};

// ---- the plain program ---------------------------------------------------------------------------

std::string text(sqlite3_stmt* row, int column)
{
    const auto* value = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return value ? std::string(value) : std::string();
}

// "2024-03-15 00:00:00" as "15/Mar/24".
std::string shortDate(const std::string& stored)
{
    static const char* const months[]
        = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    if (stored.size() < 10)
        return std::string();
    const int month = std::stoi(stored.substr(5, 2));
    return stored.substr(8, 2) + '/' + months[month - 1] + '/' + stored.substr(2, 2);
}

std::string number(double value)
{
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.15g", value);
    return buffer;
}

std::vector<std::string> columnNames(sqlite3_stmt* statement)
{
    std::vector<std::string> names;
    for (int c = 0; c < sqlite3_column_count(statement); ++c)
        names.emplace_back(sqlite3_column_name(statement, c));
    return names;
}

class PlainListing
{
public:
    PlainListing(const QString& path, const QString& sql)
        : m_db(path)
        , m_select(m_db, sql.toUtf8())
        , m_columns(columnNames(m_select.get()))
    {
    }

    Listed run(const QByteArray& groupEntry, bool masked)
    {
        if (!groupEntry.isNull())
            m_select.bindText(1, groupEntry + '%');
        std::vector<std::string> grid;
        long count = 0;
        while (sqlite3_step(m_select.get()) == SQLITE_ROW) {
            // A result set reads every column of every row, listed or not.
            m_checksum += readRow(m_select.get());
            if (++count <= ListingLimit)
                grid.push_back(line(count, masked));
        }
        sqlite3_reset(m_select.get());
        Listed listed {{}, QString::number(count) + QStringLiteral(" Record(s)")};
        listed.lines.reserve(grid.size());
        for (const std::string& row : grid)
            listed.lines.push_back(QString::fromStdString(row));
        return listed;
    }

private:
    int column(const char* name) const
    {
        for (std::size_t c = 0; c < m_columns.size(); ++c) {
            if (sqlite3_stricmp(m_columns[c].c_str(), name) == 0)
                return int(c);
        }
        fail(QStringLiteral("no column ") + QLatin1String(name));
    }

    std::string line(long count, bool masked) const
    {
        sqlite3_stmt* row = m_select.get();
        const double days = sqlite3_column_double(row, m_days);
        const std::string expiry = days == 0 ? shortDate(text(row, m_expire)) : number(days) + "day(s)";
        return std::to_string(count) + '\t' + text(row, m_username) + '\t'
            + (masked ? std::string("*****") : text(row, m_password)) + '\t'
            + number(std::floor(sqlite3_column_double(row, m_time) / 60)) + "min(s)\t" + text(row, m_group) + '\t'
            + expiry + '\t' + shortDate(text(row, m_created));
    }

    PlainDatabase m_db;
    PlainStatement m_select;
    std::vector<std::string> m_columns;
    int m_username = column("Username");
    int m_password = column("Password");
    int m_time = column("Time");
    int m_group = column("TicketGrp");
    int m_days = column("Days");
    int m_expire = column("Expire");
    int m_created = column("DateCreated");
    qint64 m_checksum = 0;
};

// ---- Marlet --------------------------------------------------------------------------------------

Listed gridContent(const GenAcc& screen)
{
    const Control& grid = screen[QStringLiteral("PrintList")];
    Listed listed {{}, grid.toolTip()};
    for (int row = 1; row < grid.grid().rows(); ++row)
        listed.lines.push_back(grid.grid().rowCells(row).mid(0, 7).join(u'\t'));
    return listed;
}

void compare(const Selection& selection, const Listed& marlet, const Listed& plain)
{
    const QString what = QLatin1String(selection.caption);
    if (marlet.toolTip != plain.toolTip)
        fail(what
            + QStringLiteral(": tool tip \"%1\", the plain program counted \"%2\"").arg(marlet.toolTip, plain.toolTip));
    if (marlet.lines.size() != plain.lines.size())
        fail(what
            + QStringLiteral(": %1 rows listed, the plain program made %2")
                  .arg(marlet.lines.size())
                  .arg(plain.lines.size()));
    for (std::size_t i = 0; i < marlet.lines.size(); ++i) {
        if (marlet.lines[i] != plain.lines[i])
            fail(what
                + QStringLiteral(": row %1 differs:\n  Marlet: %2\n  plain:  %3")
                      .arg(i + 1)
                      .arg(marlet.lines[i], plain.lines[i]));
    }
}

Figure measure(GenAcc& screen, ScriptedPlatform& platform, const QString& path, const Selection& selection)
{
    Operator::click(screen[QLatin1String(selection.option)]);
    if (selection.groupEntry)
        Operator::setText(screen[QStringLiteral("Text5")], QLatin1String(selection.groupEntry));
    Control& view = screen[QStringLiteral("Command2")];
    const qint64 sleptBefore = platform.sleptMilliseconds();
    Figure figure {QStringLiteral("View Selection, ") + QLatin1String(selection.caption)};
    figure.timeMarlet([&] { Operator::click(view); }, Runs);
    figure.pausedMilliseconds = double(platform.sleptMilliseconds() - sleptBefore) / Runs;
    const Listed listed = gridContent(screen);

    const bool masked = screen[QStringLiteral("Check4")].value() == CheckState::Checked;
    const QString sql
        = screen.session()
              .connection()
              .translate(Statement(QLatin1String(selection.statement),
                  selection.groupEntry ? QVariantList {QLatin1String(selection.groupEntry)} : QVariantList()))
              .sql;
    PlainListing plain(path, sql);
    Listed plainListed;
    const QByteArray entry = selection.groupEntry ? QByteArray(selection.groupEntry) : QByteArray();
    figure.timePlain([&] { plainListed = plain.run(entry, masked); }, Runs);
    compare(selection, listed, plainListed);
    figure.note = QStringLiteral("%1 rows listed, \"%2\"").arg(listed.lines.size()).arg(listed.toolTip);
    return figure;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int rows = rowsArgument(argc, argv);
    printHeader("Listing benchmark: \"&View Selection\" into the grid model", rows);
    Database data;
    makeDataSet(data, rows);

    // The group entry names the data set's second group of a thousand tickets.
    const Selection selections[] = {
        {"Option1", "&All", "select * from Account where member=false", nullptr},
        {"Option2", "Un&used", "select * from Account where NEW = TRUE and member=false", nullptr},
        {"Option5",
            "By Ticket Group",
            "select * from Account where member=false and TicketGrp like '{}%'",
            "240315000001"},
    };
    ScriptedPlatform platform;
    platform.setNow(QDateTime(QDate(2024, 3, 20), QTime(10, 0)));
    std::vector<Figure> figures;
    onGenerateScreen(data, platform, [&](GenAcc& screen) {
        Operator::chooseTab(screen[QStringLiteral("TabStrip1")], 4);
        for (const Selection& selection : selections)
            figures.push_back(measure(screen, platform, data.path(), selection));
    });
    figures.front().target = Target::below(1500);
    figures.front().peakLimit = 200;
    printFigures(figures);
    return 0;
}
