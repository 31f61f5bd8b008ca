#pragma once

#include "platform/Control.h"

#include <QFont>
#include <QObject>
#include <QPalette>
#include <QPointer>

#include <functional>

class QEvent;
class QKeyEvent;
class QWidget;

namespace marlet {

class FormBinder;

// Ties one control to the widget that shows it. The model leads: every change the control
// announces is copied to the widget, and what the operator does to the widget is turned into an
// Operator action through the binder, after which the widget is brought back in line with
// whatever the model made of it.
class ControlBinding : public QObject, private ControlWatcher
{
public:
    ControlBinding(Control& control, QWidget* widget, FormBinder& binder);
    ~ControlBinding() override;

    Control& control() const { return m_control; }
    QWidget* widget() const { return m_widget; }

    // Geometry changes move the widget only where it was placed by twips.
    void setPlacedByTwips(bool placed) { m_placedByTwips = placed; }

    void refresh(Property property);
    void refreshAll();
    // Copies back what the operator can change (text, tick, choice, tab), after a user event
    // whose outcome the model may have refused or altered.
    virtual void refreshValue() { }

    // Events of the objects this binding watched; true when the event was used up. Focus and the
    // keys every control shares are the binder's; these are the rest.
    virtual bool handleEvent(QObject* watched, QEvent* event);
    // A key press after the key events went to the model; true when the binding dealt with it.
    virtual bool handleKey(QKeyEvent* event);
    // The object that takes typed text, when this control takes text at all.
    virtual QObject* textTarget() const { return nullptr; }

protected:
    virtual void refreshOwn(Property property) = 0;

    FormBinder& binder() const { return m_binder; }
    // Routes the object's events to handleEvent() (and focus and keys to the binder).
    void watch(QObject* object);
    // Runs an operator action for this control.
    void dispatch(const std::function<void()>& action);

private:
    void controlChanged(Property property) override;
    void controlGone() override { m_controlGone = true; }
    void refreshCommon(Property property);
    void applyColors();
    void applyFont();
    void applyGeometry();

    Control& m_control;
    QPointer<QWidget> m_widget;
    FormBinder& m_binder;
    QPalette m_basePalette;
    QFont m_baseFont;
    bool m_placedByTwips = false;
    // The form built its controls anew, or closed, before the binder went.
    bool m_controlGone = false;
};

// The binding for the control's kind, driving the given widget (which fits the kind).
ControlBinding* createBinding(Control& control, QWidget* widget, FormBinder& binder);

} // namespace marlet
