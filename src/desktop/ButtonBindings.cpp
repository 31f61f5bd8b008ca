#include "desktop/Bindings.h"

#include "platform/Operator.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPixmap>
#include <QRadioButton>

namespace marlet {

namespace {

Qt::CheckState checkStateFor(int value)
{
    switch (value) {
    case CheckState::Unchecked:
        return Qt::Unchecked;
    case CheckState::Grayed:
        return Qt::PartiallyChecked;
    default:
        return Qt::Checked;
    }
}

} // namespace

LabelBinding::LabelBinding(Control& control, QLabel* label, FormBinder& binder)
    : ControlBinding(control, label, binder)
    , m_label(label)
{
}

bool LabelBinding::handleEvent(QObject* /*watched*/, QEvent* event)
{
    if (event->type() != QEvent::MouseButtonPress || static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton)
        return false;
    dispatch([this] { Operator::click(control()); });
    // Used up, so that the frame around the label doesn't take the click for its own.
    return true;
}

void LabelBinding::refreshOwn(Property property)
{
    if (property == Property::Caption && control().kind() == ControlKind::Label) {
        m_label->setText(control().caption());
    } else if (property == Property::Picture && control().kind() == ControlKind::Image) {
        QPixmap picture;
        if (picture.loadFromData(control().picture()))
            m_label->setPixmap(picture);
        else
            m_label->clear();
    }
}

ButtonBinding::ButtonBinding(Control& control, QAbstractButton* button, FormBinder& binder)
    : ControlBinding(control, button, binder)
    , m_button(button)
{
    // Option buttons answer to the model's groups (the frame they sit in), not to the widget
    // tree: a hand-made view may put them anywhere.
    if (control.kind() == ControlKind::OptionButton)
        m_button->setAutoExclusive(false);
    connect(
        m_button, &QAbstractButton::clicked, this, [this] { dispatch([this] { Operator::click(this->control()); }); });
}

void ButtonBinding::refreshValue()
{
    if (auto* check = qobject_cast<QCheckBox*>(m_button)) {
        const int value = control().value();
        check->setTristate(value == CheckState::Grayed);
        check->setCheckState(checkStateFor(value));
    } else if (control().kind() == ControlKind::OptionButton) {
        m_button->setChecked(control().value() != 0);
    }
}

void ButtonBinding::refreshOwn(Property property)
{
    if (property == Property::Caption)
        m_button->setText(control().caption());
    else if (property == Property::Value)
        refreshValue();
}

FrameBinding::FrameBinding(Control& control, QWidget* frame, FormBinder& binder)
    : ControlBinding(control, frame, binder)
{
}

void FrameBinding::refreshOwn(Property property)
{
    if (property != Property::Caption)
        return;
    if (auto* box = qobject_cast<QGroupBox*>(widget()))
        box->setTitle(control().caption());
}

} // namespace marlet
