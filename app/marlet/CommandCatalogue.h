#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>

namespace marlet::host {

// One option of a subcommand. A flag has no value name; an option whose accepted values are
// listed takes no other.
struct OptionSpec
{
    QString name;
    QString valueName;
    QString help;
    QStringList accepted;

    bool isFlag() const { return valueName.isEmpty(); }
};

// One subcommand of the host: its name, a line of what it does, the words after the options and
// every option it takes.
struct CommandSpec
{
    QString name;
    QString summary;
    QString positional;
    QList<OptionSpec> options;

    const OptionSpec* option(const QString& optionName) const;
};

const QList<CommandSpec>& commands();
// Nullptr for a name that is no subcommand.
const CommandSpec* findCommand(const QString& name);

QString versionText();
void printUsage(QTextStream& out);
void printCommandHelp(const CommandSpec& command, QTextStream& out);
void printManualPage(QTextStream& out);

} // namespace marlet::host
