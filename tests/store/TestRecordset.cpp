#include "store/Recordset.h"

#include "store/Connection.h"
#include "store/Schema.h"
#include "store/StoreValue.h"
#include "support/StoreTestDatabase.h"

#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

namespace {

const QDate today(2024, 3, 15);

// A batch ticket as the batch creator writes it, through an optimistic result set.
bool addTicket(Connection& connection, const QString& name, int seconds, bool member = false)
{
    Recordset rs;
    if (!rs.Open(Statement(u"Select * from Account where Username = '{}'"_s, {name}),
            connection,
            CursorType::Static,
            LockType::Optimistic))
        return false;
    const QList<std::pair<QString, QVariant>> fields = {{u"TicketGrp"_s, u"NVT240315090703"_s},
        {u"TicketNo"_s, u"001"_s},
        {u"Username"_s, name},
        {u"Password"_s, u"12345"_s},
        {u"Time"_s, seconds},
        {u"BackTime"_s, seconds},
        {u"ByWhom"_s, u"ADMINISTRATOR"_s},
        {u"Expire"_s, QVariant()},
        {u"Days"_s, 0},
        {u"DateCreated"_s, today},
        {u"Amount"_s, u"N50"_s},
        {u"OrgTime"_s, seconds},
        {u"LastUsed"_s, today},
        {u"NEW"_s, true},
        {u"ComputerUsed"_s, u"NONE"_s},
        {u"AccountAdded"_s, u"NONE"_s},
        {u"NoAdded"_s, 0},
        {u"POS"_s, false},
        {u"Member"_s, member},
        {u"Night"_s, false},
        {u"Once"_s, false},
        {u"Quota"_s, 0}};
    if (!rs.AddNew())
        return false;
    for (const auto& [field, value] : fields) {
        if (!rs.setValue(field, value))
            return false;
    }
    return rs.Update();
}

long countRows(Connection& connection, const QString& statement)
{
    Recordset rs;
    return rs.Open(statement, connection) ? rs.RecordCount() : -1;
}

QStringList usernames(Connection& connection, const QString& statement)
{
    Recordset rs;
    QStringList names;
    if (!rs.Open(statement, connection))
        return {u"(open failed)"_s};
    for (; !rs.Eof(); rs.MoveNext())
        names.append(rs.value(u"Username"_s).toString());
    return names;
}

} // namespace

class TestRecordset : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testWalkingTheRows();
    void testValuesComeBackTypedBySchema();
    void testBooleansAreStoredAsMinusOneAndZero();
    void testNullComesBackNull();
    void testSingleStaysApartFromDouble();
    void testSameDateWrittenTwiceComparesEqual();
    void testFieldsByIndexAndByNameInAnyCase();
    void testMissingFieldFailsVisibly();
    void testEmptyResultIsAtBothEnds();
    void testMovingBeyondTheEndsFails();
    void testReadOnlyResultRefusesChanges();
    void testUpdateWritesTheCurrentRow();
    void testCancelUpdateDiscardsChanges();
    void testMovingSavesPendingChanges();
    void testAddNewOnAFilteredSelectInsertsIntoTheTable();
    void testTypeMismatchIsRefused();
    void testDeleteRemovesTheCurrentRow();
    void testDeletingEveryRowInALoop();
    void testRequerySeesOtherProgramsChanges();
    void testJoinedSelectIsReadOnly();
    void testCopyToRecycleBinByPosition();
    void testStatementThatIsNoSelectRunsAndStaysClosed();
    void testQuoteInAValueFailsAsASyntaxError();
    void testOpenNeedsAnOpenConnectionAndAClosedResultSet();
    void testCountAndExpressionColumns();
    void testCountingRowsGivesTheRecordCountWithoutTheRows();
    void testReopeningOnOtherFieldsForgetsTheNamesLearnt();
    void testStoredRowIsTheRowAsHeldWhileNothingIsPending();
    void testCopyValueCopiesAsSetValueOfTheValueWould();
    void testStoredMomentReadsWhatADateFieldReads_data();
    void testStoredMomentReadsWhatADateFieldReads();

private:
    std::unique_ptr<test::StoreTestDatabase> m_store;
};

void TestRecordset::init()
{
    m_store = std::make_unique<test::StoreTestDatabase>();
    QVERIFY2(m_store->isValid(), qPrintable(m_store->error()));
}

void TestRecordset::testWalkingTheRows()
{
    Connection& connection = m_store->connection();
    for (const QString& name : {u"NVT0000001"_s, u"NVT0000002"_s, u"NVT0000003"_s})
        QVERIFY(addTicket(connection, name, 3600));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account where member=false"_s, connection));
    QCOMPARE(rs.State(), 1);
    QCOMPARE(rs.RecordCount(), 3L);
    QVERIFY(!rs.Bof());
    QVERIFY(!rs.Eof());
    QStringList seen;
    while (!rs.Eof()) {
        seen.append(rs.value(u"Username"_s).toString());
        QVERIFY(rs.MoveNext());
    }
    QCOMPARE(seen, QStringList({u"NVT0000001"_s, u"NVT0000002"_s, u"NVT0000003"_s}));
    QVERIFY(rs.MoveLast());
    QCOMPARE(rs.value(u"Username"_s).toString(), u"NVT0000003"_s);
    QVERIFY(rs.MovePrevious());
    QCOMPARE(rs.value(u"Username"_s).toString(), u"NVT0000002"_s);
    QVERIFY(rs.MoveFirst());
    QCOMPARE(rs.value(u"Username"_s).toString(), u"NVT0000001"_s);
    QVERIFY(rs.MovePrevious());
    QVERIFY(rs.Bof());
    QVERIFY(!rs.Eof());
    rs.Close();
    QCOMPARE(rs.State(), 0);
    QCOMPARE(rs.RecordCount(), -1L);
    QVERIFY(rs.Eof());
}

void TestRecordset::testValuesComeBackTypedBySchema()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 5400));
    QVERIFY(
        connection.Execute(u"INSERT INTO TicketInfo (TicketGrp,Number,Time,Amount,TotalCost,GeneratedBy,TimeGenerated) "
                           u"Values ('G1',50,60,'50',2500.5,'ADMIN','Started')"_s));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection));
    QCOMPARE(rs.value(u"Username"_s).typeId(), int(QMetaType::QString));
    QCOMPARE(rs.value(u"Time"_s).typeId(), int(QMetaType::Float));
    QCOMPARE(rs.value(u"Time"_s).toFloat(), 5400.0f);
    QCOMPARE(rs.value(u"NEW"_s), QVariant(true));
    QCOMPARE(rs.value(u"Member"_s), QVariant(false));
    QCOMPARE(rs.value(u"NoAdded"_s), QVariant(qint64(0)));
    QCOMPARE(rs.value(u"DateCreated"_s), QVariant(QDateTime(today, QTime(0, 0))));
    QCOMPARE(rs.value(u"Amount"_s), QVariant(u"N50"_s));
    rs.Close();
    QVERIFY(rs.Open(u"select * from TicketInfo"_s, connection));
    QCOMPARE(rs.value(u"TotalCost"_s), QVariant(2500.5));
    QCOMPARE(rs.value(u"Number"_s), QVariant(qint64(50)));
    QCOMPARE(rs.value(u"Time"_s), QVariant(60.0f));
    QCOMPARE(rs.value(u"Amount"_s), QVariant(u"50"_s));
}

void TestRecordset::testBooleansAreStoredAsMinusOneAndZero()
{
    Connection& connection = m_store->connection();
    QVERIFY(connection.Execute(u"Insert INTO RESTRICTDISALLOW (Name,Type) values ('game.exe',true)"_s));
    QVERIFY(connection.Execute(u"Insert INTO RESTRICTDISALLOW (Name,Type) values ('chat.exe',false)"_s));
    QCOMPARE(countRows(connection, u"select * from RestrictDisallow where Type = -1"_s), 1L);
    QCOMPARE(countRows(connection, u"select * from RestrictDisallow where Type = 0"_s), 1L);
    Recordset rs;
    QVERIFY(rs.Open(u"select * from RestrictDisallow where Type = True"_s, connection));
    QCOMPARE(rs.RecordCount(), 1L);
    QCOMPARE(rs.value(u"Type"_s), QVariant(true));
    QCOMPARE(rs.value(u"Name"_s), QVariant(u"game.exe"_s));
    rs.Close();
    QVERIFY(rs.Open(
        u"select * from RestrictDisallow where Type = FALSE"_s, connection, CursorType::Static, LockType::Optimistic));
    QCOMPARE(rs.value(u"Type"_s), QVariant(false));
    QVERIFY(rs.setValue(u"Type"_s, true));
    QVERIFY(rs.Update());
    QCOMPARE(countRows(connection, u"select * from RestrictDisallow where Type = -1"_s), 2L);
}

void TestRecordset::testNullComesBackNull()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection, CursorType::Static, LockType::Optimistic));
    bool ok = false;
    const QVariant expire = rs.value(u"Expire"_s, &ok);
    QVERIFY(ok);
    QVERIFY(expire.isNull());
    QVERIFY(rs.value(u"TimeLastUsed"_s).isNull());
    QVERIFY(rs.value(u"Autorecharge"_s).isNull());
    QVERIFY(rs.setValue(u"Expire"_s, QDate(2024, 4, 4)));
    QVERIFY(rs.Update());
    QCOMPARE(rs.value(u"Expire"_s), QVariant(QDateTime(QDate(2024, 4, 4), QTime(0, 0))));
    QVERIFY(rs.setValue(u"Expire"_s, QVariant()));
    QVERIFY(rs.Update());
    QVERIFY(rs.Requery());
    QVERIFY(rs.value(u"Expire"_s).isNull());
    QCOMPARE(countRows(connection, u"select * from Account where Expire is null"_s), 1L);
}

void TestRecordset::testSingleStaysApartFromDouble()
{
    Connection& connection = m_store->connection();
    Recordset rs;
    QVERIFY(rs.Open(u"select * from TicketInfo"_s, connection, CursorType::Static, LockType::Optimistic));
    QVERIFY(rs.AddNew());
    QVERIFY(rs.setValue(u"Time"_s, 3599.0 / 60));
    QVERIFY(rs.setValue(u"TotalCost"_s, 3599.0 / 60));
    QVERIFY(rs.Update());
    QVERIFY(rs.Requery());
    QCOMPARE(rs.value(u"Time"_s).typeId(), int(QMetaType::Float));
    QCOMPARE(rs.value(u"Time"_s).toFloat(), float(3599.0 / 60));
    QCOMPARE(rs.value(u"TotalCost"_s).toDouble(), 3599.0 / 60);
    QVERIFY(double(rs.value(u"Time"_s).toFloat()) != 3599.0 / 60);
}

void TestRecordset::testSameDateWrittenTwiceComparesEqual()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"UNUSED"_s, 3600));
    QVERIFY(addTicket(connection, u"USED"_s, 3600));
    Recordset rs;
    QVERIFY(rs.Open(
        u"select * from Account where Username = 'USED'"_s, connection, CursorType::Static, LockType::Optimistic));
    QVERIFY(rs.setValue(u"LastUsed"_s, QDateTime(today.addDays(2), QTime(18, 35))));
    QVERIFY(rs.Update());
    QCOMPARE(usernames(connection, u"Select * from Account where LastUsed <> DateCreated and member=false"_s),
        QStringList({u"USED"_s}));
    QCOMPARE(usernames(connection, u"Select * from Account where LastUsed > DateCreated"_s), QStringList({u"USED"_s}));
}

void TestRecordset::testFieldsByIndexAndByNameInAnyCase()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection));
    const TableDef* account = Schema::standard().table(u"Account");
    QCOMPARE(rs.fieldCount(), account->columns.size());
    for (int i = 0; i < rs.fieldCount(); ++i) {
        QCOMPARE(rs.fieldName(i), account->columns.at(i).name);
        QCOMPARE(rs.value(i), rs.value(account->columns.at(i).name));
    }
    QCOMPARE(rs.value(2), QVariant(u"NVT0000001"_s));
    QCOMPARE(rs.value(u"username"_s), QVariant(u"NVT0000001"_s));
    QCOMPARE(rs.value(u"USERNAME"_s), QVariant(u"NVT0000001"_s));
    QCOMPARE(rs.fieldIndex(u"datecreated"_s), 9);
    QCOMPARE(rs.value(u"New"_s), rs.value(u"NEW"_s));
}

void TestRecordset::testMissingFieldFailsVisibly()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection, CursorType::Static, LockType::Optimistic));
    bool ok = true;
    QVERIFY(rs.value(u"Surname"_s, &ok).isNull());
    QVERIFY(!ok);
    QVERIFY(rs.lastError().contains(u"Surname"_s));
    ok = true;
    QVERIFY(rs.value(33, &ok).isNull());
    QVERIFY(!ok);
    QVERIFY(!rs.setValue(u"Surname"_s, u"DOE"_s));
    QVERIFY(!rs.setValue(-1, u"DOE"_s));
    QCOMPARE(rs.editMode(), EditMode::None);
    QCOMPARE(rs.fieldIndex(u"Surname"_s), -1);
    QCOMPARE(rs.fieldName(40), QString());
}

void TestRecordset::testEmptyResultIsAtBothEnds()
{
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account where member=true"_s, m_store->connection()));
    QCOMPARE(rs.RecordCount(), 0L);
    QVERIFY(rs.Eof());
    QVERIFY(rs.Bof());
    bool ok = true;
    rs.value(u"Username"_s, &ok);
    QVERIFY(!ok);
    QVERIFY(rs.lastError().startsWith(u"Either BOF or EOF is True"_s));
    QVERIFY(rs.MoveFirst());
    QVERIFY(rs.Eof());
}

void TestRecordset::testMovingBeyondTheEndsFails()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"ONLY"_s, 60));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection));
    QVERIFY(rs.MoveNext());
    QVERIFY(rs.Eof());
    QVERIFY(!rs.MoveNext());
    QVERIFY(rs.MovePrevious());
    QCOMPARE(rs.value(u"Username"_s), QVariant(u"ONLY"_s));
    QVERIFY(rs.MovePrevious());
    QVERIFY(rs.Bof());
    QVERIFY(!rs.MovePrevious());
    QVERIFY(rs.MoveNext());
    QCOMPARE(rs.value(u"Username"_s), QVariant(u"ONLY"_s));
}

void TestRecordset::testReadOnlyResultRefusesChanges()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection, CursorType::Static, LockType::ReadOnly));
    QVERIFY(!rs.setValue(u"Password"_s, u"99999"_s));
    QVERIFY(rs.lastError().startsWith(u"Current Recordset does not support updating"_s));
    QVERIFY(!rs.AddNew());
    QVERIFY(!rs.Delete());
    QVERIFY(rs.Update()); // nothing pending
    QCOMPARE(countRows(connection, u"select * from Account where Password = '12345'"_s), 1L);
}

void TestRecordset::testUpdateWritesTheCurrentRow()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    QVERIFY(addTicket(connection, u"NVT0000002"_s, 3600));
    Recordset rs;
    QVERIFY(
        rs.Open(u"select * from Account where member=false"_s, connection, CursorType::Static, LockType::Optimistic));
    QVERIFY(rs.MoveNext());
    QVERIFY(rs.setValue(u"Time"_s, 7200));
    QVERIFY(rs.setValue(u"accountadded"_s, u"RECHARGED"_s));
    QVERIFY(rs.setValue(u"NoAdded"_s, rs.value(u"NoAdded"_s).toLongLong() + 1));
    QCOMPARE(rs.editMode(), EditMode::Editing);
    QCOMPARE(rs.value(u"Time"_s), QVariant(7200.0f));
    QVERIFY(rs.Update());
    QCOMPARE(rs.editMode(), EditMode::None);
    QCOMPARE(rs.value(u"AccountAdded"_s), QVariant(u"RECHARGED"_s));
    QCOMPARE(rs.value(u"Username"_s), QVariant(u"NVT0000002"_s));

    Recordset check;
    QVERIFY(check.Open(u"select * from Account where AccountAdded = 'RECHARGED'"_s, connection));
    QCOMPARE(check.RecordCount(), 1L);
    QCOMPARE(check.value(u"Username"_s), QVariant(u"NVT0000002"_s));
    QCOMPARE(check.value(u"Time"_s), QVariant(7200.0f));
    QCOMPARE(check.value(u"NoAdded"_s), QVariant(qint64(1)));
    QCOMPARE(check.value(u"BackTime"_s), QVariant(3600.0f));
}

void TestRecordset::testCancelUpdateDiscardsChanges()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection, CursorType::Static, LockType::Optimistic));
    QVERIFY(rs.setValue(u"Password"_s, u"CHANGED"_s));
    QVERIFY(rs.CancelUpdate());
    QCOMPARE(rs.value(u"Password"_s), QVariant(u"12345"_s));
    QVERIFY(rs.AddNew());
    QVERIFY(rs.setValue(u"Username"_s, u"NEVER"_s));
    QVERIFY(rs.CancelUpdate());
    QCOMPARE(rs.value(u"Username"_s), QVariant(u"NVT0000001"_s));
    QCOMPARE(rs.RecordCount(), 1L);
    QCOMPARE(countRows(connection, u"select * from Account"_s), 1L);
    QCOMPARE(countRows(connection, u"select * from Account where Password = 'CHANGED'"_s), 0L);
}

void TestRecordset::testMovingSavesPendingChanges()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    QVERIFY(addTicket(connection, u"NVT0000002"_s, 3600));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection, CursorType::Static, LockType::Optimistic));
    QVERIFY(rs.setValue(u"ComputerUsed"_s, u"ADMINISTRATOR"_s));
    QVERIFY(rs.MoveNext());
    QCOMPARE(rs.editMode(), EditMode::None);
    QCOMPARE(usernames(connection, u"select * from Account where ComputerUsed = 'ADMINISTRATOR'"_s),
        QStringList({u"NVT0000001"_s}));
}

void TestRecordset::testAddNewOnAFilteredSelectInsertsIntoTheTable()
{
    Connection& connection = m_store->connection();
    Recordset rs;
    QVERIFY(rs.Open(
        u"Select * from Account where Username = 'FREE'"_s, connection, CursorType::Static, LockType::Optimistic));
    QCOMPARE(rs.RecordCount(), 0L);
    QVERIFY(rs.AddNew());
    QCOMPARE(rs.editMode(), EditMode::Adding);
    QVERIFY(rs.value(u"Username"_s).isNull());
    QVERIFY(rs.setValue(u"Username"_s, u"OTHER"_s));
    QVERIFY(rs.setValue(u"Time"_s, 600));
    QVERIFY(rs.Update());
    QCOMPARE(rs.RecordCount(), 1L);
    QVERIFY(!rs.Eof());
    QCOMPARE(rs.value(u"Username"_s), QVariant(u"OTHER"_s));
    QCOMPARE(rs.value(u"Time"_s), QVariant(600.0f));
    QVERIFY(rs.value(u"Password"_s).isNull());
    QCOMPARE(usernames(connection, u"select * from Account"_s), QStringList({u"OTHER"_s}));
    // The new row can be changed again through the same result set.
    QVERIFY(rs.setValue(u"Password"_s, u"777"_s));
    QVERIFY(rs.Update());
    QCOMPARE(countRows(connection, u"select * from Account where Password = '777'"_s), 1L);
}

void TestRecordset::testTypeMismatchIsRefused()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection, CursorType::Static, LockType::Optimistic));
    QVERIFY(!rs.setValue(u"Time"_s, u"abc"_s));
    QVERIFY(rs.lastError().contains(u"Time"_s));
    QVERIFY(!rs.setValue(u"NEW"_s, u"maybe"_s));
    QVERIFY(!rs.setValue(u"Expire"_s, u"not a date"_s));
    QVERIFY(!rs.setValue(u"NoAdded"_s, 3.0e10));
    QCOMPARE(rs.editMode(), EditMode::None);
    QVERIFY(rs.setValue(u"NEW"_s, u"False"_s));
    QVERIFY(rs.setValue(u"Time"_s, u"90"_s));
    QVERIFY(rs.setValue(u"NoAdded"_s, 2.5));
    QVERIFY(rs.setValue(u"Expire"_s, u"05/01/2009"_s));
    QVERIFY(rs.Update());
    QCOMPARE(rs.value(u"NEW"_s), QVariant(false));
    QCOMPARE(rs.value(u"Time"_s), QVariant(90.0f));
    QCOMPARE(rs.value(u"NoAdded"_s), QVariant(qint64(2)));
    QCOMPARE(rs.value(u"Expire"_s), QVariant(QDateTime(QDate(2009, 1, 5), QTime(0, 0))));
}

void TestRecordset::testDeleteRemovesTheCurrentRow()
{
    Connection& connection = m_store->connection();
    for (const QString& name : {u"A1"_s, u"A2"_s, u"A3"_s})
        QVERIFY(addTicket(connection, name, 60));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection, CursorType::Static, LockType::Optimistic));
    QVERIFY(rs.MoveNext());
    QVERIFY(rs.Delete());
    QCOMPARE(rs.RecordCount(), 2L);
    bool ok = true;
    rs.value(u"Username"_s, &ok);
    QVERIFY(!ok);
    QVERIFY(!rs.Delete());
    QVERIFY(rs.MoveNext());
    QCOMPARE(rs.value(u"Username"_s), QVariant(u"A3"_s));
    QVERIFY(rs.MovePrevious());
    QCOMPARE(rs.value(u"Username"_s), QVariant(u"A1"_s));
    QCOMPARE(usernames(connection, u"select * from Account"_s), QStringList({u"A1"_s, u"A3"_s}));
}

void TestRecordset::testDeletingEveryRowInALoop()
{
    Connection& connection = m_store->connection();
    for (const QString& name : {u"A1"_s, u"A2"_s, u"A3"_s, u"A4"_s})
        QVERIFY(addTicket(connection, name, 60, name == u"A4"_s));
    Recordset rs;
    QVERIFY(
        rs.Open(u"select * from Account where member=false"_s, connection, CursorType::Static, LockType::Optimistic));
    int deleted = 0;
    while (!rs.Eof()) {
        QVERIFY(rs.Delete());
        ++deleted;
        QVERIFY(rs.MoveNext());
    }
    QCOMPARE(deleted, 3);
    QCOMPARE(rs.RecordCount(), 0L);
    QCOMPARE(usernames(connection, u"select * from Account"_s), QStringList({u"A4"_s}));
}

void TestRecordset::testRequerySeesOtherProgramsChanges()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"A1"_s, 60));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection));
    Connection other;
    QVERIFY(other.Open(m_store->connectionString()));
    QVERIFY(addTicket(other, u"A2"_s, 60));
    QCOMPARE(rs.RecordCount(), 1L);
    QVERIFY(rs.MoveNext());
    QVERIFY(rs.Requery());
    QCOMPARE(rs.RecordCount(), 2L);
    QCOMPARE(rs.value(u"Username"_s), QVariant(u"A1"_s));
    other.Close();
}

void TestRecordset::testJoinedSelectIsReadOnly()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"MEMBER1"_s, 60, true));
    QVERIFY(connection.Execute(u"UPDATE Account SET TicketGrp = 'M001'"_s));
    QVERIFY(connection.Execute(u"INSERT INTO Members (Member_ID,Surname,Firstname) Values ('M001','DOE','JANE')"_s));
    Recordset rs;
    QVERIFY2(rs.Open(u"select account.*,members.* from Account,Members where account.member=true and "
                     u"account.ticketgrp=members.member_id Order by members.Surname,members.Firstname"_s,
                 connection,
                 CursorType::Static,
                 LockType::Optimistic),
        qPrintable(rs.lastError()));
    QCOMPARE(rs.RecordCount(), 1L);
    QCOMPARE(rs.fieldCount(), 33 + 18);
    QCOMPARE(rs.value(u"Username"_s), QVariant(u"MEMBER1"_s));
    QCOMPARE(rs.value(u"Surname"_s), QVariant(u"DOE"_s));
    QCOMPARE(rs.value(u"Member"_s), QVariant(true));
    QVERIFY(!rs.setValue(u"Surname"_s, u"ROE"_s));
    QCOMPARE(rs.lastError(), u"Cannot update. Database or object is read-only."_s);
}

void TestRecordset::testCopyToRecycleBinByPosition()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3599));
    Recordset account;
    Recordset bin;
    QVERIFY(account.Open(u"Select * from Account where Username = 'NVT0000001'"_s,
        connection,
        CursorType::Static,
        LockType::Optimistic));
    QVERIFY(bin.Open(u"Select * from RecycleBin"_s, connection, CursorType::Static, LockType::Optimistic));
    QVERIFY(bin.AddNew());
    for (int i = 0; i < account.fieldCount(); ++i)
        QVERIFY2(bin.setValue(i, account.value(i)), qPrintable(bin.lastError()));
    QVERIFY(bin.setValue(account.fieldCount(), u"15/11/26/18:35"_s));
    QVERIFY(bin.setValue(account.fieldCount() + 1, u"Deleted by User."_s));
    QVERIFY(bin.Update());
    QVERIFY(account.Delete());

    QVERIFY(bin.Requery());
    QCOMPARE(bin.RecordCount(), 1L);
    QCOMPARE(bin.value(u"Username"_s), QVariant(u"NVT0000001"_s));
    QCOMPARE(bin.value(u"Time"_s), QVariant(3599.0f));
    QCOMPARE(bin.value(u"NEW"_s), QVariant(true));
    QCOMPARE(bin.value(u"DateCreated"_s), QVariant(QDateTime(today, QTime(0, 0))));
    QVERIFY(bin.value(u"Expire"_s).isNull());
    QCOMPARE(bin.value(u"DateTimeDeleted"_s), QVariant(u"15/11/26/18:35"_s));
    QCOMPARE(bin.value(u"Reason"_s), QVariant(u"Deleted by User."_s));
    QCOMPARE(countRows(connection, u"select * from Account"_s), 0L);
}

void TestRecordset::testStatementThatIsNoSelectRunsAndStaysClosed()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"A1"_s, 60));
    Recordset rs;
    QVERIFY(rs.Open(u"Delete * from Account where Username = 'A1'"_s, connection));
    QCOMPARE(rs.State(), 0);
    QCOMPARE(countRows(connection, u"select * from Account"_s), 0L);
}

void TestRecordset::testQuoteInAValueFailsAsASyntaxError()
{
    Recordset rs;
    QVERIFY(!rs.Open(Statement(u"Select * from Users where Username = '{}' and Password = '{}'"_s,
                         {u"ADMINISTRATOR"_s, u"' OR '1'='1"_s}),
        m_store->connection()));
    QCOMPARE(rs.State(), 0);
    QVERIFY2(rs.lastError().contains(u"yntax error"_s), qPrintable(rs.lastError()));
}

void TestRecordset::testOpenNeedsAnOpenConnectionAndAClosedResultSet()
{
    Connection closed;
    Recordset rs;
    QVERIFY(!rs.Open(u"select * from Account"_s, closed));
    QCOMPARE(rs.lastError(), u"Operation is not allowed when the object is closed."_s);
    QVERIFY(rs.Open(u"select * from Account"_s, m_store->connection()));
    QVERIFY(!rs.Open(u"select * from Users"_s, m_store->connection()));
    QCOMPARE(rs.lastError(), u"Operation is not allowed when the object is open."_s);
    QCOMPARE(rs.fieldName(2), u"Username"_s);
}

void TestRecordset::testCountAndExpressionColumns()
{
    Connection& connection = m_store->connection();
    for (const QString& name : {u"A1"_s, u"A2"_s})
        QVERIFY(addTicket(connection, name, 90));
    Recordset rs;
    QVERIFY2(
        rs.Open(
            u"Select Count(*) from Account where member=false"_s, connection, CursorType::Static, LockType::Optimistic),
        qPrintable(rs.lastError()));
    QCOMPARE(rs.value(0), QVariant(qint64(2)));
    QVERIFY(!rs.setValue(0, 5));
}

void TestRecordset::testCountingRowsGivesTheRecordCountWithoutTheRows()
{
    Connection& connection = m_store->connection();
    for (const QString& name : {u"NVT0000001"_s, u"NVT0000002"_s, u"NVT0000003"_s})
        QVERIFY(addTicket(connection, name, 3600));
    QVERIFY(addTicket(connection, u"MEMBER1"_s, 3600, true));
    const QString stock = u"Select * from Account where member=false"_s;
    QCOMPARE(Recordset::countRows(stock, connection), 3L);
    QCOMPARE(Recordset::countRows(stock, connection), countRows(connection, stock));
    const QString byName = u"Select * from Account where Username = '{}'"_s;
    QCOMPARE(Recordset::countRows(Statement(byName, {u"NVT0000002"_s}), connection), 1L);
    QCOMPARE(Recordset::countRows(Statement(byName, {u"NOBODY"_s}), connection), 0L);
    // Where Open fails, there is no count either.
    QCOMPARE(Recordset::countRows(Statement(byName, {u"O'NEIL"_s}), connection), -1L);
    QCOMPARE(Recordset::countRows(u"Select * from NoSuchTable"_s, connection), -1L);
    // A statement that is no select is not run for a count.
    QCOMPARE(Recordset::countRows(u"Delete * from Account where member=false"_s, connection), -1L);
    QCOMPARE(countRows(connection, stock), 3L);
    connection.Close();
    QCOMPARE(Recordset::countRows(stock, connection), -1L);
}

void TestRecordset::testReopeningOnOtherFieldsForgetsTheNamesLearnt()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    Recordset rs;
    QVERIFY(rs.Open(u"select * from Account"_s, connection));
    QCOMPARE(rs.fieldIndex(u"Password"_s), 3);
    rs.Close();
    QCOMPARE(rs.fieldIndex(u"Password"_s), -1);
    QVERIFY(rs.Open(u"select * from Account"_s, connection));
    QCOMPARE(rs.fieldIndex(u"Password"_s), 3);
    rs.Close();
    QVERIFY(rs.Open(u"select Username, Password from Account"_s, connection));
    QCOMPARE(rs.fieldIndex(u"Password"_s), 1);
    QCOMPARE(rs.value(u"Password"_s), QVariant(u"12345"_s));
}

// The stored row is what value() types, cell by cell, and only while value() reads it.
void TestRecordset::testStoredRowIsTheRowAsHeldWhileNothingIsPending()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    Recordset rs;
    QVERIFY(rs.storedRow().empty());
    QVERIFY(rs.Open(u"select * from Account"_s, connection, CursorType::Static, LockType::Optimistic));
    const std::span<const Cell> row = rs.storedRow();
    QCOMPARE(qsizetype(row.size()), qsizetype(rs.fieldCount()));
    const int username = rs.fieldIndex(u"Username"_s);
    QCOMPARE(row[std::size_t(username)].kind, Cell::Kind::Text);
    QCOMPARE(row[std::size_t(username)].bytes(), std::string_view("NVT0000001"));
    QCOMPARE(rs.fieldType(username), std::optional(ColumnType::Text));
    QVERIFY(rs.setValue(u"Username"_s, u"NVT0000009"_s));
    QVERIFY(rs.storedRow().empty());
    QVERIFY(rs.Update());
    QCOMPARE(rs.storedRow()[std::size_t(username)].bytes(), std::string_view("NVT0000009"));
    QVERIFY(rs.MoveNext());
    QVERIFY(rs.storedRow().empty());
    rs.Close();
    QVERIFY(rs.storedRow().empty());
}

void TestRecordset::testStoredMomentReadsWhatADateFieldReads_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"2026-11-24 16:30:05",
             "2026-11-24",
             "2026-11-24T07:08:09",
             "1899-12-30 22:00:00",
             "2024-02-29 00:00:00",
             "2026-02-29 00:00:00",
             "2026-13-01",
             "2026-11-24 24:00:00",
             "2026-11-24 16:60:00",
             "2026/11/24",
             "2026-11-24 16:30",
             "soon",
             "",
             "0000-01-01"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestRecordset::testStoredMomentReadsWhatADateFieldReads()
{
    QFETCH(QString, text);
    const QByteArray utf8 = text.toUtf8();
    const auto moment = storevalue::storedMoment(std::string_view(utf8.constData(), std::size_t(utf8.size())));
    const auto dateTime = storevalue::parseDateTime(text);
    QCOMPARE(moment.has_value(), dateTime.has_value());
    if (!moment)
        return;
    QCOMPARE(QDate(moment->year, moment->month, moment->day), dateTime->date());
    QCOMPARE(QTime(moment->hour, moment->minute, moment->second), dateTime->time());
}

// A copied field is stored as setting the field to the other field's value stores it: texts and
// Nulls as they are held, dates and truth values through their values, a pending change included.
void TestRecordset::testCopyValueCopiesAsSetValueOfTheValueWould()
{
    Connection& connection = m_store->connection();
    QVERIFY(addTicket(connection, u"NVT0000001"_s, 3600));
    // Another program stored a truth value as 1, which SQLite alone can hold.
    const bool sqlite = connection.dialect() == SqlDialect::Sqlite;
    QVERIFY(connection.Execute(Statement(sqlite ? u"UPDATE Account SET Once = 1, ComputerUsed = NULL"_s
                                                : u"UPDATE Account SET Once = true, ComputerUsed = NULL"_s)));
    Recordset ticket;
    QVERIFY(ticket.Open(u"select * from Account"_s, connection, CursorType::Static, LockType::Optimistic));
    QVERIFY(ticket.setValue(u"ByWhom"_s, u"STAFF"_s));
    Recordset bin;
    QVERIFY(bin.Open(u"select * from RecycleBin"_s, connection, CursorType::Static, LockType::Optimistic));
    QVERIFY(bin.AddNew());
    for (int field = 0; field < ticket.fieldCount(); ++field)
        QVERIFY2(bin.copyValue(field, ticket, field), qPrintable(bin.lastError()));
    QVERIFY(!bin.copyValue(0, ticket, ticket.fieldCount()));
    QVERIFY(bin.Update());
    QVERIFY(ticket.CancelUpdate());
    Recordset copied;
    QVERIFY(copied.Open(u"select * from RecycleBin"_s, connection));
    QCOMPARE(copied.RecordCount(), 1L);
    for (int field = 0; field < ticket.fieldCount(); ++field) {
        const QString name = ticket.fieldName(field);
        if (name.compare(u"ByWhom"_s, Qt::CaseInsensitive) != 0)
            QCOMPARE(copied.value(field), ticket.value(field));
    }
    QCOMPARE(copied.value(u"ByWhom"_s).toString(), u"STAFF"_s);
    QVERIFY(copied.value(u"ComputerUsed"_s).isNull());
    QCOMPARE(copied.value(u"Once"_s), QVariant(true));
    // The truth value went through its value: the 1 another program stored is kept as -1.
    if (sqlite)
        QCOMPARE(copied.storedRow()[std::size_t(copied.fieldIndex(u"Once"_s))].integer, qint64(-1));
}

QTEST_GUILESS_MAIN(TestRecordset)
#include "TestRecordset.moc"
