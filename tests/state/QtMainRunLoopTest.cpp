#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <thread>

#include "platform/qt/QtMainRunLoop.h"

namespace korvantis {
namespace {

/// Runs the event loop until `isDone`.
template <typename Condition>
void runUntil(Condition isDone) {
  while (!isDone()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

TEST(QtMainRunLoop, ATimerFiresAgainAndAgainUntilItIsInvalidated) {
  const MainRunLoopCalls calls = qtMainRunLoopCalls();
  int fired = 0;
  const RepeatingTimer timer = calls.scheduleRepeatingTimer(0.005, [&] { ++fired; });
  EXPECT_EQ(fired, 0);
  runUntil([&] { return fired >= 3; });
  timer.invalidate();
  const int atEnd = fired;
  bool isLater = false;
  calls.asyncAfter(0.03, [&] { isLater = true; });
  runUntil([&] { return isLater; });

  EXPECT_EQ(fired, atEnd);
}

TEST(QtMainRunLoop, ATimersFirstFiringComesAfterOneWholePeriod) {
  QElapsedTimer clock;
  clock.start();
  bool hasFired = false;
  const RepeatingTimer timer =
      qtMainRunLoopCalls().scheduleRepeatingTimer(0.05, [&] { hasFired = true; });
  runUntil([&] { return hasFired; });
  timer.invalidate();

  EXPECT_GE(clock.elapsed(), 49);
}

TEST(QtMainRunLoop, ATimerIsPrecise) {
  const RepeatingTimer timer = qtMainRunLoopCalls().scheduleRepeatingTimer(2, [] {});
  const auto timers = QCoreApplication::instance()->findChildren<QTimer*>();
  ASSERT_FALSE(timers.empty());
  EXPECT_EQ(timers.back()->timerType(), Qt::PreciseTimer);
  EXPECT_EQ(timers.back()->interval(), 2000);
  timer.invalidate();
}

TEST(QtMainRunLoop, ATimerCanBeInvalidatedFromItsOwnFiringAndTwice) {
  RepeatingTimer timer;
  int fired = 0;
  timer = qtMainRunLoopCalls().scheduleRepeatingTimer(0.001, [&] {
    ++fired;
    timer.invalidate();
    timer.invalidate();
  });
  bool isLater = false;
  qtMainRunLoopCalls().asyncAfter(0.03, [&] { isLater = true; });
  runUntil([&] { return isLater; });
  timer.invalidate();

  EXPECT_EQ(fired, 1);
}

TEST(QtMainRunLoop, PeriodsThatNoTimerCanHoldAreHeldToWhatOneCan) {
  const auto intervalOf = [](double seconds) {
    const RepeatingTimer timer = qtMainRunLoopCalls().scheduleRepeatingTimer(seconds, [] {});
    const int interval = QCoreApplication::instance()->findChildren<QTimer*>().back()->interval();
    timer.invalidate();
    return interval;
  };
  constexpr int longest = std::numeric_limits<int>::max();

  EXPECT_EQ(intervalOf(0), 1);
  EXPECT_EQ(intervalOf(-5), 1);
  EXPECT_EQ(intervalOf(std::numeric_limits<double>::quiet_NaN()), 1);
  EXPECT_EQ(intervalOf(1e12), longest);
  EXPECT_EQ(intervalOf(std::numeric_limits<double>::infinity()), longest);
}

TEST(QtMainRunLoop, AsyncRunsLaterAndNeverInsideTheCall) {
  bool hasRun = false;
  qtMainRunLoopCalls().async([&] { hasRun = true; });
  EXPECT_FALSE(hasRun);
  runUntil([&] { return hasRun; });

  EXPECT_TRUE(hasRun);
}

TEST(QtMainRunLoop, ConcurrentAsyncFromOtherThreadsRunsEveryTaskOnTheMainThread) {
  const MainRunLoopCalls calls = qtMainRunLoopCalls();
  int onMainThread = 0;
  int elsewhere = 0;
  const auto work = [&] {
    for (int index = 0; index < 50; ++index) {
      calls.async([&] {
        const bool isMain = QThread::currentThread() == QCoreApplication::instance()->thread();
        ++(isMain ? onMainThread : elsewhere);
      });
    }
  };
  std::thread first(work);
  std::thread second(work);
  runUntil([&] { return onMainThread + elsewhere == 100; });
  first.join();
  second.join();

  EXPECT_EQ(onMainThread, 100);
}

TEST(QtMainRunLoop, AsyncAfterWaitsItsTime) {
  QElapsedTimer clock;
  clock.start();
  bool hasRun = false;
  qtMainRunLoopCalls().asyncAfter(0.05, [&] { hasRun = true; });
  runUntil([&] { return hasRun; });

  EXPECT_GE(clock.elapsed(), 49);
}

}  // namespace
}  // namespace korvantis
