#pragma once

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "core/EnumerationTable.h"
#include "core/Field.h"
#include "core/Instant.h"
#include "core/Uuid.h"

/// The JSON form of records and of the values that they are made of: text, flags, numbers,
/// instants, identifiers, enumerations, optionals, lists and records. Heavy to include: most
/// files want core/RecordJson.h instead. Nothing here throws; any thread.
namespace korvantis {

/// A record: an aggregate that lists its fields in JSON order.
template <typename Value>
concept Record = requires {
  Value::fields();
};

template <typename Value>
concept Integer = std::integral<Value> && !std::same_as<Value, bool>;

template <typename Value>
inline constexpr bool isOptional = false;
template <typename Value>
inline constexpr bool isOptional<std::optional<Value>> = true;

template <typename Value>
inline constexpr bool isList = false;
template <typename Value>
inline constexpr bool isList<std::vector<Value>> = true;

/// A value in its JSON form. Infinite numbers stand in it as they are; `jsonText` rejects them.
template <typename Value>
nlohmann::ordered_json toJson(const Value& value) {
  if constexpr (Record<Value>) {
    auto object = nlohmann::ordered_json::object();
    const auto append = [&](const auto& field) {
      const auto& member = value.*field.member;
      if constexpr (isOptional<std::remove_cvref_t<decltype(member)>>) {
        if (member) object.emplace(field.key, toJson(*member));
      } else {
        object.emplace(field.key, toJson(member));
      }
    };
    std::apply([&](const auto&... fields) { (append(fields), ...); }, Value::fields());
    return object;
  } else if constexpr (isList<Value>) {
    auto list = nlohmann::ordered_json::array();
    for (const auto& entry : value) list.push_back(toJson(entry));
    return list;
  } else if constexpr (Tabled<Value>) {
    return rawValue(value);
  } else if constexpr (std::same_as<Value, Instant>) {
    return value.secondsSince1970;
  } else if constexpr (std::same_as<Value, Uuid>) {
    return value.text();
  } else {
    return value;
  }
}

/// A JSON number as an integer of the given type: a number without a fraction (3.0 is 3) that
/// fits it. Absent for everything else.
template <Integer Value, typename Json>
std::optional<Value> integerFromJson(const Json& json) {
  if (json.is_number_unsigned()) {
    const auto whole = json.template get<std::uint64_t>();
    if (std::in_range<Value>(whole)) return static_cast<Value>(whole);
  } else if (json.is_number_integer()) {
    const auto whole = json.template get<std::int64_t>();
    if (std::in_range<Value>(whole)) return static_cast<Value>(whole);
  } else if (json.is_number_float()) {
    // Strictly between powers of two that a double holds exactly. The lower one itself is the
    // rounded form of integers that are too small, so it stays out.
    const double limit = std::ldexp(1.0, std::numeric_limits<Value>::digits);
    const double floor = std::is_signed_v<Value> ? -limit : -1.0;
    const auto number = json.template get<double>();
    const bool fits = number > floor && number < limit;
    if (fits && number == std::trunc(number)) return static_cast<Value>(number);
  }
  return std::nullopt;
}

template <typename Value, typename Json>
std::optional<Value> fromJson(const Json& json);

/// Reads one field of a record out of a JSON object; false when it can't be read. A key that is
/// missing or null is an absent optional.
template <typename Json, typename Owner, typename Value>
bool readField(const Json& object, const Field<Owner, Value>& field, Owner& record) {
  const auto found = object.find(field.key);
  const bool isMissing = found == object.end() || found->is_null();
  if constexpr (isOptional<Value>) {
    record.*field.member = std::nullopt;
    if (isMissing) return true;
    record.*field.member = fromJson<typename Value::value_type>(*found);
    return (record.*field.member).has_value();
  } else {
    if (isMissing) return false;
    auto value = fromJson<Value>(*found);
    if (value) record.*field.member = std::move(*value);
    return value.has_value();
  }
}

/// A record out of a JSON object. Keys that it does not know are passed over.
template <Record Value, typename Json>
std::optional<Value> recordFromJson(const Json& json) {
  if (!json.is_object()) return std::nullopt;
  Value record;
  const auto readAll = [&](const auto&... fields) {
    return (readField(json, fields, record) && ...);
  };
  if (!std::apply(readAll, Value::fields())) return std::nullopt;
  return record;
}

/// A list out of a JSON array: all of it or nothing.
template <typename List, typename Json>
std::optional<List> listFromJson(const Json& json) {
  if (!json.is_array()) return std::nullopt;
  List list;
  list.reserve(json.size());
  for (const auto& entry : json) {
    auto value = fromJson<typename List::value_type>(entry);
    if (!value) return std::nullopt;
    list.push_back(std::move(*value));
  }
  return list;
}

/// A case of an enumeration out of its raw value; absent when its table has no such row.
template <Tabled Value, typename Json>
std::optional<Value> caseFromJson(const Json& json) {
  if constexpr (Integer<typename EnumerationTable<Value>::Raw>) {
    const auto raw = integerFromJson<std::int64_t>(json);
    return raw ? fromRawValue<Value>(*raw) : std::nullopt;
  } else {
    const auto raw = fromJson<std::string>(json);
    return raw ? fromRawValue<Value>(*raw) : std::nullopt;
  }
}

/// A value out of its JSON form; absent, with nothing half read, when any part of it is missing,
/// of another type or out of range. `Json` is either of nlohmann's value types.
template <typename Value, typename Json>
std::optional<Value> fromJson(const Json& json) {
  if constexpr (Record<Value>) {
    return recordFromJson<Value>(json);
  } else if constexpr (isList<Value>) {
    return listFromJson<Value>(json);
  } else if constexpr (Tabled<Value>) {
    return caseFromJson<Value>(json);
  } else if constexpr (std::same_as<Value, Instant>) {
    const auto seconds = fromJson<double>(json);
    return seconds ? std::optional(Instant{*seconds}) : std::nullopt;
  } else if constexpr (std::same_as<Value, Uuid>) {
    const auto text = fromJson<std::string>(json);
    return text ? Uuid::fromText(*text) : std::nullopt;
  } else if constexpr (std::same_as<Value, bool>) {
    return json.is_boolean() ? std::optional(json.template get<bool>()) : std::nullopt;
  } else if constexpr (Integer<Value>) {
    return integerFromJson<Value>(json);
  } else if constexpr (std::same_as<Value, double>) {
    return json.is_number() ? std::optional(json.template get<double>()) : std::nullopt;
  } else {
    static_assert(std::same_as<Value, std::string>);
    return json.is_string() ? std::optional(json.template get<std::string>()) : std::nullopt;
  }
}

}  // namespace korvantis
