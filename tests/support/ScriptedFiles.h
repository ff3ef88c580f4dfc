#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/FileManagerCalls.h"

namespace korvantis::test {

/// Files and folders that a test writes: they answer the questions of the file manager and write
/// each one down. Outlives what asks it. Any thread may ask; the test itself writes while nobody
/// does.
class ScriptedFiles {
 public:
  /// The entries of a walk in its order, with the size of each; absent: it can't be told.
  using Entries = std::vector<std::pair<std::string, std::optional<std::uint64_t>>>;

  std::string home = "/home/ada";
  /// What exists beside the folders of `walks`.
  std::set<std::string> existing;
  /// What a walk over each of these folders gives; absent: it exists and can't be walked.
  std::map<std::string, std::optional<Entries>> walks;
  /// Called inside each question, while nothing is locked.
  std::function<void(const std::string& question)> hook;

  FileManagerCalls calls() {
    FileManagerCalls calls;
    calls.homeDirectoryForCurrentUser = [this] {
      note("home");
      return home;
    };
    calls.fileExistsAtPath = [this](const std::string& path) {
      note("exists " + path);
      return existing.contains(path) || walks.contains(path);
    };
    calls.enumeratorAtPath = [this](const std::string& path) { return walk(path); };
    calls.fileSize = [this](const std::string& path) { return size(path); };
    return calls;
  }

  /// Every question so far, in order: "home", "exists /a", "walk /a", "next", "size /a/b".
  std::vector<std::string> questions() const {
    const std::lock_guard guard(lock);
    return asked;
  }

  /// The questions since the last call of this.
  std::vector<std::string> takeQuestions() {
    const std::lock_guard guard(lock);
    return std::exchange(asked, {});
  }

 private:
  void note(const std::string& question) {
    {
      const std::lock_guard guard(lock);
      asked.push_back(question);
    }
    if (hook) hook(question);
  }

  std::optional<DirectoryEnumerator> walk(const std::string& path) {
    note("walk " + path);
    const auto found = walks.find(path);
    if (found == walks.end() || !found->second) return std::nullopt;
    const auto place = std::make_shared<std::size_t>(0);
    return [this, &entries = *found->second, place]() -> std::optional<std::string> {
      note("next");
      if (*place == entries.size()) return std::nullopt;
      return entries[(*place)++].first;
    };
  }

  std::optional<std::uint64_t> size(const std::string& path) {
    note("size " + path);
    for (const auto& [folder, entries] : walks) {
      if (!entries) continue;
      for (const auto& [name, bytes] : *entries) {
        if (path == folder + "/" + name) return bytes;
      }
    }
    return std::nullopt;
  }

  mutable std::mutex lock;
  std::vector<std::string> asked;
};

}  // namespace korvantis::test
