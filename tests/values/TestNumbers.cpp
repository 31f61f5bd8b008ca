#include "values/Numbers.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <limits>

using namespace marlet::values;
using namespace Qt::StringLiterals;

class TestNumbers : public QObject
{
    Q_OBJECT

private slots:
    void testIsNumeric_data();
    void testIsNumeric();
    void testLeadingNumber_data();
    void testLeadingNumber();
    void testLeadingNumberBeyondTheRange();
    void testToInt16_data();
    void testToInt16();
    void testToInt16Text_data();
    void testToInt16Text();
    void testToInt32_data();
    void testToInt32();
    void testToInt32Text_data();
    void testToInt32Text();
    void testToSingle();
    void testFloorAndTruncate_data();
    void testFloorAndTruncate();
    void testRoundHalfEven_data();
    void testRoundHalfEven();
    void testNumberText_data();
    void testNumberText();
    void testSingleText_data();
    void testSingleText();
    void testSignSpacedText_data();
    void testSignSpacedText();
    void testRandomTextsKeepTheInvariants();
};

void TestNumbers::testIsNumeric_data()
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

void TestNumbers::testIsNumeric()
{
    QFETCH(QString, text);
    QFETCH(bool, numeric);
    QCOMPARE(isNumeric(text), numeric);
}

void TestNumbers::testLeadingNumber_data()
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
    QTest::newRow("digits alone are read") << u"5000"_s << 5000.0;
    QTest::newRow("leading zeros are read past") << u"007"_s << 7.0;
    QTest::newRow("fifteen digits are read exactly") << u"123456789012345"_s << 123456789012345.0;
    QTest::newRow("sixteen digits are read as a double") << u"1234567890123456"_s << 1234567890123456.0;
    QTest::newRow("digits with a blank inside are read as one number") << u"12 34"_s << 1234.0;
}

void TestNumbers::testLeadingNumber()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(leadingNumber(text), value);
}

void TestNumbers::testLeadingNumberBeyondTheRange()
{
    QVERIFY(std::isinf(leadingNumber(u"1e400"_s)) && leadingNumber(u"1e400"_s) > 0);
    QVERIFY(std::isinf(leadingNumber(u"-1e400"_s)) && leadingNumber(u"-1e400"_s) < 0);
    QVERIFY(std::isinf(leadingNumber(u"1"_s + QString(400, u'0'))));
    QVERIFY(std::isinf(leadingNumber(u"&H100000000"_s)));
    QVERIFY(!toInt32(leadingNumber(u"1e400"_s)).has_value());
}

void TestNumbers::testToInt16_data()
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

void TestNumbers::testToInt16()
{
    QFETCH(double, value);
    QFETCH(bool, converts);
    QFETCH(int, expected);
    const std::optional<qint16> result = toInt16(value);
    QCOMPARE(result.has_value(), converts);
    if (converts)
        QCOMPARE(int(*result), expected);
}

void TestNumbers::testToInt16Text_data()
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

void TestNumbers::testToInt16Text()
{
    QFETCH(QString, text);
    QFETCH(bool, converts);
    QFETCH(int, expected);
    const std::optional<qint16> result = toInt16(text);
    QCOMPARE(result.has_value(), converts);
    if (converts)
        QCOMPARE(int(*result), expected);
}

void TestNumbers::testToInt32_data()
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

void TestNumbers::testToInt32()
{
    QFETCH(double, value);
    QFETCH(bool, converts);
    QFETCH(qint64, expected);
    const std::optional<qint32> result = toInt32(value);
    QCOMPARE(result.has_value(), converts);
    if (converts)
        QCOMPARE(qint64(*result), expected);
}

void TestNumbers::testToInt32Text_data()
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

void TestNumbers::testToInt32Text()
{
    QFETCH(QString, text);
    QFETCH(bool, converts);
    QFETCH(qint64, expected);
    const std::optional<qint32> result = toInt32(text);
    QCOMPARE(result.has_value(), converts);
    if (converts)
        QCOMPARE(qint64(*result), expected);
}

void TestNumbers::testToSingle()
{
    QCOMPARE(toSingle(0.1), 0.1f);
    QCOMPARE(singleText(toSingle(1.0 / 3.0)), u"0.3333333"_s);
    QCOMPARE(numberText(double(toSingle(0.1))), u"0.100000001490116"_s);
    QVERIFY(std::isinf(toSingle(1e39)));
}

void TestNumbers::testFloorAndTruncate_data()
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

void TestNumbers::testFloorAndTruncate()
{
    QFETCH(double, value);
    QFETCH(double, floor);
    QFETCH(double, truncated);
    QCOMPARE(floorToWhole(value), floor);
    QCOMPARE(truncateToWhole(value), truncated);
    QVERIFY(!std::signbit(truncateToWhole(value)) || truncated < 0);
}

void TestNumbers::testRoundHalfEven_data()
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

void TestNumbers::testRoundHalfEven()
{
    QFETCH(double, value);
    QFETCH(int, digits);
    QFETCH(double, expected);
    QCOMPARE(roundHalfEven(value, digits), expected);
}

void TestNumbers::testNumberText_data()
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

void TestNumbers::testNumberText()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(numberText(value), text);
}

void TestNumbers::testSingleText_data()
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

void TestNumbers::testSingleText()
{
    QFETCH(float, value);
    QFETCH(QString, text);
    QCOMPARE(singleText(value), text);
}

void TestNumbers::testSignSpacedText_data()
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

void TestNumbers::testSignSpacedText()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(signSpacedText(value), text);
}

void TestNumbers::testRandomTextsKeepTheInvariants()
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

        const bool numeric = isNumeric(text);
        const double value = leadingNumber(text);
        numericCount += numeric ? 1 : 0;
        QCOMPARE(isNumeric(u" "_s + text + u"\t"_s), numeric);
        QVERIFY2(!numeric || !isNumeric(text + u"x"_s), qPrintable(text));
        if (numeric && plainDecimal.match(text).hasMatch()) {
            QVERIFY2(value == text.trimmed().toDouble(), qPrintable(text));
        }
        if (numeric) {
            const std::optional<qint32> asLong = toInt32(text);
            QCOMPARE(asLong.has_value(), toInt32(value).has_value());
            const double rounded = std::nearbyint(value);
            QCOMPARE(asLong.has_value(), rounded >= -2147483648.0 && rounded <= 2147483647.0);
            QVERIFY2(std::isfinite(value), qPrintable(text));
        }
        QVERIFY(leadingNumber(text + u"abc"_s) == value || text.contains(u'&') || text.endsWith(u'e')
            || text.endsWith(u'E') || text.endsWith(u'd') || text.endsWith(u'D') || std::isinf(value));

        const double decimal = (random.generateDouble() - 0.5) * std::pow(10.0, random.bounded(-6, 16));
        const double readBack = leadingNumber(numberText(decimal));
        QVERIFY2(std::fabs(readBack - decimal) <= std::fabs(decimal) * 1e-14, qPrintable(numberText(decimal)));
        QCOMPARE(leadingNumber(signSpacedText(decimal)), readBack);
        const int digits = random.bounded(6);
        const QString roundedText = numberText(roundHalfEven(decimal, digits));
        const qsizetype point = roundedText.indexOf(u'.');
        QVERIFY2(roundedText.contains(u'E') || point < 0 || roundedText.size() - point - 1 <= digits,
            qPrintable(roundedText));
    }
    QVERIFY(numericCount > 100);
}

QTEST_GUILESS_MAIN(TestNumbers)
#include "TestNumbers.moc"
