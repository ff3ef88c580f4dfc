#include "platform/linux/applications/KeptEntryIndex.h"

#include <chrono>
#include <utility>

namespace korvantis {
namespace {

constexpr auto longestWait = std::chrono::milliseconds(250);

}  // namespace

KeptEntryIndex::KeptEntryIndex(const ApplicationSources& applicationSources)
    : sources(applicationSources), work(applicationSources.worksInBackground) {
  if (!sources.worksInBackground) return;
  dueAt = sources.steadySeconds() + pace;
  work.start([this] { lookForChanges(); });
}

std::shared_ptr<const DesktopEntryIndex> KeptEntryIndex::current() {
  const double now = sources.steadySeconds();
  bool isDue = false;
  {
    const std::lock_guard guard(lock);
    isDue = now >= dueAt;
    if (isDue) dueAt = now + pace;
  }
  if (isDue) work.start([this] { lookForChanges(); });
  std::unique_lock guard(lock);
  if (!hasIndex && !hasWaited) {
    finished.wait_for(guard, longestWait, [this] { return hasIndex; });
    hasWaited = true;
  }
  return index;
}

void KeptEntryIndex::lookForChanges() {
  if (std::exchange(hasFiles, true) && !haveEntryFilesChanged(sources.root, files)) return;
  files = listEntryFiles(sources.root, sources.entryFolders);
  auto made = std::make_shared<const DesktopEntryIndex>(sources, files);
  const std::lock_guard guard(lock);
  index = std::move(made);
  hasIndex = true;
  finished.notify_all();
}

}  // namespace korvantis
