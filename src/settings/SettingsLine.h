#pragma once

#include <QString>

#include <optional>

namespace marlet {

// The scrambling of one line of the settings file, which leaves only decimal digits in the file.
// The text is reversed; then each character, taken by its code in the single-byte code page
// (Latin-1 here; a character beyond it counts as "?"), becomes three digits: the code plus 501,
// written in decimal with its digits reversed ("A", code 65, gives 566 and so "665").
QString ScrambleLine(const QString& text);

// The way back: the digits in groups of three from the left, each reversed and read as a number,
// less 501, taken as a character code; the characters joined and the whole reversed. A line that
// is not groups of three digits each giving a code from 0 to 255 is garbled: none.
std::optional<QString> UnscrambleLine(const QString& digits);

} // namespace marlet
