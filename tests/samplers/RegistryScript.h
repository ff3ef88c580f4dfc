#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/IORegistryCalls.h"

namespace korvantis::test {

/// One entry of a registry that a test writes.
struct ScriptedEntry {
  /// Absent: they can't be read.
  std::optional<PropertyMap> properties;
  std::vector<ScriptedEntry> children = {};
};

/// A registry that a test writes, by class; it counts the entries that somebody still holds.
/// Outlives what asks it. One thread.
class RegistryScript {
 public:
  /// The services of each class, in order. A class that is not here has none.
  std::map<std::string, std::vector<ScriptedEntry>> services;
  /// Classes whose match fails.
  std::vector<std::string> classesThatFailToMatch;

  /// The operations over this script.
  IORegistryCalls calls();

  /// Entries that were handed out and are still held.
  long heldEntries() const { return heldObject.use_count() - 1; }

 private:
  IORegistryEntry entryOf(const ScriptedEntry& scripted) const;

  std::shared_ptr<int> heldObject = std::make_shared<int>(0);
};

/// A user client with this creator text.
ScriptedEntry clientOf(const std::string& creator, PropertyMap more = {});

inline PropertyValue text(std::string value) {
  return PropertyValue{std::move(value)};
}
inline PropertyValue whole(std::int64_t value) {
  return PropertyValue{value};
}
inline PropertyValue real(double value) {
  return PropertyValue{value};
}
inline PropertyValue flag(bool value) {
  return PropertyValue{value};
}

}  // namespace korvantis::test
