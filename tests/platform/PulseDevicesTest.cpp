#include <algorithm>
#include <chrono>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/PipeWireServer.h"
#include "platform/PulseServer.h"
#include "platform/linux/audio/AudioObjects.h"
#include "platform/linux/audio/PulseDevices.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

constexpr auto limit = std::chrono::milliseconds(300);

/// How long something took.
template <typename Work>
std::chrono::steady_clock::duration timed(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::steady_clock::now() - start;
}

std::vector<std::string> names(const AudioDevices& devices, bool isInput) {
  std::vector<std::string> names;
  for (const AudioDevice& device : devices.devices) {
    if (device.isInput == isInput) names.push_back(device.description);
  }
  return names;
}

const AudioDevice& named(const AudioDevices& devices, const std::string& name) {
  return *std::find_if(devices.devices.begin(), devices.devices.end(),
                       [&](const AudioDevice& device) { return device.serverName == name; });
}

TEST(AudioDeviceIDs, SinksAreEvenAndSourcesOddFrom16On) {
  EXPECT_EQ(audioDeviceID(0, false), 16U);
  EXPECT_EQ(audioDeviceID(1, false), 18U);
  EXPECT_EQ(audioDeviceID(0, true), 17U);
  EXPECT_EQ(audioDeviceID(7, true), 31U);
}

/// A real sound server; a machine where none starts skips these tests and says so.
class PulseDevicesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!server.isThere()) GTEST_SKIP() << "no pulseaudio could be started on this machine";
  }

  AudioDevices read() { return devices->refreshed().value_or(AudioDevices{}); }

  test::PulseServer server;
  std::shared_ptr<PulseDevices> devices = std::make_shared<PulseDevices>(server.address());
};

TEST_F(PulseDevicesTest, SinksAndSourcesAreListedWithoutMonitors) {
  const AudioDevices seen = read();
  EXPECT_THAT(names(seen, false), UnorderedElementsAre("First", "Second"));
  EXPECT_THAT(names(seen, true), UnorderedElementsAre("Microphone", "Line"));
  EXPECT_EQ(named(seen, "first").channels, 2U);
  EXPECT_EQ(named(seen, "second").channels, 6U);
  for (const AudioDevice& device : seen.devices) {
    EXPECT_GE(device.id, 16U);
    EXPECT_EQ(device.id % 2 == 1, device.isInput);
  }
  EXPECT_EQ(devices->lastSeen(), seen);
}

TEST_F(PulseDevicesTest, TheDefaultReallyChangesForEverybody) {
  const AudioDevices before = read();
  const AudioDevice sink = named(before, before.defaultSink == "first" ? "second" : "first");
  const AudioDevice source = named(before, before.defaultSource == "mic" ? "line" : "mic");
  EXPECT_TRUE(devices->setDefault(sink.id));
  EXPECT_TRUE(devices->setDefault(source.id));

  const auto after = PulseDevices(server.address()).refreshed();
  ASSERT_TRUE(after);
  EXPECT_EQ(after->defaultSink, sink.serverName);
  EXPECT_EQ(after->defaultSource, source.serverName);
  EXPECT_EQ(after->defaultID(false), sink.id);
  EXPECT_EQ(after->defaultID(true), source.id);
}

TEST_F(PulseDevicesTest, ADeviceThatIsNotThereCanNotBeTheDefault) {
  const AudioDevices before = read();
  EXPECT_FALSE(devices->setDefault(9998));
  EXPECT_EQ(read(), before);
}

TEST_F(PulseDevicesTest, AServerThatStandsStillHoldsNobodyUpAndWhatWasSeenStays) {
  const AudioDevices before = read();
  ASSERT_FALSE(before.devices.empty());
  server.stop();
  AudioDevices seen;
  EXPECT_LT(timed([&] { seen = read(); }), limit);
  EXPECT_EQ(seen, before);
  EXPECT_LT(timed([&] { read(); }), std::chrono::milliseconds(50)) << "nothing new is asked";
  server.goOn();
}

TEST_F(PulseDevicesTest, ASettingAndTheLookAfterItTogetherHoldNobodyUp) {
  const AudioDevices before = read();
  ASSERT_FALSE(before.devices.empty());
  server.stop();
  bool isSet = true;
  EXPECT_LT(timed([&] {
              isSet = devices->setDefault(before.devices.front().id);
              read();
            }),
            limit);
  EXPECT_FALSE(isSet);
  server.goOn();
}

TEST_F(PulseDevicesTest, AServerThatStoodStillFromTheBeginningIsReadOnceItGoesOn) {
  server.stop();
  EXPECT_EQ(devices->refreshed(), std::nullopt);
  server.goOn();
  for (int tries = 0; tries < 200 && read().devices.empty(); ++tries)
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(read().devices.size(), 4U);
}

TEST_F(PulseDevicesTest, AServerThatHasGoneLeavesNothing) {
  read();
  server.end();
  EXPECT_EQ(devices->refreshed(), std::nullopt);
  EXPECT_FALSE(devices->setDefault(16));
}

TEST_F(PulseDevicesTest, ManyQuestionsInARowAreAllAnswered) {
  for (int round = 0; round < 30; ++round) ASSERT_EQ(read().devices.size(), 4U) << round;
}

TEST_F(PulseDevicesTest, TheAudioObjectsHaveDarwinsShape) {
  const AudioObjectCalls calls = pulseAudioObjectCalls(devices);
  const auto address = [](std::uint32_t selector,
                          std::uint32_t scope = kAudioObjectPropertyScopeGlobal) {
    return AudioObjectPropertyAddress{selector, scope, 0};
  };
  std::uint32_t size = 0;
  ASSERT_EQ(calls.AudioObjectGetPropertyDataSize(kAudioObjectSystemObject,
                                                 address(kAudioHardwarePropertyDevices), &size),
            0);
  EXPECT_EQ(size, 16U);
  std::vector<std::uint32_t> ids(4);
  ASSERT_EQ(
      calls.AudioObjectGetPropertyData(kAudioObjectSystemObject,
                                       address(kAudioHardwarePropertyDevices), &size, ids.data()),
      0);
  const AudioDevices seen = *devices->lastSeen();
  const AudioDevice& second = named(seen, "second");
  EXPECT_THAT(ids, ::testing::Contains(second.id));

  EXPECT_EQ(calls.copyTextProperty(second.id, address(kAudioObjectPropertyName)), "Second");
  AudioBufferList list{};
  size = sizeof list;
  ASSERT_EQ(calls.AudioObjectGetPropertyData(
                second.id,
                address(kAudioDevicePropertyStreamConfiguration, kAudioObjectPropertyScopeOutput),
                &size, &list),
            0);
  EXPECT_EQ(size, 24U);
  EXPECT_EQ(list.mNumberBuffers, 1U);
  EXPECT_EQ(list.mBuffers[0].mNumberChannels, 6U);
  ASSERT_EQ(
      calls.AudioObjectGetPropertyDataSize(
          second.id,
          address(kAudioDevicePropertyStreamConfiguration, kAudioObjectPropertyScopeInput), &size),
      0);
  EXPECT_EQ(size, 8U) << "a list of no buffers";

  const auto defaultOutput = address(kAudioHardwarePropertyDefaultOutputDevice);
  EXPECT_EQ(
      calls.AudioObjectSetPropertyData(kAudioObjectSystemObject, defaultOutput, 4, &second.id), 0);
  const std::uint32_t input = named(seen, "mic").id;
  EXPECT_NE(calls.AudioObjectSetPropertyData(kAudioObjectSystemObject, defaultOutput, 4, &input), 0)
      << "a source is no output";
  calls.AudioObjectGetPropertyDataSize(kAudioObjectSystemObject,
                                       address(kAudioHardwarePropertyDevices), &size);
  std::uint32_t id = 0;
  size = sizeof id;
  ASSERT_EQ(calls.AudioObjectGetPropertyData(kAudioObjectSystemObject, defaultOutput, &size, &id),
            0);
  EXPECT_EQ(id, second.id);
}

TEST(PipeWireDevices, AreListedAndTheDefaultReallyChanges) {
  if (!test::PipeWireServer::isInstalled()) GTEST_SKIP() << "no PipeWire on this machine";
  const test::PipeWireServer server;
  PulseDevices devices(server.address());
  AudioDevices seen;
  for (int tries = 0; tries < 300 && (seen.devices.size() < 3 || seen.defaultID(false) == 0);
       ++tries) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    seen = devices.refreshed().value_or(AudioDevices{});
  }
  if (seen.devices.empty()) GTEST_SKIP() << "PipeWire does not start on this machine";
  ASSERT_EQ(seen.devices.size(), 3U) << "two sinks, a source, no monitors";
  EXPECT_EQ(named(seen, "mic").channels, 1U);
  EXPECT_TRUE(named(seen, "mic").isInput);

  for (const char* name : {"second", "first", "second"}) {
    EXPECT_TRUE(devices.setDefault(named(seen, name).id)) << name;
    EXPECT_EQ(devices.refreshed()->defaultID(false), named(seen, name).id) << name;
  }
}

TEST(AudioObjectsWithoutAServer, EverythingFails) {
  const AudioObjectCalls calls =
      pulseAudioObjectCalls(std::make_shared<PulseDevices>("unix:/nonexistent/native"));
  const AudioObjectPropertyAddress devices{kAudioHardwarePropertyDevices,
                                           kAudioObjectPropertyScopeGlobal, 0};
  std::uint32_t size = 0;
  std::uint32_t id = 16;
  EXPECT_NE(calls.AudioObjectGetPropertyDataSize(kAudioObjectSystemObject, devices, &size), 0);
  EXPECT_NE(calls.AudioObjectGetPropertyData(kAudioObjectSystemObject, devices, &size, &id), 0);
  EXPECT_EQ(calls.copyTextProperty(16, devices), std::nullopt);
  const AudioObjectPropertyAddress output{kAudioHardwarePropertyDefaultOutputDevice,
                                          kAudioObjectPropertyScopeGlobal, 0};
  EXPECT_NE(calls.AudioObjectSetPropertyData(kAudioObjectSystemObject, output, 4, &id), 0);
}

TEST(AudioObjectsWithoutAServer, ConcurrentQuestionsDoNoHarm) {
  PulseDevices devices("unix:/nonexistent/native");
  const auto ask = [&devices] {
    for (int round = 0; round < 20; ++round) {
      EXPECT_EQ(devices.refreshed(), std::nullopt);
      EXPECT_FALSE(devices.setDefault(16));
    }
  };
  std::thread other(ask);
  ask();
  other.join();
}

TEST(AudioObjectsWithoutAServer, AServerThatTakesCallsAndNeverSpeaksHoldsNobodyUp) {
  const test::TemporaryFolder folder;
  const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, folder.path("native").c_str(), sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(::listen(listener, 4), 0);
  PulseDevices devices("unix:" + folder.path("native"));

  EXPECT_LT(timed([&] { EXPECT_EQ(devices.refreshed(), std::nullopt); }), limit);
  EXPECT_LT(timed([&] { devices.refreshed(); }), std::chrono::milliseconds(50));
  ::close(listener);
}

}  // namespace
}  // namespace korvantis
