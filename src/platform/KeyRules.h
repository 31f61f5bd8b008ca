#pragma once

#include <functional>

namespace marlet {

class Control;

// Key rules of entry fields, by the key-down code the host's forms report (letters by their
// capital, the full stop as 190, the keypad's digits as 96 to 105 and its point as 110).
namespace keyrules {

bool isDigitKey(int keyCode);
// Digits, the full stop and Backspace: what a numeric field takes.
bool isNumericKey(int keyCode);
bool isLetterKey(int keyCode);

// A refused key makes the field read-only until the key is released, so that its character never
// reaches the text; the next key is judged afresh.
void lockUntilReleased(Control& field, std::function<bool(int keyCode)> allowed);

// The whole text is selected when the field takes the focus, so that typing replaces it.
void selectAllOnFocus(Control& field);

} // namespace keyrules

} // namespace marlet
