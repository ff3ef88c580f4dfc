// Shows a simulated machine of 300 applications and 1,000 processes for 10,000 ticks (or as many as
// the argument says), going from screen to screen, and tells the memory of the program before and
// after. Fails when it grew.

#include <QGuiApplication>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <string>

#include "ui/quality/ScreenStage.h"

namespace korvantis::test {
namespace {

constexpr int usualTicks = 10000;
constexpr int ticksAScreen = 25;
constexpr int warmUpTicks = 2000;
/// What the heap may have come apart by.
constexpr long allowedKilobytes = 4096;

long residentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("VmRSS:", 0) == 0) return std::stol(line.substr(6));
  }
  return 0;
}

/// What the heap of C++ holds; QML's own objects live elsewhere.
long heapKilobytes() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<long>((heap.uordblks + heap.hblkhd) / 1024);
}

long settledKilobytes(ScreenStage& stage) {
  stage.show(allScreens().front());
  stage.collectGarbage();
  stage.settle();
  static_cast<void>(malloc_trim(0));
  return residentKilobytes();
}

void run(ScreenStage& stage, int ticks) {
  for (int tick = 0; tick < ticks; ++tick) {
    if (tick % ticksAScreen == 0) {
      const auto& screens = allScreens();
      stage.show(screens.at(static_cast<std::size_t>(tick / ticksAScreen) % screens.size()));
    }
    stage.tick();
    QCoreApplication::processEvents();
    static_cast<void>(stage.picture());
  }
}

int soak(int ticks) {
  constexpr CrowdedMachine bigMachine{.applications = 300, .processes = 1000};
  ScreenStage stage(bigMachine, {});
  // Every ring full and the heap as far apart as it comes, which takes some rounds of all screens.
  run(stage, warmUpTicks);
  const long before = settledKilobytes(stage);
  std::printf("before: %ld kB, of them %ld kB heap\n", before, heapKilobytes());
  constexpr int parts = 10;
  long after = before;
  for (int part = 1; part <= parts; ++part) {
    run(stage, ticks / parts);
    after = settledKilobytes(stage);
    std::printf("after %d ticks: %ld kB, of them %ld kB heap\n", ticks / parts * part, after,
                heapKilobytes());
    static_cast<void>(std::fflush(stdout));
  }
  std::printf("difference: %ld kB, allowed: %ld kB\n", after - before, allowedKilobytes);
  return after - before <= allowedKilobytes ? 0 : 1;
}

}  // namespace
}  // namespace korvantis::test

int main(int argumentCount, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  const QGuiApplication application(argumentCount, arguments);
  static_cast<void>(std::setlocale(LC_NUMERIC, "C"));
  const int ticks = argumentCount > 1 ? std::atoi(arguments[1]) : korvantis::test::usualTicks;
  return korvantis::test::soak(ticks);
}
