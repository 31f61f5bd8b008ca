#pragma once

#include "values/Numbers.h"

#include <QString>

#include <optional>

namespace marlet {

// A stored check value that a check box can show: 0, 1 or 2. Any other text gives none, and the
// box stays as it stands.
inline std::optional<int> checkValueOf(const QString& stored)
{
    const std::optional<qint16> value = values::toInt16(stored);
    if (value && *value >= 0 && *value <= 2)
        return *value;
    return std::nullopt;
}

} // namespace marlet
