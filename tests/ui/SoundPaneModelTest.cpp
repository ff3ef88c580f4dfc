#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/SoundPaneModel.h"

namespace korvantis {
namespace {

using Role = AudioStreamListModel::Role;

class SoundPaneModelTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  SoundPaneModel model;
  QAbstractItemModelTester tester{model.streams(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal};

  void start() { model.setStore(&scripted.store()); }
  AudioMixerStore& mixer() { return *scripted.store().audioMixer(); }
  QString textAt(int row, Role role) { return model.streams()->index(row).data(role).toString(); }
  /// An application with one process.
  void addApplication(const std::string& name, std::int32_t pid, double cpuPercent) {
    ProcessSample process = makeProcess(pid, name);
    process.cpuPercent = cpuPercent;
    scripted.next.appGroups.push_back(makeGroup(name, {process}));
  }
};

TEST_F(SoundPaneModelTest, OffersTheDevicesByNameAndKnowsTheChosenOne) {
  scripted.plugInAudio();
  start();
  EXPECT_EQ(model.outputs(), QList<Choice>({{QStringLiteral("70"), QStringLiteral("Headphones")},
                                            {QStringLiteral("72"), QStringLiteral("Interface")}}));
  EXPECT_EQ(model.outputIndex(), 1);
  EXPECT_EQ(model.inputs(), QList<Choice>({{QStringLiteral("71"), QStringLiteral("Microphone")},
                                           {QStringLiteral("72"), QStringLiteral("Interface")}}));
  EXPECT_EQ(model.inputIndex(), 0);
}

TEST_F(SoundPaneModelTest, WithNoDevicesAtAllTheMadeUpOnesAreOffered) {
  start();
  ASSERT_EQ(model.outputs().size(), 1);
  EXPECT_EQ(model.outputs().at(0).label, "MacBook Pro Speakers");
  EXPECT_EQ(model.outputIndex(), 0);
  ASSERT_EQ(model.inputs().size(), 1);
  EXPECT_EQ(model.inputs().at(0).label, "MacBook Pro Microphone");
  EXPECT_EQ(model.inputIndex(), 0);
}

TEST_F(SoundPaneModelTest, ShowsTheRowsOfItsRangeAndTheOneThatIsKept) {
  for (int number = 0; number < 10; ++number) {
    addApplication("Player" + std::to_string(number), 100 + number, 1);
  }
  start();
  scripted.tick();
  const auto shown = [this] {
    std::string names;
    for (int row = 0; row < model.streams()->rowCount(); ++row) {
      names += model.streams()->index(row).data(Role::Place).toString().toStdString() + ":" +
               textAt(row, Role::AppName).toStdString() + " ";
    }
    return names;
  };
  EXPECT_EQ(model.streams()->rowCount(), 10);
  model.setFirstStream(-3);
  model.setLastStream(1);
  EXPECT_EQ(shown(), "0:Player0 1:Player1 ");
  EXPECT_EQ(model.streamCount(), 10) << "all count, shown or not";
  model.setKeptStream(model.streams()->index(0).data(Role::AppID).toString());
  model.setLastStream(5);
  model.setFirstStream(4);
  EXPECT_EQ(shown(), "0:Player0 4:Player4 5:Player5 ");
  model.setKeptStream({});
  EXPECT_EQ(shown(), "4:Player4 5:Player5 ");
  scripted.next.appGroups.resize(5);
  scripted.tick();
  EXPECT_EQ(shown(), "4:Player4 ");
  EXPECT_EQ(model.streamCount(), 5);
}

TEST_F(SoundPaneModelTest, ARankThatChangesChangesTheRowsInPlace) {
  addApplication("First", 1, 1);
  addApplication("Second", 2, 1);
  start();
  scripted.tick();
  QSignalSpy moves(model.streams(), &QAbstractItemModel::rowsMoved);
  QSignalSpy inserts(model.streams(), &QAbstractItemModel::rowsInserted);
  std::swap(scripted.next.appGroups[0], scripted.next.appGroups[1]);
  scripted.tick();
  EXPECT_EQ(textAt(0, Role::AppName), "Second");
  EXPECT_EQ(textAt(1, Role::AppName), "First");
  EXPECT_EQ(moves.count() + inserts.count(), 0);
}

TEST_F(SoundPaneModelTest, TheRowThatIsKeptGoesWithItsApplication) {
  addApplication("First", 1, 1);
  addApplication("Second", 2, 1);
  start();
  scripted.tick();
  const QPersistentModelIndex kept = model.streams()->index(0);
  model.setKeptStream(kept.data(Role::AppID).toString());
  std::swap(scripted.next.appGroups[0], scripted.next.appGroups[1]);
  scripted.tick();
  ASSERT_TRUE(kept.isValid());
  EXPECT_EQ(kept.row(), 1);
  EXPECT_EQ(kept.data(Role::AppName).toString(), "First");
  EXPECT_EQ(textAt(0, Role::AppName), "Second");
}

TEST_F(SoundPaneModelTest, AChoiceIsFollowed) {
  scripted.plugInAudio();
  start();
  mixer().selectOutputDevice(70);
  EXPECT_EQ(model.outputIndex(), 0);
  mixer().selectInputDevice(72);
  EXPECT_EQ(model.inputIndex(), 1);
}

TEST_F(SoundPaneModelTest, AChoiceThatTheSystemRefusesIsTakenBack) {
  scripted.plugInAudio();
  scripted.audio.refusesSetting = true;
  start();
  QSignalSpy spy(&model, &SoundPaneModel::outputIndexChanged);
  mixer().selectOutputDevice(70);
  EXPECT_EQ(model.outputIndex(), 1);
  EXPECT_EQ(spy.size(), 2) << "there and back, so that the picker hears of it";
}

TEST_F(SoundPaneModelTest, RefreshingWithTheSameDevicesLeavesThePickersAsTheyAre) {
  scripted.plugInAudio();
  start();
  const QSignalSpy outputs(&model, &SoundPaneModel::outputsChanged);
  const QSignalSpy outputIndex(&model, &SoundPaneModel::outputIndexChanged);
  const QSignalSpy inputs(&model, &SoundPaneModel::inputsChanged);
  const QSignalSpy inputIndex(&model, &SoundPaneModel::inputIndexChanged);
  mixer().refreshAudioDevices();
  EXPECT_EQ(outputs.size() + outputIndex.size() + inputs.size() + inputIndex.size(), 0);
}

TEST_F(SoundPaneModelTest, ADeviceThatIsPluggedInIsOfferedAfterARefresh) {
  scripted.plugInAudio();
  start();
  scripted.audio.devices.insert(scripted.audio.devices.begin(), {60, "Monitor", {2}, {}});
  mixer().refreshAudioDevices();
  ASSERT_EQ(model.outputs().size(), 3);
  EXPECT_EQ(model.outputs().at(0).label, "Monitor");
  EXPECT_EQ(model.outputIndex(), 2);
}

TEST_F(SoundPaneModelTest, AMasterVolumeOf0755Shows75Percent) {
  start();
  EXPECT_EQ(model.masterText(), "75%");
  mixer().setMasterVolume(0.755);
  EXPECT_EQ(model.masterText(), "75%");
  mixer().setMasterVolume(0.999);
  EXPECT_EQ(model.masterText(), "99%");
  mixer().setMasterVolume(0);
  EXPECT_EQ(model.masterText(), "0%");
  mixer().setMasterVolume(1);
  EXPECT_EQ(model.masterText(), "100%");
}

TEST_F(SoundPaneModelTest, AnActiveApplicationSaysSoWithItsPid) {
  addApplication("Music", 4711, 2);
  start();
  ASSERT_EQ(model.streams()->rowCount(), 1);
  EXPECT_EQ(textAt(0, Role::AppID), "daemon:Music");
  EXPECT_EQ(textAt(0, Role::AppName), "Music");
  EXPECT_EQ(textAt(0, Role::StatusText), "Active CoreAudio Stream · PID 4711");
  EXPECT_EQ(textAt(0, Role::VolumeText), "100%");
  EXPECT_EQ(textAt(0, Role::BundlePath), "");
  EXPECT_EQ(textAt(0, Role::Description), "Music, Active CoreAudio Stream · PID 4711, 100%");
}

TEST_F(SoundPaneModelTest, AnApplicationThatIsNotActiveReadsReadyPid812) {
  addApplication("Music", 812, 0);
  start();
  EXPECT_EQ(textAt(0, Role::StatusText), "Ready · PID 812");
}

TEST_F(SoundPaneModelTest, ARowKnowsTheBundleOfItsApplication) {
  addApplication("Music", 1, 0);
  scripted.next.appGroups[0].bundlePath = "/Applications/Music.app";
  start();
  EXPECT_EQ(textAt(0, Role::BundlePath), "/Applications/Music.app");
}

TEST_F(SoundPaneModelTest, AMutedApplicationShowsMutedAndKeepsItsVolume) {
  addApplication("Music", 1, 2);
  start();
  mixer().setAppVolume(QStringLiteral("daemon:Music"), 0.345);
  EXPECT_EQ(textAt(0, Role::VolumeText), "34%");
  mixer().toggleAppMute(QStringLiteral("daemon:Music"));
  EXPECT_EQ(textAt(0, Role::VolumeText), "Muted");
  EXPECT_EQ(model.streams()->index(0).data(Role::IsMuted), true);
  EXPECT_EQ(model.streams()->index(0).data(Role::Volume), 0.345);
  mixer().toggleAppMute(QStringLiteral("daemon:Music"));
  EXPECT_EQ(textAt(0, Role::VolumeText), "34%");
}

TEST_F(SoundPaneModelTest, WithoutApplicationsThereAreNoRows) {
  start();
  EXPECT_EQ(model.streams()->rowCount(), 0);
}

TEST_F(SoundPaneModelTest, TheRowsFollowTheTickAndThoseThatStayAreNotTouched) {
  addApplication("Music", 1, 2);
  addApplication("Firefox", 2, 3);
  start();
  const QSignalSpy changed(model.streams(), &QAbstractItemModel::dataChanged);
  const QSignalSpy inserted(model.streams(), &QAbstractItemModel::rowsInserted);
  addApplication("Slack", 3, 1);
  scripted.next.appGroups[0].cpuPercent = 7;
  scripted.tick();
  ASSERT_EQ(model.streams()->rowCount(), 3);
  EXPECT_EQ(textAt(2, Role::AppName), "Slack");
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(changed.size(), 0);
}

TEST_F(SoundPaneModelTest, AVolumeThatIsSetChangesItsRowAlone) {
  addApplication("Music", 1, 2);
  addApplication("Firefox", 2, 3);
  start();
  const QSignalSpy changed(model.streams(), &QAbstractItemModel::dataChanged);
  mixer().setAppVolume(QStringLiteral("daemon:Firefox"), 0.5);
  ASSERT_EQ(changed.size(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex().row(), 1);
}

}  // namespace
}  // namespace korvantis
