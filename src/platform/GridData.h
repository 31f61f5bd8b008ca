#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace marlet {

class Control;

// Cells of a grid control. A row is kept as one tab-joined text, so that a grid of a hundred
// thousand tickets costs one string a row rather than one object a cell; cells are split out on
// demand. Rows and columns are counted from 0, the fixed header rows included.
class GridData
{
public:
    explicit GridData(Control& owner);

    int rows() const { return int(m_rows.size()); }
    // Grows with empty rows or cuts rows from the end.
    void setRows(int rows);
    int cols() const { return m_cols; }
    void setCols(int cols);
    int fixedRows() const { return m_fixedRows; }
    void setFixedRows(int rows) { m_fixedRows = rows; }

    QString textMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString& text);
    // The whole row as its tab-joined line.
    const QString& rowText(int row) const;
    QStringList rowCells(int row) const;
    // Adds a row from a tab-separated line, at the end or before the given row.
    void addItem(const QString& line, int before = -1);
    void removeItem(int row);
    // Empties every cell, keeping the row and column counts.
    void clearCells();

    int colWidth(int col) const;
    void setColWidth(int col, int twips);
    int colAlignment(int col) const;
    void setColAlignment(int col, int alignment);

    // Current cell and selection.
    int row() const { return m_row; }
    void setRow(int row);
    int col() const { return m_col; }
    void setCol(int col);
    int rowSel() const { return m_rowSel; }
    void setRowSel(int row);
    int colSel() const { return m_colSel; }
    void setColSel(int col);
    // Where the pointer was at the last mouse event.
    int mouseRow() const { return m_mouseRow; }
    int mouseCol() const { return m_mouseCol; }
    void setMouseCell(int row, int col);

    // Text of the current cell.
    QString text() const { return textMatrix(m_row, m_col); }

private:
    void changed();
    void fit(std::vector<int>& values, int fill);

    Control& m_owner;
    std::vector<QString> m_rows;
    int m_cols = 2;
    int m_fixedRows = 1;
    std::vector<int> m_colWidths;
    std::vector<int> m_colAlignments;
    int m_row = 0;
    int m_col = 0;
    int m_rowSel = 0;
    int m_colSel = 0;
    int m_mouseRow = 0;
    int m_mouseCol = 0;
};

} // namespace marlet
