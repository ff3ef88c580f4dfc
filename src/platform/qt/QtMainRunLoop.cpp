#include "platform/qt/QtMainRunLoop.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QPointer>
#include <QTimer>
#include <cmath>
#include <limits>
#include <utility>

namespace korvantis {

namespace {

/// At least one millisecond, also for what is no number, so that a timer never spins; at most
/// what a timer can hold.
int timerMilliseconds(double seconds) {
  const double milliseconds = std::round(seconds * 1000);
  if (!(milliseconds >= 1)) return 1;
  if (milliseconds >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
  return static_cast<int>(milliseconds);
}

RepeatingTimer scheduleRepeatingTimer(double seconds, std::function<void()> fire) {
  if (QCoreApplication::instance() == nullptr) return {[] {}};
  const QPointer<QTimer> timer(new QTimer(QCoreApplication::instance()));
  timer->setTimerType(Qt::PreciseTimer);
  QObject::connect(timer, &QTimer::timeout, timer, std::move(fire));
  timer->start(timerMilliseconds(seconds));
  return {[timer] {
    if (!timer) return;
    timer->stop();
    // Later, since this may be the timer's own firing.
    timer->deleteLater();
  }};
}

void async(std::function<void()> task) {
  if (QCoreApplication::instance() == nullptr) return;
  QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(task), Qt::QueuedConnection);
}

void asyncAfter(double seconds, std::function<void()> task) {
  if (QCoreApplication::instance() == nullptr) return;
  QTimer::singleShot(timerMilliseconds(seconds), Qt::PreciseTimer, QCoreApplication::instance(),
                     std::move(task));
}

}  // namespace

MainRunLoopCalls qtMainRunLoopCalls() {
  return {scheduleRepeatingTimer, async, asyncAfter};
}

}  // namespace korvantis
