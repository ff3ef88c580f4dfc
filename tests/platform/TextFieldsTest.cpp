#include <gtest/gtest.h>
#include <limits>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

TEST(TextFields, NumbersAreWholeTextsOfDigits) {
  EXPECT_EQ(unsignedNumber("0"), 0U);
  EXPECT_EQ(unsignedNumber("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(unsignedNumber("1F90", 16), 8080U);
  for (const char* text : {"", " 1", "1 ", "+1", "-1", "1.0", "0x1", "18446744073709551616"}) {
    EXPECT_EQ(unsignedNumber(text), std::nullopt) << text;
  }
  EXPECT_EQ(signedNumber("-7"), -7);
  EXPECT_EQ(signedNumber("9223372036854775808"), std::nullopt);
}

TEST(TextFields, WordsAreTakenOneByOneAndEndEmpty) {
  std::string_view text = "  a\tbc \n d";
  EXPECT_EQ(takeWord(text), "a");
  EXPECT_EQ(takeWord(text), "bc");
  EXPECT_EQ(takeWord(text), "d");
  EXPECT_EQ(takeWord(text), "");
  EXPECT_EQ(takeWord(text), "");
}

TEST(TextFields, LinesAreTakenOneByOne) {
  std::string_view text = "a\n\nb";
  EXPECT_EQ(takeLine(text), "a");
  EXPECT_EQ(takeLine(text), "");
  EXPECT_EQ(takeLine(text), "b");
  EXPECT_TRUE(text.empty());
}

TEST(TextFields, FieldsAreFoundByTheirWholeName) {
  const std::string_view text = "VmRSSx:\t1 kB\nVmRSS:\t2 kB\nVmRSS:\t3 kB\nLast:\t4 kB";
  EXPECT_EQ(kilobytesField(text, "VmRSS"), 2048U);
  EXPECT_EQ(numberField(text, "VmRSSx"), 1U);
  EXPECT_EQ(kilobytesField(text, "Missing"), std::nullopt);
  EXPECT_EQ(kilobytesField("", "VmRSS"), std::nullopt);
}

TEST(TextFields, ALineCutBeforeItsNewlineCountsAsMissing) {
  EXPECT_EQ(numberField("Uid:\t12", "Uid"), std::nullopt);
  EXPECT_EQ(numberField("Uid:\t12\n", "Uid"), 12U);
}

TEST(TextFields, KilobytesThatDoNotFitOrHaveNoUnitAreAbsent) {
  EXPECT_EQ(kilobytesField("A: 18014398509481983 kB\n", "A"), 18446744073709550592U);
  EXPECT_EQ(kilobytesField("A: 18014398509481984 kB\n", "A"), std::nullopt);
  EXPECT_EQ(kilobytesField("A: 5 MB\n", "A"), std::nullopt);
  EXPECT_EQ(kilobytesField("A: 5\n", "A"), std::nullopt);
  EXPECT_EQ(kilobytesField("A: x kB\n", "A"), std::nullopt);
  EXPECT_EQ(kilobytesField("A:\n", "A"), std::nullopt);
}

}  // namespace
}  // namespace korvantis
