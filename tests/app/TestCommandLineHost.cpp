#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
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

    static Run marlet(const QStringList& arguments, const QByteArray& input = {}, const QStringList& variables = {})
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& variable : variables)
            environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
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

    // Every row of every table, so that a refused command can be shown to have written nothing.
    QString databaseContents() const
    {
        QString contents;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("contents"));
            db.setDatabaseName(path("cafe.db"));
            if (!db.open())
                return QStringLiteral("cannot open: ") + db.lastError().text();
            for (const QString& table : db.tables()) {
                QSqlQuery rows(QStringLiteral("SELECT * FROM \"%1\"").arg(table), db);
                contents += table + u'\n';
                while (rows.next()) {
                    for (int col = 0; col < rows.record().count(); ++col)
                        contents += rows.value(col).toString() + u'|';
                    contents += u'\n';
                }
            }
        }
        QSqlDatabase::removeDatabase(QStringLiteral("contents"));
        return contents;
    }

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
        QCOMPARE(again.err,
            QStringLiteral("marlet init: The database '%1' already exists; it is replaced only when forced. "
                           "Add --force to replace it, or give another --db.\n")
                .arg(path("cafe.db")));
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
        QVERIFY2(
            run.err.contains(QStringLiteral("`marlet load-options --help` lists the options")), qPrintable(run.err));
    }

    void testAnOptionOfAnotherCommandIsRefused()
    {
        const Run run = marlet({QStringLiteral("init"), QStringLiteral("--number"), QStringLiteral("5")});
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(QStringLiteral("marlet init: unknown option --number")), qPrintable(run.err));
    }

    void testVersionIsTheProjectVersion()
    {
        const Run run = marlet({QStringLiteral("--version")});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, QStringLiteral("marlet 2.3.1\n"));
    }

    void testUsageListsEveryCommand()
    {
        const Run run = marlet({QStringLiteral("--help")});
        QCOMPARE(run.exitCode, 0);
        for (const char* command : {"load-gen-acc",
                 "load-auto-gen",
                 "load-gen-ac",
                 "load-options",
                 "load-account-info",
                 "load-recycle-bin",
                 "init",
                 "script",
                 "generate"})
            QVERIFY2(run.out.contains(QStringLiteral("\n  %1 ").arg(QLatin1String(command))), command);
    }

    void testCommandHelpListsEachOptionOnItsOwnLine_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("options");
        QTest::newRow("init") << QStringLiteral("init")
                              << QStringList {QStringLiteral("--db PATH"),
                                     QStringLiteral("--admin-password PW"),
                                     QStringLiteral("--force"),
                                     QStringLiteral("--app-dir DIR")};
        QTest::newRow("generate") << QStringLiteral("generate")
                                  << QStringList {QStringLiteral("--expiry fixed|flexible|never"),
                                         QStringLiteral("--print yes|no"),
                                         QStringLiteral("--number N"),
                                         QStringLiteral("--time-frame HH:mm-HH:mm")};
        QTest::newRow("load-options") << QStringLiteral("load-options")
                                      << QStringList {QStringLiteral("--hide-account"),
                                             QStringLiteral("--max N"),
                                             QStringLiteral("--headless")};
    }

    void testCommandHelpListsEachOptionOnItsOwnLine()
    {
        QFETCH(QString, command);
        QFETCH(QStringList, options);
        const Run run = marlet({command, QStringLiteral("--help")});
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.startsWith(QStringLiteral("usage: marlet ") + command), qPrintable(run.out));
        for (const QString& option : options)
            QVERIFY2(run.out.contains(QStringLiteral("\n  ") + option + QStringLiteral("  ")), qPrintable(option));
    }

    void testAValueOutsideTheAcceptedOnesNamesThem()
    {
        const Run run = marlet({QStringLiteral("generate"), QStringLiteral("--expiry"), QStringLiteral("monthly")});
        QCOMPARE(run.exitCode, 2);
        QCOMPARE(
            run.err, QStringLiteral("marlet generate: --expiry takes fixed, flexible or never, not \"monthly\"\n"));
    }

    void testAMissingValueNamesTheOption()
    {
        const Run run = marlet({QStringLiteral("init"), QStringLiteral("--db")});
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.startsWith(QStringLiteral("marlet init: --db needs a value (PATH)")), qPrintable(run.err));
    }

    void testAStrayWordIsRefused()
    {
        const Run run = marlet({QStringLiteral("init"), path("stray.db")});
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(QStringLiteral("unexpected word")), qPrintable(run.err));
        QVERIFY(!QFile::exists(path("stray.db")));
    }

    void testAnUnknownCommandSaysWhereTheCommandsAre()
    {
        const Run run = marlet({QStringLiteral("generat")});
        QCOMPARE(run.exitCode, 2);
        QCOMPARE(run.err, QStringLiteral("marlet: unknown command generat; `marlet --help` lists the commands\n"));
    }

    void testABadValueIsRefusedBeforeAnythingIsWritten_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("message");
        const auto row = [](const char* name, QStringList options, const char* message) {
            QTest::newRow(name) << options << QString::fromUtf8(message);
        };
        row("number abc",
            {QStringLiteral("--number"), QStringLiteral("abc")},
            "marlet generate: --number abc: A numeric Value is required! (eg. 123); nothing was made, give another "
            "value");
        row("number 1000",
            {QStringLiteral("--number"), QStringLiteral("1000")},
            "marlet generate: --number 1000: You can't generate more than 999 tickets at a time!; nothing was made, "
            "give another value");
        row("number 0",
            {QStringLiteral("--number"), QStringLiteral("0")},
            "marlet generate: --number takes 1 to 999 tickets, not \"0\"; nothing was made");
        row("number -5",
            {QStringLiteral("--number"), QStringLiteral("-5")},
            "marlet generate: --number takes 1 to 999 tickets, not \"-5\"; nothing was made");
        row("cost -1",
            {QStringLiteral("--cost"), QStringLiteral("-1")},
            "marlet generate: --cost -1: Amount must be between 0 to 99,999!; nothing was made, give another value");
        row("hours 400",
            {QStringLiteral("--hours"), QStringLiteral("400")},
            "marlet generate: --hours 400: Hour(s) Can't be less than 0 or greater than 360!; nothing was made, give "
            "another value");
        row("minutes -5",
            {QStringLiteral("--minutes"), QStringLiteral("-5")},
            "marlet generate: --minutes cannot be negative; nothing was made");
        row("days 400",
            {QStringLiteral("--expiry"), QStringLiteral("fixed"), QStringLiteral("--days"), QStringLiteral("400")},
            "marlet generate: --days 400: Value should not be greater than 365 days!; nothing was made, give another "
            "value");
        row("days -3",
            {QStringLiteral("--days"), QStringLiteral("-3")},
            "marlet generate: --days cannot be negative; nothing was made");
        row("time frame",
            {QStringLiteral("--time-frame"), QStringLiteral("25:00-26:00")},
            "marlet generate: --time-frame takes HH:mm-HH:mm, e.g. 18:00-23:30, not \"25:00-26:00\"; nothing was made");
        row("expiry",
            {QStringLiteral("--expiry"), QStringLiteral("soon")},
            "marlet generate: --expiry takes fixed, flexible or never, not \"soon\"");
        row("print",
            {QStringLiteral("--print"), QStringLiteral("maybe")},
            "marlet generate: --print takes yes or no, not \"maybe\"");
    }

    void testABadValueIsRefusedBeforeAnythingIsWritten()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, message);
        const QString before = databaseContents();
        QVERIFY2(before.startsWith(QStringLiteral("account\n")), qPrintable(before.left(200)));
        const Run run = marlet(QStringList {QStringLiteral("generate"),
                                   QStringLiteral("--password"),
                                   QStringLiteral("secret"),
                                   QStringLiteral("--hours"),
                                   QStringLiteral("1"),
                                   QStringLiteral("--yes")}
            + options + common());
        QVERIFY2(run.exitCode != 0, qPrintable(run.out));
        QCOMPARE(run.err.trimmed(), message);
        QCOMPARE(databaseContents(), before);
    }

    void testThePasswordNeedNotShowInTheProcessList_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QStringList>("variables");
        QFile file(path("password.txt"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("secret\nnot this line\n");
        file.close();
        QTest::newRow("from a file") << QStringList {QStringLiteral("--password-file"), path("password.txt")}
                                     << QByteArray() << QStringList();
        QTest::newRow("from standard input")
            << QStringList {QStringLiteral("--password-stdin")} << QByteArray("secret\n") << QStringList();
        QTest::newRow("from the environment")
            << QStringList() << QByteArray() << QStringList {QStringLiteral("MARLET_PASSWORD=secret")};
    }

    void testThePasswordNeedNotShowInTheProcessList()
    {
        QFETCH(QStringList, options);
        QFETCH(QByteArray, input);
        QFETCH(QStringList, variables);
        const Run run = marlet(QStringList {QStringLiteral("generate"),
                                   QStringLiteral("--number"),
                                   QStringLiteral("1"),
                                   QStringLiteral("--hours"),
                                   QStringLiteral("1"),
                                   QStringLiteral("--yes")}
                + options + common(),
            input,
            variables);
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.contains(QStringLiteral("60min(s)")), qPrintable(run.out + run.err));
    }

    void testAWrongPasswordFromAFileIsRefused()
    {
        QFile file(path("wrong.txt"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("guess\n");
        file.close();
        const Run run = marlet(QStringList {QStringLiteral("generate"),
                                   QStringLiteral("--password-file"),
                                   path("wrong.txt"),
                                   QStringLiteral("--number"),
                                   QStringLiteral("1"),
                                   QStringLiteral("--hours"),
                                   QStringLiteral("1"),
                                   QStringLiteral("--yes")}
            + common());
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains(QStringLiteral("the password gate refused: Wrong Password!")), qPrintable(run.err));
    }

    void testAMissingPasswordFileIsNamed()
    {
        const Run run
            = marlet(QStringList {QStringLiteral("generate"), QStringLiteral("--password-file"), path("nowhere.txt")}
                + common());
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.startsWith(QStringLiteral("marlet generate: --password-file ") + path("nowhere.txt")
                     + QStringLiteral(" cannot be read")),
            qPrintable(run.err));
    }

    void testThePasswordIsAskedOnATerminalWithoutEcho()
    {
        QStringList words = QStringList {QStringLiteral(MARLET_BINARY),
                                QStringLiteral("generate"),
                                QStringLiteral("--number"),
                                QStringLiteral("1"),
                                QStringLiteral("--hours"),
                                QStringLiteral("1"),
                                QStringLiteral("--yes"),
                                QStringLiteral("--print"),
                                QStringLiteral("no")}
            + common();
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("DISPLAY"));
        process.setProcessEnvironment(environment);
        process.start(
            QStringLiteral("script"), {QStringLiteral("-qec"), words.join(u' '), QStringLiteral("/dev/null")});
        QVERIFY(process.waitForStarted());
        // Typed only once the prompt shows, as a person would: the prompt turns the echo off.
        QByteArray shown;
        while (!shown.contains("Password for") && process.waitForReadyRead(30000))
            shown += process.readAllStandardOutput();
        process.write("secret\n");
        QVERIFY(process.waitForFinished(60000));
        const QString out = QString::fromUtf8(shown + process.readAllStandardOutput());
        QCOMPARE(process.exitCode(), 0);
        QVERIFY2(out.contains(QStringLiteral("Password for ADMINISTRATOR: ")), qPrintable(out));
        QVERIFY2(!out.contains(QStringLiteral("secret")), qPrintable(out));
        QVERIFY2(out.contains(QStringLiteral("60min(s)")), qPrintable(out));
    }

    void testADatabaseTheScreensCannotUseIsNamedWithItsReason_data()
    {
        QTest::addColumn<QString>("db");
        QTest::addColumn<QString>("reason");
        QDir(m_folder.path()).mkpath(QStringLiteral("folder.db"));
        const auto write = [this](const char* name, const QByteArray& bytes) {
            QFile file(path(name));
            if (file.open(QIODevice::WriteOnly))
                file.write(bytes);
        };
        write("notes.txt", "opening hours 9-21\n");
        write("empty.db", {});
        QFile original(path("cafe.db"));
        QVERIFY(original.open(QIODevice::ReadOnly));
        const QByteArray database = original.readAll();
        write("truncated.db", database.left(database.size() / 3));
        QByteArray damaged = database;
        for (qsizetype at = 4096; at < damaged.size(); at += 7)
            damaged[at] = char(0xA5);
        write("damaged.db", damaged);
        QTest::newRow("missing") << path("missing.db")
                                 << QStringLiteral("The database '%1' does not exist.").arg(path("missing.db"));
        QTest::newRow("a folder") << path("folder.db")
                                  << QStringLiteral("'%1' is a folder, not a database.").arg(path("folder.db"));
        QTest::newRow("a text file") << path("notes.txt")
                                     << QStringLiteral("'%1' is not a database.").arg(path("notes.txt"));
        QTest::newRow("an empty file") << path("empty.db")
                                       << QStringLiteral("The database '%1' is empty.").arg(path("empty.db"));
        QTest::newRow("truncated") << path("truncated.db")
                                   << QStringLiteral("The database '%1' is damaged").arg(path("truncated.db"));
        QTest::newRow("damaged") << path("damaged.db")
                                 << QStringLiteral("The database '%1' is damaged").arg(path("damaged.db"));
        QTest::newRow("no store") << QStringLiteral("Provider=x;User=y")
                                  << QStringLiteral("The connection string has no Data Source.");
    }

    void testADatabaseTheScreensCannotUseIsNamedWithItsReason()
    {
        QFETCH(QString, db);
        QFETCH(QString, reason);
        for (const char* command : {"generate", "load-gen-acc", "load-recycle-bin"}) {
            const Run run = marlet({QLatin1String(command),
                QStringLiteral("--db"),
                db,
                QStringLiteral("--prefs"),
                path("prefs"),
                QStringLiteral("--app-dir"),
                path("app")});
            QCOMPARE(run.exitCode, 1);
            QVERIFY2(run.err.startsWith(QStringLiteral("marlet %1: ").arg(QLatin1String(command)) + reason),
                qPrintable(run.err));
            QVERIFY2(
                run.err.contains(QStringLiteral("`marlet init --db FILE` creates a new one")), qPrintable(run.err));
        }
    }

    void testABatchTheStoreCutsShortExitsWithTheStoresReason()
    {
        const QString db = path("full.db");
        QCOMPARE(marlet({QStringLiteral("init"), QStringLiteral("--db"), db, QStringLiteral("--admin-password"),
                         QStringLiteral("secret")})
                     .exitCode,
                 0);
        {
            QSqlDatabase native = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("full"));
            native.setDatabaseName(db);
            QVERIFY(native.open());
            QSqlQuery trigger(native);
            QVERIFY(trigger.exec(QStringLiteral(
                "CREATE TRIGGER full BEFORE INSERT ON Account WHEN (SELECT count(*) FROM Account) >= 2 "
                "BEGIN SELECT RAISE(ABORT, 'database or disk is full'); END")));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("full"));
        const Run run = marlet({QStringLiteral("generate"), QStringLiteral("--db"), db, QStringLiteral("--password"),
                                QStringLiteral("secret"), QStringLiteral("--number"), QStringLiteral("4"),
                                QStringLiteral("--hours"), QStringLiteral("1"), QStringLiteral("--yes"),
                                QStringLiteral("--prefs"), path("prefs"), QStringLiteral("--app-dir"), path("app")});
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains(QStringLiteral("Ticket generation stopped: the database did not store ticket 3 "
                                                 "(database or disk is full). The 2 ticket(s) stored before it")),
                 qPrintable(run.err));
        QVERIFY2(!run.out.contains(QStringLiteral("Completed Successfully")), qPrintable(run.out));
        QCOMPARE(run.out.count(QStringLiteral("60min(s)")), 2);
    }

    void testTwoBatchesStartedTogetherGetAGroupEach()
    {
        const QString db = path("two.db");
        QCOMPARE(marlet({QStringLiteral("init"), QStringLiteral("--db"), db, QStringLiteral("--admin-password"),
                         QStringLiteral("secret")})
                     .exitCode,
                 0);
        const QStringList arguments = {QStringLiteral("generate"), QStringLiteral("--db"), db,
                                       QStringLiteral("--password"), QStringLiteral("secret"),
                                       QStringLiteral("--number"), QStringLiteral("6"), QStringLiteral("--hours"),
                                       QStringLiteral("1"), QStringLiteral("--yes"), QStringLiteral("--prefs"),
                                       path("prefs"), QStringLiteral("--app-dir"), path("app")};
        QProcess first;
        QProcess second;
        for (QProcess* process : {&first, &second}) {
            process->start(QStringLiteral(MARLET_BINARY), arguments);
            process->closeWriteChannel();
        }
        for (QProcess* process : {&first, &second}) {
            QVERIFY(process->waitForFinished(120000));
            QCOMPARE(process->exitCode(), 0);
        }
        QSqlDatabase native = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("two"));
        native.setDatabaseName(db);
        QVERIFY(native.open());
        QSqlQuery groups(QStringLiteral("SELECT TicketGrp, Number, (SELECT count(*) FROM Account a WHERE "
                                        "a.TicketGrp = t.TicketGrp) FROM TicketInfo t"),
                         native);
        int found = 0;
        while (groups.next()) {
            ++found;
            QCOMPARE(groups.value(1).toInt(), 7);
            QCOMPARE(groups.value(2).toInt(), 6);
        }
        QCOMPARE(found, 2);
        QSqlQuery tickets(QStringLiteral("SELECT count(DISTINCT Username) FROM Account"), native);
        QVERIFY(tickets.next());
        QCOMPARE(tickets.value(0).toInt(), 12);
        native.close();
        native = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("two"));
    }

    void testBatchProgressStaysQuietWhenNotOnATerminal()
    {
        const Run run = marlet(QStringList {QStringLiteral("generate"),
                                   QStringLiteral("--password"),
                                   QStringLiteral("secret"),
                                   QStringLiteral("--number"),
                                   QStringLiteral("2"),
                                   QStringLiteral("--hours"),
                                   QStringLiteral("1"),
                                   QStringLiteral("--yes")}
            + common());
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(!run.out.contains(QStringLiteral("Generating tickets")), qPrintable(run.out));
    }

    void testBatchProgressShowsOnATerminal()
    {
        // script(1) gives the program a pseudo-terminal as its output.
        QStringList words = QStringList {QStringLiteral(MARLET_BINARY),
                                QStringLiteral("generate"),
                                QStringLiteral("--password"),
                                QStringLiteral("secret"),
                                QStringLiteral("--number"),
                                QStringLiteral("3"),
                                QStringLiteral("--hours"),
                                QStringLiteral("1"),
                                QStringLiteral("--yes")}
            + common();
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("DISPLAY"));
        process.setProcessEnvironment(environment);
        process.start(
            QStringLiteral("script"), {QStringLiteral("-qec"), words.join(u' '), QStringLiteral("/dev/null")});
        process.closeWriteChannel();
        QVERIFY(process.waitForFinished(60000));
        const QString out = QString::fromUtf8(process.readAllStandardOutput());
        QCOMPARE(process.exitCode(), 0);
        QVERIFY2(out.contains(QStringLiteral("\rGenerating tickets: 3 of 3")), qPrintable(out));
    }
};

QTEST_GUILESS_MAIN(TestCommandLineHost)
#include "TestCommandLineHost.moc"
