#include "desktop/Bindings.h"

#include "desktop/FormBinder.h"
#include "desktop/MenuBuilder.h"
#include "platform/Operator.h"

#include <QAbstractSlider>
#include <QAction>
#include <QDateTimeEdit>
#include <QLocale>
#include <QMenu>
#include <QProgressBar>

namespace marlet {

namespace {

// The picker's format in Qt's terms: the same letters, except that "tt" is the AM/PM part. An
// empty format shows the short date, as the picker does by default.
QString displayFormat(const QString& customFormat)
{
    if (customFormat.isEmpty())
        return QLocale().dateFormat(QLocale::ShortFormat);
    QString format = customFormat;
    format.replace(QStringLiteral("tt"), QStringLiteral("AP"));
    return format;
}

} // namespace

RangeBinding::RangeBinding(Control& control, QWidget* widget, FormBinder& binder)
    : ControlBinding(control, widget, binder)
    , m_progress(qobject_cast<QProgressBar*>(widget))
    , m_slider(qobject_cast<QAbstractSlider*>(widget))
{
    if (!m_slider)
        return;
    // Moving a slider has no operator action of its own: it focuses the slider and sets the
    // value, which fires the slider's change event.
    connect(m_slider, &QAbstractSlider::valueChanged, this, [this](int value) {
        dispatch([this, value] {
            if (Operator::focus(this->control()))
                this->control().setValue(value);
        });
    });
}

void RangeBinding::refreshValue()
{
    const int value = qBound(control().minimum(), control().value(), control().maximum());
    if (m_progress && m_progress->value() != value)
        m_progress->setValue(value);
    if (m_slider && m_slider->value() != value)
        m_slider->setValue(value);
}

void RangeBinding::refreshOwn(Property property)
{
    if (property == Property::Range) {
        if (m_progress)
            m_progress->setRange(control().minimum(), control().maximum());
        if (m_slider)
            m_slider->setRange(control().minimum(), control().maximum());
        refreshValue();
    } else if (property == Property::Value) {
        refreshValue();
    }
}

DateTimeBinding::DateTimeBinding(Control& control, QDateTimeEdit* edit, FormBinder& binder)
    : ControlBinding(control, edit, binder)
    , m_edit(edit)
{
    // Like the slider, the picker has no operator action of its own: focus, then the new value.
    connect(m_edit, &QDateTimeEdit::dateTimeChanged, this, [this](const QDateTime& value) {
        dispatch([this, value] {
            if (Operator::focus(this->control()))
                this->control().setDateTime(value);
        });
    });
}

void DateTimeBinding::refreshValue()
{
    const QString format = displayFormat(control().customFormat());
    if (m_edit->displayFormat() != format)
        m_edit->setDisplayFormat(format);
    if (control().dateTime().isValid() && m_edit->dateTime() != control().dateTime())
        m_edit->setDateTime(control().dateTime());
}

void DateTimeBinding::refreshOwn(Property property)
{
    if (property == Property::DateTime)
        refreshValue();
}

MenuBinding::MenuBinding(Control& control, QAction* action, QMenu* menu, FormBinder& binder)
    : ControlBinding(control, nullptr, binder)
    , m_action(action)
{
    // A menu that drops down clicks, as a menu title does; an item clicks when chosen.
    if (menu)
        connect(menu, &QMenu::aboutToShow, this, [this] { dispatch([this] { Operator::click(this->control()); }); });
    else
        connect(action, &QAction::triggered, this, [this] { dispatch([this] { Operator::click(this->control()); }); });
}

void MenuBinding::refreshOwn(Property property)
{
    if (!m_action)
        return;
    switch (property) {
    case Property::Caption:
    case Property::Enabled:
        applyMenuItem(*m_action, control());
        break;
    case Property::Visible:
        applyMenuItem(*m_action, control());
        if (!control().parentMenu())
            binder().updateMenuBar();
        break;
    default:
        break;
    }
}

} // namespace marlet
