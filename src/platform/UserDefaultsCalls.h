#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace korvantis {

/// The user's settings store. Main thread.
struct UserDefaultsCalls {
  /// The text under `key`; absent when there is none.
  std::function<std::optional<std::string>(const std::string& key)> stringForKey;
  /// Stores a text under `key`, at once.
  std::function<void(const std::string& key, const std::string& value)> setString;
  /// The flag under `key`; false when there is none or it is no flag. A number counts as true when
  /// it is not 0, a text when it says so ("true", "yes", a number).
  std::function<bool(const std::string& key)> boolForKey = [](const std::string&) { return false; };
  /// Stores a flag under `key`, at once.
  std::function<void(const std::string& key, bool value)> setBool = [](const std::string&, bool) {};
  /// The number under `key`; 0 when there is none. A text counts as the number that it begins
  /// with, held to the range.
  std::function<std::int64_t(const std::string& key)> integerForKey = [](const std::string&) {
    return std::int64_t{0};
  };
  /// Stores a number under `key`, at once.
  std::function<void(const std::string& key, std::int64_t value)> setInteger =
      [](const std::string&, std::int64_t) {};
  /// Whether there is anything under `key`, of whatever kind (`objectForKey:`).
  std::function<bool(const std::string& key)> hasObjectForKey = [](const std::string&) {
    return false;
  };
};

}  // namespace korvantis
