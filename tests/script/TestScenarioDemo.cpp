#include "script/ScenarioRunner.h"

#include "support/SourceFolder.h"

#include <QTest>

using namespace marlet;

// The demo scenario, run in-process, so that it is checked even where the command-line host is not
// built.
class TestScenarioDemo : public QObject
{
    Q_OBJECT

private slots:
    void testTheDemoScenarioPasses()
    {
        const QString path = test::testDataDir() + QStringLiteral("/script/demo.scenario");
        QString output;
        QTextStream out(&output);
        QCOMPARE(runScenarioFile(path, out), 0);
        QVERIFY2(output.endsWith(QStringLiteral(": passed, 23 commands, 0 failure(s)\n")), qPrintable(output));
    }
};

QTEST_GUILESS_MAIN(TestScenarioDemo)
#include "TestScenarioDemo.moc"
