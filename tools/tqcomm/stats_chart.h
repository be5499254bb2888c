// The picture of tqcomm stats: the coming and the past days as bar charts,
// drawn on a host drawing surface and saved as PNG.
#pragma once

#include <string>

#include "stats_report.h"

namespace tqcomm {

// False, with the reason in *error, when the picture cannot be made.
bool DrawStatsPng(const StatsInput& in, const StatsReport& r, const std::string& path, std::string* error);

}  // namespace tqcomm
