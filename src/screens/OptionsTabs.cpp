#include "screens/OptionsTabs.h"

#include "screens/GeneralTab.h"

namespace marlet {

namespace {

// A page whose fields belong to later work.
class EmptyTab : public OptionsTab
{
public:
    void build(Control&) override { }
    void load() override { }
    void apply(Recordset&) override { }
};

} // namespace

std::unique_ptr<OptionsTab> createOptionsTab(int flag, Options& screen)
{
    switch (flag) {
    case 0:
        return std::make_unique<GeneralTab>(screen);
    default:
        return std::make_unique<EmptyTab>();
    }
}

} // namespace marlet
