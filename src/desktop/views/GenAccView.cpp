#include "desktop/views/GenAccView.h"

#include "desktop/views/ViewKit.h"

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
void addTimeRow(ViewKit& kit, QFormLayout& form, QWidget* label, QWidget* page, const char* hours, const char* minutes)
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
    ViewKit& kit, QFormLayout& form, QWidget* caption, QWidget* page, const char* currency, const char* cost)
{
    QLabel* currencyLabel = kit.label(currency, page);
    QWidget* costField = sized(kit.make(cost, page), numberFieldWidth);
    kit.addRow(form, caption, {currencyLabel, costField});
}

// The expiry list, its days field and the field's "day(s)" label.
void addExpiryRow(
    ViewKit& kit, QFormLayout& form, QWidget* page, const char* expiry, const char* days, const char* daysLabel)
{
    QLabel* caption = kit.caption(expiry, page);
    QWidget* expiryList = kit.make(expiry, page);
    QWidget* daysField = sized(kit.make(days, page), numberFieldWidth);
    QLabel* unit = kit.label(daysLabel, page);
    kit.addRow(form, caption, {expiryList, daysField, unit});
}

// The column of check boxes beside the fields; the time-period pickers follow them.
QVBoxLayout* optionColumn(ViewKit& kit, QWidget* page, std::initializer_list<const char*> boxes)
{
    auto* column = new QVBoxLayout;
    for (const char* box : boxes)
        addAll(*column, {kit.make(box, page)});
    return column;
}

QFormLayout* pickerForm(ViewKit& kit, QWidget* page, std::initializer_list<const char*> fields)
{
    QFormLayout* form = bareForm();
    for (const char* field : fields)
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
    auto* page = kit.frame("FNew", new QWidget(area));

    auto* manual = kit.frame("FManual", new QWidget(page));
    QFormLayout* manualForm = bareForm();
    manual->setLayout(manualForm);
    sized(kit.addRow(*manualForm, "cboNumber", manual), numberFieldWidth);
    addTimeRow(kit, *manualForm, nullptr, manual, "cboHours", "cboMinutes");
    addCostRow(kit, *manualForm, kit.label("lblCost", manual), manual, "lblCurrency", "cboCost");

    auto* quick = kit.frame("FQuick", new QGroupBox(page));
    QFormLayout* quickForm = formLayout(quick);
    for (const char* list : {"cboTicketType", "cboPages", "cboSizeType"})
        sized(kit.addRow(*quickForm, list, quick), textFieldWidth);

    QFormLayout* more = bareForm();
    addExpiryRow(kit, *more, page, "cboExpiry", "txtDays", "lblDays");
    sized(kit.addRow(*more, "txtPrefix", page), numberFieldWidth);
    alignLabels({manualForm, more});

    // One of the manual and Quick-Ticket frames shows; the other takes no room.
    auto* fields = new QVBoxLayout;
    addAll(*fields, {manual, quick});
    fields->addLayout(more);
    QVBoxLayout* options = optionColumn(kit, page, {"chkVIP", "chkFlex", "chkTimePeriod", "chkOnce"});
    options->addLayout(pickerForm(kit, page, {"dtStart", "dtEnd"}));
    layOutPage(page, fields, options, kit.make("cmdGenerate", page));
    return page;
}

QWidget* customTicketPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame("FCustom", new QWidget(area));
    QFormLayout* fields = bareForm();
    for (const char* text : {"txtCustomUsername", "txtCustomPassword"})
        sized(kit.addRow(*fields, text, page), textFieldWidth);
    addTimeRow(kit, *fields, nullptr, page, "cboCustomHours", "cboCustomMinutes");
    addCostRow(kit, *fields, kit.caption("cboCustomCost", page), page, "lblCustomCurrency", "cboCustomCost");
    addExpiryRow(kit, *fields, page, "cboCustomExpiry", "txtCustomDays", "lblCustomDays");
    QVBoxLayout* options
        = optionColumn(kit, page, {"chkCustomFlex", "chkCustomVIP", "chkCustomTimePeriod", "chkCustomOnce"});
    options->addLayout(pickerForm(kit, page, {"dtCustomStart", "dtCustomEnd"}));
    layOutPage(page, fields, options, kit.make("cmdCreateCustom", page));
    return page;
}

QWidget* membershipPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame("FMember", new QWidget(area));
    QFormLayout* fields = bareForm();
    for (const char* text : {"txtMemberUsername", "txtMemberPassword"})
        sized(kit.addRow(*fields, text, page), textFieldWidth);
    addTimeRow(kit, *fields, kit.make("chkUseTime", page), page, "cboMemberHours", "cboMemberMinutes");
    addCostRow(kit, *fields, kit.caption("cboMemberCost", page), page, "lblMemberCurrency", "cboMemberCost");
    QWidget* recharge = kit.make("chkRecharge", page);
    QWidget* rechargeDays = kit.make("cboRechargeDays", page);
    QWidget* rechargePeriod = kit.make("cboRechargePeriod", page);
    kit.addRow(*fields, recharge, {rechargeDays, rechargePeriod});
    addExpiryRow(kit, *fields, page, "cboMemberExpiry", "txtMemberDays", "lblMemberDays");
    QVBoxLayout* options = optionColumn(kit, page, {"chkMemberVIP", "chkMemberTimePeriod"});
    // The weekday's caption is long: it stands above its list.
    QLabel* weekdayCaption = kit.caption("cboWeekday", page);
    QWidget* weekday = kit.make("cboWeekday", page);
    if (weekdayCaption)
        weekdayCaption->setBuddy(weekday);
    addAll(*options, {weekdayCaption});
    options->addLayout(line({weekday}));
    options->addLayout(pickerForm(kit, page, {"dtMemberStart", "dtMemberEnd"}));
    layOutPage(page, fields, options, kit.make("cmdCreateMember", page));
    return page;
}

// The selection frame: five options, the time and group boxes beside their options, and the
// button that lists the selection.
QGroupBox* selectionFrame(ViewKit& kit, QWidget* page)
{
    auto* selection = kit.frame("FSelection", new QGroupBox(page));
    auto* grid = new QGridLayout(selection);
    QWidget* all = kit.make("Option1", selection);
    QWidget* unused = kit.make("Option2", selection);
    QWidget* used = kit.make("Option3", selection);
    grid->addLayout(line({all, unused, used}), 0, 0, 1, 2);
    const char* boxes[][2] = {{"Option4", "Text1"}, {"Option5", "Text5"}};
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
    if (QWidget* view = kit.make("Command2", selection))
        grid->addWidget(view, row, 1, Qt::AlignRight);
    return selection;
}

QWidget* existingTicketPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame("FExist", new QWidget(area));
    auto* layout = new QHBoxLayout(page);
    auto* left = new QVBoxLayout;
    left->addWidget(selectionFrame(kit, page));
    left->addStretch(1);
    layout->addLayout(left);
    layout->addSpacing(16);

    // Text commands that act as links.
    auto* links = new QVBoxLayout;
    for (const char* command : {"m_search", "m_password", "m_del", "m_change", "m_recharge"}) {
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
    addAll(*buttons, {kit.make("Command4", page), kit.make("cmdPrintExisting", page), kit.make("Command10", page)});
    buttons->addStretch(1);
    layout->addLayout(buttons);
    return page;
}

QWidget* settingsPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame("FSetting", new QWidget(area));
    auto* layout = new QVBoxLayout(page);
    addAll(*layout, {kit.make("chkAutoSave", page), kit.make("chkNoList", page), kit.make("Check4", page)});

    auto* sizes = kit.frame("FPrintSize", new QGroupBox(page));
    auto* choices = new QGridLayout(sizes);
    const char* options[] = {"optSmallPrint", "optMediumPrint", "optLargePrint", "optExport"};
    for (int i = 0; i < 4; ++i) {
        if (QWidget* option = kit.make(options[i], sizes))
            choices->addWidget(option, i / 2, i % 2);
    }
    layout->addLayout(line({sizes}));
    layout->addStretch(1);

    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    addAll(*bottom, {kit.make("cmdPrintSettings", page), kit.make("cmdSaveChanges", page)});
    layout->addLayout(bottom);
    return page;
}

// The progress panel stands in front of the frames. The model switches the outer widget's
// background on and off with its colours; the inner panel always paints its own, so that the
// disabled frame behind never shows through.
QWidget* progressPanel(ViewKit& kit, QWidget* area)
{
    auto* outer = kit.frame("FProgress", new QWidget(area));
    auto* outerLayout = new QVBoxLayout(outer);
    outerLayout->setContentsMargins(24, 0, 24, 0);
    auto* panel = new QFrame(outer);
    panel->setFrameShape(QFrame::StyledPanel);
    panel->setFrameShadow(QFrame::Raised);
    panel->setAutoFillBackground(true);
    auto* inner = new QHBoxLayout(panel);
    inner->setContentsMargins(16, 12, 16, 12);
    addAll(*inner, {kit.label("Label4", panel)});
    if (QWidget* bar = kit.make("ProgressBar1", panel))
        inner->addWidget(bar, 1);
    outerLayout->addWidget(panel);
    outer->raise();
    return outer;
}

QTableView* ticketGrid(ViewKit& kit, QWidget& root)
{
    auto* grid = kit.make<QTableView>("PrintList", &root);
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

    const TabbedArea tabbed = tabbedArea(kit, root, "TabStrip1", QStringLiteral("frameArea"));
    QWidget* area = tabbed.area;
    for (auto* page : {newTicketPage(kit, area),
             customTicketPage(kit, area),
             membershipPage(kit, area),
             existingTicketPage(kit, area),
             settingsPage(kit, area)})
        addTakingTurns(*tabbed.cell, page);
    tabbed.cell->addWidget(progressPanel(kit, area), 0, 0, Qt::AlignVCenter);
    tabbed.layout->addWidget(area);
    layout->addLayout(tabbed.layout);

    if (QTableView* grid = ticketGrid(kit, root))
        layout->addWidget(grid, 1);

    auto* bottom = new QHBoxLayout;
    addAll(*bottom, {kit.make("cmdHelp", &root)});
    bottom->addStretch(1);
    addAll(*bottom, {kit.make("Command6", &root)});
    layout->addLayout(bottom);
}

} // namespace marlet::views
