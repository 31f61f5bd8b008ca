#pragma once

#include "issuing/TicketRules.h"

#include <QString>

#include <optional>

namespace marlet {

class Platform;
class SessionPreferences;

// The quota that means unlimited data, in megabytes.
inline constexpr qint32 UnlimitedQuota = -9999;

// Quotas are in use when the Download preference is true and DownType is "2". Only then does an
// issuing path ask for one; otherwise Account.Quota is 0.
bool quotasOn(const SessionPreferences& preferences);

// The quota question of a path, asked with the title "Norvantis" and the default "100".
QString quotaPromptText(TicketPath path);

// What an answer to the quota question leads to.
struct QuotaAnswer
{
    enum class Outcome { Accepted, Ended, Refused };
    Outcome outcome = Outcome::Ended;
    qint32 quota = 0; // when accepted
    QString message; // what to show when the operation ends; empty for a silent end
};
// The answer's numeric prefix, rounded to the whole number that the quota holds, is what the tests
// see. Nothing or 0 ends the operation: silently in a batch, with "Custom ticket not Created!" on
// the custom and membership paths. Accepted are 1 to 1000000 and, except on the membership paths,
// -9999; anything else is refused with "Quota too small or large!".
QuotaAnswer quotaAnswer(const QString& answer, TicketPath path);

// Asks for the quota and shows a refusal or an end message with the exclamation icon. Nothing when
// the operation ends.
std::optional<qint32> askQuota(Platform& platform, TicketPath path);

// The <quota> part of the issuing confirmations: empty when quotas are off, else " with Quota of "
// and "Unlimited Data Usage" for -9999 or the number and "MB".
QString quotaConfirmationText(bool quotas, qint32 quota);

} // namespace marlet
