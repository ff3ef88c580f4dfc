#include <gtest/gtest.h>
#include <thread>

#include "platform/applications/DesktopFixture.h"

namespace korvantis {
namespace {

using test::DesktopFixture;

class ApplicationFixtures : public testing::TestWithParam<const char*> {};

TEST_P(ApplicationFixtures, EveryProcessIsShownWhereItBelongs) {
  DesktopFixture desktop;
  desktop.load(GetParam());
  ASSERT_FALSE(desktop.shownPaths.empty());
  for (const auto& [pid, shown] : desktop.shownPaths) EXPECT_EQ(desktop.path(pid), shown) << pid;
}

TEST_P(ApplicationFixtures, TheOrderOfTheQuestionsDoesNotMatter) {
  DesktopFixture desktop;
  desktop.load(GetParam());
  for (auto entry = desktop.shownPaths.rbegin(); entry != desktop.shownPaths.rend(); ++entry) {
    EXPECT_EQ(desktop.path(entry->first), entry->second) << entry->first;
  }
}

INSTANTIATE_TEST_SUITE_P(Desktops, ApplicationFixtures,
                         testing::Values("debian-12-xvfb.txt", "gnome.txt", "kde.txt",
                                         "flatpak.txt", "snap.txt", "appimage.txt", "steam.txt"));

TEST(GnomeFixture, AServerThatLeftItsTerminalStaysWithIt) {
  DesktopFixture desktop;
  desktop.load("gnome.txt");
  EXPECT_EQ(desktop.responsible(3001), 3000);
  EXPECT_EQ(desktop.responsible(3002), 3000) << "its parent is the session's manager by now";
}

TEST(GnomeFixture, AServerThatLeftItsEditorStaysWithIt) {
  DesktopFixture desktop;
  desktop.load("gnome.txt");
  EXPECT_EQ(desktop.responsible(4004), 4000);
}

TEST(GnomeFixture, ABrowserStartedFromAnEditorStaysItselfAndSoDoesWhatItStarts) {
  DesktopFixture desktop;
  desktop.load("gnome.txt");
  EXPECT_EQ(desktop.responsible(4003), 4003);
  EXPECT_EQ(desktop.responsible(4005), 4003);
}

TEST(GnomeFixture, LaterMembersOfAGroupGetAResponsibleProcessOnly) {
  DesktopFixture desktop;
  desktop.load("gnome.txt");
  EXPECT_EQ(desktop.responsible(6001), 6000);
}

TEST(KdeFixture, AMultiplexerIsNoApplicationAndBelongsToItsTerminal) {
  DesktopFixture desktop;
  desktop.load("kde.txt");
  EXPECT_EQ(desktop.responsible(2202), 2200);
}

TEST(SteamFixture, AGameThatLeftItsParentStaysWithItsShop) {
  DesktopFixture desktop;
  desktop.load("steam.txt");
  EXPECT_EQ(desktop.responsible(2003), 2000);
  EXPECT_EQ(desktop.responsible(2002), 2000);
}

TEST(RecordedDesktop, ToolsInTerminalsBelongToThem) {
  DesktopFixture desktop;
  desktop.load("debian-12-xvfb.txt");
  int tools = 0;
  for (const auto& [pid, shown] : desktop.shownPaths) {
    if (shown != "/usr/bin/bash" && shown != "/usr/bin/sleep") continue;
    const std::string owner = desktop.path(desktop.responsible(pid));
    EXPECT_NE(owner.find(".app/Contents/MacOS/"), std::string::npos) << pid << " " << owner;
    ++tools;
  }
  EXPECT_EQ(tools, 5) << "two shells, a tool in each, and one below the Python program";
}

TEST(RecordedDesktop, ConcurrentTicksShowEveryProcessWhereItBelongs) {
  DesktopFixture desktop;
  desktop.load("debian-12-xvfb.txt");
  desktop.questions();
  const auto wrongPaths = [&desktop] {
    int wrong = 0;
    for (int round = 0; round < 5; ++round) {
      desktop.tick();
      for (const auto& [pid, shown] : desktop.shownPaths) wrong += desktop.path(pid) != shown;
    }
    return wrong;
  };
  int others = 0;
  std::thread other([&] { others = wrongPaths(); });
  const int own = wrongPaths();
  other.join();
  EXPECT_EQ(own, 0);
  EXPECT_EQ(others, 0);
}

}  // namespace
}  // namespace korvantis
