#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/linux/ProcessIdentity.h"

namespace korvantis {

/// What the search for a responsible process needs to know of one process.
struct ProcessAncestry {
  std::uint64_t startTicks = 0;
  std::int32_t parent = 0;
  std::int32_t session = 0;
  std::string executablePath;
  /// The control group that it runs in; empty when that says nothing.
  std::string controlGroup{};
  /// The process of the application that this group is named after; pid 0 for none.
  ProcessIdentity groupApplication{};

  bool operator==(const ProcessAncestry&) const = default;
};

/// Finds the application that a process works for: the main process of an application answers for
/// itself; any other process is answered for by the application that its control group is named
/// after, unless an ancestor in that same group belongs to another one, which is nearer; else by
/// the nearest ancestor that belongs to an application, else by the leader of its session or the
/// nearest such ancestor of that, else by whoever answered for it before, as long as that one
/// lives.
class ResponsibleProcess {
 public:
  /// Gives what is known of a pid; absent when there is no such process.
  using LookUp = std::function<std::optional<ProcessAncestry>(std::int32_t pid)>;

  explicit ResponsibleProcess(LookUp lookUpProcess) : lookUp(std::move(lookUpProcess)) {}

  /// The responsible process of `pid`; one with pid 0 when there is none. `before` is the last
  /// answer for the same process.
  ProcessIdentity find(std::int32_t pid, const ProcessIdentity& before) const;

 private:
  std::optional<ProcessIdentity> nearestApplication(std::int32_t pid,
                                                    std::uint64_t latestStart) const;
  std::optional<ProcessIdentity> aliveApplication(const ProcessIdentity& identity) const;

  LookUp lookUp;
};

}  // namespace korvantis
