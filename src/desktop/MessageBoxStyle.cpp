#include "desktop/MessageBoxStyle.h"

#include <QAbstractButton>
#include <QList>

namespace marlet {

namespace {

struct ButtonSet
{
    QList<QMessageBox::StandardButton> buttons; // in the order the default-button numbers count
    QMessageBox::StandardButton escape; // what Escape and the title bar's close answer
};

ButtonSet buttonSet(int style)
{
    switch (MsgStyle::buttons(style)) {
    case 1:
        return {{QMessageBox::Ok, QMessageBox::Cancel}, QMessageBox::Cancel};
    case 2:
        return {{QMessageBox::Abort, QMessageBox::Retry, QMessageBox::Ignore}, QMessageBox::Abort};
    case 3:
        return {{QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel}, QMessageBox::Cancel};
    case 4:
        return {{QMessageBox::Yes, QMessageBox::No}, QMessageBox::No};
    case 5:
        return {{QMessageBox::Retry, QMessageBox::Cancel}, QMessageBox::Cancel};
    default:
        return {{QMessageBox::Ok}, QMessageBox::Ok};
    }
}

QMessageBox::Icon iconFor(int style)
{
    switch (MsgStyle::icon(style)) {
    case MsgStyle::Critical:
        return QMessageBox::Critical;
    case MsgStyle::Question:
        return QMessageBox::Question;
    case MsgStyle::Exclamation:
        return QMessageBox::Warning;
    case MsgStyle::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

MsgResult resultFor(QMessageBox::StandardButton button)
{
    switch (button) {
    case QMessageBox::Cancel:
        return MsgResult::Cancel;
    case QMessageBox::Abort:
        return MsgResult::Abort;
    case QMessageBox::Retry:
        return MsgResult::Retry;
    case QMessageBox::Ignore:
        return MsgResult::Ignore;
    case QMessageBox::Yes:
        return MsgResult::Yes;
    case QMessageBox::No:
        return MsgResult::No;
    default:
        return MsgResult::Ok;
    }
}

} // namespace

void applyMessageStyle(QMessageBox& box, int style)
{
    const ButtonSet set = buttonSet(style);
    QMessageBox::StandardButtons buttons;
    for (const auto button : set.buttons)
        buttons |= button;
    box.setStandardButtons(buttons);
    box.setIcon(iconFor(style));
    const qsizetype defaultIndex = MsgStyle::defaultButton(style);
    box.setDefaultButton(set.buttons.value(defaultIndex, set.buttons.first()));
    box.setEscapeButton(set.escape);
}

MsgResult messageResult(const QMessageBox& box)
{
    if (QAbstractButton* clicked = box.clickedButton())
        return resultFor(box.standardButton(clicked));
    return resultFor(box.standardButton(box.escapeButton()));
}

} // namespace marlet
