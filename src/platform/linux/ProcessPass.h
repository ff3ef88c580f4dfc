#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>

#include "platform/linux/ListeningSockets.h"
#include "platform/linux/ProcessReading.h"
#include "platform/linux/ResponsibleProcess.h"

namespace korvantis {

/// What one thread's pass over the process table keeps from call to call. A listing begins a new
/// one. Passes on other threads have their own, so no lock is needed.
struct ProcessPass {
  /// The process of the last question; every further question about its number is answered from
  /// the same process or not at all.
  std::shared_ptr<ProcessReading> reading;
  /// All listening sockets, asked for when the first process of the pass is scanned for ports.
  std::optional<ListeningSockets> sockets;
  /// Ancestors looked up in this pass, and when the first of them was.
  std::unordered_map<std::int32_t, std::optional<ProcessAncestry>> ancestry;
  double ancestrySince = 0;
};

}  // namespace korvantis
