#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace marlet {

// Kinds of token in a statement written in the desktop store's dialect.
enum class SqlTokenType {
    Identifier, // a plain name: letters, digits and '_', not starting with a digit
    QuotedIdentifier, // [a name] or "a name": never a keyword
    Keyword, // a reserved word of the dialect, in any case
    Number, // digits with an optional fraction: 60, 5.7
    String, // 'text' with '' standing for one quote
    Placeholder, // {} where a numeric value goes
    Symbol, // = <> < > <= >= + - * / , . ; ( ) &
    End // after the last token
};

struct SqlToken
{
    SqlTokenType type = SqlTokenType::End;
    // Identifier: as written. QuotedIdentifier: the name without its delimiters. Keyword: upper case.
    // Number: as written. String: the content with '' undoubled, placeholders {} left in place.
    // Placeholder: "{}". Symbol: the operator. End: empty.
    QString text;
    qsizetype position = 0; // index of the first character in the statement
    qsizetype length = 0;

    // `word` in upper case, e.g. u"SELECT".
    bool isKeyword(QStringView word) const { return type == SqlTokenType::Keyword && text == word; }
    bool isSymbol(QStringView symbol) const { return type == SqlTokenType::Symbol && text == symbol; }
    bool isName() const { return type == SqlTokenType::Identifier || type == SqlTokenType::QuotedIdentifier; }
};

struct SqlTokenizeResult
{
    QList<SqlToken> tokens; // ends with an End token when ok
    QString error; // empty when the whole text was understood
    qsizetype errorPosition = -1;

    bool ok() const { return error.isEmpty(); }
};

// Splits a statement into tokens. Problems come back in the result with the position where they
// start; the input may be any text at all.
SqlTokenizeResult tokenizeSql(QStringView sql);

// True for the words the dialect reserves (SELECT, FROM, WHERE, ...), in any case. Column names
// such as Time, Type, Print or Option are not among them.
bool isSqlKeyword(QStringView word);

} // namespace marlet
