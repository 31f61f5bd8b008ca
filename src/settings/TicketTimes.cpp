#include "settings/TicketTimes.h"

#include "values/Numbers.h"

#include <algorithm>

#include <optional>

namespace marlet::tickettimes {

namespace {

struct TimeOfDay
{
    int hours = 0;
    int minutes = 0;
};

// Hours and minutes of "H:mm" or "H:mm:ss" in range; nothing for any other text.
std::optional<TimeOfDay> timeOfDay(const QString& text)
{
    const QStringList parts = text.trimmed().split(u':');
    if (parts.size() < 2 || parts.size() > 3)
        return std::nullopt;
    for (const QString& part : parts) {
        if (part.isEmpty() || part.size() > 2
            || !std::all_of(part.begin(), part.end(), [](QChar c) { return c.isDigit(); }))
            return std::nullopt;
    }
    const TimeOfDay time {parts[0].toInt(), parts[1].toInt()};
    if (time.hours > 23 || time.minutes > 59 || (parts.size() == 3 && parts[2].toInt() > 59))
        return std::nullopt;
    return time;
}

} // namespace

QString formatted(const QString& text)
{
    const std::optional<TimeOfDay> time = timeOfDay(text);
    if (!time)
        return text;
    return QStringLiteral("%1:%2").arg(time->hours, 2, 10, QChar(u'0')).arg(time->minutes, 2, 10, QChar(u'0'));
}

QString loaded(const QString& stored)
{
    const QString text = formatted(stored);
    const qsizetype colon = text.indexOf(u':');
    if (colon < 0)
        return QStringLiteral("0:00");
    const QString hours = text.left(colon);
    const QString minutes = text.mid(colon + 1);
    if (!values::isNumeric(hours) || !values::isNumeric(minutes) || values::leadingNumber(hours) >= 24
        || values::leadingNumber(minutes) >= 60)
        return QStringLiteral("00:00");
    return text;
}

bool accepted(const QString& text)
{
    return text.contains(u':') && timeOfDay(text).has_value();
}

QStringList quickTicketChoices()
{
    QStringList choices;
    for (int value = 1; value <= 500; ++value)
        choices.append(QString::number(value));
    for (int value = 500; value <= 2000; value += 5)
        choices.append(QString::number(value));
    return choices;
}

} // namespace marlet::tickettimes
