#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>

#include "bridge/BridgeReply.h"

namespace korvantis {

/// Answers one request of the local bridge: the command's name and the whole request object give
/// the reply object, whose keys stay in the order in which they were put in. It runs on the
/// bridge's accept thread.
using BridgeProvider =
    std::function<BridgeReply(const std::string& command, const nlohmann::json& arguments)>;

}  // namespace korvantis
