#include "screens/RestrictionPanels.h"

#include "platform/Form.h"
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

// The page of the "Client Option" tab.
constexpr int Flag = 5;

constexpr const PreferenceKey& MessCloseKey = detail::catalogueKey("COption", "MessClose");
constexpr const PreferenceKey& SiteRestrictKey = detail::catalogueKey("COption", "SiteRestrict");
constexpr const PreferenceKey& ApplyIEKey = detail::catalogueKey("COption", "ApplyIE");
constexpr const PreferenceKey& RestrictKey = detail::catalogueKey("COption", "Restrict");
constexpr const PreferenceKey& DisallowKey = detail::catalogueKey("COption", "Disallow");

using restrictions::ProgramList;

} // namespace

RestrictionPanels::RestrictionPanels(Options& screen)
    : m_screen(screen)
{
}

restrictions::Store RestrictionPanels::store() const
{
    return restrictions::Store(m_screen.session().connection());
}

bool RestrictionPanels::loaded() const
{
    return m_screen.tabLoaded(Flag);
}

void RestrictionPanels::setClientUp()
{
    m_screen.session().general.ClientUp = flag(true);
}

void RestrictionPanels::clientsChanged()
{
    if (!loaded())
        return;
    setClientUp();
    m_screen[options::cmdApply].setEnabled(true);
}

// ---- building -------------------------------------------------------------------------------

void RestrictionPanels::build(Control& tabPanel, std::function<void(Control*)> open)
{
    m_open = std::move(open);
    Control& programs = m_screen.addToFrame(
        tabPanel, ControlKind::Frame, options::FProgramRestriction, QStringLiteral("Program Restriction"));
    programs.setVisible(false);
    static const ProgramFields allowed {ProgramList::Allowed,
        &options::chkRestrict,
        &options::lstAllowed,
        &options::txtAllowed,
        &options::cmdAddAllowed,
        &options::cmdRemoveAllowed};
    static const ProgramFields forbidden {ProgramList::Forbidden,
        &options::chkDisallow,
        &options::lstForbidden,
        &options::txtForbidden,
        &options::cmdAddForbidden,
        &options::cmdRemoveForbidden};
    buildPrograms(
        programs, allowed, "All other programs (*.exe) will be Restricted except those add to the list below:");
    buildPrograms(programs, forbidden, "Restrict Programs from running in Win2000/XP/2003/Vista/7");
    // Enter adds to the allowed list only.
    m_screen[options::txtAllowed].onKeyPress = [this](int& key) {
        if (key == Key::Enter)
            addProgram(allowed);
    };
    Control& examples = m_screen.addToFrame(
        programs, ControlKind::CommandButton, options::cmdExamples, QStringLiteral("Examples of file Restriction"));
    examples.setToolTip(QStringLiteral("Example of common Program files EXE"));
    examples.onClick = [this] { m_screen.platform().messageBox(restrictions::examplesText(), MsgStyle::Info); };
    m_screen.addToFrame(programs, ControlKind::CommandButton, options::cmdProgramBack, QStringLiteral("<< Back"))
        .onClick
        = [this] { m_open(nullptr); };

    Control& captions = m_screen.addToFrame(
        tabPanel, ControlKind::Frame, options::FSiteRestriction, QStringLiteral("Site/Caption Restriction"));
    captions.setVisible(false);
    buildCaptions(captions);

    Control& openPrograms = m_screen.addToFrame(
        tabPanel, ControlKind::CommandButton, options::cmdProgramRestriction, QStringLiteral("Program Restriction"));
    openPrograms.setToolTip(QStringLiteral("restrict programs from running on clients"));
    openPrograms.onClick = [this] { this->openPrograms(); };
    Control& openCaptions = m_screen.addToFrame(
        tabPanel, ControlKind::CommandButton, options::cmdSiteRestriction, QStringLiteral("Site/Caption Restriction"));
    openCaptions.setToolTip(QStringLiteral("Set Caption restriction for programs"));
    openCaptions.onClick = [this] { this->openCaptions(); };
}

void RestrictionPanels::buildPrograms(Control& panel, const ProgramFields& fields, const char* switchCaption)
{
    Control& box = m_screen.addToFrame(panel, ControlKind::CheckBox, *fields.box, QLatin1String(switchCaption));
    Control& entries = m_screen.addToFrame(panel, ControlKind::ListBox, *fields.entries);
    Control& edit = m_screen.addToFrame(panel, ControlKind::TextBox, *fields.edit);
    Control& add = m_screen.addToFrame(panel, ControlKind::CommandButton, *fields.add, QStringLiteral("Add Item"));
    Control& remove
        = m_screen.addToFrame(panel, ControlKind::CommandButton, *fields.remove, QStringLiteral("Remove Item"));
    // The fields start enabled under a cleared box: a switch stored off changes nothing at loading,
    // and its fields stay usable, though adding then writes nothing.
    box.onClick = [this, &fields] { switchPrograms(fields); };
    // A picked entry goes into the edit box, ready to be removed.
    entries.onClick = [&entries, &edit] {
        if (entries.listIndex() >= 0)
            edit.setText(entries.item(entries.listIndex()));
    };
    add.onClick = [this, &fields] { addProgram(fields); };
    remove.onClick = [this, &fields] { removeProgram(fields); };
}

void RestrictionPanels::buildCaptions(Control& panel)
{
    Control& siteBox = m_screen.addToFrame(panel,
        ControlKind::CheckBox,
        options::chkSiteRestrict,
        QStringLiteral("Close any Program(s) with the Caption below:"));
    Control& ieBox = m_screen.addToFrame(
        panel, ControlKind::CheckBox, options::chkApplyIE, QStringLiteral("Only Apply to Internet Explorer"));
    Control& messageBox = m_screen.addToFrame(
        panel, ControlKind::CheckBox, options::chkMessClose, QStringLiteral("Send Message to Server on Close"));
    // Two boxes that nothing reads or saves.
    Control& frame = m_screen.addToFrame(
        panel, ControlKind::Frame, options::FCaptionOption, QStringLiteral("Site/Caption Option"));
    m_screen.addToFrame(
        frame, ControlKind::CheckBox, options::chkCaseSensitive, QStringLiteral("Caption is Case Sensitive"));
    m_screen.addToFrame(
        frame, ControlKind::CheckBox, options::chkWholeWord, QStringLiteral("Search for Whole Word in Caption"));
    Control& entries = m_screen.addToFrame(panel, ControlKind::ListBox, options::lstCaptions);
    Control& edit = m_screen.addToFrame(panel, ControlKind::TextBox, options::txtCaption);
    m_screen.addToFrame(panel, ControlKind::CommandButton, options::cmdAddCaption, QStringLiteral("Add Caption"))
        .onClick
        = [this] { addCaption(); };
    m_screen.addToFrame(panel, ControlKind::CommandButton, options::cmdRemoveCaption, QStringLiteral("Remove Caption"))
        .onClick
        = [this] { removeCaption(); };
    m_screen.addToFrame(panel, ControlKind::CommandButton, options::cmdSiteBack, QStringLiteral("<< Back")).onClick
        = [this] { m_open(nullptr); };
    entries.onClick = [&entries, &edit] {
        if (entries.listIndex() >= 0)
            edit.setText(entries.item(entries.listIndex()));
    };
    siteBox.onClick = [this] {
        switchCaptions();
        clientsChanged();
    };
    ieBox.onClick = [this] { clientsChanged(); };
    m_screen.trackChanges(messageBox, Flag);
}

// ---- loading and saving -------------------------------------------------------------------------

void RestrictionPanels::load()
{
    const SessionPreferences stored = m_screen.session().settings();
    const std::pair<const QString*, const PreferenceKey*> boxes[] = {
        {&options::chkRestrict, &RestrictKey},
        {&options::chkDisallow, &DisallowKey},
        {&options::chkSiteRestrict, &SiteRestrictKey},
        {&options::chkApplyIE, &ApplyIEKey},
        {&options::chkMessClose, &MessCloseKey},
    };
    for (const auto& [name, key] : boxes) {
        if (const std::optional<int> value = checkValueOf(stored.text(*key)))
            m_screen[*name].setValue(*value);
    }
    // The caption switch may have kept its state; its fields follow it anyway.
    switchCaptions();
}

void RestrictionPanels::save()
{
    SessionPreferences stored = m_screen.session().settings();
    const std::pair<const PreferenceKey*, const QString*> boxes[] = {
        {&MessCloseKey, &options::chkMessClose},
        {&SiteRestrictKey, &options::chkSiteRestrict},
        {&ApplyIEKey, &options::chkApplyIE},
        {&RestrictKey, &options::chkRestrict},
        {&DisallowKey, &options::chkDisallow},
    };
    for (const auto& [key, name] : boxes)
        stored.save(*key, QString::number(m_screen[*name].value()));
}

// ---- the panels -------------------------------------------------------------------------------

void RestrictionPanels::openPrograms()
{
    const restrictions::Store lists = store();
    for (const auto& [name, list] : {std::pair {&options::lstAllowed, ProgramList::Allowed},
             std::pair {&options::lstForbidden, ProgramList::Forbidden}}) {
        Control& entries = m_screen[*name];
        entries.clear();
        entries.addItems(lists.programs(list));
    }
    m_open(&m_screen[options::FProgramRestriction]);
}

void RestrictionPanels::openCaptions()
{
    Control& entries = m_screen[options::lstCaptions];
    entries.clear();
    // The excluded clients of the Include/Exclude tab are emptied too, on screen only.
    if (Control* excluded = m_screen.control(options::lstExcluded))
        excluded->clear();
    if (Control* name = m_screen.control(options::txtExcludedName))
        name->setText(QString());
    entries.addItems(store().captions());
    m_open(&m_screen[options::FSiteRestriction]);
}

// ---- programs ---------------------------------------------------------------------------------

void RestrictionPanels::switchPrograms(const ProgramFields& fields)
{
    const bool on = m_screen[*fields.box].isChecked();
    for (const QString* name : {fields.edit, fields.add, fields.remove})
        m_screen[*name].setEnabled(on);
    Control& apply = m_screen[options::cmdApply];
    apply.setEnabled(true);
    // A switch turned by the tab's own loading tells the clients too, but marks no change to apply.
    setClientUp();
    if (!loaded())
        apply.setEnabled(false);
}

void RestrictionPanels::addProgram(const ProgramFields& fields)
{
    Control& edit = m_screen[*fields.edit];
    Control& entries = m_screen[*fields.entries];
    const QString text = edit.text();
    Platform& platform = m_screen.platform();
    if (const std::optional<restrictions::Refusal> refusal = restrictions::programRefusal(text, entries.listCount())) {
        platform.messageBox(refusal->text, refusal->style);
        return;
    }
    if (!m_screen[*fields.box].isChecked())
        return;
    switch (store().addProgram(fields.list, text)) {
    case restrictions::Added::Added:
        entries.addItem(text.toLower());
        edit.setText(QString());
        setClientUp();
        break;
    case restrictions::Added::AlreadyThere:
        platform.messageBox(QStringLiteral("Entry already exist!"), MsgStyle::Warning);
        break;
    case restrictions::Added::Failed:
        break;
    }
}

void RestrictionPanels::removeProgram(const ProgramFields& fields)
{
    Control& edit = m_screen[*fields.edit];
    Control& entries = m_screen[*fields.entries];
    const QString text = edit.text();
    if (values::trimBlanks(text).isEmpty()) {
        m_screen.platform().messageBox(QStringLiteral("Entry is Blank!"), MsgStyle::Warning);
        return;
    }
    const bool allowed = fields.list == ProgramList::Allowed;
    if (m_screen[*fields.box].isChecked()) {
        if (store().removeProgram(fields.list, text)) {
            if (entries.listCount() > 0) {
                if (entries.listIndex() < 0)
                    entries.setListIndex(0);
                const int at = entries.item(entries.listIndex()) == text ? entries.listIndex() : entries.findItem(text);
                if (at >= 0)
                    entries.removeItem(at);
            }
            edit.setText(QString());
            setClientUp();
        } else {
            m_screen.platform().messageBox(text + QStringLiteral(" not avaliable!"), MsgStyle::Warning);
        }
    }
    // The allowed list tells the clients whatever came of it.
    if (allowed)
        setClientUp();
}

// ---- captions ---------------------------------------------------------------------------------

void RestrictionPanels::switchCaptions()
{
    const bool on = m_screen[options::chkSiteRestrict].isChecked();
    for (const QString* name :
        {&options::chkApplyIE, &options::txtCaption, &options::cmdAddCaption, &options::cmdRemoveCaption})
        m_screen[*name].setEnabled(on);
    if (on)
        m_screen.setFocus(m_screen[options::txtCaption]);
}

void RestrictionPanels::addCaption()
{
    Control& edit = m_screen[options::txtCaption];
    Control& entries = m_screen[options::lstCaptions];
    const QString text = edit.text();
    Platform& platform = m_screen.platform();
    if (const std::optional<restrictions::Refusal> refusal = restrictions::captionRefusal(text, entries.listCount())) {
        if (!refusal->text.isEmpty())
            platform.messageBox(refusal->text, refusal->style);
        return;
    }
    switch (store().addCaption(text)) {
    case restrictions::Added::Added:
        entries.addItem(text.toUpper());
        platform.messageBox(QStringLiteral("[") + text + QStringLiteral("] added!"), MsgStyle::Info);
        edit.setText(QString());
        setClientUp();
        m_screen[options::cmdApply].setEnabled(true);
        break;
    case restrictions::Added::AlreadyThere:
        platform.messageBox(QStringLiteral("[") + text.toUpper() + QStringLiteral("] already added!"), MsgStyle::Info);
        break;
    case restrictions::Added::Failed:
        break;
    }
}

void RestrictionPanels::removeCaption()
{
    Control& edit = m_screen[options::txtCaption];
    Control& entries = m_screen[options::lstCaptions];
    const QString text = edit.text();
    if (restrictions::onlyBlanks(text)) {
        m_screen.platform().messageBox(QStringLiteral("Blank Entry!"), MsgStyle::Stop);
        return;
    }
    const QString sought = text.toUpper();
    for (int i = 0; i < entries.listCount(); ++i) {
        if (entries.item(i).toUpper() != sought)
            continue;
        // A caption that the statement cannot take stays, in the table and in the list.
        if (store().removeCaption(text)) {
            entries.removeItem(i);
            m_screen.platform().messageBox(QStringLiteral("Caption Deleted!"), MsgStyle::Info);
            setClientUp();
            m_screen[options::cmdApply].setEnabled(true);
        }
        break;
    }
    edit.setText(QString());
}

} // namespace marlet
