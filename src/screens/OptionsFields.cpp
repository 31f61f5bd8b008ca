#include "screens/OptionsFields.h"

#include "platform/Control.h"
#include "platform/Form.h"
#include "values/Numbers.h"

namespace marlet::optionsfields {

void showCheckValue(Control& box, const QString& stored)
{
    const std::optional<qint16> value = values::toInt16(stored);
    if (value && *value >= CheckState::Unchecked && *value <= CheckState::Grayed)
        box.setValue(*value);
}

QString checkValue(const Control& box)
{
    return QString::number(box.value());
}

QString yesNoText(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

void markPicked(Form& form, std::initializer_list<QString> options)
{
    for (const QString& name : options) {
        if (Control* option = form.control(name))
            option->setForeColor(option->value() != 0 ? Colour::Red : Colour::Black);
    }
}

} // namespace marlet::optionsfields
