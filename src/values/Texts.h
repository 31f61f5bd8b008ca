#pragma once

#include <QString>

// The text rules of the form language that the screens were written in, where they differ from
// QString's: positions count from 1, and trimming removes blanks only (not tabs or line breaks).
namespace marlet::values {

QString mid(const QString& text, int start, int length = -1); // "" when start lies beyond the end
int textPosition(const QString& text, const QString& sought); // 1-based position, 0 when absent
int textPosition(int start, const QString& text, const QString& sought);
QString trimBlanks(const QString& text);

// A to Z as a to z, any other code unit as it is: names and switches in ASCII are compared without
// regard to case this way before Qt's folding is asked for the rest.
constexpr char16_t lowerAscii(char16_t code)
{
    return code >= u'A' && code <= u'Z' ? char16_t(code + (u'a' - u'A')) : code;
}

} // namespace marlet::values
