#include "samplers/ThermalSensors.h"

#include "core/Rounding.h"

namespace korvantis {

std::vector<SensorItem> estimatedSensors(double cpuLoadPercent, double gpuLoadPercent) {
  const double cpuBase = cpuLoadPercent * 0.28 + 41.5;
  const double gpuBase = gpuLoadPercent * 0.24 + 39.0;
  std::vector<SensorItem> sensors{{"CPU Performance Core 1", "CPU", cpuBase + 1.4},
                                  {"CPU Performance Core 2", "CPU", cpuBase + 0.6},
                                  {"CPU Efficiency Core 1", "CPU", cpuBase - 4.2},
                                  {"GPU Shader Cluster", "GPU", gpuBase},
                                  {"ANE Matrix Controller", "System", cpuBase - 3.0},
                                  {"NVMe Storage Controller", "Storage", 36.8},
                                  {"Battery Pack Sensor", "Battery", 31.4}};
  for (SensorItem& sensor : sensors) sensor.celsius = roundedToOneDecimal(sensor.celsius);
  return sensors;
}

}  // namespace korvantis
