#include "platform/linux/hardware/Accelerators.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace korvantis {
namespace {

constexpr double walkPace = 15.0;
constexpr double readingAge = 0.25;

PropertyValue wholeNumber(std::uint64_t number) {
  constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
  return PropertyValue{static_cast<std::int64_t>(std::min(number, most))};
}

PropertyMap userClient(std::int32_t pid, const std::string& name) {
  return {{"IOUserClientCreator", PropertyValue{"pid " + std::to_string(pid) + ", " + name}}};
}

PropertyMap graphicsClient(std::int32_t pid, const std::string& name, std::uint64_t nanoseconds) {
  PropertyMap map = userClient(pid, name);
  const PropertyMap usage{{"accumulatedGPUTime", wholeNumber(nanoseconds)}};
  map["AppUsage"] = PropertyValue{PropertyValue::List{PropertyValue{usage}}};
  return map;
}

PropertyMap cardProperties(const std::optional<std::string>& model,
                           const std::optional<double>& busyPercent,
                           const std::optional<std::int64_t>& memoryBytes) {
  PropertyMap properties;
  if (model) properties["model"] = PropertyValue{*model};
  PropertyMap statistics;
  if (busyPercent) statistics["Device Utilization %"] = PropertyValue{*busyPercent};
  if (memoryBytes) statistics["In use system memory"] = PropertyValue{*memoryBytes};
  // A card of which nothing is known has no statistics, not empty ones.
  if (!statistics.empty()) properties["PerformanceStatistics"] = PropertyValue{statistics};
  return properties;
}

/// A card without an address is known by its driver alone.
bool isOn(const GraphicsClient& client, const GraphicsCard& card) {
  return client.device.empty() ? client.driver == card.driver : client.device == card.device;
}

std::optional<double> asReal(const std::optional<std::int64_t>& number) {
  return number ? std::optional(static_cast<double>(*number)) : std::nullopt;
}

}  // namespace

Accelerators::Accelerators(const HardwareSources& sources)
    : root(sources.root),
      monotonicSeconds(sources.monotonicSeconds),
      nvidia(sources),
      cards(sources),
      clients(sources.root),
      engines(sources),
      walking(sources.inBackground, sources.monotonicSeconds, walkPace, [this] { walk(); }) {}

std::vector<IORegistryEntry> Accelerators::entriesOf(const Services& services) {
  std::vector<IORegistryEntry> entries;
  entries.reserve(services.size());
  for (const auto& service : services) {
    IORegistryEntry entry;
    entry.createCFProperties = [service] { return std::optional(service->properties); };
    entry.children = [service] {
      std::vector<IORegistryEntry> children;
      children.reserve(service->children.size());
      for (std::size_t index = 0; index < service->children.size(); ++index) {
        children.push_back({[service, index] { return std::optional(service->children[index]); },
                            [] { return std::vector<IORegistryEntry>(); }});
      }
      return children;
    };
    entries.push_back(std::move(entry));
  }
  return entries;
}

Accelerators::Services Accelerators::drmServices(const std::vector<GraphicsCard>& cards,
                                                 const std::vector<GraphicsClient>& clients,
                                                 double seconds) {
  Services services;
  for (const GraphicsCard& card : cards) {
    auto service = std::make_shared<Service>();
    std::uint64_t newNanoseconds = 0;
    std::uint64_t memoryBytes = 0;
    for (const GraphicsClient& client : clients) {
      if (!isOn(client, card)) continue;
      newNanoseconds += client.newNanoseconds;
      memoryBytes += client.memoryBytes;
      service->children.push_back(graphicsClient(client.pid, client.name, client.nanoseconds));
    }
    auto busy = asReal(card.busyPercent);
    auto memory = card.memoryBytes;
    if (!service->children.empty()) {
      // Without privilege some drivers tell nothing but what each client does.
      if (!busy && seconds > 0) {
        busy = std::min(static_cast<double>(newNanoseconds) / 1e7 / seconds, 100.0);
      }
      if (!memory) memory = static_cast<std::int64_t>(memoryBytes & INT64_MAX);
    }
    service->properties = cardProperties(card.model, busy, memory);
    services.push_back(std::move(service));
  }
  return services;
}

Accelerators::Services Accelerators::nvidiaServices(const std::vector<NvidiaCard>& cards) {
  Services services;
  for (const NvidiaCard& card : cards) {
    auto service = std::make_shared<Service>();
    service->properties = cardProperties(card.model, asReal(card.busyPercent), card.memoryBytes);
    if (card.cores) service->properties["gpu-core-count"] = PropertyValue{*card.cores};
    for (const NvidiaClient& client : card.clients) {
      service->children.push_back(graphicsClient(client.pid, client.name, client.nanoseconds));
    }
    services.push_back(std::move(service));
  }
  return services;
}

void Accelerators::walk() {
  DeviceHolders holders = findDeviceHolders(root);
  const std::scoped_lock guard(lock);
  newHolders = std::move(holders);
}

void Accelerators::readGraphics(double seconds) {
  const auto nvidiaCards = nvidia.cards();
  auto drmCards = cards.read();
  // Those are the same cards once more, without a figure.
  std::erase_if(drmCards, [&](const GraphicsCard& card) {
    return card.driver == "nvidia" && !nvidiaCards.empty();
  });
  const auto drmClients = clients.read(seconds);
  graphics = nvidiaServices(nvidiaCards);
  for (auto& service : drmServices(drmCards, drmClients, seconds)) {
    graphics.push_back(std::move(service));
  }
  std::stable_partition(graphics.begin(), graphics.end(),
                        [](const auto& service) { return service->properties.contains("model"); });
}

void Accelerators::readNeural() {
  neural.clear();
  const auto percents = engines.busyPercents();
  for (const auto& percent : percents) {
    auto service = std::make_shared<Service>();
    service->properties = cardProperties(std::nullopt, percent, std::nullopt);
    // Which of several engines a program holds open is all one.
    if (neural.empty()) {
      std::int32_t lastPid = 0;
      for (const DeviceHolder& holder : neuralHolders) {
        if (holder.pid == std::exchange(lastPid, holder.pid)) continue;
        service->children.push_back(userClient(holder.pid, holder.name));
      }
    }
    neural.push_back(std::move(service));
  }
}

void Accelerators::refresh() {
  const double now = monotonicSeconds();
  const std::scoped_lock guard(lock);
  if (readAt && now - *readAt < readingAge) return;
  const double seconds = readAt ? now - *readAt : 0;
  readAt = now;
  if (newHolders) {
    clients.setHolders(newHolders->graphics);
    neuralHolders = std::move(newHolders->neural);
    newHolders.reset();
  }
  readGraphics(seconds);
  readNeural();
}

std::vector<IORegistryEntry> Accelerators::graphicsServices() {
  walking.ask();
  refresh();
  const std::scoped_lock guard(lock);
  return entriesOf(graphics);
}

std::vector<IORegistryEntry> Accelerators::neuralServices() {
  walking.ask();
  refresh();
  const std::scoped_lock guard(lock);
  return entriesOf(neural);
}

}  // namespace korvantis
