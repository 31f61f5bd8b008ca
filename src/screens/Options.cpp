#include "screens/Options.h"

#include "platform/Control.h"
#include "platform/Platform.h"
#include "screens/OptionsNames.h"
#include "screens/OptionsTabs.h"
#include "screens/ScreenOpener.h"
#include "session/Session.h"
#include "store/Connection.h"
#include "store/Recordset.h"

namespace marlet {

namespace {

struct TabInfo
{
    int flag;
    QString caption;
    QString tip;
};

// The tabs in their order. Their flags were settled before the order was, hence the jumps.
const TabInfo Tabs[] = {
    {0, QStringLiteral("General"), QStringLiteral("General Settings ...")},
    {1, QStringLiteral("User Account"), QStringLiteral("Create, Delete Modify User Accounts and priviledges ..")},
    {5, QStringLiteral("Client Option"), QStringLiteral("Client Setup, Program Restriction ....")},
    {2, QStringLiteral("Ticket Setting"), QStringLiteral("Ticket Settings ...")},
    {4, QStringLiteral("Automated Action"), QStringLiteral("Shutdown time, Ping Status ...")},
    {3, QStringLiteral("Maintenance"), QStringLiteral("Cleanup, Backup, Restore ...")},
    {6, QStringLiteral("Print Monitor"), QStringLiteral("Print Billing settings")},
    {7, QStringLiteral("Quick-Ticket"), QStringLiteral("Create Frequently generated ticket(s) Groups ..")},
    {8,
        QStringLiteral("Include/Exclude"),
        QStringLiteral("Include/Exclude some clients from the effect of some restrictions")},
    {9, QStringLiteral("POS"), QStringLiteral("Point on Sale (POS) Settings")},
};
// The User Account tab, which the host may have left out.
constexpr int AccountPosition = 2;
// Pages up to this flag write columns of the Options row, which goes out in one Update after them.
constexpr int LastRowFlag = 6;

// Where every page's panel stands, in twips, below the tab strip.
constexpr int PanelLeft = 120;
constexpr int PanelTop = 480;
constexpr int PanelWidth = 9360;
constexpr int PanelHeight = 5640;

} // namespace

Options::Options(Session& session)
    : Form(session.platform(), options::FormName)
    , m_session(session)
{
}

Options::Options(Session& session, ScreenOpener& screens)
    : Options(session)
{
    m_screens = &screens;
}

Options::~Options() = default;

void Options::askPassword()
{
    if (!m_screens) {
        m_session.general.PassMode = 0;
        return;
    }
    m_screens->showContPass();
}

bool Options::tabLoaded(int flag) const
{
    return flag >= 0 && flag < FlagCount && m_tabLoaded[size_t(flag)];
}

void Options::trackChanges(Control& field, int flag)
{
    const auto chain = [this, flag](std::function<void()>& handler) {
        const TrackedField& tracked = m_tracked.emplace_back(TrackedField {std::move(handler), flag});
        handler = [this, &tracked] {
            if (tracked.rule)
                tracked.rule();
            if (tabLoaded(tracked.flag))
                setApplyEnabled(true);
        };
    };
    switch (field.kind()) {
    case ControlKind::TextBox:
    case ControlKind::Slider:
    case ControlKind::DateTimePicker:
        chain(field.onChange);
        break;
    case ControlKind::ComboBox:
        chain(field.onClick);
        if (field.editable())
            chain(field.onChange);
        break;
    default:
        chain(field.onClick);
        break;
    }
}

void Options::fieldChanged(int flag)
{
    if (tabLoaded(flag))
        setApplyEnabled(true);
}

bool Options::selectTab(int flag)
{
    for (size_t position = 0; position < m_tabFlags.size(); ++position) {
        if (m_tabFlags[position] == flag) {
            (*this)[options::TabStrip1].setSelectedTab(int(position) + 1);
            return true;
        }
    }
    return false;
}

// ---- building -------------------------------------------------------------------------------

void Options::build()
{
    setCaption(QStringLiteral("Options"));
    setSize(9600, 7200);
    m_tabLoaded = {};
    m_tracked.clear();
    buildTabs();
    buildButtons();
    buildSettingsField();
    onLoad = [this] { open(); };
    onUnload = [this](bool&) { askAboutClients(); };
}

void Options::buildTabs()
{
    Control& tabs = add(ControlKind::TabStrip, options::TabStrip1);
    m_tabFlags.clear();
    for (const TabInfo& tab : Tabs) {
        tabs.addItem(tab.caption);
        tabs.setItemTip(tabs.listCount() - 1, tab.tip);
        m_tabFlags.push_back(tab.flag);
    }
    tabs.onClick = [this] { switchTab(); };
    // Every page builds its controls now, so that a rule of one page can reach a field of another.
    for (int flag = 0; flag <= SmsFlag; ++flag) {
        Control& panel = add(ControlKind::Frame, options::Panels[size_t(flag)]);
        panel.setVisible(false);
        m_panels[size_t(flag)] = &panel;
        m_pages[size_t(flag)] = createOptionsTab(flag, *this);
        m_pages[size_t(flag)]->build(panel);
    }
}

void Options::buildButtons()
{
    addLabelled(ControlKind::CommandButton, options::cmdHelp, QStringLiteral("? Help")).onClick = [this] {
        platform().messageBox(QStringLiteral("This section of Norvantis is for changing its settings. Check "
                                             "docs/README.md of your Marlet installation for more help?"),
            MsgStyle::Info);
    };
    addLabelled(ControlKind::CommandButton, options::cmdOk, QStringLiteral("&Ok")).onClick = [this] { ok(); };
    addLabelled(ControlKind::CommandButton, options::cmdCancel, QStringLiteral("Can&cel")).onClick
        = [this] { unload(); };
    addLabelled(ControlKind::CommandButton, options::cmdApply, QStringLiteral("&Apply")).onClick
        = [this] { applySettings(); };
}

void Options::buildSettingsField()
{
    Control& field = add(ControlKind::TextBox, options::txtSettings);
    field.setText(QStringLiteral("Settings"));
    field.setLocked(true);
    field.onGotFocus = [&field] { field.setBackColor(Colour::Red); };
    field.onLostFocus = [&field] { field.setBackColor(Colour::White); };

    Control& menu = add(ControlKind::Menu, options::m_Settings);
    menu.setVisible(false);
    for (const auto& [item, caption] : {std::pair {options::m_SaveToFile, "Save to File"},
             std::pair {options::m_LoadFromFile, "Load from file"},
             std::pair {options::m_SettingsCancel, "Cancel"}})
        addLabelled(ControlKind::Menu, item, QLatin1String(caption)).setParentMenu(&menu);
    (*this)[options::m_SaveToFile].onClick = [this] { saveToFile(); };
    (*this)[options::m_LoadFromFile].onClick = [this] { loadFromFile(); };
    field.onClick = [this, &menu] { popupMenu(menu); };
    field.onKeyDown = [this, &menu](int&, int) { popupMenu(menu); };
}

// ---- opening, tabs, closing -------------------------------------------------------------------

void Options::open()
{
    for (int flag = 1; flag < FlagCount; ++flag)
        m_tabLoaded[size_t(flag)] = false;
    if (isSet(m_session.general.HideAccount)) {
        (*this)[options::TabStrip1].removeItem(AccountPosition - 1);
        m_tabFlags.erase(m_tabFlags.begin() + (AccountPosition - 1));
    }
    // Selecting the tab switches to it; the switch runs once more of its own, as the screen always did.
    (*this)[options::TabStrip1].setSelectedTab(1);
    switchTab();
    setApplyEnabled(false);
    Connection& connection = m_session.connection();
    if (connection.State() == 0)
        connection.Open(connection.connectionString());
}

void Options::reloadPages()
{
    m_tabLoaded = {};
    for (Control* control : controls()) {
        if (control->kind() == ControlKind::ListBox || control->kind() == ControlKind::ComboBox)
            control->clear();
    }
    (*this)[options::TabStrip1].setSelectedTab(1);
    switchTab();
    setApplyEnabled(false);
}

void Options::switchTab()
{
    for (Control* panel : m_panels)
        panel->setVisible(false);
    const int position = (*this)[options::TabStrip1].selectedTab();
    if (position < 1 || position > int(m_tabFlags.size()))
        return;
    const int flag = m_tabFlags[size_t(position - 1)];
    Control& panel = *m_panels[size_t(flag)];
    panel.setGeometry(PanelLeft, PanelTop, PanelWidth, PanelHeight);
    m_pages[size_t(flag)]->selected();
    if (!m_tabLoaded[size_t(flag)]) {
        m_pages[size_t(flag)]->load();
        m_tabLoaded[size_t(flag)] = true;
    }
    panel.setVisible(true);
}

void Options::ok()
{
    if ((*this)[options::cmdApply].enabled())
        applySettings();
    // A failed check leaves Apply enabled, and the screen open.
    if (!(*this)[options::cmdApply].enabled())
        unload();
}

void Options::askAboutClients()
{
    if (!isSet(m_session.general.ClientUp))
        return;
    if (platform().messageBox(QStringLiteral("Update Client(s)' settings now?"), MsgStyle::YesNoQuestion)
        == MsgResult::No) {
        m_session.general.ClientUp = 0;
        return;
    }
    platform().messageBox(
        QStringLiteral("Some settings will require restarting your systems to take effect!"), MsgStyle::Info);
}

void Options::setApplyEnabled(bool enabled)
{
    (*this)[options::cmdApply].setEnabled(enabled);
}

// ---- Apply ------------------------------------------------------------------------------------

void Options::applySettings()
{
    if (!checkPages())
        return;
    savePages();
    setApplyEnabled(false);
}

bool Options::checkPages()
{
    for (int flag = 0; flag <= SmsFlag; ++flag) {
        if (m_tabLoaded[size_t(flag)] && !m_pages[size_t(flag)]->check())
            return false;
    }
    return true;
}

void Options::savePages()
{
    // A missing row or a refused write loses that write only; the saving goes on.
    Recordset options;
    options.Open(Statement(QStringLiteral("Select * from Options")),
        m_session.connection(),
        CursorType::Static,
        LockType::Optimistic);
    for (int flag = 0; flag <= SmsFlag; ++flag) {
        if (flag == LastRowFlag + 1 && options.State() == 1) {
            options.Update();
            options.Close();
        }
        if (m_tabLoaded[size_t(flag)])
            m_pages[size_t(flag)]->apply(options);
    }
}

} // namespace marlet
