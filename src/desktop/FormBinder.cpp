#include "desktop/FormBinder.h"

#include "desktop/Bindings.h"
#include "desktop/MenuBuilder.h"
#include "desktop/ViewFactory.h"
#include "desktop/WidgetFactory.h"
#include "platform/Form.h"
#include "platform/Operator.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>

namespace marlet {

namespace {


// The key codes the model sees for a key press: Enter, Backspace and Escape by their codes,
// typed characters by theirs. Empty for keys the model has no code for (arrows, Delete...).
QList<int> hostKeys(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return {Key::Enter};
    case Qt::Key_Backspace:
        return {Key::Backspace};
    case Qt::Key_Escape:
        return {Key::Escape};
    default:
        break;
    }
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return {};
    QList<int> keys;
    for (const QChar ch : event.text()) {
        if (ch.unicode() >= 32 && ch.unicode() != 127)
            keys.append(ch.unicode());
    }
    return keys;
}

bool isPlainTab(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Tab
        && !(event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

} // namespace

FormBinder::FormBinder(Form& form, QWidget& window)
    : QObject(&window)
    , m_form(form)
    , m_window(window)
{
    buildView();
    buildMenus();
    bindAll();
    setTabOrderAndBuddies();
}

FormBinder::~FormBinder()
{
    // Widgets going away send focus events; none of them is the operator's.
    m_watched.clear();
    delete m_root;
    delete m_menuBar;
}

QWidget* FormBinder::widgetFor(const Control& control) const
{
    return m_widgets.value(&control);
}

void FormBinder::buildView()
{
    m_root = new QWidget(&m_window);
    m_root->setObjectName(QStringLiteral("formView"));
    const ViewFactory::Builder builder = ViewFactory::find(m_form.name());
    if (!builder) {
        placeByTwips();
        return;
    }
    ViewWidgets view;
    builder(m_form, *m_root, view);
    for (const auto& control : m_form.controls()) {
        if (control->kind() == ControlKind::Menu)
            continue;
        QWidget* widget = view.widget(*control);
        if (widget && !widgetFits(control->kind(), widget)) {
            qWarning("View of %s shows %s with a widget that doesn't fit it",
                qPrintable(m_form.name()),
                qPrintable(control->key()));
            widget = nullptr;
        }
        if (widget)
            widget->setObjectName(control->key());
        else
            widget = createWidget(*control, hiddenHolder());
        m_widgets.insert(control, widget);
    }
}

// Every control at its twips position, inside the frame it belongs to.
void FormBinder::placeByTwips()
{
    m_placedByTwips = true;
    for (const auto& control : m_form.controls()) {
        if (QWidget* widget = createWidget(*control, m_root))
            m_widgets.insert(control, widget);
    }
    for (const auto& control : m_form.controls()) {
        const Control* frame = control->container();
        QWidget* widget = m_widgets.value(control);
        QWidget* frameWidget = frame && frame->kind() == ControlKind::Frame ? m_widgets.value(frame) : nullptr;
        if (widget && frameWidget)
            widget->setParent(frameWidget);
    }
}

QWidget* FormBinder::hiddenHolder()
{
    if (!m_holder) {
        m_holder = new QWidget(m_root);
        m_holder->setObjectName(QStringLiteral("unplacedControls"));
        m_holder->hide();
    }
    return m_holder;
}

void FormBinder::buildMenus()
{
    for (const auto& control : m_form.controls()) {
        if (control->kind() != ControlKind::Menu || control->parentMenu())
            continue;
        if (!m_menuBar) {
            m_menuBar = new QMenuBar(&m_window);
            m_menuBar->setObjectName(QStringLiteral("menuBar"));
        }
        QMenu* menu = m_menuBar->addMenu(QString());
        menu->setObjectName(control->key());
        menu->menuAction()->setObjectName(control->key());
        bindMenu(*control, menu->menuAction(), menu);
        fillMenu(*menu, *control, [this](Control& item, QAction& action) { bindMenu(item, &action, action.menu()); });
    }
}

void FormBinder::bindMenu(Control& control, QAction* action, QMenu* menu)
{
    m_bindings.insert(&control, new MenuBinding(control, action, menu, *this));
}

void FormBinder::bindAll()
{
    for (const auto& control : m_form.controls()) {
        QWidget* widget = m_widgets.value(control);
        if (!widget)
            continue;
        ControlBinding* binding = createBinding(*control, widget, *this);
        binding->setPlacedByTwips(m_placedByTwips);
        m_bindings.insert(control, binding);
    }
    for (const auto& control : m_form.controls()) {
        if (ControlBinding* binding = m_bindings.value(control))
            binding->refreshAll();
    }
    updateMenuBar();
}

// Shift+Tab and label accelerators are Qt's to carry out: they follow the form's creation order.
void FormBinder::setTabOrderAndBuddies()
{
    QWidget* previous = nullptr;
    QList<QLabel*> waitingLabels;
    for (const auto& control : m_form.controls()) {
        QWidget* widget = m_widgets.value(control);
        if (!widget || widget->parentWidget() == m_holder)
            continue;
        if (control->kind() == ControlKind::Label) {
            waitingLabels.append(qobject_cast<QLabel*>(widget));
            continue;
        }
        if (!takesFocus(control->kind()))
            continue;
        for (QLabel* label : std::as_const(waitingLabels))
            label->setBuddy(widget);
        waitingLabels.clear();
        if (previous)
            QWidget::setTabOrder(previous, widget);
        previous = widget;
    }
}

void FormBinder::watch(QObject* object, ControlBinding& binding)
{
    m_watched.insert(object, &binding);
    object->installEventFilter(this);
}

void FormBinder::retire()
{
    m_retired = true;
    m_watched.clear();
}

void FormBinder::dispatch(ControlBinding& binding, const std::function<void()>& action)
{
    run(&binding, action);
}

void FormBinder::run(ControlBinding* binding, const std::function<void()>& action)
{
    if (refreshing() || m_retired)
        return;
    // A handler may open another form, build this one anew or close the window; whatever is
    // gone afterwards is left alone.
    QPointer<FormBinder> self(this);
    QPointer<ControlBinding> target(binding);
    ++m_dispatching;
    action();
    if (!self)
        return;
    --m_dispatching;
    if (m_retired)
        return;
    if (target) {
        RefreshScope scope(*this);
        target->refreshValue();
    }
    if (m_dispatching == 0)
        syncFocus();
}

void FormBinder::syncFocus()
{
    const Control* focused = m_form.focused();
    QWidget* widget = focused ? widgetFor(*focused) : nullptr;
    if (!widget || widget->hasFocus() || !widget->isEnabled() || !widget->isVisibleTo(&m_window))
        return;
    RefreshScope scope(*this);
    widget->setFocus(Qt::OtherFocusReason);
}

void FormBinder::focusFirst()
{
    Control* first = m_form.focused() ? nullptr : m_form.nextInTabOrder(nullptr);
    if (first)
        run(nullptr, [first] { Operator::focus(*first); });
    else
        syncFocus();
}

void FormBinder::updateMenuBar()
{
    if (!m_menuBar)
        return;
    bool anyVisible = false;
    for (const auto& control : m_form.controls()) {
        if (control->kind() == ControlKind::Menu && !control->parentMenu() && control->visible())
            anyVisible = true;
    }
    m_menuBar->setVisible(anyVisible);
}

bool FormBinder::eventFilter(QObject* watched, QEvent* event)
{
    ControlBinding* binding = m_watched.value(watched);
    if (!binding || refreshing())
        return false;
    switch (event->type()) {
    case QEvent::FocusIn: {
        // Coming back to the window after a message box, or out of a menu, is no move of the
        // operator's: the model's focus stays where it is.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
            return false;
        dispatch(*binding, [binding] { Operator::focus(binding->control()); });
        // Refused, or moved on by a handler: the widget is not to act as focused.
        const auto* widget = qobject_cast<QWidget*>(watched);
        return widget && !widget->hasFocus();
    }
    case QEvent::KeyPress:
        return handleKey(*binding, static_cast<QKeyEvent*>(event));
    default:
        return binding->handleEvent(watched, event);
    }
}

bool FormBinder::handleKey(ControlBinding& binding, QKeyEvent* event)
{
    Control& control = binding.control();
    if (isPlainTab(*event)) {
        dispatch(binding, [&control] { Operator::tabOut(control); });
        return true;
    }
    const QList<int> keys = hostKeys(*event);
    if (keys.isEmpty())
        return binding.handleKey(event);
    QPointer<ControlBinding> target(&binding);
    dispatch(binding, [&control, keys] {
        for (const int key : keys)
            Operator::pressKey(control, key);
    });
    // Text goes into the model only; other widgets still act on the key (a space ticks a box).
    if (!target || target->textTarget())
        return true;
    return target->handleKey(event);
}

} // namespace marlet
