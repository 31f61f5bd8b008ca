#include "values/Numbers.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <limits>

namespace marlet::values {

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

QStringView withoutOuterBlanks(QStringView text)
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
    if (!isNumeric(text))
        return std::nullopt;
    return toInteger<T>(leadingNumber(text));
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
    // A whole number with no more digits than are printed reads as it is: counts, minutes, days.
    if (std::fabs(value) < std::pow(10.0, significant) && std::trunc(value) == value)
        return QString::number(qint64(value));
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

} // namespace

bool isNumeric(const QString& text)
{
    const QStringView number = withoutOuterBlanks(text);
    const NumberPrefix prefix = readNumberPrefix(number);
    return prefix.length > 0 && prefix.length == number.size() && std::isfinite(prefix.value);
}

double leadingNumber(const QString& text)
{
    // Digits alone, as most stored settings are, read as they stand.
    if (!text.isEmpty() && text.size() <= 15
        && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; })) {
        double value = 0;
        for (const QChar c : text)
            value = value * 10 + (c.unicode() - u'0');
        return value;
    }
    QString packed = text;
    packed.remove(u' ').remove(u'\t').remove(u'\n');
    return readNumberPrefix(packed).value;
}

std::optional<qint16> toInt16(double value)
{
    return toInteger<qint16>(value);
}

std::optional<qint32> toInt32(double value)
{
    return toInteger<qint32>(value);
}

std::optional<qint16> toInt16(const QString& text)
{
    return toIntegerFromText<qint16>(text);
}

std::optional<qint32> toInt32(const QString& text)
{
    return toIntegerFromText<qint32>(text);
}

float toSingle(double value)
{
    return float(value);
}

double floorToWhole(double value)
{
    return std::floor(value) + 0.0;
}

double truncateToWhole(double value)
{
    return std::trunc(value) + 0.0;
}

double roundHalfEven(double value, int digits)
{
    if (!std::isfinite(value))
        return value;
    // beyond the last digit that a double can carry there is nothing left to round
    const DecimalDigits rounded = roundedDigits(value, qBound(0, digits, 400), Tie::ToEven);
    const QString text = rounded.whole + u'.' + rounded.fraction + u'0';
    const double magnitude = text.toDouble();
    return value < 0 && magnitude != 0 ? -magnitude : magnitude;
}

QString numberText(double value)
{
    return printed(value, DoubleDigits);
}

QString singleText(float value)
{
    return printed(double(value), SingleDigits);
}

QString signSpacedText(double value)
{
    QString text = numberText(value);
    if (text.startsWith(QStringLiteral("0.")) || text.startsWith(QStringLiteral("-0.")))
        text.remove(text.indexOf(u'0'), 1);
    return value < 0 ? text : u' ' + text;
}

DecimalDigits roundedDigits(double value, int decimals, Tie tie, int significant)
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

} // namespace marlet::values
