// libFuzzer entry for connection strings, as a host or a person gives them: parsing never crashes,
// and a string it accepts for SQLite names a file.

#include "store/Connection.h"

#include "FuzzCheck.h"

#include <QString>

#include <cstdint>

using marlet::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const marlet::ConnectionTarget target = marlet::parseConnectionString(text);
    if (target.ok() && target.dialect == marlet::SqlDialect::Sqlite)
        require(!target.location.isEmpty());
    return 0;
}
