#include "store/Preferences.h"

#include "store/PrivateFiles.h"
#include "values/Texts.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <mutex>
#include <type_traits>

#include <sys/stat.h>

namespace marlet {

namespace {

const QString fileName = QStringLiteral("preferences.ini");
const QString fileHeader = QStringLiteral(
    "; Preferences of this user on this machine: [application/section], then key=value.\n"
    "; Names match without regard to case; \\xHH stands for a character that cannot stand as it is.\n");

// Characters that would end a name early or be taken for the file's own syntax.
bool needsEscape(QChar c, bool inName)
{
    if (c == u'\\' || c.unicode() < 0x20 || c.unicode() == 0x7f)
        return true;
    return inName && (c == u'/' || c == u'=' || c == u'[' || c == u']' || c == u';');
}

QString escaped(const QString& text, bool inName)
{
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        if (c == u'\\')
            out += QLatin1String("\\\\");
        else if (needsEscape(c, inName))
            out += QLatin1String("\\x") + QString::number(c.unicode(), 16).rightJustified(2, u'0');
        else
            out += c;
    }
    return out;
}

QString unescaped(QStringView text)
{
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\' || i + 1 >= text.size()) {
            out += text[i];
        } else if (text[i + 1] == u'\\') {
            out += u'\\';
            ++i;
        } else if (text[i + 1] == u'x' && i + 3 < text.size()) {
            bool ok = false;
            const ushort code = text.mid(i + 2, 2).toUShort(&ok, 16);
            out += ok ? QChar(code) : text[i];
            i += ok ? 3 : 0;
        } else {
            out += text[i];
        }
    }
    return out;
}

// Case folding leaves ASCII other than the capitals as it is, so names in ASCII, as nearly all are,
// fold without a string of their own.
template<typename Character>
char16_t codeOf(Character c)
{
    if constexpr (std::is_same_v<Character, char>)
        return char16_t(uchar(c));
    else
        return QChar(c).unicode();
}

void appendFolded(QString& out, QAnyStringView name)
{
    const qsizetype start = out.size();
    const bool ascii = name.visit([&out, start](auto view) {
        out.resize(start + qsizetype(view.size()));
        char16_t* at = reinterpret_cast<char16_t*>(out.data()) + start;
        for (auto c : view) {
            const char16_t code = codeOf(c);
            if (code >= 0x80)
                return false;
            *at++ = values::lowerAscii(code);
        }
        return true;
    });
    if (!ascii) {
        out.resize(start);
        out += name.toString().toCaseFolded();
    }
}

void foldAddress(QString& out, QAnyStringView application, QAnyStringView section, QAnyStringView key)
{
    out.resize(0);
    appendFolded(out, application);
    out += u'\x1f';
    appendFolded(out, section);
    out += u'\x1f';
    appendFolded(out, key);
}

QString foldedAddress(const QString& application, const QString& section, const QString& key)
{
    QString address;
    foldAddress(address, application, section, key);
    return address;
}

// Saves made by this process to any preference file. A reader that sees the count move looks at its
// file again at once, so that a value saved through one store object is read through another.
std::atomic<std::uint64_t> savesInThisProcess {0};

// How long a look at the file stays good for the reads that follow it. A status call costs about as
// much as a screen's whole report of a ticket, and a screen reads several keys in a row; a write
// by another program that lands within this window reads as if it had landed just after the read.
constexpr std::int64_t LookStaysGoodNanoseconds = 1000000;

// Guards the versions of the files that this process read or wrote, which every store shares.
std::mutex knownVersionsLock;

std::int64_t monotonicNanoseconds()
{
    timespec now {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t(now.tv_sec) * 1000000000 + now.tv_nsec;
}

} // namespace

Preferences::Preferences(const QString& folder)
{
    QString dir = folder;
    if (dir.isEmpty())
        dir = qEnvironmentVariable("MARLET_PREFS");
    if (dir.isEmpty())
        dir = defaultFolder();
    m_path = QDir(dir).filePath(fileName);
    m_nativePath = QFile::encodeName(m_path);
}

QString Preferences::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/marlet");
}

// How long a save waits for another program's lock, and how long after a wait in vain the next
// saves give up at once: a batch saves several keys, and each must not wait again.
constexpr int LockWaitMilliseconds = 2000;
constexpr qint64 LockBackOffMilliseconds = 10000;

bool Preferences::acquire(QLockFile& lock)
{
    const bool backingOff = m_lockRefused.isValid() && m_lockRefused.elapsed() < LockBackOffMilliseconds;
    if (lock.tryLock(backingOff ? 0 : LockWaitMilliseconds)) {
        m_lockRefused.invalidate();
        return true;
    }
    if (!backingOff)
        m_lockRefused.start();
    return false;
}

QString Preferences::GetSetting(
    const QString& application, const QString& section, const QString& key, const QString& defaultValue) const
{
    const QString* value = find(application, section, key);
    return value ? *value : defaultValue;
}

const QString* Preferences::find(QAnyStringView application, QAnyStringView section, QAnyStringView key) const
{
    refresh();
    const qsizetype entry = entryOf(application, section, key);
    return entry < 0 ? nullptr : &m_entries.at(entry).value;
}

qsizetype Preferences::entryOf(QAnyStringView application, QAnyStringView section, QAnyStringView key) const
{
    foldAddress(m_probe, application, section, key);
    return m_index.value(m_probe, -1);
}

const QString* Preferences::findLasting(
    QAnyStringView application, std::string_view section, std::string_view key) const
{
    refresh();
    const auto slot = (std::uintptr_t(section.data()) ^ (std::uintptr_t(key.data()) >> 3)) % m_found.size();
    Found& found = m_found[slot];
    if (found.section != section.data() || found.key != key.data() || found.entriesVersion != m_entriesVersion
        || QAnyStringView::compare(application, found.application) != 0) {
        found = {section.data(),
            key.data(),
            application.toString(),
            entryOf(application,
                QLatin1StringView(section.data(), qsizetype(section.size())),
                QLatin1StringView(key.data(), qsizetype(key.size()))),
            m_entriesVersion};
    }
    return found.entry < 0 ? nullptr : &m_entries.at(found.entry).value;
}

void Preferences::SaveSetting(
    const QString& application, const QString& section, const QString& key, const QString& value)
{
    // The lock keeps two programs that save at the same moment from dropping each other's keys.
    QLockFile lock(m_path + QStringLiteral(".lock"));
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    if (!acquire(lock)) {
        qint64 holder = 0;
        QString host;
        QString program;
        lock.getLockInfo(&holder, &host, &program);
        reload();
        put({application, section, key, value});
        m_lastError = QStringLiteral("The preference file '%1' is locked by another program (%2, process %3); %4 was "
                                     "not saved to it.")
                          .arg(m_path, program.isEmpty() ? QStringLiteral("unknown") : program)
                          .arg(holder)
                          .arg(key);
        return;
    }
    reload();
    const auto found = m_index.constFind(foldedAddress(application, section, key));
    if (found != m_index.constEnd() && m_entries.at(*found).value == value)
        return;
    put({application, section, key, value});
    if (write())
        m_lastError.clear();
}

Preferences::FileStamp Preferences::currentStamp() const
{
    // Every save replaces the file, so the inode tells a new version even
    // when the clock's granularity gives two versions the same modification time.
    struct stat status = {};
    if (::stat(m_nativePath.constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return {true,
            std::uint64_t(status.st_ino),
            std::int64_t(status.st_size),
            std::int64_t(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec};
}

void Preferences::refresh() const
{
    const std::uint64_t saves = savesInThisProcess.load(std::memory_order_acquire);
    const std::int64_t now = monotonicNanoseconds();
    if (m_lookedAt >= 0 && saves == m_savesSeen && now - m_lookedAt < LookStaysGoodNanoseconds)
        return;
    m_savesSeen = saves;
    m_lookedAt = now;
    reload();
}

void Preferences::reload() const
{
    const FileStamp stamp = currentStamp();
    if (stamp == m_stamp)
        return;
    m_stamp = stamp;
    if (takeKnownVersion())
        return;
    load();
    shareVersion();
}

QHash<QString, Preferences::KnownVersion>& Preferences::knownVersions()
{
    static QHash<QString, KnownVersion> versions;
    return versions;
}

bool Preferences::takeKnownVersion() const
{
    const std::lock_guard guard(knownVersionsLock);
    const auto& versions = knownVersions();
    const auto known = versions.constFind(m_path);
    if (known == versions.constEnd() || known->stamp != m_stamp)
        return false;
    m_entries = known->entries;
    m_index = known->index;
    ++m_entriesVersion;
    return true;
}

void Preferences::shareVersion() const
{
    const std::lock_guard guard(knownVersionsLock);
    knownVersions().insert(m_path, {m_stamp, m_entries, m_index});
}

void Preferences::load() const
{
    m_entries.clear();
    m_index.clear();
    ++m_entriesVersion;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    QString application;
    QString section;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString& line : lines) {
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            const QStringView address = QStringView(line).mid(1, line.size() - 2);
            const qsizetype slash = address.indexOf(u'/');
            application = unescaped(address.left(slash < 0 ? address.size() : slash));
            section = slash < 0 ? QString() : unescaped(address.mid(slash + 1));
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (line.startsWith(u';') || equals < 0)
            continue;
        put({application,
            section,
            unescaped(QStringView(line).left(equals)),
            unescaped(QStringView(line).mid(equals + 1))});
    }
}

void Preferences::put(const Entry& entry) const
{
    const QString address = foldedAddress(entry.application, entry.section, entry.key);
    const auto found = m_index.constFind(address);
    if (found != m_index.constEnd()) {
        m_entries[*found].value = entry.value;
        return;
    }
    m_index.insert(address, m_entries.size());
    m_entries.append(entry);
    ++m_entriesVersion;
}

bool Preferences::write()
{
    // Entries are grouped under the first spelling of their application and section.
    QList<QString> groups;
    QHash<QString, QString> groupText;
    for (const Entry& entry : std::as_const(m_entries)) {
        const QString group = entry.application.toCaseFolded() + u'\x1f' + entry.section.toCaseFolded();
        if (!groupText.contains(group)) {
            groups.append(group);
            groupText.insert(
                group, u'[' + escaped(entry.application, true) + u'/' + escaped(entry.section, true) + u"]\n");
        }
        groupText[group] += escaped(entry.key, true) + u'=' + escaped(entry.value, false) + u'\n';
    }
    QString text = fileHeader;
    for (const QString& group : std::as_const(groups))
        text += groupText.value(group);

    // A new file is made private first: the saving keeps the permissions of the file it replaces.
    if (QFile placeholder(m_path); !placeholder.exists() && openPrivate(placeholder, QIODevice::WriteOnly))
        placeholder.close();
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit()) {
        m_lastError = file.errorString();
        return false;
    }
    m_stamp = currentStamp();
    shareVersion();
    savesInThisProcess.fetch_add(1, std::memory_order_release);
    return true;
}

} // namespace marlet
