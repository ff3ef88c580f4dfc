#pragma once

#include <string>
#include <string_view>

namespace korvantis {

/// The longer name of a process, at most 31 bytes. The kernel keeps 15 bytes of a name. Where a
/// name fills them all and the base name of the executable, or else that of the first argument,
/// goes on from it, that base name is given: the name was cut. Any other name was chosen by the
/// program itself and stays.
std::string longProcessName(std::string_view name, std::string_view executable,
                            std::string_view firstArgument);

}  // namespace korvantis
