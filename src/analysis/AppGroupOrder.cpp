#include "analysis/AppGroupOrder.h"

#include <cmath>

namespace korvantis {

namespace {
constexpr double likeLoadBand = 2.0;
}

bool goesBefore(const AppGroup& first, const AppGroup& second) {
  const bool firstIsApp = first.kind == AppGroupKind::app;
  const bool secondIsApp = second.kind == AppGroupKind::app;
  if (firstIsApp != secondIsApp) return firstIsApp;
  if (std::abs(first.cpuPercent - second.cpuPercent) > likeLoadBand) {
    return first.cpuPercent > second.cpuPercent;
  }
  return first.memoryBytes > second.memoryBytes;
}

}  // namespace korvantis
