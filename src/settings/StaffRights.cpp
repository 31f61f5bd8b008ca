#include "settings/StaffRights.h"

namespace marlet::staff {

namespace {

const QString Allocate = QStringLiteral("Allocate");
const QString Shutrest = QStringLiteral("Shutrest");
const QString XView = QStringLiteral("XView");
const QString Pass = QStringLiteral("Pass");
const QString Generate = QStringLiteral("Generate");
const QString Enabled = QStringLiteral("enabled");
const QString Print = QStringLiteral("Print");
const QString Pause = QStringLiteral("Pause");
const QString Option = QStringLiteral("Option");
const QString Pos = QStringLiteral("POS");
const QString ActBox = QStringLiteral("ActBox");

const QString AllocateCaption = QStringLiteral("Allow Allocate Time");
const QString ShutrestCaption = QStringLiteral("Allow Restart/Shutdown");
const QString XViewCaption = QStringLiteral("Allow Xview Client(s)");
const QString EnabledCaption = QStringLiteral("Disable User's Account");
const QString PrintCaption = QStringLiteral("Disable User to Print");
const QString PauseCaption = QStringLiteral("Disable User to Pause");

QList<Right> administratorRights(const QString& posCaption)
{
    return {
        {AllocateCaption, Allocate, true, false},
        {ShutrestCaption, Shutrest, true, false},
        {XViewCaption, XView, true, false},
        {QStringLiteral("Change Client's Password"), Pass, true, false},
        {QStringLiteral("Disable Generate Tickets"), Generate, false, false},
        {EnabledCaption, Enabled, false, true},
        {PrintCaption, Print, false, false},
        {PauseCaption, Pause, false, false},
        {QStringLiteral("Disable Option Menu"), Option, false, false},
        {posCaption, Pos, true, false},
        {QStringLiteral("Use Activate Ticket Grp."), ActBox, false, false},
    };
}

bool tick(const QList<bool>& ticks, qsizetype position)
{
    return position < ticks.size() && ticks[position];
}

// The columns of the type's list, each from its tick.
QList<ColumnValue> fromTicks(const QList<Right>& rights, const QList<bool>& ticks)
{
    QList<ColumnValue> columns;
    for (qsizetype position = 0; position < rights.size(); ++position) {
        const Right& right = rights[position];
        columns.append({right.column, tick(ticks, position) != right.inverted});
    }
    return columns;
}

QList<ColumnValue> allFalse(std::initializer_list<QString> names)
{
    QList<ColumnValue> columns;
    for (const QString& name : names)
        columns.append({name, false});
    return columns;
}

} // namespace

bool isBuiltIn(const QString& username)
{
    return username.toUpper() == Administrator;
}

QList<Right> rightsFor(const QString& type)
{
    const QString kind = type.toUpper();
    if (kind == Administrator)
        return administratorRights(QStringLiteral("Use Point on Sale(POS)"));
    if (kind == User) {
        return {
            {AllocateCaption, Allocate, false, false},
            {ShutrestCaption, Shutrest, false, false},
            {XViewCaption, XView, false, false},
            {EnabledCaption, Enabled, false, true},
            {PrintCaption, Print, false, false},
            {PauseCaption, Pause, false, false},
            {QStringLiteral("Use Point on Sale(POS)"), Pos, false, false},
        };
    }
    if (kind == Viewer)
        return {{EnabledCaption, Enabled, false, true}};
    return {};
}

QList<Right> builtInRights()
{
    QList<Right> rights = administratorRights(QStringLiteral("Use Point on Sale (POS)"));
    rights[10].tickedWhenBuilt = true;
    return rights;
}

QList<bool> ticksOf(const QString& type, const std::function<bool(const QString& column)>& column)
{
    QList<bool> ticks;
    for (const Right& right : rightsFor(type))
        ticks.append(column(right.column) != right.inverted);
    return ticks;
}

QList<ColumnValue> rightsToWrite(const QString& username, const QString& type, const QList<bool>& ticks, Save save)
{
    if (isBuiltIn(username)) {
        // The built-in account's rights are fixed, whatever its list shows.
        QList<ColumnValue> columns {{Allocate, true}, {Shutrest, true}, {XView, true}, {Pass, true}, {Enabled, true}};
        columns.append(allFalse({Generate, Print, Pause, Option, Pos, ActBox}));
        return columns;
    }
    const QString kind = type.toUpper();
    if (kind == Administrator)
        return fromTicks(rightsFor(kind), ticks);
    if (kind == User) {
        QList<ColumnValue> columns = fromTicks(rightsFor(kind), ticks);
        columns.append(allFalse({ActBox, Option, Generate}));
        if (save == Save::Creation)
            columns.append({Pass, false});
        return columns;
    }
    if (kind == Viewer) {
        QList<ColumnValue> columns = fromTicks(rightsFor(kind), ticks);
        columns.append(allFalse({Allocate, Shutrest, XView, Pass, Generate, Print, Pause, Option, Pos, ActBox}));
        return columns;
    }
    return {};
}

bool isDisabled(const QVariant& enabled)
{
    return enabled.isValid() && !enabled.isNull() && !enabled.toBool();
}

} // namespace marlet::staff
