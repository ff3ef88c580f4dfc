// What a quiet tick asks of the heap. A program of its own, since it counts every allocation.
#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <vector>

#include "analysis/InsightFixtures.h"

namespace {

thread_local std::size_t allocations = 0;

void* countedAllocation(std::size_t size) noexcept {
  ++allocations;
  return std::malloc(size == 0 ? 1 : size);
}

void* countedAllocationOrThrow(std::size_t size) {
  if (void* const memory = countedAllocation(size)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
  return countedAllocationOrThrow(size);
}
void* operator new[](std::size_t size) {
  return countedAllocationOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return countedAllocation(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return countedAllocation(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
  std::free(memory);
}

namespace korvantis {
namespace {

constexpr double start = 1'700'000'000;

/// Groups of every kind with names too long for a text's own room, some not in plain letters.
std::vector<AppGroup> quietGroups(int count) {
  std::vector<AppGroup> groups;
  for (int number = 0; number < count; ++number) {
    groups.push_back(appNamed("An application with a long name and a number: " +
                              std::to_string(number) + (number % 4 == 0 ? " Größe" : "")));
    groups.back().kind = number % 5 == 0 ? AppGroupKind::system : AppGroupKind::app;
    groups.back().cpuPercent = 149;
    groups.back().memoryBytes = 3 * GiB;
  }
  return groups;
}

/// Limits that no group is near.
std::vector<AppLimit> farLimits() {
  std::vector<AppLimit> limits(2);
  limits[0].appID = "com.example.absent";
  limits[0].appName = "An application that is not running, größer";
  limits[1].appName = "AN APPLICATION WITH A LONG NAME AND A NUMBER: 1";
  limits[1].limit = 5000;
  return limits;
}

/// A machine of so many groups, with limits and mutes, and how much heap one more tick takes.
class QuietMachine {
 public:
  explicit QuietMachine(int groupCount) : groups(quietGroups(groupCount)), limits(farLimits()) {
    mutes = {mute(groups.front()), mute(groups.front(), start - 1)};
    // The first ticks take the baselines and tell of the quiet start.
    tickAllocations();
    tickAllocations();
  }

  std::size_t tickAllocations() {
    now += 2;
    const std::size_t before = allocations;
    const auto evaluation = engine.evaluate(system, groups, {}, limits, mutes, 82);
    const std::size_t taken = allocations - before;
    told = evaluation.newInsights.size();
    return taken;
  }

  double now = start;
  SystemSample system;
  std::vector<AppGroup> groups;
  std::vector<AppLimit> limits;
  std::vector<MutedApp> mutes;
  std::size_t told = 0;
  InsightEngine engine{Clock{[this] { return now; }}, countingChance()};
};

TEST(InsightEngineAllocation, TheCounterSeesTheHeap) {
  const std::size_t before = allocations;
  std::vector<std::string> texts(1, std::string(100, 'x'));
  EXPECT_GE(allocations - before, 2U);
  texts[0][0] = 'y';
}

TEST(InsightEngineAllocation, AQuietGroupTakesNothingFromTheHeap) {
  QuietMachine few(2);
  QuietMachine many(400);
  EXPECT_EQ(many.tickAllocations(), few.tickAllocations());
  EXPECT_EQ(many.told, 1U);
}

TEST(InsightEngineAllocation, AnAppInABusySpellThatIsNotDueYetTakesNothingEither) {
  QuietMachine few(2);
  QuietMachine many(400);
  for (AppGroup& group : many.groups) group.cpuPercent = 200;
  many.tickAllocations();
  EXPECT_EQ(many.tickAllocations(), few.tickAllocations());
}

TEST(InsightEngineAllocation, WithoutFindingsAndMutesATickTakesNothingAtAll) {
  InsightEngine engine(Clock{[] { return start; }}, countingChance());
  const SystemSample system;
  const std::vector<AppLimit> limits = farLimits();
  const std::size_t before = allocations;
  const auto evaluation = engine.evaluate(system, {}, {}, limits, {}, 82);
  EXPECT_EQ(allocations, before);
  EXPECT_TRUE(evaluation.newInsights.empty());
}

TEST(InsightEngineAllocation, AFindingDoesTakeSome) {
  QuietMachine machine(2);
  const std::size_t quiet = machine.tickAllocations();
  machine.groups[1].cpuPercent = 300;
  EXPECT_GT(machine.tickAllocations(), quiet);
  EXPECT_EQ(machine.told, 2U);
}

}  // namespace
}  // namespace korvantis
