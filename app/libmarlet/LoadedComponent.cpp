#include "LoadedComponent.h"

#include "platform/TerminalPlatform.h"

#include <cstdio>

#ifdef MARLET_WITH_DESKTOP
#include "desktop/QtPlatform.h"
#endif

namespace {

// The desktop when the application object can show widgets and the host did not ask for the
// terminal, the terminal otherwise.
std::unique_ptr<marlet::Platform> makePlatform(bool headless, QTextStream& input, QTextStream& output)
{
#ifdef MARLET_WITH_DESKTOP
    if (!headless && marlet::library::ApplicationScope::hasWidgets())
        return std::make_unique<marlet::QtPlatform>();
#else
    Q_UNUSED(headless);
#endif
    return std::make_unique<marlet::TerminalPlatform>(input, output);
}

} // namespace

marlet_component::marlet_component(const QString& preferencesFolder, const QString& applicationFolder, bool headless)
    : application(!headless)
    , input(stdin)
    , output(stdout)
    , platform(makePlatform(headless, input, output))
    , component(*platform, preferencesFolder, applicationFolder)
{
}
