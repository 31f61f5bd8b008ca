#include "screens/OptionsTabs.h"

#include "screens/AutomationTabs.h"
#include "screens/GeneralTab.h"
#include "screens/PosTab.h"
#include "screens/PrintMonitorTab.h"

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
    case 3:
        return std::make_unique<MaintenanceTab>(screen);
    case 4:
        return std::make_unique<AutomatedActionTab>(screen);
    case 6:
        return std::make_unique<PrintMonitorTab>(screen);
    case 9:
        return std::make_unique<PosTab>(screen);
    case 10:
        return std::make_unique<SmsPanel>(screen);
    default:
        return std::make_unique<EmptyTab>();
    }
}

} // namespace marlet
