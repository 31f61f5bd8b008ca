#include "script/ScriptedPlatform.h"

#include "platform/Form.h"

#include <algorithm>

namespace marlet {

namespace {

QString indented(const QString& text)
{
    QStringList lines = text.split(u'\n');
    for (QString& line : lines)
        line.prepend(QStringLiteral("  "));
    return lines.join(u'\n');
}

QString answerName(MsgResult answer)
{
    switch (answer) {
    case MsgResult::Ok:
        return QStringLiteral("OK");
    case MsgResult::Cancel:
        return QStringLiteral("Cancel");
    case MsgResult::Abort:
        return QStringLiteral("Abort");
    case MsgResult::Retry:
        return QStringLiteral("Retry");
    case MsgResult::Ignore:
        return QStringLiteral("Ignore");
    case MsgResult::Yes:
        return QStringLiteral("Yes");
    case MsgResult::No:
        return QStringLiteral("No");
    }
    return QString();
}

// The buttons of a style, in the order the box shows them.
std::vector<MsgResult> styleButtons(int style)
{
    switch (MsgStyle::buttons(style)) {
    case 1:
        return {MsgResult::Ok, MsgResult::Cancel};
    case 2:
        return {MsgResult::Abort, MsgResult::Retry, MsgResult::Ignore};
    case 3:
        return {MsgResult::Yes, MsgResult::No, MsgResult::Cancel};
    case 4:
        return {MsgResult::Yes, MsgResult::No};
    case 5:
        return {MsgResult::Retry, MsgResult::Cancel};
    default:
        return {MsgResult::Ok};
    }
}

QString formDescription(const Form& form)
{
    if (form.caption().isEmpty())
        return form.name();
    return form.name() + QStringLiteral(" (") + ScriptedPlatform::visible(form.caption()) + u')';
}

QString withOrigin(const QString& what, const QString& origin)
{
    return origin.isEmpty() ? what : what + QStringLiteral(" (expected at ") + origin + u')';
}

// A menu item is named by its control name or by its caption, with or without the "&".
bool menuItemMatches(const Control& item, const QString& wanted)
{
    return item.key().compare(wanted, Qt::CaseInsensitive) == 0 || item.caption() == wanted
        || QString(item.caption()).remove(u'&') == QString(wanted).remove(u'&');
}

class FakeSerialPort : public SerialPort
{
public:
    FakeSerialPort(std::shared_ptr<std::vector<ScriptedPlatform::SerialWrite>> log, bool works)
        : m_log(std::move(log))
        , m_works(works)
    {
    }

    bool open(const QString& portName, int baud) override
    {
        if (!m_works || m_open)
            return false;
        m_port = portName;
        m_baud = baud;
        m_open = true;
        return true;
    }
    bool isOpen() const override { return m_open; }
    bool write(const QByteArray& data) override
    {
        if (!m_open)
            return false;
        m_log->push_back({m_port, m_baud, data});
        return true;
    }
    void close() override { m_open = false; }

private:
    std::shared_ptr<std::vector<ScriptedPlatform::SerialWrite>> m_log;
    bool m_works;
    bool m_open = false;
    QString m_port;
    int m_baud = 0;
};

class RecordingComponent : public NamedComponent
{
public:
    RecordingComponent(QString progId, std::shared_ptr<std::vector<ScriptedPlatform::ComponentCall>> log, bool result)
        : m_progId(std::move(progId))
        , m_log(std::move(log))
        , m_result(result)
    {
    }

    bool call(const QString& operation, const QVariantList& arguments) override
    {
        m_log->push_back({m_progId, operation, arguments});
        return m_result;
    }
    bool callWithConnection(const QString& operation, Connection& connection, const QVariantList& arguments) override
    {
        m_log->push_back({m_progId, operation, arguments, &connection});
        return m_result;
    }

private:
    QString m_progId;
    std::shared_ptr<std::vector<ScriptedPlatform::ComponentCall>> m_log;
    bool m_result;
};

} // namespace

ScriptedPlatform::ScriptedPlatform()
    : m_now(QDate(2026, 11, 21), QTime(10, 0))
    , m_serialWrites(std::make_shared<std::vector<SerialWrite>>())
    , m_componentCalls(std::make_shared<std::vector<ComponentCall>>())
{
}

ScriptedPlatform::~ScriptedPlatform() = default;

// ---- failures

void ScriptedPlatform::recordFailure(const QString& detail)
{
    m_failures.append(m_context.isEmpty() ? detail : m_context + u'\n' + indented(detail));
}

void ScriptedPlatform::finish()
{
    for (const ExpectedMessage& m : m_expectedMessages)
        recordFailure(withOrigin(QStringLiteral("expected message never shown: ") + visible(m.text), m.origin));
    for (const ExpectedInput& i : m_expectedInputs)
        recordFailure(
            withOrigin(QStringLiteral("expected input box never shown, answer ") + visible(i.answer), i.origin));
    for (const ExpectedMenu& m : m_expectedMenus)
        recordFailure(withOrigin(QStringLiteral("expected pop-up menu never shown"), m.origin));
    for (const ExpectedDialog& d : m_expectedFiles)
        recordFailure(withOrigin(QStringLiteral("expected file dialog never shown"), d.origin));
    for (const ExpectedDialog& d : m_expectedColors)
        recordFailure(withOrigin(QStringLiteral("expected colour dialog never shown"), d.origin));
    m_expectedMessages.clear();
    m_expectedInputs.clear();
    m_expectedMenus.clear();
    m_expectedFiles.clear();
    m_expectedColors.clear();
}

QString ScriptedPlatform::visible(const QString& text)
{
    QString shown = QStringLiteral("\"");
    for (const QChar ch : text) {
        const char16_t c = ch.unicode();
        if (c == u'"' || c == u'\\')
            shown += u'\\' + QString(ch);
        else if (c == u'\t')
            shown += QStringLiteral("\\t");
        else if (c == u'\n')
            shown += QStringLiteral("\\n");
        else if (c == u'\r')
            shown += QStringLiteral("\\r");
        else if (c < 0x20 || c >= 0x7f)
            shown += QStringLiteral("\\u{") + QString::number(c, 16) + u'}';
        else
            shown += ch;
    }
    return shown + u'"';
}

QString ScriptedPlatform::describeDifference(const QString& expected, const QString& actual)
{
    qsizetype same = 0;
    while (same < expected.size() && same < actual.size() && expected[same] == actual[same])
        ++same;
    QString where;
    if (same == expected.size())
        where = QStringLiteral("actual has more after character ") + QString::number(same);
    else if (same == actual.size())
        where = QStringLiteral("actual ends after character ") + QString::number(same);
    else
        where = QStringLiteral("first difference at character ") + QString::number(same + 1);
    return QStringLiteral("expected: ") + visible(expected) + QStringLiteral("\nactual:   ") + visible(actual) + u'\n'
        + where;
}

template<typename T>
std::optional<T> ScriptedPlatform::takeExpected(std::deque<T>& queue, const std::function<QString()>& what)
{
    if (queue.empty()) {
        recordFailure(QStringLiteral("unexpected ") + what());
        return std::nullopt;
    }
    T front = std::move(queue.front());
    queue.pop_front();
    return front;
}

int ScriptedPlatform::pendingExpectations() const
{
    return int(m_expectedMessages.size() + m_expectedInputs.size() + m_expectedMenus.size() + m_expectedFiles.size()
        + m_expectedColors.size());
}

// ---- message and input boxes

MsgResult ScriptedPlatform::defaultAnswer(int style)
{
    const std::vector<MsgResult> buttons = styleButtons(style);
    const size_t index = std::min(size_t(MsgStyle::defaultButton(style)), buttons.size() - 1);
    return buttons[index];
}

bool ScriptedPlatform::styleHasButton(int style, MsgResult answer)
{
    const std::vector<MsgResult> buttons = styleButtons(style);
    return std::find(buttons.begin(), buttons.end(), answer) != buttons.end();
}

void ScriptedPlatform::expectMessage(ExpectedMessage expected)
{
    m_expectedMessages.push_back(std::move(expected));
}

void ScriptedPlatform::expectMessage(const QString& text, int style, std::optional<MsgResult> answer)
{
    ExpectedMessage expected;
    expected.text = text;
    expected.style = style;
    expected.answer = answer;
    expectMessage(std::move(expected));
}

MsgResult ScriptedPlatform::messageBox(const QString& text, int style, const QString& title)
{
    // What the box showed is written out only when no box was expected.
    std::optional<ExpectedMessage> expected = takeExpected(m_expectedMessages, [&]() -> QString {
        return QStringLiteral("message box: ") + visible(text) + QStringLiteral(" (style ") + QString::number(style)
            + QStringLiteral(", title ") + visible(title) + u')';
    });
    const MsgResult answer = expected ? checkMessage(*expected, text, style, title) : defaultAnswer(style);
    m_shownMessages.push_back({text, style, title, answer});
    return answer;
}

MsgResult ScriptedPlatform::checkMessage(
    const ExpectedMessage& expected, const QString& text, int style, const QString& title)
{
    QStringList differences;
    if (text != expected.text)
        differences << QStringLiteral("text:\n") + indented(describeDifference(expected.text, text));
    if (style != expected.style) {
        differences << QStringLiteral("style: expected ") + QString::number(expected.style)
                + QStringLiteral(", actual ") + QString::number(style);
    }
    if (title != expected.title)
        differences << QStringLiteral("title:\n") + indented(describeDifference(expected.title, title));
    if (!differences.isEmpty()) {
        recordFailure(withOrigin(QStringLiteral("message box is not the one expected"), expected.origin) + u'\n'
            + differences.join(u'\n'));
        return defaultAnswer(style);
    }
    if (!expected.answer)
        return defaultAnswer(style);
    if (!styleHasButton(style, *expected.answer)) {
        recordFailure(withOrigin(QStringLiteral("the answer ") + answerName(*expected.answer)
                + QStringLiteral(" is not a button of style ") + QString::number(style),
            expected.origin));
        return defaultAnswer(style);
    }
    return *expected.answer;
}

void ScriptedPlatform::expectInput(ExpectedInput expected)
{
    m_expectedInputs.push_back(std::move(expected));
}

QString ScriptedPlatform::inputBox(
    const QString& prompt, const QString& title, const QString& defaultText, std::optional<QPoint> /*position*/)
{
    std::optional<ExpectedInput> expected
        = takeExpected(m_expectedInputs, [&]() -> QString { return QStringLiteral("input box: ") + visible(prompt); });
    const QString answer = expected ? expected->answer : QString();
    m_shownInputs.push_back({prompt, title, defaultText, answer});
    if (!expected)
        return answer;
    QStringList differences;
    auto compare = [&differences](const char* what, const std::optional<QString>& wanted, const QString& actual) {
        if (wanted && *wanted != actual)
            differences << QLatin1String(what) + QStringLiteral(":\n") + indented(describeDifference(*wanted, actual));
    };
    compare("prompt", expected->prompt, prompt);
    compare("title", expected->title, title);
    compare("default", expected->defaultText, defaultText);
    if (!differences.isEmpty()) {
        recordFailure(withOrigin(QStringLiteral("input box is not the one expected"), expected->origin) + u'\n'
            + differences.join(u'\n'));
    }
    return answer;
}

// ---- menus and common dialogs

void ScriptedPlatform::expectMenu(ExpectedMenu expected)
{
    m_expectedMenus.push_back(std::move(expected));
}

Control* ScriptedPlatform::popupMenu(Form& /*form*/, Control& menu)
{
    m_menusShown.append(menu.key());
    std::optional<ExpectedMenu> expected
        = takeExpected(m_expectedMenus, [&]() -> QString { return QStringLiteral("pop-up menu ") + menu.key(); });
    if (!expected || !expected->item)
        return nullptr;
    for (Control* item : menu.menuItems()) {
        if (item->separator() || !menuItemMatches(*item, *expected->item))
            continue;
        if (item->enabled() && item->visible())
            return item;
        recordFailure(withOrigin(QStringLiteral("menu item ") + visible(item->caption())
                + QStringLiteral(" cannot be chosen: it is disabled or hidden"),
            expected->origin));
        return nullptr;
    }
    recordFailure(withOrigin(
        QStringLiteral("pop-up menu ") + menu.key() + QStringLiteral(" has no item ") + visible(*expected->item),
        expected->origin));
    return nullptr;
}

void ScriptedPlatform::expectFileDialog(const std::optional<QString>& answer, const QString& origin)
{
    m_expectedFiles.push_back({answer, std::nullopt, origin});
}

std::optional<QString> ScriptedPlatform::fileDialog(const FileDialogRequest& request)
{
    m_fileDialogs.push_back(request);
    std::optional<ExpectedDialog> expected = takeExpected(
        m_expectedFiles, [&]() -> QString { return QStringLiteral("file dialog: ") + visible(request.title); });
    return expected ? expected->file : std::nullopt;
}

void ScriptedPlatform::expectColorDialog(const std::optional<int>& answer, const QString& origin)
{
    m_expectedColors.push_back({std::nullopt, answer, origin});
}

std::optional<int> ScriptedPlatform::colorDialog(int /*initialColor*/)
{
    std::optional<ExpectedDialog> expected
        = takeExpected(m_expectedColors, []() -> QString { return QStringLiteral("colour dialog"); });
    return expected ? expected->color : std::nullopt;
}

// ---- modal forms

void ScriptedPlatform::queueAction(Action action)
{
    m_actions.push_back(std::move(action));
}

std::optional<ScriptedPlatform::Action> ScriptedPlatform::nextAction()
{
    if (!m_actions.empty()) {
        Action action = std::move(m_actions.front());
        m_actions.pop_front();
        return action;
    }
    if (m_source)
        return m_source();
    return std::nullopt;
}

void ScriptedPlatform::showModal(Form& form)
{
    if (std::find(m_openForms.begin(), m_openForms.end(), &form) != m_openForms.end()) {
        recordFailure(formDescription(form) + QStringLiteral(" is already shown and cannot be shown modally again"));
        return;
    }
    m_formsShown.append(form.name());
    form.load();
    if (!form.isLoaded())
        return;
    m_openForms.push_back(&form);
    form.activate();
    while (form.isLoaded()) {
        std::optional<Action> action = nextAction();
        if (!action) {
            closeAbandoned(form);
            break;
        }
        (*action)(form);
    }
    m_openForms.erase(std::find(m_openForms.begin(), m_openForms.end(), &form));
}

void ScriptedPlatform::closeAbandoned(Form& form)
{
    recordFailure(QStringLiteral("script ended while ") + formDescription(form) + QStringLiteral(" was open"));
    if (!form.unload(UnloadMode::FormControlMenu))
        form.forceUnload();
}

// ---- time

void ScriptedPlatform::sleep(int milliseconds)
{
    m_now = m_now.addMSecs(milliseconds);
    m_slept += milliseconds;
}

void ScriptedPlatform::atYield(int n, std::function<void()> hook)
{
    m_yieldHooks.push_back({m_yields + n, std::move(hook)});
}

void ScriptedPlatform::yield()
{
    ++m_yields;
    std::vector<std::function<void()>> due;
    for (auto it = m_yieldHooks.begin(); it != m_yieldHooks.end();) {
        if (it->at == m_yields) {
            due.push_back(std::move(it->hook));
            it = m_yieldHooks.erase(it);
        } else {
            ++it;
        }
    }
    for (const auto& hook : due)
        hook();
}

// ---- printers, devices, components, documents

void ScriptedPlatform::setDefaultPrinter(const QString& name)
{
    m_defaultPrinter = name;
    if (!name.isEmpty() && !m_printers.contains(name))
        m_printers.append(name);
}

bool ScriptedPlatform::printLines(const QList<PrintedLine>& lines)
{
    if (!m_printingWorks)
        return false;
    m_printJobs.append(lines);
    return true;
}

std::unique_ptr<SerialPort> ScriptedPlatform::serialPort()
{
    return std::make_unique<FakeSerialPort>(m_serialWrites, m_serialWorks);
}

void ScriptedPlatform::registerComponent(const QString& progId, ComponentFactory factory)
{
    m_components[progId.toLower()] = std::move(factory);
}

void ScriptedPlatform::addRecordingComponent(const QString& progId, bool result)
{
    registerComponent(progId,
        [this, progId, result]() { return std::make_unique<RecordingComponent>(progId, m_componentCalls, result); });
}

std::unique_ptr<NamedComponent> ScriptedPlatform::createComponent(const QString& progId)
{
    m_componentsCreated.append(progId);
    const auto found = m_components.find(progId.toLower());
    if (found == m_components.end())
        return nullptr;
    return found->second();
}

bool ScriptedPlatform::openDocument(const QString& path)
{
    m_documents.append(path);
    return m_openDocumentResult;
}

bool ScriptedPlatform::startProgram(const QString& program, const QStringList& arguments, bool wait)
{
    m_programs.push_back({program, arguments, wait});
    return m_startProgramResult;
}

} // namespace marlet
