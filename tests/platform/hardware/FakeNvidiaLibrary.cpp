// Stands for the management library of NVIDIA's driver: two cards, of which the second one tells
// next to nothing. The tests move its figures through the functions at the end.
#include <cstring>

namespace {

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

constexpr int success = 0;
constexpr int notSupported = 3;
constexpr int notFound = 6;
constexpr int insufficientSize = 7;
constexpr int unknown = 999;

int starts = 0;
int stops = 0;
bool fails = false;
unsigned long long stamp = 0;
unsigned share = 0;
char cards[2];

bool isFirst(const void* device) {
  return device == cards;
}

}  // namespace

extern "C" {

int nvmlInit_v2() {
  ++starts;
  return success;
}

int nvmlShutdown() {
  ++stops;
  return success;
}

int nvmlDeviceGetCount_v2(unsigned* count) {
  *count = 2;
  return fails ? unknown : success;
}

int nvmlDeviceGetHandleByIndex_v2(unsigned index, void** device) {
  *device = cards + index;
  return success;
}

int nvmlDeviceGetName(void* device, char* name, unsigned length) {
  if (!isFirst(device)) return notSupported;
  std::strncpy(name, "NVIDIA GeForce RTX 3070", length);
  return success;
}

int nvmlDeviceGetNumGpuCores(void* device, unsigned* cores) {
  if (!isFirst(device)) return notSupported;
  *cores = 5888;
  return success;
}

int nvmlDeviceGetUtilizationRates(void* device, Utilization* rates) {
  if (!isFirst(device)) return notSupported;
  *rates = {64, 20};
  return success;
}

int nvmlDeviceGetMemoryInfo(void* device, Memory* memory) {
  *memory = {8'589'934'592, 5'368'709'120, isFirst(device) ? 3'221'225'472ULL : 1'000ULL};
  return success;
}

int nvmlDeviceGetTemperature(void* device, int sensor, unsigned* celsius) {
  if (!isFirst(device) || sensor != 0) return notSupported;
  *celsius = 71;
  return success;
}

int nvmlDeviceGetProcessUtilization(void* device, ProcessSample* samples, unsigned* count,
                                    unsigned long long since) {
  if (!isFirst(device) || stamp == 0) return notFound;
  if (samples == nullptr || *count < 4) {
    *count = 4;
    return insufficientSize;
  }
  // The buffer of the driver: an old sample, two of one program, one of another.
  samples[0] = {812, since, 100, 0, 0, 0};
  samples[1] = {812, stamp - 1, share, 0, 0, 0};
  samples[2] = {812, stamp, share + 20, 0, 0, 0};
  samples[3] = {813, stamp, 5, 0, 0, 0};
  *count = 4;
  return success;
}

void fakeSamples(unsigned long long newStamp, unsigned newShare) {
  stamp = newStamp;
  share = newShare;
}

void fakeFailure(int on) {
  fails = on != 0;
}

int fakeStarts() {
  return starts;
}

int fakeStops() {
  return stops;
}
}
