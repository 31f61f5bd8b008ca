#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The café branches of the Include/Exclude page: each branch is "Cafe" and its number, and holds
// one computer; an entry of the list is "Cafe<number> - [<SYSTEM NAME>]".
namespace marlet::cafe {

// The first entry of the branch list, which stands for no branch picked.
inline const QString NoBranch = QStringLiteral("[Select Cafe Name]");

// The branch list: no branch, then Cafe1 to Cafe<maxComputers>.
QStringList branchChoices(int maxComputers);
// The number of a branch: its text without the first four characters ("Cafe12" gives "12").
QString branchNumber(const QString& branch);
// The list entry of a branch number and a computer, the computer's name in capitals.
QString entry(const QString& number, const QString& systemName);
// The number of an entry for its removal: the part before the first "-" without its first four
// characters, blank behind it trimmed. Nothing when the entry has no "-".
std::optional<QString> entryNumber(const QString& entry);

} // namespace marlet::cafe
