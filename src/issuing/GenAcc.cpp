#include "issuing/GenAcc.h"

#include "inventory/TicketDeletion.h"
#include "inventory/TicketListing.h"
#include "issuing/BatchGeneration.h"
#include "issuing/CustomTicket.h"
#include "issuing/GenAccControls.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "printing/SheetSettings.h"
#include "shell/General.h"
#include "shell/Screens.h"
#include "store/Recordset.h"
#include "values/Numbers.h"

namespace marlet {


namespace {

const QString StopCaption = QStringLiteral("Stop");
const QString CloseCaption = QStringLiteral("Clo&se");
constexpr int StopColor = 255;
constexpr int CloseColor = 16744576;
constexpr int FrameCount = 5;
const char* const FrameNames[FrameCount] = {"FNew", "FCustom", "FMember", "FExist", "FSetting"};

const QStringList Weekdays = {QStringLiteral("SUN - SAT (ALL DAYS)"),
                              QStringLiteral("SUNDAY"),
                              QStringLiteral("MONDAY"),
                              QStringLiteral("TUESDAY"),
                              QStringLiteral("WEDNESDAY"),
                              QStringLiteral("THURSDAY"),
                              QStringLiteral("FRIDAY"),
                              QStringLiteral("SATURDAY"),
                              QStringLiteral("MON - FRI (WEEKDAY)"),
                              QStringLiteral("SAT - SUN (WEEKEND)")};

const QStringList ExpiryEntries = {QStringLiteral("Fixed Expiration Date"),
                                   QStringLiteral("Flexible Expiration Date"),
                                   QStringLiteral("Never Expire")};

QString id(const char* text)
{
    return QLatin1String(text);
}

// A value from the preference store if it is numeric and below the limit, else the fallback.
QString boundedSetting(const QString& stored, double limit, const QString& fallback)
{
    return values::isNumeric(stored) && values::leadingNumber(stored) < limit ? stored : fallback;
}

} // namespace

GenAcc::GenAcc(General& session)
    : Form(session.platform, QStringLiteral("GenAcc"))
    , m_session(session)
{
}

GenAcc::~GenAcc() = default;

bool GenAcc::restricted() const
{
    return m_session.restrictedByAdminPower();
}

bool GenAcc::busy() const
{
    return (*this)[id("Command6")].caption() == StopCaption;
}

void GenAcc::resetTicketGrid()
{
    GridData& grid = (*this)[id("PrintList")].grid();
    grid.setColSel(0);
    grid.setRows(1);
}

// ---- building -------------------------------------------------------------------------------

void GenAcc::build()
{
    setCaption(QStringLiteral("Generate Ticket"));
    setSize(10800, 7800);
    buildFrame();
    onLoad = [this] { load(); };
    onActivate = [this] { activate(); };
    onQueryUnload = [this](bool& cancel, int) {
        if (busy())
            cancel = true;
    };
    onUnload = [this](bool&) { m_session.SecondStaff.clear(); };
}

void GenAcc::buildFrame()
{
    Control& tabs = add(ControlKind::TabStrip, id("TabStrip1"));
    tabs.addItems({QStringLiteral("New Ticket"),
                   QStringLiteral("Custom Ticket"),
                   QStringLiteral("Membership Ticket"),
                   QStringLiteral("Existing Ticket"),
                   QStringLiteral("Settings")});
    tabs.onBeforeClick = [this](bool& cancel) { cancel = busy(); };
    tabs.onClick = [this] { changeTab(); };

    // The grid every tab lists its tickets in.
    genacc::setTicketGridHeader(add(ControlKind::Grid, id("PrintList")));
    buildNewTab(add(ControlKind::Frame, id("FNew")));
    buildCustomTab(add(ControlKind::Frame, id("FCustom")));
    buildMemberTab(add(ControlKind::Frame, id("FMember")));
    buildExistingTab(add(ControlKind::Frame, id("FExist")));
    buildSettingsTab(add(ControlKind::Frame, id("FSetting")));

    buildProgressPanel();

    // Labelled by its resting caption, so that it is found by that name while it reads "Stop" too.
    Control& close = addLabelled(ControlKind::CommandButton, id("Command6"), CloseCaption);
    close.setBackColor(CloseColor);
    close.onClick = [this] { closeOrStop(); };
    addLabelled(ControlKind::CommandButton, id("cmdHelp"), QStringLiteral("&Help")).onClick = [this] { showHelp(); };
}

void GenAcc::buildNewTab(Control& frame)
{
    Control& manual = addToFrame(frame, ControlKind::Frame, id("FManual"));
    Control& number = addToFrame(manual, ControlKind::ComboBox, id("cboNumber"), QStringLiteral("Number of Ticket(s):"));
    Control& hours = addToFrame(manual, ControlKind::ComboBox, id("cboHours"), QStringLiteral("Hours:"));
    Control& minutes = addToFrame(manual, ControlKind::ComboBox, id("cboMinutes"), QStringLiteral("Min(s):"));
    addToFrame(manual, ControlKind::Label, id("lblCost"));
    addToFrame(manual, ControlKind::Label, id("lblCurrency"));
    Control& cost = addToFrame(manual, ControlKind::ComboBox, id("cboCost"), QStringLiteral("Cost for each Ticket:"));
    for (Control* field : {&number, &hours, &minutes, &cost}) {
        field->setEditable(true);
        genacc::filterNumericKeys(*field);
    }
    number.onLostFocus = [this, &number] {
        if (!values::isNumeric(number.text())) {
            number.setText(QStringLiteral("50"));
            platform().messageBox(QStringLiteral("A numeric Value is required! (eg. 123)"), MsgStyle::Warning);
        } else if (values::leadingNumber(number.text()) > 999) {
            platform().messageBox(QStringLiteral("You can't generate more than 999 tickets at a time!"),
                                  MsgStyle::Warning);
            number.setText(QStringLiteral("999"));
        }
    };
    number.onDropDown = [this, &number] {
        if (number.listCount() >= 366)
            return;
        for (int i = 370; i <= 995; i += 5) {
            number.addItem(QString::number(i));
            platform().yield();
        }
    };
    genacc::wireHoursCheck(*this, hours);
    genacc::wireCostList(*this, cost);

    Control& quick = addToFrame(frame, ControlKind::Frame, id("FQuick"), QStringLiteral("Quick-Ticket"));
    // Its text reads "None" before a type is picked, so it takes text beside its entries.
    addToFrame(quick, ControlKind::ComboBox, id("cboTicketType"), QStringLiteral("Ticket Type:")).setEditable(true);
    addToFrame(quick, ControlKind::ComboBox, id("cboPages"), QStringLiteral("No. of Pages:"));
    addToFrame(quick, ControlKind::ComboBox, id("cboSizeType"), QStringLiteral("Ticket Size Type:"));

    Control& expiry = addToFrame(frame, ControlKind::ComboBox, id("cboExpiry"), QStringLiteral("Expiration:"));
    Control& days = addToFrame(frame, ControlKind::ComboBox, id("txtDays"), QStringLiteral("Days:"));
    Control& daysLabel = addToFrame(frame, ControlKind::Label, id("lblDays"), QStringLiteral("day(s)"));
    days.setEditable(true);
    genacc::filterNumericKeys(days);
    genacc::wireExpiry(*this, expiry, days, daysLabel);

    Control& prefix = addToFrame(frame, ControlKind::TextBox, id("txtPrefix"), QStringLiteral("Ticket Prefix:"));
    prefix.setToolTip(QStringLiteral("This will make up the first digits contained in your ticket."));
    prefix.onChange = [this] { savePrefix(); };
    prefix.onLostFocus = [this, &prefix] {
        if (prefix.text().isEmpty())
            prefix.setText(m_session.settings().text(keys::STR));
    };

    Control& vip = addToFrame(frame, ControlKind::CheckBox, id("chkVIP"), QStringLiteral("Make Ticket(s) in VIP"));
    genacc::wireVip(*this, vip, nullptr);
    // On the screen, read by nothing.
    addToFrame(frame, ControlKind::CheckBox, id("chkFlex"), QStringLiteral("Make Ticket(s) in FlexTicket"));
    Control& period = addToFrame(frame, ControlKind::CheckBox, id("chkTimePeriod"),
                            QStringLiteral("Use ticket(s) within Time Period"));
    Control& once = addToFrame(frame, ControlKind::CheckBox, id("chkOnce"),
                          QStringLiteral("Use Ticket Only &Once (i.e. Night Ticket)"));
    Control& start = addToFrame(frame, ControlKind::DateTimePicker, id("dtStart"), QStringLiteral("Start Time:"));
    Control& end = addToFrame(frame, ControlKind::DateTimePicker, id("dtEnd"), QStringLiteral("End Time:"));
    genacc::wireTimePeriod(period, &once, start, end);
    start.onChange = [this] { saveNightTime(true); };
    end.onChange = [this] { saveNightTime(false); };

    addToFrame(frame, ControlKind::CommandButton, id("cmdGenerate"), QStringLiteral("&Generate New Ticket(s)"))
        .onClick = [this] { BatchGeneration(*this).run(); };
}

void GenAcc::buildCustomTab(Control& frame)
{
    Control& user = addToFrame(frame, ControlKind::TextBox, id("txtCustomUsername"), QStringLiteral("Ticket Username:"));
    Control& password = addToFrame(frame, ControlKind::TextBox, id("txtCustomPassword"),
                              QStringLiteral("Ticket Password:"));
    user.setMaxLength(10);
    for (Control* field : {&user, &password})
        genacc::filterTicketTextKeys(*field);
    Control& hours = addToFrame(frame, ControlKind::ComboBox, id("cboCustomHours"), QStringLiteral("Hours:"));
    Control& minutes = addToFrame(frame, ControlKind::ComboBox, id("cboCustomMinutes"), QStringLiteral("Min(s):"));
    Control& cost = addToFrame(frame, ControlKind::ComboBox, id("cboCustomCost"), QStringLiteral("Cost Per Ticket:"));
    addToFrame(frame, ControlKind::Label, id("lblCustomCurrency"));
    for (Control* field : {&hours, &minutes, &cost}) {
        field->setEditable(true);
        genacc::filterNumericKeys(*field);
    }
    genacc::wireHoursCheck(*this, hours);
    genacc::wireCostList(*this, cost);

    Control& expiry = addToFrame(frame, ControlKind::ComboBox, id("cboCustomExpiry"), QStringLiteral("Expiration:"));
    Control& days = addToFrame(frame, ControlKind::ComboBox, id("txtCustomDays"), QStringLiteral("Days:"));
    Control& daysLabel = addToFrame(frame, ControlKind::Label, id("lblCustomDays"), QStringLiteral("day(s)"));
    days.setEditable(true);
    genacc::filterNumericKeys(days);
    genacc::wireExpiry(*this, expiry, days, daysLabel);

    // On the screen, read by nothing.
    addToFrame(frame, ControlKind::CheckBox, id("chkCustomFlex"), QStringLiteral("Make Ticket into FlexTicket"));
    Control& vip = addToFrame(frame, ControlKind::CheckBox, id("chkCustomVIP"), QStringLiteral("Make ticket into VIP"));
    genacc::wireVip(*this, vip, &user);
    Control& period = addToFrame(frame, ControlKind::CheckBox, id("chkCustomTimePeriod"),
                            QStringLiteral("Use ticket within Time Period"));
    Control& once = addToFrame(frame, ControlKind::CheckBox, id("chkCustomOnce"), QStringLiteral("Use Ticket Only &Once"));
    Control& start = addToFrame(frame, ControlKind::DateTimePicker, id("dtCustomStart"), QStringLiteral("Start Time:"));
    Control& end = addToFrame(frame, ControlKind::DateTimePicker, id("dtCustomEnd"), QStringLiteral("End Time:"));
    genacc::wireTimePeriod(period, &once, start, end);
    addToFrame(frame, ControlKind::CommandButton, id("cmdCreateCustom"), QStringLiteral("Create a Customized New Ticket"))
        .onClick = [this] { CustomTicket(*this).run(); };
}

void GenAcc::buildMemberTab(Control& frame)
{
    Control& user = addToFrame(frame, ControlKind::TextBox, id("txtMemberUsername"), QStringLiteral("Ticket Username:"));
    Control& password = addToFrame(frame, ControlKind::TextBox, id("txtMemberPassword"),
                              QStringLiteral("Ticket Password:"));
    user.setMaxLength(10);
    for (Control* field : {&user, &password})
        genacc::filterTicketTextKeys(*field);

    Control& useTime = addToFrame(frame, ControlKind::CheckBox, id("chkUseTime"), QStringLiteral("Use Time"));
    Control& hours = addToFrame(frame, ControlKind::ComboBox, id("cboMemberHours"), QStringLiteral("Hours:"));
    Control& minutes = addToFrame(frame, ControlKind::ComboBox, id("cboMemberMinutes"), QStringLiteral("Min(s):"));
    Control& cost = addToFrame(frame, ControlKind::ComboBox, id("cboMemberCost"), QStringLiteral("Cost for Ticket:"));
    addToFrame(frame, ControlKind::Label, id("lblMemberCurrency"));
    for (Control* field : {&hours, &minutes, &cost}) {
        field->setEditable(true);
        genacc::filterNumericKeys(*field);
    }
    genacc::wireHoursCheck(*this, hours);
    genacc::wireCostList(*this, cost);

    Control& recharge = addToFrame(frame, ControlKind::CheckBox, id("chkRecharge"), QStringLiteral("Recharge Ticket every"));
    Control& rechargeDays = addToFrame(frame, ControlKind::ComboBox, id("cboRechargeDays"));
    Control& rechargePeriod = addToFrame(frame, ControlKind::ComboBox, id("cboRechargePeriod"));
    recharge.onClick = [&recharge, &rechargeDays, &rechargePeriod] {
        const bool ticked = recharge.value() == CheckState::Checked;
        rechargeDays.setEnabled(ticked);
        rechargePeriod.setEnabled(ticked);
    };
    useTime.onClick = [&useTime, &recharge, &hours, &minutes, &rechargeDays, &rechargePeriod] {
        const bool ticked = useTime.value() == CheckState::Checked;
        for (Control* field : {&recharge, &hours, &minutes})
            field->setEnabled(ticked);
        const bool listsOn = ticked && recharge.value() == CheckState::Checked;
        rechargeDays.setEnabled(listsOn);
        rechargePeriod.setEnabled(listsOn);
    };
    // The boxes start cleared, and their fields as a cleared box leaves them.
    useTime.fireClick();

    Control& expiry = addToFrame(frame, ControlKind::ComboBox, id("cboMemberExpiry"), QStringLiteral("Expiration:"));
    Control& days = addToFrame(frame, ControlKind::ComboBox, id("txtMemberDays"), QStringLiteral("Days:"));
    Control& daysLabel = addToFrame(frame, ControlKind::Label, id("lblMemberDays"), QStringLiteral("day(s)"));
    days.setEditable(true);
    genacc::filterNumericKeys(days);
    genacc::wireExpiry(*this, expiry, days, daysLabel);

    Control& vip = addToFrame(frame, ControlKind::CheckBox, id("chkMemberVIP"), QStringLiteral("Make ticket in VIP"));
    genacc::wireVip(*this, vip, &user);
    Control& period = addToFrame(frame, ControlKind::CheckBox, id("chkMemberTimePeriod"),
                            QStringLiteral("Use ticket within Time Period"));
    addToFrame(frame, ControlKind::ComboBox, id("cboWeekday"), QStringLiteral("Use only on this Day of the Week:"));
    Control& start = addToFrame(frame, ControlKind::DateTimePicker, id("dtMemberStart"), QStringLiteral("Start Time:"));
    Control& end = addToFrame(frame, ControlKind::DateTimePicker, id("dtMemberEnd"), QStringLiteral("End Time:"));
    genacc::wireTimePeriod(period, nullptr, start, end);
    addToFrame(frame, ControlKind::CommandButton, id("cmdCreateMember"), QStringLiteral("Create a Membership Ticket >>"));
}

void GenAcc::buildExistingTab(Control& frame)
{
    TicketListing::build(*this, frame);
    addToFrame(frame, ControlKind::CommandButton, id("Command4"), QStringLiteral("&Delete Selection")).onClick = [this] {
        TicketDeletion(*this).deleteSelection();
    };
    Control& printExisting =
        addToFrame(frame, ControlKind::CommandButton, id("cmdPrintExisting"), QStringLiteral("&Print Existing Ticket"));
    printExisting.setToolTip(QStringLiteral("Print existing tickets"));
    printExisting.onClick = [this] { printExistingTickets(); };
    addToFrame(frame, ControlKind::CommandButton, id("Command10"), QStringLiteral("Recycle &Bin")).onClick = [this] {
        openRecycleBin();
    };
}

void GenAcc::buildSettingsTab(Control& frame)
{
    Control& autoSave = addToFrame(frame, ControlKind::CheckBox, id("chkAutoSave"),
                              QStringLiteral("Automatically &Save Generated Tickets"));
    Control& noList = addToFrame(frame, ControlKind::CheckBox, id("chkNoList"),
                            QStringLiteral("Don't Display Ticket(s) when Generating"));
    Control& noPassList = addToFrame(frame, ControlKind::CheckBox, id("Check4"),
                                QStringLiteral("Don't Show Password of Ticket(s) when Listing"));
    Control& sizes = addToFrame(frame, ControlKind::Frame, id("FPrintSize"), QStringLiteral("Ticket Print Size"));
    Control& small = addToFrame(sizes, ControlKind::OptionButton, id("optSmallPrint"), QStringLiteral("Small Print"));
    Control& medium = addToFrame(sizes, ControlKind::OptionButton, id("optMediumPrint"), QStringLiteral("Medium Print"));
    Control& large = addToFrame(sizes, ControlKind::OptionButton, id("optLargePrint"), QStringLiteral("Large Print"));
    Control& exportFile = addToFrame(sizes, ControlKind::OptionButton, id("optExport"), QStringLiteral("Export to File"));
    addToFrame(frame, ControlKind::CommandButton, id("cmdPrintSettings"),
          QStringLiteral("More Ticket, Quick-Ticket, FlexTicket Settings"))
        .onClick = [this] { openPrintSettings(); };
    Control& save = addToFrame(frame, ControlKind::CommandButton, id("cmdSaveChanges"), QStringLiteral("Save Changes"));
    save.onClick = [this] { saveSettingsTab(); };

    // Any change on this tab enables "Save Changes", but only while the tab is showing.
    for (Control* box : {&autoSave, &noList, &noPassList, &small, &medium, &large, &exportFile}) {
        box->onClick = [this, &save] {
            if ((*this)[id("FSetting")].visible())
                save.setEnabled(true);
        };
    }
}

void GenAcc::buildProgressPanel()
{
    Control& panel = add(ControlKind::Frame, id("FProgress"));
    panel.setVisible(false);
    panel.setGeometry(240, 3000, 6000, 600);
    Control& label = add(ControlKind::Label, id("Label4"));
    label.setContainer(&panel);
    Control& bar = add(ControlKind::ProgressBar, id("ProgressBar1"));
    bar.setContainer(&panel);
}

// ---- progress panel ---------------------------------------------------------------------------

void GenAcc::ProgressAdjust()
{
    // The bar starts just after the label's text and fills the panel's width.
    Control& panel = (*this)[id("FProgress")];
    Control& label = (*this)[id("Label4")];
    Control& bar = (*this)[id("ProgressBar1")];
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
    (*this)[id("Label4")].setCaption(QStringLiteral("Processing .... Please wait "));
    ProgressAdjust();
    for (const char* frame : FrameNames)
        (*this)[id(frame)].setEnabled(false);
    platform().yield();
    Control& panel = (*this)[id("FProgress")];
    panel.setWidth(qMax(panel.width(), 9000));
    panel.setVisible(true);
    Control& close = (*this)[id("Command6")];
    close.setCaption(StopCaption);
    close.setBackColor(StopColor);
    platform().yield();
}

void GenAcc::EndProgress()
{
    Control& close = (*this)[id("Command6")];
    close.setCaption(CloseCaption);
    close.setBackColor(CloseColor);
    (*this)[id("FProgress")].setVisible(false);
    platform().yield();
    for (const char* frame : FrameNames)
        (*this)[id(frame)].setEnabled(true);
    platform().yield();
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
    (*this)[id("lblCost")].setCaption(QStringLiteral("Cost for each Ticket (in ") + currency + QStringLiteral("):"));
    for (const char* list : {"cboWeekday"}) {
        (*this)[id(list)].addItems(Weekdays);
        (*this)[id(list)].setListIndex(0);
    }
    for (const char* list : {"cboExpiry", "cboCustomExpiry", "cboMemberExpiry"})
        (*this)[id(list)].addItems(ExpiryEntries);
    for (const char* list : {"cboHours", "cboMinutes", "cboCost", "cboCustomHours", "cboCustomMinutes", "cboCustomCost",
                             "cboMemberHours", "cboMemberMinutes", "cboMemberCost"})
        (*this)[id(list)].addItem(QStringLiteral("0"));
    (*this)[id("cboPages")].addItem(QStringLiteral("None"));
    (*this)[id("cboRechargePeriod")].addItems({QStringLiteral("5 mins"),
                                                 QStringLiteral("10 mins"),
                                                 QStringLiteral("15 mins"),
                                                 QStringLiteral("30 mins"),
                                                 QStringLiteral("45 mins")});
    fillLists();
    loadLastBatch();

    Control& noPassList = (*this)[id("Check4")];
    if (restricted()) {
        noPassList.setEnabled(false);
        noPassList.setValue(CheckState::Checked);
    } else {
        noPassList.setEnabled(true);
        noPassList.setValue(int(settings.number(keys::NoPassList)));
    }
    (*this)[id("chkNoList")].setValue(int(settings.number(keys::NoList)));

    genacc::setTicketGridHeader((*this)[id("PrintList")]);
    (*this)[id("PrintList")].grid().setColAlignment(1, 1);
    (*this)[id("PrintList")].grid().setColAlignment(2, 1);

    Control& sizeType = (*this)[id("cboSizeType")];
    sizeType.addItems({QStringLiteral("Small Size"), QStringLiteral("Medium Size"), QStringLiteral("Large Size")});
    // The second test asks for 1 again, so "Medium Size" is never preselected.
    sizeType.setListIndex(settings.number(keys::PrintType.underTitle()) == 1 ? 0 : 2);

    loadQuickTickets();

    (*this)[id("cboTicketType")].setText(QStringLiteral("None"));
    (*this)[id("cboPages")].setListIndex(0);
    for (const char* list : {"cboCustomHours", "cboCustomMinutes", "cboCustomCost", "cboMemberHours",
                             "cboMemberMinutes", "cboMemberCost"})
        (*this)[id(list)].setListIndex(0);
    (*this)[id("cboRechargeDays")].setListIndex(0);
    (*this)[id("cboRechargePeriod")].setListIndex(0);

    // The settings tab shows the print type kept under the product word.
    const int printType = int(settings.number(keys::PrintType));
    const char* printOption = printType == 1   ? "optSmallPrint"
                              : printType == 2 ? "optMediumPrint"
                              : printType == 4 ? "optExport"
                                               : "optLargePrint";
    (*this)[id(printOption)].setValue(1);

    (*this)[id("TabStrip1")].setSelectedTab(1);
}

void GenAcc::fillLists()
{
    Control& number = (*this)[id("cboNumber")];
    Control& pages = (*this)[id("cboPages")];
    Control& rechargeDays = (*this)[id("cboRechargeDays")];
    Control& rechargePeriod = (*this)[id("cboRechargePeriod")];
    const char* minuteLists[] = {"cboMinutes", "cboCustomMinutes", "cboMemberMinutes"};
    const char* moneyLists[] = {"cboCost", "cboCustomCost", "cboMemberCost"};
    const char* dayLists[] = {"txtDays", "txtCustomDays", "txtMemberDays"};
    const char* hourLists[] = {"cboHours", "cboCustomHours", "cboMemberHours"};
    for (int i = 1; i <= 365; ++i) {
        const QString value = QString::number(i);
        number.addItem(value);
        if (i <= 100)
            pages.addItem(value + QStringLiteral(" Page(s)"));
        for (const char* list : minuteLists) {
            if (i < 60)
                (*this)[id(list)].addItem(value);
        }
        for (const char* list : moneyLists) {
            if (i % 5 == 0)
                (*this)[id(list)].addItem(value);
        }
        for (const char* list : dayLists)
            (*this)[id(list)].addItem(value);
        for (const char* list : hourLists) {
            if (i <= 360)
                (*this)[id(list)].addItem(value);
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
    (*this)[id("cboNumber")].setText(boundedSetting(settings.text(keys::Number), 10000, QStringLiteral("50")));
    (*this)[id("cboMinutes")].setText(boundedSetting(settings.text(keys::Min), 60, QStringLiteral("0")));
    (*this)[id("cboHours")].setText(boundedSetting(settings.text(keys::Hr), 101, QStringLiteral("0")));
    const QString amount = settings.text(keys::Amount);
    (*this)[id("cboCost")].setText(values::isNumeric(amount) ? amount : QStringLiteral("50"));
}

void GenAcc::loadQuickTickets()
{
    SessionPreferences settings = m_session.settings();
    Control& vip = (*this)[id("chkVIP")];
    Control& quick = (*this)[id("FQuick")];
    Control& manual = (*this)[id("FManual")];
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
    Control& typeList = (*this)[id("cboTicketType")];
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
    for (const char* tool : {"Command4", "m_del", "m_recharge"})
        (*this)[id(tool)].setEnabled(destructiveAllowed);

    const QString expire = settings.text(keys::Expire);
    const QString exlog = settings.text(keys::ExLog);
    int expiryEntry = 1;
    if (values::isNumeric(expire) && values::isNumeric(exlog) && settings.text(keys::ExType) == QLatin1String("1"))
        expiryEntry = 0;
    for (const char* list : {"cboExpiry", "cboCustomExpiry", "cboMemberExpiry"})
        (*this)[id(list)].setListIndex(expiryEntry);

    Control& period = (*this)[id("chkTimePeriod")];
    period.setValue(CheckState::Unchecked);
    period.setEnabled(true);
    (*this)[id("chkCustomTimePeriod")].setEnabled(true);
    (*this)[id("txtPrefix")].setText(settings.text(keys::STR));

    Control& autoSave = (*this)[id("chkAutoSave")];
    autoSave.setEnabled(true);
    autoSave.setValue(int(settings.number(keys::AutoSave)));

    Control& grid = (*this)[id("PrintList")];
    const QString size = settings.text(keys::Size);
    const bool knownSize = QStringList{QStringLiteral("8"), QStringLiteral("10"), QStringLiteral("12"), QStringLiteral("14")}
                               .contains(size);
    grid.setFont(settings.truth(keys::Bold), knownSize ? size.toInt() : grid.fontSize());

    setPickers({"dtStart", "dtCustomStart", "dtMemberStart"}, {"dtEnd", "dtCustomEnd", "dtMemberEnd"});
    const QString currency = settings.text(keys::Currency);
    for (const char* label : {"lblCurrency", "lblCustomCurrency", "lblMemberCurrency"})
        (*this)[id(label)].setCaption(currency);
}

void GenAcc::setPickers(std::initializer_list<const char*> starts, std::initializer_list<const char*> ends)
{
    const SessionPreferences settings = m_session.settings();
    const QDate day = platform().today();
    const QTime begin = QTime::fromString(settings.text(keys::BeginTime), QStringLiteral("H:mm"));
    const QTime end = QTime::fromString(settings.text(keys::EndTime), QStringLiteral("H:mm"));
    const auto set = [this, day](const char* picker, QTime time) {
        (*this)[id(picker)].setCustomFormat(QStringLiteral("HH:mm"));
        (*this)[id(picker)].setDateTime(QDateTime(day, time));
    };
    for (const char* picker : starts)
        set(picker, begin.isValid() ? begin : QTime(0, 0));
    for (const char* picker : ends)
        set(picker, end.isValid() ? end : QTime(6, 0));
}

// ---- tab changes, closing, help ---------------------------------------------------------------

void GenAcc::changeTab()
{
    const int tab = (*this)[id("TabStrip1")].selectedTab();
    for (int i = 0; i < FrameCount; ++i)
        (*this)[id(FrameNames[i])].setVisible(i + 1 == tab);
    if (tab == 2) {
        (*this)[id("lblCustomDays")].setVisible(true);
        setFocus((*this)[id("txtCustomDays")]);
    } else if (tab == 3) {
        (*this)[id("lblMemberDays")].setVisible(true);
        setFocus((*this)[id("txtMemberDays")]);
    } else if (tab == 5) {
        (*this)[id("cmdSaveChanges")].setEnabled(false);
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
    saveTicketPrefix(settings, m_session.connection(), (*this)[id("txtPrefix")].text().toUpper());
}

void GenAcc::saveNightTime(bool start)
{
    const Control& picker = (*this)[id(start ? "dtStart" : "dtEnd")];
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
    const auto checked = [this](const char* box) { return (*this)[id(box)].value() == CheckState::Checked; };
    settings.save(keys::NoList, checked("chkNoList") ? QStringLiteral("1") : QStringLiteral("0"));
    settings.save(keys::NoPassList, checked("Check4") ? QStringLiteral("1") : QStringLiteral("0"));
    const QString printType = checked("optSmallPrint")    ? QStringLiteral("1")
                              : checked("optMediumPrint") ? QStringLiteral("2")
                              : checked("optExport")      ? QStringLiteral("4")
                                                          : QStringLiteral("3");
    settings.save(keys::PrintType, printType);
    settings.save(keys::AutoSave, QString::number((*this)[id("chkAutoSave")].value()));
    (*this)[id("cmdSaveChanges")].setEnabled(false);
}

void GenAcc::openPrintSettings()
{
    std::unique_ptr<NamedComponent> sheets = platform().createComponent(QStringLiteral("Vellum.Sheets"));
    if (!sheets)
        return;
    sheets->callWithConnection(QStringLiteral("LoadPrintSettings"), m_session.connection(), {false});
    (*this)[id("txtPrefix")].setText(m_session.settings().text(keys::STR).left(3));
    loadQuickTickets();
    setPickers({"dtStart"}, {"dtEnd"});
}

void GenAcc::printExistingTickets()
{
    // The report component lets the operator choose the tickets; a failure there ends without a word.
    std::unique_ptr<NamedComponent> sheets = platform().createComponent(QStringLiteral("Vellum.Sheets"));
    if (sheets)
        sheets->callWithConnection(QStringLiteral("PrintPreview"), m_session.connection(), {m_session.ServerPath});
}

void GenAcc::openRecycleBin()
{
    createScreen(QStringLiteral("RecycleBin"), m_session)->showModal();
}

} // namespace marlet
