#pragma once

#include <QList>
#include <QString>
#include <QVariant>

#include <functional>

// What a staff account may do, as the rights list of the User Account page shows it and as the
// Users table keeps it: one boolean column a right. The list's entries differ by staff type, and
// Add/Change reads the ticks by position, so the order of each list binds.
namespace marlet::staff {

inline const QString Administrator = QStringLiteral("ADMINISTRATOR");
inline const QString User = QStringLiteral("USER");
inline const QString Viewer = QStringLiteral("VIEWER");

// One entry of a rights list: its caption, its column of Users, whether it is ticked when the list
// is built, and whether a tick stores false ("Disable User's Account" is the column enabled).
struct Right
{
    QString caption;
    QString column;
    bool tickedWhenBuilt = false;
    bool inverted = false;
};

// The built-in account, whose rights are fixed and which cannot be removed.
bool isBuiltIn(const QString& username);
// The list for a type ("ADMINISTRATOR", "USER", "VIEWER", any case); any other type has none.
QList<Right> rightsFor(const QString& type);
// The list shown while the username is the built-in account's: the eleven administrator rights,
// the point of sale spelled with a blank, ticked at 0 to 3, 9 and 10.
QList<Right> builtInRights();

// The ticks that a stored account shows in the list of its type, read through `column`.
QList<bool> ticksOf(const QString& type, const std::function<bool(const QString& column)>& column);

// One column of Users and the value a save writes into it.
struct ColumnValue
{
    QString column;
    bool value = false;
};
enum class Save { Creation, Change };
// The rights columns that Add/Change writes, in their order: from the ticks of the type's list, or
// the fixed rights of the built-in account. A change of a USER leaves Pass as it was; a creation
// clears it.
QList<ColumnValue> rightsToWrite(const QString& username, const QString& type, const QList<bool>& ticks, Save save);

// An account whose "Disable User's Account" is ticked (enabled false) passes no password gate.
// An account written before the column existed (no value) counts as enabled.
inline const QString DisabledAccountMessage = QStringLiteral("This Account has been disabled!");
bool isDisabled(const QVariant& enabled);

} // namespace marlet::staff
