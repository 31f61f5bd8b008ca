#pragma once

#include <QString>

#include <array>

// The control names of the settings screen, page by page, shared by the screen, its pages and its
// desktop view. A rule of one page may reach a field of another by its name here; a page not built
// yet has no such control, and the rule finds none.
namespace marlet::options {

// The screen's own name, by which the front end finds its view.
inline const QString FormName = QStringLiteral("Options");

// The tab strip, the buttons and the settings field with its menu.
inline const QString TabStrip1 = QStringLiteral("TabStrip1");
inline const QString cmdHelp = QStringLiteral("cmdHelp");
inline const QString cmdOk = QStringLiteral("cmdOk");
inline const QString cmdCancel = QStringLiteral("cmdCancel");
inline const QString cmdApply = QStringLiteral("cmdApply");
inline const QString txtSettings = QStringLiteral("txtSettings");
inline const QString m_Settings = QStringLiteral("m_Settings");
inline const QString m_SaveToFile = QStringLiteral("m_SaveToFile");
inline const QString m_LoadFromFile = QStringLiteral("m_LoadFromFile");
inline const QString m_SettingsCancel = QStringLiteral("m_SettingsCancel");

// The panels of the pages, by the page's tab-loaded flag; FSMS is shown by no tab.
inline const QString FGeneral = QStringLiteral("FGeneral");
inline const QString FUserAccount = QStringLiteral("FUserAccount");
inline const QString FTicketSetting = QStringLiteral("FTicketSetting");
inline const QString FMaintenance = QStringLiteral("FMaintenance");
inline const QString FAutomatedAction = QStringLiteral("FAutomatedAction");
inline const QString FClientOption = QStringLiteral("FClientOption");
inline const QString FPrintMonitor = QStringLiteral("FPrintMonitor");
inline const QString FQuickTicket = QStringLiteral("FQuickTicket");
inline const QString FIncludeExclude = QStringLiteral("FIncludeExclude");
inline const QString FPOS = QStringLiteral("FPOS");
inline const QString FSMS = QStringLiteral("FSMS");

// General: ticket prefix and currency, the switches towards the clients and the adaptor to bind to.
inline const QString txtPrefix = QStringLiteral("txtPrefix");
inline const QString txtCurrency = QStringLiteral("txtCurrency");
inline const QString chkSetTime = QStringLiteral("chkSetTime");
inline const QString chkShutDownClients = QStringLiteral("chkShutDownClients");
inline const QString chkCheckConnection = QStringLiteral("chkCheckConnection");
inline const QString chkSameIP = QStringLiteral("chkSameIP");
inline const QString cboBindType = QStringLiteral("cboBindType");
inline const QString txtBindType = QStringLiteral("txtBindType");

// General: the characters of generated tickets and the server's port.
inline const QString FPassGenType = QStringLiteral("FPassGenType");
inline const QString optNumberOnly = QStringLiteral("optNumberOnly");
inline const QString optAlphabetOnly = QStringLiteral("optAlphabetOnly");
inline const QString optBoth = QStringLiteral("optBoth");
inline const QString FServerPort = QStringLiteral("FServerPort");
inline const QString optDefaultPort = QStringLiteral("optDefaultPort");
inline const QString optOtherPort = QStringLiteral("optOtherPort");
inline const QString txtServerPort = QStringLiteral("txtServerPort");
inline const QString lblPortNote = QStringLiteral("lblPortNote");

// General: start-up, front desk, site date and the login limit of generated tickets.
inline const QString chkLoadStart = QStringLiteral("chkLoadStart");
inline const QString chkFrontDesk = QStringLiteral("chkFrontDesk");
inline const QString chkSiteDate = QStringLiteral("chkSiteDate");
inline const QString chkLogLimit = QStringLiteral("chkLogLimit");
inline const QString txtLogLimit = QStringLiteral("txtLogLimit");

// Ticket Setting: the external database port, which the server port may not equal, and the start
// of the night time, which a failed login limit check tries to focus.
inline const QString txtExternalPort = QStringLiteral("txtExternalPort");
inline const QString dtNightStart = QStringLiteral("dtNightStart");

// Client Option: the client settings list with its explanation, the browser number, the colour,
// and the buttons to the two restriction panels.
inline const QString FClientSettings = QStringLiteral("FClientSettings");
inline const QString lstClientSettings = QStringLiteral("lstClientSettings");
inline const QString FExplanation = QStringLiteral("FExplanation");
inline const QString lblExplanation = QStringLiteral("lblExplanation");
inline const QString cboBrowsers = QStringLiteral("cboBrowsers");
inline const QString cmdColour = QStringLiteral("cmdColour");
inline const QString picColour = QStringLiteral("picColour");
inline const QString chkServerColor = QStringLiteral("chkServerColor");
inline const QString cmdRestoreDefault = QStringLiteral("cmdRestoreDefault");
inline const QString cmdProgramRestriction = QStringLiteral("cmdProgramRestriction");
inline const QString cmdSiteRestriction = QStringLiteral("cmdSiteRestriction");

// Client Option, "Program Restriction" panel: the allowed and the forbidden program lists.
inline const QString FProgramRestriction = QStringLiteral("FProgramRestriction");
inline const QString chkRestrict = QStringLiteral("chkRestrict");
inline const QString lstAllowed = QStringLiteral("lstAllowed");
inline const QString txtAllowed = QStringLiteral("txtAllowed");
inline const QString cmdAddAllowed = QStringLiteral("cmdAddAllowed");
inline const QString cmdRemoveAllowed = QStringLiteral("cmdRemoveAllowed");
inline const QString chkDisallow = QStringLiteral("chkDisallow");
inline const QString lstForbidden = QStringLiteral("lstForbidden");
inline const QString txtForbidden = QStringLiteral("txtForbidden");
inline const QString cmdAddForbidden = QStringLiteral("cmdAddForbidden");
inline const QString cmdRemoveForbidden = QStringLiteral("cmdRemoveForbidden");
inline const QString cmdExamples = QStringLiteral("cmdExamples");
inline const QString cmdProgramBack = QStringLiteral("cmdProgramBack");

// Client Option, "Site/Caption Restriction" panel: the captions list and its switches.
inline const QString FSiteRestriction = QStringLiteral("FSiteRestriction");
inline const QString chkSiteRestrict = QStringLiteral("chkSiteRestrict");
inline const QString chkApplyIE = QStringLiteral("chkApplyIE");
inline const QString chkMessClose = QStringLiteral("chkMessClose");
inline const QString FCaptionOption = QStringLiteral("FCaptionOption");
inline const QString chkCaseSensitive = QStringLiteral("chkCaseSensitive");
inline const QString chkWholeWord = QStringLiteral("chkWholeWord");
inline const QString lstCaptions = QStringLiteral("lstCaptions");
inline const QString txtCaption = QStringLiteral("txtCaption");
inline const QString cmdAddCaption = QStringLiteral("cmdAddCaption");
inline const QString cmdRemoveCaption = QStringLiteral("cmdRemoveCaption");
inline const QString cmdSiteBack = QStringLiteral("cmdSiteBack");

// Include/Exclude: the machines excluded from all restrictions, and the ticket separation with its
// machines serving reserved tickets.
inline const QString FExcluded = QStringLiteral("FExcluded");
inline const QString lstExcluded = QStringLiteral("lstExcluded");
inline const QString txtExcludedName = QStringLiteral("txtExcludedName");
inline const QString cmdAddExcluded = QStringLiteral("cmdAddExcluded");
inline const QString cmdRemoveExcluded = QStringLiteral("cmdRemoveExcluded");
inline const QString FTicketSeperation = QStringLiteral("FTicketSeperation");
inline const QString chkSelClientP = QStringLiteral("chkSelClientP");
inline const QString txtSelCPName = QStringLiteral("txtSelCPName");
inline const QString chkSelClient = QStringLiteral("chkSelClient");
inline const QString lstReserved = QStringLiteral("lstReserved");
inline const QString txtReservedName = QStringLiteral("txtReservedName");
inline const QString cmdAddReserved = QStringLiteral("cmdAddReserved");
inline const QString cmdRemoveReserved = QStringLiteral("cmdRemoveReserved");
inline const QString txtSelPrefix = QStringLiteral("txtSelPrefix");
// User Account: the account's fields, its rights, the existing accounts and the two policies.
inline const QString FUserFields = QStringLiteral("FUserFields");
inline const QString txtUserName = QStringLiteral("txtUserName");
inline const QString txtUserPassword = QStringLiteral("txtUserPassword");
inline const QString txtUserRetype = QStringLiteral("txtUserRetype");
inline const QString cboUserType = QStringLiteral("cboUserType");
inline const QString txtUserLogins = QStringLiteral("txtUserLogins");
inline const QString sldUserLogins = QStringLiteral("sldUserLogins");
inline const QString txtUserSolotime = QStringLiteral("txtUserSolotime");
inline const QString sldUserSolotime = QStringLiteral("sldUserSolotime");
inline const QString lstUserRights = QStringLiteral("lstUserRights");
inline const QString lstExistingUsers = QStringLiteral("lstExistingUsers");
inline const QString cmdUserAddChange = QStringLiteral("cmdUserAddChange");
inline const QString cmdUserRemove = QStringLiteral("cmdUserRemove");
inline const QString chkAdministratorPower = QStringLiteral("chkAdministratorPower");
inline const QString chkNoUser = QStringLiteral("chkNoUser");

// Ticket Setting: the night time frame, the ticket's printed texts, activation, the print size and
// the external database.
inline const QString FTimeTicket = QStringLiteral("FTimeTicket");
inline const QString dtNightEnd = QStringLiteral("dtNightEnd");
inline const QString chkUseGTime = QStringLiteral("chkUseGTime");
inline const QString FTicketInformation = QStringLiteral("FTicketInformation");
inline const QString txtTitle = QStringLiteral("txtTitle");
inline const QString txtInformation = QStringLiteral("txtInformation");
inline const QString txtAddress = QStringLiteral("txtAddress");
inline const QString cmdClearTexts = QStringLiteral("cmdClearTexts");
inline const QString chkActivateTk = QStringLiteral("chkActivateTk");
inline const QString chkOnlinePrinting = QStringLiteral("chkOnlinePrinting");
inline const QString FPrinterPreview = QStringLiteral("FPrinterPreview");
inline const QString lblPrinter = QStringLiteral("lblPrinter");
inline const QString cmdPrintSize = QStringLiteral("cmdPrintSize");
inline const QString m_PrintSize = QStringLiteral("m_PrintSize");
inline const QString m_SmallSize = QStringLiteral("m_SmallSize");
inline const QString m_MediumSize = QStringLiteral("m_MediumSize");
inline const QString m_LargeSize = QStringLiteral("m_LargeSize");
inline const QString m_ExportSize = QStringLiteral("m_ExportSize");
inline const QString chkExternalData = QStringLiteral("chkExternalData");

// Quick-Ticket: the switch, the definition's fields and the existing definitions.
inline const QString chkQuickTicket = QStringLiteral("chkQuickTicket");
inline const QString cboQuickTime = QStringLiteral("cboQuickTime");
inline const QString cboQuickCost = QStringLiteral("cboQuickCost");
inline const QString chkQuickTimeTicket = QStringLiteral("chkQuickTimeTicket");
inline const QString chkQuickOnce = QStringLiteral("chkQuickOnce");
inline const QString chkQuickVIP = QStringLiteral("chkQuickVIP");
inline const QString cmdAddQuickTicket = QStringLiteral("cmdAddQuickTicket");
inline const QString cmdRemoveQuickTicket = QStringLiteral("cmdRemoveQuickTicket");
inline const QString lstQuickTickets = QStringLiteral("lstQuickTickets");

// Include/Exclude: the café branches and their computers.
inline const QString FCafeList = QStringLiteral("FCafeList");
inline const QString cboCafeName = QStringLiteral("cboCafeName");
inline const QString txtCafeSystem = QStringLiteral("txtCafeSystem");
inline const QString cmdAddCafeClient = QStringLiteral("cmdAddCafeClient");
inline const QString cmdRemoveCafeClient = QStringLiteral("cmdRemoveCafeClient");
inline const QString lstCafes = QStringLiteral("lstCafes");
// Print Monitor: the master switch, the three modes, the bill by time or by cost with a rate of its
// own for one printer, and what the clients do around a print.
inline const QString chkEnablePrint = QStringLiteral("chkEnablePrint");
inline const QString FPrintMode = QStringLiteral("FPrintMode");
inline const QString optPrintAuthorization = QStringLiteral("optPrintAuthorization");
inline const QString optPrintDeduction = QStringLiteral("optPrintDeduction");
inline const QString optPrintNone = QStringLiteral("optPrintNone");
inline const QString FBillType = QStringLiteral("FBillType");
inline const QString optBillTime = QStringLiteral("optBillTime");
inline const QString cboTimePrint = QStringLiteral("cboTimePrint");
inline const QString optBillCost = QStringLiteral("optBillCost");
inline const QString cboCostPrint = QStringLiteral("cboCostPrint");
inline const QString chkUserPrint = QStringLiteral("chkUserPrint");
inline const QString cboWordPrint = QStringLiteral("cboWordPrint");
inline const QString cboWordCPrint = QStringLiteral("cboWordCPrint");
inline const QString lblPrintUnit = QStringLiteral("lblPrintUnit");
inline const QString chkWaitPrint = QStringLiteral("chkWaitPrint");
inline const QString chkOtherPrint = QStringLiteral("chkOtherPrint");
inline const QString chkReportPrint = QStringLiteral("chkReportPrint");
inline const QString chkDefaultPrinter = QStringLiteral("chkDefaultPrinter");

// POS: the lines a point-of-sale ticket shows, the kind of POS, its port with the test, its speed.
inline const QString FTicketDisplay = QStringLiteral("FTicketDisplay");
inline const QString chkStitle = QStringLiteral("chkStitle");
inline const QString chkType = QStringLiteral("chkType");
inline const QString chkSGroup = QStringLiteral("chkSGroup");
inline const QString chkSUserL = QStringLiteral("chkSUserL");
inline const QString chkSAddr = QStringLiteral("chkSAddr");
inline const QString chkSPassL = QStringLiteral("chkSPassL");
inline const QString FPOSType = QStringLiteral("FPOSType");
inline const QString optDevicePOS = QStringLiteral("optDevicePOS");
inline const QString optActivationPOS = QStringLiteral("optActivationPOS");
inline const QString FPOSPort = QStringLiteral("FPOSPort");
inline const QString cboCOM = QStringLiteral("cboCOM");
inline const QString cmdTestPOS = QStringLiteral("cmdTestPOS");
inline const QString FPOSSpeed = QStringLiteral("FPOSSpeed");
inline const QString cboPOSspeed = QStringLiteral("cboPOSspeed");

// The SMS panel, which no tab shows.
inline const QString FSMSAccount = QStringLiteral("FSMSAccount");
inline const QString txtSMSAccount = QStringLiteral("txtSMSAccount");
inline const QString txtSMSPassword = QStringLiteral("txtSMSPassword");
inline const QString cmdCheckSMS = QStringLiteral("cmdCheckSMS");
inline const QString lblSMSStatus = QStringLiteral("lblSMSStatus");
inline const QString FSMSOption = QStringLiteral("FSMSOption");
inline const QString chkAllowSMS = QStringLiteral("chkAllowSMS");
inline const QString chkAllowMSMS = QStringLiteral("chkAllowMSMS");
inline const QString FSMSCost = QStringLiteral("FSMSCost");
inline const QString txtSMScost = QStringLiteral("txtSMScost");

// Automated Action: the ping monitor and its reactions, and the shutdown at a set time.
inline const QString txtIPPing = QStringLiteral("txtIPPing");
inline const QString chkPingDisabled = QStringLiteral("chkPingDisabled");
inline const QString chkPingPause = QStringLiteral("chkPingPause");
inline const QString chkPingLogging = QStringLiteral("chkPingLogging");
inline const QString chkMOffline = QStringLiteral("chkMOffline");
inline const QString txtTOffline = QStringLiteral("txtTOffline");
inline const QString chkMOnline = QStringLiteral("chkMOnline");
inline const QString txtTOnline = QStringLiteral("txtTOnline");
inline const QString txtNoPing = QStringLiteral("txtNoPing");
inline const QString cboPingTimeout = QStringLiteral("cboPingTimeout");
inline const QString FShutTime = QStringLiteral("FShutTime");
inline const QString chkShutTime = QStringLiteral("chkShutTime");
inline const QString dtVShutTime = QStringLiteral("dtVShutTime");

// Maintenance: the clean-up and backup schedules with their buttons, the recycle bin's size.
inline const QString FCleanUp = QStringLiteral("FCleanUp");
inline const QString cboCleanUpTime = QStringLiteral("cboCleanUpTime");
inline const QString chkEnableCleanUp = QStringLiteral("chkEnableCleanUp");
inline const QString cmdCleanUp = QStringLiteral("cmdCleanUp");
inline const QString FBackUp = QStringLiteral("FBackUp");
inline const QString cboBackUpTime = QStringLiteral("cboBackUpTime");
inline const QString chkEnableBackUp = QStringLiteral("chkEnableBackUp");
inline const QString cmdBackUp = QStringLiteral("cmdBackUp");
inline const QString cmdRestore = QStringLiteral("cmdRestore");
inline const QString lblRecycleBinSize = QStringLiteral("lblRecycleBinSize");
inline const QString sldRecycleBinSize = QStringLiteral("sldRecycleBinSize");
inline const QString chkMoveToRecycle = QStringLiteral("chkMoveToRecycle");
inline const QString chkProgramLog = QStringLiteral("chkProgramLog");

// The panel of each page, by flag.
inline const std::array<QString, 11> Panels {FGeneral,
    FUserAccount,
    FTicketSetting,
    FMaintenance,
    FAutomatedAction,
    FClientOption,
    FPrintMonitor,
    FQuickTicket,
    FIncludeExclude,
    FPOS,
    FSMS};

} // namespace marlet::options
