#include "platform/Form.h"
#include "platform/Operator.h"
#include "platform/ScriptedPlatform.h"
#include "shell/Component.h"
#include "shell/Screens.h"
#include "store/StoreTestDatabase.h"

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
    Control& control(const char* name) { return (*m_screen)[latin(name)]; }

    QTemporaryDir m_folder;
    std::unique_ptr<test::StoreTestDatabase> m_database;
    std::unique_ptr<ScriptedPlatform> m_platform;
    std::unique_ptr<Component> m_component;
    std::unique_ptr<Form> m_screen;
};

void TestRecycleBinTotal::init()
{
    m_database = std::make_unique<test::StoreTestDatabase>();
    QVERIFY2(m_database->isValid(), qPrintable(m_database->error()));
    m_platform = std::make_unique<ScriptedPlatform>();
    m_component
        = std::make_unique<Component>(*m_platform, m_folder.filePath(latin("prefs")), m_folder.filePath(latin("app")));
    m_component->session().AppTitle = latin("Norvantis");
    QVERIFY(m_component->session().connection().Open(m_database->connectionString()));
}

void TestRecycleBinTotal::cleanup()
{
    if (m_screen)
        m_screen->forceUnload();
    m_screen.reset();
    m_platform->finish();
    QCOMPARE(m_platform->failures(), QStringList());
    m_component.reset();
    m_platform.reset();
    m_database.reset();
}

void TestRecycleBinTotal::addBinRows(int first, int last)
{
    QVERIFY2(m_database->connection().executeNative(
                 latin("WITH RECURSIVE n(i) AS (SELECT ? UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                       "INSERT INTO \"RecycleBin\" (\"Username\", \"Time\", \"Member\") "
                       "SELECT printf('BIN%05d', i), 60, 0 FROM n"),
                 {first, last}),
        qPrintable(m_database->connection().lastError()));
}

void TestRecycleBinTotal::testATotalBeyondSixteenBitsKeepsTheLastOne()
{
    addBinRows(1, LargestTotal);
    m_screen = createScreen(latin("RecycleBin"), m_component->session());
    m_screen->load();
    m_screen->activate();
    QCOMPARE(control("List1").listCount(), LargestTotal);
    QCOMPARE(control("Label3").caption(), latin("Total: 32767"));
    QCOMPARE(control("ProgressBar1").maximum(), LargestTotal);

    // One row more does not fit: the list shows it, the total and the bar keep their last values.
    addBinRows(LargestTotal + 1, LargestTotal + 1);
    m_platform->expectMessage(latin("Refresh ReCycle Bin List?"), MsgStyle::YesNoQuestion, MsgResult::Yes);
    QVERIFY(Operator::click(control("Command7")));
    QCOMPARE(control("List1").listCount(), LargestTotal + 1);
    QCOMPARE(control("List1").item(LargestTotal), latin("BIN32768"));
    QCOMPARE(control("Label3").caption(), latin("Total: 32767"));
    QCOMPARE(control("ProgressBar1").maximum(), LargestTotal);
    QCOMPARE(control("ProgressBar1").value(), 0);

    // After a deletion the status shows the list's count, which is no 16-bit number.
    QVERIFY(Operator::pick(control("List1"), 0));
    QVERIFY(Operator::pick(control("List1"), LargestTotal));
    m_platform->expectMessage(
        latin("Delete 2 Selected Items Permanently? "), MsgStyle::YesNoQuestionNoDefault, MsgResult::Yes);
    m_platform->expectMessage(latin("Selected Items Deleted Successfully!"), MsgStyle::Info);
    QVERIFY(Operator::click(control("Command2")));
    QCOMPARE(control("List1").listCount(), LargestTotal - 1);
    QCOMPARE(control("Label3").caption(), latin("Total:32766"));
    QCOMPARE(m_platform->pendingMessages(), 0);
}

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestRecycleBinTotal)
#include "TestRecycleBinTotal.moc"
