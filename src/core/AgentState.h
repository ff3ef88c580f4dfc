#pragma once

#include <string_view>

#include "core/EnumerationTable.h"

namespace korvantis {

/// What a coding agent is doing. The raw value is also the label shown.
enum class AgentState { working, waitingForApproval, idle };

template <>
struct EnumerationTable<AgentState> {
  using Raw = std::string_view;
  using Row = EnumerationRow<AgentState, Raw>;
  static constexpr std::array rows{Row{AgentState::working, "Working"},
                                   Row{AgentState::waitingForApproval, "Waiting for approval"},
                                   Row{AgentState::idle, "Idle"}};
};

}  // namespace korvantis
