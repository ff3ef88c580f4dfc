#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace korvantis {

/// Does one piece of work at a time on a thread of its own, or at once. Whatever the work touches
/// must be declared before this, so that it is still there when the work is waited for at the end.
/// Any thread.
class BackgroundWork {
 public:
  explicit BackgroundWork(bool usesThread) : onThread(usesThread) {}
  BackgroundWork(const BackgroundWork&) = delete;
  BackgroundWork& operator=(const BackgroundWork&) = delete;
  ~BackgroundWork();

  /// Begins `work`, unless some is still under way.
  void start(std::function<void()> work);

 private:
  struct State {
    std::mutex lock;
    std::condition_variable ended;
    bool isBusy = false;
  };

  const bool onThread;
  const std::shared_ptr<State> state = std::make_shared<State>();
};

}  // namespace korvantis
