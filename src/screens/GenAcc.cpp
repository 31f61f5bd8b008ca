#include "screens/GenAcc.h"

#include "issuing/GenAccNames.h"
#include "issuing/TicketGroup.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "printing/SheetSettings.h"
#include "screens/GenAccControls.h"
#include "session/Session.h"
#include "store/Recordset.h"
#include "values/Numbers.h"

namespace marlet {

namespace {

const QString StopCaption = QStringLiteral("Stop");
const QString CloseCaption = QStringLiteral("Clo&se");
constexpr int StopColor = 255;
constexpr int CloseColor = 16744576;

const QStringList ExpiryEntries = {QStringLiteral("Fixed Expiration Date"),
    QStringLiteral("Flexible Expiration Date"),
    QStringLiteral("Never Expire")};

// A value from the preference store if it is numeric and below the limit, else the fallback.
QString boundedSetting(const QString& stored, double limit, const QString& fallback)
{
    return values::isNumeric(stored) && values::leadingNumber(stored) < limit ? stored : fallback;
}

} // namespace

GenAcc::GenAcc(Session& session, ScreenOpener& screens)
    : Form(session.platform(), genacc::FormName)
    , m_session(session)
    , m_screens(screens)
{
}

GenAcc::~GenAcc() = default;

bool GenAcc::restricted() const
{
    return m_session.general.restrictedByAdminPower();
}

// ---- building -------------------------------------------------------------------------------

void GenAcc::build()
{
    setCaption(QStringLiteral("Generate Ticket"));
    setSize(10800, 7800);
    // The controls are made afresh with the close button at rest.
    m_busy = false;
    buildFrame();
    onLoad = [this] { load(); };
    onActivate = [this] { activate(); };
    onQueryUnload = [this](bool& cancel, int) {
        if (busy())
            cancel = true;
    };
    onUnload = [this](bool&) { m_session.general.SecondStaff.clear(); };
}

void GenAcc::buildFrame()
{
    Control& tabs = add(ControlKind::TabStrip, genacc::TabStrip1);
    tabs.addItems({QStringLiteral("New Ticket"),
        QStringLiteral("Custom Ticket"),
        QStringLiteral("Membership Ticket"),
        QStringLiteral("Existing Ticket"),
        QStringLiteral("Settings")});
    // The member page stands over the tabs until "<< Back" or the registration ends.
    tabs.onBeforeClick = [this](bool& cancel) { cancel = busy() || (*this)[genacc::FMemberPage].visible(); };
    tabs.onClick = [this] { changeTab(); };

    // The grid every tab lists its tickets in.
    genacc::setTicketGridHeader(add(ControlKind::Grid, genacc::PrintList));
    buildNewTab(add(ControlKind::Frame, genacc::FNew));
    buildCustomTab(add(ControlKind::Frame, genacc::FCustom));
    buildMemberTab(add(ControlKind::Frame, genacc::FMember));
    buildExistingTab(add(ControlKind::Frame, genacc::FExist));
    buildSettingsTab(add(ControlKind::Frame, genacc::FSetting));
    buildMemberPage();

    buildProgressPanel();

    // Labelled by its resting caption, so that it is found by that name while it reads "Stop" too.
    Control& close = addLabelled(ControlKind::CommandButton, genacc::Command6, CloseCaption);
    close.setBackColor(CloseColor);
    close.onClick = [this] { closeOrStop(); };
    addLabelled(ControlKind::CommandButton, genacc::cmdHelp, QStringLiteral("&Help")).onClick = [this] { showHelp(); };
}

void GenAcc::buildProgressPanel()
{
    Control& panel = add(ControlKind::Frame, genacc::FProgress);
    panel.setVisible(false);
    panel.setGeometry(240, 3000, 6000, 600);
    Control& label = add(ControlKind::Label, genacc::Label4);
    label.setContainer(&panel);
    Control& bar = add(ControlKind::ProgressBar, genacc::ProgressBar1);
    bar.setContainer(&panel);
}

// ---- progress panel ---------------------------------------------------------------------------

void GenAcc::ProgressAdjust()
{
    // The bar starts just after the label's text and fills the panel's width.
    Control& panel = (*this)[genacc::FProgress];
    Control& label = (*this)[genacc::Label4];
    Control& bar = (*this)[genacc::ProgressBar1];
    constexpr int twipsPerCharacter = 90;
    const int labelWidth = int(label.caption().size()) * twipsPerCharacter;
    label.setWidth(labelWidth);
    bar.setLeft(labelWidth + 50);
    bar.setWidth(panel.width() - 250 - bar.left());
}

void GenAcc::StartProgress()
{
    // A stop that ended the last operation must not end this one before it starts.
    StopRequested = false;
    (*this)[genacc::Label4].setCaption(QStringLiteral("Processing .... Please wait "));
    ProgressAdjust();
    for (const QString& frame : genacc::TabFrames)
        (*this)[frame].setEnabled(false);
    platform().yield();
    Control& panel = (*this)[genacc::FProgress];
    panel.setWidth(qMax(panel.width(), 9000));
    panel.setVisible(true);
    Control& close = (*this)[genacc::Command6];
    close.setCaption(StopCaption);
    close.setBackColor(StopColor);
    m_busy = true;
    platform().yield();
}

void GenAcc::EndProgress()
{
    Control& close = (*this)[genacc::Command6];
    close.setCaption(CloseCaption);
    close.setBackColor(CloseColor);
    m_busy = false;
    (*this)[genacc::FProgress].setVisible(false);
    platform().yield();
    for (const QString& frame : genacc::TabFrames)
        (*this)[frame].setEnabled(true);
    platform().yield();
}

void GenAcc::setProgressText(const QString& text)
{
    (*this)[genacc::Label4].setCaption(text);
}

Control& GenAcc::progressBar()
{
    return (*this)[genacc::ProgressBar1];
}

Control& GenAcc::ticketGrid()
{
    return (*this)[genacc::PrintList];
}

void GenAcc::closeOrStop()
{
    if (busy())
        StopRequested = true;
    else
        unload();
}

// ---- load and activation ----------------------------------------------------------------------

void GenAcc::load()
{
    const SessionPreferences settings = m_session.settings();
    const QString currency = settings.text(keys::Currency);
    (*this)[genacc::lblCost].setCaption(QStringLiteral("Cost for each Ticket (in ") + currency + QStringLiteral("):"));
    for (const QString& list : {genacc::cboWeekday}) {
        (*this)[list].addItems(genacc::Weekdays);
        (*this)[list].setListIndex(0);
    }
    for (const QString& list : {genacc::cboExpiry, genacc::cboCustomExpiry, genacc::cboMemberExpiry})
        (*this)[list].addItems(ExpiryEntries);
    for (const QString& list : {genacc::cboHours,
             genacc::cboMinutes,
             genacc::cboCost,
             genacc::cboCustomHours,
             genacc::cboCustomMinutes,
             genacc::cboCustomCost,
             genacc::cboMemberHours,
             genacc::cboMemberMinutes,
             genacc::cboMemberCost})
        (*this)[list].addItem(QStringLiteral("0"));
    (*this)[genacc::cboPages].addItem(QStringLiteral("None"));
    (*this)[genacc::cboRechargePeriod].addItems({QStringLiteral("5 mins"),
        QStringLiteral("10 mins"),
        QStringLiteral("15 mins"),
        QStringLiteral("30 mins"),
        QStringLiteral("45 mins")});
    fillLists();
    reconcileInterruptedGroups(m_session.connection(), platform().now());
    loadLastBatch();

    Control& noPassList = (*this)[genacc::Check4];
    if (restricted()) {
        noPassList.setEnabled(false);
        noPassList.setValue(CheckState::Checked);
    } else {
        noPassList.setEnabled(true);
        noPassList.setValue(int(settings.number(keys::NoPassList)));
    }
    (*this)[genacc::chkNoList].setValue(int(settings.number(keys::NoList)));

    genacc::setTicketGridHeader((*this)[genacc::PrintList]);
    (*this)[genacc::PrintList].grid().setColAlignment(1, 1);
    (*this)[genacc::PrintList].grid().setColAlignment(2, 1);

    Control& sizeType = (*this)[genacc::cboSizeType];
    sizeType.addItems({QStringLiteral("Small Size"), QStringLiteral("Medium Size"), QStringLiteral("Large Size")});
    // The second test asks for 1 again, so "Medium Size" is never preselected.
    sizeType.setListIndex(settings.number(keys::PrintType.underTitle()) == 1 ? 0 : 2);

    loadQuickTickets();

    (*this)[genacc::cboTicketType].setText(QStringLiteral("None"));
    (*this)[genacc::cboPages].setListIndex(0);
    for (const QString& list : {genacc::cboCustomHours,
             genacc::cboCustomMinutes,
             genacc::cboCustomCost,
             genacc::cboMemberHours,
             genacc::cboMemberMinutes,
             genacc::cboMemberCost})
        (*this)[list].setListIndex(0);
    (*this)[genacc::cboRechargeDays].setListIndex(0);
    (*this)[genacc::cboRechargePeriod].setListIndex(0);

    // The settings tab shows the print type kept under the product word.
    const int printType = int(settings.number(keys::PrintType));
    const QString& printOption = printType == 1 ? genacc::optSmallPrint
        : printType == 2                        ? genacc::optMediumPrint
        : printType == 4                        ? genacc::optExport
                                                : genacc::optLargePrint;
    (*this)[printOption].setValue(1);

    (*this)[genacc::TabStrip1].setSelectedTab(1);
}

void GenAcc::fillLists()
{
    Control& number = (*this)[genacc::cboNumber];
    Control& pages = (*this)[genacc::cboPages];
    Control& rechargeDays = (*this)[genacc::cboRechargeDays];
    Control& rechargePeriod = (*this)[genacc::cboRechargePeriod];
    const QString minuteLists[] = {genacc::cboMinutes, genacc::cboCustomMinutes, genacc::cboMemberMinutes};
    const QString moneyLists[] = {genacc::cboCost, genacc::cboCustomCost, genacc::cboMemberCost};
    const QString dayLists[] = {genacc::txtDays, genacc::txtCustomDays, genacc::txtMemberDays};
    const QString hourLists[] = {genacc::cboHours, genacc::cboCustomHours, genacc::cboMemberHours};
    for (int i = 1; i <= 365; ++i) {
        const QString value = QString::number(i);
        number.addItem(value);
        if (i <= 100)
            pages.addItem(value + QStringLiteral(" Page(s)"));
        for (const QString& list : minuteLists) {
            if (i < 60)
                (*this)[list].addItem(value);
        }
        for (const QString& list : moneyLists) {
            if (i % 5 == 0)
                (*this)[list].addItem(value);
        }
        for (const QString& list : dayLists)
            (*this)[list].addItem(value);
        for (const QString& list : hourLists) {
            if (i <= 360)
                (*this)[list].addItem(value);
        }
        if (i < 15)
            rechargeDays.addItem(value + QStringLiteral(" day(s)"));
        if (i < 25)
            rechargePeriod.addItem(value + QStringLiteral(" hour(s)"));
        if (i % 2 == 0)
            platform().yield();
    }
}

void GenAcc::loadLastBatch()
{
    const SessionPreferences settings = m_session.settings();
    (*this)[genacc::cboNumber].setText(boundedSetting(settings.text(keys::Number), 10000, QStringLiteral("50")));
    (*this)[genacc::cboMinutes].setText(boundedSetting(settings.text(keys::Min), 60, QStringLiteral("0")));
    (*this)[genacc::cboHours].setText(boundedSetting(settings.text(keys::Hr), 101, QStringLiteral("0")));
    const QString amount = settings.text(keys::Amount);
    (*this)[genacc::cboCost].setText(values::isNumeric(amount) ? amount : QStringLiteral("50"));
}

void GenAcc::loadQuickTickets()
{
    SessionPreferences settings = m_session.settings();
    Control& vip = (*this)[genacc::chkVIP];
    Control& quick = (*this)[genacc::FQuick];
    Control& manual = (*this)[genacc::FManual];
    if (settings.number(keys::QuickTicket) != 1) {
        vip.setVisible(true);
        manual.setVisible(true);
        quick.setVisible(false);
        return;
    }
    // VIP then comes from the ticket type.
    vip.setVisible(false);
    quick.setVisible(true);
    manual.setVisible(false);
    Recordset types;
    types.Open(Statement(QStringLiteral("Select * from QuickT")), m_session.connection());
    Control& typeList = (*this)[genacc::cboTicketType];
    typeList.clear();
    if (types.RecordCount() > 0) {
        typeList.addItem(QStringLiteral("None"));
        for (types.MoveFirst(); !types.Eof(); types.MoveNext())
            typeList.addItem(types.value(QStringLiteral("TicketType")).toString());
    } else {
        manual.setVisible(true);
        quick.setVisible(false);
        settings.save(keys::QuickTicket, QStringLiteral("0"));
    }
}

void GenAcc::activate()
{
    const SessionPreferences settings = m_session.settings();
    const bool destructiveAllowed = !restricted();
    for (const QString& tool : {genacc::Command4, genacc::m_del, genacc::m_recharge})
        (*this)[tool].setEnabled(destructiveAllowed);

    const QString expire = settings.text(keys::Expire);
    const QString exlog = settings.text(keys::ExLog);
    int expiryEntry = 1;
    if (values::isNumeric(expire) && values::isNumeric(exlog) && settings.text(keys::ExType) == QLatin1String("1"))
        expiryEntry = 0;
    for (const QString& list : {genacc::cboExpiry, genacc::cboCustomExpiry, genacc::cboMemberExpiry})
        (*this)[list].setListIndex(expiryEntry);

    Control& period = (*this)[genacc::chkTimePeriod];
    period.setValue(CheckState::Unchecked);
    period.setEnabled(true);
    (*this)[genacc::chkCustomTimePeriod].setEnabled(true);
    (*this)[genacc::txtPrefix].setText(settings.text(keys::STR));

    Control& autoSave = (*this)[genacc::chkAutoSave];
    autoSave.setEnabled(true);
    autoSave.setValue(int(settings.number(keys::AutoSave)));

    Control& grid = (*this)[genacc::PrintList];
    const QString size = settings.text(keys::Size);
    const bool knownSize
        = QStringList {QStringLiteral("8"), QStringLiteral("10"), QStringLiteral("12"), QStringLiteral("14")}.contains(
            size);
    grid.setFont(settings.truth(keys::Bold), knownSize ? size.toInt() : grid.fontSize());

    setPickers({genacc::dtStart, genacc::dtCustomStart, genacc::dtMemberStart},
        {genacc::dtEnd, genacc::dtCustomEnd, genacc::dtMemberEnd});
    const QString currency = settings.text(keys::Currency);
    for (const QString& label : {genacc::lblCurrency, genacc::lblCustomCurrency, genacc::lblMemberCurrency})
        (*this)[label].setCaption(currency);
}

void GenAcc::setPickers(std::initializer_list<QString> starts, std::initializer_list<QString> ends)
{
    const SessionPreferences settings = m_session.settings();
    const QDate day = platform().today();
    const QTime begin = QTime::fromString(settings.text(keys::BeginTime), QStringLiteral("H:mm"));
    const QTime end = QTime::fromString(settings.text(keys::EndTime), QStringLiteral("H:mm"));
    const auto set = [this, day](const QString& picker, QTime time) {
        (*this)[picker].setCustomFormat(QStringLiteral("HH:mm"));
        (*this)[picker].setDateTime(QDateTime(day, time));
    };
    for (const QString& picker : starts)
        set(picker, begin.isValid() ? begin : QTime(0, 0));
    for (const QString& picker : ends)
        set(picker, end.isValid() ? end : QTime(6, 0));
}

// ---- tab changes, closing, help ---------------------------------------------------------------

void GenAcc::changeTab()
{
    const int tab = (*this)[genacc::TabStrip1].selectedTab();
    for (int i = 0; i < int(genacc::TabFrames.size()); ++i)
        (*this)[genacc::TabFrames[i]].setVisible(i + 1 == tab);
    if (tab == 2) {
        (*this)[genacc::lblCustomDays].setVisible(true);
        setFocus((*this)[genacc::txtCustomDays]);
    } else if (tab == 3) {
        (*this)[genacc::lblMemberDays].setVisible(true);
        setFocus((*this)[genacc::txtMemberDays]);
    } else if (tab == 5) {
        (*this)[genacc::cmdSaveChanges].setEnabled(false);
    }
}

void GenAcc::showHelp()
{
    platform().messageBox(QStringLiteral("This section of Norvantis is for generating tickets. You have to Randomly "
                                         "Generated ticket, Customize ticket and Membership ticket section. Check "
                                         "docs/README.md of your Marlet installation for more help?"),
        MsgStyle::Info);
}

// ---- preferences written by the screen --------------------------------------------------------

void GenAcc::savePrefix()
{
    SessionPreferences settings = m_session.settings();
    saveTicketPrefix(settings, m_session.connection(), (*this)[genacc::txtPrefix].text().toUpper());
}

void GenAcc::saveNightTime(bool start)
{
    const Control& picker = (*this)[start ? genacc::dtStart : genacc::dtEnd];
    const QString time = picker.dateTime().time().toString(QStringLiteral("HH:mm"));
    m_session.settings().save(start ? keys::BeginTime : keys::EndTime, time);
    Recordset options;
    if (!options.Open(Statement(QStringLiteral("Select * from Options")),
            m_session.connection(),
            CursorType::Static,
            LockType::Optimistic)
        || options.RecordCount() == 0)
        return; // an empty table is left alone on this path
    options.setValue(start ? QStringLiteral("NightTimeStart") : QStringLiteral("NightTimeEnd"), time);
    options.Update();
}

void GenAcc::saveSettingsTab()
{
    SessionPreferences settings = m_session.settings();
    const auto checked = [this](const QString& box) { return (*this)[box].ticked(); };
    settings.save(keys::NoList, checked(genacc::chkNoList) ? QStringLiteral("1") : QStringLiteral("0"));
    settings.save(keys::NoPassList, checked(genacc::Check4) ? QStringLiteral("1") : QStringLiteral("0"));
    const QString printType = checked(genacc::optSmallPrint) ? QStringLiteral("1")
        : checked(genacc::optMediumPrint)                    ? QStringLiteral("2")
        : checked(genacc::optExport)                         ? QStringLiteral("4")
                                                             : QStringLiteral("3");
    settings.save(keys::PrintType, printType);
    settings.save(keys::AutoSave, QString::number((*this)[genacc::chkAutoSave].value()));
    (*this)[genacc::cmdSaveChanges].setEnabled(false);
}

void GenAcc::openPrintSettings()
{
    std::unique_ptr<NamedComponent> sheets = platform().createComponent(QStringLiteral("Vellum.Sheets"));
    if (!sheets)
        return;
    sheets->callWithConnection(QStringLiteral("LoadPrintSettings"), m_session.connection(), {false});
    (*this)[genacc::txtPrefix].setText(m_session.settings().text(keys::STR).left(3));
    loadQuickTickets();
    setPickers({genacc::dtStart}, {genacc::dtEnd});
}

void GenAcc::printExistingTickets()
{
    // The report component lets the operator choose the tickets; a failure there ends without a word.
    std::unique_ptr<NamedComponent> sheets = platform().createComponent(QStringLiteral("Vellum.Sheets"));
    if (sheets)
        sheets->callWithConnection(
            QStringLiteral("PrintPreview"), m_session.connection(), {m_session.general.ServerPath});
}

} // namespace marlet
