#include "values/Formats.h"

#include "values/Dates.h"
#include "values/Numbers.h"

#include <QHash>
#include <QList>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace marlet::values {

namespace {

// ---- Format strings: quoted text and escapes -------------------------------------------------

// Reads the literal that starts at `pos` when it is quoted text or an escape; advances `pos`.
bool readQuoted(const QString& pattern, qsizetype& pos, QString& literal)
{
    if (pattern[pos] == u'"') {
        const qsizetype close = pattern.indexOf(u'"', pos + 1);
        const qsizetype end = close < 0 ? pattern.size() : close;
        literal = pattern.mid(pos + 1, end - pos - 1);
        pos = end + 1;
        return true;
    }
    if (pattern[pos] == u'\\') {
        literal = pattern.mid(pos + 1, 1);
        pos += 2;
        return true;
    }
    return false;
}

// ---- Dates and times -------------------------------------------------------------------------

enum class Code {
    Literal,
    Day,
    Day2,
    DayName,
    DayFullName,
    DateOfMachine,
    Weekday,
    Month,
    Month2,
    MonthName,
    MonthFullName,
    Quarter,
    DayOfYear,
    Year2,
    Year4,
    Hour,
    Hour2,
    Minute,
    Minute2,
    Second,
    Second2,
    TimeOfMachine,
    General,
    AmPmWord,
    AmPm,
    AP,
};

struct Token
{
    Code code;
    QString text;
};

struct Spelling
{
    const char16_t* text;
    Code code;
};

// Longest spellings first, so that "dddd" is not read as "dd" twice.
constexpr Spelling spellings[] = {
    {u"ddddd", Code::DateOfMachine},
    {u"dddd", Code::DayFullName},
    {u"ddd", Code::DayName},
    {u"dd", Code::Day2},
    {u"d", Code::Day},
    {u"mmmm", Code::MonthFullName},
    {u"mmm", Code::MonthName},
    {u"mm", Code::Month2},
    {u"m", Code::Month},
    {u"yyyy", Code::Year4},
    {u"yy", Code::Year2},
    {u"y", Code::DayOfYear},
    {u"hh", Code::Hour2},
    {u"h", Code::Hour},
    {u"nn", Code::Minute2},
    {u"n", Code::Minute},
    {u"ss", Code::Second2},
    {u"s", Code::Second},
    {u"ttttt", Code::TimeOfMachine},
    {u"am/pm", Code::AmPm},
    {u"ampm", Code::AmPmWord},
    {u"a/p", Code::AP},
    {u"q", Code::Quarter},
    {u"w", Code::Weekday},
    {u"c", Code::General},
};

QList<Token> tokenizeDate(const QString& pattern)
{
    QList<Token> tokens;
    qsizetype pos = 0;
    while (pos < pattern.size()) {
        QString literal;
        if (readQuoted(pattern, pos, literal)) {
            tokens.append({Code::Literal, literal});
            continue;
        }
        Token token {Code::Literal, pattern.mid(pos, 1)};
        for (const Spelling& spelling : spellings) {
            const QStringView text(spelling.text);
            if (QStringView(pattern).mid(pos, text.size()).compare(text, Qt::CaseInsensitive) == 0) {
                token = {spelling.code, pattern.mid(pos, text.size())};
                break;
            }
        }
        pos += token.text.size();
        tokens.append(token);
    }
    return tokens;
}

const Token* neighbourCode(const QList<Token>& tokens, qsizetype index, int step)
{
    for (qsizetype i = index + step; i >= 0 && i < tokens.size(); i += step) {
        if (tokens[i].code != Code::Literal)
            return &tokens[i];
    }
    return nullptr;
}

// "m" and "mm" mean minutes next to an hour (before) or a seconds code (after).
void resolveMinutes(QList<Token>& tokens)
{
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        Token& token = tokens[i];
        if (token.code != Code::Month && token.code != Code::Month2)
            continue;
        const Token* before = neighbourCode(tokens, i, -1);
        const Token* after = neighbourCode(tokens, i, 1);
        const bool afterHour = before && (before->code == Code::Hour || before->code == Code::Hour2);
        const bool beforeSeconds = after && (after->code == Code::Second || after->code == Code::Second2);
        if (afterHour || beforeSeconds)
            token.code = token.code == Code::Month ? Code::Minute : Code::Minute2;
    }
}

bool hasDateCode(const QList<Token>& tokens)
{
    return std::any_of(tokens.begin(), tokens.end(), [](const Token& t) { return t.code != Code::Literal; });
}

QString twoDigits(int value)
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

void appendTwoDigits(QString& out, int value)
{
    if (value < 0 || value > 99) {
        out += twoDigits(value);
        return;
    }
    out += QChar(u'0' + value / 10);
    out += QChar(u'0' + value % 10);
}

// The case of a code's first letter decides the case of its AM/PM letters.
QString halfDay(const Token& token, int hour, qsizetype length)
{
    const QString word = (hour < 12 ? QStringLiteral("AM") : QStringLiteral("PM")).left(length);
    return token.text.front().isLower() ? word.toLower() : word;
}

QString generalDate(const QDateTime& value)
{
    if (value.date() == zeroDate())
        return machineTime(value.time());
    const QString date = machineDate(value.date());
    return value.time() == QTime(0, 0) ? date : date + u' ' + machineTime(value.time());
}

// Appends what one code of a date pattern shows; one string grows for the whole pattern.
void appendDateCode(QString& out, const Token& token, const QDateTime& value, bool twelveHour)
{
    const QDate date = value.date();
    const QTime time = value.time();
    const int hour = twelveHour ? (time.hour() + 11) % 12 + 1 : time.hour();
    switch (token.code) {
    case Code::Literal:
        out += token.text;
        return;
    case Code::Day:
        out += QString::number(date.day());
        return;
    case Code::Day2:
        return appendTwoDigits(out, date.day());
    case Code::DayName:
        out += weekdayName(weekdayNumber(date), true);
        return;
    case Code::DayFullName:
        out += weekdayName(weekdayNumber(date));
        return;
    case Code::DateOfMachine:
        out += machineDate(date);
        return;
    case Code::Weekday:
        out += QString::number(weekdayNumber(date));
        return;
    case Code::Month:
        out += QString::number(date.month());
        return;
    case Code::Month2:
        return appendTwoDigits(out, date.month());
    case Code::MonthName:
        out += monthName(date.month(), true);
        return;
    case Code::MonthFullName:
        out += monthName(date.month());
        return;
    case Code::Quarter:
        out += QString::number((date.month() + 2) / 3);
        return;
    case Code::DayOfYear:
        out += QString::number(date.dayOfYear());
        return;
    case Code::Year2:
        return appendTwoDigits(out, date.year() % 100);
    case Code::Year4:
        out += QString::number(date.year());
        return;
    case Code::Hour:
        out += QString::number(hour);
        return;
    case Code::Hour2:
        return appendTwoDigits(out, hour);
    case Code::Minute:
        out += QString::number(time.minute());
        return;
    case Code::Minute2:
        return appendTwoDigits(out, time.minute());
    case Code::Second:
        out += QString::number(time.second());
        return;
    case Code::Second2:
        return appendTwoDigits(out, time.second());
    case Code::TimeOfMachine:
        out += machineTime(time);
        return;
    case Code::General:
        out += generalDate(value);
        return;
    case Code::AmPmWord:
        out += time.hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM");
        return;
    case Code::AmPm:
        out += halfDay(token, time.hour(), 2);
        return;
    case Code::AP:
        out += halfDay(token, time.hour(), 1);
        return;
    }
}

// The tokens of a date pattern with its minutes told from months. Listings format every row with
// the same few patterns, so each thread keeps the patterns it has read. The list is handed out as a
// shared copy: a code such as "ttttt" formats with a pattern of its own, which may empty the kept
// patterns while the caller still walks its tokens.
QList<Token> dateTokens(const QString& pattern)
{
    constexpr qsizetype keptPatterns = 64;
    thread_local QHash<QString, QList<Token>> kept;
    auto found = kept.constFind(pattern);
    if (found == kept.constEnd()) {
        if (kept.size() >= keptPatterns)
            kept.clear();
        QList<Token> tokens = tokenizeDate(pattern);
        resolveMinutes(tokens);
        found = kept.insert(pattern, tokens);
    }
    return *found;
}

QString formatDateTokens(const QList<Token>& tokens, const QDateTime& value)
{
    const bool twelveHour = std::any_of(tokens.begin(), tokens.end(), [](const Token& t) {
        return t.code == Code::AmPmWord || t.code == Code::AmPm || t.code == Code::AP;
    });
    QString out;
    out.reserve(32);
    for (const Token& token : tokens)
        appendDateCode(out, token, value, twelveHour);
    return out;
}

QString printedNumber(double value, int significant)
{
    return significant == DoubleDigits ? numberText(value) : singleText(float(value));
}

// A serial number with a date pattern; a serial beyond the calendar prints as a number.
QString formatSerial(double value, const QList<Token>& tokens, int significant)
{
    const auto at = fromSerial(value);
    if (!at)
        return printedNumber(value, significant);
    return formatDateTokens(tokens, *at);
}

// ---- Numbers ---------------------------------------------------------------------------------

QStringList splitSections(const QString& pattern)
{
    QStringList sections;
    QString current;
    qsizetype pos = 0;
    while (pos < pattern.size()) {
        const qsizetype start = pos;
        QString literal;
        if (readQuoted(pattern, pos, literal)) {
            current += pattern.mid(start, pos - start);
        } else if (pattern[pos] == u';') {
            sections.append(current);
            current.clear();
            ++pos;
        } else {
            current += pattern[pos++];
        }
    }
    sections.append(current);
    return sections;
}

enum class Part { Literal, Whole, Point, Fraction };

struct Element
{
    Part part;
    QString text; // the literal, or the placeholder character
};

struct NumberLayout
{
    QList<Element> elements;
    bool grouping = false;
    bool percent = false;
    int thousandsScale = 0;
    int wholeCount = 0;
    int fractionCount = 0;
    int firstWholeZero = -1; // the whole part prints at least the digits from its first "0" on
    int fractionZeros = 0; // the fraction prints at least the digits up to its last "0"
};

// Commas after a whole digit are separators when another whole digit follows, scaling otherwise.
NumberLayout parseNumberSection(const QString& section)
{
    NumberLayout layout;
    bool point = false;
    int pendingCommas = 0;
    qsizetype pos = 0;
    while (pos < section.size()) {
        QString literal;
        if (readQuoted(section, pos, literal)) {
            layout.elements.append({Part::Literal, literal});
            continue;
        }
        const QChar c = section[pos++];
        if ((c == u'0' || c == u'#') && !point) {
            layout.grouping = layout.grouping || pendingCommas > 0;
            pendingCommas = 0;
            if (c == u'0' && layout.firstWholeZero < 0)
                layout.firstWholeZero = layout.wholeCount;
            ++layout.wholeCount;
            layout.elements.append({Part::Whole, c});
        } else if (c == u'0' || c == u'#') {
            ++layout.fractionCount;
            if (c == u'0')
                layout.fractionZeros = layout.fractionCount;
            layout.elements.append({Part::Fraction, c});
        } else if (c == u'.' && !point) {
            point = true;
            layout.thousandsScale += pendingCommas;
            pendingCommas = 0;
            layout.elements.append({Part::Point, c});
        } else if (c == u',' && !point && layout.wholeCount > 0) {
            ++pendingCommas;
        } else {
            layout.percent = layout.percent || c == u'%';
            layout.elements.append({Part::Literal, c});
        }
    }
    layout.thousandsScale += pendingCommas;
    return layout;
}

QString grouped(const QString& digits)
{
    QString out;
    for (qsizetype i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            out += u',';
        out += digits[i];
    }
    return out;
}

// The digits that the whole placeholder number `index` prints: the placeholders take the digits
// from the right, and the first one takes every digit that is left over.
QString wholeDigitsAt(const QString& whole, int index, int count)
{
    const qsizetype offset = whole.size() - count;
    if (index == 0)
        return whole.left(qMax<qsizetype>(0, offset + 1));
    return offset + index >= 0 ? QString(whole[offset + index]) : QString();
}

QString renderNumber(const NumberLayout& layout, double magnitude, int significant)
{
    const double scaled = magnitude * (layout.percent ? 100.0 : 1.0) / std::pow(1000.0, layout.thousandsScale);
    const DecimalDigits digits = roundedDigits(scaled, layout.fractionCount, Tie::AwayFromZero, significant);
    const int minWhole = layout.firstWholeZero < 0 ? 0 : layout.wholeCount - layout.firstWholeZero;
    QString whole = digits.whole.rightJustified(minWhole, u'0');
    int wholeCount = layout.wholeCount;
    if (layout.grouping) {
        whole = grouped(whole);
        wholeCount = 1; // the separated digits stand together at the first placeholder
    }
    qsizetype fractionKept = digits.fraction.size();
    while (fractionKept > layout.fractionZeros && digits.fraction[fractionKept - 1] == u'0')
        --fractionKept;

    QString out;
    int wholeIndex = 0;
    int fractionIndex = 0;
    for (const Element& element : layout.elements) {
        switch (element.part) {
        case Part::Literal:
            out += element.text;
            break;
        case Part::Whole:
            if (wholeIndex < wholeCount)
                out += wholeDigitsAt(whole, wholeIndex, wholeCount);
            ++wholeIndex;
            break;
        case Part::Point:
            out += (layout.wholeCount == 0 ? whole : QString()) + u'.';
            break;
        case Part::Fraction:
            if (fractionIndex < fractionKept)
                out += digits.fraction[fractionIndex];
            ++fractionIndex;
            break;
        }
    }
    return out;
}

// A pattern without digit placeholders but with a date code prints the number as a serial date; a
// currency letter beside placeholders ("N#,##0") stays a literal.
QString formatNumber(double value, const QString& pattern, int significant)
{
    if (!std::isfinite(value) || pattern.isEmpty())
        return printedNumber(value, significant);
    const QStringList sections = splitSections(pattern);
    const NumberLayout first = parseNumberSection(sections.front());
    const QList<Token>& tokens = dateTokens(pattern);
    if (first.wholeCount + first.fractionCount == 0 && hasDateCode(tokens))
        return formatSerial(value, tokens, significant);
    const QString negative = sections.value(1);
    const QString zero = sections.value(2);
    if (value < 0 && !negative.isEmpty())
        return renderNumber(parseNumberSection(negative), -value, significant);
    if (value == 0 && !zero.isEmpty())
        return renderNumber(parseNumberSection(zero), 0, significant);
    const QString body = renderNumber(first, std::fabs(value), significant);
    return value < 0 ? u'-' + body : body;
}

} // namespace

QString format(const QDateTime& value, const QString& pattern)
{
    if (!value.isValid())
        return {};
    return formatDateTokens(dateTokens(pattern.isEmpty() ? QStringLiteral("c") : pattern), value);
}

QString format(const QDate& value, const QString& pattern)
{
    return value.isValid() ? format(QDateTime(value, QTime(0, 0)), pattern) : QString();
}

QString format(const QTime& value, const QString& pattern)
{
    return value.isValid() ? format(QDateTime(zeroDate(), value), pattern) : QString();
}

QString format(double value, const QString& pattern)
{
    return formatNumber(value, pattern, DoubleDigits);
}

QString formatSingle(float value, const QString& pattern)
{
    return formatNumber(double(value), pattern, SingleDigits);
}

QString format(const QString& value, const QString& pattern)
{
    if (pattern.isEmpty())
        return value;
    if (isNumeric(value))
        return format(leadingNumber(value), pattern);
    if (const auto at = readDate(value))
        return format(*at, pattern);
    return value;
}

QString format(const QVariant& value, const QString& pattern)
{
    if (!value.isValid() || value.isNull())
        return {};
    switch (value.typeId()) {
    case QMetaType::QDateTime:
        return format(value.toDateTime(), pattern);
    case QMetaType::QDate:
        return format(value.toDate(), pattern);
    case QMetaType::QTime:
        return format(value.toTime(), pattern);
    case QMetaType::Float:
        return formatSingle(value.toFloat(), pattern);
    case QMetaType::Bool:
        if (pattern.isEmpty())
            return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
        return format(value.toBool() ? -1.0 : 0.0, pattern);
    case QMetaType::Double:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return format(value.toDouble(), pattern);
    default:
        return format(value.toString(), pattern);
    }
}

QString machineDate(const QDate& date)
{
    return format(date, QStringLiteral("dd/mm/yyyy"));
}

QString machineTime(const QTime& time)
{
    return format(time, QStringLiteral("hh:mm:ss AMPM"));
}

} // namespace marlet::values
