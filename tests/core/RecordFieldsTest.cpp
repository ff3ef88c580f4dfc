#include <array>
#include <gtest/gtest.h>
#include <tuple>
#include <type_traits>

#include "AllRecords.h"
#include "FilledRecord.h"
#include "RecordMembers.h"

namespace korvantis {
namespace {

template <typename Record>
class RecordFields : public testing::Test {};

TYPED_TEST_SUITE(RecordFields, test::AllRecords);

TYPED_TEST(RecordFields, RecordsArePlainAggregates) {
  static_assert(std::is_aggregate_v<TypeParam>);
  static_assert(std::is_default_constructible_v<TypeParam>);
  static_assert(std::is_copy_constructible_v<TypeParam> && std::is_copy_assignable_v<TypeParam>);
  static_assert(std::is_nothrow_move_constructible_v<TypeParam>);
  static_assert(!std::is_polymorphic_v<TypeParam>);
}

TYPED_TEST(RecordFields, ListNamesEveryMemberInDeclarationOrder) {
  TypeParam record;
  const auto declared = test::membersOf(record);
  const auto listed = test::listedMembersOf(record);
  static_assert(std::is_same_v<decltype(declared), decltype(listed)>);
  const auto addresses = [](const auto&... members) {
    return std::array{static_cast<const void*>(&members)...};
  };
  EXPECT_EQ(std::apply(addresses, listed), std::apply(addresses, declared));
}

TYPED_TEST(RecordFields, CopyIsEqualAndEveryFieldCounts) {
  const auto filled = test::filledRecord<TypeParam>();
  const TypeParam copy = filled;
  EXPECT_EQ(copy, filled);
  const auto eachDiffers = [&](const auto&... fields) {
    const auto differs = [&](const auto& field) {
      TypeParam other = filled;
      other.*field.member = TypeParam().*field.member;
      EXPECT_NE(other, filled) << field.key;
    };
    (differs(fields), ...);
  };
  std::apply(eachDiffers, TypeParam::fields());
}

}  // namespace
}  // namespace korvantis
