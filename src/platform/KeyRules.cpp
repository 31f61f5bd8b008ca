#include "platform/KeyRules.h"

#include "platform/Control.h"

namespace marlet::keyrules {

namespace {

constexpr int FullStop = 190;
constexpr int KeypadZero = 96;
constexpr int KeypadNine = 105;
constexpr int KeypadPoint = 110;

} // namespace

bool isDigitKey(int keyCode)
{
    return (keyCode >= '0' && keyCode <= '9') || (keyCode >= KeypadZero && keyCode <= KeypadNine);
}

bool isNumericKey(int keyCode)
{
    return isDigitKey(keyCode) || keyCode == FullStop || keyCode == KeypadPoint || keyCode == Key::Backspace;
}

bool isLetterKey(int keyCode)
{
    return keyCode >= 'A' && keyCode <= 'Z';
}

void lockUntilReleased(Control& field, std::function<bool(int keyCode)> allowed)
{
    field.onKeyDown = [&field, allowed = std::move(allowed)](int& keyCode, int) {
        if (!allowed(keyCode))
            field.setLocked(true);
    };
    field.onKeyUp = [&field](int&, int) { field.setLocked(false); };
}

void selectAllOnFocus(Control& field)
{
    field.onGotFocus = [&field] { field.selectAll(); };
}

} // namespace marlet::keyrules
