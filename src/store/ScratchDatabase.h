#pragma once

#include <QString>

namespace marlet {

// A database of its own on a PostgreSQL server for one test or scenario: made ready with every
// table and required row, and dropped again with the object. The tables come from a template
// database that the first run on the server makes, since copying it is quicker than making them.
//
// Tests choose the engine with MARLET_TEST_ENGINE ("postgres", else SQLite); MARLET_TEST_POSTGRES
// holds the server's connection string without a database name ("host=... port=... user=...").
class ScratchDatabase
{
public:
    ScratchDatabase() = default;
    ~ScratchDatabase();
    ScratchDatabase(const ScratchDatabase&) = delete;
    ScratchDatabase& operator=(const ScratchDatabase&) = delete;

    // True when the tests are to run on PostgreSQL.
    static bool wanted();
    // The server of MARLET_TEST_POSTGRES, empty when none is given.
    static QString server();

    // Makes the database with the ADMINISTRATOR password given; the reason when it cannot.
    QString create(const QString& password);
    // The new database's connection string, empty before create().
    QString connectionString() const { return m_connectionString; }

private:
    QString m_server;
    QString m_name;
    QString m_connectionString;
};

} // namespace marlet
