#include "desktop/ControlBinding.h"

#include "desktop/Bindings.h"
#include "desktop/FormBinder.h"
#include "desktop/Units.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTableView>

namespace marlet {

namespace {

// Colours and font a control starts with; while a control has them, its widget keeps the look of
// the desktop's style.
constexpr int modelForeColor = 0;
constexpr int modelBackColor = 0xFFFFFF;
constexpr bool modelFontBold = false;
constexpr int modelFontSize = 8;

// In an order where each step finds what it builds on: items before the chosen item, the range
// before the value, font and picture before a size taken from the widget.
constexpr Property allProperties[] = {
    Property::Caption,
    Property::Items,
    Property::Tabs,
    Property::ListIndex,
    Property::MaxLength,
    Property::Text,
    Property::Selection,
    Property::Range,
    Property::Value,
    Property::DateTime,
    Property::Locked,
    Property::Grid,
    Property::ToolTip,
    Property::Colors,
    Property::Font,
    Property::Picture,
    Property::Enabled,
    Property::Visible,
    Property::Geometry,
};

} // namespace

ControlBinding::ControlBinding(Control& control, QWidget* widget, FormBinder& binder)
    : QObject(&binder)
    , m_control(control)
    , m_widget(widget)
    , m_binder(binder)
{
    if (widget) {
        m_basePalette = widget->palette();
        m_baseFont = widget->font();
        watch(widget);
    }
    control.addWatcher(*this);
}

ControlBinding::~ControlBinding()
{
    if (!m_controlGone)
        m_control.removeWatcher(*this);
}

void ControlBinding::controlChanged(Property property)
{
    FormBinder::RefreshScope scope(m_binder);
    refresh(property);
}

void ControlBinding::refresh(Property property)
{
    if (m_widget)
        refreshCommon(property);
    refreshOwn(property);
}

void ControlBinding::refreshAll()
{
    FormBinder::RefreshScope scope(m_binder);
    for (const Property property : allProperties)
        refresh(property);
}

bool ControlBinding::handleEvent(QObject* /*watched*/, QEvent* /*event*/)
{
    return false;
}

bool ControlBinding::handleKey(QKeyEvent* /*event*/)
{
    return false;
}

void ControlBinding::watch(QObject* object)
{
    m_binder.watch(object, *this);
}

void ControlBinding::dispatch(const std::function<void()>& action)
{
    m_binder.dispatch(*this, action);
}

void ControlBinding::refreshCommon(Property property)
{
    switch (property) {
    case Property::Enabled:
        m_widget->setEnabled(m_control.enabled());
        break;
    case Property::Visible:
        m_widget->setVisible(m_control.visible());
        break;
    case Property::ToolTip:
        m_widget->setToolTip(m_control.toolTip());
        break;
    case Property::Colors:
        applyColors();
        break;
    case Property::Font:
        applyFont();
        break;
    case Property::Geometry:
        applyGeometry();
        break;
    default:
        break;
    }
}

void ControlBinding::applyColors()
{
    QPalette palette = m_basePalette;
    if (m_control.foreColor() != modelForeColor) {
        const QColor fore = colorFromBgr(m_control.foreColor());
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(role, fore);
    }
    const bool ownBack = m_control.backColor() != modelBackColor;
    if (ownBack) {
        const QColor back = colorFromBgr(m_control.backColor());
        for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button})
            palette.setColor(role, back);
    }
    m_widget->setPalette(palette);
    m_widget->setAutoFillBackground(ownBack);
}

void ControlBinding::applyFont()
{
    QFont font = m_baseFont;
    if (m_control.fontBold() != modelFontBold || m_control.fontSize() != modelFontSize) {
        font.setBold(m_control.fontBold());
        font.setPointSize(m_control.fontSize());
    }
    m_widget->setFont(font);
}

void ControlBinding::applyGeometry()
{
    if (!m_placedByTwips)
        return;
    QSize size(pixelsFromTwips(m_control.width()), pixelsFromTwips(m_control.height()));
    // A control made without a size shows at the size its widget asks for.
    if (size.width() <= 0 || size.height() <= 0)
        size = m_widget->sizeHint();
    m_widget->setGeometry(
        pixelsFromTwips(m_control.left()), pixelsFromTwips(m_control.top()), size.width(), size.height());
}

ControlBinding* createBinding(Control& control, QWidget* widget, FormBinder& binder)
{
    switch (control.kind()) {
    case ControlKind::Label:
    case ControlKind::Image:
        return new LabelBinding(control, qobject_cast<QLabel*>(widget), binder);
    case ControlKind::TextBox:
        if (auto* area = qobject_cast<QPlainTextEdit*>(widget))
            return new TextAreaBinding(control, area, binder);
        return new TextBoxBinding(control, qobject_cast<QLineEdit*>(widget), binder);
    case ControlKind::CommandButton:
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
        return new ButtonBinding(control, qobject_cast<QAbstractButton*>(widget), binder);
    case ControlKind::ComboBox:
        return new ComboBoxBinding(control, qobject_cast<QComboBox*>(widget), binder);
    case ControlKind::ListBox:
        return new ListBoxBinding(control, qobject_cast<QListWidget*>(widget), binder);
    case ControlKind::Frame:
        return new FrameBinding(control, widget, binder);
    case ControlKind::TabStrip:
        return new TabStripBinding(control, qobject_cast<QTabBar*>(widget), binder);
    case ControlKind::Grid:
        return new GridBinding(control, qobject_cast<QTableView*>(widget), binder);
    case ControlKind::ProgressBar:
    case ControlKind::Slider:
        return new RangeBinding(control, widget, binder);
    case ControlKind::DateTimePicker:
        return new DateTimeBinding(control, qobject_cast<QDateTimeEdit*>(widget), binder);
    case ControlKind::Menu:
        return nullptr;
    }
    return nullptr;
}

} // namespace marlet
