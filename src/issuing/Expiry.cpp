#include "issuing/Expiry.h"

#include "store/PreferenceKeys.h"
#include "values/Dates.h"
#include "values/Formats.h"
#include "values/Numbers.h"

namespace marlet {

namespace {

constexpr double MaxFieldDays = 365;

} // namespace

ExpiryKind expiryKind(int listIndex)
{
    switch (listIndex) {
    case 0:
        return ExpiryKind::Fixed;
    case 1:
        return ExpiryKind::Flexible;
    default:
        return ExpiryKind::Never;
    }
}

ExpiryColumns expiryColumns(ExpiryKind kind, double fieldDays, const QDate& today, TicketPath path)
{
    switch (kind) {
    case ExpiryKind::Fixed:
        return {true, daysAfter(today, fieldDays), 0};
    case ExpiryKind::Flexible:
        return {path != TicketPath::Batch, QVariant(), fieldDays > 0 ? fieldDays : 1};
    case ExpiryKind::Never:
        break;
    }
    return {true, QVariant(), 0};
}

QVariant daysAfter(const QDate& day, double days)
{
    const std::optional<QDateTime> date = values::fromSerial(values::toSerial(QDateTime(day, QTime(0, 0))) + days);
    return date ? QVariant(*date) : QVariant();
}

QString expiryListText(const QVariant& days, const QVariant& expire)
{
    if (days.isNull())
        return QStringLiteral("day(s)");
    bool numeric = false;
    const double value = days.toDouble(&numeric);
    // A Days text that is no number fails the comparison, and a failed test counts as true.
    if (!numeric || value == 0)
        return values::format(expire, QStringLiteral("dd/mmm/yy"));
    return values::format(days, QString()) + QStringLiteral("day(s)");
}

QString expiryConfirmationText(
    const SessionPreferences& preferences, ExpiryKind kind, const QString& daysField, const QDate& today)
{
    switch (kind) {
    case ExpiryKind::Fixed:
        return values::format(daysAfter(today, preferences.number(keys::Expire)), QStringLiteral("dd, mmm yyyy"));
    case ExpiryKind::Flexible:
        return daysField + QStringLiteral(" days");
    case ExpiryKind::Never:
        break;
    }
    return QStringLiteral("NONE");
}

DaysFieldResult leaveDaysField(SessionPreferences& preferences, int listIndex, const QString& text)
{
    if (!values::isNumeric(text))
        return {QString(DaysFieldResetText), QStringLiteral("Non numeric entry!")};
    if (values::leadingNumber(text) > MaxFieldDays)
        return {QString(DaysFieldResetText), QStringLiteral("Value should not be greater than 365 days!")};
    preferences.save(expiryKind(listIndex) == ExpiryKind::Fixed ? keys::Expire : keys::ExLog, text);
    return {text, std::nullopt};
}

} // namespace marlet
