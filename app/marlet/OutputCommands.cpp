#include "OutputCommands.h"

#include "DatabaseOption.h"
#include "HostOptions.h"

#include "inventory/SalesSummary.h"
#include "inventory/TicketExport.h"
#include "printing/LoginCode.h"
#include "store/Connection.h"
#include "store/PreferenceKeys.h"
#include "store/Preferences.h"

#include <QFile>

#include <cstdio>

#ifdef MARLET_WITH_DESKTOP
#include "SalesChart.h"
#include "desktop/ReceiptOutput.h"
#include "printing/Receipt.h"
#include "printing/TicketSheet.h"
#endif

namespace marlet::host {

namespace {

// The bytes to --output, or to standard output without it.
bool writeOut(const QByteArray& bytes, const QString& file, QString& error)
{
    QFile target(file);
    const bool opened = file.isEmpty() ? target.open(stdout, QIODevice::WriteOnly)
                                       : target.open(QIODevice::WriteOnly | QIODevice::Truncate);
    const QString name = file.isEmpty() ? QStringLiteral("standard output") : file;
    if (!opened || target.write(bytes) != bytes.size() || !target.flush()) {
        error = QStringLiteral("cannot write %1: %2").arg(name, target.errorString());
        return false;
    }
    return true;
}

bool openStore(Connection& connection, const HostOptions& options, QString& error)
{
    if (connection.Open(databaseOf(options)))
        return true;
    error = connection.lastError();
    return false;
}

QDate dateOption(const HostOptions& options, const char* name, QString& error)
{
    const QString text = options.value(QLatin1String(name));
    if (text.isEmpty())
        return {};
    const QDate day = QDate::fromString(text, Qt::ISODate);
    if (!day.isValid())
        error = QStringLiteral("--%1 takes a date as YYYY-MM-DD, e.g. 2026-11-24, not \"%2\"")
                    .arg(QLatin1String(name), text);
    return day;
}

} // namespace

bool exportGroup(const QString& connectionString, const QString& group, const QString& file, QString& error)
{
    Connection connection;
    QList<ExportedTicket> tickets;
    if (!connection.Open(connectionString)) {
        error = connection.lastError();
        return false;
    }
    if (!readExportedTickets(connection, ExportScope::Group, group, tickets, error))
        return false;
    const bool json = file.endsWith(QLatin1String(".json"), Qt::CaseInsensitive);
    return writeOut(json ? exportJson(tickets) : exportCsv(tickets), file, error);
}

int runExport(const HostOptions& options, QTextStream& out, QTextStream& err)
{
    const QString group = options.value(QStringLiteral("group"));
    const int scopes = int(!group.isEmpty()) + int(options.flag(QStringLiteral("all")))
        + int(options.flag(QStringLiteral("unused")));
    if (scopes != 1) {
        err << "marlet export: give one of --group G, --all or --unused" << Qt::endl;
        return 2;
    }
    const ExportScope scope = !group.isEmpty() ? ExportScope::Group
        : options.flag(QStringLiteral("all"))  ? ExportScope::All
                                               : ExportScope::Unused;
    Connection connection;
    QList<ExportedTicket> tickets;
    QString error;
    if (!openStore(connection, options, error) || !readExportedTickets(connection, scope, group, tickets, error)) {
        err << "marlet export: the tickets cannot be read: " << error << Qt::endl;
        return 1;
    }
    const bool json = options.value(QStringLiteral("format")) == QLatin1String("json");
    const QString file = options.value(QStringLiteral("output"));
    out.flush();
    if (!writeOut(json ? exportJson(tickets) : exportCsv(tickets), file, error)) {
        err << "marlet export: " << error << Qt::endl;
        return 1;
    }
    if (!file.isEmpty())
        out << tickets.size() << " ticket(s) written to " << file << Qt::endl;
    return 0;
}

int runReport(const HostOptions& options, QTextStream& out, QTextStream& err)
{
    SalesSummary summary;
    QString error;
    summary.from = dateOption(options, "from", error);
    summary.to = dateOption(options, "to", error);
    if (!error.isEmpty()) {
        err << "marlet report: " << error << Qt::endl;
        return 2;
    }
    Connection connection;
    if (!openStore(connection, options, error) || !readSalesSummary(connection, summary, error)) {
        err << "marlet report: the sales cannot be read: " << error << Qt::endl;
        return 1;
    }
    const QString file = options.value(QStringLiteral("output"));
    const bool csv = options.value(QStringLiteral("format")) == QLatin1String("csv");
    out.flush();
    if (!writeOut(csv ? salesCsv(summary) : salesTable(summary).toUtf8(), file, error)) {
        err << "marlet report: " << error << Qt::endl;
        return 1;
    }
    const QString chart = options.value(QStringLiteral("chart"));
    if (chart.isEmpty())
        return 0;
#ifdef MARLET_WITH_DESKTOP
    if (!writeSalesChart(summary, chart, error)) {
        err << "marlet report: " << error << Qt::endl;
        return 1;
    }
    return 0;
#else
    err << "marlet report: this build has no pictures (built without the desktop); --chart is not available"
        << Qt::endl;
    return 1;
#endif
}

int runReceipt(const HostOptions& options, QTextStream& out, QTextStream& err)
{
#ifdef MARLET_WITH_DESKTOP
    const QString port = options.value(QStringLiteral("port"));
    const QString queue = options.value(QStringLiteral("queue"));
    const QString pdf = options.value(QStringLiteral("pdf"));
    if (int(!port.isEmpty()) + int(!queue.isEmpty()) + int(!pdf.isEmpty()) > 1) {
        err << "marlet receipt: give one of --port, --queue or --pdf" << Qt::endl;
        return 2;
    }
    const QString group = options.value(QStringLiteral("group"));
    if (group.isEmpty()) {
        err << "marlet receipt: give the tickets' group with --group G (marlet export --all lists the groups)"
            << Qt::endl;
        return 2;
    }
    Preferences preferences(options.value(QStringLiteral("prefs")));
    Connection connection;
    QString error;
    std::optional<QList<SheetTicket>> tickets;
    if (openStore(connection, options, error))
        tickets = groupTickets(connection, group, preferences, &error);
    if (!tickets) {
        err << "marlet receipt: the tickets cannot be read: " << error << Qt::endl;
        return 1;
    }
    if (tickets->isEmpty()) {
        err << "marlet receipt: the group " << group << " holds no tickets" << Qt::endl;
        return 1;
    }
    const ReceiptPaper paper
        = options.value(QStringLiteral("paper")) == QLatin1String("58") ? ReceiptPaper::narrow() : ReceiptPaper::wide();
    const ReceiptContent content = ReceiptContent::fromPreferences(preferences);
    if (!pdf.isEmpty()) {
        if (!writeReceiptPdf(*tickets, paper, content, pdf, error)) {
            err << "marlet receipt: " << error << Qt::endl;
            return 1;
        }
        out << tickets->size() << " receipt(s) written to " << pdf << Qt::endl;
        return 0;
    }
    QByteArray bytes;
    for (const SheetTicket& ticket : *tickets)
        bytes += escposReceipt(ticket, paper, content);
    // Without a destination the receipts go to the port of the POS settings.
    const QString posPort
        = port.isEmpty() ? SessionPreferences(preferences, QString(ProductWord)).text(keys::pos::COM) : port;
    const bool sent
        = queue.isEmpty() ? sendToSerialPrinter(bytes, posPort, error) : sendToPrintQueue(bytes, queue, error);
    if (!sent) {
        err << "marlet receipt: " << error << Qt::endl;
        return 1;
    }
    out << tickets->size() << " receipt(s) sent to " << (queue.isEmpty() ? posPort : queue) << Qt::endl;
    return 0;
#else
    Q_UNUSED(options);
    Q_UNUSED(out);
    err << "marlet receipt: this build has no printing (built without the desktop)" << Qt::endl;
    return 1;
#endif
}

int runLoginTemplate(const HostOptions& options, QTextStream& out, QTextStream& err)
{
    Preferences preferences(options.value(QStringLiteral("prefs")));
    const bool clear = options.flag(QStringLiteral("clear"));
    const QString wanted = options.value(QStringLiteral("set"));
    if (clear && !wanted.isEmpty()) {
        err << "marlet login-template: give --set or --clear, not both" << Qt::endl;
        return 2;
    }
    if (!wanted.isEmpty() && !wanted.contains(QLatin1String("{username}"))
        && !wanted.contains(QLatin1String("{password}"))) {
        err << "marlet login-template: the template holds neither {username} nor {password}, so every ticket "
               "would carry the same code; nothing was changed"
            << Qt::endl;
        return 2;
    }
    if (clear || !wanted.isEmpty()) {
        const PreferenceKey& key = keys::LoginTemplate;
        preferences.SaveSetting(QString(ProductWord), key.sectionText(), key.nameText(), wanted);
        if (!preferences.lastError().isEmpty()) {
            err << "marlet login-template: " << preferences.lastError() << Qt::endl;
            return 1;
        }
    }
    const QString current = loginTemplate(preferences);
    if (current.isEmpty())
        out << "No login template: ticket sheets carry \"" << DefaultLoginTemplate
            << "\" in their QR codes, web pages none" << Qt::endl;
    else
        out << "Login template: " << current << Qt::endl;
    return 0;
}

} // namespace marlet::host
