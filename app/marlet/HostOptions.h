#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace marlet::host {

struct CommandSpec;

// Options of a subcommand: "--name value" pairs, flags without a value, and positional words,
// checked against the options the command takes.
class HostOptions
{
public:
    // False with error() set on an option the command does not take, a missing value or a value
    // outside the accepted ones. The error names the option and says what to do instead.
    bool parse(const QStringList& words, const CommandSpec& command);

    QString value(const QString& name, const QString& fallback = {}) const { return m_values.value(name, fallback); }
    bool flag(const QString& name) const { return m_flags.contains(name); }
    bool helpRequested() const { return m_help; }
    const QStringList& positional() const { return m_positional; }
    const QString& error() const { return m_error; }

private:
    bool fail(const QString& error);

    QHash<QString, QString> m_values;
    QStringList m_flags;
    QStringList m_positional;
    bool m_help = false;
    QString m_error;
};

} // namespace marlet::host
