#pragma once

#include "platform/Platform.h"
#include "store/Preferences.h"

#include <QLatin1StringView>
#include <QList>
#include <QString>

class QWidget;

namespace marlet {

class Connection;
struct TicketSheet;

// The report component built into the desktop front end, reached by the name "Vellum.Sheets".
// It shows ticket sheets in a print preview, from which they print on the default printer or,
// on a machine without one, into a PDF file:
//   Generated6Preview, Generated3Preview, Generated2Preview (connection, statement): the scratch
//     table that the statement selects, six, three or two tickets a row;
//   PrintPreview (connection, server path): existing tickets, chosen by ticket group;
//   LoadPrintSettings (flag, connection): its settings window for the ticket prefix, the print size
//     and the quick-ticket types.
// The connection comes by reference; the component leaves it open as it found it. The flag and the
// server path are accepted and not needed by this implementation. Each operation returns when its
// window closes: true when it ran, false when it could not read or write the store.
class ReportComponent : public NamedComponent
{
public:
    static constexpr QLatin1StringView ProgId {"Vellum.Sheets"};

    // Reads and writes the preference file in `preferencesFolder` (empty: the standard place).
    explicit ReportComponent(const QString& preferencesFolder = {});

    bool call(const QString& operation, const QVariantList& arguments) override;
    bool callWithConnection(const QString& operation, Connection& connection, const QVariantList& arguments) override;

    bool generatedPreview(Connection& connection, const QString& source, int ticketsPerRow);
    bool printPreview(Connection& connection);
    bool loadPrintSettings(Connection& connection);

private:
    Preferences m_preferences;
};

// Shows the sheet in a modal print preview window with `title` as its caption, set up for A4 paper
// and the default printer (a PDF file when there is none). Returns when the window closes.
void previewTicketSheet(const TicketSheet& sheet, const QString& title, QWidget* parent = nullptr);

struct ReceiptContent;
struct ReceiptPaper;
struct SheetTicket;

// Shows receipts, one ticket a receipt, in a modal print preview window on the default printer
// (a PDF file when there is none).
void previewReceipts(
    const QList<SheetTicket>& tickets, const ReceiptPaper& paper, const ReceiptContent& content, QWidget* parent);

// Makes the desktop front end's "Vellum.Sheets" this component, reading and writing the preference
// file that `preferences` (the host session's store) uses. A host calls it once at start-up.
void registerReportComponent(const Preferences& preferences);

} // namespace marlet
