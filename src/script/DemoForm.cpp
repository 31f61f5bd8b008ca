#include "script/DemoForm.h"

#include "platform/Platform.h"
#include "values/Numbers.h"

namespace marlet {

namespace {

// The demo form's control names, as the demo script addresses them.
namespace demo {
const QString Text1 = QStringLiteral("Text1");
const QString Command1 = QStringLiteral("Command1");
const QString Label1 = QStringLiteral("Label1");
const QString Command2 = QStringLiteral("Command2");
} // namespace demo

} // namespace

DemoForm::DemoForm(Platform& platform, QString initialValue)
    : Form(platform, QStringLiteral("Demo"))
    , m_initialValue(std::move(initialValue))
{
}

void DemoForm::build()
{
    setCaption(QStringLiteral("Demo"));
    setSize(4000, 2000);
    Control& value = add(ControlKind::TextBox, demo::Text1);
    value.setText(m_initialValue);
    value.setMaxLength(6);
    value.onGotFocus = [&value] { value.selectAll(); };
    value.onLostFocus = [this] { checkNumber(); };
    Control& show = addLabelled(ControlKind::CommandButton, demo::Command1, QStringLiteral("&Show Value"));
    show.onClick = [this] { showValue(); };
    add(ControlKind::Label, demo::Label1);
    Control& close = addLabelled(ControlKind::CommandButton, demo::Command2, QStringLiteral("&Close"));
    close.onClick = [this] { unload(); };
}

void DemoForm::checkNumber()
{
    Control& value = (*this)[demo::Text1];
    if (values::isNumeric(value.text()))
        return;
    platform().messageBox(QStringLiteral("A numeric Value is required! (eg. 123)"), MsgStyle::Exclamation);
    value.setText(QStringLiteral("50"));
}

void DemoForm::showValue()
{
    const QString text = (*this)[demo::Text1].text();
    platform().messageBox(QStringLiteral("The Value is ") + text, MsgStyle::Information);
    (*this)[demo::Label1].setCaption(
        QStringLiteral("Twice the Value: ") + values::numberText(values::leadingNumber(text) * 2));
}

} // namespace marlet
