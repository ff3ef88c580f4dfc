#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "analysis/ApplicationFacts.h"
#include "analysis/BundleMetadata.h"
#include "analysis/TextFacts.h"
#include "core/AppGroup.h"
#include "core/HelperRole.h"
#include "core/ProcessSample.h"
#include "platform/PropertyListCalls.h"

namespace korvantis {

/// Folds the processes of a tick into the applications that the user thinks in: one group per
/// application bundle with all its helpers and child tools, and one per named program that belongs
/// to no bundle.
///
/// Any thread, also several at once. What a bundle says about itself is read once and kept as long
/// as the grouper lives.
class AppGrouper {
 public:
  /// A grouper that reads the bundles' property lists through `propertyLists`.
  explicit AppGrouper(PropertyListCalls propertyLists);

  /// The groups of `processes`, applications and the busy ones first. Every process stands in
  /// exactly one group, with its `helperRole` set. `totalMemoryBytes` is what a group's
  /// `memoryPercent` is a share of; 0 counts as one byte. Never fails: a bundle that can't be read
  /// is named after its folder.
  std::vector<AppGroup> group(const std::vector<ProcessSample>& processes,
                              std::uint64_t totalMemoryBytes);

  /// The application bundle nearest to the root that `path` runs through, always with a leading
  /// slash; absent when there is none or when the path ends at the bundle itself. Reads no file.
  static std::optional<std::string> outermostAppBundlePath(std::string_view path);

  /// What `process` is for inside its application, told from its name, path and arguments. The
  /// process `rootPID` is always `main`. Reads no file.
  static HelperRole classifyHelperRole(const ProcessSample& process, std::int32_t rootPID,
                                       const std::optional<std::string>& bundlePath);

 private:
  BundleMetadata metadata(const std::string& bundlePath);
  TextFacts<ApplicationFacts> takeKnownFacts();
  void keepFacts(TextFacts<ApplicationFacts> facts);

  PropertyListCalls propertyLists;
  /// Guards the fields below; never held while a file is read.
  std::mutex lock;
  /// Only ever grows: the tick must not touch the disk for a bundle that it has met, whether or not
  /// that bundle could be read.
  std::unordered_map<std::string, BundleMetadata> bundleCache;
  /// What the texts of the last tick's processes told. Spares work and changes no result.
  TextFacts<ApplicationFacts> knownFacts;
};

}  // namespace korvantis
