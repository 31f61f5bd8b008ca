#include "desktop/views/ScreenViews.h"

#include "desktop/ViewFactory.h"
#include "desktop/views/AccountInfoView.h"
#include "desktop/views/ContPassView.h"
#include "desktop/views/GenAccView.h"
#include "desktop/views/GenPasstoAccsView.h"
#include "desktop/views/MemberViews.h"
#include "desktop/views/OptionsView.h"
#include "desktop/views/RecycleBinView.h"
#include "issuing/GenAccNames.h"
#include "members/MemberListNames.h"
#include "members/MemberinfoNames.h"
#include "screens/AccountInfoNames.h"
#include "screens/ContPassNames.h"
#include "screens/GenPasstoAccsNames.h"
#include "screens/OptionsNames.h"
#include "screens/RecycleBinNames.h"

namespace marlet {

void registerScreenViews()
{
    ViewFactory::add(contpass::FormName, views::buildContPassView);
    ViewFactory::add(genpasstoaccs::FormName, views::buildGenPasstoAccsView);
    ViewFactory::add(genacc::FormName, views::buildGenAccView);
    ViewFactory::add(options::FormName, views::buildOptionsView);
    ViewFactory::add(recyclebin::FormName, views::buildRecycleBinView);
    ViewFactory::add(accountinfo::FormName, views::buildAccountInfoView);
    ViewFactory::add(memberinfo::FormName, views::buildMemberinfoView);
    ViewFactory::add(memberlist::FormName, views::buildMemberListView);
}

} // namespace marlet
