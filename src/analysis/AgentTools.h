#pragma once

#include <string_view>

#include "core/ProcessSample.h"

namespace korvantis {

/// The coding agent that a process is taken for by its name, arguments and path in lower case; the
/// empty text when it is none. Any thread.
std::string_view agentToolOf(const ProcessSample& process);

}  // namespace korvantis
