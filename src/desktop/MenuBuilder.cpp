#include "desktop/MenuBuilder.h"

#include "platform/Control.h"

#include <QAction>
#include <QMenu>

namespace marlet {

void applyMenuItem(QAction& action, const Control& item)
{
    action.setSeparator(item.separator());
    action.setText(item.separator() ? QString() : item.caption());
    action.setEnabled(item.enabled());
    action.setVisible(item.visible());
}

void fillMenu(QMenu& menu, const Control& menuControl, const std::function<void(Control& item, QAction& action)>& each)
{
    for (Control* item : menuControl.menuItems()) {
        QAction* action = nullptr;
        if (item->menuItems().empty()) {
            action = menu.addAction(QString());
        } else {
            QMenu* sub = menu.addMenu(QString());
            fillMenu(*sub, *item, each);
            action = sub->menuAction();
        }
        action->setObjectName(item->key());
        applyMenuItem(*action, *item);
        each(*item, *action);
    }
}

} // namespace marlet
