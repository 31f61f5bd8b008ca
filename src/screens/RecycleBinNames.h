#pragma once

#include <QString>

// The control names of the recycle bin screen, shared by the screen and its desktop view.
namespace marlet::recyclebin {

// The screen's own name, by which the front end finds its view.
inline const QString FormName = QStringLiteral("RecycleBin");

// The list of deleted tickets with the report of the one clicked, the status text, the bar and Close.
inline const QString Frame2 = QStringLiteral("Frame2");
inline const QString List1 = QStringLiteral("List1");
inline const QString Text1 = QStringLiteral("Text1");
inline const QString Label3 = QStringLiteral("Label3");
inline const QString ProgressBar1 = QStringLiteral("ProgressBar1");
inline const QString Command5 = QStringLiteral("Command5");

// The utility frame: Search, Restore, Delete, Refresh, Restore All and Empty Recycle Bin.
inline const QString Frame1 = QStringLiteral("Frame1");
inline const QString Command4 = QStringLiteral("Command4");
inline const QString Command1 = QStringLiteral("Command1");
inline const QString Command2 = QStringLiteral("Command2");
inline const QString Command7 = QStringLiteral("Command7");
inline const QString Command6 = QStringLiteral("Command6");
inline const QString Command3 = QStringLiteral("Command3");

} // namespace marlet::recyclebin
