#include "values/Dates.h"

#include <QTest>

using namespace marlet::values;
using namespace Qt::StringLiterals;

class TestDates : public QObject
{
    Q_OBJECT

private slots:
    void testSerialDates_data();
    void testSerialDates();
    void testReadDate_data();
    void testReadDate();
    void testNames();
};

void TestDates::testSerialDates_data()
{
    QTest::addColumn<double>("serial");
    QTest::addColumn<QDateTime>("at");

    QTest::newRow("day zero") << 0.0 << QDateTime(QDate(1899, 12, 30), QTime(0, 0));
    QTest::newRow("a quarter of day zero") << 0.25 << QDateTime(QDate(1899, 12, 30), QTime(6, 0));
    QTest::newRow("a day before day zero with its time") << -1.25 << QDateTime(QDate(1899, 12, 29), QTime(6, 0));
    QTest::newRow("a date of 2009 at noon") << 39818.5 << QDateTime(QDate(2009, 1, 5), QTime(12, 0));
    QTest::newRow("the leap day of 2024") << 45351.0 << QDateTime(QDate(2024, 2, 29), QTime(0, 0));
}

void TestDates::testSerialDates()
{
    QFETCH(double, serial);
    QFETCH(QDateTime, at);
    QCOMPARE(toSerial(at), serial);
    QCOMPARE(fromSerial(serial).value(), at);
}

void TestDates::testReadDate_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDateTime>("at"); // invalid: not a date

    const QDate zero(1899, 12, 30);
    QTest::newRow("a short time") << u"6:00"_s << QDateTime(zero, QTime(6, 0));
    QTest::newRow("midnight") << u"00:00"_s << QDateTime(zero, QTime(0, 0));
    QTest::newRow("an evening time") << u"18:35"_s << QDateTime(zero, QTime(18, 35));
    QTest::newRow("a time with seconds") << u"9:07:03"_s << QDateTime(zero, QTime(9, 7, 3));
    QTest::newRow("an afternoon time") << u"6:00 PM"_s << QDateTime(zero, QTime(18, 0));
    QTest::newRow("midnight on the 12-hour clock") << u"12:00 AM"_s << QDateTime(zero, QTime(0, 0));
    QTest::newRow("noon on the 12-hour clock without a blank") << u"12:30PM"_s << QDateTime(zero, QTime(12, 30));
    QTest::newRow("a machine time") << u"01:05:03 pm"_s << QDateTime(zero, QTime(13, 5, 3));
    QTest::newRow("a machine date") << u"05/01/2009"_s << QDateTime(QDate(2009, 1, 5), QTime(0, 0));
    QTest::newRow("a date with a month abbreviation") << u"5-Jan-09"_s << QDateTime(QDate(2009, 1, 5), QTime(0, 0));
    QTest::newRow("a date with a month name") << u"05 January 2009"_s << QDateTime(QDate(2009, 1, 5), QTime(0, 0));
    QTest::newRow("a date with a comma") << u"05, Jan 2009"_s << QDateTime(QDate(2009, 1, 5), QTime(0, 0));
    QTest::newRow("a leap day") << u"29/02/2024"_s << QDateTime(QDate(2024, 2, 29), QTime(0, 0));
    QTest::newRow("year 29 is in this century") << u"01/01/29"_s << QDateTime(QDate(2029, 1, 1), QTime(0, 0));
    QTest::newRow("year 30 is in the last century") << u"01/01/30"_s << QDateTime(QDate(1930, 1, 1), QTime(0, 0));
    QTest::newRow("year 00 is 2000") << u"31/12/00"_s << QDateTime(QDate(2000, 12, 31), QTime(0, 0));
    QTest::newRow("a date and a time") << u"15/03/2024 09:07:03"_s << QDateTime(QDate(2024, 3, 15), QTime(9, 7, 3));
    QTest::newRow("a date and a machine time")
        << u"05/01/2009 01:05:03 PM"_s << QDateTime(QDate(2009, 1, 5), QTime(13, 5, 3));
    QTest::newRow("a database date") << u"2024-02-29"_s << QDateTime(QDate(2024, 2, 29), QTime(0, 0));
    QTest::newRow("a database date and time")
        << u"2024-02-29T13:45:30.123"_s << QDateTime(QDate(2024, 2, 29), QTime(13, 45, 30));
    QTest::newRow("surrounding blanks are ignored") << u"  6:00  "_s << QDateTime(zero, QTime(6, 0));
    QTest::newRow("the leap day of a common year is no date") << u"29/02/2023"_s << QDateTime();
    QTest::newRow("the 31st of April is no date") << u"31/04/2024"_s << QDateTime();
    QTest::newRow("month 13 is no date") << u"13/13/2009"_s << QDateTime();
    QTest::newRow("hour 24 is no time") << u"24:00"_s << QDateTime();
    QTest::newRow("minute 60 is no time") << u"6:60"_s << QDateTime();
    QTest::newRow("hour 13 PM is no time") << u"13:00 PM"_s << QDateTime();
    QTest::newRow("an unknown month name is no date") << u"05 Foo 2009"_s << QDateTime();
    QTest::newRow("a date with a bad time is no date") << u"05/01/2009 25:00"_s << QDateTime();
    QTest::newRow("a number is no date") << u"5"_s << QDateTime();
    QTest::newRow("words are no date") << u"abc"_s << QDateTime();
    QTest::newRow("an empty text is no date") << QString() << QDateTime();
}

void TestDates::testReadDate()
{
    QFETCH(QString, text);
    QFETCH(QDateTime, at);
    const std::optional<QDateTime> result = readDate(text);
    QCOMPARE(result.has_value(), at.isValid());
    QCOMPARE(isDate(text), at.isValid());
    if (result)
        QCOMPARE(*result, at);
}

void TestDates::testNames()
{
    QCOMPARE(monthName(1), u"January"_s);
    QCOMPARE(monthName(9, true), u"Sep"_s);
    QCOMPARE(monthName(12), u"December"_s);
    QCOMPARE(monthName(13), QString());
    QCOMPARE(weekdayName(1), u"Sunday"_s);
    QCOMPARE(weekdayName(4, true), u"Wed"_s);
    QCOMPARE(weekdayName(0), QString());
    QCOMPARE(weekdayNumber(QDate(2009, 1, 4)), 1);
    QCOMPARE(weekdayNumber(QDate(2009, 1, 5)), 2);
    QCOMPARE(weekdayNumber(QDate(2024, 2, 29)), 5);
    QCOMPARE(weekdayNumber(QDate(2024, 3, 2)), 7);
}

// Random texts of the characters that numbers are made of must never crash the readers, and the
// readers must agree with each other.
QTEST_GUILESS_MAIN(TestDates)
#include "TestDates.moc"
