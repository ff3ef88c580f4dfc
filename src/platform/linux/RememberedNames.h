#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace korvantis {

/// Remembers what a slow look around said about a list of names, such as which network interfaces
/// are real devices. The look is repeated only when the list changes, and every 25 seconds. Any
/// thread.
class RememberedNames {
 public:
  /// Gives the names that answer for a list of names.
  using Look = std::function<std::vector<std::string>(const std::vector<std::string>& names)>;

  /// `monotonicSeconds` tells the time; it never goes back.
  RememberedNames(std::function<double()> monotonicSeconds, Look look);

  /// What `look` says about `names`, or said lately.
  std::vector<std::string> about(const std::vector<std::string>& names);

 private:
  const std::function<double()> monotonicSeconds;
  const Look look;

  std::mutex lock;
  std::optional<double> lookedAt;
  std::vector<std::string> lastNames;
  std::vector<std::string> lastAnswer;
};

}  // namespace korvantis
