#include "platform/LegacyConvert.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>

namespace marlet::legacy {

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

int digitValue(QChar c, int radix)
{
    const char16_t u = c.toLower().unicode();
    int value = radix;
    if (u >= u'0' && u <= u'9')
        value = u - u'0';
    else if (u >= u'a' && u <= u'f')
        value = u - u'a' + 10;
    return value < radix ? value : -1;
}

// A number read from the start of a text: `length` characters were used, 0 when none form a number.
struct NumberPrefix
{
    double value = 0;
    qsizetype length = 0;
};

// "&H" or "&O" and their digits. The width of the literal decides its type, as in the form
// language: up to 16 bits it is a signed 16-bit value, up to 32 bits a signed 32-bit one.
NumberPrefix readRadixPrefix(QStringView text)
{
    if (text.size() < 3 || text[0] != u'&')
        return {};
    const QChar kind = text[1].toUpper();
    const int radix = kind == u'H' ? 16 : kind == u'O' ? 8 : 0;
    if (radix == 0)
        return {};
    qsizetype pos = 2;
    quint64 magnitude = 0;
    bool overflow = false;
    for (int d; pos < text.size() && (d = digitValue(text[pos], radix)) >= 0; ++pos) {
        magnitude = magnitude * radix + quint64(d);
        overflow = overflow || magnitude > 0xFFFFFFFFu;
    }
    if (pos == 2)
        return {};
    double value = std::numeric_limits<double>::infinity();
    if (!overflow && magnitude <= 0xFFFFu)
        value = qint16(quint16(magnitude));
    else if (!overflow)
        value = qint32(quint32(magnitude));
    return {value, pos};
}

// A decimal number that the double cannot hold: where its first significant digit stands, with the
// exponent, tells an overflow (infinite) from an underflow (0).
double convertDecimal(const QByteArray& clean)
{
    bool ok = false;
    const double value = clean.toDouble(&ok);
    if (ok)
        return value;
    const qsizetype expAt = clean.indexOf('e');
    const QByteArray mantissa = expAt < 0 ? clean : clean.left(expAt);
    qint64 exponent = 0;
    for (qsizetype i = expAt + 1; expAt >= 0 && i < clean.size(); ++i) {
        if (clean[i] >= '0' && clean[i] <= '9')
            exponent = qMin<qint64>(exponent * 10 + (clean[i] - '0'), 1000000);
    }
    if (clean.indexOf("e-") >= 0)
        exponent = -exponent;
    const qsizetype point = mantissa.contains('.') ? mantissa.indexOf('.') : mantissa.size();
    qsizetype lead = 0;
    while (lead < mantissa.size() && !(mantissa[lead] >= '1' && mantissa[lead] <= '9'))
        ++lead;
    if (lead == mantissa.size())
        return 0;
    const qint64 magnitude = (lead < point ? point - lead : point - lead + 1) + exponent;
    const double huge = std::numeric_limits<double>::infinity();
    return magnitude > 0 ? (clean.startsWith('-') ? -huge : huge) : 0.0;
}

// Sign, digits with one point, and an exponent, from the start of a text. The exponent is taken only
// when it has at least one digit: "1e" reads as 1 over one character.
NumberPrefix readDecimalPrefix(QStringView text)
{
    QByteArray clean;
    qsizetype pos = 0;
    if (pos < text.size() && (text[pos] == u'+' || text[pos] == u'-'))
        clean += char(text[pos++].unicode());
    bool point = false;
    int digits = 0;
    for (; pos < text.size(); ++pos) {
        const QChar c = text[pos];
        if (isDigit(c))
            ++digits;
        else if (c == u'.' && !point)
            point = true;
        else
            break;
        clean += char(c.unicode());
    }
    if (digits == 0)
        return {};
    if (pos < text.size() && QStringView(u"eEdD").contains(text[pos])) {
        qsizetype expPos = pos + 1;
        QByteArray exponent("e");
        if (expPos < text.size() && (text[expPos] == u'+' || text[expPos] == u'-'))
            exponent += char(text[expPos++].unicode());
        const qsizetype expDigitsStart = expPos;
        for (; expPos < text.size() && isDigit(text[expPos]); ++expPos)
            exponent += char(text[expPos].unicode());
        if (expPos > expDigitsStart) {
            clean += exponent;
            pos = expPos;
        }
    }
    return {convertDecimal(clean), pos};
}

NumberPrefix readNumberPrefix(QStringView text)
{
    const NumberPrefix radix = readRadixPrefix(text);
    return radix.length > 0 ? radix : readDecimalPrefix(text);
}

QStringView trimBlanks(QStringView text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    return text.mid(begin, end - begin);
}

// Half to even on the binary value, as the integer conversions round.
template<typename T>
std::optional<T> toInteger(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= double(std::numeric_limits<T>::min()) && rounded <= double(std::numeric_limits<T>::max())))
        return std::nullopt;
    return T(rounded);
}

template<typename T>
std::optional<T> toIntegerFromText(const QString& text)
{
    if (!IsNumeric(text))
        return std::nullopt;
    return toInteger<T>(Val(text));
}

// The significant digits of |value| (trailing zeros removed) and the power of ten of the first one.
struct Significant
{
    QString digits;
    int exponent = 0;
};

Significant significantDigits(double value, int significant)
{
    const QString text = QString::number(std::fabs(value), 'e', significant - 1);
    const qsizetype e = text.indexOf(u'e');
    QString digits = text.left(e).remove(u'.');
    while (digits.size() > 1 && digits.endsWith(u'0'))
        digits.chop(1);
    return {digits, text.mid(e + 1).toInt()};
}

QString printed(double value, int significant)
{
    if (!std::isfinite(value))
        return QString::number(value);
    if (value == 0)
        return QStringLiteral("0");
    const auto [digits, exponent] = significantDigits(value, significant);
    const qsizetype count = digits.size();
    const QString sign = value < 0 ? QStringLiteral("-") : QString();
    const bool fixed = exponent < significant && (exponent >= 0 || count - 1 - exponent <= significant);
    if (!fixed) {
        const QString mantissa = count > 1 ? digits.left(1) + u'.' + digits.mid(1) : digits;
        const QString power = QStringLiteral("%1").arg(std::abs(exponent), 2, 10, QLatin1Char('0'));
        return sign + mantissa + u'E' + (exponent < 0 ? u'-' : u'+') + power;
    }
    if (exponent < 0)
        return sign + QStringLiteral("0.") + QString(-exponent - 1, u'0') + digits;
    const QString whole = digits.left(exponent + 1).leftJustified(exponent + 1, u'0');
    const QString fraction = digits.mid(exponent + 1);
    return sign + whole + (fraction.isEmpty() ? QString() : u'.' + fraction);
}

// Adds one to a string of decimal digits.
QString incremented(QString digits)
{
    qsizetype i = digits.size() - 1;
    for (; i >= 0 && digits[i] == u'9'; --i)
        digits[i] = u'0';
    if (i < 0)
        return u'1' + digits;
    digits[i] = QChar(digits[i].unicode() + 1);
    return digits;
}

bool roundsUp(const QString& digits, qsizetype keep, Tie tie)
{
    const QChar first = digits[keep];
    if (tie == Tie::AwayFromZero || first != u'5')
        return first >= u'5';
    const bool beyondHalf = std::any_of(digits.begin() + keep + 1, digits.end(), [](QChar c) { return c != u'0'; });
    const bool previousOdd = keep > 0 && (digits[keep - 1].unicode() - u'0') % 2 == 1;
    return beyondHalf || previousOdd;
}

constexpr qint64 msecsPerDay = 86400000;

// "h:mm", "h:mm:ss", optionally "AM"/"PM"; fractions of seconds (database text) are dropped.
std::optional<QTime> readTime(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2})(?:\\.\\d+)?)?\\s*(?:([AaPp])[Mm])?$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    int hour = match.captured(1).toInt();
    const QString half = match.captured(4).toUpper();
    if (!half.isEmpty()) {
        if (hour > 12)
            return std::nullopt;
        hour = hour % 12 + (half == u"P" ? 12 : 0);
    }
    const QTime time(hour, match.captured(2).toInt(), match.captured(3).toInt());
    return time.isValid() ? std::optional<QTime>(time) : std::nullopt;
}

// A date, and when something follows it after a blank (or "T"), a time that must read as one.
std::optional<QDateTime> withTime(const QDate& date, const QString& rest)
{
    if (!date.isValid())
        return std::nullopt;
    if (rest.isEmpty())
        return QDateTime(date, QTime(0, 0));
    const auto time = readTime(rest);
    return time ? std::optional<QDateTime>(QDateTime(date, *time)) : std::nullopt;
}

std::optional<QDateTime> readIsoDate(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{4})-(\\d{1,2})-(\\d{1,2})(?:[T ]\\s*(.+))?$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QDate date(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
    return withTime(date, match.captured(4));
}

int monthOfName(const QString& name)
{
    for (int month = 1; month <= 12; ++month) {
        if (name.compare(MonthName(month), Qt::CaseInsensitive) == 0
            || name.compare(MonthName(month, true), Qt::CaseInsensitive) == 0)
            return month;
    }
    return 0;
}

// Two-digit years fall into 1930 to 2029.
int fullYear(const QString& digits)
{
    const int year = digits.toInt();
    if (digits.size() > 2)
        return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<QDateTime> readDayMonthYear(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(\\d{1,2})[/\\-.,\\s]+([A-Za-z]+|\\d{1,2})[/\\-.,\\s]+(\\d{4}|\\d{2})(?:\\s+(.+))?$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QString monthText = match.captured(2);
    const int month = monthText.front().isDigit() ? monthText.toInt() : monthOfName(monthText);
    const QDate date(fullYear(match.captured(3)), month, match.captured(1).toInt());
    return withTime(date, match.captured(4));
}

} // namespace

bool IsNumeric(const QString& text)
{
    const QStringView number = trimBlanks(text);
    const NumberPrefix prefix = readNumberPrefix(number);
    return prefix.length > 0 && prefix.length == number.size() && std::isfinite(prefix.value);
}

double Val(const QString& text)
{
    QString packed = text;
    packed.remove(u' ').remove(u'\t').remove(u'\n');
    return readNumberPrefix(packed).value;
}

std::optional<qint16> CInt(double value)
{
    return toInteger<qint16>(value);
}

std::optional<qint32> CLng(double value)
{
    return toInteger<qint32>(value);
}

std::optional<qint16> CInt(const QString& text)
{
    return toIntegerFromText<qint16>(text);
}

std::optional<qint32> CLng(const QString& text)
{
    return toIntegerFromText<qint32>(text);
}

float CSng(double value)
{
    return float(value);
}

double Int(double value)
{
    return std::floor(value) + 0.0;
}

double Fix(double value)
{
    return std::trunc(value) + 0.0;
}

double Round(double value, int digits)
{
    if (!std::isfinite(value))
        return value;
    // beyond the last digit that a double can carry there is nothing left to round
    const DecimalDigits rounded = RoundedDigits(value, qBound(0, digits, 400), Tie::ToEven);
    const QString text = rounded.whole + u'.' + rounded.fraction + u'0';
    const double magnitude = text.toDouble();
    return value < 0 && magnitude != 0 ? -magnitude : magnitude;
}

QString CStr(double value)
{
    return printed(value, DoubleDigits);
}

QString CStrSingle(float value)
{
    return printed(double(value), SingleDigits);
}

QString Str(double value)
{
    QString text = CStr(value);
    if (text.startsWith(QStringLiteral("0.")) || text.startsWith(QStringLiteral("-0.")))
        text.remove(text.indexOf(u'0'), 1);
    return value < 0 ? text : u' ' + text;
}

DecimalDigits RoundedDigits(double value, int decimals, Tie tie, int significant)
{
    if (!std::isfinite(value))
        return {};
    // scaled holds |value| * 10^decimals as whole digits, rounded at its last digit
    QString scaled = QStringLiteral("0");
    if (value != 0) {
        const auto [digits, exponent] = significantDigits(value, significant);
        const qsizetype keep = qsizetype(exponent) + 1 + decimals;
        if (keep >= digits.size())
            scaled = digits.leftJustified(keep, u'0');
        else if (keep >= 0 && roundsUp(digits, keep, tie))
            scaled = incremented(digits.left(keep));
        else if (keep > 0)
            scaled = digits.left(keep);
    }
    scaled = scaled.rightJustified(decimals + 1, u'0');
    QString whole = scaled.left(scaled.size() - decimals);
    while (whole.startsWith(u'0'))
        whole.remove(0, 1);
    return {whole, scaled.right(decimals)};
}

QString MonthName(int month, bool abbreviate)
{
    static const QStringList names = {QStringLiteral("January"),
        QStringLiteral("February"),
        QStringLiteral("March"),
        QStringLiteral("April"),
        QStringLiteral("May"),
        QStringLiteral("June"),
        QStringLiteral("July"),
        QStringLiteral("August"),
        QStringLiteral("September"),
        QStringLiteral("October"),
        QStringLiteral("November"),
        QStringLiteral("December")};
    const QString name = names.value(month - 1);
    return abbreviate ? name.left(3) : name;
}

QString WeekdayName(int weekday, bool abbreviate)
{
    static const QStringList names = {QStringLiteral("Sunday"),
        QStringLiteral("Monday"),
        QStringLiteral("Tuesday"),
        QStringLiteral("Wednesday"),
        QStringLiteral("Thursday"),
        QStringLiteral("Friday"),
        QStringLiteral("Saturday")};
    const QString name = names.value(weekday - 1);
    return abbreviate ? name.left(3) : name;
}

int Weekday(const QDate& date)
{
    return date.dayOfWeek() % 7 + 1;
}

QDate ZeroDate()
{
    return QDate(1899, 12, 30);
}

double ToSerial(const QDateTime& value)
{
    const double days = double(ZeroDate().daysTo(value.date()));
    const double fraction = value.time().msecsSinceStartOfDay() / double(msecsPerDay);
    return days < 0 ? days - fraction : days + fraction;
}

std::optional<QDateTime> FromSerial(double serial)
{
    if (!std::isfinite(serial) || std::fabs(serial) > 3.0e6)
        return std::nullopt;
    const double whole = std::trunc(serial);
    const qint64 seconds = std::llround(std::fabs(serial - whole) * 86400.0);
    const QDateTime at = QDateTime(ZeroDate().addDays(qint64(whole)), QTime(0, 0)).addSecs(seconds);
    if (at.date().year() < 100 || at.date().year() > 9999)
        return std::nullopt;
    return at;
}

std::optional<QDateTime> CDate(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (const auto time = readTime(trimmed))
        return QDateTime(ZeroDate(), *time);
    for (const auto& read : {readIsoDate, readDayMonthYear}) {
        if (const auto at = read(trimmed))
            return at;
    }
    return std::nullopt;
}

bool IsDate(const QString& text)
{
    return CDate(text).has_value();
}

QString Mid(const QString& text, int start, int length)
{
    const qsizetype from = qMax(start, 1) - 1;
    return from >= text.size() ? QString() : text.mid(from, length < 0 ? -1 : length);
}

int InStr(const QString& text, const QString& sought)
{
    return InStr(1, text, sought);
}

int InStr(int start, const QString& text, const QString& sought)
{
    const qsizetype from = qMax(start, 1);
    if (text.isEmpty() || from > text.size())
        return 0;
    if (sought.isEmpty())
        return int(from);
    return int(text.indexOf(sought, from - 1) + 1);
}

QString Trim(const QString& text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.mid(begin, end - begin);
}

} // namespace marlet::legacy
