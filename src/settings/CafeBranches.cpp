#include "settings/CafeBranches.h"

#include "values/Texts.h"

namespace marlet::cafe {

QStringList branchChoices(int maxComputers)
{
    QStringList choices {NoBranch};
    for (int number = 1; number <= maxComputers; ++number)
        choices.append(QStringLiteral("Cafe") + QString::number(number));
    return choices;
}

QString branchNumber(const QString& branch)
{
    return values::mid(branch, 5);
}

QString entry(const QString& number, const QString& systemName)
{
    return QStringLiteral("Cafe") + number + QStringLiteral(" - [") + systemName.toUpper() + u']';
}

std::optional<QString> entryNumber(const QString& entry)
{
    // A computer name with a "-" in it does not matter: only the part before the first one counts.
    const qsizetype dash = entry.indexOf(u'-');
    if (dash < 0)
        return std::nullopt;
    return values::trimBlanks(values::mid(entry.left(dash), 5));
}

} // namespace marlet::cafe
