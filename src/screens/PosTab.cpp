#include "screens/PosTab.h"

#include "platform/KeyRules.h"
#include "platform/Platform.h"
#include "screens/Options.h"
#include "screens/OptionsFields.h"
#include "screens/OptionsNames.h"
#include "session/Session.h"
#include "store/Connection.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"

namespace marlet {

namespace {

constexpr int Flag = 9;
constexpr int PosBaud = 9600;

struct CheckField
{
    QString name;
    const PreferenceKey* key;
    const char* caption;
};
const CheckField DisplayBoxes[] = {
    {options::chkStitle, &keys::pos::Stitle, "Show Ticket Title"},
    {options::chkType, &keys::pos::Type, "Show Ticket Type"},
    {options::chkSGroup, &keys::pos::SGroup, "Show Ticket Group"},
    {options::chkSUserL, &keys::pos::SUserL, "Show Username in LARGE"},
    {options::chkSAddr, &keys::pos::SAddr, "Show Ticket Address"},
    {options::chkSPassL, &keys::pos::SPassL, "Show Password in LARGE"},
};

const QString Speeds[] = {QStringLiteral("Slow Speed"), QStringLiteral("Normal Speed"), QStringLiteral("Fast Speed")};

} // namespace

PosTab::PosTab(Options& screen)
    : m_screen(screen)
{
}

PosTab::~PosTab() = default;

int PosTab::portNumber(const QString& listText)
{
    const QChar last = listText.isEmpty() ? QChar() : listText.back();
    return last.isDigit() ? last.digitValue() : 1;
}

// ---- building -------------------------------------------------------------------------------

void PosTab::build(Control& panel)
{
    buildDisplay(panel);
    buildKind(panel);
    buildPort(panel);
}

void PosTab::buildDisplay(Control& panel)
{
    Control& frame
        = m_screen.addToFrame(panel, ControlKind::Frame, options::FTicketDisplay, QStringLiteral("Ticket Display"));
    for (const CheckField& box : DisplayBoxes)
        m_screen.trackChanges(
            m_screen.addToFrame(frame, ControlKind::CheckBox, box.name, QLatin1String(box.caption)), Flag);
}

void PosTab::buildKind(Control& panel)
{
    Control& frame = m_screen.addToFrame(panel, ControlKind::Frame, options::FPOSType, QStringLiteral("Type of POS"));
    for (const auto& [name, caption] : {std::pair {options::optDevicePOS, "Device POS (Hardware POS)"},
             std::pair {options::optActivationPOS, "Activation Type POS (Offline without Device)"}}) {
        Control& option = m_screen.addToFrame(frame, ControlKind::OptionButton, name, QLatin1String(caption));
        option.onClick = [this] { pickKind(); };
        m_screen.trackChanges(option, Flag);
    }
}

void PosTab::buildPort(Control& panel)
{
    Control& portFrame
        = m_screen.addToFrame(panel, ControlKind::Frame, options::FPOSPort, QStringLiteral("POS Port Setting"));
    Control& port = m_screen.addToFrame(
        portFrame, ControlKind::ComboBox, options::cboCOM, QStringLiteral("POS Communication Port:"));
    m_screen.trackChanges(port, Flag);
    m_screen
        .addToFrame(portFrame, ControlKind::CommandButton, options::cmdTestPOS, QStringLiteral("Test POS Connection"))
        .onClick
        = [this] { testPort(); };

    Control& speedFrame = m_screen.addToFrame(
        panel, ControlKind::Frame, options::FPOSSpeed, QStringLiteral("POS Print Speed Settings"));
    m_screen.trackChanges(m_screen.addToFrame(speedFrame,
                              ControlKind::ComboBox,
                              options::cboPOSspeed,
                              QStringLiteral("Select Point-of-Sale (POS) print speed:")),
        Flag);
}

// ---- loading ----------------------------------------------------------------------------------

void PosTab::load()
{
    const SessionPreferences stored = m_screen.session().settings();
    for (const CheckField& box : DisplayBoxes)
        optionsfields::showCheckValue(m_screen[box.name], stored.text(box.key->underTitle()));
    if (stored.truth(keys::pos::POSType)) {
        m_screen[options::optDevicePOS].setValue(1);
    } else {
        m_screen[options::optActivationPOS].setValue(1);
        if (Control* activate = m_screen.control(options::chkActivateTk))
            activate->setEnabled(false);
    }
    Control& port = m_screen[options::cboCOM];
    port.addItems({QStringLiteral("COM1"),
        QStringLiteral("COM2"),
        QStringLiteral("COM3"),
        QStringLiteral("COM4"),
        QStringLiteral("LPT1"),
        QStringLiteral("LPT2"),
        QStringLiteral("LPT3")});
    const QString storedPort = stored.text(keys::pos::COM.underTitle());
    const int row = port.findItem(storedPort);
    if (row >= 0)
        port.setListIndex(row);
    else
        port.setText(storedPort);
    Control& speed = m_screen[options::cboPOSspeed];
    for (const QString& entry : Speeds)
        speed.addItem(entry);
    const double storedSpeed = stored.number(keys::pos::POSspeed.underTitle());
    speed.setListIndex(storedSpeed == 0 ? 0 : storedSpeed == 2 ? 2 : 1);
}

// ---- rules of the fields ----------------------------------------------------------------------

void PosTab::pickKind()
{
    optionsfields::markPicked(m_screen, {options::optDevicePOS, options::optActivationPOS});
    const bool device = m_screen[options::optDevicePOS].isChecked();
    if (Control* activate = m_screen.control(options::chkActivateTk))
        activate->setEnabled(device);
    for (const QString& frame : {options::FTicketDisplay, options::FPOSPort, options::FPOSSpeed})
        m_screen[frame].setEnabled(device);
}

void PosTab::testPort()
{
    Control& button = m_screen[options::cmdTestPOS];
    button.setEnabled(false);
    const QString portText = m_screen[options::cboCOM].text();
    if (!askAndWrite(portText))
        m_screen.platform().messageBox(QStringLiteral("Port doesn't exist!"), MsgStyle::Stop);
    button.setEnabled(true);
}

bool PosTab::askAndWrite(const QString& portText)
{
    Platform& platform = m_screen.platform();
    if (!m_port)
        m_port = platform.serialPort();
    if (!m_port)
        return false;
    if (m_port->isOpen())
        m_port->close();
    if (!m_port->open(QStringLiteral("COM") + QString::number(portNumber(portText)), PosBaud))
        return false;
    if (!m_port->isOpen()) {
        platform.messageBox(QStringLiteral("Port not open!"), MsgStyle::Stop);
        return true;
    }
    if (platform.messageBox(
            QStringLiteral("Is your POS connected to a COM port and switched ON?"), MsgStyle::YesNoQuestion)
        == MsgResult::No) {
        platform.messageBox(QStringLiteral("Connect the POS, Switch it ON and try testing again!"), MsgStyle::Stop);
        return true;
    }
    return m_port->write((QStringLiteral("This is a POS test for ") + portText + QStringLiteral("\r\n")).toLatin1());
}

// ---- Apply ------------------------------------------------------------------------------------

void PosTab::apply(Recordset&)
{
    // Everything goes under the product word; the port is not saved, only tested.
    SessionPreferences stored = m_screen.session().settings();
    for (const CheckField& box : DisplayBoxes)
        stored.save(box.key->underProduct(), optionsfields::checkValue(m_screen[box.name]));
    const bool device = m_screen[options::optDevicePOS].isChecked();
    stored.save(keys::pos::POSType, optionsfields::yesNoText(device));
    if (!device) {
        // The box is disabled while activation is picked, so this stores "False", and in a form the
        // Ticket Setting tab does not load.
        const Control* activate = m_screen.control(options::chkActivateTk);
        stored.save(keys::ActivateTk, optionsfields::yesNoText(activate && activate->enabled()));
    }
    const int speed = m_screen[options::cboPOSspeed].listIndex();
    if (speed >= 0)
        stored.save(keys::pos::POSspeed, QString::number(speed));
}

// ---- the SMS panel ----------------------------------------------------------------------------

SmsPanel::SmsPanel(Options& screen)
    : m_screen(screen)
{
}

void SmsPanel::build(Control& panel)
{
    Control& account
        = m_screen.addToFrame(panel, ControlKind::Frame, options::FSMSAccount, QStringLiteral("Account Information"));
    m_screen.addToFrame(account, ControlKind::TextBox, options::txtSMSAccount, QStringLiteral("Username:"));
    m_screen.addToFrame(account, ControlKind::TextBox, options::txtSMSPassword, QStringLiteral("Password:"))
        .setPasswordChar(true);
    m_screen.addToFrame(account, ControlKind::CommandButton, options::cmdCheckSMS, QStringLiteral("Check SMS Account"))
        .onClick
        = [this] { checkAccount(); };
    m_screen.addToFrame(account, ControlKind::Label, options::lblSMSStatus, QStringLiteral("Status:"));
    Control& option = m_screen.addToFrame(panel, ControlKind::Frame, options::FSMSOption, QStringLiteral("SMS Option"));
    m_screen.addToFrame(
        option, ControlKind::CheckBox, options::chkAllowSMS, QStringLiteral("Allow Clients(s) to Send SMS"));
    m_screen.addToFrame(
        option, ControlKind::CheckBox, options::chkAllowMSMS, QStringLiteral("Allow Multiple SMS on Client(s)"));
    Control& cost = m_screen.addToFrame(panel, ControlKind::Frame, options::FSMSCost, QStringLiteral(" Cost per SMS:"));
    m_screen.addToFrame(cost, ControlKind::TextBox, options::txtSMScost);
    for (const QString& text : {options::txtSMSAccount, options::txtSMSPassword, options::txtSMScost})
        keyrules::selectAllOnFocus(m_screen[text]);
}

void SmsPanel::checkAccount()
{
    const QString name = m_screen[options::txtSMSAccount].text();
    const QString password = m_screen[options::txtSMSPassword].text();
    Platform& platform = m_screen.platform();
    if (name.trimmed().isEmpty() || password.trimmed().isEmpty()) {
        platform.messageBox(QStringLiteral("Username or Password can't be Blank!"), MsgStyle::Warning);
        return;
    }
    for (const QString& text : {name, password}) {
        if (text.contains(u'&') || text.contains(u'@')) {
            platform.messageBox(QStringLiteral("You enter an invalid character (i.e. @, &, etc.)!"), MsgStyle::Warning);
            return;
        }
    }
    // The check goes no further: nothing is sent, and the button stays disabled.
    m_screen[options::cmdCheckSMS].setEnabled(false);
    m_screen[options::lblSMSStatus].setCaption(QStringLiteral("Status: Checking ..."));
}

void SmsPanel::apply(Recordset&)
{
    SessionPreferences stored = m_screen.session().settings();
    stored.save(keys::AllowSMS, optionsfields::checkValue(m_screen[options::chkAllowSMS]));
    stored.save(keys::AllowMSMS, optionsfields::checkValue(m_screen[options::chkAllowMSMS]));
    Recordset row;
    if (!row.Open(Statement(QStringLiteral("Select * from Options")),
            m_screen.session().connection(),
            CursorType::Static,
            LockType::Optimistic))
        return;
    if (row.RecordCount() == 0)
        row.AddNew();
    row.setValue(QStringLiteral("SMSAccount"), m_screen[options::txtSMSAccount].text());
    row.setValue(QStringLiteral("SMSPassword"), m_screen[options::txtSMSPassword].text());
    row.setValue(QStringLiteral("SMScost"), m_screen[options::txtSMScost].text());
    row.Update();
    row.Close();
}

} // namespace marlet
