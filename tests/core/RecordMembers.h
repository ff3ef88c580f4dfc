#pragma once

#include <cstddef>
#include <tuple>
#include <type_traits>

#include "core/Field.h"

/// The members of an aggregate, found without its list of fields: a structured binding compiles
/// only when it names every member. One overload for each number of members that a record has.
namespace korvantis::test {

template <std::size_t size>
using Size = std::integral_constant<std::size_t, size>;

template <typename Record>
auto members(Record& record, Size<3>) {
  auto& [m0, m1, m2] = record;
  return std::tie(m0, m1, m2);
}

template <typename Record>
auto members(Record& record, Size<4>) {
  auto& [m0, m1, m2, m3] = record;
  return std::tie(m0, m1, m2, m3);
}

template <typename Record>
auto members(Record& record, Size<5>) {
  auto& [m0, m1, m2, m3, m4] = record;
  return std::tie(m0, m1, m2, m3, m4);
}

template <typename Record>
auto members(Record& record, Size<6>) {
  auto& [m0, m1, m2, m3, m4, m5] = record;
  return std::tie(m0, m1, m2, m3, m4, m5);
}

template <typename Record>
auto members(Record& record, Size<7>) {
  auto& [m0, m1, m2, m3, m4, m5, m6] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6);
}

template <typename Record>
auto members(Record& record, Size<8>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7);
}

template <typename Record>
auto members(Record& record, Size<9>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7, m8] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7, m8);
}

template <typename Record>
auto members(Record& record, Size<10>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7, m8, m9] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9);
}

template <typename Record>
auto members(Record& record, Size<11>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10);
}

template <typename Record>
auto members(Record& record, Size<13>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12);
}

template <typename Record>
auto members(Record& record, Size<14>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13);
}

template <typename Record>
auto members(Record& record, Size<15>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14);
}

template <typename Record>
auto members(Record& record, Size<16>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15);
}

template <typename Record>
auto members(Record& record, Size<21>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19,
         m20] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17,
                  m18, m19, m20);
}

template <typename Record>
auto members(Record& record, Size<25>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19,
         m20, m21, m22, m23, m24] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17,
                  m18, m19, m20, m21, m22, m23, m24);
}

template <typename Record>
auto members(Record& record, Size<32>) {
  auto& [m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19,
         m20, m21, m22, m23, m24, m25, m26, m27, m28, m29, m30, m31] = record;
  return std::tie(m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17,
                  m18, m19, m20, m21, m22, m23, m24, m25, m26, m27, m28, m29, m30, m31);
}

/// How many fields a record lists.
template <typename Record>
inline constexpr std::size_t fieldCount = std::tuple_size_v<decltype(Record::fields())>;

/// References to all members of a record in the order of their declaration. Does not compile
/// when the record lists more or fewer fields than it has.
template <typename Record>
auto membersOf(Record& record) {
  return members(record, Size<fieldCount<Record>>());
}

/// References to the members that a record lists as its fields, in the order of the list.
template <typename Record>
auto listedMembersOf(Record& record) {
  const auto tied = [&](const auto&... fields) { return std::tie(record.*fields.member...); };
  return std::apply(tied, Record::fields());
}

}  // namespace korvantis::test
