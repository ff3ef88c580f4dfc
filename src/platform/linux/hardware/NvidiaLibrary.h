#pragma once

#include <memory>
#include <string>

namespace korvantis {

/// The part that we use of the management library of NVIDIA's driver, by its public
/// documentation. It is opened at run time: most machines have none.
namespace nvml {

using Device = struct Opaque*;
using Result = int;

inline constexpr Result success = 0;
inline constexpr Result notFound = 6;
inline constexpr Result insufficientSize = 7;
inline constexpr unsigned temperatureOfChip = 0;

struct Utilization {
  unsigned gpu;
  unsigned memory;
};

struct Memory {
  unsigned long long total;
  unsigned long long free;
  unsigned long long used;
};

struct ProcessSample {
  unsigned pid;
  unsigned long long timeStamp;
  unsigned smUtil;
  unsigned memUtil;
  unsigned encUtil;
  unsigned decUtil;
};

}  // namespace nvml

/// The library's functions; open and ready for as long as the object lives. One thread at a time.
class NvidiaLibrary {
 public:
  /// Opens and starts it; null when it is missing, lacks a function or does not start.
  static std::unique_ptr<NvidiaLibrary> open(const std::string& name);
  NvidiaLibrary(const NvidiaLibrary&) = delete;
  NvidiaLibrary& operator=(const NvidiaLibrary&) = delete;
  ~NvidiaLibrary();

  nvml::Result (*deviceGetCount)(unsigned* count) = nullptr;
  nvml::Result (*deviceGetHandleByIndex)(unsigned index, nvml::Device* device) = nullptr;
  nvml::Result (*deviceGetName)(nvml::Device device, char* name, unsigned length) = nullptr;
  nvml::Result (*deviceGetUtilizationRates)(nvml::Device device,
                                            nvml::Utilization* rates) = nullptr;
  nvml::Result (*deviceGetMemoryInfo)(nvml::Device device, nvml::Memory* memory) = nullptr;
  nvml::Result (*deviceGetTemperature)(nvml::Device device, unsigned sensor,
                                       unsigned* celsius) = nullptr;
  /// The samples since a time stamp. Without room it tells how much is needed.
  nvml::Result (*deviceGetProcessUtilization)(nvml::Device device, nvml::ProcessSample* samples,
                                              unsigned* count, unsigned long long since) = nullptr;
  /// Null in older releases.
  nvml::Result (*deviceGetNumGpuCores)(nvml::Device device, unsigned* cores) = nullptr;

 private:
  explicit NvidiaLibrary(void* library) : handle(library) {}
  bool load();

  void* handle = nullptr;
  nvml::Result (*start)() = nullptr;
  nvml::Result (*stop)() = nullptr;
  bool started = false;
};

}  // namespace korvantis
