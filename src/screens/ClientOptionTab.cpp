#include "screens/ClientOptionTab.h"

#include "platform/Platform.h"
#include "screens/Options.h"
#include "screens/OptionsNames.h"
#include "session/Session.h"
#include "settings/CheckValue.h"
#include "settings/ClientOptions.h"
#include "store/PreferenceKeys.h"
#include "values/HostFlags.h"

namespace marlet {

namespace {

constexpr int Flag = 5;

constexpr const PreferenceKey& INoKey = detail::catalogueKey("COption", "INo");

} // namespace

ClientOptionTab::ClientOptionTab(Options& screen)
    : m_screen(screen)
    , m_restrictions(screen)
{
}

SessionPreferences ClientOptionTab::settings() const
{
    return m_screen.session().settings();
}

// ---- building -------------------------------------------------------------------------------

void ClientOptionTab::build(Control& panel)
{
    buildList(panel);
    buildExplanation(panel);
    buildColour(panel);
    buildButtons(panel);
    m_ownControls = m_screen.controlsIn(&panel);
    m_restrictions.build(panel, [this](Control* shown) { showPanel(shown); });
    // The buttons that open the restriction panels belong to the tab's own controls.
    for (const QString* name : {&options::cmdProgramRestriction, &options::cmdSiteRestriction})
        m_ownControls.push_back(&m_screen[*name]);
}

void ClientOptionTab::buildList(Control& panel)
{
    Control& frame
        = m_screen.addToFrame(panel, ControlKind::Frame, options::FClientSettings, QStringLiteral("Client Settings"));
    Control& list = m_screen.addToFrame(frame, ControlKind::ListBox, options::lstClientSettings);
    list.setMultiSelect(true);
    list.onClick = [this] { pickSwitch(); };
    list.onGotFocus = [&frame] { frame.setForeColor(Colour::Red); };
    list.onLostFocus = [&frame] { frame.setForeColor(Colour::Black); };
}

void ClientOptionTab::buildExplanation(Control& panel)
{
    Control& frame = m_screen.addToFrame(
        panel, ControlKind::Frame, options::FExplanation, QStringLiteral("Explanation for Selected Client Setting"));
    m_screen.addToFrame(frame, ControlKind::Label, options::lblExplanation);
    Control& browsers = m_screen.addToFrame(frame, ControlKind::ComboBox, options::cboBrowsers);
    browsers.setEditable(true);
    browsers.setVisible(false);
    m_screen.trackChanges(browsers, Flag);
}

void ClientOptionTab::buildColour(Control& panel)
{
    m_screen.addToFrame(panel, ControlKind::CommandButton, options::cmdColour, QStringLiteral("Client Colour ..."))
        .onClick
        = [this] { chooseColour(); };
    m_screen.addToFrame(panel, ControlKind::Label, options::picColour);
    m_screen.trackChanges(
        m_screen.addToFrame(
            panel, ControlKind::CheckBox, options::chkServerColor, QStringLiteral("Also Apply Color  to Server ")),
        Flag);
}

void ClientOptionTab::buildButtons(Control& panel)
{
    m_screen
        .addToFrame(
            panel, ControlKind::CommandButton, options::cmdRestoreDefault, QStringLiteral("Restore to Default Setting"))
        .onClick
        = [this] { restoreDefaults(); };
}

// ---- loading ----------------------------------------------------------------------------------

void ClientOptionTab::load()
{
    // Loaded again after a settings file was read: the tab comes back with its list, not a panel.
    if (m_screen[options::FProgramRestriction].visible() || m_screen[options::FSiteRestriction].visible()) {
        showPanel(nullptr);
        m_screen[options::cboBrowsers].setVisible(false);
    }
    const SessionPreferences stored = settings();
    m_colour = clientoptions::colourOf(stored.text(keys::Colour));
    m_screen[options::picColour].setBackColor(m_colour);
    if (const std::optional<int> value = checkValueOf(stored.text(keys::ServerColor)))
        m_screen[options::chkServerColor].setValue(*value);

    Control& list = m_screen[options::lstClientSettings];
    m_ticks.clear();
    for (const ClientOption& option : clientoptions::catalogue()) {
        list.addItem(option.captionText());
        const bool ticked = clientoptions::ticked(option, stored.text(*option.key));
        list.setSelected(list.listCount() - 1, ticked);
        m_ticks.push_back(ticked);
    }
    m_screen[options::lblExplanation].setCaption(QString());

    Control& browsers = m_screen[options::cboBrowsers];
    for (int number = 1; number <= 10; ++number)
        browsers.addItem(QString::number(number));
    browsers.setText(clientoptions::browserNumberText(stored.text(INoKey)));

    m_restrictions.load();
}

// ---- rules of the fields ----------------------------------------------------------------------

void ClientOptionTab::pickSwitch()
{
    Control& list = m_screen[options::lstClientSettings];
    const int position = list.listIndex();
    Control& browsers = m_screen[options::cboBrowsers];
    browsers.setVisible(false);
    if (position >= 0 && position < clientoptions::Count) {
        m_screen[options::lblExplanation].setCaption(clientoptions::catalogue()[size_t(position)].explanationText());
        if (position == clientoptions::LimitBrowserPosition)
            browsers.setVisible(true);
    }
    followTicks();
}

void ClientOptionTab::followTicks()
{
    // Each switch whose tick changed counts as a change, for Apply and for the clients.
    const Control& list = m_screen[options::lstClientSettings];
    bool changed = false;
    for (size_t position = 0; position < m_ticks.size(); ++position) {
        const bool ticked = list.selected(int(position));
        if (ticked != m_ticks[position]) {
            m_ticks[position] = ticked;
            changed = true;
        }
    }
    if (changed && m_screen.tabLoaded(Flag)) {
        m_screen[options::cmdApply].setEnabled(true);
        m_screen.session().general.ClientUp = flag(true);
    }
}

void ClientOptionTab::chooseColour()
{
    const std::optional<int> chosen = m_screen.platform().colorDialog(m_colour);
    if (!chosen || *chosen == m_colour)
        return;
    m_colour = *chosen;
    m_screen[options::picColour].setBackColor(m_colour);
    m_screen[options::cmdApply].setEnabled(true);
}

void ClientOptionTab::restoreDefaults()
{
    if (m_screen.platform().messageBox(
            QStringLiteral("Restore Default Settings for Clients?"), MsgStyle::YesNoQuestionNoDefault)
        != MsgResult::Yes)
        return;
    Control& list = m_screen[options::lstClientSettings];
    const auto options = clientoptions::catalogue();
    for (size_t position = 0; position < options.size(); ++position)
        list.setSelected(int(position), options[position].restore);
    followTicks();
    if (m_screen.tabLoaded(Flag))
        m_screen[options::cmdApply].setEnabled(true);
}

void ClientOptionTab::showPanel(Control* panel)
{
    for (Control* control : m_ownControls)
        control->setVisible(panel == nullptr);
    for (const QString* name : {&options::FProgramRestriction, &options::FSiteRestriction}) {
        Control& restriction = m_screen[*name];
        restriction.setVisible(&restriction == panel);
    }
}

// ---- Apply ------------------------------------------------------------------------------------

void ClientOptionTab::apply(Recordset&)
{
    SessionPreferences stored = settings();
    stored.save(keys::Colour, QString::number(m_colour));
    stored.save(keys::ServerColor, QString::number(m_screen[options::chkServerColor].value()));
    const Control& list = m_screen[options::lstClientSettings];
    const auto options = clientoptions::catalogue();
    for (size_t position = 0; position < options.size(); ++position) {
        const bool ticked = list.selected(int(position));
        stored.save(*options[position].key, clientoptions::storedText(options[position], ticked));
        if (position == clientoptions::NoAutoSearchPosition)
            stored.save(keys::CloseListen, clientoptions::closeListenText(ticked));
    }
    stored.save(detail::catalogueKey("COption", "NoDrives"), clientoptions::noDrivesText(stored));
    stored.save(keys::Level, QStringLiteral("0"));
    m_restrictions.save();
    stored.save(INoKey, clientoptions::browserNumberText(m_screen[options::cboBrowsers].text()));
}

} // namespace marlet
