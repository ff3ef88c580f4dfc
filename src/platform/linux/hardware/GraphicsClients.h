#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
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
  /// Time that the card worked for it, since it began where the process has been seen with it from
  /// the start, else since it was first seen; never falls.
  std::uint64_t nanoseconds = 0;
  /// How much of that fell between the last two readings.
  std::uint64_t newNanoseconds = 0;
  std::uint64_t memoryBytes = 0;
};

/// The clients of all graphics cards, the first of them behind files that stay open; several
/// descriptors of one client count once, for the process that was found with it first. The times of
/// a process never jump: a client goes on through whichever of its descriptors is left, and one
/// that turns up beside others counts from then on. One thread at a time.
class GraphicsClients {
 public:
  explicit GraphicsClients(std::string rootFolder) : root(std::move(rootFolder)) {}

  /// Takes over who holds graphics devices now. Known ones stay open and keep their figures.
  void setHolders(const std::vector<DeviceHolder>& holders);

  /// All clients now. `seconds` is the time since the last reading, 0 for the first one.
  std::vector<GraphicsClient> read(double seconds);

 private:
  using Place = std::pair<std::int32_t, std::int32_t>;
  struct Descriptor {
    std::string processName;
    AttributeFile file;
    /// Of a client that is read through another one: left alone while that one is there.
    bool isSecond = false;
  };

  /// The card and the number that it gave the client.
  using Name = std::pair<std::string, std::uint64_t>;
  struct Known {
    GraphicsClient client;
    DrmClientText last;
    /// The most that its engines were said to have worked.
    std::uint64_t engineNanoseconds = 0;
  };

  /// What one reading finds, and what it goes on from.
  struct Reading {
    double seconds = 0;
    std::map<Name, Known> before;
    std::set<std::int32_t> pidsBefore;
    std::map<Name, Known> now;
    /// Files that stay open.
    int open = 0;
  };

  void reconsiderSeconds();
  static bool readThrough(Descriptor& descriptor, std::int32_t pid, Reading& reading);
  static Known beginning(const Descriptor& descriptor, std::int32_t pid, const DrmClientText& text,
                         const Reading& reading);
  static void advance(Known& known, const DrmClientText& text, double seconds);

  const std::string root;
  std::map<Place, Descriptor> byPlace;
  std::map<Name, Known> byName;
};

}  // namespace korvantis
