#pragma once

#include <QString>
#include <QStringList>

namespace marlet {

class Control;
class Form;

// A property of a control or form as text, for checks: the value, or why it cannot be read.
struct PropertyValue
{
    QString value;
    QString error; // empty when the value could be read
};

// Properties a check can read from a control: "text", "caption", "enabled", "item(2)",
// "cell(1,3)" ... Names match without regard to case; numbers in brackets count from 0.
bool isControlProperty(const QString& property);
PropertyValue readControlProperty(const Control& control, const QString& property);
QStringList controlPropertyNames();

// Properties of the form itself: "caption", "name", "width", "height".
bool isFormProperty(const QString& property);
PropertyValue readFormProperty(const Form& form, const QString& property);
QStringList formPropertyNames();

} // namespace marlet
