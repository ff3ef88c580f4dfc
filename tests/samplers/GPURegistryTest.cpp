#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samplers/GPURegistry.h"
#include "samplers/NeuralEngineClients.h"
#include "samplers/RegistryScript.h"

namespace korvantis {
namespace {

using test::clientOf;
using test::real;
using test::RegistryScript;
using test::ScriptedEntry;
using test::text;
using test::whole;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

/// A list of uses with these times.
PropertyMap usage(const std::vector<std::int64_t>& times) {
  PropertyValue::List uses;
  for (const std::int64_t time : times) {
    uses.push_back({PropertyMap{{"accumulatedGPUTime", whole(time)}}});
  }
  return {{"AppUsage", PropertyValue{uses}}};
}

ScriptedEntry accelerator(const PropertyMap& statistics) {
  return {PropertyMap{{"PerformanceStatistics", PropertyValue{statistics}}}};
}

class GPURegistry : public testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(registry.heldEntries(), 0); }

  void addClients(std::vector<ScriptedEntry> clients) {
    registry.services["IOAccelerator"].push_back({PropertyMap(), std::move(clients)});
  }
  GPUTimeByPID times() { return readGPUTimeByPID(registry.calls()); }
  GPUFigures figures() { return readGPUFigures(registry.calls()); }

  RegistryScript registry;
};

TEST_F(GPURegistry, AClientWithoutTimeAddsNoEntryAndOneWithTimeDoes) {
  addClients({clientOf("pid 812, Safari", usage({0, 0}))});
  EXPECT_THAT(times(), IsEmpty());
  addClients({clientOf("pid 812, Safari", usage({0, 70}))});
  EXPECT_THAT(times(), UnorderedElementsAre(Pair(812, 70U)));
}

TEST_F(GPURegistry, TwoClientsOfOneProcessAddUp) {
  addClients({clientOf("pid 812, Safari", usage({100})), clientOf("pid 812, Safari", usage({50})),
              clientOf("pid 9, x", usage({1, 2, 3}))});
  EXPECT_THAT(times(), UnorderedElementsAre(Pair(812, 150U), Pair(9, 6U)));
}

TEST_F(GPURegistry, ClientsOnSeveralAcceleratorsAddUp) {
  addClients({clientOf("pid 812, Safari", usage({100}))});
  addClients({clientOf("pid 812, Safari", usage({11}))});
  EXPECT_THAT(times(), UnorderedElementsAre(Pair(812, 111U)));
}

TEST_F(GPURegistry, ClientsThatCannotBeReadArePassedOver) {
  PropertyMap numberForCreator = usage({5});
  numberForCreator["IOUserClientCreator"] = whole(812);
  PropertyMap mixed{{"AppUsage", PropertyValue{PropertyValue::List{
                                     {PropertyMap{{"accumulatedGPUTime", whole(5)}}}, whole(4)}}}};
  addClients({{std::nullopt},
              {usage({5})},
              {numberForCreator},
              clientOf("Safari", usage({5})),
              clientOf("pid 1, x"),
              clientOf("pid 1, x", {{"AppUsage", PropertyValue{PropertyValue::List()}}}),
              clientOf("pid 1, x", {{"AppUsage", text("none")}}),
              clientOf("pid 2, x", mixed)});
  EXPECT_THAT(times(), IsEmpty());
}

TEST_F(GPURegistry, AUseWithoutTimeAddsNothingAndAnyNumberCounts) {
  const PropertyValue::List uses{{PropertyMap()},
                                 {PropertyMap{{"accumulatedGPUTime", text("7")}}},
                                 {PropertyMap{{"accumulatedGPUTime", real(8.9)}}},
                                 {PropertyMap{{"accumulatedGPUTime", whole(2)}}}};
  addClients({clientOf("pid 3, x", {{"AppUsage", PropertyValue{uses}}})});
  EXPECT_THAT(times(), UnorderedElementsAre(Pair(3, 10U)));
}

TEST_F(GPURegistry, AFailedMatchGivesNothing) {
  registry.classesThatFailToMatch = {"IOAccelerator"};
  EXPECT_THAT(times(), IsEmpty());
  EXPECT_EQ(figures(), GPUFigures{});
}

TEST_F(GPURegistry, DeviceUtilizationComesBeforeTheRenderers) {
  registry.services["IOAccelerator"] = {
      accelerator({{"Device Utilization %", whole(30)}, {"Renderer Utilization %", whole(90)}})};
  EXPECT_EQ(figures().percent, 30);
}

TEST_F(GPURegistry, OnlyRendererUtilizationIsUsedWhereThereIsNoOther) {
  registry.services["IOAccelerator"] = {accelerator({{"Renderer Utilization %", real(41.5)}})};
  EXPECT_EQ(figures().percent, 41.5);
  registry.services["IOAccelerator"] = {
      accelerator({{"Device Utilization %", text("?")}, {"Renderer Utilization %", whole(6)}})};
  EXPECT_EQ(figures().percent, 6);
}

TEST_F(GPURegistry, MemoryInUseComesBeforeMemoryAllocated) {
  registry.services["IOAccelerator"] = {
      accelerator({{"In use system memory", whole(5)}, {"Alloc system memory", whole(9)}})};
  EXPECT_EQ(figures().memoryBytes, 5U);
  registry.services["IOAccelerator"] = {accelerator({{"Alloc system memory", whole(9)}})};
  EXPECT_EQ(figures().memoryBytes, 9U);
  registry.services["IOAccelerator"] = {accelerator({{"In use system memory", whole(-9)}})};
  EXPECT_EQ(figures().memoryBytes, 0U);
}

TEST_F(GPURegistry, SeveralAcceleratorsGiveTheLargestFigureNotTheSum) {
  registry.services["IOAccelerator"] = {
      accelerator({{"Device Utilization %", whole(30)}, {"In use system memory", whole(500)}}),
      {std::nullopt},
      {PropertyMap()},
      accelerator({{"Device Utilization %", whole(40)}, {"In use system memory", whole(100)}}),
      accelerator({{"Device Utilization %", whole(10)}})};
  EXPECT_EQ(figures(), (GPUFigures{40, 500}));
}

class NeuralEngineClients : public testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(registry.heldEntries(), 0); }

  RegistryScript registry;
};

TEST_F(NeuralEngineClients, AreListedByClassServiceAndChild) {
  registry.services["ANEDriverRoot"] = {{std::nullopt, {clientOf("pid 3, third")}}};
  registry.services["AppleH11ANEInterface"] = {
      {std::nullopt, {clientOf("pid 1, first"), clientOf("pid 2, second")}}};
  EXPECT_THAT(readNeuralEngineClients(registry.calls()), ElementsAre("first", "second", "third"));
}

TEST_F(NeuralEngineClients, OnesWithoutANameArePassedOver) {
  registry.services["AppleH11ANEInterface"] = {
      {PropertyMap(),
       {{std::nullopt}, {PropertyMap()}, clientOf("pid 1"), clientOf("pid 1, "), clientOf("a,b")}}};
  EXPECT_THAT(readNeuralEngineClients(registry.calls()), ElementsAre("b"));
}

TEST_F(NeuralEngineClients, AFailedMatchGoesOnToTheNextClass) {
  registry.classesThatFailToMatch = {"AppleH11ANEInterface"};
  registry.services["ANEDriverRoot"] = {{PropertyMap(), {clientOf("pid 3, x")}}};
  EXPECT_THAT(readNeuralEngineClients(registry.calls()), ElementsAre("x"));
}

}  // namespace
}  // namespace korvantis
