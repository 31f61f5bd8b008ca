#include "DatabaseOption.h"

#include "HostOptions.h"

#include "component/Component.h"

namespace marlet::host {

QString databaseOf(const HostOptions& options)
{
    QString db = options.value(QStringLiteral("db"), qEnvironmentVariable("MARLET_DB"));
    if (db.isEmpty())
        db = options.value(QStringLiteral("app-dir"), Component::defaultApplicationFolder())
            + QStringLiteral("/cafe.db");
    return db;
}

} // namespace marlet::host
