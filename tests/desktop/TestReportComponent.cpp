#include "desktop/ReportComponent.h"

#include "desktop/ComponentRegistry.h"
#include "desktop/QtPlatform.h"
#include "desktop/TicketSheetPainter.h"
#include "printing/Receipt.h"
#include "printing/TicketSheet.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "support/SerialLinePair.h"
#include "support/StoreTestDatabase.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinterInfo>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <QTreeWidget>
#include <fcntl.h>
#include <unistd.h>

#include <functional>

using namespace marlet;
using namespace Qt::StringLiterals;

namespace {

// Runs `act` on the next modal window of type T (with the object name, when given) once it is up.
// A window that does not come within three seconds is noted in `missed`.
template<typename T>
void onModal(const QString& name, bool& missed, std::function<void(T&)> act)
{
    auto* timer = new QTimer;
    auto tries = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [timer, act, tries, name, &missed] {
        auto* window = qobject_cast<T*>(QApplication::activeModalWidget());
        const bool found = window && (name.isEmpty() || window->objectName() == name);
        if (!found && ++*tries <= 300)
            return;
        timer->stop();
        timer->deleteLater();
        if (found)
            act(*window);
        else
            missed = true;
    });
    timer->start(10);
}

SheetTicket ticket(int number)
{
    const QString digits = QString::number(number).rightJustified(2, u'0');
    return {u"Corner Cafe"_s,
        u"202611211000-0"_s + digits,
        u"USER"_s + digits,
        u"PW"_s + digits + u"XY"_s,
        u"1 hr(s)"_s,
        u"N50"_s,
        u"5 day(s) after first use"_s,
        u"Any Time"_s,
        u"Unlimited"_s,
        u"12 Quay Street"_s,
        u"http://10.0.0.1/login?u=USER"_s + digits + u"&p=PW"_s + digits + u"XY"_s};
}

QList<SheetTicket> tickets(int count)
{
    QList<SheetTicket> made;
    for (int number = 1; number <= count; ++number)
        made.append(ticket(number));
    return made;
}

int pdfPageCount(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    static const QRegularExpression page(u"/Type\\s*/Page(?![s\\w])"_s);
    return int(QString::fromLatin1(file.readAll()).count(page));
}

// The text of a PDF file as pdftotext reads it, or nothing when the tool is not installed.
std::optional<QString> pdfText(const QString& path)
{
    if (QStandardPaths::findExecutable(u"pdftotext"_s).isEmpty())
        return std::nullopt;
    QProcess tool;
    tool.start(u"pdftotext"_s, {path, u"-"_s});
    if (!tool.waitForFinished(30000))
        return QString();
    return QString::fromUtf8(tool.readAllStandardOutput());
}

bool writePdf(const TicketSheet& sheet, const QString& path)
{
    QPdfWriter writer(path);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(8, 8, 8, 8), QPageLayout::Millimeter);
    return paintTicketSheet(sheet, writer);
}

} // namespace

class TestReportComponent : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void testSevenTicketsSixUpPrintOnOnePage();
    void testTicketTextsReachThePdf();
    void testEveryTicketCarriesItsQrCode_data();
    void testEveryTicketCarriesItsQrCode();
    void testFullPageStartsANewOne_data();
    void testFullPageStartsANewOne();
    void testScratchTablePreviewPrintsToPdf();
    void testMissingTableShowsNoPreview();
    void testOperationsNeedTheConnection();
    void testExistingTicketsArePreviewedByGroup();
    void testExistingTicketsGoToTheReceiptPrinter();
    void testSettingsWindowSavesWhatWasChosen();
    void testSettingsWindowRefusesADuplicateAndCancelKeepsAll();
    void testComponentIsReachedByName();

private:
    void addScratchRow(const QList<SheetTicket>& boxes);
    void addTicket(const QString& group, const QString& number, const QString& name);

    QTemporaryDir m_home;
    std::unique_ptr<test::StoreTestDatabase> m_db;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ReportComponent> m_component;
};

void TestReportComponent::initTestCase()
{
    // Without a printer the preview prints into the documents folder: keep it inside the test.
    QVERIFY(m_home.isValid());
    qputenv("HOME", QFile::encodeName(m_home.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home.filePath(u".config"_s)));
}

void TestReportComponent::init()
{
    m_db = std::make_unique<test::StoreTestDatabase>();
    QVERIFY2(m_db->isValid(), qPrintable(m_db->error()));
    m_dir = std::make_unique<QTemporaryDir>();
    m_component = std::make_unique<ReportComponent>(m_dir->filePath(u"prefs"_s));
}

void TestReportComponent::addScratchRow(const QList<SheetTicket>& boxes)
{
    Recordset rows;
    QVERIFY(rows.Open(
        Statement(u"Select * from Row6PrintTemp"_s), m_db->connection(), CursorType::Static, LockType::Optimistic));
    QVERIFY(rows.AddNew());
    for (int slot = 0; slot < 6; ++slot) {
        const SheetTicket box = boxes.value(slot);
        const bool empty = box.isEmpty();
        const QVariantList values = {empty ? u" "_s : box.number,
            empty ? u" "_s : box.userName,
            empty ? u" "_s : box.password,
            empty ? 0 : 3600,
            empty ? u" "_s : box.price,
            QDate(2026, 11, 21),
            empty ? u" "_s : box.timeRule,
            0,
            empty ? 0 : 5};
        for (int field = 0; field < PrintSlotColumns; ++field)
            QVERIFY(rows.setValue(slot * PrintSlotColumns + field, values.at(field)));
    }
    QVERIFY2(rows.Update(), qPrintable(rows.lastError()));
}

void TestReportComponent::addTicket(const QString& group, const QString& number, const QString& name)
{
    QVERIFY(m_db->connection().Execute(
        Statement(u"Insert into Account (TicketGrp, TicketNo, Username, Password, Time, Amount, Days, Quota, Night, "
                  u"Once, Member) "
                  "values ('{}', '{}', '{}', '{}', 3600, 'N50', 5, 0, false, false, false)"_s,
            {group, number, name, QString(u"PW"_s + name)})));
}

void TestReportComponent::testSevenTicketsSixUpPrintOnOnePage()
{
    const QString path = m_dir->filePath(u"seven.pdf"_s);
    QVERIFY(writePdf(packTicketSheet(tickets(7), 6), path));
    QCOMPARE(pdfPageCount(path), 1);
    QVERIFY(QFileInfo(path).size() > 1000);
}

void TestReportComponent::testTicketTextsReachThePdf()
{
    const QString path = m_dir->filePath(u"seven.pdf"_s);
    QVERIFY(writePdf(packTicketSheet(tickets(7), 6), path));
    const auto text = pdfText(path);
    if (!text)
        QSKIP("pdftotext (poppler-utils) is not installed");
    for (int number = 1; number <= 7; ++number) {
        const QString digits = QString::number(number).rightJustified(2, u'0');
        QVERIFY2(text->contains(u"USER"_s + digits), qPrintable(*text));
        QVERIFY2(text->contains(u"PW"_s + digits + u"XY"_s), qPrintable(*text));
    }
    QVERIFY(!text->contains(u"USER08"_s));
    QCOMPARE(text->count(u"Corner Cafe"_s), 7);
    QCOMPARE(text->count(u"12 Quay Street"_s), 7);
    QCOMPARE(text->count(u"5 day(s) after first use"_s), 7);
    QCOMPARE(text->count(u"Quota: Unlimited"_s), 7);
    QVERIFY(text->contains(u"202611211000-007"_s));
}

void TestReportComponent::testEveryTicketCarriesItsQrCode_data()
{
    QTest::addColumn<int>("perRow");
    QTest::addColumn<int>("count");
    QTest::newRow("small sheet") << 6 << 8;
    QTest::newRow("medium sheet") << 3 << 4;
    QTest::newRow("large sheet") << 2 << 3;
}

// The sheet goes to a PDF, the PDF to a picture as a 300 dpi printer would rasterise it, and a barcode
// reader finds every ticket's login in it.
void TestReportComponent::testEveryTicketCarriesItsQrCode()
{
    QFETCH(int, perRow);
    QFETCH(int, count);
    for (const char* tool : {"pdftoppm", "zbarimg"}) {
        if (QStandardPaths::findExecutable(QLatin1String(tool)).isEmpty())
            QFAIL(qPrintable(QLatin1String(tool) + u" is missing: install the packages of scripts/packages.txt"_s));
    }
    const QString pdf = m_dir->filePath(u"codes.pdf"_s);
    QVERIFY(writePdf(packTicketSheet(tickets(count), perRow), pdf));
    QProcess raster;
    raster.start(
        u"pdftoppm"_s, {u"-r"_s, u"300"_s, u"-gray"_s, u"-png"_s, u"-singlefile"_s, pdf, m_dir->filePath(u"codes"_s)});
    QVERIFY(raster.waitForFinished(60000));
    QCOMPARE(raster.exitCode(), 0);
    QProcess reader;
    reader.start(
        u"zbarimg"_s, {u"-q"_s, u"--raw"_s, u"-Sdisable"_s, u"-Sqrcode.enable"_s, m_dir->filePath(u"codes.png"_s)});
    QVERIFY(reader.waitForFinished(60000));
    QStringList decoded = QString::fromUtf8(reader.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    // tools/output-pictures asks for the top of the medium sheet as a picture for the documentation.
    if (const QString pictures = qEnvironmentVariable("MARLET_PICTURES_DIR"); !pictures.isEmpty() && perRow == 3) {
        QProcess picture;
        picture.start(u"pdftoppm"_s,
            {u"-r"_s,
                u"120"_s,
                u"-png"_s,
                u"-singlefile"_s,
                u"-x"_s,
                u"0"_s,
                u"-y"_s,
                u"0"_s,
                u"-W"_s,
                u"1000"_s,
                u"-H"_s,
                u"250"_s,
                pdf,
                QDir(pictures).filePath(u"sheet-qr"_s)});
        QVERIFY(picture.waitForFinished(60000));
    }
    decoded.sort();
    QStringList expected;
    for (int number = 1; number <= count; ++number)
        expected.append(ticket(number).loginCode);
    QCOMPARE(decoded, expected);
}

void TestReportComponent::testFullPageStartsANewOne_data()
{
    QTest::addColumn<int>("perRow");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("pages");
    QTest::newRow("72 small tickets on one page") << 6 << 72 << 1;
    QTest::newRow("73 small tickets on two pages") << 6 << 73 << 2;
    QTest::newRow("39 medium tickets on one page") << 3 << 39 << 1;
    QTest::newRow("23 large tickets on two pages") << 2 << 23 << 2;
}

void TestReportComponent::testFullPageStartsANewOne()
{
    QFETCH(int, perRow);
    QFETCH(int, count);
    QFETCH(int, pages);
    const QString path = m_dir->filePath(u"sheet.pdf"_s);
    QVERIFY(writePdf(packTicketSheet(tickets(count), perRow), path));
    QCOMPARE(pdfPageCount(path), pages);
}

void TestReportComponent::testScratchTablePreviewPrintsToPdf()
{
    if (!QPrinterInfo::defaultPrinterName().isEmpty())
        QSKIP("a default printer is installed: the preview would print on paper");
    addScratchRow(tickets(6));
    addScratchRow({ticket(7)});
    const QString pdf
        = QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).filePath(u"tickets.pdf"_s);
    QVERIFY(pdf.startsWith(m_home.path()));
    QDir().mkpath(QFileInfo(pdf).path());
    QFile::remove(pdf);

    bool missed = false;
    int previewPages = 0;
    QString caption;
    onModal<QPrintPreviewDialog>(u"TicketSheetPreview"_s, missed, [&](QPrintPreviewDialog& dialog) {
        auto* preview = dialog.findChild<QPrintPreviewWidget*>();
        previewPages = preview ? preview->pageCount() : -1;
        caption = dialog.windowTitle();
        if (preview)
            preview->print();
        dialog.reject();
    });
    QVERIFY(m_component->callWithConnection(
        u"Generated6Preview"_s, m_db->connection(), {u"Select * From Row6PrintTemp"_s}));
    QVERIFY(!missed);
    QCOMPARE(previewPages, 1);
    QCOMPARE(caption, u"Ticket Print Preview"_s);
    QCOMPARE(pdfPageCount(pdf), 1);
    QCOMPARE(m_db->connection().State(), 1);
    if (const auto text = pdfText(pdf)) {
        QVERIFY2(text->contains(u"USER07"_s), qPrintable(*text));
        QVERIFY2(text->contains(u"PW03XY"_s), qPrintable(*text));
        // The heading comes from the preferences, which hold nothing here.
        QCOMPARE(text->count(u"Norvantis"_s), 14);
    }
}

void TestReportComponent::testMissingTableShowsNoPreview()
{
    bool missed = false;
    bool shown = false;
    onModal<QPrintPreviewDialog>({}, missed, [&](QPrintPreviewDialog& dialog) {
        shown = true;
        dialog.reject();
    });
    QVERIFY(!m_component->callWithConnection(u"Generated2Preview"_s, m_db->connection(), {u"Select * From Nothing"_s}));
    QTRY_VERIFY_WITH_TIMEOUT(missed, 5000);
    QVERIFY(!shown);
}

void TestReportComponent::testOperationsNeedTheConnection()
{
    QVERIFY(!m_component->call(u"Generated6Preview"_s, {u"Select * From Row6PrintTemp"_s}));
    QVERIFY(!m_component->callWithConnection(u"NoSuchOperation"_s, m_db->connection(), {}));
}

void TestReportComponent::testExistingTicketsArePreviewedByGroup()
{
    QVERIFY(m_db->connection().Execute(Statement(
        u"Insert into TicketInfo (TicketGrp, Number, Time, Amount, TimeGenerated) values ('202611200900', 2, 60, '50', 'X')"_s)));
    QVERIFY(m_db->connection().Execute(Statement(
        u"Insert into TicketInfo (TicketGrp, Number, Time, Amount, TimeGenerated) values ('202611211000', 3, 60, '50', 'Y')"_s)));
    for (int number = 1; number <= 3; ++number)
        addTicket(u"202611211000"_s, u"00"_s + QString::number(number), u"NEW00"_s + QString::number(number));
    addTicket(u"202611200900"_s, u"001"_s, u"OLD001"_s);

    bool missed = false;
    QStringList listed;
    bool previewEnabledBefore = true;
    int previewPages = 0;
    onModal<QDialog>(u"PrintExistingTickets"_s, missed, [&](QDialog& dialog) {
        auto* groups = dialog.findChild<QTreeWidget*>(u"groups"_s);
        auto* preview = dialog.findChild<QPushButton*>(u"preview"_s);
        for (int row = 0; row < groups->topLevelItemCount(); ++row)
            listed.append(groups->topLevelItem(row)->text(0));
        previewEnabledBefore = preview->isEnabled();
        groups->topLevelItem(0)->setSelected(true);
        dialog.findChild<QComboBox*>(u"size"_s)->setCurrentIndex(2);
        onModal<QPrintPreviewDialog>(u"TicketSheetPreview"_s, missed, [&](QPrintPreviewDialog& shown) {
            previewPages = shown.findChild<QPrintPreviewWidget*>()->pageCount();
            shown.reject();
            QTimer::singleShot(0, &dialog, &QDialog::reject);
        });
        preview->click();
    });
    QVERIFY(m_component->callWithConnection(u"PrintPreview"_s, m_db->connection(), {u"C:\\Server\\host.exe"_s}));
    QVERIFY(!missed);
    QCOMPARE(listed, (QStringList {u"202611211000"_s, u"202611200900"_s}));
    QVERIFY(!previewEnabledBefore);
    QCOMPARE(previewPages, 1);
}

void TestReportComponent::testExistingTicketsGoToTheReceiptPrinter()
{
    QVERIFY(m_db->connection().Execute(Statement(
        u"Insert into TicketInfo (TicketGrp, Number, Time, Amount, TimeGenerated) values ('202611211000', 3, 60, '50', 'Y')"_s)));
    for (int number = 1; number <= 3; ++number)
        addTicket(u"202611211000"_s, u"00"_s + QString::number(number), u"ROLL00"_s + QString::number(number));
    Preferences(m_dir->filePath(u"prefs"_s)).SaveSetting(u"Norvantis"_s, u"POS"_s, u"COM"_s, u"COM4"_s);

    test::SerialLinePair line;
    QVERIFY2(line.isValid(), "socat is needed (scripts/packages.txt)");
    qputenv("MARLET_PORT_COM4", QFile::encodeName(line.nearEnd()));

    bool missed = false;
    QStringList sizes;
    bool sendForSheets = true;
    bool sendForReceipts = false;
    int receiptPages = 0;
    onModal<QDialog>(u"PrintExistingTickets"_s, missed, [&](QDialog& dialog) {
        auto* size = dialog.findChild<QComboBox*>(u"size"_s);
        auto* send = dialog.findChild<QPushButton*>(u"sendReceipts"_s);
        for (int index = 0; index < size->count(); ++index)
            sizes.append(size->itemText(index));
        dialog.findChild<QTreeWidget*>(u"groups"_s)->topLevelItem(0)->setSelected(true);
        size->setCurrentIndex(2);
        sendForSheets = send->isEnabled();
        size->setCurrentIndex(3);
        sendForReceipts = send->isEnabled();
        send->click();
        onModal<QPrintPreviewDialog>(u"ReceiptPreview"_s, missed, [&](QPrintPreviewDialog& shown) {
            receiptPages = shown.findChild<QPrintPreviewWidget*>()->pageCount();
            shown.reject();
            QTimer::singleShot(0, &dialog, &QDialog::reject);
        });
        dialog.findChild<QPushButton*>(u"preview"_s)->click();
    });
    QVERIFY(m_component->callWithConnection(u"PrintPreview"_s, m_db->connection(), {u"C:\\Server\\host.exe"_s}));
    qunsetenv("MARLET_PORT_COM4");
    QVERIFY(!missed);
    QCOMPARE(sizes.mid(3),
        (QStringList {u"Receipt 58 mm (one ticket a receipt)"_s, u"Receipt 80 mm (one ticket a receipt)"_s}));
    QVERIFY(!sendForSheets);
    QVERIFY(sendForReceipts);
    QCOMPARE(receiptPages, 3);

    Preferences preferences(m_dir->filePath(u"prefs"_s));
    const auto tickets = groupTickets(m_db->connection(), u"202611211000"_s, preferences);
    QVERIFY(tickets && tickets->size() == 3);
    QByteArray expected;
    for (const SheetTicket& ticket : *tickets)
        expected += escposReceipt(ticket, ReceiptPaper::narrow(), ReceiptContent());
    QVERIFY(expected.contains("User: ROLL002"));
    QCOMPARE(line.read(expected.size()), expected);
}

void TestReportComponent::testSettingsWindowSavesWhatWasChosen()
{
    bool missed = false;
    QStringList listed;
    onModal<QDialog>(u"PrintSettings"_s, missed, [&](QDialog& dialog) {
        dialog.findChild<QLineEdit*>(u"prefix"_s)->setText(u"xyz"_s);
        dialog.findChild<QRadioButton*>(u"printType1"_s)->click();
        dialog.findChild<QCheckBox*>(u"quickTicket"_s)->setChecked(true);
        dialog.findChild<QComboBox*>(u"minutes"_s)->setCurrentText(u"60"_s);
        dialog.findChild<QComboBox*>(u"cost"_s)->setCurrentText(u"50"_s);
        dialog.findChild<QCheckBox*>(u"timeTicket"_s)->setChecked(true);
        dialog.findChild<QPushButton*>(u"add"_s)->click();
        dialog.findChild<QCheckBox*>(u"vip"_s)->setChecked(true);
        dialog.findChild<QPushButton*>(u"add"_s)->click();
        auto* list = dialog.findChild<QListWidget*>(u"quickTickets"_s);
        for (int row = 0; row < list->count(); ++row)
            listed.append(list->item(row)->text());
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
    QVERIFY(m_component->callWithConnection(u"LoadPrintSettings"_s, m_db->connection(), {false}));
    QVERIFY(!missed);
    const QStringList expected = {u"60min(s) - N50 [Time Ticket]"_s, u"60min(s) - N50 [Time Ticket] - VIP"_s};
    QCOMPARE(listed, expected);

    Preferences prefs(m_dir->filePath(u"prefs"_s));
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"STR"_s, {}), u"XYZ"_s);
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"PrintType"_s, {}), u"1"_s);
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"QuickTicket"_s, {}), u"1"_s);
    Recordset rows;
    QVERIFY(rows.Open(Statement(u"Select * from QuickT"_s), m_db->connection()));
    QStringList stored;
    for (; !rows.Eof(); rows.MoveNext())
        stored.append(rows.value(u"TicketType"_s).toString());
    QCOMPARE(stored, expected);
}

void TestReportComponent::testSettingsWindowRefusesADuplicateAndCancelKeepsAll()
{
    QVERIFY(m_db->connection().Execute(
        Statement(u"Insert into QuickT (TicketType) values ('30min(s) - N20 [Normal Ticket]')"_s)));
    bool missed = false;
    QString warning;
    int entries = 0;
    onModal<QDialog>(u"PrintSettings"_s, missed, [&](QDialog& dialog) {
        dialog.findChild<QComboBox*>(u"minutes"_s)->setCurrentText(u"30"_s);
        dialog.findChild<QComboBox*>(u"cost"_s)->setCurrentText(u"20"_s);
        onModal<QMessageBox>({}, missed, [&](QMessageBox& box) {
            warning = box.text();
            box.accept();
        });
        dialog.findChild<QPushButton*>(u"add"_s)->click();
        entries = dialog.findChild<QListWidget*>(u"quickTickets"_s)->count();
        dialog.findChild<QLineEdit*>(u"prefix"_s)->setText(u"QQQ"_s);
        dialog.reject();
    });
    QVERIFY(m_component->callWithConnection(u"LoadPrintSettings"_s, m_db->connection(), {false}));
    QVERIFY(!missed);
    QCOMPARE(warning, u"Quick-Ticket entry already exist!"_s);
    QCOMPARE(entries, 1);
    Preferences prefs(m_dir->filePath(u"prefs"_s));
    QCOMPARE(prefs.GetSetting(u"Norvantis"_s, u"Option"_s, u"STR"_s, u"<absent>"_s), u"<absent>"_s);
}

void TestReportComponent::testComponentIsReachedByName()
{
    registerReportComponent(Preferences(m_dir->filePath(u"prefs"_s)));
    QtPlatform platform;
    const std::unique_ptr<NamedComponent> component = platform.createComponent(u"VELLUM.SHEETS"_s);
    QVERIFY(dynamic_cast<ReportComponent*>(component.get()));
    ComponentRegistry::remove(u"Vellum.Sheets"_s);
    QVERIFY(!platform.createComponent(u"Vellum.Sheets"_s));
}

QTEST_MAIN(TestReportComponent)
#include "TestReportComponent.moc"
