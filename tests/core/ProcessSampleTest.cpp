#include <gtest/gtest.h>

#include "core/ProcessSample.h"

namespace korvantis {
namespace {

using Ports = std::vector<std::uint16_t>;

ProcessSample listeningOn(const Ports& ports) {
  ProcessSample process;
  process.listeningPorts = ports;
  return process;
}

TEST(ProcessSample, ListeningOn5173And49152HasBothPortsButOnly5173AsAService) {
  const ProcessSample process = listeningOn({5173, 49152});
  EXPECT_EQ(process.listeningPorts, (Ports{5173, 49152}));
  EXPECT_EQ(process.servicePorts(), (Ports{5173}));
}

TEST(ProcessSample, ServicePortsEndBelow49152AndKeepTheirOrder) {
  const ProcessSample process = listeningOn({65535, 49151, 49152, 80, 49153, 1});
  EXPECT_EQ(process.servicePorts(), (Ports{49151, 80, 1}));
}

TEST(ProcessSample, WithoutPortsHasNoServices) {
  EXPECT_TRUE(ProcessSample().servicePorts().empty());
}

}  // namespace
}  // namespace korvantis
