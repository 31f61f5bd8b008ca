#pragma once

#include "platform/Control.h"
#include "script/ScenarioOperations.h"
#include "script/ScenarioParser.h"
#include "script/ScriptedPlatform.h"

#include <QTemporaryDir>
#include <QTextStream>

#include <memory>

namespace marlet {

class Form;
class Preferences;

// Runs a parsed scenario on a scripted platform, in a temporary folder of its own that holds the
// preference file and the database. Commands run in script order: while an entry operation shows
// a modal form, the platform pulls the lines that follow as the operator's actions, so the
// operation runs exactly as it would for a person until its form closes; the script then goes on
// after the last line that the form consumed. A failed step is reported with its line and the
// run goes on, so that one run reports every failure.
class ScenarioRunner
{
public:
    ScenarioRunner(ScenarioScript script, const ScenarioOperations& operations, QTextStream& out);
    ~ScenarioRunner();

    // Exit status: 0 when every check held, 1 when something failed, 2 when the script could not
    // run at all (syntax errors, an unknown operation, no temporary folder).
    int run();

    ScriptedPlatform& platform() { return m_platform; }
    const QStringList& failures() const { return m_platform.failures(); }

private:
    const ScenarioCommand* nextCommand();
    void perform(const ScenarioCommand& command);
    void reportNewFailures();
    QString location(const ScenarioCommand& command) const;
    QStringList unknownOperations() const;

    void execute(const ScenarioCommand& command);
    void executeSetup(const ScenarioCommand& command);
    void executeExpectation(const ScenarioCommand& command);
    void executeAction(const ScenarioCommand& command);
    void executeCheck(const ScenarioCommand& command);

    void openOperation(const ScenarioCommand& command);
    void newDatabase();
    void runStatement(const QString& statement);
    void addBuiltInComponent(const QString& progId);
    // The text with <run> standing for the temporary folder of the run.
    QString inRun(const QString& text) const;
    void atYield(const ScenarioCommand& command);

    void keyboardAction(const ScenarioCommand& command, Control& control);
    void pickEntry(const ScenarioCommand& command, Control& list);
    void chooseTab(const ScenarioCommand& command, Control& strip);
    void clickGrid(const ScenarioCommand& command, Control& grid);
    void closeForm(const ScenarioCommand& command);

    void checkFocus(const ScenarioCommand& command);
    void checkRows(const ScenarioCommand& command);
    void checkFile(const ScenarioCommand& command);
    void newMachine();
    QString machineFolder() const;
    void writeFile(const ScenarioCommand& command);
    QStringList logRows(const QString& log) const;
    void setDateTime(Control& control, const QString& text);
    void makeFile(const QString& path, int bytes);
    // The files of a folder by name, each as "name | size".
    QStringList fileRows(const QString& folder) const;

    Form* topForm();
    Control* findControl(const QString& key);
    bool requireKind(const Control& control, std::initializer_list<ControlKind> kinds);
    void fail(const QString& detail) { m_platform.recordFailure(detail); }
    void compare(const QString& expected, const QString& actual);
    void compareRows(const QStringList& expected, const QStringList& actual);

    ScenarioScript m_script;
    const ScenarioOperations& m_operations;
    QTextStream& m_out;
    ScriptedPlatform m_platform;
    QTemporaryDir m_workFolder;
    std::unique_ptr<Preferences> m_preferences;
    // The machine the script works on: 1 at the start, one more with each "machine new".
    int m_machine = 1;
    std::unique_ptr<ScenarioDatabase> m_database;
    qsizetype m_next = 0;
    qsizetype m_reported = 0;
};

// Reads, parses and runs one scenario file, writing failures and a summary to `out`. The exit
// status is that of ScenarioRunner::run; a file that cannot be read gives 2.
int runScenarioFile(
    const QString& path, QTextStream& out, const ScenarioOperations& operations = ScenarioOperations::builtin());

// The same for a script held in memory; `fileName` is the name failures are reported under.
int runScenarioText(const QString& source,
    const QString& fileName,
    QTextStream& out,
    const ScenarioOperations& operations = ScenarioOperations::builtin());

} // namespace marlet
