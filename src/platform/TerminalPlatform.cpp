#include "platform/TerminalPlatform.h"

#include "platform/Form.h"
#include "platform/Operator.h"

#include <QCoreApplication>
#include <QProcess>
#include <QThread>

#include <termios.h>
#include <unistd.h>

namespace marlet {

namespace {

QString iconWord(int style)
{
    switch (MsgStyle::icon(style)) {
    case MsgStyle::Critical:
        return QStringLiteral("Error");
    case MsgStyle::Question:
        return QStringLiteral("Question");
    case MsgStyle::Exclamation:
        return QStringLiteral("Warning");
    case MsgStyle::Information:
        return QStringLiteral("Information");
    default:
        return QString();
    }
}

struct ButtonChoice
{
    QChar key;
    QString word;
    MsgResult result;
};

std::vector<ButtonChoice> buttonChoices(int style)
{
    switch (MsgStyle::buttons(style)) {
    case 1:
        return {{u'o', QStringLiteral("OK"), MsgResult::Ok}, {u'c', QStringLiteral("Cancel"), MsgResult::Cancel}};
    case 2:
        return {{u'a', QStringLiteral("Abort"), MsgResult::Abort},
                {u'r', QStringLiteral("Retry"), MsgResult::Retry},
                {u'i', QStringLiteral("Ignore"), MsgResult::Ignore}};
    case 3:
        return {{u'y', QStringLiteral("Yes"), MsgResult::Yes},
                {u'n', QStringLiteral("No"), MsgResult::No},
                {u'c', QStringLiteral("Cancel"), MsgResult::Cancel}};
    case 4:
        return {{u'y', QStringLiteral("Yes"), MsgResult::Yes}, {u'n', QStringLiteral("No"), MsgResult::No}};
    case 5:
        return {{u'r', QStringLiteral("Retry"), MsgResult::Retry}, {u'c', QStringLiteral("Cancel"), MsgResult::Cancel}};
    default:
        return {{u'o', QStringLiteral("OK"), MsgResult::Ok}};
    }
}

// Turns terminal echo off for the lifetime of the object, when standard input is a terminal.
class EchoOff
{
public:
    explicit EchoOff(bool wanted)
    {
        if (!wanted || !isatty(STDIN_FILENO) || tcgetattr(STDIN_FILENO, &m_saved) != 0)
            return;
        termios quiet = m_saved;
        quiet.c_lflag &= ~tcflag_t(ECHO);
        m_active = tcsetattr(STDIN_FILENO, TCSANOW, &quiet) == 0;
    }
    ~EchoOff()
    {
        if (m_active)
            tcsetattr(STDIN_FILENO, TCSANOW, &m_saved);
    }
    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;
    bool active() const { return m_active; }

private:
    termios m_saved{};
    bool m_active = false;
};

QString plainCaption(QString text)
{
    return text.remove(u'&');
}

} // namespace

TerminalPlatform::TerminalPlatform(QTextStream& in, QTextStream& out)
    : m_in(in)
    , m_out(out)
{
}

std::optional<QString> TerminalPlatform::ask(const QString& prompt, bool secret)
{
    m_out << prompt << Qt::flush;
    EchoOff echo(secret);
    QString line;
    if (!m_in.readLineInto(&line)) {
        m_out << Qt::endl;
        return std::nullopt;
    }
    if (echo.active())
        m_out << Qt::endl;
    return line;
}

MsgResult TerminalPlatform::messageBox(const QString& text, int style, const QString& title)
{
    const QString word = iconWord(style);
    m_out << u'[' << title << u']' << (word.isEmpty() ? QString() : u' ' + word + u':') << u' ' << text
          << Qt::endl;
    const std::vector<ButtonChoice> choices = buttonChoices(style);
    if (choices.size() == 1)
        return choices.front().result;
    const size_t fallback = qMin(size_t(MsgStyle::defaultButton(style)), choices.size() - 1);
    QStringList words;
    for (size_t i = 0; i < choices.size(); ++i)
        words << (i == fallback ? u'[' + choices[i].word + u']' : choices[i].word);
    while (true) {
        const std::optional<QString> answer = ask(words.join(u'/') + QStringLiteral("? "));
        if (!answer || answer->trimmed().isEmpty())
            return choices[fallback].result;
        const QChar first = answer->trimmed().at(0).toLower();
        for (const ButtonChoice& choice : choices) {
            if (choice.key == first)
                return choice.result;
        }
    }
}

QString TerminalPlatform::inputBox(const QString& prompt,
                                   const QString& title,
                                   const QString& defaultText,
                                   std::optional<QPoint>)
{
    m_out << u'[' << title << QStringLiteral("] ") << prompt << Qt::endl;
    const std::optional<QString> answer = ask(QStringLiteral("(") + defaultText + QStringLiteral(") > "));
    if (!answer)
        return QString();
    return answer->isEmpty() ? defaultText : *answer;
}

std::optional<QString> TerminalPlatform::fileDialog(const FileDialogRequest& request)
{
    const std::optional<QString> answer = ask(request.title + QStringLiteral(" (file path) > "));
    if (!answer || answer->trimmed().isEmpty())
        return std::nullopt;
    return answer->trimmed();
}

std::optional<int> TerminalPlatform::colorDialog(int initialColor)
{
    const std::optional<QString> answer = ask(QStringLiteral("Colour (%1) > ").arg(initialColor));
    bool ok = false;
    const int color = answer ? answer->trimmed().toInt(&ok) : 0;
    return ok ? std::optional<int>(color) : std::nullopt;
}

bool TerminalPlatform::driveOnce(Form& form)
{
    m_out << QStringLiteral("== ") << form.caption() << QStringLiteral(" ==") << Qt::endl;
    for (const auto& control : form.controls()) {
        if (!form.isLoaded())
            return true;
        if (control->kind() != ControlKind::TextBox || !control->canFocus())
            continue;
        const QString label = control->label().isEmpty() ? control->name() : plainCaption(control->label());
        const std::optional<QString> value = ask(label + u' ', control->passwordChar());
        if (!value)
            return false;
        if (Operator::focus(*control))
            control->setText(*value);
    }
    std::vector<Control*> buttons;
    for (const auto& control : form.controls()) {
        if (control->kind() == ControlKind::CommandButton && control->canFocus())
            buttons.push_back(control);
    }
    if (!form.isLoaded())
        return true;
    if (buttons.empty()) {
        ask(QStringLiteral("(Enter closes) "));
        return false;
    }
    QStringList names;
    for (size_t i = 0; i < buttons.size(); ++i)
        names << QStringLiteral("%1) %2").arg(i + 1).arg(plainCaption(buttons[i]->caption()));
    while (true) {
        const std::optional<QString> answer = ask(names.join(QStringLiteral("  ")) + QStringLiteral(" > "));
        if (!answer)
            return false;
        bool ok = false;
        const int choice = answer->trimmed().isEmpty() ? 1 : answer->trimmed().toInt(&ok);
        if ((ok || answer->trimmed().isEmpty()) && choice >= 1 && size_t(choice) <= buttons.size()) {
            Operator::click(*buttons[size_t(choice - 1)]);
            return true;
        }
    }
}

void TerminalPlatform::showModal(Form& form)
{
    form.load();
    form.activate();
    while (form.isLoaded()) {
        if (!driveOnce(form) && !Operator::closeWindow(form))
            break;
    }
}

Control* TerminalPlatform::popupMenu(Form&, Control& menu)
{
    std::vector<Control*> items;
    for (Control* item : menu.menuItems()) {
        if (item->visible() && item->enabled() && !item->separator())
            items.push_back(item);
    }
    QStringList names;
    for (size_t i = 0; i < items.size(); ++i)
        names << QStringLiteral("%1) %2").arg(i + 1).arg(plainCaption(items[i]->caption()));
    const std::optional<QString> answer = ask(names.join(QStringLiteral("  ")) + QStringLiteral(" > "));
    bool ok = false;
    const int choice = answer ? answer->trimmed().toInt(&ok) : 0;
    return ok && choice >= 1 && size_t(choice) <= items.size() ? items[size_t(choice - 1)] : nullptr;
}

void TerminalPlatform::sleep(int milliseconds)
{
    QThread::msleep(ulong(qMax(milliseconds, 0)));
}

void TerminalPlatform::yield()
{
    QCoreApplication::processEvents();
}

QDateTime TerminalPlatform::now() const
{
    return QDateTime::currentDateTime();
}

QString TerminalPlatform::defaultPrinter() const
{
    // The terminal host has no print services of its own.
    return QString();
}

QStringList TerminalPlatform::printers() const
{
    return {};
}

bool TerminalPlatform::printLines(const QList<PrintedLine>& /*lines*/)
{
    return false;
}

std::unique_ptr<SerialPort> TerminalPlatform::serialPort()
{
    return nullptr;
}

std::unique_ptr<NamedComponent> TerminalPlatform::createComponent(const QString&)
{
    return nullptr;
}

bool TerminalPlatform::openDocument(const QString& path)
{
    m_out << QStringLiteral("Document: ") << path << Qt::endl;
    return QProcess::startDetached(QStringLiteral("xdg-open"), {path});
}

bool TerminalPlatform::startProgram(const QString& program, const QStringList& arguments, bool wait)
{
    if (!wait)
        return QProcess::startDetached(program, arguments);
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForStarted())
        return false;
    process.waitForFinished(-1);
    return true;
}

QByteArray TerminalPlatform::clipboardImage() const
{
    return {};
}

void TerminalPlatform::clearClipboard() {}

// A terminal has no scanner dialog.
bool TerminalPlatform::selectImageSource()
{
    return false;
}

} // namespace marlet
