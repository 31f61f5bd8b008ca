#include "desktop/WidgetFactory.h"

#include "desktop/DropDownComboBox.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabBar>
#include <QTableView>

namespace marlet {

namespace {

QWidget* createCombo(const Control& control, QWidget* parent)
{
    auto* combo = new DropDownComboBox(parent);
    combo->setEditable(control.editable());
    return combo;
}

QWidget* createLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setWordWrap(true);
    return label;
}

QWidget* createWidgetOfKind(const Control& control, QWidget* parent)
{
    switch (control.kind()) {
    case ControlKind::Label:
        return createLabel(parent);
    case ControlKind::TextBox:
        return new QLineEdit(parent);
    case ControlKind::CommandButton:
        return new QPushButton(parent);
    case ControlKind::CheckBox:
        return new QCheckBox(parent);
    case ControlKind::OptionButton:
        return new QRadioButton(parent);
    case ControlKind::ComboBox:
        return createCombo(control, parent);
    case ControlKind::ListBox:
        return new QListWidget(parent);
    case ControlKind::Frame:
        return new QGroupBox(parent);
    case ControlKind::TabStrip:
        return new QTabBar(parent);
    case ControlKind::Grid:
        return new QTableView(parent);
    case ControlKind::ProgressBar:
        return new QProgressBar(parent);
    case ControlKind::Slider:
        return new QSlider(Qt::Horizontal, parent);
    case ControlKind::DateTimePicker:
        return new QDateTimeEdit(parent);
    case ControlKind::Image: {
        auto* image = new QLabel(parent);
        image->setScaledContents(true);
        return image;
    }
    case ControlKind::Menu:
        return nullptr;
    }
    return nullptr;
}

} // namespace

QWidget* createWidget(const Control& control, QWidget* parent)
{
    QWidget* widget = createWidgetOfKind(control, parent);
    if (widget)
        widget->setObjectName(control.key());
    return widget;
}

bool widgetFits(ControlKind kind, const QWidget* widget)
{
    switch (kind) {
    case ControlKind::Label:
    case ControlKind::Image:
        return qobject_cast<const QLabel*>(widget);
    case ControlKind::TextBox:
        return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget);
    case ControlKind::CommandButton:
        return qobject_cast<const QAbstractButton*>(widget);
    case ControlKind::CheckBox:
        return qobject_cast<const QCheckBox*>(widget);
    case ControlKind::OptionButton:
        return qobject_cast<const QRadioButton*>(widget);
    case ControlKind::ComboBox:
        return qobject_cast<const QComboBox*>(widget);
    case ControlKind::ListBox:
        return qobject_cast<const QListWidget*>(widget);
    case ControlKind::Frame:
        return widget != nullptr;
    case ControlKind::TabStrip:
        return qobject_cast<const QTabBar*>(widget);
    case ControlKind::Grid:
        return qobject_cast<const QTableView*>(widget);
    case ControlKind::ProgressBar:
        return qobject_cast<const QProgressBar*>(widget);
    case ControlKind::Slider:
        return qobject_cast<const QAbstractSlider*>(widget);
    case ControlKind::DateTimePicker:
        return qobject_cast<const QDateTimeEdit*>(widget);
    case ControlKind::Menu:
        return false;
    }
    return false;
}

} // namespace marlet
