#include "desktop/GridModel.h"

#include "platform/GridData.h"

namespace marlet {

namespace {

// Cell alignment by the grid's numbers: 0-2 left, 3-5 centre, 6-8 right, each top, middle or
// bottom; anything else (the general setting) is left and middle.
Qt::Alignment alignmentFor(int code)
{
    if (code < 0 || code > 8)
        return Qt::AlignLeft | Qt::AlignVCenter;
    static constexpr Qt::AlignmentFlag horizontal[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    static constexpr Qt::AlignmentFlag vertical[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
    return horizontal[code / 3] | vertical[code % 3];
}

} // namespace

GridModel::GridModel(const GridData& grid, QObject* parent)
    : QAbstractTableModel(parent)
    , m_grid(grid)
{
    sync();
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_cols;
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return m_grid.textMatrix(gridRow(index.row()), index.column());
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alignmentFor(m_grid.colAlignment(index.column())));
    default:
        return QVariant();
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || m_fixedRows == 0)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return m_grid.textMatrix(0, section);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alignmentFor(m_grid.colAlignment(section)));
    default:
        return QVariant();
    }
}

void GridModel::sync()
{
    const int fixedRows = qBound(0, m_grid.fixedRows(), m_grid.rows());
    const int rows = m_grid.rows() - fixedRows;
    const int cols = m_grid.cols();
    if (fixedRows != m_fixedRows || cols != m_cols) {
        beginResetModel();
        m_fixedRows = fixedRows;
        m_rows = rows;
        m_cols = cols;
        endResetModel();
        return;
    }
    if (rows > m_rows) {
        beginInsertRows(QModelIndex(), m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows(QModelIndex(), rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
    // Any cell may have changed; the view repaints only what it shows.
    if (m_rows > 0 && m_cols > 0)
        emit dataChanged(index(0, 0), index(m_rows - 1, m_cols - 1), {Qt::DisplayRole});
    if (m_cols > 0)
        emit headerDataChanged(Qt::Horizontal, 0, m_cols - 1);
}

} // namespace marlet
