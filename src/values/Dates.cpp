#include "values/Dates.h"

#include <QRegularExpression>
#include <QStringList>

#include <cmath>

namespace marlet::values {

namespace {

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
        if (name.compare(monthName(month), Qt::CaseInsensitive) == 0
            || name.compare(monthName(month, true), Qt::CaseInsensitive) == 0)
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

QString monthName(int month, bool abbreviate)
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

QString weekdayName(int weekday, bool abbreviate)
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

int weekdayNumber(const QDate& date)
{
    return date.dayOfWeek() % 7 + 1;
}

QDate zeroDate()
{
    return QDate(1899, 12, 30);
}

double toSerial(const QDateTime& value)
{
    const double days = double(zeroDate().daysTo(value.date()));
    const double fraction = value.time().msecsSinceStartOfDay() / double(msecsPerDay);
    return days < 0 ? days - fraction : days + fraction;
}

std::optional<QDateTime> fromSerial(double serial)
{
    if (!std::isfinite(serial) || std::fabs(serial) > 3.0e6)
        return std::nullopt;
    const double whole = std::trunc(serial);
    const qint64 seconds = std::llround(std::fabs(serial - whole) * 86400.0);
    const QDateTime at = QDateTime(zeroDate().addDays(qint64(whole)), QTime(0, 0)).addSecs(seconds);
    if (at.date().year() < 100 || at.date().year() > 9999)
        return std::nullopt;
    return at;
}

std::optional<QDateTime> readDate(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (const auto time = readTime(trimmed))
        return QDateTime(zeroDate(), *time);
    for (const auto& read : {readIsoDate, readDayMonthYear}) {
        if (const auto at = read(trimmed))
            return at;
    }
    return std::nullopt;
}

bool isDate(const QString& text)
{
    return readDate(text).has_value();
}

} // namespace marlet::values
