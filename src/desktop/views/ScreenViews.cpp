#include "desktop/views/ScreenViews.h"

#include "desktop/ViewFactory.h"
#include "desktop/views/AccountInfoView.h"
#include "desktop/views/ContPassView.h"
#include "desktop/views/GenAccView.h"
#include "desktop/views/GenPasstoAccsView.h"
#include "desktop/views/OptionsView.h"
#include "desktop/views/RecycleBinView.h"

namespace marlet {

void registerScreenViews()
{
    ViewFactory::add(QStringLiteral("ContPass"), views::buildContPassView);
    ViewFactory::add(QStringLiteral("GenPasstoAccs"), views::buildGenPasstoAccsView);
    ViewFactory::add(QStringLiteral("GenAcc"), views::buildGenAccView);
    ViewFactory::add(QStringLiteral("Options"), views::buildOptionsView);
    ViewFactory::add(QStringLiteral("RecycleBin"), views::buildRecycleBinView);
    ViewFactory::add(QStringLiteral("AccountInfo"), views::buildAccountInfoView);
}

} // namespace marlet
