#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/hardware/AttributeFile.h"
#include "platform/linux/hardware/HardwareSources.h"

namespace korvantis {

/// A graphics card as its driver tells of it in `/sys/class/drm`.
struct GraphicsCard {
  /// Its PCI address, or the name of its platform device.
  std::string device;
  std::string driver;
  std::optional<std::string> model;
  /// Percent of the time that it worked; absent when its driver does not tell.
  std::optional<std::int64_t> busyPercent;
  /// Bytes of its memory in use, and of the machine's where the card has none of its own; absent
  /// when its driver does not tell.
  std::optional<std::int64_t> memoryBytes;
};

/// All graphics cards behind descriptors that stay open. Which there are is looked up every 30
/// seconds. A card that sleeps is left asleep: it works 0 percent and holds nothing. One thread at
/// a time.
class GraphicsCards {
 public:
  explicit GraphicsCards(const HardwareSources& sources);

  /// All cards now, in the order of their numbers.
  std::vector<GraphicsCard> read();

 private:
  struct Known {
    GraphicsCard card;
    AttributeFile sleep;
    std::optional<AttributeFile> busy;
    std::vector<AttributeFile> memories;
  };

  void look();
  static Known survey(const std::string& folder);

  const std::string root;
  const std::function<double()> monotonicSeconds;
  std::optional<double> lookedAt;
  std::vector<std::string> lastFolders;
  std::vector<Known> cards;
};

}  // namespace korvantis
