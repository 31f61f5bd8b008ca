#pragma once

#include <QStringList>
#include <QTextStream>

namespace marlet::host {

// Runs one subcommand; `arguments` starts with the subcommand's name. Returns the exit status.
int run(int& argc, char** argv, const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace marlet::host
