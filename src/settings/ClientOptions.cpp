#include "settings/ClientOptions.h"

#include "values/Numbers.h"

namespace marlet::clientoptions {

namespace {

using F = StoredForm;
using R = TickRule;

consteval const PreferenceKey* key(std::string_view section, std::string_view name)
{
    return &detail::catalogueKey(section, name);
}

constexpr std::string_view O = "Option";
constexpr std::string_view C = "COption";

// The client settings list. Keys are the host's interface and need not fit their captions
// (WallPaper is the printer switch); captions and explanations are shown as they stand.
// clang-format off
constexpr std::array<ClientOption, Count> Options {{
    {"Allow Client to Pause", key(O, "AllowPause"), F::TrueFalse, R::Truth, false, false,
        "Allow Client to pause time."},
    {"Allow Ticket to Ticket Adding", key(O, "AllowTime"), F::TrueFalse, R::Truth, true, true,
        "Permit adding one ticket time to another on Client."},
    {"Reload Client on improper Termination", key(O, "Rload"), F::TrueFalse, R::Truth, true, true,
        "Reload Client if it was terminated improperly."},
    {"Show Windows Administrative tools", key(O, "ShowAdmin"), F::TrueFalse, R::Truth, false, false,
        "Show Windows Administrative Tools."},
    {"Allow ALT-CTRL-DEL on Login", key(C, "AllowAltCtrlDel"), F::TrueFalse, R::Truth, true, true,
        "ALT-CTRL-DEL works when Client is logged in."},
    {"Automatically Clear Desktop on Log off", key(C, "AutoClear"), F::TrueFalse, R::Truth, true, true,
        "Clears Desktop when Client is logged out for sometime."},
    {"Hide Taskbar on Log off", key(C, "HideTaskBar"), F::TrueFalse, R::Truth, true, true,
        "Hide Client Taskbar when logged off."},
    {"Stop Client-Server AutoSearch", key(C, "NoAutoSearch"), F::TrueFalse, R::Truth, false, false,
        "Stop clients from searching for Server."},
    {"Stop Sound/Music on Log off ...", key(C, "StopMusic"), F::TrueFalse, R::Truth, true, true,
        "Stop Sound/Music when log off and vice versa (Win9x)."},
    {"Load Internet Explorer on Login", key(C, "LoadIE"), F::TrueFalse, R::Truth, true, true,
        "Load Internet Browser automatically when none on Client."},
    {"Load Client Timer as System Service", key(C, "LoadService"), F::TrueFalse, R::Truth, true, true,
        "Load Client as a Service (also loads in SAFE MODE)."},
    {"Update Clients' settings on Connection", key(O, "UpdateClients"), F::OneZero, R::NotZero, true, true,
        "Update Client setting when connected to Server."},
    {"Hide A Drive", key(C, "Drive A"), F::TrueFalse, R::Truth, false, false, "Disable the use of Physical Drive A"},
    {"Hide B Drive", key(C, "Drive B"), F::TrueFalse, R::Truth, false, false, "Disable the use of Physical Drive B"},
    {"Hide C Drive", key(C, "Drive C"), F::TrueFalse, R::Truth, false, false, "Disable the use of Physical Drive C"},
    {"Hide D Drive", key(C, "Drive D"), F::TrueFalse, R::Truth, false, false, "Disable the use of Physical Drive D"},
    {"Hide All Physical Drives from E to Z", key(C, "All Drive"), F::TrueFalse, R::Truth, false, false,
        "Disable the use of all Physical Drives from E to Z."},
    {"Hide Control Panel", key(C, "ControlPanel"), F::OneZero, R::NotZero, false, false,
        "Disable/Hide Control Panel in Windows"},
    {"Disable Start Menu and Taskbar Settings", key(C, "TaskBar"), F::OneZero, R::NotZero, false, false,
        "Disallow changes to be made to Startmenu and taskbar settings."},
    {"Disable Printer Change", key(C, "WallPaper"), F::OneZero, R::NotZero, false, false,
        "Disallow changing from one Printer to another."},
    {"Don't Keep Explorer's History", key(C, "ExplorerHistory"), F::OneZero, R::NotZero, false, false,
        "Disallow saving Explorer history."},
    {"Hide Network Neighbourhood", key(C, "Neigbhourhood"), F::OneZero, R::NotZero, false, false,
        "Disable/Hide Network Neighbourhood."},
    {"Clear list of recently used documents", key(C, "ClearList"), F::OneZero, R::NotZero, false, false,
        "Clear list of used documents when Windows is SHUTDOWN."},
    {"Save no Changes made to Windows", key(C, "SaveNoChanges"), F::OneZero, R::NotZero, false, false,
        "Ignore changes made to Windows Settings."},
    {"Disable OnScreen IP configuration", key(C, "OnScreenIP"), F::OneZero, R::NotZero, false, false,
        "Disable the use of OnScreen Configuration."},
    {"Disable Clear Desktop and Internet Explorer", key(C, "ClearDesktop"), F::OneZero, R::NotZero, false, false,
        "Disable Clear Desktop and Load I-Browser option on Client."},
    {"Disable Run", key(C, "Run"), F::OneZero, R::NotZero, false, false,
        "Hide Run in Start Menu preventing running of commands."},
    {"Disable Find", key(C, "Find"), F::OneZero, R::NotZero, false, false, "Hide Find/Search in Windows."},
    {"Disable Log off", key(C, "Logoff"), F::OneZero, R::NotZero, false, false,
        "Hide Log Off in Windows preventing manually logging off .."},
    {"Disable Shutdown", key(C, "Shutdown"), F::OneZero, R::NotZero, false, false,
        "Hide Shutdown in Windows preventing manually shutting down."},
    {"Hide Desktop Items", key(C, "HideBackground"), F::OneZero, R::NotZero, false, false,
        "Hide Widnow Desktop and all Icons (including My Computer)."},
    {"Stop Drive's Autorun", key(C, "AutoRun"), F::OneZero, R::NotZero, false, false,
        "Disallow Autorun of CDs from CDROM drives when CD loaded."},
    {"Hide Settings in Start Menu", key(C, "FolderChange"), F::OneZero, R::NotZero, false, false,
        "Hide Settings in Start menu."},
    {"Disable Administrator and Solotimer when Connected", key(C, "AdminSolo"), F::OneZero, R::One, true, true,
        "Disable Administrator and Solotimer on Clients when connected."},
    {"Disable Printer Options", key(C, "NoPrinterTab"), F::OneZero, R::NotZero, false, false,
        "Disable Printer Tab preventing changing printer settings."},
    {"Disable CPLs Loading", key(C, "NoCPLs"), F::OneZero, R::NotZero, false, false,
        "Disallow Control Panel objects to be loaded."},
    {"Hide Program in Start Menu", key(C, "NSMMPrograms"), F::OneZero, R::NotZero, false, false,
        "Hide Program in Start Menu."},
    {"Disable Recycle Bin", key(C, "NoRecycle"), F::OneZero, R::NotZero, false, false, "Disable use of Recycle Bin."},
    {"Disable Manage Tool", key(C, "NOMMComputer"), F::OneZero, R::NotZero, false, false,
        "Disable use of Management tool preventing hardware change."},
    {"Hide Internet Explorer on Desktop", key(C, "NoInternetIcon"), F::OneZero, R::NotZero, false, false,
        "Hide Internet Explorer icon on Desktop."},
    {"Hide File Menu in Explorer", key(C, "NoFileMenu"), F::OneZero, R::NotZero, false, false,
        "Hide File Menu in Explorer/Internet Explorer."},
    {"Disable Registry Tools", key(C, "DisableRegisterTools"), F::OneZero, R::One, true, true,
        "Disable use of Registry tools for security purposes."},
    {"Disable AutoDial Connection", key(C, "NoAutoDial"), F::OneZero, R::One, true, true,
        "Disable AutoDial when loading Internet Explorer."},
    {"Disable Profile", key(C, "NoProfile"), F::OneAlways, R::One, true, true,
        "Disable multiple User profile (in Win9x)."},
    {"Disable Windows Keys", key(C, "CoolSwitch"), F::OneZero, R::One, true, true,
        "Disable use of Windows Special Keys (in NT)."},
    {"Disable Task Manager", key(C, "NoTaskMgr"), F::OneZero, R::One, true, true,
        "Disable use of Windows Task Manager for more security (in NT)."},
    {"Disable Change Password", key(C, "NoChangePass"), F::OneZero, R::One, true, true,
        "Disable use of Change Password for more security (in NT)."},
    {"Disable Lock Workstation", key(C, "NoLWorkStation"), F::OneAlways, R::One, true, true,
        "Disable use of Lock Workstation for more security (in NT)."},
    {"Use Classic Skin for Clients", key(O, "Skin"), F::ZeroOne, R::TextZero, false, false,
        "Change looks of Client to v2.2.1 and below."},
    {"Limit to a certain number Internet Browser at a time", key(C, "LimitBrowser"), F::OneZero, R::One, false, false,
        "Limit the no. of Internet Browsers that can be opened at a time to:"},
    {"Disable Notepad/Websites on Norvantis Client", key(C, "DProg"), F::OneZero, R::One, false, false,
        "Disable the Notepad and Websites on Program Button on Client."},
    {"Disable Staff Login on Client", key(C, "SLogin"), F::OneZero, R::One, false, false,
        "Disable Staff Login from Client only."},
    {"Disable Right Click on Internet Explorer", key(C, "RClick"), F::OneZero, R::One, false, false,
        "Disable Right Click Context Menu in Internet Explorer."},
    {"Disable Internet Explorer Option", key(C, "IOption"), F::OneZero, R::One, false, false,
        "Disable Internet Explorer Option on Client."},
    {"Disable Select I-Explorer Download Directory", key(C, "SDDir"), F::OneZero, R::One, false, false,
        "Disable specifying I-Explorer Download Directory on Client."},
    {"Disable File Sharing on Client", key(C, "FSharing"), F::OneZero, R::One, false, false,
        "Disable File Sharing on Client."},
    {"Disable Printer Sharing on Client", key(C, "PSharing"), F::OneZero, R::One, false, false,
        "Disable Printer Sharing on Client."},
    {"Enable Popup Blocker", key(C, "PopupB"), F::OneZero, R::One, false, false, "Enable Popup blocker on Client."},
    {"Limit to Six(6) Instant Messenge (Yahoo!, Hotmail Messenger, etc.)", key(C, "LimitMess"), F::OneZero, R::One,
        false, false, "Limit to Six(6) Instant Messenger (Yahoo!, Hotmail Messenger, etc.)"},
    {"Disable Movement of Client Timer in Modern Skin", key("Settings", "TopBarMov"), F::ZeroOne, R::NumberZero,
        false, false, "Disable the Client timer from been moved on Modern Skin."},
    {"Disable Internet Explorer File Download", key(C, "FileDownload"), F::OneZero, R::One, false, false,
        "Disable Internet Browser from File Download."},
    {"Disable Changing Toolbar Settings", key(C, "NoToolBar"), F::OneZero, R::One, false, false,
        "Disable the changing of Toolbars"},
}};
// clang-format on

} // namespace

std::span<const ClientOption, Count> catalogue()
{
    return Options;
}

bool ticked(const ClientOption& option, const QString& stored)
{
    switch (option.rule) {
    case TickRule::Truth:
        return SessionPreferences::truthOf(stored);
    case TickRule::TextZero:
        return stored == QLatin1String("0");
    case TickRule::NotZero:
    case TickRule::One:
    case TickRule::NumberZero:
        break;
    }
    if (!values::isNumeric(stored))
        return false;
    const double number = values::leadingNumber(stored);
    if (option.rule == TickRule::NotZero)
        return number != 0;
    return number == (option.rule == TickRule::One ? 1 : 0);
}

QString storedText(const ClientOption& option, bool ticked)
{
    switch (option.stored) {
    case StoredForm::TrueFalse:
        return ticked ? QStringLiteral("True") : QStringLiteral("False");
    case StoredForm::OneZero:
        return ticked ? QStringLiteral("1") : QStringLiteral("0");
    case StoredForm::OneAlways:
        return QStringLiteral("1");
    case StoredForm::ZeroOne:
        break;
    }
    return ticked ? QStringLiteral("0") : QStringLiteral("1");
}

QString closeListenText(bool noAutoSearchTicked)
{
    return noAutoSearchTicked ? QStringLiteral("0") : QStringLiteral("1");
}

int noDrives(bool driveA, bool driveB, bool driveC, bool driveD, bool allDrives)
{
    int mask = allDrives ? AllDrivesEToZ : 0;
    if (driveA)
        mask += 1;
    if (driveB)
        mask += 2;
    if (driveC)
        mask += 4;
    if (driveD)
        mask += 8;
    return mask;
}

QString noDrivesText(const SessionPreferences& stored)
{
    // Hide A Drive to Hide All Physical Drives from E to Z stand at positions 12 to 16.
    const auto drive = [&stored](int position) { return stored.truth(*Options[size_t(position)].key); };
    return QString::number(noDrives(drive(12), drive(13), drive(14), drive(15), drive(16)));
}

QString browserNumberText(const QString& typed)
{
    return values::isNumeric(typed) ? typed : QStringLiteral("3");
}

int colourOf(const QString& stored)
{
    const std::optional<qint32> colour = values::toInt32(values::leadingNumber(stored));
    return colour.value_or(0);
}

} // namespace marlet::clientoptions
