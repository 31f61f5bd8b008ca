#pragma once

#include "script/ScenarioOperations.h"

namespace marlet {

// The built-in scenario operations plus the component's six entry operations, named as the
// command-line host names them (load-gen-acc, load-options, ...). One component lives for the
// whole run, so that the session carries over from one "open" to the next as it does in a host.
ScenarioOperations entryOperations();

} // namespace marlet
