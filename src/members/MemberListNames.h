#pragma once

#include <QString>

#include <array>

// The control names of the member directory screen.
namespace marlet::memberlist {

// The screen's own name, by which the front end finds its view.
inline const QString FormName = QStringLiteral("MemberList");

// The grid of members and the small picture of the row clicked.
inline const QString memList = QStringLiteral("memList");
inline const QString mpicture2 = QStringLiteral("mpicture2");
// The search: its text, the four options "Surname", "Username", "Email", "Firstname" (Option7 0 to
// 3) and "include Partial Match".
inline const QString Text12 = QStringLiteral("Text12");
inline const QString Option7 = QStringLiteral("Option7");
inline const QString Check17 = QStringLiteral("Check17");
// "Member Search", "<< Back", "List All", "Edit" and "Delete".
inline const QString Command19 = QStringLiteral("Command19");
inline const QString Command20 = QStringLiteral("Command20");
inline const QString Command21 = QStringLiteral("Command21");
inline const QString Command22 = QStringLiteral("Command22");
inline const QString Command23 = QStringLiteral("Command23");

// The search options in the order of their indexes.
enum SearchField { BySurname = 0, ByUsername = 1, ByEmail = 2, ByFirstname = 3 };
inline const std::array<QString, 4> SearchCaptions {
    QStringLiteral("Surname"), QStringLiteral("Username"), QStringLiteral("Email"), QStringLiteral("Firstname")};

} // namespace marlet::memberlist
