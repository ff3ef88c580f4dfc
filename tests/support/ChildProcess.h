#pragma once

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <linux/sched.h>
#include <mutex>
#include <optional>
#include <signal.h>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace korvantis::test {

/// A real process of this test, killed and reaped when the object goes.
class ChildProcess {
 public:
  /// Runs `setup` in a new process, which then waits to be killed. Comes back once `setup` is
  /// over.
  static ChildProcess prepared(const std::function<void()>& setup = {}) {
    return started([&setup](int ready) {
      if (setup) setup();
      ::close(ready);
      for (;;) ::pause();
    });
  }

  /// Like `prepared`, under a number that is free at this moment; none when the system does not let
  /// us choose numbers (it takes privilege) or another process was given it.
  static std::optional<ChildProcess> withNumber(pid_t chosen,
                                                const std::function<void()>& setup = {}) {
    ChildProcess child = started(
        [&setup](int ready) {
          if (setup) setup();
          ::close(ready);
          for (;;) ::pause();
        },
        chosen);
    if (child.pid() < 0) return std::nullopt;
    return child;
  }

  /// Runs a program with these words as its argument vector. Comes back once the program has
  /// taken the place of this one, or has failed to.
  static ChildProcess program(const std::string& executable, std::vector<std::string> words,
                              const std::function<void()>& setup = {}) {
    return started([&](int) {
      if (setup) setup();
      std::vector<char*> vector;
      for (std::string& word : words) vector.push_back(word.data());
      vector.push_back(nullptr);
      ::execv(executable.c_str(), vector.data());
      ::_exit(127);
    });
  }

  /// Runs a program without copying this process first: the way for tests with several threads,
  /// where nothing of ours may run in a copy whose other threads are missing.
  static ChildProcess spawned(const std::string& executable, std::vector<std::string> words) {
    std::vector<char*> vector;
    for (std::string& word : words) vector.push_back(word.data());
    vector.push_back(nullptr);
    pid_t pid = -1;
    if (::posix_spawn(&pid, executable.c_str(), nullptr, nullptr, vector.data(), environ) != 0) {
      throw std::runtime_error("cannot run " + executable);
    }
    return ChildProcess(pid);
  }

  /// Runs `body` in a new process and gives the text that it returns, once that process is over.
  /// Waits until every other thread of this process sleeps in the kernel: a lock that one holds at
  /// work would stay locked in the copy for ever, the allocator's own among them. Throws when one
  /// never sleeps.
  static std::string answerOf(const std::function<std::string()>& body) {
    waitUntilOthersRest();
    std::unique_lock guard(forkLock());
    std::array<int, 2> ends = pipeEnds();
    const pid_t pid = ::fork();
    if (pid == 0) {
      guard.unlock();
      const std::string text = body();
      writeAll(ends[1], text);
      ::_exit(0);
    }
    ::close(ends[1]);
    guard.unlock();
    const std::string text = readAll(ends[0]);
    ::close(ends[0]);
    reap(pid);
    return text;
  }

  ChildProcess(ChildProcess&& other) noexcept : number(other.number) { other.number = -1; }
  ChildProcess& operator=(ChildProcess&& other) noexcept {
    std::swap(number, other.number);
    return *this;
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() { end(); }

  /// Its process number.
  pid_t pid() const { return number; }

  /// Kills it and leaves it unreaped: a zombie, until `end`.
  void kill() const {
    ::kill(number, SIGKILL);
    siginfo_t info{};
    while (::waitid(P_PID, static_cast<id_t>(number), &info, WEXITED | WNOWAIT) < 0 &&
           errno == EINTR) {
    }
  }

  /// Whether it has ended; does not wait and does not reap.
  bool hasEnded() const {
    siginfo_t info{};
    const int flags = WEXITED | WNOWAIT | WNOHANG;
    return ::waitid(P_PID, static_cast<id_t>(number), &info, flags) == 0 && info.si_pid == number;
  }

  /// Waits until it ends by itself; gives the signal that ended it, 0 for none.
  int waitForSignal() {
    const int status = reap(number);
    number = -1;
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }

  /// Kills and reaps it: its number is free afterwards.
  void end() {
    if (number <= 0) return;
    ::kill(number, SIGKILL);
    reap(number);
    number = -1;
  }

 private:
  explicit ChildProcess(pid_t pid) : number(pid) {}

  // A child that another thread starts meanwhile would inherit the write end of our pipe, and
  // its end of file would wait for that child.
  static std::mutex& forkLock() {
    static std::mutex lock;
    return lock;
  }

  static void waitUntilOthersRest() {
    constexpr int mostLooks = 10'000;
    for (int look = 0; !doOthersRest(); ++look) {
      if (look == mostLooks) throw std::runtime_error("cannot copy a process at work");
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }

  static bool doOthersRest() {
    const std::string own = std::to_string(::gettid());
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
      if (thread.path().filename() != own && stateOf(thread.path()) != 'S') return false;
    }
    return true;
  }

  // The letter behind the name in brackets. A thread that has just ended rests as well.
  static char stateOf(const std::filesystem::path& thread) {
    std::ifstream file(thread / "stat");
    std::string text;
    std::getline(file, text);
    const std::size_t name = text.rfind(") ");
    return name == std::string::npos ? 'S' : text[name + 2];
  }

  static std::array<int, 2> pipeEnds() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return ends;
  }

  // The write end closes at the program's start or by the body: its end of file means "ready".
  static ChildProcess started(const std::function<void(int)>& body, pid_t chosen = 0) {
    std::unique_lock guard(forkLock());
    std::array<int, 2> ends = pipeEnds();
    const pid_t pid = chosen > 0 ? forkAs(chosen) : ::fork();
    if (pid == 0) {
      guard.unlock();
      ::prctl(PR_SET_PDEATHSIG, SIGKILL);
      ::close(ends[0]);
      body(ends[1]);
      ::_exit(0);
    }
    ::close(ends[1]);
    guard.unlock();
    readAll(ends[0]);
    ::close(ends[0]);
    return ChildProcess(pid);
  }

  static pid_t forkAs(pid_t chosen) {
    clone_args arguments{};
    arguments.exit_signal = SIGCHLD;
    arguments.set_tid = reinterpret_cast<std::uintptr_t>(&chosen);
    arguments.set_tid_size = 1;
    return static_cast<pid_t>(::syscall(SYS_clone3, &arguments, sizeof arguments));
  }

  static std::string readAll(int descriptor) {
    std::string text;
    std::array<char, 4096> chunk{};
    for (;;) {
      const ssize_t got = ::read(descriptor, chunk.data(), chunk.size());
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) return text;
      text.append(chunk.data(), static_cast<std::size_t>(got));
    }
  }

  static void writeAll(int descriptor, const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
      const ssize_t put = ::write(descriptor, text.data() + written, text.size() - written);
      if (put < 0 && errno != EINTR) return;
      if (put > 0) written += static_cast<std::size_t>(put);
    }
  }

  static int reap(pid_t pid) {
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
  }

  pid_t number = -1;
};

}  // namespace korvantis::test
