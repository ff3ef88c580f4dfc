#include "core/Uuid.h"

#include "platform/RandomCalls.h"

namespace korvantis {

namespace {

constexpr std::size_t textLength = 36;

constexpr bool isHyphenPosition(std::size_t position) {
  return position == 8 || position == 13 || position == 18 || position == 23;
}

/// The value of a hexadecimal digit; absent for any other character.
constexpr std::optional<std::uint8_t> hexDigitValue(char digit) {
  if (digit >= '0' && digit <= '9') return static_cast<std::uint8_t>(digit - '0');
  if (digit >= 'A' && digit <= 'F') return static_cast<std::uint8_t>(digit - 'A' + 10);
  if (digit >= 'a' && digit <= 'f') return static_cast<std::uint8_t>(digit - 'a' + 10);
  return std::nullopt;
}

}  // namespace

std::string Uuid::text() const {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  text.reserve(textLength);
  for (const std::uint8_t byte : bytes) {
    if (isHyphenPosition(text.size())) text += '-';
    text += digits[byte >> 4U];
    text += digits[byte & 0x0FU];
  }
  return text;
}

std::optional<Uuid> Uuid::fromText(std::string_view text) {
  if (text.size() != textLength) return std::nullopt;
  Uuid uuid;
  std::size_t digitCount = 0;
  for (std::size_t position = 0; position < textLength; ++position) {
    if (isHyphenPosition(position)) {
      if (text[position] != '-') return std::nullopt;
      continue;
    }
    const auto digit = hexDigitValue(text[position]);
    if (!digit) return std::nullopt;
    std::uint8_t& byte = uuid.bytes[digitCount / 2];
    byte = static_cast<std::uint8_t>(byte << 4U | *digit);
    ++digitCount;
  }
  return uuid;
}

Uuid Uuid::random() {
  return random(systemRandomCalls());
}

Uuid Uuid::random(const RandomCalls& calls) {
  Uuid uuid;
  calls.fill(uuid.bytes.data(), uuid.bytes.size());
  // Version 4 (random), variant 1: what tells such identifiers from those of other origins.
  uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0FU) | 0x40U);
  uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3FU) | 0x80U);
  return uuid;
}

}  // namespace korvantis

std::size_t std::hash<korvantis::Uuid>::operator()(const korvantis::Uuid& uuid) const noexcept {
  // FNV-1a, so that identifiers that differ in any one byte differ in their hash.
  std::uint64_t mixed = 14695981039346656037U;
  for (const std::uint8_t byte : uuid.bytes) mixed = (mixed ^ byte) * 1099511628211U;
  return static_cast<std::size_t>(mixed);
}
