#include "store/PreferenceKeys.h"

#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

class TestPreferenceKeys : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testFreshMachineStartsFromTheCatalogue();
    void testCatalogueDefaults_data();
    void testCatalogueDefaults();
    void testCatalogueNamesEachKeyOnce();
    void testCatalogueHoldsEveryKeyOfTheSettingsFile();
    void testLookupIgnoresCase();
    void testProductKeysAreReadUnderTheProductWord();
    void testTitleAndProductMeetWhenTheHostUsesTheProductWord();
    void testQuickTicketWrittenUnderTheTitleIsNotReadUnderTheProductWord();
    void testScreenMayPassItsOwnDefault();
    void testNumberReader_data();
    void testNumberReader();
    void testTruthReader_data();
    void testTruthReader();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<Preferences> m_store;
};

void TestPreferenceKeys::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_store = std::make_unique<Preferences>(m_dir->path());
}

void TestPreferenceKeys::testFreshMachineStartsFromTheCatalogue()
{
    const SessionPreferences prefs(*m_store, u"Cyber Hut"_s);
    QCOMPARE(prefs.number(keys::Number), 50.0);
    QCOMPARE(prefs.number(keys::Hr), 0.0);
    QCOMPARE(prefs.number(keys::Min), 0.0);
    QCOMPARE(prefs.number(keys::Amount), 50.0);
    QCOMPARE(prefs.number(keys::PrintType), 3.0);
    QCOMPARE(prefs.text(keys::Number), u"50"_s);
    QCOMPARE(prefs.text(keys::Currency), u"N"_s);
    QCOMPARE(prefs.text(keys::STR), u"NVT"_s);
}

void TestPreferenceKeys::testCatalogueDefaults_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("defaultValue");
    QTest::addColumn<bool>("underProduct");
    const auto row = [](const char* name, const char* section, const char* value, bool product) {
        QTest::addRow("%s in %s defaults to \"%s\"", name, section, value)
            << QString::fromLatin1(section) << QString::fromLatin1(name) << QString::fromLatin1(value) << product;
    };
    row("Currency", "Option", "N", false);
    row("STR", "Option", "NVT", false);
    row("PrintType", "Option", "3", true);
    row("QuickTicket", "Option", "0", false);
    row("AutoSave", "Option", "1", false);
    row("NoList", "Option", "0", false);
    row("NoPassList", "Option", "1", false);
    row("Expire", "Option", "20", false);
    row("ExLog", "Option", "5", false);
    row("ExType", "Option", "2", false);
    row("TPlen", "Option", "5", true);
    row("PassGenType", "Option", "1", false);
    row("SelPrefix", "Option", "RSV", false);
    row("SelCPName", "Option", "RESERVED", false);
    row("SelClient", "Option", "0", false);
    row("SelClientP", "Option", "0", false);
    row("ProgramLog", "Option", "1", false);
    row("RecycleBinSize", "Option", "5000", false);
    row("UseGTime", "Option", "0", true);
    row("BeginTime", "Option", "00:00", true);
    row("EndTime", "Option", "06:00", true);
    row("Download", "Option", "False", false);
    row("DownType", "Option", "2", false);
    row("Bold", "Option", "False", true);
    row("Size", "Option", "8", true);
    row("Title", "Option", "Norvantis", true);
    row("Address", "Option", "Norvantis", true);
    row("Number", "Settings", "50", false);
    row("Hr", "Settings", "0", false);
    row("Min", "Settings", "0", false);
    row("Amount", "Settings", "50", false);
    row("TopBarMov", "Settings", "1", false);
    row("POSType", "POS", "True", true);
    row("COM", "POS", "COM1", true);
    row("POSspeed", "POS", "1", true);
    row("PingDisabled", "Option", "1", false);
    row("TOffline", "Option", "We are Offline", false);
    row("NoPing", "Option", "6", false);
    row("PrintBtype", "Option", "2", false);
    row("ExternalPort", "Option", "1100", false);
    row("MoveToRecycle", "Option", "1", false);
    row("AllowTime", "Option", "True", false);
    row("Skin", "Option", "1", false);
    row("INo", "COption", "3", false);
    row("Disallow", "COption", "1", false);
    row("AllowAltCtrlDel", "COption", "True", false);
    row("NoProfile", "COption", "1", false);
}

void TestPreferenceKeys::testCatalogueDefaults()
{
    QFETCH(QString, section);
    QFETCH(QString, name);
    QFETCH(QString, defaultValue);
    QFETCH(bool, underProduct);
    const PreferenceKey* key = findPreferenceKey(section, name);
    QVERIFY(key);
    QCOMPARE(key->defaultText(), defaultValue);
    QCOMPARE(key->application == PreferenceApp::Product, underProduct);
    const SessionPreferences prefs(*m_store, u"Cyber Hut"_s);
    QCOMPARE(prefs.text(*key), defaultValue);
}

void TestPreferenceKeys::testCatalogueNamesEachKeyOnce()
{
    QSet<QString> seen;
    for (const PreferenceKey& key : preferenceCatalogue()) {
        const QString address = key.sectionText().toLower() + u'/' + key.nameText().toLower();
        QVERIFY2(!seen.contains(address), qPrintable(address));
        seen.insert(address);
    }
    QVERIFY(seen.size() > 150);
}

void TestPreferenceKeys::testCatalogueHoldsEveryKeyOfTheSettingsFile()
{
    // The keys of the settings file in its own spellings; Color and Enable are keys the file
    // invents, which nothing reads.
    const QStringList option = u"SimComp Expire STR Currency SetTime ShutDownClients CheckConnection BindType "
                               u"PassGenType LoadStart FrontDesk SiteDate LogLimit VLogLimit ServerColor AllowPause "
                               u"AllowTime Rload ShowAdmin BeginTime EndTime Title Information Address UseGTime "
                               u"ActivateTk IPPing PingDisabled PingPause PingLogging MOffline MOnline Shuttime NoPing "
                               u"TOffline TOnline VShutTime CleanUpTime BackupTime RecycleBinSize ProgramLog "
                               u"MoveToRecycle EnableBackup EnableCleanUp PrintBType Billtype TimePrint CostPrint "
                               u"WordPrint WordCPrint UserPrint WaitPrint OtherPrint ReportPrint DefaultPrinter "
                               u"QuickTicket SelClientP SelClient SelPrefix SelCPName Skin UpdateClients"_s.split(u' ');
    for (const QString& name : option)
        QVERIFY2(findPreferenceKey(u"Option", name), qPrintable(name));
    const QStringList pos = u"SPassL COM Stitle Type SGroup SUserL SAddr POSSpeed POSType"_s.split(u' ');
    for (const QString& name : pos)
        QVERIFY2(findPreferenceKey(u"POS", name), qPrintable(name));
    const QStringList client
        = u"AllowAltCtrlDel AutoClear HideTaskBar NoAutoSearch StopMusic LoadIE LoadService "
          u"ControlPanel TaskBar WallPaper ExplorerHistory Neigbhourhood ClearList SavenoChanges "
          u"OnScreenIP ClearDesktop Run Find Logoff Shutdown HideBackground Autorun FolderChange "
          u"AdminSolo NoPrinterTab NoCPLs NSMMPrograms NoRecycle NOMMComputer NoInternetIcon "
          u"NoFileMenu DisableRegisterTools NoAutodial NoProfile CoolSwitch NoTaskMgr NoChangePass "
          u"NoLWorkStation LimitBrowser DProg SLogin RClick IOption SDDir FSharing PSharing PopupB "
          u"LimitMess INo MessClose SiteRestrict ApplyIE Restrict Disallow FileDownload NoToolBar"_s.split(u' ');
    for (const QString& name : client)
        QVERIFY2(findPreferenceKey(u"COption", name), qPrintable(name));
    for (const char* drive : {"Drive A", "Drive B", "Drive C", "Drive D", "All Drive"})
        QVERIFY2(findPreferenceKey(u"COption", QString::fromLatin1(drive)), drive);
    QVERIFY(findPreferenceKey(u"Settings", u"TopBarMov"));
    QVERIFY(!findPreferenceKey(u"Option", u"Color"));
    QVERIFY(!findPreferenceKey(u"Option", u"Enable"));
}

void TestPreferenceKeys::testLookupIgnoresCase()
{
    QCOMPARE(findPreferenceKey(u"option", u"SHUTTIME"), &keys::ShutTime);
    QCOMPARE(findPreferenceKey(u"OPTION", u"movetorecycle"), &keys::MovetoRecycle);
    QCOMPARE(findPreferenceKey(u"Settings", u"Currency"), nullptr);
}

void TestPreferenceKeys::testProductKeysAreReadUnderTheProductWord()
{
    SessionPreferences cafe(*m_store, u"Cyber Hut"_s);
    QCOMPARE(cafe.application(keys::PrintType), u"Norvantis"_s);
    QCOMPARE(cafe.application(keys::Currency), u"Cyber Hut"_s);
    QCOMPARE(cafe.application(keys::PrintType.underTitle()), u"Cyber Hut"_s);
    QCOMPARE(cafe.application(keys::Currency.underProduct()), u"Norvantis"_s);

    cafe.save(keys::PrintType, u"1"_s);
    QCOMPARE(m_store->GetSetting(u"Norvantis"_s, u"Option"_s, u"PrintType"_s, QString()), u"1"_s);
    cafe.save(keys::Title.underTitle(), u"Cyber Hut Lagos"_s);
    // The tickets' heading falls back to the product's default while the settings screen shows it.
    QCOMPARE(cafe.text(keys::Title), u"Norvantis"_s);
    QCOMPARE(cafe.text(keys::Title.underTitle()), u"Cyber Hut Lagos"_s);
}

void TestPreferenceKeys::testTitleAndProductMeetWhenTheHostUsesTheProductWord()
{
    SessionPreferences prefs(*m_store, u"Norvantis"_s);
    prefs.save(keys::Title.underTitle(), u"Net Cafe"_s);
    QCOMPARE(prefs.text(keys::Title), u"Net Cafe"_s);
    prefs.save(keys::QuickTicket, u"1"_s);
    QCOMPARE(prefs.number(keys::QuickTicket.underProduct()), 1.0);
}

void TestPreferenceKeys::testQuickTicketWrittenUnderTheTitleIsNotReadUnderTheProductWord()
{
    SessionPreferences prefs(*m_store, u"Cyber Hut"_s);
    prefs.save(keys::QuickTicket, u"1"_s);
    QCOMPARE(prefs.text(keys::QuickTicket.underProduct()), u"0"_s);
    QCOMPARE(prefs.text(keys::QuickTicket), u"1"_s);
}

void TestPreferenceKeys::testScreenMayPassItsOwnDefault()
{
    SessionPreferences prefs(*m_store, u"Cyber Hut"_s);
    QCOMPARE(prefs.text(keys::EndTime), u"06:00"_s);
    QCOMPARE(prefs.text(keys::EndTime.underTitle(), u"6:00"_s), u"6:00"_s);
    QCOMPARE(prefs.text(keys::CUSTOMBIND, u"192.168.0.1:1001"_s), u"192.168.0.1:1001"_s);
    prefs.save(keys::EndTime.underTitle(), u"07:30"_s);
    QCOMPARE(prefs.text(keys::EndTime.underTitle(), u"6:00"_s), u"07:30"_s);
}

void TestPreferenceKeys::testNumberReader_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<double>("expected");
    QTest::newRow("a plain number") << u"120"_s << 120.0;
    QTest::newRow("a number with a fraction") << u"5.7"_s << 5.7;
    QTest::newRow("a number followed by letters") << u"12abc"_s << 12.0;
    QTest::newRow("a text that does not start with a digit") << u"abc"_s << 0.0;
    QTest::newRow("an empty text") << QString() << 0.0;
    QTest::newRow("a negative number") << u"-3"_s << -3.0;
    QTest::newRow("a Boolean word") << u"True"_s << 0.0;
}

void TestPreferenceKeys::testNumberReader()
{
    QFETCH(QString, stored);
    QFETCH(double, expected);
    SessionPreferences prefs(*m_store, u"Cyber Hut"_s);
    prefs.save(keys::Number, stored);
    QCOMPARE(prefs.number(keys::Number), expected);
}

void TestPreferenceKeys::testTruthReader_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("expected");
    QTest::newRow("True") << u"True"_s << true;
    QTest::newRow("False") << u"False"_s << false;
    QTest::newRow("true in lower case") << u"true"_s << true;
    QTest::newRow("the number 1") << u"1"_s << true;
    QTest::newRow("the number -1") << u"-1"_s << true;
    QTest::newRow("the number 0") << u"0"_s << false;
    QTest::newRow("a fraction that is not zero") << u"0.5"_s << true;
    QTest::newRow("a text that is neither") << u"yes"_s << false;
    QTest::newRow("an empty text") << u""_s << false;
    QTest::newRow("FALSE in capitals") << u"FALSE"_s << false;
    QTest::newRow("tRUE in mixed case between spaces") << u" tRUE "_s << true;
    QTest::newRow("a five-letter word that is not False") << u"Falsy"_s << false;
    QTest::newRow("the digit 7") << u"7"_s << true;
    QTest::newRow("a single letter") << u"T"_s << false;
    QTest::newRow("a single space") << u" "_s << false;
    QTest::newRow("an Arabic-Indic digit one") << QString(QChar(0x0661)) << false;
    QTest::newRow("the number 0 between spaces") << u" 0 "_s << false;
    QTest::newRow("the number 1 between spaces") << u" 1 "_s << true;
}

void TestPreferenceKeys::testTruthReader()
{
    QFETCH(QString, stored);
    QFETCH(bool, expected);
    SessionPreferences prefs(*m_store, u"Cyber Hut"_s);
    QCOMPARE(prefs.truth(keys::Download), false);
    QCOMPARE(prefs.truth(keys::pos::POSType), true);
    prefs.save(keys::Download, stored);
    QCOMPARE(prefs.truth(keys::Download), expected);
}

QTEST_GUILESS_MAIN(TestPreferenceKeys)
#include "TestPreferenceKeys.moc"
