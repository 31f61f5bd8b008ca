#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace marlet {

class Preferences;
struct SheetTicket;

// A roll of receipt paper: its width in millimetres and the characters of the printer's normal
// font (12 x 24 dots at 203 dpi) that fit on a line.
struct ReceiptPaper
{
    int millimetres = 80;
    int columns = 48;
    int qrModule = 6; // dots per QR module

    static ReceiptPaper narrow() { return {58, 32, 4}; }
    static ReceiptPaper wide() { return {80, 48, 6}; }
};

// What a receipt shows, from the POS tab's "Ticket Display" check boxes (section POS, under the
// product word): title, time rule ("Show Ticket Type"), group number, address, and user name and
// password in double size.
struct ReceiptContent
{
    bool title = true;
    bool type = true;
    bool group = true;
    bool largeUser = false;
    bool address = true;
    bool largePassword = false;

    static ReceiptContent fromPreferences(Preferences& preferences);
};

// One line of a receipt: its text, centred or not, bold, and double width and height.
struct ReceiptLine
{
    QString text;
    bool centred = false;
    bool bold = false;
    bool large = false;
};

// The lines of one ticket's receipt, each cut to the paper's columns (half as many for a large
// line). The QR code follows them on paper; it is not a line.
QList<ReceiptLine> receiptLines(const SheetTicket& ticket, const ReceiptPaper& paper, const ReceiptContent& content);

// The ESC/POS bytes of one ticket's receipt: reset, code page 1252, the lines, the ticket's QR code
// (model 2, level M), a feed of four lines and a partial cut.
QByteArray escposReceipt(const SheetTicket& ticket, const ReceiptPaper& paper, const ReceiptContent& content);

} // namespace marlet
