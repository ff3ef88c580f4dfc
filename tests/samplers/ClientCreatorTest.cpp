#include <gtest/gtest.h>

#include "samplers/ClientCreator.h"

namespace korvantis {
namespace {

TEST(ClientCreator, TellsPidAndName) {
  EXPECT_EQ(pidOfCreator("pid 812, Safari"), 812);
  EXPECT_EQ(nameOfCreator("pid 812, Safari"), "Safari");
}

TEST(ClientCreator, ThePidStandsBetweenItsWordAndTheNextComma) {
  EXPECT_EQ(pidOfCreator("client, pid 7, Some, Name"), 7);
  EXPECT_EQ(pidOfCreator("pid  \t44 \t, Name"), 44);
  EXPECT_EQ(pidOfCreator("pid \u00a044\u2003,"), 44);
  EXPECT_EQ(pidOfCreator("pid +5,"), 5);
  EXPECT_EQ(pidOfCreator("pid -5,"), -5);
  EXPECT_EQ(pidOfCreator("pid 2147483647, x"), 2147483647);
}

TEST(ClientCreator, WhatIsNoPidIsAbsent) {
  for (const char* creator : {"", "pid", "pid 812", "812, Safari", "pid , x", "pid 8 12, x",
                              "pid 0x10, x", "pid 2147483648, x", "pid 8.0, x", "pid +-5, x",
                              "pid 5\n, x", "PID 5, x", "pid \xff\x35, x"}) {
    EXPECT_EQ(pidOfCreator(creator), std::nullopt) << creator;
  }
}

TEST(ClientCreator, TheNameIsAllBehindTheFirstComma) {
  EXPECT_EQ(nameOfCreator("pid 1, one, two "), "one, two");
  EXPECT_EQ(nameOfCreator("x,\u00a0caf\u00e9\u00a0"), "caf\u00e9");
  EXPECT_EQ(nameOfCreator("pid 1"), std::nullopt);
  EXPECT_EQ(nameOfCreator("pid 1,"), std::nullopt);
  EXPECT_EQ(nameOfCreator("pid 1, \t "), std::nullopt);
}

}  // namespace
}  // namespace korvantis
