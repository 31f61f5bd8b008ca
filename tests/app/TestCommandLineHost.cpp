#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The command-line host as a person or a script uses it on a terminal.
class TestCommandLineHost : public QObject
{
    Q_OBJECT

private:
    struct Run
    {
        int exitCode = -1;
        QString out;
        QString err;
    };

    static Run marlet(const QStringList& arguments, const QByteArray& input = {})
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(MARLET_BINARY), arguments);
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(60000))
            process.kill();
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    QTemporaryDir m_folder;

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    QStringList common() const
    {
        return {QStringLiteral("--db"), path("cafe.db"), QStringLiteral("--prefs"), path("prefs"),
                QStringLiteral("--app-dir"), path("app")};
    }

private slots:
    void initTestCase()
    {
        const Run init = marlet({QStringLiteral("init"), QStringLiteral("--db"), path("cafe.db"),
                                 QStringLiteral("--admin-password"), QStringLiteral("secret")});
        QCOMPARE(init.exitCode, 0);
        QVERIFY(init.out.contains(QStringLiteral("Database ready")));
    }

    void testInitRefusesAnExistingDatabase()
    {
        const Run again = marlet({QStringLiteral("init"), QStringLiteral("--db"), path("cafe.db")});
        QCOMPARE(again.exitCode, 1);
        QVERIFY(!again.err.isEmpty());
    }

    void testInitPrintsAGeneratedPasswordOnce()
    {
        const Run init = marlet({QStringLiteral("init"), QStringLiteral("--db"), path("other.db")});
        QCOMPARE(init.exitCode, 0);
        QVERIFY(init.out.contains(QStringLiteral("ADMINISTRATOR password (shown once): ")));
    }

    void testHeadlessGateRefusesAWrongPassword()
    {
        QStringList arguments = {QStringLiteral("load-gen-acc"), QStringLiteral("--headless"),
                                 QStringLiteral("--user"), QStringLiteral("ADMINISTRATOR")};
        const Run run = marlet(arguments + common(), "wrong\n1\n");
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.contains(QStringLiteral("== Enter Password ==")), qPrintable(run.out));
        QVERIFY2(run.out.contains(QStringLiteral("[Norvantis v2.3.1] Warning: Wrong Password!")), qPrintable(run.out));
        QVERIFY2(!run.out.contains(QStringLiteral("Generate Ticket")), qPrintable(run.out));
    }

    void testHeadlessGateOpensTheGenerateScreenOnTheRightPassword()
    {
        QStringList arguments = {QStringLiteral("load-gen-acc"), QStringLiteral("--headless"),
                                 QStringLiteral("--user"), QStringLiteral("ADMINISTRATOR")};
        const Run run = marlet(arguments + common(), "secret\n1\n");
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.contains(QStringLiteral("== Generate Ticket ==")), qPrintable(run.out));
    }

    void testGenerateMakesABatchAndPrintsIt()
    {
        QStringList arguments = {QStringLiteral("generate"), QStringLiteral("--password"), QStringLiteral("secret"),
                                 QStringLiteral("--number"), QStringLiteral("3"), QStringLiteral("--hours"),
                                 QStringLiteral("2"), QStringLiteral("--minutes"), QStringLiteral("0"),
                                 QStringLiteral("--yes")};
        const Run run = marlet(arguments + common());
        QCOMPARE(run.exitCode, 0);
        const QStringList lines = run.out.split(u'\n');
        int tickets = 0;
        for (const QString& line : lines) {
            if (line.contains(QStringLiteral("120min(s)")))
                ++tickets;
        }
        QCOMPARE(tickets, 3);
    }

    void testGenerateReportsTheScreensRefusal()
    {
        QStringList arguments = {QStringLiteral("generate"), QStringLiteral("--password"), QStringLiteral("secret"),
                                 QStringLiteral("--hours"), QStringLiteral("0"), QStringLiteral("--minutes"),
                                 QStringLiteral("0"), QStringLiteral("--yes")};
        const Run run = marlet(arguments + common());
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains(QStringLiteral("Hour and Minutes can't both be Zero!")), qPrintable(run.err));
    }

    void testUnknownOptionIsRefused()
    {
        const Run run = marlet({QStringLiteral("load-options"), QStringLiteral("--colour"), QStringLiteral("red")});
        QCOMPARE(run.exitCode, 2);
        QVERIFY(run.err.contains(QStringLiteral("unknown option --colour")));
    }
};

QTEST_GUILESS_MAIN(TestCommandLineHost)
#include "TestCommandLineHost.moc"
