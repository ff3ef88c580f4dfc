#include "support/ScriptedProcesses.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

namespace korvantis::test {

namespace {

void fillText(char* field, std::size_t capacity, const std::string& text) {
  std::memcpy(field, text.data(), std::min(capacity, text.size()));
}

/// Fills a caller's buffer of `bufferSize` bytes from a structure.
template <class Structure>
int fill(void* buffer, int bufferSize, const Structure& structure) {
  const int size = std::min(bufferSize, static_cast<int>(sizeof(Structure)));
  std::memcpy(buffer, &structure, static_cast<std::size_t>(size));
  return size;
}

std::int32_t networkOrder(const ScriptedDescriptor& descriptor) {
  const std::uint32_t swapped =
      (std::uint32_t{descriptor.port} >> 8) | ((std::uint32_t{descriptor.port} & 0xFF) << 8);
  return static_cast<std::int32_t>((std::uint32_t{descriptor.portFieldNoise} << 16) | swapped);
}

}  // namespace

void ScriptedProcesses::add(ScriptedProcess process) {
  const std::lock_guard guard(mutex);
  const std::int32_t pid = process.pid;
  order.push_back(pid);
  table[pid] = std::make_shared<const ScriptedProcess>(std::move(process));
}

void ScriptedProcesses::remove(std::int32_t pid) {
  const std::lock_guard guard(mutex);
  std::erase(order, pid);
  table.erase(pid);
}

void ScriptedProcesses::change(std::int32_t pid,
                               const std::function<void(ScriptedProcess&)>& edit) {
  const std::lock_guard guard(mutex);
  ScriptedProcess process = *table.at(pid);
  edit(process);
  table.at(pid) = std::make_shared<const ScriptedProcess>(std::move(process));
}

void ScriptedProcesses::listPIDs(std::vector<std::int32_t> pids) {
  const std::lock_guard guard(mutex);
  listedPIDs = std::move(pids);
}

void ScriptedProcesses::setNow(double seconds) {
  const std::lock_guard guard(mutex);
  now = seconds;
}

void ScriptedProcesses::advance(double seconds) {
  const std::lock_guard guard(mutex);
  now += seconds;
}

void ScriptedProcesses::setOwnUID(std::uint32_t uid) {
  const std::lock_guard guard(mutex);
  ownUID = uid;
}

void ScriptedProcesses::setTimebase(std::uint32_t numer, std::uint32_t denom) {
  const std::lock_guard guard(mutex);
  timebase.numer = numer;
  timebase.denom = denom;
}

void ScriptedProcesses::setHook(Hook newHook) {
  const std::lock_guard guard(mutex);
  hook = std::move(newHook);
}

void ScriptedProcesses::setReply(ProcessOperation operation, Reply reply) {
  const std::lock_guard guard(mutex);
  replies[operation] = std::move(reply);
}

void ScriptedProcesses::install(PlatformCalls& platform) {
  platform.clock.now = [this] {
    const std::lock_guard guard(mutex);
    return now;
  };
  platform.posix.getuid = [this] {
    enter(ProcessOperation::ownUID, 0);
    const std::lock_guard guard(mutex);
    return ownUID;
  };
  platform.machHost.mach_timebase_info = [this](mach_timebase_info_data_t* info) {
    enter(ProcessOperation::timebase, 0);
    const std::lock_guard guard(mutex);
    *info = timebase;
    return 0;
  };
  platform.sysctl.sysctl = [this](auto... arguments) { return this->arguments(arguments...); };
  LibProcCalls& calls = platform.libProc;
  calls.proc_listallpids = [this](auto... arguments) { return listAllPIDs(arguments...); };
  calls.proc_pidinfo = [this](auto... arguments) { return processInfo(arguments...); };
  calls.proc_pid_rusage = [this](auto... arguments) { return resourceUsage(arguments...); };
  calls.proc_pidpath = [this](auto... arguments) { return path(arguments...); };
  calls.proc_pidfdinfo = [this](auto... arguments) { return socket(arguments...); };
  calls.responsibility_get_pid_responsible_for_pid = [this](std::int32_t pid) {
    return responsiblePID(pid);
  };
}

PlatformCalls ScriptedProcesses::platform() {
  PlatformCalls calls;
  install(calls);
  return calls;
}

int ScriptedProcesses::count(ProcessOperation operation) const {
  const std::lock_guard guard(mutex);
  const auto found = countsByPID.find(operation);
  if (found == countsByPID.end()) return 0;
  return std::accumulate(found->second.begin(), found->second.end(), 0,
                         [](int sum, const auto& entry) { return sum + entry.second; });
}

int ScriptedProcesses::count(ProcessOperation operation, std::int32_t pid) const {
  const std::lock_guard guard(mutex);
  const auto found = countsByPID.find(operation);
  if (found == countsByPID.end()) return 0;
  const auto entry = found->second.find(pid);
  return entry == found->second.end() ? 0 : entry->second;
}

void ScriptedProcesses::resetCounts() {
  const std::lock_guard guard(mutex);
  countsByPID.clear();
}

std::vector<std::string> ScriptedProcesses::complaints() const {
  const std::lock_guard guard(mutex);
  return wrongQuestions;
}

int ScriptedProcesses::listAllPIDs(void* buffer, int bufferSize) {
  enter(ProcessOperation::listAllPIDs, 0);
  checkBuffer("pid list", buffer, bufferSize, 16384);
  std::vector<std::int32_t> pids;
  {
    const std::lock_guard guard(mutex);
    pids = listedPIDs.value_or(order);
  }
  const auto size =
      std::min(static_cast<std::size_t>(bufferSize), pids.size() * sizeof(std::int32_t));
  if (size > 0) std::memcpy(buffer, pids.data(), size);
  return replyTo(ProcessOperation::listAllPIDs, 0, static_cast<int>(size));
}

int ScriptedProcesses::processInfo(int pid, int flavor, std::uint64_t argument, void* buffer,
                                   int bufferSize) {
  check(argument == 0, "argument is not 0", "proc_pidinfo");
  switch (flavor) {
    case PROC_PIDTBSDINFO: return basicInfo(pid, buffer, bufferSize);
    case PROC_PIDVNODEPATHINFO: return workingDirectory(pid, buffer, bufferSize);
    case PROC_PIDLISTFDS: return descriptors(pid, buffer, bufferSize);
    default: check(false, "unknown flavour", "proc_pidinfo"); return 0;
  }
}

int ScriptedProcesses::basicInfo(int pid, void* buffer, int bufferSize) {
  enter(ProcessOperation::basicInfo, pid);
  checkBuffer("proc_bsdinfo", buffer, bufferSize, 136);
  const auto process = find(pid);
  if (!process) return replyTo(ProcessOperation::basicInfo, pid, 0);
  proc_bsdinfo info{};
  info.pbi_pid = static_cast<std::uint32_t>(pid);
  info.pbi_ppid = process->ppid;
  info.pbi_uid = process->uid;
  fillText(&info.pbi_comm[0], sizeof(info.pbi_comm), process->comm);
  fillText(&info.pbi_name[0], sizeof(info.pbi_name), process->name);
  info.pbi_start_tvsec = process->startSeconds;
  info.pbi_start_tvusec = process->startMicroseconds;
  return replyTo(ProcessOperation::basicInfo, pid, fill(buffer, bufferSize, info));
}

int ScriptedProcesses::workingDirectory(int pid, void* buffer, int bufferSize) {
  enter(ProcessOperation::workingDirectory, pid);
  checkBuffer("proc_vnodepathinfo", buffer, bufferSize, 2352);
  const auto process = find(pid);
  if (!process) return replyTo(ProcessOperation::workingDirectory, pid, 0);
  proc_vnodepathinfo folders{};
  fillText(&folders.pvi_cdir.vip_path[0], sizeof(folders.pvi_cdir.vip_path),
           process->workingDirectory);
  fillText(&folders.pvi_rdir.vip_path[0], sizeof(folders.pvi_rdir.vip_path), "/another/root");
  return replyTo(ProcessOperation::workingDirectory, pid, fill(buffer, bufferSize, folders));
}

int ScriptedProcesses::descriptors(int pid, void* buffer, int bufferSize) {
  enter(ProcessOperation::descriptors, pid);
  checkBuffer("proc_fdinfo", buffer, bufferSize, 1024);
  const auto process = find(pid);
  if (!process) return replyTo(ProcessOperation::descriptors, pid, 0);
  const std::size_t count =
      std::min(process->descriptors.size(), static_cast<std::size_t>(bufferSize) / 8);
  for (std::size_t index = 0; index < count; ++index) {
    const proc_fdinfo entry{static_cast<std::int32_t>(index), process->descriptors[index].type};
    std::memcpy(static_cast<char*>(buffer) + index * sizeof(entry), &entry, sizeof(entry));
  }
  return replyTo(ProcessOperation::descriptors, pid, static_cast<int>(count * 8));
}

int ScriptedProcesses::resourceUsage(int pid, int flavor, void* buffer) {
  enter(ProcessOperation::resourceUsage, pid);
  check(flavor == RUSAGE_INFO_V4, "unknown flavour", "proc_pid_rusage");
  checkBuffer("rusage_info_v4", buffer, 296, 296);
  const auto process = find(pid);
  if (!process) return replyTo(ProcessOperation::resourceUsage, pid, -1);
  rusage_info_v4 usage{};
  usage.ri_user_time = process->userTime;
  usage.ri_system_time = process->systemTime;
  usage.ri_pkg_idle_wkups = process->idleWakeups;
  usage.ri_phys_footprint = process->footprint;
  usage.ri_diskio_bytesread = process->diskReadBytes;
  usage.ri_diskio_byteswritten = process->diskWriteBytes;
  fill(buffer, static_cast<int>(sizeof(usage)), usage);
  return replyTo(ProcessOperation::resourceUsage, pid, process->usageIsReadable ? 0 : -1);
}

int ScriptedProcesses::path(int pid, void* buffer, std::uint32_t bufferSize) {
  enter(ProcessOperation::path, pid);
  checkBuffer("path", buffer, static_cast<int>(bufferSize), 4096);
  const auto process = find(pid);
  if (!process) return replyTo(ProcessOperation::path, pid, 0);
  fillText(static_cast<char*>(buffer), bufferSize, process->path);
  return replyTo(ProcessOperation::path, pid, static_cast<int>(process->path.size()));
}

int ScriptedProcesses::socket(int pid, int descriptor, int flavor, void* buffer, int bufferSize) {
  enter(ProcessOperation::socket, pid);
  check(flavor == PROC_PIDFDSOCKETINFO, "unknown flavour", "proc_pidfdinfo");
  checkBuffer("socket_fdinfo", buffer, bufferSize, 792);
  const auto process = find(pid);
  const auto index = static_cast<std::size_t>(descriptor);
  if (!process || index >= process->descriptors.size()) {
    return replyTo(ProcessOperation::socket, pid, 0);
  }
  const ScriptedDescriptor& scripted = process->descriptors[index];
  socket_fdinfo info{};
  info.psi.soi_kind = scripted.kind;
  info.psi.soi_proto.pri_tcp.tcpsi_ini.insi_lport = networkOrder(scripted);
  info.psi.soi_proto.pri_tcp.tcpsi_state = scripted.state;
  return replyTo(ProcessOperation::socket, pid, fill(buffer, bufferSize, info));
}

int ScriptedProcesses::arguments(const int* name, unsigned nameLength, void* oldValue,
                                 std::size_t* oldSize) {
  check(nameLength == 3 && name[0] == CTL_KERN && name[1] == KERN_PROCARGS2, "unknown name",
        "sysctl");
  enter(ProcessOperation::arguments, name[2]);
  const auto process = find(name[2]);
  if (!process || !process->argumentBlock) return -1;
  const std::string& block = *process->argumentBlock;
  if (oldValue == nullptr) {
    *oldSize = process->firstArgumentSize.value_or(block.size());
    return 0;
  }
  if (process->secondArgumentCallFails) return -1;
  const auto size = static_cast<int>(*oldSize);
  checkBuffer("argument block", oldValue, size, size);
  const std::size_t filled = std::min(*oldSize, block.size());
  std::memcpy(oldValue, block.data(), filled);
  *oldSize = process->secondArgumentSize.value_or(filled);
  return 0;
}

std::int32_t ScriptedProcesses::responsiblePID(std::int32_t pid) {
  enter(ProcessOperation::responsiblePID, pid);
  const auto process = find(pid);
  return replyTo(ProcessOperation::responsiblePID, pid, process ? process->responsiblePID : -1);
}

void ScriptedProcesses::enter(ProcessOperation operation, std::int32_t pid) {
  Hook called;
  {
    const std::lock_guard guard(mutex);
    ++countsByPID[operation][pid];
    called = hook;
  }
  if (called) called(operation, pid);
}

int ScriptedProcesses::replyTo(ProcessOperation operation, std::int32_t pid, int honest) const {
  const std::lock_guard guard(mutex);
  const auto reply = replies.find(operation);
  return reply == replies.end() ? honest : reply->second(pid, honest);
}

std::shared_ptr<const ScriptedProcess> ScriptedProcesses::find(std::int32_t pid) const {
  const std::lock_guard guard(mutex);
  const auto found = table.find(pid);
  return found == table.end() ? nullptr : found->second;
}

void ScriptedProcesses::checkBuffer(const char* what, const void* buffer, int bufferSize,
                                    int expected) {
  check(bufferSize == expected, "wrong buffer size", what);
  const auto* bytes = static_cast<const char*>(buffer);
  check(std::all_of(bytes, bytes + bufferSize, [](char byte) { return byte == 0; }),
        "buffer not zeroed", what);
}

void ScriptedProcesses::check(bool holds, const char* what, const char* of) {
  if (holds) return;
  const std::lock_guard guard(mutex);
  wrongQuestions.push_back(std::string(what) + ": " + of);
}

}  // namespace korvantis::test
