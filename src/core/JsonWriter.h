#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/EnumerationTable.h"

namespace korvantis {

/// Writes one JSON value on one line, piece by piece, in the very bytes in which the JSON library
/// would write it. Bytes that are no UTF-8 become U+FFFD. It takes what it is told: keys only
/// inside of objects, each followed by its value, and an end for every beginning. One thread.
class JsonWriter {
 public:
  /// Begins an object, as a value of its own, of a list or behind a key.
  void beginObject() { open('{'); }
  /// Ends the object that was begun last.
  void endObject() { close('}'); }
  /// Begins a list; what is written until its end are its elements.
  void beginList() { open('['); }
  /// Ends the list that was begun last.
  void endList() { close(']'); }

  /// The next key of the object; its value comes next.
  void key(std::string_view name);

  /// The next value: a text, a flag, a number, a case of an enumeration (its raw value), or a list
  /// of these.
  template <typename Value>
  void value(const Value& given) {
    if constexpr (std::convertible_to<const Value&, std::string_view>) {
      text(given);
    } else if constexpr (std::same_as<Value, bool>) {
      literal(given ? "true" : "false");
    } else if constexpr (std::floating_point<Value>) {
      number(given);
    } else if constexpr (std::signed_integral<Value>) {
      integer(std::int64_t{given});
    } else if constexpr (std::unsigned_integral<Value>) {
      integer(std::uint64_t{given});
    } else if constexpr (Tabled<Value>) {
      value(rawValue(given));
    } else {
      beginList();
      for (const auto& element : given) value(element);
      endList();
    }
  }

  /// A key of the object with its value.
  template <typename Value>
  void member(std::string_view name, const Value& given) {
    key(name);
    value(given);
  }

  /// The next value, none at all.
  void null() { literal("null"); }

  /// What has been written; ends the writing. Absent when an infinite number or no number was
  /// among it: JSON has no form for them.
  std::optional<std::string> takeText();

 private:
  void open(char bracket);
  void close(char bracket);
  void text(std::string_view words);
  void literal(std::string_view word);
  void number(double given);
  void integer(std::int64_t given);
  void integer(std::uint64_t given);

  char* room(std::size_t count);
  void takeUntil(const char* end);
  void put(char character);
  void put(std::string_view bytes);
  void putComma();
  void putText(std::string_view words);

  static constexpr std::size_t usualBytes = 1024;

  std::string written = std::string(usualBytes, '\0');
  std::size_t used = 0;
  /// Whether something stands before the next piece in the same object or list.
  bool isBehindValue = false;
  bool isFinite = true;
};

}  // namespace korvantis
