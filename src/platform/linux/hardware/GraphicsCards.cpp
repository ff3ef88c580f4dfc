#include "platform/linux/hardware/GraphicsCards.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

#include "platform/linux/FileText.h"
#include "platform/linux/hardware/NumberedFolders.h"

namespace korvantis {
namespace {

constexpr double lookPace = 30.0;

std::string deviceName(const std::string& folder) {
  std::error_code error;
  const auto device = std::filesystem::canonical(folder + "/device", error);
  return error ? std::string() : device.filename().string();
}

/// Only a processor's own graphics have a voltage of the north bridge among their sensors.
bool isPartOfProcessor(const std::string& device) {
  for (const std::string& chip : numberedFolders(device + "/hwmon", "hwmon")) {
    if (attributeText(chip + "/in1_label") == "vddnb") return true;
  }
  return false;
}

bool exists(const std::string& path) {
  return ::access(path.c_str(), F_OK) == 0;
}

}  // namespace

GraphicsCards::GraphicsCards(const HardwareSources& sources)
    : root(sources.root), monotonicSeconds(sources.monotonicSeconds) {}

GraphicsCards::Known GraphicsCards::survey(const std::string& folder) {
  const std::string device = folder + "/device";
  Known known{{}, AttributeFile(device + "/power/runtime_status"), std::nullopt, {}};
  known.card.device = deviceName(folder);
  known.card.driver = lastPart(readLinkText(AT_FDCWD, device + "/driver").value_or(""));
  const std::string product = attributeText(device + "/product_name");
  if (!product.empty()) known.card.model = product;
  if (exists(device + "/gpu_busy_percent")) known.busy.emplace(device + "/gpu_busy_percent");
  if (exists(device + "/mem_info_vram_used")) {
    known.memories.emplace_back(device + "/mem_info_vram_used");
    if (isPartOfProcessor(device)) known.memories.emplace_back(device + "/mem_info_gtt_used");
  }
  return known;
}

void GraphicsCards::look() {
  const auto folders = numberedFolders(root + "/sys/class/drm", "card");
  if (folders == lastFolders) return;
  lastFolders = folders;
  cards.clear();
  for (const std::string& folder : folders) cards.push_back(survey(folder));
}

std::vector<GraphicsCard> GraphicsCards::read() {
  const double now = monotonicSeconds();
  if (!lookedAt || now - *lookedAt >= lookPace) {
    lookedAt = now;
    look();
  }
  std::vector<GraphicsCard> result;
  for (Known& known : cards) {
    GraphicsCard card = known.card;
    const bool tells = known.busy || !known.memories.empty();
    const bool asleep = tells && known.sleep.text().value_or("").starts_with("suspend");
    if (known.busy)
      card.busyPercent = asleep ? std::optional<std::int64_t>(0) : known.busy->number();
    for (AttributeFile& memory : known.memories) {
      const auto bytes = asleep ? std::optional<std::int64_t>(0) : memory.number();
      constexpr std::int64_t most = std::int64_t{1} << 56;
      if (bytes)
        card.memoryBytes = card.memoryBytes.value_or(0) + std::clamp<std::int64_t>(*bytes, 0, most);
    }
    result.push_back(std::move(card));
  }
  return result;
}

}  // namespace korvantis
