#include "printing/PrintStaging.h"

#include "platform/Control.h"
#include "platform/Platform.h"
#include "printing/TicketDocuments.h"
#include "printing/TicketSheet.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/Connection.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "values/Formats.h"

#include <array>
#include <memory>

namespace marlet {

namespace {

const QString PreviewFailed = QStringLiteral("Print Generation Error!, Print Preview Aborted!");
const QString NoTicket = QStringLiteral("There was no Ticket to Print!");
const QString ReportComponent = QStringLiteral("Vellum.Sheets");
constexpr int ExportPrintType = 4;

// The scratch table of a print type and the report operation that previews it.
struct ScratchTable
{
    QString name;
    int perRow = 0; // tickets to a row
    QString operation;

    // The two-up table addresses both of its slots by name, the others only their first.
    bool slotByName(int slot) const { return slot == 0 || perRow == 2; }
};

// Print types 1 and 2; any other value but the export type prints large.
ScratchTable scratchTable(int printType)
{
    if (printType == 1)
        return {QStringLiteral("Row6PrintTemp"), 6, QStringLiteral("Generated6Preview")};
    if (printType == 2)
        return {QStringLiteral("Row3PrintTemp"), 3, QStringLiteral("Generated3Preview")};
    return {QStringLiteral("RowPrintTemp"), 2, QStringLiteral("Generated2Preview")};
}

// Offsets of a ticket's nine columns in its slot.
enum SlotField { GroupNumber, Username, Password, Time, Amount, Expire, Nightinfo, Quota, Days };
// The first slot of a row is written in this order, the others in the order of their columns.
constexpr std::array<int, PrintSlotColumns> FirstSlotOrder {
    GroupNumber, Username, Password, Amount, Expire, Time, Nightinfo, Quota, Days};
constexpr std::array<int, PrintSlotColumns> SlotOrder {
    GroupNumber, Username, Password, Time, Amount, Expire, Nightinfo, Quota, Days};

// The ticket fields a slot reads, in the order in which it reads them.
enum TicketField {
    TicketGrpField,
    TicketNoField,
    UsernameField,
    PasswordField,
    TimeField,
    AmountField,
    ExpireField,
    NightField,
    OnceField,
    StartTimeField,
    EndTimeField,
    QuotaField,
    DaysField,
    TicketFieldCount
};
constexpr std::array<const char*, TicketFieldCount> TicketFieldNames {"TicketGrp",
    "TicketNo",
    "Username",
    "Password",
    "Time",
    "Amount",
    "Expire",
    "Night",
    "Once",
    "StartTime",
    "EndTime",
    "Quota",
    "Days"};

class PrintStaging
{
public:
    explicit PrintStaging(WorkHost& host)
        : m_host(host)
        , m_platform(host.platform())
        , m_session(host.session())
    {
    }

    void run(const Statement& query);

private:
    bool openTickets(const Statement& query);
    void reportNoTicket();
    void startProgress();
    bool exportPage();
    bool pack(const ScratchTable& table);
    bool fillSlot(const ScratchTable& table, int slot, const std::array<int, PrintSlotColumns>& order);
    bool fillEmptySlot(const ScratchTable& table, int slot);
    bool put(const ScratchTable& table, int slot, int field, const QVariant& value);
    void advanceBar(const ScratchTable& table);
    bool preview(const ScratchTable& table);
    void closeAll();
    void finish();
    void fail();

    // A ticket's field, by the position found for its name when the fields are the same for every
    // row; a name the select lacks is asked for by name, which leaves its own error.
    QVariant ticketField(int field, bool& ok) const;
    void findPositions(const ScratchTable& table);

    WorkHost& m_host;
    Platform& m_platform;
    Session& m_session;
    Recordset m_tickets;
    Recordset m_rows;
    std::unique_ptr<NamedComponent> m_sheets;
    std::array<int, TicketFieldCount> m_ticketPositions {};
    // Positions of the scratch row's columns for the slots addressed by name; -1 where not found.
    std::array<std::array<int, PrintSlotColumns>, 2> m_slotPositions {};
};

void PrintStaging::findPositions(const ScratchTable& table)
{
    for (std::size_t i = 0; i < TicketFieldNames.size(); ++i)
        m_ticketPositions[i] = m_tickets.fieldIndex(QLatin1String(TicketFieldNames[i]));
    for (int slot = 0; slot < 2; ++slot) {
        for (int field = 0; field < PrintSlotColumns; ++field)
            m_slotPositions[std::size_t(slot)][std::size_t(field)]
                = table.slotByName(slot) ? m_rows.fieldIndex(printSlotColumn(slot + 1, field).name) : -1;
    }
}

QVariant PrintStaging::ticketField(int field, bool& ok) const
{
    bool found = false;
    const int position = m_ticketPositions[std::size_t(field)];
    const QVariant value = position >= 0 ? m_tickets.value(position, &found)
                                         : m_tickets.value(QLatin1String(TicketFieldNames[std::size_t(field)]), &found);
    ok = ok && found;
    return value;
}

void PrintStaging::run(const Statement& query)
{
    if (query.pattern().isEmpty())
        return;
    // The tickets were written moments ago through other result sets of this connection. Our stores
    // show a written row at once, so one turn of the screen's events is all the wait needed here.
    m_platform.yield();
    if (!openTickets(query))
        return fail();
    if (m_tickets.RecordCount() <= 0)
        return reportNoTicket();
    startProgress();
    if (!m_tickets.MoveFirst())
        return fail();
    const int printType = int(m_session.settings().number(keys::PrintType.underTitle()));
    if (printType == ExportPrintType) {
        if (!exportPage())
            fail();
        return;
    }
    const ScratchTable table = scratchTable(printType);
    if (!pack(table))
        return fail();
    m_host.EndProgress();
    // The rows are in the store as soon as they are saved: a turn of events before and after the
    // panel closes is enough for the report component to read them.
    m_platform.yield();
    m_platform.yield();
    if (m_host.StopRequested)
        m_host.StopRequested = false;
    else if (!preview(table))
        return fail();
    finish();
}

bool PrintStaging::openTickets(const Statement& query)
{
    if (!m_tickets.Open(query, m_session.connection()))
        return false;
    if (m_tickets.RecordCount() != 0)
        return true;
    // One more look, in case the rows had not reached the store yet. Moving to the first row of an
    // empty result is an error of the store, so a batch that is still empty ends in the handler.
    return m_tickets.Requery() && m_tickets.RecordCount() != 0 && m_tickets.MoveFirst();
}

// Left for a result set that gives no count of its rows.
void PrintStaging::reportNoTicket()
{
    m_platform.messageBox(NoTicket, MsgStyle::Warning);
    m_host.EndProgress();
    m_platform.yield();
    m_platform.sleep(1000);
}

void PrintStaging::startProgress()
{
    Control& bar = m_host.progressBar();
    bar.setValue(0);
    m_host.StartProgress();
    m_platform.yield();
    bar.setValue(bar.maximum());
    m_platform.yield();
    m_platform.sleep(100);
    m_host.setProgressText(QStringLiteral("Generating Preview "));
    m_host.ProgressAdjust();
}

bool PrintStaging::exportPage()
{
    if (!TicketDocuments(m_host).WriteMediumTickets(m_tickets))
        return false;
    m_tickets.Close();
    m_host.EndProgress();
    return true;
}

bool PrintStaging::pack(const ScratchTable& table)
{
    Connection& connection = m_session.connection();
    if (!connection.Execute(Statement(QStringLiteral("Delete * from ") + table.name))
        || !m_rows.Open(Statement(QStringLiteral("Select * from ") + table.name),
            connection,
            CursorType::Static,
            LockType::Optimistic))
        return false;

    findPositions(table);
    const long count = m_tickets.RecordCount();
    long rows = count / table.perRow;
    if (count - table.perRow * rows != 0)
        ++rows;
    Control& bar = m_host.progressBar();
    bar.setMaximum(int(rows));
    if (table.perRow == 2)
        bar.setValue(0);

    const int lastRow = bar.maximum();
    for (int row = 1; row <= lastRow; ++row) {
        if (!m_rows.AddNew() || !fillSlot(table, 0, FirstSlotOrder))
            return false;
        for (int slot = 1; slot < table.perRow; ++slot) {
            if (!m_tickets.Eof() && !m_tickets.MoveNext())
                return false;
            const bool filled = m_tickets.Eof() ? fillEmptySlot(table, slot) : fillSlot(table, slot, SlotOrder);
            if (!filled)
                return false;
        }
        if (!m_rows.Update() || (!m_tickets.Eof() && !m_tickets.MoveNext()))
            return false;
        advanceBar(table);
        if (m_host.StopRequested) {
            m_host.EndProgress();
            break;
        }
        m_platform.yield();
    }
    return true;
}

bool PrintStaging::fillSlot(const ScratchTable& table, int slot, const std::array<int, PrintSlotColumns>& order)
{
    bool ok = true;
    const auto field = [&](TicketField which) { return ticketField(which, ok); };
    QVariant values[PrintSlotColumns];
    values[GroupNumber] = QString(field(TicketGrpField).toString() + u'-' + field(TicketNoField).toString());
    values[Username] = field(UsernameField);
    values[Password] = field(PasswordField);
    values[Time] = field(TimeField);
    values[Amount] = field(AmountField);
    values[Expire] = field(ExpireField);
    const QVariant night = field(NightField);
    const QVariant once = field(OnceField);
    const QVariant start = field(StartTimeField);
    const QVariant end = field(EndTimeField);
    values[Nightinfo] = ticketTimeRule(night.toBool(), once.toBool(), start, end, m_session.settings());
    values[Quota] = field(QuotaField);
    values[Days] = field(DaysField);
    if (!ok)
        return false;
    for (const int offset : order) {
        if (!put(table, slot, offset, values[offset]))
            return false;
    }
    return true;
}

// The report layouts rely on these values of a slot without a ticket: a blank, not an empty text,
// and a date.
bool PrintStaging::fillEmptySlot(const ScratchTable& table, int slot)
{
    const QString blank = QStringLiteral(" ");
    const QVariant values[PrintSlotColumns] = {blank, blank, blank, 0, blank, m_platform.today(), blank, 0, 0};
    for (const int offset : SlotOrder) {
        if (!put(table, slot, offset, values[offset]))
            return false;
    }
    return true;
}

bool PrintStaging::put(const ScratchTable& table, int slot, int field, const QVariant& value)
{
    if (table.slotByName(slot)) {
        const int position = m_slotPositions[std::size_t(slot)][std::size_t(field)];
        return position >= 0 ? m_rows.setValue(position, value)
                             : m_rows.setValue(printSlotColumn(slot + 1, field).name, value);
    }
    return m_rows.setValue(PrintSlotColumns * slot + field, value);
}

void PrintStaging::advanceBar(const ScratchTable& table)
{
    Control& bar = m_host.progressBar();
    if (table.perRow == 2 || bar.value() < bar.maximum())
        m_host.stepProgress();
}

bool PrintStaging::preview(const ScratchTable& table)
{
    m_sheets = m_platform.createComponent(ReportComponent);
    // The component takes the shared connection by reference and may leave it reopened elsewhere;
    // the session goes on with the connection as the component left it.
    return m_sheets
        && m_sheets->callWithConnection(
            table.operation, m_session.connection(), {QString(QStringLiteral("Select * From ") + table.name)});
}

void PrintStaging::closeAll()
{
    m_tickets.Close();
    m_rows.Close();
    m_sheets.reset();
}

void PrintStaging::finish()
{
    closeAll();
    m_host.EndProgress();
}

// The handler of every failing step: it carries on past further failures. The scratch table keeps
// whatever it held when the step failed.
void PrintStaging::fail()
{
    m_platform.yield();
    m_platform.sleep(500);
    m_platform.yield();
    m_host.EndProgress();
    m_platform.messageBox(PreviewFailed, MsgStyle::Critical);
    closeAll();
}

} // namespace

void BuildPrintPreview(WorkHost& host, const Statement& query)
{
    PrintStaging(host).run(query);
}

} // namespace marlet
