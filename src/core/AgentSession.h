#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "core/AgentState.h"
#include "core/Field.h"
#include "core/Instant.h"

namespace korvantis {

/// One running AI coding agent.
struct AgentSession {
  std::int32_t pid = 0;
  std::string toolName;
  AgentState state = AgentState::idle;
  std::string projectName;
  std::string projectPath;
  double cpuPercent = 0;
  std::uint64_t memoryBytes = 0;
  std::int64_t tokensToday = 0;
  std::int64_t tokensWeek = 0;
  std::vector<std::string> childProcesses;
  Instant startedAt;

  bool operator==(const AgentSession&) const = default;

  /// What tells one of these from another in a list.
  std::int32_t identity() const { return pid; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"pid", &AgentSession::pid},
                      Field{"toolName", &AgentSession::toolName},
                      Field{"state", &AgentSession::state},
                      Field{"projectName", &AgentSession::projectName},
                      Field{"projectPath", &AgentSession::projectPath},
                      Field{"cpuPercent", &AgentSession::cpuPercent},
                      Field{"memoryBytes", &AgentSession::memoryBytes},
                      Field{"tokensToday", &AgentSession::tokensToday},
                      Field{"tokensWeek", &AgentSession::tokensWeek},
                      Field{"childProcesses", &AgentSession::childProcesses},
                      Field{"startedAt", &AgentSession::startedAt}};
  }
};

}  // namespace korvantis
