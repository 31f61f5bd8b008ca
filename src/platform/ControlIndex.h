#pragma once

#include <QStringView>

#include <vector>

namespace marlet {

class Control;

// A form's controls by name and index, without regard to case: "Text1", "TEXT1" and "text1" are
// one name, and "Text7" with index 8 is another control than "Text7" alone. Names are hashed and
// compared as they stand, without a folded copy; only a name outside ASCII is folded as a whole.
// The table holds each control's hash beside it and reads the name from the control itself: a
// screen of hundreds adds all of its controls on every opening.
class ControlIndex
{
public:
    // Adds the control under its own name and index, which never change; the control must stay
    // until clear(). False, and nothing added, when a control of that name and index is there.
    bool insert(Control& control);
    Control* find(QStringView name, int index) const;
    void clear();
    qsizetype size() const { return m_size; }

    // The hash of a name and index: equal for names equal without regard to case.
    static size_t hashName(QStringView name, int index);
    static bool sameName(QStringView a, QStringView b);

private:
    struct Slot
    {
        size_t hash = 0;
        Control* control = nullptr;
    };

    // The slot of that control, or the empty slot where it would go.
    size_t slotOf(QStringView name, int index, size_t hash) const;
    void grow();

    // Open addressing with linear probing; the size is a power of two, at most half full.
    std::vector<Slot> m_slots;
    qsizetype m_size = 0;
};

} // namespace marlet
