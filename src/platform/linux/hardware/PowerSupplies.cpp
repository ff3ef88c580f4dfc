#include "platform/linux/hardware/PowerSupplies.h"

#include <unistd.h>

#include "platform/linux/FolderNames.h"

namespace korvantis {
namespace {

constexpr double lookPace = 30.0;
constexpr double readingAge = 0.5;

}  // namespace

PowerSupplies::PowerSupplies(const HardwareSources& sources)
    : folder(sources.root + "/sys/class/power_supply"),
      monotonicSeconds(sources.monotonicSeconds) {}

void PowerSupplies::look() {
  hasFolder = ::access(folder.c_str(), F_OK) == 0;
  std::map<std::string, AttributeFile> found;
  for (const std::string& name : namesInFolder(folder)) {
    auto known = files.extract(name);
    if (known.empty()) {
      found.emplace(name, AttributeFile(folder + "/" + name + "/uevent"));
    } else {
      found.insert(std::move(known));
    }
  }
  files = std::move(found);
}

std::optional<std::vector<PowerSupply>> PowerSupplies::read() {
  const std::scoped_lock guard(lock);
  const double now = monotonicSeconds();
  if (!lookedAt || now - *lookedAt >= lookPace) {
    lookedAt = now;
    look();
    readAt.reset();
  }
  if (!hasFolder) return std::nullopt;
  if (readAt && now - *readAt < readingAge) return supplies;
  supplies.clear();
  for (auto& [name, file] : files) {
    const auto text = file.text();
    if (!text) continue;
    PowerSupply supply = parsePowerSupply(*text);
    if (!supply.ofPeripheral && supply.present) supplies.push_back(std::move(supply));
  }
  // From its end on: reading may take longer than a reading lasts.
  readAt = monotonicSeconds();
  return supplies;
}

}  // namespace korvantis
