#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "platform/PulseServer.h"
#include "platform/linux/audio/AudioObjects.h"
#include "state/AudioMixerStore.h"

namespace korvantis {
namespace {

AudioObjectCalls callsOf(const std::string& address) {
  return pulseAudioObjectCalls(std::make_shared<PulseDevices>(address));
}

bool isListed(const std::vector<AudioDeviceItem>& devices, const std::string& name) {
  return std::any_of(devices.begin(), devices.end(),
                     [&](const AudioDeviceItem& device) { return device.name == name; });
}

/// The id of the device that is not the default one.
std::uint32_t otherThanDefault(const std::vector<AudioDeviceItem>& devices) {
  return std::find_if(devices.begin(), devices.end(),
                      [](const AudioDeviceItem& device) { return !device.isDefault; })
      ->id;
}

TEST(AudioMixerLive, ListsTheServersDevicesAndReallyChoosesOne) {
  const test::PulseServer server;
  if (!server.isThere()) GTEST_SKIP() << "no pulseaudio could be started on this machine";
  AudioMixerStore mixer(callsOf(server.address()));
  ASSERT_EQ(mixer.outputDevices().size(), 2U);
  ASSERT_EQ(mixer.inputDevices().size(), 2U);
  EXPECT_TRUE(isListed(mixer.outputDevices(), "First"));
  EXPECT_TRUE(isListed(mixer.outputDevices(), "Second"));
  EXPECT_TRUE(isListed(mixer.inputDevices(), "Microphone"));
  EXPECT_TRUE(isListed(mixer.inputDevices(), "Line"));

  const std::uint32_t output = otherThanDefault(mixer.outputDevices());
  const std::uint32_t input = otherThanDefault(mixer.inputDevices());
  mixer.selectOutputDevice(output);
  mixer.selectInputDevice(input);
  EXPECT_EQ(mixer.selectedOutputDeviceID(), output);
  EXPECT_EQ(mixer.selectedInputDeviceID(), input);
  const AudioMixerStore another(callsOf(server.address()));
  EXPECT_EQ(another.selectedOutputDeviceID(), output) << "the choice is the system's";
  EXPECT_EQ(another.selectedInputDeviceID(), input);

  mixer.selectOutputDevice(4711);
  EXPECT_EQ(mixer.selectedOutputDeviceID(), output) << "what the server refuses is not shown";
}

TEST(AudioMixerLive, AServerThatStandsStillHoldsNoOperationUp) {
  test::PulseServer server;
  if (!server.isThere()) GTEST_SKIP() << "no pulseaudio could be started on this machine";
  AudioMixerStore mixer(callsOf(server.address()));
  const std::uint32_t output = otherThanDefault(mixer.outputDevices());
  const auto before = mixer.outputDevices();
  server.stop();
  const auto start = std::chrono::steady_clock::now();
  mixer.selectOutputDevice(output);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(300));
  server.goOn();
  EXPECT_EQ(mixer.outputDevices(), before);
}

TEST(AudioMixerLive, WithoutAServerTheMadeUpDevicesAreListed) {
  const AudioMixerStore mixer(callsOf("unix:/nonexistent/native"));
  ASSERT_EQ(mixer.outputDevices().size(), 1U);
  EXPECT_EQ(mixer.outputDevices()[0].name, "MacBook Pro Speakers");
  EXPECT_EQ(mixer.inputDevices().at(0).name, "MacBook Pro Microphone");
  EXPECT_EQ(mixer.selectedOutputDeviceID(), 1U);
  EXPECT_EQ(mixer.selectedInputDeviceID(), 2U);
}

}  // namespace
}  // namespace korvantis
