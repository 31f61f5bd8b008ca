#pragma once

#include <QString>

namespace marlet {

// Why the connection string names no database the screens can work on, or empty when it does: a
// string that names no store, a missing file, a folder, a file that is not a database, a damaged
// database (SQLite's quick check), or a database without the component's tables. Reads only.
QString databaseProblem(const QString& connectionString);

} // namespace marlet
