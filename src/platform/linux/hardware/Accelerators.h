#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/IORegistryCalls.h"
#include "platform/linux/hardware/DeviceHolders.h"
#include "platform/linux/hardware/GraphicsCards.h"
#include "platform/linux/hardware/GraphicsClients.h"
#include "platform/linux/hardware/HardwareSources.h"
#include "platform/linux/hardware/NeuralEngines.h"
#include "platform/linux/hardware/NvidiaCards.h"
#include "platform/linux/hardware/PacedWork.h"

namespace korvantis {

/// Graphics cards and neural processors as services of the registry, with the programs that use
/// them as children. All answers within a quarter of a second come from one reading. Who holds a
/// device is looked up in the background every 15 seconds. Any thread.
class Accelerators {
 public:
  explicit Accelerators(const HardwareSources& sources);

  /// "IOAccelerator": cards whose model is known first.
  std::vector<IORegistryEntry> graphicsServices();

  /// "AppleH11ANEInterface".
  std::vector<IORegistryEntry> neuralServices();

  /// Degrees Celsius of the hottest NVIDIA card; absent when unknown.
  std::optional<double> nvidiaCelsius() { return nvidia.hottestCelsius(); }

 private:
  /// A service with its children, ready to be handed out.
  struct Service {
    PropertyMap properties;
    std::vector<PropertyMap> children;
  };
  using Services = std::vector<std::shared_ptr<const Service>>;

  static std::vector<IORegistryEntry> entriesOf(const Services& services);
  static Services drmServices(const std::vector<GraphicsCard>& cards,
                              const std::vector<GraphicsClient>& clients, double seconds);
  static Services nvidiaServices(const std::vector<NvidiaCard>& cards);
  void walk();
  void refresh();
  void readGraphics(double seconds);
  void readNeural();

  const std::string root;
  const std::function<double()> monotonicSeconds;
  NvidiaCards nvidia;

  /// Held while reading: the second of two ticks takes what the first has just read.
  std::mutex lock;
  GraphicsCards cards;
  GraphicsClients clients;
  NeuralEngines engines;
  std::optional<DeviceHolders> newHolders;
  std::vector<DeviceHolder> neuralHolders;
  std::optional<double> readAt;
  Services graphics;
  Services neural;

  /// The last member: its thread ends before what it uses goes.
  PacedWork walking;
};

}  // namespace korvantis
