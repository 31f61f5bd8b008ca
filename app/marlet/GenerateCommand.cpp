#include "GenerateCommand.h"

#include "DatabaseOption.h"
#include "HostOptions.h"
#include "OutputCommands.h"
#include "Secrets.h"

#include "component/Component.h"
#include "issuing/BatchGeneration.h"
#include "issuing/TicketRow.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Operator.h"
#include "platform/TerminalPlatform.h"
#include "store/Connection.h"
#include "store/Recordset.h"
#include "values/HostFlags.h"
#include "values/Numbers.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <unistd.h>

namespace marlet::host {

namespace {

// The terminal platform with the batch's options standing in for the operator: it fills the gate
// and the New tab, presses the button, answers the questions it was told to, and keeps what the
// screens said so that a refusal becomes the command's error.
class BatchDriver : public TerminalPlatform
{
public:
    BatchDriver(const HostOptions& options, QString password, QString secondPassword, QTextStream& in, QTextStream& out)
        : TerminalPlatform(in, out)
        , m_options(options)
        , m_password(std::move(password))
        , m_secondPassword(std::move(secondPassword))
        , m_out(out)
    {
    }

    MsgResult messageBox(const QString& text, int style, const QString& title) override
    {
        if (MsgStyle::icon(style) == MsgStyle::Warning || MsgStyle::icon(style) == MsgStyle::Stop)
            m_lastWarning = text;
        if (text.startsWith(BatchStoppedMessage))
            m_storeFailure = text;
        if (const std::optional<MsgResult> answer = scriptedAnswer(text, style)) {
            m_out << u'[' << title << QStringLiteral("] ") << text << QStringLiteral(" -> ")
                  << (*answer == MsgResult::Yes ? QStringLiteral("Yes") : QStringLiteral("No")) << Qt::endl;
            return *answer;
        }
        return TerminalPlatform::messageBox(text, style, title);
    }

    void showModal(Form& form) override
    {
        if (form.name() == QLatin1String("GenPasstoAccs"))
            passGate(form);
        else if (form.name() == QLatin1String("GenAcc"))
            generate(form);
        else
            TerminalPlatform::showModal(form);
    }

    void sleep(int milliseconds) override
    {
        if (!m_options.flag(QStringLiteral("no-pause")))
            TerminalPlatform::sleep(milliseconds);
    }

    // While the batch runs, a line on the terminal follows the screen's progress bar; when the
    // output goes to a file or a pipe it stays quiet.
    void yield() override
    {
        TerminalPlatform::yield();
        if (!m_progressForm || !m_showProgress)
            return;
        const Control& bar = (*m_progressForm)[QStringLiteral("ProgressBar1")];
        const Control& panel = (*m_progressForm)[QStringLiteral("FProgress")];
        if (!panel.visible() || bar.maximum() <= 0 || bar.value() == m_shownProgress)
            return;
        m_shownProgress = bar.value();
        m_out << QStringLiteral("\rGenerating tickets: %1 of %2").arg(m_shownProgress).arg(bar.maximum()) << Qt::flush;
        m_progressLineOpen = true;
    }

    bool gatePassed() const { return m_gatePassed; }
    const QString& lastWarning() const { return m_lastWarning; }
    // The message of a batch the store cut short; empty when every ticket was stored.
    const QString& storeFailure() const { return m_storeFailure; }
    // The screen's warning about an option's value, with the option; empty when none was refused.
    const QString& refusal() const { return m_refusal; }
    const QStringList& batch() const { return m_batch; }

private:
    // Questions answered from the options: --yes takes the answer that makes the tickets, and the
    // print question takes --print (no preview unless asked for).
    std::optional<MsgResult> scriptedAnswer(const QString& text, int style) const
    {
        if (MsgStyle::buttons(style) != 3 && MsgStyle::buttons(style) != 4)
            return std::nullopt;
        if (text.startsWith(QLatin1String("And Print Preview")) && m_options.value(QStringLiteral("print")).size()) {
            return m_options.value(QStringLiteral("print")) == QLatin1String("yes") ? MsgResult::Yes : MsgResult::No;
        }
        if (!m_options.flag(QStringLiteral("yes")))
            return std::nullopt;
        if (text.startsWith(QLatin1String("And Print Preview")))
            return MsgResult::No;
        if (text.startsWith(QLatin1String("Are you sure you don't want")))
            return MsgResult::No;
        return MsgResult::Yes;
    }

    void fill(Form& form, const char* field, const QString& value)
    {
        if (Control* control = form.find(QLatin1String(field)); control && !value.isEmpty())
            Operator::setText(*control, value);
    }

    void passGate(Form& form)
    {
        form.load();
        form.activate();
        fill(form, "txtPassword1", m_password);
        if (form[QStringLiteral("Frame2")].visible()) {
            fill(form, "txtUsername2", m_options.value(QStringLiteral("second-user")));
            fill(form, "txtPassword2", m_secondPassword);
        }
        if (m_password.isEmpty()) {
            // Nothing given: the operator types the logins on the terminal.
            TerminalPlatform::showModal(form);
            return;
        }
        Operator::click(form[QStringLiteral("cmdOK")]);
        if (form.isLoaded())
            form.forceUnload();
    }

    void generate(Form& form)
    {
        m_gatePassed = true;
        form.load();
        form.activate();
        if (enterFields(form)) {
            chooseTimeFrame(form);
            if (m_options.flag(QStringLiteral("vip")))
                Operator::tick(form[QStringLiteral("chkVIP")], true);
            m_progressForm = &form;
            Operator::click(form[QStringLiteral("cmdGenerate")]);
            m_progressForm = nullptr;
            if (m_progressLineOpen)
                m_out << Qt::endl;
            const GridData& grid = form[QStringLiteral("PrintList")].grid();
            for (int row = 0; row < grid.rows(); ++row)
                m_batch << grid.rowText(row);
        }
        form.forceUnload();
    }

    // The New tab's fields from the options, each left as the operator leaves it. A value the
    // screen repairs with a warning stops the batch before anything is made: a script meant that
    // value, not the repaired one.
    bool enterFields(Form& form)
    {
        const std::pair<const char*, const char*> fields[]
            = {{"cboNumber", "number"}, {"cboHours", "hours"}, {"cboMinutes", "minutes"}, {"cboCost", "cost"}};
        for (const auto& [field, option] : fields) {
            if (!enter(form, field, option))
                return false;
        }
        chooseExpiry(form);
        return enter(form, "txtDays", "days");
    }

    bool enter(Form& form, const char* field, const char* option)
    {
        const QString value = m_options.value(QLatin1String(option));
        Control* control = form.find(QLatin1String(field));
        if (!control || value.isEmpty())
            return true;
        m_lastWarning.clear();
        Operator::focus(*control);
        Operator::setText(*control, value);
        Operator::tabOut(*control);
        if (m_lastWarning.isEmpty())
            return true;
        m_refusal = QStringLiteral("--%1 %2: %3").arg(QLatin1String(option), value, m_lastWarning);
        return false;
    }

    void chooseExpiry(Form& form)
    {
        const QString expiry = m_options.value(QStringLiteral("expiry"));
        const QStringList kinds = {QStringLiteral("fixed"), QStringLiteral("flexible"), QStringLiteral("never")};
        if (kinds.contains(expiry))
            Operator::pick(form[QStringLiteral("cboExpiry")], int(kinds.indexOf(expiry)));
    }

    void chooseTimeFrame(Form& form)
    {
        const QStringList frame = m_options.value(QStringLiteral("time-frame")).split(u'-');
        if (frame.size() == 2) {
            Operator::tick(form[QStringLiteral("chkTimePeriod")], true);
            const QDate day = today();
            form[QStringLiteral("dtStart")].setDateTime(QDateTime(day, QTime::fromString(frame[0], QStringLiteral("H:mm"))));
            form[QStringLiteral("dtEnd")].setDateTime(QDateTime(day, QTime::fromString(frame[1], QStringLiteral("H:mm"))));
        }
        if (m_options.flag(QStringLiteral("once")))
            Operator::tick(form[QStringLiteral("chkOnce")], true);
    }

    const HostOptions& m_options;
    const QString m_password;
    const QString m_secondPassword;
    QTextStream& m_out;
    const bool m_showProgress = isatty(STDOUT_FILENO) == 1;
    Form* m_progressForm = nullptr;
    int m_shownProgress = -1;
    bool m_progressLineOpen = false;
    bool m_gatePassed = false;
    QString m_lastWarning;
    QString m_refusal;
    QString m_storeFailure;
    QStringList m_batch;
};

void printLine(const QString& line, QTextStream& out)
{
    const int widths[] = {5, 14, 12, 10, 14, 12, 12};
    const QStringList cells = line.split(u'\t');
    QString row;
    for (int col = 0; col < 7 && col < cells.size(); ++col)
        row += cells[col].leftJustified(widths[col]) + u' ';
    out << row.trimmed() << Qt::endl;
}

// The group of a batch: column 4 of the grid's first ticket line.
QString batchGroup(const QStringList& gridLines)
{
    return gridLines.value(1).section(u'\t', 4, 4);
}

// The batch as stored, passwords included: the screen's grid may hide them, the printout may not.
bool printBatch(const QString& connectionString, const QStringList& gridLines, QTextStream& out, QTextStream& err)
{
    const QString group = batchGroup(gridLines);
    Connection connection;
    Recordset tickets;
    if (!connection.Open(connectionString)
        || !tickets.Open(Statement(QStringLiteral("Select * From Account where TicketGrp = '{}' order by TicketNo"), {group}),
                         connection)) {
        err << "marlet generate: the batch was made but cannot be read back: " << connection.lastError()
            << tickets.lastError() << "; list it on the generate screen (marlet load-gen-acc)" << Qt::endl;
        return false;
    }
    printLine(gridLines.first(), out);
    for (long row = 1; !tickets.Eof(); tickets.MoveNext(), ++row)
        printLine(ticketRowLine(QString::number(row), ticketRowFields(tickets), false), out);
    return true;
}

// What the screen lets a person type but a script must not ask for: a batch of no tickets, time or
// days below zero, a time frame that is no time frame. Empty when the options are fine.
QString optionProblem(const HostOptions& options)
{
    const auto below = [&](const char* option, double least) {
        const QString text = options.value(QLatin1String(option));
        return values::isNumeric(text) && values::leadingNumber(text) < least;
    };
    if (below("number", 1))
        return QStringLiteral("--number takes 1 to 999 tickets, not \"%1\"")
            .arg(options.value(QStringLiteral("number")));
    for (const char* option : {"minutes", "days"}) {
        if (below(option, 0))
            return QStringLiteral("--%1 cannot be negative").arg(QLatin1String(option));
    }
    const QString frame = options.value(QStringLiteral("time-frame"));
    static const QRegularExpression framePattern(
        QStringLiteral("^([01]?\\d|2[0-3]):[0-5]\\d-([01]?\\d|2[0-3]):[0-5]\\d$"));
    if (!frame.isEmpty() && !framePattern.match(frame).hasMatch())
        return QStringLiteral("--time-frame takes HH:mm-HH:mm, e.g. 18:00-23:30, not \"%1\"").arg(frame);
    return {};
}

} // namespace

int runGenerate(const HostOptions& options, QTextStream& out, QTextStream& err)
{
    if (const QString problem = optionProblem(options); !problem.isEmpty()) {
        err << "marlet generate: " << problem << "; nothing was made" << Qt::endl;
        return 2;
    }
    const QString user = options.value(QStringLiteral("user"), QStringLiteral("ADMINISTRATOR"));
    QString password;
    QString secondPassword;
    QString error;
    if (!readSecret(options, StaffPassword, password, error)
        || !readSecret(options, SecondPassword, secondPassword, error)) {
        err << "marlet generate: " << error << Qt::endl;
        return 2;
    }
    if (password.isEmpty())
        password = promptSecret(QStringLiteral("Password for %1: ").arg(user));
    QTextStream in(stdin);
    BatchDriver driver(options, password, secondPassword, in, out);
    Component component(driver, options.value(QStringLiteral("prefs")), options.value(QStringLiteral("app-dir")));
    component.timerDll().LoadGenAcc(databaseOf(options),
        options.value(QStringLiteral("app"), QStringLiteral("Norvantis")),
        user,
        flag(options.flag(QStringLiteral("power"))),
        options.value(QStringLiteral("path")));
    if (const QString unsaved = component.preferences().lastError(); !unsaved.isEmpty())
        err << "marlet generate: warning: " << unsaved << Qt::endl;
    if (!driver.gatePassed()) {
        err << "marlet generate: the password gate refused"
            << (driver.lastWarning().isEmpty() ? QString() : QStringLiteral(": ") + driver.lastWarning())
            << "; check --user and --password (and --second-user, --second-password where two are required)"
            << Qt::endl;
        return 1;
    }
    if (!driver.refusal().isEmpty()) {
        err << "marlet generate: " << driver.refusal() << "; nothing was made, give another value" << Qt::endl;
        return 1;
    }
    if (driver.batch().size() < 2) {
        err << "marlet generate: no tickets were made"
            << (driver.lastWarning().isEmpty() ? QString() : QStringLiteral(": ") + driver.lastWarning())
            << "; change the options and run it again (`marlet generate --help` lists them)" << Qt::endl;
        return 1;
    }
    const bool printed = printBatch(databaseOf(options), driver.batch(), out, err);
    if (!driver.storeFailure().isEmpty()) {
        err << "marlet generate: " << driver.storeFailure() << " Free the database (space, lock, permissions) and run "
            << "the rest of the batch again." << Qt::endl;
        return 1;
    }
    if (const QString file = options.value(QStringLiteral("export")); !file.isEmpty()) {
        QString error;
        if (!exportGroup(databaseOf(options), batchGroup(driver.batch()), file, error)) {
            err << "marlet generate: the batch was made but not exported: " << error
                << "; export it with marlet export --group " << batchGroup(driver.batch()) << Qt::endl;
            return 1;
        }
        out << "Batch written to " << file << Qt::endl;
    }
    return printed ? 0 : 1;
}

} // namespace marlet::host
