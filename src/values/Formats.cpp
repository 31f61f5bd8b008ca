#include "values/Formats.h"

#include "values/Dates.h"
#include "values/Numbers.h"

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

QString renderDateCode(const Token& token, const QDateTime& value, bool twelveHour)
{
    const QDate date = value.date();
    const QTime time = value.time();
    const int hour = twelveHour ? (time.hour() + 11) % 12 + 1 : time.hour();
    switch (token.code) {
    case Code::Literal:
        return token.text;
    case Code::Day:
        return QString::number(date.day());
    case Code::Day2:
        return twoDigits(date.day());
    case Code::DayName:
        return weekdayName(weekdayNumber(date), true);
    case Code::DayFullName:
        return weekdayName(weekdayNumber(date));
    case Code::DateOfMachine:
        return machineDate(date);
    case Code::Weekday:
        return QString::number(weekdayNumber(date));
    case Code::Month:
        return QString::number(date.month());
    case Code::Month2:
        return twoDigits(date.month());
    case Code::MonthName:
        return monthName(date.month(), true);
    case Code::MonthFullName:
        return monthName(date.month());
    case Code::Quarter:
        return QString::number((date.month() + 2) / 3);
    case Code::DayOfYear:
        return QString::number(date.dayOfYear());
    case Code::Year2:
        return twoDigits(date.year() % 100);
    case Code::Year4:
        return QString::number(date.year());
    case Code::Hour:
        return QString::number(hour);
    case Code::Hour2:
        return twoDigits(hour);
    case Code::Minute:
        return QString::number(time.minute());
    case Code::Minute2:
        return twoDigits(time.minute());
    case Code::Second:
        return QString::number(time.second());
    case Code::Second2:
        return twoDigits(time.second());
    case Code::TimeOfMachine:
        return machineTime(time);
    case Code::General:
        return generalDate(value);
    case Code::AmPmWord:
        return time.hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM");
    case Code::AmPm:
        return halfDay(token, time.hour(), 2);
    case Code::AP:
        return halfDay(token, time.hour(), 1);
    }
    return {};
}

QString formatDateTokens(QList<Token> tokens, const QDateTime& value)
{
    resolveMinutes(tokens);
    const bool twelveHour = std::any_of(tokens.begin(), tokens.end(), [](const Token& t) {
        return t.code == Code::AmPmWord || t.code == Code::AmPm || t.code == Code::AP;
    });
    QString out;
    for (const Token& token : tokens)
        out += renderDateCode(token, value, twelveHour);
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
    const QList<Token> dateTokens = tokenizeDate(pattern);
    if (first.wholeCount + first.fractionCount == 0 && hasDateCode(dateTokens))
        return formatSerial(value, dateTokens, significant);
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
    return formatDateTokens(tokenizeDate(pattern.isEmpty() ? QStringLiteral("c") : pattern), value);
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
