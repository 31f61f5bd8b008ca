#include "support/SourceFolder.h"

#include <QtGlobal>

namespace marlet::test {

QString testDataDir()
{
    return qEnvironmentVariable("MARLET_TEST_DATA", QStringLiteral(MARLET_TEST_SOURCE_DIR));
}

} // namespace marlet::test
