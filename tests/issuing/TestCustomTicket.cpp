#include "script/EntryOperations.h"
#include "script/ScenarioRunner.h"
#include "store/Connection.h"

#include <QTest>
#include <QTextStream>

using namespace marlet;

// A custom ticket ends at its first run-time failure without a word. The store is made to refuse
// one write at a time by a trigger, which the scenario language cannot create; the operator's side
// is a scenario script.
class TestCustomTicket : public QObject
{
    Q_OBJECT

private slots:
    void testRunTimeFailureEndsSilently_data();
    void testRunTimeFailureEndsSilently();

private:
    static ScenarioOperations operations();
};

namespace {

// The operator's actions up to the print question, with a placeholder for the checks.
const char* const Script = R"(
clock 2026-11-21 10:00:00
database new
open refuse "%1"
open load-gen-ac --user ADMINISTRATOR
    tab TabStrip1 2
    type txtCustomUsername "lost1"
    type txtCustomPassword "pw"
    pick cboCustomHours "1"
    tick chkCustomTimePeriod
    expect message "You have choosen to Generate a ticket of 60min(s)' Ticket(s) of Cost N0 with Expiration Date of 5 days and for Time Ticket, Continue?" style 36 answer yes
    expect message "And Print Preview Ticket(s) with Large Print? " style 35 answer no
    click "Create a Customized New Ticket"
    check rows "select TimeGenerated from TicketInfo" is %2
    check rows "select count(*) from Account" is "%3"
    check messages shown 2
    check slept 0
    check txtCustomUsername text "LOST1"
    check txtCustomPassword text "PW"
    check chkCustomTimePeriod value 1
    close
)";

} // namespace

// "open refuse <event>": a trigger that aborts every <event> ("INSERT ON Account" ...).
ScenarioOperations TestCustomTicket::operations()
{
    ScenarioOperations ops = entryOperations();
    ops.add(QStringLiteral("refuse"), [](ScenarioContext& context, const ScenarioArguments& arguments) {
        Connection connection;
        QVERIFY2(connection.Open(context.connectionString), qPrintable(connection.lastError()));
        const QString event = arguments.positional().value(0);
        QVERIFY2(connection.executeNative(QStringLiteral("CREATE TRIGGER refuse BEFORE ") + event
                     + QStringLiteral(" BEGIN SELECT RAISE(ABORT, 'refused'); END")),
            qPrintable(connection.lastError()));
    });
    return ops;
}

void TestCustomTicket::testRunTimeFailureEndsSilently_data()
{
    QTest::addColumn<QString>("event");
    QTest::addColumn<QString>("groupRows");
    QTest::addColumn<int>("tickets");

    QTest::newRow("a refused group row ends before the ticket is added")
        << QStringLiteral("INSERT ON TicketInfo") << QString() << 0;
    QTest::newRow("a refused ticket leaves the started group behind")
        << QStringLiteral("INSERT ON Account") << QStringLiteral("\"Started at 10:00, 21/11/26\"") << 0;
    QTest::newRow("a refused completion leaves the ticket and the started group")
        << QStringLiteral("UPDATE ON TicketInfo") << QStringLiteral("\"Started at 10:00, 21/11/26\"") << 1;
}

void TestCustomTicket::testRunTimeFailureEndsSilently()
{
    QFETCH(QString, event);
    QFETCH(QString, groupRows);
    QFETCH(int, tickets);

    QString report;
    QTextStream out(&report);
    const QString script = QString::fromUtf8(Script).arg(event, groupRows, QString::number(tickets));
    const int status = runScenarioText(script, QStringLiteral("custom-failure.scenario"), out, operations());
    out.flush();
    QVERIFY2(status == 0, qPrintable(report));
}

QTEST_GUILESS_MAIN(TestCustomTicket)
#include "TestCustomTicket.moc"
