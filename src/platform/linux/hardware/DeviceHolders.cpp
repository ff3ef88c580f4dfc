#include "platform/linux/hardware/DeviceHolders.h"

#include <algorithm>
#include <fcntl.h>
#include <optional>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/FileText.h"
#include "platform/linux/FolderNames.h"
#include "platform/linux/NumberedEntries.h"
#include "platform/linux/hardware/AttributeFile.h"

namespace korvantis {
namespace {

constexpr std::size_t mostDescriptors = 128;

void walkProcess(const std::string& root, std::int32_t pid, DeviceHolders& holders) {
  const std::string folder = root + "/proc/" + std::to_string(pid) + "/fd";
  const FileDescriptor directory{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
  if (!directory) return;
  const auto descriptors = numberedEntries(directory.number(), ".", mostDescriptors);
  std::string name;
  for (const std::int32_t descriptor : descriptors.value_or(std::vector<std::int32_t>())) {
    const auto link = readLinkText(directory.number(), std::to_string(descriptor));
    const bool graphics = link && link->starts_with("/dev/dri/");
    if (!graphics && !(link && link->starts_with("/dev/accel/"))) continue;
    if (name.empty()) name = processName(root, pid);
    (graphics ? holders.graphics : holders.neural).push_back({pid, name, descriptor});
  }
}

}  // namespace

std::string processName(const std::string& root, std::int32_t pid) {
  return attributeText(root + "/proc/" + std::to_string(pid) + "/comm");
}

DeviceHolders findDeviceHolders(const std::string& root) {
  DeviceHolders holders;
  if (namesInFolder(root + "/dev/dri").empty() && namesInFolder(root + "/dev/accel").empty()) {
    return holders;
  }
  auto pids = numberedEntries(AT_FDCWD, root + "/proc").value_or(std::vector<std::int32_t>());
  std::sort(pids.begin(), pids.end());
  for (const std::int32_t pid : pids) walkProcess(root, pid, holders);
  return holders;
}

}  // namespace korvantis
