// libFuzzer entry for the preference file. The input is the whole file as another program or a
// hand edit may have left it: reading it must never fail, a value saved afterwards must read back,
// and the file written then must read back the same.

#include "store/Preferences.h"

#include "FuzzCheck.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

using marlet::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("preferences.ini"));
    QFile::remove(path);
    {
        QFile file(path);
        require(file.open(QIODevice::WriteOnly));
        file.write(reinterpret_cast<const char*>(data), qint64(size));
    }
    marlet::Preferences prefs(folder.path());
    const QString before = prefs.GetSetting(
        QStringLiteral("Norvantis"), QStringLiteral("Option"), QStringLiteral("STR"), QStringLiteral("NVT"));
    prefs.SaveSetting(
        QStringLiteral("Norvantis"), QStringLiteral("Settings"), QStringLiteral("Number"), QStringLiteral("5\n0=[x]"));
    require(prefs.GetSetting(QStringLiteral("Norvantis"), QStringLiteral("Settings"), QStringLiteral("Number"), {})
        == QStringLiteral("5\n0=[x]"));
    const marlet::Preferences again(folder.path());
    require(again.GetSetting(QStringLiteral("Norvantis"), QStringLiteral("Settings"), QStringLiteral("Number"), {})
        == QStringLiteral("5\n0=[x]"));
    require(again.GetSetting(
                QStringLiteral("Norvantis"), QStringLiteral("Option"), QStringLiteral("STR"), QStringLiteral("NVT"))
        == before);
    return 0;
}
