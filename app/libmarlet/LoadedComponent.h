#pragma once

#include "ApplicationScope.h"

#include "component/Component.h"
#include "platform/Platform.h"

#include <QString>

#include <memory>

// What a marlet_component handle points to: the application object it relies on, the platform its
// screens show on, and the component itself. Members are destroyed in reverse order, so the
// application object outlives everything that uses it.
struct marlet_component
{
    marlet_component(const QString& preferencesFolder, const QString& applicationFolder, bool headless);

    marlet::library::ApplicationScope application;
    std::unique_ptr<marlet::Platform> platform;
    marlet::Component component;
};
