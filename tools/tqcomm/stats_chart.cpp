#include "stats_chart.h"

namespace tqcomm {

bool DrawStatsPng(const StatsInput&, const StatsReport&, const std::string&, std::string* error) {
  *error = "pictures are not drawn yet";
  return false;
}

}  // namespace tqcomm
