#include "component/ScreenRegistry.h"

#include "issuing/GenAccNames.h"
#include "screens/AccountInfo.h"
#include "screens/ContPass.h"
#include "screens/GenAcc.h"
#include "screens/GenPasstoAccs.h"
#include "screens/MemberList.h"
#include "screens/Memberinfo.h"
#include "screens/Options.h"
#include "screens/RecycleBin.h"

namespace marlet {

ScreenRegistry::ScreenRegistry(Session& session)
    : m_session(session)
{
}

ScreenRegistry::~ScreenRegistry() = default;

bool ScreenRegistry::kept(Screen screen)
{
    return screen == Screen::GenAcc || screen == Screen::GenPasstoAccs || screen == Screen::ContPass;
}

std::unique_ptr<Form> ScreenRegistry::create(Screen screen)
{
    switch (screen) {
    case Screen::GenAcc:
        return std::make_unique<GenAcc>(m_session, *this);
    case Screen::GenPasstoAccs:
        return std::make_unique<GenPasstoAccs>(m_session, *this);
    case Screen::ContPass:
        return std::make_unique<ContPass>(m_session);
    case Screen::Options:
        return std::make_unique<Options>(m_session, *this);
    case Screen::RecycleBin:
        return std::make_unique<RecycleBin>(m_session);
    case Screen::AccountInfo:
        return std::make_unique<AccountInfo>(m_session);
    case Screen::MemberList:
        return std::make_unique<MemberList>(m_session, *this);
    case Screen::Memberinfo:
        return std::make_unique<Memberinfo>(m_session, [this] { return registrationWeekday(); });
    }
    return nullptr;
}

void ScreenRegistry::show(Screen screen)
{
    if (!kept(screen)) {
        create(screen)->showModal();
        return;
    }
    std::unique_ptr<Form>& slot = m_kept[screen];
    if (!slot)
        slot = create(screen);
    slot->showModal();
}

void ScreenRegistry::showGenAcc()
{
    show(Screen::GenAcc);
}

void ScreenRegistry::showRecycleBin()
{
    show(Screen::RecycleBin);
}

void ScreenRegistry::showContPass()
{
    show(Screen::ContPass);
}

void ScreenRegistry::showMemberList(const QString& username)
{
    MemberList list(m_session, *this);
    list.setSearchName(username);
    list.showModal();
}

QString ScreenRegistry::showMemberinfo(const QString& username)
{
    Memberinfo record(m_session, [this] { return registrationWeekday(); });
    record.setUsername(username);
    record.showModal();
    return record.currentUsername();
}

QString ScreenRegistry::registrationWeekday() const
{
    const auto found = m_kept.find(Screen::GenAcc);
    if (found == m_kept.end() || !found->second)
        return QString();
    const Control* weekday = found->second->control(genacc::cboWeekday);
    return weekday ? weekday->text() : QString();
}

} // namespace marlet
