#include "desktop/ReportComponent.h"

#include "desktop/ComponentRegistry.h"
#include "desktop/ReceiptOutput.h"
#include "desktop/TicketSheetPainter.h"
#include "printing/Receipt.h"
#include "printing/SheetSettings.h"
#include "printing/TicketSheet.h"
#include "store/Connection.h"
#include "store/PreferenceKeys.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace marlet {

namespace {

// The three sheet operations and the tickets each puts in a row.
struct SheetOperation
{
    QLatin1StringView name;
    int ticketsPerRow;
};
constexpr SheetOperation sheetOperations[] = {
    {QLatin1StringView("Generated6Preview"), 6},
    {QLatin1StringView("Generated3Preview"), 3},
    {QLatin1StringView("Generated2Preview"), 2},
};

// Captions of the print sizes, in the order of their PrintType values 1 to 3.
const QStringList sizeCaptions = {QStringLiteral("Small Print (six tickets a row)"),
    QStringLiteral("Medium Print (three tickets a row)"),
    QStringLiteral("Large Print (two tickets a row)")};
constexpr int ticketsPerRowOfSize[] = {6, 3, 2};
// After the sheet sizes the list offers receipts, one ticket a receipt, in this order.
const QStringList receiptCaptions
    = {QStringLiteral("Receipt 58 mm (one ticket a receipt)"), QStringLiteral("Receipt 80 mm (one ticket a receipt)")};

// The roll of a size list entry, or nothing for a sheet size.
std::optional<ReceiptPaper> receiptPaperOf(int sizeIndex)
{
    if (sizeIndex == int(sizeCaptions.size()))
        return ReceiptPaper::narrow();
    if (sizeIndex == int(sizeCaptions.size()) + 1)
        return ReceiptPaper::wide();
    return std::nullopt;
}

QWidget* dialogParent()
{
    return QApplication::activeModalWidget() ? QApplication::activeModalWidget() : QApplication::activeWindow();
}

void warn(QWidget* parent, const QString& text)
{
    QMessageBox::warning(parent, MessageTitle(), text);
}

// ---- PrintPreview: existing tickets by group ----------------------------------------------------

QTreeWidget* groupList(const QList<PrintableGroup>& groups)
{
    auto* list = new QTreeWidget;
    list->setObjectName(QStringLiteral("groups"));
    list->setRootIsDecorated(false);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setHeaderLabels({QStringLiteral("Ticket Group"),
        QStringLiteral("Tickets"),
        QStringLiteral("Time (min)"),
        QStringLiteral("Cost"),
        QStringLiteral("Generated")});
    for (const PrintableGroup& group : groups)
        list->addTopLevelItem(
            new QTreeWidgetItem({group.group, group.tickets, group.minutes, group.cost, group.generated}));
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    return list;
}

QComboBox* sizeList(Preferences& preferences)
{
    auto* sizes = new QComboBox;
    sizes->setObjectName(QStringLiteral("size"));
    sizes->addItems(sizeCaptions);
    sizes->addItems(receiptCaptions);
    const int printType = int(SessionPreferences(preferences, QString(ProductWord)).number(keys::PrintType));
    sizes->setCurrentIndex(printType == 1 || printType == 2 ? printType - 1 : 2);
    return sizes;
}

// The tickets of the chosen groups, in list order and within a group in ticket order.
std::optional<QList<SheetTicket>> chosenTickets(
    Connection& connection, Preferences& preferences, const QTreeWidget& list)
{
    QList<SheetTicket> tickets;
    for (int index = 0; index < list.topLevelItemCount(); ++index) {
        const QTreeWidgetItem* item = list.topLevelItem(index);
        if (!item->isSelected())
            continue;
        const auto group = groupTickets(connection, item->text(0), preferences);
        if (!group)
            return std::nullopt;
        tickets += *group;
    }
    return tickets;
}

// ---- LoadPrintSettings: the settings window ----------------------------------------------------

// The quick-ticket part of the settings window: the list of types and the fields that make one.
struct QuickTicketEditor
{
    QListWidget* list = nullptr;
    QComboBox* minutes = nullptr;
    QComboBox* cost = nullptr;
    QCheckBox* timeTicket = nullptr;
    QCheckBox* once = nullptr;
    QCheckBox* vip = nullptr;
    QString currency;

    QStringList entries() const
    {
        QStringList texts;
        for (int row = 0; row < list->count(); ++row)
            texts.append(list->item(row)->text());
        return texts;
    }

    void add()
    {
        const QuickTicketDefinition definition {minutes->currentText().trimmed(),
            cost->currentText().trimmed(),
            timeTicket->isChecked(),
            once->isChecked(),
            vip->isChecked()};
        const QuickTicketAddition addition = addQuickTicket(entries(), definition, currency);
        if (!addition.added()) {
            warn(list->window(), addition.refusal);
            if (addition.focus != QuickTicketAddition::Field::None)
                (addition.focus == QuickTicketAddition::Field::Cost ? cost : minutes)->setFocus();
            return;
        }
        list->addItem(addition.entry);
    }

    void removeSelected() { delete list->currentItem(); }
};

QComboBox* amountList(const QString& name)
{
    auto* box = new QComboBox;
    box->setObjectName(name);
    box->setEditable(true);
    for (int value = 5; value <= 2000; value += value < 60 ? 5 : (value < 500 ? 10 : 50))
        box->addItem(QString::number(value));
    box->setCurrentText(QString());
    return box;
}

QGroupBox* quickTicketBox(QuickTicketEditor& editor, const SheetSettings& settings, QCheckBox*& enabled)
{
    auto* box = new QGroupBox(QStringLiteral("Quick-Ticket"));
    enabled = new QCheckBox(QStringLiteral("Enable Quick-Ticket"));
    enabled->setObjectName(QStringLiteral("quickTicket"));
    enabled->setChecked(settings.quickTicket);
    editor.list = new QListWidget;
    editor.list->setObjectName(QStringLiteral("quickTickets"));
    editor.list->addItems(settings.quickTickets);
    editor.minutes = amountList(QStringLiteral("minutes"));
    editor.cost = amountList(QStringLiteral("cost"));
    editor.timeTicket = new QCheckBox(QStringLiteral("Create Time Ticket"));
    editor.timeTicket->setObjectName(QStringLiteral("timeTicket"));
    editor.once = new QCheckBox(QStringLiteral("Use Ticket Only Once"));
    editor.once->setObjectName(QStringLiteral("once"));
    editor.once->setEnabled(false);
    editor.vip = new QCheckBox(QStringLiteral("Use Reserved Client (VIP)"));
    editor.vip->setObjectName(QStringLiteral("vip"));
    editor.currency = settings.currency;
    QObject::connect(editor.timeTicket, &QCheckBox::toggled, editor.once, &QWidget::setEnabled);

    auto* add = new QPushButton(QStringLiteral("Add Quick Ticket"));
    add->setObjectName(QStringLiteral("add"));
    auto* remove = new QPushButton(QStringLiteral("Remove Quick-Ticket"));
    remove->setObjectName(QStringLiteral("remove"));
    QObject::connect(add, &QPushButton::clicked, [&editor] { editor.add(); });
    QObject::connect(remove, &QPushButton::clicked, [&editor] { editor.removeSelected(); });

    auto* fields = new QFormLayout;
    fields->addRow(QStringLiteral("Time of Ticket (in mins):"), editor.minutes);
    fields->addRow(QStringLiteral("Cost Per Ticket (in %1):").arg(settings.currency), editor.cost);
    fields->addRow(editor.timeTicket);
    fields->addRow(editor.once);
    fields->addRow(editor.vip);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(remove);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(enabled);
    layout->addWidget(new QLabel(QStringLiteral("Existing Quick-Ticket")));
    layout->addWidget(editor.list);
    layout->addLayout(fields);
    layout->addLayout(buttons);
    return box;
}

QGroupBox* printSizeBox(QButtonGroup& sizes, int printType)
{
    static const QStringList captions = {QStringLiteral("Small Print"),
        QStringLiteral("Medium Print"),
        QStringLiteral("Large Print"),
        QStringLiteral("Export to File")};
    auto* box = new QGroupBox(QStringLiteral("Ticket Print Size"));
    auto* layout = new QVBoxLayout(box);
    for (int value = 1; value <= 4; ++value) {
        auto* option = new QRadioButton(captions.at(value - 1));
        option->setObjectName(QStringLiteral("printType%1").arg(value));
        option->setChecked(value == printType);
        sizes.addButton(option, value);
        layout->addWidget(option);
    }
    return box;
}

} // namespace

ReportComponent::ReportComponent(const QString& preferencesFolder)
    : m_preferences(preferencesFolder)
{
}

bool ReportComponent::call(const QString& /*operation*/, const QVariantList& /*arguments*/)
{
    // Every operation of this component works on the shared connection.
    return false;
}

bool ReportComponent::callWithConnection(
    const QString& operation, Connection& connection, const QVariantList& arguments)
{
    for (const SheetOperation& sheet : sheetOperations) {
        if (operation.compare(sheet.name, Qt::CaseInsensitive) == 0)
            return generatedPreview(connection, arguments.value(0).toString(), sheet.ticketsPerRow);
    }
    if (operation.compare(QLatin1String("PrintPreview"), Qt::CaseInsensitive) == 0)
        return printPreview(connection);
    if (operation.compare(QLatin1String("LoadPrintSettings"), Qt::CaseInsensitive) == 0)
        return loadPrintSettings(connection);
    return false;
}

bool ReportComponent::generatedPreview(Connection& connection, const QString& source, int ticketsPerRow)
{
    const auto sheet
        = readTicketSheet(connection, Statement(source), ticketsPerRow, SheetHeading::fromPreferences(m_preferences));
    if (!sheet)
        return false;
    previewTicketSheet(*sheet, QStringLiteral("Ticket Print Preview"), dialogParent());
    return true;
}

bool ReportComponent::printPreview(Connection& connection)
{
    const auto groups = printableGroups(connection);
    if (!groups)
        return false;
    QDialog dialog(dialogParent());
    dialog.setObjectName(QStringLiteral("PrintExistingTickets"));
    dialog.setWindowTitle(QStringLiteral("Print Existing Ticket"));
    QTreeWidget* list = groupList(*groups);
    QComboBox* sizes = sizeList(m_preferences);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* preview = buttons->addButton(QStringLiteral("&Preview"), QDialogButtonBox::ActionRole);
    preview->setObjectName(QStringLiteral("preview"));
    // Receipts also go straight to the receipt printer on the POS port.
    QPushButton* send = buttons->addButton(QStringLiteral("Send to &Receipt Printer"), QDialogButtonBox::ActionRole);
    send->setObjectName(QStringLiteral("sendReceipts"));
    const auto enableButtons = [list, preview, send, sizes] {
        preview->setEnabled(!list->selectedItems().isEmpty());
        send->setEnabled(!list->selectedItems().isEmpty() && receiptPaperOf(sizes->currentIndex()));
    };
    enableButtons();
    QObject::connect(list, &QTreeWidget::itemSelectionChanged, enableButtons);
    QObject::connect(sizes, &QComboBox::currentIndexChanged, enableButtons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    bool storeFailed = false;
    const auto tickets = [&]() -> std::optional<QList<SheetTicket>> {
        auto chosen = chosenTickets(connection, m_preferences, *list);
        storeFailed = !chosen;
        if (storeFailed)
            dialog.reject();
        return chosen;
    };
    QObject::connect(preview, &QPushButton::clicked, [&] {
        const auto chosen = tickets();
        if (!chosen)
            return;
        if (const std::optional<ReceiptPaper> paper = receiptPaperOf(sizes->currentIndex()))
            previewReceipts(*chosen, *paper, ReceiptContent::fromPreferences(m_preferences), &dialog);
        else
            previewTicketSheet(packTicketSheet(*chosen, ticketsPerRowOfSize[sizes->currentIndex()]),
                QStringLiteral("Print Existing Ticket"),
                &dialog);
    });
    QObject::connect(send, &QPushButton::clicked, [&] {
        const auto chosen = tickets();
        const std::optional<ReceiptPaper> paper = receiptPaperOf(sizes->currentIndex());
        if (!chosen || !paper)
            return;
        const ReceiptContent content = ReceiptContent::fromPreferences(m_preferences);
        QByteArray bytes;
        for (const SheetTicket& ticket : *chosen)
            bytes += escposReceipt(ticket, *paper, content);
        const QString port = SessionPreferences(m_preferences, QString(ProductWord)).text(keys::pos::COM);
        QString error;
        if (!sendToSerialPrinter(bytes, port, error))
            warn(&dialog, error);
    });
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel(QStringLiteral("Choose the ticket group(s) to print:")));
    layout->addWidget(list);
    auto* size = new QFormLayout;
    size->addRow(QStringLiteral("Ticket Print Size:"), sizes);
    layout->addLayout(size);
    layout->addWidget(buttons);
    dialog.resize(560, 420);
    dialog.exec();
    return !storeFailed;
}

bool ReportComponent::loadPrintSettings(Connection& connection)
{
    SheetSettings settings = SheetSettings::load(m_preferences, connection);
    QDialog dialog(dialogParent());
    dialog.setObjectName(QStringLiteral("PrintSettings"));
    dialog.setWindowTitle(QStringLiteral("More Ticket, Quick-Ticket, FlexTicket Settings"));
    auto* prefix = new QLineEdit(settings.prefix);
    prefix->setObjectName(QStringLiteral("prefix"));
    prefix->setMaxLength(3);
    prefix->setToolTip(QStringLiteral("This will make up the first digits contained in your ticket."));
    QButtonGroup sizes;
    QuickTicketEditor editor;
    QCheckBox* quickTicket = nullptr;
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Ticket Prefix:"), prefix);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addLayout(form);
    layout->addWidget(printSizeBox(sizes, settings.printType));
    layout->addWidget(quickTicketBox(editor, settings, quickTicket));
    layout->addWidget(buttons);
    if (dialog.exec() != QDialog::Accepted)
        return true;

    // An empty prefix keeps the one stored.
    settings.prefix = prefix->text().trimmed().isEmpty() ? settings.prefix : prefix->text().trimmed();
    settings.printType = sizes.checkedId() > 0 ? sizes.checkedId() : settings.printType;
    settings.quickTicket = quickTicket->isChecked();
    settings.quickTickets = editor.entries();
    QString error;
    if (settings.save(m_preferences, connection, &error))
        return true;
    warn(dialogParent(), error);
    return false;
}

namespace {

// The default printer, or without one a PDF file in the documents folder; the print dialog offers
// to change its name.
void printToDefault(QPrinter& printer, const QString& title, const QString& pdfName)
{
    printer.setDocName(title);
    if (QPrinterInfo::defaultPrinterName().isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(
            QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).filePath(pdfName));
    }
}

} // namespace

void previewTicketSheet(const TicketSheet& sheet, const QString& title, QWidget* parent)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageOrientation(QPageLayout::Portrait);
    printer.setPageMargins(QMarginsF(8, 8, 8, 8), QPageLayout::Millimeter);
    printToDefault(printer, title, QStringLiteral("tickets.pdf"));
    QPrintPreviewDialog preview(&printer, parent);
    preview.setObjectName(QStringLiteral("TicketSheetPreview"));
    preview.setWindowTitle(title);
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&sheet](QPrinter* target) {
        paintTicketSheet(sheet, *target);
    });
    preview.resize(900, 700);
    preview.exec();
}

void previewReceipts(
    const QList<SheetTicket>& tickets, const ReceiptPaper& paper, const ReceiptContent& content, QWidget* parent)
{
    QPrinter printer(QPrinter::HighResolution);
    printToDefault(printer, QStringLiteral("Receipts"), QStringLiteral("receipts.pdf"));
    QPrintPreviewDialog preview(&printer, parent);
    preview.setObjectName(QStringLiteral("ReceiptPreview"));
    preview.setWindowTitle(QStringLiteral("Receipt Preview"));
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter* target) {
        paintReceipts(tickets, paper, content, *target);
    });
    preview.resize(500, 700);
    preview.exec();
}

void registerReportComponent(const Preferences& preferences)
{
    const QString preferencesFolder = QFileInfo(preferences.filePath()).absolutePath();
    ComponentRegistry::add(QString(ReportComponent::ProgId),
        [preferencesFolder] { return std::make_unique<ReportComponent>(preferencesFolder); });
}

} // namespace marlet
