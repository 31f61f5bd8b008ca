// libFuzzer entry for the number, date and format rules the screens compute with. The input is a
// text and, after its first line break, a format pattern: no rule may crash or loop, a text that
// is numeric has a leading number, and a text that is a date reads as one.

#include "values/Dates.h"
#include "values/Formats.h"
#include "values/Numbers.h"

#include "FuzzCheck.h"

#include <QString>

#include <cmath>
#include <cstdint>

using marlet::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString text = input.section(u'\n', 0, 0);
    const QString pattern = input.section(u'\n', 1);

    if (marlet::values::isNumeric(text)) {
        const double number = marlet::values::leadingNumber(text);
        require(!std::isnan(number));
        marlet::values::toInt16(number);
        marlet::values::toInt32(number);
        marlet::values::roundHalfEven(number);
        marlet::values::numberText(number);
    }
    require(marlet::values::isDate(text) == marlet::values::readDate(text).has_value());
    marlet::values::format(text, pattern);
    marlet::values::format(marlet::values::leadingNumber(text), pattern);
    return 0;
}
