#include "inventory/TicketRecharge.h"

#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

namespace {

const QVariant NoDate;
const QVariant AnyDate = QDateTime(QDate(2009, 1, 5), QTime(0, 0));

QString refusal(const char* lowest)
{
    return u"Entry too small or large! (e.g. -"_s + QLatin1String(lowest) + u" to 1000 excluding 0)"_s;
}

} // namespace

// The arithmetic and the limits of a ticket recharge: what it adds, in which precision, and which
// entries it refuses with which words.
class TestRechargeRules : public QObject
{
    Q_OBJECT

private slots:
    void testMinutesAreAddedAsSeconds_data();
    void testMinutesAreAddedAsSeconds();
    void testSecondsAreSinglePrecision();
    void testMinuteLimits_data();
    void testMinuteLimits();
    void testQuotaIsAddedOrReplacesNoLimit_data();
    void testQuotaIsAddedOrReplacesNoLimit();
    void testDayLimits_data();
    void testDayLimits();
    void testExpiryQuestion_data();
    void testExpiryQuestion();
    void testOnlyADateTimeIsADate();
};

void TestRechargeRules::testMinutesAreAddedAsSeconds_data()
{
    QTest::addColumn<float>("seconds");
    QTest::addColumn<double>("minutes");
    QTest::addColumn<float>("expected");
    QTest::newRow("five minutes add 300 seconds") << 1800.0F << 5.0 << 2100.0F;
    QTest::newRow("a negative entry deducts") << 1800.0F << -29.0 << 60.0F;
    QTest::newRow("half a minute adds 30 seconds") << 0.0F << 0.5 << 30.0F;
    QTest::newRow("no minutes leave the time as it was") << 3599.0F << 0.0 << 3599.0F;
}

void TestRechargeRules::testMinutesAreAddedAsSeconds()
{
    QFETCH(float, seconds);
    QFETCH(double, minutes);
    QFETCH(float, expected);
    QCOMPARE(rechargedSeconds(seconds, minutes), expected);
}

void TestRechargeRules::testSecondsAreSinglePrecision()
{
    // The entry is cut to a single before it is multiplied, and the product is a single.
    const double minutes = 1.23456789;
    QCOMPARE(rechargedSeconds(0.0F, minutes), float(minutes) * 60.0F);
    QVERIFY(double(rechargedSeconds(0.0F, minutes)) != minutes * 60.0);
    // Above 2^24 seconds a single can't hold the added second: the sum rounds back.
    QCOMPARE(rechargedSeconds(16777216.0F, 1.0 / 60.0), 16777216.0F);
}

void TestRechargeRules::testMinuteLimits_data()
{
    QTest::addColumn<double>("wholeMinutes");
    QTest::addColumn<double>("minutes");
    QTest::addColumn<int>("quota");
    QTest::addColumn<QString>("message"); // empty: accepted
    QTest::newRow("taking all 30 minutes is refused") << 30.0 << -30.0 << 0 << refusal("29");
    QTest::newRow("leaving one of 30 minutes is accepted") << 30.0 << -29.0 << 0 << QString();
    QTest::newRow("1001 minutes are refused") << 100.0 << 1001.0 << 0 << refusal("99");
    QTest::newRow("1000 minutes are accepted below 5000") << 4999.0 << 1000.0 << 0 << QString();
    QTest::newRow("1000 minutes on 5000 reach 6000") << 5000.0 << 1000.0 << 0 << refusal("4999");
    QTest::newRow("0 minutes without quota are refused") << 60.0 << 0.0 << 0 << refusal("59");
    QTest::newRow("0 minutes with a quota of 50 pass") << 60.0 << 0.0 << 50 << QString();
    QTest::newRow("a ticket without time shows a double minus") << 0.0 << -5.0 << 0 << refusal("-1");
    QTest::newRow("fractions count as they are") << 10.0 << -9.5 << 0 << QString();
}

void TestRechargeRules::testMinuteLimits()
{
    QFETCH(double, wholeMinutes);
    QFETCH(double, minutes);
    QFETCH(int, quota);
    QFETCH(QString, message);
    QCOMPARE(rechargeMinutesProblem(wholeMinutes, minutes, quota).value_or(QString()), message);
}

void TestRechargeRules::testQuotaIsAddedOrReplacesNoLimit_data()
{
    QTest::addColumn<double>("present");
    QTest::addColumn<int>("added");
    QTest::addColumn<double>("expected");
    QTest::newRow("a quota of -1 is replaced") << -1.0 << 500 << 500.0;
    QTest::newRow("unlimited is replaced as well") << -9999.0 << 50 << 50.0;
    QTest::newRow("a quota of 0 grows") << 0.0 << 50 << 50.0;
    QTest::newRow("a quota of 100 grows") << 100.0 << 50 << 150.0;
    QTest::newRow("adding 0 to no limit sets 0") << -1.0 << 0 << 0.0;
}

void TestRechargeRules::testQuotaIsAddedOrReplacesNoLimit()
{
    QFETCH(double, present);
    QFETCH(int, added);
    QFETCH(double, expected);
    QCOMPARE(rechargedQuota(present, added), expected);
}

void TestRechargeRules::testDayLimits_data()
{
    QTest::addColumn<QVariant>("days");
    QTest::addColumn<QVariant>("expire");
    QTest::addColumn<double>("added");
    QTest::addColumn<int>("quota");
    QTest::addColumn<QString>("message"); // empty: accepted
    const QString fromDays = u"Date Value must be from -3 to 365 day(s)!"_s;
    const QString fromYear = u"Date Value must be from -365 to 365 day(s)!"_s;
    QTest::newRow("400 days are accepted without quota") << QVariant(3) << NoDate << 400.0 << 0 << QString();
    QTest::newRow("5 days are refused with a quota of 500") << QVariant(3) << NoDate << 5.0 << 500 << fromDays;
    QTest::newRow("a quota of 365 still passes") << QVariant(3) << NoDate << 5.0 << 365 << QString();
    QTest::newRow("taking all 3 days is accepted") << QVariant(3) << NoDate << -3.0 << 0 << QString();
    QTest::newRow("taking 4 of 3 days is refused") << QVariant(3) << NoDate << -4.0 << 0 << fromDays;
    QTest::newRow("no date and no days name -0")
        << QVariant(0) << NoDate << -1.0 << 0 << u"Date Value must be from -0 to 365 day(s)!"_s;
    QTest::newRow("a date takes off 365 days") << QVariant(0) << AnyDate << -365.0 << 0 << QString();
    QTest::newRow("a date refuses 366 days off") << QVariant(0) << AnyDate << -366.0 << 0 << fromYear;
    QTest::newRow("a date takes 1000 days on") << QVariant(0) << AnyDate << 1000.0 << 0 << QString();
    QTest::newRow("a date refuses a quota above 365") << QVariant(0) << AnyDate << 5.0 << 366 << fromYear;
}

void TestRechargeRules::testDayLimits()
{
    QFETCH(QVariant, days);
    QFETCH(QVariant, expire);
    QFETCH(double, added);
    QFETCH(int, quota);
    QFETCH(QString, message);
    QCOMPARE(rechargeDaysProblem(days, expire, added, quota).value_or(QString()), message);
}

void TestRechargeRules::testExpiryQuestion_data()
{
    QTest::addColumn<QString>("exType");
    QTest::addColumn<QVariant>("days");
    QTest::addColumn<QVariant>("expire");
    QTest::addColumn<QString>("question");
    QTest::newRow("by date shows the date")
        << u"1"_s << QVariant(3) << AnyDate << u"Present Expiration date is 05/Jan/2009\nReCharge Date?"_s;
    QTest::newRow("by date without a date shows nothing")
        << u"1"_s << QVariant(3) << NoDate << u"Present Expiration date is \nReCharge Date?"_s;
    QTest::newRow("by days shows the days")
        << u"2"_s << QVariant(3) << AnyDate << u"Present Expiration days is 3 day(s)\nReCharge by day(s)?"_s;
    QTest::newRow("by days with 0 days shows the date")
        << u"2"_s << QVariant(0) << AnyDate << u"Present Expiration days is 05/Jan/2009 day(s)\nReCharge by day(s)?"_s;
    QTest::newRow("any other type asks by days")
        << u"x"_s << QVariant(10.5) << NoDate << u"Present Expiration days is 10.5 day(s)\nReCharge by day(s)?"_s;
}

void TestRechargeRules::testExpiryQuestion()
{
    QFETCH(QString, exType);
    QFETCH(QVariant, days);
    QFETCH(QVariant, expire);
    QFETCH(QString, question);
    QCOMPARE(expiryRechargeQuestion(exType, days, expire), question);
}

void TestRechargeRules::testOnlyADateTimeIsADate()
{
    QVERIFY(expireIsDate(AnyDate));
    QVERIFY(!expireIsDate(NoDate));
    QVERIFY(!expireIsDate(QVariant(QDateTime())));
}

QTEST_GUILESS_MAIN(TestRechargeRules)
#include "TestRechargeRules.moc"
