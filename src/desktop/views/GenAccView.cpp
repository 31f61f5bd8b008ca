#include "desktop/views/GenAccView.h"

#include "desktop/views/MemberViews.h"
#include "desktop/views/ViewKit.h"
#include "issuing/GenAccNames.h"
#include "members/MemberinfoNames.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>

namespace marlet::views {

namespace {

// Number fields are short; the lists still show their longest entry in full when dropped down.
constexpr int numberFieldWidth = 80;
constexpr int textFieldWidth = 160;
constexpr int timeFieldWidth = 80;

QWidget* sized(QWidget* field, int width)
{
    if (field)
        field->setMinimumWidth(width);
    return field;
}

QFormLayout* bareForm()
{
    QFormLayout* form = formLayout();
    form->setContentsMargins(0, 0, 0, 0);
    return form;
}

// "Hours: [  ]  Min(s): [  ]" with `label` in the label column (a caption or a check box).
void addTimeRow(
    ViewKit& kit, QFormLayout& form, QWidget* label, QWidget* page, const QString& hours, const QString& minutes)
{
    QWidget* hoursField = sized(kit.make(hours, page), numberFieldWidth);
    QLabel* minutesCaption = kit.caption(minutes, page);
    QWidget* minutesField = sized(kit.make(minutes, page), numberFieldWidth);
    if (minutesCaption)
        minutesCaption->setBuddy(minutesField);
    if (label) {
        QLabel* hoursCaption = kit.caption(hours, page);
        if (hoursCaption)
            hoursCaption->setBuddy(hoursField);
        kit.addRow(form, label, {hoursCaption, hoursField, minutesCaption, minutesField});
    } else {
        kit.addRow(form, kit.caption(hours, page), {hoursField, minutesCaption, minutesField});
    }
}

// The cost: its caption, the currency and the list.
void addCostRow(
    ViewKit& kit, QFormLayout& form, QWidget* caption, QWidget* page, const QString& currency, const QString& cost)
{
    QLabel* currencyLabel = kit.label(currency, page);
    QWidget* costField = sized(kit.make(cost, page), numberFieldWidth);
    kit.addRow(form, caption, {currencyLabel, costField});
}

// The expiry list, its days field and the field's "day(s)" label.
void addExpiryRow(ViewKit& kit,
    QFormLayout& form,
    QWidget* page,
    const QString& expiry,
    const QString& days,
    const QString& daysLabel)
{
    QLabel* caption = kit.caption(expiry, page);
    QWidget* expiryList = kit.make(expiry, page);
    QWidget* daysField = sized(kit.make(days, page), numberFieldWidth);
    QLabel* unit = kit.label(daysLabel, page);
    kit.addRow(form, caption, {expiryList, daysField, unit});
}

// The column of check boxes beside the fields; the time-period pickers follow them.
QVBoxLayout* optionColumn(ViewKit& kit, QWidget* page, std::initializer_list<QString> boxes)
{
    auto* column = new QVBoxLayout;
    for (const QString& box : boxes)
        addAll(*column, {kit.make(box, page)});
    return column;
}

QFormLayout* pickerForm(ViewKit& kit, QWidget* page, std::initializer_list<QString> fields)
{
    QFormLayout* form = bareForm();
    for (const QString& field : fields)
        sized(kit.addRow(*form, field, page), timeFieldWidth);
    return form;
}

// A page: the fields on the left, the options on the right, the page's button at the bottom right.
void layOutPage(QWidget* page, QLayout* fields, QBoxLayout* options, QWidget* button)
{
    options->addStretch(1);
    auto* layout = new QVBoxLayout(page);
    auto* columns = new QHBoxLayout;
    columns->addLayout(fields);
    columns->addSpacing(24);
    columns->addLayout(options);
    columns->addStretch(1);
    layout->addLayout(columns);
    layout->addStretch(1);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    addAll(*bottom, {button});
    layout->addLayout(bottom);
}

QWidget* newTicketPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(genacc::FNew, new QWidget(area));

    auto* manual = kit.frame(genacc::FManual, new QWidget(page));
    QFormLayout* manualForm = bareForm();
    manual->setLayout(manualForm);
    sized(kit.addRow(*manualForm, genacc::cboNumber, manual), numberFieldWidth);
    addTimeRow(kit, *manualForm, nullptr, manual, genacc::cboHours, genacc::cboMinutes);
    addCostRow(kit, *manualForm, kit.label(genacc::lblCost, manual), manual, genacc::lblCurrency, genacc::cboCost);

    auto* quick = kit.frame(genacc::FQuick, new QGroupBox(page));
    QFormLayout* quickForm = formLayout(quick);
    for (const QString& list : {genacc::cboTicketType, genacc::cboPages, genacc::cboSizeType})
        sized(kit.addRow(*quickForm, list, quick), textFieldWidth);

    QFormLayout* more = bareForm();
    addExpiryRow(kit, *more, page, genacc::cboExpiry, genacc::txtDays, genacc::lblDays);
    sized(kit.addRow(*more, genacc::txtPrefix, page), numberFieldWidth);
    alignLabels({manualForm, more});

    // One of the manual and Quick-Ticket frames shows; the other takes no room.
    auto* fields = new QVBoxLayout;
    addAll(*fields, {manual, quick});
    fields->addLayout(more);
    QVBoxLayout* options
        = optionColumn(kit, page, {genacc::chkVIP, genacc::chkFlex, genacc::chkTimePeriod, genacc::chkOnce});
    options->addLayout(pickerForm(kit, page, {genacc::dtStart, genacc::dtEnd}));
    layOutPage(page, fields, options, kit.make(genacc::cmdGenerate, page));
    return page;
}

QWidget* customTicketPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(genacc::FCustom, new QWidget(area));
    QFormLayout* fields = bareForm();
    for (const QString& text : {genacc::txtCustomUsername, genacc::txtCustomPassword})
        sized(kit.addRow(*fields, text, page), textFieldWidth);
    addTimeRow(kit, *fields, nullptr, page, genacc::cboCustomHours, genacc::cboCustomMinutes);
    addCostRow(
        kit, *fields, kit.caption(genacc::cboCustomCost, page), page, genacc::lblCustomCurrency, genacc::cboCustomCost);
    addExpiryRow(kit, *fields, page, genacc::cboCustomExpiry, genacc::txtCustomDays, genacc::lblCustomDays);
    QVBoxLayout* options = optionColumn(
        kit, page, {genacc::chkCustomFlex, genacc::chkCustomVIP, genacc::chkCustomTimePeriod, genacc::chkCustomOnce});
    options->addLayout(pickerForm(kit, page, {genacc::dtCustomStart, genacc::dtCustomEnd}));
    layOutPage(page, fields, options, kit.make(genacc::cmdCreateCustom, page));
    return page;
}

QWidget* membershipPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(genacc::FMember, new QWidget(area));
    QFormLayout* fields = bareForm();
    for (const QString& text : {genacc::txtMemberUsername, genacc::txtMemberPassword})
        sized(kit.addRow(*fields, text, page), textFieldWidth);
    addTimeRow(
        kit, *fields, kit.make(genacc::chkUseTime, page), page, genacc::cboMemberHours, genacc::cboMemberMinutes);
    addCostRow(
        kit, *fields, kit.caption(genacc::cboMemberCost, page), page, genacc::lblMemberCurrency, genacc::cboMemberCost);
    QWidget* recharge = kit.make(genacc::chkRecharge, page);
    QWidget* rechargeDays = kit.make(genacc::cboRechargeDays, page);
    QWidget* rechargePeriod = kit.make(genacc::cboRechargePeriod, page);
    kit.addRow(*fields, recharge, {rechargeDays, rechargePeriod});
    addExpiryRow(kit, *fields, page, genacc::cboMemberExpiry, genacc::txtMemberDays, genacc::lblMemberDays);
    QVBoxLayout* options = optionColumn(kit, page, {genacc::chkMemberVIP, genacc::chkMemberTimePeriod});
    // The weekday's caption is long: it stands above its list.
    QLabel* weekdayCaption = kit.caption(genacc::cboWeekday, page);
    QWidget* weekday = kit.make(genacc::cboWeekday, page);
    if (weekdayCaption)
        weekdayCaption->setBuddy(weekday);
    addAll(*options, {weekdayCaption});
    options->addLayout(line({weekday}));
    options->addLayout(pickerForm(kit, page, {genacc::dtMemberStart, genacc::dtMemberEnd}));
    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    addAll(*buttons, {kit.make(genacc::Command24, page), kit.make(genacc::cmdCreateMember, page)});
    auto* buttonBox = new QWidget(page);
    buttonBox->setLayout(buttons);
    layOutPage(page, fields, options, buttonBox);
    return page;
}

// The member page that replaces the Membership tab's page between the two steps.
QWidget* memberPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(genacc::FMemberPage, new QWidget(area));
    auto* layout = new QVBoxLayout(page);
    auto* columns = new QHBoxLayout;
    columns->addWidget(memberFields(kit, page), 1);
    auto* ticket = new QVBoxLayout;
    ticket->addWidget(memberTicketFrame(kit, page));
    ticket->addStretch(1);
    columns->addLayout(ticket);
    layout->addLayout(columns);
    layout->addStretch(1);
    auto* bottom = new QHBoxLayout;
    addAll(*bottom, {kit.make(memberinfo::Check16, page)});
    bottom->addStretch(1);
    addAll(*bottom, {kit.make(genacc::cmdMemberBack, page), kit.make(genacc::cmdFinishMember, page)});
    layout->addLayout(bottom);
    return page;
}

// The selection frame: five options, the time and group boxes beside their options, and the
// button that lists the selection.
QGroupBox* selectionFrame(ViewKit& kit, QWidget* page)
{
    auto* selection = kit.frame(genacc::FSelection, new QGroupBox(page));
    auto* grid = new QGridLayout(selection);
    QWidget* all = kit.make(genacc::Option1, selection);
    QWidget* unused = kit.make(genacc::Option2, selection);
    QWidget* used = kit.make(genacc::Option3, selection);
    grid->addLayout(line({all, unused, used}), 0, 0, 1, 2);
    const QString boxes[][2] = {{genacc::Option4, genacc::Text1}, {genacc::Option5, genacc::Text5}};
    int row = 1;
    for (const auto& [option, box] : boxes) {
        QWidget* optionButton = kit.make(option, selection);
        QWidget* entry = sized(kit.make(box, selection), numberFieldWidth + 40);
        if (optionButton)
            grid->addWidget(optionButton, row, 0);
        if (entry)
            grid->addWidget(entry, row, 1, Qt::AlignLeft);
        ++row;
    }
    if (QWidget* view = kit.make(genacc::Command2, selection))
        grid->addWidget(view, row, 1, Qt::AlignRight);
    return selection;
}

QWidget* existingTicketPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(genacc::FExist, new QWidget(area));
    auto* layout = new QHBoxLayout(page);
    auto* left = new QVBoxLayout;
    left->addWidget(selectionFrame(kit, page));
    left->addStretch(1);
    layout->addLayout(left);
    layout->addSpacing(16);

    // Text commands that act as links.
    auto* links = new QVBoxLayout;
    for (const QString& command :
        {genacc::m_search, genacc::m_password, genacc::m_del, genacc::m_change, genacc::m_recharge}) {
        QLabel* link = kit.label(command, page);
        if (!link)
            continue;
        QFont font = link->font();
        font.setUnderline(true);
        link->setFont(font);
        link->setCursor(Qt::PointingHandCursor);
        links->addWidget(link);
    }
    links->addStretch(1);
    layout->addLayout(links);
    layout->addStretch(1);

    auto* buttons = new QVBoxLayout;
    addAll(*buttons,
        {kit.make(genacc::Command4, page),
            kit.make(genacc::cmdPrintExisting, page),
            kit.make(genacc::Command10, page)});
    buttons->addStretch(1);
    layout->addLayout(buttons);
    return page;
}

QWidget* settingsPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame(genacc::FSetting, new QWidget(area));
    auto* layout = new QVBoxLayout(page);
    addAll(*layout,
        {kit.make(genacc::chkAutoSave, page), kit.make(genacc::chkNoList, page), kit.make(genacc::Check4, page)});

    auto* sizes = kit.frame(genacc::FPrintSize, new QGroupBox(page));
    auto* choices = new QGridLayout(sizes);
    const QString options[] = {genacc::optSmallPrint, genacc::optMediumPrint, genacc::optLargePrint, genacc::optExport};
    for (int i = 0; i < 4; ++i) {
        if (QWidget* option = kit.make(options[i], sizes))
            choices->addWidget(option, i / 2, i % 2);
    }
    layout->addLayout(line({sizes}));
    layout->addStretch(1);

    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    addAll(*bottom, {kit.make(genacc::cmdPrintSettings, page), kit.make(genacc::cmdSaveChanges, page)});
    layout->addLayout(bottom);
    return page;
}

// The progress panel stands in front of the frames. The model switches the outer widget's
// background on and off with its colours; the inner panel always paints its own, so that the
// disabled frame behind never shows through.
QWidget* progressPanel(ViewKit& kit, QWidget* area)
{
    auto* outer = kit.frame(genacc::FProgress, new QWidget(area));
    auto* outerLayout = new QVBoxLayout(outer);
    outerLayout->setContentsMargins(24, 0, 24, 0);
    auto* panel = new QFrame(outer);
    panel->setFrameShape(QFrame::StyledPanel);
    panel->setFrameShadow(QFrame::Raised);
    panel->setAutoFillBackground(true);
    auto* inner = new QHBoxLayout(panel);
    inner->setContentsMargins(16, 12, 16, 12);
    addAll(*inner, {kit.label(genacc::Label4, panel)});
    if (QWidget* bar = kit.make(genacc::ProgressBar1, panel))
        inner->addWidget(bar, 1);
    outerLayout->addWidget(panel);
    outer->raise();
    return outer;
}

QTableView* ticketGrid(ViewKit& kit, QWidget& root)
{
    auto* grid = kit.make<QTableView>(genacc::PrintList, &root);
    if (grid) {
        // The last column is the empty one: it takes whatever width is left.
        grid->horizontalHeader()->setStretchLastSection(true);
        grid->setMinimumHeight(180);
    }
    return grid;
}

} // namespace

void buildGenAccView(Form& form, QWidget& root, ViewWidgets& widgets)
{
    ViewKit kit(form, widgets);
    auto* layout = new QVBoxLayout(&root);

    const TabbedArea tabbed = tabbedArea(kit, root, genacc::TabStrip1, QStringLiteral("frameArea"));
    QWidget* area = tabbed.area;
    for (auto* page : {newTicketPage(kit, area),
             customTicketPage(kit, area),
             membershipPage(kit, area),
             existingTicketPage(kit, area),
             settingsPage(kit, area),
             memberPage(kit, area)})
        addTakingTurns(*tabbed.cell, page);
    tabbed.cell->addWidget(progressPanel(kit, area), 0, 0, Qt::AlignVCenter);
    tabbed.layout->addWidget(area);
    layout->addLayout(tabbed.layout);

    if (QTableView* grid = ticketGrid(kit, root))
        layout->addWidget(grid, 1);

    auto* bottom = new QHBoxLayout;
    addAll(*bottom, {kit.make(genacc::cmdHelp, &root)});
    bottom->addStretch(1);
    addAll(*bottom, {kit.make(genacc::Command6, &root)});
    layout->addLayout(bottom);
}

} // namespace marlet::views
