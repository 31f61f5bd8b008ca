#include "component/Component.h"
#include "desktop/QtPlatform.h"
#include "store/Recordset.h"
#include "support/DesktopCafe.h"
#include "support/ScreenDriver.h"
#include "support/StoreTestDatabase.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>

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

    QString pref(const char* key)
    {
        return component.preferences().GetSetting(latin("CafeHost"), latin("Option"), latin(key), latin("<none>"));
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

} // namespace

// The settings screen driven through its widgets: the tabs with their tips, typing into the
// General tab's fields, a refused port, Apply and Ok.
class TestScreensOptions : public QObject
{
    Q_OBJECT

private slots:
    void testTabsAndTips();
    void testGeneralTabApplyAndOk();
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

} // namespace marlet

QTEST_MAIN(marlet::TestScreensOptions)
#include "TestScreensOptions.moc"
