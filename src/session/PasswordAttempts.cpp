#include "session/PasswordAttempts.h"

#include <algorithm>

namespace marlet {

namespace {

constexpr int FirstPause = 1000;
constexpr int LongestPause = 8000;

} // namespace

int PasswordAttempts::wrong()
{
    ++m_wrong;
    if (m_wrong < 2)
        return 0;
    const int doublings = std::min(m_wrong - 2, 3);
    return std::min(FirstPause << doublings, LongestPause);
}

} // namespace marlet
