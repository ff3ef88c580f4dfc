#include "platform/linux/MachineDisks.h"

#include <algorithm>
#include <fcntl.h>
#include <iterator>
#include <unistd.h>

#include "platform/linux/FileText.h"
#include "platform/linux/FolderNames.h"
#include "platform/linux/MachineMemory.h"

namespace korvantis {
namespace {

bool isDisk(const std::string& blockFolder, std::string name) {
  // A slash in a device's name is written so in the folder.
  std::replace(name.begin(), name.end(), '/', '!');
  const std::string folder = blockFolder + "/" + name;
  if (::access((folder + "/device").c_str(), F_OK) != 0) return false;
  // One way of several to a disk that is listed under another name.
  return !readFileText(AT_FDCWD, folder + "/hidden").text.starts_with('1');
}

RememberedNames::Look lookForDisks(const std::string& blockFolder) {
  return [blockFolder](const std::vector<std::string>& names) {
    const bool hasFolder = !namesInFolder(blockFolder).empty();
    std::vector<std::string> disks;
    std::copy_if(names.begin(), names.end(), std::back_inserter(disks),
                 [&](const std::string& name) {
                   return hasFolder ? isDisk(blockFolder, name) : isWholeDiskName(name);
                 });
    return disks;
  };
}

RememberedNames::Look lookForZram(const std::string& blockFolder) {
  return [blockFolder](const std::vector<std::string>&) {
    std::vector<std::string> names = namesInFolder(blockFolder);
    std::erase_if(names, [](const std::string& name) { return !name.starts_with("zram"); });
    return names;
  };
}

}  // namespace

MachineDisks::MachineDisks(const MachineSources& sources)
    : blockFolder(sources.root + "/sys/block"),
      statistics(sources.root + "/proc/diskstats"),
      diskNames(sources.monotonicSeconds, lookForDisks(blockFolder)),
      zramNames(sources.monotonicSeconds, lookForZram(blockFolder)) {}

std::optional<std::vector<BlockDeviceCounters>> MachineDisks::read() {
  const auto text = statistics.read();
  if (!text) return std::nullopt;
  std::vector<BlockDeviceCounters> devices = parseDiskStatistics(*text);
  std::vector<std::string> names;
  names.reserve(devices.size());
  for (const BlockDeviceCounters& device : devices) names.push_back(device.name);
  const std::vector<std::string> disks = diskNames.about(names);
  std::erase_if(devices, [&](const BlockDeviceCounters& device) {
    return std::find(disks.begin(), disks.end(), device.name) == disks.end();
  });
  return devices;
}

std::uint64_t MachineDisks::readZramBytes() {
  std::uint64_t bytes = 0;
  for (const std::string& name : zramNames.about({})) {
    const FileText text = readFileText(AT_FDCWD, blockFolder + "/" + name + "/mm_stat");
    bytes += parseZramBytes(text.text);
  }
  return bytes;
}

}  // namespace korvantis
