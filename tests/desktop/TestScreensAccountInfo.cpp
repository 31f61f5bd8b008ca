#include "component/Component.h"
#include "desktop/QtPlatform.h"
#include "support/DesktopCafe.h"
#include "support/ScreenDriver.h"
#include "support/StoreTestDatabase.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

namespace marlet {

using test::find;
using test::latin;

namespace {

const char* const Tickets[] = {
    "INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, ByWhom, Days, DateCreated, Amount, OrgTime, "
    "LastUsed, NEW, ComputerUsed, AccountAdded, NoAdded, POS, Member, Autorecharge, Night, Once, TotalTimeUsed, "
    "NoLogIn, Print) Values ('261101080000', '001', 'AAA0000001', 'P', 3600, 'ADMINISTRATOR', 3, '2026-11-01', "
    "'N50', 3600, '2026-11-01', true, 'NONE', 'NONE', 0, false, false, 'NONE', false, false, 0, 0, 0)",
    "INSERT INTO RecycleBin (TicketGrp, TicketNo, Username, Password, Time, ByWhom, Days, DateCreated, Amount, "
    "OrgTime, LastUsed, NEW, ComputerUsed, AccountAdded, NoAdded, POS, Member, Autorecharge, Night, Once, "
    "TotalTimeUsed, NoLogIn, Print, DateTimeDeleted, Reason) Values ('261101080000', '002', 'BBB0000002', 'P', 600, "
    "'CLERK', 1, '2026-11-01', 'N10', 600, '2026-11-01', true, 'NONE', 'NONE', 0, false, false, 'NONE', false, "
    "false, 0, 0, 0, '15/11/26/18:35', 'Deleted by User.')",
};

// The ticket information screen on the real desktop, with a temporary database.
struct Desk : test::DesktopCafe
{
    void run(const QString& ticketName)
    {
        driver.start();
        component.timerDll().LoadAccountInfo(database.connectionString(), latin("Norvantis"), ticketName);
    }
};

// Types into the search entry after emptying it, as a person selecting and overtyping does.
void typeEntry(FormDialog& screen, const QString& text)
{
    auto* entry = find<QLineEdit>(screen, "Text2");
    entry->setFocus();
    entry->selectAll();
    QTest::keyClick(entry, Qt::Key_Delete);
    QTest::keyClicks(entry, text);
}

} // namespace

// The ticket information screen driven through its widgets: the captions, the entry's limits in
// both modes, a search by name, the recycle bin's question and the printer's absence.
class TestScreensAccountInfo : public QObject
{
    Q_OBJECT

private slots:
    void testSearchByNameAndInTheBin();
    void testGroupModeAndAHandedOverName();
};

void TestScreensAccountInfo::testSearchByNameAndInTheBin()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    QVERIFY(desk.execute(Tickets));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("AccountInfo"), [&driver](FormDialog& screen) {
        driver.check(screen.windowTitle() == latin("Ticket Information"), latin("title ") + screen.windowTitle());
        driver.check(find<QGroupBox>(screen, "Frame1")->title() == latin("Search By"), latin("frame"));
        driver.check(find<QRadioButton>(screen, "Option1")->isChecked(), latin("user name mode chosen"));
        driver.check(find<QLabel>(screen, "Label2")->text() == latin("Please enter a Username and Click Search."),
            latin("status at the start"));
        auto* entry = find<QLineEdit>(screen, "Text2");
        driver.check(entry->hasFocus(), latin("entry has the focus"));
        driver.check(entry->maxLength() == 10, latin("ten characters: ") + QString::number(entry->maxLength()));
        QTest::keyClicks(entry, latin("AAA0000001XYZ"));
        driver.check(entry->text() == latin("AAA0000001"), latin("typed: ") + entry->text());
        QTest::mouseClick(find(screen, "OKButton"), Qt::LeftButton);
        const QString report = find<QPlainTextEdit>(screen, "Text1")->toPlainText();
        driver.check(report.startsWith(latin("TicketGrp/No: \t261101080000 - 001\nUsername: \tAAA0000001\n")),
            latin("report: ") + report.left(60));
        driver.check(find<QLabel>(screen, "Label2")->text() == latin("Ticket found in main Ticket database."),
            latin("found status"));
        driver.check(entry->isEnabled() && find(screen, "OKButton")->isEnabled(), latin("enabled after search"));
        typeEntry(screen, latin("BBB0000002"));
        QTest::mouseClick(find(screen, "OKButton"), Qt::LeftButton);
    });
    driver.answer(latin("Ticket not found!, Check Recycle Bin too? "), QMessageBox::Yes);
    driver.onForm(latin("AccountInfo"), [&driver](FormDialog& screen) {
        const QString report = find<QPlainTextEdit>(screen, "Text1")->toPlainText();
        driver.check(report.startsWith(latin("TicketGrp&No: \t261101080000 - 002\n")), latin("bin report"));
        driver.check(report.endsWith(latin("Created By: \tCLERK")), latin("bin report's end"));
        driver.check(
            find<QLabel>(screen, "Label2")->text() == latin("Ticket found in Recycle Bin."), latin("bin status"));
        // This machine has no printer.
        QTest::mouseClick(find(screen, "Command1"), Qt::LeftButton);
    });
    driver.answer(latin("No Printer Installed!"), QMessageBox::Ok);
    driver.onForm(latin("AccountInfo"),
        [](FormDialog& screen) { QTest::mouseClick(find<QPushButton>(screen, "CancelButton"), Qt::LeftButton); });
    desk.run(QString());
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
}

void TestScreensAccountInfo::testGroupModeAndAHandedOverName()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    QVERIFY(desk.execute(Tickets));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("AccountInfo"), [&driver](FormDialog& screen) {
        // The name from the host was searched without a click.
        auto* entry = find<QLineEdit>(screen, "Text2");
        driver.check(entry->text() == latin("AAA0000001"), latin("handed-over name"));
        driver.check(find<QPlainTextEdit>(screen, "Text1")->toPlainText().contains(latin("Username: \tAAA0000001")),
            latin("searched at once"));
        QTest::mouseClick(find<QRadioButton>(screen, "Option2"), Qt::LeftButton);
        driver.check(entry->maxLength() == 16, latin("sixteen characters: ") + QString::number(entry->maxLength()));
        typeEntry(screen, latin("12-34"));
        QTest::mouseClick(find(screen, "OKButton"), Qt::LeftButton);
        driver.check(
            find<QLabel>(screen, "Label2")->text() == latin("Incorrect Ticket Group-No (e.g. 000000000000-000)!"),
            latin("refused group"));
        driver.check(find<QPlainTextEdit>(screen, "Text1")->toPlainText().isEmpty(), latin("report emptied"));
        typeEntry(screen, latin("261101080000-001"));
        QTest::mouseClick(find(screen, "OKButton"), Qt::LeftButton);
        driver.check(find<QPlainTextEdit>(screen, "Text1")
                         ->toPlainText()
                         .startsWith(latin("TicketGrp/No: \t261101080000 - 001\n")),
            latin("found by group"));
        QTest::mouseClick(find<QPushButton>(screen, "CancelButton"), Qt::LeftButton);
    });
    desk.run(latin("AAA0000001"));
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
}

} // namespace marlet

QTEST_MAIN(marlet::TestScreensAccountInfo)
#include "TestScreensAccountInfo.moc"
