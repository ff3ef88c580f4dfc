#include "platform/linux/hardware/NeuralEngines.h"

#include <algorithm>

#include "platform/linux/hardware/NumberedFolders.h"

namespace korvantis {
namespace {

constexpr double lookPace = 30.0;

}  // namespace

NeuralEngines::NeuralEngines(const HardwareSources& sources)
    : folder(sources.root + "/sys/class/accel"), monotonicSeconds(sources.monotonicSeconds) {}

void NeuralEngines::look() {
  const auto folders = numberedFolders(folder, "accel");
  if (folders == lastFolders) return;
  lastFolders = folders;
  engines.clear();
  for (const std::string& engine : folders) {
    engines.push_back({AttributeFile(engine + "/device/npu_busy_time_us"), std::nullopt, 0});
  }
}

std::optional<double> NeuralEngines::advance(Engine& engine, double now) {
  const auto count = engine.busyMicroseconds.number();
  std::optional<double> percent;
  if (count && engine.readAt && now > *engine.readAt && *count >= engine.last && engine.last >= 0) {
    const double seconds = static_cast<double>(*count - engine.last) / 1e6;
    percent = std::min(seconds / (now - *engine.readAt) * 100, 100.0);
  }
  engine.readAt = count ? std::optional(now) : std::nullopt;
  engine.last = count.value_or(0);
  return percent;
}

std::vector<std::optional<double>> NeuralEngines::busyPercents() {
  const double now = monotonicSeconds();
  if (!lookedAt || now - *lookedAt >= lookPace) {
    lookedAt = now;
    look();
  }
  std::vector<std::optional<double>> percents;
  for (Engine& engine : engines) percents.push_back(advance(engine, now));
  return percents;
}

}  // namespace korvantis
