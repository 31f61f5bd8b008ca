#pragma once

#include <QString>

namespace marlet {

// How a screen opens another screen of the component. The component implements it and hands it to
// the screens that lead to others, so that a screen neither creates nor names the screens it opens.
class ScreenOpener
{
public:
    virtual ~ScreenOpener() = default;

    // The generate screen: the same object each time within the component's life.
    virtual void showGenAcc() = 0;
    // A recycle bin screen for this one visit.
    virtual void showRecycleBin() = 0;
    // The password gate, asked through the session's PassMode; the same object each time.
    virtual void showContPass() = 0;
    // The member directory; with a user name, the search by user name runs on it at once.
    virtual void showMemberList(const QString& username) = 0;
    // The member record of a user name. Returns the name the record stands under when it closes,
    // which a rename has changed.
    virtual QString showMemberinfo(const QString& username) = 0;
};

} // namespace marlet
