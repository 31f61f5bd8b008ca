#pragma once

#include <QString>

#include <array>

// The control names of the password gate in front of the generate screen, shared by the screen and
// its desktop view.
namespace marlet::genpasstoaccs {

// The screen's own name, by which the front end finds its view.
inline const QString FormName = QStringLiteral("GenPasstoAccs");

// The first login's frame and fields, and the second's, shown when two administrators are required.
inline const QString Frame1 = QStringLiteral("Frame1");
inline const QString txtUsername1 = QStringLiteral("txtUsername1");
inline const QString txtPassword1 = QStringLiteral("txtPassword1");
inline const QString Frame2 = QStringLiteral("Frame2");
inline const QString txtUsername2 = QStringLiteral("txtUsername2");
inline const QString txtPassword2 = QStringLiteral("txtPassword2");

// The buttons.
inline const QString cmdOK = QStringLiteral("cmdOK");
inline const QString cmdCancel = QStringLiteral("cmdCancel");

// The frames and fields of login 1 and 2, by the login's number less one.
inline const std::array<QString, 2> Frames {Frame1, Frame2};
inline const std::array<QString, 2> Usernames {txtUsername1, txtUsername2};
inline const std::array<QString, 2> Passwords {txtPassword1, txtPassword2};

} // namespace marlet::genpasstoaccs
