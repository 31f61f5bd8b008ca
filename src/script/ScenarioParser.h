#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace marlet {

// What a scenario line asks for. Several spellings may lead to one command.
enum class CommandId {
    Clock,
    ClockAdvance,
    DatabaseNew,
    Sql,
    Pref,
    Printer,
    Component,
    SerialPorts,
    File,
    Clipboard,
    ProgramsFail,
    ExpectMessage,
    ExpectInput,
    ExpectMenu,
    ExpectFile,
    ExpectColor,
    Open,
    Type,
    Press,
    Set,
    TabOut,
    Focus,
    Click,
    Pick,
    Tick,
    Untick,
    Slide,
    ChooseTab,
    DropDown,
    GridClick,
    AtYield,
    Close,
    CheckControl,
    CheckForm,
    CheckFocus,
    CheckMessages,
    CheckNoPending,
    CheckCount,
    CheckLog,
    CheckRows,
    CheckPref,
    CheckFiles,
    WriteFile,
    CheckFile,
    MachineNew,
};

// One command of a script with its arguments by name, as the syntax table names them.
struct ScenarioCommand
{
    CommandId id = CommandId::Clock;
    int line = 0;
    QString source; // the line as written, without its comment
    QHash<QString, QString> args; // named arguments; keyword options only when given
    QStringList rest; // the tokens of a trailing <...:rest> element, as texts
    QStringList block; // expected rows of a check given on the indented lines below it
    std::shared_ptr<const ScenarioCommand> inner; // the command of "at yield"

    QString arg(const QString& name) const { return args.value(name); }
    bool has(const QString& name) const { return args.contains(name); }
    int intArg(const QString& name) const { return args.value(name).toInt(); }
};

struct ScenarioScript
{
    QString fileName;
    QList<ScenarioCommand> commands;
    QStringList errors; // "<file>:<line>: <what is wrong>" followed by the line
};

// Parses a whole script. Errors do not stop the parse, so that all of them are reported at once.
ScenarioScript parseScenario(const QString& source, const QString& fileName);

// The syntax of every command, one usage line each, as the language reference lists them.
QStringList scenarioSyntax();

} // namespace marlet
