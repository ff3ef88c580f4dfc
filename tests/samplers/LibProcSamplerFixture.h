#pragma once

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "samplers/LibProcSampler.h"
#include "support/ScriptedProcesses.h"

namespace korvantis::test {

/// A process sampler over a scripted table. Every test ends with a look at how it asked.
class LibProcSamplerFixture : public testing::Test {
 protected:
  /// The sampler of this test, made at its first use.
  LibProcSampler& sampler() {
    if (!made) made.emplace(processes.platform());
    return *made;
  }

  std::vector<ProcessSample> sample(const GPUTimeByPID& gpuTimes = {}) {
    return sampler().sampleProcesses(gpuTimes);
  }

  /// The one record of a table of one process.
  ProcessSample sampleOne(const GPUTimeByPID& gpuTimes = {}) {
    const std::vector<ProcessSample> samples = sample(gpuTimes);
    EXPECT_EQ(samples.size(), 1U);
    return samples.empty() ? ProcessSample{} : samples.front();
  }

  void TearDown() override { EXPECT_EQ(processes.complaints(), std::vector<std::string>{}); }

  ScriptedProcesses processes;

 private:
  std::optional<LibProcSampler> made;
};

}  // namespace korvantis::test
