#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "platform/linux/PropertyListFile.h"

namespace {

/// A file in memory, so that no input touches a disk.
class MemoryFile {
 public:
  MemoryFile() : descriptor(::memfd_create("property-list", MFD_CLOEXEC)) {
    if (descriptor < 0) std::abort();
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { ::close(descriptor); }

  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor); }

  void fill(const std::uint8_t* data, std::size_t size) const {
    if (::ftruncate(descriptor, 0) != 0) std::abort();
    if (::pwrite(descriptor, data, size, 0) != static_cast<ssize_t>(size)) std::abort();
  }

 private:
  int descriptor;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const MemoryFile file;
  file.fill(data, size);
  // What one file holds does not change between two readings.
  if (korvantis::readPropertyListFile(file.path()).has_value() !=
      korvantis::readPropertyListFile(file.path()).has_value()) {
    std::abort();
  }
  return 0;
}
