#include "issuing/SingleTicket.h"

#include "issuing/Quota.h"
#include "issuing/TicketGroup.h"
#include "platform/Platform.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/Recordset.h"
#include "values/Numbers.h"

namespace marlet {

namespace {

constexpr double MaxCost = 10000;

void warn(WorkHost& host, const QString& message)
{
    host.platform().messageBox(message, MsgStyle::Warning);
}

std::optional<double> typedTicketMinutes(
    WorkHost& host, const QString& hours, const QString& minutes, double maxMinutes)
{
    const double total = values::leadingNumber(minutes) + values::leadingNumber(hours) * 60;
    if (total == 0) {
        warn(host, QStringLiteral("Time is Zero!"));
        return std::nullopt;
    }
    if (total < 1 || total > maxMinutes) {
        warn(host, QStringLiteral("Time Value small or large or invalid!"));
        return std::nullopt;
    }
    return total;
}

std::optional<double> typedTicketCost(WorkHost& host, const QString& cost)
{
    const double value = values::leadingNumber(cost);
    if (value < 0 || value > MaxCost) {
        warn(host, QStringLiteral("Cost Value small or large or invalid!"));
        return std::nullopt;
    }
    return value;
}

struct TicketQuota
{
    bool quotas = false;
    qint32 quota = 0;
};

std::optional<TicketQuota> askTicketQuota(WorkHost& host, TicketPath path)
{
    TicketQuota result;
    result.quotas = quotasOn(host.session().settings());
    if (!result.quotas)
        return result;
    const std::optional<qint32> quota = askQuota(host.platform(), path);
    if (!quota)
        return std::nullopt;
    result.quota = *quota;
    return result;
}

} // namespace

std::optional<TypedTicketTerms> typedTicketTerms(WorkHost& host, const TypedTicketFields& fields)
{
    const std::optional<double> minutes = fields.fixedMinutes
        ? fields.fixedMinutes
        : typedTicketMinutes(host, fields.hours, fields.minutes, fields.maxMinutes);
    if (!minutes)
        return std::nullopt;
    const std::optional<double> cost = typedTicketCost(host, fields.cost);
    if (!cost)
        return std::nullopt;
    const std::optional<TicketQuota> quota = askTicketQuota(host, fields.path);
    if (!quota)
        return std::nullopt;
    return TypedTicketTerms {*minutes, *cost, quota->quotas, quota->quota};
}

std::optional<QString> addSingleTicketGroup(WorkHost& host, Recordset& groupRow, double minutes, double cost)
{
    host.resetTicketGrid();
    // A typed ticket's group holds one ticket; Amount is the cost as a number, not the field's text.
    const NewTicketGroup group = addTicketGroup(groupRow,
        host.session().connection(),
        {QString(), 1, minutes, cost, cost, host.session().general.byWhom()},
        host.platform().now());
    if (group.added)
        return group.TicketGrp;
    return std::nullopt;
}

void announceSingleTicket(WorkHost& host, bool printAfter, const QString& success)
{
    Platform& platform = host.platform();
    if (!printAfter) {
        platform.messageBox(success, MsgStyle::Info);
        platform.yield();
        host.EndProgress();
        platform.yield();
        platform.sleep(500);
    }
    platform.sleep(500);
}

} // namespace marlet
