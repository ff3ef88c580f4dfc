#include "platform/linux/MachineInterfaces.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <unistd.h>
#include <utility>

#include "platform/DarwinTypes.h"
#include "platform/linux/FileText.h"
#include "platform/linux/NetworkDeviceTable.h"
#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

/// The low bits (up, broadcast, debug, loopback, point to point) mean the same on both systems.
constexpr std::uint32_t sharedFlags = 0x1F;

if_msghdr2 interfaceMessage(const LinkCounters& link) {
  if_msghdr2 message{};
  message.ifm_msglen = sizeof message;
  message.ifm_type = RTM_IFINFO2;
  message.ifm_flags = static_cast<std::int32_t>(link.flags & sharedFlags);
  message.ifm_index = static_cast<std::uint16_t>(link.index);
  message.ifm_data.ifi_ibytes = link.receivedBytes;
  message.ifm_data.ifi_obytes = link.sentBytes;
  return message;
}

RememberedNames::Look lookForDevices(const std::string& networkFolder) {
  return [networkFolder](const std::vector<std::string>& names) {
    std::vector<std::string> devices;
    std::copy_if(names.begin(), names.end(), std::back_inserter(devices),
                 [&](const std::string& name) {
                   const std::string device = networkFolder + "/" + name + "/device";
                   return ::access(device.c_str(), F_OK) == 0;
                 });
    return devices.empty() ? names : devices;
  };
}

/// The flags that the interface's folder tells; without it, what its name and its being there
/// say.
std::uint32_t flagsOf(const std::string& networkFolder, const std::string& name) {
  std::string text = readFileText(AT_FDCWD, networkFolder + "/" + name + "/flags").text;
  std::string_view words = text;
  std::string_view word = takeWord(words);
  if (word.starts_with("0x")) word.remove_prefix(2);
  const std::uint32_t usual = DARWIN_IFF_UP | (name == "lo" ? DARWIN_IFF_LOOPBACK : 0);
  return static_cast<std::uint32_t>(unsignedNumber(word, 16).value_or(usual));
}

}  // namespace

std::vector<std::byte> interfaceMessages(const std::vector<LinkCounters>& links) {
  std::vector<std::byte> bytes(links.size() * sizeof(if_msghdr2));
  std::byte* next = bytes.data();
  for (const LinkCounters& link : links) {
    const if_msghdr2 message = interfaceMessage(link);
    std::memcpy(next, &message, sizeof message);
    next += sizeof message;
  }
  return bytes;
}

MachineInterfaces::MachineInterfaces(MachineSources machineSources)
    : sources(std::move(machineSources)),
      deviceNames(sources.monotonicSeconds, lookForDevices(sources.root + "/sys/class/net")) {}

int MachineInterfaces::list(void* oldValue, std::size_t* oldSize) {
  if (oldValue == nullptr) {
    auto messages = readMessages();
    if (!messages) return -1;
    *oldSize = messages->size();
    const std::scoped_lock guard(lock);
    countedMessages[std::this_thread::get_id()] = std::move(*messages);
    return 0;
  }
  auto messages = takeCounted();
  if (!messages) messages = readMessages();
  if (!messages || messages->size() > *oldSize) return -1;
  std::memcpy(oldValue, messages->data(), messages->size());
  *oldSize = messages->size();
  return 0;
}

std::optional<std::vector<std::byte>> MachineInterfaces::takeCounted() {
  const std::scoped_lock guard(lock);
  auto counted = countedMessages.extract(std::this_thread::get_id());
  return counted ? std::optional(std::move(counted.mapped())) : std::nullopt;
}

std::optional<std::vector<std::byte>> MachineInterfaces::readMessages() const {
  auto links = readLinks();
  if (!links) return std::nullopt;
  std::vector<std::string> names;
  names.reserve(links->size());
  for (const LinkCounters& link : *links) names.push_back(link.name);
  const std::vector<std::string> devices = deviceNames.about(names);
  std::erase_if(*links, [&](const LinkCounters& link) {
    return std::find(devices.begin(), devices.end(), link.name) == devices.end();
  });
  return interfaceMessages(*links);
}

std::optional<std::vector<LinkCounters>> MachineInterfaces::readLinks() const {
  auto links = sources.dumpLinks();
  return links ? links : readTable();
}

std::optional<std::vector<LinkCounters>> MachineInterfaces::readTable() const {
  const FileText table = readFileText(AT_FDCWD, sources.root + "/proc/net/dev");
  if (!table) return std::nullopt;
  auto links = parseNetworkDeviceTable(table.text);
  for (LinkCounters& link : links) {
    link.flags = flagsOf(sources.root + "/sys/class/net", link.name);
  }
  return links;
}

}  // namespace korvantis
