#pragma once

#include "component/Component.h"
#include "desktop/QtPlatform.h"
#include "store/Recordset.h"
#include "support/ScreenDriver.h"
#include "support/StoreTestDatabase.h"

#include <QTemporaryDir>

#include <span>

namespace marlet::test {

// A café on the real desktop for one test: a temporary database and preference store, the host's
// component over the Qt platform, and a driver that plays the operator while an entry operation
// shows its windows.
struct DesktopCafe
{
    QTemporaryDir folder;
    StoreTestDatabase database;
    QtPlatform platform;
    Component component {platform, folder.filePath(latin("prefs")), folder.filePath(latin("app"))};
    ScreenDriver driver;

    // Runs the statements in turn; false at the first that fails.
    bool execute(std::span<const char* const> statements)
    {
        for (const char* statement : statements) {
            if (!database.connection().Execute(Statement(latin(statement))))
                return false;
        }
        return true;
    }

    // The first column of every row the select gives, or why it could not be read.
    QStringList column(const QString& select)
    {
        Recordset rows;
        QStringList values;
        if (!rows.Open(Statement(select), database.connection()))
            return {latin("cannot read: ") + rows.lastError()};
        for (; !rows.Eof(); rows.MoveNext())
            values << rows.value(0).toString();
        return values;
    }
};

} // namespace marlet::test
