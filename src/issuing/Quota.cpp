#include "issuing/Quota.h"

#include "platform/Platform.h"
#include "store/PreferenceKeys.h"
#include "values/Numbers.h"

namespace marlet {

namespace {

constexpr qint32 MaxQuota = 1000000;

bool isMembership(TicketPath path)
{
    return path == TicketPath::Membership || path == TicketPath::MembershipFinish;
}

} // namespace

bool quotasOn(const SessionPreferences& preferences)
{
    return preferences.truth(keys::Download) && preferences.text(keys::DownType) == QLatin1String("2");
}

QString quotaPromptText(TicketPath path)
{
    switch (path) {
    case TicketPath::Batch:
        return QStringLiteral("Enter the Quota (in MB) for this Ticket Group (Enter -9999 for Unlimited)?");
    case TicketPath::Custom:
        return QStringLiteral("Enter the Quota (in MB) for this Ticket Group (Enter -9999 for unlimited data usage)?");
    case TicketPath::Membership:
    case TicketPath::MembershipFinish:
    case TicketPath::CredentialChange:
        break;
    }
    return QStringLiteral("Enter the Quota (in MB) for this Ticket Group?");
}

QuotaAnswer quotaAnswer(const QString& answer, TicketPath path)
{
    // An answer too large for the quota's integer fails its conversion like an empty one.
    const qint32 quota = values::toInt32(values::leadingNumber(answer)).value_or(0);
    if (quota == 0) {
        const QString message = path == TicketPath::Batch ? QString() : QStringLiteral("Custom ticket not Created!");
        return {QuotaAnswer::Outcome::Ended, 0, message};
    }
    const bool unlimited = quota == UnlimitedQuota && !isMembership(path);
    if (!unlimited && (quota < 1 || quota > MaxQuota))
        return {QuotaAnswer::Outcome::Refused, 0, QStringLiteral("Quota too small or large!")};
    return {QuotaAnswer::Outcome::Accepted, quota, QString()};
}

std::optional<qint32> askQuota(Platform& platform, TicketPath path)
{
    const QString answer = platform.inputBox(quotaPromptText(path), QString(ProductWord), QStringLiteral("100"));
    const QuotaAnswer result = quotaAnswer(answer, path);
    if (result.outcome == QuotaAnswer::Outcome::Accepted)
        return result.quota;
    if (!result.message.isEmpty())
        platform.messageBox(result.message, MsgStyle::Warning);
    return std::nullopt;
}

QString quotaConfirmationText(bool quotas, qint32 quota)
{
    if (!quotas)
        return QString();
    const QString amount = quota == UnlimitedQuota ? QStringLiteral("Unlimited Data Usage")
                                                   : QString::number(quota) + QStringLiteral("MB");
    return QStringLiteral(" with Quota of ") + amount;
}

} // namespace marlet
