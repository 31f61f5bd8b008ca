#pragma once

#include <QString>

namespace marlet::host {

class HostOptions;

// A password for a command, from the first source that has one: --NAME (which other users see in
// the process list), --NAME-file (its first line), --NAME-stdin (the first line of standard input),
// or the environment variable. Empty when none has it.
struct SecretSource
{
    const char* option;
    const char* environment;
};

inline constexpr SecretSource StaffPassword {"password", "MARLET_PASSWORD"};
inline constexpr SecretSource SecondPassword {"second-password", "MARLET_SECOND_PASSWORD"};
inline constexpr SecretSource AdminPassword {"admin-password", "MARLET_ADMIN_PASSWORD"};

// False with `error` set when a named file cannot be read.
bool readSecret(const HostOptions& options, SecretSource source, QString& secret, QString& error);

// Asks on the terminal without showing what is typed. Empty when standard input is no terminal.
QString promptSecret(const QString& prompt);

} // namespace marlet::host
