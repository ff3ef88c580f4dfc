#pragma once

#include <cstdint>

namespace korvantis {

/// How many tokens the agents of one provider are thought to have used.
struct AgentTokens {
  std::int64_t today = 0;
  std::int64_t week = 0;

  bool operator==(const AgentTokens&) const = default;
};

}  // namespace korvantis
