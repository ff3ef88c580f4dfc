#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

#include "platform/hardware/HardwareTree.h"
#include "platform/linux/hardware/DrmClientText.h"
#include "support/ChildProcess.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::HardwareTree;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

PropertyMap statistics(double percent, std::int64_t bytes) {
  return {{"Device Utilization %", PropertyValue{percent}},
          {"In use system memory", PropertyValue{bytes}}};
}

PropertyMap withStatistics(const PropertyMap& figures) {
  return {{"PerformanceStatistics", PropertyValue{figures}}};
}

PropertyMap mapPropertyOf(const PropertyMap& properties) {
  return std::get<PropertyMap>(properties.at("PerformanceStatistics").value);
}

TEST(Graphics, ClientTextIsReadByItsNames) {
  DrmClientText client;
  client.driver = "amdgpu";
  client.device = "0000:03:00.0";
  client.client = 7;
  client.engineNanoseconds = 12;
  client.memoryBytes = 3 << 20;
  EXPECT_EQ(parseDrmClient("pos:\t0\ndrm-driver:\tamdgpu\ndrm-pdev:\t0000:03:00.0\n"
                           "drm-client-id:\t7\ndrm-engine-gfx:\t5 ns\ndrm-engine-dec:\t7 ns\n"
                           "drm-engine-capacity-dec:\t2\ndrm-resident-vram:\t3 MiB\n"
                           "drm-memory-vram:\t9 MiB\ndrm-shared-vram:\t1 MiB\n"),
            client);
}

TEST(Graphics, OtherFilesAndDamagedTextsAreNoClients) {
  EXPECT_EQ(parseDrmClient(""), std::nullopt);
  EXPECT_EQ(parseDrmClient("pos:\t0\nflags:\t02\nmnt_id:\t9\n"), std::nullopt);
  EXPECT_EQ(parseDrmClient("drm-driver:\ti915\ndrm-client-id:\tx\n"), std::nullopt);
  EXPECT_EQ(parseDrmClient("drm-\ndrm-client-id\ndrm:\n:\n"), std::nullopt);
  const auto odd = parseDrmClient(
      "drm-client-id:\t1\ndrm-engine-a:\tmuch ns\ndrm-engine-b:\t5 s\ndrm-engine-c:\n");
  ASSERT_TRUE(odd);
  EXPECT_EQ(odd->engineNanoseconds, std::nullopt);
}

TEST(Graphics, DamagedFiguresDoNotOverflow) {
  const std::string huge = "18446744073709551615";
  const auto client =
      parseDrmClient("drm-client-id:\t1\ndrm-engine-a:\t" + huge + " ns\ndrm-engine-b:\t" + huge +
                     " ns\ndrm-memory-a:\t" + huge + " MiB\ndrm-memory-b:\t" + huge + " KiB\n");
  EXPECT_EQ(client->engineNanoseconds, UINT64_MAX);
  EXPECT_EQ(client->memoryBytes, UINT64_MAX);
  HardwareTree tree("arm-board");
  tree.write("proc/450/fdinfo/8", "drm-driver:\tpanfrost\ndrm-client-id:\t3\ndrm-engine-a:\t" +
                                      huge + " ns\ndrm-memory-a:\t" + huge + " MiB\n");
  EXPECT_THAT(tree.graphicsClients(), UnorderedElementsAre(Pair("pid 450, kiosk", INT64_MAX)));
}

TEST(Graphics, EachClientCountsOnceHoweverManyDescriptorsItHas) {
  const HardwareTree tree("intel-laptop");
  EXPECT_THAT(tree.graphicsClients(),
              UnorderedElementsAre(Pair("pid 1200, browser", 1'200'000'000),
                                   Pair("pid 1300, player, big", 500'000'000)));
}

TEST(Graphics, LoadWithoutPrivilegeIsTheSumOverClients) {
  HardwareTree tree("intel-laptop");
  const std::int64_t memory = (2048 << 10) + (1 << 20);
  EXPECT_THAT(tree.services("IOAccelerator"),
              ElementsAre(withStatistics({{"In use system memory", PropertyValue{memory}}})))
      << "one reading is no load";
  tree.seconds = tree.seconds + 2;
  const std::string head = "drm-driver:\ti915\ndrm-pdev:\t0000:00:02.0\ndrm-client-id:\t";
  tree.write("proc/1200/fdinfo/9", head + "42\ndrm-engine-render:\t1600000000 ns\n");
  tree.write("proc/1300/fdinfo/5", head + "43\ndrm-engine-video:\t1100000000 ns\n");
  EXPECT_THAT(tree.services("IOAccelerator"), ElementsAre(withStatistics(statistics(50, 0))));
  tree.seconds = tree.seconds + 2;
  tree.write("proc/1200/fdinfo/9", head + "42\ndrm-engine-render:\t9600000000 ns\n");
  EXPECT_THAT(tree.services("IOAccelerator"), ElementsAre(withStatistics(statistics(100, 0))))
      << "several engines at once";
}

TEST(Graphics, CyclesAreAShareOfTheInterval) {
  HardwareTree tree("intel-laptop");
  const std::string head = "drm-driver:\txe\ndrm-pdev:\t0000:00:02.0\ndrm-client-id:\t42\n";
  tree.remove("proc/1300");
  tree.remove("proc/1200/fd/12");
  tree.write("proc/1200/fdinfo/9", head +
                                       "drm-cycles-rcs:\t1000\ndrm-total-cycles-rcs:\t50000\n"
                                       "drm-cycles-ccs:\t0\ndrm-total-cycles-ccs:\t50000\n");
  EXPECT_THAT(tree.graphicsClients(), UnorderedElementsAre(Pair("pid 1200, browser", 0)));
  tree.seconds = tree.seconds + 2;
  tree.write("proc/1200/fdinfo/9", head +
                                       "drm-cycles-rcs:\t3500\ndrm-total-cycles-rcs:\t60000\n"
                                       "drm-cycles-ccs:\t1000\ndrm-total-cycles-ccs:\t60000\n");
  EXPECT_THAT(tree.graphicsClients(), UnorderedElementsAre(Pair("pid 1200, browser", 700'000'000)));
  tree.seconds = tree.seconds + 2;
  EXPECT_THAT(tree.graphicsClients(), UnorderedElementsAre(Pair("pid 1200, browser", 700'000'000)))
      << "no cycle has gone by";
}

TEST(Graphics, AccumulatedTimeNeverFallsForOneClient) {
  HardwareTree tree("arm-board");
  EXPECT_THAT(tree.graphicsClients(), ElementsAre(Pair("pid 450, kiosk", 1'918'517'119)));
  tree.seconds = tree.seconds + 2;
  tree.write("proc/450/fdinfo/8",
             "drm-driver:\tpanfrost\ndrm-client-id:\t3\ndrm-engine-fragment:\t5 ns\n");
  EXPECT_THAT(tree.graphicsClients(), ElementsAre(Pair("pid 450, kiosk", 1'918'517'119)));
  tree.seconds = tree.seconds + 2;
  tree.write("proc/450/fdinfo/8",
             "drm-driver:\tpanfrost\ndrm-client-id:\t4\ndrm-engine-fragment:\t5 ns\n");
  EXPECT_THAT(tree.graphicsClients(), ElementsAre(Pair("pid 450, kiosk", 0)))
      << "another client under the same descriptor counts from now on";
  tree.seconds = tree.seconds + 2;
  tree.write("proc/450/fdinfo/8",
             "drm-driver:\tpanfrost\ndrm-client-id:\t4\ndrm-engine-fragment:\t9 ns\n");
  EXPECT_THAT(tree.graphicsClients(), ElementsAre(Pair("pid 450, kiosk", 4)));
}

TEST(Graphics, TwoCardsHaveTheirOwnFiguresAndTheNamedOneComesFirst) {
  const HardwareTree tree("amd-laptop");
  PropertyMap discrete = withStatistics(statistics(73, 2'147'483'648));
  discrete["model"] = PropertyValue{std::string("Radeon RX 7600M")};
  EXPECT_THAT(tree.services("IOAccelerator"),
              ElementsAre(discrete, withStatistics(statistics(12, 500'000'000))))
      << "the integrated one uses the machine's memory too";
  EXPECT_THAT(tree.graphicsClients(), ElementsAre(Pair("pid 700, game", 6'300'000'000)))
      << "one client number on two cards is two clients";
}

TEST(Graphics, ACardThatSleepsWorksNothingAndIsNotAsked) {
  HardwareTree tree("amd-laptop");
  const std::string card = "sys/devices/pci0000:00/0000:03:00.0/";
  tree.write(card + "power/runtime_status", "suspended\n");
  PropertyMap discrete = withStatistics(statistics(0, 0));
  discrete["model"] = PropertyValue{std::string("Radeon RX 7600M")};
  EXPECT_EQ(tree.services("IOAccelerator").at(0), discrete);
  tree.write(card + "power/runtime_status", "active\n");
  tree.write(card + "gpu_busy_percent", "broken\n");
  tree.seconds = tree.seconds + 2;
  const auto figures = mapPropertyOf(tree.services("IOAccelerator").at(0));
  EXPECT_EQ(figures.at("In use system memory"), PropertyValue{std::int64_t{2'147'483'648}});
}

TEST(Graphics, CardsOfWhichNothingIsKnownHaveNoStatistics) {
  HardwareTree tree("virtual-machine");
  EXPECT_THAT(tree.services("IOAccelerator"), IsEmpty());
  tree.write("sys/class/drm/card0/device/vendor", "0x1af4\n");
  tree.seconds = tree.seconds + 31;
  EXPECT_THAT(tree.services("IOAccelerator"), ElementsAre(PropertyMap()));
  EXPECT_THAT(HardwareTree("bare-container").services("IOAccelerator"), IsEmpty());
}

TEST(Graphics, HoldersAreLookedForEveryFifteenSeconds) {
  HardwareTree tree("arm-board");
  EXPECT_EQ(tree.graphicsClients().size(), 1U);
  tree.write("proc/451/comm", "viewer\n");
  tree.link("proc/451/fd/4", "/dev/dri/card0");
  tree.write("proc/451/fdinfo/4",
             "drm-driver:\tpanfrost\ndrm-client-id:\t9\ndrm-engine-fragment:\t77 ns\n");
  tree.seconds = tree.seconds + 14;
  EXPECT_EQ(tree.graphicsClients().size(), 1U);
  tree.seconds = tree.seconds + 1;
  EXPECT_THAT(tree.graphicsClients(), testing::Contains(Pair("pid 451, viewer", 77)));
}

TEST(Graphics, AClientThatEndsIsGoneAtOnce) {
  HardwareTree tree("arm-board");
  auto child = ChildProcess::prepared();
  // Any text of the kernel's that fails once the process has gone will do as a second client.
  tree.write("proc/451/comm", "viewer\n");
  tree.link("proc/451/fd/4", "/dev/dri/card0");
  tree.link("proc/451/fdinfo/4", "/proc/" + std::to_string(child.pid()) + "/comm");
  EXPECT_EQ(tree.graphicsClients().size(), 1U) << "no client's text";
  child.end();
  tree.seconds = tree.seconds + 16;
  EXPECT_EQ(tree.graphicsClients().size(), 1U);
  tree.write("proc/450/fdinfo/8", "");
  tree.seconds = tree.seconds + 2;
  EXPECT_THAT(tree.graphicsClients(), IsEmpty());
}

const std::string intelHead = "drm-driver:\ti915\ndrm-pdev:\t0000:00:02.0\ndrm-client-id:\t";

TEST(Graphics, ASecondDescriptorTakesOverAtOnceWhenTheFirstIsClosed) {
  HardwareTree tree("intel-laptop");
  EXPECT_EQ(tree.graphicsClients().at("pid 1200, browser"), 1'200'000'000);
  tree.write("proc/1200/fdinfo/9", "");
  tree.write("proc/1200/fdinfo/12", intelHead + "42\ndrm-engine-render:\t1500000000 ns\n");
  tree.seconds = tree.seconds + 2;
  EXPECT_EQ(tree.graphicsClients().at("pid 1200, browser"), 1'500'000'000);
  EXPECT_THAT(tree.services("IOAccelerator"), ElementsAre(withStatistics(statistics(15, 1 << 20))))
      << "the card's load goes on as well";
}

TEST(Graphics, ADescriptorThatTakesOverBesideOtherClientsMakesNoJump) {
  HardwareTree tree("intel-laptop");
  tree.link("proc/1200/fd/20", "/dev/dri/renderD128");
  tree.write("proc/1200/fdinfo/20", intelHead + "77\ndrm-engine-render:\t1000 ns\n");
  EXPECT_EQ(tree.graphicsClients().at("pid 1200, browser"), 1'200'001'000);
  tree.write("proc/1200/fdinfo/9", "");
  for (int tick = 0; tick < 20; ++tick) {
    tree.seconds = tree.seconds + 2;
    EXPECT_EQ(tree.graphicsClients().at("pid 1200, browser"), 1'200'001'000) << tick;
  }
}

TEST(Graphics, AClientFoundLateBesideOthersCountsFromThenOn) {
  HardwareTree tree("intel-laptop");
  EXPECT_EQ(tree.graphicsClients().at("pid 1200, browser"), 1'200'000'000);
  tree.link("proc/1200/fd/20", "/dev/dri/renderD128");
  tree.write("proc/1200/fdinfo/20", intelHead + "77\ndrm-engine-render:\t9000000000 ns\n");
  tree.seconds = tree.seconds + 16;
  EXPECT_EQ(tree.graphicsClients().at("pid 1200, browser"), 1'200'000'000);
  tree.write("proc/1200/fdinfo/20", intelHead + "77\ndrm-engine-render:\t9500000000 ns\n");
  tree.seconds = tree.seconds + 2;
  EXPECT_EQ(tree.graphicsClients().at("pid 1200, browser"), 1'700'000'000);
}

TEST(Graphics, AClientThatAnotherProcessGoesOnWithDoesNotBringItsPast) {
  HardwareTree tree("intel-laptop");
  tree.link("proc/1300/fd/30", "/dev/dri/renderD128");
  tree.write("proc/1300/fdinfo/30", intelHead + "42\ndrm-engine-render:\t1200000000 ns\n");
  EXPECT_EQ(tree.graphicsClients().at("pid 1300, player, big"), 500'000'000);
  tree.write("proc/1200/fdinfo/9", "");
  tree.write("proc/1200/fdinfo/12", "");
  tree.seconds = tree.seconds + 2;
  EXPECT_THAT(tree.graphicsClients(), ElementsAre(Pair("pid 1300, player, big", 500'000'000)));
}

TEST(Graphics, OfAHundredClientsSixtyFourStayOpenAndAllAreRead) {
  HardwareTree tree("arm-board");
  tree.remove("proc/450");
  for (int client = 0; client < 100; ++client) {
    const std::string number = std::to_string(client);
    tree.link("proc/451/fd/" + number, "/dev/dri/card0");
    tree.write("proc/451/fdinfo/" + number, "drm-driver:\tpanfrost\ndrm-client-id:\t" + number +
                                                "\ndrm-engine-fragment:\t10 ns\n");
  }
  tree.write("proc/451/comm", "viewer\n");
  const auto openFiles = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
  };
  const auto before = openFiles();
  for (int tick = 0; tick < 3; ++tick) {
    EXPECT_THAT(tree.graphicsClients(), ElementsAre(Pair("pid 451, viewer", 1000)));
    tree.seconds = tree.seconds + 2;
  }
  EXPECT_LE(openFiles() - before, 64);
}

TEST(Graphics, NeuralProcessorsAreHeldByWhoHasThemOpen) {
  HardwareTree tree("intel-laptop");
  const auto engines = tree.calls.ioRegistry.matchingServices("AppleH11ANEInterface");
  ASSERT_TRUE(engines);
  ASSERT_EQ(engines->size(), 1U);
  EXPECT_EQ(engines->at(0).createCFProperties(), PropertyMap()) << "one reading is no load";
  const auto clients = engines->at(0).children();
  ASSERT_EQ(clients.size(), 1U);
  EXPECT_EQ(
      clients[0].createCFProperties(),
      (PropertyMap{{"IOUserClientCreator", PropertyValue{std::string("pid 1300, player, big")}}}));
  EXPECT_THAT(clients[0].children(), IsEmpty());
  tree.write("sys/class/accel/accel0/device/npu_busy_time_us", "1500000\n");
  tree.seconds = tree.seconds + 2;
  EXPECT_THAT(tree.services("AppleH11ANEInterface"),
              ElementsAre(withStatistics({{"Device Utilization %", PropertyValue{25.0}}})));
  tree.write("sys/class/accel/accel0/device/npu_busy_time_us", "text\n");
  tree.seconds = tree.seconds + 2;
  EXPECT_THAT(tree.services("AppleH11ANEInterface"), ElementsAre(PropertyMap()));
  EXPECT_THAT(HardwareTree("amd-laptop").services("AppleH11ANEInterface"), IsEmpty());
}

TEST(Graphics, OtherClassesAreLeftToWhoAnsweredThemBefore) {
  const HardwareTree tree("intel-laptop");
  EXPECT_EQ(tree.calls.ioRegistry.matchingServices("IOBlockStorageDriver"), std::nullopt);
}

TEST(Graphics, ConcurrentTicksAskAllOfTheHardware) {
  HardwareTree tree("intel-laptop");
  tree.sources.inBackground = true;
  tree.open();
  const auto tick = [&] {
    for (int count = 0; count < 60; ++count) {
      EXPECT_EQ(tree.services("IOAccelerator").size(), 1U);
      tree.graphicsClients();
      EXPECT_EQ(tree.services("AppleH11ANEInterface").size(), 1U);
      EXPECT_EQ(tree.services("AppleSmartBattery").size(), 1U);
      EXPECT_EQ(tree.keys().count("TC0P"), 1U);
      EXPECT_EQ(tree.calls.processInfo.thermalState(), 0);
      EXPECT_EQ(tree.calls.power.powerSources()->size(), 1U);
      EXPECT_EQ(tree.calls.volumes.mountedVolumePaths()->size(), 4U);
      EXPECT_TRUE(tree.calls.volumes.resourceValues("/"));
      tree.seconds.fetch_add(1);
    }
  };
  std::thread other(tick);
  tick();
  other.join();
}

}  // namespace
}  // namespace korvantis
