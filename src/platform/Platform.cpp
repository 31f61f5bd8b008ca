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

QString MessageTitle()
{
    // Built from the version numbers at every message, never kept in a variable.
    return QStringLiteral("Norvantis v") + QString::number(MARLET_VERSION_MAJOR) + u'.'
           + QString::number(MARLET_VERSION_MINOR) + u'.' + QString::number(MARLET_VERSION_REVISION);
}

} // namespace marlet
