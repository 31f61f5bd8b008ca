#pragma once

#include <QTextStream>

namespace marlet::host {

class HostOptions;

// "marlet generate": makes one batch of tickets without a person at the screens. It enters through
// LoadGenAcc, so the password gate is passed with --password (or asked on the terminal), fills the
// New tab from the options, presses "&Generate New Ticket(s)", answers the questions from the
// options or on the terminal, and prints the batch as a table. Exit status 1 with the screen's
// message when the gate or the screen refused.
int runGenerate(const HostOptions& options, QTextStream& out, QTextStream& err);

} // namespace marlet::host
