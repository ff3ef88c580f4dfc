#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "core/FixedDecimals.h"

namespace korvantis {
namespace {

/// What C's printf gives, in the plain locale that test programs start in.
std::string printed(double value, int decimals) {
  std::array<char, 512> text{};
  std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
  return text.data();
}

TEST(FixedDecimals, RoundsHalvesToTheEvenDigitLikePrintf) {
  EXPECT_EQ(fixedDecimals(0.5, 0), "0");
  EXPECT_EQ(fixedDecimals(1.5, 0), "2");
  EXPECT_EQ(fixedDecimals(2.5, 0), "2");
  EXPECT_EQ(fixedDecimals(3.5, 0), "4");
  EXPECT_EQ(fixedDecimals(0.25, 1), "0.2");
  EXPECT_EQ(fixedDecimals(0.75, 1), "0.8");
  EXPECT_EQ(fixedDecimals(2.675, 2), "2.67");
}

TEST(FixedDecimals, AgreesWithPrintfForManyValues) {
  for (int decimals = 0; decimals <= 3; ++decimals) {
    for (int step = -4000; step <= 4000; ++step) {
      const double value = step / 16.0 + step * 1e-7;
      ASSERT_EQ(fixedDecimals(value, decimals), printed(value, decimals));
    }
  }
}

TEST(FixedDecimals, WritesEveryDigitOfHugeValues) {
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(fixedDecimals(largest, 2), printed(largest, 2));
  EXPECT_EQ(fixedDecimals(-largest, 0), printed(-largest, 0));
  EXPECT_EQ(fixedDecimals(largest, 2).size(), 312U);
}

TEST(FixedDecimals, WritesTheTiniestValueAsZeroOrInFull) {
  const double tiniest = std::numeric_limits<double>::denorm_min();
  EXPECT_EQ(fixedDecimals(tiniest, 3), "0.000");
  EXPECT_EQ(fixedDecimals(tiniest, 1074).back(), '5');
}

TEST(FixedDecimals, KeepsTheSignOfNegativeZeroLikePrintf) {
  EXPECT_EQ(fixedDecimals(-0.0, 1), "-0.0");
  EXPECT_EQ(fixedDecimals(-0.01, 1), "-0.0");
  EXPECT_EQ(fixedDecimals(-0.4, 0), "-0");
}

TEST(FixedDecimals, NamesInfiniteValuesAndNoNumber) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(fixedDecimals(infinity, 1), "inf");
  EXPECT_EQ(fixedDecimals(-infinity, 1), "-inf");
  EXPECT_EQ(fixedDecimals(none, 1), "nan");
  EXPECT_EQ(fixedDecimals(-none, 1), "nan");
}

TEST(FixedDecimals, TakesNegativeDecimalsAsNone) {
  EXPECT_EQ(fixedDecimals(1.25, -3), "1");
}

TEST(FixedDecimals, BearsMoreDecimalsThanADoubleHas) {
  EXPECT_EQ(fixedDecimals(0.5, 3), "0.500");
  EXPECT_EQ(fixedDecimals(0.5, 1100).size(), 1102U);
  EXPECT_EQ(fixedDecimals(0.5, std::numeric_limits<int>::max()).substr(0, 4), "0.50");
}

TEST(FixedDecimals, AppendsTheSameTextToWhatIsThere) {
  std::string text = "a,";
  appendFixedDecimals(text, 2.675, 2);
  appendFixedDecimals(text, std::numeric_limits<double>::quiet_NaN(), 1);
  appendFixedDecimals(text, -0.04, 1);
  EXPECT_EQ(text, "a,2.67nan-0.0");
}

}  // namespace
}  // namespace korvantis
