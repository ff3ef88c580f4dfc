#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include "samplers/MountedVolumeList.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MountedVolumeListTest : public testing::Test {
 protected:
  std::vector<MountedVolume> read() {
    VolumeCalls calls;
    calls.mountedVolumePaths = [this] { return paths; };
    calls.resourceValues = [this](const std::string& path) {
      const auto found = values.find(path);
      return found == values.end() ? std::nullopt : std::optional(found->second);
    };
    return readMountedVolumes(calls);
  }

  /// One volume of 1000 bytes.
  VolumeResourceValues& add(const std::string& path) {
    if (!paths) paths.emplace();
    paths->push_back(path);
    values[path].totalCapacity = 1000;
    return values[path];
  }

  std::optional<std::vector<std::string>> paths;
  std::map<std::string, VolumeResourceValues> values;
};

TEST_F(MountedVolumeListTest, NoReplyGivesNone) {
  EXPECT_THAT(read(), IsEmpty());
}

TEST_F(MountedVolumeListTest, VolumesKeepTheSystemsOrder) {
  add("/Volumes/b") = {1000, 400, 300, "Second", true, true};
  add("/") = {2000, 500, 100, "First", false, false};
  EXPECT_THAT(read(), ElementsAre(MountedVolume{"Second", "/Volumes/b", 1000, 400, true, true},
                                  MountedVolume{"First", "/", 2000, 500, false, false}));
}

TEST_F(MountedVolumeListTest, TheSystemsOwnVolumesAreDroppedAndTheUsersDataIsKept) {
  for (const char* path : {"/System/Volumes/Preboot", "/System/Volumes/Data",
                           "/System/Volumes/Data/inner", "/System/Volumes", "/System/Volumes/"}) {
    add(path);
  }
  std::vector<std::string> kept;
  for (const MountedVolume& volume : read()) kept.push_back(volume.path);
  EXPECT_THAT(kept, ElementsAre("/System/Volumes/Data", "/System/Volumes"));
}

TEST_F(MountedVolumeListTest, AVolumeThatCannotBeReadOrHasNoSizeIsSkipped) {
  add("/gone");
  values.erase("/gone");
  add("/none").totalCapacity.reset();
  add("/zero").totalCapacity = 0;
  add("/below").totalCapacity = -1;
  add("/one").totalCapacity = 1;
  EXPECT_THAT(read(), ElementsAre(MountedVolume{"one", "/one", 1, 0, false, false}));
}

TEST_F(MountedVolumeListTest, FreeSpaceIsThatForImportantUsageThenThePlainOneThenZero) {
  const auto freeBytes = [this](std::optional<std::int64_t> important,
                                std::optional<std::int64_t> plain) {
    paths.reset();
    VolumeResourceValues& volume = add("/v");
    volume.availableCapacityForImportantUsage = important;
    volume.availableCapacity = plain;
    return read().at(0).freeBytes;
  };
  EXPECT_EQ(freeBytes(70, 60), 70U);
  EXPECT_EQ(freeBytes(std::nullopt, 60), 60U);
  EXPECT_EQ(freeBytes(-1, 60), 0U);
  EXPECT_EQ(freeBytes(std::nullopt, -60), 0U);
  EXPECT_EQ(freeBytes(std::nullopt, std::nullopt), 0U);
}

TEST_F(MountedVolumeListTest, TheLastPartOfThePathStandsInForAName) {
  add("/Volumes/USB Stick");
  add("/Volumes/trailing/");
  add("/");
  std::vector<std::string> names;
  for (const MountedVolume& volume : read()) names.push_back(volume.name);
  EXPECT_THAT(names, ElementsAre("USB Stick", "trailing", "/"));
}

TEST_F(MountedVolumeListTest, OnlyTheRootCountsAsInternalWhereNothingIsTold) {
  add("/");
  add("/Volumes/x");
  EXPECT_TRUE(read().at(0).isInternal);
  EXPECT_FALSE(read().at(1).isInternal);
  EXPECT_FALSE(read().at(0).isRemovable);
}

}  // namespace
}  // namespace korvantis
