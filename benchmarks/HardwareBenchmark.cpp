// What sensors, fans, accelerators, battery, blockers, Bluetooth and volumes cost a tick, over a
// tree of files with 20 sensors, 4 fans, 2 accelerators with 30 clients, and 10 mounts. Files of
// such a tree are cheaper to read than those of real drivers, so this is what our own work costs
// with the system calls that it takes.

#include <atomic>
#include <benchmark/benchmark.h>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/MachineCalls.h"
#include "platform/linux/hardware/HardwareCalls.h"
#include "platform/linux/hardware/MountList.h"
#include "samplers/AppleSMCReader.h"
#include "samplers/SystemHardwareSampler.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::TemporaryFolder;

const std::string hwmon = "sys/class/hwmon/hwmon";
const std::string cpu = "sys/devices/system/cpu/cpu";

void writeSensor(const TemporaryFolder& tree, int chip, int number, const std::string& label) {
  const std::string sensor = hwmon + std::to_string(chip) + "/temp" + std::to_string(number);
  tree.write(sensor + "_label", label + "\n");
  tree.write(sensor + "_input", std::to_string(40000 + 700 * number) + "\n");
}

void writeSensors(const TemporaryFolder& tree) {
  tree.write(hwmon + "0/name", "coretemp\n");
  writeSensor(tree, 0, 1, "Package id 0");
  for (int core = 0; core < 14; ++core)
    writeSensor(tree, 0, core + 2, "Core " + std::to_string(core));
  tree.write("sys/devices/cpu_atom/cpus", "8-13\n");
  for (int processor = 0; processor < 14; ++processor) {
    const std::string folder = cpu + std::to_string(processor);
    tree.write(folder + "/topology/core_id", std::to_string(processor) + "\n");
    tree.write(folder + "/topology/physical_package_id", "0\n");
    tree.write(folder + "/thermal_throttle/core_throttle_count", "0\n");
    tree.write(folder + "/thermal_throttle/package_throttle_count", "0\n");
  }
  tree.write(hwmon + "1/name", "nvme\n");
  writeSensor(tree, 1, 1, "Composite");
  tree.write(hwmon + "2/name", "iwlwifi_1\n");
  writeSensor(tree, 2, 1, "");
  tree.write(hwmon + "3/name", "amdgpu\n");
  writeSensor(tree, 3, 1, "edge");
  writeSensor(tree, 3, 2, "junction");
  tree.write(hwmon + "3/device/power/runtime_status", "active\n");
  tree.write(hwmon + "4/name", "thinkpad\n");
  for (const char* const fan : {"1", "2", "3", "4"}) {
    tree.write(hwmon + "4/fan" + fan + "_input", "2100\n");
    tree.write(hwmon + "4/fan" + fan + "_min", "1200\n");
    tree.write(hwmon + "4/fan" + fan + "_max", "5800\n");
  }
}

void writePowerAndHeat(const TemporaryFolder& tree) {
  tree.write("sys/class/power_supply/AC/uevent",
             "POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=0\n");
  tree.write("sys/class/power_supply/BAT0/uevent",
             "POWER_SUPPLY_NAME=BAT0\nPOWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Discharging\n"
             "POWER_SUPPLY_PRESENT=1\nPOWER_SUPPLY_CYCLE_COUNT=212\n"
             "POWER_SUPPLY_VOLTAGE_NOW=16000000\nPOWER_SUPPLY_POWER_NOW=20000000\n"
             "POWER_SUPPLY_ENERGY_FULL_DESIGN=57000000\nPOWER_SUPPLY_ENERGY_FULL=50000000\n"
             "POWER_SUPPLY_ENERGY_NOW=30000000\nPOWER_SUPPLY_TEMP=312\n");
  for (int zone = 0; zone < 5; ++zone) {
    const std::string folder = "sys/class/thermal/thermal_zone" + std::to_string(zone);
    tree.write(folder + "/type", "zone\n");
    tree.write(folder + "/temp", "45000\n");
    tree.write(folder + "/trip_point_0_type", "critical\n");
    tree.write(folder + "/trip_point_0_temp", "105000\n");
  }
  for (int cooler = 0; cooler < 8; ++cooler) {
    const std::string folder = "sys/class/thermal/cooling_device" + std::to_string(cooler);
    tree.write(folder + "/type", "Processor\n");
    tree.write(folder + "/cur_state", "0\n");
  }
}

void writeAccelerators(const TemporaryFolder& tree) {
  const std::string discrete = "sys/devices/pci0/0000:03:00.0/";
  tree.link("sys/class/drm/card0/device", "../../../devices/pci0/0000:03:00.0");
  tree.link(discrete + "driver", "../../../bus/pci/drivers/amdgpu");
  tree.write(discrete + "gpu_busy_percent", "40\n");
  tree.write(discrete + "mem_info_vram_used", "2147483648\n");
  tree.write(discrete + "power/runtime_status", "active\n");
  tree.link("sys/class/drm/card1/device", "../../../devices/pci0/0000:00:02.0");
  tree.link("sys/devices/pci0/0000:00:02.0/driver", "../../../bus/pci/drivers/i915");
  tree.write("sys/devices/pci0/0000:00:02.0/power/runtime_status", "active\n");
  tree.write("dev/dri/card0", "");
  for (int client = 0; client < 30; ++client) {
    const std::string folder = "proc/" + std::to_string(1000 + client) + "/";
    tree.write(folder + "comm", "program" + std::to_string(client) + "\n");
    tree.link(folder + "fd/9", "/dev/dri/renderD128");
    tree.write(folder + "fdinfo/9",
               std::string("pos:\t0\nflags:\t02100002\nmnt_id:\t27\nino:\t520\ndrm-driver:\t") +
                   (client % 2 == 0 ? "amdgpu\ndrm-pdev:\t0000:03:00.0"
                                    : "i915\ndrm-pdev:\t0000:00:02.0") +
                   "\ndrm-client-id:\t" + std::to_string(client) +
                   "\ndrm-memory-vram:\t20480 KiB\ndrm-memory-gtt: \t4096 KiB\n"
                   "drm-memory-cpu: \t0 KiB\ndrm-engine-gfx:\t912345678901 ns\n"
                   "drm-engine-compute:\t0 ns\ndrm-engine-dec:\t12345678 ns\n"
                   "drm-engine-enc:\t0 ns\n");
  }
}

void writeMounts(const TemporaryFolder& tree) {
  std::string list = "20 1 8:1 / / rw shared:1 - ext4 /dev/sda1 rw\n";
  for (int volume = 2; volume <= 10; ++volume) {
    const std::string number = std::to_string(volume);
    list += "2" + number + " 20 8:" + number + " / /mnt/volume" + number +
            " rw shared:1 - ext4 /dev/sda" + number + " rw\n";
    tree.folderAt("mnt/volume" + number);
  }
  tree.write("proc/self/mountinfo", list);
}

/// The tree, and the operations over it.
class Machine {
 public:
  explicit Machine(bool inBackground) {
    writeSensors(tree);
    writePowerAndHeat(tree);
    writeAccelerators(tree);
    writeMounts(tree);
    MachineSources machine;
    machine.root = tree.path();
    machine.monotonicSeconds = [this] { return seconds.load(); };
    machine.dumpLinks = [] { return std::nullopt; };
    addMachineCalls(calls, machine);
    HardwareSources sources;
    sources.root = tree.path();
    sources.monotonicSeconds = machine.monotonicSeconds;
    sources.mountsChanged = [](int) { return false; };
    sources.inBackground = inBackground;
    sources.systemBus = inBackground ? "unix:path=" + tree.path("nobody") : "";
    hardware = std::make_shared<LinuxHardware>(sources);
    addHardwareCalls(calls, sources, hardware);
    controller.emplace(controllerCallsOf(hardware), calls.processInfo.thermalState);
    sampler.emplace(calls, *controller);
  }

  /// One tick's share; `interval` seconds after the last one.
  void tick(double interval) {
    seconds = seconds + interval;
    benchmark::DoNotOptimize(sampler->readPerPIDGPUTime());
    for (const char* const className : {"IOAccelerator", "AppleH11ANEInterface"}) {
      const auto services = calls.ioRegistry.matchingServices(className);
      for (const IORegistryEntry& service : *services) {
        benchmark::DoNotOptimize(service.createCFProperties());
      }
    }
    benchmark::DoNotOptimize(controller->sampleThermal(20, 10));
    benchmark::DoNotOptimize(sampler->sampleBattery());
    benchmark::DoNotOptimize(sampler->sampleSleepBlockers());
    benchmark::DoNotOptimize(sampler->sampleBluetoothPeripherals());
    benchmark::DoNotOptimize(sampler->sampleMountedVolumes());
  }

 private:
  TemporaryFolder tree;
  std::atomic<double> seconds = 1000;
  PlatformCalls calls;
  std::shared_ptr<LinuxHardware> hardware;
  std::optional<AppleSMCReader> controller;
  std::optional<SystemHardwareSampler> sampler;
};

/// The ticks of a running program: every eighth one walks descriptors in the background, every
/// fifteenth looks for new devices.
void hardwareTick(benchmark::State& state) {
  Machine machine(true);
  machine.tick(2);
  machine.tick(2);
  for (auto _ : state) machine.tick(2);
}
BENCHMARK(hardwareTick)->Unit(benchmark::kMicrosecond);

/// The same with all that otherwise happens in the background done by the tick itself.
void hardwareTickWithoutThreads(benchmark::State& state) {
  Machine machine(false);
  machine.tick(2);
  for (auto _ : state) machine.tick(2);
}
BENCHMARK(hardwareTickWithoutThreads)->Unit(benchmark::kMicrosecond);

/// What reading the list of mounts anew takes of a tick, when it changed on a machine with ten
/// thousand of them.
void tenThousandMountsUnderstood(benchmark::State& state) {
  std::string list = "20 1 8:1 / / rw shared:1 - ext4 /dev/sda1 rw\n";
  for (int mount = 0; mount < 10'000; ++mount) {
    const std::string number = std::to_string(mount);
    list += number + " 20 0:" + number + " / /var/lib/containers/storage/overlay/" + number +
            "/merged rw,relatime shared:" + number + " - overlay overlay rw,lowerdir=x\n";
  }
  for (auto _ : state) benchmark::DoNotOptimize(parseMountList(list));
}
BENCHMARK(tenThousandMountsUnderstood)->Unit(benchmark::kMicrosecond);

/// The worst tick: everything is looked for anew.
void hardwareTickThatLooksForDevices(benchmark::State& state) {
  Machine machine(true);
  machine.tick(2);
  for (auto _ : state) machine.tick(31);
}
BENCHMARK(hardwareTickThatLooksForDevices)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace korvantis
