#include <cstddef>
#include <dispatch/dispatch.h>
#include <fcntl.h>
#include <memory>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

#include "platform/SocketCalls.h"
#include "platform/WorkQueueCalls.h"

namespace korvantis {
namespace {

static_assert(AF_UNIX == DARWIN_AF_UNIX);
static_assert(SOCK_STREAM == DARWIN_SOCK_STREAM);
static_assert(SOL_SOCKET == DARWIN_SOL_SOCKET);
static_assert(SO_SNDTIMEO == DARWIN_SO_SNDTIMEO);
static_assert(SO_RCVTIMEO == DARWIN_SO_RCVTIMEO);
static_assert(sizeof(sockaddr_un) == sizeof(DarwinSocketAddress));
static_assert(offsetof(sockaddr_un, sun_path) == offsetof(DarwinSocketAddress, sun_path));
static_assert(sizeof(timeval) == sizeof(DarwinTimeValue));
static_assert(offsetof(timeval, tv_usec) == offsetof(DarwinTimeValue, tv_usec));

/// Not inherited by programs that are started, and no signal when the reader has gone.
int prepared(int descriptor) {
  if (descriptor < 0) return descriptor;
  const int on = 1;
  ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  ::setsockopt(descriptor, SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
  return descriptor;
}

}  // namespace

SocketCalls systemSocketCalls() {
  SocketCalls calls;
  calls.socket = [](int family, int type, int protocol) {
    return prepared(::socket(family, type, protocol));
  };
  calls.bind = [](int descriptor, const DarwinSocketAddress* address, std::uint32_t length) {
    return ::bind(descriptor, reinterpret_cast<const sockaddr*>(address), length);
  };
  calls.chmod = [](const char* path, std::uint16_t mode) { return ::chmod(path, mode); };
  calls.listen = ::listen;
  calls.accept = [](int descriptor, DarwinSocketAddress* address, std::uint32_t* length) {
    return prepared(::accept(descriptor, reinterpret_cast<sockaddr*>(address), length));
  };
  calls.connect = [](int descriptor, const DarwinSocketAddress* address, std::uint32_t length) {
    return ::connect(descriptor, reinterpret_cast<const sockaddr*>(address), length);
  };
  calls.setsockopt = ::setsockopt;
  calls.read = ::read;
  calls.write = ::write;
  calls.close = ::close;
  calls.getpeereid = ::getpeereid;
  calls.unlink = ::unlink;
  return calls;
}

WorkQueueCalls systemWorkQueueCalls() {
  WorkQueueCalls calls;
  calls.asyncUtility = [](std::function<void()> work) {
    auto held = std::make_unique<std::function<void()>>(std::move(work));
    ::dispatch_async_f(::dispatch_get_global_queue(QOS_CLASS_UTILITY, 0), held.release(),
                       [](void* given) {
                         const std::unique_ptr<std::function<void()>> taken(
                             static_cast<std::function<void()>*>(given));
                         (*taken)();
                       });
    return true;
  };
  return calls;
}

}  // namespace korvantis
