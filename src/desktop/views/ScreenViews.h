#pragma once

namespace marlet {

// Registers the hand-made views of the component's screens (ContPass, GenPasstoAccs, GenAcc)
// with the ViewFactory. The desktop platform does it when it is created; registering again
// changes nothing.
void registerScreenViews();

} // namespace marlet
