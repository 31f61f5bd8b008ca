#pragma once

#include <QString>

// The control names of the password gate in front of guarded settings, shared by the screen and its
// desktop view.
namespace marlet::contpass {

// The screen's own name, by which the front end finds its view.
inline const QString FormName = QStringLiteral("ContPass");

// The prompt, the password and the buttons.
inline const QString lblPassword = QStringLiteral("lblPassword");
inline const QString txtPassword = QStringLiteral("txtPassword");
inline const QString cmdOK = QStringLiteral("cmdOK");
inline const QString cmdCancel = QStringLiteral("cmdCancel");

} // namespace marlet::contpass
