#include "platform/ControlIndex.h"

#include "platform/Control.h"
#include "values/Texts.h"

#include <QString>

#include <cstdint>
#include <cstring>

namespace marlet {

namespace {

constexpr std::uint64_t NonAscii = 0xFF80FF80FF80FF80ull;
// Setting the 0x20 bit of every code unit maps A to Z onto a to z and changes nothing else that
// folding without regard to case could tell apart: names equal that way stay equal.
constexpr std::uint64_t CaseBits = 0x0020002000200020ull;
constexpr std::uint64_t Multiplier = 0x9E3779B97F4A7C15ull;
constexpr size_t FirstSlots = 64;

bool isAscii(QStringView name)
{
    for (const QChar c : name) {
        if (c.unicode() >= 0x80)
            return false;
    }
    return true;
}

// Four code units at a time, each with its 0x20 bit set. False when a unit outside ASCII turns up
// and `ascii` asks for none.
bool hashUnits(QStringView units, bool ascii, std::uint64_t& hash)
{
    const char16_t* data = units.utf16();
    const qsizetype count = units.size();
    qsizetype i = 0;
    for (; i + 4 <= count; i += 4) {
        std::uint64_t word;
        std::memcpy(&word, data + i, sizeof word);
        if (ascii && (word & NonAscii))
            return false;
        hash = (hash ^ (word | CaseBits)) * Multiplier;
    }
    std::uint64_t rest = 0;
    for (qsizetype shift = 0; i < count; ++i, shift += 16) {
        if (ascii && data[i] >= 0x80)
            return false;
        rest |= std::uint64_t(data[i] | 0x20) << shift;
    }
    hash = (hash ^ rest ^ std::uint64_t(count)) * Multiplier;
    return true;
}

} // namespace

size_t ControlIndex::hashName(QStringView name, int index)
{
    const std::uint64_t start = (std::uint64_t(std::uint32_t(index)) + 1) * Multiplier;
    std::uint64_t hash = start;
    if (!hashUnits(name, true, hash)) {
        // Outside ASCII the name is hashed as Qt folds it, so that it meets the name it folds to.
        hash = start;
        hashUnits(name.toString().toCaseFolded(), false, hash);
    }
    return size_t(hash ^ (hash >> 29));
}

bool ControlIndex::sameName(QStringView a, QStringView b)
{
    // Screens nearly always ask for a control in the spelling it was made with.
    if (a.size() == b.size()) {
        // An empty view may carry no data at all, and memcmp must not see it.
        if (a.isEmpty() || std::memcmp(a.utf16(), b.utf16(), std::size_t(a.size()) * sizeof(char16_t)) == 0)
            return true;
        qsizetype i = 0;
        for (; i < a.size(); ++i) {
            const char16_t x = a[i].unicode();
            const char16_t y = b[i].unicode();
            if (x >= 0x80 || y >= 0x80)
                break;
            if (values::lowerAscii(x) != values::lowerAscii(y))
                return false;
        }
        if (i == a.size())
            return true;
    }
    // Outside ASCII a letter may fold to another length, or to an ASCII letter (the Kelvin sign).
    if (isAscii(a) && isAscii(b))
        return false;
    return a.toString().toCaseFolded() == b.toString().toCaseFolded();
}

size_t ControlIndex::slotOf(QStringView name, int index, size_t hash) const
{
    const size_t mask = m_slots.size() - 1;
    for (size_t i = hash & mask;; i = (i + 1) & mask) {
        const Slot& slot = m_slots[i];
        if (!slot.control
            || (slot.hash == hash && slot.control->index() == index && sameName(slot.control->name(), name)))
            return i;
    }
}

bool ControlIndex::insert(Control& control)
{
    if (size_t(m_size + 1) * 2 > m_slots.size())
        grow();
    const size_t hash = hashName(control.name(), control.index());
    Slot& slot = m_slots[slotOf(control.name(), control.index(), hash)];
    if (slot.control)
        return false;
    slot = {hash, &control};
    ++m_size;
    return true;
}

Control* ControlIndex::find(QStringView name, int index) const
{
    if (m_slots.empty())
        return nullptr;
    return m_slots[slotOf(name, index, hashName(name, index))].control;
}

void ControlIndex::clear()
{
    m_slots.clear();
    m_size = 0;
}

void ControlIndex::grow()
{
    std::vector<Slot> old(m_slots.empty() ? FirstSlots : m_slots.size() * 2);
    old.swap(m_slots);
    const size_t mask = m_slots.size() - 1;
    for (const Slot& slot : old) {
        if (!slot.control)
            continue;
        size_t i = slot.hash & mask;
        while (m_slots[i].control)
            i = (i + 1) & mask;
        m_slots[i] = slot;
    }
}

} // namespace marlet
