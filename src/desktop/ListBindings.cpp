#include "desktop/Bindings.h"

#include "platform/Operator.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <QTabBar>

namespace marlet {

namespace {

bool isMouseEvent(const QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return true;
    default:
        return false;
    }
}

bool isLeftPress(const QEvent* event)
{
    return event->type() == QEvent::MouseButtonPress
        && static_cast<const QMouseEvent*>(event)->button() == Qt::LeftButton;
}

QPoint mousePosition(const QEvent* event)
{
    return static_cast<const QMouseEvent*>(event)->position().toPoint();
}

} // namespace

ListBoxBinding::ListBoxBinding(Control& control, QListWidget* list, FormBinder& binder)
    : ControlBinding(control, list, binder)
    , m_list(list)
{
    watch(m_list->viewport());
    // Entries are one line of text each. With one size for all, the view lays out a long list in
    // constant time instead of measuring every entry after each change.
    m_list->setUniformItemSizes(true);
    // Arrow keys move the choice of a single-choice list; in a multiple-choice list they only
    // move the cursor and the space bar ticks.
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (!this->control().multiSelect() && row >= 0)
            dispatch([this, row] { Operator::pick(this->control(), row); });
    });
}

bool ListBoxBinding::handleEvent(QObject* watched, QEvent* event)
{
    if (watched != m_list->viewport() || !isMouseEvent(event))
        return false;
    // The list's own mouse handling is kept out: a click is a pick, and the model decides what
    // is selected afterwards.
    if (isLeftPress(event)) {
        const QListWidgetItem* item = m_list->itemAt(mousePosition(event));
        const int row = item ? m_list->row(item) : -1;
        dispatch([this, row] {
            if (row < 0 || !Operator::pick(control(), row))
                Operator::focus(control());
        });
    }
    return true;
}

bool ListBoxBinding::handleKey(QKeyEvent* event)
{
    if (!control().multiSelect() || event->key() != Qt::Key_Space || m_list->currentRow() < 0)
        return false;
    const int row = m_list->currentRow();
    dispatch([this, row] { Operator::pick(control(), row); });
    return true;
}

void ListBoxBinding::refreshOwn(Property property)
{
    if (property == Property::Items)
        refreshItems();
    else if (property == Property::ListIndex || property == Property::Selection)
        refreshValue();
}

void ListBoxBinding::refreshItems()
{
    // Appends and removals are followed one entry at a time, so that filling or emptying a long
    // list costs the same for each entry; anything else rebuilds the list.
    const QStringList& items = control().items();
    const Control::ItemsChange& change = control().lastItemsChange();
    if (change.kind == Control::ItemsChange::Kind::Removed && m_list->count() == items.size() + 1) {
        delete m_list->takeItem(change.index);
    } else if (change.kind == Control::ItemsChange::Kind::Appended && m_list->count() < items.size()) {
        m_list->addItems(items.mid(m_list->count()));
    } else {
        m_list->clear();
        m_list->addItems(items);
        refreshValue();
        return;
    }
    refreshCurrentRow();
}

void ListBoxBinding::refreshValue()
{
    m_list->setSelectionMode(
        control().multiSelect() ? QAbstractItemView::MultiSelection : QAbstractItemView::SingleSelection);
    for (int i = 0; i < m_list->count(); ++i) {
        QListWidgetItem* item = m_list->item(i);
        if (item->isSelected() != control().selected(i))
            item->setSelected(control().selected(i));
    }
    refreshCurrentRow();
}

void ListBoxBinding::refreshCurrentRow()
{
    if (m_list->currentRow() != control().listIndex())
        m_list->setCurrentRow(control().listIndex(), QItemSelectionModel::NoUpdate);
}

TabStripBinding::TabStripBinding(Control& control, QTabBar* tabs, FormBinder& binder)
    : ControlBinding(control, tabs, binder)
    , m_tabs(tabs)
{
    // Keyboard changes come here; clicks are taken before the tab bar sees them.
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int index) {
        if (index >= 0)
            dispatch([this, index] { Operator::chooseTab(this->control(), index + 1); });
    });
}

bool TabStripBinding::handleEvent(QObject* watched, QEvent* event)
{
    if (watched != m_tabs || !isMouseEvent(event) || event->type() == QEvent::MouseMove)
        return false;
    // The strip's before-click may refuse the new tab, so the tab bar never changes by itself.
    if (isLeftPress(event)) {
        const int index = m_tabs->tabAt(mousePosition(event));
        if (index >= 0)
            dispatch([this, index] { Operator::chooseTab(control(), index + 1); });
    }
    return event->type() != QEvent::MouseButtonRelease;
}

void TabStripBinding::refreshOwn(Property property)
{
    if (property == Property::Items || property == Property::Tabs)
        refreshTabs();
    else if (property == Property::ListIndex)
        refreshValue();
}

void TabStripBinding::refreshTabs()
{
    const QStringList& captions = control().items();
    while (m_tabs->count() > captions.size())
        m_tabs->removeTab(m_tabs->count() - 1);
    for (int i = 0; i < captions.size(); ++i) {
        if (i < m_tabs->count())
            m_tabs->setTabText(i, captions.at(i));
        else
            m_tabs->addTab(captions.at(i));
        m_tabs->setTabToolTip(i, control().itemTip(i));
    }
    refreshValue();
}

void TabStripBinding::refreshValue()
{
    const int index = control().listIndex();
    if (index >= 0 && index < m_tabs->count() && index != m_tabs->currentIndex())
        m_tabs->setCurrentIndex(index);
}

} // namespace marlet
