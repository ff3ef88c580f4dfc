#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core/AppGroup.h"
#include "core/ProcessSample.h"
#include "platform/PropertyListCalls.h"

namespace korvantis {

/// A process as a tick gives it: its own responsible process, started by pid 1, run by a user.
inline ProcessSample processAt(std::int32_t pid, std::string path, std::string name = "tool") {
  ProcessSample process;
  process.pid = pid;
  process.ppid = 1;
  process.responsiblePID = pid;
  process.executablePath = std::move(path);
  process.name = std::move(name);
  process.arguments = process.name;
  return process;
}

/// A text value of a property list.
inline PropertyValue textValue(std::string text) {
  return PropertyValue{std::move(text)};
}

/// Property lists of bundles by bundle path; every other one can't be read. Counts the reads.
class ScriptedPropertyLists {
 public:
  void set(const std::string& bundlePath, PropertyMap information) {
    lists[bundlePath + "/Contents/Info.plist"] = std::move(information);
  }

  void remove(const std::string& bundlePath) { lists.erase(bundlePath + "/Contents/Info.plist"); }

  /// The calls; valid as long as this object lives.
  PropertyListCalls calls() {
    PropertyListCalls calls;
    calls.dictionaryWithContentsOfFile = [this](const std::string& path) { return read(path); };
    return calls;
  }

  /// Every path asked for, in order.
  std::vector<std::string> reads() const {
    const std::lock_guard guard(lock);
    return asked;
  }

 private:
  std::optional<PropertyMap> read(const std::string& path) {
    const std::lock_guard guard(lock);
    asked.push_back(path);
    const auto found = lists.find(path);
    return found == lists.end() ? std::nullopt : std::optional(found->second);
  }

  mutable std::mutex lock;
  std::map<std::string, PropertyMap> lists;
  std::vector<std::string> asked;
};

/// The group with this id; nullptr when there is none.
inline const AppGroup* groupWithID(const std::vector<AppGroup>& groups, const std::string& id) {
  const auto found = std::find_if(groups.begin(), groups.end(),
                                  [&id](const AppGroup& group) { return group.id == id; });
  return found == groups.end() ? nullptr : &*found;
}

/// The ids of the groups in their order.
inline std::vector<std::string> idsOf(const std::vector<AppGroup>& groups) {
  std::vector<std::string> ids;
  for (const AppGroup& group : groups) ids.push_back(group.id);
  return ids;
}

/// The pids of a group's processes in their order.
inline std::vector<std::int32_t> pidsOf(const AppGroup& group) {
  std::vector<std::int32_t> pids;
  for (const ProcessSample& process : group.processes) pids.push_back(process.pid);
  return pids;
}

/// The id of the group that the process stands in; empty when it stands in none.
inline std::string groupOfPID(const std::vector<AppGroup>& groups, std::int32_t pid) {
  for (const AppGroup& group : groups) {
    for (const ProcessSample& process : group.processes) {
      if (process.pid == pid) return group.id;
    }
  }
  return "";
}

}  // namespace korvantis
