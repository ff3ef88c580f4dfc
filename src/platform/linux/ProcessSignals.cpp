#include "platform/linux/ProcessSignals.h"

#include <cerrno>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/ProcessReading.h"

namespace korvantis {
namespace {

int failure(int error) {
  errno = error;
  return -1;
}

}  // namespace

bool ProcessSignals::isStillShown(std::int32_t pid) const {
  const auto shown = remembered.find(pid);
  if (!shown || !shown->wasShown) return false;
  const auto reading = ProcessReading::open(sources.root, pid);
  return reading && reading->identity().startTicks == shown->startTicks;
}

int ProcessSignals::send(std::int32_t pid, int signal) const {
  if (pid < 1 || !sources.pidfdOpen) return failure(ESRCH);
  const FileDescriptor process{sources.pidfdOpen(pid)};
  const int openError = process ? 0 : errno;
  // Judged after the opening: a process that was shown before and holds the number now has held
  // it all the while, so it is the one that was opened.
  if (!isStillShown(pid)) return failure(ESRCH);
  if (process) return sources.pidfdSendSignal(process.number(), signal);
  // Old kernels don't have the call, and some containers forbid it. The check has then just been
  // made, which leaves the number next to no time to change hands.
  if (openError == ENOSYS || openError == EPERM) return sources.kill(pid, signal);
  return failure(openError);
}

}  // namespace korvantis
