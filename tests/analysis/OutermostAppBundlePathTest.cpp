#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "analysis/AppGrouper.h"

namespace korvantis {
namespace {

std::optional<std::string> outermost(const std::string& path) {
  return AppGrouper::outermostAppBundlePath(path);
}

TEST(OutermostAppBundlePath, EmptyPathHasNone) {
  EXPECT_EQ(outermost(""), std::nullopt);
}

TEST(OutermostAppBundlePath, PathWithoutABundleHasNone) {
  EXPECT_EQ(outermost("/usr/bin/vim"), std::nullopt);
  EXPECT_EQ(outermost("/"), std::nullopt);
}

TEST(OutermostAppBundlePath, PathThatEndsAtTheBundleHasNone) {
  EXPECT_EQ(outermost("/Applications/Foo.app"), std::nullopt);
}

TEST(OutermostAppBundlePath, BundleWithATrailingSlashIsOne) {
  EXPECT_EQ(outermost("/Applications/Foo.app/"), "/Applications/Foo.app");
}

TEST(OutermostAppBundlePath, MainProgramLiesInItsBundle) {
  EXPECT_EQ(outermost("/Applications/Foo Bar.app/Contents/MacOS/Foo Bar"),
            "/Applications/Foo Bar.app");
}

TEST(OutermostAppBundlePath, NestedBundleFoldsIntoTheOuterOne) {
  EXPECT_EQ(outermost("/Applications/Outer.app/Contents/Helpers/Inner.app/Contents/MacOS/Inner"),
            "/Applications/Outer.app");
}

TEST(OutermostAppBundlePath, BundleDirectoryInsideABundleFoldsIntoTheOuterOne) {
  EXPECT_EQ(outermost("/A/Outer.app/Inner.app"), "/A/Outer.app");
}

TEST(OutermostAppBundlePath, ExtensionCountsOnlyInLowerCase) {
  EXPECT_EQ(outermost("/Applications/Foo.APP/Contents/MacOS/Foo"), std::nullopt);
  EXPECT_EQ(outermost("/Applications/Foo.App/Bar.app/Foo"), "/Applications/Foo.App/Bar.app");
}

TEST(OutermostAppBundlePath, ExtensionCountsOnlyAtTheEndOfAComponent) {
  EXPECT_EQ(outermost("/opt/foo.application/bar"), std::nullopt);
  EXPECT_EQ(outermost("/opt/foo.app.old/bar"), std::nullopt);
  EXPECT_EQ(outermost("/opt/foo.app.old/My.app/bar"), "/opt/foo.app.old/My.app");
}

TEST(OutermostAppBundlePath, ComponentThatIsOnlyTheExtensionIsABundle) {
  EXPECT_EQ(outermost("/opt/.app/bar"), "/opt/.app");
  EXPECT_EQ(outermost("/.app/bar"), "/.app");
}

TEST(OutermostAppBundlePath, RelativePathGetsALeadingSlash) {
  EXPECT_EQ(outermost("Foo.app/Contents/MacOS/Foo"), "/Foo.app");
  EXPECT_EQ(outermost("build/Foo.app/x"), "/build/Foo.app");
}

TEST(OutermostAppBundlePath, DoubleSlashInsideIsKeptAndLeadingOnesAreOne) {
  EXPECT_EQ(outermost("/opt//My.app/x"), "/opt//My.app");
  EXPECT_EQ(outermost("///opt/My.app/x"), "/opt/My.app");
  EXPECT_EQ(outermost("//.app/x"), "/.app");
}

/// The rule taken piece by piece, as one would explain it.
std::optional<std::string> byPieces(const std::string& path) {
  if (path.find(".app/") == std::string::npos) return std::nullopt;
  std::vector<std::string> pieces(1);
  for (const char character : path) {
    if (character == '/') {
      pieces.emplace_back();
    } else {
      pieces.back() += character;
    }
  }
  std::string walked;
  for (const std::string& piece : pieces) {
    if (piece.empty() && walked.empty()) continue;
    walked += "/" + piece;
    if (piece.ends_with(".app")) return walked;
  }
  return std::nullopt;
}

TEST(OutermostAppBundlePath, RandomPathsAgreeWithTheWalkPieceByPiece) {
  const std::vector<std::string> parts{"/", "/", "//", ".app", ".app", ".app/", "a", "B.App", " "};
  std::mt19937 random(20);
  int bundles = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string path;
    for (auto left = random() % 9; left > 0; --left) path += parts[random() % parts.size()];
    const auto expected = byPieces(path);
    ASSERT_EQ(outermost(path), expected) << path;
    bundles += expected ? 1 : 0;
  }
  EXPECT_GT(bundles, 1000);
}

}  // namespace
}  // namespace korvantis
