#pragma once

#include "store/Schema.h"

#include <QDateTime>
#include <QString>
#include <QStringView>
#include <QVariant>

#include <optional>
#include <string_view>

// How values are kept in the store and how they come back, by the column's declared type.
//
// Booleans are stored as -1 and 0 and read back as bool. Dates, date-times and times of day are one
// text form, "yyyy-MM-dd HH:mm:ss": a date alone stands at 00:00:00 and a time alone on 1899-12-30,
// the day 0 of the desktop store. That text sorts and compares as the values do, and two writes of the
// same date are equal (LastUsed <> DateCreated stays false for an unused ticket). Singles are kept
// apart from doubles: a single is rounded to 32 bits before it is stored and read back as float.
// Null stays Null in every type and reads back as a null QVariant.
namespace marlet::storevalue {

QString dateTimeText(const QDateTime& value);
QString dateText(const QDate& value);
QString timeText(const QTime& value);
// The stored text form back to a local date-time; also takes "yyyy-MM-dd" and a "T" separator.
std::optional<QDateTime> parseDateTime(QStringView text);
// A stored text in UTF-8 as parseDateTime reads it, in its parts: no date or local date-time is
// made, which cost a calendar conversion and a time zone lookup.
struct StoredMoment
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};
std::optional<StoredMoment> storedMoment(std::string_view text);

// A value as it is written into a column of this type, or nothing on a type mismatch (a text that
// is not a number for a number column, a number beyond a 32-bit integer, a text that is no date).
std::optional<QVariant> toStored(ColumnType type, const QVariant& value);
// A value handed to the engine for a statement: booleans become -1/0 and dates their text form.
QVariant toBindable(const QVariant& value);

// What the engine returned, typed by the column's declared type. A text that cannot be read as the
// type (something another program wrote) comes back as it is.
QVariant fromInteger(ColumnType type, qint64 value);
QVariant fromReal(ColumnType type, double value);
QVariant fromText(ColumnType type, const QString& value);
// The same for text as the engine hands it over, in UTF-8.
QVariant fromUtf8(ColumnType type, std::string_view value);
// A value in the form that toStored gives, typed back by the column's declared type.
QVariant fromStored(ColumnType type, const QVariant& stored);

} // namespace marlet::storevalue
