#pragma once

#include <QAnyStringView>
#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QString>

#include <array>
#include <cstdint>
#include <string_view>

class QLockFile;

namespace marlet {

// The per-user, per-machine store of named text values, addressed by application, section and key.
//
// Application, section and key match without regard to case: "MovetoRecycle" written and
// "MoveToRecycle" read are one value. The file keeps the spelling in which a name was first
// written, so that it stays readable. Reading never fails: an absent key, a missing or unreadable
// file all give the caller's default. Nothing ever deletes a key.
//
// The values live in one file, preferences.ini, in a folder chosen in this order: the folder given
// to the constructor (the host's --prefs), the environment variable MARLET_PREFS, and otherwise
// the folder "marlet" in the user's configuration location. Reads come from memory; the file is
// read again when it changed on disk, since other programs of the system write keys too. A version
// of the file that this process already read or wrote is not read again by a new store object.
// Whether it changed is looked at no more than once a millisecond, and at once after a save in this
// process. Every write replaces the file atomically and is synced to disk before SaveSetting
// returns.
class Preferences
{
public:
    explicit Preferences(const QString& folder = {});

    QString GetSetting(
        const QString& application, const QString& section, const QString& key, const QString& defaultValue) const;
    // The stored value, or null when the key has none; the file is read again when it changed.
    const QString* find(QAnyStringView application, QAnyStringView section, QAnyStringView key) const;
    // The same for a section and key in Latin-1 that stay put as long as the program runs, such as
    // a key catalogue's: where each such key was found is remembered, and found again without
    // folding and hashing its address.
    const QString* findLasting(QAnyStringView application, std::string_view section, std::string_view key) const;
    void SaveSetting(const QString& application, const QString& section, const QString& key, const QString& value);

    QString filePath() const { return m_path; }
    // Why the last write could not reach the disk, or empty: the file could not be written, or
    // another program held its lock for longer than a save waits. The value is kept in memory anyway.
    QString lastError() const { return m_lastError; }

    static QString defaultFolder();

private:
    struct Entry
    {
        QString application;
        QString section;
        QString key;
        QString value;
    };
    // What identifies one version of the file on disk.
    struct FileStamp
    {
        bool exists = false;
        std::uint64_t inode = 0;
        std::int64_t size = 0;
        std::int64_t modified = 0; // nanoseconds
        bool operator==(const FileStamp&) const = default;
    };

    FileStamp currentStamp() const;
    // Looks at the file unless a look of the last millisecond is still good; reload() looks always.
    void refresh() const;
    void reload() const;
    void load() const;
    // Takes the entries of the file's version in m_stamp from what this process last read or wrote
    // of it, if that was this version; false when the file must be read.
    bool takeKnownVersion() const;
    void shareVersion() const;
    bool write();
    void put(const Entry& entry) const;
    // The entry's position in m_entries, -1 when there is none.
    qsizetype entryOf(QAnyStringView application, QAnyStringView section, QAnyStringView key) const;
    bool acquire(QLockFile& lock);

    QString m_path;
    QByteArray m_nativePath; // m_path as the status call takes it
    QString m_lastError;
    // Started when a save gave up waiting for another program's lock.
    QElapsedTimer m_lockRefused;
    mutable FileStamp m_stamp;
    mutable std::int64_t m_lookedAt = -1; // monotonic nanoseconds of the last look, -1 before it
    mutable std::uint64_t m_savesSeen = 0; // this process's save count at that look
    mutable QList<Entry> m_entries; // in file order
    mutable QHash<QString, qsizetype> m_index; // folded address -> position in m_entries
    mutable QString m_probe; // the folded address of the last lookup, kept for its capacity
    // Where findLasting found a key: by the places of its section and key texts, for the
    // application it was asked under, while the entries are as they were then.
    struct Found
    {
        const char* section = nullptr;
        const char* key = nullptr;
        QString application;
        qsizetype entry = -1; // -1: the key has no value
        std::uint64_t entriesVersion = 0;
    };
    mutable std::array<Found, 64> m_found;
    mutable std::uint64_t m_entriesVersion = 1; // moves when entries are read anew or added

    // A version of a file as read or written in this process. Every session makes its own store,
    // and most find the file as the last one left it.
    struct KnownVersion
    {
        FileStamp stamp;
        QList<Entry> entries;
        QHash<QString, qsizetype> index;
    };
    // The last version of each file, by path.
    static QHash<QString, KnownVersion>& knownVersions();
};

} // namespace marlet
