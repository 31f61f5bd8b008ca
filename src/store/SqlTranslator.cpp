#include "store/SqlTranslator.h"

#include "store/Schema.h"
#include "store/SqlTokenizer.h"

#include <QRegularExpression>
#include <QVarLengthArray>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace marlet {

namespace {

// Deeper nesting of parentheses, NOT or signs than any real statement has is refused rather than
// followed down the stack.
constexpr int maxNesting = 64;

TranslationResult failure(const QString& message, qsizetype position)
{
    TranslationResult result;
    result.error = message;
    result.errorPosition = position;
    return result;
}

// --- Values -------------------------------------------------------------------------------------

std::optional<QVariant> numberFromText(const QString& text)
{
    // What the desktop store would read as one number: no exponent, no blanks, no thousands.
    static const QRegularExpression plainDecimal(u"^-?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)$"_s);
    if (!plainDecimal.match(text).hasMatch())
        return std::nullopt;
    bool ok = false;
    const qint64 whole = text.toLongLong(&ok);
    if (ok)
        return QVariant(whole);
    return QVariant(text.toDouble());
}

// The value a {} outside quotes stands for, or nothing when the value is not a number.
std::optional<QVariant> numericValue(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return QVariant(qint64(value.toBool() ? -1 : 0));
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return QVariant(value.toLongLong());
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        if (value.toULongLong() <= quint64(std::numeric_limits<qint64>::max()))
            return QVariant(value.toLongLong());
        return QVariant(value.toDouble());
    case QMetaType::Float:
    case QMetaType::Double:
        if (!std::isfinite(value.toDouble()))
            return std::nullopt;
        return QVariant(value.toDouble());
    case QMetaType::QString:
        return numberFromText(value.toString());
    default:
        return std::nullopt;
    }
}

// The statement's values, placed on the tokens that take them: a number for each {} outside
// quotes, the literal's whole text for each string. A statement has a few at most.
struct Binding
{
    QVarLengthArray<std::pair<qsizetype, QVariant>, 4> tokenValues; // token -> value, in token order
    QString error;
    qsizetype errorPosition = -1;

    const QVariant& valueOf(qsizetype token) const
    {
        static const QVariant none;
        const auto found = std::lower_bound(tokenValues.begin(),
            tokenValues.end(),
            token,
            [](const std::pair<qsizetype, QVariant>& bound, qsizetype wanted) { return bound.first < wanted; });
        return found != tokenValues.end() && found->first == token ? found->second : none;
    }
};

class Binder
{
public:
    Binder(const QList<SqlToken>& tokens, const QVariantList& values)
        : m_tokens(tokens)
        , m_values(values)
    {
    }

    Binding run()
    {
        for (qsizetype i = 0; i < m_tokens.size(); ++i) {
            const SqlToken& token = m_tokens.at(i);
            if (token.type == SqlTokenType::Placeholder)
                bindNumber(i, token);
            else if (token.type == SqlTokenType::String)
                bindString(i, token);
            if (!m_binding.error.isEmpty())
                return m_binding;
        }
        if (m_next != m_values.size())
            fail(-1,
                u"The statement has "_s + QString::number(m_next) + u" places for values but "_s
                    + QString::number(m_values.size()) + u" values were given."_s);
        return m_binding;
    }

private:
    void fail(qsizetype position, const QString& message)
    {
        m_binding.error = message;
        m_binding.errorPosition = position;
    }

    // The next value, or null when none is left.
    const QVariant* takeValue(const SqlToken& token)
    {
        if (m_next >= m_values.size()) {
            fail(token.position,
                u"No value given for the place at position "_s + QString::number(token.position) + u"."_s);
            return nullptr;
        }
        return &m_values.at(m_next++);
    }

    void bindNumber(qsizetype index, const SqlToken& token)
    {
        const QVariant* value = takeValue(token);
        if (!value)
            return;
        const std::optional<QVariant> number = numericValue(*value);
        if (!number)
            return fail(token.position,
                u"Syntax error in number in query expression '"_s + Statement::valueText(*value) + u"'."_s);
        m_binding.tokenValues.append({index, *number});
    }

    // A quote inside a value would have ended the literal early in the desktop store, leaving a
    // broken statement; it is refused the same way instead of being escaped.
    void bindString(qsizetype index, const SqlToken& token)
    {
        static const QString place = QStringLiteral("{}");
        if (token.text == place) // the literal is one value and nothing else, as lookups by name are
            return bindWholeString(index, token);
        qsizetype at = token.text.indexOf(place);
        if (at < 0) {
            m_binding.tokenValues.append({index, token.text});
            return;
        }
        QString text;
        text.reserve(token.text.size() + 32);
        text += QStringView(token.text).left(at);
        bool broken = false;
        while (at >= 0) {
            const QVariant* value = takeValue(token);
            if (!value)
                return;
            const QString valueText = Statement::valueText(*value);
            broken = broken || valueText.contains(u'\'');
            const qsizetype from = at + place.size();
            at = token.text.indexOf(place, from);
            text += valueText + QStringView(token.text).mid(from, (at < 0 ? token.text.size() : at) - from);
        }
        bindStringText(index, token, std::move(text), broken);
    }

    void bindWholeString(qsizetype index, const SqlToken& token)
    {
        const QVariant* value = takeValue(token);
        if (!value)
            return;
        QString text = Statement::valueText(*value);
        const bool broken = text.contains(u'\'');
        bindStringText(index, token, std::move(text), broken);
    }

    void bindStringText(qsizetype index, const SqlToken& token, QString text, bool broken)
    {
        if (broken)
            return fail(token.position, u"Syntax error in string in query expression '"_s + text + u"'."_s);
        m_binding.tokenValues.append({index, std::move(text)});
    }

    const QList<SqlToken>& m_tokens;
    const QVariantList& m_values;
    qsizetype m_next = 0;
    Binding m_binding;
};

// --- Statements -----------------------------------------------------------------------------------

// A piece of translated SQL; `compound` when it is an operation whose operands might bind
// differently inside a larger expression.
struct Fragment
{
    QString sql;
    bool compound = false;
};

class Nesting;

class Parser
{
public:
    Parser(const QString& pattern, const QList<SqlToken>& tokens, SqlDialect dialect, const TranslatorOptions& options)
        : m_pattern(pattern)
        , m_tokens(tokens)
        , m_dialect(dialect)
        , m_options(options)
    {
    }

    TranslationResult run()
    {
        parseStatement();
        if (!failed()) {
            acceptSymbol(u";");
            if (peek().type != SqlTokenType::End)
                fail(peek(), u"Characters found after the end of the statement: "_s + quoted(peek()) + u"."_s);
        }
        if (!failed())
            checkQualifiers();
        if (failed())
            return failure(m_error, m_errorPosition);
        m_result.tables = m_tables;
        return m_result;
    }

    // For each '?' of the result in order: the token whose value it binds, or -1 for `now`.
    const QList<qsizetype>& sources() const { return m_sources; }

private:
    friend class Nesting;

    // --- token access ---

    const SqlToken& peek(qsizetype ahead = 0) const { return m_tokens.at(qMin(m_pos + ahead, m_tokens.size() - 1)); }

    const SqlToken& take()
    {
        const SqlToken& token = peek();
        if (m_pos < m_tokens.size() - 1)
            ++m_pos;
        return token;
    }

    bool acceptKeyword(QStringView word)
    {
        if (!peek().isKeyword(word))
            return false;
        take();
        return true;
    }

    bool acceptSymbol(QStringView symbol)
    {
        if (!peek().isSymbol(symbol))
            return false;
        take();
        return true;
    }

    bool expectKeyword(QStringView word, const QString& context)
    {
        if (acceptKeyword(word))
            return true;
        fail(peek(), context + u": expected "_s + word + u" at "_s + quoted(peek()) + u"."_s);
        return false;
    }

    bool expectSymbol(QStringView symbol, const QString& context)
    {
        if (acceptSymbol(symbol))
            return true;
        fail(peek(), context + u": expected '"_s + symbol + u"' at "_s + quoted(peek()) + u"."_s);
        return false;
    }

    // The token as written, for messages.
    QString quoted(const SqlToken& token) const
    {
        if (token.type == SqlTokenType::End)
            return u"the end"_s;
        return u"'"_s + QStringView(m_pattern).sliced(token.position, token.length) + u"'"_s;
    }

    bool failed() const { return !m_error.isEmpty(); }

    Fragment fail(const SqlToken& at, const QString& message)
    {
        if (!failed()) {
            m_error = message;
            m_errorPosition = at.position;
        }
        return {};
    }

    // --- output helpers ---

    QString name(const SqlToken& token) const { return SqlTranslator::quoteIdentifier(token.text); }

    QString rowKey(const QString& table) const
    {
        return SqlTranslator::quoteIdentifier(table) + u"."_s + SqlTranslator::rowKeyColumn(table, m_dialect);
    }

    QString deleteByKey(const QString& table) const
    {
        return u"DELETE FROM "_s + SqlTranslator::quoteIdentifier(table) + u" WHERE "_s
            + SqlTranslator::rowKeyCondition(table, m_dialect);
    }

    // PostgreSQL's `*` would show the hidden key column: the schema's columns are listed instead.
    QString expandedStars(const QString& list) const
    {
        if (m_dialect == SqlDialect::Sqlite)
            return list;
        const auto columnsOf = [](const QString& table, bool qualified) -> std::optional<QString> {
            const TableDef* def = Schema::standard().table(table);
            if (!def)
                return std::nullopt;
            QStringList names;
            for (const ColumnDef& column : def->columns)
                names.append((qualified ? SqlTranslator::quoteIdentifier(table) + u"."_s : QString())
                    + SqlTranslator::quoteIdentifier(column.name));
            return names.join(u", "_s);
        };
        if (list == u"*"_s) {
            QStringList all;
            for (const QString& table : m_tables) {
                const auto columns = columnsOf(table, m_tables.size() > 1);
                if (!columns)
                    return list;
                all.append(*columns);
            }
            return all.join(u", "_s);
        }
        QString expanded = list;
        for (const QString& table : m_tables) {
            if (const auto columns = columnsOf(table, true))
                expanded.replace(SqlTranslator::quoteIdentifier(table) + u".*"_s, *columns);
        }
        return expanded;
    }

    // SQLite hands rows over in the order they were added unless told otherwise, and screens rely
    // on it; PostgreSQL is told so by the key, which grows with each row added.
    QString insertionOrder(bool ordered) const
    {
        if (m_dialect == SqlDialect::Sqlite || m_aggregated)
            return QString();
        QStringList keys;
        for (const QString& table : m_tables) {
            if (!Schema::standard().table(table))
                return QString();
            keys.append(rowKey(table));
        }
        return (ordered ? u", "_s : u" ORDER BY "_s) + keys.join(u", "_s);
    }

    // The values themselves are placed after parsing (SqlTranslator::apply): the SQL does not
    // depend on them, so one parse serves every run of the same pattern.
    Fragment bindParameter(qsizetype source)
    {
        m_sources.append(source);
        return {u"?"_s};
    }

    Fragment bindNow() { return bindParameter(-1); }

    // --- statements ---

    void parseStatement()
    {
        const SqlToken& first = peek();
        if (first.isKeyword(u"SELECT"))
            parseSelect();
        else if (first.isKeyword(u"DELETE"))
            parseDelete();
        else if (first.isKeyword(u"INSERT"))
            parseInsert();
        else if (first.isKeyword(u"UPDATE"))
            parseUpdate();
        else
            fail(first, u"Invalid statement: expected DELETE, INSERT, SELECT or UPDATE at "_s + quoted(first) + u"."_s);
    }

    void parseSelect()
    {
        take();
        const QString written = parseSelectList();
        if (failed() || !expectKeyword(u"FROM", u"Syntax error in SELECT"_s))
            return;
        const QString from = parseTableList();
        QString tail;
        if (!failed() && acceptKeyword(u"WHERE"))
            tail += u" WHERE "_s + parseCondition().sql;
        const bool ordered = !failed() && acceptKeyword(u"ORDER");
        if (ordered)
            tail += parseOrderBy();
        if (!failed())
            tail += insertionOrder(ordered);
        const QString list = expandedStars(written);
        m_result.kind = StatementKind::Select;
        m_result.sql = u"SELECT "_s + list + u" FROM "_s + from + tail;
        // PostgreSQL takes no row key beside an aggregate; such a result is read-only there.
        if (m_tables.size() == 1 && !(m_aggregated && m_dialect == SqlDialect::Postgres))
            m_result.keyedSql = u"SELECT "_s + rowKey(m_tables.first()) + u", "_s + list + u" FROM "_s + from + tail;
    }

    QString parseSelectList()
    {
        if (acceptSymbol(u"*"))
            return u"*"_s;
        QStringList items;
        do {
            items.append(parseSelectItem());
        } while (!failed() && acceptSymbol(u","));
        return items.join(u", "_s);
    }

    QString parseSelectItem()
    {
        if (peek().isName() && peek(1).isSymbol(u".") && peek(2).isSymbol(u"*")) {
            const SqlToken& table = take();
            take();
            take();
            noteQualifier(table);
            return name(table) + u".*"_s;
        }
        const Fragment expression = parseExpression();
        if (failed() || !acceptKeyword(u"AS"))
            return expression.sql;
        const SqlToken& alias = take();
        if (!alias.isName())
            return fail(alias, u"Syntax error in SELECT: expected a name after AS at "_s + quoted(alias) + u"."_s).sql;
        return expression.sql + u" AS "_s + name(alias);
    }

    // FROM takes a list of table names and nothing else: whatever follows the list has to start
    // the next clause, so a condition written where the tables belong is refused.
    QString parseTableList()
    {
        QStringList names;
        do {
            names.append(parseTableName());
        } while (!failed() && acceptSymbol(u","));
        const SqlToken& after = peek();
        const bool clauseFollows = after.isKeyword(u"WHERE") || after.isKeyword(u"ORDER") || after.isSymbol(u";")
            || after.type == SqlTokenType::End;
        if (!failed() && !clauseFollows)
            fail(after, u"Syntax error in FROM clause at "_s + quoted(after) + u"."_s);
        return names.join(u", "_s);
    }

    QString parseTableName()
    {
        const SqlToken& token = take();
        if (!token.isName())
            return fail(token, u"Syntax error: expected a table name at "_s + quoted(token) + u"."_s).sql;
        const QString table = token.text.toLower();
        if (!m_options.knownTables.isEmpty() && !m_options.knownTables.contains(table, Qt::CaseInsensitive))
            return fail(token, u"The table '"_s + token.text + u"' does not exist."_s).sql;
        if (m_tables.contains(table))
            return fail(token, u"The table '"_s + token.text + u"' is named twice."_s).sql;
        m_tables.append(table);
        return name(token);
    }

    QString parseOrderBy()
    {
        if (!expectKeyword(u"BY", u"Syntax error in ORDER BY clause"_s))
            return QString();
        QStringList items;
        do {
            QString item = parseExpression().sql;
            if (acceptKeyword(u"ASC"))
                item += u" ASC"_s;
            else if (acceptKeyword(u"DESC"))
                item += u" DESC"_s;
            items.append(item);
        } while (!failed() && acceptSymbol(u","));
        return u" ORDER BY "_s + items.join(u", "_s);
    }

    // DELETE [* | table.*, ...] FROM tables [WHERE condition]
    void parseDelete()
    {
        take();
        const QList<SqlToken> targets = parseDeleteTargets();
        if (failed() || !expectKeyword(u"FROM", u"Syntax error in DELETE"_s))
            return;
        const QString from = parseTableList();
        QString where;
        if (!failed() && acceptKeyword(u"WHERE"))
            where = u" WHERE "_s + parseCondition().sql;
        if (failed() || !targetsAreListed(targets))
            return;
        if (m_tables.size() == 1) {
            m_result.kind = StatementKind::Delete;
            m_result.sql = u"DELETE FROM "_s + from + where;
        } else if (targets.isEmpty()) {
            fail(peek(), u"Name the tables to delete from (table.*) when FROM lists several tables."_s);
        } else {
            planMultiTableDelete(targets, from, where);
        }
    }

    bool targetsAreListed(const QList<SqlToken>& targets)
    {
        for (const SqlToken& target : targets) {
            if (!m_tables.contains(target.text.toLower())) {
                fail(target, u"Cannot delete from '"_s + target.text + u"': it is not in the FROM clause."_s);
                return false;
            }
        }
        return true;
    }

    QList<SqlToken> parseDeleteTargets()
    {
        QList<SqlToken> targets;
        if (acceptSymbol(u"*"))
            return targets;
        while (peek().isName()) {
            const SqlToken& table = take();
            if (!acceptSymbol(u".") || !acceptSymbol(u"*")) {
                fail(table, u"Syntax error in DELETE: expected table.* at "_s + quoted(table) + u"."_s);
                return {};
            }
            targets.append(table);
            if (!acceptSymbol(u","))
                break;
        }
        return targets;
    }

    // Keys of every table are selected before anything is deleted, since deleting the rows of
    // one table would stop the rows of the other from matching the join.
    void planMultiTableDelete(const QList<SqlToken>& targets, const QString& from, const QString& where)
    {
        m_result.kind = StatementKind::MultiTableDelete;
        QStringList planned;
        for (const SqlToken& target : targets) {
            const QString table = target.text.toLower();
            if (planned.contains(table))
                continue;
            planned.append(table);
            m_result.steps.append(KeyedDeleteStep {
                table, u"SELECT DISTINCT "_s + rowKey(table) + u" FROM "_s + from + where, deleteByKey(table)});
        }
    }

    // INSERT INTO table [(columns)] VALUES (expressions) | SELECT ...
    void parseInsert()
    {
        take();
        if (!expectKeyword(u"INTO", u"Syntax error in INSERT"_s))
            return;
        const QString table = parseTableName();
        QStringList columns;
        if (!failed() && acceptSymbol(u"(")) {
            do {
                columns.append(parseColumnName());
            } while (!failed() && acceptSymbol(u","));
            expectSymbol(u")", u"Syntax error in INSERT"_s);
        }
        if (!failed() && peek().isKeyword(u"SELECT")) {
            parseInsertSelect(table, columns);
            return;
        }
        if (failed() || !expectKeyword(u"VALUES", u"Syntax error in INSERT"_s))
            return;
        const SqlToken& open = peek();
        const QStringList values = parseValueList();
        if (failed())
            return;
        if (!columns.isEmpty() && columns.size() != values.size()) {
            fail(open,
                u"The INSERT names "_s + QString::number(columns.size()) + u" columns but gives "_s
                    + QString::number(values.size()) + u" values."_s);
            return;
        }
        m_result.kind = StatementKind::Insert;
        m_result.sql = u"INSERT INTO "_s + table
            + (columns.isEmpty() ? QString() : u" ("_s + columns.join(u", "_s) + u")"_s) + u" VALUES ("_s
            + values.join(u", "_s) + u")"_s;
    }

    // The rows of a select go into the table; the select may read the table written to, which
    // copies its rows.
    void parseInsertSelect(const QString& table, const QStringList& columns)
    {
        const QStringList target = m_tables;
        m_tables.clear();
        parseSelect();
        m_tables = target + m_tables;
        m_result.kind = StatementKind::Insert;
        const QString columnList = columns.isEmpty() ? QString() : u" ("_s + columns.join(u", "_s) + u")"_s;
        m_result.sql = u"INSERT INTO "_s + table + columnList + u" "_s + m_result.sql;
        m_result.keyedSql.clear();
    }

    QStringList parseValueList()
    {
        QStringList values;
        if (!expectSymbol(u"(", u"Syntax error in INSERT"_s))
            return values;
        do {
            values.append(parseExpression().sql);
        } while (!failed() && acceptSymbol(u","));
        expectSymbol(u")", u"Syntax error in INSERT"_s);
        return values;
    }

    // A column to write: a name, optionally qualified by the table written to.
    QString parseColumnName()
    {
        const SqlToken& token = take();
        if (!token.isName())
            return fail(token, u"Syntax error: expected a column name at "_s + quoted(token) + u"."_s).sql;
        if (!acceptSymbol(u"."))
            return name(token);
        noteQualifier(token);
        const SqlToken& column = take();
        if (!column.isName())
            return fail(column, u"Syntax error: expected a column name at "_s + quoted(column) + u"."_s).sql;
        return name(token) + u"."_s + name(column);
    }

    // UPDATE table SET column = expression, ... [WHERE condition]
    void parseUpdate()
    {
        take();
        const QString table = parseTableName();
        if (failed() || !expectKeyword(u"SET", u"Syntax error in UPDATE"_s))
            return;
        QStringList assignments;
        do {
            const QString column = parseColumnName();
            if (failed() || !expectSymbol(u"=", u"Syntax error in UPDATE"_s))
                return;
            assignments.append(column + u" = "_s + parseExpression().sql);
        } while (!failed() && acceptSymbol(u","));
        QString where;
        if (!failed() && acceptKeyword(u"WHERE"))
            where = u" WHERE "_s + parseCondition().sql;
        m_result.kind = StatementKind::Update;
        m_result.sql = u"UPDATE "_s + table + u" SET "_s + assignments.join(u", "_s) + where;
    }

    // --- expressions, loosest binding first ---

    Fragment parseCondition() { return parseOr(); }

    // Appends in place: long chains of AND would otherwise copy the whole text once per term.
    static void extend(Fragment& left, const QString& op, const Fragment& right)
    {
        left.sql += op;
        left.sql += right.sql;
        left.compound = true;
    }

    Fragment parseOr()
    {
        Fragment left = parseAnd();
        while (!failed() && acceptKeyword(u"OR"))
            extend(left, u" OR "_s, parseAnd());
        return left;
    }

    Fragment parseAnd()
    {
        Fragment left = parseNot();
        while (!failed() && acceptKeyword(u"AND"))
            extend(left, u" AND "_s, parseNot());
        return left;
    }

    Fragment parseNot();
    Fragment parseUnary();
    Fragment parseParenthesised();

    Fragment parseComparison()
    {
        const Fragment left = parseExpression();
        if (failed())
            return left;
        const SqlToken& op = peek();
        static const QStringList comparisons {u"="_s, u"<>"_s, u"<"_s, u">"_s, u"<="_s, u">="_s};
        if (op.type == SqlTokenType::Symbol && comparisons.contains(op.text)) {
            take();
            return {left.sql + u" "_s + op.text + u" "_s + parseExpression().sql, true};
        }
        if (op.isKeyword(u"LIKE") || (op.isKeyword(u"NOT") && peek(1).isKeyword(u"LIKE")))
            return parseLike(left);
        if (acceptKeyword(u"IS")) {
            const bool negated = acceptKeyword(u"NOT");
            if (!expectKeyword(u"NULL", u"Syntax error after IS"_s))
                return {};
            return {left.sql + (negated ? u" IS NOT NULL"_s : u" IS NULL"_s), true};
        }
        return left;
    }

    // The desktop store matches case-insensitively with % and _ and knows no escape character.
    Fragment parseLike(const Fragment& left)
    {
        const bool negated = acceptKeyword(u"NOT");
        take();
        const QString pattern = parseExpression().sql;
        const QString op = m_dialect == SqlDialect::Sqlite ? u"LIKE"_s : u"ILIKE"_s;
        const QString escape = m_dialect == SqlDialect::Sqlite ? QString() : u" ESCAPE ''"_s;
        return {left.sql + (negated ? u" NOT "_s : u" "_s) + op + u" "_s + pattern + escape, true};
    }

    Fragment parseExpression();

    // '&' joins text. It binds more loosely than + and - here, but more tightly in SQLite's '||',
    // so compound operands are put in parentheses.
    Fragment parseConcatenation()
    {
        Fragment left = parseAdditive();
        if (failed() || !peek().isSymbol(u"&"))
            return left;
        QStringList parts {grouped(left)};
        while (!failed() && acceptSymbol(u"&"))
            parts.append(grouped(parseAdditive()));
        return {parts.join(u" || "_s), true};
    }

    static QString grouped(const Fragment& fragment)
    {
        return fragment.compound ? u"("_s + fragment.sql + u")"_s : fragment.sql;
    }

    Fragment parseAdditive()
    {
        Fragment left = parseTerm();
        while (!failed() && (peek().isSymbol(u"+") || peek().isSymbol(u"-"))) {
            const QString op = u" "_s + take().text + u" "_s;
            extend(left, op, parseTerm());
        }
        return left;
    }

    Fragment parseTerm()
    {
        Fragment left = parseUnary();
        while (!failed() && (peek().isSymbol(u"*") || peek().isSymbol(u"/"))) {
            const QString op = u" "_s + take().text + u" "_s;
            extend(left, op, parseUnary());
        }
        return left;
    }

    Fragment parsePrimary()
    {
        const SqlToken& token = peek();
        switch (token.type) {
        case SqlTokenType::Number:
            return {take().text};
        case SqlTokenType::String:
        case SqlTokenType::Placeholder: {
            const qsizetype source = m_pos;
            take();
            return bindParameter(source);
        }
        case SqlTokenType::Identifier:
        case SqlTokenType::QuotedIdentifier:
            return parseNameOrCall();
        default:
            break;
        }
        if (token.isSymbol(u"("))
            return parseParenthesised();
        // PostgreSQL keeps booleans in their own type, which compares with no number.
        if (acceptKeyword(u"TRUE"))
            return {m_dialect == SqlDialect::Sqlite ? u"-1"_s : u"TRUE"_s};
        if (acceptKeyword(u"FALSE"))
            return {m_dialect == SqlDialect::Sqlite ? u"0"_s : u"FALSE"_s};
        if (acceptKeyword(u"NULL"))
            return {u"NULL"_s};
        return fail(token, u"Syntax error in expression at "_s + quoted(token) + u"."_s);
    }

    Fragment parseNameOrCall()
    {
        const SqlToken& token = take();
        if (acceptSymbol(u".")) {
            noteQualifier(token);
            const SqlToken& column = take();
            if (!column.isName())
                return fail(column, u"Syntax error: expected a column name at "_s + quoted(column) + u"."_s);
            return {name(token) + u"."_s + name(column)};
        }
        if (token.type == SqlTokenType::Identifier && peek().isSymbol(u"("))
            return parseCall(token);
        // `now` without parentheses is the desktop store's current date-time; no table has a
        // column of that name.
        if (token.type == SqlTokenType::Identifier && token.text.compare(u"now"_s, Qt::CaseInsensitive) == 0)
            return bindNow();
        return {name(token)};
    }

    Fragment parseCall(const SqlToken& function)
    {
        static const QStringList aggregates {u"COUNT"_s, u"SUM"_s, u"MAX"_s, u"MIN"_s, u"AVG"_s};
        const QString upper = function.text.toUpper();
        take();
        if (upper == u"NOW"_s) {
            expectSymbol(u")", u"Syntax error in Now()"_s);
            return bindNow();
        }
        if (!aggregates.contains(upper))
            return fail(function, u"Undefined function '"_s + function.text + u"' in expression."_s);
        m_aggregated = true;
        const QString argument = upper == u"COUNT"_s && acceptSymbol(u"*") ? u"*"_s : parseExpression().sql;
        expectSymbol(u")", u"Syntax error in "_s + function.text + u"()"_s);
        return {upper + u"("_s + argument + u")"_s};
    }

    // A table name before '.' has to be one of the statement's tables; it is checked once the
    // whole statement is read, because a select list comes before its FROM clause.
    void noteQualifier(const SqlToken& table) { m_qualifiers.append(table); }

    void checkQualifiers()
    {
        for (const SqlToken& qualifier : std::as_const(m_qualifiers)) {
            if (!m_tables.contains(qualifier.text.toLower())) {
                fail(qualifier, u"The table '"_s + qualifier.text + u"' is not part of the statement."_s);
                return;
            }
        }
    }

    const QString& m_pattern;
    const QList<SqlToken>& m_tokens;
    const SqlDialect m_dialect;
    const TranslatorOptions& m_options;
    qsizetype m_pos = 0;
    int m_depth = 0;
    QString m_error;
    qsizetype m_errorPosition = -1;
    QStringList m_tables;
    bool m_aggregated = false;
    QList<SqlToken> m_qualifiers;
    QList<qsizetype> m_sources;
    TranslationResult m_result;
};

// Counts one level of nesting for as long as it lives.
class Nesting
{
public:
    explicit Nesting(Parser& parser)
        : m_parser(parser)
    {
        if (++m_parser.m_depth > maxNesting)
            m_parser.fail(m_parser.peek(), u"The expression is nested too deeply."_s);
    }
    ~Nesting() { --m_parser.m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    Parser& m_parser;
};

Fragment Parser::parseNot()
{
    if (!acceptKeyword(u"NOT"))
        return parseComparison();
    const Nesting nesting(*this);
    if (failed())
        return {};
    return {u"NOT "_s + parseNot().sql, true};
}

Fragment Parser::parseExpression()
{
    const Nesting nesting(*this);
    if (failed())
        return {};
    return parseConcatenation();
}

Fragment Parser::parseUnary()
{
    const bool minus = peek().isSymbol(u"-");
    if (!minus && !peek().isSymbol(u"+"))
        return parsePrimary();
    take();
    const Nesting nesting(*this);
    if (failed())
        return {};
    const Fragment operand = parseUnary();
    if (!minus)
        return operand;
    // Two minus signs in a row would start a comment in the engine's SQL.
    const QString text = operand.sql.startsWith(u'-') ? u"("_s + operand.sql + u")"_s : operand.sql;
    return {u"-"_s + text, true};
}

Fragment Parser::parseParenthesised()
{
    take();
    const Fragment inner = parseCondition();
    expectSymbol(u")", u"Syntax error in expression"_s);
    return {u"("_s + inner.sql + u")"_s};
}

} // namespace

SqlTranslator::SqlTranslator(TranslatorOptions options)
    : m_options(std::move(options))
{
}

TranslationResult SqlTranslator::translate(const Statement& statement, SqlDialect dialect) const
{
    return apply(*plan(statement.pattern(), dialect), statement.values());
}

std::shared_ptr<const TranslationPlan> SqlTranslator::plan(const QString& pattern, SqlDialect dialect) const
{
    auto result = std::make_shared<TranslationPlan>();
    SqlTokenizeResult tokenized = tokenizeSql(pattern);
    if (!tokenized.ok()) {
        result->tokenizeError = failure(tokenized.error, tokenized.errorPosition);
        return result;
    }
    result->tokens = std::move(tokenized.tokens);
    Parser parser(pattern, result->tokens, dialect, m_options);
    result->shape = parser.run();
    result->sources = parser.sources();
    result->dialect = dialect;
    return result;
}

TranslationResult SqlTranslator::apply(const TranslationPlan& plan, const QVariantList& values) const
{
    // Problems in the order a reader meets them: the text, then the values, then the grammar.
    if (!plan.tokenizeError.ok())
        return plan.tokenizeError;
    const Binding binding = Binder(plan.tokens, values).run();
    if (!binding.error.isEmpty())
        return failure(binding.error, binding.errorPosition);
    if (!plan.shape.ok())
        return plan.shape;
    TranslationResult result = plan.shape;
    result.values.reserve(plan.sources.size());
    std::optional<QVariant> now; // one moment for the whole statement
    for (const qsizetype source : plan.sources) {
        if (source >= 0) {
            result.values.append(binding.valueOf(source));
            continue;
        }
        if (!now)
            now = dateTimeValue(m_options.clock ? m_options.clock() : QDateTime::currentDateTime(), plan.dialect);
        result.values.append(*now);
    }
    return result;
}

QString SqlTranslator::quoteIdentifier(QStringView name)
{
    return u"\""_s + name.toString().toLower().replace(u'"', u"\"\""_s) + u"\""_s;
}

QString SqlTranslator::rowKeyColumn(const QString& table, SqlDialect dialect)
{
    if (dialect == SqlDialect::Sqlite)
        return u"rowid"_s;
    return Schema::standard().table(table) ? quoteIdentifier(PostgresRowKey) : u"ctid"_s;
}

QString SqlTranslator::rowKeyCondition(const QString& table, SqlDialect dialect)
{
    if (dialect == SqlDialect::Postgres && !Schema::standard().table(table))
        return u"ctid = CAST(? AS tid)"_s;
    return rowKeyColumn(table, dialect) + u" = ?"_s;
}

QVariant SqlTranslator::dateTimeValue(const QDateTime& value, SqlDialect dialect)
{
    if (dialect == SqlDialect::Sqlite)
        return value.toString(u"yyyy-MM-dd HH:mm:ss"_s);
    return value;
}

} // namespace marlet
