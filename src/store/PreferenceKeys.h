#pragma once

#include "store/Preferences.h"
#include "values/Product.h"

#include <QLatin1StringView>
#include <QString>

#include <span>
#include <string_view>

namespace marlet {

// Under which application a key is addressed: the host's title (AppTitle) or the product word.
enum class PreferenceApp { Title, Product };

// One key of the preference store with its home and the default that its readers use. Its texts
// are the catalogue's own and last as long as the program: the store remembers where it found a
// key by their places.
struct PreferenceKey
{
    PreferenceApp application;
    std::string_view section;
    std::string_view name;
    std::string_view defaultValue;

    // The same key addressed under the other application, for the paths that read or write it so.
    constexpr PreferenceKey underTitle() const { return {PreferenceApp::Title, section, name, defaultValue}; }
    constexpr PreferenceKey underProduct() const { return {PreferenceApp::Product, section, name, defaultValue}; }

    QString sectionText() const { return QLatin1StringView(section.data(), qsizetype(section.size())); }
    QString nameText() const { return QLatin1StringView(name.data(), qsizetype(name.size())); }
    QString defaultText() const { return QLatin1StringView(defaultValue.data(), qsizetype(defaultValue.size())); }
};

namespace detail {

constexpr PreferenceApp T = PreferenceApp::Title;
constexpr PreferenceApp P = PreferenceApp::Product;

// Every key of the store with its section, the default that its main readers use, and the
// application it is mainly addressed under. A screen whose default differs (EndTime "6:00" on the
// settings screen, the title on the settings screen) passes its own; a path that uses the other
// application asks for underTitle() or underProduct().
inline constexpr PreferenceKey preferenceCatalogue[] = {
    // Section Option: ticket screens
    {T, "Option", "Currency", "N"},
    {T, "Option", "STR", "NVT"},
    {P, "Option", "PrintType", "3"},
    {T, "Option", "QuickTicket", "0"},
    {T, "Option", "AutoSave", "1"},
    {T, "Option", "NoList", "0"},
    {T, "Option", "NoPassList", "1"},
    {T, "Option", "Expire", "20"},
    {T, "Option", "ExLog", "5"},
    {T, "Option", "ExType", "2"},
    {P, "Option", "TPlen", "5"},
    {T, "Option", "PassGenType", "1"},
    {T, "Option", "SelPrefix", "RSV"},
    {T, "Option", "SelCPName", "RESERVED"},
    {T, "Option", "SelClient", "0"},
    {T, "Option", "SelClientP", "0"},
    {T, "Option", "ProgramLog", "1"},
    {T, "Option", "RecycleBinSize", "5000"},
    {P, "Option", "UseGTime", "0"},
    {P, "Option", "BeginTime", "00:00"},
    {P, "Option", "EndTime", "06:00"},
    {T, "Option", "Download", "False"},
    {T, "Option", "DownType", "2"},
    {P, "Option", "Bold", "False"},
    {P, "Option", "Size", "8"},
    {P, "Option", "Title", "Norvantis"},
    {P, "Option", "Address", "Norvantis"},
    // What a ticket's QR code holds; empty: the user name and password (sheets only)
    {P, "Option", "LoginTemplate", ""},
    // Section Option: general settings
    {T, "Option", "SetTime", "1"},
    {T, "Option", "ShutDownClients", "0"},
    {T, "Option", "CheckConnection", "1"},
    {T, "Option", "SameIP", "1"},
    {T, "Option", "BindType", "AUTOMATIC"},
    {T, "Option", "CUSTOMBIND", ""}, // its readers pass the host's ports as the default
    {T, "Option", "ServerUse", "0"},
    {T, "Option", "ServerPort", "1001"},
    {T, "Option", "SimComp", "5"},
    {T, "Option", "LoadStart", "False"},
    {T, "Option", "FrontDesk", "1"},
    {T, "Option", "SiteDate", "1"},
    {T, "Option", "LogLimit", "0"},
    {T, "Option", "VLogLimit", "999"},
    {T, "Option", "Information", ""},
    {T, "Option", "ActivateTk", "0"},
    {T, "Option", "ExternalData", "0"},
    {T, "Option", "ExternalPort", "1100"},
    // Section Option: client settings kept beside the client section
    {T, "Option", "AllowPause", "False"},
    {T, "Option", "AllowTime", "True"},
    {T, "Option", "Rload", "True"},
    {T, "Option", "ShowAdmin", "False"},
    {T, "Option", "UpdateClients", "1"},
    {T, "Option", "Skin", "1"},
    {T, "Option", "CloseListen", "1"},
    {T, "Option", "Level", "0"},
    {T, "Option", "Colour", "0"},
    {T, "Option", "ServerColor", "1"},
    {T, "Option", "AllowSMS", "0"},
    {T, "Option", "AllowMSMS", "0"},
    // Section Option: print monitor
    {T, "Option", "EnablePrint", "0"},
    {T, "Option", "PrintBtype", "2"},
    {T, "Option", "Billtype", "True"},
    {T, "Option", "TimePrint", "10"},
    {T, "Option", "CostPrint", "20"},
    {T, "Option", "UserPrint", "0"},
    {T, "Option", "WordPrint", ""},
    {T, "Option", "WordCPrint", "20"},
    {T, "Option", "WaitPrint", "1"},
    {T, "Option", "OtherPrint", "1"},
    {T, "Option", "ReportPrint", "1"},
    {T, "Option", "DefaultPrinter", "1"},
    // Section Option: automated action and maintenance
    {T, "Option", "IPPing", ""},
    {T, "Option", "PingDisabled", "1"},
    {T, "Option", "PingPause", "0"},
    {T, "Option", "PingLogging", "0"},
    {T, "Option", "MOffline", "0"},
    {T, "Option", "TOffline", "We are Offline"},
    {T, "Option", "MOnline", "0"},
    {T, "Option", "TOnline", "We are Online"},
    {T, "Option", "NoPing", "6"},
    {T, "Option", "PingTimeout", "2000"},
    {T, "Option", "ShutTime", "0"},
    {T, "Option", "VShutTime", "00:00"},
    {T, "Option", "CleanUpTime", "2"},
    {T, "Option", "EnableCleanUp", "1"},
    {T, "Option", "BackUpTime", "1"},
    {T, "Option", "EnableBackUp", "1"},
    {T, "Option", "MovetoRecycle", "1"},
    // Section Settings: the last batch of the generate screen, and one client value
    {T, "Settings", "Number", "50"},
    {T, "Settings", "Hr", "0"},
    {T, "Settings", "Min", "0"},
    {T, "Settings", "Amount", "50"},
    {T, "Settings", "TopBarMov", "1"},
    // Section POS: written under the product word
    {P, "POS", "Stitle", "1"},
    {P, "POS", "Type", "1"},
    {P, "POS", "SGroup", "1"},
    {P, "POS", "SUserL", "0"},
    {P, "POS", "SAddr", "1"},
    {P, "POS", "SPassL", "0"},
    {P, "POS", "POSType", "True"},
    {P, "POS", "COM", "COM1"},
    {P, "POS", "POSspeed", "1"},
    // Section COption: what the host hands to the client machines
    {T, "COption", "AllowAltCtrlDel", "True"},
    {T, "COption", "AutoClear", "True"},
    {T, "COption", "HideTaskBar", "True"},
    {T, "COption", "NoAutoSearch", "False"},
    {T, "COption", "StopMusic", "True"},
    {T, "COption", "LoadIE", "True"},
    {T, "COption", "LoadService", "True"},
    {T, "COption", "Drive A", "False"},
    {T, "COption", "Drive B", "False"},
    {T, "COption", "Drive C", "False"},
    {T, "COption", "Drive D", "False"},
    {T, "COption", "All Drive", "False"},
    {T, "COption", "ControlPanel", "0"},
    {T, "COption", "TaskBar", "0"},
    {T, "COption", "WallPaper", "0"},
    {T, "COption", "ExplorerHistory", "0"},
    {T, "COption", "Neigbhourhood", "0"},
    {T, "COption", "ClearList", "0"},
    {T, "COption", "SaveNoChanges", "0"},
    {T, "COption", "OnScreenIP", "0"},
    {T, "COption", "ClearDesktop", "0"},
    {T, "COption", "Run", "0"},
    {T, "COption", "Find", "0"},
    {T, "COption", "Logoff", "0"},
    {T, "COption", "Shutdown", "0"},
    {T, "COption", "HideBackground", "0"},
    {T, "COption", "AutoRun", "0"},
    {T, "COption", "FolderChange", "0"},
    {T, "COption", "AdminSolo", "1"},
    {T, "COption", "NoPrinterTab", "0"},
    {T, "COption", "NoCPLs", "0"},
    {T, "COption", "NSMMPrograms", "0"},
    {T, "COption", "NoRecycle", "0"},
    {T, "COption", "NOMMComputer", "0"},
    {T, "COption", "NoInternetIcon", "0"},
    {T, "COption", "NoFileMenu", "0"},
    {T, "COption", "DisableRegisterTools", "1"},
    {T, "COption", "NoAutoDial", "1"},
    {T, "COption", "NoProfile", "1"},
    {T, "COption", "CoolSwitch", "1"},
    {T, "COption", "NoTaskMgr", "1"},
    {T, "COption", "NoChangePass", "1"},
    {T, "COption", "NoLWorkStation", "1"},
    {T, "COption", "LimitBrowser", "0"},
    {T, "COption", "DProg", "0"},
    {T, "COption", "SLogin", "0"},
    {T, "COption", "RClick", "0"},
    {T, "COption", "IOption", "0"},
    {T, "COption", "SDDir", "0"},
    {T, "COption", "FSharing", "0"},
    {T, "COption", "PSharing", "0"},
    {T, "COption", "PopupB", "0"},
    {T, "COption", "LimitMess", "0"},
    {T, "COption", "FileDownload", "0"},
    {T, "COption", "NoToolBar", "0"},
    {T, "COption", "NoDrives", "0"},
    {T, "COption", "INo", "3"},
    {T, "COption", "Restrict", "0"},
    {T, "COption", "Disallow", "1"},
    {T, "COption", "SiteRestrict", "1"},
    {T, "COption", "ApplyIE", "0"},
    {T, "COption", "MessClose", "1"},
};

constexpr char foldAscii(char c)
{
    return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c;
}

constexpr bool sameName(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (foldAscii(a[i]) != foldAscii(b[i]))
            return false;
    }
    return true;
}

// A key that is not in the catalogue stops the build here.
consteval const PreferenceKey& catalogueKey(std::string_view section, std::string_view name)
{
    for (const PreferenceKey& key : preferenceCatalogue) {
        if (sameName(key.section, section) && sameName(key.name, name))
            return key;
    }
    throw "preference key missing from the catalogue";
}

} // namespace detail

// The whole catalogue, in its order, and the lookup by section and name in any case (the settings
// file names keys in its own spellings). Null when the key is not catalogued.
std::span<const PreferenceKey> preferenceCatalogue();
const PreferenceKey* findPreferenceKey(QStringView section, QStringView name);

// The keys that screens read and write by name.
namespace keys {
#define MARLET_KEY(section, name) inline constexpr const PreferenceKey& name = detail::catalogueKey(section, #name)
MARLET_KEY("Option", Currency);
MARLET_KEY("Option", STR);
MARLET_KEY("Option", PrintType);
MARLET_KEY("Option", QuickTicket);
MARLET_KEY("Option", AutoSave);
MARLET_KEY("Option", NoList);
MARLET_KEY("Option", NoPassList);
MARLET_KEY("Option", Expire);
MARLET_KEY("Option", ExLog);
MARLET_KEY("Option", ExType);
MARLET_KEY("Option", TPlen);
MARLET_KEY("Option", PassGenType);
MARLET_KEY("Option", SelPrefix);
MARLET_KEY("Option", SelCPName);
MARLET_KEY("Option", SelClient);
MARLET_KEY("Option", SelClientP);
MARLET_KEY("Option", ProgramLog);
MARLET_KEY("Option", RecycleBinSize);
MARLET_KEY("Option", UseGTime);
MARLET_KEY("Option", BeginTime);
MARLET_KEY("Option", EndTime);
MARLET_KEY("Option", Download);
MARLET_KEY("Option", DownType);
MARLET_KEY("Option", Bold);
MARLET_KEY("Option", Size);
MARLET_KEY("Option", Title);
MARLET_KEY("Option", Address);
MARLET_KEY("Option", LoginTemplate);
MARLET_KEY("Option", SetTime);
MARLET_KEY("Option", ShutDownClients);
MARLET_KEY("Option", CheckConnection);
MARLET_KEY("Option", SameIP);
MARLET_KEY("Option", BindType);
MARLET_KEY("Option", CUSTOMBIND);
MARLET_KEY("Option", ServerUse);
MARLET_KEY("Option", ServerPort);
MARLET_KEY("Option", SimComp);
MARLET_KEY("Option", LoadStart);
MARLET_KEY("Option", FrontDesk);
MARLET_KEY("Option", SiteDate);
MARLET_KEY("Option", LogLimit);
MARLET_KEY("Option", VLogLimit);
MARLET_KEY("Option", Information);
MARLET_KEY("Option", ActivateTk);
MARLET_KEY("Option", ExternalData);
MARLET_KEY("Option", ExternalPort);
MARLET_KEY("Option", UpdateClients);
MARLET_KEY("Option", Skin);
MARLET_KEY("Option", CloseListen);
MARLET_KEY("Option", Level);
MARLET_KEY("Option", Colour);
MARLET_KEY("Option", ServerColor);
MARLET_KEY("Option", AllowSMS);
MARLET_KEY("Option", AllowMSMS);
MARLET_KEY("Option", EnablePrint);
MARLET_KEY("Option", PrintBtype);
MARLET_KEY("Option", Billtype);
MARLET_KEY("Option", TimePrint);
MARLET_KEY("Option", CostPrint);
MARLET_KEY("Option", UserPrint);
MARLET_KEY("Option", WordPrint);
MARLET_KEY("Option", WordCPrint);
MARLET_KEY("Option", WaitPrint);
MARLET_KEY("Option", OtherPrint);
MARLET_KEY("Option", ReportPrint);
MARLET_KEY("Option", DefaultPrinter);
MARLET_KEY("Option", IPPing);
MARLET_KEY("Option", PingDisabled);
MARLET_KEY("Option", PingPause);
MARLET_KEY("Option", PingLogging);
MARLET_KEY("Option", MOffline);
MARLET_KEY("Option", TOffline);
MARLET_KEY("Option", MOnline);
MARLET_KEY("Option", TOnline);
MARLET_KEY("Option", NoPing);
MARLET_KEY("Option", PingTimeout);
MARLET_KEY("Option", ShutTime);
MARLET_KEY("Option", VShutTime);
MARLET_KEY("Option", CleanUpTime);
MARLET_KEY("Option", EnableCleanUp);
MARLET_KEY("Option", BackUpTime);
MARLET_KEY("Option", EnableBackUp);
MARLET_KEY("Option", MovetoRecycle);
MARLET_KEY("Settings", Number);
MARLET_KEY("Settings", Hr);
MARLET_KEY("Settings", Min);
MARLET_KEY("Settings", Amount);
MARLET_KEY("Settings", TopBarMov);
namespace pos {
MARLET_KEY("POS", Stitle);
MARLET_KEY("POS", Type);
MARLET_KEY("POS", SGroup);
MARLET_KEY("POS", SUserL);
MARLET_KEY("POS", SAddr);
MARLET_KEY("POS", SPassL);
MARLET_KEY("POS", POSType);
MARLET_KEY("POS", COM);
MARLET_KEY("POS", POSspeed);
} // namespace pos
#undef MARLET_KEY
} // namespace keys

// The preference store as one session sees it: keys of the catalogue, addressed under the host's
// title or the product word as the catalogue says, with the catalogue's defaults.
class SessionPreferences
{
public:
    SessionPreferences(Preferences& store, QString appTitle);

    const QString& appTitle() const { return m_appTitle; }
    // The application text the key is addressed under: the host's title or the product word.
    QString application(const PreferenceKey& key) const;

    QString text(const PreferenceKey& key) const;
    QString text(const PreferenceKey& key, const QString& defaultValue) const;
    // The numeric value of the text: a text that does not start with a number counts as 0.
    double number(const PreferenceKey& key) const;
    double number(const PreferenceKey& key, const QString& defaultValue) const;
    // True, False or a number, 0 being false. Any other text counts as false.
    bool truth(const PreferenceKey& key) const;
    bool truth(const PreferenceKey& key, const QString& defaultValue) const;

    void save(const PreferenceKey& key, const QString& value);

    // How the readers above turn a stored text into a number or a truth value.
    static double numberOf(const QString& text);
    static bool truthOf(const QString& text);

private:
    Preferences& m_store;
    QString m_appTitle;
};

} // namespace marlet
