#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "samplers/LibProcSamplerFixture.h"

namespace korvantis {
namespace {

using test::argumentBlock;
using test::LibProcSamplerFixture;
using test::ProcessOperation;
using test::ScriptedProcess;

constexpr std::uint64_t second = 1'000'000'000;

class LibProcSamplerConcurrent : public LibProcSamplerFixture {
 protected:
  void SetUp() override {
    for (std::int32_t pid = 1; pid <= 40; ++pid) {
      processes.add({.pid = pid,
                     .name = "tool",
                     .userTime = second,
                     .path = "/bin/tool",
                     .workingDirectory = "/home/me",
                     .descriptors = {{.port = static_cast<std::uint16_t>(3000 + pid)}},
                     .argumentBlock = argumentBlock(1, "/bin/tool", {"tool"})});
    }
  }
};

TEST_F(LibProcSamplerConcurrent, TwoOverlappingCallsAreSafeAndEachComplete) {
  LibProcSampler& shared = sampler();
  std::atomic<int> incomplete = 0;
  const auto sampleOften = [&] {
    for (int round = 0; round < 40; ++round) {
      processes.advance(1.7);
      const auto records = shared.sampleProcesses({{3, second}});
      if (records.size() != 40 || records[39].executablePath != "/bin/tool") ++incomplete;
    }
  };
  std::thread other(sampleOften);
  sampleOften();
  other.join();
  EXPECT_EQ(incomplete, 0);
}

TEST_F(LibProcSamplerConcurrent, TheLockIsNeverHeldAcrossAPlatformCall) {
  // Each operation runs a whole sampling of its own, once; a lock held meanwhile would hang.
  LibProcSampler& shared = sampler();
  for (const ProcessOperation operation :
       {ProcessOperation::listAllPIDs, ProcessOperation::basicInfo, ProcessOperation::resourceUsage,
        ProcessOperation::path, ProcessOperation::workingDirectory, ProcessOperation::descriptors,
        ProcessOperation::socket, ProcessOperation::arguments, ProcessOperation::responsiblePID,
        ProcessOperation::ownUID}) {
    processes.advance(30);
    int nested = 0;
    processes.setHook([&](ProcessOperation called, std::int32_t) {
      if (called != operation || nested > 0) return;
      ++nested;
      EXPECT_EQ(shared.sampleProcesses({}).size(), 40U);
    });
    EXPECT_EQ(shared.sampleProcesses({}).size(), 40U);
    EXPECT_EQ(nested, 1) << static_cast<int>(operation);
  }
}

TEST_F(LibProcSamplerConcurrent, AnOverlappedCallWorksFromItsOwnCopies) {
  LibProcSampler& shared = sampler();
  shared.sampleProcesses({});
  processes.advance(1);
  processes.change(40, [](ScriptedProcess& process) { process.userTime += second; });

  // While the outer call looks at the first process, another call two seconds later sees them all
  // and leaves its counters; the outer one must still measure from the first call.
  bool ran = false;
  processes.setHook([&](ProcessOperation called, std::int32_t pid) {
    if (ran || called != ProcessOperation::basicInfo || pid != 1) return;
    ran = true;
    processes.advance(2);
    shared.sampleProcesses({});
  });
  const auto outer = shared.sampleProcesses({});
  ASSERT_TRUE(ran);
  EXPECT_DOUBLE_EQ(outer[39].cpuPercent, 100) << "one second of CPU in the one second before it";
}

TEST_F(LibProcSamplerConcurrent, TheCallThatEndsLastLeavesItsCounters) {
  LibProcSampler& shared = sampler();
  shared.sampleProcesses({});
  processes.advance(1);
  bool ran = false;
  processes.setHook([&](ProcessOperation called, std::int32_t pid) {
    if (ran || called != ProcessOperation::basicInfo || pid != 1) return;
    ran = true;
    processes.advance(2);
    shared.sampleProcesses({});
  });
  shared.sampleProcesses({});
  processes.setHook({});
  processes.advance(1);
  processes.change(1, [](ScriptedProcess& process) { process.userTime += 3 * second; });
  // The outer call began 3 s ago and ended last: the time counts from its beginning.
  EXPECT_DOUBLE_EQ(shared.sampleProcesses({})[0].cpuPercent, 100);
}

TEST_F(LibProcSamplerConcurrent, OfTwoOverlappingCallsOnlyTheFirstScans) {
  LibProcSampler& shared = sampler();
  bool ran = false;
  processes.setHook([&](ProcessOperation called, std::int32_t) {
    if (ran || called != ProcessOperation::basicInfo) return;
    ran = true;
    shared.sampleProcesses({});
  });
  shared.sampleProcesses({});
  EXPECT_EQ(processes.count(ProcessOperation::descriptors), 40);
}

}  // namespace
}  // namespace korvantis
