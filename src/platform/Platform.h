#pragma once

#include "values/Product.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <memory>
#include <optional>

namespace marlet {

class Connection;
class Form;
class Control;

// Buttons a message box reports, with the values the host's automation model uses.
enum class MsgResult : int { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

// Message box styles: an icon plus a button set, added together as numbers.
namespace MsgStyle {
constexpr int OkOnly = 0;
constexpr int YesNoCancel = 3;
constexpr int YesNo = 4;
constexpr int Critical = 16;
constexpr int Question = 32;
constexpr int Exclamation = 48;
constexpr int Information = 64;
constexpr int DefaultButton2 = 256;
constexpr int DefaultButton3 = 512;

constexpr int Stop = Critical;                                  // 16
constexpr int Warning = Exclamation;                            // 48
constexpr int Info = Information;                               // 64
constexpr int YesNoQuestion = YesNo + Question;                 // 36
constexpr int YesNoQuestionNoDefault = YesNoQuestion + DefaultButton2; // 292
constexpr int YesNoCancelQuestion = YesNoCancel + Question;     // 35

int buttons(int style);       // 0 OK, 1 OK/Cancel, 2 Abort/Retry/Ignore, 3 Yes/No/Cancel, 4 Yes/No, 5 Retry/Cancel
int icon(int style);          // 0, 16, 32, 48 or 64
int defaultButton(int style); // 0 first, 1 second, 2 third
} // namespace MsgStyle

// A serial line as the point-of-sale test uses it.
class SerialPort
{
public:
    virtual ~SerialPort() = default;
    virtual bool open(const QString& portName, int baud) = 0;
    virtual bool isOpen() const = 0;
    virtual bool write(const QByteArray& data) = 0;
    virtual void close() = 0;
};

// An outside component reached by name (report and maintenance components). Operations are called
// by name; an unknown operation returns false.
class NamedComponent
{
public:
    virtual ~NamedComponent() = default;
    virtual bool call(const QString& operation, const QVariantList& arguments) = 0;
    // An operation that takes the shared connection by reference, e.g.
    // Generated2Preview(connection, "Select * From RowPrintTemp"): `connection` is that connection,
    // `arguments` are the operation's other arguments in their order. The component reads and writes
    // through it and may leave it closed or reopened on another store; the caller goes on with the
    // connection as the component left it. A component without such operations knows none of them.
    virtual bool callWithConnection(const QString& /*operation*/,
                                    Connection& /*connection*/,
                                    const QVariantList& /*arguments*/)
    {
        return false;
    }
};

// What a file dialog is asked for.
struct FileDialogRequest
{
    QString title;
    QString filter;          // "Pictures (*.bmp;*.jpg)|*.bmp;*.jpg" style pairs
    QString initialDir;
    QString fileName;
    bool save = false;
};

// One line of a printed page, in the font it is printed with (a size in points).
struct PrintedLine
{
    QString text;
    bool bold = false;
    int size = 0;

    bool operator==(const PrintedLine&) const = default;
};

// Everything the logic needs from outside itself. The desktop front end implements it with real
// dialogs and devices; tests use the scripted implementation; the terminal host prints and asks.
class Platform
{
public:
    virtual ~Platform() = default;

    // Dialogs
    virtual MsgResult messageBox(const QString& text, int style, const QString& title) = 0;
    MsgResult messageBox(const QString& text, int style) { return messageBox(text, style, MessageTitle()); }
    // Returns the text typed, or an empty text when the operator cancels.
    virtual QString inputBox(const QString& prompt,
                             const QString& title,
                             const QString& defaultText,
                             std::optional<QPoint> position = std::nullopt) = 0;
    virtual std::optional<QString> fileDialog(const FileDialogRequest& request) = 0;
    virtual std::optional<int> colorDialog(int initialColor) = 0;

    // Screens
    // Shows the form modally and returns once it has been unloaded.
    virtual void showModal(Form& form) = 0;
    // Shows a pop-up menu of the form; returns the menu item chosen, or nullptr when none was.
    virtual Control* popupMenu(Form& form, Control& menu) = 0;

    // Time
    virtual void sleep(int milliseconds) = 0;
    virtual void yield() = 0;
    virtual QDateTime now() const = 0;
    QDate today() const { return now().date(); }

    // Printers
    virtual QString defaultPrinter() const = 0; // empty when none is installed
    virtual QStringList printers() const = 0;
    // Prints the lines as one job on the default printer, one below the other; a line may hold
    // several lines of its own. False when the job could not be printed.
    virtual bool printLines(const QList<PrintedLine>& lines) = 0;

    // Devices, documents, programs and components
    virtual std::unique_ptr<SerialPort> serialPort() = 0;
    virtual std::unique_ptr<NamedComponent> createComponent(const QString& progId) = 0;
    virtual bool openDocument(const QString& path) = 0;
    // Starts a program; waits for it to end when wait is set. Returns false when it cannot start.
    virtual bool startProgram(const QString& program, const QStringList& arguments, bool wait) = 0;
    // The clipboard's picture as PNG bytes, empty when it holds none.
    virtual QByteArray clipboardImage() const = 0;
    virtual void clearClipboard() = 0;
    // Lets the operator choose the scanner that the scanner front end reads from. False when no
    // scanner can be chosen.
    virtual bool selectImageSource() = 0;
};

} // namespace marlet
