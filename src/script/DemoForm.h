#pragma once

#include "platform/Form.h"

namespace marlet {

// A small screen for trying the scenario language: a box that must hold a number (it falls back
// to 50 with a warning otherwise), a button that shows the value and puts twice it in a label,
// and a button that closes the screen.
class DemoForm : public Form
{
    Q_OBJECT

public:
    DemoForm(Platform& platform, QString initialValue);

protected:
    void build() override;

private:
    void checkNumber();
    void showValue();

    QString m_initialValue;
};

} // namespace marlet
