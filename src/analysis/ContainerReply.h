#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ContainerSample.h"
#include "platform/RandomCalls.h"

namespace korvantis {

/// The containers in what an engine sent as its whole HTTP reply to the question for its list, in
/// the engine's order. Absent when the reply is no UTF-8, its header has no end, or its body is no
/// JSON list of objects; status line and header fields don't matter. A container without an id
/// gets a random one. `engine` is the engine's label. Any thread.
std::optional<std::vector<ContainerSample>> containersFromReply(std::string_view reply,
                                                                const std::string& engine,
                                                                const RandomCalls& random);

}  // namespace korvantis
