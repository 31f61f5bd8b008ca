#include "settings/SettingsLine.h"

#include <QTest>

using namespace marlet;

namespace {

QString latin(const char* text)
{
    return QLatin1String(text);
}

bool onlyDigits(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

// The scrambling of the settings file's lines, both ways, and what a damaged line gives.
class TestSettingsLine : public QObject
{
    Q_OBJECT

private slots:
    void testScramble_data();
    void testScramble();
    void testEveryCodeComesBack();
    void testRecordsComeBackThreeTimesAsLong_data();
    void testRecordsComeBackThreeTimesAsLong();
    void testCharactersBeyondTheCodePageBecomeQuestionMarks();
    void testGarbledLines_data();
    void testGarbledLines();
    void testEveryMutationOfARecordIsGarbledOrComesBackExactly();
};

void TestSettingsLine::testScramble_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("digits");
    QTest::newRow("reversed, then B and A") << latin("AB") << latin("765665");
    QTest::newRow("an empty text is an empty line") << QString() << QString();
    QTest::newRow("code 0 gives 501 reversed") << QString(QChar(0)) << latin("105");
    QTest::newRow("code 9 gives 510 reversed, with its zero") << QString(QChar(9)) << latin("015");
    QTest::newRow("code 255 gives 756 reversed") << QString(QChar(255)) << latin("657");
    QTest::newRow("the word True") << latin("True") << latin("206816516585");
}

void TestSettingsLine::testScramble()
{
    QFETCH(QString, text);
    QFETCH(QString, digits);
    QCOMPARE(ScrambleLine(text), digits);
    QCOMPARE(UnscrambleLine(digits), std::optional<QString>(text));
}

void TestSettingsLine::testEveryCodeComesBack()
{
    QString text;
    for (int code = 0; code <= 255; ++code)
        text += QChar(char16_t(code));
    const QString digits = ScrambleLine(text);
    QCOMPARE(digits.size(), 256 * 3);
    QVERIFY(onlyDigits(digits));
    QCOMPARE(UnscrambleLine(digits), std::optional<QString>(text));
}

void TestSettingsLine::testRecordsComeBackThreeTimesAsLong_data()
{
    QTest::addColumn<QString>("record");
    QTest::newRow("an Option record") << latin("O :- STR :- NVT");
    QTest::newRow("a list record") << latin("I :- Capt :- Caption :- POKER");
    QTest::newRow("a value holding the separator") << latin("C :- INo :- 3 :- 4");
    QTest::newRow("a value with a quote and SQL") << latin("I :- QuickT :- TicketType :- x'); drop table Account; --");
    QTest::newRow("a record without a value") << latin("O :- VShutTime- ");
    QTest::newRow("a line break in a value") << latin("O :- Address :- Main St\r\nTown");
}

void TestSettingsLine::testRecordsComeBackThreeTimesAsLong()
{
    QFETCH(QString, record);
    const QString digits = ScrambleLine(record);
    QCOMPARE(digits.size(), record.size() * 3);
    QVERIFY(onlyDigits(digits));
    QCOMPARE(UnscrambleLine(digits), std::optional<QString>(record));
}

void TestSettingsLine::testCharactersBeyondTheCodePageBecomeQuestionMarks()
{
    QCOMPARE(ScrambleLine(QStringLiteral("\u20ac1")), ScrambleLine(latin("?1")));
    QCOMPARE(UnscrambleLine(ScrambleLine(QStringLiteral("caf\u00e9 \u263a"))),
        std::optional<QString>(QStringLiteral("caf\u00e9 ?")));
}

void TestSettingsLine::testGarbledLines_data()
{
    QTest::addColumn<QString>("digits");
    QTest::newRow("one digit short") << latin("76566");
    QTest::newRow("one digit over") << latin("7656651");
    QTest::newRow("a letter") << latin("76566a");
    QTest::newRow("a blank") << latin("765 665");
    QTest::newRow("a sign") << latin("-65665");
    QTest::newRow("below code 0: 500") << latin("005");
    QTest::newRow("beyond code 255: 757") << latin("757");
    QTest::newRow("the largest group") << latin("999");
    QTest::newRow("digits of another script") << QStringLiteral("\u0667\u0666\u0665");
}

void TestSettingsLine::testGarbledLines()
{
    QFETCH(QString, digits);
    QCOMPARE(UnscrambleLine(digits), std::nullopt);
}

void TestSettingsLine::testEveryMutationOfARecordIsGarbledOrComesBackExactly()
{
    const QString digits = ScrambleLine(latin("S :- TopBarMov :- 1"));
    int garbled = 0;
    int readable = 0;
    const auto check = [&](const QString& mutated) {
        const std::optional<QString> text = UnscrambleLine(mutated);
        if (!text) {
            ++garbled;
            return;
        }
        ++readable;
        QCOMPARE(ScrambleLine(*text), mutated);
    };
    for (qsizetype at = 0; at < digits.size(); ++at) {
        for (const char16_t replacement : u"0123456789x :") {
            QString mutated = digits;
            mutated[at] = QChar(replacement);
            check(mutated);
        }
        check(QString(digits).remove(at, 1));
        check(QString(digits).insert(at, u'7'));
    }
    for (qsizetype length = 0; length <= digits.size(); ++length)
        check(digits.left(length));
    QVERIFY(garbled > 0);
    QVERIFY(readable > 0);
}

QTEST_GUILESS_MAIN(TestSettingsLine)
#include "TestSettingsLine.moc"
