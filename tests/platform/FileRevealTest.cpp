#include <gtest/gtest.h>

#include "platform/linux/FileReveal.h"

namespace korvantis {
namespace {

TEST(FileReveal, AFileURLKeepsPlainLettersAndEncodesTheRestByBytes) {
  EXPECT_EQ(fileURLOf("/home/one/Downloads/ostrel-app-usage.csv"),
            "file:///home/one/Downloads/ostrel-app-usage.csv");
  EXPECT_EQ(fileURLOf("/a b/100%/caf\u00e9#?"), "file:///a%20b/100%25/caf%C3%A9%23%3F");
  EXPECT_EQ(fileURLOf("/\xff"), "file:///%FF");
}

TEST(FileReveal, NothingToShowStartsNothing) {
  EXPECT_NO_THROW(revealInFileManager({}));
}

}  // namespace
}  // namespace korvantis
