#include "HostOptions.h"

#include "CommandCatalogue.h"

namespace marlet::host {

namespace {

QString acceptedList(const QStringList& accepted)
{
    QStringList quoted = accepted;
    const QString last = quoted.takeLast();
    return quoted.isEmpty() ? last : quoted.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

} // namespace

bool HostOptions::fail(const QString& error)
{
    m_error = error;
    return false;
}

bool HostOptions::parse(const QStringList& words, const CommandSpec& command)
{
    const QString seeHelp = QStringLiteral("; `marlet %1 --help` lists the options").arg(command.name);
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words.at(i);
        if (word == QLatin1String("--help") || word == QLatin1String("-h")) {
            m_help = true;
            continue;
        }
        if (!word.startsWith(QLatin1String("--"))) {
            m_positional << word;
            continue;
        }
        QString name = word.mid(2);
        const qsizetype equals = name.indexOf(u'=');
        QString text = equals >= 0 ? name.mid(equals + 1) : QString();
        if (equals >= 0)
            name.truncate(equals);
        const OptionSpec* option = command.option(name);
        if (!option)
            return fail(QStringLiteral("unknown option --%1").arg(name) + seeHelp);
        if (option->isFlag()) {
            if (equals >= 0)
                return fail(QStringLiteral("--%1 takes no value; give it alone").arg(name));
            m_flags << name;
            continue;
        }
        if (equals < 0) {
            if (i + 1 >= words.size())
                return fail(QStringLiteral("--%1 needs a value (%2)").arg(name, option->valueName) + seeHelp);
            text = words.at(++i);
        }
        if (!option->accepted.isEmpty() && !option->accepted.contains(text)) {
            return fail(QStringLiteral("--%1 takes %2, not \"%3\"").arg(name, acceptedList(option->accepted), text));
        }
        m_values.insert(name, text);
    }
    return true;
}

} // namespace marlet::host
