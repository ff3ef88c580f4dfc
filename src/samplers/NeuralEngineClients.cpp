#include "samplers/NeuralEngineClients.h"

#include <array>
#include <utility>

#include "samplers/ClientCreator.h"

namespace korvantis {
namespace {

constexpr std::array neuralEngineClasses{"AppleH11ANEInterface", "ANEDriverRoot"};

void addClients(std::vector<std::string>& names, const IORegistryEntry& service) {
  for (const IORegistryEntry& child : service.children()) {
    const auto client = child.createCFProperties();
    if (!client) continue;
    const auto creator = textProperty(*client, "IOUserClientCreator");
    if (!creator) continue;
    if (auto name = nameOfCreator(*creator)) names.push_back(std::move(*name));
  }
}

}  // namespace

std::vector<std::string> readNeuralEngineClients(const IORegistryCalls& registry) {
  std::vector<std::string> names;
  for (const char* className : neuralEngineClasses) {
    const auto services = registry.matchingServices(className);
    if (!services) continue;
    for (const IORegistryEntry& service : *services) addClients(names, service);
  }
  return names;
}

}  // namespace korvantis
