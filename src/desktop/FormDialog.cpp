#include "desktop/FormDialog.h"

#include "desktop/FormBinder.h"
#include "desktop/Units.h"
#include "platform/Form.h"
#include "platform/Operator.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QVBoxLayout>

namespace marlet {

namespace {

// A form's size counts its border and title bar; the twips placement needs the inside.
constexpr int borderTwips = 120;
constexpr int titleAndBorderTwips = 405;

} // namespace

FormDialog::FormDialog(Form& form, QWidget* parent)
    : QDialog(parent)
    , m_form(form)
    , m_layout(new QVBoxLayout(this))
{
    setObjectName(form.name());
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    connect(&form, &Form::rebuilt, this, &FormDialog::rebind);
    connect(&form, &Form::captionChanged, this, &FormDialog::updateTitleAndSize);
    connect(&form, &Form::closed, this, &FormDialog::formClosed);
    bind();
}

FormDialog::~FormDialog()
{
    delete m_binder;
}

FormBinder* FormDialog::binder() const
{
    return m_binder;
}

void FormDialog::bind()
{
    m_binder = new FormBinder(m_form, *this);
    m_layout->setMenuBar(m_binder->menuBar());
    m_layout->addWidget(m_binder->root());
    updateTitleAndSize();
}

void FormDialog::rebind()
{
    // The old widgets may be in the middle of the event that rebuilt the form: they go later.
    if (m_binder) {
        m_binder->retire();
        m_layout->removeWidget(m_binder->root());
        m_binder->root()->hide();
        if (QMenuBar* bar = m_binder->menuBar())
            bar->hide();
        m_binder->deleteLater();
    }
    m_focusedOnce = false;
    bind();
}

void FormDialog::updateTitleAndSize()
{
    setWindowTitle(m_form.caption());
    if (!m_binder || !m_binder->placedByTwips()) {
        adjustSize();
        return;
    }
    QSize inside(pixelsFromTwips(m_form.width() - borderTwips), pixelsFromTwips(m_form.height() - titleAndBorderTwips));
    // A form made without a size is as large as its controls reach.
    if (m_form.width() <= 0 || m_form.height() <= 0) {
        const QRect reach = m_binder->root()->childrenRect();
        inside = QSize(reach.right() + 1, reach.bottom() + 1);
    }
    inside = inside.expandedTo(QSize(1, 1));
    m_binder->root()->setFixedSize(inside);
    adjustSize();
}

void FormDialog::runModal()
{
    if (m_form.isLoaded())
        exec();
}

void FormDialog::formClosed()
{
    done(QDialog::Accepted);
}

void FormDialog::reject()
{
    // Only the form closes itself; Escape is a key like any other for its controls.
    if (!m_form.isLoaded())
        QDialog::reject();
}

void FormDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!m_focusedOnce && m_binder) {
        m_focusedOnce = true;
        m_binder->focusFirst();
    }
}

void FormDialog::closeEvent(QCloseEvent* event)
{
    // The title bar's close asks the form, whose query-unload may refuse. When it agrees, the
    // form's closed signal has already ended the dialog.
    if (m_form.isLoaded() && !Operator::closeWindow(m_form))
        event->ignore();
    else
        event->accept();
}

void FormDialog::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        event->accept();
        break;
    default:
        QDialog::keyPressEvent(event);
    }
}

} // namespace marlet
