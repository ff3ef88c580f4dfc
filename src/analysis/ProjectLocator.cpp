#include "analysis/ProjectLocator.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "analysis/Buckets.h"
#include "analysis/PathNames.h"
#include "analysis/ProjectBucket.h"
#include "core/Utf8.h"

namespace korvantis {

namespace {

constexpr std::size_t mostFolders = 8;

ProjectBucket& bucketAt(Buckets<ProjectBucket>& buckets, const std::string& path) {
  return buckets.at(
      path, [&path] { return ProjectBucket{.path = path, .processes = {}, .containers = {}}; });
}

/// The projects made of the buckets, largest memory first.
std::vector<DevProject> folded(const Buckets<ProjectBucket>& buckets, double installedMemory) {
  std::vector<DevProject> projects;
  projects.reserve(buckets.all().size());
  for (const ProjectBucket& bucket : buckets.all()) {
    projects.push_back(bucket.folded(installedMemory));
  }
  std::stable_sort(projects.begin(), projects.end(),
                   [](const DevProject& first, const DevProject& second) {
                     return first.memoryBytes > second.memoryBytes;
                   });
  return projects;
}

}  // namespace

ProjectLocator::ProjectLocator(FileManagerCalls files)
    : fileManager(std::move(files)),
      // Working directories come as text, so the home folder must be text to be told among them.
      homeDir(repairedUtf8(fileManager.homeDirectoryForCurrentUser())) {}

std::optional<std::string> ProjectLocator::locateProjectRoot(
    const std::optional<std::string>& path) {
  if (!path || path->empty() || isExcluded(*path)) return std::nullopt;
  {
    const std::lock_guard guard(lock);
    const auto known = directoryCache.find(*path);
    if (known != directoryCache.end()) return known->second;
  }
  return walkUpFrom(standardizedPath(*path));
}

/// Looks at the path as it was given: a walk that begins lower down may pass through these places.
bool ProjectLocator::isExcluded(const std::string& path) const {
  return path == "/" || path == "/tmp" || path == "/var" || path == homeDir ||
         path.starts_with("/System/") || path.starts_with("/Applications/") ||
         path.starts_with("/Library/");
}

/// These folders are never roots, whatever lies in them: a ".git" in the home folder must not turn
/// all of it into one project. A relative path (only a container can have one) has no place here.
bool ProjectLocator::endsWalk(const std::string& folder) const {
  return folder == "/" || folder == homeDir || folder == "/Users" || !folder.starts_with('/');
}

bool ProjectLocator::hasMarker(const std::string& folder) const {
  return std::any_of(markerNames.begin(), markerNames.end(), [&](std::string_view name) {
    std::string marker;
    marker.reserve(folder.size() + 1 + name.size());
    return fileManager.fileExistsAtPath(marker.append(folder).append("/").append(name));
  });
}

std::optional<std::string> ProjectLocator::walkUpFrom(std::string folder) {
  std::vector<std::string> visited;
  std::optional<std::string> root;
  while (visited.size() < mostFolders && !endsWalk(folder)) {
    visited.push_back(folder);
    if (hasMarker(folder)) {
      root = std::move(folder);
      break;
    }
    folder = parentPath(folder);
  }
  const std::lock_guard guard(lock);
  for (std::string& seen : visited) directoryCache.insert_or_assign(std::move(seen), root);
  return root;
}

std::vector<DevProject> ProjectLocator::groupProjects(
    std::vector<ProcessSample>& processes, const std::vector<ContainerSample>& containers,
    std::uint64_t totalMemoryBytes) {
  Buckets<ProjectBucket> buckets;
  for (ProcessSample& process : processes) {
    std::optional<std::string> root = locateProjectRoot(process.workingDirectory);
    if (!root) continue;
    process.projectPath = std::move(root);
    bucketAt(buckets, *process.projectPath).processes.push_back(&process);
  }
  for (const ContainerSample& container : containers) {
    // A container keeps a project of its own even where no marker lies.
    std::optional<std::string> place = locateProjectRoot(container.workingDirectory);
    if (!place) place = container.workingDirectory;
    if (place && !place->empty()) bucketAt(buckets, *place).containers.push_back(&container);
  }
  return folded(buckets, totalMemoryBytes == 0 ? 1.0 : static_cast<double>(totalMemoryBytes));
}

}  // namespace korvantis
