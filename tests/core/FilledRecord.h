#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "core/EnumerationTable.h"
#include "core/Instant.h"
#include "core/Uuid.h"

/// Makes records in which nothing stands at its default, so that a field that is lost on a way
/// shows.
namespace korvantis::test {

class RecordFiller {
 public:
  template <typename Record>
  Record filled() {
    Record record;
    std::apply([&](const auto&... fields) { (fill(record.*fields.member), ...); },
               Record::fields());
    return record;
  }

 private:
  void fill(std::string& text) { text = "text \"" + std::to_string(++count) + "\" \xC3\xA9\n\\/"; }
  void fill(bool& flag) { flag = !flag; }
  void fill(double& number) { number = -1.0e9 / 7 * ++count; }
  void fill(Instant& instant) { instant = Instant{1700000000.123456 + ++count}; }
  void fill(Uuid& uuid) { uuid.bytes.fill(static_cast<std::uint8_t>(++count)); }

  /// Near the end of what the type holds, where a detour through another type would show.
  template <typename Integer>
  requires std::is_integral_v<Integer>
  void fill(Integer& integer) {
    integer = static_cast<Integer>(std::numeric_limits<Integer>::max() - ++count);
  }

  template <Tabled Enumeration>
  void fill(Enumeration& value) {
    constexpr auto& rows = EnumerationTable<Enumeration>::rows;
    value = value == rows.back().value ? rows.front().value : rows.back().value;
  }

  template <typename Value>
  void fill(std::optional<Value>& value) {
    fill(value.emplace());
  }

  template <typename Value>
  void fill(std::vector<Value>& list) {
    list.resize(2);
    for (auto& entry : list) fill(entry);
  }

  template <typename Record>
  requires requires { Record::fields(); }
  void fill(Record& record) { record = filled<Record>(); }

  int count = 0;
};

/// A record with every field filled, lists with two entries each.
template <typename Record>
Record filledRecord() {
  return RecordFiller().filled<Record>();
}

}  // namespace korvantis::test
