#include "store/StoreValue.h"

#include "values/Dates.h"
#include "values/Numbers.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace marlet::storevalue {

namespace {

bool isWholeNumberType(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

bool isFractionType(const QVariant& value)
{
    return value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float;
}

// The number a value stands for when a number is expected: booleans count as -1/0, texts must be
// numeric as the form language tests it.
std::optional<double> numberOf(const QVariant& value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? -1.0 : 0.0;
    if (isWholeNumberType(value) || isFractionType(value))
        return value.toDouble();
    if (value.typeId() == QMetaType::QString && values::isNumeric(value.toString()))
        return values::leadingNumber(value.toString());
    return std::nullopt;
}

std::optional<bool> truthOf(const QVariant& value)
{
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString().trimmed();
        if (text.compare(u"True", Qt::CaseInsensitive) == 0)
            return true;
        if (text.compare(u"False", Qt::CaseInsensitive) == 0)
            return false;
    }
    const auto number = numberOf(value);
    return number ? std::optional<bool>(*number != 0) : std::nullopt;
}

// The stored text of a value given for a date column. Dates and times are written out directly:
// a local QDateTime costs a time zone lookup.
std::optional<QString> dateTextOf(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QDateTime:
        return value.toDateTime().isValid() ? std::optional(dateTimeText(value.toDateTime())) : std::nullopt;
    case QMetaType::QDate:
        return value.toDate().isValid() ? std::optional(dateText(value.toDate())) : std::nullopt;
    case QMetaType::QTime:
        return value.toTime().isValid() ? std::optional(timeText(value.toTime())) : std::nullopt;
    case QMetaType::QString:
        if (const auto date = values::readDate(value.toString()))
            return dateTimeText(*date);
        return std::nullopt;
    case QMetaType::Bool:
        return std::nullopt;
    default:
        if (const auto serial = numberOf(value)) {
            if (const auto date = values::fromSerial(*serial))
                return dateTimeText(*date);
        }
        return std::nullopt;
    }
}

QVariant numberValue(double value)
{
    // Whole values stay whole, as the engine would keep them in a numeric column.
    if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < 9.0e15)
        return QVariant(qint64(value));
    return QVariant(value);
}

QString textOf(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::Double:
        return values::numberText(value.toDouble());
    case QMetaType::Float:
        return values::singleText(value.toFloat());
    case QMetaType::QDateTime:
    case QMetaType::QDate:
    case QMetaType::QTime:
        return dateTextOf(value).value_or(QString());
    case QMetaType::QByteArray:
        return QString::fromUtf8(value.toByteArray());
    default:
        return value.toString();
    }
}

char16_t codeOf(QChar c)
{
    return c.unicode();
}

char16_t codeOf(char c)
{
    return char16_t(uchar(c));
}

template<typename Text>
int digits(Text text, qsizetype from, qsizetype count)
{
    int result = 0;
    for (qsizetype i = from; i < from + count; ++i) {
        const char16_t c = codeOf(text[i]);
        if (c < u'0' || c > u'9')
            return -1;
        result = result * 10 + (c - u'0');
    }
    return result;
}

// The stored form read by hand, in UTF-16 or in the UTF-8 that the engine hands over: it is the one
// path every date of a large listing takes. A date alone stands at midnight.
template<typename Text>
std::optional<StoredMoment> parseStored(Text text)
{
    const auto at = [&text](qsizetype i) { return codeOf(text[i]); };
    if (text.size() != 10 && text.size() != 19)
        return std::nullopt;
    if (at(4) != u'-' || at(7) != u'-')
        return std::nullopt;
    StoredMoment moment {digits(text, 0, 4), digits(text, 5, 2), digits(text, 8, 2)};
    if (!QDate::isValid(moment.year, moment.month, moment.day))
        return std::nullopt;
    if (text.size() == 10)
        return moment;
    if ((at(10) != u' ' && at(10) != u'T') || at(13) != u':' || at(16) != u':')
        return std::nullopt;
    moment.hour = digits(text, 11, 2);
    moment.minute = digits(text, 14, 2);
    moment.second = digits(text, 17, 2);
    if (!QTime::isValid(moment.hour, moment.minute, moment.second))
        return std::nullopt;
    return moment;
}

// A local date-time costs a time zone lookup (a file status call) each time it is made, and a
// listing repeats a few distinct dates over and over: recent texts keep their value.
class DateCache
{
public:
    std::optional<QDateTime> parse(std::string_view text)
    {
        if (text.size() > maxText)
            return parseDateTime(QString::fromUtf8(text.data(), qsizetype(text.size())));
        Slot& slot = m_slots[std::hash<std::string_view>()(text) % slotCount];
        if (slot.size != text.size() || std::string_view(slot.text, slot.size) != text) {
            slot.value = parseDateTime(QString::fromUtf8(text.data(), qsizetype(text.size())));
            std::copy(text.begin(), text.end(), slot.text);
            slot.size = text.size();
        }
        return slot.value;
    }

private:
    static constexpr std::size_t maxText = 19;
    static constexpr std::size_t slotCount = 64;
    struct Slot
    {
        char text[maxText] = {};
        std::size_t size = maxText + 1;
        std::optional<QDateTime> value;
    };
    Slot m_slots[slotCount];
};

} // namespace

namespace {

// "yyyy-MM-dd HH:mm:ss" written by hand: every ticket stores four dates, and a formatted toString
// reads its pattern each time. Years outside 1 to 9999 take Qt's own form.
std::optional<QString> storedText(QDate date, QTime time)
{
    const int year = date.year();
    if (year < 1 || year > 9999)
        return std::nullopt;
    char16_t text[19];
    const auto put = [&text](int at, int value, int width) {
        for (int i = width - 1; i >= 0; --i, value /= 10)
            text[at + i] = char16_t(u'0' + value % 10);
    };
    put(0, year, 4);
    text[4] = u'-';
    put(5, date.month(), 2);
    text[7] = u'-';
    put(8, date.day(), 2);
    text[10] = u' ';
    put(11, time.hour(), 2);
    text[13] = u':';
    put(14, time.minute(), 2);
    text[16] = u':';
    put(17, time.second(), 2);
    return QString(reinterpret_cast<const QChar*>(text), 19);
}

} // namespace

QString dateTimeText(const QDateTime& value)
{
    if (auto text = storedText(value.date(), value.time()))
        return *text;
    return value.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString dateText(const QDate& value)
{
    if (auto text = storedText(value, QTime(0, 0)))
        return *text;
    return value.toString(QStringLiteral("yyyy-MM-dd")) + QStringLiteral(" 00:00:00");
}

QString timeText(const QTime& value)
{
    return values::zeroDate().toString(QStringLiteral("yyyy-MM-dd ")) + value.toString(QStringLiteral("HH:mm:ss"));
}

std::optional<QDateTime> parseDateTime(QStringView text)
{
    const auto moment = parseStored(text);
    if (!moment)
        return std::nullopt;
    return QDateTime(
        QDate(moment->year, moment->month, moment->day), QTime(moment->hour, moment->minute, moment->second));
}

std::optional<StoredMoment> storedMoment(std::string_view text)
{
    return parseStored(text);
}

std::optional<QVariant> toStored(ColumnType type, const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return QVariant();
    switch (type) {
    case ColumnType::Text:
        return QVariant(textOf(value));
    case ColumnType::Boolean: {
        const auto truth = truthOf(value);
        return truth ? std::optional<QVariant>(qint64(*truth ? -1 : 0)) : std::nullopt;
    }
    case ColumnType::Integer: {
        const auto number = numberOf(value);
        const auto whole = number ? values::toInt32(*number) : std::nullopt;
        return whole ? std::optional<QVariant>(qint64(*whole)) : std::nullopt;
    }
    case ColumnType::Single: {
        const auto number = numberOf(value);
        if (!number || !std::isfinite(values::toSingle(*number)))
            return std::nullopt;
        return QVariant(double(values::toSingle(*number)));
    }
    case ColumnType::Double: {
        const auto number = numberOf(value);
        return number && std::isfinite(*number) ? std::optional<QVariant>(*number) : std::nullopt;
    }
    case ColumnType::Number: {
        if (isWholeNumberType(value))
            return QVariant(value.toLongLong());
        const auto number = numberOf(value);
        return number && std::isfinite(*number) ? std::optional<QVariant>(numberValue(*number)) : std::nullopt;
    }
    case ColumnType::Date: {
        const auto text = dateTextOf(value);
        return text ? std::optional<QVariant>(*text) : std::nullopt;
    }
    }
    return std::nullopt;
}

QVariant toBindable(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return QVariant(qint64(value.toBool() ? -1 : 0));
    case QMetaType::QDateTime:
    case QMetaType::QDate:
    case QMetaType::QTime:
        return QVariant(dateTextOf(value).value_or(QString()));
    default:
        return value;
    }
}

QVariant fromInteger(ColumnType type, qint64 value)
{
    switch (type) {
    case ColumnType::Text:
        return QVariant(QString::number(value));
    case ColumnType::Boolean:
        return QVariant(value != 0);
    case ColumnType::Single:
        return QVariant(float(value));
    case ColumnType::Double:
        return QVariant(double(value));
    case ColumnType::Date:
        if (const auto date = values::fromSerial(double(value)))
            return QVariant(*date);
        return QVariant(value);
    case ColumnType::Integer:
    case ColumnType::Number:
        break;
    }
    return QVariant(value);
}

QVariant fromReal(ColumnType type, double value)
{
    switch (type) {
    case ColumnType::Text:
        return QVariant(values::numberText(value));
    case ColumnType::Boolean:
        return QVariant(value != 0);
    case ColumnType::Integer:
        return QVariant(qint64(std::llround(value)));
    case ColumnType::Single:
        return QVariant(float(value));
    case ColumnType::Date:
        if (const auto date = values::fromSerial(value))
            return QVariant(*date);
        return QVariant(value);
    case ColumnType::Double:
    case ColumnType::Number:
        break;
    }
    return QVariant(value);
}

QVariant fromText(ColumnType type, const QString& value)
{
    if (type == ColumnType::Text)
        return QVariant(value);
    if (type == ColumnType::Date) {
        if (const auto date = parseDateTime(value))
            return QVariant(*date);
        if (const auto date = values::readDate(value))
            return QVariant(*date);
        return QVariant(value);
    }
    if (type == ColumnType::Boolean) {
        const auto truth = truthOf(QVariant(value));
        return truth ? QVariant(*truth) : QVariant(value);
    }
    if (!values::isNumeric(value))
        return QVariant(value);
    const double number = values::leadingNumber(value);
    return type == ColumnType::Number ? numberValue(number) : fromReal(type, number);
}

QVariant fromUtf8(ColumnType type, std::string_view value)
{
    if (type == ColumnType::Date) {
        thread_local DateCache cache;
        if (const auto date = cache.parse(value))
            return QVariant(*date);
    }
    return fromText(type, QString::fromUtf8(value.data(), qsizetype(value.size())));
}

QVariant fromStored(ColumnType type, const QVariant& stored)
{
    switch (stored.typeId()) {
    case QMetaType::LongLong:
        return fromInteger(type, stored.toLongLong());
    case QMetaType::Double:
        return fromReal(type, stored.toDouble());
    case QMetaType::QString:
        return fromText(type, stored.toString());
    default:
        return QVariant();
    }
}

} // namespace marlet::storevalue
