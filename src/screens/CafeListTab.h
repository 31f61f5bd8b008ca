#pragma once

#include "screens/OptionsTab.h"

namespace marlet {

class Options;

// The café list of the Include/Exclude page: which computer belongs to which café branch, one
// computer a branch and one branch a computer, kept in table Cafe. Adding and removing write at
// once and mark no change for Apply.
class CafeListTab : public OptionsTab
{
public:
    explicit CafeListTab(Options& screen);

    void build(Control& panel) override;
    void load() override;
    void apply(Recordset&) override { }

private:
    void add();
    void remove();

    Options& m_screen;
};

} // namespace marlet
