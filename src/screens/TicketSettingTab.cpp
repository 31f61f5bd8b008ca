#include "screens/TicketSettingTab.h"

#include "platform/KeyRules.h"
#include "platform/Platform.h"
#include "screens/GeneralTab.h"
#include "screens/Options.h"
#include "screens/OptionsNames.h"
#include "session/Session.h"
#include "settings/TicketTimes.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"
#include "values/Numbers.h"
#include "values/Product.h"
#include "values/Texts.h"

namespace marlet {

namespace {

constexpr int Flag = 2;
constexpr int PosFlag = 9;
const QString DefaultExternalPort = QStringLiteral("1100");

// The keys of this page are read and written under the host's title.
const PreferenceKey BeginTimeKey = keys::BeginTime.underTitle();
const PreferenceKey EndTimeKey = keys::EndTime.underTitle();
const PreferenceKey UseGTimeKey = keys::UseGTime.underTitle();
const PreferenceKey TitleKey = keys::Title.underTitle();
const PreferenceKey AddressKey = keys::Address.underTitle();

struct PrintSize
{
    const QString* name;
    const char* caption;
    int printType;
};
const PrintSize PrintSizes[] = {
    {&options::m_SmallSize, "Small Ticket Size", 1},
    {&options::m_MediumSize, "Medium Ticket Size", 2},
    {&options::m_LargeSize, "Large Ticket Size", 3},
    {&options::m_ExportSize, "Export Ticket to File", 4},
};

bool blank(const QString& text)
{
    return values::trimBlanks(text).isEmpty();
}

QString checkValue(const Control& box)
{
    return QString::number(box.value());
}

void showCheckValue(Control& box, const QString& stored)
{
    const std::optional<qint16> value = values::toInt16(stored);
    if (value && *value >= CheckState::Unchecked && *value <= CheckState::Grayed)
        box.setValue(*value);
}

} // namespace

TicketSettingTab::TicketSettingTab(Options& screen)
    : m_screen(screen)
{
}

SessionPreferences TicketSettingTab::settings() const
{
    return m_screen.session().settings();
}

// ---- building ---------------------------------------------------------------------------------

void TicketSettingTab::build(Control& panel)
{
    buildTimeFields(panel);
    buildTextFields(panel);
    buildPrintFields(panel);
    buildExternalFields(panel);
}

void TicketSettingTab::buildTimeFields(Control& panel)
{
    Control& frame
        = m_screen.addToFrame(panel, ControlKind::Frame, options::FTimeTicket, QStringLiteral("Time Ticket Settings"));
    // The pickers hold their time as "HH:mm" text.
    Control& start
        = m_screen.addToFrame(frame, ControlKind::TextBox, options::dtNightStart, QStringLiteral("Start Time:"));
    Control& end = m_screen.addToFrame(frame, ControlKind::TextBox, options::dtNightEnd, QStringLiteral("End Time:"));
    Control& general = m_screen.addToFrame(frame,
        ControlKind::CheckBox,
        options::chkUseGTime,
        QStringLiteral("Use a general Time Frame for all Ticket(s):"));
    for (Control* field : {&start, &end}) {
        field->setMaxLength(5);
        keyrules::selectAllOnFocus(*field);
    }
    for (Control* field : {&start, &end, &general})
        m_screen.trackChanges(*field, Flag);
}

void TicketSettingTab::buildTextFields(Control& panel)
{
    Control& frame = m_screen.addToFrame(
        panel, ControlKind::Frame, options::FTicketInformation, QStringLiteral("Ticket Information Settings"));
    const std::tuple<const QString*, const char*, int> fields[] = {
        {&options::txtTitle, "Title:", 35},
        {&options::txtInformation, "Information:", 50},
        {&options::txtAddress, "Address:", 75},
    };
    for (const auto& [name, caption, length] : fields) {
        Control& field = m_screen.addToFrame(frame, ControlKind::TextBox, *name, QLatin1String(caption));
        field.setMaxLength(length);
        keyrules::selectAllOnFocus(field);
        m_screen.trackChanges(field, Flag);
    }
    m_screen.addToFrame(frame, ControlKind::CommandButton, options::cmdClearTexts, QStringLiteral("Cl&ear")).onClick
        = [this] { clearTexts(); };

    Control& activation = m_screen.addToFrame(panel,
        ControlKind::CheckBox,
        options::chkActivateTk,
        QStringLiteral("Enable Ticket Group Activation Technology (Requires Two Users to make Use of a batch of "
                       "tickets)."));
    activation.onClick = [this] { clickActivation(); };
    m_screen.trackChanges(activation, Flag);
    // Shown, and read and saved nowhere.
    m_screen
        .addToFrame(panel,
            ControlKind::CheckBox,
            options::chkOnlinePrinting,
            QStringLiteral("Enable Online Ticket Printing and Server Control"))
        .setToolTip(QStringLiteral(
            "Enabling this will allow you to be able to print and control your server from the Norvantis website"));
}

void TicketSettingTab::buildPrintFields(Control& panel)
{
    Control& frame = m_screen.addToFrame(
        panel, ControlKind::Frame, options::FPrinterPreview, QStringLiteral("Printer Preview Settings"));
    m_screen.addToFrame(frame, ControlKind::Label, options::lblPrinter);
    Control& button = m_screen.addToFrame(
        frame, ControlKind::CommandButton, options::cmdPrintSize, QStringLiteral("Select Ticket Print Size"));
    Control& menu = m_screen.add(ControlKind::Menu, options::m_PrintSize);
    menu.setVisible(false);
    for (const PrintSize& size : PrintSizes) {
        Control& item = m_screen.addLabelled(ControlKind::Menu, *size.name, QLatin1String(size.caption));
        item.setParentMenu(&menu);
        item.onClick = [this, type = size.printType] { pickPrintSize(type); };
    }
    button.onClick = [this] { showPrintSizes(); };
}

void TicketSettingTab::buildExternalFields(Control& panel)
{
    Control& box = m_screen.addToFrame(panel,
        ControlKind::CheckBox,
        options::chkExternalData,
        QStringLiteral("Allow External Server to Use Database on Port:"));
    Control& port = m_screen.addToFrame(panel, ControlKind::TextBox, options::txtExternalPort);
    box.onClick = [&box, &port] { port.setEnabled(box.isChecked()); };
    port.setEnabled(false);
    keyrules::lockUntilReleased(port, keyrules::isNumericKey);
    keyrules::selectAllOnFocus(port);
    port.onLostFocus = [this] { leaveExternalPort(); };
    for (Control* field : {&box, &port})
        m_screen.trackChanges(*field, Flag);
}

// ---- loading ----------------------------------------------------------------------------------

void TicketSettingTab::load()
{
    const SessionPreferences stored = settings();
    m_screen[options::dtNightStart].setText(tickettimes::loaded(stored.text(BeginTimeKey)));
    m_screen[options::dtNightEnd].setText(tickettimes::loaded(stored.text(EndTimeKey, QStringLiteral("6:00"))));
    m_screen[options::txtTitle].setText(stored.text(TitleKey, MessageTitle()));
    m_screen[options::txtInformation].setText(stored.text(keys::Information));
    m_screen[options::txtAddress].setText(stored.text(AddressKey, QString()));
    const QString printer = m_screen.platform().defaultPrinter();
    m_screen[options::lblPrinter].setCaption(printer.isEmpty() ? QStringLiteral("No Printer Detected!") : printer);
    showCheckValue(m_screen[options::chkUseGTime], stored.text(UseGTimeKey));
    showCheckValue(m_screen[options::chkActivateTk], stored.text(keys::ActivateTk));
    showCheckValue(m_screen[options::chkExternalData], stored.text(keys::ExternalData));
    const QString port = stored.text(keys::ExternalPort);
    m_screen[options::txtExternalPort].setText(values::leadingNumber(port) > 1000 ? port : DefaultExternalPort);
    loadActivation();
}

void TicketSettingTab::loadActivation()
{
    const SessionPreferences stored = settings();
    Control& activation = m_screen[options::chkActivateTk];
    showCheckValue(activation, stored.text(keys::ActivateTk));
    // Activation needs the hardware point of sale: as the POS page shows it once that page has been
    // visited, as stored before.
    if (m_screen.tabLoaded(PosFlag))
        activation.setEnabled(m_screen[options::optDevicePOS].value() != 0);
    else
        activation.setEnabled(stored.truth(keys::pos::POSType));
}

// ---- rules of the fields ----------------------------------------------------------------------

void TicketSettingTab::clearTexts()
{
    Control& title = m_screen[options::txtTitle];
    title.setText(MessageTitle());
    m_screen[options::txtInformation].setText(QString());
    m_screen[options::txtAddress].setText(QString());
    title.selectAll();
    m_screen.setFocus(title);
    m_screen.fieldChanged(Flag);
}

void TicketSettingTab::clickActivation()
{
    if (!m_screen.tabLoaded(Flag) || !m_screen[options::chkActivateTk].isChecked())
        return;
    m_screen.platform().messageBox(
        QStringLiteral("You must activate all ticket groups of generated tickets under Tool Menu->Activate Ticket "
                       "Group before you can use any ticket if 'Enable Ticket Group Activation' is checked!"),
        MsgStyle::Info);
}

void TicketSettingTab::showPrintSizes()
{
    const double stored = settings().number(keys::PrintType);
    const int current = stored == 1 || stored == 2 || stored == 4 ? int(stored) : 3;
    for (const PrintSize& size : PrintSizes)
        m_screen[*size.name].setValue(size.printType == current ? 1 : 0);
    m_screen.popupMenu(m_screen[options::m_PrintSize]);
}

void TicketSettingTab::pickPrintSize(int printType)
{
    // Written at once: no Apply needed, and Cancel does not take it back.
    SessionPreferences stored = settings();
    stored.save(keys::PrintType.underTitle(), QString::number(printType));
}

void TicketSettingTab::leaveExternalPort()
{
    Control& port = m_screen[options::txtExternalPort];
    const QString text = port.text();
    Platform& platform = m_screen.platform();
    if (blank(text)) {
        port.setText(DefaultExternalPort);
        if (m_screen[options::chkExternalData].isChecked()) {
            platform.messageBox(QStringLiteral("This Can't be Empty!"), MsgStyle::Stop);
            m_screen.setFocus(port);
        }
        return;
    }
    if (!values::isNumeric(text)) {
        platform.messageBox(QStringLiteral("Non-numeric figure entered!"), MsgStyle::Warning);
        port.setText(DefaultExternalPort);
        m_screen.setFocus(port);
        return;
    }
    // A port beyond a 16-bit integer gets the same refusal as a port out of bounds.
    if (!GeneralTab::portAllowed(text)) {
        platform.messageBox(QStringLiteral("Port less that 1001 or 1002 to 1005 or 2000 or greater than 63553 is not "
                                           "valid!"),
            MsgStyle::Warning);
        port.setText(DefaultExternalPort);
        return;
    }
    const std::optional<qint16> serverPort = values::toInt16(m_screen[options::txtServerPort].text());
    if (serverPort && values::toInt16(text) == serverPort) {
        platform.messageBox(
            QStringLiteral("External Server Port can't be the same with Server Port!"), MsgStyle::Warning);
        port.setText(DefaultExternalPort);
    }
}

// ---- Apply ------------------------------------------------------------------------------------

bool TicketSettingTab::check()
{
    if (tickettimes::accepted(m_screen[options::dtNightStart].text())
        && tickettimes::accepted(m_screen[options::dtNightEnd].text()))
        return true;
    m_screen.platform().messageBox(QStringLiteral("Night Time not correct!"), MsgStyle::Warning);
    m_screen.selectTab(Flag);
    m_screen.setFocus(m_screen[options::dtNightStart]);
    return false;
}

void TicketSettingTab::apply(Recordset& options)
{
    SessionPreferences stored = settings();
    const QString typedTitle = m_screen[options::txtTitle].text();
    const QString title = (blank(typedTitle) ? MessageTitle() : typedTitle).left(60);
    const QString information = m_screen[options::txtInformation].text().left(60);
    const QString address = m_screen[options::txtAddress].text().left(80);
    const QString start = tickettimes::formatted(m_screen[options::dtNightStart].text());
    const QString end = tickettimes::formatted(m_screen[options::dtNightEnd].text());
    stored.save(TitleKey, title);
    stored.save(keys::Information, information);
    stored.save(AddressKey, address);
    stored.save(BeginTimeKey, start);
    stored.save(EndTimeKey, end);
    stored.save(UseGTimeKey, checkValue(m_screen[options::chkUseGTime]));
    stored.save(keys::ActivateTk, checkValue(m_screen[options::chkActivateTk]));
    Control& external = m_screen[options::chkExternalData];
    stored.save(keys::ExternalData, checkValue(external));
    if (external.isChecked()) {
        Control& port = m_screen[options::txtExternalPort];
        if (!values::isNumeric(port.text()))
            port.setText(DefaultExternalPort);
        stored.save(keys::ExternalPort, port.text());
    }
    if (options.State() == 0)
        options.Open(Statement(QStringLiteral("Select * from  Options")),
            m_screen.session().connection(),
            CursorType::Static,
            LockType::Optimistic);
    options.setValue(QStringLiteral("NightTimeStart"), start);
    options.setValue(QStringLiteral("NightTimeEnd"), end);
    options.setValue(QStringLiteral("Title"), title);
    options.setValue(QStringLiteral("Address"), address);
    options.setValue(QStringLiteral("Information"), information);
}

} // namespace marlet
