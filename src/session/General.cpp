#include "session/General.h"

#include "store/Connection.h"

namespace marlet {

General::General() = default;

General::~General() = default;

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
