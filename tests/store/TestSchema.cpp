#include "store/Schema.h"

#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(marlet::ColumnType)

class TestSchema : public QObject
{
    Q_OBJECT

private slots:
    void testEveryRequiredTableIsThere();
    void testAccountColumnsStandInTheOrderOfANewTicket();
    void testRecycleBinIsAccountThenItsOwnTwoColumns();
    void testScratchTables_data();
    void testScratchTables();
    void testDeclaredTypes_data();
    void testDeclaredTypes();
    void testLookupIgnoresCase();
    void testIdentificationNumberKeepsItsSpelling();
};

void TestSchema::testEveryRequiredTableIsThere()
{
    const QStringList required = u"Account RecycleBin TicketInfo Members Users Options QuickT Cafe Restriction "
                                 u"RClient RestrictDisallow Capt SysUsage Activated Register POS Rechargeinfo "
                                 u"Row6PrintTemp Row3PrintTemp RowPrintTemp"_s.split(u' ');
    QStringList names;
    for (const TableDef& table : Schema::standard().tables())
        names.append(table.name);
    QCOMPARE(names, required);
}

void TestSchema::testAccountColumnsStandInTheOrderOfANewTicket()
{
    const QStringList expected = u"TicketGrp TicketNo Username Password Time BackTime ByWhom Expire Days DateCreated "
                                 u"Amount OrgTime LastUsed NEW StartTime EndTime ComputerUsed AccountAdded NoAdded POS "
                                 u"Member Flexy Autorecharge Reday Redate Retime Quota Night Once TotalTimeUsed "
                                 u"TimeLastUsed NoLogIn Print"_s.split(u' ');
    const TableDef* account = Schema::standard().table(u"Account");
    QVERIFY(account);
    QStringList names;
    for (const ColumnDef& column : account->columns)
        names.append(column.name);
    QCOMPARE(names, expected);
}

void TestSchema::testRecycleBinIsAccountThenItsOwnTwoColumns()
{
    const TableDef* account = Schema::standard().table(u"Account");
    const TableDef* bin = Schema::standard().table(u"RecycleBin");
    QCOMPARE(bin->columns.size(), account->columns.size() + 2);
    for (qsizetype i = 0; i < account->columns.size(); ++i) {
        QCOMPARE(bin->columns.at(i).name, account->columns.at(i).name);
        QCOMPARE(bin->columns.at(i).type, account->columns.at(i).type);
    }
    QCOMPARE(bin->columns.at(account->columns.size()).name, u"DateTimeDeleted"_s);
    QCOMPARE(bin->columns.at(account->columns.size() + 1).name, u"Reason"_s);
    QCOMPARE(bin->columns.last().type, ColumnType::Text);
}

void TestSchema::testScratchTables_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("slotCount");
    QTest::newRow("six tickets a row") << u"Row6PrintTemp"_s << 6;
    QTest::newRow("three tickets a row") << u"Row3PrintTemp"_s << 3;
    QTest::newRow("two tickets a row") << u"RowPrintTemp"_s << 2;
}

void TestSchema::testScratchTables()
{
    QFETCH(QString, table);
    QFETCH(int, slotCount);
    const TableDef* def = Schema::standard().table(table);
    QVERIFY(def);
    QCOMPARE(def->columns.size(), 9 * slotCount);
    const QStringList fields = u"TicketGrpNo Username Password Time Amount Expire Nightinfo Quota Days"_s.split(u' ');
    for (int slot = 1; slot <= slotCount; ++slot) {
        // The program writes position k's first column at index 9 x (k - 1).
        const int first = 9 * (slot - 1);
        for (int field = 0; field < 9; ++field)
            QCOMPARE(def->columns.at(first + field).name, fields.at(field) + QString::number(slot));
        QCOMPARE(def->columns.at(first + 5).type, ColumnType::Date);
        QCOMPARE(def->columns.at(first + 3).type, ColumnType::Number);
        QCOMPARE(def->columns.at(first).type, ColumnType::Text);
    }
    QCOMPARE(def->columnIndex(u"NightInfo1"), 6);
}

void TestSchema::testDeclaredTypes_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("column");
    QTest::addColumn<ColumnType>("type");
    QTest::newRow("ticket time is a single") << u"Account"_s << u"Time"_s << ColumnType::Single;
    QTest::newRow("NEW is a boolean") << u"Account"_s << u"NEW"_s << ColumnType::Boolean;
    QTest::newRow("Expire of a ticket is a date") << u"Account"_s << u"Expire"_s << ColumnType::Date;
    QTest::newRow("NoAdded is an integer") << u"Account"_s << u"NoAdded"_s << ColumnType::Integer;
    QTest::newRow("Quota is a number") << u"Account"_s << u"Quota"_s << ColumnType::Number;
    QTest::newRow("TimeLastUsed is text") << u"Account"_s << u"TimeLastUsed"_s << ColumnType::Text;
    QTest::newRow("TotalCost is a double") << u"TicketInfo"_s << u"TotalCost"_s << ColumnType::Double;
    QTest::newRow("Solotime is a double") << u"Users"_s << u"Solotime"_s << ColumnType::Double;
    QTest::newRow("Expire of a staff account is text") << u"Users"_s << u"Expire"_s << ColumnType::Text;
    QTest::newRow("the night time start is text") << u"Options"_s << u"NightTimeStart"_s << ColumnType::Text;
    QTest::newRow("LogIn is a boolean") << u"Options"_s << u"LogIn"_s << ColumnType::Boolean;
    QTest::newRow("a cafe number is a number") << u"Cafe"_s << u"Cafename"_s << ColumnType::Number;
    QTest::newRow("the recharge moment is a date") << u"Rechargeinfo"_s << u"timedate"_s << ColumnType::Date;
    QTest::newRow("the system usage time is text") << u"SysUsage"_s << u"Times"_s << ColumnType::Text;
    QTest::newRow("a restriction's moment is a date") << u"Restriction"_s << u"Times"_s << ColumnType::Date;
}

void TestSchema::testDeclaredTypes()
{
    QFETCH(QString, table);
    QFETCH(QString, column);
    QFETCH(ColumnType, type);
    const ColumnDef* def = Schema::standard().column(table, column);
    QVERIFY(def);
    QCOMPARE(def->type, type);
}

void TestSchema::testLookupIgnoresCase()
{
    QCOMPARE(Schema::standard().table(u"ACCOUNT"), Schema::standard().table(u"Account"));
    QCOMPARE(Schema::standard().column(u"account", u"datecreated")->name, u"DateCreated"_s);
    QCOMPARE(Schema::standard().column(u"Account", u"New")->name, u"NEW"_s);
    QCOMPARE(Schema::standard().table(u"Accounts"), nullptr);
    QCOMPARE(Schema::standard().column(u"Account", u"Surname"), nullptr);
}

void TestSchema::testIdentificationNumberKeepsItsSpelling()
{
    QVERIFY(Schema::standard().column(u"Members", u"Identication_no"));
    QVERIFY(!Schema::standard().column(u"Members", u"Identification_no"));
    QVERIFY(Schema::standard().column(u"Members", u"Identification_item"));
}

QTEST_GUILESS_MAIN(TestSchema)
#include "TestSchema.moc"
