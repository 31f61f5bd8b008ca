#include "settings/RestrictionLists.h"

#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Recordset.h"
#include "values/Texts.h"

namespace marlet::restrictions {

namespace {

// Twenty and thirty entries, by a "more than" test: one entry over the message's number still goes in.
constexpr int ProgramLimit = 20;
constexpr int CaptionLimit = 30;

QString programSelection(ProgramList list)
{
    return list == ProgramList::Allowed
        ? QStringLiteral("Select * from RestrictDisallow where Type = True and Name = '{}'")
        : QStringLiteral("Select * from RestrictDisallow where Type = False and Name = '{}'");
}

QString clientTable(ClientList list)
{
    return list == ClientList::Excluded ? QStringLiteral("Restriction") : QStringLiteral("RClient");
}

} // namespace

bool onlyBlanks(const QString& text)
{
    return QString(text).remove(QLatin1Char(' ')).isEmpty();
}

std::optional<Refusal> programRefusal(const QString& text, int listCount)
{
    if (values::trimBlanks(text).size() < 5)
        return Refusal {QStringLiteral("Entry is Blank or Short!"), MsgStyle::Warning};
    if (!text.contains(QLatin1Char('.')))
        return Refusal {QStringLiteral("Invalid Entry! (e.g filename.exe)"), MsgStyle::Warning};
    if (listCount > ProgramLimit)
        return Refusal {QStringLiteral("You can only enter 20 program name(s) in total!"), MsgStyle::Warning};
    return std::nullopt;
}

std::optional<Refusal> captionRefusal(const QString& text, int listCount)
{
    if (onlyBlanks(text))
        return Refusal {};
    if (values::trimBlanks(text).size() <= 2)
        return Refusal {QStringLiteral("Blank or short Entry!"), MsgStyle::Stop};
    if (listCount > CaptionLimit)
        return Refusal {QStringLiteral("You can only enter 30 name(s) in total!"), MsgStyle::Warning};
    return std::nullopt;
}

QString examplesText()
{
    static const char* const lines[] = {
        "Examples for Common Programs",
        "Microsoft Word: winword.exe",
        "Microsoft Excel: excel.exe",
        "Microsoft Powerpoint: powerpnt.exe",
        "Microsoft Publisher: mspub.exe",
        "Microsoft Outlook: oulook.exe",
        "Microsoft FrontPage: frontpg.exe",
        "Windows Media Player: wmplayer.exe",
        "Yahoo Messenger: ypager.exe",
        "MSN Messenger: msmsgs.exe",
        "Internet Explorer: iexplore.exe",
        "Download Accelerator: dap.exe",
        "Norton Anitvirus: navw32.exe",
        "McAfee AntiVirus: vshwin32.exe",
        "Quick Time Player: quicktimeplayer.exe",
        "Microsoft Outlook Express: msimn.exe",
        "WordPad: wordpad.exe",
        "Notepad: notepad.exe",
        "Paint Brush: mspaint.exe",
        "Acrotat Reader: acrord32.exe",
        "Setup File: setup.exe",
    };
    QStringList text;
    for (const char* line : lines)
        text << QLatin1String(line);
    return text.join(QStringLiteral("\r\n"));
}

Store::Store(Connection& connection)
    : m_connection(connection)
{
}

QStringList Store::column(const QString& statement, const QString& field) const
{
    QStringList names;
    Recordset rows;
    if (!rows.Open(Statement(statement), m_connection, CursorType::Static, LockType::ReadOnly))
        return names;
    for (; !rows.Eof(); rows.MoveNext())
        names << rows.value(field).toString();
    rows.Close();
    return names;
}

Added Store::addRow(const Statement& lookup, const std::function<bool(Recordset&)>& fill)
{
    Recordset row;
    if (!row.Open(lookup, m_connection, CursorType::Static, LockType::Optimistic))
        return Added::Failed;
    if (!row.Eof())
        return Added::AlreadyThere;
    return row.AddNew() && fill(row) && row.Update() ? Added::Added : Added::Failed;
}

QStringList Store::programs(ProgramList list) const
{
    QStringList names
        = column(list == ProgramList::Allowed ? QStringLiteral("Select * from RestrictDisallow where Type = True")
                                              : QStringLiteral("Select * from RestrictDisallow where Type = False"),
            QStringLiteral("Name"));
    for (QString& name : names)
        name = name.toLower();
    return names;
}

Added Store::addProgram(ProgramList list, const QString& name)
{
    const QString lower = name.toLower();
    return addRow(Statement(programSelection(list), {lower}), [&](Recordset& row) {
        return row.setValue(QStringLiteral("Name"), lower)
            && row.setValue(QStringLiteral("Type"), list == ProgramList::Allowed);
    });
}

bool Store::removeProgram(ProgramList list, const QString& name)
{
    Recordset row;
    if (!row.Open(Statement(programSelection(list), {name}), m_connection, CursorType::Static, LockType::Optimistic)
        || row.Eof())
        return false;
    return row.Delete();
}

QStringList Store::captions() const
{
    return column(QStringLiteral("Select * from Capt"), QStringLiteral("Caption"));
}

Added Store::addCaption(const QString& caption)
{
    const QString upper = caption.toUpper();
    return addRow(Statement(QStringLiteral("Select * from Capt where Caption = '{}'"), {upper}),
        [&](Recordset& row) { return row.setValue(QStringLiteral("Caption"), upper); });
}

bool Store::removeCaption(const QString& caption)
{
    return m_connection.Execute(Statement(QStringLiteral("Delete * from Capt where Caption = '{}'"), {caption}));
}

QStringList Store::clients(ClientList list) const
{
    QStringList names = column(QStringLiteral("Select * from ") + clientTable(list), QStringLiteral("ComputerName"));
    for (QString& name : names)
        name = name.toUpper();
    return names;
}

Added Store::addClient(ClientList list, const QString& name, const QDateTime& now, const QString& staff)
{
    const QString upper = name.toUpper();
    // The excluded list looks the name up upper-cased, the reserved list as typed.
    const QString sought = list == ClientList::Excluded ? upper : name;
    return addRow(
        Statement(QStringLiteral("Select * from ") + clientTable(list) + QStringLiteral(" where Computername = '{}'"),
            {sought}),
        [&](Recordset& row) {
            return row.setValue(QStringLiteral("ComputerName"), upper) && row.setValue(QStringLiteral("Times"), now)
                && row.setValue(QStringLiteral("User"), staff);
        });
}

bool Store::removeClient(ClientList list, const QString& name)
{
    return m_connection.Execute(Statement(
        QStringLiteral("Delete * from ") + clientTable(list) + QStringLiteral(" where ComputerName = '{}'"), {name}));
}

} // namespace marlet::restrictions
