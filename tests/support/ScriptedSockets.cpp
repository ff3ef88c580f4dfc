#include "support/ScriptedSockets.h"

#include <algorithm>
#include <cstring>
#include <sstream>

namespace korvantis::test {

namespace {

template <typename... Words>
std::string line(const Words&... words) {
  std::ostringstream text;
  const char* separator = "";
  ((text << separator << words, separator = " "), ...);
  return text.str();
}

std::string octal(std::uint16_t mode) {
  std::ostringstream text;
  text << std::oct << mode;
  return text.str();
}

}  // namespace

SocketCalls ScriptedSockets::calls() {
  SocketCalls calls;
  calls.socket = [this](int family, int type, int protocol) {
    return answer("socket", line("socket", family, type, protocol), nextDescriptor);
  };
  calls.bind = [this](int descriptor, const DarwinSocketAddress* address, std::uint32_t length) {
    return answer("bind", line("bind", descriptor, words(address, length)));
  };
  calls.connect = [this](int descriptor, const DarwinSocketAddress* address, std::uint32_t length) {
    return answer("connect", line("connect", descriptor, words(address, length)));
  };
  calls.chmod = [this](const char* path, std::uint16_t mode) {
    return answer("chmod", line("chmod", path, octal(mode)));
  };
  calls.listen = [this](int descriptor, int backlog) {
    return answer("listen", line("listen", descriptor, backlog));
  };
  calls.accept = [this](auto... arguments) { return accept(arguments...); };
  calls.setsockopt = [this](int descriptor, int level, int option, const void* value,
                            std::uint32_t length) {
    DarwinTimeValue time{};
    if (length != sizeof time) complaints.emplace_back("setsockopt: wrong length");
    std::memcpy(&time, value, std::min<std::size_t>(length, sizeof time));
    return answer("setsockopt",
                  line("setsockopt", descriptor, level, option, time.tv_sec, time.tv_usec));
  };
  calls.read = [this](auto... arguments) { return read(arguments...); };
  calls.write = [this](auto... arguments) { return write(arguments...); };
  calls.close = [this](int descriptor) { return answer("close", line("close", descriptor)); };
  calls.getpeereid = [this](int descriptor, std::uint32_t* user, std::uint32_t* group) {
    log.push_back(line("getpeereid", descriptor));
    const auto peer = peers.find(descriptor);
    if (peer == peers.end()) return -1;
    *user = *group = peer->second;
    return 0;
  };
  calls.unlink = [this](const char* path) { return answer("unlink", line("unlink", path)); };
  return calls;
}

int ScriptedSockets::answer(const std::string& name, const std::string& words, int result) {
  log.push_back(words);
  return failing.contains(name) ? -1 : result;
}

std::string ScriptedSockets::words(const DarwinSocketAddress* address, std::uint32_t length) {
  if (address->sun_family != DARWIN_AF_UNIX) complaints.emplace_back("address: wrong family");
  const char* const path = &address->sun_path[0];
  const std::size_t used = ::strnlen(path, sizeof address->sun_path);
  if (!std::all_of(path + used, path + sizeof address->sun_path,
                   [](char byte) { return byte == '\0'; })) {
    complaints.emplace_back("address: not zeroed");
  }
  return line(std::string(path, used), length);
}

int ScriptedSockets::accept(int descriptor, DarwinSocketAddress* address,
                            const std::uint32_t* length) {
  log.push_back(line("accept", descriptor));
  const DarwinSocketAddress zero{};
  if (std::memcmp(address, &zero, sizeof zero) != 0) complaints.emplace_back("accept: not zeroed");
  if (*length != sizeof zero) complaints.emplace_back("accept: wrong length");
  if (clients.empty()) throw NoMoreClients();
  const int client = clients.front();
  clients.pop_front();
  return client;
}

std::int64_t ScriptedSockets::read(int descriptor, void* buffer, std::size_t size) {
  log.push_back(line("read", descriptor));
  readSizes.insert(size);
  if (failing.contains("read")) return -1;
  auto& waiting = pieces[descriptor];
  if (waiting.empty()) return 0;
  // What does not fit waits for the next call, as in a stream.
  const std::size_t count = std::min(size, waiting.front().size());
  std::memcpy(buffer, waiting.front().data(), count);
  waiting.front().erase(0, count);
  if (waiting.front().empty()) waiting.pop_front();
  return static_cast<std::int64_t>(count);
}

std::int64_t ScriptedSockets::write(int descriptor, const void* buffer, std::size_t size) {
  log.push_back(line("write", descriptor));
  written[descriptor].append(static_cast<const char*>(buffer), size);
  if (failing.contains("write")) return -1;
  return writeResult.value_or(static_cast<std::int64_t>(size));
}

}  // namespace korvantis::test
