#pragma once

#include <QString>

namespace marlet::test {

// Folder of the test sources, for data files that tests read.
QString testDataDir();

} // namespace marlet::test
