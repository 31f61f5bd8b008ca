#include "values/Formats.h"

#include "values/Dates.h"
#include "values/Numbers.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <limits>
#include <thread>

using namespace marlet::values;
using namespace Qt::StringLiterals;

class TestFormats : public QObject
{
    Q_OBJECT

private slots:
    void testFormatDateTime_data();
    void testFormatDateTime();
    void testFormatDate_data();
    void testFormatDate();
    void testFormatTime_data();
    void testFormatTime();
    void testFormatNumber_data();
    void testFormatNumber();
    void testFormatSingle_data();
    void testFormatSingle();
    void testFormatText_data();
    void testFormatText();
    void testFormatVariant_data();
    void testFormatVariant();
    void testMachineDateAndTime_data();
    void testMachineDateAndTime();
    void testRandomFormatsKeepTheInvariants();
    void testAPatternThatFormatsWithAnotherSurvivesAFullPatternCache();
};

namespace {

QDateTime at(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second));
}

} // namespace

void TestFormats::testFormatDateTime_data()
{
    QTest::addColumn<QDateTime>("value");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");

    const QDateTime jan5 = at(2009, 1, 5);
    QTest::newRow("expiry in lists") << jan5 << u"dd/mmm/yy"_s << u"05/Jan/09"_s;
    QTest::newRow("expiry on the member page") << jan5 << u"dd-mmmm-yyyy"_s << u"05-January-2009"_s;
    QTest::newRow("expiry in the member list") << jan5 << u"dd-mmmm-yy"_s << u"05-January-09"_s;
    QTest::newRow("expiry in the confirmation") << jan5 << u"dd, mmm yyyy"_s << u"05, Jan 2009"_s;
    QTest::newRow("expiry in the recharge question") << jan5 << u"dd/mmm/yyyy"_s << u"05/Jan/2009"_s;
    QTest::newRow("date of a group") << jan5 << u"dd/mm/yy"_s << u"05/01/09"_s;
    QTest::newRow("last date used") << jan5 << u"dd/mm/yyyy"_s << u"05/01/2009"_s;
    QTest::newRow("printing date with upper-case month") << jan5 << u"dd-MMM-yy"_s << u"05-Jan-09"_s;
    QTest::newRow("upper-case day, month and year") << jan5 << u"DD/MM/YYYY"_s << u"05/01/2009"_s;
    QTest::newRow("day and month without leading zeros") << jan5 << u"d/m/yy"_s << u"5/1/09"_s;
    QTest::newRow("day names") << jan5 << u"ddd dddd"_s << u"Mon Monday"_s;
    QTest::newRow("the machine date code") << jan5 << u"ddddd"_s << u"05/01/2009"_s;
    QTest::newRow("three y are two-digit year and day of year") << jan5 << u"yyy"_s << u"095"_s;
    QTest::newRow("weekday number of a Monday") << jan5 << u"w"_s << u"2"_s;
    QTest::newRow("general date at midnight has no time") << jan5 << u"c"_s << u"05/01/2009"_s;
    QTest::newRow("empty format at midnight") << jan5 << QString() << u"05/01/2009"_s;

    const QDateTime afternoon = at(2009, 1, 5, 13, 5, 9);
    QTest::newRow("time frame on a ticket") << afternoon << u"hh:mmAMPM"_s << u"01:05PM"_s;
    QTest::newRow("member print-out stamp") << afternoon << u"hh:mm AMPM dd/mmm/yyyy"_s << u"01:05 PM 05/Jan/2009"_s;
    QTest::newRow("24-hour time") << afternoon << u"HH:mm"_s << u"13:05"_s;
    QTest::newRow("minutes written as MM after HH") << afternoon << u"HH:MM"_s << u"13:05"_s;
    QTest::newRow("minutes before seconds") << afternoon << u"mm:ss"_s << u"05:09"_s;
    QTest::newRow("hour code alone is 24-hour") << afternoon << u"hh"_s << u"13"_s;
    QTest::newRow("lower-case am/pm") << afternoon << u"h:nn am/pm"_s << u"1:05 pm"_s;
    QTest::newRow("upper-case AM/PM") << afternoon << u"h:mm AM/PM"_s << u"1:05 PM"_s;
    QTest::newRow("upper-case A/P") << afternoon << u"h:nn A/P"_s << u"1:05 P"_s;
    QTest::newRow("lower-case a/p") << afternoon << u"h:nn a/p"_s << u"1:05 p"_s;
    QTest::newRow("lower-case ampm prints upper case") << afternoon << u"h:nnampm"_s << u"1:05PM"_s;
    QTest::newRow("seconds without a leading zero") << afternoon << u"n:s"_s << u"5:9"_s;
    QTest::newRow("the machine time code") << afternoon << u"ttttt"_s << u"01:05:09 PM"_s;
    QTest::newRow("general date with a time") << afternoon << u"c"_s << u"05/01/2009 01:05:09 PM"_s;
    QTest::newRow("empty format with a time") << afternoon << QString() << u"05/01/2009 01:05:09 PM"_s;
    QTest::newRow("month after a date code stays a month") << afternoon << u"dd/mm/yy hh:mm"_s << u"05/01/09 13:05"_s;
    QTest::newRow("deletion stamp") << at(2026, 11, 15, 18, 35) << u"dd/mm/yy/HH:mm"_s << u"15/11/26/18:35"_s;

    QTest::newRow("a morning time") << at(2009, 1, 5, 9, 7) << u"HH:mm"_s << u"09:07"_s;
    QTest::newRow("a morning hour without a leading zero") << at(2009, 1, 5, 9, 7) << u"H:mm"_s << u"9:07"_s;
    QTest::newRow("midnight on the 12-hour clock") << at(2009, 1, 5, 0, 0) << u"hh:mmAMPM"_s << u"12:00AM"_s;
    QTest::newRow("noon on the 12-hour clock") << at(2009, 1, 5, 12, 0) << u"hh:mmAMPM"_s << u"12:00PM"_s;
    QTest::newRow("midnight on the 24-hour clock") << at(2009, 1, 5, 0, 0) << u"HH:mm"_s << u"00:00"_s;
    QTest::newRow("last second of the day") << at(2009, 1, 5, 23, 59, 59) << u"hh:nn:ss AMPM"_s << u"11:59:59 PM"_s;

    const QDateTime group = at(2024, 3, 15, 9, 7, 3);
    QTest::newRow("group number with n for minutes") << group << u"yymmddhhnnss"_s << u"240315090703"_s;
    QTest::newRow("group number with m for minutes") << group << u"yymmddhhmmss"_s << u"240315090703"_s;
    QTest::newRow("quarter") << group << u"q"_s << u"1"_s;

    const QDateTime leapDay = at(2024, 2, 29);
    QTest::newRow("leap day") << leapDay << u"dd/mm/yyyy"_s << u"29/02/2024"_s;
    QTest::newRow("leap day is day 60") << leapDay << u"y"_s << u"60"_s;
    QTest::newRow("leap day is a Thursday") << leapDay << u"dddd w"_s << u"Thursday 5"_s;
    QTest::newRow("last year of the old century") << at(1999, 12, 31) << u"dd/mm/yy"_s << u"31/12/99"_s;
    QTest::newRow("first year of the new century") << at(2000, 1, 1) << u"dd/mm/yy"_s << u"01/01/00"_s;
    QTest::newRow("year 1930 in two digits") << at(1930, 6, 1) << u"yy"_s << u"30"_s;

    QTest::newRow("quoted text stands as written") << jan5 << u"dd \"of\" mmmm"_s << u"05 of January"_s;
    QTest::newRow("escaped letters stand as written") << jan5 << u"\\d\\a\\y d"_s << u"day 5"_s;
    QTest::newRow("an escape before a code letter") << jan5 << u"yyyy\\mm"_s << u"2009m1"_s;
    QTest::newRow("an unclosed quote runs to the end") << jan5 << u"d \"mm"_s << u"5 mm"_s;
    QTest::newRow("other letters are copied") << jan5 << u"dd x"_s << u"05 x"_s;
    QTest::newRow("a format without codes is copied") << jan5 << u"-/-, :"_s << u"-/-, :"_s;
    QTest::newRow("an invalid value prints nothing") << QDateTime() << u"dd/mm/yy"_s << QString();
}

void TestFormats::testFormatDateTime()
{
    QFETCH(QDateTime, value);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(format(value, pattern), text);
}

void TestFormats::testFormatDate_data()
{
    QTest::addColumn<QDate>("value");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");

    QTest::newRow("a date in a list") << QDate(2009, 1, 5) << u"dd/mmm/yy"_s << u"05/Jan/09"_s;
    QTest::newRow("a date has no time") << QDate(2009, 1, 5) << u"hh:mmAMPM"_s << u"12:00AM"_s;
    QTest::newRow("a date with an empty format") << QDate(2024, 2, 29) << QString() << u"29/02/2024"_s;
    QTest::newRow("a null date prints nothing") << QDate() << u"dd/mmm/yy"_s << QString();
}

void TestFormats::testFormatDate()
{
    QFETCH(QDate, value);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(format(value, pattern), text);
}

void TestFormats::testFormatTime_data()
{
    QTest::addColumn<QTime>("value");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");

    QTest::newRow("night start") << QTime(6, 0) << u"HH:mm"_s << u"06:00"_s;
    QTest::newRow("night start on the 12-hour clock") << QTime(0, 0) << u"hh:mmAMPM"_s << u"12:00AM"_s;
    QTest::newRow("a time stands on day zero") << QTime(6, 0) << u"dd/mm/yyyy"_s << u"30/12/1899"_s;
    QTest::newRow("a time with an empty format") << QTime(13, 5, 3) << QString() << u"01:05:03 PM"_s;
    QTest::newRow("midnight with an empty format") << QTime(0, 0) << QString() << u"12:00:00 AM"_s;
    QTest::newRow("a null time prints nothing") << QTime() << u"HH:mm"_s << QString();
}

void TestFormats::testFormatTime()
{
    QFETCH(QTime, value);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(format(value, pattern), text);
}

void TestFormats::testFormatNumber_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");

    QTest::newRow("drive bits") << 67108863.0 << u"#0"_s << u"67108863"_s;
    QTest::newRow("no drives") << 0.0 << u"#0"_s << u"0"_s;
    QTest::newRow("a fraction rounds in #0") << 4.5 << u"#0"_s << u"5"_s;
    QTest::newRow("ticket number") << 12.0 << u"0000"_s << u"0012"_s;
    QTest::newRow("ticket number above four digits") << 12345.0 << u"0000"_s << u"12345"_s;
    QTest::newRow("three digits") << 7.0 << u"000"_s << u"007"_s;
    QTest::newRow("a single zero") << 0.0 << u"0"_s << u"0"_s;
    QTest::newRow("a half rounds away from zero") << 2.5 << u"0"_s << u"3"_s;
    QTest::newRow("three and a half rounds up") << 3.5 << u"0"_s << u"4"_s;
    QTest::newRow("a negative half rounds away from zero") << -2.5 << u"0"_s << u"-3"_s;
    QTest::newRow("a negative fraction rounding to zero keeps its sign") << -0.4 << u"0"_s << u"-0"_s;
    QTest::newRow("negative zero has no sign") << -0.0 << u"0"_s << u"0"_s;
    QTest::newRow("two decimals round away from zero") << 0.125 << u"0.00"_s << u"0.13"_s;
    QTest::newRow("a decimal tie counts as written") << 2.675 << u"0.00"_s << u"2.68"_s;
    QTest::newRow("another decimal tie") << 1.005 << u"0.00"_s << u"1.01"_s;
    QTest::newRow("trailing zeros are printed") << 50.0 << u"0.00"_s << u"50.00"_s;
    QTest::newRow("thousands separators") << 1234.5 << u"#,##0"_s << u"1,235"_s;
    QTest::newRow("no separator below a thousand") << 999.0 << u"#,##0"_s << u"999"_s;
    QTest::newRow("separators and decimals") << 1234567.891 << u"#,##0.00"_s << u"1,234,567.89"_s;
    QTest::newRow("a carry across the separator") << 999.999 << u"#,##0.00"_s << u"1,000.00"_s;
    QTest::newRow("zero with separators") << 0.0 << u"#,##0.00"_s << u"0.00"_s;
    QTest::newRow("a negative amount with separators") << -1234.5 << u"#,##0.00"_s << u"-1,234.50"_s;
    QTest::newRow("one decimal") << 12.34 << u"##0.0"_s << u"12.3"_s;
    QTest::newRow("a small value in one decimal") << 0.05 << u"##0.0"_s << u"0.1"_s;
    QTest::newRow("a point without digits is printed") << 5.0 << u"#.##"_s << u"5."_s;
    QTest::newRow("no leading zero for #") << 0.5 << u"#.##"_s << u".5"_s;
    QTest::newRow("zero in # prints nothing") << 0.0 << u"#"_s << QString();
    QTest::newRow("optional second decimal left out") << 1.5 << u"0.0#"_s << u"1.5"_s;
    QTest::newRow("optional second decimal printed") << 1.256 << u"0.0#"_s << u"1.26"_s;
    QTest::newRow("digits before a point-only format") << 5.25 << u".00"_s << u"5.25"_s;
    QTest::newRow("a percentage") << 0.125 << u"0%"_s << u"13%"_s;
    QTest::newRow("a percentage with a decimal") << 0.125 << u"0.0%"_s << u"12.5%"_s;
    QTest::newRow("a trailing comma divides by a thousand") << 1234567.0 << u"#,"_s << u"1235"_s;
    QTest::newRow("a negative section") << -5.0 << u"0;(0)"_s << u"(5)"_s;
    QTest::newRow("a zero section") << 0.0 << u"0;(0);\"zero\""_s << u"zero"_s;
    QTest::newRow("a positive value with three sections") << 5.0 << u"0;(0);\"zero\""_s << u"5"_s;
    QTest::newRow("an empty negative section takes the first") << -5.0 << u"0;"_s << u"-5"_s;
    QTest::newRow("a quoted currency") << 5.0 << u"\"N\"0"_s << u"N5"_s;
    QTest::newRow("a currency letter beside placeholders") << 5000.0 << u"N#,##0"_s << u"N5,000"_s;
    QTest::newRow("a unit beside placeholders") << 90.0 << u"0min(s)"_s << u"90min(s)"_s;
    QTest::newRow("a literal currency sign") << 5.0 << u"$0"_s << u"$5"_s;
    QTest::newRow("the sign goes before everything") << -5.0 << u"$0"_s << u"-$5"_s;
    QTest::newRow("a quoted semicolon is no section") << 5.0 << u"0\";\"0"_s << u"0;5"_s;
    QTest::newRow("an escaped placeholder is a literal") << 5.0 << u"\\00"_s << u"05"_s;
    QTest::newRow("digits fill placeholders from the right") << 123456.0 << u"000-000"_s << u"123-456"_s;
    QTest::newRow("missing digits are zeros") << 12345.0 << u"000-000"_s << u"012-345"_s;
    QTest::newRow("a huge value prints all its digits") << 1e20 << u"0"_s << u"100000000000000000000"_s;
    QTest::newRow("an empty format prints as text") << 5.0 << QString() << u"5"_s;
    QTest::newRow("an empty format with a fraction") << 0.5 << QString() << u"0.5"_s;
    QTest::newRow("a date format reads a serial date") << 39818.5 << u"dd/mm/yyyy hh:nn"_s << u"05/01/2009 12:00"_s;
    QTest::newRow("an infinite value prints as text") << std::numeric_limits<double>::infinity() << u"0"_s << u"inf"_s;
}

void TestFormats::testFormatNumber()
{
    QFETCH(double, value);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(format(value, pattern), text);
}

void TestFormats::testFormatSingle_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");

    QTest::newRow("minutes with two decimals") << 3599.0f / 60 << u"0.00"_s << u"59.98"_s;
    QTest::newRow("a tenth reads with seven digits") << 0.1f << u"0.000000000"_s << u"0.100000000"_s;
    QTest::newRow("an empty format prints seven digits") << 3599.0f / 60 << QString() << u"59.98333"_s;
}

void TestFormats::testFormatSingle()
{
    QFETCH(float, value);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(formatSingle(value, pattern), text);
}

void TestFormats::testFormatText_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");

    QTest::newRow("a stored short time") << u"6:00"_s << u"HH:mm"_s << u"06:00"_s;
    QTest::newRow("a stored time as it stands") << u"06:00"_s << u"HH:mm"_s << u"06:00"_s;
    QTest::newRow("a stored time on the 12-hour clock") << u"18:35"_s << u"hh:mmAMPM"_s << u"06:35PM"_s;
    QTest::newRow("a stored 12-hour time") << u"6:00 PM"_s << u"HH:mm"_s << u"18:00"_s;
    QTest::newRow("a database date") << u"2024-02-29"_s << u"dd/mmm/yy"_s << u"29/Feb/24"_s;
    QTest::newRow("a numeric text is a number") << u"12"_s << u"0000"_s << u"0012"_s;
    QTest::newRow("a numeric text with decimals") << u"5"_s << u"0.00"_s << u"5.00"_s;
    QTest::newRow("a numeric text with a date format is a serial date") << u"0.25"_s << u"HH:mm"_s << u"06:00"_s;
    QTest::newRow("words are returned unchanged") << u"abc"_s << u"HH:mm"_s << u"abc"_s;
    QTest::newRow("a numeric prefix is returned unchanged") << u"12abc"_s << u"0000"_s << u"12abc"_s;
    QTest::newRow("an empty text stays empty") << QString() << u"HH:mm"_s << QString();
    QTest::newRow("an empty format returns the text") << u"007"_s << QString() << u"007"_s;
}

void TestFormats::testFormatText()
{
    QFETCH(QString, value);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(format(value, pattern), text);
}

void TestFormats::testFormatVariant_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");

    QTest::newRow("a missing value prints nothing") << QVariant() << u"dd/mmm/yy"_s << QString();
    QTest::newRow("a null text field prints nothing")
        << QVariant(QMetaType::fromType<QString>()) << u"dd/mmm/yy"_s << QString();
    QTest::newRow("a null number field prints nothing")
        << QVariant(QMetaType::fromType<double>()) << u"0000"_s << QString();
    QTest::newRow("a date field") << QVariant(QDate(2009, 1, 5)) << u"dd/mmm/yy"_s << u"05/Jan/09"_s;
    QTest::newRow("a date and time field") << QVariant(at(2009, 1, 5, 13, 5)) << u"HH:mm"_s << u"13:05"_s;
    QTest::newRow("a time field") << QVariant(QTime(6, 0)) << u"hh:mmAMPM"_s << u"06:00AM"_s;
    QTest::newRow("a time stored as text") << QVariant(u"06:00"_s) << u"HH:mm"_s << u"06:00"_s;
    QTest::newRow("an integer field") << QVariant(12) << u"0000"_s << u"0012"_s;
    QTest::newRow("a long integer field") << QVariant(qlonglong(5)) << u"#0"_s << u"5"_s;
    QTest::newRow("a double field") << QVariant(2.5) << u"0.00"_s << u"2.50"_s;
    QTest::newRow("a single field prints seven digits") << QVariant(3599.0f / 60) << QString() << u"59.98333"_s;
    QTest::newRow("true as text") << QVariant(true) << QString() << u"True"_s;
    QTest::newRow("false as text") << QVariant(false) << QString() << u"False"_s;
    QTest::newRow("true as a number") << QVariant(true) << u"0"_s << u"-1"_s;
    QTest::newRow("false as a number") << QVariant(false) << u"0"_s << u"0"_s;
}

void TestFormats::testFormatVariant()
{
    QFETCH(QVariant, value);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(format(value, pattern), text);
}

void TestFormats::testMachineDateAndTime_data()
{
    QTest::addColumn<QDateTime>("value");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("time");

    QTest::newRow("an afternoon") << at(2009, 1, 5, 13, 5, 3) << u"05/01/2009"_s << u"01:05:03 PM"_s;
    QTest::newRow("midnight of a leap day") << at(2024, 2, 29) << u"29/02/2024"_s << u"12:00:00 AM"_s;
    QTest::newRow("noon on the last day of 1999") << at(1999, 12, 31, 12) << u"31/12/1999"_s << u"12:00:00 PM"_s;
    QTest::newRow("a null value") << QDateTime() << QString() << QString();
}

void TestFormats::testMachineDateAndTime()
{
    QFETCH(QDateTime, value);
    QFETCH(QString, date);
    QFETCH(QString, time);
    QCOMPARE(machineDate(value.date()), date);
    QCOMPARE(machineTime(value.time()), time);
}

// Random formats must never crash the format function, and what it prints must read back.
// Found by fuzzing: "ttttt" formats the time with a pattern of its own. When that pattern was new and
// the thread's kept patterns were full, they were emptied while the outer pattern's tokens were
// still being read.
void TestFormats::testAPatternThatFormatsWithAnotherSurvivesAFullPatternCache()
{
    const QDateTime at(QDate(2026, 11, 24), QTime(14, 5, 9));
    QString shown;
    // A thread of its own starts with no kept patterns.
    std::thread([&] {
        for (int i = 0; i < 63; ++i)
            format(at, u"yyyy \"%1\""_s.arg(i));
        shown = format(at, u"ttttt \"at\" dd"_s);
    }).join();
    QCOMPARE(shown, u"02:05:09 PM at 24"_s);
}

void TestFormats::testRandomFormatsKeepTheInvariants()
{
    QRandomGenerator random(20090105);
    const QString alphabet = u"dmyhnsqwcDMYHNS/:-, \"\\AaPpMm0#.,;%tT"_s;
    const QDateTime base = at(1930, 1, 1);
    for (int round = 0; round < 3000; ++round) {
        QString pattern;
        const int length = random.bounded(16);
        for (int i = 0; i < length; ++i)
            pattern += alphabet[random.bounded(int(alphabet.size()))];
        const QDateTime value = base.addSecs(random.bounded(qint64(0), qint64(100) * 365 * 86400));
        const double number = (random.generateDouble() - 0.5) * std::pow(10.0, random.bounded(-3, 12));

        QCOMPARE(format(value, pattern), format(value, pattern));
        format(number, pattern);
        format(numberText(number), pattern);
        format(format(value, u"dd/mm/yyyy hh:nn:ss"_s), pattern);

        const QString machine = format(value, u"dd/mm/yyyy hh:nn:ss"_s);
        QCOMPARE(readDate(machine).value(), value);
        QCOMPARE(readDate(format(value, u"c"_s)).value(), value);
        QCOMPARE(QDateTime::fromString(format(value, u"yyyymmddhhnnss"_s), u"yyyyMMddHHmmss"_s), value);
        QCOMPARE(format(value, u"yymmddhhnnss"_s).size(), 12);

        const int zeros = random.bounded(1, 8);
        const qint64 whole = random.bounded(0, 100000000);
        QCOMPARE(format(double(whole), QString(zeros, u'0')), QString::number(whole).rightJustified(zeros, u'0'));
        const QString twoPlaces = format(number, u"0.00"_s);
        QVERIFY2(
            std::fabs(leadingNumber(twoPlaces) - number) <= 0.005 + std::fabs(number) * 1e-14, qPrintable(twoPlaces));
        QCOMPARE(leadingNumber(format(number, u"#,##0.00"_s).remove(u',')), leadingNumber(twoPlaces));
    }
}

QTEST_GUILESS_MAIN(TestFormats)
#include "TestFormats.moc"
