#pragma once

#include <cstddef>
#include <memory>

#include "platform/linux/DescriptorWalk.h"
#include "platform/linux/ProcessReading.h"
#include "platform/linux/ProcessSources.h"
#include "platform/linux/RememberedProcesses.h"

namespace korvantis {

/// Walks over the open descriptors of processes. A process that has not run since its last walk
/// has opened and closed nothing, so it is not walked again.
class DescriptorWalks {
 public:
  /// A walk is not kept for longer than this many seconds, and up to as much longer for some, so
  /// that those of many processes don't fall due at once.
  static constexpr std::int32_t life = 25;

  /// Both must outlive it.
  DescriptorWalks(const ProcessSources& processSources, RememberedProcesses& rememberedProcesses)
      : sources(processSources), remembered(rememberedProcesses) {}

  /// The lowest `limit` descriptors of a process; null, with `errno` set, when they are refused.
  /// Any thread.
  std::shared_ptr<const DescriptorWalk> walk(const ProcessReading& reading,
                                             std::size_t limit) const;

 private:
  const ProcessSources& sources;
  RememberedProcesses& remembered;
};

}  // namespace korvantis
