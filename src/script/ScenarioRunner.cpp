#include "script/ScenarioRunner.h"

#include "platform/Control.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Operator.h"
#include "script/ControlProperties.h"
#include "settings/SettingsLine.h"
#include "settings/TidyComponent.h"
#include "store/Preferences.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace marlet {

namespace {

QString indented(const QStringList& lines)
{
    QStringList shown;
    for (const QString& line : lines)
        shown << QStringLiteral("  ") + ScriptedPlatform::visible(line);
    return shown.join(u'\n');
}

QString rowCount(qsizetype n)
{
    return QString::number(n) + (n == 1 ? QStringLiteral(" row") : QStringLiteral(" rows"));
}

std::optional<MsgResult> answerFromName(const QString& name)
{
    static const QHash<QString, MsgResult> answers = {
        {QStringLiteral("ok"), MsgResult::Ok},
        {QStringLiteral("cancel"), MsgResult::Cancel},
        {QStringLiteral("abort"), MsgResult::Abort},
        {QStringLiteral("retry"), MsgResult::Retry},
        {QStringLiteral("ignore"), MsgResult::Ignore},
        {QStringLiteral("yes"), MsgResult::Yes},
        {QStringLiteral("no"), MsgResult::No},
    };
    if (!answers.contains(name))
        return std::nullopt;
    return answers.value(name);
}

// A key as the script names it: Enter, Tab, Escape, Backspace, one character, or a code.
int keyCode(const QString& key)
{
    static const QHash<QString, int> names = {
        {QStringLiteral("enter"), Key::Enter},
        {QStringLiteral("tab"), Key::Tab},
        {QStringLiteral("escape"), Key::Escape},
        {QStringLiteral("backspace"), Key::Backspace},
    };
    if (key.size() == 1)
        return key[0].unicode();
    return names.value(key.toLower(), key.toInt());
}

bool takesText(const Control& control)
{
    return control.kind() == ControlKind::TextBox || (control.kind() == ControlKind::ComboBox && control.editable());
}

QString describe(const Control& control)
{
    return control.key() + QStringLiteral(" (") + controlKindName(control.kind()) + u')';
}

} // namespace

ScenarioRunner::ScenarioRunner(ScenarioScript script, const ScenarioOperations& operations, QTextStream& out)
    : m_script(std::move(script))
    , m_operations(operations)
    , m_out(out)
{
}

ScenarioRunner::~ScenarioRunner() = default;

int ScenarioRunner::run()
{
    QStringList errors = m_script.errors + unknownOperations();
    if (!m_workFolder.isValid())
        errors << m_script.fileName + QStringLiteral(": cannot create a temporary folder: ")
                + m_workFolder.errorString();
    if (!errors.isEmpty()) {
        m_out << errors.join(u'\n') << '\n' << m_script.fileName << ": not run\n";
        m_out.flush();
        return 2;
    }
    m_preferences = std::make_unique<Preferences>(QDir(machineFolder()).filePath(QStringLiteral("prefs")));
    m_platform.setActionSource([this]() -> std::optional<ScriptedPlatform::Action> {
        const ScenarioCommand* command = nextCommand();
        if (!command)
            return std::nullopt;
        return [this, command](Form&) { perform(*command); };
    });
    while (const ScenarioCommand* command = nextCommand())
        perform(*command);
    m_platform.setContext(m_script.fileName + QStringLiteral(": at the end of the script"));
    m_platform.finish();
    reportNewFailures();
    const qsizetype failed = failures().size();
    m_out << m_script.fileName << (failed == 0 ? QStringLiteral(": passed, ") : QStringLiteral(": FAILED, "))
          << m_script.commands.size() << " commands, " << failed << " failure(s)\n";
    m_out.flush();
    return failed == 0 ? 0 : 1;
}

const ScenarioCommand* ScenarioRunner::nextCommand()
{
    if (m_next >= m_script.commands.size())
        return nullptr;
    return &m_script.commands[m_next++];
}

void ScenarioRunner::perform(const ScenarioCommand& command)
{
    m_platform.setContext(location(command));
    execute(command);
    reportNewFailures();
}

void ScenarioRunner::reportNewFailures()
{
    for (; m_reported < failures().size(); ++m_reported)
        m_out << failures().at(m_reported) << '\n';
    m_out.flush();
}

QString ScenarioRunner::location(const ScenarioCommand& command) const
{
    return m_script.fileName + u':' + QString::number(command.line) + QStringLiteral(": ") + command.source;
}

QStringList ScenarioRunner::unknownOperations() const
{
    QStringList errors;
    for (const ScenarioCommand& command : m_script.commands) {
        if (command.id == CommandId::Open && !m_operations.find(command.arg(QStringLiteral("operation")))) {
            errors << location(command) + QStringLiteral("\n  unknown operation; known: ")
                    + m_operations.names().join(QStringLiteral(", "));
        }
    }
    return errors;
}

// ---- dispatch

void ScenarioRunner::execute(const ScenarioCommand& command)
{
    switch (command.id) {
    case CommandId::Clock:
    case CommandId::ClockAdvance:
    case CommandId::DatabaseNew:
    case CommandId::MachineNew:
    case CommandId::Sql:
    case CommandId::Pref:
    case CommandId::Printer:
    case CommandId::Component:
    case CommandId::SerialPorts:
    case CommandId::File:
    case CommandId::Clipboard:
    case CommandId::ProgramsFail:
    case CommandId::WriteFile:
        return executeSetup(command);
    case CommandId::ExpectMessage:
    case CommandId::ExpectInput:
    case CommandId::ExpectMenu:
    case CommandId::ExpectFile:
    case CommandId::ExpectColor:
        return executeExpectation(command);
    case CommandId::Open:
        return openOperation(command);
    case CommandId::AtYield:
        return atYield(command);
    case CommandId::Close:
        return closeForm(command);
    case CommandId::CheckControl:
    case CommandId::CheckForm:
    case CommandId::CheckFocus:
    case CommandId::CheckMessages:
    case CommandId::CheckNoPending:
    case CommandId::CheckCount:
    case CommandId::CheckLog:
    case CommandId::CheckRows:
    case CommandId::CheckPref:
    case CommandId::CheckFiles:
    case CommandId::CheckFile:
        return executeCheck(command);
    default:
        return executeAction(command);
    }
}

void ScenarioRunner::executeSetup(const ScenarioCommand& command)
{
    auto arg = [&command](const char* name) { return command.arg(QLatin1String(name)); };
    switch (command.id) {
    case CommandId::Clock:
        m_platform.setNow(QDateTime(QDate::fromString(arg("date"), QStringLiteral("yyyy-MM-dd")),
            QTime::fromString(
                arg("time"), arg("time").size() == 5 ? QStringLiteral("HH:mm") : QStringLiteral("HH:mm:ss"))));
        break;
    case CommandId::ClockAdvance:
        m_platform.advance(command.intArg(QStringLiteral("ms")));
        break;
    case CommandId::DatabaseNew:
        newDatabase();
        break;
    case CommandId::MachineNew:
        newMachine();
        break;
    case CommandId::Sql:
        runStatement(arg("statement"));
        break;
    case CommandId::Pref:
        m_preferences->SaveSetting(arg("application"), arg("section"), arg("key"), arg("value"));
        break;
    case CommandId::WriteFile:
        writeFile(command);
        break;
    case CommandId::Printer:
        m_platform.setDefaultPrinter(arg("name"));
        break;
    case CommandId::Component:
        if (command.has(QStringLiteral("built-in")))
            addBuiltInComponent(arg("progid"));
        else
            m_platform.addRecordingComponent(arg("progid"), !command.has(QStringLiteral("fails")));
        break;
    case CommandId::SerialPorts:
        m_platform.setSerialPortWorks(arg("state") == QLatin1String("work"));
        break;
    case CommandId::File:
        makeFile(inRun(arg("path")), command.intArg(QStringLiteral("bytes")));
        break;
    case CommandId::Clipboard:
        m_platform.setClipboardImage(QByteArray(command.intArg(QStringLiteral("bytes")), 'P'));
        break;
    case CommandId::ProgramsFail:
        m_platform.setStartProgramResult(false);
        break;
    default:
        break;
    }
}

void ScenarioRunner::executeExpectation(const ScenarioCommand& command)
{
    auto optional = [&command](const char* name) -> std::optional<QString> {
        if (!command.has(QLatin1String(name)))
            return std::nullopt;
        return command.arg(QLatin1String(name));
    };
    const QString origin = m_script.fileName + u':' + QString::number(command.line);
    switch (command.id) {
    case CommandId::ExpectMessage: {
        ScriptedPlatform::ExpectedMessage expected;
        expected.text = inRun(command.arg(QStringLiteral("text")));
        expected.style = command.intArg(QStringLiteral("style"));
        expected.title = optional("title").value_or(MessageTitle());
        expected.answer = answerFromName(command.arg(QStringLiteral("answer")));
        expected.origin = origin;
        m_platform.expectMessage(std::move(expected));
        break;
    }
    case CommandId::ExpectInput:
        m_platform.expectInput({command.arg(QStringLiteral("answer")),
            optional("prompt"),
            optional("title"),
            optional("default"),
            origin});
        break;
    case CommandId::ExpectMenu:
        m_platform.expectMenu({optional("item"), origin});
        break;
    case CommandId::ExpectFile: {
        std::optional<QString> path = optional("path");
        if (path)
            path = inRun(*path);
        m_platform.expectFileDialog(path, origin);
        break;
    }
    case CommandId::ExpectColor:
        m_platform.expectColorDialog(command.has(QStringLiteral("color"))
                ? std::optional<int>(command.intArg(QStringLiteral("color")))
                : std::nullopt,
            origin);
        break;
    default:
        break;
    }
}

// ---- set-up

void ScenarioRunner::newDatabase()
{
    m_database.reset();
    QString error;
    m_database = m_operations.databaseFactory()({machineFolder(), [this] { return m_platform.now(); }}, error);
    if (!m_database)
        fail(QStringLiteral("cannot create the database: ") + error);
}

// Another machine: a preference store of its own, empty, and no database until "database new". The
// run's folder and the files in it (the application folder among them) stay as they are.
void ScenarioRunner::newMachine()
{
    ++m_machine;
    m_database.reset();
    if (!QDir().mkpath(machineFolder()))
        fail(QStringLiteral("cannot create the folder of the new machine"));
    m_preferences = std::make_unique<Preferences>(QDir(machineFolder()).filePath(QStringLiteral("prefs")));
}

QString ScenarioRunner::machineFolder() const
{
    return m_machine == 1 ? m_workFolder.path()
                          : QDir(m_workFolder.path()).filePath(QStringLiteral("machine%1").arg(m_machine));
}

void ScenarioRunner::runStatement(const QString& statement)
{
    if (!m_database)
        return fail(QStringLiteral("there is no database: write \"database new\" first"));
    const QString error = m_database->execute(statement);
    if (!error.isEmpty())
        fail(QStringLiteral("the statement failed: ") + error);
}

QString ScenarioRunner::inRun(const QString& text) const
{
    return QString(text).replace(QLatin1String("<run>"), m_workFolder.path());
}

void ScenarioRunner::addBuiltInComponent(const QString& progId)
{
    if (progId.compare(TidyComponent::ProgId, Qt::CaseInsensitive) != 0)
        return fail(QStringLiteral("there is no built-in component ") + progId);
    const QString preferencesFolder = QFileInfo(m_preferences->filePath()).absolutePath();
    const QString backupFolder = m_workFolder.path();
    m_platform.registerComponent(progId, [this, preferencesFolder, backupFolder]() -> std::unique_ptr<NamedComponent> {
        return std::make_unique<TidyComponent>(m_platform, preferencesFolder, backupFolder);
    });
}

void ScenarioRunner::openOperation(const ScenarioCommand& command)
{
    const ScenarioOperation* operation = m_operations.find(command.arg(QStringLiteral("operation")));
    ScenarioContext context {m_platform,
        *m_preferences,
        m_workFolder.path(),
        m_database ? m_database->connectionString() : QString(),
        m_database.get()};
    QStringList arguments;
    for (const QString& argument : command.rest)
        arguments << inRun(argument);
    (*operation)(context, ScenarioArguments(arguments));
}

void ScenarioRunner::atYield(const ScenarioCommand& command)
{
    const QString where = location(command);
    std::shared_ptr<const ScenarioCommand> inner = command.inner;
    m_platform.atYield(command.intArg(QStringLiteral("n")), [this, where, inner] {
        const QString context = m_platform.context();
        m_platform.setContext(where);
        execute(*inner);
        m_platform.setContext(context);
    });
}

// ---- the operator's actions

Form* ScenarioRunner::topForm()
{
    Form* form = m_platform.topForm();
    if (!form)
        fail(QStringLiteral("no form is open"));
    return form;
}

Control* ScenarioRunner::findControl(const QString& key)
{
    Form* form = topForm();
    if (!form)
        return nullptr;
    Control* control = form->find(key);
    if (!control)
        fail(form->name() + QStringLiteral(" has no control ") + ScriptedPlatform::visible(key));
    return control;
}

bool ScenarioRunner::requireKind(const Control& control, std::initializer_list<ControlKind> kinds)
{
    if (std::find(kinds.begin(), kinds.end(), control.kind()) != kinds.end())
        return true;
    fail(describe(control) + QStringLiteral(" cannot do that"));
    return false;
}

void ScenarioRunner::executeAction(const ScenarioCommand& command)
{
    Control* control = findControl(command.arg(QStringLiteral("control")));
    if (!control)
        return;
    if (!control->canFocus())
        return fail(describe(*control) + QStringLiteral(" is disabled or hidden"));
    switch (command.id) {
    case CommandId::Type:
    case CommandId::Set:
    case CommandId::Press:
    case CommandId::TabOut:
    case CommandId::Focus:
        return keyboardAction(command, *control);
    case CommandId::Click:
        Operator::click(*control);
        break;
    case CommandId::Pick:
        return pickEntry(command, *control);
    case CommandId::Tick:
    case CommandId::Untick:
        if (requireKind(*control, {ControlKind::CheckBox}))
            Operator::tick(*control, command.id == CommandId::Tick);
        break;
    case CommandId::ChooseTab:
        return chooseTab(command, *control);
    case CommandId::Slide:
        if (requireKind(*control, {ControlKind::Slider}))
            Operator::slide(*control, command.intArg(QStringLiteral("value")));
        break;
    case CommandId::DropDown:
        if (requireKind(*control, {ControlKind::ComboBox}))
            Operator::dropDown(*control);
        break;
    case CommandId::GridClick:
        return clickGrid(command, *control);
    default:
        break;
    }
}

void ScenarioRunner::keyboardAction(const ScenarioCommand& command, Control& control)
{
    if (command.id == CommandId::Set && control.kind() == ControlKind::DateTimePicker)
        return setDateTime(control, command.arg(QStringLiteral("text")));
    if ((command.id == CommandId::Type || command.id == CommandId::Set) && !takesText(control))
        return fail(describe(control) + QStringLiteral(" takes no text"));
    if (!Operator::focus(control))
        return fail(describe(control) + QStringLiteral(" cannot take the focus"));
    switch (command.id) {
    case CommandId::Type:
        Operator::type(control, command.arg(QStringLiteral("text")));
        break;
    case CommandId::Set:
        Operator::setText(control, command.arg(QStringLiteral("text")));
        break;
    case CommandId::Press:
        Operator::pressKey(control, keyCode(command.arg(QStringLiteral("key"))));
        break;
    case CommandId::TabOut:
        if (!Operator::tabOut(control))
            fail(QStringLiteral("no other control can take the focus"));
        break;
    default:
        break;
    }
}

void ScenarioRunner::pickEntry(const ScenarioCommand& command, Control& list)
{
    if (!requireKind(list, {ControlKind::ComboBox, ControlKind::ListBox}))
        return;
    if (command.has(QStringLiteral("index"))) {
        const int index = command.intArg(QStringLiteral("index"));
        if (!Operator::pick(list, index))
            fail(list.key() + QStringLiteral(" has no entry #") + QString::number(index) + QStringLiteral(" (it has ")
                + QString::number(list.listCount()) + QStringLiteral(", counted from 0)"));
        return;
    }
    if (!Operator::pick(list, command.arg(QStringLiteral("item"))))
        fail(list.key() + QStringLiteral(" has no entry ")
            + ScriptedPlatform::visible(command.arg(QStringLiteral("item"))) + QStringLiteral("; its entries:\n")
            + indented(list.items()));
}

void ScenarioRunner::chooseTab(const ScenarioCommand& command, Control& strip)
{
    if (!requireKind(strip, {ControlKind::TabStrip}))
        return;
    const int tab = command.intArg(QStringLiteral("tab"));
    if (tab < 1 || tab > strip.listCount())
        return fail(strip.key() + QStringLiteral(" has no tab ") + QString::number(tab) + QStringLiteral(" (it has ")
            + QString::number(strip.listCount()) + QStringLiteral(", counted from 1)"));
    const bool chosen = Operator::chooseTab(strip, tab);
    const bool refusalExpected = command.has(QStringLiteral("refused"));
    if (chosen && refusalExpected)
        fail(strip.key() + QStringLiteral(" took tab ") + QString::number(tab)
            + QStringLiteral(", but it was expected to refuse"));
    else if (!chosen && !refusalExpected)
        fail(strip.key() + QStringLiteral(" refused tab ") + QString::number(tab));
}

void ScenarioRunner::clickGrid(const ScenarioCommand& command, Control& grid)
{
    if (!requireKind(grid, {ControlKind::Grid}))
        return;
    const int row = command.intArg(QStringLiteral("row"));
    const int col = command.has(QStringLiteral("col")) ? command.intArg(QStringLiteral("col")) : grid.grid().col();
    if (row < 0 || row >= grid.grid().rows() || col < 0 || col >= grid.grid().cols())
        return fail(grid.key() + QStringLiteral(" has no cell (") + QString::number(row) + u',' + QString::number(col)
            + QStringLiteral("): it has ") + rowCount(grid.grid().rows()) + QStringLiteral(" and ")
            + QString::number(grid.grid().cols()) + QStringLiteral(" columns"));
    const bool right = command.arg(QStringLiteral("button")) == QLatin1String("right-click");
    Operator::clickGrid(grid, row, col, right ? MouseButton::Right : MouseButton::Left);
}

void ScenarioRunner::closeForm(const ScenarioCommand& command)
{
    Form* form = topForm();
    if (!form)
        return;
    const bool closed = Operator::closeWindow(*form);
    const bool refusalExpected = command.has(QStringLiteral("refused"));
    if (closed && refusalExpected)
        fail(form->name() + QStringLiteral(" closed, but it was expected to refuse"));
    else if (!closed && !refusalExpected)
        fail(form->name() + QStringLiteral(" refused to close"));
}

// ---- checks

void ScenarioRunner::executeCheck(const ScenarioCommand& command)
{
    const QString expected = command.arg(QStringLiteral("expected"));
    switch (command.id) {
    case CommandId::CheckControl:
        if (Control* control = findControl(command.arg(QStringLiteral("control")))) {
            const PropertyValue read = readControlProperty(*control, command.arg(QStringLiteral("property")));
            if (read.error.isEmpty())
                compare(expected, read.value);
            else
                fail(read.error);
        }
        break;
    case CommandId::CheckForm:
        if (Form* form = topForm())
            compare(expected, readFormProperty(*form, command.arg(QStringLiteral("property"))).value);
        break;
    case CommandId::CheckFocus:
        return checkFocus(command);
    case CommandId::CheckMessages: {
        QStringList shown;
        for (const auto& message : m_platform.messages())
            shown << message.text;
        if (shown.size() != command.intArg(QStringLiteral("count")))
            fail(QStringLiteral("expected ") + command.arg(QStringLiteral("count")) + QStringLiteral(" messages, ")
                + QString::number(shown.size()) + QStringLiteral(" were shown:\n") + indented(shown));
        break;
    }
    case CommandId::CheckNoPending:
        if (m_platform.pendingExpectations() > 0)
            fail(QString::number(m_platform.pendingExpectations())
                + QStringLiteral(" expected dialogs have not been shown yet"));
        break;
    case CommandId::CheckCount:
        compare(command.arg(QStringLiteral("count")),
            QString::number(command.arg(QStringLiteral("what")) == QLatin1String("slept")
                    ? m_platform.sleptMilliseconds()
                    : m_platform.yieldCount()));
        break;
    case CommandId::CheckLog:
        compareRows(command.block, logRows(command.arg(QStringLiteral("log"))));
        break;
    case CommandId::CheckFiles:
        compareRows(command.block, fileRows(inRun(command.arg(QStringLiteral("folder")))));
        break;
    case CommandId::CheckRows:
        return checkRows(command);
    case CommandId::CheckFile:
        return checkFile(command);
    case CommandId::CheckPref:
        compare(expected,
            m_preferences->GetSetting(command.arg(QStringLiteral("application")),
                command.arg(QStringLiteral("section")),
                command.arg(QStringLiteral("key")),
                QString()));
        break;
    default:
        break;
    }
}

void ScenarioRunner::checkFocus(const ScenarioCommand& command)
{
    Control* expected = findControl(command.arg(QStringLiteral("control")));
    if (!expected)
        return;
    const Control* focused = expected->form().focused();
    if (focused != expected)
        fail(QStringLiteral("the focus is on ") + (focused ? focused->key() : QStringLiteral("no control"))
            + QStringLiteral(", expected on ") + expected->key());
}

void ScenarioRunner::checkRows(const ScenarioCommand& command)
{
    if (!m_database)
        return fail(QStringLiteral("there is no database: write \"database new\" first"));
    QString error;
    const QStringList rows = m_database->query(command.arg(QStringLiteral("query")), error);
    if (!error.isEmpty())
        return fail(QStringLiteral("the query failed: ") + error);
    compareRows(command.block, rows);
}

// A text file of lines ending in CR LF; "records" scrambles each line as the settings file does.
void ScenarioRunner::writeFile(const ScenarioCommand& command)
{
    const bool records = command.arg(QStringLiteral("form")) == QLatin1String("records");
    QByteArray content;
    for (const QString& line : command.block)
        content += (records ? ScrambleLine(line) : line).toLatin1() + "\r\n";
    QFile file(inRun(command.arg(QStringLiteral("path"))));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        fail(QStringLiteral("cannot write the file: ") + file.errorString());
}

// The lines of a file, those from a line on, or one line (counted from 0); "records" unscrambles
// each, a line that is not scrambled text showing as "garbled: " and the line.
void ScenarioRunner::checkFile(const ScenarioCommand& command)
{
    const QString path = inRun(command.arg(QStringLiteral("path")));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("cannot read the file ") + path + QStringLiteral(": ") + file.errorString());
    const bool records = command.arg(QStringLiteral("form")) == QLatin1String("records");
    QStringList lines = QString::fromLatin1(file.readAll()).split(u'\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    for (QString& line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (records)
            line = UnscrambleLine(line).value_or(QStringLiteral("garbled: ") + line);
    }
    if (command.has(QStringLiteral("line")))
        lines = lines.mid(command.intArg(QStringLiteral("line")), 1);
    compareRows(command.block, lines.mid(command.intArg(QStringLiteral("from"))));
}

QStringList ScenarioRunner::logRows(const QString& log) const
{
    QStringList rows;
    if (log == QLatin1String("forms"))
        return m_platform.formsShown();
    if (log == QLatin1String("documents")) {
        // Documents are written in the run's temporary folder, whose name changes with every run.
        for (const QString& path : m_platform.documentsOpened())
            rows << QString(path).replace(m_workFolder.path(), QStringLiteral("<run>"));
        return rows;
    }
    if (log == QLatin1String("calls")) {
        for (const auto& call : m_platform.componentCalls()) {
            QStringList cells {call.progId, call.operation};
            if (call.connection)
                cells << QStringLiteral("connection");
            for (const QVariant& argument : call.arguments)
                cells << argument.toString();
            rows << cells.join(QStringLiteral(" | "));
        }
    } else if (log == QLatin1String("programs")) {
        for (const auto& start : m_platform.programsStarted())
            rows << QString((QStringList {start.wait ? QStringLiteral("wait") : QStringLiteral("start"), start.program}
                                + start.arguments)
                                .join(QStringLiteral(" | ")))
                        .replace(m_workFolder.path(), QStringLiteral("<run>"));
    } else if (log == QLatin1String("printed")) {
        for (const QList<PrintedLine>& job : m_platform.printJobs()) {
            for (const PrintedLine& line : job)
                rows << line.text;
        }
    } else if (log == QLatin1String("scanners")) {
        for (int i = 0; i < m_platform.imageSourceChoices(); ++i)
            rows << QStringLiteral("select image source");
    } else if (log == QLatin1String("serial")) {
        for (const auto& write : m_platform.serialWrites())
            rows << write.port + QStringLiteral(" | ") + QString::number(write.baud) + QStringLiteral(" | ")
                    + QString::fromLatin1(write.data);
    }
    return rows;
}

// A picker takes a date, "yyyy-MM-dd", or a date and time, "yyyy-MM-dd HH:mm:ss", as a person picks it.
void ScenarioRunner::setDateTime(Control& control, const QString& text)
{
    QDateTime value = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    if (!value.isValid())
        value = QDateTime(QDate::fromString(text, QStringLiteral("yyyy-MM-dd")), QTime(0, 0));
    if (!value.isValid())
        return fail(ScriptedPlatform::visible(text) + QStringLiteral(" is no date (yyyy-MM-dd [HH:mm:ss])"));
    if (!Operator::focus(control))
        return fail(describe(control) + QStringLiteral(" cannot take the focus"));
    control.setDateTime(value);
}

void ScenarioRunner::makeFile(const QString& path, int bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(QByteArray(bytes, 'F')) != bytes)
        fail(QStringLiteral("cannot write ") + path + QStringLiteral(": ") + file.errorString());
}

QStringList ScenarioRunner::fileRows(const QString& folder) const
{
    QStringList rows;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& file : files)
        rows << file.fileName() + QStringLiteral(" | ") + QString::number(file.size());
    return rows;
}

void ScenarioRunner::compare(const QString& expected, const QString& actual)
{
    if (expected != actual)
        fail(ScriptedPlatform::describeDifference(expected, actual));
}

void ScenarioRunner::compareRows(const QStringList& expected, const QStringList& actual)
{
    if (expected == actual)
        return;
    if (expected.size() != actual.size()) {
        return fail(QStringLiteral("expected ") + rowCount(expected.size()) + QStringLiteral(":\n") + indented(expected)
            + QStringLiteral("\nactual ") + rowCount(actual.size()) + QStringLiteral(":\n") + indented(actual));
    }
    QStringList differences;
    for (qsizetype i = 0; i < expected.size(); ++i) {
        if (expected[i] != actual[i])
            differences << QStringLiteral("row ") + QString::number(i + 1) + QStringLiteral(":\n")
                    + ScriptedPlatform::describeDifference(expected[i], actual[i]);
    }
    fail(differences.join(u'\n'));
}

// ---- entry points

int runScenarioText(
    const QString& source, const QString& fileName, QTextStream& out, const ScenarioOperations& operations)
{
    ScenarioRunner runner(parseScenario(source, fileName), operations, out);
    return runner.run();
}

int runScenarioFile(const QString& path, QTextStream& out, const ScenarioOperations& operations)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        out << path << ": cannot read: " << file.errorString() << '\n';
        out.flush();
        return 2;
    }
    return runScenarioText(QString::fromUtf8(file.readAll()), path, out, operations);
}

} // namespace marlet
