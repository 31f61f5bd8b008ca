#pragma once

#include <QHash>
#include <QMenuBar>
#include <QObject>
#include <QPointer>

#include <functional>

class QAction;
class QKeyEvent;
class QMenu;

namespace marlet {

class Control;
class ControlBinding;
class Form;

// The widgets of one load of a form and the bindings between them and the controls.
//
// It builds a root widget (and a menu bar when the form has menus) for the window to place: a
// hand-made view when one is registered for the form's name (ViewFactory), otherwise every
// control at its twips position. Operator events from widgets go through dispatch(), which keeps
// model updates from being taken for new operator events and puts the keyboard focus where the
// model has it afterwards.
class FormBinder : public QObject
{
    Q_OBJECT

public:
    FormBinder(Form& form, QWidget& window);
    ~FormBinder() override;

    QWidget* root() const { return m_root; }
    // nullptr when the form has no menu.
    QMenuBar* menuBar() const { return m_menuBar; }
    // True when the controls stand at their twips positions rather than in a hand-made view.
    bool placedByTwips() const { return m_placedByTwips; }

    QWidget* widgetFor(const Control& control) const;

    // Runs an operator action on behalf of a widget event. Ignored while a model change is being
    // copied to the widgets, since any widget signal then is an echo, not the operator.
    void dispatch(ControlBinding& binding, const std::function<void()>& action);
    // The form was built anew: this binder's controls are gone, and its widgets answer no more.
    void retire();
    bool refreshing() const { return m_refreshing > 0; }
    // Holds off operator events while the widgets are being brought in line with the model.
    class RefreshScope
    {
    public:
        explicit RefreshScope(FormBinder& binder)
            : m_binder(binder)
        {
            ++m_binder.m_refreshing;
        }
        ~RefreshScope() { --m_binder.m_refreshing; }
        RefreshScope(const RefreshScope&) = delete;
        RefreshScope& operator=(const RefreshScope&) = delete;

    private:
        FormBinder& m_binder;
    };

    // Sends the object's focus, key and other events to the binding.
    void watch(QObject* object, ControlBinding& binding);
    // Gives the keyboard focus to the widget of the control the model has focused.
    void syncFocus();
    // When the model has no focus yet, the first control in the tab order takes it, as when a
    // form first shows.
    void focusFirst();
    // Shows the menu bar only while one of its menus is visible.
    void updateMenuBar();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildView();
    void buildMenus();
    void placeByTwips();
    QWidget* hiddenHolder();
    void bindAll();
    void setTabOrderAndBuddies();
    bool handleKey(ControlBinding& binding, QKeyEvent* event);
    void bindMenu(Control& control, QAction* action, QMenu* menu);
    // Runs an operator action; afterwards the binding's widget and the focus follow the model.
    void run(ControlBinding* binding, const std::function<void()>& action);

    Form& m_form;
    QWidget& m_window;
    QPointer<QWidget> m_root;
    QPointer<QMenuBar> m_menuBar;
    QWidget* m_holder = nullptr;
    bool m_placedByTwips = false;
    QHash<const Control*, QWidget*> m_widgets;
    QHash<const Control*, ControlBinding*> m_bindings;
    QHash<QObject*, ControlBinding*> m_watched;
    int m_refreshing = 0;
    int m_dispatching = 0;
    bool m_retired = false;
};

} // namespace marlet
