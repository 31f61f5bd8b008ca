#include "issuing/TicketRules.h"
#include "store/PreferenceKeys.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace marlet;
using namespace Qt::StringLiterals;

class TestTicketRules : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testGroupNumberFromTheClock_data();
    void testGroupNumberFromTheClock();
    void testTicketNumberText_data();
    void testTicketNumberText();
    void testCustomTicketNumber();
    void testCreditInSeconds_data();
    void testCreditInSeconds();
    void testMinutesShownAreCutNotRounded_data();
    void testMinutesShownAreCutNotRounded();
    void testAmountText_data();
    void testAmountText();
    void testAmountAndPriceFollowTheCurrencyPreference_data();
    void testAmountAndPriceFollowTheCurrencyPreference();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<Preferences> m_store;
};

void TestTicketRules::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_store = std::make_unique<Preferences>(m_dir->path());
}

void TestTicketRules::testGroupNumberFromTheClock_data()
{
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<QString>("expected");
    QTest::newRow("15 March 2024 at 09:07:03") << QDateTime(QDate(2024, 3, 15), QTime(9, 7, 3)) << u"240315090703"_s;
    QTest::newRow("the last second of 2009") << QDateTime(QDate(2009, 12, 31), QTime(23, 59, 59)) << u"091231235959"_s;
    QTest::newRow("midnight keeps its zeros") << QDateTime(QDate(2030, 1, 2), QTime(0, 0, 0)) << u"300102000000"_s;
    QTest::newRow("afternoon hours count to 24")
        << QDateTime(QDate(2026, 11, 15), QTime(18, 35, 7, 999)) << u"261115183507"_s;
}

void TestTicketRules::testGroupNumberFromTheClock()
{
    QFETCH(QDateTime, now);
    QFETCH(QString, expected);
    QCOMPARE(ticketGroupNumber(now), expected);
}

void TestTicketRules::testTicketNumberText_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("expected");
    QTest::newRow("first") << 1 << u"001"_s;
    QTest::newRow("ninth") << 9 << u"009"_s;
    QTest::newRow("tenth") << 10 << u"010"_s;
    QTest::newRow("99th") << 99 << u"099"_s;
    QTest::newRow("100th") << 100 << u"100"_s;
    QTest::newRow("999th") << 999 << u"999"_s;
    QTest::newRow("1000th is the number itself") << 1000 << u"1000"_s;
}

void TestTicketRules::testTicketNumberText()
{
    QFETCH(int, position);
    QFETCH(QString, expected);
    QCOMPARE(ticketNumberText(position), expected);
}

void TestTicketRules::testCustomTicketNumber()
{
    QCOMPARE(QString(CustomTicketNo), u"000"_s);
}

void TestTicketRules::testCreditInSeconds_data()
{
    QTest::addColumn<double>("hours");
    QTest::addColumn<double>("minutes");
    QTest::addColumn<double>("seconds");
    QTest::newRow("one minute") << 0.0 << 1.0 << 60.0;
    QTest::newRow("an hour and a half") << 1.0 << 30.0 << 5400.0;
    QTest::newRow("360 hours") << 360.0 << 0.0 << 1296000.0;
    QTest::newRow("nothing") << 0.0 << 0.0 << 0.0;
}

void TestTicketRules::testCreditInSeconds()
{
    QFETCH(double, hours);
    QFETCH(double, minutes);
    QFETCH(double, seconds);
    QCOMPARE(creditSeconds(hours, minutes), seconds);
    QCOMPARE(creditMinutes(seconds), hours * 60 + minutes);
}

void TestTicketRules::testMinutesShownAreCutNotRounded_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<double>("minutes");
    QTest::newRow("3599 seconds are 59 minutes") << 3599.0 << 59.0;
    QTest::newRow("3600 seconds are 60 minutes") << 3600.0 << 60.0;
    QTest::newRow("59 seconds are 0 minutes") << 59.0 << 0.0;
    QTest::newRow("a fraction of a second below a minute") << 119.9 << 1.0;
}

void TestTicketRules::testMinutesShownAreCutNotRounded()
{
    QFETCH(double, seconds);
    QFETCH(double, minutes);
    QCOMPARE(wholeMinutes(seconds), minutes);
}

void TestTicketRules::testAmountText_data()
{
    QTest::addColumn<QString>("currency");
    QTest::addColumn<QString>("price");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one-character currency") << u"N"_s << u"200"_s << u"N200"_s;
    QTest::newRow("two-character currency in upper case") << u"Rs"_s << u"50"_s << u"RS50"_s;
    QTest::newRow("a long currency is cut to three") << u"Naira"_s << u"100"_s << u"NAI100"_s;
    QTest::newRow("a price with a fraction") << u"usd"_s << u"12.5"_s << u"USD12.5"_s;
    QTest::newRow("no currency at all") << u""_s << u"50"_s << u"50"_s;
}

void TestTicketRules::testAmountText()
{
    QFETCH(QString, currency);
    QFETCH(QString, price);
    QFETCH(QString, expected);
    QCOMPARE(ticketAmount(currency, price), expected);
}

void TestTicketRules::testAmountAndPriceFollowTheCurrencyPreference_data()
{
    QTest::addColumn<QString>("currency"); // null: absent
    QTest::addColumn<QString>("amount");
    QTest::addColumn<QString>("price");
    QTest::newRow("a fresh machine uses N") << QString() << u"N200"_s << u"N200"_s;
    QTest::newRow("a one-character currency") << u"$"_s << u"$200"_s << u"$200"_s;
    QTest::newRow("a two-character currency") << u"gh"_s << u"GH200"_s << u"gh200"_s;
    QTest::newRow("the price shows the whole currency") << u"Naira"_s << u"NAI200"_s << u"Naira200"_s;
}

void TestTicketRules::testAmountAndPriceFollowTheCurrencyPreference()
{
    QFETCH(QString, currency);
    QFETCH(QString, amount);
    QFETCH(QString, price);
    SessionPreferences session(*m_store, u"Cyber Hut"_s);
    if (!currency.isNull())
        session.save(keys::Currency, currency);
    QCOMPARE(ticketAmount(session, u"200"_s), amount);
    QCOMPARE(priceText(session, u"200"_s), price);
}

QTEST_GUILESS_MAIN(TestTicketRules)
#include "TestTicketRules.moc"
