#include "platform/Control.h"

#include "platform/Form.h"
#include "platform/GridData.h"

#include <algorithm>

namespace marlet {

QString controlKindName(ControlKind kind)
{
    switch (kind) {
    case ControlKind::Label:
        return QStringLiteral("label");
    case ControlKind::TextBox:
        return QStringLiteral("text box");
    case ControlKind::CommandButton:
        return QStringLiteral("button");
    case ControlKind::CheckBox:
        return QStringLiteral("check box");
    case ControlKind::OptionButton:
        return QStringLiteral("option button");
    case ControlKind::ComboBox:
        return QStringLiteral("combo box");
    case ControlKind::ListBox:
        return QStringLiteral("list box");
    case ControlKind::Frame:
        return QStringLiteral("frame");
    case ControlKind::TabStrip:
        return QStringLiteral("tab strip");
    case ControlKind::Grid:
        return QStringLiteral("grid");
    case ControlKind::ProgressBar:
        return QStringLiteral("progress bar");
    case ControlKind::Slider:
        return QStringLiteral("slider");
    case ControlKind::DateTimePicker:
        return QStringLiteral("date and time picker");
    case ControlKind::Image:
        return QStringLiteral("image");
    case ControlKind::Menu:
        return QStringLiteral("menu");
    }
    return QString();
}

bool takesFocus(ControlKind kind)
{
    switch (kind) {
    case ControlKind::Label:
    case ControlKind::Frame:
    case ControlKind::Menu:
    case ControlKind::Image:
    case ControlKind::ProgressBar:
        return false;
    default:
        return true;
    }
}

Control::Control(Form& form, ControlKind kind, QString name, int index)
    : m_form(form)
    , m_kind(kind)
    , m_name(std::move(name))
    , m_index(index)
{
    if (kind == ControlKind::Grid)
        m_grid = std::make_unique<GridData>(*this);
}

Control::~Control()
{
    for (ControlWatcher* watcher : m_watchers)
        watcher->controlGone();
}

void Control::addWatcher(ControlWatcher& watcher)
{
    m_watchers.push_back(&watcher);
}

void Control::removeWatcher(ControlWatcher& watcher)
{
    std::erase(m_watchers, &watcher);
}

QString Control::key() const
{
    if (m_index < 0)
        return m_name;
    return m_name + u'(' + QString::number(m_index) + u')';
}

void Control::setCaption(const QString& caption)
{
    if (caption == m_caption)
        return;
    m_caption = caption;
    notify(Property::Caption);
}

void Control::setText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    m_selStart = int(text.size());
    m_selLength = 0;
    notify(Property::Text);
    fireChange();
}

void Control::setSelection(int start, int length)
{
    start = qBound(0, start, int(m_text.size()));
    length = qBound(0, length, int(m_text.size()) - start);
    if (start == m_selStart && length == m_selLength)
        return;
    m_selStart = start;
    m_selLength = length;
    notify(Property::Selection);
}

void Control::setMaxLength(int length)
{
    if (length == m_maxLength)
        return;
    m_maxLength = length;
    notify(Property::MaxLength);
}

void Control::setLocked(bool locked)
{
    if (locked == m_locked)
        return;
    m_locked = locked;
    notify(Property::Locked);
}

void Control::setValue(int value)
{
    if (value == m_value)
        return;
    m_value = value;
    notify(Property::Value);
    switch (m_kind) {
    case ControlKind::CheckBox:
        fireClick();
        break;
    case ControlKind::OptionButton:
        if (value != 0) {
            clearOtherOptions();
            fireClick();
        }
        break;
    case ControlKind::Slider:
        fireChange();
        break;
    default:
        break;
    }
}

void Control::clearOtherOptions()
{
    for (Control* other : m_form.controlsIn(m_container)) {
        if (other != this && other->kind() == ControlKind::OptionButton && other->m_value != 0) {
            other->m_value = 0;
            other->notify(Property::Value);
        }
    }
}

void Control::setRange(int minimum, int maximum)
{
    if (minimum == m_min && maximum == m_max)
        return;
    m_min = minimum;
    m_max = maximum;
    notify(Property::Range);
}

void Control::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    notify(Property::Enabled);
}

void Control::setVisible(bool visible)
{
    if (visible == m_visible)
        return;
    m_visible = visible;
    notify(Property::Visible);
}

bool Control::canFocus() const
{
    for (const Control* c = this; c; c = c->m_container) {
        if (!c->m_enabled || !c->m_visible)
            return false;
    }
    return true;
}

void Control::setToolTip(const QString& tip)
{
    if (tip == m_toolTip)
        return;
    m_toolTip = tip;
    notify(Property::ToolTip);
}

void Control::setForeColor(int color)
{
    if (color == m_foreColor)
        return;
    m_foreColor = color;
    notify(Property::Colors);
}

void Control::setBackColor(int color)
{
    if (color == m_backColor)
        return;
    m_backColor = color;
    notify(Property::Colors);
}

void Control::setFont(bool bold, int size)
{
    if (bold == m_fontBold && size == m_fontSize)
        return;
    m_fontBold = bold;
    m_fontSize = size;
    notify(Property::Font);
}

void Control::setGeometry(int left, int top, int width, int height)
{
    if (left == m_left && top == m_top && width == m_width && height == m_height)
        return;
    m_left = left;
    m_top = top;
    m_width = width;
    m_height = height;
    notify(Property::Geometry);
}

void Control::addItem(const QString& item)
{
    m_items.append(item);
    if (m_multiSelect)
        m_selected.push_back(false);
    m_lastItemsChange = {ItemsChange::Kind::Appended};
    notify(Property::Items);
}

void Control::addItems(const QStringList& items)
{
    if (items.isEmpty())
        return;
    m_items.append(items);
    if (m_multiSelect)
        m_selected.resize(m_items.size(), false);
    m_lastItemsChange = {ItemsChange::Kind::Appended};
    notify(Property::Items);
}

void Control::removeItem(int i)
{
    if (i < 0 || i >= m_items.size())
        return;
    m_items.removeAt(i);
    if (i < m_itemTips.size())
        m_itemTips.removeAt(i);
    if (m_multiSelect && i < m_selected.size()) {
        m_selectedCount -= m_selected.at(i) ? 1 : 0;
        m_selected.removeAt(i);
    }
    m_lastItemsChange = {ItemsChange::Kind::Removed, i};
    notify(Property::Items);
    if (m_listIndex == i)
        setListIndex(-1);
    else if (m_listIndex > i)
        --m_listIndex;
}

void Control::clear()
{
    m_items.clear();
    m_itemTips.clear();
    m_selected.clear();
    m_selectedCount = 0;
    m_listIndex = -1;
    if (m_kind == ControlKind::ComboBox) {
        m_text.clear();
        notify(Property::Text);
    }
    m_lastItemsChange = {ItemsChange::Kind::Reset};
    notify(Property::Items);
    notify(Property::ListIndex);
}

void Control::setListIndex(int index)
{
    if (index < -1 || index >= m_items.size() || index == m_listIndex)
        return;
    m_listIndex = index;
    if (m_kind == ControlKind::ComboBox) {
        m_text = index >= 0 ? m_items.at(index) : QString();
        notify(Property::Text);
    }
    notify(Property::ListIndex);
    fireClick();
}

void Control::setItemTip(int i, const QString& tip)
{
    if (i < 0 || i >= m_items.size() || itemTip(i) == tip)
        return;
    while (m_itemTips.size() <= i)
        m_itemTips.append(QString());
    m_itemTips[i] = tip;
    notify(Property::Tabs);
}

bool Control::selected(int i) const
{
    if (!m_multiSelect)
        return i == m_listIndex && i >= 0;
    return i >= 0 && i < m_selected.size() && m_selected.at(i);
}

void Control::setSelected(int i, bool selected)
{
    if (i < 0 || i >= m_items.size())
        return;
    if (!m_multiSelect) {
        if (selected)
            setListIndex(i);
        return;
    }
    m_selected.resize(m_items.size(), false);
    if (m_selected.at(i) == selected)
        return;
    m_selected[i] = selected;
    m_selectedCount += selected ? 1 : -1;
    notify(Property::Selection);
}

int Control::selectedCount() const
{
    if (!m_multiSelect)
        return m_listIndex >= 0 ? 1 : 0;
    return m_selectedCount;
}

void Control::setDateTime(const QDateTime& value)
{
    if (value == m_dateTime)
        return;
    m_dateTime = value;
    notify(Property::DateTime);
    fireChange();
}

void Control::setPicture(const QByteArray& picture)
{
    if (picture == m_picture)
        return;
    m_picture = picture;
    notify(Property::Picture);
}

GridData& Control::grid()
{
    Q_ASSERT(m_grid);
    return *m_grid;
}

const GridData& Control::grid() const
{
    Q_ASSERT(m_grid);
    return *m_grid;
}

std::vector<Control*> Control::menuItems() const
{
    std::vector<Control*> items;
    for (const auto& c : m_form.controls()) {
        if (c->m_parentMenu == this)
            items.push_back(c);
    }
    return items;
}

void Control::fireClick()
{
    if (onClick)
        onClick();
}

void Control::fireChange()
{
    if (onChange)
        onChange();
}

} // namespace marlet
