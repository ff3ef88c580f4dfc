#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/UserDefaultsCalls.h"
#include "state/BriefDeliveryCalls.h"

namespace korvantis::test {

/// A settings store that keeps the kind of each value, and what was written in order.
class ScriptedDefaults {
 public:
  using Value = std::variant<bool, std::int64_t, std::string>;

  std::map<std::string, Value> values;
  std::vector<std::pair<std::string, Value>> writes;

  UserDefaultsCalls calls();
};

/// The outside of a brief's delivery, scripted. Time moves only by sleeping. Work for the
/// background waits for `runBackground`.
class ScriptedDelivery {
 public:
  double now = 1'700'000'000;

  /// What the next requests get, and those that came.
  HTTPAnswer answer{.error = {}, .statusCode = 200};
  std::vector<HTTPRequest> requests;

  /// Whether the desktop opens each URL in turn, and those that came.
  std::deque<bool> opens;
  std::vector<std::string> opened;

  /// How the program that is started behaves.
  std::optional<std::string> launchError;
  double runsSeconds = 0.2;
  int terminationStatus = 0;
  std::string standardError;
  std::vector<std::pair<std::string, std::vector<std::string>>> launches;
  int terminations = 0;
  int sleeps = 0;

  /// Work for the background, and tasks for the main thread; those run at once unless held.
  std::deque<std::function<void()>> backgroundTasks;
  std::deque<std::function<void()>> mainTasks;
  bool holdsMainTasks = false;

  BriefDeliveryCalls calls();

  /// Runs what waits for the background.
  void runBackground();
  /// Runs what waits for the main thread.
  void runMain();
};

}  // namespace korvantis::test
