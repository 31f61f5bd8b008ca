#pragma once

#include "component/Component.h"
#include "platform/Form.h"
#include "script/ScriptedPlatform.h"
#include "support/StoreTestDatabase.h"

#include <QTemporaryDir>

#include <memory>

namespace marlet::test {

// One screen of a café on the scripted platform, for the unit tests of a screen: a temporary
// database and preference store, the host's component with its session open on the database,
// and the screen once opened.
struct ScriptedCafe
{
    QTemporaryDir folder;
    StoreTestDatabase database;
    ScriptedPlatform platform;
    Component component {platform, folder.filePath(QStringLiteral("prefs")), folder.filePath(QStringLiteral("app"))};
    std::unique_ptr<Form> screen;

    Session& session() { return component.session(); }

    // Opens the session on the database; empty when all is ready, else why not.
    QString prepare()
    {
        if (!database.isValid())
            return database.error();
        component.session().general.AppTitle = QStringLiteral("Norvantis");
        if (!component.session().connection().Open(database.connectionString()))
            return component.session().connection().lastError();
        return {};
    }

    // Builds, loads and activates the screen, as the host shows it.
    Form& open(Screen which)
    {
        screen = component.screens().create(which);
        screen->load();
        screen->activate();
        return *screen;
    }

    Control& control(const char* name) { return (*screen)[QLatin1String(name)]; }

    // Closes the screen and ends the script; returns what the platform found unexpected.
    QStringList finish()
    {
        if (screen)
            screen->forceUnload();
        screen.reset();
        platform.finish();
        return platform.failures();
    }
};

} // namespace marlet::test
