#pragma once

#include <QComboBox>

namespace marlet {

// A combo box that says when its list is about to drop down, so that a screen can still fill the
// list before it shows (the drop-down event).
class DropDownComboBox : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

    void showPopup() override;

signals:
    void aboutToDropDown();
};

} // namespace marlet
