#include "desktop/views/OptionsView.h"

#include "desktop/views/ViewKit.h"
#include "screens/OptionsNames.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace marlet::views {

namespace {

constexpr int shortFieldWidth = 60;
constexpr int portFieldWidth = 70;
constexpr int bindFieldWidth = 170;
constexpr int settingsFieldWidth = 70;
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
QWidget* includeExcludePage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(options::FIncludeExclude, new QWidget(area));
    auto* rows = new QVBoxLayout(page);
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
    rows->addWidget(cafes);
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
    addTakingTurns(*tabbed.cell, userAccountPage(kit, tabbed.area));
    addTakingTurns(*tabbed.cell, ticketSettingPage(kit, tabbed.area));
    addTakingTurns(*tabbed.cell, quickTicketPage(kit, tabbed.area));
    addTakingTurns(*tabbed.cell, includeExcludePage(kit, tabbed.area));
    const QStringList laidOut {options::FGeneral,
        options::FUserAccount,
        options::FTicketSetting,
        options::FQuickTicket,
        options::FIncludeExclude};
    // The other pages' fields come with their own work; their panels already take turns here.
    for (const QString& panel : options::Panels) {
        if (!laidOut.contains(panel))
            addTakingTurns(*tabbed.cell, kit.frame(panel, new QWidget(tabbed.area)));
    }
    tabbed.layout->addWidget(tabbed.area, 1);
    layout->addLayout(tabbed.layout, 1);
    layout->addLayout(buttonRow(kit, root));
}

} // namespace marlet::views
