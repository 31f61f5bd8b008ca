#include "settings/StaffRights.h"

#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

namespace {

QStringList captions(const QList<staff::Right>& rights)
{
    QStringList list;
    for (const staff::Right& right : rights)
        list << right.caption;
    return list;
}

QString written(const QList<staff::ColumnValue>& columns)
{
    QStringList parts;
    for (const staff::ColumnValue& column : columns)
        parts << column.column + (column.value ? u"=1"_s : u"=0"_s);
    return parts.join(u' ');
}

} // namespace

// The rights lists of the staff types and what Add/Change writes from their ticks.
class TestStaffRights : public QObject
{
    Q_OBJECT

private slots:
    void testListsByType();
    void testBuiltInList();
    void testAdministratorTicksAreColumnsInOrder();
    void testUserChangeKeepsPassAndCreationClearsIt();
    void testViewerClearsAllButEnabled();
    void testBuiltInAccountIsFixed();
    void testUnknownTypeWritesNothing();
    void testTicksOfStoredAccount();
};

void TestStaffRights::testListsByType()
{
    QCOMPARE(staff::rightsFor(u"administrator"_s).size(), 11);
    QCOMPARE(staff::rightsFor(u"ADMINISTRATOR"_s)[9].caption, u"Use Point on Sale(POS)"_s);
    QCOMPARE(captions(staff::rightsFor(u"USER"_s)),
        QStringList({u"Allow Allocate Time"_s,
            u"Allow Restart/Shutdown"_s,
            u"Allow Xview Client(s)"_s,
            u"Disable User's Account"_s,
            u"Disable User to Print"_s,
            u"Disable User to Pause"_s,
            u"Use Point on Sale(POS)"_s}));
    for (const staff::Right& right : staff::rightsFor(u"USER"_s))
        QVERIFY(!right.tickedWhenBuilt);
    QCOMPARE(captions(staff::rightsFor(u"Viewer"_s)), QStringList({u"Disable User's Account"_s}));
    QVERIFY(staff::rightsFor(u"GUEST"_s).isEmpty());
    QList<bool> built;
    for (const staff::Right& right : staff::rightsFor(u"ADMINISTRATOR"_s))
        built << right.tickedWhenBuilt;
    QCOMPARE(built, QList<bool>({true, true, true, true, false, false, false, false, false, true, false}));
}

void TestStaffRights::testBuiltInList()
{
    const QList<staff::Right> rights = staff::builtInRights();
    QCOMPARE(rights.size(), 11);
    QCOMPARE(rights[9].caption, u"Use Point on Sale (POS)"_s);
    QList<bool> built;
    for (const staff::Right& right : rights)
        built << right.tickedWhenBuilt;
    QCOMPARE(built, QList<bool>({true, true, true, true, false, false, false, false, false, true, true}));
    QVERIFY(staff::isBuiltIn(u"administrator"_s));
    QVERIFY(!staff::isBuiltIn(u"ADMIN"_s));
}

void TestStaffRights::testAdministratorTicksAreColumnsInOrder()
{
    const QList<bool> ticks {true, false, true, false, true, true, false, true, false, true, true};
    QCOMPARE(written(staff::rightsToWrite(u"BOSS"_s, u"ADMINISTRATOR"_s, ticks, staff::Save::Change)),
        u"Allocate=1 Shutrest=0 XView=1 Pass=0 Generate=1 enabled=0 Print=0 Pause=1 Option=0 POS=1 ActBox=1"_s);
}

void TestStaffRights::testUserChangeKeepsPassAndCreationClearsIt()
{
    const QList<bool> ticks {true, false, false, false, true, false, true};
    QCOMPARE(written(staff::rightsToWrite(u"CLERK"_s, u"user"_s, ticks, staff::Save::Change)),
        u"Allocate=1 Shutrest=0 XView=0 enabled=1 Print=1 Pause=0 POS=1 ActBox=0 Option=0 Generate=0"_s);
    QCOMPARE(written(staff::rightsToWrite(u"CLERK"_s, u"USER"_s, ticks, staff::Save::Creation)),
        u"Allocate=1 Shutrest=0 XView=0 enabled=1 Print=1 Pause=0 POS=1 ActBox=0 Option=0 Generate=0 Pass=0"_s);
}

void TestStaffRights::testViewerClearsAllButEnabled()
{
    QCOMPARE(written(staff::rightsToWrite(u"EYE"_s, u"VIEWER"_s, {true}, staff::Save::Change)),
        u"enabled=0 Allocate=0 Shutrest=0 XView=0 Pass=0 Generate=0 Print=0 Pause=0 Option=0 POS=0 ActBox=0"_s);
    QCOMPARE(
        written(staff::rightsToWrite(u"EYE"_s, u"VIEWER"_s, {false}, staff::Save::Creation)).left(9), u"enabled=1"_s);
}

void TestStaffRights::testBuiltInAccountIsFixed()
{
    const QList<bool> none(11, false);
    const QString fixed
        = u"Allocate=1 Shutrest=1 XView=1 Pass=1 enabled=1 Generate=0 Print=0 Pause=0 Option=0 POS=0 ActBox=0"_s;
    QCOMPARE(written(staff::rightsToWrite(u"Administrator"_s, u"VIEWER"_s, none, staff::Save::Change)), fixed);
    QCOMPARE(written(staff::rightsToWrite(
                 u"ADMINISTRATOR"_s, u"ADMINISTRATOR"_s, QList<bool>(11, true), staff::Save::Creation)),
        fixed);
}

void TestStaffRights::testUnknownTypeWritesNothing()
{
    QVERIFY(staff::rightsToWrite(u"X"_s, u"GUEST"_s, {true}, staff::Save::Change).isEmpty());
}

void TestStaffRights::testTicksOfStoredAccount()
{
    const auto stored
        = [](const QString& column) { return column == u"Allocate"_s || column == u"POS"_s || column == u"enabled"_s; };
    QCOMPARE(staff::ticksOf(u"USER"_s, stored), QList<bool>({true, false, false, false, false, false, true}));
    QCOMPARE(staff::ticksOf(u"VIEWER"_s, [](const QString&) { return false; }), QList<bool>({true}));
    QCOMPARE(staff::ticksOf(u"ADMINISTRATOR"_s, stored).size(), 11);
}

QTEST_GUILESS_MAIN(TestStaffRights)
#include "TestStaffRights.moc"
