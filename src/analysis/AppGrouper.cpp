#include "analysis/AppGrouper.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "analysis/AppGroupOrder.h"
#include "analysis/Buckets.h"
#include "analysis/BundleSearch.h"
#include "analysis/GroupBucket.h"
#include "analysis/HelperRoles.h"
#include "analysis/PathNames.h"
#include "analysis/StableMergeSort.h"
#include "platform/PropertyValue.h"

namespace korvantis {

namespace {

constexpr std::string_view bundleExtension = ".app";
constexpr std::string_view bundleExtensionInPath = ".app/";

/// The text under `key`; absent also when it is empty.
std::optional<std::string> filledText(const PropertyMap& map, const std::string& key) {
  std::optional<std::string> text = textProperty(map, key);
  return text && !text->empty() ? text : std::nullopt;
}

AppGroupKind kindOfBundle(std::string_view path, const std::optional<std::string>& identifier) {
  if (path == "/System/Library/CoreServices/Finder.app") return AppGroupKind::app;
  if (path.starts_with("/System/Applications/")) return AppGroupKind::app;
  if (path.starts_with("/Applications/")) return AppGroupKind::app;
  if (path.starts_with("/System/")) return AppGroupKind::system;
  if (path.starts_with("/Library/Apple/")) return AppGroupKind::system;
  if (identifier && identifier->starts_with("com.apple.")) return AppGroupKind::system;
  return AppGroupKind::app;
}

/// The kind of a process that belongs to no bundle.
AppGroupKind kindOfLoneProcess(const ProcessSample& process) {
  constexpr std::array<std::string_view, 4> systemFolders{"/System/", "/usr/libexec/", "/sbin/",
                                                          "/usr/sbin/"};
  const bool isSystem =
      process.uid == 0 ||
      std::any_of(systemFolders.begin(), systemFolders.end(), [&process](std::string_view folder) {
        return process.executablePath.starts_with(folder);
      });
  return isSystem ? AppGroupKind::system : AppGroupKind::other;
}

GroupBucket bundleBucket(const std::string& bundlePath, BundleMetadata metadata) {
  GroupBucket bucket;
  bucket.id = bundlePath;
  bucket.name = std::move(metadata.name);
  bucket.kind = metadata.kind;
  bucket.bundlePath = bundlePath;
  bucket.bundleIdentifier = std::move(metadata.bundleIdentifier);
  return bucket;
}

/// A bucket of processes without a bundle keeps the kind of `first`, whoever joins it.
GroupBucket loneBucket(const std::string& key, const ProcessSample& first) {
  GroupBucket bucket;
  bucket.id = key;
  bucket.name = first.name;
  bucket.kind = kindOfLoneProcess(first);
  return bucket;
}

ApplicationFacts applicationFacts(const ProcessSample& process) {
  return {.ownBundle = AppGrouper::outermostAppBundlePath(process.executablePath),
          .loneKey = "daemon:" + process.name,
          .roleOfWords = roleOfWords(process)};
}

/// The groups in their order. A group is large, so it moves only once, to its place.
std::vector<AppGroup> inOrder(std::vector<AppGroup> groups) {
  std::vector<AppGroup*> order;
  order.reserve(groups.size());
  for (AppGroup& group : groups) order.push_back(&group);
  stableMergeSort(order, [](const AppGroup* first, const AppGroup* second) {
    return goesBefore(*first, *second);
  });
  std::vector<AppGroup> ordered;
  ordered.reserve(groups.size());
  for (AppGroup* group : order) ordered.push_back(std::move(*group));
  return ordered;
}

}  // namespace

AppGrouper::AppGrouper(PropertyListCalls calls) : propertyLists(std::move(calls)) {}

std::vector<AppGroup> AppGrouper::group(const std::vector<ProcessSample>& processes,
                                        std::uint64_t totalMemoryBytes) {
  TextFacts facts(processes, takeKnownFacts(), applicationFacts);
  const BundleSearch search(processes, facts);
  Buckets<GroupBucket> buckets;
  for (std::size_t index = 0; index < processes.size(); ++index) {
    const ProcessSample& process = processes[index];
    const std::optional<std::string>& bundlePath = search.bundleOf(index);
    const std::string& key = bundlePath ? *bundlePath : facts[index].loneKey;
    GroupBucket& bucket = buckets.at(key, [&] {
      return bundlePath ? bundleBucket(key, metadata(key)) : loneBucket(key, process);
    });
    bucket.members.push_back({&process, facts[index].roleOfWords});
  }

  const double installedMemory =
      totalMemoryBytes == 0 ? 1.0 : static_cast<double>(totalMemoryBytes);
  std::vector<AppGroup> groups;
  groups.reserve(buckets.all().size());
  for (const GroupBucket& bucket : buckets.all()) groups.push_back(bucket.folded(installedMemory));
  keepFacts(std::move(facts));
  return inOrder(std::move(groups));
}

/// Taken, not copied: a second caller at the same time reads the texts for itself.
TextFacts<ApplicationFacts> AppGrouper::takeKnownFacts() {
  const std::lock_guard guard(lock);
  return std::exchange(knownFacts, {});
}

void AppGrouper::keepFacts(TextFacts<ApplicationFacts> facts) {
  // Swapped, so that what another caller left here meanwhile is freed after the lock.
  const std::lock_guard guard(lock);
  std::swap(knownFacts, facts);
}

std::optional<std::string> AppGrouper::outermostAppBundlePath(std::string_view path) {
  // The first folder from the root whose name ends in ".app" is the outermost bundle.
  const std::size_t extension = path.find(bundleExtensionInPath);
  if (extension == std::string_view::npos) return std::nullopt;
  std::string_view bundle = path.substr(0, extension + bundleExtension.size());
  bundle.remove_prefix(bundle.find_first_not_of('/'));
  std::string rooted;
  rooted.reserve(bundle.size() + 1);
  rooted += '/';
  return rooted += bundle;
}

HelperRole AppGrouper::classifyHelperRole(const ProcessSample& process, std::int32_t rootPID,
                                          const std::optional<std::string>& bundlePath) {
  return helperRole(process, roleOfWords(process), rootPID, bundlePath);
}

BundleMetadata AppGrouper::metadata(const std::string& bundlePath) {
  {
    const std::lock_guard guard(lock);
    const auto known = bundleCache.find(bundlePath);
    if (known != bundleCache.end()) return known->second;
  }
  const PropertyMap information =
      propertyLists.dictionaryWithContentsOfFile(bundlePath + "/Contents/Info.plist")
          .value_or(PropertyMap{});
  BundleMetadata metadata;
  std::optional<std::string> name = filledText(information, "CFBundleDisplayName");
  if (!name) name = filledText(information, "CFBundleName");
  metadata.name = name ? *name : std::string(nameWithoutExtension(bundlePath));
  metadata.bundleIdentifier = filledText(information, "CFBundleIdentifier");
  metadata.kind = kindOfBundle(bundlePath, metadata.bundleIdentifier);
  const std::lock_guard guard(lock);
  bundleCache.insert_or_assign(bundlePath, metadata);
  return metadata;
}

}  // namespace korvantis
