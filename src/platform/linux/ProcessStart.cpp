#include "platform/ProcessStart.h"

#include "platform/linux/ProcessReading.h"
#include "platform/linux/ProcessRecords.h"
#include "platform/linux/ProcessSources.h"

namespace korvantis {

std::optional<double> systemProcessStart(std::int32_t pid) {
  static const ProcessSources sources = systemProcessSources();
  const auto reading = ProcessReading::open(sources.root, pid);
  const auto status = reading ? reading->status() : std::nullopt;
  if (!status) return std::nullopt;
  const proc_bsdinfo record = ProcessRecords::basicInformation(
      reading->stat(), *status, {}, sources.bootNanoseconds, sources.clockTicksPerSecond);
  return static_cast<double>(record.pbi_start_tvsec);
}

}  // namespace korvantis
