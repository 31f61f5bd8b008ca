#include "component/Component.h"
#include "component/ScreenRegistry.h"
#include "desktop/QtPlatform.h"
#include "support/DesktopCafe.h"
#include "support/ScreenDriver.h"
#include "support/StoreTestDatabase.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace marlet {

using test::find;
using test::latin;

namespace {

// The password gates on the real desktop, with a temporary database and preference store.
struct Desk : test::DesktopCafe
{
    Desk()
    {
        session().general.AppTitle = latin("Norvantis");
        session().general.CurrentStaff = latin("ADMINISTRATOR");
        session().connection().Open(database.connectionString());
    }
    Session& session() { return component.session(); }

    // Shows ContPass modally in the given mode while the driver plays the operator.
    void runContPass(qint16 mode)
    {
        session().general.PassMode = mode;
        driver.start();
        component.screens().show(Screen::ContPass);
    }
};

} // namespace

// The two password gates driven through their widgets: typing, Enter, the buttons, the messages
// and where the focus goes.
class TestScreensGates : public QObject
{
    Q_OBJECT

private slots:
    void testContPassAcceptsWithEnter();
    void testContPassRefusesWithMessage();
    void testContPassAsksForOldPassword();
    void testContPassCancel();
    void testGenPasstoAccsTwoLogins();
};

void TestScreensGates::testContPassAcceptsWithEnter()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("ContPass"), [&driver](FormDialog& gate) {
        auto* password = find<QLineEdit>(gate, "txtPassword");
        driver.check(gate.windowTitle() == latin("Enter Pasword to Continue"), latin("title"));
        driver.check(find<QLabel>(gate, "lblPassword")->text() == latin("Enter Password:"), latin("label"));
        driver.check(password->echoMode() == QLineEdit::Password, latin("password hidden"));
        driver.check(QApplication::focusWidget() == password, latin("focus on the field"));
        // A small dialog without a list keeps its size.
        driver.check(gate.minimumSize() == gate.maximumSize(), latin("fixed size"));
        QTest::keyClicks(password, latin("admin"));
        QTest::keyClick(password, Qt::Key_Return);
    });
    desk.runContPass(0);
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.session().general.PassMode, qint16(2));
}

void TestScreensGates::testContPassRefusesWithMessage()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("ContPass"), [](FormDialog& gate) {
        QTest::keyClicks(find(gate, "txtPassword"), latin("wrong"));
        QTest::mouseClick(find(gate, "cmdOK"), Qt::LeftButton);
    });
    driver.answer(latin("Wrong Password!"), QMessageBox::Ok);
    desk.runContPass(0);
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.session().general.PassMode, qint16(0));
}

void TestScreensGates::testContPassAsksForOldPassword()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    desk.session().general.GateUsername = latin("ADMINISTRATOR");
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("ContPass"), [&driver](FormDialog& gate) {
        driver.check(find<QLabel>(gate, "lblPassword")->text() == latin("Old Password:"), latin("label in mode 4"));
        QTest::keyClicks(find(gate, "txtPassword"), latin("admin"));
        // OK with the mouse this time.
        QTest::mouseClick(find(gate, "cmdOK"), Qt::LeftButton);
    });
    desk.runContPass(4);
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QCOMPARE(desk.session().general.PassMode, qint16(5));
}

void TestScreensGates::testContPassCancel()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(
        latin("ContPass"), [](FormDialog& gate) { QTest::mouseClick(find(gate, "cmdCancel"), Qt::LeftButton); });
    desk.runContPass(3);
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QCOMPARE(desk.session().general.PassMode, qint16(0));
}

void TestScreensGates::testGenPasstoAccsTwoLogins()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    QVERIFY(desk.database.connection().Execute(Statement(latin("UPDATE Options SET NoUser = true"))));
    QVERIFY(desk.database.connection().Execute(
        Statement(latin("INSERT INTO Users (Username,Password,Type,Generate,enabled) Values "
                        "('BOSS','BOSSPASS','ADMINISTRATOR',false,true)"))));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("GenPasstoAccs"), [&driver](FormDialog& gate) {
        driver.check(find<QGroupBox>(gate, "Frame1")->title() == latin("1st"), latin("first frame's caption"));
        driver.check(find(gate, "Frame2")->isVisible(), latin("second frame shown"));
        driver.check(find<QLabel>(gate, "txtUsername2Caption")->text() == latin("Username:"), latin("caption"));
        // Enter walks through the fields.
        QTest::keyClicks(find(gate, "txtPassword1"), latin("admin"));
        QTest::keyClick(find(gate, "txtPassword1"), Qt::Key_Return);
        driver.check(QApplication::focusWidget() == find(gate, "txtUsername2"), latin("Enter to the second name"));
        QTest::keyClicks(find(gate, "txtUsername2"), latin("boss"));
        QTest::keyClick(find(gate, "txtUsername2"), Qt::Key_Return);
        driver.check(QApplication::focusWidget() == find(gate, "txtPassword2"), latin("Enter to the second password"));
        driver.check(find<QLineEdit>(gate, "txtUsername2")->text() == latin("BOSS"), latin("name in upper case"));
        QTest::keyClicks(find(gate, "txtPassword2"), latin("nope"));
        QTest::keyClick(find(gate, "txtPassword2"), Qt::Key_Return);
    });
    driver.answer(latin("Wrong Password!"), QMessageBox::Ok);
    driver.onForm(latin("GenPasstoAccs"), [&driver](FormDialog& gate) {
        auto* password = find<QLineEdit>(gate, "txtPassword2");
        driver.check(QApplication::focusWidget() == password, latin("focus back on the second password"));
        QTest::keyClick(password, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(password, latin("bosspass"));
        QTest::keyClick(password, Qt::Key_Return);
    });
    driver.onForm(latin("GenAcc"), [&desk, &driver](FormDialog& screen) {
        driver.check(desk.session().general.SecondStaff == latin("BOSS"), latin("second approver"));
        // The generate screen has a grid: its window can be made larger.
        driver.check(screen.maximumSize() != screen.minimumSize(), latin("generate screen resizable"));
        QTest::mouseClick(find(screen, "Command6"), Qt::LeftButton);
    });
    desk.driver.start();
    desk.component.timerDll().LoadGenAcc(
        desk.database.connectionString(), latin("Norvantis"), latin("ADMINISTRATOR"), 0, {});
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    // Closing the generate screen forgets the second approver.
    QCOMPARE(desk.session().general.SecondStaff, QString());
}

} // namespace marlet

QTEST_MAIN(marlet::TestScreensGates)
#include "TestScreensGates.moc"
