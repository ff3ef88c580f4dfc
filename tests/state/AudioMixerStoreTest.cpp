#include <QLocale>
#include <QSignalSpy>
#include <cstddef>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "state/AudioMixerStore.h"
#include "state/ScriptedMonitor.h"
#include "support/ScriptedAudio.h"

namespace korvantis {
namespace {

using test::ScriptedAudio;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const AudioDeviceItem speakers{1, "MacBook Pro Speakers", false, true};
const AudioDeviceItem microphone{2, "MacBook Pro Microphone", true, true};

class AudioMixerStoreTest : public ::testing::Test {
 protected:
  AudioMixerStore& store() {
    if (!store_) store_ = std::make_unique<AudioMixerStore>(audio.calls());
    return *store_;
  }

  /// Headphones, a microphone, and an interface that does both.
  void plugIn() {
    audio.devices = {
        {70, "Headphones", {2}, {}}, {71, "Microphone", {}, {1}}, {72, "Interface", {2, 6}, {4}}};
    audio.defaultOutput = 72;
    audio.defaultInput = 71;
  }

  static std::vector<std::string> names(const std::vector<AppAudioStream>& streams) {
    std::vector<std::string> names;
    for (const AppAudioStream& stream : streams) names.push_back(stream.appName);
    return names;
  }

  void TearDown() override { EXPECT_EQ(audio.wrongCalls, 0); }

  ScriptedAudio audio;
  std::unique_ptr<AudioMixerStore> store_;
};

TEST_F(AudioMixerStoreTest, EveryFieldStartsFromItsTable) {
  EXPECT_EQ(store().masterVolume(), 0.75);
  EXPECT_FALSE(store().isMasterMuted());
  EXPECT_THAT(store().appStreams(), IsEmpty());
}

TEST_F(AudioMixerStoreTest, ANewStoreHasReadTheDevices) {
  plugIn();
  EXPECT_THAT(store().outputDevices(), ElementsAre(AudioDeviceItem{70, "Headphones", false, false},
                                                   AudioDeviceItem{72, "Interface", false, true}));
  EXPECT_THAT(store().inputDevices(), ElementsAre(AudioDeviceItem{71, "Microphone", true, true},
                                                  AudioDeviceItem{72, "Interface", true, false}));
  EXPECT_EQ(store().selectedOutputDeviceID(), 72U);
  EXPECT_EQ(store().selectedInputDeviceID(), 71U);
}

TEST_F(AudioMixerStoreTest, WithNoDevicesAtAllTheMadeUpOnesAreListedAndSelected) {
  EXPECT_THAT(store().outputDevices(), ElementsAre(speakers));
  EXPECT_THAT(store().inputDevices(), ElementsAre(microphone));
  EXPECT_EQ(store().selectedOutputDeviceID(), 1U);
  EXPECT_EQ(store().selectedInputDeviceID(), 2U);
}

TEST_F(AudioMixerStoreTest, AFailedListGivesTheMadeUpDevices) {
  plugIn();
  audio.failsSize = true;
  EXPECT_THAT(store().outputDevices(), ElementsAre(speakers));
  store_.reset();
  audio.failsSize = false;
  audio.failsList = true;
  EXPECT_THAT(store().inputDevices(), ElementsAre(microphone));
  EXPECT_EQ(store().selectedOutputDeviceID(), 1U);
}

TEST_F(AudioMixerStoreTest, AFailureLaterLeavesListsThatHoldSomethingAlone) {
  plugIn();
  const auto before = store().outputDevices();
  audio.failsSize = true;
  store().refreshAudioDevices();

  EXPECT_EQ(store().outputDevices(), before);
  EXPECT_EQ(store().selectedOutputDeviceID(), 72U);
  EXPECT_EQ(store().selectedInputDeviceID(), 71U);
}

TEST_F(AudioMixerStoreTest, AListWithoutADeviceOfADirectionGetsTheMadeUpOne) {
  audio.devices = {{70, "Headphones", {2}, {}}};
  EXPECT_EQ(store().outputDevices().size(), 1U);
  EXPECT_THAT(store().inputDevices(), ElementsAre(microphone));
  EXPECT_EQ(store().selectedInputDeviceID(), 2U);

  audio.devices = {{71, "Microphone", {}, {1}}};
  store().refreshAudioDevices();
  EXPECT_THAT(store().outputDevices(), ElementsAre(speakers));
  EXPECT_EQ(store().selectedOutputDeviceID(), 1U);
}

TEST_F(AudioMixerStoreTest, ANameThatCanNotBeReadIsMadeFromTheNumber) {
  audio.devices = {{73, std::nullopt, {2}, {}}};
  EXPECT_EQ(store().outputDevices().at(0).name, "Audio Device 73");
}

TEST_F(AudioMixerStoreTest, WithoutADefaultTheFirstDeviceIsSelected) {
  plugIn();
  audio.failsDefaults = true;
  EXPECT_EQ(store().selectedOutputDeviceID(), 70U);
  EXPECT_EQ(store().selectedInputDeviceID(), 71U);
  for (const AudioDeviceItem& device : store().outputDevices()) EXPECT_FALSE(device.isDefault);
}

TEST_F(AudioMixerStoreTest, ADeviceWithoutChannelsOrWithoutAnAnswerIsInNoList) {
  audio.devices = {{70, "No streams", {}, {}}, {71, "Empty streams", {0, 0}, {0}}};
  EXPECT_THAT(store().outputDevices(), ElementsAre(speakers));
  EXPECT_THAT(store().inputDevices(), ElementsAre(microphone));

  plugIn();
  audio.failsStreamSize = true;
  store().refreshAudioDevices();
  EXPECT_THAT(store().outputDevices(), ElementsAre(speakers));
  audio.failsStreamSize = false;
  audio.failsStreams = true;
  store().refreshAudioDevices();
  EXPECT_THAT(store().outputDevices(), ElementsAre(speakers));
}

TEST_F(AudioMixerStoreTest, ChannelsOfLaterStreamsCountToo) {
  audio.devices = {{70, "Late", {0, 2}, {}}};
  EXPECT_EQ(store().outputDevices().at(0).name, "Late");
}

TEST_F(AudioMixerStoreTest, ABufferListThatPromisesMoreThanItHoldsIsReadAsFarAsItGoes) {
  plugIn();
  AudioObjectCalls calls = audio.calls();
  calls.AudioObjectGetPropertyData = [get = calls.AudioObjectGetPropertyData](
                                         std::uint32_t object,
                                         const AudioObjectPropertyAddress& address,
                                         std::uint32_t* size, void* data) {
    const std::int32_t status = get(object, address, size, data);
    const std::uint32_t many = 0xFFFFFFFF;
    if (object != kAudioObjectSystemObject) std::memcpy(data, &many, sizeof many);
    return status;
  };
  const AudioMixerStore mixer(calls);
  EXPECT_EQ(mixer.outputDevices().size(), 2U);
}

TEST_F(AudioMixerStoreTest, SelectingADeviceMakesItTheSystemsDefault) {
  plugIn();
  store().selectOutputDevice(70);
  EXPECT_EQ(store().selectedOutputDeviceID(), 70U);
  store().selectInputDevice(72);
  EXPECT_EQ(store().selectedInputDeviceID(), 72U);

  EXPECT_THAT(audio.settings,
              ElementsAre(std::pair(kAudioHardwarePropertyDefaultOutputDevice, 70U),
                          std::pair(kAudioHardwarePropertyDefaultInputDevice, 72U)));
  EXPECT_TRUE(store().outputDevices().at(0).isDefault);
  EXPECT_FALSE(store().outputDevices().at(1).isDefault);
}

TEST_F(AudioMixerStoreTest, TheSelectionFollowsTheSystemEvenIfItRefusedTheUsersChoice) {
  plugIn();
  audio.refusesSetting = true;
  const QSignalSpy selected(&store(), &AudioMixerStore::selectedOutputDeviceIDChanged);
  store().selectOutputDevice(70);
  EXPECT_EQ(store().selectedOutputDeviceID(), 72U);
  EXPECT_EQ(selected.count(), 2) << "there and back";

  audio.defaultOutput = 70;
  store().refreshAudioDevices();
  EXPECT_EQ(store().selectedOutputDeviceID(), 70U);
}

TEST_F(AudioMixerStoreTest, AnEqualRefreshNotifiesNobody) {
  plugIn();
  const QSignalSpy outputs(&store(), &AudioMixerStore::outputDevicesChanged);
  const QSignalSpy inputs(&store(), &AudioMixerStore::inputDevicesChanged);
  const QSignalSpy output(&store(), &AudioMixerStore::selectedOutputDeviceIDChanged);
  const QSignalSpy input(&store(), &AudioMixerStore::selectedInputDeviceIDChanged);
  store().refreshAudioDevices();
  store().selectOutputDevice(72);
  store().selectInputDevice(71);
  EXPECT_EQ(outputs.count() + inputs.count() + output.count() + input.count(), 0);

  audio.defaultOutput = 70;
  store().refreshAudioDevices();
  EXPECT_EQ(outputs.count(), 1);
  EXPECT_EQ(output.count(), 1);
  EXPECT_EQ(inputs.count() + input.count(), 0);
}

TEST_F(AudioMixerStoreTest, TheMasterFieldsNotifyExactlyOnARealChange) {
  const QSignalSpy volume(&store(), &AudioMixerStore::masterVolumeChanged);
  const QSignalSpy muted(&store(), &AudioMixerStore::isMasterMutedChanged);
  for (int time = 0; time < 2; ++time) {
    store().setProperty("masterVolume", 0.5);
    store().setProperty("isMasterMuted", true);
  }
  EXPECT_EQ(store().masterVolume(), 0.5);
  EXPECT_TRUE(store().isMasterMuted());
  EXPECT_EQ(volume.count(), 1);
  EXPECT_EQ(muted.count(), 1);
  EXPECT_THAT(audio.settings, IsEmpty()) << "no sound changes";
}

TEST_F(AudioMixerStoreTest, EveryKeywordMakesARowWhateverItsCase) {
  for (const char* keyword : {"Music", "Spotify", "Chrome", "Safari", "Arc", "Firefox", "VLC",
                              "QuickTime", "Zoom", "Slack", "Discord", "Teams", "Brave", "Wave",
                              "Youtube", "Podcasts", "TV", "Simulator", "Xcode"}) {
    const auto upper = QString::fromLatin1(keyword).toUpper().toStdString();
    const auto lower = QString::fromLatin1(keyword).toLower().toStdString();
    store().syncWithRunningApps({test::appGroup("Other", 0, 0),
                                 test::appGroup("My " + std::string(keyword) + "!", 0, 0),
                                 test::appGroup(upper, 0, 0), test::appGroup(lower, 0, 0)});
    EXPECT_THAT(names(store().appStreams()),
                ElementsAre("My " + std::string(keyword) + "!", upper, lower));
  }
}

TEST_F(AudioMixerStoreTest, GoogleChromeMatchesChrome) {
  store().syncWithRunningApps({test::appGroup("Notes", 0, 0), test::appGroup("Google Chrome", 0, 0),
                               test::appGroup("google chrome", 0, 0)});
  EXPECT_THAT(names(store().appStreams()), ElementsAre("Google Chrome", "google chrome"));
}

TEST_F(AudioMixerStoreTest, KeywordsAreComparedInTheUsersLanguage) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::Turkish));
  store().syncWithRunningApps(
      {test::appGroup("MUSIC BOX", 0, 0), test::appGroup("Music Box", 0, 0)});
  QLocale::setDefault(before);
  EXPECT_THAT(names(store().appStreams()), ElementsAre("Music Box"))
      << "a Turkish capital I is no i";
}

TEST_F(AudioMixerStoreTest, ALoadAbove03MakesARowAndOneAbove01IsActive) {
  store().syncWithRunningApps({test::appGroup("A", 0.3, 0), test::appGroup("B", 0.31, 0),
                               test::appGroup("Music 1", 0.1, 0),
                               test::appGroup("Music 2", 0.11, 0)});
  ASSERT_THAT(names(store().appStreams()), ElementsAre("B", "Music 1", "Music 2"));
  EXPECT_TRUE(store().appStreams()[0].isActive);
  EXPECT_FALSE(store().appStreams()[1].isActive);
  EXPECT_TRUE(store().appStreams()[2].isActive);

  store().syncWithRunningApps({test::appGroup("B", 0.2, 0), test::appGroup("Music 1", 0, 0)});
  EXPECT_THAT(names(store().appStreams()), ElementsAre("Music 1")) << "the load has fallen";
}

TEST_F(AudioMixerStoreTest, OnlyApplicationsAreLookedAt) {
  AppGroup daemon = test::appGroup("Music daemon", 50, 0);
  daemon.kind = AppGroupKind::system;
  AppGroup tool = test::appGroup("Music tool", 50, 0);
  tool.kind = AppGroupKind::other;
  store().syncWithRunningApps({daemon, test::appGroup("Music", 0, 0), tool});
  EXPECT_THAT(names(store().appStreams()), ElementsAre("Music"));

  store().syncWithRunningApps({daemon, tool});
  EXPECT_THAT(store().appStreams(), IsEmpty());
}

TEST_F(AudioMixerStoreTest, ARowHasTheFieldsOfItsApplication) {
  AppGroup group = test::appGroup("Music", 0.2, 0);
  group.bundlePath = "/Applications/Music.app";
  group.processes.resize(2);
  group.processes[0].pid = 41;
  group.processes[1].pid = 42;
  store().syncWithRunningApps({group, test::appGroup("Arc", 0, 0)});

  EXPECT_THAT(store().appStreams(),
              ElementsAre(AppAudioStream{"/Applications/Music.app", "Music", 41,
                                         "/Applications/Music.app", 1.0, false, true},
                          AppAudioStream{"/Applications/Arc.app", "Arc", 0, std::nullopt, 1.0,
                                         false, false}));
}

TEST_F(AudioMixerStoreTest, WithoutAMatchTheFirstSixApplicationsAppearAllActive) {
  std::vector<AppGroup> groups;
  for (const char* name : {"A", "B", "C", "D", "E", "F", "G"})
    groups.push_back(test::appGroup(name, 0, 0));
  groups[1].kind = AppGroupKind::system;
  groups.push_back(test::appGroup("H", 0, 0));
  store().syncWithRunningApps(groups);

  EXPECT_THAT(names(store().appStreams()), ElementsAre("A", "C", "D", "E", "F", "G"));
  for (const AppAudioStream& stream : store().appStreams()) EXPECT_TRUE(stream.isActive);
}

TEST_F(AudioMixerStoreTest, AnEqualListOfRowsNotifiesNobody) {
  store().syncWithRunningApps({test::appGroup("Music", 1, 0)});
  const QSignalSpy spy(&store(), &AudioMixerStore::appStreamsChanged);
  store().syncWithRunningApps({test::appGroup("Music", 2, 0)});
  EXPECT_EQ(spy.count(), 0);
  store().syncWithRunningApps({test::appGroup("Music", 0, 0)});
  EXPECT_EQ(spy.count(), 1);
}

TEST_F(AudioMixerStoreTest, AVolumeIsHeldToItsRange) {
  store().syncWithRunningApps({test::appGroup("Music", 0, 0)});
  const QString id = "/Applications/Music.app";
  const std::vector<std::pair<double, double>> cases{
      {1.5, 1.0}, {-0.2, 0.0}, {0.25, 0.25}, {std::numeric_limits<double>::quiet_NaN(), 0.0}};
  for (const auto& [given, held] : cases) {
    store().setAppVolume(id, given);
    EXPECT_EQ(store().appStreams().at(0).volume, held);
    store().syncWithRunningApps({test::appGroup("Music", 0, 0)});
    EXPECT_EQ(store().appStreams().at(0).volume, held) << "on the next tick too";
  }
}

TEST_F(AudioMixerStoreTest, AnApplicationThatTheUserHasSetStaysOnEveryLaterTick) {
  const std::vector<AppGroup> groups{test::appGroup("Notes", 0, 0), test::appGroup("Music", 0, 0)};
  store().setAppVolume("/Applications/Notes.app", 0.4);
  for (int tick = 0; tick < 3; ++tick) {
    store().syncWithRunningApps(groups);
    EXPECT_THAT(names(store().appStreams()), ElementsAre("Notes", "Music"));
    EXPECT_EQ(store().appStreams()[0].volume, 0.4);
  }
}

TEST_F(AudioMixerStoreTest, MutingTwiceLiftsItAndLeavesTheVolume) {
  const QString id = "/Applications/Music.app";
  store().syncWithRunningApps({test::appGroup("Music", 0, 0)});
  store().setAppVolume(id, 0.4);
  store().toggleAppMute(id);
  EXPECT_TRUE(store().appStreams().at(0).isMuted);
  EXPECT_EQ(store().appStreams().at(0).volume, 0.4);
  store().setAppVolume(id, 0.5);
  EXPECT_TRUE(store().appStreams().at(0).isMuted) << "a volume lifts no mute";
  store().toggleAppMute(id);
  EXPECT_FALSE(store().appStreams().at(0).isMuted);
  EXPECT_EQ(store().appStreams().at(0).volume, 0.5);
}

TEST_F(AudioMixerStoreTest, MutingAnApplicationNeverTouchedGivesItTheFullVolume) {
  store().toggleAppMute("/Applications/Notes.app");
  store().syncWithRunningApps({test::appGroup("Notes", 0, 0)});
  ASSERT_EQ(store().appStreams().size(), 1U);
  EXPECT_TRUE(store().appStreams()[0].isMuted);
  EXPECT_EQ(store().appStreams()[0].volume, 1.0);
}

TEST_F(AudioMixerStoreTest, ARowThatIsSetAgainToTheSameNotifiesNobody) {
  store().syncWithRunningApps({test::appGroup("Music", 0, 0)});
  const QSignalSpy spy(&store(), &AudioMixerStore::appStreamsChanged);
  store().setAppVolume("/Applications/Music.app", 0.4);
  store().setAppVolume("/Applications/Music.app", 0.4);
  store().setAppVolume("unknown", 0.1);
  EXPECT_EQ(spy.count(), 1);
}

TEST(AudioMixerInMonitorStore, TheRowsFollowEveryTick) {
  test::ScriptedMonitor monitor;
  monitor.nextSnapshot.appGroups = {test::appGroup("Music", 0, 0)};
  EXPECT_EQ(monitor.store().audioMixer()->appStreams().size(), 1U);
  monitor.nextSnapshot.appGroups.push_back(test::appGroup("Spotify", 0, 0));
  monitor.store().refreshTick();
  EXPECT_EQ(monitor.store().audioMixer()->appStreams().size(), 2U);
}

}  // namespace
}  // namespace korvantis
