#include "platform/linux/ProcessReading.h"

#include <algorithm>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <utility>

#include "platform/linux/CommandLine.h"
#include "platform/linux/FileText.h"
#include "platform/linux/NumberedEntries.h"

namespace korvantis {
namespace {

// What the kernel adds to the path of a file or folder that is no longer in its folder.
constexpr std::string_view removedMark = " (deleted)";

std::optional<ProcessStat> statThrough(const FileDescriptor& directory) {
  return parseProcessStat(readFileText(directory.number(), "stat").text);
}

std::optional<ProcessStatus> statusThrough(const FileDescriptor& directory,
                                           const std::string& path) {
  return parseProcessStatus(readFileText(directory.number(), path).text);
}

}  // namespace

ProcessReading::ProcessReading(FileDescriptor&& folder, ProcessStat&& stat)
    : directory(std::move(folder)), openingStat(std::move(stat)) {}

std::shared_ptr<ProcessReading> ProcessReading::open(const std::string& root, std::int32_t pid) {
  const std::string path = root + "/proc/" + std::to_string(pid);
  FileDescriptor folder{::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
  if (!folder) return nullptr;
  auto stat = statThrough(folder);
  if (!stat || stat->pid != pid) return nullptr;
  return std::shared_ptr<ProcessReading>(new ProcessReading(std::move(folder), *std::move(stat)));
}

std::optional<ProcessStat> ProcessReading::readStat() const {
  auto stat = statThrough(directory);
  if (!stat || stat->startTicks != openingStat.startTicks) return std::nullopt;
  return stat;
}

const std::optional<ProcessStatus>& ProcessReading::status() {
  if (!keptStatus) keptStatus = statusThrough(directory, "status");
  return keptStatus;
}

std::optional<ProcessStatus> ProcessReading::takeStatus() {
  if (keptStatus) return std::exchange(keptStatus, std::nullopt);
  return statusThrough(directory, "status");
}

std::optional<ProcessDiskBytes> ProcessReading::diskBytes() const {
  return parseProcessDiskBytes(readFileText(directory.number(), "io").text);
}

bool ProcessReading::isThere() const {
  struct stat facts {};
  return ::fstatat(directory.number(), "stat", &facts, 0) == 0;
}

std::string ProcessReading::executablePath() const {
  auto path = readLinkText(directory.number(), "exe");
  if (!path) path = CommandLine::program(commandLine());
  if (path->ends_with(removedMark)) path->resize(path->size() - removedMark.size());
  return path->starts_with('/') ? *path : std::string();
}

std::string ProcessReading::workingDirectory() const {
  const auto path = readLinkText(directory.number(), "cwd");
  const bool isUsable = path && path->starts_with('/') && !path->ends_with(removedMark);
  return isUsable ? *path : std::string();
}

std::string ProcessReading::commandLine() const {
  return readFileText(directory.number(), "cmdline").text;
}

std::optional<std::string> ProcessReading::descriptorLink(std::int32_t descriptor) const {
  return readLinkText(directory.number(), "fd/" + std::to_string(descriptor));
}

std::optional<std::vector<std::int32_t>> ProcessReading::descriptors(std::size_t limit) const {
  auto numbers = numberedEntries(directory.number(), "fd", limit);
  if (numbers) std::sort(numbers->begin(), numbers->end());
  return numbers;
}

std::optional<std::uint64_t> ProcessReading::voluntarySwitches() const {
  const auto threads = numberedEntries(directory.number(), "task");
  if (!threads) return std::nullopt;
  std::optional<std::uint64_t> sum;
  for (const std::int32_t thread : *threads) {
    const auto status = statusThrough(directory, "task/" + std::to_string(thread) + "/status");
    if (status) sum = sum.value_or(0) + status->voluntarySwitches;
  }
  return sum;
}

}  // namespace korvantis
