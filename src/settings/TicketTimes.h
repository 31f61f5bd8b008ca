#pragma once

#include <QString>
#include <QStringList>

// The night time frame and the quick-ticket choices of the ticket pages.
namespace marlet::tickettimes {

// A time of day written "H:mm" or "HH:mm" (seconds allowed) as "HH:mm"; any other text as it is.
QString formatted(const QString& text);
// What a stored begin or end time shows on loading: formatted "HH:mm" when its hours are below 24
// and its minutes below 60, "00:00" when they are not, "0:00" when it holds no ":".
QString loaded(const QString& stored);
// Whether a night time can be saved: a time of day with its ":". Blank, no ":", or hours and
// minutes out of range are refused.
bool accepted(const QString& text);

// The minutes and the costs a quick ticket is picked from: 1 to 500 by one, then 500 to 2000 by
// five, so that 500 stands in the list twice.
QStringList quickTicketChoices();

} // namespace marlet::tickettimes
