#include "screens/GeneralTab.h"

#include "platform/KeyRules.h"
#include "platform/Platform.h"
#include "screens/Options.h"
#include "screens/OptionsFields.h"
#include "screens/OptionsNames.h"
#include "session/Session.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"
#include "values/Numbers.h"
#include "values/Texts.h"

namespace marlet {

namespace {

constexpr int Flag = 0;

const QString Automatic = QStringLiteral("AUTOMATIC");
const QString CustomSetting = QStringLiteral("CUSTOM SETTING");
const QString ComputerName = QStringLiteral("COMPUTER NAME");
const QString IpAddress = QStringLiteral("IP ADDRESS");
const QString DefaultPort = QStringLiteral("1001");
const QString DefaultLoginLimit = QStringLiteral("999");

// The check boxes and their keys. Loading and saving each go through them in their own order.
struct CheckField
{
    QString name;
    const PreferenceKey* key;
};
const CheckField SetTimeBox {options::chkSetTime, &keys::SetTime};
const CheckField ShutDownClientsBox {options::chkShutDownClients, &keys::ShutDownClients};
const CheckField CheckConnectionBox {options::chkCheckConnection, &keys::CheckConnection};
const CheckField SameIpBox {options::chkSameIP, &keys::SameIP};
const CheckField FrontDeskBox {options::chkFrontDesk, &keys::FrontDesk};
const CheckField SiteDateBox {options::chkSiteDate, &keys::SiteDate};
const CheckField LogLimitBox {options::chkLogLimit, &keys::LogLimit};

using optionsfields::showCheckValue;

bool blank(const QString& text)
{
    return values::trimBlanks(text).isEmpty();
}

} // namespace

GeneralTab::GeneralTab(Options& screen)
    : m_screen(screen)
{
}

SessionPreferences GeneralTab::settings() const
{
    return m_screen.session().settings();
}

QString GeneralTab::storedPrefix(const QString& prefix)
{
    return prefix.size() > 3 ? QStringLiteral("NVT") : prefix.toUpper();
}

bool GeneralTab::portAllowed(const QString& port)
{
    // Every test but the top bound takes the port as a 16-bit integer; one that does not fit fails
    // the conversion, and that failure ends in the refusal.
    const std::optional<qint16> number = values::toInt16(port);
    if (!number || *number < 1001 || (*number >= 1002 && *number <= 1005) || *number == 2000)
        return false;
    return values::leadingNumber(port) <= 63553;
}

// ---- building -------------------------------------------------------------------------------

void GeneralTab::build(Control& panel)
{
    buildTicketFields(panel);
    buildClientSwitches(panel);
    buildBindFields(panel);
    buildPassGenFields(panel);
    buildPortFields(panel);
    buildLoginLimit(panel);
}

void GeneralTab::buildTicketFields(Control& panel)
{
    Control& prefix
        = m_screen.addToFrame(panel, ControlKind::TextBox, options::txtPrefix, QStringLiteral("Ticket Prefi&x Code:"));
    prefix.onKeyPress = [](int& key) {
        if (key >= 'a' && key <= 'z')
            key = key - 'a' + 'A';
    };
    // Unlike the other fields, nothing releases a refused key's lock while the screen is open.
    prefix.onKeyDown = [&prefix](int& keyCode, int) {
        if (!keyrules::isNumericKey(keyCode) && !keyrules::isLetterKey(keyCode))
            prefix.setLocked(true);
    };
    prefix.onLostFocus = [&prefix] { prefix.setText(prefix.text().toUpper()); };

    Control& currency
        = m_screen.addToFrame(panel, ControlKind::TextBox, options::txtCurrency, QStringLiteral("Tickets' Currency:"));
    keyrules::lockUntilReleased(currency, [](int keyCode) { return !keyrules::isDigitKey(keyCode); });
    currency.onLostFocus = [this] { leaveCurrency(); };

    for (Control* text : {&prefix, &currency}) {
        keyrules::selectAllOnFocus(*text);
        m_screen.trackChanges(*text, Flag);
    }
}

void GeneralTab::buildClientSwitches(Control& panel)
{
    const std::pair<const CheckField*, const char*> boxes[] = {
        {&SetTimeBox, "Set Client System time on Connection"},
        {&ShutDownClientsBox, "Shut&down Client Timer(s) on Exiting Server"},
        {&CheckConnectionBox, "Verif&y Client(s)' response at intervals"},
        {&SameIpBox, "Allow Same Client I&P"},
    };
    for (const auto& [box, caption] : boxes)
        m_screen.trackChanges(
            m_screen.addToFrame(panel, ControlKind::CheckBox, box->name, QLatin1String(caption)), Flag);
}

void GeneralTab::buildBindFields(Control& panel)
{
    Control& list = m_screen.addToFrame(panel,
        ControlKind::ComboBox,
        options::cboBindType,
        QStringLiteral("Select a suitable Server Connection Adaptor:"));
    list.onClick = [this] { showBindChoice(); };
    m_screen.trackChanges(list, Flag);

    Control& text = m_screen.addToFrame(panel, ControlKind::TextBox, options::txtBindType);
    text.setMaxLength(20);
    text.onKeyPress = [](int& key) { key = QChar(char16_t(key)).toUpper().unicode(); };
    // Only a custom bind is typed in; for the others every key is refused.
    keyrules::lockUntilReleased(text, [&list](int) { return list.text() == CustomSetting; });
    keyrules::selectAllOnFocus(text);
    text.onLostFocus = [this] { leaveBindText(); };
    m_screen.trackChanges(text, Flag);
}

void GeneralTab::buildPassGenFields(Control& panel)
{
    Control& frame = m_screen.addToFrame(
        panel, ControlKind::Frame, options::FPassGenType, QStringLiteral("Generated Ticket Characters"));
    for (const auto& [name, caption] : {std::pair {options::optNumberOnly, "&Number Only"},
             std::pair {options::optAlphabetOnly, "A&lphabet Only"},
             std::pair {options::optBoth, "&Both"}}) {
        Control& option = m_screen.addToFrame(frame, ControlKind::OptionButton, name, QLatin1String(caption));
        option.onClick = [this] { markPassGenType(); };
        m_screen.trackChanges(option, Flag);
    }
}

void GeneralTab::buildPortFields(Control& panel)
{
    Control& frame
        = m_screen.addToFrame(panel, ControlKind::Frame, options::FServerPort, QStringLiteral("Server Port"));
    Control& defaultPort = m_screen.addToFrame(
        frame, ControlKind::OptionButton, options::optDefaultPort, QStringLiteral("Default Port (1001)"));
    Control& otherPort = m_screen.addToFrame(
        frame, ControlKind::OptionButton, options::optOtherPort, QStringLiteral("Other Port (eg. 1006 - 63553):"));
    Control& port = m_screen.addToFrame(frame, ControlKind::TextBox, options::txtServerPort);
    m_screen.addToFrame(
        frame, ControlKind::Label, options::lblPortNote, QStringLiteral("(Note: Port 2000 is invalid)"));
    defaultPort.onClick = [&port] {
        port.setEnabled(false);
        port.setText(DefaultPort);
    };
    otherPort.onClick = [&port] { port.setEnabled(true); };
    keyrules::lockUntilReleased(port, keyrules::isNumericKey);
    keyrules::selectAllOnFocus(port);
    port.onLostFocus = [this] { leaveServerPort(); };
    for (Control* control : {&defaultPort, &otherPort, &port})
        m_screen.trackChanges(*control, Flag);
}

void GeneralTab::buildLoginLimit(Control& panel)
{
    Control& loadStart = m_screen.addToFrame(panel,
        ControlKind::CheckBox,
        options::chkLoadStart,
        QStringLiteral("Load Norvantis Server at  Windows &Startup"));
    Control& frontDesk = m_screen.addToFrame(
        panel, ControlKind::CheckBox, FrontDeskBox.name, QStringLiteral("Disable &FrontDesk from Connection"));
    frontDesk.setToolTip(QStringLiteral("Deny any Norvantis FrontDesk from Connecting"));
    Control& siteDate = m_screen.addToFrame(
        panel, ControlKind::CheckBox, SiteDateBox.name, QStringLiteral("Set Server Time/Date with Remote Site"));
    Control& limitBox = m_screen.addToFrame(panel,
        ControlKind::CheckBox,
        LogLimitBox.name,
        QStringLiteral("Total Number of times all Generated tickets can Login :"));
    Control& limit = m_screen.addToFrame(panel, ControlKind::TextBox, options::txtLogLimit);
    limitBox.onClick = [&limitBox, &limit] { limit.setEnabled(limitBox.isChecked()); };
    // The box starts cleared, and the limit as a cleared box leaves it.
    limitBox.fireClick();
    keyrules::lockUntilReleased(limit, keyrules::isNumericKey);
    keyrules::selectAllOnFocus(limit);
    limit.onLostFocus = [this] { leaveLoginLimit(); };
    for (Control* control : {&loadStart, &frontDesk, &siteDate, &limitBox, &limit})
        m_screen.trackChanges(*control, Flag);
}

// ---- loading ----------------------------------------------------------------------------------

void GeneralTab::load()
{
    const SessionPreferences stored = settings();
    Control& list = m_screen[options::cboBindType];
    list.addItems({Automatic, CustomSetting, ComputerName, IpAddress});
    m_screen[options::txtPrefix].setText(stored.text(keys::STR).left(3));
    m_screen[options::txtCurrency].setText(stored.text(keys::Currency).left(3));
    for (const CheckField* box : {&SetTimeBox, &ShutDownClientsBox, &CheckConnectionBox, &SameIpBox})
        showCheckValue(m_screen[box->name], stored.text(*box->key));
    loadBind();
    loadPassGenType();
    loadPort();
    m_screen[options::chkLoadStart].setValue(
        stored.truth(keys::LoadStart) ? CheckState::Checked : CheckState::Unchecked);
    for (const CheckField* box : {&FrontDeskBox, &SiteDateBox, &LogLimitBox})
        showCheckValue(m_screen[box->name], stored.text(*box->key));
    m_screen[options::txtLogLimit].setText(stored.text(keys::VLogLimit));
}

void GeneralTab::loadBind()
{
    const Session& session = m_screen.session();
    Control& list = m_screen[options::cboBindType];
    const int row = list.findItem(settings().text(keys::BindType));
    list.setListIndex(row < 0 ? 0 : row);
    // A picked address shows as the host gave it; a loaded one in capitals.
    if (list.text() == IpAddress)
        m_screen[options::txtBindType].setText(session.general.ServerPorts.toUpper());
}

void GeneralTab::loadPassGenType()
{
    const double type = settings().number(keys::PassGenType);
    m_screen[type == 1 ? options::optNumberOnly : type == 2 ? options::optAlphabetOnly : options::optBoth].setValue(1);
}

void GeneralTab::loadPort()
{
    const SessionPreferences stored = settings();
    m_screen[stored.number(keys::ServerUse) == 1 ? options::optOtherPort : options::optDefaultPort].setValue(1);
    m_screen[options::txtServerPort].setText(stored.text(keys::ServerPort));
}

// ---- rules of the fields ----------------------------------------------------------------------

void GeneralTab::showBindChoice()
{
    const Session& session = m_screen.session();
    const QString choice = m_screen[options::cboBindType].text();
    Control& text = m_screen[options::txtBindType];
    if (choice == CustomSetting) {
        text.setText(settings().text(keys::CUSTOMBIND, session.general.ServerPorts));
        text.setBackColor(Colour::White);
        m_screen.setFocus(text);
        return;
    }
    text.setBackColor(Colour::ButtonFace);
    if (choice == ComputerName)
        text.setText(session.general.ServerPortName.toUpper());
    else if (choice == IpAddress)
        text.setText(session.general.ServerPorts);
    else
        text.setText(QStringLiteral("Automatic Bind Type"));
}

void GeneralTab::markPassGenType()
{
    for (const QString& name : {options::optNumberOnly, options::optAlphabetOnly, options::optBoth}) {
        Control& option = m_screen[name];
        option.setForeColor(option.value() != 0 ? Colour::Red : Colour::Black);
    }
}

void GeneralTab::leaveCurrency()
{
    Control& currency = m_screen[options::txtCurrency];
    currency.setText(blank(currency.text()) ? QStringLiteral("N") : currency.text().toUpper());
}

void GeneralTab::leaveBindText()
{
    Control& text = m_screen[options::txtBindType];
    if (!blank(text.text()))
        return;
    m_screen.platform().messageBox(QStringLiteral("Value can't be blank!"), MsgStyle::Warning);
    text.setText(m_screen.session().general.ServerPorts);
    m_screen.setFocus(text);
}

void GeneralTab::leaveServerPort()
{
    Control& port = m_screen[options::txtServerPort];
    const QString text = port.text();
    Platform& platform = m_screen.platform();
    if (blank(text)) {
        if (m_screen[options::optOtherPort].value() != 0)
            platform.messageBox(QStringLiteral("This Can't be Empty!"), MsgStyle::Stop);
        port.setText(DefaultPort);
        m_screen.setFocus(port);
        return;
    }
    if (!values::isNumeric(text)) {
        platform.messageBox(QStringLiteral("Nonnumeric figure entered!"), MsgStyle::Warning);
        port.setText(DefaultPort);
        m_screen.setFocus(port);
        return;
    }
    if (!portAllowed(text)) {
        platform.messageBox(QStringLiteral("Port less that 1001 or 1002 to 1005 or 2000 or greater than 63553 is not "
                                           "valid!"),
            MsgStyle::Warning);
        port.setText(DefaultPort);
        return;
    }
    const Control* external = m_screen.control(options::txtExternalPort);
    const std::optional<qint16> externalNumber = external ? values::toInt16(external->text()) : std::nullopt;
    if (externalNumber && values::toInt16(text) == externalNumber) {
        platform.messageBox(
            QStringLiteral("Server Port can't be the same with External Database Port!"), MsgStyle::Warning);
        port.setText(DefaultPort);
    }
}

void GeneralTab::leaveLoginLimit()
{
    Control& limit = m_screen[options::txtLogLimit];
    if (!values::isNumeric(limit.text())) {
        m_screen.platform().messageBox(QStringLiteral("The Login limit must have a numeric value!"), MsgStyle::Warning);
        limit.setText(DefaultLoginLimit);
        m_screen.setFocus(limit);
    } else if (values::leadingNumber(limit.text()) < 1) {
        m_screen.platform().messageBox(QStringLiteral("The Login has a minimum value of 1!"), MsgStyle::Warning);
        limit.setText(QStringLiteral("1"));
        m_screen.setFocus(limit);
    }
}

// ---- Apply ------------------------------------------------------------------------------------

bool GeneralTab::check()
{
    Control& port = m_screen[options::txtServerPort];
    if (!values::isNumeric(port.text()))
        port.setText(DefaultPort);
    // A port beyond a 16-bit integer fails the comparison, and SimComp keeps its stored value.
    if (const std::optional<qint16> number = values::toInt16(port.text())) {
        SessionPreferences stored = settings();
        stored.save(
            keys::SimComp, *number <= m_screen.session().general.MaxComputers ? port.text() : QStringLiteral("5"));
    }
    Platform& platform = m_screen.platform();
    if (blank(m_screen[options::txtBindType].text())) {
        platform.messageBox(QStringLiteral("Value can't be blank!"), MsgStyle::Warning);
        m_screen.selectTab(Flag);
        m_screen.setFocus(m_screen[options::txtBindType]);
        return false;
    }
    if (!values::isNumeric(m_screen[options::txtLogLimit].text())) {
        platform.messageBox(QStringLiteral("The Log in limit must have a numeric value!"), MsgStyle::Warning);
        m_screen.selectTab(Flag);
        // The night time start stands on another tab, hidden now: the focus does not go there.
        if (Control* nightStart = m_screen.control(options::dtNightStart))
            m_screen.setFocus(*nightStart);
        return false;
    }
    return true;
}

void GeneralTab::apply(Recordset& options)
{
    SessionPreferences stored = settings();
    const auto checkValue = [this](const CheckField& box) { return QString::number(m_screen[box.name].value()); };
    stored.save(
        keys::ServerUse, m_screen[options::optOtherPort].value() != 0 ? QStringLiteral("1") : QStringLiteral("0"));
    stored.save(keys::ServerPort, m_screen[options::txtServerPort].text());
    stored.save(keys::SetTime, checkValue(SetTimeBox));
    stored.save(keys::SameIP, checkValue(SameIpBox));
    stored.save(keys::LoadStart,
        m_screen[options::chkLoadStart].isChecked() ? QStringLiteral("True") : QStringLiteral("False"));
    const QString prefix = storedPrefix(m_screen[options::txtPrefix].text());
    const QString currency = m_screen[options::txtCurrency].text();
    stored.save(keys::STR, prefix);
    stored.save(keys::Currency, currency);
    options.setValue(QStringLiteral("TicketIniName"), prefix);
    stored.save(keys::ShutDownClients, checkValue(ShutDownClientsBox));
    stored.save(keys::CheckConnection, checkValue(CheckConnectionBox));
    stored.save(keys::LogLimit, checkValue(LogLimitBox));
    stored.save(keys::VLogLimit, m_screen[options::txtLogLimit].text());
    stored.save(keys::FrontDesk, checkValue(FrontDeskBox));
    stored.save(keys::SiteDate, checkValue(SiteDateBox));
    options.setValue(QStringLiteral("Currency"), currency.toUpper());
    const QString type = m_screen[options::optNumberOnly].value() != 0 ? QStringLiteral("1")
        : m_screen[options::optAlphabetOnly].value() != 0              ? QStringLiteral("2")
                                                                       : QStringLiteral("3");
    stored.save(keys::PassGenType, type);
    saveBind();
}

void GeneralTab::saveBind()
{
    SessionPreferences stored = settings();
    const QString choice = m_screen[options::cboBindType].text();
    if (blank(choice)) {
        stored.save(keys::BindType, Automatic);
        return;
    }
    if (choice == CustomSetting)
        stored.save(keys::CUSTOMBIND, m_screen[options::txtBindType].text().toUpper());
    stored.save(keys::BindType, choice);
}

} // namespace marlet
