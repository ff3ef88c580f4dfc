#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "core/EnumerationTable.h"

namespace korvantis {

/// The names of an enumeration's cases, in table order. QML can't name enumeration values that
/// begin with a small letter, so the stores' properties carry these names as text instead:
/// `store.selectedPane = "history"`. Specialised beside each enumeration as
/// `template <> struct CaseNames<E> { static constexpr std::array<std::string_view, n> names; };`
template <typename Enumeration>
struct CaseNames;

/// The name of a case, such as "neuralEngine"; empty for a value outside the table.
template <Tabled Enumeration>
constexpr std::string_view caseName(Enumeration value) {
  constexpr auto& rows = EnumerationTable<Enumeration>::rows;
  static_assert(rows.size() == CaseNames<Enumeration>::names.size());
  for (std::size_t index = 0; index < rows.size(); ++index) {
    if (rows[index].value == value) return CaseNames<Enumeration>::names[index];
  }
  return "";
}

/// The case of that name, letter for letter; absent when there is none.
template <Tabled Enumeration>
constexpr std::optional<Enumeration> fromCaseName(std::string_view name) {
  constexpr auto& rows = EnumerationTable<Enumeration>::rows;
  for (std::size_t index = 0; index < rows.size(); ++index) {
    if (CaseNames<Enumeration>::names[index] == name) return rows[index].value;
  }
  return std::nullopt;
}

}  // namespace korvantis
