#include <gtest/gtest.h>

#include "platform/linux/RememberedProcesses.h"

namespace korvantis {
namespace {

void put(RememberedProcesses& processes, const ProcessIdentity& identity, std::uint64_t wakeups,
         double checkedAt = 0) {
  processes.update(identity, [&](RememberedProcess& process) {
    process.wakeups = wakeups;
    process.checkedAt = checkedAt;
  });
}

TEST(RememberedProcesses, KeepOnlyWhatBelongsToTheVeryProcess) {
  RememberedProcesses processes;
  put(processes, {5, 100}, 7);
  EXPECT_EQ(processes.find({5, 100})->wakeups, 7U);
  EXPECT_FALSE(processes.find({5, 101}));
  EXPECT_FALSE(processes.find({6, 100}));
}

TEST(RememberedProcesses, ALaterProcessOfTheSameNumberStartsAfresh) {
  RememberedProcesses processes;
  put(processes, {5, 100}, 7);
  processes.markShown({{5, 100}});
  processes.update({5, 200}, [](RememberedProcess&) {});
  EXPECT_EQ(processes.find({5, 200})->wakeups, 0U);
  EXPECT_FALSE(processes.find(5)->wasShown);
}

TEST(RememberedProcesses, AnHeirOfAShownProcessIsHiddenOnce) {
  RememberedProcesses processes;
  const auto isHidden = [&](std::int32_t pid, std::uint64_t start) {
    return processes.show({pid, start}, {.startTicks = start}, nullptr);
  };
  EXPECT_FALSE(isHidden(4, 100)) << "the first of its number";
  put(processes, {5, 100}, 7);
  EXPECT_FALSE(isHidden(5, 200)) << "nobody knew the one before";
  put(processes, {5, 300}, 7);
  put(processes, {5, 400}, 7);
  EXPECT_FALSE(isHidden(5, 300)) << "no longer the one of this number";
  EXPECT_TRUE(isHidden(5, 400));
  EXPECT_FALSE(processes.find(5)->wasShown);
  EXPECT_FALSE(isHidden(5, 400));
  EXPECT_TRUE(processes.find(5)->wasShown);
}

TEST(RememberedProcesses, ASlowPassDoesNotBringADeadProcessBack) {
  RememberedProcesses processes;
  put(processes, {5, 200}, 7);
  put(processes, {5, 100}, 9);
  EXPECT_EQ(processes.find(5)->startTicks, 200U);
  EXPECT_EQ(processes.find(5)->wakeups, 7U);
}

TEST(RememberedProcesses, AreMarkedAsShownByNumberAndStart) {
  RememberedProcesses processes;
  put(processes, {5, 200}, 7);
  processes.markShown({{5, 100}, {6, 1}});
  EXPECT_FALSE(processes.find(5)->wasShown);
  processes.markShown({{5, 200}});
  EXPECT_TRUE(processes.find(5)->wasShown);
  EXPECT_EQ(processes.count(), 1U);
}

TEST(RememberedProcesses, ThoseThatAreGoneAreForgottenButNotThoseThatJustCame) {
  RememberedProcesses processes;
  put(processes, {1, 1}, 0, 10);
  put(processes, {2, 2}, 0, 10);
  put(processes, {3, 3}, 0, 11);
  processes.forgetAllBut({1}, 11);
  EXPECT_TRUE(processes.find(1));
  EXPECT_FALSE(processes.find(2));
  EXPECT_TRUE(processes.find(3));
}

}  // namespace
}  // namespace korvantis
