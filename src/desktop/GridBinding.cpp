#include "desktop/Bindings.h"

#include "desktop/FormBinder.h"
#include "desktop/GridModel.h"
#include "desktop/Units.h"
#include "platform/GridData.h"
#include "platform/Operator.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QMouseEvent>
#include <QTableView>
#include <QTimer>

namespace marlet {

namespace {

int hostButton(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return MouseButton::Left;
    case Qt::RightButton:
        return MouseButton::Right;
    default:
        return 0;
    }
}

bool isPress(const QEvent* event)
{
    return event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
}

bool isMouseEvent(const QEvent* event)
{
    return isPress(event) || event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::MouseMove;
}

// Column widths were measured with a font whose digits are 6 pixels wide. A wider font widens the
// columns in proportion, so that what fitted a column (a twelve-digit ticket group) still does.
int columnPixels(int twips, const QFontMetrics& metrics)
{
    constexpr double measuredDigitWidth = 6.0;
    const double scale = qMax(1.0, metrics.horizontalAdvance(u'0') / measuredDigitWidth);
    return qRound(pixelsFromTwips(twips) * scale);
}

} // namespace

GridBinding::GridBinding(Control& control, QTableView* table, FormBinder& binder)
    : ControlBinding(control, table, binder)
    , m_table(table)
    , m_model(new GridModel(control.grid(), this))
{
    // The grid shows; the model holds the current cell. Nothing is edited in place.
    m_table->setModel(m_model);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionMode(QAbstractItemView::NoSelection);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    watch(m_table->viewport());
    watch(m_table->horizontalHeader()->viewport());
    // Keyboard moves of the current cell: the model's current cell follows.
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        if (!current.isValid() || this->binder().refreshing())
            return;
        GridData& cells = this->control().grid();
        cells.setRow(m_model->gridRow(current.row()));
        cells.setCol(current.column());
    });
    applyColumns();
}

void GridBinding::refreshOwn(Property property)
{
    if (property == Property::Grid) {
        schedule();
    } else if (property == Property::Font) {
        // Rows are as high as the grid's font needs.
        m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
        applyColumns();
    }
}

void GridBinding::schedule()
{
    if (m_pending)
        return;
    m_pending = true;
    QTimer::singleShot(0, this, &GridBinding::flush);
}

void GridBinding::flush()
{
    if (!m_pending)
        return;
    m_pending = false;
    FormBinder::RefreshScope scope(binder());
    m_model->sync();
    applyColumns();
    applySelection();
}

void GridBinding::applyColumns()
{
    const GridData& cells = control().grid();
    m_table->horizontalHeader()->setVisible(m_model->fixedRows() > 0);
    for (int col = 0; col < cells.cols(); ++col) {
        const int width = columnPixels(cells.colWidth(col), m_table->fontMetrics());
        if (m_table->columnWidth(col) != width)
            m_table->setColumnWidth(col, width);
    }
}

void GridBinding::applySelection()
{
    const GridData& cells = control().grid();
    const int top = m_model->modelRow(qMin(cells.row(), cells.rowSel()));
    const int bottom = m_model->modelRow(qMax(cells.row(), cells.rowSel()));
    QItemSelectionModel* selection = m_table->selectionModel();
    if (top < 0 || bottom >= m_model->rowCount() || m_model->columnCount() == 0) {
        selection->clear();
        return;
    }
    const int left = qMin(cells.col(), cells.colSel());
    const int right = qMin(qMax(cells.col(), cells.colSel()), m_model->columnCount() - 1);
    selection->select(
        QItemSelection(m_model->index(top, left), m_model->index(bottom, right)), QItemSelectionModel::ClearAndSelect);
    selection->setCurrentIndex(
        m_model->index(m_model->modelRow(cells.row()), cells.col()), QItemSelectionModel::NoUpdate);
}

bool GridBinding::handleEvent(QObject* watched, QEvent* event)
{
    if (!isMouseEvent(event))
        return false;
    if (watched == m_table->viewport())
        return mouseOnCells(event);
    if (watched == m_table->horizontalHeader()->viewport())
        return mouseOnHeader(event);
    return false;
}

// A press on a cell is a grid click with the pointer's row and column; the table's own mouse
// handling is kept out, so that only the model moves the current cell.
bool GridBinding::mouseOnCells(QEvent* event)
{
    if (!isPress(event))
        return true;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const int button = hostButton(mouse->button());
    flush();
    const QModelIndex index = m_table->indexAt(mouse->position().toPoint());
    dispatch([this, index, button] {
        if (index.isValid() && button != 0)
            Operator::clickGrid(control(), m_model->gridRow(index.row()), index.column(), button);
        else
            Operator::focus(control());
    });
    return true;
}

// The header is the grid's fixed row 0.
bool GridBinding::mouseOnHeader(QEvent* event)
{
    if (!isPress(event))
        return true;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const int button = hostButton(mouse->button());
    const int col = m_table->horizontalHeader()->logicalIndexAt(mouse->position().toPoint());
    dispatch([this, col, button] {
        if (col >= 0 && button != 0)
            Operator::clickGrid(control(), 0, col, button);
        else
            Operator::focus(control());
    });
    return true;
}

} // namespace marlet
