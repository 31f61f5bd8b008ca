#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>
#include <QVariant>

// The format function of the desktop form language, with the codes that the screens use to print
// dates, times and numbers into lists, reports, stored texts and messages.
namespace marlet::values {

// Dates and times. The codes, matched without regard to case:
//   d dd          day of month, without and with a leading zero
//   ddd dddd      "Mon", "Monday"
//   ddddd         the machine's date (machineDate)
//   w             weekday number, Sunday = 1
//   m mm          month, without and with a leading zero; minutes instead when directly after an hour
//                 code (literals such as ":" between them do not count) or directly before a seconds
//                 code: "hh:mm", "HH:MM" and "mm:ss" show minutes
//   mmm mmmm      "Jan", "January"
//   q             quarter 1 to 4
//   y             day of the year
//   yy yyyy       year in two and in four digits
//   h hh          hour, without and with a leading zero; 12-hour clock when the format holds an
//                 AM/PM code (0 and 12 show as 12)
//   n nn, s ss    minutes and seconds, without and with a leading zero
//   ttttt         the machine's time (machineTime)
//   c             the machine's date, then a blank and the machine's time; the date is left out on
//                 zeroDate(), the time at midnight of any other day
//   AMPM          "AM" or "PM" whatever its case; AM/PM and A/P print their letters in the case of
//                 the code's first letter: "AM"/"PM", "am"/"pm", "A"/"P", "a"/"p"
// Text between double quotes and a character after a backslash stand as written; every other
// character ("/", ":", "-", ",", blanks, other letters) is copied. Codes are read longest first:
// "yyy" is "yy" then "y". An empty format prints as "c". A time alone stands on zeroDate(), a date
// alone at midnight. An invalid value (a null field) prints as "".
QString format(const QDateTime& value, const QString& pattern);
QString format(const QDate& value, const QString& pattern);
QString format(const QTime& value, const QString& pattern);

// Numbers. Up to three sections separated by ";": positive and zero; negative (printed from the
// magnitude, without a sign); zero (used only for an exact 0). An empty section takes the first one.
// In a section:
//   0   a digit, printed even when it is a leading or trailing zero
//   #   a digit, left out when it is a leading zero of the whole part or a trailing zero of the
//       fraction
//   .   the decimal point; it is printed even when no digit follows it (format(5, "#.##") = "5.")
//   ,   between digit placeholders of the whole part: thousands separators; directly after the last
//       one (before the point or at the end): divides by 1000
//   %   multiplies by 100 and prints "%"
// The value is rounded to the fraction's placeholders half away from zero, on its 15 significant
// digits (format(2.5, "0") = "3", format(0.125, "0.00") = "0.13"). The whole part shows all its
// digits: a longer number than the placeholders fills in at the first one ("00" prints 123 as
// "123"). The minimum width of the whole part counts from its first "0" placeholder. A negative value
// with one section gets a "-" before everything, even when it rounds to zero: format(-0.4, "0") =
// "-0", as the form language prints it. Quoted text, backslash escapes and all other characters are copied.
// A format whose first section has no digit placeholder but a date or time code formats the number
// as a serial date (toSerial); beside placeholders, code letters are copied ("N#,##0" prints "N5,000"). An empty
// format prints as numberText. Infinite and undefined values print as numberText does.
QString format(double value, const QString& pattern);
// The same for a single-precision number, which reads with 7 significant digits.
QString formatSingle(float value, const QString& pattern);

// A text is formatted as what it converts to: a number if isNumeric, else a date or time if readDate
// reads it; any other text is returned unchanged. format("6:00", "HH:mm") = "06:00".
QString format(const QString& value, const QString& pattern);

// A field's value: null prints as ""; dates, times, numbers and texts as above; a boolean as the
// form language holds it, -1 or 0, with "True" or "False" for an empty format.
QString format(const QVariant& value, const QString& pattern);

// The machine's date and time formats, fixed on this system so that stored texts are reproducible:
// date "dd/mm/yyyy" (05/01/2009) and time "hh:mm:ss AMPM" (01:05:03 PM).
QString machineDate(const QDate& date);
QString machineTime(const QTime& time);

} // namespace marlet::values
