#include "ApplicationScope.h"

#include <QCoreApplication>

#include <memory>

#ifdef MARLET_WITH_DESKTOP
#include <QApplication>
#endif

namespace marlet::library {

namespace {

// Qt keeps references to argc and argv for the life of the application object.
int applicationArgc = 1;
char applicationName[] = "marlet";
char* applicationArgv[] = {applicationName, nullptr};

int liveScopes = 0;
std::unique_ptr<QCoreApplication> ownApplication;

#ifdef MARLET_WITH_DESKTOP
bool displayPresent()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
           || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}
#endif

std::unique_ptr<QCoreApplication> makeApplication(bool wantDesktop)
{
#ifdef MARLET_WITH_DESKTOP
    if (wantDesktop && displayPresent())
        return std::make_unique<QApplication>(applicationArgc, applicationArgv);
#else
    Q_UNUSED(wantDesktop);
#endif
    return std::make_unique<QCoreApplication>(applicationArgc, applicationArgv);
}

} // namespace

ApplicationScope::ApplicationScope(bool wantDesktop)
{
    if (!QCoreApplication::instance())
        ownApplication = makeApplication(wantDesktop);
    ++liveScopes;
}

ApplicationScope::~ApplicationScope()
{
    if (--liveScopes == 0)
        ownApplication.reset();
}

bool ApplicationScope::hasWidgets()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application && application->inherits("QApplication");
}

} // namespace marlet::library
