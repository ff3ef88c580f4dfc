#include "platform/linux/hardware/MountList.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

enum class Kind { none, disk, remote, memory };

constexpr std::array<std::string_view, 21> diskTypes{
    "ext2", "ext3",  "ext4",     "xfs",     "btrfs", "f2fs",    "bcachefs",
    "zfs",  "jfs",   "reiserfs", "nilfs2",  "vfat",  "msdos",   "exfat",
    "ntfs", "ntfs3", "hfs",      "hfsplus", "apfs",  "iso9660", "udf"};

/// "fuseblk" is a disk too, but a program answers for it.
constexpr std::array<std::string_view, 12> remoteTypes{
    "nfs",  "nfs4", "cifs",     "smb3",  "smbfs",      "afs",
    "ceph", "9p",   "virtiofs", "ncpfs", "fuse.sshfs", "fuseblk"};

constexpr std::array<std::string_view, 6> systemFolders{"/boot", "/efi",      "/var/lib",
                                                        "/snap", "/run/user", "/var/snap"};

/// Where memory serves as the system's own scratch space.
constexpr std::array<std::string_view, 6> scratchFolders{"/dev", "/proc", "/run",
                                                         "/sys", "/tmp",  "/var"};

template <std::size_t count>
bool contains(const std::array<std::string_view, count>& list, std::string_view text) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

template <std::size_t count>
bool isBelow(const std::array<std::string_view, count>& folders, std::string_view path) {
  return std::any_of(folders.begin(), folders.end(), [path](std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
  });
}

Kind kindOf(std::string_view type) {
  if (contains(diskTypes, type)) return Kind::disk;
  if (contains(remoteTypes, type)) return Kind::remote;
  return type == "tmpfs" ? Kind::memory : Kind::none;
}

bool isOctal(std::string_view digits) {
  return digits.size() == 3 && digits[0] <= '3' &&
         std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '7'; });
}

/// The kernel writes blanks, tabs, newlines and backslashes in octal.
std::string decoded(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t index = 0; index < text.size(); ++index) {
    const std::string_view digits = text.substr(std::min(index + 1, text.size()), 3);
    if (text[index] != '\\' || !isOctal(digits)) {
      plain += text[index];
      continue;
    }
    plain += static_cast<char>(unsignedNumber(digits, 8).value_or(0));
    index += 3;
  }
  return plain;
}

struct Line {
  std::string_view number;
  std::string_view path;
  std::string_view type;
  std::string_view source;
};

/// Takes the next field off the front of a line; fields are parted by one blank each.
std::string_view takeField(std::string_view& line) {
  const std::string_view field = line.substr(0, line.find(' '));
  line.remove_prefix(std::min(field.size() + 1, line.size()));
  return field;
}

std::optional<Line> parseLine(std::string_view line) {
  Line parts;
  takeField(line);
  takeField(line);
  parts.number = takeField(line);
  takeField(line);
  parts.path = takeField(line);
  takeField(line);
  // Any number of optional fields ends with a dash.
  while (!line.empty() && takeField(line) != "-") {
  }
  parts.type = takeField(line);
  parts.source = takeField(line);
  if (parts.path.empty() || parts.type.empty()) return std::nullopt;
  return parts;
}

bool isVolume(const Line& line, Kind kind) {
  if (line.path == "/") return true;
  if (kind == Kind::none || isBelow(systemFolders, line.path)) return false;
  return kind != Kind::memory || !isBelow(scratchFolders, line.path);
}

/// The line that is seen at each path, in the order of the listing.
std::vector<Line> visibleVolumes(std::string_view mountinfo) {
  std::vector<Line> volumes;
  std::unordered_map<std::string_view, std::size_t> places;
  while (!mountinfo.empty()) {
    const auto line = parseLine(takeLine(mountinfo));
    if (!line) continue;
    const auto hidden = places.find(line->path);
    if (hidden != places.end()) {
      volumes[hidden->second].path = {};
      places.erase(hidden);
    }
    if (!isVolume(*line, kindOf(line->type))) continue;
    places[line->path] = volumes.size();
    volumes.push_back(*line);
  }
  std::erase_if(volumes, [](const Line& line) { return line.path.empty(); });
  return volumes;
}

}  // namespace

std::vector<MountedFileSystem> parseMountList(std::string_view mountinfo) {
  std::vector<Line> lines = visibleVolumes(mountinfo);
  std::stable_partition(lines.begin(), lines.end(), [](const Line& l) { return l.path == "/"; });
  std::vector<MountedFileSystem> volumes;
  std::unordered_set<std::string_view> numbers;
  for (const Line& line : lines) {
    if (!numbers.insert(line.number).second) continue;
    volumes.push_back({std::string(line.number), decoded(line.path), decoded(line.source),
                       kindOf(line.type) == Kind::remote});
  }
  return volumes;
}

}  // namespace korvantis
