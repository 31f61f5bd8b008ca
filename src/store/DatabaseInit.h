#pragma once

#include <QString>

namespace marlet {

struct InitResult
{
    QString error; // empty on success
    QString administratorPassword; // as stored: shown to the operator once, kept nowhere else

    bool ok() const { return error.isEmpty(); }
};

// Makes a new database with every table the component requires and the rows that must exist:
// the one Options row, the built-in ADMINISTRATOR account and the Register row. An existing database
// is refused unless `force`, which replaces it. Without a password a random one is made.
struct DatabaseInit
{
    QString connectionString;
    QString password;
    bool force = false;

    InitResult run() const;

    // Twelve upper-case letters and digits from the system's secure random source, without the
    // look-alikes 0/O and 1/I, since it is read off a screen and typed.
    static QString generatePassword();
    // Why a chosen password cannot be stored, or empty. Staff passwords are upper case, at most
    // fifteen characters, and never hold a quote, which would break the gates' statements.
    static QString passwordProblem(const QString& password);
};

} // namespace marlet
