#include "samplers/SMCValue.h"

#include <bit>
#include <cmath>

namespace korvantis {
namespace {

using Payload = std::array<std::uint8_t, 32>;

constexpr double sp78Unit = 256;
constexpr double fpe2Unit = 4;

std::uint16_t bigEndian16(const Payload& bytes) {
  return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

std::optional<double> littleEndianFloat(const Payload& bytes) {
  std::uint32_t bits = 0;
  for (int index = 3; index >= 0; --index) bits = bits << 8 | bytes[static_cast<unsigned>(index)];
  const auto number = std::bit_cast<float>(bits);
  return std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
}

}  // namespace

std::optional<double> smcValue(std::uint32_t dataType, std::uint32_t dataSize,
                               const Payload& bytes) {
  const auto is = [&](std::string_view type, std::uint32_t size) {
    return dataType == smcFourCharacterCode(type) && dataSize == size;
  };
  if (is("flt ", 4)) return littleEndianFloat(bytes);
  if (is("sp78", 2)) return static_cast<std::int16_t>(bigEndian16(bytes)) / sp78Unit;
  if (is("fpe2", 2)) return bigEndian16(bytes) / fpe2Unit;
  if (is("ui8 ", 1)) return bytes[0];
  if (is("ui16", 2)) return bigEndian16(bytes);
  return std::nullopt;
}

}  // namespace korvantis
