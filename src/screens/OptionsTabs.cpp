#include "screens/OptionsTabs.h"

#include "screens/CafeListTab.h"
#include "screens/GeneralTab.h"
#include "screens/QuickTicketTab.h"
#include "screens/TicketSettingTab.h"
#include "screens/UserAccountTab.h"

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
    case 1:
        return std::make_unique<UserAccountTab>(screen);
    case 2:
        return std::make_unique<TicketSettingTab>(screen);
    case 7:
        return std::make_unique<QuickTicketTab>(screen);
    case 8:
        return std::make_unique<CafeListTab>(screen);
    default:
        return std::make_unique<EmptyTab>();
    }
}

} // namespace marlet
