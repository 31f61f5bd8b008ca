#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace marlet {

// The small question dialog: a prompt, one line of text with its default selected, OK and Cancel.
class InputBoxDialog : public QDialog
{
    Q_OBJECT

public:
    InputBoxDialog(const QString& prompt, const QString& title, const QString& defaultText, QWidget* parent = nullptr);

    QString text() const;

private:
    QLabel* m_prompt;
    QLineEdit* m_edit;
};

} // namespace marlet
