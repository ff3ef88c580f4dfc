#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/AppGrouper.h"
#include "analysis/GrouperFixtures.h"

namespace korvantis {
namespace {

const std::string home = "/Users/me/Foo.app";

/// The group of one process in `bundlePath`, whose property list holds `information`.
AppGroup groupOf(const std::string& bundlePath, const PropertyMap& information) {
  ScriptedPropertyLists lists;
  lists.set(bundlePath, information);
  AppGrouper grouper(lists.calls());
  const auto groups = grouper.group({processAt(7, bundlePath + "/Contents/MacOS/x")}, 1000);
  return groups.size() == 1 ? groups[0] : AppGroup{};
}

AppGroupKind kindOf(const std::string& bundlePath, const std::string& identifier = "") {
  return groupOf(bundlePath, {{"CFBundleIdentifier", textValue(identifier)}}).kind;
}

TEST(BundleMetadata, IsReadFromThePropertyListInsideTheBundle) {
  ScriptedPropertyLists lists;
  AppGrouper grouper(lists.calls());
  grouper.group({processAt(7, home + "/Contents/MacOS/Foo")}, 1000);
  EXPECT_EQ(lists.reads(), std::vector<std::string>{home + "/Contents/Info.plist"});
}

TEST(BundleMetadata, DisplayNameGoesOverBundleName) {
  EXPECT_EQ(groupOf(home, {{"CFBundleDisplayName", textValue("Shown")},
                           {"CFBundleName", textValue("Short")}})
                .name,
            "Shown");
}

TEST(BundleMetadata, BundleNameServesWithoutADisplayName) {
  EXPECT_EQ(groupOf(home, {{"CFBundleName", textValue("Short")}}).name, "Short");
}

TEST(BundleMetadata, EmptyDisplayNameFallsThroughToBundleName) {
  EXPECT_EQ(
      groupOf(home, {{"CFBundleDisplayName", textValue("")}, {"CFBundleName", textValue("Short")}})
          .name,
      "Short");
}

TEST(BundleMetadata, EmptyBundleNameFallsThroughToTheFolderName) {
  EXPECT_EQ(groupOf("/Users/me/Foo Bar.app",
                    {{"CFBundleDisplayName", textValue("")}, {"CFBundleName", textValue("")}})
                .name,
            "Foo Bar");
}

TEST(BundleMetadata, BlankDisplayNameIsNotEmptyAndCounts) {
  EXPECT_EQ(groupOf(home, {{"CFBundleDisplayName", textValue(" ")}}).name, " ");
}

TEST(BundleMetadata, NamesThatAreNoTextFallThrough) {
  const PropertyValue number{std::int64_t{5}};
  const PropertyValue list{PropertyValue::List{textValue("Foo")}};
  EXPECT_EQ(
      groupOf(home, {{"CFBundleDisplayName", number}, {"CFBundleName", textValue("Short")}}).name,
      "Short");
  EXPECT_EQ(groupOf(home, {{"CFBundleDisplayName", list}, {"CFBundleName", number}}).name, "Foo");
}

TEST(BundleMetadata, FolderWithoutANameKeepsItsExtension) {
  EXPECT_EQ(groupOf("/Users/me/.app", {}).name, ".app");
}

TEST(BundleMetadata, IdentifierIsTakenWhenItIsFilledText) {
  EXPECT_EQ(groupOf(home, {{"CFBundleIdentifier", textValue("org.foo")}}).bundleIdentifier,
            "org.foo");
}

TEST(BundleMetadata, EmptyOrForeignIdentifierIsNone) {
  EXPECT_EQ(groupOf(home, {}).bundleIdentifier, std::nullopt);
  EXPECT_EQ(groupOf(home, {{"CFBundleIdentifier", textValue("")}}).bundleIdentifier, std::nullopt);
  EXPECT_EQ(groupOf(home, {{"CFBundleIdentifier", PropertyValue{true}}}).bundleIdentifier,
            std::nullopt);
}

TEST(BundleMetadata, FinderIsAppAndAnyOtherCoreServiceIsSystem) {
  EXPECT_EQ(kindOf("/System/Library/CoreServices/Finder.app", "com.apple.finder"),
            AppGroupKind::app);
  EXPECT_EQ(kindOf("/System/Library/CoreServices/Dock.app"), AppGroupKind::system);
  EXPECT_EQ(kindOf("/System/Library/CoreServices/Finder2.app"), AppGroupKind::system);
}

TEST(BundleMetadata, AnyBundleUnderSystemApplicationsIsApp) {
  EXPECT_EQ(kindOf("/System/Applications/Notes.app", "com.apple.Notes"), AppGroupKind::app);
  EXPECT_EQ(kindOf("/System/Applications/Utilities/Terminal.app"), AppGroupKind::app);
}

TEST(BundleMetadata, SystemFoldersAreSystem) {
  EXPECT_EQ(kindOf("/System/Library/Foo.app", "org.foo"), AppGroupKind::system);
  EXPECT_EQ(kindOf("/Library/Apple/Foo.app", "org.foo"), AppGroupKind::system);
}

TEST(BundleMetadata, FoldersThatOnlyBeginAlikeAreNotSystem) {
  EXPECT_EQ(kindOf("/Systematic/Foo.app"), AppGroupKind::app);
  EXPECT_EQ(kindOf("/Library/AppleTree/Foo.app"), AppGroupKind::app);
  EXPECT_EQ(kindOf("/Library/Foo.app"), AppGroupKind::app);
}

TEST(BundleMetadata, AppleIdentifierIsAppInApplicationsAndSystemInAHomeFolder) {
  EXPECT_EQ(kindOf("/Applications/Foo.app", "com.apple.foo"), AppGroupKind::app);
  EXPECT_EQ(kindOf("/Users/me/Applications/Foo.app", "com.apple.foo"), AppGroupKind::system);
}

TEST(BundleMetadata, IdentifierThatOnlyBeginsAlikeIsApp) {
  EXPECT_EQ(kindOf(home, "com.applefoo"), AppGroupKind::app);
  EXPECT_EQ(kindOf(home, "COM.APPLE.foo"), AppGroupKind::app);
  EXPECT_EQ(kindOf(home, "com.apple."), AppGroupKind::system);
}

TEST(BundleMetadata, ForeignBundleIsAppWhereverItLies) {
  EXPECT_EQ(kindOf(home, "org.foo"), AppGroupKind::app);
  EXPECT_EQ(kindOf("/Volumes/Stick/Foo.app"), AppGroupKind::app);
}

TEST(BundleMetadata, UnreadableBundleGetsFolderNameAndKindFromItsPathAlone) {
  ScriptedPropertyLists lists;
  AppGrouper grouper(lists.calls());
  const auto groups = grouper.group({processAt(7, "/Applications/Foo Bar.app/Contents/MacOS/x"),
                                     processAt(8, "/System/Library/Baz.app/Contents/MacOS/x")},
                                    1000);
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(groups[0].name, "Foo Bar");
  EXPECT_EQ(groups[0].bundleIdentifier, std::nullopt);
  EXPECT_EQ(groups[0].kind, AppGroupKind::app);
  EXPECT_EQ(groups[1].name, "Baz");
  EXPECT_EQ(groups[1].kind, AppGroupKind::system);
}

TEST(BundleMetadata, IsReadOncePerRunForManyProcessesAndTicks) {
  ScriptedPropertyLists lists;
  lists.set(home, {{"CFBundleName", textValue("Foo")}});
  AppGrouper grouper(lists.calls());
  const std::vector<ProcessSample> processes{processAt(7, home + "/Contents/MacOS/Foo"),
                                             processAt(8, home + "/Contents/Helpers/h")};
  for (int tick = 0; tick < 3; ++tick) grouper.group(processes, 1000);
  EXPECT_EQ(lists.reads().size(), 1U);
}

TEST(BundleMetadata, FailedReadIsKeptAndNeverTriedAgain) {
  ScriptedPropertyLists lists;
  AppGrouper grouper(lists.calls());
  const std::vector<ProcessSample> processes{processAt(7, home + "/Contents/MacOS/Foo")};
  grouper.group(processes, 1000);
  lists.set(home, {{"CFBundleName", textValue("Late")}});
  EXPECT_EQ(grouper.group(processes, 1000)[0].name, "Foo");
  EXPECT_EQ(lists.reads().size(), 1U);
}

TEST(BundleMetadata, RenamedApplicationKeepsItsOldName) {
  ScriptedPropertyLists lists;
  lists.set(home, {{"CFBundleName", textValue("Old")}, {"CFBundleIdentifier", textValue("a.b")}});
  AppGrouper grouper(lists.calls());
  const std::vector<ProcessSample> processes{processAt(7, home + "/Contents/MacOS/Foo")};
  grouper.group(processes, 1000);
  lists.remove(home);
  const auto groups = grouper.group(processes, 1000);
  EXPECT_EQ(groups[0].name, "Old");
  EXPECT_EQ(groups[0].bundleIdentifier, "a.b");
}

TEST(BundleMetadata, EveryBundleHasItsOwnEntry) {
  ScriptedPropertyLists lists;
  lists.set("/Applications/A.app", {{"CFBundleName", textValue("Alpha")}});
  lists.set("/Applications/B.app", {{"CFBundleName", textValue("Beta")}});
  AppGrouper grouper(lists.calls());
  const std::vector<ProcessSample> processes{processAt(7, "/Applications/A.app/Contents/MacOS/A"),
                                             processAt(8, "/Applications/B.app/Contents/MacOS/B")};
  grouper.group(processes, 1000);
  const auto groups = grouper.group(processes, 1000);
  EXPECT_EQ(groupWithID(groups, "/Applications/A.app")->name, "Alpha");
  EXPECT_EQ(groupWithID(groups, "/Applications/B.app")->name, "Beta");
  EXPECT_EQ(lists.reads().size(), 2U);
}

TEST(BundleMetadata, ProcessesWithoutABundleReadNothing) {
  ScriptedPropertyLists lists;
  AppGrouper grouper(lists.calls());
  grouper.group({processAt(7, "/usr/bin/vim"), processAt(8, "")}, 1000);
  EXPECT_TRUE(lists.reads().empty());
}

}  // namespace
}  // namespace korvantis
