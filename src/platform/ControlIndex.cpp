#include "platform/ControlIndex.h"

#include "platform/Control.h"

#include <QString>

namespace marlet {

namespace {

bool isAscii(QStringView name)
{
    for (const QChar c : name) {
        if (c.unicode() >= 0x80)
            return false;
    }
    return true;
}

constexpr char16_t foldedAscii(char16_t code)
{
    return code >= u'A' && code <= u'Z' ? char16_t(code + 32) : code;
}

constexpr size_t hashStart = 0xcbf29ce484222325ull;

// FNV-1a, one code unit at a time; names are short, and this needs no copy of them.
constexpr size_t hashStep(size_t hash, char16_t code)
{
    return (hash ^ code) * 0x100000001b3ull;
}

} // namespace

size_t ControlIndex::hashName(QStringView name, size_t seed)
{
    size_t hash = seed ^ hashStart;
    for (const QChar c : name) {
        const char16_t code = c.unicode();
        if (code >= 0x80) {
            // Outside ASCII the name is hashed as Qt folds it, so that it meets the name it folds to.
            hash = seed ^ hashStart;
            for (const QChar folded : name.toString().toCaseFolded())
                hash = hashStep(hash, folded.unicode());
            return hash;
        }
        hash = hashStep(hash, foldedAscii(code));
    }
    return hash;
}

bool ControlIndex::sameName(QStringView a, QStringView b)
{
    if (a.size() == b.size()) {
        qsizetype i = 0;
        for (; i < a.size(); ++i) {
            const char16_t x = a[i].unicode();
            const char16_t y = b[i].unicode();
            if (x >= 0x80 || y >= 0x80)
                break;
            if (foldedAscii(x) != foldedAscii(y))
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

bool ControlIndex::insert(Control& control)
{
    Control*& slot = m_controls[Key(control.name(), control.index())];
    if (slot)
        return false;
    slot = &control;
    return true;
}

Control* ControlIndex::find(QStringView name, int index) const
{
    return m_controls.value(Key(name, index), nullptr);
}

} // namespace marlet
