#pragma once

#include <QString>
#include <QVariant>
#include <QVariantList>

namespace marlet {

// A statement as the screens write it, with its values kept apart from the text.
//
// The pattern is written in the desktop store's dialect with {} where a value goes:
//   Statement(u"Select * from Users where Username = '{}' and Password = '{}'"_s, {name, entry})
//   Statement(u"select * from Account where member=false and Time = {}"_s, {minutes * 60})
// A {} inside a quoted literal takes a value as text, and the whole literal ('{}%', '%{}%')
// becomes one bound parameter. A {} outside quotes takes a number: an integer, a floating-point
// value, a boolean (-1 or 0) or a text that is a plain decimal number such as "-5.7". Values are
// bound when the statement is translated (SqlTranslator) and never become part of the executed text.
//
// Values are never escaped. As in the desktop store, where the value would have ended the literal
// early, a text value holding a quote makes the statement fail with
// "Syntax error in string in query expression '<the literal with its values>'.", and a number place
// given anything else fails with "Syntax error in number in query expression '<value>'.".
class Statement
{
public:
    // Implicit, so that a statement without values can be passed as plain text.
    Statement(const QString& pattern);
    Statement(QString pattern, QVariantList values);

    const QString& pattern() const { return m_pattern; }
    const QVariantList& values() const { return m_values; }

    // The pattern with each {} replaced by its value's text, in order, for messages and logs.
    // A {} without a value stays as it is; surplus values are left out.
    QString text() const;

    // How a value reads when joined into statement text: booleans as True/False, Null as nothing,
    // numbers in their shortest form.
    static QString valueText(const QVariant& value);

private:
    QString m_pattern;
    QVariantList m_values;
};

} // namespace marlet
