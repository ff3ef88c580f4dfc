#include "platform/linux/hardware/LinuxVolumes.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace korvantis {
namespace {

/// Ten thousand mounts take about one megabyte.
constexpr std::size_t mostBytes = std::size_t{16} << 20;
/// Where containers come and go all the time, the list changes with every tick.
constexpr double readPace = 5.0;

std::optional<std::string> wholeText(int descriptor) {
  std::string text;
  std::size_t length = 0;
  text.resize(std::size_t{1} << 16);
  while (length < mostBytes) {
    if (text.size() - length < 4096) text.resize(text.size() * 2);
    const ssize_t got =
        ::pread(descriptor, text.data() + length, text.size() - length, static_cast<off_t>(length));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return std::nullopt;
    if (got == 0) break;
    length += static_cast<std::size_t>(got);
  }
  text.resize(length);
  return text;
}

}  // namespace

LinuxVolumes::LinuxVolumes(const HardwareSources& sources, const Space& capacity)
    : root(sources.root),
      mountsChanged(sources.mountsChanged),
      space(capacity),
      unhurried(sources.monotonicSeconds, capacity),
      work(sources.inBackground, sources.monotonicSeconds, readPace, [this] { readAgain(); }) {}

std::optional<std::vector<LinuxVolumes::Volume>> LinuxVolumes::readList() const {
  const auto text = list ? wholeText(list.number()) : std::nullopt;
  if (!text) return std::nullopt;
  const auto labels = readVolumeLabels(root);
  std::vector<Volume> found;
  for (MountedFileSystem& mount : parseMountList(*text)) {
    VolumeTraits traits = readVolumeTraits(root, mount, labels);
    found.push_back({std::move(mount), std::move(traits)});
  }
  return found;
}

void LinuxVolumes::readFirst() {
  const std::scoped_lock one(reading);
  {
    const std::scoped_lock guard(lock);
    if (volumes) return;
  }
  const std::string path = root + "/proc/self/mountinfo";
  FileDescriptor fresh(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  {
    const std::scoped_lock guard(lock);
    list = std::move(fresh);
  }
  auto found = readList();
  const std::scoped_lock guard(lock);
  volumes = std::move(found);
}

void LinuxVolumes::readAgain() {
  const std::scoped_lock one(reading);
  {
    // A change that comes from here on is another one.
    const std::scoped_lock guard(lock);
    stale = false;
  }
  auto found = readList();
  const std::scoped_lock guard(lock);
  volumes = std::move(found);
}

std::optional<std::vector<std::string>> LinuxVolumes::paths() {
  bool isKnown = false;
  bool hasChanged = false;
  {
    const std::scoped_lock guard(lock);
    isKnown = volumes.has_value();
    if (isKnown && mountsChanged(list.number())) stale = true;
    hasChanged = stale;
  }
  if (!isKnown) readFirst();
  if (isKnown && hasChanged) work.ask();
  const std::scoped_lock guard(lock);
  if (!volumes) return std::nullopt;
  std::vector<std::string> result;
  result.reserve(volumes->size());
  for (const Volume& volume : *volumes) result.push_back(volume.mount.path);
  return result;
}

std::optional<LinuxVolumes::Volume> LinuxVolumes::volumeAt(const std::string& path) {
  const std::scoped_lock guard(lock);
  if (!volumes) return std::nullopt;
  const auto found = std::find_if(volumes->begin(), volumes->end(),
                                  [&](const Volume& volume) { return volume.mount.path == path; });
  return found == volumes->end() ? std::nullopt : std::optional(*found);
}

std::optional<VolumeResourceValues> LinuxVolumes::values(const std::string& path) {
  const auto volume = volumeAt(path);
  // The root is what this program runs from: it is never asked about elsewhere.
  const bool mayHang = volume && volume->mount.remote && path != "/";
  auto values = mayHang ? unhurried.values(volume->mount) : space(path);
  if (!values || !volume) return values;
  values->name = volume->traits.name;
  values->isInternal = volume->traits.isInternal;
  values->isRemovable = volume->traits.isRemovable;
  return values;
}

}  // namespace korvantis
