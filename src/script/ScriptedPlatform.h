#pragma once

#include "platform/Platform.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace marlet {

// The platform of tests and scenario scripts. Every dialog is answered from a queue of expectations
// set up beforehand, the clock is virtual, devices are fakes that record what they were given, and a
// modal form is driven by queued actions instead of a person. What does not go as expected is
// collected as a readable failure; nothing ever waits for input, so a test cannot hang.
class ScriptedPlatform : public Platform
{
public:
    // Something the operator does while a form is open; it receives the topmost open form.
    using Action = std::function<void(Form& top)>;
    // Supplies the next action when the queue is empty; nullopt when there is none left.
    using ActionSource = std::function<std::optional<Action>()>;
    using ComponentFactory = std::function<std::unique_ptr<NamedComponent>()>;

    struct ExpectedMessage
    {
        QString text;
        int style = MsgStyle::OkOnly;
        QString title = MessageTitle();
        std::optional<MsgResult> answer; // the style's default button when not given
        QString origin; // where the expectation was written, for failure reports
    };
    struct ShownMessage
    {
        QString text;
        int style = 0;
        QString title;
        MsgResult answer = MsgResult::Ok;
    };
    struct ExpectedInput
    {
        QString answer; // empty: the operator cancels
        std::optional<QString> prompt;
        std::optional<QString> title;
        std::optional<QString> defaultText;
        QString origin;
    };
    struct ShownInput
    {
        QString prompt;
        QString title;
        QString defaultText;
        QString answer;
    };
    struct ExpectedMenu
    {
        std::optional<QString> item; // name or caption of the item chosen; nullopt dismisses the menu
        QString origin;
    };
    struct SerialWrite
    {
        QString port;
        int baud = 0;
        QByteArray data;
    };
    struct ComponentCall
    {
        QString progId;
        QString operation;
        QVariantList arguments;
        Connection* connection = nullptr; // the connection handed over by reference, if any
    };
    struct ProgramStart
    {
        QString program;
        QStringList arguments;
        bool wait = false;
    };

    ScriptedPlatform();
    ~ScriptedPlatform() override;

    // Platform
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
    QDateTime now() const override { return m_now; }
    QString defaultPrinter() const override { return m_defaultPrinter; }
    QStringList printers() const override { return m_printers; }
    bool printLines(const QList<PrintedLine>& lines) override;
    std::unique_ptr<SerialPort> serialPort() override;
    std::unique_ptr<NamedComponent> createComponent(const QString& progId) override;
    bool openDocument(const QString& path) override;
    bool startProgram(const QString& program, const QStringList& arguments, bool wait) override;
    QByteArray clipboardImage() const override { return m_clipboard; }
    void clearClipboard() override { m_clipboard.clear(); }
    bool selectImageSource() override
    {
        ++m_imageSourceChoices;
        return true;
    }

    // Failures. Each is prefixed with the context in force when it happened (a script line).
    const QStringList& failures() const { return m_failures; }
    void recordFailure(const QString& detail);
    void setContext(const QString& context) { m_context = context; }
    const QString& context() const { return m_context; }
    // Records every expectation that was never used as a failure and forgets it.
    void finish();

    // Message boxes
    void expectMessage(ExpectedMessage expected);
    void expectMessage(const QString& text, int style, std::optional<MsgResult> answer = std::nullopt);
    const std::vector<ShownMessage>& messages() const { return m_shownMessages; }
    int pendingMessages() const { return int(m_expectedMessages.size()); }
    // The button a box of this style answers when the operator just presses Enter.
    static MsgResult defaultAnswer(int style);
    static bool styleHasButton(int style, MsgResult answer);

    // Input boxes
    void expectInput(ExpectedInput expected);
    void expectInput(const QString& answer) { expectInput(ExpectedInput {answer, {}, {}, {}, {}}); }
    const std::vector<ShownInput>& inputs() const { return m_shownInputs; }
    int pendingInputs() const { return int(m_expectedInputs.size()); }

    // Pop-up menus, file and colour dialogs: answers in order, nullopt for a dismissed one.
    void expectMenu(ExpectedMenu expected);
    void expectMenu(std::optional<QString> item) { expectMenu(ExpectedMenu {std::move(item), {}}); }
    const QStringList& menusShown() const { return m_menusShown; }
    void expectFileDialog(const std::optional<QString>& answer, const QString& origin = {});
    const std::vector<FileDialogRequest>& fileDialogs() const { return m_fileDialogs; }
    void expectColorDialog(const std::optional<int>& answer, const QString& origin = {});
    int pendingExpectations() const;

    // Clock
    void setNow(const QDateTime& now) { m_now = now; }
    void advance(qint64 milliseconds) { m_now = m_now.addMSecs(milliseconds); }
    qint64 sleptMilliseconds() const { return m_slept; }

    // Yields, and actions injected at a given yield (a "Stop" pressed in the middle of a loop).
    int yieldCount() const { return m_yields; }
    // Runs the hook at the n-th yield from now (n = 1: the next yield).
    void atYield(int n, std::function<void()> hook);

    // Modal forms and the actions that drive them.
    void queueAction(Action action);
    void setActionSource(ActionSource source) { m_source = std::move(source); }
    Form* topForm() const { return m_openForms.empty() ? nullptr : m_openForms.back(); }
    const std::vector<Form*>& openForms() const { return m_openForms; }
    // Names of the forms shown modally, in order.
    const QStringList& formsShown() const { return m_formsShown; }

    // Printers
    void setDefaultPrinter(const QString& name);
    void setPrinters(const QStringList& names) { m_printers = names; }
    // Jobs sent to the default printer; a job fails when printing does not work.
    void setPrintingWorks(bool works) { m_printingWorks = works; }
    const QList<QList<PrintedLine>>& printJobs() const { return m_printJobs; }

    // Devices, components, documents and programs
    void setSerialPortWorks(bool works) { m_serialWorks = works; }
    const std::vector<SerialWrite>& serialWrites() const { return *m_serialWrites; }
    void registerComponent(const QString& progId, ComponentFactory factory);
    // A fake that records every call into componentCalls() and answers `result`.
    void addRecordingComponent(const QString& progId, bool result = true);
    const std::vector<ComponentCall>& componentCalls() const { return *m_componentCalls; }
    const QStringList& componentsCreated() const { return m_componentsCreated; }
    void setOpenDocumentResult(bool result) { m_openDocumentResult = result; }
    const QStringList& documentsOpened() const { return m_documents; }
    void setStartProgramResult(bool result) { m_startProgramResult = result; }
    const std::vector<ProgramStart>& programsStarted() const { return m_programs; }
    void setClipboardImage(const QByteArray& png) { m_clipboard = png; }
    int imageSourceChoices() const { return m_imageSourceChoices; }

    // Text shown so that invisible differences stand out: quoted, with control characters, blanks
    // that are not plain spaces and characters outside ASCII escaped.
    static QString visible(const QString& text);
    // "expected"/"actual" lines and where the two first differ.
    static QString describeDifference(const QString& expected, const QString& actual);

private:
    struct YieldHook
    {
        int at = 0;
        std::function<void()> hook;
    };

    std::optional<Action> nextAction();
    void closeAbandoned(Form& form);
    MsgResult checkMessage(const ExpectedMessage& expected, const QString& text, int style, const QString& title);
    template<typename T>
    std::optional<T> takeExpected(std::deque<T>& queue, const std::function<QString()>& what);

    QStringList m_failures;
    QString m_context;

    std::deque<ExpectedMessage> m_expectedMessages;
    std::vector<ShownMessage> m_shownMessages;
    std::deque<ExpectedInput> m_expectedInputs;
    std::vector<ShownInput> m_shownInputs;
    std::deque<ExpectedMenu> m_expectedMenus;
    QStringList m_menusShown;
    struct ExpectedDialog
    {
        std::optional<QString> file;
        std::optional<int> color;
        QString origin;
    };
    std::deque<ExpectedDialog> m_expectedFiles;
    std::deque<ExpectedDialog> m_expectedColors;
    std::vector<FileDialogRequest> m_fileDialogs;

    QDateTime m_now;
    qint64 m_slept = 0;
    int m_yields = 0;
    std::vector<YieldHook> m_yieldHooks;

    std::deque<Action> m_actions;
    ActionSource m_source;
    std::vector<Form*> m_openForms;
    QStringList m_formsShown;

    QString m_defaultPrinter;
    QStringList m_printers;
    bool m_printingWorks = true;
    QList<QList<PrintedLine>> m_printJobs;

    bool m_serialWorks = true;
    std::shared_ptr<std::vector<SerialWrite>> m_serialWrites;
    std::map<QString, ComponentFactory> m_components;
    std::shared_ptr<std::vector<ComponentCall>> m_componentCalls;
    QStringList m_componentsCreated;
    bool m_openDocumentResult = true;
    QStringList m_documents;
    bool m_startProgramResult = true;
    std::vector<ProgramStart> m_programs;
    QByteArray m_clipboard;
    int m_imageSourceChoices = 0;
};

} // namespace marlet
