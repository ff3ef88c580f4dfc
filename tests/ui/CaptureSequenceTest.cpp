#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/CaptureSequence.h"
#include "ui/ScriptedStore.h"

namespace korvantis {
namespace {

/// A capture whose pauses end when the test says so.
class CaptureSequenceTest : public testing::Test {
 protected:
  struct Picture {
    std::string path;
    OstrelPane pane;
    bool showsSettings;
    bool isDark;
  };

  ScriptedStore scripted;
  std::vector<double> pauses;
  std::function<void()> waiting;
  std::vector<Picture> pictures;
  bool showsSettings = false;
  bool isTerminated = false;

  void start(const std::string& folder) {
    CaptureCalls calls;
    calls.asyncAfter = [this](double seconds, std::function<void()> task) {
      pauses.push_back(seconds);
      waiting = std::move(task);
    };
    calls.writePicture = [this](const std::string& path) {
      pictures.push_back({path, scripted.store().selectedPane(), showsSettings,
                          scripted.store().look()->effectiveIsDark()});
    };
    calls.showSettingsComposition = [this](bool shows) { showsSettings = shows; };
    calls.terminate = [this] { isTerminated = true; };
    captureRealProductScreenshots(scripted.store(), calls, folder);
  }
  void finish() {
    while (waiting) std::exchange(waiting, nullptr)();
  }
};

TEST_F(CaptureSequenceTest, StartsDarkWithAFreshTickAndOnePause) {
  scripted.systemIsDark = false;
  scripted.store().look()->setThemeMode(AppThemeMode::light);
  const int ticksBefore = scripted.ticks;
  start("/pictures");
  EXPECT_EQ(scripted.store().look()->themeMode(), AppThemeMode::dark);
  EXPECT_TRUE(scripted.store().look()->effectiveIsDark());
  EXPECT_EQ(scripted.ticks, ticksBefore + 1);
  EXPECT_THAT(pauses, testing::ElementsAre(1.2));
  EXPECT_TRUE(pictures.empty());
}

TEST_F(CaptureSequenceTest, WritesFivePicturesOfTheirScreensInOrder) {
  start("/pictures");
  finish();
  ASSERT_EQ(pictures.size(), 5U);
  EXPECT_EQ(pictures[0].path, "/pictures/showcase_overview.png");
  EXPECT_EQ(pictures[0].pane, OstrelPane::overview);
  EXPECT_EQ(pictures[1].path, "/pictures/showcase_processes.png");
  EXPECT_EQ(pictures[1].pane, OstrelPane::processes);
  EXPECT_EQ(pictures[2].path, "/pictures/showcase_agents_audio.png");
  EXPECT_EQ(pictures[2].pane, OstrelPane::agents);
  EXPECT_EQ(pictures[3].path, "/pictures/showcase_remote_alerts.png");
  EXPECT_EQ(pictures[3].pane, OstrelPane::insights);
  EXPECT_EQ(pictures[4].path, "/pictures/showcase_imessage_whatsapp.png");
  for (const Picture& picture : pictures) EXPECT_TRUE(picture.isDark);
}

TEST_F(CaptureSequenceTest, LeavesThePhoneSettingsOfItsPicturesBehind) {
  start("/pictures");
  finish();
  const RemoteAlertStore& alerts = *scripted.store().remoteAlerts();
  EXPECT_TRUE(alerts.iMessageEnabled());
  EXPECT_TRUE(alerts.whatsAppEnabled());
  EXPECT_FALSE(alerts.lastStatusIsError());
  EXPECT_EQ(alerts.lastStatusMessage(),
            QStringLiteral("✓ Connected — Ready to dispatch 4-line Mac health briefs via iMessage "
                           "& WhatsApp"));
  EXPECT_EQ(alerts.iMessageRecipient(), QStringLiteral("+1 (555) 019-2834"));
  EXPECT_EQ(alerts.whatsAppPhone(), QStringLiteral("+1 (555) 019-2834"));
}

TEST_F(CaptureSequenceTest, PausesBeforeEachPicture) {
  start("/pictures");
  finish();
  EXPECT_THAT(pauses, testing::ElementsAre(1.2, 0.7, 0.7, 0.7, 0.8));
}

TEST_F(CaptureSequenceTest, OnlyTheLastPictureShowsTheSettingsAndThenTheContentIsPutBack) {
  start("/pictures");
  finish();
  ASSERT_EQ(pictures.size(), 5U);
  for (std::size_t index = 0; index < 4; ++index) EXPECT_FALSE(pictures[index].showsSettings);
  EXPECT_TRUE(pictures[4].showsSettings);
  EXPECT_FALSE(showsSettings);
  EXPECT_EQ(scripted.store().selectedSettingsTab(), QStringLiteral("Remote Alerts"));
}

TEST_F(CaptureSequenceTest, TheFolderIsAPlainPrefix) {
  start("relative folder/x");
  finish();
  EXPECT_EQ(pictures.at(0).path, "relative folder/x/showcase_overview.png");
}

TEST_F(CaptureSequenceTest, EndsTheProgramAfterTheLastPictureOnly) {
  start("/pictures");
  for (int step = 0; step < 4; ++step) {
    std::exchange(waiting, nullptr)();
    EXPECT_FALSE(isTerminated);
  }
  finish();
  EXPECT_TRUE(isTerminated);
}

}  // namespace
}  // namespace korvantis
