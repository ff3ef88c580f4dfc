#pragma once

#include <array>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/ContainerSample.h"
#include "core/DevProject.h"
#include "core/ProcessSample.h"
#include "platform/FileManagerCalls.h"

namespace korvantis {

/// Tells on which development projects this machine works: finds the project that each process
/// and container works in, and folds those of one project together.
///
/// Any thread, also several at once. What a walk through the folders found is kept as long as the
/// locator lives, failures too: a folder that gets its first marker after a walk has been there
/// belongs to no project until the program starts again.
class ProjectLocator {
 public:
  /// Any one of these, as file or folder, makes the folder that it lies in a project's root. Their
  /// order plays no part.
  static constexpr std::array<std::string_view, 18> markerNames{
      ".git",           "package.json",       "Cargo.toml",
      "go.mod",         "pyproject.toml",     "requirements.txt",
      "Gemfile",        "Package.swift",      "pom.xml",
      "build.gradle",   "build.gradle.kts",   "composer.json",
      "mix.exs",        "flake.nix",          "Makefile",
      "CMakeLists.txt", "docker-compose.yml", "compose.yaml"};

  /// A locator that asks `files` what lies in a folder, and once, now, for the home folder.
  explicit ProjectLocator(FileManagerCalls files);

  /// The nearest folder with a marker, at `path` or up to seven levels above it and below the home
  /// folder; absent when there is none, when `path` is absent, empty or not absolute, or when it
  /// lies where the system or its applications do. A path met before asks for no file.
  std::optional<std::string> locateProjectRoot(const std::optional<std::string>& path);

  /// Writes the project root of each process that has one into its `projectPath`, and gives the
  /// projects, largest memory first. A container without a marker around it has its own working
  /// directory for a project. `totalMemoryBytes` is what a project's `memoryPercent` is a share of;
  /// 0 counts as one byte.
  std::vector<DevProject> groupProjects(std::vector<ProcessSample>& processes,
                                        const std::vector<ContainerSample>& containers,
                                        std::uint64_t totalMemoryBytes);

 private:
  bool isExcluded(const std::string& path) const;
  bool endsWalk(const std::string& folder) const;
  bool hasMarker(const std::string& folder) const;
  std::optional<std::string> walkUpFrom(std::string folder);

  const FileManagerCalls fileManager;
  const std::string homeDir;
  /// Guards `directoryCache` and nothing else; never held while a file is asked for.
  std::mutex lock;
  /// The project root of each folder visited, absent where there is none. Only ever grows: the tick
  /// must not touch the disk for a folder that it knows.
  std::unordered_map<std::string, std::optional<std::string>> directoryCache;
};

}  // namespace korvantis
