#pragma once

#include <QFile>

namespace marlet {

// The database, the preference file and the ticket pages hold passwords: a file of theirs is
// created readable and writable by its owner only (the umask may take away more, never add).
inline const QFile::Permissions PrivateFile = QFile::ReadOwner | QFile::WriteOwner;

// Opens the file with the mode; when the open creates it, it is created private. An existing file
// keeps its permissions.
inline bool openPrivate(QFile& file, QIODevice::OpenMode mode)
{
    return file.open(mode, PrivateFile);
}

} // namespace marlet
