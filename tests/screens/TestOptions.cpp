#include "component/Component.h"
#include "platform/Operator.h"
#include "screens/GeneralTab.h"
#include "screens/Options.h"
#include "script/ScriptedPlatform.h"
#include "support/ScriptedCafe.h"

#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

namespace {

QString latin(const char* text)
{
    return QLatin1String(text);
}

const QString ClientsQuestion = QStringLiteral("Update Client(s)' settings now?");
const QString RestartNote = QStringLiteral("Some settings will require restarting your systems to take effect!");

// The settings screen on the scripted platform, with a database and a preference store of its own.
struct Desk : test::ScriptedCafe
{
    // The screen loaded as LoadOptions would show it, without the modal loop.
    std::unique_ptr<Options> openScreen()
    {
        session().general.AppTitle = latin("CafeHost");
        session().connection().Open(database.connectionString());
        auto screen = std::make_unique<Options>(session());
        screen->load();
        screen->activate();
        return screen;
    }
};

} // namespace

// The settings screen's shell where a scenario cannot reach: the question about the clients when
// ClientUp is set (no field of the General tab sets it), change tracking by a page's flag, and the
// port rules of the General tab on their own.
class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void testClosingAsksAboutClients_data();
    void testClosingAsksAboutClients();
    void testClosingWithoutClientUpAsksNothing();
    void testLoadOptionsHandsClientUpBack();
    void testChangesCountOnlyOnLoadedPages();
    void testSelectTabFindsThePageWhereverItStands_data();
    void testSelectTabFindsThePageWhereverItStands();
    void testPortAllowed_data();
    void testPortAllowed();
    void testStoredPrefix_data();
    void testStoredPrefix();
    void testBlankPortWithDefaultPortIsPutBackQuietly();
    void testAPolicyWithoutAGateToAskStaysOff();
    void testSpinnersFollowTheirNumberFields();
    void testLoadOptionsHandsAdministratorPowerBack_data();
    void testLoadOptionsHandsAdministratorPowerBack();
};

void TestOptions::testClosingAsksAboutClients_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<bool>("yes");
    QTest::addColumn<qint16>("clientUp");

    for (const char* how : {"Can&cel", "&Ok", "the title bar"}) {
        QTest::addRow("closing by %s and answering No clears the flag", how) << latin(how) << false << qint16(0);
        QTest::addRow("closing by %s and answering Yes keeps the flag", how) << latin(how) << true << qint16(-1);
    }
}

void TestOptions::testClosingAsksAboutClients()
{
    QFETCH(QString, how);
    QFETCH(bool, yes);
    QFETCH(qint16, clientUp);

    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    std::unique_ptr<Options> screen = desk.openScreen();
    // What a client setting of another tab does when it changes.
    desk.session().general.ClientUp = -1;
    desk.platform.expectMessage(ClientsQuestion, MsgStyle::YesNoQuestion, yes ? MsgResult::Yes : MsgResult::No);
    if (yes)
        desk.platform.expectMessage(RestartNote, MsgStyle::Info);
    if (how == latin("the title bar"))
        QVERIFY(Operator::closeWindow(*screen));
    else
        QVERIFY(Operator::click(*screen->find(how)));
    QVERIFY(!screen->isLoaded());
    QCOMPARE(desk.session().general.ClientUp, clientUp);
    QCOMPARE(int(desk.platform.messages().size()), yes ? 2 : 1);
    desk.platform.finish();
    QCOMPARE(desk.platform.failures(), QStringList());
}

void TestOptions::testClosingWithoutClientUpAsksNothing()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    std::unique_ptr<Options> screen = desk.openScreen();
    QVERIFY(Operator::click((*screen)[latin("cmdCancel")]));
    QVERIFY(!screen->isLoaded());
    QVERIFY(desk.platform.messages().empty());
    QCOMPARE(desk.session().general.ClientUp, qint16(0));
}

void TestOptions::testLoadOptionsHandsClientUpBack()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    desk.platform.queueAction([&desk](Form& top) {
        desk.session().general.ClientUp = -1;
        Operator::click(top[latin("cmdCancel")]);
    });
    desk.platform.expectMessage(ClientsQuestion, MsgStyle::YesNoQuestion, MsgResult::Yes);
    desk.platform.expectMessage(RestartNote, MsgStyle::Info);
    qint16 power = -1;
    // A value left from an earlier session: the operation clears it before the screen opens.
    qint16 clientUp = 5;
    desk.component.timerDll().LoadOptions(
        desk.database.connectionString(), latin("CafeHost"), latin("ADMINISTRATOR"), power, clientUp, 5, {}, {}, 0);
    QCOMPARE(clientUp, qint16(-1));
    QCOMPARE(power, qint16(-1));
    QCOMPARE(desk.platform.formsShown(), QStringList {latin("Options")});
    desk.platform.finish();
    QCOMPARE(desk.platform.failures(), QStringList());
}

void TestOptions::testChangesCountOnlyOnLoadedPages()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    std::unique_ptr<Options> screen = desk.openScreen();
    Control& apply = (*screen)[latin("cmdApply")];
    // A field of the Ticket Setting page (flag 2), which is not loaded until its tab is shown.
    Control& box = screen->addToFrame((*screen)[latin("FTicketSetting")], ControlKind::CheckBox, latin("chkProbe"));
    screen->trackChanges(box, 2);
    QVERIFY(screen->tabLoaded(0));
    QVERIFY(!screen->tabLoaded(2));
    box.setValue(CheckState::Checked);
    QVERIFY(!apply.enabled());
    QVERIFY(screen->selectTab(2));
    QCOMPARE((*screen)[latin("TabStrip1")].selectedTab(), 4);
    QVERIFY(screen->tabLoaded(2));
    QVERIFY(!apply.enabled());
    QVERIFY(Operator::click(box));
    QVERIFY(apply.enabled());
    // Apply saves and disables itself again.
    QVERIFY(Operator::click(apply));
    QVERIFY(!apply.enabled());
    screen->forceUnload();
}

void TestOptions::testSelectTabFindsThePageWhereverItStands_data()
{
    QTest::addColumn<qint16>("hideAccount");
    QTest::addColumn<int>("flag");
    QTest::addColumn<int>("position");

    QTest::newRow("General is always first") << qint16(0) << 0 << 1;
    QTest::newRow("Ticket Setting is fourth with all tabs") << qint16(0) << 2 << 4;
    QTest::newRow("Ticket Setting is third without User Account") << qint16(-1) << 2 << 3;
    QTest::newRow("POS is tenth with all tabs") << qint16(0) << 9 << 10;
    QTest::newRow("POS is ninth without User Account") << qint16(-1) << 9 << 9;
    QTest::newRow("Maintenance is sixth with all tabs") << qint16(0) << 3 << 6;
}

void TestOptions::testSelectTabFindsThePageWhereverItStands()
{
    QFETCH(qint16, hideAccount);
    QFETCH(int, flag);
    QFETCH(int, position);

    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    desk.session().general.HideAccount = hideAccount;
    std::unique_ptr<Options> screen = desk.openScreen();
    QVERIFY(screen->selectTab(flag));
    QCOMPARE((*screen)[latin("TabStrip1")].selectedTab(), position);
    QVERIFY(screen->tabLoaded(flag));
    // The User Account page cannot be reached when its tab was left out.
    QCOMPARE(screen->selectTab(1), hideAccount == 0);
    screen->forceUnload();
}

void TestOptions::testPortAllowed_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<bool>("allowed");

    QTest::newRow("1001 is the default port") << latin("1001") << true;
    QTest::newRow("1000 is below the range") << latin("1000") << false;
    QTest::newRow("1002 is reserved") << latin("1002") << false;
    QTest::newRow("1005 is reserved") << latin("1005") << false;
    QTest::newRow("1006 is the first port of the range") << latin("1006") << true;
    QTest::newRow("2000 is invalid") << latin("2000") << false;
    QTest::newRow("2001 is valid") << latin("2001") << true;
    QTest::newRow("32767 is the largest 16-bit integer") << latin("32767") << true;
    QTest::newRow("32768 does not fit 16 bits and is refused") << latin("32768") << false;
    QTest::newRow("63553 is refused by the 16-bit conversion") << latin("63553") << false;
    QTest::newRow("63554 is above the range") << latin("63554") << false;
    QTest::newRow("1001.4 rounds to 1001") << latin("1001.4") << true;
    QTest::newRow("1001.5 rounds half to even, to 1002") << latin("1001.5") << false;
    QTest::newRow("a negative port is below the range") << latin("-5000") << false;
}

void TestOptions::testPortAllowed()
{
    QFETCH(QString, port);
    QFETCH(bool, allowed);
    QCOMPARE(GeneralTab::portAllowed(port), allowed);
}

void TestOptions::testStoredPrefix_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("stored");

    QTest::newRow("three letters are upper-cased") << latin("abc") << latin("ABC");
    QTest::newRow("a shorter prefix stays short") << latin("x1") << latin("X1");
    QTest::newRow("an empty prefix stays empty") << QString() << QString();
    QTest::newRow("four characters give way to NVT") << latin("abcd") << latin("NVT");
}

void TestOptions::testStoredPrefix()
{
    QFETCH(QString, prefix);
    QFETCH(QString, stored);
    QCOMPARE(GeneralTab::storedPrefix(prefix), stored);
}

void TestOptions::testBlankPortWithDefaultPortIsPutBackQuietly()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    std::unique_ptr<Options> screen = desk.openScreen();
    Control& port = (*screen)[latin("txtServerPort")];
    QVERIFY(Operator::click((*screen)[latin("optOtherPort")]));
    QVERIFY(Operator::focus(port));
    // The box is left blank while "Default Port" is the pick, as no operator can do with the mouse.
    (*screen)[latin("optDefaultPort")].setValue(1);
    port.setText(QString());
    QVERIFY(Operator::focus((*screen)[latin("txtPrefix")]));
    QCOMPARE(port.text(), latin("1001"));
    QVERIFY(desk.platform.messages().empty());
    // The box is disabled, so the focus stays where it went.
    QCOMPARE(screen->focused(), &(*screen)[latin("txtPrefix")]);
    screen->forceUnload();
}

void TestOptions::testAPolicyWithoutAGateToAskStaysOff()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    // A screen made without the screens it opens: the password gate cannot be asked.
    std::unique_ptr<Options> screen = desk.openScreen();
    QVERIFY(screen->selectTab(1));
    desk.session().general.PassMode = 2;
    QVERIFY(Operator::tick((*screen)[latin("chkNoUser")], true));
    QCOMPARE((*screen)[latin("chkNoUser")].value(), 0);
    QCOMPARE(desk.session().general.PassMode, qint16(0));
    QVERIFY(Operator::tick((*screen)[latin("chkAdministratorPower")], true));
    QCOMPARE((*screen)[latin("chkAdministratorPower")].value(), 0);
    screen->forceUnload();
    desk.platform.finish();
    QCOMPARE(desk.platform.failures(), QStringList());
}

void TestOptions::testSpinnersFollowTheirNumberFields()
{
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    std::unique_ptr<Options> screen = desk.openScreen();
    QVERIFY(screen->selectTab(1));
    Control& logins = (*screen)[latin("txtUserLogins")];
    Control& loginSpinner = (*screen)[latin("sldUserLogins")];
    Control& solotime = (*screen)[latin("txtUserSolotime")];
    Control& solotimeSpinner = (*screen)[latin("sldUserSolotime")];
    QCOMPARE(loginSpinner.maximum(), 999);
    QCOMPARE(solotimeSpinner.maximum(), 9999);
    // Taking the focus puts the field's number into its spinner; moving the spinner writes back.
    Operator::setText(logins, latin("25"));
    Operator::focus(solotime);
    Operator::focus(logins);
    QCOMPARE(loginSpinner.value(), 25);
    loginSpinner.setValue(30);
    QCOMPARE(logins.text(), latin("30"));
    Operator::setText(solotime, latin("120"));
    Operator::focus(logins);
    Operator::focus(solotime);
    QCOMPARE(solotimeSpinner.value(), 120);
    solotimeSpinner.setValue(121);
    QCOMPARE(solotime.text(), latin("121"));
    // A solotime above 999 can be typed, but the spinner no longer moves it.
    Operator::setText(solotime, latin("1500"));
    solotimeSpinner.setValue(122);
    QCOMPARE(solotime.text(), latin("1500"));
    screen->forceUnload();
    desk.platform.finish();
    QCOMPARE(desk.platform.failures(), QStringList());
}

void TestOptions::testLoadOptionsHandsAdministratorPowerBack_data()
{
    QTest::addColumn<bool>("switchOn");
    QTest::addColumn<qint16>("power");
    QTest::newRow("turned on and confirmed") << true << qint16(-1);
    QTest::newRow("turned off") << false << qint16(0);
}

void TestOptions::testLoadOptionsHandsAdministratorPowerBack()
{
    QFETCH(bool, switchOn);
    QFETCH(qint16, power);
    Desk desk;
    QVERIFY2(desk.database.isValid(), qPrintable(desk.database.error()));
    desk.platform.queueAction([](Form& top) { Operator::chooseTab(top[latin("TabStrip1")], 2); });
    desk.platform.queueAction([switchOn](Form& top) {
        Operator::tick(top[latin("chkAdministratorPower")], switchOn);
        Operator::tick(top[latin("chkAdministratorPower")], !switchOn);
        Operator::tick(top[latin("chkAdministratorPower")], switchOn);
    });
    qint16 given = switchOn ? qint16(0) : qint16(-1);
    if (switchOn) {
        // Without power each turning on asks for any entry, then Apply asks to confirm.
        for (int gate = 0; gate < 2; ++gate)
            desk.platform.queueAction([](Form& top) {
                QCOMPARE(top.name(), latin("ContPass"));
                Operator::click(top[latin("cmdOK")]);
            });
        desk.platform.expectMessage(latin("The Administrator Powered is Enabled and will therefore permit only the "
                                          "Administrator account to change passwords and access some other "
                                          "features, Continue? "),
            MsgStyle::YesNoQuestion,
            MsgResult::Yes);
        desk.platform.expectMessage(latin("Administrator Powered Enabled!"), MsgStyle::Info);
    }
    desk.platform.queueAction([](Form& top) { Operator::click(top[latin("cmdOk")]); });
    qint16 clientUp = 0;
    desk.component.timerDll().LoadOptions(
        desk.database.connectionString(), latin("CafeHost"), latin("ADMINISTRATOR"), given, clientUp, 5, {}, {}, 0);
    QCOMPARE(given, power);
    desk.platform.finish();
    QCOMPARE(desk.platform.failures(), QStringList());
}

QTEST_GUILESS_MAIN(TestOptions)
#include "TestOptions.moc"
