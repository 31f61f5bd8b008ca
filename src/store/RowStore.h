#pragma once

#include <QByteArray>
#include <QList>
#include <QVariant>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace marlet {

// One stored value of a result row as the engine gave it, before it is typed by the schema. Small,
// since a row's values are decoded together: `integer` holds for Integer, `real` for Real.
struct Cell
{
    enum class Kind : std::uint8_t { Null, Integer, Real, Text, Blob };
    Kind kind = Kind::Null;
    std::uint32_t size = 0; // of a text or blob, in bytes
    const char* data = nullptr; // UTF-8 text or blob, pointing into the store
    union {
        qint64 integer = 0;
        double real;
    };

    std::string_view bytes() const { return {data, size}; }

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
    RowStore(RowStore&& other) noexcept;
    RowStore& operator=(RowStore&& other) noexcept;

    int columnCount() const { return m_columnCount; }
    qsizetype rowCount() const { return qsizetype(m_rows.size()); }
    void clear(int columnCount);

    // Filling: the values of one row in column order between beginRow and endRow. A row is
    // written straight into the block it will stay in.
    void beginRow() { m_rowStart = m_write; }
    void addNull() { *room(1) = NullTag; }
    void addInteger(qint64 value);
    void addReal(double value) { putTagged(RealTag, value); }
    void addText(const char* utf8, std::size_t size);
    void addBlob(const char* bytes, std::size_t size) { putBytes(BlobTag, bytes, size); }
    void addVariant(const QVariant& value); // as toVariant gives them
    void endRow() { m_rows.push_back(m_rowStart); } // appends the row
    void endRow(qsizetype replacing)
    {
        m_rows[std::size_t(replacing)] = m_rowStart;
    } // puts the row in place of an existing one

    void removeRow(qsizetype row);
    // All values of a row, in column order.
    void decodeRow(qsizetype row, std::vector<Cell>& cells) const;

private:
    enum Tag : char { NullTag, Int64Tag, Int8Tag, RealTag, ShortTextTag, LongTextTag, BlobTag };

    // Where the next bytes of the open row go; a new block takes the open row along when the
    // current one is full.
    char* room(std::size_t bytes)
    {
        if (std::size_t(m_blockEnd - m_write) < bytes)
            grow(bytes);
        char* at = m_write;
        m_write += bytes;
        return at;
    }
    void grow(std::size_t bytes);
    template<typename T>
    void putTagged(Tag tag, T value)
    {
        char* at = room(1 + sizeof(T));
        *at = tag;
        std::memcpy(at + 1, &value, sizeof(T));
    }
    void putBytes(Tag tag, const char* bytes, std::size_t size)
    {
        const auto length = std::uint32_t(size);
        char* at = room(1 + sizeof(length) + size);
        *at = tag;
        std::memcpy(at + 1, &length, sizeof(length));
        if (size > 0) // an empty blob may come without data
            std::memcpy(at + 1 + sizeof(length), bytes, size);
    }

    int m_columnCount = 0;
    std::vector<const char*> m_rows;
    std::vector<std::unique_ptr<char[]>> m_blocks;
    std::size_t m_blockSize = 0;
    char* m_rowStart = nullptr;
    char* m_write = nullptr;
    char* m_blockEnd = nullptr;
};

inline void RowStore::addInteger(qint64 value)
{
    if (value >= -128 && value <= 127) {
        char* at = room(2);
        at[0] = Int8Tag;
        at[1] = char(value);
        return;
    }
    putTagged(Int64Tag, value);
}

inline void RowStore::addText(const char* utf8, std::size_t size)
{
    if (size >= 256) {
        putBytes(LongTextTag, utf8, size);
        return;
    }
    char* at = room(2 + size);
    at[0] = ShortTextTag;
    at[1] = char(std::uint8_t(size));
    if (size > 0)
        std::memcpy(at + 2, utf8, size);
}

} // namespace marlet
