#include "platform/Operator.h"
#include "screens/AutomationTabs.h"
#include "screens/Options.h"
#include "screens/OptionsNames.h"
#include "screens/PosTab.h"
#include "store/Recordset.h"
#include "support/ScriptedCafe.h"

#include <QTest>

using namespace marlet;

namespace {

// The settings screen on the scripted platform, with a database and a preference store of its own.
struct Desk : test::ScriptedCafe
{
    std::unique_ptr<Options> openScreen()
    {
        session().general.AppTitle = QStringLiteral("CafeHost");
        session().connection().Open(database.connectionString());
        auto screen = std::make_unique<Options>(session());
        screen->load();
        screen->activate();
        return screen;
    }

    QString pref(const QString& application, const QString& section, const QString& key)
    {
        return session().preferences().GetSetting(application, section, key, QStringLiteral("<none>"));
    }

    QString column(const QString& name)
    {
        Recordset row;
        row.Open(Statement(QStringLiteral("Select * from Options")),
            session().connection(),
            CursorType::Static,
            LockType::ReadOnly);
        return row.value(name).toString();
    }
};

} // namespace

// The pages of the settings screen where a scenario cannot reach: the SMS panel that no tab shows,
// the fields of other pages that these pages switch, a speed list with nothing picked, and the
// small rules on their own.
class TestOptionsPages : public QObject
{
    Q_OBJECT

private slots:
    void testSmsPanelIsNeverLoadedNorSaved()
    {
        Desk desk;
        QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
        std::unique_ptr<Options> screen = desk.openScreen();
        Options& form = *screen;
        QVERIFY(!form[options::FSMS].visible());
        form[options::chkAllowSMS].setValue(CheckState::Checked);
        form[options::txtSMSAccount].setText(QStringLiteral("cafe"));
        form[options::txtCurrency].setText(QStringLiteral("USD"));
        QVERIFY(Operator::click(form[options::cmdApply]));
        QVERIFY(!form.tabLoaded(Options::SmsFlag));
        QCOMPARE(desk.pref(QStringLiteral("CafeHost"), QStringLiteral("Option"), QStringLiteral("AllowSMS")),
            QStringLiteral("<none>"));
        QCOMPARE(desk.column(QStringLiteral("SMSAccount")), QString());
        QCOMPARE(desk.column(QStringLiteral("Currency")), QStringLiteral("USD"));
        screen->forceUnload();
    }

    void testSmsBlockWouldWriteTheRowAndTheKeys()
    {
        Desk desk;
        QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
        std::unique_ptr<Options> screen = desk.openScreen();
        Options& form = *screen;
        form[options::chkAllowSMS].setValue(CheckState::Checked);
        form[options::txtSMSAccount].setText(QStringLiteral("cafe"));
        form[options::txtSMSPassword].setText(QStringLiteral("secret"));
        form[options::txtSMScost].setText(QStringLiteral("5"));
        Recordset closed;
        SmsPanel(form).apply(closed);
        QCOMPARE(desk.pref(QStringLiteral("CafeHost"), QStringLiteral("Option"), QStringLiteral("AllowSMS")),
            QStringLiteral("1"));
        QCOMPARE(desk.pref(QStringLiteral("CafeHost"), QStringLiteral("Option"), QStringLiteral("AllowMSMS")),
            QStringLiteral("0"));
        QCOMPARE(desk.column(QStringLiteral("SMSAccount")), QStringLiteral("cafe"));
        QCOMPARE(desk.column(QStringLiteral("SMSPassword")), QStringLiteral("secret"));
        QCOMPARE(desk.column(QStringLiteral("SMScost")), QStringLiteral("5"));
        screen->forceUnload();
    }

    void testCheckSmsAccount_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("warning");
        const QString blank = QStringLiteral("Username or Password can't be Blank!");
        const QString invalid = QStringLiteral("You enter an invalid character (i.e. @, &, etc.)!");
        QTest::newRow("a blank name") << QString() << QStringLiteral("pw") << blank;
        QTest::newRow("a blank password") << QStringLiteral("cafe") << QStringLiteral("  ") << blank;
        QTest::newRow("an at sign") << QStringLiteral("me@cafe") << QStringLiteral("pw") << invalid;
        QTest::newRow("an ampersand") << QStringLiteral("cafe") << QStringLiteral("a&b") << invalid;
        QTest::newRow("a good account") << QStringLiteral("cafe") << QStringLiteral("pw") << QString();
    }

    void testCheckSmsAccount()
    {
        QFETCH(QString, name);
        QFETCH(QString, password);
        QFETCH(QString, warning);
        Desk desk;
        QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
        std::unique_ptr<Options> screen = desk.openScreen();
        Options& form = *screen;
        form[options::txtSMSAccount].setText(name);
        form[options::txtSMSPassword].setText(password);
        if (!warning.isEmpty())
            desk.platform.expectMessage(warning, MsgStyle::Warning);
        // The panel is shown by no tab: its button is pressed here directly.
        form[options::cmdCheckSMS].fireClick();
        QCOMPARE(form[options::cmdCheckSMS].enabled(), !warning.isEmpty());
        QCOMPARE(form[options::lblSMSStatus].caption(),
            warning.isEmpty() ? QStringLiteral("Status: Checking ...") : QStringLiteral("Status:"));
        screen->forceUnload();
        QCOMPARE(desk.platform.failures(), QStringList());
    }

    void testSpeedListWithNothingPickedWritesNothing()
    {
        Desk desk;
        QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
        std::unique_ptr<Options> screen = desk.openScreen();
        Options& form = *screen;
        QVERIFY(form.selectTab(9));
        form[options::cboPOSspeed].setListIndex(-1);
        QVERIFY(Operator::click(form[options::chkSAddr]));
        QVERIFY(Operator::click(form[options::cmdApply]));
        QCOMPARE(desk.pref(QStringLiteral("Norvantis"), QStringLiteral("POS"), QStringLiteral("POSspeed")),
            QStringLiteral("<none>"));
        QCOMPARE(desk.pref(QStringLiteral("Norvantis"), QStringLiteral("POS"), QStringLiteral("SAddr")),
            QStringLiteral("0"));
        screen->forceUnload();
    }

    // The Ticket Setting tab's activation box: the kind of POS switches it, and Apply writes its
    // enabled state while activation is picked.
    void testKindOfPosSwitchesTheActivationBox()
    {
        Desk desk;
        QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
        desk.session().preferences().SaveSetting(
            QStringLiteral("Norvantis"), QStringLiteral("POS"), QStringLiteral("POSType"), QStringLiteral("False"));
        std::unique_ptr<Options> screen = desk.openScreen();
        Options& form = *screen;
        Control& activate = form[options::chkActivateTk];
        QVERIFY(form.selectTab(9));
        QVERIFY(!activate.enabled());
        QVERIFY(Operator::click(form[options::optDevicePOS]));
        QVERIFY(activate.enabled());
        QVERIFY(Operator::click(form[options::optActivationPOS]));
        QVERIFY(!activate.enabled());
        QVERIFY(Operator::click(form[options::cmdApply]));
        QCOMPARE(desk.pref(QStringLiteral("CafeHost"), QStringLiteral("Option"), QStringLiteral("ActivateTk")),
            QStringLiteral("False"));
        screen->forceUnload();
    }

    // The User Account tab's power switch follows the slider's ends.
    void testSliderEndsSwitchTheAdministratorPower_data()
    {
        QTest::addColumn<QString>("staff");
        QTest::addColumn<qint16>("powered");
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("500 closes it") << QStringLiteral("ADMINISTRATOR") << qint16(0) << 500 << false;
        QTest::newRow("10000 opens it") << QStringLiteral("ADMINISTRATOR") << qint16(0) << 10000 << true;
        QTest::newRow("10000 opens it for the administrator under power")
            << QStringLiteral("ADMINISTRATOR") << qint16(-1) << 10000 << true;
        QTest::newRow("10000 closes it for anyone else under power")
            << QStringLiteral("CLERK") << qint16(-1) << 10000 << false;
        QTest::newRow("10000 opens it for anyone without power")
            << QStringLiteral("CLERK") << qint16(0) << 10000 << true;
    }

    void testSliderEndsSwitchTheAdministratorPower()
    {
        QFETCH(QString, staff);
        QFETCH(qint16, powered);
        QFETCH(int, size);
        QFETCH(bool, enabled);
        Desk desk;
        QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
        desk.session().general.CurrentStaff = staff;
        desk.session().general.AdminPowered = powered;
        std::unique_ptr<Options> screen = desk.openScreen();
        Options& form = *screen;
        Control& power = form[options::chkAdministratorPower];
        power.setEnabled(!enabled);
        QVERIFY(form.selectTab(3));
        // The rule as the slider's change runs it; under power the slider itself cannot be moved.
        form[options::sldRecycleBinSize].setValue(size);
        QCOMPARE(power.enabled(), enabled);
        QCOMPARE(form[options::chkMoveToRecycle].enabled(), enabled);
        screen->forceUnload();
    }

    void testPortNumber_data()
    {
        QTest::addColumn<QString>("port");
        QTest::addColumn<int>("number");
        QTest::newRow("COM1") << QStringLiteral("COM1") << 1;
        QTest::newRow("COM4") << QStringLiteral("COM4") << 4;
        QTest::newRow("LPT2 is serial port 2") << QStringLiteral("LPT2") << 2;
        QTest::newRow("no digit at the end is port 1") << QStringLiteral("USB") << 1;
        QTest::newRow("nothing is port 1") << QString() << 1;
        QTest::newRow("only the last character counts") << QStringLiteral("COM12") << 2;
    }

    void testPortNumber()
    {
        QFETCH(QString, port);
        QFETCH(int, number);
        QCOMPARE(PosTab::portNumber(port), number);
    }

    void testSizeCaption_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<QString>("caption");
        QTest::newRow("500") << 500 << QStringLiteral("Recycle Bin Size - Disabled");
        QTest::newRow("10000") << 10000 << QStringLiteral("Recycle Bin Size - Full Size");
        QTest::newRow("5000") << 5000 << QStringLiteral("Recycle Bin Size - 5000rec(s)");
        QTest::newRow("600") << 600 << QStringLiteral("Recycle Bin Size - 600rec(s)");
    }

    void testSizeCaption()
    {
        QFETCH(int, size);
        QFETCH(QString, caption);
        QCOMPARE(MaintenanceTab::sizeCaption(size), caption);
    }

    void testTimeoutValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("saved");
        QTest::newRow("an entry") << QStringLiteral("2000") << QStringLiteral("2000");
        QTest::newRow("a number typed") << QStringLiteral("150") << QStringLiteral("150");
        QTest::newRow("a number and more") << QStringLiteral("2500ms") << QStringLiteral("2500");
        QTest::newRow("no number") << QStringLiteral("fast") << QStringLiteral("0");
        QTest::newRow("blank") << QString() << QStringLiteral("0");
    }

    void testTimeoutValue()
    {
        QFETCH(QString, text);
        QFETCH(QString, saved);
        QCOMPARE(AutomatedActionTab::timeoutValue(text), saved);
    }
};

QTEST_GUILESS_MAIN(TestOptionsPages)
#include "TestOptionsPages.moc"
