#pragma once

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
};

}  // namespace korvantis
