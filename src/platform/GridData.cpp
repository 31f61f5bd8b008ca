#include "platform/GridData.h"

#include "platform/Control.h"

namespace marlet {

namespace {

constexpr QChar cellSeparator = u'\t';
constexpr int defaultColWidth = 960;

// The cells of a row line, padded or cut to the column count.
QStringList splitRow(const QString& line, int cols)
{
    QStringList cells = line.split(cellSeparator);
    while (cells.size() < cols)
        cells.append(QString());
    if (cells.size() > cols)
        cells.resize(cols);
    return cells;
}

} // namespace

GridData::GridData(Control& owner)
    : m_owner(owner)
    , m_rows(2)
{
}

void GridData::changed()
{
    m_owner.notify(Property::Grid);
}

void GridData::setRows(int rows)
{
    rows = qMax(rows, 0);
    if (rows == this->rows())
        return;
    m_rows.resize(size_t(rows));
    m_row = qMin(m_row, qMax(rows - 1, 0));
    m_rowSel = qMin(m_rowSel, qMax(rows - 1, 0));
    changed();
}

void GridData::setCols(int cols)
{
    cols = qMax(cols, 0);
    if (cols == m_cols)
        return;
    m_cols = cols;
    m_col = qMin(m_col, qMax(cols - 1, 0));
    m_colSel = qMin(m_colSel, qMax(cols - 1, 0));
    changed();
}

QString GridData::textMatrix(int row, int col) const
{
    if (row < 0 || row >= rows() || col < 0 || col >= m_cols)
        return QString();
    const QString& line = m_rows[size_t(row)];
    qsizetype start = 0;
    for (int c = 0; c < col; ++c) {
        start = line.indexOf(cellSeparator, start);
        if (start < 0)
            return QString();
        ++start;
    }
    const qsizetype end = line.indexOf(cellSeparator, start);
    return line.mid(start, end < 0 ? -1 : end - start);
}

void GridData::setTextMatrix(int row, int col, const QString& text)
{
    if (row < 0 || row >= rows() || col < 0 || col >= m_cols)
        return;
    QStringList cells = splitRow(m_rows[size_t(row)], m_cols);
    QString clean = text;
    clean.replace(cellSeparator, u' ');
    if (cells[col] == clean)
        return;
    cells[col] = clean;
    m_rows[size_t(row)] = cells.join(cellSeparator);
    changed();
}

const QString& GridData::rowText(int row) const
{
    static const QString none;
    if (row < 0 || row >= rows())
        return none;
    return m_rows[size_t(row)];
}

QStringList GridData::rowCells(int row) const
{
    return splitRow(rowText(row), m_cols);
}

void GridData::addItem(const QString& line, int before)
{
    QString row = line;
    if (row.count(cellSeparator) >= m_cols)
        row = splitRow(row, m_cols).join(cellSeparator);
    if (before < 0 || before >= rows())
        m_rows.push_back(std::move(row));
    else
        m_rows.insert(m_rows.begin() + before, std::move(row));
    changed();
}

void GridData::removeItem(int row)
{
    if (row < 0 || row >= rows())
        return;
    m_rows.erase(m_rows.begin() + row);
    m_row = qMin(m_row, qMax(rows() - 1, 0));
    m_rowSel = qMin(m_rowSel, qMax(rows() - 1, 0));
    changed();
}

void GridData::clearCells()
{
    for (QString& row : m_rows)
        row.clear();
    changed();
}

void GridData::fit(std::vector<int>& values, int fill)
{
    if (values.size() < size_t(m_cols))
        values.resize(size_t(m_cols), fill);
}

int GridData::colWidth(int col) const
{
    if (col < 0 || size_t(col) >= m_colWidths.size())
        return defaultColWidth;
    return m_colWidths[size_t(col)];
}

void GridData::setColWidth(int col, int twips)
{
    if (col < 0 || col >= m_cols)
        return;
    fit(m_colWidths, defaultColWidth);
    m_colWidths[size_t(col)] = twips;
    changed();
}

int GridData::colAlignment(int col) const
{
    if (col < 0 || size_t(col) >= m_colAlignments.size())
        return 0;
    return m_colAlignments[size_t(col)];
}

void GridData::setColAlignment(int col, int alignment)
{
    if (col < 0 || col >= m_cols)
        return;
    fit(m_colAlignments, 0);
    m_colAlignments[size_t(col)] = alignment;
    changed();
}

void GridData::setRow(int row)
{
    if (row < 0 || row >= rows())
        return;
    m_row = row;
    m_rowSel = row;
    changed();
}

void GridData::setCol(int col)
{
    if (col < 0 || col >= m_cols)
        return;
    m_col = col;
    m_colSel = col;
    changed();
}

void GridData::setRowSel(int row)
{
    if (row < 0 || row >= rows())
        return;
    m_rowSel = row;
    changed();
}

void GridData::setColSel(int col)
{
    if (col < 0 || col >= m_cols)
        return;
    m_colSel = col;
    changed();
}

void GridData::setMouseCell(int row, int col)
{
    m_mouseRow = row;
    m_mouseCol = col;
}

} // namespace marlet
