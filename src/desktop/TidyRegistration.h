#pragma once

#include <QString>

namespace marlet {

class Preferences;

// Makes the desktop front end's "Brisling.Tidy" the built-in maintenance component (backup,
// restore and clean-up of the database) with the desktop's dialogs, reading the preference file
// that `preferences` uses. Backups are offered in `backupFolder` first. A host calls it once at
// start-up.
void registerTidyComponent(const Preferences& preferences, const QString& backupFolder);

} // namespace marlet
