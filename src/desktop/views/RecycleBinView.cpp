#include "desktop/views/RecycleBinView.h"

#include "desktop/ViewFactory.h"
#include "desktop/views/ViewKit.h"
#include "platform/Form.h"
#include "screens/RecycleBinNames.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>

namespace marlet::views {

namespace {

constexpr int listWidth = 170;
constexpr int reportWidth = 340;
constexpr int reportHeight = 330;
constexpr int statusWidth = 120;

QGroupBox* ticketFrame(ViewKit& kit, QWidget& root)
{
    auto* frame = kit.frame(recyclebin::Frame2, new QGroupBox(&root));
    auto* layout = new QHBoxLayout(frame);
    if (auto* tickets = kit.make<QListWidget>(recyclebin::List1, frame)) {
        tickets->setMinimumWidth(listWidth);
        tickets->setMaximumWidth(listWidth + 60);
        layout->addWidget(tickets);
    }
    if (QPlainTextEdit* report = kit.reportBox(recyclebin::Text1, frame, QSize(reportWidth, reportHeight)))
        layout->addWidget(report, 1);
    return frame;
}

QVBoxLayout* utilityColumn(ViewKit& kit, QWidget& root)
{
    auto* column = new QVBoxLayout;
    auto* frame = kit.frame(recyclebin::Frame1, new QGroupBox(&root));
    auto* buttons = new QVBoxLayout(frame);
    addAll(*buttons,
        {kit.make(recyclebin::Command4, frame),
            kit.make(recyclebin::Command1, frame),
            kit.make(recyclebin::Command2, frame),
            kit.make(recyclebin::Command7, frame),
            kit.make(recyclebin::Command6, frame),
            kit.make(recyclebin::Command3, frame)});
    column->addWidget(frame);
    column->addStretch(1);
    addAll(*column, {kit.make(recyclebin::Command5, &root)});
    return column;
}

QHBoxLayout* statusLine(ViewKit& kit, QWidget& root)
{
    auto* status = new QHBoxLayout;
    if (QLabel* text = kit.label(recyclebin::Label3, &root)) {
        text->setMinimumWidth(statusWidth);
        status->addWidget(text);
    }
    if (QWidget* bar = kit.make(recyclebin::ProgressBar1, &root))
        status->addWidget(bar, 1);
    return status;
}

} // namespace

void buildRecycleBinView(Form& form, QWidget& root, ViewWidgets& widgets)
{
    ViewKit kit(form, widgets);
    auto* layout = new QVBoxLayout(&root);
    auto* top = new QHBoxLayout;
    top->addWidget(ticketFrame(kit, root), 1);
    top->addLayout(utilityColumn(kit, root));
    layout->addLayout(top, 1);
    layout->addLayout(statusLine(kit, root));
}

} // namespace marlet::views
