#include "platform/LegacyConvert.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <limits>

using namespace marlet::legacy;
using namespace Qt::StringLiterals;

class TestLegacyConvert : public QObject
{
    Q_OBJECT

private slots:
    void testIsNumeric_data();
    void testIsNumeric();
    void testVal_data();
    void testVal();
    void testValBeyondTheRange();
    void testCInt_data();
    void testCInt();
    void testCIntText_data();
    void testCIntText();
    void testCLng_data();
    void testCLng();
    void testCLngText_data();
    void testCLngText();
    void testCSng();
    void testIntAndFix_data();
    void testIntAndFix();
    void testRound_data();
    void testRound();
    void testCStr_data();
    void testCStr();
    void testCStrSingle_data();
    void testCStrSingle();
    void testStr_data();
    void testStr();
    void testSerialDates_data();
    void testSerialDates();
    void testCDate_data();
    void testCDate();
    void testTextFunctions();
    void testNames();
    void testRandomTextsKeepTheInvariants();
};

void TestLegacyConvert::testIsNumeric_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("numeric");

    QTest::newRow("a plain integer is numeric") << u"5"_s << true;
    QTest::newRow("a negative integer is numeric") << u"-5"_s << true;
    QTest::newRow("a plus sign is allowed") << u"+5"_s << true;
    QTest::newRow("zero is numeric") << u"0"_s << true;
    QTest::newRow("minus zero is numeric") << u"-0"_s << true;
    QTest::newRow("leading zeros are allowed") << u"00012"_s << true;
    QTest::newRow("surrounding blanks are allowed") << u"  5  "_s << true;
    QTest::newRow("surrounding tabs are allowed") << u"\t5\t"_s << true;
    QTest::newRow("a fraction without whole digits is numeric") << u".5"_s << true;
    QTest::newRow("a point without fraction digits is numeric") << u"5."_s << true;
    QTest::newRow("a signed point fraction is numeric") << u"+.5"_s << true;
    QTest::newRow("an exponent is allowed") << u"1e3"_s << true;
    QTest::newRow("a signed upper-case exponent is allowed") << u"1E-3"_s << true;
    QTest::newRow("a D exponent is allowed") << u"1d3"_s << true;
    QTest::newRow("an exponent after a bare point is allowed") << u"1.e3"_s << true;
    QTest::newRow("a hexadecimal literal is numeric") << u"&H1F"_s << true;
    QTest::newRow("a lower-case hexadecimal literal is numeric") << u"&h1f"_s << true;
    QTest::newRow("a 32-bit hexadecimal literal is numeric") << u"&HFFFFFFFF"_s << true;
    QTest::newRow("an octal literal is numeric") << u"&O17"_s << true;
    QTest::newRow("an underflowing exponent is numeric") << u"1e-400"_s << true;
    QTest::newRow("an empty text is not numeric") << QString() << false;
    QTest::newRow("a blank text is not numeric") << u"   "_s << false;
    QTest::newRow("a point alone is not numeric") << u"."_s << false;
    QTest::newRow("a sign and a point are not numeric") << u"-."_s << false;
    QTest::newRow("a sign alone is not numeric") << u"+"_s << false;
    QTest::newRow("a blank inside is not numeric") << u"1 2"_s << false;
    QTest::newRow("a blank after the sign is not numeric") << u"- 5"_s << false;
    QTest::newRow("two signs are not numeric") << u"--5"_s << false;
    QTest::newRow("a trailing sign is not numeric") << u"5-"_s << false;
    QTest::newRow("two points are not numeric") << u"1.2.3"_s << false;
    QTest::newRow("a thousands separator is not numeric") << u"1,000"_s << false;
    QTest::newRow("a currency sign is not numeric") << u"$5"_s << false;
    QTest::newRow("a numeric prefix with letters is not numeric") << u"12abc"_s << false;
    QTest::newRow("minutes with their unit are not numeric") << u"90min(s)"_s << false;
    QTest::newRow("an exponent without digits is not numeric") << u"1e"_s << false;
    QTest::newRow("an exponent with a sign only is not numeric") << u"1e+"_s << false;
    QTest::newRow("an exponent without a mantissa is not numeric") << u"e3"_s << false;
    QTest::newRow("an overflowing exponent is not numeric") << u"1e400"_s << false;
    QTest::newRow("a hexadecimal prefix without digits is not numeric") << u"&H"_s << false;
    QTest::newRow("a bad hexadecimal digit is not numeric") << u"&H1G"_s << false;
    QTest::newRow("a bad octal digit is not numeric") << u"&O8"_s << false;
    QTest::newRow("a hexadecimal literal beyond 32 bits is not numeric") << u"&H100000000"_s << false;
    QTest::newRow("a signed hexadecimal literal is not numeric") << u"-&H10"_s << false;
    QTest::newRow("a time is not numeric") << u"6:00"_s << false;
}

void TestLegacyConvert::testIsNumeric()
{
    QFETCH(QString, text);
    QFETCH(bool, numeric);
    QCOMPARE(IsNumeric(text), numeric);
}

void TestLegacyConvert::testVal_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");

    QTest::newRow("the prefix before letters is read") << u"12abc"_s << 12.0;
    QTest::newRow("letters first read as zero") << u"abc"_s << 0.0;
    QTest::newRow("an empty text reads as zero") << QString() << 0.0;
    QTest::newRow("blanks between digits are skipped") << u" 1 2 3"_s << 123.0;
    QTest::newRow("tabs and line feeds are skipped") << u"\t4\n2"_s << 42.0;
    QTest::newRow("a blank after the sign is skipped") << u"- 5"_s << -5.0;
    QTest::newRow("a fraction before a unit is read") << u"5.7min"_s << 5.7;
    QTest::newRow("minutes with their unit read as the minutes") << u"9999min(s)"_s << 9999.0;
    QTest::newRow("a fraction without whole digits is read") << u".5"_s << 0.5;
    QTest::newRow("a negative fraction is read") << u"-.25"_s << -0.25;
    QTest::newRow("a plus sign is read") << u"+7"_s << 7.0;
    QTest::newRow("a second point ends the number") << u"1.2.3"_s << 1.2;
    QTest::newRow("a thousands separator ends the number") << u"12,345"_s << 12.0;
    QTest::newRow("an exponent is read") << u"1e3"_s << 1000.0;
    QTest::newRow("a D exponent is read") << u"2D2"_s << 200.0;
    QTest::newRow("an exponent without digits is left") << u"1e"_s << 1.0;
    QTest::newRow("an exponent sign without digits is left") << u"1e+x"_s << 1.0;
    QTest::newRow("an underflowing exponent reads as zero") << u"1e-400"_s << 0.0;
    QTest::newRow("a hexadecimal literal is read") << u"&H10"_s << 16.0;
    QTest::newRow("a 16-bit hexadecimal literal is signed") << u"&HFFFF"_s << -1.0;
    QTest::newRow("the lowest 16-bit hexadecimal literal") << u"&H8000"_s << -32768.0;
    QTest::newRow("the highest 16-bit hexadecimal literal") << u"&H7FFF"_s << 32767.0;
    QTest::newRow("a wider hexadecimal literal is 32-bit") << u"&H10000"_s << 65536.0;
    QTest::newRow("a 32-bit hexadecimal literal is signed") << u"&HFFFFFFFF"_s << -1.0;
    QTest::newRow("an octal literal is read") << u"&O17"_s << 15.0;
    QTest::newRow("a hexadecimal prefix without digits reads as zero") << u"&H"_s << 0.0;
    QTest::newRow("an ampersand alone reads as zero") << u"&x"_s << 0.0;
    QTest::newRow("a sign before a hexadecimal literal reads as zero") << u"-&H10"_s << 0.0;
    QTest::newRow("a date reads as its day") << u"05/01/2009"_s << 5.0;
}

void TestLegacyConvert::testVal()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(Val(text), value);
}

void TestLegacyConvert::testValBeyondTheRange()
{
    QVERIFY(std::isinf(Val(u"1e400"_s)) && Val(u"1e400"_s) > 0);
    QVERIFY(std::isinf(Val(u"-1e400"_s)) && Val(u"-1e400"_s) < 0);
    QVERIFY(std::isinf(Val(u"1"_s + QString(400, u'0'))));
    QVERIFY(std::isinf(Val(u"&H100000000"_s)));
    QVERIFY(!CLng(Val(u"1e400"_s)).has_value());
}

void TestLegacyConvert::testCInt_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("converts");
    QTest::addColumn<int>("expected");

    QTest::newRow("two and a half rounds down to even") << 2.5 << true << 2;
    QTest::newRow("three and a half rounds up to even") << 3.5 << true << 4;
    QTest::newRow("minus two and a half rounds to even") << -2.5 << true << -2;
    QTest::newRow("minus three and a half rounds to even") << -3.5 << true << -4;
    QTest::newRow("a half rounds to zero") << 0.5 << true << 0;
    QTest::newRow("one and a half rounds to two") << 1.5 << true << 2;
    QTest::newRow("just below a half rounds down") << 2.4999 << true << 2;
    QTest::newRow("just above a half rounds up") << 2.5000001 << true << 3;
    QTest::newRow("negative zero is zero") << -0.0 << true << 0;
    QTest::newRow("the highest value converts") << 32767.0 << true << 32767;
    QTest::newRow("a fraction above the highest value rounds into range") << 32767.4 << true << 32767;
    QTest::newRow("a half above the highest value overflows") << 32767.5 << false << 0;
    QTest::newRow("the first value above the range overflows") << 32768.0 << false << 0;
    QTest::newRow("the lowest value converts") << -32768.0 << true << -32768;
    QTest::newRow("a half below the lowest value rounds to even in range") << -32768.5 << true << -32768;
    QTest::newRow("below the lowest half overflows") << -32768.6 << false << 0;
    QTest::newRow("a usual port number overflows") << 63553.0 << false << 0;
    QTest::newRow("an undefined value overflows") << std::numeric_limits<double>::quiet_NaN() << false << 0;
    QTest::newRow("an infinite value overflows") << std::numeric_limits<double>::infinity() << false << 0;
}

void TestLegacyConvert::testCInt()
{
    QFETCH(double, value);
    QFETCH(bool, converts);
    QFETCH(int, expected);
    const std::optional<qint16> result = CInt(value);
    QCOMPARE(result.has_value(), converts);
    if (converts)
        QCOMPARE(int(*result), expected);
}

void TestLegacyConvert::testCIntText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("converts");
    QTest::addColumn<int>("expected");

    QTest::newRow("a numeric text converts") << u"1001"_s << true << 1001;
    QTest::newRow("a text with blanks converts") << u" 7 "_s << true << 7;
    QTest::newRow("a fraction rounds half to even") << u"2.5"_s << true << 2;
    QTest::newRow("an exponent converts") << u"1e3"_s << true << 1000;
    QTest::newRow("a hexadecimal literal converts") << u"&HFFFF"_s << true << -1;
    QTest::newRow("the lowest value converts") << u"-32768"_s << true << -32768;
    QTest::newRow("a port above 32767 overflows") << u"32768"_s << false << 0;
    QTest::newRow("the highest port overflows") << u"63553"_s << false << 0;
    QTest::newRow("an empty text is a type mismatch") << QString() << false << 0;
    QTest::newRow("letters are a type mismatch") << u"abc"_s << false << 0;
    QTest::newRow("a numeric prefix is a type mismatch") << u"12abc"_s << false << 0;
}

void TestLegacyConvert::testCIntText()
{
    QFETCH(QString, text);
    QFETCH(bool, converts);
    QFETCH(int, expected);
    const std::optional<qint16> result = CInt(text);
    QCOMPARE(result.has_value(), converts);
    if (converts)
        QCOMPARE(int(*result), expected);
}

void TestLegacyConvert::testCLng_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("converts");
    QTest::addColumn<qint64>("expected");

    QTest::newRow("a half rounds to even") << 2.5 << true << qint64(2);
    QTest::newRow("a large quota converts") << 1000000.0 << true << qint64(1000000);
    QTest::newRow("a 16-bit overflow is no 32-bit overflow") << 32768.0 << true << qint64(32768);
    QTest::newRow("the highest value converts") << 2147483647.0 << true << qint64(2147483647);
    QTest::newRow("a half above the highest value overflows") << 2147483647.5 << false << qint64(0);
    QTest::newRow("the lowest value converts") << -2147483648.0 << true << qint64(-2147483648LL);
    QTest::newRow("a half below the lowest value rounds to even in range")
        << -2147483648.5 << true << qint64(-2147483648LL);
    QTest::newRow("below the lowest value overflows") << -2147483649.0 << false << qint64(0);
    QTest::newRow("a huge value overflows") << 1e20 << false << qint64(0);
}

void TestLegacyConvert::testCLng()
{
    QFETCH(double, value);
    QFETCH(bool, converts);
    QFETCH(qint64, expected);
    const std::optional<qint32> result = CLng(value);
    QCOMPARE(result.has_value(), converts);
    if (converts)
        QCOMPARE(qint64(*result), expected);
}

void TestLegacyConvert::testCLngText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("converts");
    QTest::addColumn<qint64>("expected");

    QTest::newRow("the default quota converts") << u"100"_s << true << qint64(100);
    QTest::newRow("a quota above the limit still converts") << u"1000001"_s << true << qint64(1000001);
    QTest::newRow("unlimited quota converts") << u"-9999"_s << true << qint64(-9999);
    QTest::newRow("a 32-bit hexadecimal literal converts") << u"&HFFFFFFFF"_s << true << qint64(-1);
    QTest::newRow("an overflowing entry fails") << u"1e10"_s << false << qint64(0);
    QTest::newRow("an empty entry is a type mismatch") << QString() << false << qint64(0);
    QTest::newRow("a non-numeric entry is a type mismatch") << u"lots"_s << false << qint64(0);
}

void TestLegacyConvert::testCLngText()
{
    QFETCH(QString, text);
    QFETCH(bool, converts);
    QFETCH(qint64, expected);
    const std::optional<qint32> result = CLng(text);
    QCOMPARE(result.has_value(), converts);
    if (converts)
        QCOMPARE(qint64(*result), expected);
}

void TestLegacyConvert::testCSng()
{
    QCOMPARE(CSng(0.1), 0.1f);
    QCOMPARE(CStrSingle(CSng(1.0 / 3.0)), u"0.3333333"_s);
    QCOMPARE(CStr(double(CSng(0.1))), u"0.100000001490116"_s);
    QVERIFY(std::isinf(CSng(1e39)));
}

void TestLegacyConvert::testIntAndFix_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("floor");
    QTest::addColumn<double>("truncated");

    QTest::newRow("a positive fraction") << 2.5 << 2.0 << 2.0;
    QTest::newRow("a negative fraction") << -2.5 << -3.0 << -2.0;
    QTest::newRow("a small negative fraction") << -0.5 << -1.0 << 0.0;
    QTest::newRow("minutes of a ticket") << 3599.0 / 60 << 59.0 << 59.0;
    QTest::newRow("a whole number") << 7.0 << 7.0 << 7.0;
    QTest::newRow("a negative whole number") << -7.0 << -7.0 << -7.0;
    QTest::newRow("zero") << 0.0 << 0.0 << 0.0;
    QTest::newRow("a huge number") << 1e20 << 1e20 << 1e20;
}

void TestLegacyConvert::testIntAndFix()
{
    QFETCH(double, value);
    QFETCH(double, floor);
    QFETCH(double, truncated);
    QCOMPARE(Int(value), floor);
    QCOMPARE(Fix(value), truncated);
    QVERIFY(!std::signbit(Fix(value)) || truncated < 0);
}

void TestLegacyConvert::testRound_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("digits");
    QTest::addColumn<double>("expected");

    QTest::newRow("two and a half rounds to even") << 2.5 << 0 << 2.0;
    QTest::newRow("three and a half rounds to even") << 3.5 << 0 << 4.0;
    QTest::newRow("minus two and a half rounds to even") << -2.5 << 0 << -2.0;
    QTest::newRow("a half rounds to zero") << 0.5 << 0 << 0.0;
    QTest::newRow("one and a half rounds to two") << 1.5 << 0 << 2.0;
    QTest::newRow("a tie at two places rounds to even down") << 0.125 << 2 << 0.12;
    QTest::newRow("a tie at two places rounds to even up") << 0.135 << 2 << 0.14;
    QTest::newRow("a decimal tie counts as written") << 2.675 << 2 << 2.68;
    QTest::newRow("a decimal tie after zero rounds down") << 1.005 << 2 << 1.0;
    QTest::newRow("a tie after an even digit rounds down") << 2.345 << 2 << 2.34;
    QTest::newRow("a carry runs into the whole part") << 9.995 << 2 << 10.0;
    QTest::newRow("above the tie rounds up") << 123.456 << 1 << 123.5;
    QTest::newRow("a small value rounds to zero") << 0.0004 << 3 << 0.0;
    QTest::newRow("a negative digit count counts as zero") << 12345.6789 << -1 << 12346.0;
    QTest::newRow("a huge value keeps its digits") << 1e20 << 2 << 1e20;
    QTest::newRow("a negative value rounds by its magnitude") << -1.25 << 1 << -1.2;
}

void TestLegacyConvert::testRound()
{
    QFETCH(double, value);
    QFETCH(int, digits);
    QFETCH(double, expected);
    QCOMPARE(Round(value, digits), expected);
}

void TestLegacyConvert::testCStr_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("a whole number has no point") << 5.0 << u"5"_s;
    QTest::newRow("a larger whole number") << 100.0 << u"100"_s;
    QTest::newRow("a half has a leading zero") << 0.5 << u"0.5"_s;
    QTest::newRow("a negative fraction has a leading zero") << -0.25 << u"-0.25"_s;
    QTest::newRow("zero") << 0.0 << u"0"_s;
    QTest::newRow("negative zero prints as zero") << -0.0 << u"0"_s;
    QTest::newRow("a fraction keeps its digits") << 1234567.5 << u"1234567.5"_s;
    QTest::newRow("binary noise is cut at 15 digits") << 0.1 + 0.2 << u"0.3"_s;
    QTest::newRow("a third has 15 digits") << 1.0 / 3 << u"0.333333333333333"_s;
    QTest::newRow("two thirds round at the 15th digit") << 2.0 / 3 << u"0.666666666666667"_s;
    QTest::newRow("minutes of 3599 seconds in double precision") << 3599.0 / 60 << u"59.9833333333333"_s;
    QTest::newRow("fifteen nines stay fixed") << 999999999999999.0 << u"999999999999999"_s;
    QTest::newRow("sixteen digits switch to the exponent") << 1e15 << u"1E+15"_s;
    QTest::newRow("ten to the sixteenth") << 1e16 << u"1E+16"_s;
    QTest::newRow("a negative exponent form") << -1e16 << u"-1E+16"_s;
    QTest::newRow("a long number is rounded in the exponent form") << 123456789012345678.0 << u"1.23456789012346E+17"_s;
    QTest::newRow("a three-digit exponent") << 1e100 << u"1E+100"_s;
    QTest::newRow("the largest double") << std::numeric_limits<double>::max() << u"1.79769313486232E+308"_s;
    QTest::newRow("a small fraction stays fixed") << 0.00001 << u"0.00001"_s;
    QTest::newRow("fifteen decimals stay fixed") << 1e-15 << u"0.000000000000001"_s;
    QTest::newRow("sixteen decimals switch to the exponent") << 1.5e-15 << u"1.5E-15"_s;
    QTest::newRow("a long small fraction uses the exponent") << 1.0 / 70 << u"1.42857142857143E-02"_s;
}

void TestLegacyConvert::testCStr()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(CStr(value), text);
}

void TestLegacyConvert::testCStrSingle_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("a tenth prints as written") << 0.1f << u"0.1"_s;
    QTest::newRow("minutes of 3599 seconds") << 3599.0f / 60 << u"59.98333"_s;
    QTest::newRow("minutes of 300 seconds") << 300.0f / 60 << u"5"_s;
    QTest::newRow("a third has 7 digits") << 1.0f / 3 << u"0.3333333"_s;
    QTest::newRow("a half") << 0.5f << u"0.5"_s;
    QTest::newRow("a negative value") << -2.5f << u"-2.5"_s;
    QTest::newRow("seven digits stay fixed") << 1234567.0f << u"1234567"_s;
    QTest::newRow("eight digits switch to the exponent") << 12345678.0f << u"1.234568E+07"_s;
    QTest::newRow("ten million") << 1e7f << u"1E+07"_s;
    QTest::newRow("seven decimals stay fixed") << 0.0000001f << u"0.0000001"_s;
    QTest::newRow("eight decimals switch to the exponent") << 1e-8f << u"1E-08"_s;
}

void TestLegacyConvert::testCStrSingle()
{
    QFETCH(float, value);
    QFETCH(QString, text);
    QCOMPARE(CStrSingle(value), text);
}

void TestLegacyConvert::testStr_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("a positive number gets a blank") << 5.0 << u" 5"_s;
    QTest::newRow("a negative number gets its sign") << -5.0 << u"-5"_s;
    QTest::newRow("zero gets a blank") << 0.0 << u" 0"_s;
    QTest::newRow("negative zero gets a blank") << -0.0 << u" 0"_s;
    QTest::newRow("a fraction has no leading zero") << 0.5 << u" .5"_s;
    QTest::newRow("a negative fraction has no leading zero") << -0.25 << u"-.25"_s;
    QTest::newRow("a mixed number") << 123.45 << u" 123.45"_s;
    QTest::newRow("the exponent form") << 1e16 << u" 1E+16"_s;
    QTest::newRow("a small exponent form keeps its digit") << 1.5e-20 << u" 1.5E-20"_s;
}

void TestLegacyConvert::testStr()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(Str(value), text);
}

void TestLegacyConvert::testSerialDates_data()
{
    QTest::addColumn<double>("serial");
    QTest::addColumn<QDateTime>("at");

    QTest::newRow("day zero") << 0.0 << QDateTime(QDate(1899, 12, 30), QTime(0, 0));
    QTest::newRow("a quarter of day zero") << 0.25 << QDateTime(QDate(1899, 12, 30), QTime(6, 0));
    QTest::newRow("a day before day zero with its time") << -1.25 << QDateTime(QDate(1899, 12, 29), QTime(6, 0));
    QTest::newRow("a date of 2009 at noon") << 39818.5 << QDateTime(QDate(2009, 1, 5), QTime(12, 0));
    QTest::newRow("the leap day of 2024") << 45351.0 << QDateTime(QDate(2024, 2, 29), QTime(0, 0));
}

void TestLegacyConvert::testSerialDates()
{
    QFETCH(double, serial);
    QFETCH(QDateTime, at);
    QCOMPARE(ToSerial(at), serial);
    QCOMPARE(FromSerial(serial).value(), at);
}

void TestLegacyConvert::testCDate_data()
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

void TestLegacyConvert::testCDate()
{
    QFETCH(QString, text);
    QFETCH(QDateTime, at);
    const std::optional<QDateTime> result = CDate(text);
    QCOMPARE(result.has_value(), at.isValid());
    QCOMPARE(IsDate(text), at.isValid());
    if (result)
        QCOMPARE(*result, at);
}

void TestLegacyConvert::testTextFunctions()
{
    QCOMPARE(Mid(u"240315090703"_s, 9, 4), u"0703"_s);
    QCOMPARE(Mid(u"abc"_s, 2), u"bc"_s);
    QCOMPARE(Mid(u"abc"_s, 4), QString());
    QCOMPARE(Mid(u"abc"_s, 1, 0), QString());
    QCOMPARE(InStr(u"a.b.c"_s, u"."_s), 2);
    QCOMPARE(InStr(3, u"a.b.c"_s, u"."_s), 4);
    QCOMPARE(InStr(u"name@host"_s, u"."_s), 0);
    QCOMPARE(InStr(QString(), u"."_s), 0);
    QCOMPARE(InStr(2, u"abc"_s, QString()), 2);
    QCOMPARE(InStr(4, u"abc"_s, u"c"_s), 0);
    QCOMPARE(Trim(u"  a b  "_s), u"a b"_s);
    QCOMPARE(Trim(u"\tx\t"_s), u"\tx\t"_s);
    QCOMPARE(Trim(u"   "_s), QString());
}

void TestLegacyConvert::testNames()
{
    QCOMPARE(MonthName(1), u"January"_s);
    QCOMPARE(MonthName(9, true), u"Sep"_s);
    QCOMPARE(MonthName(12), u"December"_s);
    QCOMPARE(MonthName(13), QString());
    QCOMPARE(WeekdayName(1), u"Sunday"_s);
    QCOMPARE(WeekdayName(4, true), u"Wed"_s);
    QCOMPARE(WeekdayName(0), QString());
    QCOMPARE(Weekday(QDate(2009, 1, 4)), 1);
    QCOMPARE(Weekday(QDate(2009, 1, 5)), 2);
    QCOMPARE(Weekday(QDate(2024, 2, 29)), 5);
    QCOMPARE(Weekday(QDate(2024, 3, 2)), 7);
}

// Random texts of the characters that numbers are made of must never crash the readers, and the
// readers must agree with each other.
void TestLegacyConvert::testRandomTextsKeepTheInvariants()
{
    QRandomGenerator random(20240315);
    const QString alphabet = u"0123456789+-.eEdD &HhOo\t,x:"_s;
    static const QRegularExpression plainDecimal(u"^[ \\t]*[+-]?[0-9]*\\.?[0-9]*([eE][+-]?[0-9]+)?[ \\t]*$"_s);
    int numericCount = 0;
    for (int round = 0; round < 5000; ++round) {
        QString text;
        const int length = random.bounded(13);
        for (int i = 0; i < length; ++i)
            text += alphabet[random.bounded(int(alphabet.size()))];

        const bool numeric = IsNumeric(text);
        const double value = Val(text);
        numericCount += numeric ? 1 : 0;
        QCOMPARE(IsNumeric(u" "_s + text + u"\t"_s), numeric);
        QVERIFY2(!numeric || !IsNumeric(text + u"x"_s), qPrintable(text));
        if (numeric && plainDecimal.match(text).hasMatch()) {
            QVERIFY2(value == text.trimmed().toDouble(), qPrintable(text));
        }
        if (numeric) {
            const std::optional<qint32> asLong = CLng(text);
            QCOMPARE(asLong.has_value(), CLng(value).has_value());
            const double rounded = std::nearbyint(value);
            QCOMPARE(asLong.has_value(), rounded >= -2147483648.0 && rounded <= 2147483647.0);
            QVERIFY2(std::isfinite(value), qPrintable(text));
        }
        QVERIFY(Val(text + u"abc"_s) == value || text.contains(u'&') || text.endsWith(u'e') || text.endsWith(u'E')
            || text.endsWith(u'd') || text.endsWith(u'D') || std::isinf(value));

        const double decimal = (random.generateDouble() - 0.5) * std::pow(10.0, random.bounded(-6, 16));
        const double readBack = Val(CStr(decimal));
        QVERIFY2(std::fabs(readBack - decimal) <= std::fabs(decimal) * 1e-14, qPrintable(CStr(decimal)));
        QCOMPARE(Val(Str(decimal)), readBack);
        const int digits = random.bounded(6);
        const QString roundedText = CStr(Round(decimal, digits));
        const qsizetype point = roundedText.indexOf(u'.');
        QVERIFY2(roundedText.contains(u'E') || point < 0 || roundedText.size() - point - 1 <= digits,
            qPrintable(roundedText));
    }
    QVERIFY(numericCount > 100);
}

QTEST_GUILESS_MAIN(TestLegacyConvert)
#include "TestLegacyConvert.moc"
