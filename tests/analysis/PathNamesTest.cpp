#include <gtest/gtest.h>

#include "analysis/PathNames.h"

namespace korvantis {
namespace {

TEST(PathNames, TakesTheLastComponentWithoutItsExtension) {
  EXPECT_EQ(nameWithoutExtension("/Applications/Foo Bar.app"), "Foo Bar");
  EXPECT_EQ(nameWithoutExtension("Foo.app"), "Foo");
  EXPECT_EQ(nameWithoutExtension("/opt.d/tool"), "tool");
}

TEST(PathNames, TakesOnlyTheLastExtension) {
  EXPECT_EQ(nameWithoutExtension("/Applications/Foo 2.1.app"), "Foo 2.1");
  EXPECT_EQ(nameWithoutExtension("/Applications/Foo..app"), "Foo.");
}

TEST(PathNames, NameThatIsOnlyAnExtensionKeepsIt) {
  EXPECT_EQ(nameWithoutExtension("/Applications/.app"), ".app");
}

TEST(PathNames, TrailingSlashesDontCount) {
  EXPECT_EQ(nameWithoutExtension("/Applications/Foo.app/"), "Foo");
  EXPECT_EQ(nameWithoutExtension("Foo.app///"), "Foo");
}

TEST(PathNames, NoComponentGivesNoName) {
  EXPECT_EQ(nameWithoutExtension(""), "");
  EXPECT_EQ(nameWithoutExtension("/"), "");
}

}  // namespace
}  // namespace korvantis
