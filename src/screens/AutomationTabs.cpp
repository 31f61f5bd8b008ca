#include "screens/AutomationTabs.h"

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

constexpr int ActionFlag = 4;
constexpr int MaintenanceFlag = 3;

const QString OfflineDefault = QStringLiteral("We are Offline");
const QString OnlineDefault = QStringLiteral("We are Online");
// The count's fallback after a bad entry, unlike its stored default of 6.
const QString CountFallback = QStringLiteral("4");

constexpr int SmallestBin = 500;
constexpr int LargestBin = 10000;

const char* const TidyProgId = "Brisling.Tidy";

struct CheckField
{
    QString name;
    const PreferenceKey* key;
};

bool blank(const QString& text)
{
    return values::trimBlanks(text).isEmpty();
}

// The fields the ping monitor's switch turns off and on.
const QString PingFields[] = {options::chkPingPause,
    options::chkPingLogging,
    options::chkMOffline,
    options::chkMOnline,
    options::txtTOffline,
    options::txtTOnline,
    options::txtIPPing,
    options::txtNoPing};

const QStringList Periods
    = {QStringLiteral("Daily"), QStringLiteral("Weekly"), QStringLiteral("Monthly"), QStringLiteral("Yearly")};

// A box that turns its field on and gives it the focus.
void enablesField(Options& screen, Control& box, const QString& field)
{
    box.onClick = [&screen, &box, field] {
        Control& target = screen[field];
        target.setEnabled(box.isChecked());
        screen.setFocus(target);
    };
}

} // namespace

// ---- Automated Action -------------------------------------------------------------------------

AutomatedActionTab::AutomatedActionTab(Options& screen)
    : m_screen(screen)
{
}

QString AutomatedActionTab::timeoutValue(const QString& listText)
{
    return values::numberText(values::leadingNumber(listText));
}

void AutomatedActionTab::build(Control& panel)
{
    buildPing(panel);
    buildMessages(panel);
    buildShutdown(panel);
}

void AutomatedActionTab::buildPing(Control& panel)
{
    Control& address = m_screen.addToFrame(
        panel, ControlKind::TextBox, options::txtIPPing, QStringLiteral("Ping IP Address (e.g. DNS, Gateway):"));
    address.setMaxLength(30);
    Control& disabled = m_screen.addToFrame(
        panel, ControlKind::CheckBox, options::chkPingDisabled, QStringLiteral("Disable Ping Monitor"));
    disabled.onClick = [this] { switchPing(); };
    Control& pause = m_screen.addToFrame(panel,
        ControlKind::CheckBox,
        options::chkPingPause,
        QStringLiteral("If Ping&ing Offline Pause Client(s) and Unpause if Otherwise"));
    Control& logging = m_screen.addToFrame(panel,
        ControlKind::CheckBox,
        options::chkPingLogging,
        QStringLiteral("If Pinging Offline Disable Login and Enable if Otherwise"));
    for (Control* box : {&pause, &logging})
        box->onClick = [this] { switchReactions(); };
    Control& count = m_screen.addToFrame(panel,
        ControlKind::TextBox,
        options::txtNoPing,
        QStringLiteral("Number of Pinging Offline before taking action(s):"));
    // The count waits for a reaction box.
    count.setEnabled(false);
    keyrules::lockUntilReleased(count, keyrules::isNumericKey);
    count.onLostFocus = [this, &count] {
        if (blank(count.text()))
            putBack(options::txtNoPing, QStringLiteral("Ping action count can't be blank!"), CountFallback);
        else if (!values::isNumeric(count.text()))
            putBack(options::txtNoPing, QStringLiteral("Ping action count must be Numeric!"), CountFallback);
    };
    Control& timeout
        = m_screen.addToFrame(panel, ControlKind::ComboBox, options::cboPingTimeout, QStringLiteral("Ping Timeout:"));
    timeout.setEditable(true);
    for (Control* text : {&address, &count})
        keyrules::selectAllOnFocus(*text);
    for (Control* field : {&address, &disabled, &pause, &logging, &count, &timeout})
        m_screen.trackChanges(*field, ActionFlag);
}

void AutomatedActionTab::buildMessages(Control& panel)
{
    const std::tuple<QString, const char*, QString, QString, const char*> messages[] = {
        {options::chkMOffline,
            "Send Message When Offline:",
            options::txtTOffline,
            OfflineDefault,
            "Offline Message can't be blank!"},
        {options::chkMOnline,
            "Send Message When Back Online:",
            options::txtTOnline,
            OnlineDefault,
            "Online Message can't be blank!"},
    };
    for (const auto& [boxName, caption, textName, fallback, warning] : messages) {
        Control& box = m_screen.addToFrame(panel, ControlKind::CheckBox, boxName, QLatin1String(caption));
        Control& text = m_screen.addToFrame(panel, ControlKind::TextBox, textName);
        text.setEnabled(false);
        keyrules::selectAllOnFocus(text);
        enablesField(m_screen, box, textName);
        text.onLostFocus = [this, &text, name = textName, warning = QLatin1String(warning), fallback = fallback] {
            if (blank(text.text()))
                putBack(name, warning, fallback);
        };
        m_screen.trackChanges(box, ActionFlag);
        m_screen.trackChanges(text, ActionFlag);
    }
}

void AutomatedActionTab::buildShutdown(Control& panel)
{
    Control& frame
        = m_screen.addToFrame(panel, ControlKind::Frame, options::FShutTime, QStringLiteral("Time Active(s) Settings"));
    Control& box = m_screen.addToFrame(frame,
        ControlKind::CheckBox,
        options::chkShutTime,
        QStringLiteral("Shutdown Server and all Client(s) at Time"));
    Control& picker = m_screen.addToFrame(frame, ControlKind::DateTimePicker, options::dtVShutTime);
    picker.setCustomFormat(QStringLiteral("HH:mm"));
    picker.setEnabled(false);
    enablesField(m_screen, box, options::dtVShutTime);
    m_screen.trackChanges(box, ActionFlag);
    m_screen.trackChanges(picker, ActionFlag);
}

void AutomatedActionTab::load()
{
    const SessionPreferences stored = m_screen.session().settings();
    m_screen[options::txtIPPing].setText(stored.text(keys::IPPing));
    const CheckField boxes[] = {
        {options::chkPingDisabled, &keys::PingDisabled},
        {options::chkPingPause, &keys::PingPause},
        {options::chkPingLogging, &keys::PingLogging},
        {options::chkMOffline, &keys::MOffline},
        {options::chkMOnline, &keys::MOnline},
        {options::chkShutTime, &keys::ShutTime},
    };
    for (const CheckField& box : boxes)
        optionsfields::showCheckValue(m_screen[box.name], stored.text(*box.key));
    m_screen[options::txtNoPing].setText(stored.text(keys::NoPing));
    m_screen[options::txtTOffline].setText(stored.text(keys::TOffline));
    m_screen[options::txtTOnline].setText(stored.text(keys::TOnline));
    const QTime time = QTime::fromString(stored.text(keys::VShutTime), QStringLiteral("H:mm"));
    m_screen[options::dtVShutTime].setDateTime(
        QDateTime(m_screen.platform().today(), time.isValid() ? time : QTime(0, 0)));
    Control& timeout = m_screen[options::cboPingTimeout];
    for (int milliseconds = 100; milliseconds <= 20000; milliseconds += 100)
        timeout.addItem(QString::number(milliseconds));
    timeout.setText(stored.text(keys::PingTimeout));
}

void AutomatedActionTab::switchPing()
{
    const bool monitor = !m_screen[options::chkPingDisabled].isChecked();
    for (const QString& field : PingFields)
        m_screen[field].setEnabled(monitor);
}

void AutomatedActionTab::switchReactions()
{
    Control& count = m_screen[options::txtNoPing];
    const bool react = m_screen[options::chkPingPause].isChecked() || m_screen[options::chkPingLogging].isChecked();
    count.setEnabled(react);
    if (react)
        m_screen.setFocus(count);
}

void AutomatedActionTab::putBack(const QString& field, const QString& message, const QString& fallback)
{
    m_screen.platform().messageBox(message, MsgStyle::Warning);
    Control& target = m_screen[field];
    target.setText(fallback);
    if (target.canFocus())
        m_screen.setFocus(target);
}

void AutomatedActionTab::apply(Recordset&)
{
    SessionPreferences stored = m_screen.session().settings();
    const auto textOr = [this](const QString& field, const QString& fallback) {
        const QString text = m_screen[field].text();
        return blank(text) ? fallback : text;
    };
    stored.save(keys::IPPing, m_screen[options::txtIPPing].text());
    stored.save(keys::NoPing, textOr(options::txtNoPing, QStringLiteral("6")));
    stored.save(keys::TOffline, textOr(options::txtTOffline, OfflineDefault));
    stored.save(keys::TOnline, textOr(options::txtTOnline, OnlineDefault));
    const QDateTime shutdown = m_screen[options::dtVShutTime].dateTime();
    stored.save(keys::VShutTime,
        shutdown.isValid() ? shutdown.time().toString(QStringLiteral("HH:mm")) : QStringLiteral("00:00"));
    const CheckField boxes[] = {
        {options::chkPingDisabled, &keys::PingDisabled},
        {options::chkPingLogging, &keys::PingLogging},
        {options::chkPingPause, &keys::PingPause},
        {options::chkMOffline, &keys::MOffline},
        {options::chkMOnline, &keys::MOnline},
        {options::chkShutTime, &keys::ShutTime},
    };
    for (const CheckField& box : boxes)
        stored.save(*box.key, optionsfields::checkValue(m_screen[box.name]));
    stored.save(keys::PingTimeout, timeoutValue(m_screen[options::cboPingTimeout].text()));
}

// ---- Maintenance ------------------------------------------------------------------------------

MaintenanceTab::MaintenanceTab(Options& screen)
    : m_screen(screen)
{
}

QString MaintenanceTab::sizeCaption(int size)
{
    if (size == SmallestBin)
        return QStringLiteral("Recycle Bin Size - Disabled");
    if (size == LargestBin)
        return QStringLiteral("Recycle Bin Size - Full Size");
    return QStringLiteral("Recycle Bin Size - ") + QString::number(size) + QStringLiteral("rec(s)");
}

void MaintenanceTab::build(Control& panel)
{
    buildSchedules(panel);
    buildBin(panel);
}

void MaintenanceTab::buildSchedules(Control& panel)
{
    const std::tuple<QString, const char*, QString, QString, const char*> schedules[] = {
        {options::FCleanUp, "Clean Up", options::cboCleanUpTime, options::chkEnableCleanUp, "Enable CleanUp"},
        {options::FBackUp, "Backup", options::cboBackUpTime, options::chkEnableBackUp, "Enable Backup "},
    };
    for (const auto& [frameName, frameCaption, listName, boxName, boxCaption] : schedules) {
        Control& frame = m_screen.addToFrame(panel, ControlKind::Frame, frameName, QLatin1String(frameCaption));
        Control& list = m_screen.addToFrame(frame, ControlKind::ComboBox, listName);
        Control& box = m_screen.addToFrame(frame, ControlKind::CheckBox, boxName, QLatin1String(boxCaption));
        box.onClick = [&box, &list] { list.setEnabled(box.isChecked()); };
        m_screen.trackChanges(list, MaintenanceFlag);
        m_screen.trackChanges(box, MaintenanceFlag);
    }
    const std::tuple<QString, QString, const char*, const char*> buttons[] = {
        {options::FCleanUp, options::cmdCleanUp, "Clean Up Now", "LoadCleanUp"},
        {options::FBackUp, options::cmdBackUp, "&Backup Now", "LoadBackUp"},
        {options::FBackUp, options::cmdRestore, "&Restore from Backup", "LoadRestore"},
    };
    for (const auto& [frameName, name, caption, operation] : buttons) {
        const bool cleanUp = name == options::cmdCleanUp;
        const QString called = QLatin1String(operation);
        m_screen.addToFrame(m_screen[frameName], ControlKind::CommandButton, name, QLatin1String(caption)).onClick
            = [this, cleanUp, called] {
                  // The clean-up is handed the server's folder, blank unless another screen set it.
                  runTidy(called, cleanUp ? QVariantList {m_screen.session().general.ServerPath} : QVariantList {});
              };
    }
}

void MaintenanceTab::buildBin(Control& panel)
{
    m_screen.addToFrame(panel, ControlKind::Label, options::lblRecycleBinSize, QStringLiteral("Recycle Bin Size"));
    Control& slider = m_screen.addToFrame(panel, ControlKind::Slider, options::sldRecycleBinSize);
    // Its value starts outside the range, so that the load's value always runs the slider's rules.
    slider.setRange(SmallestBin, LargestBin);
    slider.onChange = [this] { moveSlider(); };
    Control& recycle = m_screen.addToFrame(
        panel, ControlKind::CheckBox, options::chkMoveToRecycle, QStringLiteral("&Store empty Tickets in Recycle Bin"));
    // Read into its box and never saved: changing it marks a change and nothing more.
    Control& log = m_screen.addToFrame(
        panel, ControlKind::CheckBox, options::chkProgramLog, QStringLiteral("Keep &Log of Server Usage"));
    for (Control* field : {&slider, &recycle, &log})
        m_screen.trackChanges(*field, MaintenanceFlag);
}

void MaintenanceTab::selected()
{
    const bool allowed = !m_screen.session().general.restrictedByAdminPower();
    for (const QString& field : {options::cmdCleanUp,
             options::cmdBackUp,
             options::cmdRestore,
             options::chkMoveToRecycle,
             options::sldRecycleBinSize})
        m_screen[field].setEnabled(allowed);
}

void MaintenanceTab::load()
{
    const SessionPreferences stored = m_screen.session().settings();
    for (const auto& [list, key] : {std::pair {options::cboCleanUpTime, &keys::CleanUpTime},
             std::pair {options::cboBackUpTime, &keys::BackUpTime}}) {
        m_screen[list].addItems(Periods);
        const double position = stored.number(*key);
        if (position >= 0 && position < Periods.size())
            m_screen[list].setListIndex(int(position));
    }
    Control& slider = m_screen[options::sldRecycleBinSize];
    slider.setValue(int(stored.number(keys::RecycleBinSize)));
    m_screen[options::lblRecycleBinSize].setCaption(sizeCaption(slider.value()));
    const CheckField boxes[] = {
        {options::chkProgramLog, &keys::ProgramLog},
        {options::chkMoveToRecycle, &keys::MovetoRecycle},
        {options::chkEnableBackUp, &keys::EnableBackUp},
        {options::chkEnableCleanUp, &keys::EnableCleanUp},
    };
    for (const CheckField& box : boxes)
        optionsfields::showCheckValue(m_screen[box.name], stored.text(*box.key));
}

void MaintenanceTab::moveSlider()
{
    const int size = m_screen[options::sldRecycleBinSize].value();
    m_screen[options::lblRecycleBinSize].setCaption(sizeCaption(size));
    Control& recycle = m_screen[options::chkMoveToRecycle];
    // The User Account tab's power switch, reached from here; the rule passes it by when missing.
    Control* power = m_screen.control(options::chkAdministratorPower);
    const auto both = [&recycle, power](bool enabled) {
        recycle.setEnabled(enabled);
        if (power)
            power->setEnabled(enabled);
    };
    if (size == SmallestBin)
        both(false);
    else if (size == LargestBin)
        both(!m_screen.session().general.restrictedByAdminPower());
    else
        recycle.setEnabled(true);
}

void MaintenanceTab::runTidy(const QString& operation, const QVariantList& arguments)
{
    // A component that is not there makes the press do nothing visible.
    std::unique_ptr<NamedComponent> tidy = m_screen.platform().createComponent(QLatin1String(TidyProgId));
    if (tidy)
        tidy->callWithConnection(operation, m_screen.session().connection(), arguments);
}

void MaintenanceTab::apply(Recordset& options)
{
    SessionPreferences stored = m_screen.session().settings();
    const Control& recycle = m_screen[options::chkMoveToRecycle];
    const Control& backUp = m_screen[options::chkEnableBackUp];
    const Control& cleanUp = m_screen[options::chkEnableCleanUp];
    const QString size = QString::number(m_screen[options::sldRecycleBinSize].value());
    stored.save(keys::RecycleBinSize, size);
    stored.save(keys::MovetoRecycle, optionsfields::checkValue(recycle));
    stored.save(keys::CleanUpTime, QString::number(m_screen[options::cboCleanUpTime].listIndex()));
    stored.save(keys::BackUpTime, QString::number(m_screen[options::cboBackUpTime].listIndex()));
    stored.save(keys::EnableBackUp, optionsfields::checkValue(backUp));
    stored.save(keys::EnableCleanUp, optionsfields::checkValue(cleanUp));
    options.setValue(QStringLiteral("LogIn"), recycle.ticked());
    options.setValue(QStringLiteral("EnableBackUp"), backUp.ticked());
    options.setValue(QStringLiteral("EnableCleanUp"), cleanUp.ticked());
    options.setValue(QStringLiteral("RecycleBinSize"), m_screen[options::sldRecycleBinSize].value());
}

} // namespace marlet
