#include "platform/linux/hardware/NvidiaLibrary.h"

#include <dlfcn.h>

namespace korvantis {
namespace {

template <typename Function>
bool find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(::dlsym(library, name));
  return function != nullptr;
}

}  // namespace

std::unique_ptr<NvidiaLibrary> NvidiaLibrary::open(const std::string& name) {
  void* const handle = ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) return nullptr;
  std::unique_ptr<NvidiaLibrary> library(new NvidiaLibrary(handle));
  if (!library->load() || library->start() != nvml::success) return nullptr;
  library->started = true;
  return library;
}

bool NvidiaLibrary::load() {
  find(handle, "nvmlDeviceGetNumGpuCores", deviceGetNumGpuCores);
  return find(handle, "nvmlInit_v2", start) && find(handle, "nvmlShutdown", stop) &&
         find(handle, "nvmlDeviceGetCount_v2", deviceGetCount) &&
         find(handle, "nvmlDeviceGetHandleByIndex_v2", deviceGetHandleByIndex) &&
         find(handle, "nvmlDeviceGetName", deviceGetName) &&
         find(handle, "nvmlDeviceGetUtilizationRates", deviceGetUtilizationRates) &&
         find(handle, "nvmlDeviceGetMemoryInfo", deviceGetMemoryInfo) &&
         find(handle, "nvmlDeviceGetTemperature", deviceGetTemperature) &&
         find(handle, "nvmlDeviceGetProcessUtilization", deviceGetProcessUtilization);
}

NvidiaLibrary::~NvidiaLibrary() {
  if (started) stop();
  ::dlclose(handle);
}

}  // namespace korvantis
