#include <gtest/gtest.h>

#include "core/LocalizedOrder.h"

namespace korvantis {
namespace {

TEST(LocalizedOrder, CaseDoesNotCount) {
  EXPECT_EQ(compareLocalizedCaseInsensitive("Music", "mUSIC"), 0);
  EXPECT_LT(compareLocalizedCaseInsensitive("alpha", "Beta"), 0);
  EXPECT_GT(compareLocalizedCaseInsensitive("Beta", "alpha"), 0);
}

TEST(LocalizedOrder, AccentsCountAfterLetters) {
  EXPECT_LT(compareLocalizedCaseInsensitive("zebra", "zoo"), 0);
  EXPECT_LT(compareLocalizedCaseInsensitive("cafe", "café"), 0);
  EXPECT_LT(compareLocalizedCaseInsensitive("café", "cage"), 0);
}

TEST(LocalizedOrder, BytesThatAreNoTextAreOrderedToo) {
  EXPECT_EQ(compareLocalizedCaseInsensitive("\xff", "\xff"), 0);
  EXPECT_LT(compareLocalizedCaseInsensitive("", "\xff"), 0);
}

}  // namespace
}  // namespace korvantis
