#include "desktop/views/ContPassView.h"

#include "desktop/views/ViewKit.h"
#include "screens/ContPassNames.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

namespace marlet::views {

void buildContPassView(Form& form, QWidget& root, ViewWidgets& widgets)
{
    ViewKit kit(form, widgets);
    auto* layout = new QVBoxLayout(&root);
    auto* fields = formLayout();
    QLabel* caption = kit.label(contpass::lblPassword, &root);
    auto* password = kit.make<QLineEdit>(contpass::txtPassword, &root);
    if (password)
        password->setMinimumWidth(200);
    kit.addRow(*fields, caption, {password});
    layout->addLayout(fields);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    addAll(*buttons, {kit.make(contpass::cmdOK, &root), kit.make(contpass::cmdCancel, &root)});
    layout->addLayout(buttons);
    fixWindowSize(root);
}

} // namespace marlet::views
