#include "inventory/BinReport.h"

#include "issuing/TicketRules.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"
#include "values/Formats.h"
#include "values/Numbers.h"

#include <QHash>
#include <QString>

#include <initializer_list>

namespace marlet {

namespace {

const QString Tab = QStringLiteral("\t");
const QString DateFormat = QStringLiteral("dd/mm/yyyy");
const QString TimeFormat = QStringLiteral("hh:mmAMPM");

// A field as it reads when joined into text: Null as nothing, text as it stands, numbers, dates
// and truth values as the form language prints them.
QString joined(const QVariant& value)
{
    if (value.isNull())
        return QString();
    if (value.typeId() == QMetaType::QString)
        return value.toString();
    return values::format(value, QString());
}

// A Null never counts as true.
bool isTrue(const QVariant& value)
{
    return !value.isNull() && value.toBool();
}

// The ticket information screen tests its member, recharge and point-of-sale facts as they come:
// a Null makes the test fail, and a failed test counts as true.
bool passesTest(const QVariant& value)
{
    return value.isNull() || value.toBool();
}

// Whole minutes of a time in seconds, then "min(s)"; a Null time gives the unit alone.
QString minutesText(const QVariant& seconds)
{
    const QString minutes = seconds.isNull() ? QString() : values::numberText(wholeMinutes(seconds.toDouble()));
    return minutes + QStringLiteral("min(s)");
}

// The report asks for the same few fields by their written names on every row; each name becomes a
// string once, not once per report.
const QString& fieldName(const char* name)
{
    thread_local QHash<const char*, QString> names;
    auto found = names.constFind(name);
    if (found == names.constEnd())
        found = names.insert(name, QString::fromLatin1(name));
    return *found;
}

class ReportLines
{
public:
    explicit ReportLines(const Recordset& row)
        : m_row(row)
    {
        m_text.reserve(640);
    }

    QVariant field(const char* name) const { return m_row.value(fieldName(name)); }
    QString text(const char* name) const { return joined(field(name)); }
    // The lines are joined as they come, each after the one before by CR LF; a line's pieces go
    // straight into the text.
    void add(std::initializer_list<QStringView> pieces)
    {
        if (m_lineCount++ > 0)
            m_text += QLatin1String("\r\n");
        for (const QStringView piece : pieces)
            m_text += piece;
    }
    QString joinedLines() const { return m_text; }

private:
    const Recordset& m_row;
    QString m_text;
    int m_lineCount = 0;
};

QString lastTimeUsed(const ReportLines& r)
{
    const QVariant timeLastUsed = r.field("TimeLastUsed");
    return timeLastUsed.isNull() || isTrue(r.field("New")) ? QStringLiteral("NEW") : joined(timeLastUsed);
}

QString lastDateUsed(const ReportLines& r)
{
    return isTrue(r.field("New")) ? QStringLiteral("NEW") : values::format(r.field("LastUsed"), DateFormat);
}

QString expiry(const ReportLines& r)
{
    const QVariant days = r.field("days");
    if (!days.isNull() && days.toDouble() > 0)
        return joined(r.field("Days")) + QStringLiteral(" days after Login");
    return values::format(r.field("Expire"), DateFormat);
}

QString timeFrame(const ReportLines& r, const BinReportOptions& options)
{
    if (!options.generalTime)
        return values::format(r.field("StartTime"), TimeFormat) + QStringLiteral(" to ")
            + values::format(r.field("EndTime"), TimeFormat);
    return values::format(options.beginTime, TimeFormat) + QStringLiteral(" to ")
        + values::format(options.endTime, TimeFormat);
}

QString groupAndNumber(const ReportLines& r)
{
    return r.text("TicketGrp") + QStringLiteral(" - ") + r.text("TicketNo");
}

// The facts from "Username: " to "Computer Used: ", as the ticket information screen lines them
// up: one tab after each caption.
void addUsage(ReportLines& r)
{
    r.add({QStringLiteral("Username: "), Tab, r.text("Username")});
    r.add({QStringLiteral("Time Left: "), Tab, minutesText(r.field("Time"))});
    r.add({QStringLiteral("Time Used: "), Tab, r.text("TotalTimeUsed"), QStringLiteral("min(s)")});
    r.add({QStringLiteral("Original Time: "), Tab, minutesText(r.field("OrgTime"))});
    r.add({QStringLiteral("Cost Price: "), Tab, r.text("amount")});
    r.add({QStringLiteral("Last Time Used: "), Tab, lastTimeUsed(r)});
    r.add({QStringLiteral("Last Date Used: "), Tab, lastDateUsed(r)});
    r.add({QStringLiteral("Date Created: "), Tab, values::format(r.field("DateCreated"), DateFormat)});
    r.add({QStringLiteral("Expire Date: "), Tab, expiry(r)});
    r.add({QStringLiteral("Computer Used: "), Tab, r.text("ComputerUsed")});
}

// "Member Account: " and the recharge schedule. The recharge time stands outside the member test:
// a ticket of any kind whose Autorecharge is not "NONE" shows it.
void addMembership(ReportLines& r)
{
    r.add({QStringLiteral("Member Account: "), Tab, r.text("Member")});
    if (passesTest(r.field("Member"))) {
        r.add({QStringLiteral("AutoRecharge: "), Tab, r.text("Autorecharge")});
        r.add({QStringLiteral("Account Day(s): "), Tab, r.text("reday")});
    }
    const QVariant autorecharge = r.field("Autorecharge");
    if (autorecharge.isNull() || autorecharge.toString() != QLatin1String("NONE"))
        r.add({QStringLiteral("AutoCharge Time: "), Tab, r.text("retime")});
}

// From "Time Ticket: " to "Quota Left: ", the same in every report.
void addKindAndQuota(ReportLines& r, const BinReportOptions& options)
{
    r.add({QStringLiteral("Time Ticket: "), Tab, r.text("Night")});
    if (isTrue(r.field("Night")))
        r.add({QStringLiteral("Time Frame: "), Tab, timeFrame(r, options)});
    r.add({QStringLiteral("Used Once: "), Tab, r.text("Once")});
    if (options.quotaLine)
        r.add({QStringLiteral("Quota Left: "), Tab, r.text("Quota"), QStringLiteral("MB")});
}

QString posLine(const ReportLines& r, const PosSellerLookup& posSeller)
{
    const QString seller = posSeller ? posSeller(r.text("Username")) : QString();
    return QStringLiteral("POS/Activated By: ") + Tab + seller;
}

// The ticket information screen's report of an Account row: every line ends with CR LF.
QString ticketReport(ReportLines& r, const BinReportOptions& options, const PosSellerLookup& posSeller)
{
    r.add({QStringLiteral("TicketGrp/No: "), Tab, groupAndNumber(r)});
    addUsage(r);
    r.add({QStringLiteral("# of LogIn(s): "), Tab, r.text("NoLogIn")});
    r.add({QStringLiteral("# of Print(s): "), Tab, r.text("Print"), QStringLiteral(" page(s)")});
    r.add({QStringLiteral("Ticket Added: "), Tab, r.text("AccountAdded")});
    addMembership(r);
    r.add({QStringLiteral("# of Acct(s) Added: "), Tab, r.text("NoAdded")});
    addKindAndQuota(r, options);
    r.add({QStringLiteral("Created By: "), Tab, r.text("ByWhom")});
    if (passesTest(r.field("POS")))
        r.add({posLine(r, posSeller)});
    return r.joinedLines() + QStringLiteral("\r\n");
}

// The ticket information screen's report of a bin row: "page(s)" moved up a line, "Ticket Added: "
// twice, and no line end after the last line.
QString ticketInBinReport(ReportLines& r, const BinReportOptions& options, const PosSellerLookup& posSeller)
{
    r.add({QStringLiteral("TicketGrp&No: "), Tab, groupAndNumber(r)});
    addUsage(r);
    r.add({QStringLiteral("# of LogIn(s): "), Tab, r.text("NoLogIn"), QStringLiteral(" page(s)")});
    r.add({QStringLiteral("# of Print(s): "), Tab, r.text("Print")});
    r.add({QStringLiteral("Ticket Added: "), Tab, r.text("AccountAdded")});
    r.add({QStringLiteral("# of Acct(s) Added: "), Tab, r.text("NoAdded")});
    r.add({QStringLiteral("Ticket Added: "), Tab, r.text("AccountAdded")});
    addMembership(r);
    addKindAndQuota(r, options);
    r.add({QStringLiteral("Created By: "), Tab, r.text("ByWhom")});
    if (passesTest(r.field("POS")))
        r.add({posLine(r, posSeller)});
    return r.joinedLines();
}

} // namespace

BinReportOptions BinReportOptions::read(const SessionPreferences& preferences)
{
    BinReportOptions options;
    options.generalTime = preferences.number(keys::UseGTime) != 0;
    options.beginTime = preferences.text(keys::BeginTime);
    options.endTime = preferences.text(keys::EndTime);
    options.quotaLine = preferences.truth(keys::Download) && preferences.text(keys::DownType) != QLatin1String("2");
    return options;
}

QString binReport(
    const Recordset& row, BinReportKind kind, const BinReportOptions& options, const PosSellerLookup& posSeller)
{
    ReportLines r(row);
    if (kind == BinReportKind::Ticket)
        return ticketReport(r, options, posSeller);
    if (kind == BinReportKind::TicketInBin)
        return ticketInBinReport(r, options, posSeller);
    if (kind == BinReportKind::ListClick) {
        r.add({QStringLiteral("Date/Time Deleted: "), Tab, r.text("DateTimeDeleted")});
        r.add({QStringLiteral("Reason Deleted: "), Tab, r.text("Reason")});
        r.add({QStringLiteral("TicketGrp&No: "), Tab, r.text("TicketGrp")});
    } else {
        r.add({QStringLiteral("TicketGrp&No: "), Tab, groupAndNumber(r)});
    }
    r.add({QStringLiteral("Username: "), Tab, Tab, r.text("Username")});
    r.add({QStringLiteral("Time Left: "), Tab, Tab, minutesText(r.field("Time"))});
    r.add({QStringLiteral("Time Used: "), Tab, r.text("TotalTimeUsed"), QStringLiteral("min(s)")});
    r.add({QStringLiteral("Original Time: "), Tab, minutesText(r.field("OrgTime"))});
    r.add({QStringLiteral("Amount: "), Tab, Tab, r.text("amount")});
    r.add({QStringLiteral("Last Time Used: "), Tab, lastTimeUsed(r)});
    r.add({QStringLiteral("Last Date Used: "), Tab, lastDateUsed(r)});
    r.add({QStringLiteral("Date Created: "), Tab, values::format(r.field("DateCreated"), DateFormat)});
    r.add({QStringLiteral("Expire Date: "), Tab, expiry(r)});
    r.add({QStringLiteral("Computer Used: "), Tab, r.text("ComputerUsed")});
    r.add({QStringLiteral("Ticket Added: "), Tab, r.text("AccountAdded")});
    r.add({QStringLiteral("# of Acct(s) Added: "), Tab, r.text("NoAdded")});
    addKindAndQuota(r, options);
    r.add({QStringLiteral("Created By: "), Tab, r.text("ByWhom")});
    return r.joinedLines();
}

} // namespace marlet
