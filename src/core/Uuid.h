#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace korvantis {

struct RandomCalls;

/// A 128-bit identifier. In JSON it is its upper-case text of five hyphenated groups.
struct Uuid {
  std::array<std::uint8_t, 16> bytes{};

  auto operator<=>(const Uuid&) const = default;

  /// The text form, such as "E621E1F8-C36C-495A-93FC-0C247A3E6E5F".
  std::string text() const;

  /// Reads the text form in either case; absent for anything else.
  static std::optional<Uuid> fromText(std::string_view text);

  /// A new random identifier (version 4) from the system's random source. Any thread.
  static Uuid random();

  /// The same from another source of chance.
  static Uuid random(const RandomCalls& calls);
};

}  // namespace korvantis

template <>
struct std::hash<korvantis::Uuid> {
  std::size_t operator()(const korvantis::Uuid& uuid) const noexcept;
};
