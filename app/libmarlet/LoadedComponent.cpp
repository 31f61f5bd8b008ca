#include "LoadedComponent.h"

#include "platform/TerminalPlatform.h"

#include <QTextStream>

#include <cstdio>

#ifdef MARLET_WITH_DESKTOP
#include "desktop/QtPlatform.h"
#include "desktop/ReportComponent.h"
#include "desktop/TidyRegistration.h"
#endif

namespace {

// The process has one terminal: components on it share its streams, so that what one stream has
// read ahead of standard input is not lost to the others.
QTextStream& terminalInput()
{
    static QTextStream stream(stdin);
    return stream;
}

QTextStream& terminalOutput()
{
    static QTextStream stream(stdout);
    return stream;
}

// The desktop when the application object can show widgets and the host did not ask for the
// terminal, the terminal otherwise.
std::unique_ptr<marlet::Platform> makePlatform(bool headless)
{
#ifdef MARLET_WITH_DESKTOP
    if (!headless && marlet::library::ApplicationScope::hasWidgets())
        return std::make_unique<marlet::QtPlatform>();
#else
    Q_UNUSED(headless);
#endif
    return std::make_unique<marlet::TerminalPlatform>(terminalInput(), terminalOutput());
}

} // namespace

marlet_component::marlet_component(const QString& preferencesFolder, const QString& applicationFolder, bool headless)
    : application(!headless)
    , platform(makePlatform(headless))
    , component(*platform, preferencesFolder, applicationFolder)
{
#ifdef MARLET_WITH_DESKTOP
    marlet::registerReportComponent(component.preferences());
    marlet::registerTidyComponent(component.preferences(), component.session().applicationFolder());
#endif
}
