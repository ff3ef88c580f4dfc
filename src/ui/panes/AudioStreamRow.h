#pragma once

#include <QString>
#include <string>

namespace korvantis {

/// The words and the state of one application in the mixer.
struct AudioStreamRow {
  /// Its place among all applications of the mixer, of which a view may hold only some.
  int place = 0;
  /// Names what shows it, which may show another application at the next tick.
  int slot = 0;
  QString appID{};
  QString appName{};
  /// Empty when it has none.
  QString bundlePath{};
  QString statusText{};
  bool isMuted = false;
  /// 0 to 1.
  double volume = 1;
  /// The volume, or that it is muted.
  QString volumeText{};

  bool operator==(const AudioStreamRow&) const = default;

  /// What tells one of these from another in a list.
  std::string identity() const { return std::to_string(slot); }
};

}  // namespace korvantis
