#include "platform/linux/hardware/GraphicsClients.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace korvantis {
namespace {

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
  for (auto& [place, known] : byPlace) known.isSecond = false;
}

void GraphicsClients::setHolders(const std::vector<DeviceHolder>& holders) {
  const std::size_t knownBefore = byPlace.size();
  std::size_t stayed = 0;
  std::map<Place, Known> found;
  for (const DeviceHolder& holder : holders) {
    const Place place{holder.pid, holder.descriptor};
    auto known = byPlace.extract(place);
    if (!known.empty() && known.mapped().client.name == holder.name) {
      found.insert(std::move(known));
      ++stayed;
      continue;
    }
    const std::string path = root + "/proc/" + std::to_string(holder.pid) + "/fdinfo/" +
                             std::to_string(holder.descriptor);
    Known fresh{{}, AttributeFile(path), std::nullopt};
    fresh.client.pid = holder.pid;
    fresh.client.name = holder.name;
    found.emplace(place, std::move(fresh));
  }
  byPlace = std::move(found);
  if (stayed < knownBefore) reconsiderSeconds();
}

void GraphicsClients::advance(Known& known, DrmClientText&& text, double seconds) {
  GraphicsClient& client = known.client;
  client.newNanoseconds = 0;
  // A descriptor that was opened anew belongs to another client.
  const bool goesOn =
      known.last && known.last->client == text.client && known.last->device == text.device;
  if (!goesOn) client.nanoseconds = text.engineNanoseconds.value_or(0);
  if (goesOn && text.engineNanoseconds) {
    const std::uint64_t now = std::max(*text.engineNanoseconds, client.nanoseconds);
    client.newNanoseconds = now - client.nanoseconds;
  } else if (goesOn) {
    client.newNanoseconds = cycleNanoseconds(*known.last, text, seconds);
  }
  client.nanoseconds += client.newNanoseconds;
  client.device = text.device;
  client.driver = text.driver;
  client.memoryBytes = text.memoryBytes;
  known.last = std::move(text);
}

std::vector<GraphicsClient> GraphicsClients::read(double seconds) {
  std::vector<GraphicsClient> clients;
  std::set<std::pair<std::string, std::uint64_t>> seen;
  bool lostOne = false;
  for (auto place = byPlace.begin(); place != byPlace.end();) {
    Known& known = place->second;
    const auto fdinfo = known.isSecond ? std::nullopt : known.file.text();
    auto text = fdinfo ? parseDrmClient(*fdinfo) : std::nullopt;
    if (!known.isSecond && !text) {
      // Gone, or no client: not read again before the next walk finds it.
      place = byPlace.erase(place);
      lostOne = true;
      continue;
    }
    ++place;
    if (!text) continue;
    known.isSecond = !seen.emplace(text->device, text->client).second;
    if (known.isSecond) continue;
    advance(known, std::move(*text), seconds);
    clients.push_back(known.client);
  }
  if (lostOne) reconsiderSeconds();
  return clients;
}

}  // namespace korvantis
