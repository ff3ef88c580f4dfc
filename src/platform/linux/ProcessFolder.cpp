#include "platform/linux/ProcessFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace korvantis {
namespace {

constexpr std::size_t usualSize = 4096;
/// Far beyond any such text; a damaged tree must not fill the memory.
constexpr std::size_t mostBytes = std::size_t{4} << 20;
/// The folder itself and `stat`, which every question begins with.
constexpr int descriptorsOfFolder = 2;

constexpr std::array<const char*, 3> fileNames{"stat", "status", "io"};

/// One call gives the whole of such a text, and so one moment of it. Only a full buffer leaves
/// the question whether there is more.
std::string_view readFromBeginning(int file) {
  static thread_local std::vector<char> buffer(usualSize);
  for (;;) {
    const ssize_t got = ::pread(file, buffer.data(), buffer.size(), 0);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return {};
    const auto size = static_cast<std::size_t>(got);
    if (size < buffer.size()) return {buffer.data(), size};
    if (size >= mostBytes) return {};
    buffer.resize(2 * size);
  }
}

}  // namespace

ProcessFolder::ProcessFolder(FileDescriptor&& folder) : directory(std::move(folder)) {}

std::shared_ptr<ProcessFolder> ProcessFolder::open(const std::string& root, std::int32_t pid) {
  const std::string path = root + "/proc/" + std::to_string(pid);
  FileDescriptor folder{::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
  if (!folder) return nullptr;
  return std::shared_ptr<ProcessFolder>(new ProcessFolder(std::move(folder)));
}

ProcessFolder::~ProcessFolder() {
  int optional = 0;
  for (std::size_t index = 0; index < files.size(); ++index) {
    const FileDescriptor file{files[index]};
    if (file && index > 0) ++optional;
  }
  if (budget) budget->giveBack(descriptorsOfFolder + optional);
}

bool ProcessFolder::keepOpen(const std::shared_ptr<DescriptorBudget>& descriptors) {
  if (!descriptors->take(descriptorsOfFolder)) return false;
  budget = descriptors;
  return true;
}

std::string_view ProcessFolder::read(File file, bool isFrequent) const {
  const auto index = static_cast<std::size_t>(file);
  if (const int kept = files[index]; kept >= 0) return readFromBeginning(kept);
  FileDescriptor opened{
      ::openat(directory.number(), fileNames[index], O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
  if (!opened) return {};
  const std::string_view text = readFromBeginning(opened.number());
  const bool isCounted = file == File::stat;
  if (budget && (isCounted || (isFrequent && budget->take(1)))) keep(file, std::move(opened));
  return text;
}

/// Several threads may have opened the same file at once: one of them is kept.
void ProcessFolder::keep(File file, FileDescriptor&& opened) const {
  int none = -1;
  if (files[static_cast<std::size_t>(file)].compare_exchange_strong(none, opened.number())) {
    opened.release();
  } else if (file != File::stat) {
    budget->giveBack(1);
  }
}

}  // namespace korvantis
