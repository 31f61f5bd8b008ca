#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace marlet {

// The database a scenario sets up and checks: statements as the script writes them, rows read back
// as text. The script's statements are its own fixed texts, so they run as written.
class ScenarioDatabase
{
public:
    virtual ~ScenarioDatabase() = default;

    // What an entry operation is given to reach this database.
    virtual QString connectionString() const = 0;
    // Runs a statement; returns the error text, empty when it succeeded.
    virtual QString execute(const QString& statement) = 0;
    // Runs a query; each row is its cells as text joined by " | ", a Null cell showing as NULL.
    // The error text goes to `error`, empty when the query succeeded.
    virtual QStringList query(const QString& statement, QString& error) = 0;
};

struct ScenarioDatabaseRequest
{
    QString folder; // where the database file goes
    std::function<QDateTime()> clock; // the scenario's clock, for "now" in statements
};

// Creates a fresh database; nullptr with the reason in `error` when it cannot.
using ScenarioDatabaseFactory
    = std::function<std::unique_ptr<ScenarioDatabase>(const ScenarioDatabaseRequest& request, QString& error)>;

// A new store "marlet.db" in the folder with every table and required row, the ADMINISTRATOR
// password being "ADMIN". Statements are written in the screens' dialect and go through the store's
// connection, so they read as the screens' own statements do. Values come back as the store types
// them: True and False, dates as "yyyy-MM-dd HH:mm:ss", numbers as the form language prints them.
std::unique_ptr<ScenarioDatabase> createStoreScenarioDatabase(const ScenarioDatabaseRequest& request, QString& error);

} // namespace marlet
