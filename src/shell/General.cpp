#include "shell/General.h"

#include "platform/Form.h"
#include "platform/Platform.h"
#include "store/Connection.h"

namespace marlet {

General::General(Platform& platform, Preferences& preferences)
    : platform(platform)
    , preferences(preferences)
{
}

General::~General() = default;

Connection& General::connection()
{
    if (!SharedConnection) {
        SharedConnection = std::make_unique<Connection>();
        // `now` in statements is the session's clock, the one every screen reads.
        SharedConnection->setClock([this] { return platform.now(); });
    }
    return *SharedConnection;
}

bool General::isAdministrator() const
{
    return CurrentStaff.toUpper() == QLatin1String("ADMINISTRATOR");
}

bool General::restrictedByAdminPower() const
{
    return !isAdministrator() && isSet(AdminPowered);
}

QString General::byWhom() const
{
    if (SecondStaff.isEmpty())
        return CurrentStaff;
    return CurrentStaff + QStringLiteral(" & ") + SecondStaff;
}

QString General::serverFolder() const
{
    const qsizetype cut = qMax(ServerPath.lastIndexOf(u'\\'), ServerPath.lastIndexOf(u'/'));
    return cut < 0 ? QString() : ServerPath.left(cut);
}

} // namespace marlet
