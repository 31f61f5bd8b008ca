#include "desktop/DropDownComboBox.h"

namespace marlet {

void DropDownComboBox::showPopup()
{
    emit aboutToDropDown();
    QComboBox::showPopup();
}

} // namespace marlet
