#include "inventory/TicketRecharge.h"

#include "issuing/TicketNames.h"
#include "issuing/TicketRules.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/Connection.h"
#include "store/PreferenceKeys.h"
#include "values/Dates.h"
#include "values/Formats.h"
#include "values/Numbers.h"

namespace marlet {

namespace {

constexpr double MaxMinutes = 1000;
constexpr double MinutesLimit = 6000; // a recharged ticket stays below it
constexpr qint32 MaxQuota = 1000000;
constexpr double DaysLimit = 365;

// Grid columns that "&Recharge Ticket" brings up to date.
constexpr int TimeColumn = 3;
constexpr int ExpiryColumn = 5;

QString expiryDate(const QVariant& expire)
{
    return values::format(expire, QStringLiteral("dd/mmm/yyyy"));
}

} // namespace

// ---- the rules --------------------------------------------------------------------------------

float rechargedSeconds(float seconds, double minutes)
{
    return seconds + values::toSingle(minutes) * 60.0F;
}

std::optional<QString> rechargeMinutesProblem(double wholeMinutes, double minutes, qint32 quota)
{
    const double left = wholeMinutes + minutes;
    if (!(minutes == 0 && quota == 0) && minutes <= MaxMinutes && left > 0 && left < MinutesLimit)
        return std::nullopt;
    return QStringLiteral("Entry too small or large! (e.g. -") + values::numberText(wholeMinutes - 1)
        + QStringLiteral(" to 1000 excluding 0)");
}

double rechargedQuota(double present, qint32 added)
{
    return present < 0 ? added : present + added;
}

bool expireIsDate(const QVariant& expire)
{
    return expire.typeId() == QMetaType::QDateTime && expire.toDateTime().isValid();
}

QString expiryRechargeQuestion(const QString& exType, const QVariant& days, const QVariant& expire)
{
    if (exType == QLatin1String("1")) {
        return QStringLiteral("Present Expiration date is ") + expiryDate(expire) + MessageLineBreak
            + QStringLiteral("ReCharge Date?");
    }
    // A null Days compares as unknown, not as 0.
    const bool byDate = !days.isNull() && days.toDouble() == 0;
    return QStringLiteral("Present Expiration days is ")
        + (byDate ? expiryDate(expire) : values::format(days, QString())) + QStringLiteral(" day(s)") + MessageLineBreak
        + QStringLiteral("ReCharge by day(s)?");
}

std::optional<QString> rechargeDaysProblem(const QVariant& days, const QVariant& expire, double addedDays, qint32 quota)
{
    if (!expireIsDate(expire)) {
        if (days.toDouble() + addedDays < 0 || quota > DaysLimit) {
            return QStringLiteral("Date Value must be from -") + values::format(days, QString())
                + QStringLiteral(" to 365 day(s)!");
        }
    } else if (addedDays < -DaysLimit || quota > DaysLimit) {
        return QStringLiteral("Date Value must be from -365 to 365 day(s)!");
    }
    return std::nullopt;
}

// ---- the dialogue -----------------------------------------------------------------------------

// What sets the two commands apart besides the source of the name.
struct TicketRecharge::Path
{
    QString selection; // {} takes the first 10 characters of the name
    QString logInsert; // {} take the minutes, the name as given, YES or NO, and the ticket's Username
    bool showsInGrid = false;
};

struct TicketRecharge::Answers
{
    double minutes = 0;
    qint32 quota = 0;
    bool quotaAccepted = false;
    std::optional<double> days;
};

const TicketRecharge::Path& TicketRecharge::pathOf(TicketSource source)
{
    static const Path typed {QStringLiteral("select * from Account where member=false and Username = '{}'"),
        QStringLiteral("insert into Rechargeinfo (ReChargeType,Rechargetime,Rechargeduser,timedate, Member,Username) "
                       "Values ('MANUAL',{},'{}',Now,'{}','{}')"),
        false};
    // Without a member test: a member's ticket that a search has listed can be recharged from the grid.
    static const Path gridRow {QStringLiteral("select * from Account where Username = '{}'"),
        QStringLiteral("insert into Rechargeinfo (ReChargeType,Rechargetime,Rechargeduser,timedate,member,username) "
                       "Values ('MANUAL',{},'{}',Now,'{}','{}')"),
        true};
    return source == TicketSource::GridRow ? gridRow : typed;
}

TicketRecharge::TicketRecharge(WorkHost& host)
    : m_host(host)
{
}

void TicketRecharge::recharge(TicketSource source)
{
    const QString username = ticketName(m_host,
        source,
        QStringLiteral("Enter Ticket's Username to Recharge?"),
        QString(ProductWord) + QStringLiteral(" - Recharge"));
    if (username.isEmpty())
        return;
    rechargeTicket(pathOf(source), username);
    // Every way out ends here; a change not yet saved is dropped.
    m_ticket.CancelUpdate();
    m_ticket.Close();
}

void TicketRecharge::rechargeTicket(const Path& path, const QString& username)
{
    Platform& platform = m_host.platform();
    // A failing step of the recharge ends it without a word.
    if (!m_ticket.Open(Statement(path.selection, {username.left(10)}),
            m_host.session().connection(),
            CursorType::Static,
            LockType::Optimistic))
        return;
    if (m_ticket.Eof()) {
        platform.messageBox(QStringLiteral("Username ") + username + QStringLiteral(" not found!"), MsgStyle::Stop);
        return;
    }
    const std::optional<Answers> answers = askAnswers(username);
    if (!answers || !writeTicket(path, *answers) || !logRecharge(path, *answers, username))
        return;
    const QString minutes = values::numberText(wholeMinutes(m_ticket.value(QStringLiteral("Time")).toDouble()));
    m_ticket.Close();
    platform.messageBox(QStringLiteral("Account Recharged Successfully!"), MsgStyle::Info);
    if (path.showsInGrid)
        showInGrid(TimeColumn, minutes + QStringLiteral("min(s)"));
}

std::optional<TicketRecharge::Answers> TicketRecharge::askAnswers(const QString& username)
{
    Platform& platform = m_host.platform();
    const QString entry = platform.inputBox(QStringLiteral("Enter Time to Add to ") + username
            + QStringLiteral("? (e.g. -5 to deduce 5 mins, 5 to add 5 mins)"),
        MessageTitle() + QStringLiteral(" - Recharge"),
        QStringLiteral("5"));
    Answers answers;
    const std::optional<qint32> quota = askQuota(answers.quotaAccepted);
    if (!quota)
        return std::nullopt;
    answers.quota = *quota;
    if (entry.isEmpty()) {
        platform.messageBox(QStringLiteral("Nothing Done!"), MsgStyle::Warning);
        return std::nullopt;
    }
    if (!values::isNumeric(entry)) {
        platform.messageBox(QStringLiteral("Not a Valid entry!"), MsgStyle::Warning);
        return std::nullopt;
    }
    answers.minutes = values::leadingNumber(entry);
    const double minutesLeft = wholeMinutes(m_ticket.value(QStringLiteral("Time")).toDouble());
    if (const auto problem = rechargeMinutesProblem(minutesLeft, answers.minutes, answers.quota)) {
        platform.messageBox(*problem, MsgStyle::Warning);
        return std::nullopt;
    }
    if (!askDays(answers.quota, answers.days))
        return std::nullopt;
    return answers;
}

std::optional<qint32> TicketRecharge::askQuota(bool& accepted) const
{
    const SessionPreferences settings = m_host.session().settings();
    // Asked when quota is in use in the other way than the issuing paths ask for it.
    if (!settings.truth(keys::Download) || settings.text(keys::DownType) == QLatin1String("2"))
        return 0;
    Platform& platform = m_host.platform();
    if (platform.messageBox(QStringLiteral("Do you want to add Quota to this Ticket"), MsgStyle::YesNoQuestion)
        != MsgResult::Yes)
        return 0;
    const QString answer = platform.inputBox(
        QStringLiteral("Enter the Quota(in MB) for this Ticket Group?"), QString(ProductWord), QStringLiteral("100"));
    // An answer that is no number fails its conversion, which ends the recharge without a word.
    const std::optional<qint32> quota = values::toInt32(answer);
    if (!quota)
        return std::nullopt;
    if (*quota < 0 || *quota > MaxQuota) {
        platform.messageBox(QStringLiteral("Quota too small or long!"), MsgStyle::Warning);
        return std::nullopt;
    }
    accepted = true;
    return quota;
}

bool TicketRecharge::askDays(qint32 quota, std::optional<double>& days) const
{
    Platform& platform = m_host.platform();
    const QVariant presentDays = m_ticket.value(QStringLiteral("days"));
    const QVariant expire = m_ticket.value(QStringLiteral("Expire"));
    const MsgResult choice = platform.messageBox(
        expiryRechargeQuestion(m_host.session().settings().text(keys::ExType), presentDays, expire),
        MsgStyle::YesNoCancelQuestion);
    if (choice == MsgResult::Cancel)
        return false;
    if (choice != MsgResult::Yes)
        return true;
    const QString entry = platform.inputBox(
        QStringLiteral("Enter the number of days? (i.e. add - to deduce days)"), MessageTitle(), QStringLiteral("5"));
    if (entry.isEmpty())
        return false;
    if (!values::isNumeric(entry)) {
        platform.messageBox(QStringLiteral("Entry is not numeric! (1 to 365 day(s))"), MsgStyle::Warning);
        return false;
    }
    const double added = values::leadingNumber(entry);
    if (const auto problem = rechargeDaysProblem(presentDays, expire, added, quota)) {
        platform.messageBox(*problem, MsgStyle::Warning);
        return false;
    }
    days = added;
    return true;
}

bool TicketRecharge::writeTicket(const Path& path, const Answers& answers)
{
    auto add = [this, &answers](const char* column) {
        const QString field = QLatin1String(column);
        const float seconds = m_ticket.value(field).toFloat();
        return m_ticket.setValue(field, rechargedSeconds(seconds, answers.minutes));
    };
    if (!add("Time") || !add("BackTime")
        || !m_ticket.setValue(QStringLiteral("NoAdded"), m_ticket.value(QStringLiteral("NoAdded")).toLongLong() + 1))
        return false;
    if (answers.quotaAccepted
        && !m_ticket.setValue(
            QStringLiteral("Quota"), rechargedQuota(m_ticket.value(QStringLiteral("Quota")).toDouble(), answers.quota)))
        return false;
    if (answers.days && !writeExpiry(path, *answers.days))
        return false;
    return m_ticket.setValue(QStringLiteral("AccountAdded"), QStringLiteral("RECHARGED"))
        && m_ticket.setValue(QStringLiteral("ComputerUsed"), m_host.session().general.CurrentStaff)
        && m_ticket.Update();
}

// A ticket not yet used gets its days, even when it has a date; a used one moves its date, or gets
// days when it has none.
bool TicketRecharge::writeExpiry(const Path& path, double addedDays)
{
    const QVariant expire = m_ticket.value(QStringLiteral("Expire"));
    if (!m_ticket.value(QStringLiteral("New")).toBool() && expireIsDate(expire)) {
        // Fractions of a day move the time of day, as the form language adds days to a date.
        const std::optional<QDateTime> moved = values::fromSerial(values::toSerial(expire.toDateTime()) + addedDays);
        if (!moved || !m_ticket.setValue(QStringLiteral("Expire"), *moved))
            return false;
        if (path.showsInGrid)
            showInGrid(ExpiryColumn, values::format(m_ticket.value(QStringLiteral("Expire")), QString()));
        return true;
    }
    const QString field = QStringLiteral("Days");
    if (!m_ticket.setValue(field, m_ticket.value(field).toDouble() + addedDays))
        return false;
    if (path.showsInGrid)
        showInGrid(ExpiryColumn, values::format(m_ticket.value(field), QString()) + QStringLiteral("day(s)"));
    return true;
}

bool TicketRecharge::logRecharge(const Path& path, const Answers& answers, const QString& username)
{
    const bool member = m_ticket.value(QStringLiteral("Member")).toBool();
    return m_host.session().connection().Execute(Statement(path.logInsert,
        {values::singleText(values::toSingle(answers.minutes)),
            username,
            member ? QStringLiteral("YES") : QStringLiteral("NO"),
            m_ticket.value(QStringLiteral("Username"))}));
}

void TicketRecharge::showInGrid(int column, const QString& text) const
{
    GridData& grid = m_host.ticketGrid().grid();
    grid.setTextMatrix(grid.row(), column, text);
}

} // namespace marlet
