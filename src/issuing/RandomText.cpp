#include "issuing/RandomText.h"

#include "store/PreferenceKeys.h"
#include "values/Numbers.h"

#include <QRandomGenerator>

#include <cmath>

namespace marlet {

UniformSource systemUniformSource()
{
    // A call to the secure generator can cost more than the rest of a ticket's making (the
    // processor's own generator is slow in a virtual machine), and a draw needs far fewer than its
    // 64 bits. So each call feeds eight draws of one byte k, giving k / 256: uniform from 0 up to
    // but not including 1, and times 255 with the fraction dropped it hits each code from 1 to 254
    // exactly once, so every alphabet stays even.
    return [bits = quint64(0), left = 0]() mutable {
        if (left == 0) {
            bits = QRandomGenerator::system()->generate64();
            left = 8;
        }
        const double u = double(bits & 0xff) / 256.0;
        bits >>= 8;
        --left;
        return u;
    };
}

TicketAlphabet ticketAlphabet(const QString& passGenType)
{
    switch (values::toInt16(passGenType).value_or(0)) {
    case 1:
        return TicketAlphabet::Digits;
    case 2:
        return TicketAlphabet::Letters;
    default:
        return TicketAlphabet::Clear;
    }
}

TicketAlphabet ticketAlphabet(const SessionPreferences& preferences)
{
    return ticketAlphabet(preferences.text(keys::PassGenType));
}

bool acceptsCode(TicketAlphabet alphabet, int code)
{
    const bool digit = code >= '0' && code <= '9';
    const bool letter = code >= 'A' && code <= 'Z';
    switch (alphabet) {
    case TicketAlphabet::Digits:
        return digit;
    case TicketAlphabet::Letters:
        return letter;
    case TicketAlphabet::Clear:
        return (digit && code >= '2') || (letter && code != 'I' && code != 'O');
    }
    return false;
}

QChar drawCharacter(TicketAlphabet alphabet, const UniformSource& source)
{
    for (;;) {
        const int code = int(std::floor(source() * 255));
        if (acceptsCode(alphabet, code))
            return QChar(char16_t(code));
    }
}

QString Random(const SessionPreferences& preferences, int Length, const UniformSource& source)
{
    const TicketAlphabet alphabet = ticketAlphabet(preferences);
    QString text;
    for (int i = 0; i < Length; ++i)
        text += drawCharacter(alphabet, source);
    return text;
}

} // namespace marlet
