#include "component/Component.h"
#include "desktop/QtPlatform.h"
#include "store/Recordset.h"
#include "support/DesktopCafe.h"
#include "support/ScreenDriver.h"
#include "support/StoreTestDatabase.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

namespace marlet {

using test::find;
using test::latin;

namespace {

const QColor StopRed(255, 0, 0);
const QColor CloseBlue(128, 128, 255);

// The generate screen on the real desktop, opened through its password gate by LoadGenAcc, with
// a temporary database and preference store.
struct Desk : test::DesktopCafe
{
    // The click that started the batch has returned: its handler is done with the screen.
    bool batchDone = false;

    // Runs LoadGenAcc for the administrator until the driver's steps have closed its windows.
    void run()
    {
        driver.start();
        component.timerDll().LoadGenAcc(database.connectionString(), latin("Norvantis"), latin("ADMINISTRATOR"), 0, {});
    }
};

QPushButton* buttonWithText(QWidget& window, const QString& text)
{
    for (auto* button : window.findChildren<QPushButton*>()) {
        if (button->text() == text && button->isVisible())
            return button;
    }
    return nullptr;
}

// Clicks into the field's line, selects what is there, types the text and tabs out.
void typeInto(QWidget& window, const char* field, const QString& text)
{
    QWidget* widget = find(window, field);
    auto* line = qobject_cast<QComboBox*>(widget) ? qobject_cast<QComboBox*>(widget)->lineEdit()
                                                  : qobject_cast<QLineEdit*>(widget);
    QVERIFY2(line, field);
    QTest::mouseClick(line, Qt::LeftButton);
    QTest::keyClick(line, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Tab);
}

void clickTab(QWidget& window, int tab)
{
    auto* tabs = find<QTabBar>(window, "TabStrip1");
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab - 1).center());
}

int gridRows(QWidget& window)
{
    return find<QTableView>(window, "PrintList")->model()->rowCount();
}

QString gridCell(QWidget& window, int row, int col)
{
    const QAbstractItemModel* cells = find<QTableView>(window, "PrintList")->model();
    return cells->data(cells->index(row, col)).toString();
}

QStringList gridColumn(QWidget& window, int col)
{
    QStringList values;
    for (int row = 0; row < gridRows(window); ++row)
        values << gridCell(window, row, col);
    return values;
}

QColor buttonColor(QWidget& window, const char* name)
{
    return find(window, name)->palette().color(QPalette::Button);
}

QString confirmation(int number)
{
    return latin("You have choosen to Generate ") + QString::number(number)
        + latin(" number(s) of 1hour(s) 0min(s)' Ticket(s) of Cost N50 with Expiration Date of 5 days, Continue?");
}

} // namespace

// The generate screen driven through its widgets as an operator would: the gate, the New tab,
// the message boxes, "Stop" in the middle of a batch, and the listing on the Existing tab.
class TestScreensGenAcc : public QObject
{
    Q_OBJECT

private slots:
    void testGenerateListAndClose();
    void testStopDuringGeneration();
    void testTabsShowOneFrameAtATime();

private:
    // The gate: the administrator's name is there, the password is typed and Enter pressed.
    static void passGate(Desk& desk);
    // One hour tickets: number and hours typed, then "&Generate New Ticket(s)" clicked.
    static void startBatch(Desk& desk, int number);
};

void TestScreensGenAcc::passGate(Desk& desk)
{
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("GenPasstoAccs"), [&driver](FormDialog& gate) {
        auto* user = find<QLineEdit>(gate, "txtUsername1");
        auto* password = find<QLineEdit>(gate, "txtPassword1");
        driver.check(user->text() == latin("ADMINISTRATOR") && !user->isEnabled(), latin("first user name"));
        driver.check(!find(gate, "Frame2")->isVisible(), latin("one login asked for"));
        driver.check(QApplication::focusWidget() == password, latin("focus on the password"));
        QTest::keyClicks(password, latin("admin"));
        QTest::keyClick(password, Qt::Key_Return);
    });
}

void TestScreensGenAcc::startBatch(Desk& desk, int number)
{
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("GenAcc"), [&desk, &driver, number](FormDialog& screen) {
        driver.check(
            find<QComboBox>(screen, "cboNumber")->lineEdit()->text() == latin("50"), latin("number 50 at first"));
        typeInto(screen, "cboNumber", QString::number(number));
        // Tab goes on to the hours, the next field of the form.
        QWidget* hours = find(screen, "cboHours");
        driver.check(hours->isAncestorOf(QApplication::focusWidget()), latin("Tab to the hours"));
        typeInto(screen, "cboHours", latin("1"));
        driver.check(screen.form()[latin("cboNumber")].text() == QString::number(number), latin("number typed"));
        QPushButton* generate = buttonWithText(screen, latin("&Generate New Ticket(s)"));
        driver.check(generate, latin("generate button"));
        if (generate)
            QTest::mouseClick(generate, Qt::LeftButton);
        desk.batchDone = true;
    });
    driver.answer(confirmation(number), QMessageBox::Yes);
    driver.answer(latin("And Print Preview Ticket(s) with Large Print? "), QMessageBox::No);
}

void TestScreensGenAcc::testGenerateListAndClose()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    passGate(desk);
    startBatch(desk, 5);
    driver.answer(latin("Ticket Generation Completed Successfully!"), QMessageBox::Ok);

    QStringList generated;
    bool listingDone = false;
    driver.when(
        latin("five tickets in the grid"),
        [&desk] {
            auto* screen = test::ScreenDriver::activeForm(latin("GenAcc"));
            return desk.batchDone && screen && gridRows(*screen) == 5;
        },
        [&driver, &generated, &listingDone] {
            FormDialog& screen = *test::ScreenDriver::activeForm(latin("GenAcc"));
            generated = gridColumn(screen, 1);
            driver.check(find<QPushButton>(screen, "Command6")->text() == latin("Clo&se"), latin("Close caption"));
            driver.check(
                gridColumn(screen, 0) == QStringList({latin("1"), latin("2"), latin("3"), latin("4"), latin("5")}),
                latin("running numbers"));
            driver.check(gridCell(screen, 0, 3) == latin("60min(s)"), latin("time column"));
            driver.check(!find(screen, "FProgress")->isVisible(), latin("progress panel gone"));
            // The Existing tab lists every ticket again.
            clickTab(screen, 4);
            driver.check(
                find(screen, "FExist")->isVisible() && !find(screen, "FNew")->isVisible(), latin("existing tab"));
            QTest::mouseClick(buttonWithText(screen, latin("&View Selection")), Qt::LeftButton);
            listingDone = true;
        });
    driver.when(
        latin("the listing"),
        [&listingDone] {
            auto* screen = test::ScreenDriver::activeForm(latin("GenAcc"));
            return listingDone && screen && find(*screen, "PrintList")->toolTip() == latin("5 Record(s)");
        },
        [&driver, &generated] {
            FormDialog& screen = *test::ScreenDriver::activeForm(latin("GenAcc"));
            QStringList listed = gridColumn(screen, 1);
            listed.sort();
            QStringList made = generated;
            made.sort();
            driver.check(listed == made, latin("listed: ") + listed.join(u' ') + latin(" made: ") + made.join(u' '));
            QTest::mouseClick(find(screen, "Command6"), Qt::LeftButton);
        });
    desk.run();

    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QVERIFY(!test::ScreenDriver::activeForm(latin("GenAcc")));
    QCOMPARE(generated.size(), 5);
    QStringList stored = desk.column(latin("select Username from Account"));
    stored.sort();
    generated.sort();
    QCOMPARE(stored, generated);
    QCOMPARE(desk.column(latin("select Time from Account")), QStringList(5, latin("3600")));
    QCOMPARE(desk.column(latin("select ByWhom from Account")), QStringList(5, latin("ADMINISTRATOR")));
    QCOMPARE(desk.column(latin("select count(*) from TicketInfo")), QStringList {latin("1")});
}

void TestScreensGenAcc::testStopDuringGeneration()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    passGate(desk);
    startBatch(desk, 40);
    driver.when(
        latin("three tickets made"),
        [] {
            auto* screen = test::ScreenDriver::activeForm(latin("GenAcc"));
            return screen && gridRows(*screen) >= 3;
        },
        [&driver] {
            FormDialog& screen = *test::ScreenDriver::activeForm(latin("GenAcc"));
            auto* stop = find<QPushButton>(screen, "Command6");
            driver.check(stop->text() == latin("Stop"), latin("Stop caption"));
            driver.check(buttonColor(screen, "Command6") == StopRed, latin("Stop is red"));
            driver.check(find(screen, "FProgress")->isVisible(), latin("progress panel shown"));
            driver.check(find<QProgressBar>(screen, "ProgressBar1")->maximum() == 40, latin("bar counts the tickets"));
            driver.check(!find(screen, "FNew")->isEnabled(), latin("frames disabled"));
            // A tab change is refused while the batch runs.
            clickTab(screen, 2);
            driver.check(find<QTabBar>(screen, "TabStrip1")->currentIndex() == 0, latin("tab change refused"));
            driver.check(find(screen, "FNew")->isVisible(), latin("new tab still shown"));
            QTest::mouseClick(stop, Qt::LeftButton);
        });
    driver.answer(latin("Are you sure you want to Cancel Ticket Generation?"), QMessageBox::Yes);
    driver.when(
        latin("the batch ended"),
        [&desk] { return desk.batchDone && test::ScreenDriver::activeForm(latin("GenAcc")); },
        [&driver] {
            FormDialog& screen = *test::ScreenDriver::activeForm(latin("GenAcc"));
            driver.check(gridRows(screen) == 0, latin("grid back to its header"));
            driver.check(find<QPushButton>(screen, "Command6")->text() == latin("Clo&se"), latin("Close caption"));
            driver.check(buttonColor(screen, "Command6") == CloseBlue, latin("Close is light blue again"));
            driver.check(!find(screen, "FProgress")->isVisible(), latin("progress panel hidden"));
            driver.check(find(screen, "FNew")->isEnabled(), latin("frames enabled"));
            QTest::mouseClick(find(screen, "Command6"), Qt::LeftButton);
        });
    desk.run();

    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.column(latin("select count(*) from Account")), QStringList {latin("0")});
    QCOMPARE(desk.column(latin("select count(*) from TicketInfo")), QStringList {latin("0")});
}

void TestScreensGenAcc::testTabsShowOneFrameAtATime()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    passGate(desk);
    driver.onForm(latin("GenAcc"), [&driver](FormDialog& screen) {
        const char* frames[] = {"FNew", "FCustom", "FMember", "FExist", "FSetting"};
        const QSize firstSize = find(screen, "frameArea")->size();
        for (int tab = 1; tab <= 5; ++tab) {
            clickTab(screen, tab);
            for (int frame = 0; frame < 5; ++frame) {
                const bool shown = find(screen, frames[frame])->isVisible();
                driver.check(shown == (frame + 1 == tab),
                    latin("tab ") + QString::number(tab) + latin(": ") + latin(frames[frame]));
            }
            // The area keeps its size: the window does not jump when the tab changes.
            driver.check(find(screen, "frameArea")->size() == firstSize,
                latin("frame area size on tab ") + QString::number(tab) + latin(": ")
                    + QString::number(find(screen, "frameArea")->width()) + u'x'
                    + QString::number(find(screen, "frameArea")->height()) + latin(" after ")
                    + QString::number(firstSize.width()) + u'x' + QString::number(firstSize.height()));
        }
        // A taller window gives the grid the height; the frames keep theirs.
        QWidget* grid = find(screen, "PrintList");
        const int gridHeight = grid->height();
        screen.resize(screen.width(), screen.height() + 100);
        QCoreApplication::processEvents();
        driver.check(grid->height() == gridHeight + 100, latin("grid takes the height"));
        driver.check(find(screen, "frameArea")->size() == firstSize, latin("frames keep their size"));
        // Custom: the focus goes to its days field.
        clickTab(screen, 2);
        driver.check(QApplication::focusWidget() == find<QComboBox>(screen, "txtCustomDays")->lineEdit()
                || QApplication::focusWidget() == find(screen, "txtCustomDays"),
            latin("focus in the custom days field"));
        // Settings: "Save Changes" starts disabled and a change enables it.
        clickTab(screen, 5);
        driver.check(!buttonWithText(screen, latin("Save Changes"))->isEnabled(), latin("Save Changes disabled"));
        QWidget* noList = find(screen, "chkNoList");
        QTest::mouseClick(noList, Qt::LeftButton, {}, QPoint(8, noList->height() / 2));
        driver.check(buttonWithText(screen, latin("Save Changes"))->isEnabled(), latin("Save Changes enabled"));
        driver.check(
            find<QGroupBox>(screen, "FPrintSize")->title() == latin("Ticket Print Size"), latin("print size frame"));
        clickTab(screen, 1);
        QTest::mouseClick(find(screen, "Command6"), Qt::LeftButton);
    });
    desk.run();
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
}

} // namespace marlet

QTEST_MAIN(marlet::TestScreensGenAcc)
#include "TestScreensGenAcc.moc"
