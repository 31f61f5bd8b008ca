#pragma once

#include <cstdlib>

namespace marlet::fuzz {

// A broken invariant ends the run, so that libFuzzer keeps the input that broke it.
inline void require(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace marlet::fuzz
