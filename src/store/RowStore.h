#pragma once

#include <QByteArray>
#include <QList>
#include <QVariant>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace marlet {

// One stored value of a result row as the engine gave it, before it is typed by the schema.
struct Cell
{
    enum class Kind : std::uint8_t { Null, Integer, Real, Text, Blob };
    Kind kind = Kind::Null;
    qint64 integer = 0;
    double real = 0;
    std::string_view bytes; // UTF-8 text or blob, pointing into the store

    // The value as the engine would bind it back: qint64, double, QString, QByteArray or null.
    QVariant toVariant() const;
};

// The rows of a static result set, packed: each row is one run of bytes in large blocks, a tag byte
// per value followed by its payload, so that a hundred thousand tickets cost little more than their
// text. Rows are written once; changing a row writes a new run and points the row at it.
class RowStore
{
public:
    explicit RowStore(int columnCount = 0);

    int columnCount() const { return m_columnCount; }
    qsizetype rowCount() const { return qsizetype(m_rows.size()); }
    void clear(int columnCount);

    // Filling: the values of one row in column order between beginRow and endRow.
    void beginRow() { m_scratch.clear(); }
    void addNull();
    void addInteger(qint64 value);
    void addReal(double value);
    void addText(const char* utf8, std::size_t size);
    void addBlob(const char* bytes, std::size_t size);
    void addVariant(const QVariant& value); // as toVariant gives them
    void endRow(); // appends the row
    void endRow(qsizetype replacing); // puts the row in place of an existing one

    void removeRow(qsizetype row);
    // All values of a row, in column order.
    void decodeRow(qsizetype row, std::vector<Cell>& cells) const;

private:
    const char* store(const std::string& bytes);

    int m_columnCount = 0;
    std::string m_scratch;
    std::vector<const char*> m_rows;
    std::vector<std::unique_ptr<char[]>> m_blocks;
    std::size_t m_blockUsed = 0;
    std::size_t m_blockSize = 0;
};

} // namespace marlet
