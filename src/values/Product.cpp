#include "values/Product.h"

namespace marlet {

QString MessageTitle()
{
    // Built from the version numbers at every message, never kept in a variable.
    return ProductWord + QStringLiteral(" v") + QString::number(MARLET_VERSION_MAJOR) + u'.'
        + QString::number(MARLET_VERSION_MINOR) + u'.' + QString::number(MARLET_VERSION_REVISION);
}

} // namespace marlet
