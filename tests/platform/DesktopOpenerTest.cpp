#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>
#include <sys/resource.h>

#include "platform/WorkspaceCalls.h"
#include "platform/linux/DesktopOpener.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

/// Programs of a test that stand in front of PATH, or are all that is on it.
class DesktopOpener : public ::testing::Test {
 protected:
  ~DesktopOpener() override { ::setenv("PATH", before.c_str(), 1); }

  void add(const std::string& name, const std::string& script) {
    const std::string program = folder.write(name, "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(program, std::filesystem::perms(0755));
    ::setenv("PATH", (folder.path() + ":" + before).c_str(), 1);
  }

  std::string seen() {
    std::ifstream stream(folder.path("seen"), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  void addOpener(const std::string& after) {
    add("xdg-open", "printf '%s' \"$*\" >> '" + folder.path("seen") + "'\n" + after);
  }

  const test::TemporaryFolder folder;
  const std::string before = std::getenv("PATH");
};

TEST_F(DesktopOpener, GetsTheURLAndItsStatusCounts) {
  addOpener("exit 0");
  EXPECT_TRUE(openWithDesktop("https://example.org/?a=b&c='d e'"));
  EXPECT_EQ(seen(), "https://example.org/?a=b&c='d e'");
  addOpener("exit 3");
  EXPECT_FALSE(openWithDesktop("https://example.org/"));
}

TEST_F(DesktopOpener, AProgramThatStaysOpenHasTakenTheURL) {
  addOpener("exec sleep 30");
  EXPECT_TRUE(openWithDesktop("http://example.org/"));
}

TEST_F(DesktopOpener, ForAnotherSchemeTheDesktopMustNameAProgram) {
  addOpener("exit 0");
  add("xdg-mime", "[ \"$*\" = 'query default x-scheme-handler/whatsapp' ] && echo wa.desktop");
  EXPECT_TRUE(openWithDesktop("whatsapp://send?phone=1"));
  EXPECT_EQ(seen(), "whatsapp://send?phone=1");

  folder.remove("seen");
  add("xdg-mime", "echo; exit 0");
  EXPECT_FALSE(openWithDesktop("whatsapp://send?phone=1"));
  EXPECT_EQ(seen(), "") << "the opener was not even asked";
}

TEST_F(DesktopOpener, ADesktopThatDoesNotAnswerIsNotWaitedFor) {
  addOpener("exit 0");
  add("xdg-mime", "exec sleep 30");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(openWithDesktop("whatsapp://send?phone=1"));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(DesktopOpener, WithoutAnOpenerNothingOpens) {
  ::setenv("PATH", folder.path().c_str(), 1);
  EXPECT_FALSE(openWithDesktop("https://example.org/"));
  EXPECT_FALSE(openWithDesktop("whatsapp://send"));
}

TEST_F(DesktopOpener, ConcurrentlyTheWorkspaceComesBackAtOnceAndAnswersLater) {
  addOpener("sleep 0.3; exit 0");
  const auto answer = std::make_shared<std::promise<bool>>();
  const auto start = std::chrono::steady_clock::now();
  systemWorkspaceCalls().openURL("https://example.org/",
                                 [answer](bool isOpened) { answer->set_value(isOpened); });
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(250));
  EXPECT_TRUE(answer->get_future().get());
}

TEST_F(DesktopOpener, ConcurrentlyWhatItStartsRunsAtTheUsualPriority) {
  add("xdg-open", "nice > '" + folder.path("seen") + "'");
  const auto answer = std::make_shared<std::promise<bool>>();
  systemWorkspaceCalls().openURL("https://example.org/",
                                 [answer](bool isOpened) { answer->set_value(isOpened); });
  EXPECT_TRUE(answer->get_future().get());
  EXPECT_EQ(seen(), std::to_string(::getpriority(PRIO_PROCESS, 0)) + "\n");
}

}  // namespace
}  // namespace korvantis
