#include "store/Preferences.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLockFile>
#include <QTemporaryDir>
#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

class TestPreferences : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testAbsentKeyGivesTheDefault();
    void testMissingFolderGivesTheDefault();
    void testNamesMatchWithoutRegardToCase_data();
    void testNamesMatchWithoutRegardToCase();
    void testApplicationsAndSectionsAreApart();
    void testValuesSurviveANewObject();
    void testFileKeepsTheFirstSpelling();
    void testValuesRoundTrip_data();
    void testValuesRoundTrip();
    void testOddNamesRoundTrip_data();
    void testOddNamesRoundTrip();
    void testWriteReachesTheFileAtOnce();
    void testTheFileIsReadableByItsOwnerOnly();
    void testAnotherWriterIsSeen();
    void testAnotherProgramsEditIsSeenAMillisecondLater();
    void testLastingKeysFollowEveryChange();
    void testANewStoreFindsWhatAnotherSaved();
    void testANewStoreReadsAFileChangedSinceTheLastRead();
    void testTwoWritersKeepEachOthersKeys();
    void testALockHeldElsewhereEndsTheWaitWithAReason();
    void testEnvironmentChoosesTheFolder();
    void testConstructorFolderWinsOverEnvironment();
    void testUnwritableFolderKeepsTheValueInMemory();
    void testHandEditedFileIsRead();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestPreferences::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    qunsetenv("MARLET_PREFS");
}

void TestPreferences::testAbsentKeyGivesTheDefault()
{
    Preferences prefs(m_dir->path());
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"Currency"_s, u"N"_s), u"N"_s);
    prefs.SaveSetting(u"Norvantis"_s, u"Option"_s, u"STR"_s, u"ABC"_s);
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"Currency"_s, u"N"_s), u"N"_s);
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"Currency"_s, QString()), QString());
}

void TestPreferences::testMissingFolderGivesTheDefault()
{
    const Preferences prefs(m_dir->filePath(u"not/there"_s));
    QCOMPARE(prefs.GetSetting(u"A"_s, u"Settings"_s, u"Number"_s, u"50"_s), u"50"_s);
}

void TestPreferences::testNamesMatchWithoutRegardToCase_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("read");
    QTest::addColumn<QString>("section");
    QTest::newRow("MovetoRecycle is written and MoveToRecycle read")
        << u"MovetoRecycle"_s << u"MoveToRecycle"_s << u"Option"_s;
    QTest::newRow("Min is written and min read") << u"Min"_s << u"min"_s << u"Settings"_s;
    QTest::newRow("Hr is written and hr read") << u"Hr"_s << u"hr"_s << u"Settings"_s;
    QTest::newRow("ExType is written and Extype read") << u"ExType"_s << u"Extype"_s << u"Option"_s;
    QTest::newRow("ExLog is written and Exlog read") << u"ExLog"_s << u"Exlog"_s << u"Option"_s;
    QTest::newRow("Address is written and address read") << u"Address"_s << u"address"_s << u"Option"_s;
}

void TestPreferences::testNamesMatchWithoutRegardToCase()
{
    QFETCH(QString, written);
    QFETCH(QString, read);
    QFETCH(QString, section);
    Preferences prefs(m_dir->path());
    prefs.SaveSetting(u"Cafe One"_s, section, written, u"7"_s);
    QCOMPARE(prefs.GetSetting(u"Cafe One"_s, section, read, u"0"_s), u"7"_s);
    QCOMPARE(prefs.GetSetting(u"CAFE ONE"_s, section.toUpper(), read.toUpper(), u"0"_s), u"7"_s);

    // Writing under the other spelling overwrites the same value instead of adding a second one.
    prefs.SaveSetting(u"cafe one"_s, section.toLower(), read, u"8"_s);
    QCOMPARE(prefs.GetSetting(u"Cafe One"_s, section, written, u"0"_s), u"8"_s);
    QFile file(prefs.filePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    QCOMPARE(text.count(u"=8"_s), 1);
    QCOMPARE(text.count(u"=7"_s), 0);
}

void TestPreferences::testApplicationsAndSectionsAreApart()
{
    Preferences prefs(m_dir->path());
    prefs.SaveSetting(u"MyCafe"_s, u"Option"_s, u"QuickTicket"_s, u"1"_s);
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"QuickTicket"_s, u"0"_s), u"0"_s);
    QCOMPARE(prefs.GetSetting(u"MyCafe"_s, u"Settings"_s, u"QuickTicket"_s, u"0"_s), u"0"_s);
    QCOMPARE(prefs.GetSetting(u"MyCafe"_s, u"Option"_s, u"QuickTicket"_s, u"0"_s), u"1"_s);
}

void TestPreferences::testValuesSurviveANewObject()
{
    {
        Preferences prefs(m_dir->path());
        prefs.SaveSetting(u"Norvantis"_s, u"Settings"_s, u"Number"_s, u"120"_s);
        prefs.SaveSetting(u"Norvantis"_s, u"POS"_s, u"COM"_s, u"COM3"_s);
    }
    const Preferences again(m_dir->path());
    QCOMPARE(again.GetSetting(u"Norvantis"_s, u"Settings"_s, u"Number"_s, u"50"_s), u"120"_s);
    QCOMPARE(again.GetSetting(u"norvantis"_s, u"pos"_s, u"com"_s, u"COM1"_s), u"COM3"_s);
}

void TestPreferences::testFileKeepsTheFirstSpelling()
{
    Preferences prefs(m_dir->path());
    prefs.SaveSetting(u"Norvantis"_s, u"Option"_s, u"MovetoRecycle"_s, u"1"_s);
    prefs.SaveSetting(u"NORVANTIS"_s, u"OPTION"_s, u"MOVETORECYCLE"_s, u"0"_s);
    QFile file(prefs.filePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    QVERIFY2(text.contains(u"[Norvantis/Option]\nMovetoRecycle=0\n"_s), qPrintable(text));
    QVERIFY(!text.contains(u"MOVETORECYCLE"_s));
}

void TestPreferences::testValuesRoundTrip_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("an empty text") << QString();
    QTest::newRow("blanks around a text") << u"  We are Offline  "_s;
    QTest::newRow("an equals sign and brackets") << u"a=b [c] ;d"_s;
    QTest::newRow("a backslash path") << uR"(C:\Server\pic\)"_s;
    QTest::newRow("a text that looks like an escape") << uR"(\x41 stays)"_s;
    QTest::newRow("line breaks and a tab") << u"line one\nline two\r\n\tend"_s;
    QTest::newRow("letters beyond ASCII") << u"Café Ñandú ₦"_s;
    QTest::newRow("commas as in a list") << u"a, b, c"_s;
}

void TestPreferences::testValuesRoundTrip()
{
    QFETCH(QString, value);
    Preferences(m_dir->path()).SaveSetting(u"Norvantis"_s, u"Option"_s, u"Title"_s, value);
    const Preferences fresh(m_dir->path());
    QCOMPARE(fresh.GetSetting(u"Norvantis"_s, u"Option"_s, u"Title"_s, u"default"_s), value);
}

void TestPreferences::testOddNamesRoundTrip_data()
{
    QTest::addColumn<QString>("application");
    QTest::addColumn<QString>("key");
    QTest::newRow("a key with a blank") << u"Norvantis"_s << u"Drive A"_s;
    QTest::newRow("a key with an equals sign") << u"Norvantis"_s << u"a=b"_s;
    QTest::newRow("a key that starts like a comment") << u"Norvantis"_s << u";Skin"_s;
    QTest::newRow("a key that starts like a section") << u"Norvantis"_s << u"[Option]"_s;
    QTest::newRow("an application with a slash") << u"Cafe/Bar"_s << u"STR"_s;
    QTest::newRow("an application with brackets") << u"[Cafe]"_s << u"STR"_s;
}

void TestPreferences::testOddNamesRoundTrip()
{
    QFETCH(QString, application);
    QFETCH(QString, key);
    Preferences(m_dir->path()).SaveSetting(application, u"Option"_s, key, u"v"_s);
    const Preferences fresh(m_dir->path());
    QCOMPARE(fresh.GetSetting(application, u"Option"_s, key, u"default"_s), u"v"_s);
    QCOMPARE(fresh.GetSetting(application, u"Option"_s, u"Other"_s, u"default"_s), u"default"_s);
}

void TestPreferences::testWriteReachesTheFileAtOnce()
{
    Preferences prefs(m_dir->path());
    prefs.SaveSetting(u"Norvantis"_s, u"Settings"_s, u"Amount"_s, u"200"_s);
    QCOMPARE(prefs.lastError(), QString());
    QFile file(m_dir->filePath(u"preferences.ini"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(QString::fromUtf8(file.readAll()).contains(u"[Norvantis/Settings]\nAmount=200\n"_s));
}

void TestPreferences::testTheFileIsReadableByItsOwnerOnly()
{
    Preferences prefs(m_dir->path());
    prefs.SaveSetting(u"Norvantis"_s, u"Settings"_s, u"Amount"_s, u"200"_s);
    prefs.SaveSetting(u"Norvantis"_s, u"Settings"_s, u"Amount"_s, u"300"_s);
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QCOMPARE(QFile::permissions(m_dir->filePath(u"preferences.ini"_s)) & others, QFile::Permissions());
}

void TestPreferences::testAnotherWriterIsSeen()
{
    const Preferences reader(m_dir->path());
    QCOMPARE(reader.GetSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"5"_s), u"5"_s);
    Preferences writer(m_dir->path());
    writer.SaveSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"6"_s);
    QCOMPARE(reader.GetSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"5"_s), u"6"_s);
    writer.SaveSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"7"_s);
    QCOMPARE(reader.GetSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"5"_s), u"7"_s);
}

void TestPreferences::testAnotherProgramsEditIsSeenAMillisecondLater()
{
    const Preferences reader(m_dir->path());
    QCOMPARE(reader.GetSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"5"_s), u"5"_s);
    // Another program replaces the file, as every save does: this process's save count stays put.
    for (const char* value : {"6", "7"}) {
        QFile file(m_dir->filePath(u"preferences.ini.new"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("[Norvantis/Option]\nTPlen=") + value + '\n');
        file.close();
        QFile::remove(m_dir->filePath(u"preferences.ini"_s));
        QVERIFY(file.rename(m_dir->filePath(u"preferences.ini"_s)));
        QTest::qSleep(2);
        QCOMPARE(reader.GetSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"5"_s), QString::fromLatin1(value));
    }
}

void TestPreferences::testANewStoreFindsWhatAnotherSaved()
{
    Preferences first(m_dir->path());
    first.SaveSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"6"_s);
    const Preferences second(m_dir->path());
    QCOMPARE(second.GetSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"5"_s), u"6"_s);
    // A later save reaches a store made after it, with the keys saved before.
    first.SaveSetting(u"Norvantis"_s, u"Option"_s, u"Prefix"_s, u"NVT"_s);
    const Preferences third(m_dir->path());
    QCOMPARE(third.GetSetting(u"Norvantis"_s, u"Option"_s, u"Prefix"_s, QString()), u"NVT"_s);
    QCOMPARE(third.GetSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"5"_s), u"6"_s);
}

// Another program rewrites the file in place, keeping its size: the new store made afterwards reads
// the new text and not the version that this process read before.
void TestPreferences::testANewStoreReadsAFileChangedSinceTheLastRead()
{
    const auto writeFile = [this](const char* value) {
        QFile file(m_dir->filePath(u"preferences.ini"_s));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QByteArray("[Norvantis/Option]\nTPlen=") + value + '\n');
    };
    writeFile("6");
    const Preferences before(m_dir->path());
    QCOMPARE(before.GetSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"5"_s), u"6"_s);
    QTest::qSleep(20); // file times move by the kernel's tick
    writeFile("7");
    const Preferences after(m_dir->path());
    QCOMPARE(after.GetSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"5"_s), u"7"_s);
    QFile::remove(m_dir->filePath(u"preferences.ini"_s));
    const Preferences afterRemoval(m_dir->path());
    QCOMPARE(afterRemoval.GetSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"5"_s), u"5"_s);
}

// Keys whose texts last are found again by their places: the value still follows saves, keys added
// after a lookup found nothing, another writer and the application asked under.
void TestPreferences::testLastingKeysFollowEveryChange()
{
    static constexpr std::string_view section = "Option";
    static constexpr std::string_view key = "TPlen";
    Preferences reader(m_dir->path());
    QCOMPARE(reader.findLasting(u"Norvantis", section, key), nullptr);
    reader.SaveSetting(u"norvantis"_s, u"OPTION"_s, u"tplen"_s, u"6"_s);
    QVERIFY(reader.findLasting(u"Norvantis", section, key));
    QCOMPARE(*reader.findLasting(u"Norvantis", section, key), u"6"_s);
    reader.SaveSetting(u"Norvantis"_s, u"Option"_s, u"TPlen"_s, u"7"_s);
    QCOMPARE(*reader.findLasting(u"Norvantis", section, key), u"7"_s);
    QCOMPARE(reader.findLasting(u"Other", section, key), nullptr);
    Preferences writer(m_dir->path());
    writer.SaveSetting(u"Other"_s, u"Option"_s, u"TPlen"_s, u"8"_s);
    QCOMPARE(*reader.findLasting(u"Other", section, key), u"8"_s);
    QCOMPARE(*reader.findLasting(u"Norvantis", section, key), u"7"_s);
}

void TestPreferences::testTwoWritersKeepEachOthersKeys()
{
    Preferences first(m_dir->path());
    Preferences second(m_dir->path());
    QCOMPARE(first.GetSetting(u"A"_s, u"Option"_s, u"One"_s, QString()), QString());
    QCOMPARE(second.GetSetting(u"A"_s, u"Option"_s, u"Two"_s, QString()), QString());
    first.SaveSetting(u"A"_s, u"Option"_s, u"One"_s, u"1"_s);
    second.SaveSetting(u"A"_s, u"Option"_s, u"Two"_s, u"2"_s);
    const Preferences fresh(m_dir->path());
    QCOMPARE(fresh.GetSetting(u"A"_s, u"Option"_s, u"One"_s, QString()), u"1"_s);
    QCOMPARE(fresh.GetSetting(u"A"_s, u"Option"_s, u"Two"_s, QString()), u"2"_s);
}

void TestPreferences::testALockHeldElsewhereEndsTheWaitWithAReason()
{
    const QString path = m_dir->filePath(u"preferences.ini"_s);
    QLockFile other(path + u".lock"_s);
    QVERIFY(other.tryLock(0));
    Preferences prefs(m_dir->path());
    QElapsedTimer waited;
    waited.start();
    prefs.SaveSetting(u"Norvantis"_s, u"Settings"_s, u"Number"_s, u"10"_s);
    QVERIFY2(prefs.lastError().startsWith(u"The preference file '%1' is locked by another program ("_s.arg(path)),
        qPrintable(prefs.lastError()));
    QVERIFY(prefs.lastError().endsWith(u"); Number was not saved to it."_s));
    QVERIFY(!QFile::exists(path));
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Settings"_s, u"Number"_s, QString()), u"10"_s);
    // The next saves of the same moment give up at once instead of waiting again.
    prefs.SaveSetting(u"Norvantis"_s, u"Settings"_s, u"Hr"_s, u"1"_s);
    prefs.SaveSetting(u"Norvantis"_s, u"Settings"_s, u"Min"_s, u"30"_s);
    QVERIFY2(waited.elapsed() < 3500, qPrintable(QString::number(waited.elapsed())));
    QVERIFY(prefs.lastError().endsWith(u"; Min was not saved to it."_s));
    // Once the lock is free, the next save writes every kept value.
    other.unlock();
    prefs.SaveSetting(u"Norvantis"_s, u"Settings"_s, u"Amount"_s, u"50"_s);
    QCOMPARE(prefs.lastError(), QString());
    const Preferences fresh(m_dir->path());
    QCOMPARE(fresh.GetSetting(u"Norvantis"_s, u"Settings"_s, u"Number"_s, QString()), u"10"_s);
    QCOMPARE(fresh.GetSetting(u"Norvantis"_s, u"Settings"_s, u"Amount"_s, QString()), u"50"_s);
}

void TestPreferences::testEnvironmentChoosesTheFolder()
{
    qputenv("MARLET_PREFS", m_dir->path().toLocal8Bit());
    Preferences prefs;
    QCOMPARE(prefs.filePath(), m_dir->filePath(u"preferences.ini"_s));
    prefs.SaveSetting(u"Norvantis"_s, u"Option"_s, u"STR"_s, u"XYZ"_s);
    QVERIFY(QFile::exists(m_dir->filePath(u"preferences.ini"_s)));
    qunsetenv("MARLET_PREFS");
    QVERIFY(Preferences().filePath().startsWith(Preferences::defaultFolder()));
}

void TestPreferences::testConstructorFolderWinsOverEnvironment()
{
    QTemporaryDir other;
    qputenv("MARLET_PREFS", other.path().toLocal8Bit());
    const Preferences prefs(m_dir->path());
    QCOMPARE(prefs.filePath(), m_dir->filePath(u"preferences.ini"_s));
}

void TestPreferences::testUnwritableFolderKeepsTheValueInMemory()
{
    // A plain file where the folder should be: nothing can be written below it.
    const QString blocker = m_dir->filePath(u"blocker"_s);
    QFile file(blocker);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    Preferences prefs(blocker);
    prefs.SaveSetting(u"Norvantis"_s, u"Option"_s, u"STR"_s, u"ABC"_s);
    QVERIFY(!prefs.lastError().isEmpty());
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"STR"_s, u"NVT"_s), u"ABC"_s);
}

void TestPreferences::testHandEditedFileIsRead()
{
    QFile file(m_dir->filePath(u"preferences.ini"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("; comment line\n"
               "stray line without a section\n"
               "[Norvantis/Option]\n"
               "Currency=USD\n"
               "no equals sign here\n"
               "Title=Net \\x3d Cafe\n"
               "[Norvantis/Settings]\n"
               "Number=75\n");
    file.close();
    const Preferences prefs(m_dir->path());
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"currency"_s, u"N"_s), u"USD"_s);
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"Title"_s, QString()), u"Net = Cafe"_s);
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Settings"_s, u"Number"_s, u"50"_s), u"75"_s);
}

QTEST_GUILESS_MAIN(TestPreferences)
#include "TestPreferences.moc"
