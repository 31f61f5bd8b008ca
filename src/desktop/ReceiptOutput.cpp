#include "desktop/ReceiptOutput.h"

#include "desktop/QtSerialPort.h"
#include "printing/LoginCode.h"
#include "printing/Receipt.h"
#include "printing/TicketSheet.h"

#include <QFontMetricsF>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>

#include <optional>

namespace marlet {

namespace {

constexpr int SerialBaud = 9600;
constexpr qreal SideMarginMm = 4;
constexpr qreal LineMm = 4.2;
constexpr qreal LargeLineMm = 8;

// A monospaced font whose `columns` characters fill `width`.
QFont receiptFont(qreal width, int columns, bool bold)
{
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setBold(bold);
    font.setPixelSize(100);
    const qreal advance = QFontMetricsF(font).horizontalAdvance(QString(columns, u'M'));
    font.setPixelSize(qMax(1, int(100 * width / advance)));
    return font;
}

qreal receiptHeightMm(const QList<ReceiptLine>& lines, const ReceiptPaper& paper, bool withCode)
{
    qreal height = 2 * SideMarginMm;
    for (const ReceiptLine& line : lines)
        height += line.large ? LargeLineMm : LineMm;
    return height + (withCode ? paper.millimetres * 0.5 + LineMm : 0);
}

void paintReceipt(QPainter& painter,
    const SheetTicket& ticket,
    const QList<ReceiptLine>& lines,
    const ReceiptPaper& paper,
    qreal millimetre)
{
    const qreal left = SideMarginMm * millimetre;
    const qreal width = (paper.millimetres - 2 * SideMarginMm) * millimetre;
    qreal top = SideMarginMm * millimetre;
    for (const ReceiptLine& line : lines) {
        const qreal height = (line.large ? LargeLineMm : LineMm) * millimetre;
        painter.setFont(receiptFont(width, line.large ? paper.columns / 2 : paper.columns, line.bold));
        painter.drawText(QRectF(left, top, width, height),
            (line.centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter,
            line.text);
        top += height;
    }
    const std::optional<QrMatrix> code = ticket.loginCode.isEmpty() ? std::nullopt : encodeQr(ticket.loginCode);
    if (!code)
        return;
    const qreal side = paper.millimetres * 0.5 * millimetre;
    const qreal module = side / (code->width + 4);
    const QPointF origin(left + (width - side) / 2 + 2 * module, top + LineMm * millimetre / 2 + 2 * module);
    for (int y = 0; y < code->width; ++y) {
        for (int x = 0; x < code->width; ++x) {
            if (code->dark(x, y))
                painter.fillRect(QRectF(origin.x() + x * module, origin.y() + y * module, module, module), Qt::black);
        }
    }
}

} // namespace

bool sendToSerialPrinter(const QByteArray& bytes, const QString& portName, QString& error)
{
    QtSerialPort port;
    if (!port.open(portName, SerialBaud)) {
        error = QStringLiteral("cannot open the receipt printer's port %1 (%2)")
                    .arg(portName, QtSerialPort::devicePath(portName));
        return false;
    }
    const bool written = port.write(bytes);
    port.close();
    if (!written)
        error = QStringLiteral("the receipt printer on %1 did not take the receipt").arg(portName);
    return written;
}

bool sendToPrintQueue(const QByteArray& bytes, const QString& queue, QString& error)
{
    QProcess lp;
    lp.start(QStringLiteral("lp"), {QStringLiteral("-d"), queue, QStringLiteral("-o"), QStringLiteral("raw")});
    if (!lp.waitForStarted(10000)) {
        error = QStringLiteral("cannot start lp, the print service's command (install cups-client)");
        return false;
    }
    lp.write(bytes);
    lp.closeWriteChannel();
    if (!lp.waitForFinished(30000) || lp.exitStatus() != QProcess::NormalExit || lp.exitCode() != 0) {
        error = QStringLiteral("the print queue %1 refused the receipt: %2")
                    .arg(queue, QString::fromLocal8Bit(lp.readAllStandardError()).trimmed());
        return false;
    }
    return true;
}

bool paintReceipts(const QList<SheetTicket>& tickets,
    const ReceiptPaper& paper,
    const ReceiptContent& content,
    QPagedPaintDevice& device)
{
    if (tickets.isEmpty())
        return false;
    device.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter;
    for (qsizetype i = 0; i < tickets.size(); ++i) {
        const QList<ReceiptLine> lines = receiptLines(tickets.at(i), paper, content);
        const qreal height = receiptHeightMm(lines, paper, !tickets.at(i).loginCode.isEmpty());
        device.setPageSize(QPageSize(QSizeF(paper.millimetres, height), QPageSize::Millimeter));
        if (i == 0 ? !painter.begin(&device) : !device.newPage())
            return false;
        paintReceipt(painter, tickets.at(i), lines, paper, device.logicalDpiX() / 25.4);
    }
    return painter.end();
}

bool writeReceiptPdf(const QList<SheetTicket>& tickets,
    const ReceiptPaper& paper,
    const ReceiptContent& content,
    const QString& file,
    QString& error)
{
    if (tickets.isEmpty()) {
        error = QStringLiteral("no tickets to preview");
        return false;
    }
    QPdfWriter writer(file);
    if (!paintReceipts(tickets, paper, content, writer)) {
        error = QStringLiteral("cannot write %1").arg(file);
        return false;
    }
    return true;
}

} // namespace marlet
