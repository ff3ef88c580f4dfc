#include "platform/linux/LinuxProcesses.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/magic.h>
#include <string>
#include <sys/vfs.h>
#include <utility>

#include "platform/linux/CommandLine.h"
#include "platform/linux/FileText.h"
#include "platform/linux/ProcessName.h"
#include "platform/linux/ProcessRecords.h"
#include "platform/linux/applications/LinuxApplications.h"

namespace korvantis {
namespace {

// The caller takes the length of the list for a number of bytes and divides it again.
constexpr std::size_t longestListing = 1024;
constexpr std::size_t descriptorLimit = 128;
// A pass that began no new listing for this long (seconds) looks ancestors up again.
constexpr double ancestryLife = 2.0;

std::uint64_t nextInstance() {
  static std::atomic<std::uint64_t> last{0};
  return ++last;
}

/// Only the kernel's own files are worth keeping open: they tell the present each time they are
/// read, and refuse once the process has gone.
int keepableDescriptors(const ProcessSources& sources) {
  struct statfs folder {};
  const bool isKernels =
      ::statfs((sources.root + "/proc").c_str(), &folder) == 0 && folder.f_type == PROC_SUPER_MAGIC;
  return isKernels ? sources.keptDescriptors : 0;
}

int failure(int error, int result) {
  errno = error;
  return result;
}

template <typename Record>
int answer(const Record& record, void* buffer) {
  std::memcpy(buffer, &record, sizeof record);
  return static_cast<int>(sizeof record);
}

/// The size that a flavor of `proc_pidinfo` fills; 0 for those that are not answered.
std::size_t recordSize(int flavor) {
  switch (flavor) {
    case PROC_PIDTBSDINFO: return sizeof(proc_bsdinfo);
    case PROC_PIDVNODEPATHINFO: return sizeof(proc_vnodepathinfo);
    case PROC_PIDLISTFDS: return sizeof(proc_fdinfo);
    default: return 0;
  }
}

std::string fullName(ProcessReading& reading) {
  const std::string& name = reading.stat().name;
  // Only a name of full length can have been cut; the others need no further reads.
  if (name.size() + 1 != MAXCOMLEN) return name;
  std::string byPath = longProcessName(name, reading.executablePath(), {});
  if (byPath != name) return byPath;
  return longProcessName(name, {}, CommandLine::program(reading.commandLine()));
}

std::vector<ListeningSocket> socketsFromFiles(const std::string& root) {
  std::vector<ListeningSocket> sockets;
  for (const bool isVersion6 : {false, true}) {
    const std::string path = root + (isVersion6 ? "/proc/net/tcp6" : "/proc/net/tcp");
    const auto found = parseSocketTable(readFileText(AT_FDCWD, path).text, isVersion6);
    sockets.insert(sockets.end(), found.begin(), found.end());
  }
  return sockets;
}

}  // namespace

LinuxProcesses::LinuxProcesses(ProcessSources processSources)
    : sources(std::move(processSources)),
      instance(nextInstance()),
      descriptorBudget(std::make_shared<DescriptorBudget>(keepableDescriptors(sources))) {}

ProcessPass& LinuxProcesses::pass() const {
  struct Slot {
    std::uint64_t instance = 0;
    ProcessPass pass;
  };
  static thread_local Slot slot;
  if (slot.instance != instance) slot = Slot{instance, {}};
  return slot.pass;
}

ProcessPass& LinuxProcesses::newPass() const {
  return pass() = ProcessPass{};
}

std::shared_ptr<ProcessReading> LinuxProcesses::openReading(std::int32_t pid) const {
  if (auto folder = remembered.folder(pid)) {
    if (auto reading = ProcessReading::through(std::move(folder))) return reading;
  }
  errno = 0;
  auto reading = ProcessReading::open(sources.root, pid);
  if (reading || (errno != EMFILE && errno != ENFILE)) return reading;
  // This program is short of descriptors, and here are some to spare.
  descriptorBudget->halve();
  remembered.giveBackFolders();
  return ProcessReading::open(sources.root, pid);
}

std::shared_ptr<const ProcessFolder> LinuxProcesses::folderToKeep(ProcessReading& reading) const {
  auto folder = reading.takeNewFolder();
  return folder && folder->keepOpen(descriptorBudget) ? folder : nullptr;
}

std::shared_ptr<ProcessReading> LinuxProcesses::current(std::int32_t pid) const {
  ProcessPass& currentPass = pass();
  if (!currentPass.reading || currentPass.reading->identity().pid != pid) {
    currentPass.reading = openReading(pid);
  }
  return currentPass.reading;
}

int LinuxProcesses::listAllPids(void* buffer, int bufferSize) {
  newPass();
  if (bufferSize < 0) return failure(EINVAL, 0);
  const std::size_t fitting = static_cast<std::size_t>(bufferSize) / sizeof(std::int32_t);
  const auto listed = listing.list(std::min(fitting, longestListing));
  if (sources.applications) sources.applications->see(listed);
  std::vector<std::int32_t> pids;
  pids.reserve(listed.size());
  for (const ProcessIdentity& identity : listed) pids.push_back(identity.pid);
  const std::size_t size = pids.size() * sizeof(std::int32_t);
  if (size > 0) std::memcpy(buffer, pids.data(), size);
  return static_cast<int>(size);
}

int LinuxProcesses::processInfo(int pid, int flavor, void* buffer, int bufferSize) {
  const std::size_t needed = recordSize(flavor);
  if (needed == 0 || bufferSize < 0 || static_cast<std::size_t>(bufferSize) < needed) {
    return failure(needed == 0 ? EINVAL : ENOMEM, 0);
  }
  switch (flavor) {
    case PROC_PIDTBSDINFO: return basicInformation(pid, buffer);
    case PROC_PIDVNODEPATHINFO: return workingDirectory(pid, buffer);
    default: return descriptorList(pid, buffer, static_cast<std::size_t>(bufferSize) / needed);
  }
}

int LinuxProcesses::basicInformation(std::int32_t pid, void* buffer) {
  pass().reading.reset();
  const auto reading = current(pid);
  if (!reading || reading->stat().isKernelThread || reading->stat().hasEnded())
    return failure(ESRCH, 0);
  quietProcesses.begin(*reading);
  const auto facts = listingFacts(*reading, sources.steadySeconds());
  if (!facts) return failure(ESRCH, 0);
  // Callers keep figures by number alone. Missing for one tick makes them drop those of the
  // process before, so that this one never shows them as its own.
  const bool isHidden = remembered.show(reading->identity(), *facts, folderToKeep(*reading));
  if (isHidden) return failure(ESRCH, 0);
  if (!reading->isQuiet) reading->shownName = fullName(*reading);
  return answer(
      ProcessRecords::basicInformation(reading->stat(), *reading->status(), reading->shownName,
                                       sources.bootNanoseconds, sources.clockTicksPerSecond),
      buffer);
}

int LinuxProcesses::workingDirectory(std::int32_t pid, void* buffer) const {
  const auto reading = current(pid);
  const std::string path = reading ? reading->workingDirectory() : std::string();
  if (path.empty()) return failure(ESRCH, 0);
  // A cut path would be that of another folder.
  if (path.size() >= MAXPATHLEN) return failure(ENAMETOOLONG, 0);
  proc_vnodepathinfo record{};
  std::memcpy(record.pvi_cdir.vip_path, path.data(), path.size());
  return answer(record, buffer);
}

int LinuxProcesses::resourceUsage(int pid, int flavor, void* buffer) {
  if (flavor != RUSAGE_INFO_V4) return failure(EINVAL, -1);
  const auto reading = current(pid);
  if (!reading) return failure(ESRCH, -1);
  const std::uint64_t hertz = sources.clockTicksPerSecond;
  const bool isFirst = !std::exchange(reading->wasMeasured, true);
  if (const auto standing = reading->standingUsage; standing && isFirst) {
    const auto system = ProcessRecords::nanoseconds(reading->stat().systemTicks, hertz);
    answer(ProcessRecords::resourceUsage(*reading->cpuNanoseconds, system, *reading->takeStatus(),
                                         standing->disk, standing->wakeups),
           buffer);
    return 0;
  }
  // The CPU clock goes by the number alone. Whatever is then read through the open folder proves
  // that the number still belonged to this process.
  auto cpu = isFirst ? reading->cpuNanoseconds : std::nullopt;
  if (!cpu && sources.cpuNanoseconds) cpu = sources.cpuNanoseconds(pid);
  auto ticks = std::optional(reading->stat());
  if (!cpu) ticks = reading->readStat();
  if (!ticks) return failure(ESRCH, -1);
  if (!cpu) cpu = ProcessRecords::nanoseconds(ticks->userTicks + ticks->systemTicks, hertz);

  const auto status = reading->takeStatus();
  if (!status || status->threadGroup != pid) return failure(ESRCH, -1);
  auto disk = reading->diskBytes();
  if (disk) {
    remembered.update(reading->identity(),
                      [&](RememberedProcess& process) { process.diskBytes = *disk; });
  } else {
    if (!reading->isThere()) return failure(ESRCH, -1);
    disk = heldDiskBytes(reading->identity());
  }
  if (isFirst) quietProcesses.keep(*reading, *status, *disk);
  const auto system = ProcessRecords::nanoseconds(ticks->systemTicks, hertz);
  answer(
      ProcessRecords::resourceUsage(*cpu, system, *status, *disk, wakeups.count(*reading, *status)),
      buffer);
  return 0;
}

ProcessDiskBytes LinuxProcesses::heldDiskBytes(const ProcessIdentity& identity) const {
  // Falling to 0 and back would show as a burst of traffic in the next tick.
  const auto kept = remembered.find(identity);
  return kept ? kept->diskBytes : ProcessDiskBytes{};
}

std::string LinuxProcesses::presentedPath(ProcessReading& reading) const {
  return sources.applications ? sources.applications->presentedPath(reading)
                              : reading.executablePath();
}

int LinuxProcesses::executablePath(int pid, void* buffer, std::uint32_t bufferSize) {
  const auto reading = current(pid);
  if (reading) reading->readExecutablePath();
  const std::string path = reading ? presentedPath(*reading) : std::string();
  if (path.empty()) return failure(ESRCH, 0);
  if (path.size() >= bufferSize) return failure(ENOMEM, 0);
  std::memcpy(buffer, path.c_str(), path.size() + 1);
  return static_cast<int>(path.size());
}

const ListeningSockets& LinuxProcesses::listeningSockets(ProcessPass& currentPass) const {
  if (!currentPass.sockets) {
    auto sockets = sources.listeningSockets ? sources.listeningSockets() : std::nullopt;
    if (!sockets) sockets = socketsFromFiles(sources.root);
    currentPass.sockets.emplace(*sockets);
  }
  return *currentPass.sockets;
}

int LinuxProcesses::descriptorList(std::int32_t pid, void* buffer, std::size_t limit) const {
  const ListeningSockets& sockets = listeningSockets(pass());
  // Ports are all that descriptors are walked for.
  if (!sockets.hasAny(sources.userID)) return 0;
  const auto reading = current(pid);
  if (!reading) return failure(ESRCH, 0);
  const auto walk = descriptorWalks.walk(*reading, std::min(limit, descriptorLimit));
  if (!walk) return failure(errno, 0);
  reading->plainSockets.clear();
  for (const DescriptorWalk::Socket& socket : walk->sockets) {
    if (!sockets.find(socket.inode)) reading->plainSockets.push_back(socket.descriptor);
  }
  const std::size_t size = walk->descriptors.size() * sizeof(proc_fdinfo);
  if (size > 0) std::memcpy(buffer, walk->descriptors.data(), size);
  return static_cast<int>(size);
}

int LinuxProcesses::descriptorInfo(int pid, int descriptor, int flavor, void* buffer,
                                   int bufferSize) {
  if (flavor != PROC_PIDFDSOCKETINFO) return failure(EINVAL, 0);
  if (bufferSize < static_cast<int>(sizeof(socket_fdinfo))) return failure(ENOMEM, 0);
  const auto reading = current(pid);
  if (!reading) return failure(ESRCH, 0);
  const auto& plain = reading->plainSockets;
  if (std::binary_search(plain.begin(), plain.end(), descriptor)) {
    return answer(ProcessRecords::plainSocket(), buffer);
  }
  // Read anew: since the listing the number may have been closed, or opened on something else.
  const auto link = reading->descriptorLink(descriptor);
  const auto inode = link ? socketInode(*link) : std::nullopt;
  if (!inode) return failure(EBADF, 0);
  const auto socket = listeningSockets(pass()).find(*inode);
  return answer(socket ? ProcessRecords::listeningSocket(*socket) : ProcessRecords::plainSocket(),
                buffer);
}

std::optional<ProcessAncestry> LinuxProcesses::ancestry(std::int32_t pid) const {
  ProcessPass& currentPass = pass();
  const auto found = currentPass.ancestry.find(pid);
  if (found != currentPass.ancestry.end()) return found->second;
  const auto& shown = currentPass.reading;
  const auto reading = shown && shown->identity().pid == pid ? shown : openReading(pid);
  std::optional<ProcessAncestry> facts;
  if (reading) {
    const ProcessStat& stat = reading->stat();
    facts = ProcessAncestry{stat.startTicks, stat.parent, stat.session, presentedPath(*reading)};
    if (sources.applications) {
      facts->controlGroup = sources.applications->groupOf(reading->identity());
      facts->groupApplication = sources.applications->groupApplication(reading->identity());
    }
  }
  currentPass.ancestry.emplace(pid, facts);
  return facts;
}

std::int32_t LinuxProcesses::responsiblePid(std::int32_t pid) {
  ProcessPass& currentPass = pass();
  const double now = sources.steadySeconds();
  if (currentPass.ancestry.empty() || now - currentPass.ancestrySince >= ancestryLife) {
    currentPass.ancestry.clear();
    currentPass.ancestrySince = now;
  }
  const auto reading = current(pid);
  if (!reading) return failure(ESRCH, 0);
  const auto earlier = currentPass.ancestry.find(pid);
  const bool isAnother =
      earlier != currentPass.ancestry.end() &&
      (!earlier->second || earlier->second->startTicks != reading->identity().startTicks);
  if (isAnother) currentPass.ancestry.erase(earlier);
  const auto kept = remembered.find(reading->identity());
  const ResponsibleProcess search([this](std::int32_t number) { return ancestry(number); });
  const auto found = search.find(pid, kept ? kept->responsible : ProcessIdentity{});
  remembered.update(reading->identity(),
                    [&](RememberedProcess& process) { process.responsible = found; });
  return found.pid;
}

int LinuxProcesses::argumentBlock(const int* name, unsigned nameLength, void* oldValue,
                                  std::size_t* oldSize) {
  if (nameLength != 3 || name[0] != CTL_KERN || name[1] != KERN_PROCARGS2) {
    return failure(ENOENT, -1);
  }
  const auto reading = current(name[2]);
  if (!reading) return failure(ESRCH, -1);
  // The question for the size is followed by that for the block; both are one and the same read,
  // so that the block has the size that was told.
  std::string block = std::exchange(reading->keptArgumentBlock, {});
  if (oldValue == nullptr || block.empty()) {
    block =
        CommandLine::argumentBlock(reading->executablePath(), quietProcesses.commandLine(*reading));
  }
  if (block.empty()) return failure(EINVAL, -1);
  const std::size_t size = block.size();
  if (oldValue == nullptr) {
    reading->keptArgumentBlock = std::move(block);
  } else {
    if (*oldSize < size) return failure(ENOMEM, -1);
    std::memcpy(oldValue, block.data(), size);
  }
  *oldSize = size;
  return 0;
}

int LinuxProcesses::kill(std::int32_t pid, int signal) const {
  return signals.send(pid, signal);
}

}  // namespace korvantis
