#include "store/SqlTokenizer.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace marlet {

class TestSqlTokenizer : public QObject
{
    Q_OBJECT

private:
    // "Type:text" for each token but the final End, e.g. "K:SELECT".
    static QStringList describe(const SqlTokenizeResult& result)
    {
        static const QHash<SqlTokenType, QString> letters {{SqlTokenType::Identifier, u"I"_s},
            {SqlTokenType::QuotedIdentifier, u"Q"_s},
            {SqlTokenType::Keyword, u"K"_s},
            {SqlTokenType::Number, u"N"_s},
            {SqlTokenType::String, u"S"_s},
            {SqlTokenType::Placeholder, u"P"_s},
            {SqlTokenType::Symbol, u"Y"_s},
            {SqlTokenType::End, u"E"_s}};
        QStringList out;
        for (const SqlToken& token : result.tokens)
            out.append(letters.value(token.type) + u":"_s + token.text);
        return out;
    }

private slots:
    void testTokens_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QStringList>("tokens");

        QTest::newRow("a select with a quoted value place") << u"Select * from Users where Username = '{}'"_s
                                                            << QStringList {u"K:SELECT"_s,
                                                                   u"Y:*"_s,
                                                                   u"K:FROM"_s,
                                                                   u"I:Users"_s,
                                                                   u"K:WHERE"_s,
                                                                   u"I:Username"_s,
                                                                   u"Y:="_s,
                                                                   u"S:{}"_s,
                                                                   u"E:"_s};
        QTest::newRow("keywords in any case come out upper case, names as written")
            << u"sElEcT TicketIniName FROM Options"_s
            << QStringList {u"K:SELECT"_s, u"I:TicketIniName"_s, u"K:FROM"_s, u"I:Options"_s, u"E:"_s};
        QTest::newRow("column names that are words elsewhere stay names")
            << u"Time Type Print Option User Number Reason Status State Size now"_s
            << QStringList {u"I:Time"_s,
                   u"I:Type"_s,
                   u"I:Print"_s,
                   u"I:Option"_s,
                   u"I:User"_s,
                   u"I:Number"_s,
                   u"I:Reason"_s,
                   u"I:Status"_s,
                   u"I:State"_s,
                   u"I:Size"_s,
                   u"I:now"_s,
                   u"E:"_s};
        QTest::newRow("bracketed and double-quoted names are never keywords")
            << u"[Select] \"from\" [Drive A]"_s << QStringList {u"Q:Select"_s, u"Q:from"_s, u"Q:Drive A"_s, u"E:"_s};
        QTest::newRow("a doubled quote inside a string stands for one quote")
            << u"'it''s' ''"_s << QStringList {u"S:it's"_s, u"S:"_s, u"E:"_s};
        QTest::newRow("a string keeps its places and wildcards")
            << u"like '%{}%'"_s << QStringList {u"K:LIKE"_s, u"S:%{}%"_s, u"E:"_s};
        QTest::newRow("numbers with and without a fraction")
            << u"60 5.7 0"_s << QStringList {u"N:60"_s, u"N:5.7"_s, u"N:0"_s, u"E:"_s};
        QTest::newRow("a number place outside quotes")
            << u"Time = {}"_s << QStringList {u"I:Time"_s, u"Y:="_s, u"P:{}"_s, u"E:"_s};
        QTest::newRow("two-character operators") << u"a<>b<=c>=d<e>f"_s
                                                 << QStringList {u"I:a"_s,
                                                        u"Y:<>"_s,
                                                        u"I:b"_s,
                                                        u"Y:<="_s,
                                                        u"I:c"_s,
                                                        u"Y:>="_s,
                                                        u"I:d"_s,
                                                        u"Y:<"_s,
                                                        u"I:e"_s,
                                                        u"Y:>"_s,
                                                        u"I:f"_s,
                                                        u"E:"_s};
        QTest::newRow("single-character operators") << u"+-*/,.;()&="_s
                                                    << QStringList {u"Y:+"_s,
                                                           u"Y:-"_s,
                                                           u"Y:*"_s,
                                                           u"Y:/"_s,
                                                           u"Y:,"_s,
                                                           u"Y:."_s,
                                                           u"Y:;"_s,
                                                           u"Y:("_s,
                                                           u"Y:)"_s,
                                                           u"Y:&"_s,
                                                           u"Y:="_s,
                                                           u"E:"_s};
        QTest::newRow("table star is a name, a dot and a star")
            << u"account.*"_s << QStringList {u"I:account"_s, u"Y:."_s, u"Y:*"_s, u"E:"_s};
        QTest::newRow("two minus signs are two operators, not a comment")
            << u"--x"_s << QStringList {u"Y:-"_s, u"Y:-"_s, u"I:x"_s, u"E:"_s};
        QTest::newRow("blanks of every kind separate tokens")
            << u" \tSelect\r\n*  "_s << QStringList {u"K:SELECT"_s, u"Y:*"_s, u"E:"_s};
        QTest::newRow("an empty text has only the end") << QString() << QStringList {u"E:"_s};
    }

    void testTokens()
    {
        QFETCH(QString, sql);
        QFETCH(QStringList, tokens);
        const SqlTokenizeResult result = tokenizeSql(sql);
        QVERIFY2(result.ok(), qPrintable(result.error));
        QCOMPARE(describe(result), tokens);
    }

    void testPositions()
    {
        const QString sql = u"Delete * from  [Cafe] where Cafename = {}"_s;
        const SqlTokenizeResult result = tokenizeSql(sql);
        QVERIFY(result.ok());
        QCOMPARE(result.tokens.size(), 9);
        QCOMPARE(result.tokens.at(3).position, 15);
        QCOMPARE(result.tokens.at(3).length, 6);
        QCOMPARE(sql.mid(result.tokens.at(7).position, result.tokens.at(7).length), u"{}"_s);
        QCOMPARE(result.tokens.last().position, sql.size());
    }

    void testKeywordRecognition()
    {
        QVERIFY(isSqlKeyword(u"where"));
        QVERIFY(isSqlKeyword(u"Values"));
        QVERIFY(!isSqlKeyword(u"Time"));
        QVERIFY(!isSqlKeyword(u"now"));
        const SqlTokenizeResult result = tokenizeSql(u"true TRUE"_s);
        QVERIFY(result.tokens.at(0).isKeyword(u"TRUE"));
        QVERIFY(result.tokens.at(1).isKeyword(u"TRUE"));
    }

    void testErrors_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QString>("error");
        QTest::addColumn<int>("position");

        QTest::newRow("an unterminated string") << u"select * from Account where Username = 'ABC"_s
                                                << u"Unterminated string starting at position 39."_s << 39;
        QTest::newRow("a quote closing a string early leaves the rest unterminated")
            << u"Username = 'O'Brien'"_s << u"Unterminated string starting at position 19."_s << 19;
        QTest::newRow("an unterminated bracketed name")
            << u"select [Account"_s << u"Invalid name starting at position 7."_s << 7;
        QTest::newRow("a bracketed name with a character names may not hold")
            << u"select [a?b]"_s << u"Invalid name starting at position 7."_s << 7;
        QTest::newRow("a double-quoted name holding a quote")
            << u"select \"a'b\""_s << u"Invalid name starting at position 7."_s << 7;
        QTest::newRow("an empty bracketed name") << u"[ ]"_s << u"Empty name at position 0."_s << 0;
        QTest::newRow("a brace that is not a place") << u"Time = {0}"_s << u"Unexpected '{' at position 7."_s << 7;
        QTest::newRow("a date literal the statements never use")
            << u"Expire = #2024-03-15#"_s << u"Unexpected character '#' at position 9."_s << 9;
        QTest::newRow("a C-style inequality") << u"a != b"_s << u"Unexpected character '!' at position 2."_s << 2;
        QTest::newRow("a number running into letters") << u"Time = 60x"_s << u"Malformed number '60x'."_s << 7;
        QTest::newRow("a control character") << u"a\u0001"_s << u"Unexpected character '\u0001' at position 1."_s << 1;
    }

    void testErrors()
    {
        QFETCH(QString, sql);
        QFETCH(QString, error);
        QFETCH(int, position);
        const SqlTokenizeResult result = tokenizeSql(sql);
        QVERIFY(!result.ok());
        QCOMPARE(result.error, error);
        QCOMPARE(result.errorPosition, position);
    }
};

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestSqlTokenizer)
#include "TestSqlTokenizer.moc"
