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
    // The other pages' fields come with their own work; their panels already take turns here.
    for (size_t flag = 1; flag < options::Panels.size(); ++flag)
        addTakingTurns(*tabbed.cell, kit.frame(options::Panels[flag], new QWidget(tabbed.area)));
    tabbed.layout->addWidget(tabbed.area, 1);
    layout->addLayout(tabbed.layout, 1);
    layout->addLayout(buttonRow(kit, root));
}

} // namespace marlet::views
