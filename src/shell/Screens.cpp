#include "shell/Screens.h"

#include "inventory/AccountInfo.h"
#include "inventory/RecycleBin.h"
#include "issuing/GenAcc.h"
#include "settings/Options.h"
#include "shell/ContPass.h"
#include "shell/GenPasstoAccs.h"
#include "shell/General.h"

#include <QHash>

namespace marlet {

QString screenCaption(const QString& name)
{
    static const QHash<QString, QString> captions = {
        {QStringLiteral("GenAcc"), QStringLiteral("Generate Ticket")},
        {QStringLiteral("GenPasstoAccs"), QStringLiteral("Enter Password")},
        {QStringLiteral("ContPass"), QStringLiteral("Enter Pasword to Continue")},
        {QStringLiteral("AccountInfo"), QStringLiteral("Ticket Information")},
        {QStringLiteral("RecycleBin"), QStringLiteral("Recycle Bin - Norvantis")},
        {QStringLiteral("Options"), QStringLiteral("Options")},
    };
    return captions.value(name, name);
}

std::unique_ptr<Form> createScreen(const QString& name, General& session)
{
    if (name == QLatin1String("GenAcc"))
        return std::make_unique<GenAcc>(session);
    if (name == QLatin1String("GenPasstoAccs"))
        return std::make_unique<GenPasstoAccs>(session);
    if (name == QLatin1String("ContPass"))
        return std::make_unique<ContPass>(session);
    if (name == QLatin1String("Options"))
        return std::make_unique<Options>(session);
    if (name == QLatin1String("RecycleBin"))
        return std::make_unique<RecycleBin>(session);
    if (name == QLatin1String("AccountInfo"))
        return std::make_unique<AccountInfo>(session);
    return nullptr;
}

} // namespace marlet
