#include "component/Component.h"
#include "desktop/InputBoxDialog.h"
#include "desktop/QtPlatform.h"
#include "store/Recordset.h"
#include "support/DesktopCafe.h"
#include "support/ScreenDriver.h"
#include "support/StoreTestDatabase.h"

#include <QElapsedTimer>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace marlet {

using test::find;
using test::latin;

namespace {

const char* const BinRows[] = {
    "INSERT INTO RecycleBin (TicketGrp, TicketNo, Username, Password, Time, BackTime, ByWhom, Days, DateCreated, "
    "Amount, OrgTime, LastUsed, NEW, ComputerUsed, AccountAdded, NoAdded, Member, Night, Once, TotalTimeUsed, "
    "DateTimeDeleted, Reason) Values ('261101080000', '001', 'AAA0000001', 'PW1', 3600, 3600, 'ADMINISTRATOR', 3, "
    "'2026-11-01', 'N50', 3600, '2026-11-01', true, 'NONE', 'NONE', 0, false, false, false, 0, '15/11/26/18:35', "
    "'Deleted by User.')",
    "INSERT INTO RecycleBin (TicketGrp, TicketNo, Username, Password, Time, BackTime, ByWhom, Days, DateCreated, "
    "Amount, OrgTime, LastUsed, NEW, ComputerUsed, AccountAdded, NoAdded, Member, Night, Once, TotalTimeUsed, "
    "TimeLastUsed, DateTimeDeleted, Reason) Values ('261101080000', '002', 'BBB0000002', 'PW2', 5430, 9030, 'CLERK', "
    "0, "
    "'2026-11-01', 'N200', 3600, '2026-11-14', false, 'PC-04', 'RECHARGED', 1, false, false, false, 30, '09:15 PM', "
    "'16/11/26/09:05', 'Deleted by User.')",
    "INSERT INTO RecycleBin (TicketGrp, TicketNo, Username, Password, Time, Days, DateCreated, NEW, Member, "
    "DateTimeDeleted, Reason) Values ('261115120000', '001', 'CCC0000003', 'PW3', 0, 5, '2026-11-15', false, false, "
    "'17/11/26/08:00', 'Deleted by User.')",
};

// The recycle bin on the real desktop, with a temporary database and preference store.
struct Desk : test::DesktopCafe
{
    // Runs the host's entry operation while the driver plays the operator.
    void run()
    {
        driver.start();
        component.timerDll().LoadRecycleBin(database.connectionString(), latin("Norvantis"));
    }

    QString single(const QString& sql)
    {
        Recordset rows;
        if (!rows.Open(Statement(sql), database.connection()) || rows.RecordCount() < 1)
            return latin("no row");
        return rows.value(0).toString();
    }
};

// A click on a list entry as the mouse makes it.
void clickEntry(QListWidget& list, const QString& text)
{
    const QList<QListWidgetItem*> found = list.findItems(text, Qt::MatchExactly);
    if (found.isEmpty())
        return;
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(found.first()).center());
}

QStringList entries(const QListWidget& list)
{
    QStringList texts;
    for (int i = 0; i < list.count(); ++i)
        texts << list.item(i)->text();
    return texts;
}

// Types into the input box that the search opens and presses Enter.
void answerInput(test::ScreenDriver& driver, const QString& typed)
{
    driver.when(
        latin("the input box"),
        [] { return qobject_cast<InputBoxDialog*>(QApplication::activeModalWidget()) != nullptr; },
        [&driver, typed] {
            auto* box = qobject_cast<InputBoxDialog*>(QApplication::activeModalWidget());
            driver.check(box->windowTitle() == MessageTitle(), latin("input box title"));
            driver.check(find<QLabel>(*box, "prompt")->text() == latin("Enter Ticket Username?"), latin("prompt"));
            auto* edit = find<QLineEdit>(*box, "edit");
            QTest::keyClicks(edit, typed);
            QTest::keyClick(edit, Qt::Key_Return);
        });
}

} // namespace

// The recycle bin screen driven through its widgets: the list with the mouse, the report box, the
// search's input box, restoring two entries, emptying the bin and the close button's captions.
class TestScreensRecycleBin : public QObject
{
    Q_OBJECT

private slots:
    void testListReportAndSearch();
    void testRestoreTwoEntriesThenEmpty();
    void testLongBinFillsAndEmpties();
};

void TestScreensRecycleBin::testListReportAndSearch()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    QVERIFY(desk.execute(BinRows));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("RecycleBin"), [&driver](FormDialog& screen) {
        driver.check(screen.windowTitle() == latin("Recycle Bin - Norvantis"), latin("title"));
        driver.check(find<QGroupBox>(screen, "Frame2")->title()
                == latin("List of Available Tickets (Click on a ticket to see more information)"),
            latin("list frame"));
        driver.check(find<QGroupBox>(screen, "Frame1")->title() == latin("Recycle Bin Utility"), latin("tools frame"));
        driver.check(find<QLabel>(screen, "Label3")->text() == latin("Total: 3"), latin("total"));
        auto* list = find<QListWidget>(screen, "List1");
        driver.check(entries(*list) == QStringList({latin("AAA0000001"), latin("BBB0000002"), latin("CCC0000003")}),
            latin("entries: ") + entries(*list).join(u','));
        auto* report = find<QPlainTextEdit>(screen, "Text1");
        driver.check(report && report->isReadOnly() && report->toPlainText().isEmpty(), latin("empty report box"));
        // A click shows the ticket's report, one fact a line, and ticks the entry.
        clickEntry(*list, latin("BBB0000002"));
        const QStringList lines = report->toPlainText().split(u'\n');
        driver.check(lines.size() == 18, latin("report lines: ") + QString::number(lines.size()));
        driver.check(
            lines.value(0) == latin("Date/Time Deleted: \t16/11/26/09:05"), latin("first line ") + lines.value(0));
        driver.check(lines.value(4) == latin("Time Left: \t\t90min(s)"), latin("time left ") + lines.value(4));
        driver.check(lines.value(17) == latin("Created By: \tCLERK"), latin("last line ") + lines.value(17));
        driver.check(list->item(1)->isSelected() && list->currentRow() == 1, latin("entry ticked and current"));
        QTest::mouseClick(find(screen, "Command4"), Qt::LeftButton);
    });
    answerInput(driver, latin("AAA0000001"));
    driver.onForm(latin("RecycleBin"), [&driver](FormDialog& screen) {
        auto* report = find<QPlainTextEdit>(screen, "Text1");
        driver.check(
            report->toPlainText().startsWith(latin("TicketGrp&No: \t261101080000 - 001\nUsername: \t\tAAA0000001\n")),
            latin("search report: ") + report->toPlainText().left(60));
        // The search does not move the list.
        auto* list = find<QListWidget>(screen, "List1");
        driver.check(list->currentRow() == 1 && !list->item(0)->isSelected(), latin("list unmoved"));
        QTest::mouseClick(find(screen, "Command4"), Qt::LeftButton);
    });
    answerInput(driver, latin("NOSUCH"));
    driver.onForm(latin("RecycleBin"), [&driver](FormDialog& screen) {
        driver.check(find<QPlainTextEdit>(screen, "Text1")->toPlainText().isEmpty(), latin("not found: box emptied"));
        QTest::mouseClick(find(screen, "Command5"), Qt::LeftButton);
    });
    desk.run();
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
}

void TestScreensRecycleBin::testRestoreTwoEntriesThenEmpty()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    QVERIFY(desk.execute(BinRows));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("RecycleBin"), [&driver](FormDialog& screen) {
        driver.check(find<QPushButton>(screen, "Command5")->text() == latin("&Close Recycle"), latin("close caption"));
        auto* list = find<QListWidget>(screen, "List1");
        clickEntry(*list, latin("AAA0000001"));
        clickEntry(*list, latin("CCC0000003"));
        driver.check(list->selectedItems().size() == 2, latin("two entries ticked"));
        QTest::mouseClick(find(screen, "Command1"), Qt::LeftButton);
    });
    driver.answer(latin("Restore 2 Selected Items?"), QMessageBox::Yes);
    driver.answer(latin("Selected Item Restored Successfully!"), QMessageBox::Ok);
    driver.onForm(latin("RecycleBin"), [&driver](FormDialog& screen) {
        auto* list = find<QListWidget>(screen, "List1");
        driver.check(entries(*list) == QStringList({latin("BBB0000002")}), latin("left: ") + entries(*list).join(u','));
        driver.check(find<QLabel>(screen, "Label3")->text() == latin("Total:1"), latin("total after restore"));
        driver.check(list->isEnabled(), latin("list enabled again"));
        QTest::mouseClick(find(screen, "Command3"), Qt::LeftButton);
    });
    driver.answer(latin("Empty Recycle Bin"), QMessageBox::Yes);
    driver.answer(latin("Recycle Bin Emptied!"), QMessageBox::Ok);
    driver.onForm(latin("RecycleBin"), [&driver](FormDialog& screen) {
        driver.check(find<QListWidget>(screen, "List1")->count() == 0, latin("list emptied"));
        driver.check(find<QLabel>(screen, "Label3")->text() == latin("Total:0"), latin("total after emptying"));
        driver.check(find<QProgressBar>(screen, "ProgressBar1")->value() == 0, latin("bar back at 0"));
        auto* close = find<QPushButton>(screen, "Command5");
        driver.check(close->text() == latin("&Close"), latin("close caption after emptying: ") + close->text());
        QTest::mouseClick(close, Qt::LeftButton);
    });
    desk.run();
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.single(latin("select count(*) from RecycleBin")), latin("0"));
    QCOMPARE(desk.single(latin("select count(*) from Account")), latin("2"));
    QCOMPARE(desk.single(latin("select Time from Account where Username = 'CCC0000003'")), latin("0"));
}

// A bin of 10,000 tickets: the list widget follows the screen's one-by-one loading and emptying
// entry by entry. The times are printed for the record.
void TestScreensRecycleBin::testLongBinFillsAndEmpties()
{
    constexpr int Entries = 10000;
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    for (int i = 0; i < Entries; ++i) {
        const QString name = latin("T") + QString::number(i).rightJustified(6, u'0');
        QVERIFY(desk.database.connection().Execute(Statement(
            latin("INSERT INTO RecycleBin (Username, Member, DateTimeDeleted, Reason) Values ('{}', false, "
                  "'15/11/26/18:35', 'Deleted by User.')"),
            {name})));
    }
    test::ScreenDriver& driver = desk.driver;
    QElapsedTimer clock;
    clock.start();
    driver.onForm(latin("RecycleBin"), [&](FormDialog& screen) {
        qInfo("list of %d entries shown in %lld ms", Entries, clock.restart());
        auto* list = find<QListWidget>(screen, "List1");
        driver.check(list->count() == Entries, latin("entries shown: ") + QString::number(list->count()));
        driver.check(list->item(Entries - 1)->text() == latin("T009999"), latin("last entry"));
        QTest::mouseClick(find(screen, "Command3"), Qt::LeftButton);
    });
    driver.answer(latin("Empty Recycle Bin"), QMessageBox::Yes);
    driver.answer(latin("Recycle Bin Emptied!"), QMessageBox::Ok);
    driver.onForm(latin("RecycleBin"), [&](FormDialog& screen) {
        qInfo("emptied in %lld ms", clock.restart());
        driver.check(find<QListWidget>(screen, "List1")->count() == 0, latin("list emptied"));
        QTest::mouseClick(find(screen, "Command5"), Qt::LeftButton);
    });
    desk.run();
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.single(latin("select count(*) from RecycleBin")), latin("0"));
}

} // namespace marlet

QTEST_MAIN(marlet::TestScreensRecycleBin)
#include "TestScreensRecycleBin.moc"
