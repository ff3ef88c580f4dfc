#pragma once

#include <cstdint>
#include <string>

#include "platform/LibProcCalls.h"
#include "platform/SysctlCalls.h"
#include "samplers/CachedStaticProcInfo.h"

namespace korvantis {

/// Which process the slow facts are asked of.
struct StaticProcInfoRequest {
  std::int32_t pid = 0;
  /// Short name; stands in for arguments that can't be read.
  std::string name;
  /// Whether the process runs as the same user as this program. Working directory and arguments
  /// of others are not asked for.
  bool isOwn = false;
  /// Seconds since 1970; becomes `lastUpdated`.
  double now = 0;
};

/// Reads the slow facts of one process. Never fails: a fact that can't be read is the empty
/// text, the pid itself, absent or the short name. Any thread.
CachedStaticProcInfo readStaticProcInfo(const LibProcCalls& libProc, const SysctlCalls& sysctl,
                                        const StaticProcInfoRequest& request);

}  // namespace korvantis
