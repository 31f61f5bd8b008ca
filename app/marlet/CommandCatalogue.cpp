#include "CommandCatalogue.h"

#include <algorithm>

namespace marlet::host {

namespace {

OptionSpec value(const char* name, const char* valueName, const char* help, QStringList accepted = {})
{
    return {QLatin1String(name), QLatin1String(valueName), QLatin1String(help), std::move(accepted)};
}

OptionSpec flagOption(const char* name, const char* help)
{
    return {QLatin1String(name), {}, QLatin1String(help), {}};
}

const OptionSpec db = value("db",
    "CN",
    "the database: sqlite:PATH, a bare PATH, Data Source=PATH, or a PostgreSQL server as postgresql://USER@HOST/DB "
    "or host=... dbname=... (else $MARLET_DB, else cafe.db in the data folder)");
const OptionSpec app = value("app", "TITLE", "the host's title in message boxes (default Norvantis)");
const OptionSpec user = value("user", "NAME", "the staff member at the counter");
const OptionSpec power = flagOption("power", "the host runs with administrator power");
const OptionSpec path = value("path", "DIR", "the server folder (member pictures live below it)");
const OptionSpec prefs = value("prefs", "DIR", "folder of preferences.ini (else $MARLET_PREFS, else ~/.config/marlet)");
const OptionSpec appDir = value("app-dir", "DIR", "the data folder (else $MARLET_APP_DIR, else ~/.local/share/marlet)");
const OptionSpec headless = flagOption("headless", "use the terminal even when a display is present");

QList<OptionSpec> screenOptions(QList<OptionSpec> own)
{
    own << prefs << appDir << headless;
    return own;
}

CommandSpec generateScreen(const char* name, const char* summary)
{
    return {QLatin1String(name), QLatin1String(summary), {}, screenOptions({db, app, user, power, path})};
}

QList<CommandSpec> makeCommands()
{
    return {
        generateScreen("load-gen-acc", "the generate screen behind the password gate"),
        generateScreen("load-auto-gen", "the same as load-gen-acc"),
        generateScreen("load-gen-ac", "the generate screen without the password gate; the connection stays open"),
        {QStringLiteral("load-options"),
            QStringLiteral("the settings screen"),
            {},
            screenOptions({db,
                app,
                user,
                power,
                value("max", "N", "the number of computers the licence allows (default 5)"),
                value("ports", "P", "the server's ports"),
                value("port-name", "NAME", "the server's port name"),
                flagOption("hide-account", "leave the User Account tab out")})},
        {QStringLiteral("load-account-info"),
            QStringLiteral("the ticket information screen"),
            {},
            screenOptions({db, app, value("ticket", "NAME", "the ticket to show")})},
        {QStringLiteral("load-recycle-bin"), QStringLiteral("the recycle bin"), {}, screenOptions({db, app})},
        {QStringLiteral("init"),
            QStringLiteral("create a new database with its ADMINISTRATOR account"),
            {},
            {value("db",
                 "PATH",
                 "the new database: a file, or an empty PostgreSQL database as postgresql://USER@HOST/DB "
                 "(else $MARLET_DB, else cafe.db in the data folder)"),
                value("admin-password", "PW", "the ADMINISTRATOR's password (else one is made and shown once)"),
                value("admin-password-file", "FILE", "the ADMINISTRATOR's password from the first line of a file"),
                flagOption(
                    "admin-password-stdin", "the ADMINISTRATOR's password from the first line of standard input"),
                flagOption("force", "replace an existing database"),
                appDir}},
        {QStringLiteral("script"),
            QStringLiteral("run a scenario script (see docs/scenarios.md)"),
            QStringLiteral("FILE"),
            {}},
        {QStringLiteral("generate"),
            QStringLiteral("make one batch of tickets and print it; unanswered questions are asked on the terminal"),
            {},
            {db,
                app,
                value("user", "NAME", "the staff member making the batch (default ADMINISTRATOR)"),
                power,
                path,
                value("password",
                    "PW",
                    "the staff member's password; other users see it in the process list, so prefer:"),
                value("password-file", "FILE", "the password from the first line of a file"),
                flagOption("password-stdin", "the password from the first line of standard input"),
                value("number", "N", "how many tickets"),
                value("hours", "H", "the time on each ticket, hours"),
                value("minutes", "M", "the time on each ticket, minutes"),
                value("cost", "C", "the price of each ticket"),
                value("expiry",
                    "KIND",
                    "when the tickets expire",
                    {QStringLiteral("fixed"), QStringLiteral("flexible"), QStringLiteral("never")}),
                value("days", "D", "days until the tickets expire"),
                value("time-frame", "HH:mm-HH:mm", "the hours of the day the tickets may be used"),
                flagOption("once", "the time frame is for one use only"),
                flagOption("vip", "make VIP tickets"),
                flagOption("yes", "answer yes to the questions that make the tickets"),
                value("print", "ANSWER", "answer the print question", {QStringLiteral("yes"), QStringLiteral("no")}),
                value("second-user", "NAME", "the second administrator, where two are required"),
                value("second-password", "PW", "the second administrator's password (visible in the process list)"),
                value("second-password-file", "FILE", "the second administrator's password from a file"),
                value("export", "FILE", "also write the batch to FILE: JSON when it ends in .json, else CSV"),
                flagOption("no-pause", "leave out the screen's pause of 50 ms between tickets"),
                prefs,
                appDir}},
        {QStringLiteral("export"),
            QStringLiteral("write tickets as CSV or JSON, e.g. for a hotspot's user list"),
            {},
            {db,
                value("group", "G", "the tickets of one group"),
                flagOption("all", "every ticket"),
                flagOption("unused", "the tickets no one has used yet"),
                value("format",
                    "FORMAT",
                    "the file's format (default csv)",
                    {QStringLiteral("csv"), QStringLiteral("json")}),
                value("output", "FILE", "write to FILE instead of standard output")}},
        {QStringLiteral("report"),
            QStringLiteral(
                "the sales summary: tickets made and sold, recharges and money per day and per staff member"),
            {},
            {db,
                value("from", "DATE", "the first day, YYYY-MM-DD (default: the first on record)"),
                value("to", "DATE", "the last day, YYYY-MM-DD (default: the last on record)"),
                value("format",
                    "FORMAT",
                    "a table for the terminal or CSV (default table)",
                    {QStringLiteral("table"), QStringLiteral("csv")}),
                value("output", "FILE", "write to FILE instead of standard output"),
                value("chart", "FILE", "also draw a bar chart of money per day as a PNG picture")}},
        {QStringLiteral("receipt"),
            QStringLiteral(
                "print a group's tickets on a receipt printer, one receipt a ticket, or preview them as a PDF"),
            {},
            {db,
                value("group", "G", "the tickets of this group"),
                value("paper", "MM", "the roll's width (default 80)", {QStringLiteral("58"), QStringLiteral("80")}),
                value(
                    "port", "PORT", "a serial port: COM1 ... COM4, LPT1 ... LPT3 or a device (default: the POS port)"),
                value("queue", "QUEUE", "a raw queue of the print service instead of a serial port"),
                value("pdf", "FILE", "a PDF preview of receipt width instead of printing"),
                prefs}},
        {QStringLiteral("login-template"),
            QStringLiteral("show or set what each ticket's QR code holds"),
            {},
            {value("set",
                 "TEMPLATE",
                 "e.g. http://10.0.0.1/login?u={username}&p={password}; web pages then carry the codes too"),
                flagOption("clear", "back to \"{username} {password}\", on printed sheets only"),
                prefs}},
    };
}

QString optionSynopsis(const OptionSpec& option)
{
    QString text = QStringLiteral("--") + option.name;
    if (!option.isFlag())
        text += u' ' + (option.accepted.isEmpty() ? option.valueName : option.accepted.join(u'|'));
    return text;
}

} // namespace

const OptionSpec* CommandSpec::option(const QString& optionName) const
{
    const auto found
        = std::find_if(options.begin(), options.end(), [&](const OptionSpec& o) { return o.name == optionName; });
    return found == options.end() ? nullptr : &*found;
}

const QList<CommandSpec>& commands()
{
    static const QList<CommandSpec> all = makeCommands();
    return all;
}

const CommandSpec* findCommand(const QString& name)
{
    const QList<CommandSpec>& all = commands();
    const auto found = std::find_if(all.begin(), all.end(), [&](const CommandSpec& c) { return c.name == name; });
    return found == all.end() ? nullptr : &*found;
}

QString versionText()
{
    return QStringLiteral("marlet " MARLET_VERSION_TEXT);
}

const char* const databaseNote = "Without --db the database is $MARLET_DB, else cafe.db in the data folder.\n";

const char* const secretsNote
    = "Passwords: other users on this machine see --password in the process list. Give it with\n"
      "--password-file, --password-stdin or $MARLET_PASSWORD instead, or type it when generate asks\n"
      "(init: --admin-password-file, --admin-password-stdin, $MARLET_ADMIN_PASSWORD).\n";

const char* const screensNote = "The entry operations (load-...) each show one screen: on the desktop when a display\n"
                                "is present, else on the terminal.\n";

void printUsage(QTextStream& out)
{
    out << "usage: marlet <command> [options]\n"
           "       marlet <command> --help     the options of one command\n"
           "       marlet --version\n"
           "       marlet --manual-page        this help as a manual page (roff)\n\n"
           "Commands:\n";
    for (const CommandSpec& command : commands())
        out << "  " << command.name.leftJustified(19) << command.summary << '\n';
    out << '\n' << screensNote << databaseNote << secretsNote << Qt::flush;
}

void printCommandHelp(const CommandSpec& command, QTextStream& out)
{
    out << "usage: marlet " << command.name;
    if (!command.options.isEmpty())
        out << " [options]";
    if (!command.positional.isEmpty())
        out << ' ' << command.positional;
    out << "\n\n" << command.summary << "\n";
    if (!command.options.isEmpty())
        out << "\nOptions:\n";
    qsizetype width = 0;
    for (const OptionSpec& option : command.options)
        width = std::max(width, optionSynopsis(option).size());
    for (const OptionSpec& option : command.options)
        out << "  " << optionSynopsis(option).leftJustified(width + 2) << option.help << '\n';
    if (command.option(QStringLiteral("password")) || command.option(QStringLiteral("admin-password")))
        out << '\n' << secretsNote;
    out << Qt::flush;
}

namespace {

// Text for roff: a leading dot or quote would start a request, a backslash an escape, and a
// hyphen in an option name must stay a hyphen.
QString roff(QString text)
{
    text.replace(u'\\', QStringLiteral("\\e")).replace(u'-', QStringLiteral("\\-"));
    if (text.startsWith(u'.') || text.startsWith(u'\''))
        text.prepend(QStringLiteral("\\&"));
    return text;
}

} // namespace

void printManualPage(QTextStream& out)
{
    out << ".TH MARLET 1 \"\" \"marlet " MARLET_VERSION_TEXT "\" \"User Commands\"\n"
           ".SH NAME\nmarlet \\- ticketing and administration for a cybercafe\n"
           ".SH SYNOPSIS\n.B marlet\n.I command\n[\\fIoptions\\fR]\n.br\n.B marlet \\-\\-version\n"
           ".SH DESCRIPTION\nMarlet makes, finds, recharges, prints and deletes the tickets a cybercafe sells "
           "computer time with, and keeps its members and settings.\n"
        << ".PP\n"
        << roff(QLatin1String(screensNote)) << ".PP\n"
        << roff(QLatin1String(databaseNote)) << ".SH COMMANDS\n";
    for (const CommandSpec& command : commands()) {
        out << ".SS " << roff(command.name) << (command.positional.isEmpty() ? QString() : u' ' + command.positional)
            << '\n'
            << roff(command.summary) << '\n';
        for (const OptionSpec& option : command.options)
            out << ".TP\n.B " << roff(optionSynopsis(option)) << '\n' << roff(option.help) << '\n';
    }
    out << ".SH ENVIRONMENT\n.TP\n.B MARLET_DB\nthe database when \\-\\-db is not given\n"
           ".TP\n.B MARLET_PASSWORD\\fR, \\fBMARLET_SECOND_PASSWORD\\fR, \\fBMARLET_ADMIN_PASSWORD\n"
           "the passwords when no option gives them; without any, generate asks on the terminal\n"
           ".TP\n.B MARLET_PREFS\nthe folder of the preference file\n"
           ".TP\n.B MARLET_APP_DIR\nthe data folder\n"
           ".SH FILES\n.TP\n.I ~/.config/marlet/preferences.ini\nthis machine's preferences\n"
           ".TP\n.I ~/.local/share/marlet/cafe.db\nthe default database\n"
        << Qt::flush;
}

} // namespace marlet::host
