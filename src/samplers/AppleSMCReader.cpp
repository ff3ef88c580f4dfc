#include "samplers/AppleSMCReader.h"

namespace korvantis {

AppleSMCReader& AppleSMCReader::shared() {
  static AppleSMCReader& reader = *new AppleSMCReader;
  return reader;
}

ThermalSample AppleSMCReader::sampleThermal(double /*cpuLoadPercent*/, double /*gpuLoadPercent*/) {
  return {};
}

bool AppleSMCReader::setFanTarget(std::int64_t /*fanID*/, std::optional<double> /*rpm*/) {
  return false;
}

}  // namespace korvantis
