#include "component/Component.h"
#include "desktop/ComponentRegistry.h"
#include "desktop/QtPlatform.h"
#include "desktop/TidyRegistration.h"
#include "store/Recordset.h"
#include "support/DesktopCafe.h"
#include "support/ScreenDriver.h"
#include "support/StoreTestDatabase.h"

#include <QFileDialog>
#include <QProcess>

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <fcntl.h>
#include <unistd.h>

namespace marlet {

using test::find;
using test::latin;

namespace {

// The settings screen on the real desktop, opened by LoadOptions with a temporary database and
// preference store.
struct Desk : test::DesktopCafe
{
    // Runs LoadOptions until the driver's steps have closed the screen; returns ClientUp.
    qint16 run(qint16 hideAccount = 0)
    {
        driver.start();
        qint16 power = 0;
        qint16 clientUp = 0;
        component.timerDll().LoadOptions(database.connectionString(), latin("CafeHost"), latin("ADMINISTRATOR"), power,
                                         clientUp, 5, latin("10.0.0.2"), latin("front"), hideAccount);
        return clientUp;
    }

    QString pref(const char* key, const char* section = "Option")
    {
        return component.preferences().GetSetting(latin("CafeHost"), latin(section), latin(key), latin("<none>"));
    }

    QString rows(const char* statement)
    {
        Recordset rs;
        if (!rs.Open(Statement(latin(statement)), database.connection()))
            return latin("cannot read: ") + rs.lastError();
        QStringList found;
        for (; !rs.Eof(); rs.MoveNext())
            found << rs.value(0).toString();
        return found.join(latin(", "));
    }

    QString query(const char* statement)
    {
        Recordset rows;
        if (!rows.Open(Statement(latin(statement)), database.connection()))
            return latin("cannot read: ") + rows.lastError();
        QStringList lines;
        for (; !rows.Eof(); rows.MoveNext()) {
            QStringList cells;
            for (int field = 0; field < rows.fieldCount(); ++field)
                cells << Statement::valueText(rows.value(field));
            lines << cells.join(latin(" | "));
        }
        return lines.join(u'\n');
    }

    QString optionsRow()
    {
        Recordset row;
        if (!row.Open(Statement(latin("select TicketIniName, Currency from Options")), database.connection()))
            return latin("cannot read: ") + row.lastError();
        return row.value(0).toString() + latin(" | ") + row.value(1).toString();
    }
};

// Clicks into the line, selects its whole text and types over it.
void typeOver(QWidget& window, const char* field, const QString& text)
{
    auto* line = find<QLineEdit>(window, field);
    QVERIFY2(line, field);
    QTest::mouseClick(line, Qt::LeftButton);
    QTest::keyClick(line, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(line, text);
}

// Clicks the tab with this caption.
void chooseTab(QWidget& window, const char* caption)
{
    auto* tabs = find<QTabBar>(window, "TabStrip1");
    for (int i = 0; i < tabs->count(); ++i) {
        if (tabs->tabText(i) == latin(caption))
            QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(i).center());
    }
}

// Clicks an entry of a list, scrolled into view first.
void clickEntry(QWidget& window, const char* list, int row)
{
    auto* entries = find<QListWidget>(window, list);
    entries->scrollToItem(entries->item(row));
    QTest::mouseClick(entries->viewport(), Qt::LeftButton, {}, entries->visualItemRect(entries->item(row)).center());
}

// Clicks the tab at that position from 0.
void chooseTab(QWidget& window, int index)
{
    auto* tabs = find<QTabBar>(window, "TabStrip1");
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(index).center());
}

} // namespace

// The settings screen driven through its widgets: the tabs with their tips, typing into the
// General tab's fields, a refused port, Apply and Ok.
class TestScreensOptions : public QObject
{
    Q_OBJECT

private slots:
    void testTabsAndTips();
    void testGeneralTabApplyAndOk();
    void testClientOptionTicksAndProgramList();
    void testIncludeExcludeAddsAClient();
    void testStaffAccountCreatedThenChangedBehindItsOldPassword();
    void testQuickTicketAndCafeList();
    void testPosTestWritesToTheSerialLine();
    void testBackupAndRestoreRoundTrip();
    void testSettingsFileCarriedToAnotherServer();
};

void TestScreensOptions::testTabsAndTips()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        auto* tabs = find<QTabBar>(screen, "TabStrip1");
        driver.check(screen.windowTitle() == latin("Options"), latin("title"));
        driver.check(tabs->count() == 9, latin("nine tabs without User Account"));
        driver.check(tabs->tabText(1) == latin("Client Option"), latin("second tab"));
        driver.check(tabs->tabToolTip(1) == latin("Client Setup, Program Restriction ...."), latin("second tip"));
        driver.check(tabs->tabToolTip(8) == latin("Point on Sale (POS) Settings"), latin("last tip"));
        driver.check(find(screen, "FGeneral")->isVisible(), latin("General shows"));
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(8).center());
        driver.check(find(screen, "FPOS")->isVisible(), latin("POS shows"));
        driver.check(!find(screen, "FGeneral")->isVisible(), latin("General hidden"));
        driver.check(!find(screen, "cmdApply")->isEnabled(), latin("nothing changed"));
        QTest::mouseClick(find(screen, "cmdOk"), Qt::LeftButton);
    });
    QCOMPARE(desk.run(-1), qint16(0));
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.pref("STR"), latin("<none>"));
}

void TestScreensOptions::testGeneralTabApplyAndOk()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("Options"), [&driver, &desk](FormDialog& screen) {
        auto* apply = find<QPushButton>(screen, "cmdApply");
        driver.check(find<QLineEdit>(screen, "txtPrefix")->text() == latin("NVT"), latin("prefix loaded"));
        driver.check(!apply->isEnabled(), latin("Apply starts disabled"));
        typeOver(screen, "txtPrefix", latin("ab-c"));
        // The minus locked the field for good: the "c" never arrived.
        driver.check(find<QLineEdit>(screen, "txtPrefix")->text() == latin("AB"), latin("prefix typed"));
        driver.check(apply->isEnabled(), latin("a change enables Apply"));
        typeOver(screen, "txtCurrency", latin("e1ur"));
        QTest::mouseClick(apply, Qt::LeftButton);
        driver.check(find<QLineEdit>(screen, "txtCurrency")->text() == latin("EUR"), latin("currency upper-cased"));
        driver.check(!apply->isEnabled(), latin("Apply disables itself"));
        driver.check(desk.pref("STR") == latin("AB"), latin("STR saved"));
        driver.check(desk.pref("SimComp") == latin("5"), latin("SimComp saved"));
        driver.check(desk.optionsRow() == latin("AB | EUR"), latin("Options row: ") + desk.optionsRow());
        // "Other Port" opens the box; a port of 2000 is refused on leaving it.
        QTest::mouseClick(find(screen, "optOtherPort"), Qt::LeftButton);
        typeOver(screen, "txtServerPort", latin("2000"));
        QTest::keyClick(find(screen, "txtServerPort"), Qt::Key_Tab);
    });
    driver.answer(latin("Port less that 1001 or 1002 to 1005 or 2000 or greater than 63553 is not valid!"),
                  QMessageBox::Ok);
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        driver.check(find<QLineEdit>(screen, "txtServerPort")->text() == latin("1001"), latin("port put back"));
        typeOver(screen, "txtServerPort", latin("2001"));
        QTest::mouseClick(find(screen, "cmdOk"), Qt::LeftButton);
    });
    QCOMPARE(desk.run(), qint16(0));
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.pref("ServerUse"), latin("1"));
    QCOMPARE(desk.pref("ServerPort"), latin("2001"));
    QCOMPARE(desk.pref("Currency"), latin("EUR"));
}

void TestScreensOptions::testClientOptionTicksAndProgramList()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        chooseTab(screen, "Client Option");
        driver.check(find(screen, "FClientOption")->isVisible(), latin("Client Option shows"));
        auto* list = find<QListWidget>(screen, "lstClientSettings");
        driver.check(list->count() == 62, latin("sixty-two switches"));
        driver.check(list->item(1)->isSelected() && !list->item(7)->isSelected(), latin("first-run ticks"));
        // A click on an entry turns it and shows its explanation.
        clickEntry(screen, "lstClientSettings", 7);
        driver.check(list->item(7)->isSelected(), latin("auto search ticked"));
        driver.check(find<QLabel>(screen, "lblExplanation")->text() == latin("Stop clients from searching for Server."),
            latin("explanation shown"));
        driver.check(find(screen, "cmdApply")->isEnabled(), latin("a tick enables Apply"));
        QTest::mouseClick(find(screen, "cmdProgramRestriction"), Qt::LeftButton);
        driver.check(find(screen, "FProgramRestriction")->isVisible(), latin("program panel shows"));
        driver.check(!find(screen, "FClientSettings")->isVisible(), latin("tick list hidden"));
        typeOver(screen, "txtForbidden", latin("Games.EXE"));
        QTest::mouseClick(find(screen, "cmdAddForbidden"), Qt::LeftButton);
        auto* forbidden = find<QListWidget>(screen, "lstForbidden");
        driver.check(forbidden->count() == 1 && forbidden->item(0)->text() == latin("games.exe"), latin("name listed"));
        QTest::mouseClick(find(screen, "cmdProgramBack"), Qt::LeftButton);
        driver.check(find(screen, "FClientSettings")->isVisible(), latin("tick list back"));
        QTest::mouseClick(find(screen, "cmdOk"), Qt::LeftButton);
    });
    driver.answer(latin("Update Client(s)' settings now?"), QMessageBox::Yes);
    driver.answer(latin("Some settings will require restarting your systems to take effect!"), QMessageBox::Ok);
    QCOMPARE(desk.run(), qint16(-1));
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.pref("NoAutoSearch", "COption"), latin("True"));
    QCOMPARE(desk.pref("CloseListen"), latin("0"));
    QCOMPARE(desk.pref("NoProfile", "COption"), latin("1"));
    QCOMPARE(desk.rows("select Name from RestrictDisallow where Type = False"), latin("games.exe"));
}

void TestScreensOptions::testIncludeExcludeAddsAClient()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        chooseTab(screen, "Include/Exclude");
        driver.check(find(screen, "FIncludeExclude")->isVisible(), latin("Include/Exclude shows"));
        driver.check(!find(screen, "cmdAddExcluded")->isEnabled(), latin("nothing to add yet"));
        auto* name = find<QLineEdit>(screen, "txtExcludedName");
        QTest::mouseClick(name, Qt::LeftButton);
        QTest::keyClicks(name, latin("pc07"));
        driver.check(name->text() == latin("PC07"), latin("upper-cased as typed: ") + name->text());
        QTest::mouseClick(find(screen, "cmdAddExcluded"), Qt::LeftButton);
    });
    driver.answer(latin("[PC07] added!"), QMessageBox::Ok);
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        auto* list = find<QListWidget>(screen, "lstExcluded");
        driver.check(list->count() == 1 && list->item(0)->text() == latin("PC07"), latin("machine listed"));
        QTest::mouseClick(find(screen, "cmdCancel"), Qt::LeftButton);
    });
    driver.answer(latin("Update Client(s)' settings now?"), QMessageBox::No);
    QCOMPARE(desk.run(), qint16(0));
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.rows("select ComputerName from Restriction"), latin("PC07"));
}

void TestScreensOptions::testStaffAccountCreatedThenChangedBehindItsOldPassword()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        chooseTab(screen, 1);
        driver.check(find(screen, "FUserAccount")->isVisible(), latin("User Account shows"));
        driver.check(find<QListWidget>(screen, "lstUserRights")->count() == 7, latin("seven USER rights"));
        typeOver(screen, "txtUserName", latin("clerk"));
        driver.check(find<QLineEdit>(screen, "txtUserName")->text() == latin("CLERK"), latin("name upper-cased"));
        typeOver(screen, "txtUserPassword", latin("pw1"));
        typeOver(screen, "txtUserRetype", latin("pw1"));
        QTest::mouseClick(find(screen, "cmdUserAddChange"), Qt::LeftButton);
    });
    driver.answer(latin("User Account CLERK Created successfully!"), QMessageBox::Ok);
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        driver.check(find<QListWidget>(screen, "lstExistingUsers")->count() == 2, latin("CLERK listed"));
        typeOver(screen, "txtUserName", latin("clerk"));
        typeOver(screen, "txtUserPassword", latin("pw2"));
        typeOver(screen, "txtUserRetype", latin("pw2"));
        QTest::mouseClick(find(screen, "cmdUserAddChange"), Qt::LeftButton);
    });
    driver.answer(latin("Account Already Exist, Change Properties?"), QMessageBox::Yes);
    driver.onForm(latin("ContPass"), [](FormDialog& gate) {
        typeOver(gate, "txtPassword", latin("pw1"));
        QTest::mouseClick(find(gate, "cmdOK"), Qt::LeftButton);
    });
    driver.answer(latin("Account Information has been Updated!"), QMessageBox::Ok);
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        driver.check(find<QLineEdit>(screen, "txtUserName")->text().isEmpty(), latin("fields cleared"));
        QTest::mouseClick(find(screen, "cmdOk"), Qt::LeftButton);
    });
    QCOMPARE(desk.run(), qint16(0));
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(
        desk.query("select Username, Password, Type from Users where Username = 'CLERK'"), latin("CLERK | PW2 | USER"));
}

void TestScreensOptions::testQuickTicketAndCafeList()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        chooseTab(screen, 7);
        driver.check(find(screen, "FQuickTicket")->isVisible(), latin("Quick-Ticket shows"));
        for (const char* name : {"cboQuickTime", "cboQuickCost"}) {
            QLineEdit* edit = find<QComboBox>(screen, name)->lineEdit();
            QTest::mouseClick(edit, Qt::LeftButton);
            QTest::keyClicks(edit, latin(name) == latin("cboQuickTime") ? latin("60") : latin("50"));
        }
        // On its box: a stretched check box takes clicks on its box and caption only.
        QWidget* timeTicket = find(screen, "chkQuickTimeTicket");
        QTest::mouseClick(timeTicket, Qt::LeftButton, {}, QPoint(6, timeTicket->height() / 2));
        QTest::mouseClick(find(screen, "cmdAddQuickTicket"), Qt::LeftButton);
        QCoreApplication::processEvents();
        auto* list = find<QListWidget>(screen, "lstQuickTickets");
        driver.check(list->count() == 1 && list->item(0)->text() == latin("60min(s) - N50 [Time Ticket]"),
            latin("entry added: ") + (list->count() > 0 ? list->item(list->count() - 1)->text() : latin("none")));
        driver.check(find(screen, "cmdApply")->isEnabled(), latin("an entry enables Apply"));
        QTest::mouseClick(find(screen, "cmdApply"), Qt::LeftButton);
        chooseTab(screen, 8);
        auto* branches = find<QComboBox>(screen, "cboCafeName");
        branches->setFocus();
        QTest::keyClick(branches, Qt::Key_Down);
        QTest::keyClick(branches, Qt::Key_Down);
        driver.check(branches->currentText() == latin("Cafe2"), latin("branch picked: ") + branches->currentText());
        typeOver(screen, "txtCafeSystem", latin("pc-b"));
        QTest::mouseClick(find(screen, "cmdAddCafeClient"), Qt::LeftButton);
    });
    driver.answer(latin("Cafe2 - [PC-B] added successfully!"), QMessageBox::Ok);
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        auto* list = find<QListWidget>(screen, "lstCafes");
        driver.check(list->count() == 1 && list->item(0)->text() == latin("Cafe2 - [PC-B]"), latin("cafe listed"));
        QTest::mouseClick(find(screen, "cmdCancel"), Qt::LeftButton);
    });
    QCOMPARE(desk.run(), qint16(0));
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.query("select TicketType from QuickT"), latin("60min(s) - N50 [Time Ticket]"));
    QCOMPARE(desk.query("select Cafename, SystemName from Cafe"), latin("2 | PC-B"));
}

// A café owner tests the POS display: the test text reaches the far end of a serial line, a
// pseudo-terminal pair made by socat, byte for byte with its line ending.
void TestScreensOptions::testPosTestWritesToTheSerialLine()
{
    QTemporaryDir lines;
    const QString near = lines.filePath(latin("pos"));
    const QString far = lines.filePath(latin("display"));
    QProcess socat;
    socat.start(latin("socat"),
        {latin("-d"), latin("-d"), latin("pty,raw,echo=0,link=") + near, latin("pty,raw,echo=0,link=") + far});
    QVERIFY2(socat.waitForStarted(), "socat is needed (scripts/packages.txt)");
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(near) && QFile::exists(far), 5000);
    const int display = ::open(QFile::encodeName(far).constData(), O_RDONLY | O_NOCTTY | O_NONBLOCK);
    QVERIFY(display >= 0);
    // The screen offers LPT2, which tests serial port 2, set here to the near end of the pair.
    qputenv("MARLET_PORT_COM2", QFile::encodeName(near));

    QByteArray received;
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("Options"), [](FormDialog& screen) {
        auto* tabs = find<QTabBar>(screen, "TabStrip1");
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(9).center());
        auto* port = find<QComboBox>(screen, "cboCOM");
        port->setFocus();
        for (int step = 0; step < 5; ++step)
            QTest::keyClick(port, Qt::Key_Down);
        QTest::mouseClick(find(screen, "cmdTestPOS"), Qt::LeftButton);
    });
    driver.answer(latin("Is your POS connected to a COM port and switched ON?"), QMessageBox::Yes);
    driver.onForm(latin("Options"), [&driver, &received, display](FormDialog& screen) {
        driver.check(find<QComboBox>(screen, "cboCOM")->currentText() == latin("LPT2"), latin("LPT2 picked"));
        QElapsedTimer waited;
        waited.start();
        while (!received.endsWith("\r\n") && waited.elapsed() < 3000) {
            char buffer[128];
            const ssize_t count = ::read(display, buffer, sizeof buffer);
            if (count > 0)
                received.append(buffer, count);
            else
                QThread::msleep(5);
        }
        driver.check(find(screen, "cmdTestPOS")->isEnabled(), latin("the button is back"));
        QTest::mouseClick(find(screen, "cmdCancel"), Qt::LeftButton);
    });
    desk.run();
    ::close(display);
    qunsetenv("MARLET_PORT_COM2");
    socat.terminate();
    socat.waitForFinished(3000);
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(received, QByteArray("This is a POS test for LPT2\r\n"));
}

// Answers the next file dialog with this file.
void chooseFile(test::ScreenDriver& driver, const QString& path)
{
    driver.when(
        latin("a file dialog"),
        [] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()) != nullptr; },
        [path] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            dialog->selectFile(path);
            // The name box decides what the dialog hands back.
            if (auto* name = dialog->findChild<QLineEdit*>(latin("fileNameEdit")))
                name->setText(path);
            // Its own accept, which takes the chosen name, through the public one of QDialog.
            static_cast<QDialog*>(dialog)->accept();
        });
}

// A café owner backs the database up from the Maintenance tab, goes on selling, and restores the
// backup: the tickets are those of the moment of the backup.
void TestScreensOptions::testBackupAndRestoreRoundTrip()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    const char* const before[] = {
        "INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, NEW, Member) VALUES ('261121100000', "
        "'001', 'FIRST', 'PW', 3600, TRUE, FALSE)",
        "INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, NEW, Member) VALUES ('261121100000', "
        "'002', 'SECOND', 'PW', 3600, TRUE, FALSE)",
    };
    QVERIFY(desk.execute(before));
    QTemporaryDir backups;
    registerTidyComponent(desk.component.preferences(), backups.path());
    const QString backup = backups.filePath(latin("cafe.bak"));
    const QString restoreQuestion = latin("Restore the database from ") + backup
        + latin("?\nEverything written to it since that backup was taken will be lost.");

    test::ScreenDriver& driver = desk.driver;
    driver.onForm(latin("Options"), [](FormDialog& screen) {
        auto* tabs = find<QTabBar>(screen, "TabStrip1");
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(5).center());
        QTest::mouseClick(find(screen, "cmdBackUp"), Qt::LeftButton);
    });
    chooseFile(driver, backup);
    driver.answer(latin("The database was backed up to ") + backup, QMessageBox::Ok);
    driver.onForm(latin("Options"), [&driver, &desk](FormDialog& screen) {
        const char* const after[] = {
            "DELETE FROM Account WHERE Username = 'FIRST'",
            "INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, NEW, Member) VALUES "
            "('261121100000', '003', 'LATER', 'PW', 3600, TRUE, FALSE)",
        };
        driver.check(desk.execute(after), latin("sold on"));
        QTest::mouseClick(find(screen, "cmdRestore"), Qt::LeftButton);
    });
    chooseFile(driver, backup);
    driver.answer(restoreQuestion, QMessageBox::Yes);
    driver.answer(latin("The database was restored from ") + backup
            + latin("\nThe database as it was before is kept in ") + backup + latin(".before-restore"),
        QMessageBox::Ok);
    driver.onForm(
        latin("Options"), [](FormDialog& screen) { QTest::mouseClick(find(screen, "cmdOk"), Qt::LeftButton); });
    desk.run();
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(desk.column(latin("select Username from Account order by Username")),
        QStringList({latin("FIRST"), latin("SECOND")}));
    ComponentRegistry::remove(latin("Brisling.Tidy"));
}

// Picks an entry of the next pop-up menu, by its caption.
void chooseMenu(test::ScreenDriver& driver, const char* caption)
{
    driver.when(
        latin("the pop-up menu"),
        [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()) != nullptr; },
        [caption] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            for (QAction* action : menu->actions()) {
                if (action->text() == latin(caption))
                    menu->setActiveAction(action);
            }
            QTest::keyClick(menu, Qt::Key_Return);
        });
}

// A café moves to a new server: its settings and lists are saved to a file on the old one through
// the Settings field, and loaded on the new one, whose screen shows them at once.
void TestScreensOptions::testSettingsFileCarriedToAnotherServer()
{
    QTemporaryDir stick;
    const QString file = stick.filePath(latin("Settings.Sav"));
    const QString question = latin("Save Setting and also settings to a file?");

    Desk old;
    QVERIFY2(old.database.isValid(), qPrintable(old.database.error()));
    const char* const lists[] = {
        "INSERT INTO Capt (Caption) VALUES ('CASINO')",
        "INSERT INTO RClient (ComputerName, User) VALUES ('VIP1', 'ANNE')",
    };
    QVERIFY(old.execute(lists));
    old.component.preferences().SaveSetting(latin("CafeHost"), latin("Option"), latin("STR"), latin("OLD"));
    old.component.preferences().SaveSetting(latin("CafeHost"), latin("COption"), latin("Run"), latin("1"));
    old.driver.onForm(
        latin("Options"), [](FormDialog& screen) { QTest::mouseClick(find(screen, "txtSettings"), Qt::LeftButton); });
    chooseMenu(old.driver, "Save to File");
    old.driver.answer(question, QMessageBox::Yes);
    chooseFile(old.driver, file);
    old.driver.answer(latin("Option settings saved!"), QMessageBox::Ok);
    old.driver.onForm(
        latin("Options"), [](FormDialog& screen) { QTest::mouseClick(find(screen, "cmdCancel"), Qt::LeftButton); });
    old.run();
    QVERIFY2(old.driver.failures().isEmpty(), qPrintable(old.driver.failures().join(latin("; "))));
    QVERIFY(old.driver.done());
    QVERIFY(QFileInfo::exists(file));

    Desk fresh;
    QVERIFY2(fresh.database.isValid(), qPrintable(fresh.database.error()));
    test::ScreenDriver& driver = fresh.driver;
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        driver.check(find<QLineEdit>(screen, "txtPrefix")->text() == latin("NVT"), latin("the new server's prefix"));
        QTest::mouseClick(find(screen, "txtSettings"), Qt::LeftButton);
    });
    chooseMenu(driver, "Load from file");
    chooseFile(driver, file);
    driver.answer(latin("Load the previously saved settings from file?"), QMessageBox::Yes);
    driver.answer(latin("Option settings loaded!"), QMessageBox::Ok);
    driver.onForm(latin("Options"), [&driver](FormDialog& screen) {
        driver.check(find<QLineEdit>(screen, "txtPrefix")->text() == latin("OLD"), latin("the prefix shown again"));
        driver.check(!find(screen, "cmdApply")->isEnabled(), latin("nothing to apply"));
        QTest::mouseClick(find(screen, "cmdOk"), Qt::LeftButton);
    });
    fresh.run();
    QVERIFY2(driver.failures().isEmpty(), qPrintable(driver.failures().join(latin("; "))));
    QVERIFY(driver.done());
    QCOMPARE(fresh.pref("STR"), latin("OLD"));
    QCOMPARE(fresh.pref("Run", "COption"), latin("1"));
    QCOMPARE(fresh.query("select Caption from Capt"), latin("CASINO"));
    QCOMPARE(fresh.query("select ComputerName, User from RClient"), latin("VIP1 | "));
}

} // namespace marlet

QTEST_MAIN(marlet::TestScreensOptions)
#include "TestScreensOptions.moc"
