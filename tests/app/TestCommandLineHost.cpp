#include "support/SerialLinePair.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
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

    // Another database beside the shared one, with the same ADMINISTRATOR password.
    static bool initDatabase(const QString& db)
    {
        return marlet({QStringLiteral("init"),
                          QStringLiteral("--db"),
                          db,
                          QStringLiteral("--admin-password"),
                          QStringLiteral("secret")})
                   .exitCode
            == 0;
    }
    bool m_receiptTicketsMade = false;

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

    // Runs SQL on a database of the test folder, each statement with its bound values.
    void execute(const char* database, const QList<std::pair<QString, QVariantList>>& statements) const
    {
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("writer"));
            db.setDatabaseName(path(database));
            QVERIFY(db.open());
            for (const auto& [sql, values] : statements) {
                QSqlQuery query(db);
                QVERIFY2(query.prepare(sql), qPrintable(query.lastError().text()));
                for (const QVariant& value : values)
                    query.addBindValue(value);
                QVERIFY2(query.exec(), qPrintable(query.lastError().text() + u' ' + sql));
            }
        }
        QSqlDatabase::removeDatabase(QStringLiteral("writer"));
    }

    // A ticket row as the screens write it, with the fields an export shows.
    static std::pair<QString, QVariantList> ticket(const QString& group,
        const QString& number,
        const QString& username,
        const QString& password,
        const QVariant& isNew = -1,
        const QVariant& lastUsed = QStringLiteral("2026-11-20 00:00:00"))
    {
        return {QStringLiteral("INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, Days, Amount, "
                               "NEW, Expire, DateCreated, LastUsed, ByWhom) VALUES (?,?,?,?,?,?,?,?,?,?,?,?)"),
            {group,
                number,
                username,
                password,
                5400,
                0,
                QStringLiteral("N50"),
                isNew,
                QStringLiteral("2099-12-31 00:00:00"),
                QStringLiteral("2026-11-20 00:00:00"),
                lastUsed,
                QStringLiteral("ADMINISTRATOR")}};
    }

    // The rows of a CSV file as Python's csv module reads them.
    static QList<QStringList> parsedCsv(const QString& file)
    {
        QProcess python;
        python.start(QStringLiteral("python3"),
            {QStringLiteral("-c"),
                QStringLiteral("import csv, json, sys\n"
                               "with open(sys.argv[1], newline='', encoding='utf-8') as f:\n"
                               "    print(json.dumps(list(csv.reader(f, strict=True))))"),
                file});
        if (!python.waitForFinished(30000) || python.exitCode() != 0)
            return {{QStringLiteral("python3 failed"), QString::fromUtf8(python.readAllStandardError())}};
        QList<QStringList> rows;
        for (const QJsonValue& row : QJsonDocument::fromJson(python.readAllStandardOutput()).array())
            rows.append(row.toVariant().toStringList());
        return rows;
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
        QTest::newRow("another kind of database")
            << QStringLiteral("mysql://cafe:secret@db/cafe")
            << QStringLiteral("The connection string names a kind of database that Marlet does not support (mysql).");
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
        QVERIFY(initDatabase(db));
        {
            QSqlDatabase native = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("full"));
            native.setDatabaseName(db);
            QVERIFY(native.open());
            QSqlQuery trigger(native);
            QVERIFY(trigger.exec(
                QStringLiteral("CREATE TRIGGER full BEFORE INSERT ON Account WHEN (SELECT count(*) FROM Account) >= 2 "
                               "BEGIN SELECT RAISE(ABORT, 'database or disk is full'); END")));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("full"));
        const Run run = marlet({QStringLiteral("generate"),
            QStringLiteral("--db"),
            db,
            QStringLiteral("--password"),
            QStringLiteral("secret"),
            QStringLiteral("--number"),
            QStringLiteral("4"),
            QStringLiteral("--hours"),
            QStringLiteral("1"),
            QStringLiteral("--yes"),
            QStringLiteral("--prefs"),
            path("prefs"),
            QStringLiteral("--app-dir"),
            path("app")});
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
        QVERIFY(initDatabase(db));
        const QStringList arguments = {QStringLiteral("generate"),
            QStringLiteral("--db"),
            db,
            QStringLiteral("--password"),
            QStringLiteral("secret"),
            QStringLiteral("--number"),
            QStringLiteral("6"),
            QStringLiteral("--hours"),
            QStringLiteral("1"),
            QStringLiteral("--yes"),
            QStringLiteral("--prefs"),
            path("prefs"),
            QStringLiteral("--app-dir"),
            path("app")};
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

    void testExportedCsvSurvivesAParserWithCommasQuotesAndLineBreaks()
    {
        const QStringList names = {QStringLiteral("a,b"), QStringLiteral("say \"hi\""), QStringLiteral("two\nlines")};
        const QStringList passwords = {QStringLiteral("p\"q,r"), QStringLiteral("x\r\ny"), QStringLiteral(",\"")};
        QList<std::pair<QString, QVariantList>> rows;
        for (int i = 0; i < 3; ++i)
            rows.append(ticket(QStringLiteral("EXPORTGRP"), QStringLiteral("00%1").arg(i + 1), names[i], passwords[i]));
        execute("cafe.db", rows);
        const Run run = marlet(QStringList {QStringLiteral("export"),
                                   QStringLiteral("--group"),
                                   QStringLiteral("EXPORTGRP"),
                                   QStringLiteral("--output"),
                                   path("tickets.csv")}
            + common().mid(0, 2));
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, QStringLiteral("3 ticket(s) written to %1\n").arg(path("tickets.csv")));
        const QList<QStringList> parsed = parsedCsv(path("tickets.csv"));
        QCOMPARE(parsed.size(), 4);
        QCOMPARE(parsed[0],
            QStringList({QStringLiteral("username"),
                QStringLiteral("password"),
                QStringLiteral("minutes"),
                QStringLiteral("group"),
                QStringLiteral("expiry"),
                QStringLiteral("days"),
                QStringLiteral("cost"),
                QStringLiteral("state")}));
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(parsed[i + 1],
                QStringList({names[i],
                    passwords[i],
                    QStringLiteral("90"),
                    QStringLiteral("EXPORTGRP"),
                    QStringLiteral("2099-12-31"),
                    QStringLiteral("0"),
                    QStringLiteral("N50"),
                    QStringLiteral("unused")}));
        }
        QFile raw(path("tickets.csv"));
        QVERIFY(raw.open(QIODevice::ReadOnly));
        QVERIFY(raw.readAll().startsWith("username,password,minutes,group,expiry,days,cost,state\r\n\"a,b\","));
    }

    void testExportAsJsonToStandardOutput()
    {
        execute("cafe.db",
            {ticket(
                 QStringLiteral("JSONGRP"), QStringLiteral("001"), QStringLiteral("JSON\"ONE"), QStringLiteral("pw")),
                ticket(QStringLiteral("JSONGRP"),
                    QStringLiteral("002"),
                    QStringLiteral("JSONTWO"),
                    QStringLiteral("pw2"),
                    0)});
        const Run run = marlet(QStringList {QStringLiteral("export"),
                                   QStringLiteral("--group"),
                                   QStringLiteral("JSONGRP"),
                                   QStringLiteral("--format"),
                                   QStringLiteral("json")}
            + common().mid(0, 2));
        QCOMPARE(run.exitCode, 0);
        QJsonParseError error;
        const QJsonArray tickets = QJsonDocument::fromJson(run.out.toUtf8(), &error).array();
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(tickets.size(), 2);
        const QJsonObject first = tickets[0].toObject();
        QCOMPARE(first[QStringLiteral("username")].toString(), QStringLiteral("JSON\"ONE"));
        QCOMPARE(first[QStringLiteral("password")].toString(), QStringLiteral("pw"));
        QCOMPARE(first[QStringLiteral("minutes")].toInt(), 90);
        QCOMPARE(first[QStringLiteral("group")].toString(), QStringLiteral("JSONGRP"));
        QCOMPARE(first[QStringLiteral("cost")].toString(), QStringLiteral("N50"));
        QCOMPARE(first[QStringLiteral("state")].toString(), QStringLiteral("unused"));
        QCOMPARE(tickets[1].toObject()[QStringLiteral("state")].toString(), QStringLiteral("used"));
    }

    void testExportOfUnusedTicketsLeavesUsedOnesOut()
    {
        execute("cafe.db",
            {ticket(
                 QStringLiteral("UNUSEDGRP"), QStringLiteral("001"), QStringLiteral("FRESHONE"), QStringLiteral("pw")),
                ticket(QStringLiteral("UNUSEDGRP"),
                    QStringLiteral("002"),
                    QStringLiteral("SPENTONE"),
                    QStringLiteral("pw"),
                    0)});
        const Run run = marlet(QStringList {QStringLiteral("export"), QStringLiteral("--unused")} + common().mid(0, 2));
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.contains(QStringLiteral("\r\nFRESHONE,pw,90,UNUSEDGRP,")), qPrintable(run.out));
        QVERIFY2(!run.out.contains(QStringLiteral("SPENTONE")), qPrintable(run.out));
        const Run all = marlet(QStringList {QStringLiteral("export"), QStringLiteral("--all")} + common().mid(0, 2));
        QVERIFY2(all.out.contains(QStringLiteral("\r\nSPENTONE,pw,90,UNUSEDGRP,2099-12-31,0,N50,used\r\n")),
            qPrintable(all.out));
    }

    void testExportNeedsExactlyOneChoiceOfTickets()
    {
        const Run none = marlet(QStringList {QStringLiteral("export")} + common().mid(0, 2));
        QCOMPARE(none.exitCode, 2);
        QCOMPARE(none.err, QStringLiteral("marlet export: give one of --group G, --all or --unused\n"));
        const Run two
            = marlet(QStringList {QStringLiteral("export"), QStringLiteral("--all"), QStringLiteral("--unused")}
                + common().mid(0, 2));
        QCOMPARE(two.exitCode, 2);
        const Run format = marlet(
            QStringList {
                QStringLiteral("export"), QStringLiteral("--all"), QStringLiteral("--format"), QStringLiteral("xml")}
            + common().mid(0, 2));
        QCOMPARE(format.exitCode, 2);
    }

    void testExportOfAGroupHoldingAQuoteFailsAsTheStatementWould()
    {
        const Run run = marlet(QStringList {QStringLiteral("export"),
                                   QStringLiteral("--group"),
                                   QStringLiteral("x' or '1'='1"),
                                   QStringLiteral("--output"),
                                   path("quoted.csv")}
            + common().mid(0, 2));
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(
            run.err.startsWith(QStringLiteral("marlet export: the tickets cannot be read: ")), qPrintable(run.err));
        QVERIFY(!QFile::exists(path("quoted.csv")));
    }

    void testGenerateExportsTheBatchItMade()
    {
        const QStringList arguments = {QStringLiteral("generate"),
            QStringLiteral("--password"),
            QStringLiteral("secret"),
            QStringLiteral("--number"),
            QStringLiteral("4"),
            QStringLiteral("--hours"),
            QStringLiteral("1"),
            QStringLiteral("--cost"),
            QStringLiteral("200"),
            QStringLiteral("--yes"),
            QStringLiteral("--export"),
            path("batch.csv")};
        const Run run = marlet(arguments + common());
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.endsWith(QStringLiteral("Batch written to %1\n").arg(path("batch.csv"))), qPrintable(run.out));
        const QList<QStringList> parsed = parsedCsv(path("batch.csv"));
        QCOMPARE(parsed.size(), 5);
        const QString group = parsed[1][3];
        QCOMPARE(group.size(), 12);
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("batch"));
        db.setDatabaseName(path("cafe.db"));
        QVERIFY(db.open());
        {
            QSqlQuery stored(db);
            QVERIFY(stored.prepare(
                QStringLiteral("SELECT Username, Password FROM Account WHERE TicketGrp = ? ORDER BY TicketNo")));
            stored.addBindValue(group);
            QVERIFY(stored.exec());
            for (int row = 1; row <= 4; ++row) {
                QVERIFY(stored.next());
                QCOMPARE(parsed[row][0], stored.value(0).toString());
                QCOMPARE(parsed[row][1], stored.value(1).toString());
                QCOMPARE(parsed[row][2], QStringLiteral("60"));
                QCOMPARE(parsed[row][7], QStringLiteral("unused"));
            }
            QVERIFY(!stored.next());
        }
        db.close();
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("batch"));
    }

    // A café's week: two batches on the 20th by two staff members, one on the 22nd, a ticket of the
    // first batch deleted to the bin, two tickets used, one recharge.
    void makeSalesDatabase()
    {
        if (QFile::exists(path("sales.db")))
            return;
        QCOMPARE(marlet({QStringLiteral("init"),
                            QStringLiteral("--db"),
                            path("sales.db"),
                            QStringLiteral("--admin-password"),
                            QStringLiteral("secret")})
                     .exitCode,
            0);
        const auto group = [](const char* name, int number, double total, const char* by, const char* stamp) {
            return std::pair<QString, QVariantList> {
                QStringLiteral("INSERT INTO TicketInfo (TicketGrp, Number, Time, Amount, TotalCost, GeneratedBy, "
                               "TimeGenerated) VALUES (?,?,60,'100',?,?,?)"),
                {QLatin1String(name), number, total, QLatin1String(by), QLatin1String(stamp)}};
        };
        execute("sales.db",
            {group("261120100000", 3, 200, "ADMINISTRATOR", "Completed at 10:00, 20/11/26 [RANDOM]"),
                group("261120150000", 2, 150, "CLERK", "Completed at 15:00, 20/11/26 [RANDOM]"),
                group("261122090000", 2, 50, "CLERK", "Completed at 09:00, 22/11/26 [CUSTOM]"),
                ticket(
                    QStringLiteral("261120100000"), QStringLiteral("001"), QStringLiteral("A1"), QStringLiteral("p")),
                ticket(QStringLiteral("261120100000"),
                    QStringLiteral("002"),
                    QStringLiteral("A2"),
                    QStringLiteral("p"),
                    0,
                    QStringLiteral("2026-11-21 00:00:00")),
                ticket(QStringLiteral("261120150000"),
                    QStringLiteral("001"),
                    QStringLiteral("B1"),
                    QStringLiteral("p"),
                    0,
                    QStringLiteral("2026-11-22 00:00:00")),
                ticket(
                    QStringLiteral("261122090000"), QStringLiteral("001"), QStringLiteral("C1"), QStringLiteral("p")),
                {QStringLiteral("INSERT INTO RecycleBin (TicketGrp, TicketNo, Username, Password) "
                                "VALUES ('261120100000', '003', 'A3', 'p')"),
                    {}},
                {QStringLiteral(
                     "INSERT INTO Rechargeinfo (ReChargeType, Rechargetime, Rechargeduser, timedate, member, "
                     "Username) VALUES ('MANUAL', 30, 'CLERK', '2026-11-22 12:00:00', '0', 'A2')"),
                    {}},
                {QStringLiteral("UPDATE Register SET TotGenerated = 9, TotCost = 400"), {}}});
    }

    void testReportCountsMadeSoldRechargedAndMoneyPerDayAndStaff()
    {
        makeSalesDatabase();
        const Run run = marlet({QStringLiteral("report"),
            QStringLiteral("--db"),
            path("sales.db"),
            QStringLiteral("--format"),
            QStringLiteral("csv")});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out,
            QStringLiteral("kind,key,made,sold,recharges,money\r\n"
                           "day,2026-11-20,4,0,0,350.00\r\n"
                           "day,2026-11-21,0,1,0,0.00\r\n"
                           "day,2026-11-22,1,1,1,50.00\r\n"
                           "staff,ADMINISTRATOR,3,2,0,200.00\r\n"
                           "staff,CLERK,2,0,1,200.00\r\n"
                           "total,,5,2,1,400.00\r\n"));
        const QList<QStringList> parsed = [&] {
            QFile file(path("sales.csv"));
            if (file.open(QIODevice::WriteOnly))
                file.write(run.out.toUtf8());
            file.close();
            return parsedCsv(path("sales.csv"));
        }();
        QCOMPARE(parsed.size(), 7);
        QCOMPARE(parsed.last(),
            QStringList({QStringLiteral("total"),
                QString(),
                QStringLiteral("5"),
                QStringLiteral("2"),
                QStringLiteral("1"),
                QStringLiteral("400.00")}));
    }

    void testReportTableKeepsToTheDaysAsked()
    {
        makeSalesDatabase();
        const Run run = marlet({QStringLiteral("report"),
            QStringLiteral("--db"),
            path("sales.db"),
            QStringLiteral("--from"),
            QStringLiteral("2026-11-21"),
            QStringLiteral("--to"),
            QStringLiteral("2026-11-21")});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out,
            QStringLiteral("Sales from 2026-11-21 to 2026-11-21\n\n"
                           "Day         Made  Sold  Recharges  Money\n"
                           "2026-11-21     0     1          0   0.00\n"
                           "Total          0     1          0   0.00\n\n"
                           "Staff          Made  Sold  Recharges  Money\n"
                           "ADMINISTRATOR     0     1          0   0.00\n\n"
                           "Register, all time: 9 tickets, 400.00\n"));
        const Run wrong = marlet({QStringLiteral("report"),
            QStringLiteral("--db"),
            path("sales.db"),
            QStringLiteral("--to"),
            QStringLiteral("21/11/2026")});
        QCOMPARE(wrong.exitCode, 2);
        QCOMPARE(wrong.err,
            QStringLiteral("marlet report: --to takes a date as YYYY-MM-DD, e.g. 2026-11-24, not \"21/11/2026\"\n"));
    }

    void testReportDrawsAChartOfMoneyPerDay()
    {
        makeSalesDatabase();
        const Run run = marlet({QStringLiteral("report"),
            QStringLiteral("--db"),
            path("sales.db"),
            QStringLiteral("--chart"),
            path("sales.png")});
#ifndef MARLET_WITH_DESKTOP
        // Without the desktop part the program has no painter: it says so after the table.
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.out.startsWith(QStringLiteral("Sales from the start to today\n")), qPrintable(run.out));
        QCOMPARE(run.err,
            QStringLiteral("marlet report: this build has no pictures (built without the desktop); --chart is not "
                           "available\n"));
        return;
#endif
        QCOMPARE(run.exitCode, 0);
        QFile png(path("sales.png"));
        QVERIFY(png.open(QIODevice::ReadOnly));
        const QByteArray bytes = png.readAll();
        QVERIFY(bytes.startsWith("\x89PNG\r\n\x1a\n"));
        // The header's width and height: three days of bars fit the smallest picture.
        QCOMPARE(bytes.mid(16, 8), QByteArray::fromHex("000001e0000001a4"));
        QVERIFY(bytes.size() > 2000);
    }

    void testLoginTemplateIsSetShownAndClearedFromTheCommandLine()
    {
        const QStringList prefs = {QStringLiteral("--prefs"), path("template-prefs")};
        const Run unset = marlet(QStringList {QStringLiteral("login-template")} + prefs);
        QCOMPARE(unset.exitCode, 0);
        QCOMPARE(unset.out,
            QStringLiteral("No login template: ticket sheets carry \"{username} {password}\" in their QR codes, web "
                           "pages none\n"));
        const QString pattern = QStringLiteral("http://10.0.0.1/login?u={username}&p={password}");
        const Run set
            = marlet(QStringList {QStringLiteral("login-template"), QStringLiteral("--set"), pattern} + prefs);
        QCOMPARE(set.exitCode, 0);
        QCOMPARE(set.out, QStringLiteral("Login template: %1\n").arg(pattern));
        QFile file(path("template-prefs/preferences.ini"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString stored = QString::fromUtf8(file.readAll());
        QVERIFY2(stored.contains(QStringLiteral("LoginTemplate=") + pattern), qPrintable(stored));
        const Run shown = marlet(QStringList {QStringLiteral("login-template")} + prefs);
        QCOMPARE(shown.out, set.out);
        const Run fixed = marlet(
            QStringList {QStringLiteral("login-template"), QStringLiteral("--set"), QStringLiteral("http://10.0.0.1/")}
            + prefs);
        QCOMPARE(fixed.exitCode, 2);
        QVERIFY2(fixed.err.contains(QStringLiteral("nothing was changed")), qPrintable(fixed.err));
        QCOMPARE(marlet(QStringList {QStringLiteral("login-template")} + prefs).out, set.out);
        const Run cleared = marlet(QStringList {QStringLiteral("login-template"), QStringLiteral("--clear")} + prefs);
        QCOMPARE(cleared.exitCode, 0);
        QCOMPARE(cleared.out, unset.out);
    }

    // Two tickets of a group for the receipt tests: one with a fixed date and a quota.
    void makeReceiptTickets()
    {
        if (m_receiptTicketsMade)
            return;
        m_receiptTicketsMade = true;
        execute("cafe.db",
            {ticket(QStringLiteral("RCPTGRP"), QStringLiteral("001"), QStringLiteral("RCPT001"), QStringLiteral("pw1")),
                ticket(
                    QStringLiteral("RCPTGRP"), QStringLiteral("002"), QStringLiteral("RCPT002"), QStringLiteral("pw2")),
                {QStringLiteral("UPDATE Account SET Quota = 500 WHERE Username = 'RCPT002'"), {}}});
    }

    // The bytes a 58 mm printer gets for one ticket with the POS tab's defaults, spelled out.
    static QByteArray narrowReceipt(const QByteArray& user,
        const QByteArray& password,
        const QByteArray& quota,
        const QByteArray& number,
        bool largeUser)
    {
        const auto line = [](char centred, char bold, char size, const QByteArray& text) -> QByteArray {
            return QByteArray("\x1b"
                              "a")
                + centred
                + "\x1b"
                  "E"
                + bold + "\x1d!" + size + text + '\n';
        };
        QByteArray bytes = QByteArray("\x1b@\x1bt\x10", 5);
        bytes += line(1, 1, 0, "Norvantis");
        bytes += line(1, 0, 0, "Norvantis");
        bytes += line(0, 0, 0, QByteArray(32, '-'));
        bytes += line(0, 1, largeUser ? 0x11 : 0, "User: " + user);
        bytes += line(0, 1, 0, "Password: " + password);
        bytes += line(0, 0, 0, "Time: 1 hr(s) 30 min(s)      N50");
        bytes += line(0, 0, 0, "Expires 31-Dec-99");
        bytes += line(0, 0, 0, "Any Time");
        if (!quota.isEmpty())
            bytes += line(0, 0, 0, "Quota: " + quota);
        bytes += line(0, 0, 0, number);
        const QByteArray code = user + ' ' + password;
        bytes += QByteArray("\x1b"
                            "E\x00\x1d!\x00\x1b"
                            "a\x01",
            9);
        bytes += QByteArray("\x1d(k\x04\x00\x31\x41\x32\x00", 9); // model 2
        bytes += QByteArray("\x1d(k\x03\x00\x31\x43\x04", 8); // module of 4 dots
        bytes += QByteArray("\x1d(k\x03\x00\x31\x45\x31", 8); // level M
        bytes += QByteArray("\x1d(k", 3) + char(code.size() + 3) + QByteArray("\x00\x31\x50\x30", 4) + code;
        bytes += QByteArray("\x1d(k\x03\x00\x31\x51\x30", 8); // print it
        bytes += QByteArray("\n\x1b"
                            "a\x00\x1b"
                            "d\x04\x1dVB\x00",
            11);
        return bytes;
    }

    void testReceiptsReachTheSerialLineByteForByte()
    {
        makeReceiptTickets();
#ifndef MARLET_WITH_DESKTOP
        const Run refused
            = marlet(QStringList {QStringLiteral("receipt"), QStringLiteral("--group"), QStringLiteral("RCPTGRP")}
                + common().mid(0, 2));
        QCOMPARE(refused.exitCode, 1);
        QCOMPARE(
            refused.err, QStringLiteral("marlet receipt: this build has no printing (built without the desktop)\n"));
        return;
#endif
        marlet::test::SerialLinePair line;
        QVERIFY2(line.isValid(), "socat is needed (scripts/packages.txt)");
        const QString near = line.nearEnd();

        // The POS tab's port, COM3 here, is where receipts go without --port.
        QFile prefs(path("receipt-prefs/preferences.ini"));
        QVERIFY(QDir().mkpath(path("receipt-prefs")));
        QVERIFY(prefs.open(QIODevice::WriteOnly));
        prefs.write("[Norvantis/POS]\nCOM=COM3\n");
        prefs.close();
        const QStringList narrow = {QStringLiteral("receipt"),
            QStringLiteral("--db"),
            path("cafe.db"),
            QStringLiteral("--prefs"),
            path("receipt-prefs"),
            QStringLiteral("--group"),
            QStringLiteral("RCPTGRP"),
            QStringLiteral("--paper"),
            QStringLiteral("58")};
        const QByteArray expected = narrowReceipt("RCPT001", "pw1", {}, "RCPTGRP-001", false)
            + narrowReceipt("RCPT002", "pw2", "500 MB", "RCPTGRP-002", false);
        const Run sent = marlet(narrow, {}, {QStringLiteral("MARLET_PORT_COM3=") + near});
        QVERIFY2(!sent.err.contains(QStringLiteral("marlet receipt")), qPrintable(sent.err));
        QCOMPARE(sent.exitCode, 0);
        QCOMPARE(sent.out, QStringLiteral("2 receipt(s) sent to COM3\n"));
        QCOMPARE(line.read(expected.size()), expected);

        // "Show Username in LARGE" doubles the user line.
        QVERIFY(prefs.open(QIODevice::WriteOnly));
        prefs.write("[Norvantis/POS]\nCOM=COM3\nSUserL=1\n");
        prefs.close();
        const Run large = marlet(narrow + QStringList {QStringLiteral("--port"), near});
        QCOMPARE(large.exitCode, 0);
        const QByteArray largeExpected = narrowReceipt("RCPT001", "pw1", {}, "RCPTGRP-001", true)
            + narrowReceipt("RCPT002", "pw2", "500 MB", "RCPTGRP-002", true);
        QCOMPARE(line.read(largeExpected.size()), largeExpected);

        const Run nowhere = marlet(narrow + QStringList {QStringLiteral("--port"), path("no-such-port")});
        QCOMPARE(nowhere.exitCode, 1);
        QVERIFY2(nowhere.err.contains(QStringLiteral("marlet receipt: cannot open the receipt printer's port ")),
            qPrintable(nowhere.err));
    }

    void testReceiptPreviewIsAPdfOfReceiptWidth_data()
    {
        QTest::addColumn<QString>("paper");
        QTest::addColumn<QString>("points");
        QTest::newRow("58 mm") << QStringLiteral("58") << QStringLiteral("164");
        QTest::newRow("80 mm") << QStringLiteral("80") << QStringLiteral("227");
    }

    void testReceiptPreviewIsAPdfOfReceiptWidth()
    {
#ifndef MARLET_WITH_DESKTOP
        QSKIP("the preview is drawn by the desktop part");
#endif
        QFETCH(QString, paper);
        QFETCH(QString, points);
        makeReceiptTickets();
        const QString pdf = path("receipts.pdf");
        const Run run = marlet({QStringLiteral("receipt"),
            QStringLiteral("--db"),
            path("cafe.db"),
            QStringLiteral("--prefs"),
            path("pdf-prefs"),
            QStringLiteral("--group"),
            QStringLiteral("RCPTGRP"),
            QStringLiteral("--paper"),
            paper,
            QStringLiteral("--pdf"),
            pdf});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, QStringLiteral("2 receipt(s) written to %1\n").arg(pdf));
        QProcess text;
        text.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
        QVERIFY(text.waitForFinished(30000));
        const QString content = QString::fromUtf8(text.readAllStandardOutput());
        for (const char* expected : {"User: RCPT001",
                 "Password: pw1",
                 "User: RCPT002",
                 "Password: pw2",
                 "Quota: 500 MB",
                 "RCPTGRP-002",
                 "Expires 31-Dec-99"})
            QVERIFY2(content.contains(QLatin1String(expected)), qPrintable(content));
        QProcess info;
        info.start(QStringLiteral("pdfinfo"), {pdf});
        QVERIFY(info.waitForFinished(30000));
        const QString details = QString::fromUtf8(info.readAllStandardOutput());
        QVERIFY2(details.contains(QRegularExpression(QStringLiteral("Pages:\\s+2\n"))), qPrintable(details));
        // Each receipt's QR code, read back from the preview as a printer would rasterise it.
        QProcess raster;
        raster.start(QStringLiteral("pdftoppm"),
            {QStringLiteral("-r"), QStringLiteral("203"), QStringLiteral("-png"), pdf, path("receipt")});
        QVERIFY(raster.waitForFinished(30000));
        QStringList codes;
        for (const char* page : {"receipt-1.png", "receipt-2.png"}) {
            QProcess reader;
            reader.start(QStringLiteral("zbarimg"), {QStringLiteral("-q"), QStringLiteral("--raw"), path(page)});
            QVERIFY(reader.waitForFinished(30000));
            codes.append(QString::fromUtf8(reader.readAllStandardOutput()).trimmed());
        }
        QCOMPARE(codes, QStringList({QStringLiteral("RCPT001 pw1"), QStringLiteral("RCPT002 pw2")}));
        QVERIFY2(details.contains(
                     QRegularExpression(QStringLiteral("Page size:\\s+") + points + QStringLiteral("(\\.\\d+)? x "))),
            qPrintable(details));
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
