#include "platform/linux/hardware/VolumeTraits.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

#include "platform/linux/FileText.h"
#include "platform/linux/FolderNames.h"
#include "platform/linux/TextFields.h"
#include "platform/linux/hardware/AttributeFile.h"
#include "platform/linux/hardware/NumberedFolders.h"

namespace korvantis {
namespace {

/// A mapping over a mapping over an array is as deep as anybody stacks devices.
constexpr int mostLayers = 6;

/// A label in the name of a link has "\x20" for a blank.
std::string decodedLabel(const std::string& text) {
  std::string plain;
  for (std::size_t index = 0; index < text.size(); ++index) {
    const bool escaped = text.compare(index, 2, "\\x") == 0 && index + 4 <= text.size();
    const auto code =
        escaped ? unsignedNumber(std::string_view(text).substr(index + 2, 2), 16) : std::nullopt;
    plain += code ? static_cast<char>(*code) : text[index];
    if (code) index += 3;
  }
  return plain;
}

/// The name under which the kernel knows a mounted device; empty for none.
std::string deviceName(const std::string& root, const MountedFileSystem& mount) {
  if (const auto link = readLinkText(AT_FDCWD, root + "/sys/dev/block/" + mount.number)) {
    return lastPart(*link);
  }
  // File systems over several devices have a number of their own.
  if (!mount.source.starts_with("/dev/")) return {};
  const auto link = readLinkText(AT_FDCWD, root + mount.source);
  return lastPart(link.value_or(mount.source));
}

std::string canonicalPath(const std::string& path) {
  std::error_code error;
  const auto canonical = std::filesystem::canonical(path, error);
  return error ? std::string() : canonical.string();
}

/// The folder of the disk below a device: a partition's parent, a mapping's first own device.
std::string diskFolder(const std::string& root, std::string name) {
  std::string folder;
  for (int layer = 0; layer < mostLayers; ++layer) {
    std::string link = root + "/sys/class/block/";
    link += name;
    folder = canonicalPath(link);
    if (folder.empty()) return {};
    const auto below = namesInFolder(folder + "/slaves");
    if (below.empty()) break;
    name = *std::min_element(below.begin(), below.end());
  }
  if (::access((folder + "/partition").c_str(), F_OK) != 0) return folder;
  return folder.substr(0, folder.rfind('/'));
}

}  // namespace

std::map<std::string, std::string> readVolumeLabels(const std::string& root) {
  const std::string folder = root + "/dev/disk/by-label";
  std::map<std::string, std::string> labels;
  for (const std::string& name : namesInFolder(folder)) {
    std::string path = folder + "/";
    path += name;
    const auto link = readLinkText(AT_FDCWD, path);
    if (link) labels[lastPart(*link)] = decodedLabel(name);
  }
  return labels;
}

VolumeTraits readVolumeTraits(const std::string& root, const MountedFileSystem& mount,
                              const std::map<std::string, std::string>& labels) {
  VolumeTraits traits;
  const std::string device = deviceName(root, mount);
  const auto label = labels.find(device);
  if (label != labels.end()) {
    traits.name = label->second;
  } else if (mount.path != "/") {
    traits.name = lastPart(mount.path);
  }
  const std::string disk = device.empty() ? std::string() : diskFolder(root, device);
  if (!disk.empty()) {
    traits.isRemovable = attributeText(disk + "/removable") == "1";
    // Below the root folder only: the folder itself may lie on anything.
    const bool onUSB = disk.find("/usb", canonicalPath(root + "/sys").size()) != std::string::npos;
    traits.isInternal = !*traits.isRemovable && !onUSB;
  } else if (mount.path != "/") {
    traits.isInternal = false;
    traits.isRemovable = false;
  }
  return traits;
}

}  // namespace korvantis
