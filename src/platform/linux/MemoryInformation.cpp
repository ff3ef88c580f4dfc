#include "platform/linux/MemoryInformation.h"

#include <fcntl.h>

#include "platform/linux/FileText.h"
#include "platform/linux/TextFields.h"

namespace korvantis {

std::uint64_t memoryInformationBytes(std::string_view text, std::string_view name) {
  return kilobytesField(text, name).value_or(0);
}

std::uint64_t physicalMemoryBytes(const std::string& root) {
  return memoryInformationBytes(readFileText(AT_FDCWD, root + "/proc/meminfo").text, "MemTotal");
}

}  // namespace korvantis
