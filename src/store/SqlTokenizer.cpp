#include "store/SqlTokenizer.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace marlet {

namespace {

// The words the dialect reserves. Column names such as Time, Type or Print are not among them.
const QStringList& keywords()
{
    static const QStringList words
        = u"AND AS ASC BY DELETE DESC FALSE FROM INSERT INTO IS LIKE NOT NULL OR ORDER SELECT SET TRUE UPDATE VALUES WHERE"_s
              .split(u' ');
    return words;
}

bool isNameStart(QChar c)
{
    return c.isLetter() || c == u'_';
}

bool isNamePart(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

// Delimited names may hold blanks, but nothing that could end or escape a quoted name or stand
// for a parameter once the name is written out again.
bool isDelimitedNamePart(QChar c)
{
    return isNamePart(c) || c == u' ';
}

class Tokenizer
{
public:
    explicit Tokenizer(QStringView sql)
        : m_sql(sql)
    {
    }

    SqlTokenizeResult run()
    {
        while (m_result.ok()) {
            skipBlanks();
            if (m_pos >= m_sql.size()) {
                add(SqlTokenType::End, QString(), m_pos);
                break;
            }
            readToken();
        }
        return std::move(m_result);
    }

private:
    QChar at(qsizetype i) const { return i < m_sql.size() ? m_sql[i] : QChar(); }

    void skipBlanks()
    {
        while (m_pos < m_sql.size() && m_sql[m_pos].isSpace())
            ++m_pos;
    }

    void add(SqlTokenType type, QString text, qsizetype start)
    {
        m_result.tokens.append(SqlToken {type, std::move(text), start, m_pos - start});
    }

    void fail(qsizetype position, const QString& message)
    {
        m_result.error = message;
        m_result.errorPosition = position;
    }

    void readToken()
    {
        const QChar c = m_sql[m_pos];
        if (isNameStart(c))
            readWord();
        else if (c.isDigit())
            readNumber();
        else if (c == u'\'')
            readString();
        else if (c == u'[')
            readDelimitedName(u']');
        else if (c == u'"')
            readDelimitedName(u'"');
        else if (c == u'{')
            readPlaceholder();
        else
            readSymbol();
    }

    void readWord()
    {
        const qsizetype start = m_pos;
        while (m_pos < m_sql.size() && isNamePart(m_sql[m_pos]))
            ++m_pos;
        const QStringView word = m_sql.sliced(start, m_pos - start);
        if (isSqlKeyword(word))
            add(SqlTokenType::Keyword, word.toString().toUpper(), start);
        else
            add(SqlTokenType::Identifier, word.toString(), start);
    }

    void readDigits()
    {
        while (m_pos < m_sql.size() && m_sql[m_pos].isDigit())
            ++m_pos;
    }

    void readNumber()
    {
        const qsizetype start = m_pos;
        readDigits();
        if (at(m_pos) == u'.' && at(m_pos + 1).isDigit()) {
            ++m_pos;
            readDigits();
        }
        if (isNamePart(at(m_pos)))
            return fail(start, u"Malformed number '"_s + m_sql.sliced(start, m_pos - start + 1) + u"'."_s);
        add(SqlTokenType::Number, m_sql.sliced(start, m_pos - start).toString(), start);
    }

    void readString()
    {
        const qsizetype start = m_pos++;
        QString content;
        for (;;) {
            if (m_pos >= m_sql.size())
                return fail(start, u"Unterminated string starting at position "_s + QString::number(start) + u"."_s);
            const QChar c = m_sql[m_pos++];
            if (c != u'\'') {
                content.append(c);
            } else if (at(m_pos) == u'\'') {
                content.append(c);
                ++m_pos;
            } else {
                break;
            }
        }
        add(SqlTokenType::String, content, start);
    }

    void readDelimitedName(QChar close)
    {
        const qsizetype start = m_pos++;
        while (m_pos < m_sql.size() && isDelimitedNamePart(m_sql[m_pos]))
            ++m_pos;
        if (at(m_pos) != close)
            return fail(start, u"Invalid name starting at position "_s + QString::number(start) + u"."_s);
        const QString name = m_sql.sliced(start + 1, m_pos - start - 1).trimmed().toString();
        ++m_pos;
        if (name.isEmpty())
            return fail(start, u"Empty name at position "_s + QString::number(start) + u"."_s);
        add(SqlTokenType::QuotedIdentifier, name, start);
    }

    void readPlaceholder()
    {
        const qsizetype start = m_pos;
        if (at(m_pos + 1) != u'}')
            return fail(start, u"Unexpected '{' at position "_s + QString::number(start) + u"."_s);
        m_pos += 2;
        add(SqlTokenType::Placeholder, u"{}"_s, start);
    }

    void readSymbol()
    {
        const qsizetype start = m_pos;
        const QChar c = m_sql[m_pos];
        const QChar following = at(m_pos + 1);
        if ((c == u'<' && (following == u'>' || following == u'=')) || (c == u'>' && following == u'=')) {
            m_pos += 2;
        } else if (QStringView(u"=<>+-*/,.;()&").contains(c)) {
            ++m_pos;
        } else {
            return fail(start, u"Unexpected character '"_s + c + u"' at position "_s + QString::number(start) + u"."_s);
        }
        add(SqlTokenType::Symbol, m_sql.sliced(start, m_pos - start).toString(), start);
    }

    QStringView m_sql;
    qsizetype m_pos = 0;
    SqlTokenizeResult m_result;
};

} // namespace

bool isSqlKeyword(QStringView word)
{
    return keywords().contains(word, Qt::CaseInsensitive);
}

SqlTokenizeResult tokenizeSql(QStringView sql)
{
    return Tokenizer(sql).run();
}

} // namespace marlet
