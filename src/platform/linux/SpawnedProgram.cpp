#include "platform/linux/SpawnedProgram.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace korvantis {
namespace {

using SteadyClock = std::chrono::steady_clock;

/// Milliseconds as `poll` wants them until `seconds` after `start`: -1 is for ever.
int millisecondsLeft(SteadyClock::time_point start, double seconds) {
  if (std::isinf(seconds)) return -1;
  const std::chrono::duration<double> passed = SteadyClock::now() - start;
  const double left = std::ceil((seconds - passed.count()) * 1000);
  if (!(left > 0)) return 0;
  constexpr int longest = std::numeric_limits<int>::max();
  return left < longest ? static_cast<int>(left) : longest;
}

/// Waits until `descriptor` has something to read or has ended; false when the time is up.
bool waitReadable(int descriptor, SteadyClock::time_point start, double seconds) {
  while (true) {
    pollfd entry{.fd = descriptor, .events = POLLIN, .revents = 0};
    const int ready = ::poll(&entry, 1, millisecondsLeft(start, seconds));
    if (ready < 0 && errno == EINTR) continue;
    return ready > 0;
  }
}

std::string readToEnd(const FileDescriptor& pipe, double seconds) {
  std::string text;
  std::array<char, 4096> chunk{};
  const auto start = SteadyClock::now();
  while (pipe && waitReadable(pipe.number(), start, seconds)) {
    const ssize_t got = ::read(pipe.number(), chunk.data(), chunk.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    text.append(chunk.data(), static_cast<std::size_t>(got));
  }
  return text;
}

/// Both ends of a pipe that no other program inherits.
struct Pipe {
  FileDescriptor reading;
  FileDescriptor writing;

  bool open() {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return false;
    reading = FileDescriptor(ends[0]);
    writing = FileDescriptor(ends[1]);
    return true;
  }
};

/// How the new program stands in the world.
class SpawnSettings {
 public:
  SpawnSettings() {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawnattr_init(&attributes_);
    // A session of its own, so that it outlives our terminal, and the signals as programs expect
    // them: ours ignores SIGPIPE.
    sigset_t signals;
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&attributes_, &signals);
    ::sigaddset(&signals, SIGPIPE);
    ::posix_spawnattr_setsigdefault(&attributes_, &signals);
    ::posix_spawnattr_setflags(&attributes_,
                               POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;
  ~SpawnSettings() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
  }

  /// What the program writes to `target` goes into the pipe, or nowhere when there is none.
  void connect(int target, const Pipe& pipe) {
    if (pipe.writing) {
      ::posix_spawn_file_actions_adddup2(&actions_, pipe.writing.number(), target);
    } else {
      ::posix_spawn_file_actions_addopen(&actions_, target, "/dev/null", O_WRONLY, 0);
    }
  }

  /// 0, or the number of the error.
  int spawn(pid_t& pid, const std::string& executable, std::vector<std::string> words) const {
    std::vector<char*> vector;
    vector.reserve(words.size() + 1);
    for (std::string& word : words) vector.push_back(word.data());
    vector.push_back(nullptr);
    return ::posix_spawnp(&pid, executable.c_str(), &actions_, &attributes_, vector.data(),
                          environ);
  }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

/// The system's description of an error, the same in every language setting.
std::string errorText(int number) {
  const char* const text = ::strerrordesc_np(number);
  return text != nullptr ? text : "Unknown error";
}

/// 0 when it has not ended yet, below 0 when nothing is known of it.
pid_t reap(pid_t pid, int* status, int options) {
  pid_t got = -1;
  do {
    got = ::waitpid(pid, status, options);
  } while (got < 0 && errno == EINTR);
  return got;
}

}  // namespace

std::unique_ptr<SpawnedProgram> SpawnedProgram::start(const std::string& executable,
                                                      const std::vector<std::string>& arguments,
                                                      ProgramOutput output, std::string& error) {
  Pipe outputPipe;
  Pipe errorPipe;
  if (output == ProgramOutput::piped && (!outputPipe.open() || !errorPipe.open())) {
    error = errorText(errno);
    return nullptr;
  }
  SpawnSettings settings;
  settings.connect(STDOUT_FILENO, outputPipe);
  settings.connect(STDERR_FILENO, errorPipe);
  std::vector<std::string> words{executable};
  words.insert(words.end(), arguments.begin(), arguments.end());
  pid_t pid = -1;
  const int failure = settings.spawn(pid, executable, std::move(words));
  if (failure != 0) {
    error = errorText(failure);
    return nullptr;
  }
  return std::unique_ptr<SpawnedProgram>(
      new SpawnedProgram(pid, std::move(outputPipe.reading), std::move(errorPipe.reading)));
}

SpawnedProgram::SpawnedProgram(pid_t pid, FileDescriptor output, FileDescriptor error)
    : pid_(pid), output_(std::move(output)), error_(std::move(error)) {}

SpawnedProgram::~SpawnedProgram() {
  if (!isRunning()) return;
  try {
    // Somebody must wait for it, or it stays behind as a zombie.
    std::thread([pid = pid_] { reap(pid, nullptr, 0); }).detach();
  } catch (const std::system_error&) {
    // Then a zombie it is, until this program ends.
  }
}

void SpawnedProgram::noteEnd(int waitStatus) {
  hasEnded_ = true;
  status_ = WIFSIGNALED(waitStatus) ? WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

bool SpawnedProgram::isRunning() {
  if (hasEnded_) return false;
  int waitStatus = 0;
  const pid_t got = reap(pid_, &waitStatus, WNOHANG);
  if (got == 0) return true;
  // Somebody else has reaped it: how it ended is lost, and that is no success.
  noteEnd(got == pid_ ? waitStatus : W_EXITCODE(1, 0));
  return false;
}

bool SpawnedProgram::waitUntilEnd(double seconds) {
  if (!isRunning()) return true;
  const auto start = SteadyClock::now();
  const FileDescriptor handle(static_cast<int>(::syscall(SYS_pidfd_open, pid_, 0)));
  if (handle) {
    waitReadable(handle.number(), start, seconds);
    return !isRunning();
  }
  // An old kernel: look again and again.
  while (isRunning()) {
    if (millisecondsLeft(start, seconds) == 0) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

void SpawnedProgram::terminate() {
  // Not reaped yet, so the number is still its own.
  if (isRunning()) ::kill(pid_, SIGTERM);
}

std::string SpawnedProgram::readOutput(double seconds) {
  return readToEnd(output_, seconds);
}

std::string SpawnedProgram::readError(double seconds) {
  return readToEnd(error_, seconds);
}

}  // namespace korvantis
