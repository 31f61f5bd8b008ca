#pragma once

namespace marlet {

// Wrong passwords at the gates, counted over the session: the first is free, each one after it
// costs a pause that doubles up to eight seconds, so that guessing a password at the screen or on
// the terminal is slow. A right password starts the count again.
class PasswordAttempts
{
public:
    // Counts a wrong password; the pause to take before answering it, in milliseconds.
    int wrong();
    void right() { m_wrong = 0; }

private:
    int m_wrong = 0;
};

} // namespace marlet
