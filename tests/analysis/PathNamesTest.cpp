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

TEST(PathNames, LastComponentKeepsItsExtension) {
  EXPECT_EQ(lastPathComponent("/home/ada/my shop.git"), "my shop.git");
  EXPECT_EQ(lastPathComponent("shop"), "shop");
  EXPECT_EQ(lastPathComponent("/.git"), ".git");
}

TEST(PathNames, LastComponentTakesNoNoticeOfTrailingSlashes) {
  EXPECT_EQ(lastPathComponent("/home/ada//"), "ada");
  EXPECT_EQ(lastPathComponent("/"), "/");
  EXPECT_EQ(lastPathComponent("///"), "/");
  EXPECT_EQ(lastPathComponent(""), "");
}

TEST(PathNames, ParentOfTheTopIsTheTop) {
  EXPECT_EQ(parentPath("/home/ada"), "/home");
  EXPECT_EQ(parentPath("/home"), "/");
  EXPECT_EQ(parentPath("/"), "/");
}

TEST(PathNames, StandardFormHasNoDotsAndNoNeedlessSlashes) {
  EXPECT_EQ(standardizedPath("/home/ada"), "/home/ada");
  EXPECT_EQ(standardizedPath("/home/./ada/."), "/home/ada");
  EXPECT_EQ(standardizedPath("/home/../srv/x/.."), "/srv");
  EXPECT_EQ(standardizedPath("//home///ada//"), "/home/ada");
  EXPECT_EQ(standardizedPath("/.hidden/..x/..."), "/.hidden/..x/...");
}

TEST(PathNames, StandardFormHasNothingAboveTheTop) {
  EXPECT_EQ(standardizedPath("/"), "/");
  EXPECT_EQ(standardizedPath("/.."), "/");
  EXPECT_EQ(standardizedPath("/../../home"), "/home");
  EXPECT_EQ(standardizedPath("/home/ada/../../.."), "/");
}

TEST(PathNames, StandardFormOfAPathThatIsNotAbsoluteIsThePathItself) {
  EXPECT_EQ(standardizedPath("a/../b/"), "a/../b/");
  EXPECT_EQ(standardizedPath(""), "");
}

}  // namespace
}  // namespace korvantis
