#pragma once

#include <QDialog>
#include <QPointer>

class QVBoxLayout;

namespace marlet {

class Form;
class FormBinder;

// The window of a form. It shows the form's controls through a FormBinder, keeps its title and
// size with the form, closes when the form unloads, and hands the title bar's close button to
// the form, which may refuse it. Escape and Enter belong to the form's controls: the dialog
// neither rejects nor picks a default button by itself.
class FormDialog : public QDialog
{
    Q_OBJECT

public:
    // The form must be loaded; when it is built anew the window binds again.
    explicit FormDialog(Form& form, QWidget* parent = nullptr);
    ~FormDialog() override;

    Form& form() const { return m_form; }
    FormBinder* binder() const;

    // Runs the window modally until the form has closed. Returns at once when it is not loaded.
    void runModal();

public slots:
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void bind();
    void rebind();
    void formClosed();
    void updateTitleAndSize();

    Form& m_form;
    QVBoxLayout* m_layout;
    QPointer<FormBinder> m_binder;
    bool m_focusedOnce = false;
};

} // namespace marlet
