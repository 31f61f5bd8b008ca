#include "HostOptions.h"

namespace marlet::host {

namespace {

const QStringList valueOptions = {
    QStringLiteral("db"),
    QStringLiteral("app"),
    QStringLiteral("user"),
    QStringLiteral("path"),
    QStringLiteral("max"),
    QStringLiteral("ports"),
    QStringLiteral("port-name"),
    QStringLiteral("ticket"),
    QStringLiteral("prefs"),
    QStringLiteral("app-dir"),
    QStringLiteral("admin-password"),
    QStringLiteral("number"),
    QStringLiteral("hours"),
    QStringLiteral("minutes"),
    QStringLiteral("cost"),
    QStringLiteral("expiry"),
    QStringLiteral("days"),
    QStringLiteral("time-frame"),
    QStringLiteral("print"),
    QStringLiteral("password"),
    QStringLiteral("second-user"),
    QStringLiteral("second-password"),
};

const QStringList flagOptions = {
    QStringLiteral("power"),
    QStringLiteral("hide-account"),
    QStringLiteral("headless"),
    QStringLiteral("force"),
    QStringLiteral("once"),
    QStringLiteral("vip"),
    QStringLiteral("yes"),
};

} // namespace

bool HostOptions::parse(const QStringList& words)
{
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words.at(i);
        if (!word.startsWith(QLatin1String("--"))) {
            m_positional << word;
            continue;
        }
        QString name = word.mid(2);
        QString inlineValue;
        const qsizetype equals = name.indexOf(u'=');
        if (equals >= 0) {
            inlineValue = name.mid(equals + 1);
            name = name.left(equals);
        }
        if (flagOptions.contains(name)) {
            m_flags << name;
        } else if (valueOptions.contains(name)) {
            if (equals < 0) {
                if (i + 1 >= words.size()) {
                    m_error = QStringLiteral("--%1 needs a value").arg(name);
                    return false;
                }
                inlineValue = words.at(++i);
            }
            m_values.insert(name, inlineValue);
        } else {
            m_error = QStringLiteral("unknown option --%1").arg(name);
            return false;
        }
    }
    return true;
}

bool isEntryOperation(const QString& command)
{
    static const QStringList operations = {
        QStringLiteral("load-account-info"),
        QStringLiteral("load-options"),
        QStringLiteral("load-gen-ac"),
        QStringLiteral("load-gen-acc"),
        QStringLiteral("load-recycle-bin"),
        QStringLiteral("load-auto-gen"),
    };
    return operations.contains(command);
}

} // namespace marlet::host
