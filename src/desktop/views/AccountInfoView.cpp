#include "desktop/views/AccountInfoView.h"

#include "desktop/views/ViewKit.h"
#include "screens/AccountInfoNames.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace marlet::views {

namespace {

constexpr int entryWidth = 160;
constexpr int reportWidth = 460;
constexpr int reportHeight = 360;

QHBoxLayout* searchLine(ViewKit& kit, QWidget& root)
{
    auto* top = new QHBoxLayout;
    auto* frame = kit.frame(accountinfo::Frame1, new QGroupBox(&root));
    auto* options = new QHBoxLayout(frame);
    addAll(*options, {kit.make(accountinfo::Option1, frame), kit.make(accountinfo::Option2, frame)});
    top->addWidget(frame);
    auto* entry = kit.make<QLineEdit>(accountinfo::Text2, &root);
    if (entry)
        entry->setMinimumWidth(entryWidth);
    addAll(*top, {kit.label(accountinfo::Label1, &root), entry, kit.make(accountinfo::OKButton, &root)});
    top->addStretch(1);
    return top;
}

QHBoxLayout* footLine(ViewKit& kit, QWidget& root)
{
    auto* foot = new QHBoxLayout;
    if (QLabel* status = kit.label(accountinfo::Label2, &root))
        foot->addWidget(status, 1);
    addAll(*foot, {kit.make(accountinfo::Command1, &root), kit.make(accountinfo::CancelButton, &root)});
    return foot;
}

} // namespace

void buildAccountInfoView(Form& form, QWidget& root, ViewWidgets& widgets)
{
    ViewKit kit(form, widgets);
    auto* layout = new QVBoxLayout(&root);
    layout->addLayout(searchLine(kit, root));
    if (QPlainTextEdit* report = kit.reportBox(accountinfo::Text1, &root, QSize(reportWidth, reportHeight)))
        layout->addWidget(report, 1);
    layout->addLayout(footLine(kit, root));
}

} // namespace marlet::views
