#include "component/Component.h"
#include "platform/Form.h"
#include "platform/Operator.h"
#include "script/ScriptedPlatform.h"
#include "store/Connection.h"
#include "support/ScriptedCafe.h"

#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

// The entry operations: what each takes into the session, which screen it shows, and what becomes
// of the shared connection afterwards.
class TestTimerDll : public QObject
{
    Q_OBJECT

private:
    struct Fixture : test::ScriptedCafe
    {
        TimerDll& dll() { return component.timerDll(); }
        QVariant cn1() const { return database.connectionString(); }
        // The next form shown is looked at by `check` and then closed through its title bar.
        void closeNext(std::function<void(Form&)> check = {})
        {
            platform.queueAction([check](Form& form) {
                if (check)
                    check(form);
                Operator::closeWindow(form);
            });
        }
        void passGate()
        {
            platform.queueAction([](Form& gate) {
                Operator::type(gate[QStringLiteral("txtPassword1")], QStringLiteral("ADMIN"));
                Operator::click(gate[QStringLiteral("cmdOK")]);
            });
        }
    };

    static void verifyClean(const ScriptedPlatform& platform)
    {
        QVERIFY2(platform.failures().isEmpty(), qPrintable(platform.failures().join(u'\n')));
        QVERIFY(platform.messages().empty());
    }

private slots:
    void testLoadGenAcLeavesConnectionOpenAndLoadOptionsClosesIt()
    {
        Fixture f;
        f.closeNext([&f](Form& form) {
            QCOMPARE(form.name(), QStringLiteral("GenAcc"));
            QCOMPARE(f.session().general.SharedConnection->State(), 1);
        });
        f.dll().LoadGenAc(
            f.cn1(), QStringLiteral("Cafe"), QStringLiteral("ADMINISTRATOR"), 0, QStringLiteral("C:\\Srv\\srv.exe"));
        QVERIFY(f.session().general.SharedConnection);
        QCOMPARE(f.session().general.SharedConnection->State(), 1);
        Connection* kept = f.session().general.SharedConnection.get();

        // The second open fails quietly on the connection that stayed open; the screen works on it.
        qint16 power = -1;
        qint16 clientUp = 7;
        f.closeNext([&f, kept](Form& form) {
            QCOMPARE(form.caption(), QStringLiteral("Options"));
            QCOMPARE(f.session().general.SharedConnection.get(), kept);
            QCOMPARE(kept->State(), 1);
        });
        f.dll().LoadOptions(QStringLiteral("sqlite:/no/such/folder/x.db"),
            QStringLiteral("Cafe"),
            QStringLiteral("BOSS"),
            power,
            clientUp,
            20,
            QStringLiteral("1001"),
            QStringLiteral("eth0"),
            -1);
        QVERIFY(!f.session().general.SharedConnection);
        QCOMPARE(power, qint16(-1));
        QCOMPARE(clientUp, qint16(0));
        QCOMPARE(f.session().general.MaxComputers, qint16(20));
        QCOMPARE(f.session().general.ServerPorts, QStringLiteral("1001"));
        QCOMPARE(f.session().general.ServerPortName, QStringLiteral("eth0"));
        QCOMPARE(f.session().general.HideAccount, qint16(-1));
        QCOMPARE(f.session().general.CurrentStaff, QStringLiteral("BOSS"));
        verifyClean(f.platform);
    }

    void testVariablesAnOperationDoesNotTakeKeepTheirValues()
    {
        Fixture f;
        f.closeNext();
        f.dll().LoadGenAc(
            f.cn1(), QStringLiteral("Cafe"), QStringLiteral("CLERK"), -1, QStringLiteral("D:/srv/server.exe"));
        QCOMPARE(f.session().general.ServerPath, QStringLiteral("D:/srv/server.exe"));
        QCOMPARE(f.session().general.serverFolder(), QStringLiteral("D:/srv"));
        f.closeNext([](Form& form) { QCOMPARE(form.caption(), QStringLiteral("Recycle Bin - Norvantis")); });
        f.dll().LoadRecycleBin(f.cn1(), QStringLiteral("Other"));
        QCOMPARE(f.session().general.AppTitle, QStringLiteral("Other"));
        QCOMPARE(f.session().general.CurrentStaff, QStringLiteral("CLERK"));
        QCOMPARE(f.session().general.AdminPowered, qint16(-1));
        QVERIFY(!f.session().general.SharedConnection);
        verifyClean(f.platform);
    }

    void testAccountInfoWithEmptyTicketName()
    {
        Fixture f;
        f.session().general.TicketName = QStringLiteral("OLD");
        f.closeNext([](Form& form) { QCOMPARE(form.caption(), QStringLiteral("Ticket Information")); });
        f.dll().LoadAccountInfo(f.cn1(), QStringLiteral("Cafe"), QString());
        QVERIFY(f.session().general.TicketName.isEmpty());
        QVERIFY(!f.session().general.SharedConnection);
        verifyClean(f.platform);
    }

    void testUnopenableConnectionStillShowsTheScreenWithoutMessage_data()
    {
        QTest::addColumn<QString>("connectionString");
        QTest::newRow("missing folder") << QStringLiteral("sqlite:/no/such/folder/cafe.db");
        QTest::newRow("empty") << QString();
        QTest::newRow("unknown provider") << QStringLiteral("Provider=Nothing;Data Source=");
    }
    void testUnopenableConnectionStillShowsTheScreenWithoutMessage()
    {
        QFETCH(QString, connectionString);
        Fixture f;
        f.closeNext([](Form& form) { QCOMPARE(form.name(), QStringLiteral("GenAcc")); });
        f.dll().LoadGenAc(connectionString, QStringLiteral("Cafe"), QStringLiteral("ADMINISTRATOR"), 0, QString());
        QCOMPARE(f.platform.formsShown(), QStringList {QStringLiteral("GenAcc")});
        verifyClean(f.platform);
    }

    void testLoadAutoGenBehavesAsLoadGenAcc()
    {
        QStringList shown[2];
        for (int run = 0; run < 2; ++run) {
            Fixture f;
            f.passGate();
            f.closeNext();
            if (run == 0)
                f.dll().LoadGenAcc(f.cn1(), QStringLiteral("Cafe"), QStringLiteral("ADMINISTRATOR"), 0, QString());
            else
                f.dll().LoadAutoGen(f.cn1(), QStringLiteral("Cafe"), QStringLiteral("ADMINISTRATOR"), 0, QString());
            shown[run] = f.platform.formsShown();
            QVERIFY(!f.session().general.SharedConnection);
            verifyClean(f.platform);
        }
        QCOMPARE(shown[0], (QStringList {QStringLiteral("GenPasstoAccs"), QStringLiteral("GenAcc")}));
        QCOMPARE(shown[1], shown[0]);
    }

    void testGenerateScreenIsTheSameObjectWhenOpenedAgain()
    {
        Fixture f;
        Form* first = nullptr;
        Form* second = nullptr;
        f.closeNext([&first](Form& form) { first = &form; });
        f.dll().LoadGenAc(f.cn1(), QStringLiteral("Cafe"), QStringLiteral("ADMINISTRATOR"), 0, QString());
        f.closeNext([&second](Form& form) { second = &form; });
        f.dll().LoadGenAc(f.cn1(), QStringLiteral("Cafe"), QStringLiteral("ADMINISTRATOR"), 0, QString());
        QVERIFY(first);
        QCOMPARE(second, first);
        QCOMPARE(f.platform.formsShown().size(), 2);
    }

    void testMessageTitleCarriesTheVersion() { QCOMPARE(MessageTitle(), QStringLiteral("Norvantis v2.3.1")); }
};

QTEST_GUILESS_MAIN(TestTimerDll)
#include "TestTimerDll.moc"
