#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// One folder of code: where it lies, the prefix others include its headers under, and the prefixes
// it may include itself. The build writes these from the libraries each folder's target links.
struct LayerFolder
{
    QString directory;
    QString prefix;
    QSet<QString> allowed;
};

QList<LayerFolder> readLayers(const QString& path)
{
    QList<LayerFolder> folders;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return folders;
    for (const QByteArray& raw : file.readAll().split('\n')) {
        const QStringList parts = QString::fromUtf8(raw).split(u'|');
        if (parts.size() != 3)
            continue;
        const QStringList allowed = parts[2].split(u' ', Qt::SkipEmptyParts);
        folders.append({parts[0], parts[1], QSet<QString>(allowed.begin(), allowed.end())});
    }
    return folders;
}

// Every include of a project header must name a folder of the layers, and one that the including
// folder's library links. Local includes ("Header.h") and system headers are not looked at.
QStringList includeViolations(const QString& root, const QList<LayerFolder>& folders)
{
    static const QRegularExpression include(uR"(^\s*#\s*include\s*"([^"/]+)/[^"]*")"_s);
    QSet<QString> known;
    for (const LayerFolder& folder : folders) {
        if (!folder.prefix.isEmpty())
            known.insert(folder.prefix);
    }
    QStringList violations;
    for (const LayerFolder& folder : folders) {
        QDirIterator files(
            QDir(root).filePath(folder.directory), {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
                violations.append(path + u": cannot be read"_s);
                continue;
            }
            const QString shown = QDir(root).relativeFilePath(path);
            int lineNumber = 0;
            for (const QByteArray& line : file.readAll().split('\n')) {
                ++lineNumber;
                const QRegularExpressionMatch match = include.match(QString::fromUtf8(line));
                if (!match.hasMatch())
                    continue;
                const QString used = match.captured(1);
                const QString where = shown + u':' + QString::number(lineNumber) + u": "_s;
                if (!known.contains(used))
                    violations.append(where + u"includes from \""_s + used + u"\", which is no folder of the layers"_s);
                else if (!folder.allowed.contains(used))
                    violations.append(where + u"includes from \""_s + used + u"\", which its library does not link"_s);
            }
        }
    }
    return violations;
}

// Two folders that may each include the other stand in no order at all.
QStringList cycleViolations(const QList<LayerFolder>& folders)
{
    QHash<QString, QSet<QString>> allowedByPrefix;
    for (const LayerFolder& folder : folders) {
        if (!folder.prefix.isEmpty())
            allowedByPrefix.insert(folder.prefix, folder.allowed);
    }
    QStringList violations;
    for (auto it = allowedByPrefix.constBegin(); it != allowedByPrefix.constEnd(); ++it) {
        for (const QString& other : it.value()) {
            if (other != it.key() && allowedByPrefix.value(other).contains(it.key()) && it.key() < other)
                violations.append(it.key() + u" and "_s + other + u" use each other"_s);
        }
    }
    return violations;
}

// A folder of src/ whose code belongs to no library of the layers.
QStringList foldersOutsideTheLayers(const QString& root, const QList<LayerFolder>& folders)
{
    QSet<QString> registered;
    for (const LayerFolder& folder : folders)
        registered.insert(folder.directory);
    QStringList outside;
    const QDir sources(QDir(root).filePath(u"src"_s));
    for (const QString& name : sources.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (!registered.contains(u"src/"_s + name))
            outside.append(u"src/"_s + name);
    }
    return outside;
}

void writeFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(content);
}

} // namespace

// The code's folders depend downward only: this check fails on any include that runs upward or
// sideways, that is, on a header of a folder whose library the including folder does not link.
class TestLayers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void testEveryIncludeRunsDownward();
    void testNoTwoFoldersUseEachOther();
    void testEveryFolderOfSourcesHasItsLibrary();
    void testTheLowerFoldersStayBelowTheScreens_data();
    void testTheLowerFoldersStayBelowTheScreens();
    void testAnUpwardIncludeIsReported();
    void testAnIncludeOfAnUnknownFolderIsReported();
    void testFoldersThatUseEachOtherAreReported();

private:
    QString m_root;
    QList<LayerFolder> m_folders;
};

void TestLayers::initTestCase()
{
    m_root = qEnvironmentVariable("MARLET_SOURCE_ROOT");
    m_folders = readLayers(qEnvironmentVariable("MARLET_LAYERS"));
    QVERIFY2(!m_root.isEmpty(), "MARLET_SOURCE_ROOT names the project's folder");
    QVERIFY2(m_folders.size() >= 10, "the build wrote the layers of every folder");
}

void TestLayers::testEveryIncludeRunsDownward()
{
    const QStringList violations = includeViolations(m_root, m_folders);
    QVERIFY2(violations.isEmpty(), qPrintable(violations.join(u'\n')));
}

void TestLayers::testNoTwoFoldersUseEachOther()
{
    const QStringList violations = cycleViolations(m_folders);
    QVERIFY2(violations.isEmpty(), qPrintable(violations.join(u'\n')));
}

void TestLayers::testEveryFolderOfSourcesHasItsLibrary()
{
    const QStringList outside = foldersOutsideTheLayers(m_root, m_folders);
    QVERIFY2(outside.isEmpty(), qPrintable(outside.join(u'\n')));
}

void TestLayers::testTheLowerFoldersStayBelowTheScreens_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("above");

    QTest::newRow("the values use nothing of the store") << u"values"_s << u"store"_s;
    QTest::newRow("the store uses nothing of the platform") << u"store"_s << u"platform"_s;
    QTest::newRow("the platform uses nothing of the session") << u"platform"_s << u"session"_s;
    QTest::newRow("the session uses no work of a subsystem") << u"session"_s << u"printing"_s;
    QTest::newRow("printing uses nothing of issuing") << u"printing"_s << u"issuing"_s;
    QTest::newRow("issuing uses nothing of the inventory") << u"issuing"_s << u"inventory"_s;
    QTest::newRow("the inventory uses no screen") << u"inventory"_s << u"screens"_s;
    QTest::newRow("the screens use nothing of the component") << u"screens"_s << u"component"_s;
    QTest::newRow("the component uses no test double") << u"component"_s << u"script"_s;
}

void TestLayers::testTheLowerFoldersStayBelowTheScreens()
{
    QFETCH(QString, folder);
    QFETCH(QString, above);
    for (const LayerFolder& layer : std::as_const(m_folders)) {
        if (layer.prefix == folder) {
            QVERIFY2(!layer.allowed.contains(above), qPrintable(folder + u" links "_s + above));
            return;
        }
    }
    QFAIL(qPrintable(u"no folder "_s + folder));
}

void TestLayers::testAnUpwardIncludeIsReported()
{
    QTemporaryDir root;
    writeFile(root.filePath(u"src/low/Low.h"_s), "#pragma once\n#include \"low/Other.h\"\n#include \"high/High.h\"\n");
    writeFile(root.filePath(u"src/high/High.h"_s), "#pragma once\n#include \"low/Low.h\"\n#include <QString>\n");
    const QList<LayerFolder> folders
        = {{u"src/low"_s, u"low"_s, {u"low"_s}}, {u"src/high"_s, u"high"_s, {u"high"_s, u"low"_s}}};
    const QStringList violations = includeViolations(root.path(), folders);
    QCOMPARE(violations, QStringList {u"src/low/Low.h:3: includes from \"high\", which its library does not link"_s});
}

void TestLayers::testAnIncludeOfAnUnknownFolderIsReported()
{
    QTemporaryDir root;
    writeFile(root.filePath(u"src/low/Low.cpp"_s), "#include \"Low.h\"\n#include \"elsewhere/Thing.h\"\n");
    const QList<LayerFolder> folders = {{u"src/low"_s, u"low"_s, {u"low"_s}}};
    QCOMPARE(includeViolations(root.path(), folders),
        QStringList {u"src/low/Low.cpp:2: includes from \"elsewhere\", which is no folder of the layers"_s});
}

void TestLayers::testFoldersThatUseEachOtherAreReported()
{
    const QList<LayerFolder> folders = {{u"src/a"_s, u"a"_s, {u"a"_s, u"b"_s}},
        {u"src/b"_s, u"b"_s, {u"a"_s, u"b"_s}},
        {u"src/c"_s, u"c"_s, {u"a"_s, u"c"_s}}};
    QCOMPARE(cycleViolations(folders), QStringList {u"a and b use each other"_s});
}

QTEST_GUILESS_MAIN(TestLayers)
#include "TestLayers.moc"
