#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/OstrelEngine.h"

namespace korvantis::test {

/// How one running application answers a request to quit.
struct ScriptedApplication {
  bool acceptsTerminate = true;
  bool acceptsForceTerminate = true;
};

/// An engine over a scripted system and scripted collaborators. Every request that may stop
/// something is written down in words, in the order in which it came. The collaborators give
/// empty answers until a test puts in its own; put them in before the first use of `engine`.
class ScriptedEngine {
 public:
  using Signal = std::pair<std::int32_t, int>;

  PlatformCalls platform;
  CollaboratorCalls collaborators;

  double now = 1000.0;
  std::uint64_t physicalMemory = 0;
  std::map<std::string, std::vector<ScriptedApplication>> applicationsByIdentifier;
  std::map<std::int32_t, ScriptedApplication> applicationsByPID;
  /// The processes that signals reach.
  std::vector<std::int32_t> reachablePIDs;

  /// Requests to applications, such as "terminate com.example.editor".
  std::vector<std::string> requests;
  std::vector<Signal> signals;

  ScriptedEngine();

  /// The engine, made at the first use.
  OstrelEngine& engine();

 private:
  RunningApplication application(const std::string& label, ScriptedApplication script);

  std::unique_ptr<OstrelEngine> engine_;
};

/// Collaborators that all give the empty value of their type.
CollaboratorCalls emptyCollaborators();

/// The real system, but with an empty process table, no files, no way to signal anything, and
/// folders of its own for what the program keeps.
PlatformCalls platformWithoutProcesses();

/// A process with nothing but a number and a name.
ProcessSample processNamed(std::int32_t pid, const std::string& name);

}  // namespace korvantis::test
