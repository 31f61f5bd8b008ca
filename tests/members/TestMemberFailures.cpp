#include "script/EntryOperations.h"
#include "script/ScenarioRunner.h"
#include "store/Connection.h"

#include <QTest>
#include <QTextStream>

using namespace marlet;

// Failures of the store while a member is written. The store is made to refuse one kind of write by
// a trigger, which the scenario language cannot create; the operator's side is a scenario script.
class TestMemberFailures : public QObject
{
    Q_OBJECT

private slots:
    void testARefusedMemberRowLeavesTheTicketAndSaysSo();
    void testARefusedSaveOfTheMemberRowEndsWithoutAWord();

private:
    static int run(const QString& script, QString& output);
};

int TestMemberFailures::run(const QString& script, QString& output)
{
    ScenarioOperations ops = entryOperations();
    // "open refuse <event>": a trigger that aborts every <event> ("INSERT ON Members" ...).
    ops.add(QStringLiteral("refuse"), [](ScenarioContext& context, const ScenarioArguments& arguments) {
        Connection connection;
        QVERIFY2(connection.Open(context.connectionString), qPrintable(connection.lastError()));
        QVERIFY2(
            connection.executeNative(QStringLiteral("CREATE TRIGGER refuse BEFORE ") + arguments.positional().join(u' ')
                + QStringLiteral(" BEGIN SELECT RAISE(ABORT, 'refused'); END")),
            qPrintable(connection.lastError()));
    });
    QTextStream out(&output);
    return runScenarioText(script, QStringLiteral("members.scenario"), out, ops);
}

void TestMemberFailures::testARefusedMemberRowLeavesTheTicketAndSaysSo()
{
    QString output;
    const int status = run(QStringLiteral(R"S(
clock 2026-11-21 10:00:00
database new
open refuse "INSERT ON Members"
open load-gen-ac --user ADMINISTRATOR
    tab TabStrip1 3
    type txtMemberUsername "lost1"
    type txtMemberPassword "pw"
    click "Create a Membership Ticket >>"
    tick Check16
    expect message "You have choosen to generate a Membership Ticket an Autorecharge[1 day(s) - 24 hour(s)] Membership ticket of 1440min(s)' Ticket(s) of Cost N0 with Expiration Date of 5 days, Continue without member's information" style 36 answer yes
    expect message "And Print Preview Ticket(s) with Large Print? " style 35 answer no
    expect message "An Error occurred, please restart server!" style 16
    click "Finish Registration ||"
    check no pending messages
    check FMemberPage visible false
    check cmdFinishMember enabled false
    close
check rows "select Username, Member from Account" is "LOST1 | True"
check rows "select TimeGenerated from TicketInfo" is "Completed at 10:00, 21/11/26 [CUSTOM]"
check rows "select count(*) from Members" is "0"
)S"),
        output);
    QVERIFY2(status == 0, qPrintable(output));
}

void TestMemberFailures::testARefusedSaveOfTheMemberRowEndsWithoutAWord()
{
    QString output;
    const int status = run(QStringLiteral(R"S(
clock 2026-11-21 10:00:00
database new
sql "INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, Days, DateCreated, NEW, Member, Autorecharge) Values ('261101090000', '000', 'ADA01', 'PW1', 600, 30, '2026-11-01', true, true, 'NONE')"
sql "INSERT INTO Members (Member_ID, Surname, Firstname, DateofBirth, Address, State, Country, Telephone, Identification_item, Identication_no, Email, Sex, Picture) Values ('261101090000', 'Smith', 'Ada', '1990-05-01', '12 Long Road', 'Lagos', 'Nigeria', '0801234567', 'Passport No.', 'A1234567', 'ada@example.com', '1', '261101090000SM')"
open refuse "UPDATE ON Members"
open load-gen-ac --user ADMINISTRATOR
    tab TabStrip1 3
    click "Existing Members"
        click "List All"
        grid memList click row 1
        click "Edit"
            set Text7(4) "1 New Street"
            click Command26
            expect input "adam1"
            click Command29
            click "Save"
            check messages shown 0
            check "Save" enabled false
            click "<< Back"
        click "<< Back"
    close
# The ticket's row stands renamed, the member's row is as it was: they are not one transaction.
check rows "select Username from Account" is "ADAM1"
check rows "select Address from Members" is "12 Long Road"
)S"),
        output);
    QVERIFY2(status == 0, qPrintable(output));
}

QTEST_GUILESS_MAIN(TestMemberFailures)
#include "TestMemberFailures.moc"
