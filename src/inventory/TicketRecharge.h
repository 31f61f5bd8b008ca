#pragma once

#include "inventory/TicketSearch.h"
#include "store/Recordset.h"

#include <QString>
#include <QVariant>

#include <optional>

namespace marlet {

class WorkHost;

// ---- the rules of a recharge ------------------------------------------------------------------

// `seconds` after a recharge of `minutes`: the minutes times 60 added in single precision, as the
// Time and BackTime columns hold them.
float rechargedSeconds(float seconds, double minutes);

// The refusal of `minutes` for a ticket of `wholeMinutes` while `quota` megabytes are being added,
// or nothing when they are accepted: at most 1000, leaving the ticket above 0 and below 6000 minutes,
// and 0 only when quota is added.
std::optional<QString> rechargeMinutesProblem(double wholeMinutes, double minutes, qint32 quota);

// The quota after `added` megabytes: a negative quota, where no limit was set, is replaced by them.
double rechargedQuota(double present, qint32 added);

// Whether the Expire column, as a result set reads it, holds a date; a null one doesn't.
bool expireIsDate(const QVariant& expire);

// The question before the days of a recharge, by the last expiry type chosen (ExType "1": by date).
QString expiryRechargeQuestion(const QString& exType, const QVariant& days, const QVariant& expire);

// The refusal of `addedDays`, or nothing. Without a date the ticket's days may not fall below 0,
// with one at most 365 days may be taken off. The upper bound of 365 is applied to the quota being
// added, not to the days: a recharge of days has no upper bound, and fails with a quota above 365.
std::optional<QString> rechargeDaysProblem(
    const QVariant& days, const QVariant& expire, double addedDays, qint32 quota);

// ---- the dialogue ------------------------------------------------------------------------------

// "Recharge a Ticket" (m_recharge), which asks for a non-member ticket's name, and "&Recharge
// Ticket" (m_Rec), which takes the grid row's ticket, member tickets included, and shows the new
// expiry and time in that row. Both add minutes, and on request quota and days, and log the
// recharge in Rechargeinfo. Nothing is written before every answer has passed its checks.
class TicketRecharge
{
public:
    explicit TicketRecharge(WorkHost& host);

    void recharge(TicketSource source);

private:
    struct Path;
    struct Answers;
    static const Path& pathOf(TicketSource source);

    void rechargeTicket(const Path& path, const QString& username);
    // The quota to add, 0 when not asked or declined; nothing when the recharge ends.
    std::optional<qint32> askQuota(bool& accepted) const;
    // The minutes, quota and days; nothing when the recharge ends.
    std::optional<Answers> askAnswers(const QString& username);
    // The days to add, none when declined; false when the recharge ends.
    bool askDays(qint32 quota, std::optional<double>& days) const;
    bool writeTicket(const Path& path, const Answers& answers);
    bool writeExpiry(const Path& path, double addedDays);
    bool logRecharge(const Path& path, const Answers& answers, const QString& username);
    void showInGrid(int column, const QString& text) const;

    WorkHost& m_host;
    Recordset m_ticket;
};

} // namespace marlet
