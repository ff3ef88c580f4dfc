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

using File = ProcessFolder::File;

}  // namespace

ProcessReading::ProcessReading(std::shared_ptr<const ProcessFolder> openFolder, ProcessStat&& stat)
    : folder(std::move(openFolder)), openingStat(std::move(stat)) {}

std::shared_ptr<ProcessReading> ProcessReading::open(const std::string& root, std::int32_t pid) {
  auto folder = ProcessFolder::open(root, pid);
  auto reading = folder ? through(folder) : nullptr;
  if (!reading || reading->identity().pid != pid) return nullptr;
  reading->newFolder = std::move(folder);
  return reading;
}

std::shared_ptr<ProcessReading> ProcessReading::through(
    std::shared_ptr<const ProcessFolder> folder) {
  auto stat = parseProcessStat(folder->read(File::stat));
  if (!stat) return nullptr;
  return std::shared_ptr<ProcessReading>(new ProcessReading(std::move(folder), *std::move(stat)));
}

std::optional<ProcessStat> ProcessReading::readStat() const {
  auto stat = parseProcessStat(folder->read(File::stat));
  if (!stat || stat->startTicks != openingStat.startTicks) return std::nullopt;
  return stat;
}

const std::optional<ProcessStatus>& ProcessReading::status() {
  if (!keptStatus) keptStatus = readStatus();
  return keptStatus;
}

std::optional<ProcessStatus> ProcessReading::takeStatus() {
  if (keptStatus) return std::exchange(keptStatus, std::nullopt);
  return readStatus();
}

std::optional<ProcessStatus> ProcessReading::readStatus() const {
  return parseProcessStatus(folder->read(File::status, isBusy));
}

std::optional<ProcessDiskBytes> ProcessReading::diskBytes() const {
  return parseProcessDiskBytes(folder->read(File::io, isBusy));
}

bool ProcessReading::isThere() const {
  struct stat facts {};
  return ::fstatat(folder->number(), "stat", &facts, 0) == 0;
}

const std::string& ProcessReading::readExecutablePath() {
  auto path = readLinkText(folder->number(), "exe");
  if (!path) path = CommandLine::program(commandLine());
  if (path->ends_with(removedMark)) path->resize(path->size() - removedMark.size());
  if (!path->starts_with('/')) path->clear();
  return keptExecutablePath.emplace(std::move(*path));
}

const std::string& ProcessReading::executablePath() {
  return keptExecutablePath ? *keptExecutablePath : readExecutablePath();
}

std::string ProcessReading::workingDirectory() const {
  const auto path = readLinkText(folder->number(), "cwd");
  const bool isUsable = path && path->starts_with('/') && !path->ends_with(removedMark);
  return isUsable ? *path : std::string();
}

std::string ProcessReading::commandLine() const {
  return readFileText(folder->number(), "cmdline").text;
}

std::string ProcessReading::fileText(const std::string& name, std::size_t limit) const {
  return readFileText(folder->number(), name, limit).text;
}

std::optional<std::string> ProcessReading::descriptorLink(std::int32_t descriptor) const {
  return readLinkText(folder->number(), "fd/" + std::to_string(descriptor));
}

std::optional<std::vector<std::int32_t>> ProcessReading::descriptors(std::size_t limit) const {
  auto numbers = numberedEntries(folder->number(), "fd", limit);
  if (numbers) std::sort(numbers->begin(), numbers->end());
  return numbers;
}

std::optional<std::uint64_t> ProcessReading::voluntarySwitches() const {
  const auto threads = numberedEntries(folder->number(), "task");
  if (!threads) return std::nullopt;
  std::optional<std::uint64_t> sum;
  for (const std::int32_t thread : *threads) {
    const auto status = parseProcessStatus(
        readFileText(folder->number(), "task/" + std::to_string(thread) + "/status").text);
    if (status) sum = sum.value_or(0) + status->voluntarySwitches;
  }
  return sum;
}

}  // namespace korvantis
