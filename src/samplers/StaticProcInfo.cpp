#include "samplers/StaticProcInfo.h"

#include <array>
#include <string_view>

#include "platform/DarwinTypes.h"
#include "samplers/FixedText.h"
#include "samplers/ProcessArguments.h"

namespace korvantis {

namespace {

constexpr std::size_t pathBufferSize = 4096;

std::string readExecutablePath(const LibProcCalls& libProc, std::int32_t pid) {
  std::array<char, pathBufferSize> path{};
  if (libProc.proc_pidpath(pid, path.data(), pathBufferSize) < 1) return {};
  return fixedText({path.data(), path.size()});
}

std::int32_t readResponsiblePID(const LibProcCalls& libProc, std::int32_t pid) {
  if (!libProc.responsibility_get_pid_responsible_for_pid) return pid;
  const std::int32_t responsible = libProc.responsibility_get_pid_responsible_for_pid(pid);
  return responsible > 0 ? responsible : pid;
}

std::optional<std::string> readWorkingDirectory(const LibProcCalls& libProc, std::int32_t pid) {
  proc_vnodepathinfo folders{};
  constexpr int size = sizeof(folders);
  if (libProc.proc_pidinfo(pid, PROC_PIDVNODEPATHINFO, 0, &folders, size) != size) return {};
  const auto& path = folders.pvi_cdir.vip_path;
  if (path[0] == '\0') return {};
  return fixedText({&path[0], sizeof(path)});
}

}  // namespace

CachedStaticProcInfo readStaticProcInfo(const LibProcCalls& libProc, const SysctlCalls& sysctl,
                                        const StaticProcInfoRequest& request) {
  CachedStaticProcInfo facts;
  facts.executablePath = readExecutablePath(libProc, request.pid);
  facts.responsiblePID = readResponsiblePID(libProc, request.pid);
  if (request.isOwn) facts.workingDirectory = readWorkingDirectory(libProc, request.pid);
  facts.arguments =
      request.isOwn ? readProcessArguments(sysctl, request.pid, request.name) : request.name;
  facts.lastUpdated = request.now;
  return facts;
}

}  // namespace korvantis
