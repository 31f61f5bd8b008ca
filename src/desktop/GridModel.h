#pragma once

#include <QAbstractTableModel>

namespace marlet {

class GridData;

// A table view's window on a grid's cells. Nothing is copied: cells are read from the grid's row
// lines when the view paints them, so a hundred thousand rows cost no more than the rows on
// screen. The grid's first fixed row is the view's header; the data rows follow it.
//
// The view learns of changes only through sync(), which announces the grid's new shape in one
// step however many changes came before it.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit GridModel(const GridData& grid, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // Grid row shown by a model row, and back; -1 for a fixed row, which has no model row.
    int gridRow(int modelRow) const { return modelRow + m_fixedRows; }
    int modelRow(int gridRow) const { return gridRow >= m_fixedRows ? gridRow - m_fixedRows : -1; }
    int fixedRows() const { return m_fixedRows; }

    void sync();

private:
    const GridData& m_grid;
    int m_rows = 0;
    int m_cols = 0;
    int m_fixedRows = 0;
};

} // namespace marlet
