#include "platform/linux/hardware/NvidiaCards.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unistd.h>

#include "platform/linux/FolderNames.h"
#include "platform/linux/TextFields.h"
#include "platform/linux/hardware/AttributeFile.h"
#include "platform/linux/hardware/DeviceHolders.h"

namespace korvantis {
namespace {

constexpr double lookPace = 30.0;
constexpr double fetchPace = 0.9;
constexpr double longestAge = 10.0;
constexpr double longestInterval = 10.0;
/// Opening a library that is not there searches many folders.
constexpr double retryPace = 60.0;
/// A program that has not been seen for this long starts at 0 again.
constexpr double usageMemory = 60.0;
constexpr unsigned mostSamples = 4096;

const char* const gpuFolder = "/proc/driver/nvidia/gpus";

std::optional<std::string> modelIn(const std::string& information) {
  const auto rest = lineField(information, "Model");
  if (!rest) return std::nullopt;
  const std::size_t first = rest->find_first_not_of(" \t");
  return first == std::string_view::npos ? std::nullopt
                                         : std::optional(std::string(rest->substr(first)));
}

/// The mean share of each process that worked since the last look, 0 to 1.
std::map<std::int32_t, double> sharesOf(const std::vector<nvml::ProcessSample>& samples,
                                        unsigned long long since) {
  std::map<std::int32_t, std::pair<double, int>> sums;
  for (const nvml::ProcessSample& sample : samples) {
    // Old samples stay in the driver's buffer.
    if (sample.timeStamp <= since || sample.pid == 0) continue;
    auto& [sum, count] = sums[static_cast<std::int32_t>(sample.pid)];
    sum += std::min(sample.smUtil, 100U) / 100.0;
    ++count;
  }
  std::map<std::int32_t, double> shares;
  for (const auto& [pid, sum] : sums) shares[pid] = sum.first / sum.second;
  return shares;
}

/// The first call tells how many there are, the second one fetches them.
std::vector<nvml::ProcessSample> samplesOf(const NvidiaLibrary& library, nvml::Device device,
                                           unsigned long long since) {
  unsigned count = 0;
  const nvml::Result asked = library.deviceGetProcessUtilization(device, nullptr, &count, since);
  // Nothing found means that nothing worked.
  if (asked != nvml::insufficientSize && asked != nvml::success) return {};
  count = std::min(count, mostSamples);
  if (count == 0) return {};
  std::vector<nvml::ProcessSample> samples(count);
  if (library.deviceGetProcessUtilization(device, samples.data(), &count, since) != nvml::success) {
    return {};
  }
  samples.resize(std::min<std::size_t>(count, samples.size()));
  return samples;
}

}  // namespace

NvidiaCards::NvidiaCards(const HardwareSources& sources)
    : root(sources.root),
      libraryName(sources.nvidiaLibrary),
      monotonicSeconds(sources.monotonicSeconds),
      work(sources.inBackground, sources.monotonicSeconds, fetchPace, [this] { fetch(); }) {}

bool NvidiaCards::isPresent() {
  const double now = monotonicSeconds();
  {
    const std::scoped_lock guard(lock);
    if (lookedAt && now - *lookedAt < lookPace) return present;
  }
  const auto has = [this](const char* path) { return ::access((root + path).c_str(), F_OK) == 0; };
  // The second is how a guest of Windows sees its host's card.
  const bool found = has("/proc/driver/nvidia") || has("/dev/dxg");
  const std::scoped_lock guard(lock);
  lookedAt = now;
  present = found;
  return found;
}

bool NvidiaCards::allAreAsleep() const {
  const auto cards = namesInFolder(root + gpuFolder);
  return !cards.empty() && std::all_of(cards.begin(), cards.end(), [this](const std::string& card) {
    return attributeText(root + "/sys/bus/pci/devices/" + card + "/power/runtime_status")
        .starts_with("suspend");
  });
}

bool NvidiaCards::mayAsk() {
  // Any question wakes the cards; where one is awake, the others follow it.
  if (libraryName.empty() || allAreAsleep()) return false;
  if (library) return true;
  const double now = monotonicSeconds();
  if (triedAt && now - *triedAt < retryPace) return false;
  triedAt = now;
  library = NvidiaLibrary::open(libraryName);
  return library != nullptr;
}

void NvidiaCards::addClients(NvidiaCard& card, nvml::Device device, Device& known,
                             double seconds) const {
  const auto samples = samplesOf(*library, device, known.lastStamp);
  const double now = monotonicSeconds();
  for (const auto& [pid, share] : sharesOf(samples, known.lastStamp)) {
    Usage& usage = known.usages[pid];
    usage.nanoseconds += static_cast<std::uint64_t>(share * seconds * 1e9);
    usage.seenAt = now;
  }
  for (const nvml::ProcessSample& sample : samples) {
    known.lastStamp = std::max(known.lastStamp, sample.timeStamp);
  }
  std::erase_if(known.usages,
                [now](const auto& entry) { return now - entry.second.seenAt > usageMemory; });
  for (const auto& [pid, usage] : known.usages) {
    card.clients.push_back({pid, processName(root, pid), usage.nanoseconds});
  }
}

NvidiaCard NvidiaCards::ask(nvml::Device device, Device& known, double seconds) const {
  NvidiaCard card;
  std::array<char, 97> name{};
  if (library->deviceGetName(device, name.data(), name.size() - 1) == nvml::success) {
    card.model = name.data();
  }
  unsigned figure = 0;
  if (library->deviceGetNumGpuCores != nullptr &&
      library->deviceGetNumGpuCores(device, &figure) == nvml::success) {
    card.cores = figure;
  }
  if (library->deviceGetTemperature(device, nvml::temperatureOfChip, &figure) == nvml::success) {
    card.celsius = figure;
  }
  nvml::Utilization rates{};
  if (library->deviceGetUtilizationRates(device, &rates) == nvml::success) {
    card.busyPercent = rates.gpu;
  }
  nvml::Memory memory{};
  if (library->deviceGetMemoryInfo(device, &memory) == nvml::success) {
    card.memoryBytes = static_cast<std::int64_t>(memory.used & INT64_MAX);
  }
  addClients(card, device, known, seconds);
  return card;
}

void NvidiaCards::fetch() {
  const std::scoped_lock one(fetching);
  if (!mayAsk()) return;
  const double now = monotonicSeconds();
  // After a pause nobody knows what was done in it.
  const double seconds = fetchedAt ? std::min(now - *fetchedAt, longestInterval) : 0;
  fetchedAt = now;
  unsigned count = 0;
  if (library->deviceGetCount(&count) != nvml::success) {
    // The driver was replaced or unloaded: start anew at the slow pace.
    library.reset();
    return;
  }
  devices.resize(count);
  std::vector<NvidiaCard> cards;
  for (unsigned index = 0; index < count; ++index) {
    nvml::Device device = nullptr;
    if (library->deviceGetHandleByIndex(index, &device) != nvml::success) continue;
    cards.push_back(ask(device, devices[index], seconds));
  }
  const std::scoped_lock guard(lock);
  lastCards = std::move(cards);
  answeredAt = now;
}

std::vector<NvidiaCard> NvidiaCards::namedByDriver() const {
  std::vector<NvidiaCard> cards;
  auto names = namesInFolder(root + gpuFolder);
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) {
    NvidiaCard card;
    card.model = modelIn(attributeText(root + gpuFolder + "/" + name + "/information") + "\n");
    cards.push_back(std::move(card));
  }
  return cards;
}

std::vector<NvidiaCard> NvidiaCards::cards() {
  if (!isPresent()) return {};
  work.ask();
  const double now = monotonicSeconds();
  {
    const std::scoped_lock guard(lock);
    if (answeredAt && now - *answeredAt <= longestAge) return lastCards;
  }
  return namedByDriver();
}

std::optional<double> NvidiaCards::hottestCelsius() {
  std::optional<double> hottest;
  const double now = monotonicSeconds();
  const std::scoped_lock guard(lock);
  if (!answeredAt || now - *answeredAt > longestAge) return hottest;
  for (const NvidiaCard& card : lastCards) {
    if (card.celsius) hottest = std::max(hottest.value_or(*card.celsius), *card.celsius);
  }
  return hottest;
}

}  // namespace korvantis
