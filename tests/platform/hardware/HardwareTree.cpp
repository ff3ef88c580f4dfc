#include "platform/hardware/HardwareTree.h"

#include <bit>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>
#include <sys/statvfs.h>

namespace korvantis::test {
namespace {

std::string manifestOf(const std::string& machine) {
  const std::filesystem::path path = std::filesystem::path(KORVANTIS_MACHINES) / machine;
  std::ifstream file(path.string() + ".txt");
  std::ostringstream text;
  text << file.rdbuf();
  if (!file || text.str().empty()) throw std::runtime_error("no machine " + machine);
  return text.str();
}

std::string untilMark(std::istream& lines) {
  std::string text;
  for (std::string line; std::getline(lines, line) && line != ">>";) text += line + "\n";
  return text;
}

std::optional<SMCKeyData> exchange(const SMCCalls& calls, std::uint32_t connection,
                                   const SMCKeyData& question) {
  SMCKeyData answer;
  std::size_t size = sizeof answer;
  const int error = calls.IOConnectCallStructMethod(connection, smcExchangeSelector, &question,
                                                    sizeof question, &answer, &size);
  return error == 0 && answer.result == 0 ? std::optional(answer) : std::nullopt;
}

VolumeResourceValues spaceOf(const std::string&) {
  VolumeResourceValues values;
  values.totalCapacity = 1000;
  values.availableCapacityForImportantUsage = 400;
  return values;
}

}  // namespace

HardwareTree::HardwareTree() {
  sources.root = folder.path();
  sources.monotonicSeconds = [this] { return seconds.load(); };
  sources.mountsChanged = [this](int) {
    ++mountQuestions;
    return mountsChanged.exchange(false);
  };
  open();
}

HardwareTree::HardwareTree(const std::string& machine) : HardwareTree() {
  expand(manifestOf(machine));
}

void HardwareTree::expand(const std::string& manifest) {
  std::istringstream lines(manifest);
  std::string prefix;
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line[0] == '#') continue;
    const auto after = [&](const char* mark) { return line.find(mark); };
    if (line.front() == '[') {
      prefix = line.substr(1, line.size() - 2) + "/";
    } else if (line.ends_with(" <<")) {
      write(prefix + line.substr(0, line.size() - 3), untilMark(lines));
    } else if (const auto arrow = after(" -> "); arrow != std::string::npos) {
      link(prefix + line.substr(0, arrow), line.substr(arrow + 4));
    } else if (line.ends_with("/ =")) {
      folder.folderAt(prefix + line.substr(0, line.size() - 3));
    } else if (const auto equals = after(" ="); equals != std::string::npos) {
      const std::string text = line.size() > equals + 3 ? line.substr(equals + 3) + "\n" : "";
      write(prefix + line.substr(0, equals), text);
    } else {
      throw std::runtime_error("not understood: " + line);
    }
  }
}

void HardwareTree::open() {
  const auto hardware = std::make_shared<LinuxHardware>(sources);
  calls = PlatformCalls();
  calls.volumes.resourceValues = spaceOf;
  calls.ioRegistry.matchingServices = [](const std::string&) {
    return std::optional<std::vector<IORegistryEntry>>();
  };
  addHardwareCalls(calls, sources, hardware);
  controller = controllerCallsOf(hardware);
}

std::optional<double> HardwareTree::key(const std::string& name) const {
  const std::uint32_t service = controller.IOServiceGetMatchingService("AppleSMC");
  std::uint32_t connection = 0;
  if (controller.IOServiceOpen(service, 0, &connection) != 0) return std::nullopt;
  SMCKeyData question;
  question.key = smcFourCharacterCode(name);
  question.data8 = smcKeyInformationCommand;
  const auto information = exchange(controller, connection, question);
  if (!information) return std::nullopt;
  question.dataSize = information->dataSize;
  question.data8 = smcReadKeyCommand;
  const auto value = exchange(controller, connection, question);
  if (!value) return std::nullopt;
  if (information->dataType == smcFourCharacterCode("ui8 ") && information->dataSize == 1) {
    return value->bytes[0];
  }
  EXPECT_EQ(information->dataType, smcFourCharacterCode("flt "));
  EXPECT_EQ(information->dataSize, 4U);
  std::uint32_t bits = 0;
  for (unsigned index = 0; index < 4; ++index)
    bits |= std::uint32_t{value->bytes[index]} << 8 * index;
  return std::bit_cast<float>(bits);
}

std::map<std::string, double> HardwareTree::keys() const {
  std::map<std::string, double> found;
  for (const char* const name :
       {"Tp01", "Tp05", "Tp09", "Te05", "Tf04", "TC0P", "Tg05", "Tg0D", "TH0x", "TB0T", "TW0P",
        "PSTR", "FNum", "F0Ac", "F0Mn", "F0Mx", "F1Ac", "F1Mn", "F1Mx", "F2Ac", "F3Ac"}) {
    if (const auto value = key(name)) found[name] = *value;
  }
  return found;
}

std::vector<PropertyMap> HardwareTree::services(const std::string& className) const {
  std::vector<PropertyMap> all;
  const auto found = calls.ioRegistry.matchingServices(className);
  for (const auto& service : found.value_or(std::vector<IORegistryEntry>())) {
    all.push_back(service.createCFProperties().value_or(PropertyMap()));
  }
  return all;
}

std::map<std::string, std::int64_t> HardwareTree::graphicsClients() const {
  std::map<std::string, std::int64_t> clients;
  const auto found = calls.ioRegistry.matchingServices("IOAccelerator");
  for (const auto& service : found.value_or(std::vector<IORegistryEntry>())) {
    for (const IORegistryEntry& child : service.children()) {
      const PropertyMap properties = child.createCFProperties().value();
      const auto creator = textProperty(properties, "IOUserClientCreator").value();
      const auto usages = std::get<PropertyValue::List>(properties.at("AppUsage").value);
      const auto usage = std::get<PropertyMap>(usages.at(0).value);
      clients[creator] += std::get<std::int64_t>(usage.at("accumulatedGPUTime").value);
    }
  }
  return clients;
}

}  // namespace korvantis::test
