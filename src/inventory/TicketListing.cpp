#include "inventory/TicketListing.h"

#include "inventory/TicketDeletion.h"
#include "inventory/TicketRecharge.h"
#include "inventory/TicketSearch.h"
#include "issuing/GenAccNames.h"
#include "issuing/TicketRow.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/KeyRules.h"
#include "platform/Platform.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/Recordset.h"
#include "values/Numbers.h"

#include <climits>
#include <limits>

namespace marlet {

TicketListing::TicketListing(WorkHost& host)
    : m_host(host)
    , m_form(host.form())
{
}

void TicketListing::chooseOption(int option)
{
    for (int other = 1; other <= int(genacc::SelectionOptions.size()); ++other)
        m_form[genacc::SelectionOptions[other - 1]].setForeColor(other == option ? Colour::Red : Colour::Black);
    Control& time = m_form[genacc::Text1];
    Control& group = m_form[genacc::Text5];
    time.setEnabled(option == 4);
    group.setEnabled(option == 5);
    if (option == 4)
        m_form.setFocus(time);
    else if (option == 5)
        m_form.setFocus(group);
}

void TicketListing::viewSelection()
{
    Platform& platform = m_host.platform();
    Control& bar = m_host.progressBar();
    m_host.StartProgress();
    platform.yield();
    bar.setValue(bar.maximum());
    platform.yield();
    platform.sleep(100);

    Control& gridControl = m_host.ticketGrid();
    GridData& grid = gridControl.grid();
    grid.setColSel(0);
    grid.setRows(1);

    Statement statement(QStringLiteral("select * from Account where member=false"));
    if (m_form[genacc::Option2].isChecked()) {
        statement = Statement(QStringLiteral("select * from Account where NEW = TRUE and member=false"));
    } else if (m_form[genacc::Option3].isChecked()) {
        statement = Statement(QStringLiteral("select * from Account where NEW <> TRUE and member=false"));
    } else if (m_form[genacc::Option4].isChecked()) {
        // The whole part is taken before the multiplication: 5.7 selects 300 seconds.
        const double minutes = values::floorToWhole(values::leadingNumber(m_form[genacc::Text1].text()));
        statement = Statement(QStringLiteral("select * from Account where member=false and Time = {}"), {minutes * 60});
    } else if (m_form[genacc::Option5].isChecked()) {
        statement = Statement(QStringLiteral("select * from Account where member=false and TicketGrp like '{}%'"),
            {m_form[genacc::Text5].text()});
    }

    Recordset tickets;
    tickets.Open(statement, m_host.session().connection());
    const long count = tickets.RecordCount();
    if (count > 0) {
        bar.setRange(bar.minimum(), int(qMin<long>(count, INT_MAX)));
        bar.setValue(0);
        m_host.setProgressText(QStringLiteral("Listing "));
        m_host.ProgressAdjust();
        tickets.MoveFirst();
        // The running number is a 16-bit counter: the listing ends when it can count no further.
        const long last = qMin<long>(count, std::numeric_limits<qint16>::max());
        const TicketRowReader reader(tickets);
        for (long i = 1; i <= last; ++i) {
            const bool masked = m_form[genacc::Check4].ticked();
            grid.addItem(ticketRowLine(QString::number(i), reader.fields(tickets), masked));
            if (!tickets.Eof())
                tickets.MoveNext();
            platform.yield();
            m_host.stepProgress();
            if (m_host.StopRequested) {
                tickets.Close();
                m_host.EndProgress();
                return;
            }
        }
    }
    gridControl.setToolTip(QString::number(qMax<long>(count, 0)) + QStringLiteral(" Record(s)"));
    tickets.Close();
    m_host.EndProgress();
}

void TicketListing::rowClicked()
{
    const GridData& grid = m_host.ticketGrid().grid();
    const QString group = grid.textMatrix(grid.row(), 4);
    if (group.isEmpty() || group == QLatin1String("Ticket Group"))
        return;
    if (m_form[genacc::Option4].isChecked()) {
        const QString time = grid.textMatrix(grid.row(), 3);
        const QString minutes = time.left(time.size() - 6);
        Control& text1 = m_form[genacc::Text1];
        text1.setText(values::isNumeric(minutes) ? minutes : QStringLiteral("0"));
        m_form.setFocus(text1);
    } else if (m_form[genacc::Option5].isChecked()) {
        Control& text5 = m_form[genacc::Text5];
        text5.setText(group.left(12));
        m_form.setFocus(text5);
    }
}

void TicketListing::gridMouseDown(int button)
{
    GridData& grid = m_host.ticketGrid().grid();
    if (button != MouseButton::Right || grid.mouseRow() == 0)
        return;
    grid.setRow(grid.mouseRow());
    grid.setColSel(3);
    const bool rows = grid.rows() >= 2;
    for (const QString& item : {genacc::m_Dels, genacc::m_Rec, genacc::m_ChangePass})
        m_form[item].setEnabled(rows);
    m_form[genacc::m_searchs].setEnabled(true);
    m_form.popupMenu(m_form[genacc::m_click]);
}

} // namespace marlet
