#pragma once

#include "script/ScenarioDatabase.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>

namespace marlet {

class Preferences;
class ScriptedPlatform;

// The arguments of an "open" line: "--user ADMINISTRATOR --power 0 extra" gives the options
// user and power and the positional word extra. An option directly followed by another option or
// by the end of the line is a flag with the value "true".
class ScenarioArguments
{
public:
    explicit ScenarioArguments(const QStringList& words = {});

    bool has(const QString& name) const { return m_options.contains(name.toLower()); }
    QString value(const QString& name, const QString& fallback = {}) const
    {
        return m_options.value(name.toLower(), fallback);
    }
    // Option names given that are not in `known`, for an operation to refuse them.
    QStringList unknown(const QStringList& known) const;
    const QStringList& positional() const { return m_positional; }

private:
    QHash<QString, QString> m_options;
    QStringList m_positional;
};

// What an entry operation of a scenario works with.
struct ScenarioContext
{
    ScriptedPlatform& platform;
    Preferences& preferences;
    QString workFolder; // a temporary folder of the run, removed afterwards
    QString connectionString; // empty when the script made no database
    ScenarioDatabase* database = nullptr;
};

using ScenarioOperation = std::function<void(ScenarioContext& context, const ScenarioArguments& arguments)>;

// Everything a scenario reaches outside the script language: the entry operations that "open"
// runs, by name, and how "database new" makes a database. The program registers its own
// operations on top of the built-in ones and may switch the database factory.
class ScenarioOperations
{
public:
    ScenarioOperations();

    // The operations every build has: "demo", a small form that shows the language at work.
    static ScenarioOperations builtin();

    void add(const QString& name, ScenarioOperation operation);
    const ScenarioOperation* find(const QString& name) const;
    QStringList names() const;

    void setDatabaseFactory(ScenarioDatabaseFactory factory) { m_databaseFactory = std::move(factory); }
    const ScenarioDatabaseFactory& databaseFactory() const { return m_databaseFactory; }

private:
    std::map<QString, ScenarioOperation> m_operations;
    ScenarioDatabaseFactory m_databaseFactory;
};

} // namespace marlet
