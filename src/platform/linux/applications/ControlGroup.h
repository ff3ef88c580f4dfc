#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// What the name of a control group says about the processes in it.
struct ControlGroup {
  /// One part of the path that names an application.
  struct Unit {
    /// The desktop ids that it may mean, best first.
    std::vector<std::string> ids;
    /// The number at its end: that of the process which was started in it.
    std::optional<std::int32_t> leader;
    /// It was made for one start of the application; otherwise it holds all that belongs to it.
    bool isOfOneStart = false;
    /// The path of the group up to this part.
    std::string path{};

    bool operator==(const Unit&) const = default;
  };

  /// The whole path; empty when it can't be told.
  std::string path;
  /// The parts that name applications, innermost first.
  std::vector<Unit> units;
  /// The desktop session itself runs here: its slice, its manager, a service of its bus.
  bool isSession = false;

  bool operator==(const ControlGroup&) const = default;
};

/// Reads `/proc/PID/cgroup`. Any thread.
ControlGroup parseControlGroup(std::string_view text);

}  // namespace korvantis
