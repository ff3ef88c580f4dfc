#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <utility>

#include "platform/applications/DesktopFixture.h"
#include "platform/linux/applications/LinuxRunningApplications.h"

namespace korvantis {
namespace {

using test::DesktopFixture;
using testing::ElementsAre;
using testing::IsEmpty;
using Process = DesktopFixture::Process;

/// A browser with a helper and a child tool, an editor running twice, and a plain tool.
class RunningApplications : public testing::Test {
 protected:
  RunningApplications() {
    desktop.native("/opt/browser/browser");
    desktop.entry("browser", "Exec=/opt/browser/browser");
    desktop.native("/usr/bin/editor");
    desktop.entry("org.example.Editor", "Exec=editor");
    put(400, 1, "/opt/browser/browser", {"browser", "--type=zygote"});
    put(500, 1, "/opt/browser/browser", {"browser"});
    put(501, 500, "/opt/browser/browser", {"browser", "--type=renderer"});
    put(502, 500, "/usr/bin/tool", {"tool"});
    put(600, 1, "/usr/bin/editor", {"editor"});
    put(601, 1, "/usr/bin/editor", {"editor"});
    put(602, 601, "/usr/bin/editor", {"editor", "again"});
    desktop.tick();
  }

  void put(std::int32_t pid, std::int32_t parent, const std::string& executable,
           std::vector<std::string> words) {
    Process process;
    process.pid = pid;
    process.parent = parent;
    process.executable = executable;
    process.words = std::move(words);
    desktop.put(process);
  }

  RunningApplicationCalls calls() {
    desktop.applications();
    QuitWays ways;
    ways.overBus = [this](const std::string& id, std::int32_t pid) {
      asked.push_back("bus " + id + " " + std::to_string(pid));
      return takesBus;
    };
    ways.byWindows = [this](std::int32_t pid) {
      asked.push_back("windows " + std::to_string(pid));
      return hasWindows;
    };
    ways.signal = [this](std::int32_t pid, int signal) {
      asked.push_back("signal " + std::to_string(pid) + " " + std::to_string(signal));
      return signalResult;
    };
    ways.mayReach = [this](std::int32_t pid) { return !foreign.contains(pid); };
    ways.isThere = [this](const ProcessIdentity&) { return isThere; };
    return linuxRunningApplications(desktop.watchedApplications(), ways);
  }

  DesktopFixture desktop;
  std::vector<std::string> asked;
  /// Processes of other users.
  std::set<std::int32_t> foreign;
  bool takesBus = false;
  bool hasWindows = false;
  bool isThere = true;
  int signalResult = 0;
};

TEST_F(RunningApplications, AreAskedOverTheBusFirst) {
  takesBus = true;
  const auto running = calls().runningApplicationWithProcessIdentifier(600);
  ASSERT_TRUE(running);
  EXPECT_TRUE(running->terminate());
  EXPECT_THAT(asked, ElementsAre("bus org.example.Editor 600"));
}

TEST_F(RunningApplications, AreThenAskedByTheirWindows) {
  hasWindows = true;
  EXPECT_TRUE(calls().runningApplicationWithProcessIdentifier(600)->terminate());
  EXPECT_THAT(asked, ElementsAre("bus org.example.Editor 600", "windows 600"));
}

TEST_F(RunningApplications, RefuseWhenThereIsNoPoliteWay) {
  EXPECT_FALSE(calls().runningApplicationWithProcessIdentifier(600)->terminate());
  EXPECT_EQ(asked.size(), 2U) << "and no signal was sent";
}

TEST_F(RunningApplications, AreForcedBySignalToTheRootProcessAlone) {
  EXPECT_TRUE(calls().runningApplicationWithProcessIdentifier(500)->forceTerminate());
  EXPECT_THAT(asked, ElementsAre("signal 500 9"));
  signalResult = -1;
  EXPECT_FALSE(calls().runningApplicationWithProcessIdentifier(500)->forceTerminate())
      << "another user's";
}

TEST_F(RunningApplications, ByNumberOnlyTheRootProcessCounts) {
  const auto all = calls();
  EXPECT_TRUE(all.runningApplicationWithProcessIdentifier(500));
  EXPECT_FALSE(all.runningApplicationWithProcessIdentifier(400)) << "a helper with a lower number";
  EXPECT_FALSE(all.runningApplicationWithProcessIdentifier(501)) << "a renderer";
  EXPECT_FALSE(all.runningApplicationWithProcessIdentifier(502)) << "a tool it started";
  EXPECT_FALSE(all.runningApplicationWithProcessIdentifier(601)) << "the second instance";
  EXPECT_FALSE(all.runningApplicationWithProcessIdentifier(9999));
}

TEST_F(RunningApplications, ByIdentifierEveryInstanceIsAsked) {
  takesBus = true;
  const auto instances = calls().runningApplicationsWithBundleIdentifier("org.example.Editor");
  ASSERT_EQ(instances.size(), 2U) << "one process was started by an instance";
  for (const RunningApplication& instance : instances) EXPECT_TRUE(instance.terminate());
  EXPECT_THAT(asked, ElementsAre("bus org.example.Editor 600", "bus org.example.Editor 601"));
  EXPECT_EQ(calls().runningApplicationsWithBundleIdentifier("browser").size(), 1U);
  EXPECT_THAT(calls().runningApplicationsWithBundleIdentifier("no.such.Application"), IsEmpty());
}

TEST_F(RunningApplications, EachRunOfAnAppImageIsAnApplicationOfItsOwn) {
  desktop.native("/usr/bin/drawing");
  desktop.entry("drawing", "Exec=drawing");
  put(700, 1, "/usr/bin/drawing", {"drawing"});
  std::int32_t pid = 701;
  for (const std::string mount : {"/tmp/.mount_DrawinAAAAAA", "/tmp/.mount_DrawinBBBBBB"}) {
    desktop.native(mount + "/usr/bin/drawing");
    desktop.machine.files.write(mount.substr(1) + "/drawing.desktop",
                                "[Desktop Entry]\nType=Application\nExec=drawing\nName=Drawing\n");
    put(pid++, 1, mount + "/usr/bin/drawing", {"drawing"});
  }
  desktop.machine.seconds += 10;
  desktop.tick();
  const auto numbers = [this](const std::string& identifier) {
    std::vector<std::int32_t> pids;
    for (const ApplicationProcess& process : desktop.applications().instances(identifier)) {
      pids.push_back(process.identity.pid);
    }
    return pids;
  };
  const auto identifierOf = [this](const std::string& bundle) {
    const auto list = desktop.applications().propertyList(bundle + "/Contents/Info.plist");
    return list ? textProperty(*list, "CFBundleIdentifier").value_or("") : "";
  };
  EXPECT_THAT(numbers("drawing"), ElementsAre(700));
  EXPECT_THAT(numbers(identifierOf("/tmp/.mount_DrawinAAAAAA/drawing.app")), ElementsAre(701));
  EXPECT_THAT(numbers(identifierOf("/tmp/.mount_DrawinBBBBBB/drawing.app")), ElementsAre(702));
}

TEST_F(RunningApplications, AnotherUsersCopyIsNoneOfOurs) {
  foreign = {601};
  EXPECT_EQ(calls().runningApplicationsWithBundleIdentifier("org.example.Editor").size(), 1U);
  EXPECT_TRUE(calls().runningApplicationWithProcessIdentifier(600));
  foreign = {600, 601};
  EXPECT_THAT(calls().runningApplicationsWithBundleIdentifier("org.example.Editor"), IsEmpty());
  EXPECT_FALSE(calls().runningApplicationWithProcessIdentifier(600));
}

TEST_F(RunningApplications, AnApplicationThatHasOnlyHelpersLeftAnswersByTheOldest) {
  desktop.machine.remove(500);
  desktop.tick();
  EXPECT_TRUE(calls().runningApplicationWithProcessIdentifier(400));
  EXPECT_FALSE(calls().runningApplicationsWithBundleIdentifier("browser").empty());
}

TEST_F(RunningApplications, NobodyIsAskedWhoInheritedTheNumber) {
  takesBus = hasWindows = true;
  isThere = false;
  const auto running = calls().runningApplicationWithProcessIdentifier(600);
  EXPECT_FALSE(running->terminate());
  EXPECT_FALSE(running->forceTerminate());
  EXPECT_THAT(asked, IsEmpty());
}

}  // namespace
}  // namespace korvantis
