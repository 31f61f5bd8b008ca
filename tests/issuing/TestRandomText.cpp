#include "issuing/RandomText.h"
#include "store/PreferenceKeys.h"
#include "support/IssuingFixtures.h"

#include <QHash>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <memory>

using namespace marlet;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(marlet::TicketAlphabet)

namespace {

const QString digits = u"0123456789"_s;
const QString letters = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"_s;
const QString clear = u"23456789ABCDEFGHJKLMNPQRSTUVWXYZ"_s;

QString passGenTypeOf(TicketAlphabet alphabet)
{
    switch (alphabet) {
    case TicketAlphabet::Digits:
        return u"1"_s;
    case TicketAlphabet::Letters:
        return u"2"_s;
    case TicketAlphabet::Clear:
        break;
    }
    return u"3"_s;
}

struct Tally
{
    QHash<QChar, int> counts;
    int outside = 0; // characters that are not in the alphabet
};

Tally tally(TicketAlphabet alphabet, const QString& expected, int draws, const UniformSource& source)
{
    Tally result;
    for (const QChar c : expected)
        result.counts.insert(c, 0);
    for (int i = 0; i < draws; ++i) {
        const QChar c = drawCharacter(alphabet, source);
        if (result.counts.contains(c))
            ++result.counts[c];
        else
            ++result.outside;
    }
    return result;
}

// Pearson's statistic of the counts against an even spread.
double chiSquare(const Tally& result, int draws)
{
    const double expected = double(draws) / double(result.counts.size());
    double sum = 0;
    for (const int count : result.counts)
        sum += (count - expected) * (count - expected) / expected;
    return sum;
}

} // namespace

class TestRandomText : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testAlphabetFollowsPassGenType_data();
    void testAlphabetFollowsPassGenType();
    void testEveryCodeInTurnLetsExactlyTheAlphabetThrough_data();
    void testEveryCodeInTurnLetsExactlyTheAlphabetThrough();
    void testRejectedCodesAreDrawnAgain_data();
    void testRejectedCodesAreDrawnAgain();
    void testCodeIsTheWholePartOfTheNumberTimes255_data();
    void testCodeIsTheWholePartOfTheNumberTimes255();
    void testLengthGivesThatManyCharacters_data();
    void testLengthGivesThatManyCharacters();
    void testPassGenTypeIsReadAtEveryCall();
    void testCharactersComeOutEvenly_data();
    void testCharactersComeOutEvenly();
    void testEvennessCheckCatchesASkewedSource();
    void testSystemSourceIsEvenAndStaysInTheAlphabet_data();
    void testSystemSourceIsEvenAndStaysInTheAlphabet();
    void testSystemSourceStaysBelowOne();

private:
    SessionPreferences prefs() const { return SessionPreferences(*m_store, u"Cyber Hut"_s); }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<Preferences> m_store;
};

void TestRandomText::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_store = std::make_unique<Preferences>(m_dir->path());
}

void TestRandomText::testAlphabetFollowsPassGenType_data()
{
    QTest::addColumn<QString>("stored"); // null: the key is absent
    QTest::addColumn<TicketAlphabet>("alphabet");
    QTest::newRow("an absent key means digits") << QString() << TicketAlphabet::Digits;
    QTest::newRow("1 means digits") << u"1"_s << TicketAlphabet::Digits;
    QTest::newRow("2 means letters") << u"2"_s << TicketAlphabet::Letters;
    QTest::newRow("3 means the clear set") << u"3"_s << TicketAlphabet::Clear;
    QTest::newRow("0 means the clear set") << u"0"_s << TicketAlphabet::Clear;
    QTest::newRow("7 means the clear set") << u"7"_s << TicketAlphabet::Clear;
    QTest::newRow("1.4 rounds to 1") << u"1.4"_s << TicketAlphabet::Digits;
    QTest::newRow("2.5 rounds to even 2") << u"2.5"_s << TicketAlphabet::Letters;
    QTest::newRow("blanks around 2 still read as 2") << u" 2 "_s << TicketAlphabet::Letters;
    QTest::newRow("a text that is no number means the clear set") << u"abc"_s << TicketAlphabet::Clear;
    QTest::newRow("a number beyond 16 bits means the clear set") << u"65537"_s << TicketAlphabet::Clear;
}

void TestRandomText::testAlphabetFollowsPassGenType()
{
    QFETCH(QString, stored);
    QFETCH(TicketAlphabet, alphabet);
    SessionPreferences session = prefs();
    if (!stored.isNull())
        session.save(keys::PassGenType, stored);
    QCOMPARE(ticketAlphabet(session), alphabet);
}

void TestRandomText::testEveryCodeInTurnLetsExactlyTheAlphabetThrough_data()
{
    QTest::addColumn<TicketAlphabet>("alphabet");
    QTest::addColumn<QString>("expected");
    QTest::newRow("digits") << TicketAlphabet::Digits << digits;
    QTest::newRow("letters") << TicketAlphabet::Letters << letters;
    QTest::newRow("clear set without 0, 1, I and O") << TicketAlphabet::Clear << clear;
}

void TestRandomText::testEveryCodeInTurnLetsExactlyTheAlphabetThrough()
{
    QFETCH(TicketAlphabet, alphabet);
    QFETCH(QString, expected);
    // Every code from 0 to 254 once, in order: what comes out is the alphabet, each character once.
    std::vector<double> everyCode;
    for (int code = 0; code < 255; ++code)
        everyCode.push_back(test::uniformFor(code));
    test::ScriptedSource source(everyCode);
    SessionPreferences session = prefs();
    session.save(keys::PassGenType, passGenTypeOf(alphabet));

    QCOMPARE(Random(session, int(expected.size()), source.source()), expected);
    QCOMPARE(source.calls(), int(expected.back().unicode()) + 1);
}

void TestRandomText::testRejectedCodesAreDrawnAgain_data()
{
    QTest::addColumn<TicketAlphabet>("alphabet");
    QTest::addColumn<QList<int>>("codes");
    QTest::addColumn<QChar>("expected");
    QTest::newRow("digits skip control codes and letters")
        << TicketAlphabet::Digits << QList<int> {0, 47, 58, 65, 254, 48} << QChar(u'0');
    QTest::newRow("letters skip digits, @ and [")
        << TicketAlphabet::Letters << QList<int> {48, 64, 91, 97, 90} << QChar(u'Z');
    QTest::newRow("clear set skips 0, 1, I and O")
        << TicketAlphabet::Clear << QList<int> {48, 49, 73, 79, 50} << QChar(u'2');
    QTest::newRow("clear set skips lower-case letters")
        << TicketAlphabet::Clear << QList<int> {105, 111, 122, 72} << QChar(u'H');
}

void TestRandomText::testRejectedCodesAreDrawnAgain()
{
    QFETCH(TicketAlphabet, alphabet);
    QFETCH(QList<int>, codes);
    QFETCH(QChar, expected);
    std::vector<double> values;
    for (const int code : codes)
        values.push_back(test::uniformFor(code));
    test::ScriptedSource source(values);
    QCOMPARE(drawCharacter(alphabet, source.source()), expected);
    QCOMPARE(source.calls(), int(codes.size()));
}

void TestRandomText::testCodeIsTheWholePartOfTheNumberTimes255_data()
{
    QTest::addColumn<double>("u");
    QTest::addColumn<QChar>("expected");
    QTest::newRow("0.2 is code 51") << 0.2 << QChar(u'3');
    QTest::newRow("just below 49/255 is still code 48") << (49.0 / 255 - 1e-9) << QChar(u'0');
    QTest::newRow("57.99/255 is code 57") << (57.99 / 255) << QChar(u'9');
}

void TestRandomText::testCodeIsTheWholePartOfTheNumberTimes255()
{
    QFETCH(double, u);
    QFETCH(QChar, expected);
    test::ScriptedSource source({u});
    QCOMPARE(drawCharacter(TicketAlphabet::Digits, source.source()), expected);
}

void TestRandomText::testLengthGivesThatManyCharacters_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("expected");
    QTest::newRow("seven") << 7 << u"7777777"_s;
    QTest::newRow("one") << 1 << u"7"_s;
    QTest::newRow("zero gives nothing") << 0 << QString();
    QTest::newRow("a negative length gives nothing") << -4 << QString();
}

void TestRandomText::testLengthGivesThatManyCharacters()
{
    QFETCH(int, length);
    QFETCH(QString, expected);
    test::ScriptedSource source({test::uniformFor('7')});
    QCOMPARE(Random(prefs(), length, source.source()), expected);
    QCOMPARE(source.calls(), qMax(length, 0));
}

void TestRandomText::testPassGenTypeIsReadAtEveryCall()
{
    test::ScriptedSource source({test::uniformFor('K'), test::uniformFor('K'), test::uniformFor('5')});
    SessionPreferences session = prefs();
    session.save(keys::PassGenType, u"2"_s);
    QCOMPARE(Random(session, 1, source.source()), u"K"_s);
    session.save(keys::PassGenType, u"1"_s);
    // The letter drawn next is refused by the digits and the digit after it is taken.
    QCOMPARE(Random(session, 1, source.source()), u"5"_s);
    QCOMPARE(source.calls(), 3);
}

void TestRandomText::testCharactersComeOutEvenly_data()
{
    QTest::addColumn<TicketAlphabet>("alphabet");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<double>("critical"); // chi-square at p = 0.001 for size - 1 degrees of freedom
    QTest::newRow("digits") << TicketAlphabet::Digits << digits << 27.877;
    QTest::newRow("letters") << TicketAlphabet::Letters << letters << 52.620;
    QTest::newRow("clear set") << TicketAlphabet::Clear << clear << 61.098;
}

void TestRandomText::testCharactersComeOutEvenly()
{
    QFETCH(TicketAlphabet, alphabet);
    QFETCH(QString, expected);
    QFETCH(double, critical);
    constexpr int draws = 200000;
    QRandomGenerator seeded(20240315);
    const Tally result = tally(alphabet, expected, draws, [&seeded] { return seeded.generateDouble(); });
    QCOMPARE(result.outside, 0);
    QVERIFY2(chiSquare(result, draws) < critical, qPrintable(QString::number(chiSquare(result, draws))));
}

void TestRandomText::testEvennessCheckCatchesASkewedSource()
{
    // Squared numbers crowd towards 0, so low codes come up more often than high ones.
    constexpr int draws = 200000;
    QRandomGenerator seeded(20240315);
    const Tally result = tally(TicketAlphabet::Clear, clear, draws, [&seeded] {
        const double u = seeded.generateDouble();
        return u * u;
    });
    QCOMPARE(result.outside, 0);
    QVERIFY(chiSquare(result, draws) > 61.098);
}

void TestRandomText::testSystemSourceIsEvenAndStaysInTheAlphabet_data()
{
    testCharactersComeOutEvenly_data();
}

void TestRandomText::testSystemSourceIsEvenAndStaysInTheAlphabet()
{
    QFETCH(TicketAlphabet, alphabet);
    QFETCH(QString, expected);
    constexpr int draws = 20000;
    const Tally result = tally(alphabet, expected, draws, systemUniformSource());
    QCOMPARE(result.outside, 0);
    // A loose bound, ten standard deviations above the statistic's mean, so that a sound
    // generator practically never fails it while a broken one does.
    const double freedom = double(expected.size() - 1);
    const double bound = freedom + 10 * std::sqrt(2 * freedom);
    QVERIFY2(chiSquare(result, draws) < bound, qPrintable(QString::number(chiSquare(result, draws))));
}

void TestRandomText::testSystemSourceStaysBelowOne()
{
    const UniformSource source = systemUniformSource();
    for (int i = 0; i < 100000; ++i) {
        const double u = source();
        QVERIFY(u >= 0 && u < 1);
    }
}

QTEST_GUILESS_MAIN(TestRandomText)
#include "TestRandomText.moc"
