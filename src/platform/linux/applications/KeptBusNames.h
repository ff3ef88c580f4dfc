#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/applications/ApplicationSources.h"
#include "platform/linux/applications/BackgroundWork.h"

namespace korvantis {

/// Keeps which processes hold names on the session bus. A bus that does not answer is as good as
/// none, and never makes anybody wait longer than once. Any thread.
class KeptBusNames {
 public:
  /// `applicationSources` must outlive it.
  explicit KeptBusNames(const ApplicationSources& applicationSources);

  /// Asks anew, in the background, for the owners of the names that `isWanted` picks, unless that
  /// was done lately. `hasNewcomers`: there are processes that were not there the last time. The
  /// first call waits for the first answer, not longer than a quarter of a second.
  void refresh(bool hasNewcomers, std::function<bool(const std::string& name)> isWanted);

  /// The names that a process held when the bus was last asked.
  std::vector<std::string> of(const ProcessIdentity& process) const;

 private:
  const ApplicationSources& sources;
  mutable std::mutex lock;
  std::condition_variable finished;
  std::unordered_map<std::int32_t, std::vector<std::string>> names;
  double answeredAt = 0;
  double askedAt = 0;
  bool hasAnswer = false;
  bool hasWaited = false;
  BackgroundWork work;
};

}  // namespace korvantis
