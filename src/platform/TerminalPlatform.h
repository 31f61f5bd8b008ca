#pragma once

#include "platform/Platform.h"

#include <QTextStream>

namespace marlet {

// The platform of the command-line host when no display is present: messages are printed,
// questions and input boxes are asked on the terminal, and a form is driven by asking for its
// enabled text fields in order and then for the button to press. Pauses are real.
class TerminalPlatform : public Platform
{
public:
    TerminalPlatform(QTextStream& in, QTextStream& out);

    MsgResult messageBox(const QString& text, int style, const QString& title) override;
    QString inputBox(const QString& prompt,
                     const QString& title,
                     const QString& defaultText,
                     std::optional<QPoint> position) override;
    std::optional<QString> fileDialog(const FileDialogRequest& request) override;
    std::optional<int> colorDialog(int initialColor) override;

    void showModal(Form& form) override;
    Control* popupMenu(Form& form, Control& menu) override;

    void sleep(int milliseconds) override;
    void yield() override;
    QDateTime now() const override;

    QString defaultPrinter() const override;
    QStringList printers() const override;
    bool printLines(const QList<PrintedLine>& lines) override;

    std::unique_ptr<SerialPort> serialPort() override;
    std::unique_ptr<NamedComponent> createComponent(const QString& progId) override;
    bool openDocument(const QString& path) override;
    bool startProgram(const QString& program, const QStringList& arguments, bool wait) override;
    QByteArray clipboardImage() const override;
    void clearClipboard() override;
    bool selectImageSource() override;

private:
    // One line from the terminal; nullopt at the end of input.
    std::optional<QString> ask(const QString& prompt, bool secret = false);
    // Asks for the form's fields and a button once; false when the input has ended.
    bool driveOnce(Form& form);

    QTextStream& m_in;
    QTextStream& m_out;
};

} // namespace marlet
