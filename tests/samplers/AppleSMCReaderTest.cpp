#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

#include "samplers/AppleSMCReader.h"
#include "samplers/SMCScript.h"

namespace korvantis {
namespace {

using test::SMCScript;
using testing::ElementsAre;
using testing::IsEmpty;

class AppleSMCReaderTest : public testing::Test {
 protected:
  void TearDown() override { EXPECT_THAT(controller.complaints(), IsEmpty()); }

  std::optional<double> read(const std::string& key) {
    return AppleSMCReader(controller.calls(), [] { return std::int64_t{0}; }).readDouble(key);
  }

  SMCScript controller;
};

TEST_F(AppleSMCReaderTest, OpensOnceReleasesTheServiceAndClosesAtTheEnd) {
  controller.setByte("FNum", 2);
  EXPECT_EQ(read("FNum"), 2.0);
  EXPECT_THAT(controller.operations(),
              ElementsAre("open", "release 7", "information FNum", "read FNum", "close 9"));
}

TEST_F(AppleSMCReaderTest, WithoutAServiceEveryKeyIsAbsent) {
  controller.hasService = false;
  controller.setByte("FNum", 2);
  EXPECT_EQ(read("FNum"), std::nullopt);
  EXPECT_THAT(controller.operations(), IsEmpty());
}

TEST_F(AppleSMCReaderTest, AServiceThatDoesNotOpenIsReleasedAndEveryKeyIsAbsent) {
  controller.openResult = -536870212;
  controller.setByte("FNum", 2);
  EXPECT_EQ(read("FNum"), std::nullopt);
  EXPECT_THAT(controller.operations(), ElementsAre("open", "release 7"));
}

TEST_F(AppleSMCReaderTest, AFailureInEitherExchangeMakesAKeyAbsent) {
  controller.setByte("good", 1);
  for (const char* key : {"noIn", "noRd", "failI", "failR"}) {
    controller.setByte(std::string(key).substr(0, 4), 1);
  }
  controller.keysWithoutInformation = {"noIn"};
  controller.keysThatCannotBeRead = {"noRd"};
  EXPECT_EQ(read("good"), 1.0);
  EXPECT_EQ(read("noIn"), std::nullopt);
  EXPECT_EQ(read("noRd"), std::nullopt);
  EXPECT_EQ(read("none"), std::nullopt);
  controller.keysWhoseInformationCallFails = {"good"};
  EXPECT_EQ(read("good"), std::nullopt);
  controller.keysWhoseInformationCallFails = {};
  controller.keysWhoseReadCallFails = {"good"};
  EXPECT_EQ(read("good"), std::nullopt);
}

TEST_F(AppleSMCReaderTest, ASizeOfZeroIsNotRead) {
  controller.keys["Zero"] = {"ui8 ", 0, {1}};
  EXPECT_EQ(read("Zero"), std::nullopt);
  EXPECT_THAT(controller.operations(),
              ElementsAre("open", "release 7", "information Zero", "close 9"));
}

TEST_F(AppleSMCReaderTest, TargetsAreHeldTo1200To6200) {
  AppleSMCReader reader(controller.calls(), [] { return std::int64_t{0}; });
  const auto target = [&] { return reader.sampleThermal(0, 0).fans[0].targetRPM; };
  EXPECT_TRUE(reader.setFanTarget(0, 9000.0));
  EXPECT_EQ(target(), 6200.0);
  EXPECT_TRUE(reader.setFanTarget(0, 500.0));
  EXPECT_EQ(target(), 1200.0);
  EXPECT_TRUE(reader.setFanTarget(0, 6000.5));
  EXPECT_EQ(target(), 6000.5);
  EXPECT_TRUE(reader.setFanTarget(0, std::nullopt));
  EXPECT_EQ(target(), std::nullopt);
  EXPECT_TRUE(reader.setFanTarget(77, std::nullopt));
}

TEST_F(AppleSMCReaderTest, TheSharedReaderIsOne) {
  EXPECT_EQ(&AppleSMCReader::shared(), &AppleSMCReader::shared());
}

TEST(AppleSMCReaderConcurrent, NoOtherKeyComesBetweenTheTwoExchangesOfOne) {
  SMCScript controller;
  controller.setByte("AAAA", 1);
  controller.setByte("BBBB", 2);
  // The script itself has no lock: only the reader's keeps its log whole.
  AppleSMCReader reader(controller.calls(), [] { return std::int64_t{0}; });
  const auto work = [&](const char* key) {
    for (int round = 0; round < 300; ++round) {
      reader.readDouble(key);
      reader.setFanTarget(round % 3, 2000.0);
    }
  };
  std::thread other(work, "AAAA");
  work("BBBB");
  other.join();
  const std::vector<std::string> log = controller.operations();
  ASSERT_EQ(log.size(), 2 + 4 * 300U);
  for (std::size_t index = 2; index < log.size(); index += 2) {
    EXPECT_EQ(log[index].substr(log[index].size() - 4),
              log[index + 1].substr(log[index + 1].size() - 4));
  }
}

}  // namespace
}  // namespace korvantis
