#include "desktop/TicketSheetPainter.h"

#include "printing/LoginCode.h"
#include "printing/TicketSheet.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>

#include <cmath>
#include <optional>

namespace marlet {

namespace {

constexpr int QuietModules = 2;

struct BoxLine
{
    QString left;
    QString right;
    double size = 0.75; // font pixel size as a share of the line height
    bool bold = false;
    bool italic = false;
    Qt::Alignment alignment = Qt::AlignLeft;
    bool whole = false; // made as small as needed rather than cut short
};

// The texts of a box in three groups: the heading (title and address), the credentials, and the
// details (time and price, expiry, time rule, the data quota when the ticket has one, the number).
struct BoxText
{
    QList<BoxLine> heading;
    QList<BoxLine> credentials;
    QList<BoxLine> details;
};

BoxText boxText(const SheetTicket& ticket)
{
    BoxText text {
        {{ticket.title, {}, 0.8, true, false, Qt::AlignHCenter},
            {ticket.address, {}, 0.6, false, true, Qt::AlignHCenter}},
        {{QStringLiteral("User: ") + ticket.userName, {}, 0.8, true, false, Qt::AlignLeft, true},
            {QStringLiteral("Password: ") + ticket.password, {}, 0.8, true, false, Qt::AlignLeft, true}},
        {{QStringLiteral("Time: ") + ticket.timeText, ticket.price, 0.7},
            {ticket.expiryText, {}, 0.7},
            {ticket.timeRule, {}, 0.7}},
    };
    if (!ticket.quotaText.isEmpty())
        text.details.append({QStringLiteral("Quota: ") + ticket.quotaText, {}, 0.7});
    text.details.append({ticket.number, {}, 0.55, false, false, Qt::AlignRight});
    return text;
}

// The font of a line, made smaller while the text is wider than the box: down to two thirds, or
// as far as needed for a line that must show whole.
QFont fittingFont(const BoxLine& line, qreal lineHeight, qreal width)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    // One glyph per character: no ligatures, so that every character of a password stands alone.
    font.setStyleStrategy(QFont::PreferNoShaping);
    font.setBold(line.bold);
    font.setItalic(line.italic);
    const QString text = line.right.isEmpty() ? line.left : line.left + QStringLiteral("  ") + line.right;
    const qreal wanted = lineHeight * line.size;
    font.setPixelSize(qMax(1, int(wanted)));
    const qreal advance = QFontMetricsF(font).horizontalAdvance(text);
    if (advance > width)
        font.setPixelSize(qMax(1, int(qMax(wanted * width / advance, line.whole ? 0 : wanted * 2 / 3))));
    return font;
}

void paintLine(QPainter& painter, const BoxLine& line, const QRectF& area)
{
    painter.setFont(fittingFont(line, area.height(), area.width()));
    const QFontMetricsF metrics(painter.font());
    qreal leftWidth = area.width();
    if (!line.right.isEmpty()) {
        const qreal rightWidth = qMin(metrics.horizontalAdvance(line.right), area.width() / 2);
        painter.drawText(
            area, Qt::AlignRight | Qt::AlignVCenter, metrics.elidedText(line.right, Qt::ElideRight, rightWidth));
        leftWidth -= rightWidth + metrics.horizontalAdvance(u' ');
    }
    // A line that must show whole was fitted already; the device's metrics may still differ from
    // the fitting ones by a hair, which must not cost it its last characters.
    painter.drawText(area,
        line.alignment | Qt::AlignVCenter,
        line.whole ? line.left : metrics.elidedText(line.left, Qt::ElideRight, leftWidth));
}

// Lines stacked from the top of `area`, each `lineHeight` high; returns the area left below them.
QRectF paintLines(QPainter& painter, const QList<BoxLine>& lines, QRectF area, qreal lineHeight)
{
    for (const BoxLine& line : lines) {
        paintLine(painter, line, QRectF(area.topLeft(), QSizeF(area.width(), lineHeight)));
        area.setTop(area.top() + lineHeight);
    }
    return area;
}

// A box about as high as wide: every line under the other.
void paintTallBox(QPainter& painter, const BoxText& text, const QRectF& inner)
{
    const qreal lineHeight
        = inner.height() / qreal(text.heading.size() + text.credentials.size() + text.details.size());
    QRectF rest = paintLines(painter, text.heading, inner, lineHeight);
    painter.drawLine(rest.topLeft(), rest.topRight());
    rest = paintLines(painter, text.credentials, rest, lineHeight);
    paintLines(painter, text.details, rest, lineHeight);
}

// A wide box: the heading across the top, then the credentials in large type on the left and
// the details on the right.
void paintWideBox(QPainter& painter, const BoxText& text, const QRectF& inner)
{
    const QRectF body = paintLines(painter, text.heading, inner, inner.height() * 0.15);
    painter.drawLine(body.topLeft(), body.topRight());
    const qreal split = body.left() + body.width() * 0.55;
    const QRectF left(body.topLeft(), QPointF(split - body.width() * 0.02, body.bottom()));
    const QRectF right(QPointF(split + body.width() * 0.02, body.top()), body.bottomRight());
    painter.drawLine(QPointF(split, body.top() + body.height() * 0.1), QPointF(split, body.bottom()));
    QList<BoxLine> credentials = text.credentials;
    for (BoxLine& line : credentials)
        line.size *= 0.6; // the lines are high here: large type, yet not crowding the box
    paintLines(painter, credentials, left, left.height() / qreal(credentials.size()));
    paintLines(painter, text.details, right, right.height() / qreal(text.details.size()));
}

void paintCutLines(QPainter& painter, const QSizeF& cell, int columns, int rows, qreal millimetre)
{
    QPen pen(Qt::gray, millimetre * 0.2, Qt::DashLine);
    painter.setPen(pen);
    for (int column = 1; column < columns; ++column)
        painter.drawLine(QPointF(cell.width() * column, 0), QPointF(cell.width() * column, cell.height() * rows));
    for (int row = 1; row <= rows; ++row)
        painter.drawLine(QPointF(0, cell.height() * row), QPointF(cell.width() * columns, cell.height() * row));
}

// The ticket's QR code, black modules on white with a quiet zone of two modules (the box around
// it is blank too), as large as `area` allows, with whole device pixels a module where there are
// enough of them.
void paintQrCode(QPainter& painter, const QrMatrix& code, const QRectF& area)
{
    const int side = code.width + 2 * QuietModules;
    qreal module = qMin(area.width(), area.height()) / side;
    if (module >= 2)
        module = std::floor(module);
    const QPointF origin(area.center().x() - module * side / 2, area.center().y() - module * side / 2);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(QRectF(origin, QSizeF(module * side, module * side)), Qt::white);
    for (int y = 0; y < code.width; ++y) {
        for (int x = 0; x < code.width; ++x) {
            if (code.dark(x, y))
                painter.fillRect(QRectF(origin.x() + (x + QuietModules) * module,
                                     origin.y() + (y + QuietModules) * module,
                                     module,
                                     module),
                    Qt::black);
        }
    }
    painter.restore();
}

} // namespace

void paintTicketBox(QPainter& painter, const SheetTicket& ticket, const QRectF& box)
{
    const qreal padding = box.height() * 0.05;
    painter.setPen(QPen(Qt::black, qMax<qreal>(1, box.height() / 200)));
    painter.drawRoundedRect(box, padding, padding);
    QRectF inner = box.adjusted(padding * 1.5, padding, -padding * 1.5, -padding);
    // The QR code takes a square at the right, beside every line of text.
    if (const std::optional<QrMatrix> code = ticket.loginCode.isEmpty() ? std::nullopt : encodeQr(ticket.loginCode)) {
        const qreal side = qMin(inner.height(), inner.width() * 0.4);
        paintQrCode(painter, *code, QRectF(inner.right() - side, inner.center().y() - side / 2, side, side));
        inner.setRight(inner.right() - side - padding);
    }
    const BoxText text = boxText(ticket);
    if (inner.width() > inner.height() * 2)
        paintWideBox(painter, text, inner);
    else
        paintTallBox(painter, text, inner);
}

bool paintTicketSheet(const TicketSheet& sheet, QPagedPaintDevice& device)
{
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal millimetre = device.logicalDpiX() / 25.4;
    const QSizeF cell(qreal(device.width()) / sheet.ticketsPerRow, qreal(device.height()) / sheet.rowsPerPage());
    const qreal gap = qMin(cell.width(), cell.height()) * 0.04;
    for (qsizetype first = 0; first < sheet.rows.size(); first += sheet.rowsPerPage()) {
        if (first > 0 && !device.newPage())
            return false;
        const int rowsOnPage = int(qMin<qsizetype>(sheet.rowsPerPage(), sheet.rows.size() - first));
        for (int row = 0; row < rowsOnPage; ++row) {
            const QList<SheetTicket>& tickets = sheet.rows.at(first + row);
            for (int column = 0; column < tickets.size(); ++column) {
                if (tickets.at(column).isEmpty())
                    continue;
                const QRectF cellArea(QPointF(cell.width() * column, cell.height() * row), cell);
                paintTicketBox(painter, tickets.at(column), cellArea.adjusted(gap, gap, -gap, -gap));
            }
        }
        paintCutLines(painter, cell, sheet.ticketsPerRow, rowsOnPage, millimetre);
    }
    return painter.end();
}

} // namespace marlet
