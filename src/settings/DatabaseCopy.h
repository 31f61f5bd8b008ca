#pragma once

#include <QString>

namespace marlet {

class Connection;

// Whole-database copies of the store a connection is open on. An SQLite store is copied with
// SQLite's online backup: the copy is one consistent state of the database, taken while other
// programs go on writing. A server store (PostgreSQL) is copied table by table into the same kind
// of SQLite file, and restored from one in a single transaction, so a backup of either store
// restores into either.
namespace databasecopy {

// The reason a copy failed; empty when it went through.
using Error = QString;

// Writes the connection's database to `path`. The copy goes to a scratch file beside `path`
// first, is checked (PRAGMA integrity_check), and only then takes the name, so that a failed
// backup never spoils an older one of the same name. The copy is a single file (no write-ahead
// log of its own).
Error backup(Connection& connection, const QString& path);

// Whether `path` holds an intact database with the tables of this component; the reason if not.
Error checkBackup(const QString& path);

// Replaces the connection's database with the backup in `path`, after checking it. The
// connection stays open on the restored database. Other programs that hold the database open see
// the restored state at their next statement.
Error restore(Connection& connection, const QString& path);

// The file of the connection's database, or an empty text for a store that is no SQLite file.
QString databaseFile(const Connection& connection);

} // namespace databasecopy

} // namespace marlet
