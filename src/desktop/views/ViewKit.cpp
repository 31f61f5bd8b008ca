#include "desktop/views/ViewKit.h"

#include "desktop/ViewFactory.h"
#include "desktop/WidgetFactory.h"
#include "platform/Form.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabBar>

#include <algorithm>

namespace marlet::views {

ViewKit::ViewKit(Form& form, ViewWidgets& widgets)
    : m_form(form)
    , m_widgets(widgets)
{
}

Control* ViewKit::control(const QString& name) const
{
    if (Control* named = m_form.control(name))
        return named;
    // An element of a control array by its key, "Text7(8)".
    return name.endsWith(u')') ? m_form.find(name) : nullptr;
}

void ViewKit::place(const QString& name, QWidget* widget)
{
    if (Control* shown = control(name))
        m_widgets.add(*shown, widget);
}

QWidget* ViewKit::make(const QString& name, QWidget* parent)
{
    const Control* shown = control(name);
    if (!shown)
        return nullptr;
    QWidget* widget = createWidget(*shown, parent);
    if (!widget)
        return nullptr;
    m_widgets.add(*shown, widget);
    // A list is never narrower than its longest entry, however small the window.
    if (auto* list = qobject_cast<QComboBox*>(widget))
        list->setSizePolicy(QSizePolicy::Minimum, list->sizePolicy().verticalPolicy());
    return widget;
}

QPlainTextEdit* ViewKit::reportBox(const QString& name, QWidget* parent, QSize minimum)
{
    constexpr int tabCharacters = 8;
    Control* text = control(name);
    if (!text)
        return nullptr;
    auto* report = new QPlainTextEdit(parent);
    report->setLineWrapMode(QPlainTextEdit::NoWrap);
    report->setMinimumSize(minimum);
    report->setTabStopDistance(tabCharacters * report->fontMetrics().horizontalAdvance(u'x'));
    m_widgets.add(*text, report);
    return report;
}

QLabel* ViewKit::label(const QString& name, QWidget* parent)
{
    auto* made = make<QLabel>(name, parent);
    if (made) {
        made->setWordWrap(false);
        made->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
    return made;
}

QLabel* ViewKit::caption(const QString& name, QWidget* parent)
{
    const Control* field = control(name);
    if (!field)
        return nullptr;
    auto* text = new QLabel(field->label(), parent);
    text->setTextFormat(Qt::PlainText);
    text->setObjectName(field->key() + QStringLiteral("Caption"));
    return text;
}

QWidget* ViewKit::addRow(QFormLayout& form, const QString& name, QWidget* parent)
{
    QWidget* field = make(name, parent);
    if (field)
        addRow(form, caption(name, parent), {field});
    return field;
}

void ViewKit::addRow(QFormLayout& form, QWidget* label, std::initializer_list<QWidget*> fields)
{
    QWidget* first = nullptr;
    for (QWidget* field : fields) {
        if (field && !first)
            first = field;
    }
    if (auto* text = qobject_cast<QLabel*>(label); text && first && !text->buddy())
        text->setBuddy(first);
    if (fields.size() == 1 && first)
        form.addRow(label, first);
    else
        form.addRow(label, line(fields));
}

QFormLayout* formLayout(QWidget* parent)
{
    auto* form = new QFormLayout(parent);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFormAlignment(Qt::AlignLeft | Qt::AlignTop);
    return form;
}

QHBoxLayout* line(std::initializer_list<QWidget*> widgets)
{
    auto* box = new QHBoxLayout;
    box->setContentsMargins(0, 0, 0, 0);
    addAll(*box, widgets);
    box->addStretch(1);
    return box;
}

void addAll(QBoxLayout& box, std::initializer_list<QWidget*> widgets)
{
    for (QWidget* widget : widgets) {
        if (widget)
            box.addWidget(widget);
    }
}

void alignLabels(std::initializer_list<QFormLayout*> forms)
{
    QList<QWidget*> labels;
    for (const QFormLayout* form : forms) {
        for (int row = 0; row < form->rowCount(); ++row) {
            if (const QLayoutItem* item = form->itemAt(row, QFormLayout::LabelRole); item && item->widget())
                labels.append(item->widget());
        }
    }
    int widest = 0;
    for (const QWidget* label : std::as_const(labels))
        widest = std::max(widest, label->sizeHint().width());
    for (QWidget* label : std::as_const(labels)) {
        label->setMinimumWidth(widest);
        if (auto* text = qobject_cast<QLabel*>(label))
            text->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
}

TabbedArea tabbedArea(ViewKit& kit, QWidget& root, const QString& tabStrip, const QString& areaName)
{
    TabbedArea tabbed;
    tabbed.layout = new QVBoxLayout;
    tabbed.layout->setSpacing(0);
    if (auto* tabs = kit.make<QTabBar>(tabStrip, &root)) {
        tabs->setExpanding(false);
        tabs->setDrawBase(false);
        tabbed.layout->addWidget(tabs);
    }
    auto* area = new QFrame(&root);
    area->setObjectName(areaName);
    area->setFrameShape(QFrame::StyledPanel);
    tabbed.area = area;
    tabbed.cell = new QGridLayout(area);
    return tabbed;
}

void addTakingTurns(QGridLayout& cell, QWidget* page)
{
    QSizePolicy policy = page->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    page->setSizePolicy(policy);
    cell.addWidget(page, 0, 0);
}

void fixWindowSize(QWidget& root)
{
    // The view's root sits in the window's own layout.
    if (QLayout* outer = root.parentWidget() ? root.parentWidget()->layout() : nullptr)
        outer->setSizeConstraint(QLayout::SetFixedSize);
}

} // namespace marlet::views
