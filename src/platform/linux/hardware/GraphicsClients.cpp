#include "platform/linux/hardware/GraphicsClients.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace korvantis {
namespace {

/// A desktop has a few dozen clients; what a machine full of them needs is left to others.
constexpr int mostOpenFiles = 64;

/// The time that all engines worked, from the share that each gave the client of the cycles gone
/// by since the last reading.
std::uint64_t cycleNanoseconds(const DrmClientText& last, const DrmClientText& now,
                               double seconds) {
  double share = 0;
  for (const auto& [engine, cycles] : now.cycles) {
    const auto cyclesThen = last.cycles.find(engine);
    const auto totalThen = last.totalCycles.find(engine);
    const auto total = now.totalCycles.find(engine);
    if (cyclesThen == last.cycles.end() || totalThen == last.totalCycles.end() ||
        total == now.totalCycles.end() || total->second <= totalThen->second ||
        cycles <= cyclesThen->second) {
      continue;
    }
    share += std::min(1.0, static_cast<double>(cycles - cyclesThen->second) /
                               static_cast<double>(total->second - totalThen->second));
  }
  return static_cast<std::uint64_t>(std::llround(share * seconds * 1e9));
}

}  // namespace

void GraphicsClients::reconsiderSeconds() {
  for (auto& [place, descriptor] : byPlace) descriptor.isSecond = false;
}

void GraphicsClients::setHolders(const std::vector<DeviceHolder>& holders) {
  const std::size_t knownBefore = byPlace.size();
  std::size_t stayed = 0;
  std::map<Place, Descriptor> found;
  for (const DeviceHolder& holder : holders) {
    const Place place{holder.pid, holder.descriptor};
    auto known = byPlace.extract(place);
    if (!known.empty() && known.mapped().processName == holder.name) {
      found.insert(std::move(known));
      ++stayed;
      continue;
    }
    const std::string path = root + "/proc/" + std::to_string(holder.pid) + "/fdinfo/" +
                             std::to_string(holder.descriptor);
    found.emplace(place, Descriptor{holder.name, AttributeFile(path)});
  }
  byPlace = std::move(found);
  if (stayed < knownBefore) reconsiderSeconds();
}

GraphicsClients::Known GraphicsClients::beginning(const Descriptor& descriptor, std::int32_t pid,
                                                  const DrmClientText& text,
                                                  const Reading& reading) {
  Known known;
  known.client.pid = pid;
  known.client.name = descriptor.processName;
  known.engineNanoseconds = text.engineNanoseconds.value_or(0);
  // Beside other clients of the process its past would look like work done just now.
  if (!reading.pidsBefore.contains(pid)) known.client.nanoseconds = known.engineNanoseconds;
  return known;
}

void GraphicsClients::advance(Known& known, const DrmClientText& text, double seconds) {
  GraphicsClient& client = known.client;
  client.newNanoseconds = 0;
  if (text.engineNanoseconds) {
    const std::uint64_t now = std::max(*text.engineNanoseconds, known.engineNanoseconds);
    client.newNanoseconds = now - known.engineNanoseconds;
    known.engineNanoseconds = now;
  } else {
    client.newNanoseconds = cycleNanoseconds(known.last, text, seconds);
  }
  client.nanoseconds += client.newNanoseconds;
}

/// False when there is no client behind the descriptor any more.
bool GraphicsClients::readThrough(Descriptor& descriptor, std::int32_t pid, Reading& reading) {
  const auto fdinfo = descriptor.file.text();
  auto text = fdinfo ? parseDrmClient(*fdinfo) : std::nullopt;
  if (!text) return false;
  const Name name{text->device, text->client};
  descriptor.isSecond = reading.now.contains(name);
  if (descriptor.isSecond || ++reading.open > mostOpenFiles) descriptor.file.close();
  if (descriptor.isSecond) return true;
  const auto before = reading.before.find(name);
  const bool goesOn = before != reading.before.end() && before->second.client.pid == pid;
  Known known = goesOn ? std::move(before->second) : beginning(descriptor, pid, *text, reading);
  if (goesOn) advance(known, *text, reading.seconds);
  known.client.device = text->device;
  known.client.driver = text->driver;
  known.client.memoryBytes = text->memoryBytes;
  known.last = *std::move(text);
  reading.now.emplace(name, std::move(known));
  return true;
}

std::vector<GraphicsClient> GraphicsClients::read(double seconds) {
  Reading reading;
  reading.seconds = seconds;
  reading.before = std::exchange(byName, {});
  for (const auto& [name, known] : reading.before) reading.pidsBefore.insert(known.client.pid);
  std::vector<Place> spared;
  bool lostOne = false;
  for (auto entry = byPlace.begin(); entry != byPlace.end();) {
    auto& [place, descriptor] = *entry;
    if (descriptor.isSecond) spared.push_back(place);
    // One that is gone, or no client, is not read again before the next walk finds it.
    const bool isLost = !descriptor.isSecond && !readThrough(descriptor, place.first, reading);
    lostOne = lostOne || isLost;
    entry = isLost ? byPlace.erase(entry) : std::next(entry);
  }
  if (lostOne) {
    for (const Place& place : spared) {
      const auto second = byPlace.find(place);
      if (!readThrough(second->second, place.first, reading)) byPlace.erase(second);
    }
  }
  byName = std::move(reading.now);
  std::vector<GraphicsClient> clients;
  clients.reserve(byName.size());
  for (const auto& [name, known] : byName) clients.push_back(known.client);
  return clients;
}

}  // namespace korvantis
