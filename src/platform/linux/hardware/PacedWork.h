#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace korvantis {

/// Work that a tick asks for and does not wait for: one thread does it, at most once in an
/// interval and only when asked. Any thread may ask.
class PacedWork {
 public:
  /// `seconds` tells the time; `work` is done on a thread of its own, which begins with the first
  /// question, or by whoever asks when `inBackground` is false.
  PacedWork(bool inBackground, std::function<double()> seconds, double pace,
            std::function<void()> work);
  PacedWork(const PacedWork&) = delete;
  PacedWork& operator=(const PacedWork&) = delete;
  /// Waits for work under way, and for nothing else.
  ~PacedWork();

  /// Has the work done if it is due.
  void ask();

 private:
  bool begin();
  void serve();

  const bool inBackground;
  const std::function<double()> monotonicSeconds;
  const double pace;
  const std::function<void()> work;

  std::mutex lock;
  std::condition_variable changed;
  std::optional<double> begunAt;
  bool wanted = false;
  bool stopping = false;
  std::thread thread;
};

}  // namespace korvantis
