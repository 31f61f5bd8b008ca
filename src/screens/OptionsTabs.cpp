#include "screens/OptionsTabs.h"

#include "screens/ClientOptionTab.h"
#include "screens/GeneralTab.h"
#include "screens/IncludeExcludeTab.h"

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
    case 5:
        return std::make_unique<ClientOptionTab>(screen);
    case 8:
        return std::make_unique<IncludeExcludeTab>(screen);
    default:
        return std::make_unique<EmptyTab>();
    }
}

} // namespace marlet
