#include "store/RowStore.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace marlet {

namespace {

// Blocks start small, since most selects find a row or a few, and double up to their full size.
// The first stays below the size that the allocator serves from its per-thread cache.
constexpr std::size_t firstBlockSize = 1000;
constexpr std::size_t blockSize = 1 << 20;

template<typename T>
T readRaw(const char*& at)
{
    T value;
    std::memcpy(&value, at, sizeof(T));
    at += sizeof(T);
    return value;
}

} // namespace

QVariant Cell::toVariant() const
{
    switch (kind) {
    case Kind::Integer:
        return QVariant(integer);
    case Kind::Real:
        return QVariant(real);
    case Kind::Text:
        return QVariant(QString::fromUtf8(data, qsizetype(size)));
    case Kind::Blob:
        return QVariant(QByteArray(data, qsizetype(size)));
    case Kind::Null:
        break;
    }
    return QVariant();
}

RowStore::RowStore(int columnCount)
    : m_columnCount(columnCount)
{
}

RowStore::RowStore(RowStore&& other) noexcept
{
    *this = std::move(other);
}

RowStore& RowStore::operator=(RowStore&& other) noexcept
{
    m_columnCount = other.m_columnCount;
    m_rows = std::move(other.m_rows);
    m_blocks = std::move(other.m_blocks);
    m_blockSize = std::exchange(other.m_blockSize, 0);
    m_rowStart = std::exchange(other.m_rowStart, nullptr);
    m_write = std::exchange(other.m_write, nullptr);
    m_blockEnd = std::exchange(other.m_blockEnd, nullptr);
    other.clear(other.m_columnCount);
    return *this;
}

void RowStore::clear(int columnCount)
{
    m_columnCount = columnCount;
    m_rows.clear();
    m_blocks.clear();
    m_blockSize = 0;
    m_rowStart = nullptr;
    m_write = nullptr;
    m_blockEnd = nullptr;
}

void RowStore::grow(std::size_t bytes)
{
    const std::size_t open = std::size_t(m_write - m_rowStart);
    const std::size_t next = m_blocks.empty() ? firstBlockSize : std::min(blockSize, 2 * m_blockSize);
    m_blockSize = std::max(next, open + bytes);
    auto block = std::make_unique_for_overwrite<char[]>(m_blockSize);
    if (open > 0)
        std::memcpy(block.get(), m_rowStart, open);
    m_rowStart = block.get();
    m_write = m_rowStart + open;
    m_blockEnd = m_rowStart + m_blockSize;
    m_blocks.push_back(std::move(block));
}

void RowStore::addVariant(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::LongLong:
        addInteger(value.toLongLong());
        break;
    case QMetaType::Double:
        addReal(value.toDouble());
        break;
    case QMetaType::QString: {
        const QByteArray utf8 = value.toString().toUtf8();
        addText(utf8.constData(), std::size_t(utf8.size()));
        break;
    }
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        addBlob(bytes.constData(), std::size_t(bytes.size()));
        break;
    }
    default:
        addNull();
    }
}

void RowStore::removeRow(qsizetype row)
{
    m_rows.erase(m_rows.begin() + row);
}

void RowStore::decodeRow(qsizetype row, std::vector<Cell>& cells) const
{
    cells.resize(std::size_t(m_columnCount));
    const char* at = m_rows[std::size_t(row)];
    for (Cell& cell : cells) {
        cell = Cell();
        switch (*at++) {
        case Int8Tag:
            cell.kind = Cell::Kind::Integer;
            cell.integer = qint64(static_cast<signed char>(*at++));
            break;
        case Int64Tag:
            cell.kind = Cell::Kind::Integer;
            cell.integer = readRaw<qint64>(at);
            break;
        case RealTag:
            cell.kind = Cell::Kind::Real;
            cell.real = readRaw<double>(at);
            break;
        case ShortTextTag: {
            const std::size_t size = std::uint8_t(*at++);
            cell.kind = Cell::Kind::Text;
            cell.data = at;
            cell.size = std::uint32_t(size);
            at += size;
            break;
        }
        case LongTextTag:
        case BlobTag: {
            cell.kind = at[-1] == BlobTag ? Cell::Kind::Blob : Cell::Kind::Text;
            const std::size_t size = readRaw<std::uint32_t>(at);
            cell.data = at;
            cell.size = std::uint32_t(size);
            at += size;
            break;
        }
        default:
            break;
        }
    }
}

} // namespace marlet
