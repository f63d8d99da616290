#pragma once

#include <string>

namespace backplot {

// The help of backplot-cli: the overview for an empty `command`, else the command's own.
std::string CommandHelp(const std::string& command);

// "backplot-cli 5.0 (commit abc1234)".
std::string VersionText();

} // namespace backplot
