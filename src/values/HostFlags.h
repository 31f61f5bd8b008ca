#pragma once

#include <QtGlobal>

namespace marlet {

// Boolean flags as the host exchanges them and the session keeps them: -1 true, 0 false; any
// non-zero value counts as true.
constexpr qint16 flag(bool value)
{
    return value ? qint16(-1) : qint16(0);
}
constexpr bool isSet(qint16 flagValue)
{
    return flagValue != 0;
}

} // namespace marlet
