#include "component/Component.h"
#include "component/ScreenRegistry.h"
#include "platform/Form.h"
#include "platform/Operator.h"
#include "script/ScriptedPlatform.h"
#include "support/ScriptedCafe.h"

#include <QTemporaryDir>
#include <QTest>

namespace marlet {

namespace {

QString latin(const char* text)
{
    return QLatin1String(text);
}

constexpr int LargestTotal = 32767;

} // namespace

// The recycle bin screen counts its entries in a 16-bit total: a bin of more rows than that leaves
// the total where it stood, while the list still takes every row.
class TestRecycleBinTotal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void testATotalBeyondSixteenBitsKeepsTheLastOne();

private:
    // Adds bin rows named BIN00001, BIN00002 ... up to `last`, starting after `first` - 1.
    void addBinRows(int first, int last);
    Control& control(const char* name) { return m_cafe->control(name); }

    std::unique_ptr<test::ScriptedCafe> m_cafe;
};

void TestRecycleBinTotal::init()
{
    m_cafe = std::make_unique<test::ScriptedCafe>();
    const QString problem = m_cafe->prepare();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void TestRecycleBinTotal::cleanup()
{
    const QStringList failures = m_cafe->finish();
    m_cafe.reset();
    QCOMPARE(failures, QStringList());
}

void TestRecycleBinTotal::addBinRows(int first, int last)
{
    QVERIFY2(m_cafe->database.connection().executeNative(
                 latin("WITH RECURSIVE n(i) AS (SELECT ? UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                       "INSERT INTO \"RecycleBin\" (\"Username\", \"Time\", \"Member\") "
                       "SELECT printf('BIN%05d', i), 60, 0 FROM n"),
                 {first, last}),
        qPrintable(m_cafe->database.connection().lastError()));
}

void TestRecycleBinTotal::testATotalBeyondSixteenBitsKeepsTheLastOne()
{
    addBinRows(1, LargestTotal);
    m_cafe->open(Screen::RecycleBin);
    QCOMPARE(control("List1").listCount(), LargestTotal);
    QCOMPARE(control("Label3").caption(), latin("Total: 32767"));
    QCOMPARE(control("ProgressBar1").maximum(), LargestTotal);

    // One row more does not fit: the list shows it, the total and the bar keep their last values.
    addBinRows(LargestTotal + 1, LargestTotal + 1);
    m_cafe->platform.expectMessage(latin("Refresh ReCycle Bin List?"), MsgStyle::YesNoQuestion, MsgResult::Yes);
    QVERIFY(Operator::click(control("Command7")));
    QCOMPARE(control("List1").listCount(), LargestTotal + 1);
    QCOMPARE(control("List1").item(LargestTotal), latin("BIN32768"));
    QCOMPARE(control("Label3").caption(), latin("Total: 32767"));
    QCOMPARE(control("ProgressBar1").maximum(), LargestTotal);
    QCOMPARE(control("ProgressBar1").value(), 0);

    // After a deletion the status shows the list's count, which is no 16-bit number.
    QVERIFY(Operator::pick(control("List1"), 0));
    QVERIFY(Operator::pick(control("List1"), LargestTotal));
    m_cafe->platform.expectMessage(
        latin("Delete 2 Selected Items Permanently? "), MsgStyle::YesNoQuestionNoDefault, MsgResult::Yes);
    m_cafe->platform.expectMessage(latin("Selected Items Deleted Successfully!"), MsgStyle::Info);
    QVERIFY(Operator::click(control("Command2")));
    QCOMPARE(control("List1").listCount(), LargestTotal - 1);
    QCOMPARE(control("Label3").caption(), latin("Total:32766"));
    QCOMPARE(m_cafe->platform.pendingMessages(), 0);
}

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestRecycleBinTotal)
#include "TestRecycleBinTotal.moc"
