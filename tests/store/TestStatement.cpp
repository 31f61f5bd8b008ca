#include "store/Statement.h"

#include <QDate>
#include <QTest>

using namespace Qt::StringLiterals;

namespace marlet {

class TestStatement : public QObject
{
    Q_OBJECT

private:
    // Takes a Statement the way the connection's Execute does.
    static QString textOf(const Statement& statement) { return statement.text(); }

private slots:
    void testText_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QVariantList>("values");
        QTest::addColumn<QString>("text");

        QTest::newRow("quoted places take the values in order")
            << u"Select * from Users where Username = '{}' and Password = '{}'"_s
            << QVariantList {u"JOHN"_s, u"SECRET"_s}
            << u"Select * from Users where Username = 'JOHN' and Password = 'SECRET'"_s;
        QTest::newRow("a number place takes the number's text")
            << u"select * from Account where member=false and Time = {}"_s << QVariantList {5 * 60}
            << u"select * from Account where member=false and Time = 300"_s;
        QTest::newRow("a fraction keeps its shortest form")
            << u"Time = {}"_s << QVariantList {5.7 * 60} << u"Time = 342"_s;
        QTest::newRow("a single-precision fraction")
            << u"Rechargetime = {}"_s << QVariantList {QVariant(2.5f)} << u"Rechargetime = 2.5"_s;
        QTest::newRow("a place with text around it inside quotes")
            << u"TicketGrp like '{}%'"_s << QVariantList {u"2411"_s} << u"TicketGrp like '2411%'"_s;
        QTest::newRow("a value holding a quote is joined as it is")
            << u"Username = '{}'"_s << QVariantList {u"O'BRIEN"_s} << u"Username = 'O'BRIEN'"_s;
        QTest::newRow("a value that looks like an argument marker stays literal")
            << u"Username = '{}' and Password = '{}'"_s << QVariantList {u"%1"_s, u"%2"_s}
            << u"Username = '%1' and Password = '%2'"_s;
        QTest::newRow("a value that looks like a place is not filled again")
            << u"Username = '{}' and Password = '{}'"_s << QVariantList {u"{}"_s, u"X"_s}
            << u"Username = '{}' and Password = 'X'"_s;
        QTest::newRow("booleans read as True and False")
            << u"a = {} and b = {}"_s << QVariantList {true, false} << u"a = True and b = False"_s;
        QTest::newRow("a Null value reads as nothing") << u"a = '{}'"_s << QVariantList {QVariant()} << u"a = ''"_s;
        QTest::newRow("a place without a value stays as it is")
            << u"a = '{}' and b = '{}'"_s << QVariantList {u"X"_s} << u"a = 'X' and b = '{}'"_s;
        QTest::newRow("surplus values are left out")
            << u"Delete * from Capt"_s << QVariantList {1, 2} << u"Delete * from Capt"_s;
    }

    void testText()
    {
        QFETCH(QString, pattern);
        QFETCH(QVariantList, values);
        QFETCH(QString, text);
        const Statement statement(pattern, values);
        QCOMPARE(statement.text(), text);
        QCOMPARE(statement.pattern(), pattern);
        QCOMPARE(statement.values(), values);
    }

    void testPlainStatementConvertsFromText()
    {
        const QString pattern = u"Delete * from Row6PrintTemp"_s;
        QCOMPARE(textOf(pattern), pattern);
        const Statement statement = pattern;
        QVERIFY(statement.values().isEmpty());
        QCOMPARE(statement.pattern(), pattern);
    }

    void testValueText()
    {
        QCOMPARE(Statement::valueText(QVariant(true)), u"True"_s);
        QCOMPARE(Statement::valueText(QVariant(qint64(-9999))), u"-9999"_s);
        QCOMPARE(Statement::valueText(QVariant(QDate(2024, 3, 15))), u"2024-03-15"_s);
        QCOMPARE(Statement::valueText(QVariant(QString())), QString());
    }
};

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestStatement)
#include "TestStatement.moc"
