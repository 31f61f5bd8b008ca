#include "component/Component.h"
#include "platform/Form.h"
#include "platform/Operator.h"
#include "screens/ContPass.h"
#include "script/ScriptedPlatform.h"
#include "store/Recordset.h"
#include "support/ScriptedCafe.h"

#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

namespace {

const QString WrongPassword = QStringLiteral("Wrong Password!");
const QString PoweredMessage
    = QStringLiteral("Administrator Powered is enabled, You must Log In with the Account ADMINISTRATOR!");

} // namespace

// The two password gates: ContPass in its modes, and the administrator logins in front of the
// generate screen, against a real store.
class TestPasswordGates : public QObject
{
    Q_OBJECT

private:
    struct Fixture : test::ScriptedCafe
    {
        Fixture()
        {
            addStaff(QStringLiteral("CLERK"), QStringLiteral("CLERKPASS"), QStringLiteral("USER"), false);
            addStaff(QStringLiteral("BOSS"), QStringLiteral("BOSSPASS"), QStringLiteral("ADMINISTRATOR"), false);
            addStaff(QStringLiteral("NOGEN"), QStringLiteral("NOGENPASS"), QStringLiteral("ADMINISTRATOR"), true);
            session().connection().Open(database.connectionString());
        }
        // Generate is the column of "Disable Generate Tickets" on the staff account page.
        void addStaff(const QString& name, const QString& password, const QString& type, bool generateDisabled)
        {
            QVERIFY(database.connection().Execute(
                Statement(QStringLiteral("INSERT INTO Users (Username,Password,Type,Generate,enabled) Values "
                                         "('{}','{}','{}',{},true)"),
                    {name, password, type, generateDisabled ? -1 : 0})));
        }
        void setNoUser(bool on)
        {
            QVERIFY(database.connection().Execute(
                Statement(QStringLiteral("UPDATE Options SET NoUser = {}"), {on ? -1 : 0})));
        }
        // Runs the ContPass gate with one entry and a button.
        void runContPass(const QString& entry, const QString& button)
        {
            platform.queueAction([entry](Form& form) { Operator::type(form[QStringLiteral("txtPassword")], entry); });
            platform.queueAction([button](Form& form) { Operator::click(form[button]); });
            ContPass gate(session());
            gate.showModal();
        }
        // Opens the generate screen's gate through LoadGenAcc and performs the actions given.
        void openGenerateGate(const QString& user, qint16 power = 0)
        {
            component.timerDll().LoadGenAcc(database.connectionString(), QStringLiteral("Norvantis"), user, power, {});
        }
        QStringList messageTexts() const
        {
            QStringList texts;
            for (const auto& shown : platform.messages())
                texts << shown.text;
            return texts;
        }
    };

    static void typeInto(ScriptedPlatform& platform, const QString& field, const QString& text)
    {
        platform.queueAction([field, text](Form& form) { Operator::type(form[field], text); });
    }
    static void press(ScriptedPlatform& platform, const QString& button)
    {
        platform.queueAction([button](Form& form) { Operator::click(form[button]); });
    }
    static void closeTop(ScriptedPlatform& platform)
    {
        platform.queueAction([](Form& form) { Operator::closeWindow(form); });
    }

private slots:
    void testAnyEntryModeKeepsThreeOnOk()
    {
        Fixture f;
        f.session().general.PassMode = 3;
        f.runContPass(QString(), QStringLiteral("cmdOK"));
        QCOMPARE(f.session().general.PassMode, qint16(3));
        QVERIFY(f.platform.messages().empty());
    }

    void testAnyEntryModeCancelGivesZero()
    {
        Fixture f;
        f.session().general.PassMode = 3;
        f.runContPass(QStringLiteral("whatever"), QStringLiteral("cmdCancel"));
        QCOMPARE(f.session().general.PassMode, qint16(0));
    }

    void testStaffPasswordAcceptedInUpperCase()
    {
        Fixture f;
        f.session().general.CurrentStaff = QStringLiteral("BOSS");
        f.session().general.PassMode = 0;
        f.runContPass(QStringLiteral("bosspass"), QStringLiteral("cmdOK"));
        QCOMPARE(f.session().general.PassMode, qint16(2));
    }

    void testStaffWithoutAdministratorTypeRefused()
    {
        Fixture f;
        f.session().general.CurrentStaff = QStringLiteral("CLERK");
        f.platform.expectMessage(WrongPassword, MsgStyle::Warning);
        f.runContPass(QStringLiteral("CLERKPASS"), QStringLiteral("cmdOK"));
        QCOMPARE(f.session().general.PassMode, qint16(0));
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }

    void testAdminPoweredRefusesOtherAdministratorWithTwoMessages()
    {
        Fixture f;
        f.session().general.CurrentStaff = QStringLiteral("BOSS");
        f.session().general.AdminPowered = -1;
        f.platform.expectMessage(WrongPassword, MsgStyle::Warning);
        f.platform.expectMessage({PoweredMessage, MsgStyle::Warning, MessageTitle() + u' ', std::nullopt, {}});
        f.runContPass(QStringLiteral("BOSSPASS"), QStringLiteral("cmdOK"));
        QCOMPARE(f.session().general.PassMode, qint16(0));
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }

    void testAdminPoweredAcceptsAdministratorPassword()
    {
        Fixture f;
        f.session().general.CurrentStaff = QStringLiteral("BOSS");
        f.session().general.AdminPowered = -1;
        f.runContPass(QStringLiteral("admin"), QStringLiteral("cmdOK"));
        QCOMPARE(f.session().general.PassMode, qint16(2));
    }

    void testEnterWorksAsOk()
    {
        Fixture f;
        f.session().general.CurrentStaff = QStringLiteral("ADMINISTRATOR");
        f.platform.queueAction([](Form& form) {
            Operator::type(form[QStringLiteral("txtPassword")], QStringLiteral("ADMIN"));
            Operator::pressKey(form[QStringLiteral("txtPassword")], Key::Enter);
        });
        ContPass gate(f.session());
        gate.showModal();
        QCOMPARE(f.session().general.PassMode, qint16(2));
        QVERIFY(!gate.isLoaded());
    }

    void testQuoteInEntryNeverOpensTheGate_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("classic always-true") << QStringLiteral("' OR '1'='1");
        QTest::newRow("statement break") << QStringLiteral("x'; DROP TABLE Users; --");
        QTest::newRow("lone quote") << QStringLiteral("'");
    }
    void testQuoteInEntryNeverOpensTheGate()
    {
        QFETCH(QString, entry);
        Fixture f;
        f.session().general.CurrentStaff = QStringLiteral("ADMINISTRATOR");
        f.platform.expectMessage(WrongPassword, MsgStyle::Warning);
        f.runContPass(entry, QStringLiteral("cmdOK"));
        QCOMPARE(f.session().general.PassMode, qint16(0));
        Recordset users;
        QVERIFY(users.Open(Statement(QStringLiteral("select * from Users")), f.database.connection()));
        QCOMPARE(users.RecordCount(), 4L);
    }

    void testOldPasswordMode()
    {
        Fixture f;
        f.session().general.GateUsername = QStringLiteral("CLERK");
        f.session().general.PassMode = 4;
        f.runContPass(QStringLiteral("clerkpass"), QStringLiteral("cmdOK"));
        QCOMPARE(f.session().general.PassMode, qint16(5));
        f.session().general.PassMode = 4;
        f.runContPass(QStringLiteral("nope"), QStringLiteral("cmdOK"));
        QCOMPARE(f.session().general.PassMode, qint16(6));
    }

    void testOldPasswordLabel()
    {
        Fixture f;
        f.session().general.PassMode = 4;
        ContPass gate(f.session());
        gate.load();
        QCOMPARE(gate[QStringLiteral("lblPassword")].caption(), QStringLiteral("Old Password:"));
        QCOMPARE(gate.caption(), QStringLiteral("Enter Pasword to Continue"));
    }

    void testOneAdministratorLayoutAndSuccess()
    {
        Fixture f;
        f.setNoUser(false);
        f.platform.queueAction([](Form& gate) {
            QCOMPARE(gate[QStringLiteral("Frame2")].visible(), false);
            QCOMPARE(gate[QStringLiteral("Frame1")].caption(), QString());
            QCOMPARE(gate.height(), 2835);
            QCOMPARE(gate[QStringLiteral("cmdOK")].top(), 120);
            QCOMPARE(gate[QStringLiteral("cmdCancel")].top(), 1440);
            QCOMPARE(gate[QStringLiteral("txtUsername1")].text(), QStringLiteral("ADMINISTRATOR"));
            QVERIFY(!gate[QStringLiteral("txtUsername1")].enabled());
            QCOMPARE(gate.focused(), &gate[QStringLiteral("txtPassword1")]);
        });
        typeInto(f.platform, QStringLiteral("txtPassword1"), QStringLiteral("admin"));
        press(f.platform, QStringLiteral("cmdOK"));
        f.platform.queueAction([](Form& top) { QCOMPARE(top.name(), QStringLiteral("GenAcc")); });
        closeTop(f.platform);
        f.openGenerateGate(QStringLiteral("administrator"));
        QCOMPARE(f.platform.formsShown(), (QStringList {QStringLiteral("GenPasstoAccs"), QStringLiteral("GenAcc")}));
        QVERIFY(f.session().general.SecondStaff.isEmpty());
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }

    void testWrongPasswordNeverShowsGenerateScreenAndClosesConnection()
    {
        Fixture f;
        typeInto(f.platform, QStringLiteral("txtPassword1"), QStringLiteral("bad"));
        f.platform.expectMessage(WrongPassword, MsgStyle::Warning);
        press(f.platform, QStringLiteral("cmdOK"));
        press(f.platform, QStringLiteral("cmdCancel"));
        f.openGenerateGate(QStringLiteral("ADMINISTRATOR"));
        QCOMPARE(f.platform.formsShown(), QStringList {QStringLiteral("GenPasstoAccs")});
        QVERIFY(!f.session().general.SharedConnection);
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }

    void testNonAdministratorFirstAccountRefused()
    {
        Fixture f;
        typeInto(f.platform, QStringLiteral("txtPassword1"), QStringLiteral("clerkpass"));
        f.platform.expectMessage(QStringLiteral("An Administrator's Account is required!"), MsgStyle::Warning);
        press(f.platform, QStringLiteral("cmdOK"));
        f.platform.queueAction([](Form& gate) { QCOMPARE(gate.focused(), &gate[QStringLiteral("txtPassword1")]); });
        press(f.platform, QStringLiteral("cmdCancel"));
        f.openGenerateGate(QStringLiteral("CLERK"));
        QCOMPARE(f.platform.formsShown(), QStringList {QStringLiteral("GenPasstoAccs")});
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }

    void testUnknownFirstUserStopsSilentlyAfterMessage()
    {
        Fixture f;
        typeInto(f.platform, QStringLiteral("txtPassword1"), QStringLiteral("x"));
        f.platform.expectMessage(QStringLiteral("Username doesn't Exist!"), MsgStyle::Warning);
        press(f.platform, QStringLiteral("cmdOK"));
        press(f.platform, QStringLiteral("cmdCancel"));
        f.openGenerateGate(QStringLiteral("GHOST"));
        QCOMPARE(f.platform.formsShown(), QStringList {QStringLiteral("GenPasstoAccs")});
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }

    void testQuoteInUserNameNeverOpensTheGate()
    {
        Fixture f;
        typeInto(f.platform, QStringLiteral("txtPassword1"), QStringLiteral("admin"));
        press(f.platform, QStringLiteral("cmdOK"));
        press(f.platform, QStringLiteral("cmdCancel"));
        f.openGenerateGate(QStringLiteral("ADMINISTRATOR' OR '1'='1"));
        QCOMPARE(f.platform.formsShown(), QStringList {QStringLiteral("GenPasstoAccs")});
        QVERIFY(f.platform.messages().empty());
    }

    void testTwoAdministratorsLayoutAndSecondStaff()
    {
        Fixture f;
        f.setNoUser(true);
        f.platform.queueAction([](Form& gate) {
            QVERIFY(gate[QStringLiteral("Frame2")].visible());
            QCOMPARE(gate[QStringLiteral("Frame1")].caption(), QStringLiteral("1st"));
            QCOMPARE(gate.height(), 5325);
            QCOMPARE(gate[QStringLiteral("cmdOK")].top(), 840);
            QCOMPARE(gate[QStringLiteral("cmdCancel")].top(), 3360);
        });
        typeInto(f.platform, QStringLiteral("txtPassword1"), QStringLiteral("admin"));
        typeInto(f.platform, QStringLiteral("txtUsername2"), QStringLiteral("boss"));
        typeInto(f.platform, QStringLiteral("txtPassword2"), QStringLiteral("bosspass"));
        press(f.platform, QStringLiteral("cmdOK"));
        f.platform.queueAction([&f](Form& top) {
            QCOMPARE(top.name(), QStringLiteral("GenAcc"));
            QCOMPARE(f.session().general.SecondStaff, QStringLiteral("BOSS"));
            QCOMPARE(f.session().general.byWhom(), QStringLiteral("ADMINISTRATOR & BOSS"));
        });
        closeTop(f.platform);
        f.openGenerateGate(QStringLiteral("ADMINISTRATOR"));
        // Closing the generate screen forgets the second approver.
        QVERIFY(f.session().general.SecondStaff.isEmpty());
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }

    void testSecondAdministratorWithoutGenerateRightRefused()
    {
        Fixture f;
        f.setNoUser(true);
        typeInto(f.platform, QStringLiteral("txtPassword1"), QStringLiteral("admin"));
        typeInto(f.platform, QStringLiteral("txtUsername2"), QStringLiteral("NOGEN"));
        typeInto(f.platform, QStringLiteral("txtPassword2"), QStringLiteral("NOGENPASS"));
        f.platform.expectMessage(
            QStringLiteral("This Administrator's Account doesn't have access to Generate Ticket!"), MsgStyle::Warning);
        press(f.platform, QStringLiteral("cmdOK"));
        f.platform.queueAction([](Form& gate) { QCOMPARE(gate.focused(), &gate[QStringLiteral("txtUsername2")]); });
        press(f.platform, QStringLiteral("cmdCancel"));
        // The same account passes as the first login: the right is tested on the second only.
        typeInto(f.platform, QStringLiteral("txtPassword1"), QStringLiteral("nogenpass"));
        typeInto(f.platform, QStringLiteral("txtUsername2"), QStringLiteral("BOSS"));
        typeInto(f.platform, QStringLiteral("txtPassword2"), QStringLiteral("BOSSPASS"));
        press(f.platform, QStringLiteral("cmdOK"));
        closeTop(f.platform);
        f.openGenerateGate(QStringLiteral("ADMINISTRATOR"));
        f.openGenerateGate(QStringLiteral("NOGEN"));
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
        QCOMPARE(f.platform.formsShown(),
            (QStringList {QStringLiteral("GenPasstoAccs"), QStringLiteral("GenPasstoAccs"), QStringLiteral("GenAcc")}));
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }

    void testSameNameInBothFramesRefusedWithoutRegardToCase()
    {
        Fixture f;
        f.setNoUser(true);
        typeInto(f.platform, QStringLiteral("txtPassword1"), QStringLiteral("admin"));
        typeInto(f.platform, QStringLiteral("txtUsername2"), QStringLiteral("administrator"));
        typeInto(f.platform, QStringLiteral("txtPassword2"), QStringLiteral("admin"));
        f.platform.expectMessage(QStringLiteral("You must enter different Usernames!"), MsgStyle::Warning);
        press(f.platform, QStringLiteral("cmdOK"));
        press(f.platform, QStringLiteral("cmdCancel"));
        f.openGenerateGate(QStringLiteral("ADMINISTRATOR"));
        QCOMPARE(f.platform.formsShown(), QStringList {QStringLiteral("GenPasstoAccs")});
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }

    void testSecondPasswordComparedAsStored()
    {
        Fixture f;
        f.setNoUser(true);
        f.addStaff(QStringLiteral("LOWER"), QStringLiteral("secret"), QStringLiteral("ADMINISTRATOR"), false);
        typeInto(f.platform, QStringLiteral("txtPassword1"), QStringLiteral("admin"));
        typeInto(f.platform, QStringLiteral("txtUsername2"), QStringLiteral("LOWER"));
        typeInto(f.platform, QStringLiteral("txtPassword2"), QStringLiteral("secret"));
        f.platform.expectMessage(WrongPassword, MsgStyle::Warning);
        press(f.platform, QStringLiteral("cmdOK"));
        press(f.platform, QStringLiteral("cmdCancel"));
        f.openGenerateGate(QStringLiteral("ADMINISTRATOR"));
        QCOMPARE(f.platform.formsShown(), QStringList {QStringLiteral("GenPasstoAccs")});
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }

    void testEnterWalksThroughTheFields()
    {
        Fixture f;
        f.setNoUser(true);
        f.platform.queueAction([](Form& gate) {
            Operator::type(gate[QStringLiteral("txtPassword1")], QStringLiteral("admin"));
            Operator::pressKey(gate[QStringLiteral("txtPassword1")], Key::Enter);
            QCOMPARE(gate.focused(), &gate[QStringLiteral("txtUsername2")]);
            Operator::type(gate[QStringLiteral("txtUsername2")], QStringLiteral("boss"));
            Operator::pressKey(gate[QStringLiteral("txtUsername2")], Key::Enter);
            QCOMPARE(gate.focused(), &gate[QStringLiteral("txtPassword2")]);
            QCOMPARE(gate[QStringLiteral("txtUsername2")].text(), QStringLiteral("BOSS"));
            Operator::type(gate[QStringLiteral("txtPassword2")], QStringLiteral("bosspass"));
            Operator::pressKey(gate[QStringLiteral("txtPassword2")], Key::Enter);
        });
        closeTop(f.platform);
        f.openGenerateGate(QStringLiteral("ADMINISTRATOR"));
        QCOMPARE(f.platform.formsShown(), (QStringList {QStringLiteral("GenPasstoAccs"), QStringLiteral("GenAcc")}));
        QVERIFY2(f.platform.failures().isEmpty(), qPrintable(f.platform.failures().join(u'\n')));
    }
};

QTEST_GUILESS_MAIN(TestPasswordGates)
#include "TestPasswordGates.moc"
