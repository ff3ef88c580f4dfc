#pragma once

#include <string>

namespace korvantis {

/// Where the session's message bus is: what the environment says, else the usual socket in
/// `$XDG_RUNTIME_DIR` if it is there; empty without a bus. Nothing is started. Any thread, as long
/// as nobody changes the environment.
std::string sessionBusAddress();

}  // namespace korvantis
