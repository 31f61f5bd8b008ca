#include "desktop/InputBoxDialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace marlet {

InputBoxDialog::InputBoxDialog(const QString& prompt, const QString& title, const QString& defaultText, QWidget* parent)
    : QDialog(parent)
    , m_prompt(new QLabel(prompt, this))
    , m_edit(new QLineEdit(defaultText, this))
{
    setWindowTitle(title);
    m_prompt->setObjectName(QStringLiteral("prompt"));
    m_prompt->setTextFormat(Qt::PlainText);
    m_prompt->setWordWrap(true);
    m_prompt->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_edit->setObjectName(QStringLiteral("edit"));
    m_edit->selectAll();

    // OK and Cancel stand on the right of the prompt, the edit runs along the bottom.
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Qt::Vertical, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QGridLayout(this);
    layout->addWidget(m_prompt, 0, 0);
    layout->addWidget(buttons, 0, 1);
    layout->addWidget(m_edit, 1, 0, 1, 2);
    layout->setColumnStretch(0, 1);
    layout->setRowStretch(0, 1);
    setMinimumWidth(360);
    m_edit->setFocus();
}

QString InputBoxDialog::text() const
{
    return m_edit->text();
}

} // namespace marlet
