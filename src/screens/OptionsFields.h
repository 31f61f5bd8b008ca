#pragma once

#include <QString>

#include <initializer_list>

namespace marlet {

class Control;
class Form;

// What the pages of the settings screen do alike with their fields.
namespace optionsfields {

// A check box takes a stored check value it can show; any other text leaves it as it stands.
void showCheckValue(Control& box, const QString& stored);
// What a check box stores: its value as text, "0", "1" or "2".
QString checkValue(const Control& box);
// "True" or "False", the stored form of a yes/no value.
QString yesNoText(bool value);
// The picked option of a group shows its caption in red, the others in black.
void markPicked(Form& form, std::initializer_list<QString> options);

} // namespace optionsfields

} // namespace marlet
