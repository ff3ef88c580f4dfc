#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/hardware/HardwareSources.h"
#include "platform/linux/hardware/NvidiaLibrary.h"
#include "platform/linux/hardware/PacedWork.h"

namespace korvantis {

/// A program's use of an NVIDIA card.
struct NvidiaClient {
  std::int32_t pid = 0;
  std::string name;
  /// Time that the card worked for it since it was first seen; never falls.
  std::uint64_t nanoseconds = 0;
};

/// An NVIDIA card; absent what is unknown.
struct NvidiaCard {
  std::optional<std::string> model;
  std::optional<std::int64_t> cores;
  std::optional<std::int64_t> busyPercent;
  std::optional<std::int64_t> memoryBytes;
  std::optional<double> celsius;
  std::vector<NvidiaClient> clients;
};

/// The cards of NVIDIA's own driver. Its library can take milliseconds, and much longer when it
/// starts, so it is asked in the background; each tick gets the last figures. Where only the
/// driver is there, its folder in `/proc` still tells what the cards are. Any thread.
class NvidiaCards {
 public:
  explicit NvidiaCards(const HardwareSources& sources);

  /// Whether NVIDIA's driver is loaded; looked up every 30 seconds.
  bool isPresent();

  /// All cards by the last figures; those older than 10 seconds are left out of them.
  std::vector<NvidiaCard> cards();

  /// Degrees Celsius of the hottest card at the last look; absent when unknown.
  std::optional<double> hottestCelsius();

 private:
  struct Usage {
    std::uint64_t nanoseconds = 0;
    double seenAt = 0;
  };
  struct Device {
    unsigned long long lastStamp = 0;
    std::map<std::int32_t, Usage> usages;
  };

  void fetch();
  bool allAreAsleep() const;
  bool mayAsk();
  NvidiaCard ask(nvml::Device device, Device& known, double seconds) const;
  void addClients(NvidiaCard& card, nvml::Device device, Device& known, double seconds) const;
  std::vector<NvidiaCard> namedByDriver() const;

  const std::string root;
  const std::string libraryName;
  const std::function<double()> monotonicSeconds;

  /// What only the work uses; held where that is done by whoever asks.
  std::mutex fetching;
  std::unique_ptr<NvidiaLibrary> library;
  std::optional<double> triedAt;
  std::optional<double> fetchedAt;
  std::vector<Device> devices;

  std::mutex lock;
  std::optional<double> lookedAt;
  bool present = false;
  std::vector<NvidiaCard> lastCards;
  std::optional<double> answeredAt;

  /// The last member: its thread ends before what it uses goes.
  PacedWork work;
};

}  // namespace korvantis
