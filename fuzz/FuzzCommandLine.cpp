// libFuzzer entry for the command line of marlet generate: the input, split at line breaks, is the
// words after the command. Parsing gives the options or one error naming an option; a value it
// accepts for an option with a list of values is one of them.

#include "../app/marlet/CommandCatalogue.h"
#include "../app/marlet/HostOptions.h"

#include "FuzzCheck.h"

#include <QStringList>

#include <cstdint>

using marlet::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const marlet::host::CommandSpec* generate = marlet::host::findCommand(QStringLiteral("generate"));
    require(generate != nullptr);
    marlet::host::HostOptions options;
    if (!options.parse(input.split(u'\n'), *generate)) {
        require(options.error().contains(QStringLiteral("--")));
        return 0;
    }
    for (const marlet::host::OptionSpec& option : generate->options) {
        const QString value = options.value(option.name);
        if (!option.accepted.isEmpty() && !value.isEmpty())
            require(option.accepted.contains(value));
    }
    return 0;
}
