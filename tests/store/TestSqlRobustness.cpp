#include "store/SqlTokenizer.h"
#include "store/SqlTranslator.h"
#include "support/WrittenStatements.h"

#include <QRandomGenerator>
#include <QTest>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace marlet {

// Thousands of damaged statements, made from the real ones with a fixed seed: the tokenizer and
// the translator must answer each with a result (ok or an error), and whatever they accept must be
// SQL that SQLite can parse, with every value bound.
class TestSqlRobustness : public QObject
{
    Q_OBJECT

private:
    static constexpr int mutationsPerStatement = 150;

    QRandomGenerator m_random {20241115};
    sqlite3* m_db = nullptr;
    int m_accepted = 0;
    int m_refused = 0;

    int pick(int bound) { return int(m_random.bounded(bound)); }

    QString randomToken()
    {
        static const QStringList pool {u"select"_s,
            u"FROM"_s,
            u"where"_s,
            u"and"_s,
            u"or"_s,
            u"not"_s,
            u"like"_s,
            u"Delete"_s,
            u"insert"_s,
            u"into"_s,
            u"values"_s,
            u"update"_s,
            u"set"_s,
            u"order"_s,
            u"by"_s,
            u"is"_s,
            u"null"_s,
            u"true"_s,
            u"FALSE"_s,
            u"now"_s,
            u"Now()"_s,
            u"count(*)"_s,
            u"*"_s,
            u"."_s,
            u","_s,
            u"("_s,
            u")"_s,
            u"="_s,
            u"<>"_s,
            u"<="_s,
            u"&"_s,
            u"-"_s,
            u";"_s,
            u"{}"_s,
            u"'{}'"_s,
            u"'%{}%'"_s,
            u"''"_s,
            u"'a''b'"_s,
            u"60"_s,
            u"5.7"_s,
            u"Account"_s,
            u"account.*"_s,
            u"[Time]"_s,
            u"\"Print\""_s,
            u"Members"_s,
            u"member_id"_s};
        return pool.at(pick(pool.size()));
    }

    QChar randomChar()
    {
        static const QString alphabet = u"aZ_09 '\"[]{}()#%*.,;=<>&-+/!?\\\t\n\u0000\u00e9\u4e2d\U0001F600"_s;
        if (pick(4) == 0)
            return QChar(char16_t(pick(0x10000)));
        return alphabet.at(pick(alphabet.size()));
    }

    QVariant randomValue()
    {
        switch (pick(9)) {
        case 0:
            return pick(100000) - 50000;
        case 1:
            return m_random.generateDouble() * 1000;
        case 2:
            return u"' OR '1'='1"_s;
        case 3:
            return u"%1{}"_s;
        case 4:
            return QVariant();
        case 5:
            return true;
        case 6:
            return QString::number(pick(1000));
        case 7:
            return QString(pick(5), randomChar());
        default:
            return u"NVT00001"_s;
        }
    }

    // The token texts as written, so that a mutation can move whole tokens.
    static QStringList tokenTexts(const QString& pattern)
    {
        QStringList texts;
        const SqlTokenizeResult tokenized = tokenizeSql(pattern);
        for (const SqlToken& token : tokenized.tokens) {
            if (token.type != SqlTokenType::End)
                texts.append(pattern.mid(token.position, token.length));
        }
        return texts;
    }

    QString mutateTokens(const QString& pattern)
    {
        QStringList tokens = tokenTexts(pattern);
        if (tokens.isEmpty())
            return randomToken();
        const int at = pick(tokens.size());
        switch (pick(5)) {
        case 0:
            tokens.removeAt(at);
            break;
        case 1:
            tokens.insert(at, tokens.at(at));
            break;
        case 2:
            tokens.swapItemsAt(at, pick(tokens.size()));
            break;
        case 3:
            tokens[at] = randomToken();
            break;
        default:
            tokens.insert(at, randomToken());
            break;
        }
        return tokens.join(u' ');
    }

    QString mutateCharacters(QString pattern)
    {
        const int at = pick(pattern.size() + 1);
        switch (pick(6)) {
        case 0:
            return pattern.remove(at, 1 + pick(3));
        case 1:
            return pattern.insert(at, randomChar());
        case 2:
            return at < pattern.size() ? pattern.replace(at, 1, randomChar()) : pattern;
        case 3:
            return pattern.left(at);
        case 4:
            return pattern.insert(at, QStringView(u"'[\"{").at(pick(4)));
        default:
            return pattern.insert(at, pattern.mid(pick(pattern.size() + 1), 1 + pick(20)));
        }
    }

    // Changes that keep the statement's meaning: the case of letters and the blanks between
    // tokens, so that plenty of mutants are accepted and reach SQLite.
    QString reshape(const QString& pattern)
    {
        QString reshaped;
        for (const QString& token : tokenTexts(pattern)) {
            QString changed = token;
            if (!token.startsWith(u'\''))
                changed = pick(2) == 0 ? token.toUpper() : token.toLower();
            reshaped += changed + QStringView(u" \t\r\n").at(pick(4)) + QString(pick(2), u' ');
        }
        return reshaped;
    }

    QString mutate(const QString& pattern)
    {
        if (pick(4) == 0)
            return reshape(pattern);
        QString mutated = pattern;
        const int rounds = 1 + (pick(4) == 0 ? pick(3) : 0);
        for (int i = 0; i < rounds; ++i)
            mutated = pick(2) == 0 ? mutateTokens(mutated) : mutateCharacters(mutated);
        return mutated;
    }

    QVariantList mutateValues(const QVariantList& values)
    {
        QVariantList mutated = values;
        if (pick(6) == 0 && !mutated.isEmpty())
            mutated[pick(mutated.size())] = randomValue();
        if (pick(10) == 0)
            mutated.append(randomValue());
        if (pick(10) == 0 && !mutated.isEmpty())
            mutated.removeLast();
        return mutated;
    }

    // SQLite parses a statement before it looks for its tables, so an empty database tells
    // whether the SQL itself is well formed. Missing tables and SQLite's size limits are not
    // the translator's concern.
    QString sqliteParseError(const QString& sql)
    {
        sqlite3_stmt* statement = nullptr;
        const QByteArray utf8 = sql.toUtf8();
        const int rc = sqlite3_prepare_v2(m_db, utf8.constData(), int(utf8.size()), &statement, nullptr);
        sqlite3_finalize(statement);
        const QString message = QString::fromUtf8(sqlite3_errmsg(m_db));
        const bool malformed = message.contains(u"syntax error"_s) || message.contains(u"incomplete input"_s)
            || message.contains(u"unrecognized token"_s);
        return rc != SQLITE_OK && malformed ? message : QString();
    }

    // Checks one translation and counts it.
    void check(const Statement& statement, SqlDialect dialect)
    {
        const TranslationResult result = SqlTranslator().translate(statement, dialect);
        const QByteArray context = statement.pattern().toUtf8();
        if (!result.ok()) {
            ++m_refused;
            QVERIFY2(result.errorPosition >= -1 && result.errorPosition <= statement.pattern().size(), context);
            QVERIFY2(result.sql.isEmpty() && result.steps.isEmpty(), context);
            return;
        }
        ++m_accepted;
        QStringList statements {result.sql};
        if (result.kind == StatementKind::MultiTableDelete) {
            QVERIFY2(!result.steps.isEmpty(), context);
            statements.clear();
            for (const KeyedDeleteStep& step : result.steps) {
                statements << step.selectKeysSql;
                QCOMPARE(step.deleteByKeySql.count(u'?'), 1);
            }
        }
        for (const QString& sql : std::as_const(statements)) {
            QVERIFY2(!sql.isEmpty(), context);
            // Every literal is bound: the only quotes left are those of ESCAPE ''.
            QVERIFY2(!QString(sql).remove(u" ESCAPE ''"_s).contains(u'\''), qPrintable(sql));
            QVERIFY2(sql.count(u'?') == result.values.size(), qPrintable(sql));
            if (dialect == SqlDialect::Sqlite) {
                const QString parseError = sqliteParseError(sql);
                QVERIFY2(parseError.isEmpty(), qPrintable(sql + u" -> "_s + parseError));
            }
        }
    }

    void checkBothDialects(const Statement& statement)
    {
        const qsizetype size = statement.pattern().size();
        const SqlTokenizeResult tokenized = tokenizeSql(statement.pattern());
        if (tokenized.ok()) {
            QCOMPARE(tokenized.tokens.last().type, SqlTokenType::End);
            for (const SqlToken& token : tokenized.tokens)
                QVERIFY(token.position >= 0 && token.length >= 0 && token.position + token.length <= size);
        } else {
            QVERIFY(tokenized.errorPosition >= 0 && tokenized.errorPosition <= size);
        }
        check(statement, SqlDialect::Sqlite);
        check(statement, SqlDialect::Postgres);
    }

private slots:
    void initTestCase() { QCOMPARE(sqlite3_open(":memory:", &m_db), SQLITE_OK); }

    void cleanupTestCase()
    {
        sqlite3_close(m_db);
        qInfo() << "accepted" << m_accepted << "refused" << m_refused;
    }

    void testMutatedWrittenStatements()
    {
        for (const test::WrittenStatement& written : test::writtenStatements()) {
            for (int i = 0; i < mutationsPerStatement; ++i) {
                checkBothDialects(Statement(mutate(written.pattern), mutateValues(written.values)));
                if (QTest::currentTestFailed())
                    return;
            }
        }
        // The mutations must exercise both outcomes, or the test proves little.
        QVERIFY(m_accepted > 1000);
        QVERIFY(m_refused > 1000);
    }

    void testRandomText()
    {
        for (int i = 0; i < 3000; ++i) {
            QString text;
            const int length = pick(80);
            for (int j = 0; j < length; ++j)
                text.append(pick(3) == 0 ? randomToken() + u' ' : QString(randomChar()));
            checkBothDialects(Statement(text, {randomValue()}));
            if (QTest::currentTestFailed())
                return;
        }
    }

    void testVeryLongInputs_data()
    {
        QTest::addColumn<QString>("pattern");
        const QString select = u"select * from Account where member=false"_s;
        QTest::newRow("a condition of twenty thousand terms")
            << select + QString(u" and Username = 'NVT00001'"_s).repeated(20000);
        QTest::newRow("a million characters of one letter") << QString(1000000, u'a');
        QTest::newRow("an unterminated string of a million characters")
            << select + u" and Username = '"_s + QString(1000000, u'x');
        QTest::newRow("a hundred thousand opening parentheses") << select + u" and "_s + QString(100000, u'(');
        QTest::newRow("thirty thousand places") << select + QString(u" and Time = {}"_s).repeated(30000);
        QTest::newRow("nested function calls") << u"select "_s + QString(u"count("_s).repeated(10000) + u"Time"_s
                + QString(10000, u')') + u" from Account"_s;
    }

    void testVeryLongInputs()
    {
        QFETCH(QString, pattern);
        checkBothDialects(Statement(pattern, {}));
        checkBothDialects(Statement(pattern, QVariantList(int(pattern.count(u"{}"_s)), 1)));
    }
};

} // namespace marlet

QTEST_GUILESS_MAIN(marlet::TestSqlRobustness)
#include "TestSqlRobustness.moc"
