#pragma once

#include <QString>

namespace marlet::host {

class HostOptions;

// The database the command works on: --db, else $MARLET_DB, else cafe.db in the data folder
// (--app-dir, $MARLET_APP_DIR or ~/.local/share/marlet).
QString databaseOf(const HostOptions& options);

} // namespace marlet::host
