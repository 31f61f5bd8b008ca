#pragma once

#include <QLatin1StringView>
#include <QString>

namespace marlet {

// The product word: the application name that some preference keys are read or written under
// instead of the host's title, and the start of every message box title.
inline constexpr QLatin1StringView ProductWord {"Norvantis"};

// Text of every message box title: the product word and the component's version, "Norvantis v2.3.1".
QString MessageTitle();

} // namespace marlet
