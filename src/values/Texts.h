#pragma once

#include <QString>

// The text rules of the form language that the screens were written in, where they differ from
// QString's: positions count from 1, and trimming removes blanks only (not tabs or line breaks).
namespace marlet::values {

QString mid(const QString& text, int start, int length = -1); // "" when start lies beyond the end
int textPosition(const QString& text, const QString& sought); // 1-based position, 0 when absent
int textPosition(int start, const QString& text, const QString& sought);
QString trimBlanks(const QString& text);

} // namespace marlet::values
