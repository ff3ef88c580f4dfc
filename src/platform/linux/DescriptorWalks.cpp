#include "platform/linux/DescriptorWalks.h"

#include <utility>

#include "platform/linux/ListeningSockets.h"

namespace korvantis {
namespace {

std::shared_ptr<DescriptorWalk> walkNow(const ProcessReading& reading, std::size_t limit) {
  const auto numbers = reading.descriptors(limit);
  if (!numbers) return nullptr;
  auto walk = std::make_shared<DescriptorWalk>();
  walk->limit = limit;
  walk->descriptors.reserve(numbers->size());
  for (const std::int32_t number : *numbers) {
    const auto link = reading.descriptorLink(number);
    if (!link) continue;
    const auto inode = socketInode(*link);
    const int type = inode ? PROX_FDTYPE_SOCKET : PROX_FDTYPE_VNODE;
    walk->descriptors.push_back({number, static_cast<std::uint32_t>(type)});
    if (inode) walk->sockets.push_back({number, *inode});
  }
  return walk;
}

}  // namespace

std::shared_ptr<const DescriptorWalk> DescriptorWalks::walk(const ProcessReading& reading,
                                                            std::size_t limit) const {
  if (!reading.cpuNanoseconds) return walkNow(reading, limit);
  const double now = sources.steadySeconds();
  std::shared_ptr<const DescriptorWalk> last;
  remembered.visit(reading.identity(),
                   [&](const RememberedProcess& process) { last = process.walk; });
  const bool stands = last && last->cpuNanoseconds == *reading.cpuNanoseconds &&
                      last->limit == limit && now < last->dueAt;
  if (stands) return last;
  const auto made = walkNow(reading, limit);
  if (!made) return nullptr;
  made->cpuNanoseconds = *reading.cpuNanoseconds;
  made->dueAt = now + life + (last ? 0 : reading.identity().pid % life);
  remembered.update(reading.identity(), [&](RememberedProcess& process) { process.walk = made; });
  return made;
}

}  // namespace korvantis
