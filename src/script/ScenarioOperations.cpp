#include "script/ScenarioOperations.h"

#include "script/DemoForm.h"
#include "script/ScriptedPlatform.h"

namespace marlet {

ScenarioArguments::ScenarioArguments(const QStringList& words)
{
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words[i];
        if (!word.startsWith(QLatin1String("--"))) {
            m_positional << word;
            continue;
        }
        const bool hasValue = i + 1 < words.size() && !words[i + 1].startsWith(QLatin1String("--"));
        m_options.insert(word.mid(2).toLower(), hasValue ? words[++i] : QStringLiteral("true"));
    }
}

QStringList ScenarioArguments::unknown(const QStringList& known) const
{
    QStringList names;
    for (auto it = m_options.cbegin(); it != m_options.cend(); ++it) {
        if (!known.contains(it.key(), Qt::CaseInsensitive))
            names << it.key();
    }
    names.sort();
    return names;
}

ScenarioOperations::ScenarioOperations()
    : m_databaseFactory(createStoreScenarioDatabase)
{
}

ScenarioOperations ScenarioOperations::builtin()
{
    ScenarioOperations operations;
    operations.add(QStringLiteral("demo"), [](ScenarioContext& context, const ScenarioArguments& arguments) {
        DemoForm form(context.platform, arguments.value(QStringLiteral("value"), QStringLiteral("50")));
        form.showModal();
    });
    return operations;
}

void ScenarioOperations::add(const QString& name, ScenarioOperation operation)
{
    m_operations[name.toLower()] = std::move(operation);
}

const ScenarioOperation* ScenarioOperations::find(const QString& name) const
{
    const auto found = m_operations.find(name.toLower());
    return found == m_operations.end() ? nullptr : &found->second;
}

QStringList ScenarioOperations::names() const
{
    QStringList names;
    for (const auto& [name, operation] : m_operations)
        names << name;
    return names;
}

} // namespace marlet
