#pragma once

#include "platform/Platform.h"

#include <QElapsedTimer>

class QWidget;

namespace marlet {

// The platform on a real desktop: Qt dialogs and windows, the system's printers, clipboard,
// serial ports, documents and programs.
class QtPlatform : public Platform
{
public:
    // Registers the hand-made views of the component's screens.
    QtPlatform();

    MsgResult messageBox(const QString& text, int style, const QString& title) override;
    using Platform::messageBox;
    QString inputBox(const QString& prompt,
        const QString& title,
        const QString& defaultText,
        std::optional<QPoint> position = std::nullopt) override;
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

    // A file filter as the screens write it ("Pictures (*.bmp;*.jpg)|*.bmp;*.jpg", description
    // and patterns in pairs) in Qt's terms ("Pictures (*.bmp *.jpg)" per entry).
    static QStringList nameFilters(const QString& filter);

private:
    // The window new dialogs belong to: the modal window on top, else the active one.
    static QWidget* dialogParent();

    // When the pending events last ran for a yield.
    QElapsedTimer m_lastYield;
};

} // namespace marlet
