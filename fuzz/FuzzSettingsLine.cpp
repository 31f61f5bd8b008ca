// libFuzzer entry for the scrambling of the settings file's lines. The input is read as a line of
// the file: it must unscramble to a text whose scrambling gives the line back, or be garbled. It is
// also read as a text to write: scrambling must give three digits a character, and unscrambling
// must give the text back with the characters beyond the code page as "?".

#include "settings/SettingsLine.h"

#include "FuzzCheck.h"

#include <QString>

#include <cstdint>

using marlet::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));

    if (const std::optional<QString> text = marlet::UnscrambleLine(input)) {
        require(text->size() * 3 == input.size());
        require(marlet::ScrambleLine(*text) == input);
    }

    const QString digits = marlet::ScrambleLine(input);
    require(digits.size() == input.size() * 3);
    for (const QChar digit : digits)
        require(digit >= u'0' && digit <= u'9');
    const std::optional<QString> back = marlet::UnscrambleLine(digits);
    require(back.has_value() && back->size() == input.size());
    for (qsizetype i = 0; i < input.size(); ++i)
        require(back->at(i) == (input.at(i).unicode() <= 0xff ? input.at(i) : QChar(u'?')));
    return 0;
}
