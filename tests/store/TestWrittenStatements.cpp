#include "store/Connection.h"
#include "store/DatabaseInit.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "store/ScratchDatabase.h"
#include "store/SqlTranslator.h"
#include "store/SqliteEngine.h"
#include "support/WrittenStatements.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace marlet {

// Every statement the screens run, as they write it: each is translated, its SQL checked, and run
// against an SQLite database holding all the tables, once as plain SQL through Qt and once through
// the store's Connection and Recordset.
class TestWrittenStatements : public QObject
{
    Q_OBJECT

private:
    struct Outcome
    {
        QString error;
        int rows = 0;
        qint64 affected = 0;
    };

    // The statements with sample values in the places, and what each becomes on SQLite.
    static void addWrittenStatements()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QVariantList>("values");
        QTest::addColumn<QString>("expected");
        for (const test::WrittenStatement& statement : test::writtenStatements())
            QTest::newRow(statement.name) << statement.pattern << statement.values << statement.sqlite;
    }

    static QDateTime fixedNow() { return QDateTime(QDate(2026, 11, 15), QTime(18, 35, 7)); }

    static TranslationResult translate(const Statement& statement, SqlDialect dialect)
    {
        TranslatorOptions options;
        options.clock = &TestWrittenStatements::fixedNow;
        return SqlTranslator(options).translate(statement, dialect);
    }

    static QString describe(const TranslationResult& result)
    {
        if (!result.ok())
            return u"error: "_s + result.error;
        if (result.kind != StatementKind::MultiTableDelete)
            return result.sql;
        QStringList lines;
        for (const KeyedDeleteStep& step : result.steps)
            lines << step.selectKeysSql << step.deleteByKeySql;
        return lines.join(u'\n');
    }

    // The PostgreSQL form of a statement taken back to the SQLite form: the schema's columns
    // back to `*`, the order by the hidden key left out, ILIKE, TRUE and FALSE as on SQLite. What
    // remains must be the SQLite form exactly.
    static QString sqliteShape(QString postgres)
    {
        for (const TableDef& table : Schema::standard().tables()) {
            QStringList plain;
            QStringList qualified;
            for (const ColumnDef& column : table.columns) {
                plain.append(SqlTranslator::quoteIdentifier(column.name));
                qualified.append(SqlTranslator::quoteIdentifier(table.name) + u"."_s + plain.last());
            }
            postgres.replace(u"SELECT "_s + plain.join(u", "_s) + u" FROM"_s, u"SELECT * FROM"_s);
            postgres.replace(qualified.join(u", "_s), SqlTranslator::quoteIdentifier(table.name) + u".*"_s);
        }
        static const QRegularExpression keyOrder(
            uR"((,| ORDER BY) "\w+"\."marlet_row"(, "\w+"\."marlet_row")*$)"_s, QRegularExpression::MultilineOption);
        static const QRegularExpression truth(u"\\bTRUE\\b"_s);
        static const QRegularExpression falsehood(u"\\bFALSE\\b"_s);
        return postgres.replace(keyOrder, QString())
            .replace(u" ILIKE ? ESCAPE ''"_s, u" LIKE ?"_s)
            .replace(u"\"marlet_row\" = ?"_s, u"rowid = ?"_s)
            .replace(u".\"marlet_row\""_s, u".rowid"_s)
            .replace(truth, u"-1"_s)
            .replace(falsehood, u"0"_s);
    }

    // Each sample value, as text, must come back inside a bound value, in the same order.
    static bool boundInOrder(const QVariantList& samples, const QVariantList& bound)
    {
        qsizetype at = 0;
        for (const QVariant& sample : samples) {
            while (at < bound.size() && !bound.at(at).toString().contains(sample.toString()))
                ++at;
            if (at++ >= bound.size())
                return false;
        }
        return true;
    }

    // Runs one SQL text with its values; the error text on failure.
    static QString execute(QSqlQuery& query, const QString& sql, const QVariantList& values)
    {
        if (!query.prepare(sql))
            return query.lastError().text();
        for (const QVariant& value : values)
            query.addBindValue(value);
        return query.exec() ? QString() : query.lastError().text();
    }

    // Runs a translation the way the connection does, the plan of a multi-table delete included.
    Outcome run(const TranslationResult& translation)
    {
        Outcome outcome;
        if (translation.kind == StatementKind::MultiTableDelete)
            return runPlan(translation);
        QSqlQuery query(m_db);
        outcome.error = execute(query, translation.sql, translation.values);
        if (!outcome.error.isEmpty())
            return outcome;
        while (query.next())
            ++outcome.rows;
        if (translation.kind != StatementKind::Select)
            outcome.affected = query.numRowsAffected();
        return outcome;
    }

    Outcome runPlan(const TranslationResult& translation)
    {
        Outcome outcome;
        QList<QVariantList> keys;
        for (const KeyedDeleteStep& step : translation.steps) {
            QSqlQuery query(m_db);
            outcome.error = execute(query, step.selectKeysSql, translation.values);
            if (!outcome.error.isEmpty())
                return outcome;
            keys.append(QVariantList());
            while (query.next())
                keys.last().append(query.value(0));
        }
        for (qsizetype i = 0; i < translation.steps.size(); ++i) {
            for (const QVariant& key : std::as_const(keys.at(i))) {
                QSqlQuery query(m_db);
                outcome.error = execute(query, translation.steps.at(i).deleteByKeySql, {key});
                if (!outcome.error.isEmpty())
                    return outcome;
                outcome.affected += query.numRowsAffected();
            }
        }
        return outcome;
    }

    int count(const QString& table)
    {
        QSqlQuery query(u"SELECT COUNT(*) FROM "_s + SqlTranslator::quoteIdentifier(table), m_db);
        return query.next() ? query.value(0).toInt() : -1;
    }

    bool exec(const QString& sql)
    {
        QSqlQuery query(m_db);
        const bool ok = query.exec(sql);
        if (!ok)
            qWarning() << sql << query.lastError().text();
        return ok;
    }

    // A few rows in every table that the statements read or change, in engine SQL.
    static QStringList seedRows()
    {
        return {
            uR"(INSERT INTO "users" ("username", "password", "type") VALUES ('ADMINISTRATOR', 'SECRET', 'ADMINISTRATOR'),
                ('CLERK', 'PW', 'USER'))"_s,
            uR"(INSERT INTO "options" ("ticketininame", "currency") VALUES ('NVT', 'N'))"_s,
            uR"(INSERT INTO "register" ("totgenerated", "totcost") VALUES (0, 0))"_s,
            uR"(INSERT INTO "ticketinfo" ("ticketgrp", "number", "time") VALUES ('261115183507', 2, 5))"_s,
            uR"(INSERT INTO "account" ("ticketgrp", "ticketno", "username", "password", "time", "member", "new",
                "datecreated", "lastused") VALUES
                ('261115183507', '001', 'NVT00001', 'PASS01', 300, 0, -1, '2026-11-15 00:00:00', '2026-11-15 00:00:00'),
                ('261115183507', '002', 'NVT00002', 'PASS02', 342, 0, 0, '2026-11-15 00:00:00', '2026-11-16 00:00:00'),
                ('MEMBER01', '000', 'MEMBER01', 'PASS03', 3600, -1, -1, '2026-11-15 00:00:00', '2026-11-15 00:00:00'),
                ('MEMBER02', '000', 'MEMBER02', 'PASS04', 3600, -1, -1, '2026-11-15 00:00:00', '2026-11-15 00:00:00'))"_s,
            uR"(INSERT INTO "members" ("member_id", "surname", "firstname", "email") VALUES
                ('MEMBER01', 'SMITH', 'JOHN', 'john@example.com'), ('MEMBER02', 'JONES', 'MARY', 'mary@example.com'))"_s,
            uR"(INSERT INTO "recyclebin" ("ticketgrp", "ticketno", "username", "member") VALUES
                ('261115183507', '009', 'NVT00009', 0))"_s,
            uR"(INSERT INTO "cafe" ("cafename", "systemname") VALUES (3, 'PC-OFFICE'))"_s,
            uR"(INSERT INTO "pos" ("username", "bywhom") VALUES ('NVT00001', 'CLERK'))"_s,
        };
    }

    // Empties every table and puts the sample rows in, through `run` (engine SQL -> success).
    template<typename Run>
    static bool reset(Run run)
    {
        for (const TableDef& table : Schema::standard().tables()) {
            if (!run(u"DELETE FROM "_s + SqlTranslator::quoteIdentifier(table.name)))
                return false;
        }
        const QStringList rows = seedRows();
        return std::all_of(rows.begin(), rows.end(), run);
    }

    // Through the store's own connection: a select opens as a result set, read-only and, over one
    // table, for update; anything else executes.
    static QString runThroughConnection(const Statement& statement, Connection& connection)
    {
        const TranslationResult translation = connection.translate(statement);
        if (translation.kind != StatementKind::Select)
            return connection.Execute(statement) ? QString() : connection.lastError();
        Recordset readOnly;
        if (!readOnly.Open(statement, connection, CursorType::Static, LockType::ReadOnly))
            return readOnly.lastError();
        Recordset forUpdate;
        const bool updatable = translation.keyedSql.isEmpty()
            || forUpdate.Open(statement, connection, CursorType::Static, LockType::Optimistic);
        return updatable ? QString() : forUpdate.lastError();
    }

    // The sample rows for PostgreSQL, whose booleans take no numbers.
    static QStringList postgresSeedRows()
    {
        static const QRegularExpression accountFlags(u"(\\d+), (-1|0), (-1|0), '2026"_s);
        QStringList rows = seedRows();
        for (QString& row : rows) {
            QRegularExpressionMatch match;
            while ((match = accountFlags.match(row)).hasMatch())
                row.replace(match.capturedStart(),
                    match.capturedLength(),
                    match.captured(1) + (match.captured(2) == u"0"_s ? u", FALSE"_s : u", TRUE"_s)
                        + (match.captured(3) == u"0"_s ? u", FALSE"_s : u", TRUE"_s) + u", '2026"_s);
            row.replace(u"'NVT00009', 0)"_s, u"'NVT00009', FALSE)"_s);
        }
        return rows;
    }

    QSqlDatabase m_db;
    QTemporaryDir m_folder;
    Connection m_connection;
    // The same on the PostgreSQL test server, when one is given.
    ScratchDatabase m_scratch;
    Connection m_postgres;

private slots:
    void initTestCase()
    {
        m_db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"written-statements"_s);
        m_db.setDatabaseName(u":memory:"_s);
        QVERIFY(m_db.open());
        // A misspelt column must fail, not turn into a string.
        auto* handle = *static_cast<sqlite3* const*>(m_db.driver()->handle().data());
        QCOMPARE(sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr), SQLITE_OK);
        QCOMPARE(sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr), SQLITE_OK);
        const QStringList tables = SqliteEngine(handle).schemaSql(Schema::standard());
        QVERIFY(std::all_of(tables.begin(), tables.end(), [this](const QString& sql) { return exec(sql); }));

        const QString connectionString = u"sqlite:"_s + m_folder.filePath(u"marlet.db"_s);
        const InitResult created = DatabaseInit {connectionString, u"SECRET"_s, false}.run();
        QVERIFY2(created.ok(), qPrintable(created.error));
        QVERIFY2(m_connection.Open(connectionString), qPrintable(m_connection.lastError()));
        m_connection.setClock(&TestWrittenStatements::fixedNow);
        if (!ScratchDatabase::server().isEmpty()) {
            const QString error = m_scratch.create(u"SECRET"_s);
            QVERIFY2(error.isEmpty(), qPrintable(error));
            QVERIFY2(m_postgres.Open(m_scratch.connectionString()), qPrintable(m_postgres.lastError()));
            m_postgres.setClock(&TestWrittenStatements::fixedNow);
        }
    }

    void init()
    {
        QVERIFY(reset([this](const QString& sql) { return exec(sql); }));
        QVERIFY2(reset([this](const QString& sql) { return m_connection.executeNative(sql); }),
            qPrintable(m_connection.lastError()));
    }

    void cleanupTestCase()
    {
        m_postgres.Close();
        m_connection.Close();
        m_db.close();
        m_db = QSqlDatabase();
        QSqlDatabase::removeDatabase(u"written-statements"_s);
    }

    void testTranslation_data() { addWrittenStatements(); }

    void testTranslation()
    {
        QFETCH(QString, pattern);
        QFETCH(QVariantList, values);
        QFETCH(QString, expected);
        const TranslationResult sqlite = translate(Statement(pattern, values), SqlDialect::Sqlite);
        QCOMPARE(describe(sqlite), expected);
        const TranslationResult postgres = translate(Statement(pattern, values), SqlDialect::Postgres);
        QCOMPARE(sqliteShape(describe(postgres)), expected);
        if (!sqlite.ok())
            return;
        QCOMPARE(expected.split(u'\n').first().count(u'?'), sqlite.values.size());
        QVERIFY(boundInOrder(values, sqlite.values));
    }

    void testRunsOnSqlite_data() { addWrittenStatements(); }

    void testRunsOnSqlite()
    {
        QFETCH(QString, pattern);
        QFETCH(QVariantList, values);
        QFETCH(QString, expected);
        const TranslationResult translation = translate(Statement(pattern, values), SqlDialect::Sqlite);
        // A refused statement never reaches the store.
        QCOMPARE(translation.ok(), !expected.startsWith(u"error: "_s));
        if (!translation.ok())
            return;
        const Outcome outcome = run(translation);
        QVERIFY2(outcome.error.isEmpty(), qPrintable(outcome.error));
        if (!translation.keyedSql.isEmpty()) {
            QSqlQuery keyed(m_db);
            const QString error = execute(keyed, translation.keyedSql, translation.values);
            QVERIFY2(error.isEmpty(), qPrintable(error));
        }
    }

    void testRunsThroughTheConnection_data() { addWrittenStatements(); }

    // Every statement once more on a live PostgreSQL server, prepared and run there.
    void testRunsOnPostgres_data() { addWrittenStatements(); }

    void testRunsOnPostgres()
    {
        QFETCH(QString, pattern);
        QFETCH(QVariantList, values);
        QFETCH(QString, expected);
        if (m_postgres.State() != 1)
            QSKIP("no PostgreSQL server given (MARLET_TEST_POSTGRES)");
        const QStringList rows = postgresSeedRows();
        for (const TableDef& table : Schema::standard().tables())
            QVERIFY2(m_postgres.executeNative(u"DELETE FROM "_s + SqlTranslator::quoteIdentifier(table.name)),
                qPrintable(m_postgres.lastError()));
        for (const QString& row : rows)
            QVERIFY2(m_postgres.executeNative(row), qPrintable(m_postgres.lastError()));
        const QString error = runThroughConnection(Statement(pattern, values), m_postgres);
        QCOMPARE(error, expected.startsWith(u"error: "_s) ? expected.mid(7) : QString());
    }

    void testRunsThroughTheConnection()
    {
        QFETCH(QString, pattern);
        QFETCH(QVariantList, values);
        QFETCH(QString, expected);
        const QString error = runThroughConnection(Statement(pattern, values), m_connection);
        QCOMPARE(error, expected.startsWith(u"error: "_s) ? expected.mid(7) : QString());
    }

    void testSelectionsFindTheirRows_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QVariantList>("values");
        QTest::addColumn<int>("rows");

        QTest::newRow("unused tickets") << u"select * from Account where NEW = TRUE and member=false"_s
                                        << QVariantList {} << 1;
        QTest::newRow("used tickets by last use")
            << u"Select * from Account where LastUsed <> DateCreated and member=false"_s << QVariantList {} << 1;
        QTest::newRow("tickets by time, the fraction kept")
            << u"Select * from Account where member=false and time = {}"_s << QVariantList {342.0} << 1;
        QTest::newRow("a group prefix in another case")
            << u"select * from Account where member=false and TicketGrp like '{}%'"_s << QVariantList {u"2611"_s} << 2;
        QTest::newRow("a name in lower case")
            << u"Select * from Account where Username = '{}'"_s << QVariantList {u"nvt00001"_s} << 1;
        QTest::newRow("members in a partial surname search")
            << u"select account.*,members.* from Account,Members where account.member=true and members.surname like "
               u"'%{}%' and account.ticketgrp=members.member_id Order by members.Surname,members.Firstname"_s
            << QVariantList {u"mit"_s} << 1;
        QTest::newRow("a cafe by number or name") << u"select * from Cafe where Cafename = {} or SystemName = '{}'"_s
                                                  << QVariantList {9, u"pc-office"_s} << 1;
        QTest::newRow("a value that looks like an argument marker finds nothing")
            << u"Select * from Users where Username = '{}'"_s << QVariantList {u"%1"_s} << 0;
    }

    void testSelectionsFindTheirRows()
    {
        QFETCH(QString, pattern);
        QFETCH(QVariantList, values);
        QFETCH(int, rows);
        const Outcome outcome = run(translate(Statement(pattern, values), SqlDialect::Sqlite));
        QVERIFY2(outcome.error.isEmpty(), qPrintable(outcome.error));
        QCOMPARE(outcome.rows, rows);
        Recordset recordset;
        QVERIFY2(recordset.Open(Statement(pattern, values), m_connection), qPrintable(recordset.lastError()));
        QCOMPARE(recordset.RecordCount(), rows);
    }

    void testMemberDeleteRemovesTicketAndRecord()
    {
        const Statement statement(u"Delete account.*,members.* from Account,Members where account.member=true and "
                                  u"account.username='{}' and account.ticketgrp=members.member_id"_s,
            {u"member01"_s});
        const Outcome outcome = run(translate(statement, SqlDialect::Sqlite));
        QVERIFY2(outcome.error.isEmpty(), qPrintable(outcome.error));
        QCOMPARE(outcome.affected, 2);
        QCOMPARE(count(u"Account"_s), 3);
        QCOMPARE(count(u"Members"_s), 1);
        QSqlQuery left(u"SELECT \"member_id\" FROM \"members\""_s, m_db);
        QVERIFY(left.next());
        QCOMPARE(left.value(0).toString(), u"MEMBER02"_s);

        long affected = 0;
        QVERIFY2(m_connection.Execute(statement, &affected), qPrintable(m_connection.lastError()));
        QCOMPARE(affected, 2);
    }

    void testMemberDeleteOfAnUnknownNameAffectsNothing()
    {
        const Statement statement(u"Delete account.*,members.* from Account,Members where account.member=true and "
                                  u"account.username='{}' and account.ticketgrp=members.member_id"_s,
            {u"NVT00001"_s});
        const Outcome outcome = run(translate(statement, SqlDialect::Sqlite));
        QVERIFY(outcome.error.isEmpty());
        QCOMPARE(outcome.affected, 0);
        QCOMPARE(count(u"Account"_s), 4);
        QCOMPARE(count(u"Members"_s), 2);
    }

    void testRefusedGroupListDeleteLeavesTheGroups()
    {
        const TranslationResult result
            = translate(u"DELETE account.* FROM member=false and TicketInfo"_s, SqlDialect::Sqlite);
        QVERIFY(!result.ok());
        QCOMPARE(count(u"TicketInfo"_s), 1);
    }

    void testInjectionAttempts_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QVariantList>("values");
        QTest::addColumn<QString>("error");

        const QString gate = u"Select * from Users where Username = '{}' and Password = '{}'"_s;
        QTest::newRow("an always-true condition in the password")
            << gate << QVariantList {u"ADMINISTRATOR"_s, u"' OR '1'='1"_s}
            << u"Syntax error in string in query expression '' OR '1'='1'."_s;
        QTest::newRow("a second statement in the name")
            << gate << QVariantList {u"x'; DROP TABLE Users; --"_s, u"PW"_s}
            << u"Syntax error in string in query expression 'x'; DROP TABLE Users; --'."_s;
        QTest::newRow("an argument marker") << gate << QVariantList {u"%1"_s, u"%2"_s} << QString();
        QTest::newRow("a place marker") << gate << QVariantList {u"{}"_s, u"{}"_s} << QString();
        QTest::newRow("a comment marker without a quote")
            << gate << QVariantList {u"ADMINISTRATOR --"_s, u"x"_s} << QString();
        QTest::newRow("an always-true condition in a number place")
            << u"Delete * from Cafe where Cafename = {}"_s << QVariantList {u"1 OR 1=1"_s}
            << u"Syntax error in number in query expression '1 OR 1=1'."_s;
        QTest::newRow("a second statement in a number place")
            << u"Delete * from Cafe where Cafename = {}"_s << QVariantList {u"3; DROP TABLE Users"_s}
            << u"Syntax error in number in query expression '3; DROP TABLE Users'."_s;
    }

    void testInjectionAttempts()
    {
        QFETCH(QString, pattern);
        QFETCH(QVariantList, values);
        QFETCH(QString, error);
        const TranslationResult result = translate(Statement(pattern, values), SqlDialect::Sqlite);
        QCOMPARE(result.error, error);
        if (result.ok()) {
            const Outcome outcome = run(result);
            QVERIFY2(outcome.error.isEmpty(), qPrintable(outcome.error));
            QCOMPARE(outcome.rows, 0);
            QCOMPARE(outcome.affected, 0);
        }
        QCOMPARE(count(u"Users"_s), 2);
        QCOMPARE(count(u"Cafe"_s), 1);
    }

    void testMisspeltColumnFails()
    {
        const Outcome outcome
            = run(translate(u"Select * from Account where Usename = 'NVT00001'"_s, SqlDialect::Sqlite));
        QVERIFY2(outcome.error.contains(u"no such column"_s), qPrintable(outcome.error));
    }
};

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestWrittenStatements)
#include "TestWrittenStatements.moc"
