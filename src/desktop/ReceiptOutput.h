#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class QPagedPaintDevice;

namespace marlet {

struct ReceiptContent;
struct ReceiptPaper;
struct SheetTicket;

// ESC/POS bytes to a receipt printer on a serial line: a port name as the POS tab names them
// (COM1 ... LPT3, see QtSerialPort::devicePath) or a device path, at 9600 baud, 8N1.
bool sendToSerialPrinter(const QByteArray& bytes, const QString& portName, QString& error);

// ESC/POS bytes to a raw print queue of the system's print service (lp -d QUEUE -o raw).
bool sendToPrintQueue(const QByteArray& bytes, const QString& queue, QString& error);

// The receipts on a paged device (a printer, a PDF writer), one page of the paper's width per
// ticket, as long as it needs. False when there is no ticket or the device cannot be painted on.
bool paintReceipts(const QList<SheetTicket>& tickets,
    const ReceiptPaper& paper,
    const ReceiptContent& content,
    QPagedPaintDevice& device);

// A PDF preview of the receipts, as paintReceipts lays them out.
bool writeReceiptPdf(const QList<SheetTicket>& tickets,
    const ReceiptPaper& paper,
    const ReceiptContent& content,
    const QString& file,
    QString& error);

} // namespace marlet
