#pragma once

#include <QString>

namespace marlet {

class Control;
class Form;

// What a person at the screen does to a form, turned into the model's events in the order the
// host's forms fire them. Scenario scripts and the desktop front end both act through it, so that
// a handler sees the same sequence whichever of them drives the screen.
namespace Operator {

// Moves the focus to the control. Fails quietly (false) when it is disabled or hidden.
bool focus(Control& control);
// Moves the focus on to the next control in the tab order, as the Tab key does.
bool tabOut(Control& control);
// Types text key by key: key-down, key-press (which may drop or replace the key), the edit,
// key-up. The control takes the focus first.
void type(Control& control, const QString& text);
// One key, by its code (Key::Enter, Key::Backspace, or a character code).
void pressKey(Control& control, int key);
// Replaces the whole text at once, as pasting does: one change event, no key events.
void setText(Control& control, const QString& text);
// A click with the left button: buttons click, check boxes toggle, option buttons select,
// labels and menu items click. The control takes the focus first where it can.
bool click(Control& control);
// Picks a list entry by index; the list takes the focus first. In a multiple-choice list the pick
// ticks or clears the entry and makes it the current entry.
bool pick(Control& list, int index);
// Picks the list entry with this text; false when no entry has it.
bool pick(Control& list, const QString& text);
// Ticks or clears a check box (a click when the value changes).
bool tick(Control& checkBox, bool ticked);
// Moves a slider to the value, kept within its range: the slider takes the focus, and its change
// event fires when the value changes.
bool slide(Control& slider, int value);
// Opens the drop-down part of a combo box.
void dropDown(Control& list);
// Chooses a tab of a tab strip (1-based); the strip's before-click may refuse.
bool chooseTab(Control& tabStrip, int tab);
// Clicks a grid cell with the given button; the left button makes it the current cell.
void clickGrid(Control& grid, int row, int col, int button);
// Closes the window as the operator would, through the title bar. False when refused.
bool closeWindow(Form& form);

} // namespace Operator

} // namespace marlet
