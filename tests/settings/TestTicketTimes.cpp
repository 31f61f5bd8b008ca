#include "settings/TicketTimes.h"

#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

// The night time frame as the Ticket Setting page loads, checks and saves it, and the choices of
// the Quick-Ticket page.
class TestTicketTimes : public QObject
{
    Q_OBJECT

private slots:
    void testLoaded_data();
    void testLoaded();
    void testAccepted_data();
    void testAccepted();
    void testQuickTicketChoices();
};

void TestTicketTimes::testLoaded_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    QTest::newRow("short hour") << u"6:00"_s << u"06:00"_s;
    QTest::newRow("midnight") << u"00:00"_s << u"00:00"_s;
    QTest::newRow("seconds") << u"21:30:15"_s << u"21:30"_s;
    QTest::newRow("hour 25") << u"25:00"_s << u"00:00"_s;
    QTest::newRow("minute 60") << u"10:60"_s << u"00:00"_s;
    QTest::newRow("letters") << u"ab:cd"_s << u"00:00"_s;
    QTest::newRow("no colon") << u"2200"_s << u"0:00"_s;
    QTest::newRow("blank") << QString() << u"0:00"_s;
}

void TestTicketTimes::testLoaded()
{
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    QCOMPARE(tickettimes::loaded(stored), shown);
}

void TestTicketTimes::testAccepted_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("time") << u"22:00"_s << true;
    QTest::newRow("short") << u"0:00"_s << true;
    QTest::newRow("blank") << QString() << false;
    QTest::newRow("no colon") << u"2200"_s << false;
    QTest::newRow("hour 24") << u"24:00"_s << false;
    QTest::newRow("letters") << u"1a:00"_s << false;
}

void TestTicketTimes::testAccepted()
{
    QFETCH(QString, text);
    QFETCH(bool, accepted);
    QCOMPARE(tickettimes::accepted(text), accepted);
}

void TestTicketTimes::testQuickTicketChoices()
{
    const QStringList choices = tickettimes::quickTicketChoices();
    QCOMPARE(choices.size(), 500 + 301);
    QCOMPARE(choices.first(), u"1"_s);
    QCOMPARE(choices[499], u"500"_s);
    QCOMPARE(choices[500], u"500"_s);
    QCOMPARE(choices[501], u"505"_s);
    QCOMPARE(choices.last(), u"2000"_s);
}

QTEST_GUILESS_MAIN(TestTicketTimes)
#include "TestTicketTimes.moc"
