#pragma once

#include <string_view>
#include <vector>

#include "platform/DarwinTypes.h"

namespace korvantis {

/// The ticks of each core that is online, in the order of a `/proc/stat` text. Interrupts count
/// as system and waiting for a disk as idle; time stolen by other machines is left out, and that
/// of guests is in the user's already. A count starts again at 0 after 2^31 ticks (248 days), so
/// that it is never negative. Lines that are damaged or cut off are left out.
std::vector<processor_cpu_load_info> parseMachineTicks(std::string_view text);

}  // namespace korvantis
