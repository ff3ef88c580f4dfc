#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/hardware/AttributeFile.h"
#include "platform/linux/hardware/DeviceHolders.h"
#include "platform/linux/hardware/DrmClientText.h"

namespace korvantis {

/// A program's use of a graphics card.
struct GraphicsClient {
  std::int32_t pid = 0;
  std::string name;
  /// The PCI address of the card; empty for one that has none.
  std::string device;
  std::string driver;
  /// Time that the card worked for it since it was first seen or since it began; never falls.
  std::uint64_t nanoseconds = 0;
  /// How much of that fell between the last two readings.
  std::uint64_t newNanoseconds = 0;
  std::uint64_t memoryBytes = 0;
};

/// The clients of all graphics cards behind descriptors that stay open; several descriptors of one
/// client count once. One thread at a time.
class GraphicsClients {
 public:
  explicit GraphicsClients(std::string rootFolder) : root(std::move(rootFolder)) {}

  /// Takes over who holds graphics devices now. Known ones stay open and keep their figures.
  void setHolders(const std::vector<DeviceHolder>& holders);

  /// All clients now. `seconds` is the time since the last reading, 0 for the first one.
  std::vector<GraphicsClient> read(double seconds);

 private:
  using Place = std::pair<std::int32_t, std::int32_t>;
  struct Known {
    GraphicsClient client;
    AttributeFile file;
    std::optional<DrmClientText> last;
    /// Another descriptor of a client that is read already: left alone while that one is there.
    bool isSecond = false;
  };

  void reconsiderSeconds();
  static void advance(Known& known, DrmClientText&& text, double seconds);

  const std::string root;
  std::map<Place, Known> byPlace;
};

}  // namespace korvantis
