#include "desktop/views/OptionsView.h"

#include "desktop/views/ViewKit.h"
#include "screens/OptionsNames.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

#include <algorithm>

namespace marlet::views {

namespace {

constexpr int shortFieldWidth = 60;
constexpr int portFieldWidth = 70;
constexpr int bindFieldWidth = 170;
constexpr int settingsFieldWidth = 70;

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

QHBoxLayout* buttonRow(ViewKit& kit, QWidget& root)
{
    auto* bottom = new QHBoxLayout;
    if (auto* settings = kit.make<QLineEdit>(options::txtSettings, &root)) {
        settings->setFixedWidth(settingsFieldWidth);
        settings->setAlignment(Qt::AlignCenter);
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
    addTakingTurns(*tabbed.cell, generalPage(kit, tabbed.area));
    // The pages built so far; the other pages' fields come with their own work, and their panels
    // already take turns here.
    const std::pair<QString, QWidget* (*)(ViewKit&, QWidget*)> builtPages[] = {
        {options::FMaintenance, maintenancePage},
        {options::FAutomatedAction, automatedActionPage},
        {options::FPrintMonitor, printMonitorPage},
        {options::FPOS, posPage},
        {options::FSMS, smsPanel},
    };
    for (size_t flag = 1; flag < options::Panels.size(); ++flag) {
        const QString& panel = options::Panels[flag];
        const auto built = std::find_if(
            std::begin(builtPages), std::end(builtPages), [&panel](const auto& page) { return page.first == panel; });
        addTakingTurns(*tabbed.cell,
            built != std::end(builtPages) ? built->second(kit, tabbed.area)
                                          : kit.frame(panel, new QWidget(tabbed.area)));
    }
    tabbed.layout->addWidget(tabbed.area, 1);
    layout->addLayout(tabbed.layout, 1);
    layout->addLayout(buttonRow(kit, root));
}

} // namespace marlet::views
