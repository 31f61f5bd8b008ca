#include "screens/IncludeExcludeTab.h"

#include "platform/Platform.h"
#include "screens/Options.h"
#include "screens/OptionsNames.h"
#include "session/Session.h"
#include "settings/CheckValue.h"
#include "store/PreferenceKeys.h"
#include "values/HostFlags.h"
#include "values/Texts.h"

namespace marlet {

namespace {

constexpr int Flag = 8;

const QString DefaultPrefix = QStringLiteral("RSV");

const QString ClientNameCaption = QStringLiteral("Client Name:");

void upperCaseKeys(Control& field)
{
    field.onKeyPress = [](int& key) { key = QChar(char16_t(key)).toUpper().unicode(); };
}

bool blank(const QString& text)
{
    return values::trimBlanks(text).isEmpty();
}

} // namespace

IncludeExcludeTab::IncludeExcludeTab(Options& screen)
    : m_screen(screen)
{
}

// ---- building -------------------------------------------------------------------------------

void IncludeExcludeTab::build(Control& panel)
{
    static const ClientFields excluded {restrictions::ClientList::Excluded,
        nullptr,
        &options::lstExcluded,
        &options::txtExcludedName,
        &options::cmdAddExcluded,
        &options::cmdRemoveExcluded};
    Control& frame = m_screen.addToFrame(panel,
        ControlKind::Frame,
        options::FExcluded,
        QStringLiteral("Client's Excluded from All Restriction (including Client Option)"));
    buildClients(frame, excluded);
    buildSeparation(panel);
}

void IncludeExcludeTab::buildClients(Control& frame, const ClientFields& fields)
{
    Control& entries = m_screen.addToFrame(frame, ControlKind::ListBox, *fields.entries);
    Control& name = m_screen.addToFrame(frame, ControlKind::TextBox, *fields.edit, ClientNameCaption);
    name.setMaxLength(30);
    upperCaseKeys(name);
    name.onChange = [this, &fields] { followName(fields); };
    entries.onClick = [&entries, &name] {
        if (entries.listIndex() >= 0)
            name.setText(entries.item(entries.listIndex()).toUpper());
    };
    Control& add = m_screen.addToFrame(frame, ControlKind::CommandButton, *fields.add, QStringLiteral("Add Client"));
    Control& remove
        = m_screen.addToFrame(frame, ControlKind::CommandButton, *fields.remove, QStringLiteral("Remove Client"));
    add.onClick = [this, &fields] { addClient(fields); };
    remove.onClick = [this, &fields] { removeClient(fields); };
    followName(fields);
}

void IncludeExcludeTab::buildSeparation(Control& panel)
{
    static const ClientFields reserved {restrictions::ClientList::Reserved,
        &options::chkSelClient,
        &options::lstReserved,
        &options::txtReservedName,
        &options::cmdAddReserved,
        &options::cmdRemoveReserved};
    Control& frame = m_screen.addToFrame(
        panel, ControlKind::Frame, options::FTicketSeperation, QStringLiteral("Ticket Seperation on Client(s)"));
    Control& byPrefix = m_screen.addToFrame(frame,
        ControlKind::CheckBox,
        options::chkSelClientP,
        QStringLiteral("Use Ticket Seperation on Client(s)'s names starting with the Prefix:"));
    Control& prefixName = m_screen.addToFrame(frame, ControlKind::TextBox, options::txtSelCPName);
    prefixName.setMaxLength(10);
    upperCaseKeys(prefixName);
    byPrefix.onClick = [this, &byPrefix, &prefixName] {
        prefixName.setEnabled(byPrefix.isChecked());
        m_screen.setFocus(prefixName);
    };

    Control& byName = m_screen.addToFrame(
        frame, ControlKind::CheckBox, options::chkSelClient, QStringLiteral("Use Ticket Seperation on:"));
    buildClients(frame, reserved);
    byName.onClick = [this] {
        const bool on = m_screen[options::chkSelClient].isChecked();
        m_screen[options::lstReserved].setEnabled(on);
        m_screen[options::txtReservedName].setEnabled(on);
        followName(reserved);
        m_screen.setFocus(m_screen[options::txtReservedName]);
    };
    // The boxes start cleared, and so do the fields they govern.
    byPrefix.fireClick();
    byName.fireClick();

    Control& prefix = m_screen.addToFrame(frame,
        ControlKind::TextBox,
        options::txtSelPrefix,
        QStringLiteral("Seperate Client(s)'s ticket with the Prefix:"));
    prefix.setMaxLength(3);
    upperCaseKeys(prefix);
    prefix.onLostFocus = [this] { leavePrefix(); };
    for (Control* field : {&byPrefix, &prefixName, &byName, &prefix})
        m_screen.trackChanges(*field, Flag);
}

// ---- loading ----------------------------------------------------------------------------------

void IncludeExcludeTab::load()
{
    const restrictions::Store store(m_screen.session().connection());
    m_screen[options::lstExcluded].addItems(store.clients(restrictions::ClientList::Excluded));
    m_screen[options::lstReserved].addItems(store.clients(restrictions::ClientList::Reserved));
    const SessionPreferences stored = m_screen.session().settings();
    for (const auto& [name, key] : {std::pair {&options::chkSelClientP, &keys::SelClientP},
             std::pair {&options::chkSelClient, &keys::SelClient}}) {
        if (const std::optional<int> value = checkValueOf(stored.text(*key)))
            m_screen[*name].setValue(*value);
    }
    m_screen[options::txtSelPrefix].setText(stored.text(keys::SelPrefix));
    m_screen[options::txtSelCPName].setText(stored.text(keys::SelCPName));
}

// ---- the lists of machines --------------------------------------------------------------------

void IncludeExcludeTab::followName(const ClientFields& fields)
{
    const bool switchedOn = !fields.box || m_screen[*fields.box].isChecked();
    const bool named = !blank(m_screen[*fields.edit].text());
    for (const QString* button : {fields.add, fields.remove})
        m_screen[*button].setEnabled(switchedOn && named);
}

void IncludeExcludeTab::listChanged(const ClientFields& fields)
{
    if (!m_screen.tabLoaded(Flag))
        return;
    if (fields.list == restrictions::ClientList::Excluded)
        m_screen.session().general.ClientUp = flag(true);
    m_screen[options::cmdApply].setEnabled(true);
}

void IncludeExcludeTab::addClient(const ClientFields& fields)
{
    Control& field = m_screen[*fields.edit];
    const QString name = field.text();
    Platform& platform = m_screen.platform();
    if (blank(name)) {
        platform.messageBox(QStringLiteral("Blank Entry!"), MsgStyle::Stop);
        return;
    }
    restrictions::Store store(m_screen.session().connection());
    switch (store.addClient(fields.list, name, platform.now(), m_screen.session().general.CurrentStaff)) {
    case restrictions::Added::Added:
        m_screen[*fields.entries].addItem(name.toUpper());
        platform.messageBox(QStringLiteral("[") + name + QStringLiteral("] added!"), MsgStyle::Info);
        field.setText(QString());
        listChanged(fields);
        break;
    case restrictions::Added::AlreadyThere:
        platform.messageBox(QStringLiteral("Client [") + name + QStringLiteral("] already added!"), MsgStyle::Info);
        break;
    case restrictions::Added::Failed:
        break;
    }
}

void IncludeExcludeTab::removeClient(const ClientFields& fields)
{
    Control& field = m_screen[*fields.edit];
    const QString name = field.text();
    Platform& platform = m_screen.platform();
    if (restrictions::onlyBlanks(name)) {
        platform.messageBox(QStringLiteral("Blank Entry!"), MsgStyle::Stop);
        return;
    }
    // The rows go first, whether the list shows the name or not.
    restrictions::Store(m_screen.session().connection()).removeClient(fields.list, name);
    Control& entries = m_screen[*fields.entries];
    for (int i = 0; i < entries.listCount(); ++i) {
        if (entries.item(i).toUpper() != name.toUpper())
            continue;
        entries.removeItem(i);
        platform.messageBox(QStringLiteral("[") + name
                + (fields.list == restrictions::ClientList::Excluded ? QStringLiteral("] removed!")
                                                                     : QStringLiteral("] Removed!")),
            MsgStyle::Info);
        listChanged(fields);
        break;
    }
    field.setText(QString());
}

void IncludeExcludeTab::leavePrefix()
{
    Control& prefix = m_screen[options::txtSelPrefix];
    if (prefix.text().size() == 3)
        return;
    m_screen.platform().messageBox(QStringLiteral("This must be 3 charaters long!"), MsgStyle::Stop);
    prefix.setText(DefaultPrefix);
    m_screen.setFocus(prefix);
}

// ---- Apply ------------------------------------------------------------------------------------

void IncludeExcludeTab::apply(Recordset&)
{
    SessionPreferences stored = m_screen.session().settings();
    stored.save(keys::SelClientP, QString::number(m_screen[options::chkSelClientP].value()));
    stored.save(keys::SelClient, QString::number(m_screen[options::chkSelClient].value()));
    stored.save(keys::SelPrefix, m_screen[options::txtSelPrefix].text().toUpper());
    stored.save(keys::SelCPName, m_screen[options::txtSelCPName].text().toUpper());
}

} // namespace marlet
