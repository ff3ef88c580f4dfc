#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "samplers/MachineScript.h"
#include "samplers/SystemHardwareSampler.h"

namespace korvantis {
namespace {

using test::MachineScript;

class SystemHardwareInfo : public testing::Test {
 protected:
  HardwareInfo read() { return SystemHardwareSampler(machine.platform()).readHardwareInfo(); }

  void addAccelerator(const std::string& key, PropertyValue value) {
    machine.services["IOAccelerator"] = {PropertyMap{{key, std::move(value)}}};
  }

  static PropertyValue data(std::string_view bytes) {
    return PropertyValue{PropertyValue::Bytes(bytes.begin(), bytes.end())};
  }

  static PropertyValue whole(std::int64_t number) { return PropertyValue{number}; }

  MachineScript machine;
};

TEST_F(SystemHardwareInfo, SaysWhatTheSystemSays) {
  machine.figures["machdep.cpu.brand_string"] = std::string("Some Chip \0", 11);
  machine.setFigure("hw.logicalcpu", std::int32_t{10});
  machine.setFigure("hw.perflevel0.physicalcpu", std::int32_t{6});
  machine.setFigure("hw.perflevel1.physicalcpu", std::int32_t{4});
  machine.services["IOAccelerator"] = {
      PropertyMap{{"model", data("Some GPU")}, {"gpu-core-count", whole(14)}}};
  machine.services["AppleARMIODevice"] = {PropertyMap{{"ANEDevicePropertyNumANECores", whole(32)}}};
  const HardwareInfo expected{.chipName = "Some Chip",
                              .logicalCores = 10,
                              .performanceCores = 6,
                              .efficiencyCores = 4,
                              .gpuName = "Some GPU",
                              .gpuCores = 14,
                              .neuralEngineCores = 32,
                              .totalMemoryBytes = std::uint64_t{16} << 30};
  EXPECT_EQ(read(), expected);
}

TEST_F(SystemHardwareInfo, GuessesFromTheCoresWhatTheSystemDoesNotSay) {
  machine.processorCount = 12;
  const HardwareInfo expected{.chipName = "Apple Silicon",
                              .logicalCores = 12,
                              .performanceCores = 6,
                              .efficiencyCores = 6,
                              .gpuName = "Apple Silicon",
                              .gpuCores = 10,
                              .neuralEngineCores = 16,
                              .totalMemoryBytes = std::uint64_t{16} << 30};
  EXPECT_EQ(read(), expected);
}

TEST_F(SystemHardwareInfo, HalfOfAnOddNumberOfCoresIsCut) {
  machine.setFigure("hw.logicalcpu", std::int32_t{7});
  const HardwareInfo info = read();
  EXPECT_EQ(info.performanceCores, 3);
  EXPECT_EQ(info.efficiencyCores, 4);
  EXPECT_EQ(machine.count("processorCount"), 0);
}

TEST_F(SystemHardwareInfo, BelowTwoLogicalCoresThereIsOnePerformanceCore) {
  machine.setFigure("hw.logicalcpu", std::int32_t{1});
  EXPECT_EQ(read().performanceCores, 1);
  EXPECT_EQ(read().efficiencyCores, 0);
  machine.setFigure("hw.logicalcpu", std::int32_t{0});
  EXPECT_EQ(read().performanceCores, 1);
  EXPECT_EQ(read().efficiencyCores, 0);
}

TEST_F(SystemHardwareInfo, EfficiencyCoresPresentAsZeroStayZero) {
  machine.setFigure("hw.logicalcpu", std::int32_t{8});
  machine.setFigure("hw.perflevel0.physicalcpu", std::int32_t{4});
  EXPECT_EQ(read().efficiencyCores, 4);
  machine.setFigure("hw.perflevel1.physicalcpu", std::int32_t{0});
  EXPECT_EQ(read().efficiencyCores, 0);
}

TEST_F(SystemHardwareInfo, GPUCoresStartAtTheLargerOfPerformanceCoresAndFourPlusFour) {
  machine.setFigure("hw.perflevel0.physicalcpu", std::int32_t{2});
  EXPECT_EQ(read().gpuCores, 8);
  machine.setFigure("hw.perflevel0.physicalcpu", std::int32_t{4});
  EXPECT_EQ(read().gpuCores, 8);
  machine.setFigure("hw.perflevel0.physicalcpu", std::int32_t{12});
  EXPECT_EQ(read().gpuCores, 16);
}

TEST_F(SystemHardwareInfo, GPUModelAsDataIsTrimmedOfZerosBlanksTabsAndNewlines) {
  addAccelerator("model", data(std::string_view("\0\n Some GPU\t \0\0", 15)));
  EXPECT_EQ(read().gpuName, "Some GPU");
  addAccelerator("model", data("\rSome GPU\v"));
  EXPECT_EQ(read().gpuName, "\rSome GPU\v");
}

TEST_F(SystemHardwareInfo, GPUModelWithNothingButPaddingOrBadBytesLeavesTheChipName) {
  addAccelerator("model", data(std::string_view("\0\0 \t\n", 5)));
  EXPECT_EQ(read().gpuName, "Apple Silicon");
  addAccelerator("model", data("GPU \xC3"));
  EXPECT_EQ(read().gpuName, "Apple Silicon");
  addAccelerator("model", whole(5));
  EXPECT_EQ(read().gpuName, "Apple Silicon");
}

TEST_F(SystemHardwareInfo, GPUModelAsTextStandsAsItIsUnlessEmpty) {
  addAccelerator("model", PropertyValue{std::string(" Some GPU ")});
  EXPECT_EQ(read().gpuName, " Some GPU ");
  addAccelerator("model", PropertyValue{std::string()});
  EXPECT_EQ(read().gpuName, "Apple Silicon");
}

TEST_F(SystemHardwareInfo, GPUCoreCountReplacesTheGuessFromOneUp) {
  addAccelerator("gpu-core-count", whole(1));
  EXPECT_EQ(read().gpuCores, 1);
  addAccelerator("gpu-core-count", whole(0));
  EXPECT_EQ(read().gpuCores, 8);
  addAccelerator("gpu-core-count", PropertyValue{19.5});
  EXPECT_EQ(read().gpuCores, 19);
  addAccelerator("gpu-core-count", PropertyValue{std::string("19")});
  EXPECT_EQ(read().gpuCores, 8);
}

TEST_F(SystemHardwareInfo, OnlyTheFirstAcceleratorCounts) {
  machine.services["IOAccelerator"] = {PropertyMap{}, PropertyMap{{"gpu-core-count", whole(40)}}};
  EXPECT_EQ(read().gpuCores, 8);
  EXPECT_EQ(machine.count("properties IOAccelerator"), 1);
  machine.services["IOAccelerator"] = {std::nullopt, PropertyMap{{"gpu-core-count", whole(40)}}};
  EXPECT_EQ(read().gpuCores, 8);
}

TEST_F(SystemHardwareInfo, NeuralEngineCoresAreThoseOfTheFirstDeviceWithAtLeastOne) {
  const auto device = [](PropertyValue value) {
    return PropertyMap{{"ANEDevicePropertyNumANECores", std::move(value)}};
  };
  machine.services["AppleARMIODevice"] = {std::nullopt,     PropertyMap{},
                                          device(whole(0)), device(PropertyValue{std::string("9")}),
                                          device(whole(8)), device(whole(32))};
  EXPECT_EQ(read().neuralEngineCores, 8);
  // The walk ends there.
  EXPECT_EQ(machine.count("properties AppleARMIODevice"), 5);
  machine.services["AppleARMIODevice"] = {device(whole(0))};
  EXPECT_EQ(read().neuralEngineCores, 16);
}

TEST_F(SystemHardwareInfo, FailedMatchesLeaveTheGuesses) {
  machine.classesThatFailToMatch = {"IOAccelerator", "AppleARMIODevice"};
  const HardwareInfo info = read();
  EXPECT_EQ(info.gpuCores, 8);
  EXPECT_EQ(info.gpuName, "Apple Silicon");
  EXPECT_EQ(info.neuralEngineCores, 16);
}

TEST_F(SystemHardwareInfo, CalledTwiceGivesTheSameRecordWithoutASecondWalkOfTheRegistry) {
  SystemHardwareSampler sampler(machine.platform());
  const HardwareInfo first = sampler.readHardwareInfo();
  machine.physicalMemory = 1;
  machine.setFigure("hw.logicalcpu", std::int32_t{64});
  machine.forgetOperations();
  EXPECT_EQ(sampler.readHardwareInfo(), first);
  EXPECT_THAT(machine.operations(), testing::IsEmpty());
}

}  // namespace
}  // namespace korvantis
