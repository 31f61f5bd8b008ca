#include "platform/Platform.h"

namespace marlet {

namespace MsgStyle {

int buttons(int style)
{
    return style & 0x7;
}

int icon(int style)
{
    return style & 0x70;
}

int defaultButton(int style)
{
    return (style & 0x300) >> 8;
}

} // namespace MsgStyle

} // namespace marlet
