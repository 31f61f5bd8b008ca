#include "settings/SettingsFile.h"

#include "settings/SettingsLine.h"
#include "store/Connection.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"
#include "values/Dates.h"
#include "values/Numbers.h"
#include "values/Product.h"

#include <QDir>
#include <QRegularExpression>
#include <QSaveFile>

namespace marlet::settingsfile {

namespace {

const QString Separator = QStringLiteral(" :- ");
// What the writer of four keys puts after the key instead of the separator.
const QString BrokenSeparator = QStringLiteral("- ");

// One fixed record: its kind (O, C, P, S; K for the Skin line), the key as the file spells it and,
// where it differs by more than case, the key that is read for its value.
struct FixedRecord
{
    char kind;
    const char* fileKey;
    const char* readKey = nullptr;
};

// clang-format off
constexpr FixedRecord Fixed[] = {
    {'O', "SimComp"}, {'O', "Expire"}, {'O', "STR"}, {'O', "Currency"}, {'O', "SetTime"},
    {'O', "ShutDownClients"}, {'O', "CheckConnection"}, {'O', "BindType"}, {'O', "PassGenType"},
    {'O', "LoadStart"}, {'O', "FrontDesk"}, {'O', "SiteDate"}, {'O', "LogLimit"}, {'O', "VLogLimit"},
    {'O', "Color", "Colour"}, {'O', "ServerColor"}, {'O', "AllowPause"}, {'O', "AllowTime"}, {'O', "Rload"},
    {'O', "ShowAdmin"}, {'O', "BeginTime"}, {'O', "EndTime"}, {'O', "Title"}, {'O', "Information"},
    {'O', "Address"}, {'O', "UseGTime"}, {'O', "ActivateTk"}, {'O', "IPPing"}, {'O', "PingDisabled"},
    {'O', "PingPause"}, {'O', "PingLogging"}, {'O', "MOffline"}, {'O', "MOnline"}, {'O', "Shuttime"},
    {'O', "NoPing"}, {'O', "TOffline"}, {'O', "TOnline"}, {'O', "VShutTime"}, {'O', "CleanUpTime"},
    {'O', "BackupTime"}, {'O', "RecycleBinSize"}, {'O', "ProgramLog"}, {'O', "MoveToRecycle"},
    {'O', "EnableBackup"}, {'O', "EnableCleanUp"}, {'O', "PrintBType"}, {'O', "Billtype"}, {'O', "TimePrint"},
    {'O', "CostPrint"}, {'O', "WordPrint"}, {'O', "WordCPrint"}, {'O', "UserPrint"}, {'O', "WaitPrint"},
    {'O', "OtherPrint"}, {'O', "ReportPrint"}, {'O', "DefaultPrinter"}, {'O', "Enable", "EnablePrint"},
    {'O', "QuickTicket"}, {'O', "SelClientP"}, {'O', "SelClient"}, {'O', "SelPrefix"}, {'O', "SelCPName"},
    {'P', "SPassL"}, {'P', "COM"},
    {'K', "Skin"}, {'O', "UpdateClients"},
    {'P', "Stitle"}, {'P', "Type"}, {'P', "SGroup"}, {'P', "SUserL"}, {'P', "SAddr"},
    {'P', "POSSpeed", "POSspeed"}, {'P', "POSSpeed", "POSType"},
    {'C', "AllowAltCtrlDel"}, {'C', "AutoClear"}, {'C', "HideTaskBar"}, {'C', "NoAutoSearch"},
    {'C', "StopMusic"}, {'C', "LoadIE"}, {'C', "LoadService"}, {'C', "Drive A"}, {'C', "Drive B"},
    {'C', "Drive C"}, {'C', "Drive D"}, {'C', "All Drive"}, {'C', "ControlPanel"}, {'C', "TaskBar"},
    {'C', "WallPaper"}, {'C', "ExplorerHistory"}, {'C', "Neigbhourhood"}, {'C', "ClearList"},
    {'C', "SavenoChanges"}, {'C', "OnScreenIP"}, {'C', "ClearDesktop"}, {'C', "Run"}, {'C', "Find"},
    {'C', "Logoff"}, {'C', "Shutdown"}, {'C', "HideBackground"}, {'C', "Autorun"}, {'C', "FolderChange"},
    {'C', "AdminSolo"}, {'C', "NoPrinterTab"}, {'C', "NoCPLs"}, {'C', "NSMMPrograms"}, {'C', "NoRecycle"},
    {'C', "NOMMComputer"}, {'C', "NoInternetIcon"}, {'C', "NoFileMenu"}, {'C', "DisableRegisterTools"},
    {'C', "NoAutodial"}, {'C', "NoProfile"}, {'C', "CoolSwitch"}, {'C', "NoTaskMgr"}, {'C', "NoChangePass"},
    {'C', "NoLWorkStation"}, {'C', "LimitBrowser"}, {'C', "DProg"}, {'C', "SLogin"}, {'C', "RClick"},
    {'C', "IOption"}, {'C', "SDDir"}, {'C', "FSharing"}, {'C', "PSharing"}, {'C', "PopupB"},
    {'C', "LimitMess"}, {'C', "INo"}, {'C', "MessClose"}, {'C', "SiteRestrict"}, {'C', "ApplyIE"},
    {'C', "Restrict"}, {'C', "Disallow"}, {'C', "FileDownload"}, {'C', "NoToolBar"},
    {'S', "TopBarMov"},
};
// clang-format on

// The keys whose writer forgets the separator: their lines have no value to read.
bool brokenSeparator(QLatin1StringView key)
{
    return key == QLatin1String("VShutTime") || key == QLatin1String("EnableCleanUp")
        || key == QLatin1String("UpdateClients") || key == QLatin1String("NOMMComputer");
}

QString sectionOf(char kind)
{
    switch (kind) {
    case 'C':
        return QStringLiteral("COption");
    case 'P':
        return QStringLiteral("POS");
    case 'S':
        return QStringLiteral("Settings");
    default:
        return QStringLiteral("Option");
    }
}

// The preference behind a record, under the application that the writer reads it from.
QString storedValue(const SessionPreferences& preferences, const FixedRecord& record)
{
    const QLatin1StringView fileKey(record.fileKey);
    const PreferenceKey* key = findPreferenceKey(
        sectionOf(record.kind), QString::fromLatin1(record.readKey ? record.readKey : record.fileKey));
    if (!key)
        return {};
    const bool underProduct = record.kind == 'P' || fileKey == QLatin1String("QuickTicket");
    const PreferenceKey address = underProduct ? key->underProduct() : key->underTitle();
    if (fileKey == QLatin1String("EndTime"))
        return preferences.text(address, QStringLiteral("6:00"));
    if (fileKey == QLatin1String("Title"))
        return preferences.text(address, MessageTitle());
    return preferences.text(address);
}

// A time written as hours and minutes; a text that is no time stays as it is.
QString hoursAndMinutes(const QString& text)
{
    const std::optional<QDateTime> time = values::readDate(text);
    return time ? time->toString(QStringLiteral("HH:mm")) : text;
}

// The value as the writer forms it.
QString writtenValue(const SessionPreferences& preferences, const FixedRecord& record, int maxComputers)
{
    const QLatin1StringView key(record.fileKey);
    const QString value = storedValue(preferences, record);
    if (key == QLatin1String("SimComp"))
        return values::isNumeric(value) && values::leadingNumber(value) <= maxComputers ? value : QStringLiteral("5");
    if (key == QLatin1String("STR") || key == QLatin1String("Currency"))
        return value.left(3);
    if (key == QLatin1String("BeginTime") || key == QLatin1String("EndTime") || key == QLatin1String("VShutTime"))
        return hoursAndMinutes(value);
    if (key == QLatin1String("INo"))
        return values::isNumeric(value) ? value : QStringLiteral("3");
    return value;
}

// A list of the file: the select, the table and column written in front of the value, the column
// read and whether the value is upper-cased.
struct ListSource
{
    const char* select;
    const char* recordTable;
    const char* recordColumn;
    const char* column;
    bool upper;
};

constexpr ListSource Lists[] = {
    {"Select * from QuickT", "QuickT", "TicketType", "TicketType", false},
    {"Select * from Restriction", "Restriction", "Computername", "ComputerName", true},
    {"Select * from RClient", "RClient", "Computername", "ComputerName", true},
    {"Select * from Capt", "Capt", "Caption", "Caption", true},
    {"Select * from RestrictDisallow where Type = True", "RestrictDisallow", "Name", "Name", true},
    {"Select * from RestrictDisallow where Type = False", "RestrictDisallow*", "Name", "Name", true},
};

const QString ProgramTable = QStringLiteral("RESTRICTDISALLOW");
const QString ForbiddenMark = QStringLiteral("RESTRICTDISALLOW*");

// The lists a file may fill besides the programs. Any other table named in a file is left alone:
// a file is settings, never tickets, staff or members.
bool isListTable(const QString& table)
{
    for (const ListSource& list : Lists) {
        if (table.compare(QLatin1StringView(list.recordTable), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

// A column named by a file goes into the statement's text, so it must be a plain name.
bool isPlainName(const QString& name)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]{0,63}$"));
    return plain.match(name).hasMatch();
}

class Loader
{
public:
    Loader(Preferences& store, const QString& appTitle, Connection& connection)
        : m_store(store)
        , m_appTitle(appTitle)
        , m_connection(connection)
    {
    }

    bool apply(const QString& field)
    {
        const std::optional<QString> text = UnscrambleLine(field);
        if (!text)
            return false;
        const QStringList parts = text->split(Separator);
        const QString& kind = parts.first();
        if (kind == QLatin1String("O") || kind == QLatin1String("C") || kind == QLatin1String("S"))
            return storePreference(kind, parts);
        if (kind == QLatin1String("I"))
            return insertRow(parts);
        return false;
    }

private:
    bool storePreference(const QString& kind, const QStringList& parts)
    {
        if (parts.size() < 3 || parts.at(1).isEmpty())
            return false;
        m_store.SaveSetting(m_appTitle, sectionOf(kind.at(0).toLatin1()), parts.at(1), parts.at(2));
        return true;
    }

    bool insertRow(const QStringList& parts)
    {
        if (parts.size() < 4)
            return false;
        const QString& table = parts.at(1);
        const QString& column = parts.at(2);
        const QString upper = table.toUpper();
        if (upper == ProgramTable || upper == ForbiddenMark) {
            if (!isPlainName(column))
                return false;
            const QString type = upper == ProgramTable ? QStringLiteral("true") : QStringLiteral("false");
            return m_connection.Execute(Statement(QStringLiteral("Insert INTO RESTRICTDISALLOW (") + column
                    + QStringLiteral(",Type) values ('{}',") + type + QStringLiteral(")"),
                {parts.at(3)}));
        }
        // A list is emptied at its first record, and again whenever another table came between.
        const bool listTable = isListTable(table);
        if (table != m_previousTable) {
            m_previousTable = table;
            if (listTable)
                m_connection.Execute(Statement(QStringLiteral("Delete * from ") + table));
        }
        if (!listTable || !isPlainName(column))
            return false;
        return m_connection.Execute(Statement(
            QStringLiteral("Insert INTO ") + table + QStringLiteral(" (") + column + QStringLiteral(") values ('{}')"),
            {parts.at(3)}));
    }

    Preferences& m_store;
    QString m_appTitle;
    Connection& m_connection;
    QString m_previousTable;
};

} // namespace

QString defaultPath(const QString& applicationFolder)
{
    return QDir(applicationFolder).filePath(FileName);
}

QStringList fixedRecords(const SessionPreferences& preferences, int maxComputers)
{
    QStringList records;
    for (const FixedRecord& record : Fixed) {
        const QString key = QLatin1StringView(record.fileKey);
        if (record.kind == 'K') {
            // The line's expression compares the whole record with "0" and writes what it found.
            records << QStringLiteral("True");
            continue;
        }
        const QString kind(QChar::fromLatin1(record.kind));
        const QString& separator = brokenSeparator(QLatin1StringView(record.fileKey)) ? BrokenSeparator : Separator;
        records << kind + Separator + key + separator + writtenValue(preferences, record, maxComputers);
    }
    return records;
}

QStringList listRecords(Connection& connection)
{
    QStringList records;
    for (const ListSource& list : Lists) {
        Recordset rows;
        if (!rows.Open(Statement(QLatin1StringView(list.select)), connection, CursorType::Static, LockType::ReadOnly))
            continue;
        const QString front = QStringLiteral("I :- ") + QLatin1StringView(list.recordTable) + Separator
            + QLatin1StringView(list.recordColumn) + Separator;
        for (; !rows.Eof(); rows.MoveNext()) {
            const QString value = rows.value(QLatin1StringView(list.column)).toString();
            records << front + (list.upper ? value.toUpper() : value);
        }
        rows.Close();
    }
    return records;
}

QByteArray fileContent(const QStringList& records)
{
    QByteArray content;
    for (const QString& record : records)
        content += ScrambleLine(record).toLatin1() + "\r\n";
    return content;
}

QString writeFile(const QString& path, const QByteArray& content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        return file.errorString();
    return {};
}

QStringList readFields(const QByteArray& content)
{
    QStringList fields;
    QString field;
    bool quoted = false;
    const auto finish = [&] {
        QString text = field.trimmed();
        if (text.size() >= 2 && text.startsWith(u'"') && text.endsWith(u'"'))
            text = text.mid(1, text.size() - 2);
        if (!text.isEmpty())
            fields << text;
        field.clear();
    };
    for (const char byte : content) {
        const QChar c = QChar::fromLatin1(byte);
        if (c == u'"')
            quoted = !quoted;
        if (c == u'\n' || c == u'\r') {
            quoted = false;
            finish();
        } else if (c == u',' && !quoted) {
            finish();
        } else {
            field += c;
        }
    }
    finish();
    return fields;
}

LoadResult load(const QByteArray& content, Preferences& store, const QString& appTitle, Connection& connection)
{
    connection.Execute(Statement(QStringLiteral("Delete * from RESTRICTDISALLOW")));
    Loader loader(store, appTitle, connection);
    LoadResult result;
    for (const QString& field : readFields(content)) {
        if (loader.apply(field))
            ++result.applied;
        else
            ++result.skipped;
    }
    return result;
}

} // namespace marlet::settingsfile
