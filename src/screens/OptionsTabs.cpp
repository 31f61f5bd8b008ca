#include "screens/OptionsTabs.h"

#include "screens/AutomationTabs.h"
#include "screens/CafeListTab.h"
#include "screens/ClientOptionTab.h"
#include "screens/GeneralTab.h"
#include "screens/IncludeExcludeTab.h"
#include "screens/PosTab.h"
#include "screens/PrintMonitorTab.h"
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

// One page whose fields follow two sets of rules, each built, selected, loaded, checked and saved in
// turn: the Include/Exclude page holds the excluded and reserved machines and, beside them, the café
// list.
class PagePair : public OptionsTab
{
public:
    PagePair(std::unique_ptr<OptionsTab> first, std::unique_ptr<OptionsTab> second)
        : m_first(std::move(first))
        , m_second(std::move(second))
    {
    }

    void build(Control& panel) override
    {
        m_first->build(panel);
        m_second->build(panel);
    }
    void load() override
    {
        m_first->load();
        m_second->load();
    }
    void selected() override
    {
        m_first->selected();
        m_second->selected();
    }
    bool check() override { return m_first->check() && m_second->check(); }
    void apply(Recordset& options) override
    {
        m_first->apply(options);
        m_second->apply(options);
    }

private:
    std::unique_ptr<OptionsTab> m_first;
    std::unique_ptr<OptionsTab> m_second;
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
    case 3:
        return std::make_unique<MaintenanceTab>(screen);
    case 4:
        return std::make_unique<AutomatedActionTab>(screen);
    case 5:
        return std::make_unique<ClientOptionTab>(screen);
    case 6:
        return std::make_unique<PrintMonitorTab>(screen);
    case 7:
        return std::make_unique<QuickTicketTab>(screen);
    case 8:
        return std::make_unique<PagePair>(
            std::make_unique<IncludeExcludeTab>(screen), std::make_unique<CafeListTab>(screen));
    case 9:
        return std::make_unique<PosTab>(screen);
    case 10:
        return std::make_unique<SmsPanel>(screen);
    default:
        return std::make_unique<EmptyTab>();
    }
}

} // namespace marlet
