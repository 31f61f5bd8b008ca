#pragma once

#include <QString>

// The control names of the ticket information screen, shared by the screen and its desktop view.
namespace marlet::accountinfo {

// The screen's own name, by which the front end finds its view.
inline const QString FormName = QStringLiteral("AccountInfo");

// The entry with its caption, Search, Print and Close, the report and the status line.
inline const QString Label1 = QStringLiteral("Label1");
inline const QString Text2 = QStringLiteral("Text2");
inline const QString OKButton = QStringLiteral("OKButton");
inline const QString Command1 = QStringLiteral("Command1");
inline const QString CancelButton = QStringLiteral("CancelButton");
inline const QString Text1 = QStringLiteral("Text1");
inline const QString Label2 = QStringLiteral("Label2");

// The frame choosing what the entry holds: a user name, or a group and number.
inline const QString Frame1 = QStringLiteral("Frame1");
inline const QString Option1 = QStringLiteral("Option1");
inline const QString Option2 = QStringLiteral("Option2");

} // namespace marlet::accountinfo
