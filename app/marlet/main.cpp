// The marlet command-line host: runs one entry operation of the component, prepares a database,
// or runs a scenario script.

#include "CommandCatalogue.h"
#include "HostCommands.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (arguments.size() == 2 && arguments.at(1) == QLatin1String("--version")) {
        out << marlet::host::versionText() << Qt::endl;
        return 0;
    }
    if (arguments.size() == 2 && arguments.at(1) == QLatin1String("--manual-page")) {
        marlet::host::printManualPage(out);
        return 0;
    }
    if (arguments.size() < 2 || arguments.at(1) == QLatin1String("--help") || arguments.at(1) == QLatin1String("-h")) {
        marlet::host::printUsage(arguments.size() < 2 ? err : out);
        return arguments.size() < 2 ? 2 : 0;
    }
    return marlet::host::run(argc, argv, arguments.mid(1), out, err);
}
