#pragma once

class QPagedPaintDevice;
class QPainter;
class QRectF;

namespace marlet {

struct SheetTicket;
struct TicketSheet;

// Paints a ticket sheet onto a paged device (a printer, a PDF writer), using the device's page as
// it is set: boxes in a grid of the sheet's tickets per row and the sheet's rows per page, dashed
// cut lines between them, and a new page whenever a page is full. Empty slots stay blank.
// Returns false when the device cannot be painted on.
bool paintTicketSheet(const TicketSheet& sheet, QPagedPaintDevice& device);

// One ticket box inside `box`, in device coordinates of the painter.
void paintTicketBox(QPainter& painter, const SheetTicket& ticket, const QRectF& box);

} // namespace marlet
