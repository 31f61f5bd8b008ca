#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>

// The date rules of the form language that the screens were written in: names of months and
// weekdays, serial dates and the texts that read as a date.
namespace marlet::values {

// English names of months (1 to 12) and weekdays (1 Sunday to 7 Saturday), or their first three
// letters; "" outside the range.
QString monthName(int month, bool abbreviate = false);
QString weekdayName(int weekday, bool abbreviate = false);
// The weekday number of a date, Sunday = 1.
int weekdayNumber(const QDate& date);

// Day 0 of the form language's dates: a time of day without a date stands on this day.
QDate zeroDate();
// A date as the serial number of the form language (days since day 0, time as the fraction) and back.
// Serial numbers outside the years 100 to 9999 give an empty optional.
double toSerial(const QDateTime& value);
std::optional<QDateTime> fromSerial(double serial);

// Texts that read as a date, a time or both, as date conversion accepts them on this system:
//  - a time "h:mm" or "h:mm:ss" (hours 0 to 23), optionally followed by "AM" or "PM" (hours 1 to 12),
//    with or without a blank before it; such a time alone stands on zeroDate();
//  - a date of day, month and year in that order, separated by "/", "-", "." or blanks, the month as
//    a number or an English name or its first three letters ("05/01/2009", "5-Jan-09", "05 January
//    2009"); two-digit years 00 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999;
//  - an ISO date "yyyy-mm-dd", optionally with "T" or a blank and a time (fractions of seconds
//    dropped), as the database gives dates back as text;
//  - a date followed by a blank and a time.
// Blanks around the text are ignored. Anything else is not a date.
std::optional<QDateTime> readDate(const QString& text);
bool isDate(const QString& text);

} // namespace marlet::values
