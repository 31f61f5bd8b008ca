#include "component/Component.h"
#include "desktop/InputBoxDialog.h"
#include "desktop/QtPlatform.h"
#include "support/DesktopCafe.h"
#include "support/ScreenDriver.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTableView>
#include <QTest>

namespace marlet {

using test::find;
using test::latin;

namespace {

void type(QWidget& window, const char* name, const QString& text)
{
    if (auto* edit = find<QLineEdit>(window, name)) {
        edit->setFocus();
        QTest::keyClicks(edit, text);
    }
}

void click(QWidget& window, const char* name)
{
    QTest::mouseClick(find(window, name), Qt::LeftButton);
}

// A list entry chosen as the mouse chooses it from the open list.
void choose(QWidget& window, const char* name, int index)
{
    auto* list = find<QComboBox>(window, name);
    list->setCurrentIndex(index);
    emit list->activated(index);
}

void clickCell(QTableView& grid, int row, int column)
{
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(grid.model()->index(row, column)).center());
}

// Types into the next input box and presses Enter.
void answerInput(test::ScreenDriver& driver, const QString& prompt, const QString& typed)
{
    driver.when(
        latin("the input box ") + prompt,
        [prompt] {
            auto* box = qobject_cast<InputBoxDialog*>(QApplication::activeModalWidget());
            return box && find<QLabel>(*box, "prompt")->text() == prompt;
        },
        [typed] {
            auto* box = qobject_cast<InputBoxDialog*>(QApplication::activeModalWidget());
            auto* edit = find<QLineEdit>(*box, "edit");
            QTest::keyClicks(edit, typed);
            QTest::keyClick(edit, Qt::Key_Return);
        });
}

} // namespace

// A member's life on the real desktop: enrolled on the Membership tab, found in the directory with
// a picture, opened, recharged, renamed and saved, then deleted with the picture file.
class TestScreensMembers : public QObject
{
    Q_OBJECT

private slots:
    void testEnrolFindRechargeSaveAndDelete();
};

void TestScreensMembers::testEnrolFindRechargeSaveAndDelete()
{
    test::DesktopCafe desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    const QString server = desk.folder.filePath(latin("server"));
    const QString photo = desk.folder.filePath(latin("photo.jpg"));
    QImage portrait(60, 70, QImage::Format_RGB32);
    portrait.fill(Qt::darkCyan);
    QVERIFY(portrait.save(photo, "PNG"));
    test::ScreenDriver& driver = desk.driver;

    driver.onForm(latin("GenAcc"), [](FormDialog& screen) {
        auto* tabs = find<QTabBar>(screen, "TabStrip1");
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(2).center());
        type(screen, "txtMemberUsername", latin("ada01"));
        type(screen, "txtMemberPassword", latin("pw1"));
        click(screen, "cmdCreateMember");
    });
    driver.onForm(latin("GenAcc"), [&driver](FormDialog& screen) {
        driver.check(screen.windowTitle() == latin("Generate Ticket - Membership Information"), latin("page caption"));
        driver.check(find<QWidget>(screen, "FMemberPage")->isVisible(), latin("member page shown"));
        driver.check(find<QLineEdit>(screen, "Text7(8)")->text() == latin("ADA01"), latin("ticket name on the page"));
        type(screen, "Text7(0)", latin("Smith"));
        type(screen, "Text7(1)", latin("Ada"));
        type(screen, "Text7(4)", latin("12 Long Road"));
        type(screen, "Text7(12)", latin("Lagos"));
        type(screen, "Text7(13)", latin("0801234567"));
        type(screen, "Text7(5)", latin("Nigeria"));
        type(screen, "Text7(6)", latin("ada@example.com"));
        type(screen, "Text7(7)", latin("A1234567"));
        find<QDateTimeEdit>(screen, "DateofBirth")->setDate(QDate(1990, 5, 1));
        QTest::mouseClick(find<QRadioButton>(screen, "Option6(1)"), Qt::LeftButton);
        choose(screen, "Combo7", 1);
        click(screen, "Command13");
        driver.check(find<QGroupBox>(screen, "Frame27")->isVisible(), latin("picture methods shown"));
        click(screen, "Command16");
        driver.check(find<QWidget>(screen, "Frame26")->isVisible(), latin("picture frame back"));
    });
    driver.onForm(latin("GenAcc"), [](FormDialog& screen) { click(screen, "cmdFinishMember"); });
    driver.answer(latin("You have choosen to generate a Membership Ticket an Autorecharge[1 day(s) - 24 hour(s)] "
                        "Membership ticket of 1440min(s)' Ticket(s) of Cost N0 with Expiration Date of 5 days, "
                        "Continue and save information?"),
        QMessageBox::Yes);
    driver.answer(latin("And Print Preview Ticket(s) with Large Print? "), QMessageBox::No);
    driver.answer(latin("Member Ticket Created Successfully!"), QMessageBox::Ok);

    // The directory: list, click the member, open the record.
    // The registration ends after its pauses with the tab's page back.
    driver.when(
        latin("the generate screen back on its tab"),
        [] {
            FormDialog* screen = test::ScreenDriver::activeForm(latin("GenAcc"));
            return screen && screen->windowTitle() == latin("Generate Ticket");
        },
        [&driver] {
            FormDialog* screen = test::ScreenDriver::activeForm(latin("GenAcc"));
            driver.check(find<QLineEdit>(*screen, "txtMemberUsername")->text().isEmpty(), latin("tab cleared"));
            click(*screen, "Command24");
        });
    driver.onForm(latin("MemberList"), [&driver, &desk, server, photo](FormDialog& screen) {
        // The picture folder is made at registration; a picture put there under the member's name
        // shows when the row is clicked.
        const QDir pictures(QDir(server).filePath(latin("pic")));
        driver.check(pictures.exists() && pictures.entryList(QDir::Files).isEmpty(), latin("empty picture folder"));
        const QStringList names = desk.column(latin("select Picture from Members"));
        driver.check(names.size() == 1 && names.value(0).endsWith(latin("SM")), latin("picture name"));
        QFile::copy(photo, pictures.filePath(names.value(0)));
        click(screen, "Command21");
        auto* grid = find<QTableView>(screen, "memList");
        driver.check(grid->model()->rowCount() == 1, latin("one member listed"));
        driver.check(grid->model()->index(0, 2).data().toString() == latin("Smith"), latin("surname listed"));
        clickCell(*grid, 0, 1);
        driver.check(!find<QLabel>(screen, "mpicture2")->pixmap().isNull(), latin("the member's picture shows"));
        click(screen, "Command22");
    });
    driver.onForm(latin("Memberinfo"), [&driver](FormDialog& screen) {
        driver.check(find<QLineEdit>(screen, "Text7(0)")->text() == latin("Smith"), latin("record surname"));
        driver.check(find<QLineEdit>(screen, "Text7(15)")->text() == latin("1440min(s)"), latin("record time"));
        driver.check(!find<QPushButton>(screen, "Command27")->isEnabled(), latin("save disabled at first"));
        click(screen, "Command26");
        driver.check(find<QGroupBox>(screen, "Frame21")->isVisible(), latin("settings shown"));
        click(screen, "Command31");
    });
    answerInput(driver, latin("Please enter number of minutes to add or reduce (e.g. -30)?"), latin("30"));
    driver.answer(latin("Member's time has been recharged!"), QMessageBox::Ok);
    driver.onForm(latin("Memberinfo"), [&driver](FormDialog& screen) {
        driver.check(find<QLineEdit>(screen, "Text7(15)")->text() == latin("1470min(s)"), latin("time recharged"));
        click(screen, "Command29");
    });
    answerInput(driver, latin("Change Username from ADA01 to ..."), latin("adam1"));
    driver.onForm(latin("Memberinfo"), [&driver](FormDialog& screen) {
        driver.check(find<QPushButton>(screen, "Command27")->isEnabled(), latin("save enabled by the rename"));
        click(screen, "Command27");
    });
    driver.answer(latin("Member Ticket Saved Successfully!"), QMessageBox::Ok);
    driver.onForm(latin("Memberinfo"), [](FormDialog& screen) { click(screen, "Command25"); });
    driver.onForm(latin("MemberList"), [&driver](FormDialog& screen) {
        auto* grid = find<QTableView>(screen, "memList");
        driver.check(grid->model()->index(0, 1).data().toString() == latin("ADAM1"), latin("row read again"));
        click(screen, "Command23");
    });
    driver.answer(latin("Delete Member [Username:ADAM1 - Smith, Ada]?"), QMessageBox::Yes);
    driver.answer(latin("Member [Username:ADAM1 - Smith, Ada] deleted!"), QMessageBox::Ok);
    driver.onForm(latin("MemberList"), [](FormDialog& screen) { click(screen, "Command20"); });
    driver.onForm(latin("GenAcc"), [](FormDialog& screen) { click(screen, "Command6"); });

    driver.start();
    desk.component.timerDll().LoadGenAc(desk.database.connectionString(),
        latin("Norvantis"),
        latin("ADMINISTRATOR"),
        0,
        QDir(server).filePath(latin("Server.exe")));
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.column(latin("select count(*) from Account")), QStringList {latin("0")});
    QCOMPARE(desk.column(latin("select count(*) from Members")), QStringList {latin("0")});
    QCOMPARE(desk.column(latin("select Username from Rechargeinfo")), QStringList {latin("ADA01")});
    QCOMPARE(QDir(QDir(server).filePath(latin("pic"))).entryList(QDir::Files), QStringList());
}

} // namespace marlet

QTEST_MAIN(marlet::TestScreensMembers)
#include "TestScreensMembers.moc"
