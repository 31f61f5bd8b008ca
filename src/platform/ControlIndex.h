#pragma once

#include <QHash>
#include <QStringView>

namespace marlet {

class Control;

// A form's controls by name and index, without regard to case: "Text1", "TEXT1" and "text1" are
// one name, and "Text7" with index 8 is another control than "Text7" alone. Names are hashed and
// compared as they stand, folding each character on the way, so that neither adding a control nor
// looking one up makes a folded copy of its name; only a name outside ASCII is folded as a whole.
class ControlIndex
{
public:
    // Adds the control under its own name and index. The index keeps a view of the control's name,
    // which never changes, so the control must stay until clear(). False, and nothing added, when
    // a control of that name and index is there already.
    bool insert(Control& control);
    Control* find(QStringView name, int index) const;
    void clear() { m_controls.clear(); }
    qsizetype size() const { return m_controls.size(); }

    // The hash that the index gives a name: equal for names equal without regard to case.
    static size_t hashName(QStringView name, size_t seed);
    static bool sameName(QStringView a, QStringView b);

private:
    // The hash is worked out once, when the key is made: the table compares keys it meets on the
    // way and moves them all when it grows.
    struct Key
    {
        Key(QStringView name, int index)
            : name(name)
            , index(index)
            , hash(hashName(name, size_t(uint(index))))
        {
        }

        QStringView name;
        int index;
        size_t hash;

        friend bool operator==(const Key& a, const Key& b)
        {
            return a.hash == b.hash && a.index == b.index && sameName(a.name, b.name);
        }
        friend size_t qHash(const Key& key, size_t seed) { return key.hash ^ seed; }
    };

    QHash<Key, Control*> m_controls;
};

} // namespace marlet
