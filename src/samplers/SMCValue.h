#pragma once

#include <optional>

#include "platform/SMCCalls.h"

namespace korvantis {

/// The number in the payload of a record, by its type and size; absent for a pairing that is not
/// known, and for a floating-point number that is infinite or none. Any thread.
std::optional<double> smcValue(std::uint32_t dataType, std::uint32_t dataSize,
                               const std::array<std::uint8_t, 32>& bytes);

}  // namespace korvantis
