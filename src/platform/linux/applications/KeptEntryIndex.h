#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>

#include "platform/linux/applications/ApplicationSources.h"
#include "platform/linux/applications/BackgroundWork.h"
#include "platform/linux/applications/DesktopEntryIndex.h"

namespace korvantis {

/// Keeps the index of desktop entries and makes a new one when an entry has come, gone or
/// changed, which it looks for at a slow pace. Any thread.
class KeptEntryIndex {
 public:
  /// Seconds between two looks for changes.
  static constexpr double pace = 10.0;

  /// Begins the first index at once where work is done in the background. `applicationSources`
  /// must outlive it.
  explicit KeptEntryIndex(const ApplicationSources& applicationSources);

  /// The newest finished index, never null. The first call waits for the first one, not longer
  /// than a quarter of a second.
  std::shared_ptr<const DesktopEntryIndex> current();

 private:
  void lookForChanges();

  const ApplicationSources& sources;
  std::mutex lock;
  std::condition_variable finished;
  std::shared_ptr<const DesktopEntryIndex> index = std::make_shared<const DesktopEntryIndex>();
  bool hasIndex = false;
  bool hasWaited = false;
  double dueAt = 0;
  /// What the index was made of; touched by the background work alone.
  EntryFiles files;
  bool hasFiles = false;
  BackgroundWork work;
};

}  // namespace korvantis
