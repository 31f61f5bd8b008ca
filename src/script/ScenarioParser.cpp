#include "script/ScenarioParser.h"

#include "script/ControlProperties.h"

#include <QDate>
#include <QRegularExpression>
#include <QTime>

#include <optional>
#include <vector>

namespace marlet {

namespace {

// ---- the syntax table
//
// A pattern is a list of elements: a bare word must be written as it stands (any case, unquoted);
// <name> takes any word or quoted text; <name:type> takes a value of that type; [word] is an
// optional flag and [word <name>] an optional keyword with a value, both in any order at the end.
// Types: int, # (an index written #N), a|b|c (one of these words), rest (the remaining words),
// command (the remaining words as a command), block (one value, or nothing and the indented rows
// below the line), prop and formprop (a property name), key (a key to press), date, time.

struct Syntax
{
    CommandId id;
    const char* pattern;
};

const Syntax syntaxTable[] = {
    {CommandId::ClockAdvance, "clock advance <ms:int>"},
    {CommandId::Clock, "clock <date:date> <time:time>"},
    {CommandId::DatabaseNew, "database new"},
    {CommandId::MachineNew, "machine new"},
    {CommandId::Sql, "sql <statement>"},
    {CommandId::Pref, "pref <application> <section> <key> <value>"},
    {CommandId::Printer, "printer none"},
    {CommandId::Printer, "printer <name>"},
    {CommandId::Component, "component <progid> [fails] [built-in]"},
    {CommandId::SerialPorts, "serial ports <state:work|none>"},
    {CommandId::File, "file <path> size <bytes:int>"},
    {CommandId::Clipboard, "clipboard picture <bytes:int>"},
    {CommandId::ProgramsFail, "programs fail"},
    {CommandId::WriteFile, "write file <path> <form:lines|records> <content:block>"},
    {CommandId::ExpectMessage,
        "expect message <text> style <style:int> [title <title>] [answer "
        "<answer:ok|cancel|abort|retry|ignore|yes|no>]"},
    {CommandId::ExpectInput, "expect input <answer> [prompt <prompt>] [title <title>] [default <default>]"},
    {CommandId::ExpectMenu, "expect menu none"},
    {CommandId::ExpectMenu, "expect menu <item>"},
    {CommandId::ExpectFile, "expect file none"},
    {CommandId::ExpectFile, "expect file <path>"},
    {CommandId::ExpectColor, "expect color none"},
    {CommandId::ExpectColor, "expect color <color:int>"},
    {CommandId::Open, "open <operation> <arguments:rest>"},
    {CommandId::Type, "type <control> <text>"},
    {CommandId::Press, "press <control> <key:key>"},
    {CommandId::Set, "set <control> <text>"},
    {CommandId::TabOut, "tab out of <control>"},
    {CommandId::ChooseTab, "tab <control> <tab:int> [refused]"},
    {CommandId::Focus, "focus <control>"},
    {CommandId::Click, "click <control>"},
    {CommandId::Pick, "pick <control> <index:#>"},
    {CommandId::Pick, "pick <control> <item>"},
    {CommandId::Tick, "tick <control>"},
    {CommandId::Untick, "untick <control>"},
    {CommandId::Slide, "slide <control> <value:int>"},
    {CommandId::DropDown, "drop down <control>"},
    {CommandId::GridClick, "grid <control> <button:click|right-click> row <row:int> [col <col:int>]"},
    {CommandId::AtYield, "at yield <n:int> <command:command>"},
    {CommandId::Close, "close [refused]"},
    {CommandId::CheckForm, "check form <property:formprop> <expected>"},
    {CommandId::CheckFocus, "check focus <control>"},
    {CommandId::CheckMessages, "check messages shown <count:int>"},
    {CommandId::CheckNoPending, "check no pending messages"},
    {CommandId::CheckCount, "check <what:slept|yields> <count:int>"},
    {CommandId::CheckLog, "check <log:forms|calls|documents|programs|serial|printed|scanners> is <expected:block>"},
    {CommandId::CheckFiles, "check files <folder> is <expected:block>"},
    {CommandId::CheckRows, "check rows <query> is <expected:block>"},
    {CommandId::CheckPref, "check pref <application> <section> <key> <expected>"},
    {CommandId::CheckFile, "check file <path> <form:lines|records> from <from:int> is <expected:block>"},
    {CommandId::CheckFile, "check file <path> <form:lines|records> line <line:int> is <expected:block>"},
    {CommandId::CheckFile, "check file <path> <form:lines|records> is <expected:block>"},
    {CommandId::CheckControl, "check <control> <property:prop> <expected>"},
};

struct Element
{
    enum Kind { Literal, Value, Flag, Option } kind = Literal;
    QString word; // the literal, flag or option keyword
    QString name; // the argument's name
    QString type; // empty for any value
};

std::vector<Element> compile(const QString& pattern)
{
    std::vector<Element> elements;
    static const QRegularExpression part(
        QStringLiteral(R"(\[(\S+)(?: <([^:>]+)(?::([^>]+))?>)?\]|<([^:>]+)(?::([^>]+))?>|(\S+))"));
    for (auto it = part.globalMatch(pattern); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        if (!m.captured(1).isEmpty()) {
            const Element::Kind kind = m.captured(2).isEmpty() ? Element::Flag : Element::Option;
            elements.push_back({kind, m.captured(1), m.captured(2), m.captured(3)});
        } else if (!m.captured(4).isEmpty()) {
            elements.push_back({Element::Value, QString(), m.captured(4), m.captured(5)});
        } else {
            elements.push_back({Element::Literal, m.captured(6), QString(), QString()});
        }
    }
    return elements;
}

QString elementText(const Element& e)
{
    return e.kind == Element::Literal ? e.word : QStringLiteral("<") + e.name + QStringLiteral(">");
}

struct CompiledSyntax
{
    CommandId id;
    QString usage;
    std::vector<Element> elements;
};

const std::vector<CompiledSyntax>& compiledTable()
{
    static const std::vector<CompiledSyntax> table = [] {
        std::vector<CompiledSyntax> compiled;
        for (const Syntax& s : syntaxTable)
            compiled.push_back({s.id, QLatin1String(s.pattern), compile(QLatin1String(s.pattern))});
        return compiled;
    }();
    return table;
}

// ---- tokens

// One token of a line: a bare word or a quoted text with its escapes resolved.
struct ScenarioToken
{
    QString text;
    bool quoted = false;
};

struct Tokens
{
    QList<ScenarioToken> tokens;
    qsizetype end = 0; // where the comment starts, or the length of the line
    QString error;
};

bool startsComment(const QString& line, qsizetype i)
{
    return line[i] == u'#' && (i + 1 >= line.size() || !line[i + 1].isDigit());
}

// Reads a quoted text starting at `i` (the opening quote); returns the position after the closing one.
qsizetype readQuoted(const QString& line, qsizetype i, QString& text, QString& error)
{
    for (++i; i < line.size(); ++i) {
        const QChar c = line[i];
        if (c == u'"')
            return i + 1;
        if (c == u'\\' && i + 1 < line.size()) {
            const QChar next = line[i + 1];
            // Only these escapes exist, so that a path such as "C:\Server" can be written as it is.
            const qsizetype known = QStringLiteral("\"\\tnr").indexOf(next);
            if (known >= 0) {
                text += QStringLiteral("\"\\\t\n\r")[known];
                ++i;
            } else {
                text += c;
            }
            continue;
        }
        text += c;
    }
    error = QStringLiteral("unterminated quoted text");
    return -1;
}

Tokens tokenize(const QString& line)
{
    Tokens result;
    qsizetype i = 0;
    while (i < line.size()) {
        if (line[i].isSpace()) {
            ++i;
            continue;
        }
        if (startsComment(line, i))
            break;
        ScenarioToken token;
        if (line[i] == u'"') {
            token.quoted = true;
            i = readQuoted(line, i, token.text, result.error);
            if (i < 0)
                return result;
            if (i < line.size() && !line[i].isSpace()) {
                result.error = QStringLiteral("a blank must follow the closing quote");
                return result;
            }
        } else {
            const qsizetype start = i;
            while (i < line.size() && !line[i].isSpace() && line[i] != u'"')
                ++i;
            token.text = line.mid(start, i - start);
        }
        result.tokens.append(token);
    }
    result.end = i;
    return result;
}

// ---- matching

QString visibleToken(const ScenarioToken& t)
{
    return t.quoted ? u'"' + t.text + u'"' : t.text;
}

bool isKeyName(const QString& key)
{
    static const QStringList names
        = {QStringLiteral("enter"), QStringLiteral("tab"), QStringLiteral("escape"), QStringLiteral("backspace")};
    bool isNumber = false;
    key.toInt(&isNumber);
    return key.size() == 1 || names.contains(key.toLower()) || isNumber;
}

// Checks a value against its type; returns the value as stored, or nullopt with a reason.
std::optional<QString> typedValue(const Element& e, const ScenarioToken& t, QString& reason)
{
    const QString& type = e.type;
    bool valid = true;
    QString value = t.text;
    if (type == QLatin1String("int")) {
        t.text.toInt(&valid);
    } else if (type == QLatin1String("#")) {
        value = t.text.mid(1);
        bool isNumber = false;
        value.toInt(&isNumber);
        valid = isNumber && !t.quoted && t.text.startsWith(u'#');
    } else if (type.contains(u'|')) {
        valid = !t.quoted && type.split(u'|').contains(t.text.toLower());
        value = t.text.toLower();
    } else if (type == QLatin1String("prop")) {
        valid = isControlProperty(t.text);
    } else if (type == QLatin1String("formprop")) {
        valid = isFormProperty(t.text);
    } else if (type == QLatin1String("key")) {
        valid = isKeyName(t.text);
    } else if (type == QLatin1String("date")) {
        valid = QDate::fromString(t.text, QStringLiteral("yyyy-MM-dd")).isValid();
    } else if (type == QLatin1String("time")) {
        valid = QTime::fromString(t.text, QStringLiteral("HH:mm:ss")).isValid()
            || QTime::fromString(t.text, QStringLiteral("HH:mm")).isValid();
    }
    if (!valid) {
        reason = visibleToken(t) + QStringLiteral(" is not a valid ")
            + (type.contains(u'|') ? QStringLiteral("choice") : type) + QStringLiteral(" for <") + e.name + u'>';
        return std::nullopt;
    }
    return value;
}

struct Attempt
{
    std::optional<ScenarioCommand> command;
    bool wantsBlock = false;
    // How close the pattern came: twice the tokens matched, plus one when it failed on a value
    // rather than on a keyword. The closest pattern of a command explains the error.
    qsizetype score = 0;
    QString reason;
};

Attempt matchTokens(const QList<ScenarioToken>& tokens, int line);

bool matchesLiteral(const ScenarioToken& token, const QString& word)
{
    return !token.quoted && token.text.compare(word, Qt::CaseInsensitive) == 0;
}

// Matches the trailing flags and keyword options, in any order.
bool matchOptions(const CompiledSyntax& s, size_t first, const QList<ScenarioToken>& tokens, qsizetype& i, Attempt& a)
{
    while (i < tokens.size()) {
        const Element* found = nullptr;
        for (size_t k = first; k < s.elements.size(); ++k) {
            const Element& e = s.elements[k];
            if (matchesLiteral(tokens[i], e.word) && !a.command->has(e.kind == Element::Flag ? e.word : e.name))
                found = &e;
        }
        if (!found) {
            a.reason = QStringLiteral("unexpected ") + visibleToken(tokens[i]);
            return false;
        }
        ++i;
        if (found->kind == Element::Flag) {
            a.command->args.insert(found->word, QStringLiteral("true"));
            continue;
        }
        if (i >= tokens.size()) {
            a.reason = QStringLiteral("a value must follow ") + found->word;
            return false;
        }
        std::optional<QString> value = typedValue(*found, tokens[i], a.reason);
        if (!value)
            return false;
        a.command->args.insert(found->name, *value);
        ++i;
    }
    return true;
}

// Takes all the remaining tokens for a rest, command or block element. False on a bad sub-command.
bool matchTail(const Element& e, const QList<ScenarioToken>& tokens, qsizetype& i, int line, Attempt& a)
{
    if (e.type == QLatin1String("rest")) {
        for (; i < tokens.size(); ++i)
            a.command->rest.append(tokens[i].text);
        return true;
    }
    if (e.type == QLatin1String("command")) {
        Attempt inner = matchTokens(tokens.mid(i), line);
        if (!inner.command || inner.wantsBlock) {
            a.reason
                = inner.command ? QStringLiteral("a check with rows below cannot follow \"at yield\"") : inner.reason;
            return false;
        }
        a.command->inner = std::make_shared<const ScenarioCommand>(*inner.command);
        i = tokens.size();
        return true;
    }
    // A block: one value on the line, or the rows of the indented lines below.
    if (i < tokens.size())
        a.command->block.append(tokens[i++].text);
    else
        a.wantsBlock = true;
    return true;
}

Attempt matchSyntax(const CompiledSyntax& s, const QList<ScenarioToken>& tokens, int line)
{
    Attempt a;
    a.command = ScenarioCommand {};
    a.command->id = s.id;
    a.command->line = line;
    qsizetype i = 0;
    for (size_t k = 0; k < s.elements.size(); ++k) {
        const Element& e = s.elements[k];
        a.score = 2 * i + 1;
        if (e.kind == Element::Flag || e.kind == Element::Option) {
            if (!matchOptions(s, k, tokens, i, a))
                a.command.reset();
            return a;
        }
        if (e.type == QLatin1String("rest") || e.type == QLatin1String("command") || e.type == QLatin1String("block")) {
            if (!matchTail(e, tokens, i, line, a))
                a.command.reset();
            break;
        }
        if (i >= tokens.size()) {
            a.reason = QStringLiteral("missing ") + elementText(e);
            a.command.reset();
            return a;
        }
        if (e.kind == Element::Literal) {
            if (!matchesLiteral(tokens[i], e.word)) {
                a.score = 2 * i;
                a.reason
                    = QStringLiteral("expected ") + e.word + QStringLiteral(" instead of ") + visibleToken(tokens[i]);
                a.command.reset();
                return a;
            }
        } else {
            std::optional<QString> value = typedValue(e, tokens[i], a.reason);
            if (!value) {
                a.command.reset();
                return a;
            }
            a.command->args.insert(e.name, *value);
        }
        ++i;
    }
    if (a.command && i < tokens.size()) {
        a.score = 2 * i + 1;
        a.reason = QStringLiteral("unexpected ") + visibleToken(tokens[i]);
        a.command.reset();
    }
    return a;
}

Attempt matchTokens(const QList<ScenarioToken>& tokens, int line)
{
    Attempt best;
    QStringList usages;
    for (const CompiledSyntax& s : compiledTable()) {
        if (!matchesLiteral(tokens.first(), s.elements.front().word))
            continue;
        usages << s.usage;
        Attempt a = matchSyntax(s, tokens, line);
        if (a.command)
            return a;
        if (usages.size() == 1 || a.score > best.score)
            best = a;
    }
    if (usages.isEmpty())
        best.reason = QStringLiteral("unknown command ") + visibleToken(tokens.first());
    else
        best.reason += QStringLiteral("; expected ") + usages.join(QStringLiteral("\n  or "));
    return best;
}

int indentation(const QString& line)
{
    int n = 0;
    while (n < line.size() && line[n].isSpace())
        ++n;
    return n;
}

class Parser
{
public:
    Parser(const QString& source, const QString& fileName)
        : m_lines(source.split(u'\n'))
    {
        m_script.fileName = fileName;
        for (QString& line : m_lines) {
            if (line.endsWith(u'\r'))
                line.chop(1);
        }
    }

    ScenarioScript parse()
    {
        for (m_index = 0; m_index < m_lines.size(); ++m_index)
            parseLine();
        return std::move(m_script);
    }

private:
    void error(int line, const QString& what)
    {
        m_script.errors << m_script.fileName + u':' + QString::number(line) + QStringLiteral(": ") + what
                + QStringLiteral("\n  ") + m_lines[line - 1].trimmed();
    }

    void parseLine()
    {
        const QString& text = m_lines[m_index];
        const int line = int(m_index) + 1;
        const Tokens t = tokenize(text);
        if (!t.error.isEmpty())
            return error(line, t.error);
        if (t.tokens.isEmpty())
            return;
        Attempt a = matchTokens(t.tokens, line);
        if (!a.command)
            return error(line, a.reason);
        a.command->source = text.left(t.end).trimmed();
        if (a.wantsBlock)
            readBlock(indentation(text), a.command->block);
        m_script.commands.append(*a.command);
    }

    // The rows of a block: the following lines indented deeper than the check itself.
    void readBlock(int indent, QStringList& rows)
    {
        while (m_index + 1 < m_lines.size()) {
            const QString& text = m_lines[m_index + 1];
            if (text.trimmed().isEmpty() || indentation(text) <= indent)
                return;
            ++m_index;
            const Tokens t = tokenize(text);
            if (!t.error.isEmpty()) {
                error(int(m_index) + 1, t.error);
                continue;
            }
            if (t.tokens.isEmpty())
                continue; // a comment among the rows
            const QString row = text.left(t.end).trimmed();
            if (row.startsWith(u'"') && (t.tokens.size() != 1 || !t.tokens.first().quoted))
                error(int(m_index) + 1, QStringLiteral("a quoted row must be one quoted text"));
            else
                rows.append(row.startsWith(u'"') ? t.tokens.first().text : row);
        }
    }

    QStringList m_lines;
    qsizetype m_index = 0;
    ScenarioScript m_script;
};

} // namespace

ScenarioScript parseScenario(const QString& source, const QString& fileName)
{
    return Parser(source, fileName).parse();
}

QStringList scenarioSyntax()
{
    QStringList usages;
    for (const CompiledSyntax& s : compiledTable())
        usages << s.usage;
    return usages;
}

} // namespace marlet
