#include "issuing/TicketRules.h"

#include "store/PreferenceKeys.h"
#include "values/Numbers.h"

namespace marlet {

QString ticketGroupNumber(const QDateTime& now)
{
    return now.toString(QStringLiteral("yyMMddHHmmss"));
}

QString ticketNumberText(int position)
{
    if (position < 10)
        return QStringLiteral("00") + QString::number(position);
    if (position < 100)
        return QStringLiteral("0") + QString::number(position);
    return QString::number(position);
}

double creditSeconds(double hours, double minutes)
{
    return (hours * 60 + minutes) * 60;
}

double creditMinutes(double seconds)
{
    return seconds / 60;
}

double wholeMinutes(double seconds)
{
    return values::floorToWhole(creditMinutes(seconds));
}

QString ticketAmount(const QString& currency, const QString& price)
{
    return (currency.left(3) + price).toUpper();
}

QString ticketAmount(const SessionPreferences& preferences, const QString& price)
{
    return ticketAmount(preferences.text(keys::Currency), price);
}

QString priceText(const SessionPreferences& preferences, const QString& price)
{
    return preferences.text(keys::Currency) + price;
}

bool clientSeparationOn(const SessionPreferences& preferences)
{
    return preferences.number(keys::SelClientP) == 1 || preferences.number(keys::SelClient) == 1;
}

} // namespace marlet
