#pragma once

#include <functional>

class QAction;
class QMenu;

namespace marlet {

class Control;

// Brings a menu item's action in line with its control: caption with its accelerators, a
// separator for the caption "-", enabled and visible.
void applyMenuItem(QAction& action, const Control& item);

// Fills a menu with the items of a menu control, in order; an item with items of its own becomes
// a sub-menu. Every action made is handed to the callback, which decides what choosing it does.
void fillMenu(QMenu& menu, const Control& menuControl, const std::function<void(Control& item, QAction& action)>& each);

} // namespace marlet
