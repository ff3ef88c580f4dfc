#pragma once

#include <string>
#include <vector>

#include "platform/IORegistryCalls.h"

namespace korvantis {

/// The names of the programs that hold the Neural Engine, in the registry's order; a name can
/// come more than once. Any thread.
std::vector<std::string> readNeuralEngineClients(const IORegistryCalls& registry);

}  // namespace korvantis
