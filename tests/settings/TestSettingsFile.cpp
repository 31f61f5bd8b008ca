#include "settings/SettingsFile.h"
#include "settings/SettingsLine.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"
#include "support/StoreTestDatabase.h"
#include "values/Product.h"

#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

namespace {

const QString CafeHost = QStringLiteral("CafeHost");

QString latin(const char* text)
{
    return QLatin1String(text);
}

// The rows of a query, cells joined by " | ".
QStringList rows(Connection& connection, const char* statement)
{
    return test::queryRows(connection, latin(statement));
}

void run(Connection& connection, const char* statement)
{
    QVERIFY2(connection.executeNative(latin(statement)), qPrintable(connection.lastError()));
}

// One machine: its preference store and its database.
struct Machine
{
    QTemporaryDir folder;
    Preferences store {folder.path()};
    test::StoreTestDatabase database;

    SessionPreferences settings() { return SessionPreferences(store, CafeHost); }
    QString value(const PreferenceKey& key, const QString& application)
    {
        return store.GetSetting(application, key.sectionText(), key.nameText(), QStringLiteral("<absent>"));
    }
};

// A value of its own for every catalogued key, under both applications, that the writer's forms
// keep as it is: numbers where the writer wants a number, times where it wants a time, three
// characters where it cuts to three.
QString distinctValue(const PreferenceKey& key, const QString& application)
{
    const QString name = key.nameText();
    const bool title = application == CafeHost;
    if (name == latin("SimComp") || name == latin("INo"))
        return title ? latin("4") : latin("2");
    if (name == latin("STR") || name == latin("Currency"))
        return title ? latin("ABC") : latin("XYZ");
    if (name == latin("BeginTime") || name == latin("EndTime") || name == latin("VShutTime"))
        return title ? latin("07:45") : latin("08:15");
    return (title ? latin("t-") : latin("p-")) + name;
}

void fillEveryKey(Preferences& store)
{
    for (const PreferenceKey& key : preferenceCatalogue()) {
        for (const QString& application : {CafeHost, QString(ProductWord)})
            store.SaveSetting(application, key.sectionText(), key.nameText(), distinctValue(key, application));
    }
}

QByteArray scrambled(const QStringList& records)
{
    return settingsfile::fileContent(records);
}

} // namespace

// The settings file: its records in their order with the writer's own spellings and forms, the
// list rows, the reading of a file record by record, and files that are damaged or hostile.
class TestSettingsFile : public QObject
{
    Q_OBJECT

private slots:
    void testFixedRecordsInTheirOrder();
    void testFreshMachineWritesTheDefaults();
    void testWriterFormsItsValues();
    void testWriterReadsTheKeysOfItsOwnSpellings();
    void testListRecordsTableByTable();
    void testEveryLineIsDigitsThreeTimesItsText();
    void testReadFieldsSplitsLinesAndCommas();
    void testRoundTripBetweenTwoMachines();
    void testRecordsAreAppliedOneByOne();
    void testListsAreEmptiedAtTheirFirstRecord();
    void testHostileRecordsTouchNothingElse();
    void testMutatedFilesNeverCrashNorReachOtherTables();
    void testWriteFileKeepsTheOldFileWhenItCannotWrite();
};

void TestSettingsFile::testFixedRecordsInTheirOrder()
{
    Machine machine;
    const QStringList records = settingsfile::fixedRecords(machine.settings(), 5);
    QCOMPARE(records.size(), 135);
    QCOMPARE(records.first(), latin("O :- SimComp :- 5"));
    QCOMPARE(records.at(61), latin("O :- SelCPName :- RESERVED"));
    QCOMPARE(records.at(62), latin("P :- SPassL :- 0"));
    QCOMPARE(records.at(63), latin("P :- COM :- COM1"));
    QCOMPARE(records.at(64), latin("True"));
    QCOMPARE(records.at(65), latin("O :- UpdateClients- 1"));
    QCOMPARE(records.at(66), latin("P :- Stitle :- 1"));
    QCOMPARE(records.at(71), latin("P :- POSSpeed :- 1"));
    QCOMPARE(records.at(72), latin("P :- POSSpeed :- True"));
    QCOMPARE(records.at(73), latin("C :- AllowAltCtrlDel :- True"));
    QCOMPARE(records.at(133), latin("C :- NoToolBar :- 0"));
    QCOMPARE(records.last(), latin("S :- TopBarMov :- 1"));
    int o = 0, c = 0, p = 0;
    for (const QString& record : records) {
        o += record.startsWith(latin("O :- "));
        c += record.startsWith(latin("C :- "));
        p += record.startsWith(latin("P :- "));
    }
    QCOMPARE(o, 63);
    QCOMPARE(c, 61);
    QCOMPARE(p, 9);
    for (const char* broken : {"O :- VShutTime- 00:00", "O :- EnableCleanUp- 1", "C :- NOMMComputer- 0"})
        QVERIFY2(records.contains(latin(broken)), broken);
}

void TestSettingsFile::testFreshMachineWritesTheDefaults()
{
    Machine machine;
    const QStringList records = settingsfile::fixedRecords(machine.settings(), 5);
    for (const char* expected : {"O :- Expire :- 20",
             "O :- STR :- NVT",
             "O :- BindType :- AUTOMATIC",
             "O :- Color :- 0",
             "O :- BeginTime :- 00:00",
             "O :- EndTime :- 06:00",
             "O :- Shuttime :- 0",
             "O :- MoveToRecycle :- 1",
             "O :- Enable :- 0",
             "O :- QuickTicket :- 0",
             "C :- Drive A :- False",
             "C :- SavenoChanges :- 0",
             "C :- INo :- 3"})
        QVERIFY2(records.contains(latin(expected)), expected);
    QVERIFY(records.contains(latin("O :- Title :- ") + MessageTitle()));
}

void TestSettingsFile::testWriterFormsItsValues()
{
    Machine machine;
    SessionPreferences settings = machine.settings();
    settings.save(keys::SimComp, latin("1001"));
    settings.save(keys::STR, latin("ABCDEF"));
    settings.save(keys::Currency, latin("NGNX"));
    settings.save(keys::BeginTime.underTitle(), latin("7:05:30"));
    settings.save(keys::EndTime.underTitle(), latin("not a time"));
    machine.store.SaveSetting(CafeHost, latin("COption"), latin("INo"), latin("many"));
    QStringList records = settingsfile::fixedRecords(settings, 5);
    for (const char* expected : {"O :- SimComp :- 5",
             "O :- STR :- ABC",
             "O :- Currency :- NGN",
             "O :- BeginTime :- 07:05",
             "O :- EndTime :- not a time",
             "C :- INo :- 3"})
        QVERIFY2(records.contains(latin(expected)), expected);

    // A number of computers within the host's count is written as stored.
    settings.save(keys::SimComp, latin("12"));
    machine.store.SaveSetting(CafeHost, latin("COption"), latin("INo"), latin("7"));
    records = settingsfile::fixedRecords(settings, 20);
    QVERIFY(records.contains(latin("O :- SimComp :- 12")));
    QVERIFY(records.contains(latin("C :- INo :- 7")));
    QVERIFY(settingsfile::fixedRecords(settings, 11).contains(latin("O :- SimComp :- 5")));
}

void TestSettingsFile::testWriterReadsTheKeysOfItsOwnSpellings()
{
    Machine machine;
    fillEveryKey(machine.store);
    const QStringList records = settingsfile::fixedRecords(machine.settings(), 5);
    for (const char* expected : {// the colour and the print switch come from keys of other names
             "O :- Color :- t-Colour",
             "O :- Enable :- t-EnablePrint",
             // keys read in another case
             "O :- Shuttime :- t-ShutTime",
             "O :- PrintBType :- t-PrintBtype",
             "C :- Autorun :- t-AutoRun",
             // read under the host's title though their screens read them under the product word
             "O :- Title :- t-Title",
             "O :- UseGTime :- t-UseGTime",
             // read under the product word
             "O :- QuickTicket :- p-QuickTicket",
             "P :- COM :- p-COM",
             "P :- POSSpeed :- p-POSspeed",
             "P :- POSSpeed :- p-POSType"})
        QVERIFY2(records.contains(latin(expected)), expected);
}

void TestSettingsFile::testListRecordsTableByTable()
{
    Machine machine;
    QVERIFY(machine.database.isValid());
    Connection& db = machine.database.connection();
    QVERIFY(settingsfile::listRecords(db).isEmpty());
    run(db, "INSERT INTO rclient (computername, \"user\") VALUES ('pc-9', 'ADMIN')");
    run(db, "INSERT INTO restrictdisallow (name, type) VALUES ('game.exe', 0)");
    run(db, "INSERT INTO restrictdisallow (name, type) VALUES ('word.exe', -1)");
    run(db, "INSERT INTO quickt (tickettype) VALUES ('1hr for 100')");
    run(db, "INSERT INTO capt (caption) VALUES ('Casino')");
    run(db, "INSERT INTO restriction (computername) VALUES ('pc-1')");
    QCOMPARE(settingsfile::listRecords(db),
        QStringList({latin("I :- QuickT :- TicketType :- 1hr for 100"),
            latin("I :- Restriction :- Computername :- PC-1"),
            latin("I :- RClient :- Computername :- PC-9"),
            latin("I :- Capt :- Caption :- CASINO"),
            latin("I :- RestrictDisallow :- Name :- WORD.EXE"),
            latin("I :- RestrictDisallow* :- Name :- GAME.EXE")}));
}

void TestSettingsFile::testEveryLineIsDigitsThreeTimesItsText()
{
    Machine machine;
    const QStringList records = settingsfile::fixedRecords(machine.settings(), 5);
    const QList<QByteArray> lines = settingsfile::fileContent(records).split('\n');
    QCOMPARE(lines.size(), records.size() + 1);
    QVERIFY(lines.last().isEmpty());
    for (qsizetype i = 0; i < records.size(); ++i) {
        const QByteArray line = lines.at(i).chopped(1);
        QCOMPARE(lines.at(i).back(), '\r');
        QCOMPARE(line.size(), records.at(i).size() * 3);
        for (const char digit : line)
            QVERIFY(digit >= '0' && digit <= '9');
        QCOMPARE(UnscrambleLine(QString::fromLatin1(line)), std::optional<QString>(records.at(i)));
    }
    QCOMPARE(ScrambleLine(QString()), QString());
    QCOMPARE(settingsfile::fileContent({QString()}), QByteArray("\r\n"));
}

void TestSettingsFile::testReadFieldsSplitsLinesAndCommas()
{
    QCOMPARE(settingsfile::readFields("123\r\n456\n\n789\r  012  "),
        QStringList({latin("123"), latin("456"), latin("789"), latin("012")}));
    QCOMPARE(settingsfile::readFields("123,456\r\n\"78,9\"\r\n,\r\n"),
        QStringList({latin("123"), latin("456"), latin("78,9")}));
    QCOMPARE(settingsfile::readFields(""), QStringList());
    QCOMPARE(settingsfile::readFields(QByteArray("1\0002", 3)), QStringList({QString::fromLatin1("1\0002", 3)}));
}

void TestSettingsFile::testRoundTripBetweenTwoMachines()
{
    Machine first;
    Machine second;
    QVERIFY(first.database.isValid() && second.database.isValid());
    fillEveryKey(first.store);
    Connection& from = first.database.connection();
    run(from, "INSERT INTO quickt (tickettype) VALUES ('1hr for 100')");
    run(from, "INSERT INTO restriction (computername, \"user\") VALUES ('pc-1', 'ADMIN')");
    run(from, "INSERT INTO restrictdisallow (name, type) VALUES ('word.exe', -1)");
    run(from, "INSERT INTO restrictdisallow (name, type) VALUES ('game.exe', 0)");
    const QByteArray file
        = settingsfile::fileContent(settingsfile::fixedRecords(first.settings(), 5) + settingsfile::listRecords(from));

    // The second machine has lists of its own and other settings.
    Connection& to = second.database.connection();
    run(to, "INSERT INTO capt (caption) VALUES ('KEPT')");
    run(to, "INSERT INTO restriction (computername) VALUES ('OLD')");
    run(to, "INSERT INTO restrictdisallow (name, type) VALUES ('old.exe', 0)");
    const settingsfile::LoadResult result = settingsfile::load(file, second.store, CafeHost, to);
    QCOMPARE(result.applied + result.skipped, 139);

    // What the reader does not restore: keys not in the file, keys the writer spells another way or
    // writes without a value, and the POS records. Everything else under the host's title is the
    // first machine's.
    const QSet<QString> notRestored {latin("Option/PrintType"),
        latin("Option/AutoSave"),
        latin("Option/NoList"),
        latin("Option/NoPassList"),
        latin("Option/ExLog"),
        latin("Option/ExType"),
        latin("Option/TPlen"),
        latin("Option/Download"),
        latin("Option/DownType"),
        latin("Option/Bold"),
        latin("Option/Size"),
        latin("Option/SameIP"),
        latin("Option/CUSTOMBIND"),
        latin("Option/ServerUse"),
        latin("Option/ServerPort"),
        latin("Option/ExternalData"),
        latin("Option/ExternalPort"),
        latin("Option/UpdateClients"),
        latin("Option/Skin"),
        latin("Option/CloseListen"),
        latin("Option/Level"),
        latin("Option/Colour"),
        latin("Option/AllowSMS"),
        latin("Option/AllowMSMS"),
        latin("Option/EnablePrint"),
        latin("Option/PingTimeout"),
        latin("Option/VShutTime"),
        latin("Option/EnableCleanUp"),
        latin("Settings/Number"),
        latin("Settings/Hr"),
        latin("Settings/Min"),
        latin("Settings/Amount"),
        latin("POS/Stitle"),
        latin("POS/Type"),
        latin("POS/SGroup"),
        latin("POS/SUserL"),
        latin("POS/SAddr"),
        latin("POS/SPassL"),
        latin("POS/POSType"),
        latin("POS/COM"),
        latin("POS/POSspeed"),
        latin("COption/NOMMComputer"),
        latin("COption/NoDrives"),
        // The login template of the ticket codes is newer than the file's records.
        latin("Option/LoginTemplate")};
    QStringList restored;
    for (const PreferenceKey& key : preferenceCatalogue()) {
        const QString name = key.sectionText() + u'/' + key.nameText();
        const QString value = second.value(key, CafeHost);
        if (name == latin("Option/QuickTicket")) {
            // Read under the product word, restored under the title.
            QCOMPARE(value, latin("p-QuickTicket"));
            restored << name;
            continue;
        }
        if (notRestored.contains(name)) {
            QVERIFY2(value == latin("<absent>"), qPrintable(name + latin(" = ") + value));
            continue;
        }
        QVERIFY2(value == distinctValue(key, CafeHost), qPrintable(name + latin(" = ") + value));
        restored << name;
    }
    // 63 O records less the three without a value and Color and Enable, 61 C records less
    // NOMMComputer, and TopBarMov.
    QCOMPARE(restored.size(), 58 + 60 + 1);
    // Nothing is restored under the product word; the two keys of other spellings land beside.
    for (const PreferenceKey& key : preferenceCatalogue())
        QCOMPARE(second.value(key, QString(ProductWord)), latin("<absent>"));
    QCOMPARE(second.store.GetSetting(CafeHost, latin("Option"), latin("Color"), {}), latin("t-Colour"));
    QCOMPARE(second.store.GetSetting(CafeHost, latin("Option"), latin("Enable"), {}), latin("t-EnablePrint"));

    // Lists: the programs come back upper-cased, the machines without their staff member; a list
    // that the file does not carry keeps its rows.
    QCOMPARE(rows(to, "select Name, Type from RestrictDisallow order by Name"),
        QStringList({latin("GAME.EXE | False"), latin("WORD.EXE | True")}));
    QCOMPARE(rows(to, "select ComputerName, User, Times from Restriction"), QStringList({latin("PC-1 |  | ")}));
    QCOMPARE(rows(to, "select TicketType from QuickT"), QStringList({latin("1hr for 100")}));
    QCOMPARE(rows(to, "select Caption from Capt"), QStringList({latin("KEPT")}));
}

void TestSettingsFile::testRecordsAreAppliedOneByOne()
{
    Machine machine;
    Connection& db = machine.database.connection();
    const QByteArray file = scrambled({latin("O :- Expire :- 30"),
                                latin("O :- Title :- Cafe :- Main"),
                                latin("C :- Run :- 1"),
                                latin("S :- TopBarMov :- 0"),
                                latin("P :- COM :- COM4"),
                                latin("O :- VShutTime- 10:00"),
                                latin("O :- :- nameless"),
                                latin("X :- Expire :- 99"),
                                latin("o :- Expire :- 98"),
                                latin("I :- Capt :- Caption :- it's"),
                                latin("I :- Capt :- Caption :- FINE"),
                                latin("True")})
        + "123\r\n99999\r\nabc\r\n";
    const settingsfile::LoadResult result = settingsfile::load(file, machine.store, CafeHost, db);
    QCOMPARE(result.applied, 5);
    QCOMPARE(result.skipped, 10);
    QCOMPARE(machine.value(keys::Expire, CafeHost), latin("30"));
    // A value holding the separator is cut there.
    QCOMPARE(machine.value(keys::Title, CafeHost), latin("Cafe"));
    QCOMPARE(machine.store.GetSetting(CafeHost, latin("COption"), latin("Run"), {}), latin("1"));
    QCOMPARE(machine.value(keys::TopBarMov, CafeHost), latin("0"));
    QCOMPARE(machine.value(keys::pos::COM, QString(ProductWord)), latin("<absent>"));
    QCOMPARE(machine.value(keys::pos::COM, CafeHost), latin("<absent>"));
    QCOMPARE(machine.value(keys::VShutTime, CafeHost), latin("<absent>"));
    QCOMPARE(rows(db, "select Caption from Capt"), QStringList({latin("FINE")}));
}

void TestSettingsFile::testListsAreEmptiedAtTheirFirstRecord()
{
    Machine machine;
    Connection& db = machine.database.connection();
    run(db, "INSERT INTO capt (caption) VALUES ('OLD')");
    run(db, "INSERT INTO quickt (tickettype) VALUES ('old')");
    run(db, "INSERT INTO rclient (computername) VALUES ('OLD')");
    run(db, "INSERT INTO restrictdisallow (name, type) VALUES ('old.exe', -1)");
    // A file without programs still empties them; a program record between two captions leaves the
    // captions alone, another table between them empties the captions again.
    settingsfile::load(scrambled({latin("I :- Capt :- Caption :- A"),
                           latin("I :- RestrictDisallow :- Name :- X.EXE"),
                           latin("I :- Capt :- Caption :- B"),
                           latin("I :- QuickT :- TicketType :- q1"),
                           latin("I :- Capt :- Caption :- C"),
                           latin("I :- restrictdisallow* :- Name :- Y.EXE")}),
        machine.store,
        CafeHost,
        db);
    QCOMPARE(rows(db, "select Caption from Capt"), QStringList({latin("C")}));
    QCOMPARE(rows(db, "select TicketType from QuickT"), QStringList({latin("q1")}));
    QCOMPARE(rows(db, "select ComputerName from RClient"), QStringList({latin("OLD")}));
    QCOMPARE(rows(db, "select Name, Type from RestrictDisallow order by Name"),
        QStringList({latin("X.EXE | True"), latin("Y.EXE | False")}));

    settingsfile::load(scrambled({latin("O :- Expire :- 1")}), machine.store, CafeHost, db);
    QCOMPARE(rows(db, "select count(*) from RestrictDisallow"), QStringList({latin("0")}));
    QCOMPARE(rows(db, "select Caption from Capt"), QStringList({latin("C")}));
}

void TestSettingsFile::testHostileRecordsTouchNothingElse()
{
    Machine machine;
    Connection& db = machine.database.connection();
    const QStringList before = rows(db, "select Username, Password, Type from Users");
    const QStringList options = rows(db, "select * from Options");
    QVERIFY(!before.isEmpty());
    settingsfile::load(scrambled({latin("I :- Users :- Username :- INTRUDER"),
                           latin("I :- Account :- Username :- FREE"),
                           latin("I :- Options :- TicketIniName :- X"),
                           latin("I :- Capt :- Caption) values ('x'); delete from Users; -- :- x"),
                           latin("I :- Capt; delete from Users :- Caption :- x"),
                           latin("I :- RestrictDisallow :- Name,Type) values ('a',true); delete from Users; -- :- x"),
                           latin("I :- Capt :- Caption :- ok')"),
                           latin("I :- Capt :- Caption")}),
        machine.store,
        CafeHost,
        db);
    QCOMPARE(rows(db, "select Username, Password, Type from Users"), before);
    QCOMPARE(rows(db, "select count(*) from Account"), QStringList({latin("0")}));
    QCOMPARE(rows(db, "select * from Options"), options);
    // The first Capt record emptied the captions; nothing got in.
    QCOMPARE(rows(db, "select count(*) from Capt"), QStringList({latin("0")}));
    QCOMPARE(rows(db, "select count(*) from RestrictDisallow"), QStringList({latin("0")}));
}

void TestSettingsFile::testMutatedFilesNeverCrashNorReachOtherTables()
{
    Machine source;
    fillEveryKey(source.store);
    Connection& from = source.database.connection();
    run(from, "INSERT INTO capt (caption) VALUES ('casino')");
    run(from, "INSERT INTO restrictdisallow (name, type) VALUES ('game.exe', 0)");
    const QStringList records = settingsfile::fixedRecords(source.settings(), 5) + settingsfile::listRecords(from);

    Machine target;
    Connection& db = target.database.connection();
    const QStringList users = rows(db, "select * from Users");
    const QStringList options = rows(db, "select * from Options");
    QRandomGenerator random(20261124);
    for (int round = 0; round < 60; ++round) {
        // A few records of the file, then damage of every kind.
        QStringList picked;
        for (int i = 0; i < 12; ++i)
            picked << records.at(random.bounded(int(records.size())));
        QByteArray file = settingsfile::fileContent(picked);
        const int damage = random.bounded(1, 12);
        for (int i = 0; i < damage && !file.isEmpty(); ++i) {
            const int at = random.bounded(int(file.size()));
            switch (random.bounded(6)) {
            case 0:
                file[at] = char(random.bounded(256));
                break;
            case 1:
                file.remove(at, random.bounded(1, 8));
                break;
            case 2:
                file.insert(at, char("0123456789,\"\r\n"[random.bounded(14)]));
                break;
            case 3:
                file.truncate(at);
                break;
            case 4:
                file.insert(at, file.mid(random.bounded(int(file.size())), random.bounded(1, 40)));
                break;
            default:
                file.insert(
                    at, ScrambleLine(latin("I :- Users :- Username :- X%1\r\n").arg(round)).toLatin1() + "\r\n");
                break;
            }
        }
        const settingsfile::LoadResult result = settingsfile::load(file, target.store, CafeHost, db);
        QVERIFY(result.applied + result.skipped <= file.size());
        QCOMPARE(rows(db, "select * from Users"), users);
        QCOMPARE(rows(db, "select * from Options"), options);
        QCOMPARE(rows(db, "select count(*) from Account"), QStringList({latin("0")}));
    }
    // Whatever was stored went under the host's title, never under the product word.
    for (const PreferenceKey& key : preferenceCatalogue())
        QCOMPARE(target.value(key, QString(ProductWord)), latin("<absent>"));
}

void TestSettingsFile::testWriteFileKeepsTheOldFileWhenItCannotWrite()
{
    QTemporaryDir folder;
    const QString path = settingsfile::defaultPath(folder.path());
    QCOMPARE(path, folder.filePath(latin("Settings.Sav")));
    QCOMPARE(settingsfile::writeFile(path, "111\r\n"), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("111\r\n"));
    QVERIFY(!settingsfile::writeFile(folder.filePath(latin("missing/Settings.Sav")), "1").isEmpty());
}

QTEST_GUILESS_MAIN(TestSettingsFile)
#include "TestSettingsFile.moc"
