#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/Utf8.h"

namespace korvantis {
namespace {

const std::string mark = "\xEF\xBF\xBD";

TEST(Utf8, WellFormedTextIsValidAndComesBackUnchanged) {
  const std::vector<std::string> texts = {
      "",
      "plain",
      "caf\xC3\xA9",
      "\xE6\x97\xA5\xE6\x9C\xAC",
      "\xF0\x9F\x99\x82",
      std::string("a\0b", 3),
      "\xC2\x80",
      "\xDF\xBF",
      "\xE0\xA0\x80",
      "\xED\x9F\xBF",
      "\xEE\x80\x80",
      "\xEF\xBF\xBF",
      "\xF0\x90\x80\x80",
      "\xF4\x8F\xBF\xBF",
  };
  for (const std::string& text : texts) {
    EXPECT_TRUE(isValidUtf8(text)) << text;
    EXPECT_EQ(repairedUtf8(text), text);
  }
}

TEST(Utf8, EachStrayByteBecomesOneReplacement) {
  for (const std::string bad : {"\x80", "\xBF", "\xC0", "\xC1", "\xF5", "\xFF"}) {
    EXPECT_FALSE(isValidUtf8(bad));
    EXPECT_EQ(repairedUtf8("a" + bad + "z"), "a" + mark + "z");
  }
  EXPECT_EQ(repairedUtf8("\x80\x80\x80"), mark + mark + mark);
}

TEST(Utf8, ATextThatEndsInHalfACharacterEndsInOneReplacement) {
  for (const std::string half : {"\xC3", "\xE6", "\xE6\x97", "\xF0", "\xF0\x9F", "\xF0\x9F\x99"}) {
    EXPECT_FALSE(isValidUtf8("name" + half));
    EXPECT_EQ(repairedUtf8("name" + half), "name" + mark);
  }
}

TEST(Utf8, ACharacterCutShortByTheNextOneKeepsTheNextOne) {
  EXPECT_EQ(repairedUtf8("\xE6\x97z"), mark + "z");
  EXPECT_EQ(repairedUtf8("\xF0\x9F\xC3\xA9"), mark + "\xC3\xA9");
  EXPECT_EQ(repairedUtf8("\xC3\xC3\xA9"), mark + "\xC3\xA9");
}

TEST(Utf8, OverlongFormsAreReplacedByteByByte) {
  EXPECT_FALSE(isValidUtf8("\xC0\xAF"));
  EXPECT_EQ(repairedUtf8("\xC0\xAF"), mark + mark);
  EXPECT_EQ(repairedUtf8("\xE0\x80\xAF"), mark + mark + mark);
  EXPECT_EQ(repairedUtf8("\xE0\x9F\xBF"), mark + mark + mark);
  EXPECT_EQ(repairedUtf8("\xF0\x80\x80\xAF"), mark + mark + mark + mark);
  EXPECT_EQ(repairedUtf8("\xF0\x8F\xBF\xBF"), mark + mark + mark + mark);
}

TEST(Utf8, SurrogatesAndValuesBeyondTheLastCharacterAreReplaced) {
  EXPECT_EQ(repairedUtf8("\xED\xA0\x80"), mark + mark + mark);
  EXPECT_EQ(repairedUtf8("\xED\xBF\xBF"), mark + mark + mark);
  EXPECT_EQ(repairedUtf8("\xF4\x90\x80\x80"), mark + mark + mark + mark);
  EXPECT_FALSE(isValidUtf8("\xED\xA0\x80"));
  EXPECT_FALSE(isValidUtf8("\xF4\x90\x80\x80"));
}

TEST(Utf8, ARepairedTextOfAnyTwoBytesIsValid) {
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
      const std::string repaired = repairedUtf8(bytes);
      ASSERT_TRUE(isValidUtf8(repaired)) << first << ' ' << second;
      ASSERT_EQ(isValidUtf8(bytes), repaired == bytes) << first << ' ' << second;
    }
  }
}

}  // namespace
}  // namespace korvantis
