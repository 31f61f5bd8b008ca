#include "desktop/views/MemberViews.h"

#include "desktop/views/ViewKit.h"
#include "members/MemberListNames.h"
#include "members/MemberRecord.h"
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

constexpr int textFieldWidth = 120;
// The ticket's fields show texts such as "08:00-17:30|MON - FRI (WEEKDAY)".
constexpr int ticketFieldWidth = 200;
constexpr int pictureWidth = 120;
constexpr int pictureHeight = 140;

QString field(int index)
{
    return memberinfo::Text7 + u'(' + QString::number(index) + u')';
}

QWidget* sized(QWidget* widget, int width)
{
    if (widget)
        widget->setMinimumWidth(width);
    return widget;
}

QFormLayout* fieldForm(ViewKit& kit, QWidget* parent, std::initializer_list<int> indexes, int width = textFieldWidth)
{
    QFormLayout* form = formLayout();
    form->setContentsMargins(0, 0, 0, 0);
    for (const int index : indexes)
        sized(kit.addRow(*form, field(index), parent), width);
    return form;
}

// A picture of a fixed size, whatever the size of the image it shows: the image is scaled into it.
class PictureFrame : public QLabel
{
public:
    explicit PictureFrame(QWidget* parent)
        : QLabel(parent)
    {
        setFixedSize(sizeHint());
        setScaledContents(true);
        setFrameShape(QFrame::StyledPanel);
    }

    QSize sizeHint() const override { return {pictureWidth, pictureHeight}; }
    QSize minimumSizeHint() const override { return sizeHint(); }
};

QLabel* picture(ViewKit& kit, const QString& name, QWidget* parent)
{
    return kit.frame(name, new PictureFrame(parent));
}

// The picture with "Add Picture", and the methods frame that takes its place.
QWidget* pictureColumn(ViewKit& kit, QWidget* parent)
{
    auto* column = new QWidget(parent);
    auto* cell = new QGridLayout(column);
    cell->setContentsMargins(0, 0, 0, 0);

    auto* shown = kit.frame(memberinfo::Frame26, new QWidget(column));
    auto* shownLayout = new QVBoxLayout(shown);
    shownLayout->setContentsMargins(0, 0, 0, 0);
    addAll(*shownLayout, {picture(kit, memberinfo::mPicture, shown), kit.make(memberinfo::Command13, shown)});
    shownLayout->addStretch(1);

    auto* methods = kit.frame(memberinfo::Frame27, new QGroupBox(column));
    auto* methodLayout = new QVBoxLayout(methods);
    addAll(*methodLayout,
        {kit.make(memberinfo::Command14, methods),
            kit.make(memberinfo::Command15, methods),
            kit.make(memberinfo::Command17, methods),
            kit.make(memberinfo::Command18, methods),
            kit.make(memberinfo::Command16, methods)});
    methodLayout->addStretch(1);

    addTakingTurns(*cell, shown);
    addTakingTurns(*cell, methods);
    return column;
}

QHBoxLayout* buttonRow(
    ViewKit& kit, QWidget* parent, std::initializer_list<QString> left, std::initializer_list<QString> right)
{
    auto* row = new QHBoxLayout;
    for (const QString& name : left)
        addAll(*row, {kit.make(name, parent)});
    row->addStretch(1);
    for (const QString& name : right)
        addAll(*row, {kit.make(name, parent)});
    return row;
}

} // namespace

QWidget* memberFields(ViewKit& kit, QWidget* parent)
{
    auto* panel = new QWidget(parent);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    addAll(*layout, {kit.label(memberinfo::Label8, panel)});

    QFormLayout* left = fieldForm(kit, panel, {Surname, Firstname, OtherNames, Title});
    sized(kit.addRow(*left, memberinfo::DateofBirth, panel), textFieldWidth);
    auto* sexes = kit.frame(QStringLiteral("FrameSex"), new QGroupBox(panel));
    auto* sexLayout = new QHBoxLayout(sexes);
    sexLayout->setContentsMargins(8, 2, 8, 2);
    addAll(*sexLayout,
        {kit.make(memberinfo::Option6 + QStringLiteral("(0)"), sexes),
            kit.make(memberinfo::Option6 + QStringLiteral("(1)"), sexes)});
    left->addRow(sexes);
    for (const int index : {int(Occupation), int(Company)})
        sized(kit.addRow(*left, field(index), panel), textFieldWidth);

    QFormLayout* right = fieldForm(kit, panel, {Address, State, Country, Telephone, Email});
    sized(kit.addRow(*right, memberinfo::Combo7, panel), textFieldWidth);
    for (const int index : {int(SpecifyOrder), int(IdentificationNumber)})
        sized(kit.addRow(*right, field(index), panel), textFieldWidth);

    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addSpacing(16);
    columns->addLayout(right);
    columns->addSpacing(16);
    auto* pictureSide = new QVBoxLayout;
    pictureSide->addWidget(pictureColumn(kit, panel));
    pictureSide->addStretch(1);
    columns->addLayout(pictureSide);
    columns->addStretch(1);
    layout->addLayout(columns);
    return panel;
}

QGroupBox* memberTicketFrame(ViewKit& kit, QWidget* parent)
{
    auto* frame = kit.frame(memberinfo::Frame28, new QGroupBox(parent));
    QFormLayout* form = fieldForm(kit,
        frame,
        {TicketUsername, TimeText, CostText, ExpireText, RechargeableText, RechargeDays, RechargeTime, TimePeriodText},
        ticketFieldWidth);
    frame->setLayout(form);
    // The two hidden captions that carry the name and password to write.
    for (const char* hidden : {"(0)", "(1)"}) {
        if (QLabel* label = kit.label(memberinfo::Label44 + QLatin1String(hidden), frame))
            form->addRow(label);
    }
    return frame;
}

void buildMemberinfoView(Form& form, QWidget& root, ViewWidgets& widgets)
{
    ViewKit kit(form, widgets);
    auto* layout = new QVBoxLayout(&root);
    auto* columns = new QHBoxLayout;

    auto* personal = kit.frame(memberinfo::Frame22, new QGroupBox(&root));
    auto* personalLayout = new QVBoxLayout(personal);
    personalLayout->addWidget(memberFields(kit, personal));
    personalLayout->addStretch(1);
    columns->addWidget(personal, 1);

    // The ticket's information and the member's settings take turns on the right.
    auto* side = new QWidget(&root);
    auto* cell = new QGridLayout(side);
    cell->setContentsMargins(0, 0, 0, 0);
    addTakingTurns(*cell, memberTicketFrame(kit, side));
    auto* settings = kit.frame(memberinfo::Frame21, new QGroupBox(side));
    auto* settingsLayout = new QVBoxLayout(settings);
    QFormLayout* settingsForm = formLayout();
    settingsForm->setContentsMargins(0, 0, 0, 0);
    for (const QString& name : {memberinfo::Combo22, memberinfo::Combo21})
        sized(kit.addRow(*settingsForm, name, settings), ticketFieldWidth);
    settingsForm->addRow(kit.make(memberinfo::Check18, settings));
    for (const QString& name : {memberinfo::DT7, memberinfo::DT8})
        kit.addRow(*settingsForm, name, settings);
    settingsLayout->addLayout(settingsForm);
    auto* commands = new QGridLayout;
    const QString buttons[]
        = {memberinfo::Command29, memberinfo::Command32, memberinfo::Command30, memberinfo::Command31};
    for (int i = 0; i < 4; ++i) {
        if (QWidget* button = kit.make(buttons[i], settings))
            commands->addWidget(button, i / 2, i % 2);
    }
    settingsLayout->addLayout(commands);
    settingsLayout->addStretch(1);
    addTakingTurns(*cell, settings);
    columns->addWidget(side, 0, Qt::AlignTop);
    layout->addLayout(columns);
    layout->addStretch(1);

    layout->addLayout(buttonRow(
        kit, &root, {memberinfo::Command25}, {memberinfo::Command26, memberinfo::Command28, memberinfo::Command27}));
}

void buildMemberListView(Form& form, QWidget& root, ViewWidgets& widgets)
{
    ViewKit kit(form, widgets);
    auto* layout = new QVBoxLayout(&root);

    auto* search = kit.frame(QStringLiteral("FrameSearch"), new QGroupBox(&root));
    auto* searchLayout = new QVBoxLayout(search);
    QLabel* caption = kit.caption(memberlist::Text12, search);
    QWidget* text = sized(kit.make(memberlist::Text12, search), textFieldWidth + 60);
    if (caption)
        caption->setBuddy(text);
    searchLayout->addLayout(line({caption, text, kit.make(memberlist::Command19, search)}));
    auto* options = new QHBoxLayout;
    for (int i = 0; i < int(memberlist::SearchCaptions.size()); ++i)
        addAll(*options, {kit.make(memberlist::Option7 + u'(' + QString::number(i) + u')', search)});
    options->addSpacing(16);
    addAll(*options, {kit.make(memberlist::Check17, search)});
    options->addStretch(1);
    searchLayout->addLayout(options);
    layout->addWidget(search);

    auto* middle = new QHBoxLayout;
    if (auto* grid = kit.make<QTableView>(memberlist::memList, &root)) {
        grid->horizontalHeader()->setStretchLastSection(true);
        grid->setMinimumSize(640, 240);
        middle->addWidget(grid, 1);
    }
    auto* side = new QVBoxLayout;
    addAll(*side,
        {picture(kit, memberlist::mpicture2, &root),
            kit.make(memberlist::Command21, &root),
            kit.make(memberlist::Command22, &root),
            kit.make(memberlist::Command23, &root)});
    side->addStretch(1);
    middle->addLayout(side);
    layout->addLayout(middle, 1);
    layout->addLayout(buttonRow(kit, &root, {memberlist::Command20}, {}));
}

} // namespace marlet::views
