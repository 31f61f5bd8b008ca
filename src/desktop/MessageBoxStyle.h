#pragma once

#include "platform/Platform.h"

#include <QMessageBox>

namespace marlet {

// Gives a message box the icon, buttons, default button and escape button that a message style
// asks for (see MsgStyle), so it answers as the screens expect.
void applyMessageStyle(QMessageBox& box, int style);

// The answer a message box button stands for. A box closed without a button answers as its
// escape button would.
MsgResult messageResult(const QMessageBox& box);

} // namespace marlet
