#pragma once

#include <array>
#include <cstddef>
#include <optional>

namespace korvantis {

/// The table of an enumeration: every case with its raw value, in the order in which cases
/// are listed. Specialised beside each enumeration as
/// `template <> struct EnumerationTable<E> { using Raw = ...; static constexpr std::array rows =
/// ...; };`
template <typename Enumeration>
struct EnumerationTable;

/// One row of an `EnumerationTable`.
template <typename Enumeration, typename RawValue>
struct EnumerationRow {
  Enumeration value;
  RawValue raw;
};

/// An enumeration that has a table of raw values.
template <typename Enumeration>
concept Tabled = requires {
  EnumerationTable<Enumeration>::rows;
};

/// The raw value of a case.
template <Tabled Enumeration>
constexpr auto rawValue(Enumeration value) {
  for (const auto& row : EnumerationTable<Enumeration>::rows) {
    if (row.value == value) return row.raw;
  }
  return typename EnumerationTable<Enumeration>::Raw{};
}

/// The case of a raw value; absent when the table has no such row.
template <Tabled Enumeration, typename RawValue>
constexpr std::optional<Enumeration> fromRawValue(const RawValue& raw) {
  for (const auto& row : EnumerationTable<Enumeration>::rows) {
    if (row.raw == raw) return row.value;
  }
  return std::nullopt;
}

/// All cases in table order.
template <Tabled Enumeration>
constexpr auto allCases() {
  constexpr auto& rows = EnumerationTable<Enumeration>::rows;
  std::array<Enumeration, rows.size()> cases{};
  for (std::size_t index = 0; index < rows.size(); ++index) cases[index] = rows[index].value;
  return cases;
}

}  // namespace korvantis
