#include "store/SqlTranslator.h"

#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(marlet::SqlDialect)
Q_DECLARE_METATYPE(marlet::StatementKind)

namespace marlet {

class TestSqlTranslator : public QObject
{
    Q_OBJECT

private:
    static QDateTime fixedNow() { return QDateTime(QDate(2024, 3, 15), QTime(18, 35, 7)); }

    static SqlTranslator translator()
    {
        TranslatorOptions options;
        options.clock = &TestSqlTranslator::fixedNow;
        return SqlTranslator(options);
    }

    // A translator whose clock counts its readings: the n-th reading is n seconds past midnight of
    // 1 January 2024.
    static SqlTranslator countingClockTranslator(int& calls)
    {
        TranslatorOptions options;
        options.clock = [&calls] {
            ++calls;
            return QDateTime(QDate(2024, 1, 1), QTime(0, 0, calls));
        };
        return SqlTranslator(options);
    }

    static TranslationResult translate(const Statement& statement, SqlDialect dialect = SqlDialect::Sqlite)
    {
        return translator().translate(statement, dialect);
    }

private slots:
    void testTranslation_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QVariantList>("values");
        QTest::addColumn<SqlDialect>("dialect");
        QTest::addColumn<StatementKind>("kind");
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QVariantList>("bound");

        const auto sqlite = SqlDialect::Sqlite;
        const auto postgres = SqlDialect::Postgres;

        QTest::newRow("every name is quoted in lower case")
            << u"Select TicketIniName, [Time], \"Print\" from Options"_s << QVariantList {} << sqlite
            << StatementKind::Select << u"SELECT \"ticketininame\", \"time\", \"print\" FROM \"options\""_s
            << QVariantList {};
        QTest::newRow("quoted places become one parameter each")
            << u"Select * from Users where Username = '{}' and Password = '{}'"_s << QVariantList {u"JOHN"_s, u"PW"_s}
            << sqlite << StatementKind::Select
            << u"SELECT * FROM \"users\" WHERE \"username\" = ? AND \"password\" = ?"_s
            << QVariantList {u"JOHN"_s, u"PW"_s};
        QTest::newRow("written literals are bound as well")
            << u"Select * from Users where Username = 'ADMINISTRATOR' and Password = '{}'"_s << QVariantList {u"X"_s}
            << sqlite << StatementKind::Select
            << u"SELECT * FROM \"users\" WHERE \"username\" = ? AND \"password\" = ?"_s
            << QVariantList {u"ADMINISTRATOR"_s, u"X"_s};
        QTest::newRow("a literal with text around its place is one parameter")
            << u"select * from Account where member=false and TicketGrp like '{}%'"_s << QVariantList {u"2411"_s}
            << sqlite << StatementKind::Select
            << u"SELECT * FROM \"account\" WHERE \"member\" = 0 AND \"ticketgrp\" LIKE ?"_s
            << QVariantList {u"2411%"_s};
        QTest::newRow("two places in one literal make one parameter")
            << u"select * from Account where Username like '%{}{}%'"_s << QVariantList {u"AB"_s, u"CD"_s} << sqlite
            << StatementKind::Select << u"SELECT * FROM \"account\" WHERE \"username\" LIKE ?"_s
            << QVariantList {u"%ABCD%"_s};
        QTest::newRow("like is ILIKE without an escape character on PostgreSQL")
            << u"select Username from Account where member=false and TicketGrp like '{}%'"_s << QVariantList {u"24"_s}
            << postgres << StatementKind::Select
            << u"SELECT \"username\" FROM \"account\" WHERE \"member\" = FALSE AND \"ticketgrp\" ILIKE ? ESCAPE '' "
               u"ORDER BY \"account\".\"marlet_row\""_s
            << QVariantList {u"24%"_s};
        QTest::newRow("star is the schema's columns on PostgreSQL, in the order rows were added")
            << u"select * from Cafe"_s << QVariantList {} << postgres << StatementKind::Select
            << u"SELECT \"cafename\", \"systemname\" FROM \"cafe\" ORDER BY \"cafe\".\"marlet_row\""_s
            << QVariantList {};
        QTest::newRow("table star on PostgreSQL, the written order first")
            << u"select Cafe.*, Capt.Caption from Cafe, Capt order by Caption"_s << QVariantList {} << postgres
            << StatementKind::Select
            << u"SELECT \"cafe\".\"cafename\", \"cafe\".\"systemname\", \"capt\".\"caption\" FROM \"cafe\", \"capt\" "
               u"ORDER BY \"caption\", \"cafe\".\"marlet_row\", \"capt\".\"marlet_row\""_s
            << QVariantList {};
        QTest::newRow("an aggregate is not ordered on PostgreSQL")
            << u"select count(*) from Capt"_s << QVariantList {} << postgres << StatementKind::Select
            << u"SELECT COUNT(*) FROM \"capt\""_s << QVariantList {};
        QTest::newRow("not like") << u"select * from Capt where Caption not like 'A%'"_s << QVariantList {} << sqlite
                                  << StatementKind::Select << u"SELECT * FROM \"capt\" WHERE \"caption\" NOT LIKE ?"_s
                                  << QVariantList {u"A%"_s};
        QTest::newRow("a number place is bound as an integer")
            << u"select * from Account where member=false and Time = {}"_s << QVariantList {300} << sqlite
            << StatementKind::Select << u"SELECT * FROM \"account\" WHERE \"member\" = 0 AND \"time\" = ?"_s
            << QVariantList {qint64(300)};
        QTest::newRow("a number place keeps a fraction")
            << u"select * from Account where time = {}"_s << QVariantList {342.5} << sqlite << StatementKind::Select
            << u"SELECT * FROM \"account\" WHERE \"time\" = ?"_s << QVariantList {342.5};
        QTest::newRow("a number place takes a plain decimal text")
            << u"select * from Account where time = {}"_s << QVariantList {u"-5.25"_s} << sqlite
            << StatementKind::Select << u"SELECT * FROM \"account\" WHERE \"time\" = ?"_s << QVariantList {-5.25};
        QTest::newRow("a number place takes a whole number text")
            << u"Delete * from Cafe where Cafename = {}"_s << QVariantList {u"12"_s} << sqlite << StatementKind::Delete
            << u"DELETE FROM \"cafe\" WHERE \"cafename\" = ?"_s << QVariantList {qint64(12)};
        QTest::newRow("a boolean in a number place is -1 or 0")
            << u"Select * from Account where NEW = {}"_s << QVariantList {true} << sqlite << StatementKind::Select
            << u"SELECT * FROM \"account\" WHERE \"new\" = ?"_s << QVariantList {qint64(-1)};
        QTest::newRow("boolean literals in any case are -1 and 0")
            << u"select * from Account where NEW = TRUE and member=false or Night = True"_s << QVariantList {} << sqlite
            << StatementKind::Select
            << u"SELECT * FROM \"account\" WHERE \"new\" = -1 AND \"member\" = 0 OR \"night\" = -1"_s
            << QVariantList {};
        QTest::newRow("unequal to true") << u"Delete * from Account where NEW <> TRUE and member=false"_s
                                         << QVariantList {} << postgres << StatementKind::Delete
                                         << u"DELETE FROM \"account\" WHERE \"new\" <> TRUE AND \"member\" = FALSE"_s
                                         << QVariantList {};
        QTest::newRow("two columns compared")
            << u"Select * from Account where LastUsed <> DateCreated and member=false"_s << QVariantList {} << sqlite
            << StatementKind::Select
            << u"SELECT * FROM \"account\" WHERE \"lastused\" <> \"datecreated\" AND \"member\" = 0"_s
            << QVariantList {};
        QTest::newRow("table stars, a join and an ordering")
            << u"select account.*,members.* from Account,Members where account.member=true and "
               u"account.ticketgrp=members.member_id Order by members.Surname,members.Firstname"_s
            << QVariantList {} << sqlite << StatementKind::Select
            << u"SELECT \"account\".*, \"members\".* FROM \"account\", \"members\" WHERE \"account\".\"member\" = -1 "
               u"AND \"account\".\"ticketgrp\" = \"members\".\"member_id\" ORDER BY \"members\".\"surname\", "
               u"\"members\".\"firstname\""_s
            << QVariantList {};
        QTest::newRow("an ordering with a direction")
            << u"Select * from Cafe Order by Cafename Asc"_s << QVariantList {} << sqlite << StatementKind::Select
            << u"SELECT * FROM \"cafe\" ORDER BY \"cafename\" ASC"_s << QVariantList {};
        QTest::newRow("a descending ordering of two columns")
            << u"Select * from Cafe Order by Cafename desc, SystemName"_s << QVariantList {} << sqlite
            << StatementKind::Select << u"SELECT * FROM \"cafe\" ORDER BY \"cafename\" DESC, \"systemname\""_s
            << QVariantList {};
        QTest::newRow("aggregates")
            << u"Select Count(*), sum(Time) as Total, Max(NoAdded), min(Days), avg(Quota) from Account"_s
            << QVariantList {} << sqlite << StatementKind::Select
            << u"SELECT COUNT(*), SUM(\"time\") AS \"total\", MAX(\"noadded\"), MIN(\"days\"), AVG(\"quota\") "
               u"FROM \"account\""_s
            << QVariantList {};
        QTest::newRow("arithmetic, parentheses and signs")
            << u"select * from Account where (Time - -60) / 60 > 2 * -(BackTime + 1) and not Days = 0"_s
            << QVariantList {} << sqlite << StatementKind::Select
            << u"SELECT * FROM \"account\" WHERE (\"time\" - -60) / 60 > 2 * -(\"backtime\" + 1) AND NOT \"days\" = 0"_s
            << QVariantList {};
        QTest::newRow("a minus before a negative literal keeps the two signs apart")
            << u"select * from Account where Time = - - 5"_s << QVariantList {} << sqlite << StatementKind::Select
            << u"SELECT * FROM \"account\" WHERE \"time\" = -(-5)"_s << QVariantList {};
        QTest::newRow("null tests")
            << u"select * from Account where Expire is null or TimeLastUsed is not Null"_s << QVariantList {} << sqlite
            << StatementKind::Select
            << u"SELECT * FROM \"account\" WHERE \"expire\" IS NULL OR \"timelastused\" IS NOT NULL"_s
            << QVariantList {};
        QTest::newRow("ampersand joins text, compound parts in parentheses")
            << u"select Username & '-' & Time + 1 from Account"_s << QVariantList {} << sqlite << StatementKind::Select
            << u"SELECT \"username\" || ? || (\"time\" + 1) FROM \"account\""_s << QVariantList {u"-"_s};
        QTest::newRow("a trailing semicolon is accepted")
            << u"Select * from QuickT;"_s << QVariantList {} << sqlite << StatementKind::Select
            << u"SELECT * FROM \"quickt\""_s << QVariantList {};
        QTest::newRow("delete star") << u"Delete * from Account where member=false and TicketGrp = '{}'"_s
                                     << QVariantList {u"G"_s} << sqlite << StatementKind::Delete
                                     << u"DELETE FROM \"account\" WHERE \"member\" = 0 AND \"ticketgrp\" = ?"_s
                                     << QVariantList {u"G"_s};
        QTest::newRow("delete with the table's star and qualified columns")
            << u"DELETE account.* FROM Account where member=false and account.TicketGrp like '{}%'"_s
            << QVariantList {u"24"_s} << sqlite << StatementKind::Delete
            << u"DELETE FROM \"account\" WHERE \"member\" = 0 AND \"account\".\"ticketgrp\" LIKE ?"_s
            << QVariantList {u"24%"_s};
        QTest::newRow("delete without a star")
            << u"DELETE FROM Account where member=false and account.username = '{}'"_s << QVariantList {u"A"_s}
            << sqlite << StatementKind::Delete
            << u"DELETE FROM \"account\" WHERE \"member\" = 0 AND \"account\".\"username\" = ?"_s
            << QVariantList {u"A"_s};
        QTest::newRow("delete of a whole table")
            << u"delete from Capt"_s << QVariantList {} << sqlite << StatementKind::Delete << u"DELETE FROM \"capt\""_s
            << QVariantList {};
        QTest::newRow("insert with two blanks before the values")
            << u"INSERT INTO Activated (TicketGrp,Times,Amount,Staff,Status,Activator,numbers) Values  "
               u"('{}',{},'{}','{}',false,'',{})"_s
            << QVariantList {u"241115183500"_s, 60, u"N200"_s, u"ADMIN"_s, 50} << sqlite << StatementKind::Insert
            << u"INSERT INTO \"activated\" (\"ticketgrp\", \"times\", \"amount\", \"staff\", \"status\", "
               u"\"activator\", \"numbers\") VALUES (?, ?, ?, ?, 0, ?, ?)"_s
            << QVariantList {u"241115183500"_s, qint64(60), u"N200"_s, u"ADMIN"_s, QString(u""_s), qint64(50)};
        QTest::newRow("insert with now as text on SQLite")
            << u"Insert into Rechargeinfo (ReChargeType,Rechargetime,Rechargeduser,timedate,member,Username) "
               u"Values ('MANUAL',{},'{}',now,'{}','{}')"_s
            << QVariantList {-30, u"ADMIN"_s, u"YES"_s, u"ABC"_s} << sqlite << StatementKind::Insert
            << u"INSERT INTO \"rechargeinfo\" (\"rechargetype\", \"rechargetime\", \"rechargeduser\", \"timedate\", "
               u"\"member\", \"username\") VALUES (?, ?, ?, ?, ?, ?)"_s
            << QVariantList {u"MANUAL"_s, qint64(-30), u"ADMIN"_s, u"2024-03-15 18:35:07"_s, u"YES"_s, u"ABC"_s};
        QTest::newRow("now as a timestamp on PostgreSQL")
            << u"insert into Rechargeinfo (timedate) Values (Now)"_s << QVariantList {} << postgres
            << StatementKind::Insert << u"INSERT INTO \"rechargeinfo\" (\"timedate\") VALUES (?)"_s
            << QVariantList {QVariant(fixedNow())};
        QTest::newRow("now with parentheses")
            << u"select * from Account where Expire < Now()"_s << QVariantList {} << sqlite << StatementKind::Select
            << u"SELECT * FROM \"account\" WHERE \"expire\" < ?"_s << QVariantList {u"2024-03-15 18:35:07"_s};
        QTest::newRow("a qualified column called now is a column")
            << u"select * from Account where account.now = 1"_s << QVariantList {} << sqlite << StatementKind::Select
            << u"SELECT * FROM \"account\" WHERE \"account\".\"now\" = 1"_s << QVariantList {};
        QTest::newRow("insert without a column list")
            << u"Insert INTO Capt values ('{}')"_s << QVariantList {u"SOLITAIRE"_s} << sqlite << StatementKind::Insert
            << u"INSERT INTO \"capt\" VALUES (?)"_s << QVariantList {u"SOLITAIRE"_s};
        QTest::newRow("insert of the rows of a select")
            << u"INSERT INTO Capt (Caption) SELECT Username FROM Account where member=false"_s << QVariantList {}
            << sqlite << StatementKind::Insert
            << u"INSERT INTO \"capt\" (\"caption\") SELECT \"username\" FROM \"account\" WHERE \"member\" = 0"_s
            << QVariantList {};
        QTest::newRow("insert copying the rows of its own table")
            << u"INSERT INTO Capt SELECT Caption & '{}' FROM Capt"_s << QVariantList {u"X"_s} << sqlite
            << StatementKind::Insert << u"INSERT INTO \"capt\" SELECT \"caption\" || ? FROM \"capt\""_s
            << QVariantList {u"X"_s};
        QTest::newRow("update adding to running totals")
            << u"UPDATE Register SET TotGenerated = TotGenerated + {}, TotCost = TotCost + {}"_s
            << QVariantList {50, 2500.5} << sqlite << StatementKind::Update
            << u"UPDATE \"register\" SET \"totgenerated\" = \"totgenerated\" + ?, \"totcost\" = \"totcost\" + ?"_s
            << QVariantList {qint64(50), 2500.5};
        QTest::newRow("update with a condition and a qualified column")
            << u"Update Account set Account.Time = 0, AccountAdded = 'NONE' where Username = '{}'"_s
            << QVariantList {u"A"_s} << postgres << StatementKind::Update
            << u"UPDATE \"account\" SET \"account\".\"time\" = 0, \"accountadded\" = ? WHERE \"username\" = ?"_s
            << QVariantList {u"NONE"_s, u"A"_s};
    }

    void testTranslation()
    {
        QFETCH(QString, pattern);
        QFETCH(QVariantList, values);
        QFETCH(SqlDialect, dialect);
        QFETCH(StatementKind, kind);
        QFETCH(QString, sql);
        QFETCH(QVariantList, bound);
        const TranslationResult result = translate(Statement(pattern, values), dialect);
        QVERIFY2(result.ok(), qPrintable(result.error));
        QCOMPARE(result.kind, kind);
        QCOMPARE(result.sql, sql);
        QCOMPARE(result.values, bound);
    }

    void testKeyedSelect()
    {
        const TranslationResult sqlite
            = translate(Statement(u"select * from Account where Username = '{}'"_s, {u"A"_s}));
        QCOMPARE(sqlite.keyedSql, u"SELECT \"account\".rowid, * FROM \"account\" WHERE \"username\" = ?"_s);
        QCOMPARE(sqlite.tables, QStringList {u"account"_s});
        const TranslationResult postgres = translate(u"Select TicketIniName from Options"_s, SqlDialect::Postgres);
        QCOMPARE(postgres.keyedSql,
            u"SELECT \"options\".\"marlet_row\", \"ticketininame\" FROM \"options\" ORDER BY \"options\".\"marlet_row\""_s);
        const TranslationResult join = translate(u"select account.*,members.* from Account,Members"_s);
        QVERIFY(join.ok());
        QVERIFY(join.keyedSql.isEmpty());
        QCOMPARE(join.tables, (QStringList {u"account"_s, u"members"_s}));
    }

    void testMultiTableDeletePlan_data()
    {
        QTest::addColumn<SqlDialect>("dialect");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("deleteAccount");
        QTest::addColumn<QString>("truth");

        QTest::newRow("SQLite goes by rowid")
            << SqlDialect::Sqlite << u"rowid"_s << u"DELETE FROM \"account\" WHERE rowid = ?"_s << u"-1"_s;
        QTest::newRow("PostgreSQL goes by the hidden key")
            << SqlDialect::Postgres << u"\"marlet_row\""_s << u"DELETE FROM \"account\" WHERE \"marlet_row\" = ?"_s
            << u"TRUE"_s;
    }

    void testMultiTableDeletePlan()
    {
        QFETCH(SqlDialect, dialect);
        QFETCH(QString, key);
        QFETCH(QString, deleteAccount);
        QFETCH(QString, truth);
        const Statement statement(u"Delete account.*,members.* from Account,Members where account.member=true and "
                                  u"account.username='{}' and account.ticketgrp=members.member_id"_s,
            {u"M1"_s});
        const TranslationResult result = translate(statement, dialect);
        QVERIFY2(result.ok(), qPrintable(result.error));
        QCOMPARE(result.kind, StatementKind::MultiTableDelete);
        QVERIFY(result.sql.isEmpty());
        QCOMPARE(result.values, QVariantList {u"M1"_s});
        QCOMPARE(result.steps.size(), 2);
        const QString where = u" FROM \"account\", \"members\" WHERE \"account\".\"member\" = "_s + truth
            + u" AND \"account\".\"username\" = ? AND \"account\".\"ticketgrp\" = \"members\".\"member_id\""_s;
        QCOMPARE(result.steps.at(0).table, u"account"_s);
        QCOMPARE(result.steps.at(0).selectKeysSql, u"SELECT DISTINCT \"account\"."_s + key + where);
        QCOMPARE(result.steps.at(0).deleteByKeySql, deleteAccount);
        QCOMPARE(result.steps.at(1).table, u"members"_s);
        QCOMPARE(result.steps.at(1).selectKeysSql, u"SELECT DISTINCT \"members\"."_s + key + where);
    }

    void testMultiTableDeleteOfOneTableAndRepeatedTargets()
    {
        const TranslationResult one
            = translate(u"DELETE members.* FROM Account, Members where member_id = ticketgrp"_s);
        QCOMPARE(one.kind, StatementKind::MultiTableDelete);
        QCOMPARE(one.steps.size(), 1);
        QCOMPARE(one.steps.at(0).table, u"members"_s);
        const TranslationResult twice = translate(u"DELETE Account.*, account.* FROM Account, Members"_s);
        QCOMPARE(twice.steps.size(), 1);
    }

    void testRefusals_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QVariantList>("values");
        QTest::addColumn<QString>("error");
        QTest::addColumn<int>("position");

        QTest::newRow("a condition where the tables belong")
            << u"DELETE account.* FROM member=false and TicketInfo"_s << QVariantList {}
            << u"Syntax error in FROM clause at '='."_s << 28;
        QTest::newRow("a table name followed by something that starts no clause")
            << u"select * from Account Members"_s << QVariantList {} << u"Syntax error in FROM clause at 'Members'."_s
            << 22;
        QTest::newRow("a delete target not among the tables")
            << u"DELETE members.* FROM Account where member=false"_s << QVariantList {}
            << u"Cannot delete from 'members': it is not in the FROM clause."_s << 7;
        QTest::newRow("a delete from several tables without targets")
            << u"Delete * from Account, Members"_s << QVariantList {}
            << u"Name the tables to delete from (table.*) when FROM lists several tables."_s << 30;
        QTest::newRow("a column of a table the statement does not name")
            << u"select * from Account where members.surname = 'X'"_s << QVariantList {}
            << u"The table 'members' is not part of the statement."_s << 28;
        QTest::newRow("a select list column of a table not in FROM")
            << u"select members.* from Account"_s << QVariantList {}
            << u"The table 'members' is not part of the statement."_s << 7;
        QTest::newRow("a table named twice")
            << u"select * from Account, account"_s << QVariantList {} << u"The table 'account' is named twice."_s << 23;
        QTest::newRow("a value holding a quote")
            << u"Select * from Users where Username = '{}'"_s << QVariantList {u"O'BRIEN"_s}
            << u"Syntax error in string in query expression 'O'BRIEN'."_s << 37;
        QTest::newRow("a quote in a value with text around it")
            << u"select * from Account where Username like '%{}%'"_s << QVariantList {u"' OR '1'='1"_s}
            << u"Syntax error in string in query expression '%' OR '1'='1%'."_s << 42;
        QTest::newRow("a number place given words")
            << u"select * from Account where Time = {}"_s << QVariantList {u"1 OR 1=1"_s}
            << u"Syntax error in number in query expression '1 OR 1=1'."_s << 35;
        QTest::newRow("a number place given an empty text")
            << u"select * from Account where Time = {}"_s << QVariantList {u""_s}
            << u"Syntax error in number in query expression ''."_s << 35;
        QTest::newRow("a number place given Null")
            << u"select * from Account where Time = {}"_s << QVariantList {QVariant()}
            << u"Syntax error in number in query expression ''."_s << 35;
        QTest::newRow("a number place given an exponent")
            << u"select * from Account where Time = {}"_s << QVariantList {u"1e5"_s}
            << u"Syntax error in number in query expression '1e5'."_s << 35;
        QTest::newRow("a number place given infinity")
            << u"select * from Account where Time = {}"_s << QVariantList {qInf()}
            << u"Syntax error in number in query expression 'inf'."_s << 35;
        QTest::newRow("fewer values than places")
            << u"Select * from Users where Username = '{}' and Password = '{}'"_s << QVariantList {u"A"_s}
            << u"No value given for the place at position 57."_s << 57;
        QTest::newRow("more values than places")
            << u"Select * from Users"_s << QVariantList {u"A"_s}
            << u"The statement has 0 places for values but 1 values were given."_s << -1;
        QTest::newRow("a number place where a table belongs")
            << u"select * from {}"_s << QVariantList {1} << u"Syntax error: expected a table name at '{}'."_s << 14;
        QTest::newRow("a second statement after the first")
            << u"Select * from Users; DROP TABLE Users"_s << QVariantList {}
            << u"Characters found after the end of the statement: 'DROP'."_s << 21;
        QTest::newRow("an unknown statement") << u"DROP TABLE Users"_s << QVariantList {}
                                              << u"Invalid statement: expected DELETE, INSERT, SELECT or UPDATE at "
                                                 u"'DROP'."_s
                                              << 0;
        QTest::newRow("an empty statement") << QString() << QVariantList {}
                                            << u"Invalid statement: expected DELETE, INSERT, SELECT or UPDATE at "
                                               u"the end."_s
                                            << 0;
        QTest::newRow("an unknown function") << u"select Format(Time) from Account"_s << QVariantList {}
                                             << u"Undefined function 'Format' in expression."_s << 7;
        QTest::newRow("an insert with more values than columns")
            << u"Insert INTO Capt (Caption) values ('A','B')"_s << QVariantList {}
            << u"The INSERT names 1 columns but gives 2 values."_s << 34;
        QTest::newRow("an unfinished condition") << u"select * from Account where member="_s << QVariantList {}
                                                 << u"Syntax error in expression at the end."_s << 35;
        QTest::newRow("an unclosed parenthesis") << u"select * from Account where (member=false"_s << QVariantList {}
                                                 << u"Syntax error in expression: expected ')' at the end."_s << 41;
        QTest::newRow("a missing FROM") << u"select * Account"_s << QVariantList {}
                                        << u"Syntax error in SELECT: expected FROM at 'Account'."_s << 9;
        QTest::newRow("a tokenizer error comes through")
            << u"select * from Account where Username = 'A"_s << QVariantList {}
            << u"Unterminated string starting at position 39."_s << 39;
        QTest::newRow("a keyword as a table name") << u"select * from where"_s << QVariantList {}
                                                   << u"Syntax error: expected a table name at 'where'."_s << 14;
        QTest::newRow("comparisons in a chain") << u"select * from Account where a = b = c"_s << QVariantList {}
                                                << u"Characters found after the end of the statement: '='."_s << 34;
    }

    void testRefusals()
    {
        QFETCH(QString, pattern);
        QFETCH(QVariantList, values);
        QFETCH(QString, error);
        QFETCH(int, position);
        const TranslationResult result = translate(Statement(pattern, values));
        QVERIFY(!result.ok());
        QCOMPARE(result.error, error);
        QCOMPARE(result.errorPosition, position);
        QVERIFY(result.sql.isEmpty());
        QVERIFY(result.steps.isEmpty());
    }

    void testKnownTables()
    {
        TranslatorOptions options;
        options.knownTables = QStringList {u"Account"_s, u"TicketInfo"_s};
        const SqlTranslator withCatalogue(options);
        QVERIFY(withCatalogue.translate(u"select * from ACCOUNT"_s, SqlDialect::Sqlite).ok());
        const TranslationResult unknown = withCatalogue.translate(u"select * from Acount"_s, SqlDialect::Sqlite);
        QCOMPARE(unknown.error, u"The table 'Acount' does not exist."_s);
        const TranslationResult refused
            = withCatalogue.translate(u"DELETE account.* FROM member=false and TicketInfo"_s, SqlDialect::Sqlite);
        QCOMPARE(refused.error, u"The table 'member' does not exist."_s);
    }

    void testValuesAreNeverPartOfTheText_data()
    {
        QTest::addColumn<QString>("value");
        QTest::newRow("an argument marker") << u"%1"_s;
        QTest::newRow("a place marker") << u"{}"_s;
        QTest::newRow("a statement end and a comment") << u"x; DROP TABLE Users --"_s;
        QTest::newRow("a double quote and a backslash") << u"a\"b\\c"_s;
    }

    void testValuesAreNeverPartOfTheText()
    {
        QFETCH(QString, value);
        const TranslationResult result
            = translate(Statement(u"Select * from Users where Username = '{}' and Password = '{}'"_s, {value, u"P"_s}));
        QVERIFY2(result.ok(), qPrintable(result.error));
        QCOMPARE(result.sql, u"SELECT * FROM \"users\" WHERE \"username\" = ? AND \"password\" = ?"_s);
        QCOMPARE(result.values, (QVariantList {value, u"P"_s}));
    }

    void testNowIsReadOncePerStatement()
    {
        int calls = 0;
        const TranslationResult result = countingClockTranslator(calls).translate(
            u"select * from Account where Expire < now and LastUsed < Now()"_s, SqlDialect::Sqlite);
        QCOMPARE(calls, 1);
        QCOMPARE(result.values, (QVariantList {u"2024-01-01 00:00:01"_s, u"2024-01-01 00:00:01"_s}));
        QVERIFY(!SqlTranslator()
                     .translate(u"select * from Account where Expire < now"_s, SqlDialect::Sqlite)
                     .values.first()
                     .toString()
                     .isEmpty());
    }

    void testOnePlanServesEveryRunOfAPattern()
    {
        int calls = 0;
        const SqlTranslator translator = countingClockTranslator(calls);
        const auto plan = translator.plan(
            u"select * from Account where Username = '{}%' and Time = {} and LastUsed < now"_s, SqlDialect::Sqlite);
        QCOMPARE(calls, 0);
        const TranslationResult first = translator.apply(*plan, {u"AB"_s, 60});
        const TranslationResult second = translator.apply(*plan, {u"CD"_s, 90.5});
        QVERIFY2(first.ok() && second.ok(), qPrintable(first.error + second.error));
        QCOMPARE(first.sql, second.sql);
        QCOMPARE(first.values, (QVariantList {u"AB%"_s, qint64(60), u"2024-01-01 00:00:01"_s}));
        QCOMPARE(second.values, (QVariantList {u"CD%"_s, 90.5, u"2024-01-01 00:00:02"_s}));
        // Each run's values are checked for that run: a quote, a word for a number, a value missing.
        QCOMPARE(
            translator.apply(*plan, {u"O'N"_s, 60}).error, u"Syntax error in string in query expression 'O'N%'."_s);
        QCOMPARE(
            translator.apply(*plan, {u"AB"_s, u"six"_s}).error, u"Syntax error in number in query expression 'six'."_s);
        QVERIFY(!translator.apply(*plan, {u"AB"_s}).ok());
        QCOMPARE(translator.apply(*plan, {u"EF"_s, 1}).values.at(0), QVariant(u"EF%"_s));
        // A pattern the grammar refuses gives its error on every run, after the values' own errors.
        const auto broken = translator.plan(u"select * from Account where Time = {} and"_s, SqlDialect::Sqlite);
        QVERIFY(!translator.apply(*broken, {1}).ok());
        QCOMPARE(translator.apply(*broken, {1}).error,
            translate(Statement(u"select * from Account where Time = {} and"_s, {1})).error);
        QCOMPARE(translator.apply(*broken, {u"x"_s}).error, u"Syntax error in number in query expression 'x'."_s);
    }

    void testDeepNestingIsRefused()
    {
        const QString deep = u"select * from Account where "_s + QString(5000, u'(') + u"1"_s + QString(5000, u')');
        QCOMPARE(translate(deep).error, u"The expression is nested too deeply."_s);
        const QString signs = u"select * from Account where Time = "_s + QString(5000, u'-') + u"1"_s;
        QCOMPARE(translate(signs).error, u"The expression is nested too deeply."_s);
        const QString nots = u"select * from Account where "_s + QString(u"not "_s).repeated(5000) + u"NEW"_s;
        QCOMPARE(translate(nots).error, u"The expression is nested too deeply."_s);
        const QString shallow = u"select * from Account where "_s + QString(20, u'(') + u"1"_s + QString(20, u')');
        QVERIFY(translate(shallow).ok());
    }

    void testQuoteIdentifier()
    {
        QCOMPARE(SqlTranslator::quoteIdentifier(u"Identication_no"), u"\"identication_no\""_s);
        QCOMPARE(SqlTranslator::quoteIdentifier(u"a\"b"), u"\"a\"\"b\""_s);
    }

    void testDateTimeValue()
    {
        const QDateTime when(QDate(2024, 2, 29), QTime(13, 45, 30, 123));
        QCOMPARE(SqlTranslator::dateTimeValue(when, SqlDialect::Sqlite), QVariant(u"2024-02-29 13:45:30"_s));
        QCOMPARE(SqlTranslator::dateTimeValue(when, SqlDialect::Postgres), QVariant(when));
    }
};

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestSqlTranslator)
#include "TestSqlTranslator.moc"
