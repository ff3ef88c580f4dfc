#pragma once

#include <array>
#include <vector>

#include "core/SensorItem.h"

namespace korvantis {

/// A temperature sensor of the controller: its key and how it is shown.
struct SensorKey {
  const char* key;
  const char* name;
  const char* group;
};

/// The sensors that are asked for, in this order.
inline constexpr std::array<SensorKey, 11> sensorKeys{{
    {"Tp01", "CPU Performance Core 1", "CPU"},
    {"Tp05", "CPU Performance Core 2", "CPU"},
    {"Tp09", "CPU Performance Core 3", "CPU"},
    {"Te05", "CPU Efficiency Core 1", "CPU"},
    {"Tf04", "CPU Efficiency Core 2", "CPU"},
    {"TC0P", "CPU Proximity", "CPU"},
    {"Tg05", "GPU Cluster 1", "GPU"},
    {"Tg0D", "GPU Cluster 2", "GPU"},
    {"TH0x", "NVMe SSD Controller", "Storage"},
    {"TB0T", "Battery Die Sensor", "Battery"},
    {"TW0P", "Wi-Fi / Airport Module", "System"},
}};

/// What stands in where no sensor answers, from the loads in percent. Rounded to one decimal.
std::vector<SensorItem> estimatedSensors(double cpuLoadPercent, double gpuLoadPercent);

}  // namespace korvantis
