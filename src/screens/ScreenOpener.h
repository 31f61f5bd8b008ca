#pragma once

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
};

} // namespace marlet
