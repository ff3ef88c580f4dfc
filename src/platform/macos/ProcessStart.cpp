#include "platform/ProcessStart.h"

#include <libproc.h>

namespace korvantis {

std::optional<double> systemProcessStart(std::int32_t pid) {
  proc_bsdinfo record{};
  const int size = ::proc_pidinfo(pid, PROC_PIDTBSDINFO, 0, &record, sizeof record);
  if (size != static_cast<int>(sizeof record) || record.pbi_start_tvsec == 0) return std::nullopt;
  return static_cast<double>(record.pbi_start_tvsec);
}

}  // namespace korvantis
