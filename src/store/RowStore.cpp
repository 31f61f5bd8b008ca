#include "store/RowStore.h"

#include <algorithm>
#include <cstring>

namespace marlet {

namespace {

enum Tag : char { NullTag, Int64Tag, Int8Tag, RealTag, ShortTextTag, LongTextTag, BlobTag };

// Blocks start small, since most selects find a row or a few, and double up to their full size.
constexpr std::size_t firstBlockSize = 4096;
constexpr std::size_t blockSize = 1 << 20;

template<typename T>
void appendRaw(std::string& out, T value)
{
    char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof(T));
    out.append(bytes, sizeof(T));
}

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
        return QVariant(QString::fromUtf8(bytes.data(), qsizetype(bytes.size())));
    case Kind::Blob:
        return QVariant(QByteArray(bytes.data(), qsizetype(bytes.size())));
    case Kind::Null:
        break;
    }
    return QVariant();
}

RowStore::RowStore(int columnCount)
    : m_columnCount(columnCount)
{
}

void RowStore::clear(int columnCount)
{
    m_columnCount = columnCount;
    m_rows.clear();
    m_blocks.clear();
    m_blockUsed = 0;
    m_blockSize = 0;
}

void RowStore::addNull()
{
    m_scratch.push_back(NullTag);
}

void RowStore::addInteger(qint64 value)
{
    if (value >= -128 && value <= 127) {
        m_scratch.push_back(Int8Tag);
        m_scratch.push_back(char(value));
        return;
    }
    m_scratch.push_back(Int64Tag);
    appendRaw(m_scratch, value);
}

void RowStore::addReal(double value)
{
    m_scratch.push_back(RealTag);
    appendRaw(m_scratch, value);
}

void RowStore::addText(const char* utf8, std::size_t size)
{
    if (size < 256) {
        m_scratch.push_back(ShortTextTag);
        m_scratch.push_back(char(std::uint8_t(size)));
    } else {
        m_scratch.push_back(LongTextTag);
        appendRaw(m_scratch, std::uint32_t(size));
    }
    m_scratch.append(utf8, size);
}

void RowStore::addBlob(const char* bytes, std::size_t size)
{
    m_scratch.push_back(BlobTag);
    appendRaw(m_scratch, std::uint32_t(size));
    m_scratch.append(bytes, size);
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

void RowStore::endRow()
{
    m_rows.push_back(store(m_scratch));
}

void RowStore::endRow(qsizetype replacing)
{
    m_rows[std::size_t(replacing)] = store(m_scratch);
}

void RowStore::removeRow(qsizetype row)
{
    m_rows.erase(m_rows.begin() + row);
}

const char* RowStore::store(const std::string& bytes)
{
    if (m_blocks.empty() || m_blockUsed + bytes.size() > m_blockSize) {
        const std::size_t next = m_blocks.empty() ? firstBlockSize : std::min(blockSize, 2 * m_blockSize);
        m_blockSize = std::max(next, bytes.size());
        m_blocks.push_back(std::make_unique_for_overwrite<char[]>(m_blockSize));
        m_blockUsed = 0;
    }
    char* at = m_blocks.back().get() + m_blockUsed;
    std::memcpy(at, bytes.data(), bytes.size());
    m_blockUsed += bytes.size();
    return at;
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
            cell.bytes = std::string_view(at, size);
            at += size;
            break;
        }
        case LongTextTag:
        case BlobTag: {
            cell.kind = at[-1] == BlobTag ? Cell::Kind::Blob : Cell::Kind::Text;
            const std::size_t size = readRaw<std::uint32_t>(at);
            cell.bytes = std::string_view(at, size);
            at += size;
            break;
        }
        default:
            break;
        }
    }
}

} // namespace marlet
