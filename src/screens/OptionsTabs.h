#pragma once

#include "screens/OptionsTab.h"

#include <memory>

namespace marlet {

class Options;

// The page of the settings screen with this tab-loaded flag (0 to 10). A page that has no fields
// yet comes as an empty page: its panel shows, and it loads and saves nothing.
std::unique_ptr<OptionsTab> createOptionsTab(int flag, Options& screen);

} // namespace marlet
