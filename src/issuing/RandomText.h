#pragma once

#include <QChar>
#include <QString>

#include <functional>

namespace marlet {

class SessionPreferences;

// A source of uniform numbers from 0 up to but not including 1.
using UniformSource = std::function<double()>;

// The operating system's cryptographically secure generator. It needs no seeding, so two calls
// in the same instant do not repeat each other.
UniformSource systemUniformSource();

// The character sets of generated ticket text, chosen by the preference PassGenType.
enum class TicketAlphabet {
    Digits, // 1: "0" to "9"
    Letters, // 2: "A" to "Z"
    Clear, // any other value (the settings screen writes 3): "2" to "9" and "A" to "Z" without
           // "I" and "O", which look like 1 and 0 on a printed ticket
};

// The alphabet of a PassGenType value read as an integer. A value that is no number, or too large
// for a 16-bit integer, fails that conversion and leaves the type at 0, which means the third set.
TicketAlphabet ticketAlphabet(const QString& passGenType);
TicketAlphabet ticketAlphabet(const SessionPreferences& preferences);

// Whether a drawn character code belongs to the alphabet.
bool acceptsCode(TicketAlphabet alphabet, int code);

// One character: codes are drawn as the whole part of u x 255 (so 0 to 254) and drawn again until
// one passes the alphabet's filter. Rejection keeps every character of the alphabet equally likely.
// The draws go on without a limit; a uniform source ends them quickly.
QChar drawCharacter(TicketAlphabet alphabet, const UniformSource& source);

// `Length` characters of the alphabet that PassGenType (section Option under the host's title)
// names, read at each call. Nothing for a length of 0 or below. It is the only generator of ticket
// text; only batch generation calls it.
QString Random(const SessionPreferences& preferences, int Length, const UniformSource& source = systemUniformSource());

} // namespace marlet
