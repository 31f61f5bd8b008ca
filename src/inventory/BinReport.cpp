#include "inventory/BinReport.h"

#include "issuing/TicketRules.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"
#include "store/StoreValue.h"
#include "values/Formats.h"
#include "values/Numbers.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace marlet {

namespace {

const QString DateFormat = QStringLiteral("dd/mm/yyyy");
const QString TimeFormat = QStringLiteral("hh:mmAMPM");

// A field as it reads when joined into text: Null as nothing, text as it stands, numbers, dates
// and truth values as the form language prints them.
QString joined(const QVariant& value)
{
    if (value.isNull())
        return QString();
    if (value.typeId() == QMetaType::QString)
        return value.toString();
    return values::format(value, QString());
}

// The ticket information screen tests its member, recharge and point-of-sale facts as they come:
// a Null makes the test fail, and a failed test counts as true.
bool passesTest(std::optional<bool> truth)
{
    return truth.value_or(true);
}

// The fields that the reports print.
enum class Field {
    AccountAdded,
    Amount,
    Autorecharge,
    ByWhom,
    ComputerUsed,
    DateCreated,
    DateTimeDeleted,
    Days,
    EndTime,
    Expire,
    LastUsed,
    Member,
    New,
    Night,
    NoAdded,
    NoLogIn,
    Once,
    OrgTime,
    Pos,
    Print,
    Quota,
    Reason,
    Reday,
    Retime,
    StartTime,
    TicketGrp,
    TicketNo,
    Time,
    TimeLastUsed,
    TotalTimeUsed,
    Username,
};

constexpr std::array<const char*, std::size_t(Field::Username) + 1> FieldNames = {"AccountAdded",
    "Amount",
    "Autorecharge",
    "ByWhom",
    "ComputerUsed",
    "DateCreated",
    "DateTimeDeleted",
    "Days",
    "EndTime",
    "Expire",
    "LastUsed",
    "Member",
    "NEW",
    "Night",
    "NoAdded",
    "NoLogIn",
    "Once",
    "OrgTime",
    "POS",
    "Print",
    "Quota",
    "Reason",
    "Reday",
    "Retime",
    "StartTime",
    "TicketGrp",
    "TicketNo",
    "Time",
    "TimeLastUsed",
    "TotalTimeUsed",
    "Username"};

QLatin1StringView nameOf(Field field)
{
    return QLatin1StringView(FieldNames[std::size_t(field)]);
}

// Where the report's fields stand in a row, and their column types. The result sets of one select
// share their field layout, so both are found by name once for a layout, not for every report.
class FieldPositions
{
public:
    static const FieldPositions& of(const Recordset& row)
    {
        thread_local FieldPositions kept;
        static const FieldPositions none;
        // Told apart by address before it is held: holding costs an atomic count. The layout held
        // stays alive, so no other layout can come at its address.
        const void* layout = row.fieldLayoutAddress();
        if (!layout)
            return none;
        if (layout != kept.m_layout.get()) {
            kept.m_layout = row.fieldLayout();
            for (std::size_t i = 0; i < FieldNames.size(); ++i) {
                kept.m_positions[i] = row.fieldIndex(nameOf(Field(i)));
                kept.m_types[i] = row.fieldType(kept.m_positions[i]);
            }
        }
        return kept;
    }

    int position(Field field) const { return m_positions[std::size_t(field)]; }
    std::optional<ColumnType> type(Field field) const { return m_types[std::size_t(field)]; }

private:
    FieldPositions() { m_positions.fill(-1); }

    std::shared_ptr<const void> m_layout;
    std::array<int, FieldNames.size()> m_positions;
    std::array<std::optional<ColumnType>, FieldNames.size()> m_types;
};

bool isWholeNumberType(ColumnType type)
{
    return type == ColumnType::Integer || type == ColumnType::Number;
}

// A stored number as its typed value reads as a double: a single keeps its 7 digits, an integer
// column's number is whole. Nothing for a field of another type or a value stored as text.
std::optional<double> storedNumber(const Cell& cell, ColumnType type)
{
    double value = 0;
    if (cell.kind == Cell::Kind::Integer)
        value = double(cell.integer);
    else if (cell.kind == Cell::Kind::Real)
        value = type == ColumnType::Integer ? double(std::llround(cell.real)) : cell.real;
    else
        return std::nullopt;
    switch (type) {
    case ColumnType::Single:
        return double(float(value));
    case ColumnType::Integer:
    case ColumnType::Number:
    case ColumnType::Double:
        return value;
    case ColumnType::Text:
    case ColumnType::Boolean:
    case ColumnType::Date:
        break;
    }
    return std::nullopt;
}

// The bytes of a report. A report fits in the room kept in place, so it is made without an
// allocation; a longer one goes on in a string.
class ReportText
{
public:
    // Kept small so that it is inlined: a caption's length is then known where it is appended.
    void append(const char* bytes, qsizetype size)
    {
        if (m_size + size <= Room && m_spill.empty()) [[likely]] {
            if (size > 0) // an empty piece may come without data
                std::memcpy(m_room + m_size, bytes, std::size_t(size));
            m_size += size;
            return;
        }
        spill(bytes, size);
    }

    QString toString() const
    {
        return m_spill.empty() ? QString::fromUtf8(m_room, m_size)
                               : QString::fromUtf8(m_spill.data(), qsizetype(m_spill.size()));
    }

private:
    [[gnu::noinline]] void spill(const char* bytes, qsizetype size)
    {
        if (m_spill.empty())
            m_spill.assign(m_room, std::size_t(m_size));
        m_spill.append(bytes, std::size_t(size));
    }

    static constexpr qsizetype Room = 2048;
    char m_room[Room];
    qsizetype m_size = 0;
    std::string m_spill;
};

// The lines of a report, built in UTF-8. A field whose stored form already is its printed text (a
// text, a whole number, a truth value, the day of a stored date) is copied from the row as the store
// holds it; any other field goes through its typed value, as the screens read fields.
class ReportLines
{
public:
    explicit ReportLines(const Recordset& row)
        : m_row(row)
        , m_positions(FieldPositions::of(row))
        , m_stored(row.storedRow())
    {
    }

    QVariant field(Field name) const
    {
        const int position = m_positions.position(name);
        return position >= 0 ? m_row.value(position) : m_row.value(nameOf(name));
    }
    // The field joined into text, as a piece of its own.
    QString textOf(Field name) const { return joined(field(name)); }

    // Starts a line with its caption; the lines are joined as they come, each after the one before
    // by CR LF.
    ReportLines& line(std::string_view caption)
    {
        if (m_lineCount++ > 0)
            add("\r\n");
        m_text.append(caption.data(), qsizetype(caption.size()));
        return *this;
    }
    template<std::size_t Size>
    ReportLines& add(const char (&literal)[Size])
    {
        m_text.append(literal, qsizetype(Size - 1));
        return *this;
    }
    ReportLines& add(const QString& piece)
    {
        const QByteArray utf8 = piece.toUtf8();
        m_text.append(utf8.constData(), utf8.size());
        return *this;
    }
    // The field joined into the line.
    ReportLines& text(Field name)
    {
        if (!addStoredText(name))
            add(textOf(name));
        return *this;
    }
    // The whole minutes of a time in seconds, then "min(s)"; a Null time gives the unit alone.
    ReportLines& minutes(Field name)
    {
        if (const std::optional<double> seconds = number(name))
            addNumber(wholeMinutes(*seconds));
        return add("min(s)");
    }
    // The day of a date field, "dd/mm/yyyy".
    ReportLines& date(Field name)
    {
        if (!addStoredDate(name))
            add(values::format(field(name), DateFormat));
        return *this;
    }

    // The field as a truth value, nothing for Null.
    std::optional<bool> truth(Field name) const
    {
        if (const auto stored = storedOf(name); stored && stored->type == ColumnType::Boolean) {
            if (stored->cell.kind == Cell::Kind::Null)
                return std::nullopt;
            if (stored->cell.kind == Cell::Kind::Integer)
                return stored->cell.integer != 0;
        }
        const QVariant value = field(name);
        return value.isNull() ? std::nullopt : std::optional(value.toBool());
    }
    // The field as a number, nothing for Null.
    std::optional<double> number(Field name) const
    {
        if (const auto stored = storedOf(name)) {
            if (stored->cell.kind == Cell::Kind::Null)
                return std::nullopt;
            if (const auto value = storedNumber(stored->cell, stored->type))
                return value;
        }
        const QVariant value = field(name);
        return value.isNull() ? std::nullopt : std::optional(value.toDouble());
    }
    bool isNull(Field name) const
    {
        const auto stored = storedOf(name);
        if (stored && stored->cell.kind == Cell::Kind::Null)
            return true;
        if (stored && stored->cell.kind == Cell::Kind::Text && stored->type == ColumnType::Text)
            return false;
        return field(name).isNull();
    }

    QString joinedLines() const { return m_text.toString(); }

private:
    struct Stored
    {
        const Cell& cell;
        ColumnType type;
    };

    std::optional<Stored> storedOf(Field name) const
    {
        const int position = m_positions.position(name);
        const std::optional<ColumnType> type = m_positions.type(name);
        if (position < 0 || std::size_t(position) >= m_stored.size() || !type)
            return std::nullopt;
        return Stored {m_stored[std::size_t(position)], *type};
    }

    bool addStoredText(Field name)
    {
        const auto stored = storedOf(name);
        if (!stored)
            return false;
        const Cell& cell = stored->cell;
        switch (cell.kind) {
        case Cell::Kind::Null:
            return true;
        case Cell::Kind::Text:
            if (stored->type != ColumnType::Text)
                return false;
            m_text.append(cell.data, qsizetype(cell.size));
            return true;
        case Cell::Kind::Integer:
            if (stored->type == ColumnType::Boolean) {
                if (cell.integer != 0)
                    add("True");
                else
                    add("False");
                return true;
            }
            if (isWholeNumberType(stored->type)) {
                addNumber(double(cell.integer));
                return true;
            }
            return false;
        case Cell::Kind::Real:
        case Cell::Kind::Blob:
            break;
        }
        return false;
    }

    bool addStoredDate(Field name)
    {
        const auto stored = storedOf(name);
        if (!stored || stored->type != ColumnType::Date)
            return false;
        if (stored->cell.kind == Cell::Kind::Null)
            return true;
        const auto day
            = stored->cell.kind == Cell::Kind::Text ? storevalue::storedMoment(stored->cell.bytes()) : std::nullopt;
        if (!day || day->year < 1000)
            return false;
        const auto put = [this](int value, int width) {
            char digits[4];
            for (int i = width - 1; i >= 0; --i, value /= 10)
                digits[i] = char('0' + value % 10);
            m_text.append(digits, width);
        };
        put(day->day, 2);
        add("/");
        put(day->month, 2);
        add("/");
        put(day->year, 4);
        return true;
    }

    // A number as the form language prints it; a whole one of up to 15 digits is its digits.
    void addNumber(double value)
    {
        if (value != std::trunc(value) || std::abs(value) >= 1e15) {
            add(values::numberText(value));
            return;
        }
        char digits[24];
        const auto written = std::to_chars(std::begin(digits), std::end(digits), qint64(value));
        m_text.append(digits, written.ptr - digits);
    }

    const Recordset& m_row;
    const FieldPositions& m_positions;
    std::span<const Cell> m_stored;
    ReportText m_text;
    int m_lineCount = 0;
};

void addLastTimeUsed(ReportLines& r)
{
    if (r.isNull(Field::TimeLastUsed) || r.truth(Field::New).value_or(false))
        r.add("NEW");
    else
        r.text(Field::TimeLastUsed);
}

void addLastDateUsed(ReportLines& r)
{
    if (r.truth(Field::New).value_or(false))
        r.add("NEW");
    else
        r.date(Field::LastUsed);
}

void addExpiry(ReportLines& r)
{
    if (r.number(Field::Days).value_or(0) > 0)
        r.text(Field::Days).add(" days after Login");
    else
        r.date(Field::Expire);
}

QString timeFrame(const ReportLines& r, const BinReportOptions& options)
{
    const GeneralNightTime general = options.nightTime();
    if (!general.used)
        return values::format(r.field(Field::StartTime), TimeFormat) + QStringLiteral(" to ")
            + values::format(r.field(Field::EndTime), TimeFormat);
    return values::format(general.begin, TimeFormat) + QStringLiteral(" to ") + values::format(general.end, TimeFormat);
}

void addGroupAndNumber(ReportLines& r)
{
    r.text(Field::TicketGrp).add(" - ").text(Field::TicketNo);
}

// The captions of the usage facts that the reports write differently: the ticket information
// screen puts one tab after each and calls the amount the cost price; the recycle bin puts two
// tabs after three of them.
struct UsageCaptions
{
    std::string_view username;
    std::string_view timeLeft;
    std::string_view amount;
};
constexpr UsageCaptions TicketInformation {"Username: \t", "Time Left: \t", "Cost Price: \t"};
constexpr UsageCaptions RecycleBinList {"Username: \t\t", "Time Left: \t\t", "Amount: \t\t"};

// The facts from "Username: " to "Computer Used: ".
void addUsage(ReportLines& r, const UsageCaptions& captions)
{
    r.line(captions.username).text(Field::Username);
    r.line(captions.timeLeft).minutes(Field::Time);
    r.line("Time Used: \t").text(Field::TotalTimeUsed).add("min(s)");
    r.line("Original Time: \t").minutes(Field::OrgTime);
    r.line(captions.amount).text(Field::Amount);
    addLastTimeUsed(r.line("Last Time Used: \t"));
    addLastDateUsed(r.line("Last Date Used: \t"));
    r.line("Date Created: \t").date(Field::DateCreated);
    addExpiry(r.line("Expire Date: \t"));
    r.line("Computer Used: \t").text(Field::ComputerUsed);
}

// "Member Account: " and the recharge schedule. The recharge time stands outside the member test:
// a ticket of any kind whose Autorecharge is not "NONE" shows it.
void addMembership(ReportLines& r)
{
    r.line("Member Account: \t").text(Field::Member);
    if (passesTest(r.truth(Field::Member))) {
        r.line("AutoRecharge: \t").text(Field::Autorecharge);
        r.line("Account Day(s): \t").text(Field::Reday);
    }
    const QVariant autorecharge = r.field(Field::Autorecharge);
    if (autorecharge.isNull() || autorecharge.toString() != QLatin1String("NONE"))
        r.line("AutoCharge Time: \t").text(Field::Retime);
}

// From "Time Ticket: " to "Quota Left: ", the same in every report.
void addKindAndQuota(ReportLines& r, const BinReportOptions& options)
{
    r.line("Time Ticket: \t").text(Field::Night);
    if (r.truth(Field::Night).value_or(false))
        r.line("Time Frame: \t").add(timeFrame(r, options));
    r.line("Used Once: \t").text(Field::Once);
    if (options.quotaLine)
        r.line("Quota Left: \t").text(Field::Quota).add("MB");
}

void addPos(ReportLines& r, const PosSellerLookup& posSeller)
{
    if (!passesTest(r.truth(Field::Pos)))
        return;
    r.line("POS/Activated By: \t");
    if (posSeller)
        r.add(posSeller(r.textOf(Field::Username)));
}

// The ticket information screen's report of an Account row: every line ends with CR LF.
QString ticketReport(ReportLines& r, const BinReportOptions& options, const PosSellerLookup& posSeller)
{
    addGroupAndNumber(r.line("TicketGrp/No: \t"));
    addUsage(r, TicketInformation);
    r.line("# of LogIn(s): \t").text(Field::NoLogIn);
    r.line("# of Print(s): \t").text(Field::Print).add(" page(s)");
    r.line("Ticket Added: \t").text(Field::AccountAdded);
    addMembership(r);
    r.line("# of Acct(s) Added: \t").text(Field::NoAdded);
    addKindAndQuota(r, options);
    r.line("Created By: \t").text(Field::ByWhom);
    addPos(r, posSeller);
    return r.joinedLines() + QStringLiteral("\r\n");
}

// The ticket information screen's report of a bin row: "page(s)" moved up a line, "Ticket Added: "
// twice, and no line end after the last line.
QString ticketInBinReport(ReportLines& r, const BinReportOptions& options, const PosSellerLookup& posSeller)
{
    addGroupAndNumber(r.line("TicketGrp&No: \t"));
    addUsage(r, TicketInformation);
    r.line("# of LogIn(s): \t").text(Field::NoLogIn).add(" page(s)");
    r.line("# of Print(s): \t").text(Field::Print);
    r.line("Ticket Added: \t").text(Field::AccountAdded);
    r.line("# of Acct(s) Added: \t").text(Field::NoAdded);
    r.line("Ticket Added: \t").text(Field::AccountAdded);
    addMembership(r);
    addKindAndQuota(r, options);
    r.line("Created By: \t").text(Field::ByWhom);
    addPos(r, posSeller);
    return r.joinedLines();
}

} // namespace

BinReportOptions BinReportOptions::read(const SessionPreferences& preferences)
{
    BinReportOptions options;
    options.quotaLine = preferences.truth(keys::Download) && preferences.text(keys::DownType) != QLatin1String("2");
    options.preferences.emplace(preferences);
    return options;
}

GeneralNightTime BinReportOptions::nightTime() const
{
    if (!preferences)
        return {};
    return {
        preferences->number(keys::UseGTime) != 0, preferences->text(keys::BeginTime), preferences->text(keys::EndTime)};
}

QString binReport(
    const Recordset& row, BinReportKind kind, const BinReportOptions& options, const PosSellerLookup& posSeller)
{
    ReportLines r(row);
    if (kind == BinReportKind::Ticket)
        return ticketReport(r, options, posSeller);
    if (kind == BinReportKind::TicketInBin)
        return ticketInBinReport(r, options, posSeller);
    if (kind == BinReportKind::ListClick) {
        r.line("Date/Time Deleted: \t").text(Field::DateTimeDeleted);
        r.line("Reason Deleted: \t").text(Field::Reason);
        r.line("TicketGrp&No: \t").text(Field::TicketGrp);
    } else {
        addGroupAndNumber(r.line("TicketGrp&No: \t"));
    }
    addUsage(r, RecycleBinList);
    r.line("Ticket Added: \t").text(Field::AccountAdded);
    r.line("# of Acct(s) Added: \t").text(Field::NoAdded);
    addKindAndQuota(r, options);
    r.line("Created By: \t").text(Field::ByWhom);
    return r.joinedLines();
}

} // namespace marlet
