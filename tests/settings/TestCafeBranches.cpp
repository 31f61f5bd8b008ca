#include "settings/CafeBranches.h"

#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

// The café branch list, its entries and how a removal reads the branch number back.
class TestCafeBranches : public QObject
{
    Q_OBJECT

private slots:
    void testChoices();
    void testEntry();
    void testEntryNumber_data();
    void testEntryNumber();
};

void TestCafeBranches::testChoices()
{
    QCOMPARE(cafe::branchChoices(0), QStringList({u"[Select Cafe Name]"_s}));
    QCOMPARE(cafe::branchChoices(3), QStringList({u"[Select Cafe Name]"_s, u"Cafe1"_s, u"Cafe2"_s, u"Cafe3"_s}));
    QCOMPARE(cafe::branchNumber(u"Cafe12"_s), u"12"_s);
}

void TestCafeBranches::testEntry()
{
    QCOMPARE(cafe::entry(u"2"_s, u"pc-04"_s), u"Cafe2 - [PC-04]"_s);
}

void TestCafeBranches::testEntryNumber_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("valid");
    QTest::newRow("plain entry") << u"Cafe2 - [PC04]"_s << u"2"_s << true;
    QTest::newRow("a dash in the computer name") << u"Cafe13 - [PC-04]"_s << u"13"_s << true;
    QTest::newRow("no dash") << u"Cafe2 [PC04]"_s << QString() << false;
}

void TestCafeBranches::testEntryNumber()
{
    QFETCH(QString, entry);
    QFETCH(QString, number);
    QFETCH(bool, valid);
    const std::optional<QString> read = cafe::entryNumber(entry);
    QCOMPARE(read.has_value(), valid);
    if (valid)
        QCOMPARE(*read, number);
}

QTEST_GUILESS_MAIN(TestCafeBranches)
#include "TestCafeBranches.moc"
