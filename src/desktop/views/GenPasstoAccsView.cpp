#include "desktop/views/GenPasstoAccsView.h"

#include "desktop/views/ViewKit.h"
#include "screens/GenPasstoAccsNames.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QGroupBox>

namespace marlet::views {

namespace {

// One login: a frame of the form with its user name and password.
QFormLayout* addLogin(
    ViewKit& kit, QWidget& root, QBoxLayout& logins, const QString& frame, const QString& user, const QString& password)
{
    auto* box = kit.frame(frame, new QGroupBox(&root));
    QFormLayout* fields = formLayout(box);
    for (const QString& name : {user, password}) {
        if (QWidget* field = kit.addRow(*fields, name, box))
            field->setMinimumWidth(180);
    }
    logins.addWidget(box);
    return fields;
}

} // namespace

void buildGenPasstoAccsView(Form& form, QWidget& root, ViewWidgets& widgets)
{
    ViewKit kit(form, widgets);
    auto* layout = new QHBoxLayout(&root);
    auto* logins = new QVBoxLayout;
    QFormLayout* first
        = addLogin(kit, root, *logins, genpasstoaccs::Frame1, genpasstoaccs::txtUsername1, genpasstoaccs::txtPassword1);
    QFormLayout* second
        = addLogin(kit, root, *logins, genpasstoaccs::Frame2, genpasstoaccs::txtUsername2, genpasstoaccs::txtPassword2);
    logins->addStretch(1);
    layout->addLayout(logins);

    auto* buttons = new QVBoxLayout;
    addAll(*buttons, {kit.make(genpasstoaccs::cmdOK, &root), kit.make(genpasstoaccs::cmdCancel, &root)});
    buttons->addStretch(1);
    layout->addLayout(buttons);
    // Both frames' labels line up, whichever of them shows.
    alignLabels({first, second});
    fixWindowSize(root);
}

} // namespace marlet::views
