#include "platform/Operator.h"

#include "platform/Form.h"
#include "platform/GridData.h"

namespace marlet::Operator {

namespace {

// Key-down code of a typed character: letters by their capital, the full stop by its key.
int keyCodeFor(int key)
{
    if (key >= 'a' && key <= 'z')
        return key - 'a' + 'A';
    switch (key) {
    case '.':
        return 190;
    case ',':
        return 188;
    case '-':
        return 189;
    default:
        return key;
    }
}

bool takesText(const Control& control)
{
    return control.kind() == ControlKind::TextBox
           || (control.kind() == ControlKind::ComboBox && control.editable());
}

// Applies one key that got through the key-press handler to the text and its selection.
void applyKey(Control& control, int key)
{
    QString text = control.text();
    int start = control.selStart();
    const int length = control.selLength();
    if (key == Key::Backspace) {
        if (length > 0) {
            text.remove(start, length);
        } else if (start > 0) {
            text.remove(start - 1, 1);
            --start;
        } else {
            return;
        }
    } else if (key >= 32) {
        const qsizetype kept = text.size() - length;
        if (control.maxLength() > 0 && kept >= control.maxLength())
            return;
        text.replace(start, length, QChar(key));
        ++start;
    } else {
        return;
    }
    control.setText(text);
    control.setSelection(start, 0);
}

void mouseClick(Control& control, int button)
{
    if (control.onMouseDown)
        control.onMouseDown(button, 0, 0, 0);
    if (control.onMouseUp)
        control.onMouseUp(button, 0, 0, 0);
    if (button == MouseButton::Left)
        control.fireClick();
}

} // namespace

bool focus(Control& control)
{
    return control.form().setFocus(control);
}

bool tabOut(Control& control)
{
    Control* next = control.form().nextInTabOrder(&control);
    return next && focus(*next);
}

void pressKey(Control& control, int key)
{
    int code = keyCodeFor(key);
    if (control.onKeyDown)
        control.onKeyDown(code, 0);
    int ascii = key;
    if (control.onKeyPress)
        control.onKeyPress(ascii);
    if (ascii != 0 && takesText(control) && !control.locked())
        applyKey(control, ascii);
    if (control.onKeyUp)
        control.onKeyUp(code, 0);
}

void type(Control& control, const QString& text)
{
    if (!focus(control))
        return;
    for (const QChar ch : text)
        pressKey(control, ch.unicode());
}

void setText(Control& control, const QString& text)
{
    if (focus(control) && takesText(control) && !control.locked())
        control.setText(text);
}

bool click(Control& control)
{
    if (!control.canFocus())
        return false;
    switch (control.kind()) {
    case ControlKind::CheckBox:
        focus(control);
        control.setValue(control.ticked() ? CheckState::Unchecked : CheckState::Checked);
        return true;
    case ControlKind::OptionButton:
        focus(control);
        if (control.value() == 0)
            control.setValue(1);
        return true;
    case ControlKind::Label:
    case ControlKind::Image:
    case ControlKind::Frame:
        mouseClick(control, MouseButton::Left);
        return true;
    case ControlKind::Menu:
        control.fireClick();
        return true;
    case ControlKind::Grid:
        clickGrid(control, control.grid().row(), control.grid().col(), MouseButton::Left);
        return true;
    default:
        focus(control);
        control.fireClick();
        return true;
    }
}

bool pick(Control& list, int index)
{
    if (!list.canFocus() || index < 0 || index >= list.listCount())
        return false;
    focus(list);
    if (list.multiSelect()) {
        // A click ticks or clears the entry and makes it the current one; the click event
        // fires once either way.
        list.setSelected(index, !list.selected(index));
        if (list.listIndex() != index)
            list.setListIndex(index);
        else
            list.fireClick();
    } else {
        list.setListIndex(index);
    }
    return true;
}

bool pick(Control& list, const QString& text)
{
    return pick(list, list.findItem(text));
}

bool tick(Control& checkBox, bool ticked)
{
    if (!checkBox.canFocus())
        return false;
    focus(checkBox);
    checkBox.setValue(ticked ? CheckState::Checked : CheckState::Unchecked);
    return true;
}

bool slide(Control& slider, int value)
{
    if (!slider.canFocus())
        return false;
    focus(slider);
    slider.setValue(qBound(slider.minimum(), value, slider.maximum()));
    return true;
}

void dropDown(Control& list)
{
    if (focus(list) && list.onDropDown)
        list.onDropDown();
}

bool chooseTab(Control& tabStrip, int tab)
{
    if (!tabStrip.canFocus() || tab < 1 || tab > tabStrip.listCount())
        return false;
    focus(tabStrip);
    bool cancel = false;
    if (tabStrip.onBeforeClick)
        tabStrip.onBeforeClick(cancel);
    if (cancel)
        return false;
    tabStrip.setSelectedTab(tab);
    return true;
}

void clickGrid(Control& grid, int row, int col, int button)
{
    if (!grid.canFocus())
        return;
    focus(grid);
    GridData& cells = grid.grid();
    cells.setMouseCell(row, col);
    if (button == MouseButton::Left) {
        cells.setRow(row);
        cells.setCol(col);
    }
    mouseClick(grid, button);
}

bool closeWindow(Form& form)
{
    return form.unload(UnloadMode::FormControlMenu);
}

} // namespace marlet::Operator
