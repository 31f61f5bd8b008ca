#include "settings/ClientOptions.h"
#include "store/Preferences.h"

#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

namespace {

QString latin(const char* text)
{
    return QLatin1String(text);
}

const ClientOption& at(int position)
{
    return clientoptions::catalogue()[size_t(position)];
}

} // namespace

// The client option catalogue: its order, its keys, the tick rules of loading, the stored forms of
// saving, and the values computed beside the list.
class TestClientOptions : public QObject
{
    Q_OBJECT

private slots:
    void testSixtyTwoSwitchesWithDistinctKeys();
    void testPositionsThatTheHostKnows_data();
    void testPositionsThatTheHostKnows();
    void testFirstRunStateIsWhatTheKeyDefaultTicks();
    void testRestoreTicksItsOwnPositions();
    void testTickRules_data();
    void testTickRules();
    void testStoredForms_data();
    void testStoredForms();
    void testCloseListenIsTheOppositeOfNoAutoSearch();
    void testNoDrives_data();
    void testNoDrives();
    void testNoDrivesReadsTheStore();
    void testBrowserNumber_data();
    void testBrowserNumber();
    void testColourOf_data();
    void testColourOf();
};

void TestClientOptions::testSixtyTwoSwitchesWithDistinctKeys()
{
    QCOMPARE(int(clientoptions::catalogue().size()), 62);
    QSet<QString> keys;
    for (const ClientOption& option : clientoptions::catalogue()) {
        QVERIFY(option.key);
        keys.insert(option.key->sectionText() + QLatin1Char('/') + option.key->nameText().toLower());
        QVERIFY(!option.captionText().isEmpty());
        QVERIFY(!option.explanationText().isEmpty());
    }
    QCOMPARE(keys.size(), 62);
}

void TestClientOptions::testPositionsThatTheHostKnows_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("caption");
    QTest::newRow("the first switch") << 0 << latin("Option") << latin("AllowPause") << latin("Allow Client to Pause");
    QTest::newRow("auto search, followed by CloseListen")
        << 7 << latin("COption") << latin("NoAutoSearch") << latin("Stop Client-Server AutoSearch");
    QTest::newRow("update clients in the Option section")
        << 11 << latin("Option") << latin("UpdateClients") << latin("Update Clients' settings on Connection");
    QTest::newRow("the drive keys hold a blank")
        << 16 << latin("COption") << latin("All Drive") << latin("Hide All Physical Drives from E to Z");
    QTest::newRow("the printer switch keeps the wallpaper key")
        << 19 << latin("COption") << latin("WallPaper") << latin("Disable Printer Change");
    QTest::newRow("the neighbourhood key as it is spelled")
        << 21 << latin("COption") << latin("Neigbhourhood") << latin("Hide Network Neighbourhood");
    QTest::newRow("the skin") << 48 << latin("Option") << latin("Skin") << latin("Use Classic Skin for Clients");
    QTest::newRow("the browser limit") << 49 << latin("COption") << latin("LimitBrowser")
                                       << latin("Limit to a certain number Internet Browser at a time");
    QTest::newRow("the messenger caption as it is spelled")
        << 58 << latin("COption") << latin("LimitMess")
        << latin("Limit to Six(6) Instant Messenge (Yahoo!, Hotmail Messenger, etc.)");
    QTest::newRow("the timer movement in the Settings section")
        << 59 << latin("Settings") << latin("TopBarMov") << latin("Disable Movement of Client Timer in Modern Skin");
    QTest::newRow("the last switch") << 61 << latin("COption") << latin("NoToolBar")
                                     << latin("Disable Changing Toolbar Settings");
}

void TestClientOptions::testPositionsThatTheHostKnows()
{
    QFETCH(int, position);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, caption);
    QCOMPARE(at(position).key->sectionText(), section);
    QCOMPARE(at(position).key->nameText().toLower(), key.toLower());
    QCOMPARE(at(position).captionText(), caption);
    QCOMPARE(at(58).explanationText(), latin("Limit to Six(6) Instant Messenger (Yahoo!, Hotmail Messenger, etc.)"));
}

void TestClientOptions::testFirstRunStateIsWhatTheKeyDefaultTicks()
{
    QStringList firstRunTicked;
    for (int position = 0; position < clientoptions::Count; ++position) {
        const ClientOption& option = at(position);
        QVERIFY2(clientoptions::ticked(option, option.key->defaultText()) == option.firstRun,
            qPrintable(option.captionText()));
        if (option.firstRun)
            firstRunTicked << QString::number(position);
    }
    QCOMPARE(firstRunTicked.join(QLatin1Char(',')), latin("1,2,4,5,6,8,9,10,11,33,41,42,43,44,45,46,47"));
}

void TestClientOptions::testRestoreTicksItsOwnPositions()
{
    QStringList restored;
    for (int position = 0; position < clientoptions::Count; ++position) {
        if (at(position).restore)
            restored << QString::number(position);
    }
    QCOMPARE(restored.join(QLatin1Char(',')), latin("1,2,4,5,6,8,9,10,11,33,41,42,43,44,45,46,47"));
}

void TestClientOptions::testTickRules_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("ticked");
    QTest::newRow("True ticks a yes/no switch") << 0 << latin("True") << true;
    QTest::newRow("false in any case clears it") << 1 << latin("false") << false;
    QTest::newRow("a number other than 0 reads true") << 4 << latin("-1") << true;
    QTest::newRow("a word that is no truth clears it") << 5 << latin("yes") << false;
    QTest::newRow("any number but 0 ticks position 17") << 17 << latin("2") << true;
    QTest::newRow("0 clears position 17") << 17 << latin("0") << false;
    QTest::newRow("a text that is no number leaves position 17 clear") << 17 << latin("x") << false;
    QTest::newRow("position 11 by a number other than 0") << 11 << latin("5") << true;
    QTest::newRow("position 33 only by 1") << 33 << latin("2") << false;
    QTest::newRow("position 33 by 1") << 33 << latin("1") << true;
    QTest::newRow("position 49 only by 1") << 49 << latin("-1") << false;
    QTest::newRow("position 61 by 1.0") << 61 << latin("1.0") << true;
    QTest::newRow("the skin is ticked by the text 0") << 48 << latin("0") << true;
    QTest::newRow("the skin is not ticked by 0.0") << 48 << latin("0.0") << false;
    QTest::newRow("the skin's 1 clears it") << 48 << latin("1") << false;
    QTest::newRow("the timer movement is ticked by the number 0") << 59 << latin("0.0") << true;
    QTest::newRow("the timer movement's 1 clears it") << 59 << latin("1") << false;
    QTest::newRow("the timer movement's word clears it") << 59 << latin("none") << false;
}

void TestClientOptions::testTickRules()
{
    QFETCH(int, position);
    QFETCH(QString, stored);
    QFETCH(bool, ticked);
    QCOMPARE(clientoptions::ticked(at(position), stored), ticked);
}

void TestClientOptions::testStoredForms_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("whenTicked");
    QTest::addColumn<QString>("whenClear");
    QTest::newRow("yes/no text") << 7 << latin("True") << latin("False");
    QTest::newRow("number flag") << 11 << latin("1") << latin("0");
    QTest::newRow("drive as yes/no text") << 12 << latin("True") << latin("False");
    QTest::newRow("control panel as number flag") << 17 << latin("1") << latin("0");
    QTest::newRow("profile always 1") << 43 << latin("1") << latin("1");
    QTest::newRow("lock workstation always 1") << 47 << latin("1") << latin("1");
    QTest::newRow("skin inverted") << 48 << latin("0") << latin("1");
    QTest::newRow("timer movement inverted") << 59 << latin("0") << latin("1");
}

void TestClientOptions::testStoredForms()
{
    QFETCH(int, position);
    QFETCH(QString, whenTicked);
    QFETCH(QString, whenClear);
    QCOMPARE(clientoptions::storedText(at(position), true), whenTicked);
    QCOMPARE(clientoptions::storedText(at(position), false), whenClear);
}

void TestClientOptions::testCloseListenIsTheOppositeOfNoAutoSearch()
{
    QCOMPARE(clientoptions::closeListenText(true), latin("0"));
    QCOMPARE(clientoptions::closeListenText(false), latin("1"));
}

void TestClientOptions::testNoDrives_data()
{
    QTest::addColumn<bool>("a");
    QTest::addColumn<bool>("b");
    QTest::addColumn<bool>("c");
    QTest::addColumn<bool>("d");
    QTest::addColumn<bool>("all");
    QTest::addColumn<int>("mask");
    QTest::newRow("none") << false << false << false << false << false << 0;
    QTest::newRow("A") << true << false << false << false << false << 1;
    QTest::newRow("B and D") << false << true << false << true << false << 10;
    QTest::newRow("C") << false << false << true << false << false << 4;
    QTest::newRow("E to Z") << false << false << false << false << true << 67108848;
    QTest::newRow("every drive") << true << true << true << true << true << 67108863;
}

void TestClientOptions::testNoDrives()
{
    QFETCH(bool, a);
    QFETCH(bool, b);
    QFETCH(bool, c);
    QFETCH(bool, d);
    QFETCH(bool, all);
    QFETCH(int, mask);
    QCOMPARE(clientoptions::noDrives(a, b, c, d, all), mask);
}

void TestClientOptions::testNoDrivesReadsTheStore()
{
    QTemporaryDir folder;
    Preferences store(folder.path());
    SessionPreferences prefs(store, latin("CafeHost"));
    QCOMPARE(clientoptions::noDrivesText(prefs), latin("0"));
    prefs.save(*at(14).key, latin("True"));
    prefs.save(*at(16).key, latin("-1"));
    QCOMPARE(clientoptions::noDrivesText(prefs), latin("67108852"));
}

void TestClientOptions::testBrowserNumber_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    QTest::newRow("a number from the list") << latin("7") << latin("7");
    QTest::newRow("a number beyond the list") << latin("15") << latin("15");
    QTest::newRow("a word") << latin("many") << latin("3");
    QTest::newRow("nothing") << QString() << latin("3");
}

void TestClientOptions::testBrowserNumber()
{
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    QCOMPARE(clientoptions::browserNumberText(typed), stored);
}

void TestClientOptions::testColourOf_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("colour");
    QTest::newRow("a colour") << latin("255") << 255;
    QTest::newRow("no number") << latin("red") << 0;
    QTest::newRow("beyond a colour") << latin("1e20") << 0;
}

void TestClientOptions::testColourOf()
{
    QFETCH(QString, stored);
    QFETCH(int, colour);
    QCOMPARE(clientoptions::colourOf(stored), colour);
}

QTEST_GUILESS_MAIN(TestClientOptions)
#include "TestClientOptions.moc"
