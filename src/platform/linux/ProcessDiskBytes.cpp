#include "platform/linux/ProcessDiskBytes.h"

#include "platform/linux/TextFields.h"

namespace korvantis {

std::optional<ProcessDiskBytes> parseProcessDiskBytes(std::string_view text) {
  const auto read = numberField(text, "read_bytes");
  const auto written = numberField(text, "write_bytes");
  if (!read || !written) return std::nullopt;
  return ProcessDiskBytes{*read, *written};
}

}  // namespace korvantis
