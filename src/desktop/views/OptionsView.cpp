#include "desktop/views/OptionsView.h"

#include "desktop/views/ViewKit.h"
#include "platform/Form.h"
#include "platform/Operator.h"
#include "screens/OptionsNames.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QSlider>

#include <algorithm>

#include <functional>

namespace marlet::views {

namespace {

constexpr int shortFieldWidth = 60;
constexpr int portFieldWidth = 70;
constexpr int bindFieldWidth = 170;
constexpr int settingsFieldWidth = 70;
constexpr int explanationHeight = 48;
constexpr int swatchWidth = 40;
constexpr int swatchHeight = 22;
constexpr int restrictionListHeight = 120;
constexpr int restrictionFieldWidth = 140;
constexpr int columnSpacing = 12;
constexpr int accountFieldWidth = 150;
constexpr int spinnerWidth = 60;
constexpr int textFieldWidth = 260;
constexpr int rightsListWidth = 190;
constexpr int usersListWidth = 150;
constexpr int quickListWidth = 240;
constexpr int listHeight = 200;

QWidget* sized(QWidget* field, int width)
{
    if (field)
        field->setFixedWidth(width);
    return field;
}

QVBoxLayout* column(ViewKit& kit, QWidget* parent, std::initializer_list<QString> names)
{
    auto* box = new QVBoxLayout;
    for (const QString& name : names)
        addAll(*box, {kit.make(name, parent)});
    return box;
}

// Prefix, currency, the switches towards the clients, and the adaptor to bind to.
QVBoxLayout* serverColumn(ViewKit& kit, QWidget* page)
{
    auto* left = new QVBoxLayout;
    QFormLayout* codes = formLayout();
    sized(kit.addRow(*codes, options::txtPrefix, page), shortFieldWidth);
    sized(kit.addRow(*codes, options::txtCurrency, page), shortFieldWidth);
    left->addLayout(codes);
    left->addLayout(column(kit,
        page,
        {options::chkSetTime, options::chkShutDownClients, options::chkCheckConnection, options::chkSameIP}));
    left->addSpacing(8);
    // The adaptor's caption is long: it stands above its list and the text beside it.
    QLabel* caption = kit.caption(options::cboBindType, page);
    QWidget* list = kit.make(options::cboBindType, page);
    if (caption)
        caption->setBuddy(list);
    addAll(*left, {caption});
    left->addLayout(line({list, sized(kit.make(options::txtBindType, page), bindFieldWidth)}));
    left->addStretch(1);
    return left;
}

QGroupBox* passGenFrame(ViewKit& kit, QWidget* page)
{
    auto* frame = kit.frame(options::FPassGenType, new QGroupBox(page));
    auto* options = new QHBoxLayout(frame);
    addAll(*options,
        {kit.make(options::optNumberOnly, frame),
            kit.make(options::optAlphabetOnly, frame),
            kit.make(options::optBoth, frame)});
    options->addStretch(1);
    return frame;
}

QGroupBox* portFrame(ViewKit& kit, QWidget* page)
{
    auto* frame = kit.frame(options::FServerPort, new QGroupBox(page));
    auto* rows = new QVBoxLayout(frame);
    addAll(*rows, {kit.make(options::optDefaultPort, frame)});
    rows->addLayout(
        line({kit.make(options::optOtherPort, frame), sized(kit.make(options::txtServerPort, frame), portFieldWidth)}));
    addAll(*rows, {kit.label(options::lblPortNote, frame)});
    return frame;
}

// Characters of generated tickets, the port, start-up and the login limit.
QVBoxLayout* ticketColumn(ViewKit& kit, QWidget* page)
{
    auto* right = new QVBoxLayout;
    addAll(*right, {passGenFrame(kit, page), portFrame(kit, page)});
    right->addLayout(column(kit, page, {options::chkLoadStart, options::chkFrontDesk, options::chkSiteDate}));
    right->addLayout(
        line({kit.make(options::chkLogLimit, page), sized(kit.make(options::txtLogLimit, page), shortFieldWidth)}));
    right->addStretch(1);
    return right;
}

QWidget* generalPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FGeneral, new QWidget(area));
    auto* columns = new QHBoxLayout(page);
    columns->addLayout(serverColumn(kit, page));
    columns->addSpacing(24);
    columns->addLayout(ticketColumn(kit, page));
    return page;
}

// Client Option: the tick list on the left; the explanation, the colour and the buttons on the right.
QHBoxLayout* clientSettingsRow(ViewKit& kit, QWidget* page)
{
    auto* row = new QHBoxLayout;
    auto* settings = kit.frame(options::FClientSettings, new QGroupBox(page));
    auto* settingsBox = new QVBoxLayout(settings);
    if (QWidget* list = kit.make(options::lstClientSettings, settings)) {
        // The frame's caption turns red while the list has the focus; the entries keep their colour.
        QPalette own = list->palette();
        own.setColor(QPalette::Text, own.color(QPalette::Text));
        own.setColor(QPalette::WindowText, own.color(QPalette::WindowText));
        list->setPalette(own);
        settingsBox->addWidget(list);
    }
    row->addWidget(settings, 3);

    auto* right = new QVBoxLayout;
    auto* explanation = kit.frame(options::FExplanation, new QGroupBox(page));
    auto* explanationBox = new QVBoxLayout(explanation);
    if (auto* text = kit.label(options::lblExplanation, explanation)) {
        text->setWordWrap(true);
        text->setMinimumHeight(explanationHeight);
        text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        explanationBox->addWidget(text);
    }
    explanationBox->addLayout(line({sized(kit.make(options::cboBrowsers, explanation), shortFieldWidth)}));
    right->addWidget(explanation);
    QWidget* swatch = kit.label(options::picColour, page);
    if (swatch) {
        swatch->setFixedSize(swatchWidth, swatchHeight);
        swatch->setAutoFillBackground(true);
    }
    right->addLayout(line({kit.make(options::cmdColour, page), swatch}));
    right->addLayout(column(kit,
        page,
        {options::chkServerColor,
            options::cmdRestoreDefault,
            options::cmdProgramRestriction,
            options::cmdSiteRestriction}));
    right->addStretch(1);
    row->addLayout(right, 2);
    return row;
}

// A restriction list: its switch above the list, its edit box and buttons below.
QVBoxLayout* restrictionList(ViewKit& kit, QWidget* panel, std::initializer_list<QString> names)
{
    const QString* name = names.begin();
    auto* box = new QVBoxLayout;
    addAll(*box, {kit.make(name[0], panel)});
    if (auto* list = kit.make<QListWidget>(name[1], panel)) {
        list->setMinimumHeight(restrictionListHeight);
        box->addWidget(list, 1);
    }
    auto* edit = line(
        {sized(kit.make(name[2], panel), restrictionFieldWidth), kit.make(name[3], panel), kit.make(name[4], panel)});
    edit->addStretch(1);
    box->addLayout(edit);
    return box;
}

// A restriction panel: its lists and switches side by side, and a bottom line ending in "<< Back".
QGroupBox* restrictionPanel(ViewKit& kit,
    QWidget* page,
    const QString& frameName,
    const QString& back,
    const std::function<void(QGroupBox*, QHBoxLayout&, QHBoxLayout&)>& fill)
{
    auto* panel = kit.frame(frameName, new QGroupBox(page));
    auto* box = new QVBoxLayout(panel);
    auto* columns = new QHBoxLayout;
    auto* bottom = new QHBoxLayout;
    fill(panel, *columns, *bottom);
    bottom->addStretch(1);
    addAll(*bottom, {kit.make(back, panel)});
    box->addLayout(columns, 1);
    box->addLayout(bottom);
    return panel;
}

QGroupBox* programPanel(ViewKit& kit, QWidget* page)
{
    return restrictionPanel(kit,
        page,
        options::FProgramRestriction,
        options::cmdProgramBack,
        [&kit](QGroupBox* panel, QHBoxLayout& columns, QHBoxLayout& bottom) {
            columns.addLayout(restrictionList(kit,
                panel,
                {options::chkRestrict,
                    options::lstAllowed,
                    options::txtAllowed,
                    options::cmdAddAllowed,
                    options::cmdRemoveAllowed}));
            columns.addSpacing(columnSpacing);
            columns.addLayout(restrictionList(kit,
                panel,
                {options::chkDisallow,
                    options::lstForbidden,
                    options::txtForbidden,
                    options::cmdAddForbidden,
                    options::cmdRemoveForbidden}));
            addAll(bottom, {kit.make(options::cmdExamples, panel)});
        });
}

QGroupBox* sitePanel(ViewKit& kit, QWidget* page)
{
    return restrictionPanel(kit,
        page,
        options::FSiteRestriction,
        options::cmdSiteBack,
        [&kit](QGroupBox* panel, QHBoxLayout& columns, QHBoxLayout&) {
            columns.addLayout(restrictionList(kit,
                                  panel,
                                  {options::chkSiteRestrict,
                                      options::lstCaptions,
                                      options::txtCaption,
                                      options::cmdAddCaption,
                                      options::cmdRemoveCaption}),
                1);
            columns.addSpacing(columnSpacing);
            auto* switches = column(kit, panel, {options::chkApplyIE, options::chkMessClose});
            auto* captionOption = kit.frame(options::FCaptionOption, new QGroupBox(panel));
            auto* optionBox = new QVBoxLayout(captionOption);
            addAll(*optionBox,
                {kit.make(options::chkCaseSensitive, captionOption), kit.make(options::chkWholeWord, captionOption)});
            switches->addWidget(captionOption);
            switches->addStretch(1);
            columns.addLayout(switches);
        });
}

QWidget* clientOptionPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FClientOption, new QWidget(area));
    // The restriction panels show in place of the tab's own controls, in the same cell.
    auto* cell = new QGridLayout(page);
    cell->addLayout(clientSettingsRow(kit, page), 0, 0);
    cell->addWidget(programPanel(kit, page), 0, 0);
    cell->addWidget(sitePanel(kit, page), 0, 0);
    return page;
}

// Include/Exclude: the excluded machines beside the ticket separation.
QGroupBox* machineFrame(ViewKit& kit, QWidget* page, const QString& frameName, std::initializer_list<QString> names)
{
    auto* frame = kit.frame(frameName, new QGroupBox(page));
    auto* box = new QVBoxLayout(frame);
    const QString* name = names.begin();
    addAll(*box, {kit.make(name[0], frame)});
    QFormLayout* field = formLayout();
    kit.addRow(*field, name[1], frame);
    box->addLayout(field);
    box->addLayout(line({kit.make(name[2], frame), kit.make(name[3], frame)}));
    return frame;
}

// The ticket separation: the switches, the machines that serve reserved tickets and the prefix.
QGroupBox* separationFrame(ViewKit& kit, QWidget* page)
{
    auto* separation = kit.frame(options::FTicketSeperation, new QGroupBox(page));
    auto* box = new QVBoxLayout(separation);
    addAll(*box, {kit.make(options::chkSelClientP, separation)});
    box->addLayout(line({sized(kit.make(options::txtSelCPName, separation), restrictionFieldWidth)}));
    addAll(*box, {kit.make(options::chkSelClient, separation), kit.make(options::lstReserved, separation)});
    QFormLayout* fields = formLayout();
    kit.addRow(*fields, options::txtReservedName, separation);
    box->addLayout(fields);
    box->addLayout(
        line({kit.make(options::cmdAddReserved, separation), kit.make(options::cmdRemoveReserved, separation)}));
    QFormLayout* prefix = formLayout();
    sized(kit.addRow(*prefix, options::txtSelPrefix, separation), shortFieldWidth);
    box->addLayout(prefix);
    return separation;
}

// A list below its caption, at least as tall as `height`.
QVBoxLayout* captionedList(ViewKit& kit, QWidget* page, const QString& name, int width, int height)
{
    auto* box = new QVBoxLayout;
    QLabel* caption = kit.caption(name, page);
    QWidget* list = kit.make(name, page);
    if (list) {
        list->setMinimumSize(width, height);
        if (caption)
            caption->setBuddy(list);
    }
    addAll(*box, {caption, list});
    return box;
}

// The account's fields and the two policies on the left, its rights in the middle, the existing
// accounts with Add/Change and Remove on the right.
QWidget* userAccountPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FUserAccount, new QWidget(area));
    auto* columns = new QHBoxLayout(page);
    auto* left = new QVBoxLayout;
    auto* fields = kit.frame(options::FUserFields, new QGroupBox(page));
    QFormLayout* form = formLayout(fields);
    for (const QString& name :
        {options::txtUserName, options::txtUserPassword, options::txtUserRetype, options::cboUserType})
        sized(kit.addRow(*form, name, fields), accountFieldWidth);
    // The number fields with their spinners beside them.
    for (const auto& [number, spinner] : {std::pair {options::txtUserLogins, options::sldUserLogins},
             std::pair {options::txtUserSolotime, options::sldUserSolotime}})
        kit.addRow(*form,
            kit.caption(number, fields),
            {sized(kit.make(number, fields), shortFieldWidth), sized(kit.make(spinner, fields), spinnerWidth)});
    addAll(*left, {fields});
    left->addLayout(column(kit, page, {options::chkAdministratorPower, options::chkNoUser}));
    left->addStretch(1);
    columns->addLayout(left);
    columns->addLayout(captionedList(kit, page, options::lstUserRights, rightsListWidth, listHeight));
    auto* right = captionedList(kit, page, options::lstExistingUsers, usersListWidth, listHeight);
    right->addLayout(line({kit.make(options::cmdUserAddChange, page), kit.make(options::cmdUserRemove, page)}));
    columns->addLayout(right);
    return page;
}

// The night time frame and the printed texts on the left; activation, the print size and the
// external database on the right.
QWidget* ticketSettingPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FTicketSetting, new QWidget(area));
    auto* columns = new QHBoxLayout(page);
    auto* left = new QVBoxLayout;
    auto* times = kit.frame(options::FTimeTicket, new QGroupBox(page));
    auto* timeRows = new QVBoxLayout(times);
    QFormLayout* timeForm = formLayout();
    sized(kit.addRow(*timeForm, options::dtNightStart, times), shortFieldWidth);
    sized(kit.addRow(*timeForm, options::dtNightEnd, times), shortFieldWidth);
    timeRows->addLayout(timeForm);
    addAll(*timeRows, {kit.make(options::chkUseGTime, times)});
    auto* texts = kit.frame(options::FTicketInformation, new QGroupBox(page));
    QFormLayout* textForm = formLayout(texts);
    for (const QString& name : {options::txtTitle, options::txtInformation, options::txtAddress})
        sized(kit.addRow(*textForm, name, texts), textFieldWidth);
    textForm->addRow(QString(), kit.make(options::cmdClearTexts, texts));
    addAll(*left, {times, texts});
    left->addStretch(1);
    auto* right = new QVBoxLayout;
    for (const QString& name : {options::chkActivateTk, options::chkOnlinePrinting}) {
        if (auto* box = kit.make<QAbstractButton>(name, page)) {
            box->setMinimumWidth(0);
            right->addWidget(box);
        }
    }
    auto* printer = kit.frame(options::FPrinterPreview, new QGroupBox(page));
    auto* printerRows = new QVBoxLayout(printer);
    addAll(*printerRows, {kit.label(options::lblPrinter, printer)});
    printerRows->addLayout(line({kit.make(options::cmdPrintSize, printer)}));
    addAll(*right, {printer});
    right->addLayout(line(
        {kit.make(options::chkExternalData, page), sized(kit.make(options::txtExternalPort, page), portFieldWidth)}));
    right->addStretch(1);
    columns->addLayout(left);
    columns->addSpacing(16);
    columns->addLayout(right, 1);
    return page;
}

QGroupBox* group(ViewKit& kit, QWidget* parent, const QString& name)
{
    return kit.frame(name, new QGroupBox(parent));
}

// The master switch, the modes, the bill and what the clients do around a print.
QWidget* printMonitorPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FPrintMonitor, new QWidget(area));
    auto* rows = new QVBoxLayout(page);
    addAll(*rows, {kit.make(options::chkEnablePrint, page)});
    QGroupBox* modes = group(kit, page, options::FPrintMode);
    auto* modeRows = new QVBoxLayout(modes);
    addAll(*modeRows,
        {kit.make(options::optPrintAuthorization, modes),
            kit.make(options::optPrintDeduction, modes),
            kit.make(options::optPrintNone, modes)});
    QGroupBox* bill = group(kit, page, options::FBillType);
    auto* billRows = new QVBoxLayout(bill);
    billRows->addLayout(
        line({kit.make(options::optBillTime, bill), sized(kit.make(options::cboTimePrint, bill), shortFieldWidth)}));
    billRows->addLayout(
        line({kit.make(options::optBillCost, bill), sized(kit.make(options::cboCostPrint, bill), shortFieldWidth)}));
    billRows->addLayout(line({kit.make(options::chkUserPrint, bill),
        sized(kit.make(options::cboWordPrint, bill), bindFieldWidth),
        sized(kit.make(options::cboWordCPrint, bill), shortFieldWidth),
        kit.label(options::lblPrintUnit, bill)}));
    addAll(*rows, {modes, bill});
    rows->addLayout(column(kit,
        page,
        {options::chkWaitPrint, options::chkOtherPrint, options::chkReportPrint, options::chkDefaultPrinter}));
    rows->addStretch(1);
    return page;
}

// A caption above its list, in a group box.
void captionedList(ViewKit& kit, QGroupBox* frame, QBoxLayout& rows, const QString& list, QWidget* beside = nullptr)
{
    QLabel* caption = kit.caption(list, frame);
    QWidget* field = kit.make(list, frame);
    if (caption)
        caption->setBuddy(field);
    addAll(rows, {caption});
    rows.addLayout(line({sized(field, bindFieldWidth), beside}));
}

// The ticket lines, the kind of POS, its port with the test and its speed.
QWidget* posPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FPOS, new QWidget(area));
    auto* columns = new QHBoxLayout(page);
    QGroupBox* display = group(kit, page, options::FTicketDisplay);
    auto* displayRows = new QVBoxLayout(display);
    for (const QString& box : {options::chkStitle,
             options::chkType,
             options::chkSGroup,
             options::chkSUserL,
             options::chkSAddr,
             options::chkSPassL})
        addAll(*displayRows, {kit.make(box, display)});
    displayRows->addStretch(1);

    auto* right = new QVBoxLayout;
    QGroupBox* kind = group(kit, page, options::FPOSType);
    auto* kindRows = new QVBoxLayout(kind);
    addAll(*kindRows, {kit.make(options::optDevicePOS, kind), kit.make(options::optActivationPOS, kind)});
    QGroupBox* port = group(kit, page, options::FPOSPort);
    auto* portRows = new QVBoxLayout(port);
    captionedList(kit, port, *portRows, options::cboCOM, kit.make(options::cmdTestPOS, port));
    QGroupBox* speed = group(kit, page, options::FPOSSpeed);
    auto* speedRows = new QVBoxLayout(speed);
    captionedList(kit, speed, *speedRows, options::cboPOSspeed);
    addAll(*right, {kind, port, speed});
    right->addStretch(1);
    columns->addWidget(display);
    columns->addLayout(right, 1);
    return page;
}

// The switch and a definition's fields on the left, the existing definitions on the right.
QWidget* quickTicketPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FQuickTicket, new QWidget(area));
    auto* columns = new QHBoxLayout(page);
    auto* left = new QVBoxLayout;
    addAll(*left, {kit.make(options::chkQuickTicket, page)});
    QFormLayout* form = formLayout();
    sized(kit.addRow(*form, options::cboQuickTime, page), shortFieldWidth * 2);
    sized(kit.addRow(*form, options::cboQuickCost, page), shortFieldWidth * 2);
    left->addLayout(form);
    left->addLayout(column(kit, page, {options::chkQuickTimeTicket, options::chkQuickOnce, options::chkQuickVIP}));
    left->addLayout(line({kit.make(options::cmdAddQuickTicket, page), kit.make(options::cmdRemoveQuickTicket, page)}));
    left->addStretch(1);
    columns->addLayout(left);
    columns->addLayout(captionedList(kit, page, options::lstQuickTickets, quickListWidth, listHeight), 1);
    return page;
}

// The café list: a branch and a computer, the two buttons, and the list of both.
QGroupBox* cafeListFrame(ViewKit& kit, QWidget* page)
{
    auto* cafes = kit.frame(options::FCafeList, new QGroupBox(page));
    auto* cafeRows = new QVBoxLayout(cafes);
    QFormLayout* form = formLayout();
    sized(kit.addRow(*form, options::cboCafeName, cafes), accountFieldWidth);
    sized(kit.addRow(*form, options::txtCafeSystem, cafes), accountFieldWidth);
    cafeRows->addLayout(form);
    cafeRows->addLayout(
        line({kit.make(options::cmdAddCafeClient, cafes), kit.make(options::cmdRemoveCafeClient, cafes)}));
    if (QWidget* list = kit.make(options::lstCafes, cafes)) {
        list->setMinimumSize(usersListWidth, listHeight);
        cafeRows->addWidget(list);
    }
    return cafes;
}

// Include/Exclude: the excluded machines, the ticket separation and the café list side by side.
QWidget* includeExcludePage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FIncludeExclude, new QWidget(area));
    auto* columns = new QHBoxLayout(page);
    columns->addWidget(machineFrame(kit,
        page,
        options::FExcluded,
        {options::lstExcluded, options::txtExcludedName, options::cmdAddExcluded, options::cmdRemoveExcluded}));
    columns->addWidget(separationFrame(kit, page));
    columns->addWidget(cafeListFrame(kit, page));
    return page;
}

// The SMS panel: built like the others, though no tab shows it.
QWidget* smsPanel(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FSMS, new QWidget(area));
    auto* rows = new QVBoxLayout(page);
    QGroupBox* account = group(kit, page, options::FSMSAccount);
    QFormLayout* fields = formLayout(account);
    kit.addRow(*fields, options::txtSMSAccount, account);
    kit.addRow(*fields, options::txtSMSPassword, account);
    fields->addRow(kit.make(options::cmdCheckSMS, account), kit.label(options::lblSMSStatus, account));
    QGroupBox* smsOption = group(kit, page, options::FSMSOption);
    auto* optionRows = new QVBoxLayout(smsOption);
    addAll(*optionRows, {kit.make(options::chkAllowSMS, smsOption), kit.make(options::chkAllowMSMS, smsOption)});
    QGroupBox* cost = group(kit, page, options::FSMSCost);
    auto* costRow = new QHBoxLayout(cost);
    addAll(*costRow, {sized(kit.make(options::txtSMScost, cost), shortFieldWidth)});
    addAll(*rows, {account, smsOption, cost});
    rows->addStretch(1);
    return page;
}

// The ping monitor, its reactions and messages, and the shutdown at a set time.
QWidget* automatedActionPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FAutomatedAction, new QWidget(area));
    auto* rows = new QVBoxLayout(page);
    QFormLayout* address = formLayout();
    sized(kit.addRow(*address, options::txtIPPing, page), bindFieldWidth);
    rows->addLayout(address);
    rows->addLayout(column(kit, page, {options::chkPingDisabled, options::chkPingPause, options::chkPingLogging}));
    rows->addLayout(
        line({kit.make(options::chkMOffline, page), sized(kit.make(options::txtTOffline, page), bindFieldWidth)}));
    rows->addLayout(
        line({kit.make(options::chkMOnline, page), sized(kit.make(options::txtTOnline, page), bindFieldWidth)}));
    QFormLayout* counts = formLayout();
    sized(kit.addRow(*counts, options::txtNoPing, page), shortFieldWidth);
    sized(kit.addRow(*counts, options::cboPingTimeout, page), portFieldWidth);
    rows->addLayout(counts);
    QGroupBox* shutdown = group(kit, page, options::FShutTime);
    auto* shutdownRow = new QHBoxLayout(shutdown);
    addAll(*shutdownRow,
        {kit.make(options::chkShutTime, shutdown), sized(kit.make(options::dtVShutTime, shutdown), portFieldWidth)});
    shutdownRow->addStretch(1);
    addAll(*rows, {shutdown});
    rows->addStretch(1);
    return page;
}

// The clean-up and backup schedules with their buttons, and the recycle bin's size.
QWidget* maintenancePage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FMaintenance, new QWidget(area));
    auto* rows = new QVBoxLayout(page);
    auto* schedules = new QHBoxLayout;
    QGroupBox* cleanUp = group(kit, page, options::FCleanUp);
    auto* cleanUpRows = new QVBoxLayout(cleanUp);
    addAll(*cleanUpRows,
        {sized(kit.make(options::cboCleanUpTime, cleanUp), bindFieldWidth),
            kit.make(options::chkEnableCleanUp, cleanUp),
            kit.make(options::cmdCleanUp, cleanUp)});
    QGroupBox* backUp = group(kit, page, options::FBackUp);
    auto* backUpRows = new QVBoxLayout(backUp);
    addAll(*backUpRows,
        {sized(kit.make(options::cboBackUpTime, backUp), bindFieldWidth),
            kit.make(options::chkEnableBackUp, backUp),
            kit.make(options::cmdBackUp, backUp),
            kit.make(options::cmdRestore, backUp)});
    addAll(*schedules, {cleanUp, backUp});
    rows->addLayout(schedules);
    rows->addSpacing(8);
    QWidget* slider = kit.make(options::sldRecycleBinSize, page);
    if (auto* bar = qobject_cast<QSlider*>(slider)) {
        bar->setSingleStep(100);
        bar->setPageStep(500);
        bar->setTickPosition(QSlider::TicksBelow);
        bar->setTickInterval(500);
    }
    addAll(*rows, {kit.label(options::lblRecycleBinSize, page), slider});
    rows->addLayout(column(kit, page, {options::chkMoveToRecycle, options::chkProgramLog}));
    rows->addStretch(1);
    return page;
}

// The page of each flag, the SMS panel's included.
QWidget* optionsPage(ViewKit& kit, QWidget* area, size_t flag)
{
    using Page = QWidget* (*)(ViewKit&, QWidget*);
    static constexpr Page pages[] = {generalPage,
        userAccountPage,
        ticketSettingPage,
        maintenancePage,
        automatedActionPage,
        clientOptionPage,
        printMonitorPage,
        quickTicketPage,
        includeExcludePage,
        posPage,
        smsPanel};
    return pages[flag](kit, area);
}

// The Settings field opens its menu on a click as well as on a key: the click of the left button,
// on its release, reaches the field's own click.
class ClickOpensMenu : public QObject
{
public:
    ClickOpensMenu(Control& field, QLineEdit& line)
        : QObject(&line)
        , m_field(field)
    {
        line.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonRelease && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
            Operator::click(m_field);
        return QObject::eventFilter(watched, event);
    }

private:
    Control& m_field;
};

QHBoxLayout* buttonRow(ViewKit& kit, Form& form, QWidget& root)
{
    auto* bottom = new QHBoxLayout;
    if (auto* settings = kit.make<QLineEdit>(options::txtSettings, &root)) {
        settings->setFixedWidth(settingsFieldWidth);
        settings->setAlignment(Qt::AlignCenter);
        new ClickOpensMenu(form[options::txtSettings], *settings);
        bottom->addWidget(settings);
    }
    addAll(*bottom, {kit.make(options::cmdHelp, &root)});
    bottom->addStretch(1);
    addAll(*bottom,
        {kit.make(options::cmdOk, &root), kit.make(options::cmdCancel, &root), kit.make(options::cmdApply, &root)});
    // Enter presses no button by itself on this screen, so none is drawn as the default one.
    for (auto* button : root.findChildren<QPushButton*>())
        button->setAutoDefault(false);
    return bottom;
}

} // namespace

void buildOptionsView(Form& form, QWidget& root, ViewWidgets& widgets)
{
    ViewKit kit(form, widgets);
    auto* layout = new QVBoxLayout(&root);

    const TabbedArea tabbed = tabbedArea(kit, root, options::TabStrip1, QStringLiteral("panelArea"));
    for (size_t flag = 0; flag < options::Panels.size(); ++flag)
        addTakingTurns(*tabbed.cell, optionsPage(kit, tabbed.area, flag));
    tabbed.layout->addWidget(tabbed.area, 1);
    layout->addLayout(tabbed.layout, 1);
    layout->addLayout(buttonRow(kit, form, root));
}

} // namespace marlet::views
