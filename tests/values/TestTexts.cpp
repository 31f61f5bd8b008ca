#include "values/Texts.h"

#include <QTest>

using namespace marlet::values;
using namespace Qt::StringLiterals;

class TestTexts : public QObject
{
    Q_OBJECT

private slots:
    void testTextFunctions();
};

void TestTexts::testTextFunctions()
{
    QCOMPARE(mid(u"240315090703"_s, 9, 4), u"0703"_s);
    QCOMPARE(mid(u"abc"_s, 2), u"bc"_s);
    QCOMPARE(mid(u"abc"_s, 4), QString());
    QCOMPARE(mid(u"abc"_s, 1, 0), QString());
    QCOMPARE(textPosition(u"a.b.c"_s, u"."_s), 2);
    QCOMPARE(textPosition(3, u"a.b.c"_s, u"."_s), 4);
    QCOMPARE(textPosition(u"name@host"_s, u"."_s), 0);
    QCOMPARE(textPosition(QString(), u"."_s), 0);
    QCOMPARE(textPosition(2, u"abc"_s, QString()), 2);
    QCOMPARE(textPosition(4, u"abc"_s, u"c"_s), 0);
    QCOMPARE(trimBlanks(u"  a b  "_s), u"a b"_s);
    QCOMPARE(trimBlanks(u"\tx\t"_s), u"\tx\t"_s);
    QCOMPARE(trimBlanks(u"   "_s), QString());
}

QTEST_GUILESS_MAIN(TestTexts)
#include "TestTexts.moc"
