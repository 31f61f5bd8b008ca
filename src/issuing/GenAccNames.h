#pragma once

#include <QString>
#include <QStringList>

#include <array>

// The control names of the generate screen, shared by the screen, the work behind its buttons and
// its desktop view. The names are the ones the staff's scenario scripts and the host's forms use.
namespace marlet::genacc {

// The screen's own name, by which the front end finds its view.
inline const QString FormName = QStringLiteral("GenAcc");

// The frame: the tab strip, the ticket grid every tab lists in, the five tab frames and the buttons.
inline const QString TabStrip1 = QStringLiteral("TabStrip1");
inline const QString PrintList = QStringLiteral("PrintList");
inline const QString FNew = QStringLiteral("FNew");
inline const QString FCustom = QStringLiteral("FCustom");
inline const QString FMember = QStringLiteral("FMember");
inline const QString FExist = QStringLiteral("FExist");
inline const QString FSetting = QStringLiteral("FSetting");
inline const QString Command6 = QStringLiteral("Command6");
inline const QString cmdHelp = QStringLiteral("cmdHelp");

// The progress panel with its text and bar.
inline const QString FProgress = QStringLiteral("FProgress");
inline const QString Label4 = QStringLiteral("Label4");
inline const QString ProgressBar1 = QStringLiteral("ProgressBar1");

// New Ticket: the manual fields, the quick-ticket frame, and the fields every batch shares.
inline const QString FManual = QStringLiteral("FManual");
inline const QString cboNumber = QStringLiteral("cboNumber");
inline const QString cboHours = QStringLiteral("cboHours");
inline const QString cboMinutes = QStringLiteral("cboMinutes");
inline const QString lblCost = QStringLiteral("lblCost");
inline const QString lblCurrency = QStringLiteral("lblCurrency");
inline const QString cboCost = QStringLiteral("cboCost");
inline const QString FQuick = QStringLiteral("FQuick");
inline const QString cboTicketType = QStringLiteral("cboTicketType");
inline const QString cboPages = QStringLiteral("cboPages");
inline const QString cboSizeType = QStringLiteral("cboSizeType");
inline const QString cboExpiry = QStringLiteral("cboExpiry");
inline const QString txtDays = QStringLiteral("txtDays");
inline const QString lblDays = QStringLiteral("lblDays");
inline const QString txtPrefix = QStringLiteral("txtPrefix");
inline const QString chkVIP = QStringLiteral("chkVIP");
inline const QString chkFlex = QStringLiteral("chkFlex");
inline const QString chkTimePeriod = QStringLiteral("chkTimePeriod");
inline const QString chkOnce = QStringLiteral("chkOnce");
inline const QString dtStart = QStringLiteral("dtStart");
inline const QString dtEnd = QStringLiteral("dtEnd");
inline const QString cmdGenerate = QStringLiteral("cmdGenerate");

// Custom Ticket.
inline const QString txtCustomUsername = QStringLiteral("txtCustomUsername");
inline const QString txtCustomPassword = QStringLiteral("txtCustomPassword");
inline const QString cboCustomHours = QStringLiteral("cboCustomHours");
inline const QString cboCustomMinutes = QStringLiteral("cboCustomMinutes");
inline const QString cboCustomCost = QStringLiteral("cboCustomCost");
inline const QString lblCustomCurrency = QStringLiteral("lblCustomCurrency");
inline const QString cboCustomExpiry = QStringLiteral("cboCustomExpiry");
inline const QString txtCustomDays = QStringLiteral("txtCustomDays");
inline const QString lblCustomDays = QStringLiteral("lblCustomDays");
inline const QString chkCustomFlex = QStringLiteral("chkCustomFlex");
inline const QString chkCustomVIP = QStringLiteral("chkCustomVIP");
inline const QString chkCustomTimePeriod = QStringLiteral("chkCustomTimePeriod");
inline const QString chkCustomOnce = QStringLiteral("chkCustomOnce");
inline const QString dtCustomStart = QStringLiteral("dtCustomStart");
inline const QString dtCustomEnd = QStringLiteral("dtCustomEnd");
inline const QString cmdCreateCustom = QStringLiteral("cmdCreateCustom");

// Membership Ticket.
inline const QString txtMemberUsername = QStringLiteral("txtMemberUsername");
inline const QString txtMemberPassword = QStringLiteral("txtMemberPassword");
inline const QString chkUseTime = QStringLiteral("chkUseTime");
inline const QString cboMemberHours = QStringLiteral("cboMemberHours");
inline const QString cboMemberMinutes = QStringLiteral("cboMemberMinutes");
inline const QString cboMemberCost = QStringLiteral("cboMemberCost");
inline const QString lblMemberCurrency = QStringLiteral("lblMemberCurrency");
inline const QString chkRecharge = QStringLiteral("chkRecharge");
inline const QString cboRechargeDays = QStringLiteral("cboRechargeDays");
inline const QString cboRechargePeriod = QStringLiteral("cboRechargePeriod");
inline const QString cboMemberExpiry = QStringLiteral("cboMemberExpiry");
inline const QString txtMemberDays = QStringLiteral("txtMemberDays");
inline const QString lblMemberDays = QStringLiteral("lblMemberDays");
inline const QString chkMemberVIP = QStringLiteral("chkMemberVIP");
inline const QString chkMemberTimePeriod = QStringLiteral("chkMemberTimePeriod");
inline const QString cboWeekday = QStringLiteral("cboWeekday");
inline const QString dtMemberStart = QStringLiteral("dtMemberStart");
inline const QString dtMemberEnd = QStringLiteral("dtMemberEnd");
inline const QString cmdCreateMember = QStringLiteral("cmdCreateMember");
// "Existing Members", which opens the member directory.
inline const QString Command24 = QStringLiteral("Command24");
// The member page that the first step opens over the tab: the member fields under the names of
// the member record screen, with "<< Back" and "Finish Registration ||".
inline const QString FMemberPage = QStringLiteral("FMemberPage");
inline const QString cmdMemberBack = QStringLiteral("cmdMemberBack");
inline const QString cmdFinishMember = QStringLiteral("cmdFinishMember");

// Existing Ticket: the selection with its options "&All", "Un&used", "U&sed", "By &Time" and "By Ticket Group",
// its entry boxes for minutes and group, and the buttons beside the grid.
inline const QString FSelection = QStringLiteral("FSelection");
inline const QString Option1 = QStringLiteral("Option1");
inline const QString Option2 = QStringLiteral("Option2");
inline const QString Option3 = QStringLiteral("Option3");
inline const QString Option4 = QStringLiteral("Option4");
inline const QString Option5 = QStringLiteral("Option5");
inline const QString Text1 = QStringLiteral("Text1");
inline const QString Text5 = QStringLiteral("Text5");
inline const QString Command2 = QStringLiteral("Command2");
inline const QString Command4 = QStringLiteral("Command4");
inline const QString cmdPrintExisting = QStringLiteral("cmdPrintExisting");
inline const QString Command10 = QStringLiteral("Command10");

// Existing Ticket: the grid's context menu and its items.
inline const QString m_click = QStringLiteral("m_click");
inline const QString m_searchs = QStringLiteral("m_searchs");
inline const QString m_Dels = QStringLiteral("m_Dels");
inline const QString m_Rec = QStringLiteral("m_Rec");
inline const QString m_ChangePass = QStringLiteral("m_ChangePass");
inline const QString m_separator = QStringLiteral("m_separator");
inline const QString m_cancel = QStringLiteral("m_cancel");

// Existing Ticket: the text commands beside the grid.
inline const QString m_search = QStringLiteral("m_search");
inline const QString m_password = QStringLiteral("m_password");
inline const QString m_del = QStringLiteral("m_del");
inline const QString m_change = QStringLiteral("m_change");
inline const QString m_recharge = QStringLiteral("m_recharge");

// Settings.
inline const QString chkAutoSave = QStringLiteral("chkAutoSave");
inline const QString chkNoList = QStringLiteral("chkNoList");
inline const QString Check4 = QStringLiteral("Check4");
inline const QString FPrintSize = QStringLiteral("FPrintSize");
inline const QString optSmallPrint = QStringLiteral("optSmallPrint");
inline const QString optMediumPrint = QStringLiteral("optMediumPrint");
inline const QString optLargePrint = QStringLiteral("optLargePrint");
inline const QString optExport = QStringLiteral("optExport");
inline const QString cmdPrintSettings = QStringLiteral("cmdPrintSettings");
inline const QString cmdSaveChanges = QStringLiteral("cmdSaveChanges");

// The selection's options in their order, "&All" first.
inline const std::array<QString, 5> SelectionOptions {Option1, Option2, Option3, Option4, Option5};
// The entries of the weekday lists, the member tab's and the member record's.
inline const QStringList Weekdays {QStringLiteral("SUN - SAT (ALL DAYS)"),
    QStringLiteral("SUNDAY"),
    QStringLiteral("MONDAY"),
    QStringLiteral("TUESDAY"),
    QStringLiteral("WEDNESDAY"),
    QStringLiteral("THURSDAY"),
    QStringLiteral("FRIDAY"),
    QStringLiteral("SATURDAY"),
    QStringLiteral("MON - FRI (WEEKDAY)"),
    QStringLiteral("SAT - SUN (WEEKEND)")};
// The tab frames in the order of their tabs.
inline const std::array<QString, 5> TabFrames {FNew, FCustom, FMember, FExist, FSetting};

} // namespace marlet::genacc
