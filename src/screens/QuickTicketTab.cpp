#include "screens/QuickTicketTab.h"

#include "platform/Platform.h"
#include "printing/SheetSettings.h"
#include "screens/Options.h"
#include "screens/OptionsNames.h"
#include "session/Session.h"
#include "settings/TicketTimes.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"

namespace marlet {

namespace {

constexpr int Flag = 7;

} // namespace

QuickTicketTab::QuickTicketTab(Options& screen)
    : m_screen(screen)
{
}

void QuickTicketTab::build(Control& panel)
{
    Control& enabled = m_screen.addToFrame(
        panel, ControlKind::CheckBox, options::chkQuickTicket, QStringLiteral("Enable Quick-Ticket"));
    m_screen.trackChanges(enabled, Flag);
    for (const auto& [name, caption] : {std::pair {&options::cboQuickTime, "Time of Ticket (in mins):"},
             std::pair {&options::cboQuickCost, "Cost Per Ticket (in N):"}})
        m_screen.addToFrame(panel, ControlKind::ComboBox, *name, QLatin1String(caption)).setEditable(true);
    Control& timeTicket = m_screen.addToFrame(
        panel, ControlKind::CheckBox, options::chkQuickTimeTicket, QStringLiteral("Create Time Ticket"));
    Control& once = m_screen.addToFrame(
        panel, ControlKind::CheckBox, options::chkQuickOnce, QStringLiteral("Use Ticket Only Once"));
    once.setEnabled(false);
    timeTicket.onClick = [&timeTicket, &once] { once.setEnabled(timeTicket.isChecked()); };
    m_screen.addToFrame(
        panel, ControlKind::CheckBox, options::chkQuickVIP, QStringLiteral("Use Reserved Client (VIP)"));
    m_screen
        .addToFrame(panel, ControlKind::CommandButton, options::cmdAddQuickTicket, QStringLiteral("Add Quick Ticket"))
        .onClick
        = [this] { add(); };
    m_screen
        .addToFrame(
            panel, ControlKind::CommandButton, options::cmdRemoveQuickTicket, QStringLiteral("Remove Quick-Ticket"))
        .onClick
        = [this] { remove(); };
    m_screen.addToFrame(panel, ControlKind::ListBox, options::lstQuickTickets, QStringLiteral("Existing Quick-Ticket"));
}

void QuickTicketTab::load()
{
    SessionPreferences stored = m_screen.session().settings();
    // Read under the product word, though Apply writes it under the host's title.
    m_screen[options::chkQuickTicket].setValue(
        stored.number(keys::QuickTicket.underProduct()) == 1 ? CheckState::Checked : CheckState::Unchecked);
    for (const QString& name : {options::chkQuickTimeTicket, options::chkQuickVIP})
        m_screen[name].setEnabled(true);
    Recordset types;
    types.Open(Statement(QStringLiteral("Select * from QuickT")),
        m_screen.session().connection(),
        CursorType::Static,
        LockType::ReadOnly);
    Control& list = m_screen[options::lstQuickTickets];
    for (; !types.Eof(); types.MoveNext())
        list.addItem(types.value(QStringLiteral("TicketType")).toString());
    const QStringList choices = tickettimes::quickTicketChoices();
    for (const QString& name : {options::cboQuickTime, options::cboQuickCost}) {
        m_screen[name].addItems(choices);
        m_screen[name].setText(QString());
    }
}

void QuickTicketTab::add()
{
    const QuickTicketDefinition definition {m_screen[options::cboQuickTime].text(),
        m_screen[options::cboQuickCost].text(),
        m_screen[options::chkQuickTimeTicket].isChecked(),
        m_screen[options::chkQuickOnce].isChecked(),
        m_screen[options::chkQuickVIP].isChecked()};
    Control& list = m_screen[options::lstQuickTickets];
    // The currency of the moment goes into the entry; a later change of it does not reach it.
    const QString currency = m_screen.session().settings().text(keys::Currency.underProduct());
    const QuickTicketAddition addition = addQuickTicket(list.items(), definition, currency);
    if (!addition.added()) {
        m_screen.platform().messageBox(addition.refusal, MsgStyle::Warning);
        if (addition.focus == QuickTicketAddition::Field::Cost)
            m_screen.setFocus(m_screen[options::cboQuickCost]);
        else if (addition.focus == QuickTicketAddition::Field::Time)
            m_screen.setFocus(m_screen[options::cboQuickTime]);
        return;
    }
    list.addItem(addition.entry);
    m_screen.fieldChanged(Flag);
}

void QuickTicketTab::remove()
{
    Control& list = m_screen[options::lstQuickTickets];
    if (list.listCount() == 0)
        return;
    // With nothing selected there is nothing to remove.
    if (list.listIndex() >= 0)
        list.removeItem(list.listIndex());
    m_screen.fieldChanged(Flag);
}

void QuickTicketTab::apply(Recordset&)
{
    SessionPreferences stored = m_screen.session().settings();
    stored.save(keys::QuickTicket, QString::number(m_screen[options::chkQuickTicket].value()));
    saveQuickTickets(m_screen.session().connection(), m_screen[options::lstQuickTickets].items());
}

} // namespace marlet
