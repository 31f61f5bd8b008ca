#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace marlet::host {

// Options of a subcommand: "--name value" pairs, flags without a value, and positional words.
class HostOptions
{
public:
    // False with error() set on an unknown option or a missing value.
    bool parse(const QStringList& words);

    QString value(const QString& name, const QString& fallback = {}) const { return m_values.value(name, fallback); }
    bool flag(const QString& name) const { return m_flags.contains(name); }
    const QStringList& positional() const { return m_positional; }
    const QString& error() const { return m_error; }

private:
    QHash<QString, QString> m_values;
    QStringList m_flags;
    QStringList m_positional;
    QString m_error;
};

bool isEntryOperation(const QString& command);

} // namespace marlet::host
