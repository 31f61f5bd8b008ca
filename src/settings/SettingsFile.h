#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace marlet {

class Connection;
class Preferences;
class SessionPreferences;

// The settings file, Settings.Sav: the settings of this machine and the restriction and Quick-Ticket
// lists, one record a line, each line scrambled into digits by ScrambleLine. It carries settings
// over a reinstallation or to another server. Writer and reader do not agree on every key: what
// the writer spells differently, or writes without its separator, is not restored; the POS records
// are written and never read back.
namespace settingsfile {

inline const QString FileName = QStringLiteral("Settings.Sav");
// A file larger than this is no settings file; it is refused before anything is changed.
constexpr qint64 MaxFileSize = 32 * 1024 * 1024;

// The file in the application's folder.
QString defaultPath(const QString& applicationFolder);

// The 135 fixed records, before scrambling, in the file's order. The preferences are read under
// the session's title, except the POS records and QuickTicket, read under the product word.
QStringList fixedRecords(const SessionPreferences& preferences, int maxComputers);
// One record per row of the lists: Quick-Ticket types, the excluded and the reserved machines, the
// captions, the allowed and then the forbidden programs. An empty or unreadable list gives none.
QStringList listRecords(Connection& connection);
// The records scrambled, one line each, as the file holds them.
QByteArray fileContent(const QStringList& records);
// Writes the content in place of the file; the old file stays whole when the writing fails. The
// reason of a failure, or empty.
QString writeFile(const QString& path, const QByteArray& content);

// The lines of a file as they are read: each line split into comma-delimited fields, blanks
// around a field and the quotes around a quoted field taken off. Empty fields are left out.
QStringList readFields(const QByteArray& content);

// What a load did.
struct LoadResult
{
    int applied = 0; // records stored or inserted
    int skipped = 0; // records garbled, short, of no kind that is read, or refused by the store
};

// Applies the file's content: the allowed and forbidden programs are emptied first; then record by
// record, the O, C and S records become preferences of sections Option, COption and Settings under
// `appTitle`, and the I records rows of the lists. A list that has a record in the file is emptied
// at its first record; one without keeps its rows. A record that cannot be applied is skipped.
LoadResult load(const QByteArray& content, Preferences& store, const QString& appTitle, Connection& connection);

} // namespace settingsfile

} // namespace marlet
