#pragma once

#include "desktop/FormDialog.h"
#include "platform/Form.h"
#include "platform/Platform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QObject>
#include <QStringList>
#include <QTest>
#include <QTimer>

#include <deque>
#include <functional>

namespace marlet::test {

inline QString latin(const char* text)
{
    return QLatin1String(text);
}

// The widget of that object name in a window, of the type asked for.
template<typename T = QWidget>
T* find(QWidget& window, const char* name)
{
    return window.findChild<T*>(latin(name));
}

// Plays an operator at the real desktop while an entry operation runs its modal windows.
//
// Steps run in order from timers: each waits until what it needs is there (a window of a form,
// a message box with a given text, a state of the screen) and then acts with real mouse and key
// events. A click that opens a modal window returns only when that window closes, so the timer
// goes on firing inside it and the next steps answer it. What goes wrong is written down in
// failures(); a step that never comes ends the windows, so that the test fails instead of hanging.
class ScreenDriver : public QObject
{
public:
    using Condition = std::function<bool()>;
    using Action = std::function<void()>;

    // A step: when the condition holds, the action runs.
    void when(const QString& what, Condition condition, Action action)
    {
        m_steps.push_back({what, std::move(condition), std::move(action)});
    }

    // Waits for the window of the named form to be the active modal window, with the keyboard.
    void onForm(const QString& formName, std::function<void(FormDialog&)> action)
    {
        when(
            QStringLiteral("the window of ") + formName,
            [formName] { return activeForm(formName) != nullptr; },
            [formName, action] { action(*activeForm(formName)); });
    }

    // Waits for a message box with exactly this text and the component's title, and presses the button.
    void answer(const QString& text, QMessageBox::StandardButton button)
    {
        when(
            QStringLiteral("the message \"") + text + u'"',
            [text] {
                const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                return box && box->text() == text;
            },
            [this, button] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                if (box->windowTitle() != MessageTitle())
                    fail(QStringLiteral("message title ") + box->windowTitle());
                if (QAbstractButton* pressed = box->button(button))
                    QTest::mouseClick(pressed, Qt::LeftButton);
                else
                    fail(QStringLiteral("no such button on \"") + box->text() + u'"');
            });
    }

    void start()
    {
        m_stepClock.start();
        schedule();
    }

    void fail(const QString& what) { m_failures << what; }
    void check(bool condition, const QString& what)
    {
        if (!condition)
            fail(what);
    }
    const QStringList& failures() const { return m_failures; }
    bool done() const { return m_steps.empty(); }

    static FormDialog* activeForm(const QString& formName)
    {
        auto* dialog = qobject_cast<FormDialog*>(QApplication::activeModalWidget());
        const bool ready
            = dialog && dialog->objectName() == formName && dialog->isVisible() && dialog->isActiveWindow();
        return ready ? dialog : nullptr;
    }

private:
    struct Step
    {
        QString what;
        Condition condition;
        Action action;
    };

    static constexpr qint64 stepTimeoutMs = 15000;

    // A timer does not fire again while its own handler runs, so every look is a timer of its own:
    // the next one can come while an action waits in a modal window it opened.
    void schedule() { QTimer::singleShot(10, this, &ScreenDriver::poll); }

    void poll()
    {
        if (m_steps.empty())
            return;
        if (m_stepClock.elapsed() > stepTimeoutMs) {
            giveUp();
            return;
        }
        activateModal();
        dismissUnexpectedMessage();
        if (!m_steps.front().condition()) {
            schedule();
            return;
        }
        // The action may open a modal window and only come back when it has closed: the step is
        // taken off and the next look scheduled first, so that the steps go on inside that window.
        const Step step = m_steps.front();
        m_steps.pop_front();
        m_stepClock.restart();
        schedule();
        step.action();
    }

    // There is no window manager to give the keyboard back to a window when a message box above it
    // closes: the driver does what one would.
    static void activateModal()
    {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal && modal->isVisible() && !modal->isActiveWindow())
            modal->activateWindow();
    }

    // A message box that the current step does not wait for is a failure; it is answered with its
    // escape button so that the operation goes on.
    void dismissUnexpectedMessage()
    {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || m_steps.front().condition())
            return;
        if (m_seenBox == box)
            return;
        // Give the step a moment: a box shown just now may be the one a later poll expects.
        m_seenBox = box;
        QTimer::singleShot(500, box, [this, box] {
            if (QApplication::activeModalWidget() != box || (!m_steps.empty() && m_steps.front().condition()))
                return;
            fail(QStringLiteral("unexpected message \"") + box->text() + u'"');
            box->reject();
        });
    }

    void giveUp()
    {
        fail(QStringLiteral("timed out waiting for ") + m_steps.front().what);
        m_steps.clear();
        // End what is open, innermost first: message boxes, then the forms' windows.
        QTimer::singleShot(0, [] { closeAll(); });
    }

    static void closeAll()
    {
        while (QWidget* modal = QApplication::activeModalWidget()) {
            if (auto* form = qobject_cast<FormDialog*>(modal)) {
                form->form().forceUnload();
            } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
                dialog->reject();
            } else {
                modal->close();
            }
            if (QApplication::activeModalWidget() == modal) {
                // It refuses to go; try again once the event loop has turned.
                QTimer::singleShot(50, [] { closeAll(); });
                return;
            }
        }
    }

    QElapsedTimer m_stepClock;
    std::deque<Step> m_steps;
    QStringList m_failures;
    QMessageBox* m_seenBox = nullptr;
};

} // namespace marlet::test
