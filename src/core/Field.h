#pragma once

#include <string_view>

namespace korvantis {

/// One field of a record: its JSON key and where it lies. A record lists its fields in
/// declaration order through a static `fields()`; that list is its JSON form.
template <typename Record, typename Value>
struct Field {
  std::string_view key;
  Value Record::*member;
};

template <typename Record, typename Value>
Field(std::string_view, Value Record::*) -> Field<Record, Value>;

}  // namespace korvantis
