#include "desktop/views/OptionsView.h"

#include "desktop/views/ViewKit.h"
#include "settings/Options.h"

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

QVBoxLayout* column(ViewKit& kit, QWidget* parent, std::initializer_list<const char*> names)
{
    auto* box = new QVBoxLayout;
    for (const char* name : names)
        addAll(*box, {kit.make(name, parent)});
    return box;
}

// Prefix, currency, the switches towards the clients, and the adaptor to bind to.
QVBoxLayout* serverColumn(ViewKit& kit, QWidget* page)
{
    auto* left = new QVBoxLayout;
    QFormLayout* codes = formLayout();
    sized(kit.addRow(*codes, "txtPrefix", page), shortFieldWidth);
    sized(kit.addRow(*codes, "txtCurrency", page), shortFieldWidth);
    left->addLayout(codes);
    left->addLayout(column(kit, page, {"chkSetTime", "chkShutDownClients", "chkCheckConnection", "chkSameIP"}));
    left->addSpacing(8);
    // The adaptor's caption is long: it stands above its list and the text beside it.
    QLabel* caption = kit.caption("cboBindType", page);
    QWidget* list = kit.make("cboBindType", page);
    if (caption)
        caption->setBuddy(list);
    addAll(*left, {caption});
    left->addLayout(line({list, sized(kit.make("txtBindType", page), bindFieldWidth)}));
    left->addStretch(1);
    return left;
}

QGroupBox* passGenFrame(ViewKit& kit, QWidget* page)
{
    auto* frame = kit.frame("FPassGenType", new QGroupBox(page));
    auto* options = new QHBoxLayout(frame);
    addAll(*options, {kit.make("optNumberOnly", frame), kit.make("optAlphabetOnly", frame), kit.make("optBoth", frame)});
    options->addStretch(1);
    return frame;
}

QGroupBox* portFrame(ViewKit& kit, QWidget* page)
{
    auto* frame = kit.frame("FServerPort", new QGroupBox(page));
    auto* rows = new QVBoxLayout(frame);
    addAll(*rows, {kit.make("optDefaultPort", frame)});
    rows->addLayout(
        line({kit.make("optOtherPort", frame), sized(kit.make("txtServerPort", frame), portFieldWidth)}));
    addAll(*rows, {kit.label("lblPortNote", frame)});
    return frame;
}

// Characters of generated tickets, the port, start-up and the login limit.
QVBoxLayout* ticketColumn(ViewKit& kit, QWidget* page)
{
    auto* right = new QVBoxLayout;
    addAll(*right, {passGenFrame(kit, page), portFrame(kit, page)});
    right->addLayout(column(kit, page, {"chkLoadStart", "chkFrontDesk", "chkSiteDate"}));
    right->addLayout(line({kit.make("chkLogLimit", page), sized(kit.make("txtLogLimit", page), shortFieldWidth)}));
    right->addStretch(1);
    return right;
}

QWidget* generalPage(ViewKit& kit, QWidget* area)
{
    auto* page = kit.frame("FGeneral", new QWidget(area));
    auto* columns = new QHBoxLayout(page);
    columns->addLayout(serverColumn(kit, page));
    columns->addSpacing(24);
    columns->addLayout(ticketColumn(kit, page));
    return page;
}

QHBoxLayout* buttonRow(ViewKit& kit, QWidget& root)
{
    auto* bottom = new QHBoxLayout;
    if (auto* settings = kit.make<QLineEdit>("txtSettings", &root)) {
        settings->setFixedWidth(settingsFieldWidth);
        settings->setAlignment(Qt::AlignCenter);
        bottom->addWidget(settings);
    }
    addAll(*bottom, {kit.make("cmdHelp", &root)});
    bottom->addStretch(1);
    addAll(*bottom, {kit.make("cmdOk", &root), kit.make("cmdCancel", &root), kit.make("cmdApply", &root)});
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

    const TabbedArea tabbed = tabbedArea(kit, root, "TabStrip1", QStringLiteral("panelArea"));
    addTakingTurns(*tabbed.cell, generalPage(kit, tabbed.area));
    // The other pages' fields come with their own work; their panels already take turns here.
    for (int flag = 1; flag <= Options::SmsFlag; ++flag)
        addTakingTurns(*tabbed.cell, kit.frame(Options::panelName(flag), new QWidget(tabbed.area)));
    tabbed.layout->addWidget(tabbed.area, 1);
    layout->addLayout(tabbed.layout, 1);
    layout->addLayout(buttonRow(kit, root));
}

} // namespace marlet::views
