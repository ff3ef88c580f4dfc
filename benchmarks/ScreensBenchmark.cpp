// What the screens cost the main thread with 300 applications and 1,000 processes, drawn by the
// software renderer at 1220 by 790: a tick with each of them shown, a key typed into the search
// field, and scrolling. The snapshots are made beforehand and handed over as the engine hands them.
//
// Times are the processor's, of the main thread; a drawn frame also waits up to 5 ms for its turn,
// which "wall_ms" includes.

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <clocale>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "ui/quality/ItemWalk.h"
#include "ui/quality/ScreenStage.h"

namespace korvantis::test {
namespace {

constexpr CrowdedMachine bigMachine{.applications = 300, .processes = 1000};

double mainThreadSeconds() {
  timespec now{};
  static_cast<void>(clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now));
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

/// Runs the main loop until a frame has been drawn, or nothing was to be drawn.
void drawFrame(QQuickWindow& window) {
  bool isDone = false;
  const auto drawn = QObject::connect(&window, &QQuickWindow::frameSwapped, [&] { isDone = true; });
  QTimer giveUp;
  giveUp.setSingleShot(true);
  QObject::connect(&giveUp, &QTimer::timeout, [&] { isDone = true; });
  giveUp.start(100);
  while (!isDone) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  QObject::disconnect(drawn);
}

/// Times of a step, added up as they are taken.
struct Times {
  std::vector<double> all;
  double wall = 0;

  template <typename Step>
  void take(benchmark::State& state, Step step) {
    const auto began = std::chrono::steady_clock::now();
    const double before = mainThreadSeconds();
    step();
    all.push_back(mainThreadSeconds() - before);
    wall += std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    state.SetIterationTime(all.back());
  }

  void report(benchmark::State& state) {
    std::sort(all.begin(), all.end());
    state.counters["p95_ms"] = all.at(all.size() * 95 / 100) * 1000;
    state.counters["worst_ms"] = all.back() * 1000;
    state.counters["wall_ms"] = wall / static_cast<double>(all.size()) * 1000;
  }
};

std::unique_ptr<ScreenStage> stageOf(const Screen& screen) {
  auto stage = std::make_unique<ScreenStage>(bigMachine, ScreenStage::Look{});
  stage->show(screen);
  for (int turn = 0; turn < 3; ++turn) {
    stage->tick();
    stage->settle();
  }
  return stage;
}

/// A tick: the store takes the snapshot, the models and the items follow, the frame is drawn.
void tick(benchmark::State& state, const Screen& screen) {
  const auto stage = stageOf(screen);
  Times times;
  double beforeDrawing = 0;
  for (auto _ : state) {
    stage->prepareTurn();
    times.take(state, [&] {
      const double before = mainThreadSeconds();
      stage->showTurn();
      beforeDrawing += mainThreadSeconds() - before;
      drawFrame(stage->window());
    });
  }
  state.counters["models_ms"] = beforeDrawing / static_cast<double>(state.iterations()) * 1000;
  times.report(state);
}

/// The same with the window hidden.
void hiddenTick(benchmark::State& state) {
  const auto stage = stageOf(allScreens().at(1));
  stage->window().hide();
  Times times;
  for (auto _ : state) {
    stage->prepareTurn();
    times.take(state, [&] {
      stage->showTurn();
      QCoreApplication::processEvents();
    });
  }
  times.report(state);
}

/// A key in the search field, from its event to the drawn frame.
void keystroke(benchmark::State& state) {
  const auto stage = stageOf(allScreens().at(1));
  QTest::keyClick(&stage->window(), Qt::Key_F, Qt::ControlModifier);
  const std::string typed = "browser 12";
  std::size_t next = 0;
  Times times;
  for (auto _ : state) {
    if (next == typed.size()) {
      stage->store().setProcessSearchText({});
      stage->settle();
      next = 0;
    }
    const char key = typed.at(next++);
    times.take(state, [&] {
      QTest::keyClick(&stage->window(), key);
      drawFrame(stage->window());
    });
  }
  if (stage->store().processSearchText().isEmpty() && next != 0)
    state.SkipWithError("what was typed arrived nowhere");
  times.report(state);
}

/// The widest of the screen's lists.
QQuickItem* listOf(ScreenStage& stage) {
  QQuickItem* widest = nullptr;
  for (const ShownItem& shown : shownItems(stage.content())) {
    if (scrollsDown(shown.item) && (!widest || shown.item->width() > widest->width()))
      widest = shown.item;
  }
  return widest;
}

/// One frame of a list that is scrolled down by about a row, as by a quick wheel.
void scrolling(benchmark::State& state, const Screen& screen) {
  constexpr double step = 48;
  const auto stage = stageOf(screen);
  QQuickItem* const list = listOf(*stage);
  if (!list) {
    state.SkipWithError("nothing scrolls here");
    return;
  }
  Times times;
  double top = 0;
  for (auto _ : state) {
    top += step;
    if (top > list->property("contentHeight").toDouble() - list->height()) top = 0;
    const double position = list->property("originY").toDouble() + top;
    times.take(state, [&] {
      list->setProperty("contentY", position);
      drawFrame(stage->window());
    });
  }
  times.report(state);
}

template <typename Run>
void add(const std::string& name, int rounds, Run run) {
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->UseManualTime()
      ->Iterations(rounds)
      ->Unit(benchmark::kMillisecond);
}

void registerAll() {
  for (const Screen& screen : allScreens()) {
    add(std::string("tick/") + screen.name, 60, [screen](auto& state) { tick(state, screen); });
  }
  add("tick/hidden", 60, [](auto& state) { hiddenTick(state); });
  add("keystroke", 100, [](auto& state) { keystroke(state); });
  for (const std::size_t index : {1U, 2U, 4U}) {
    const Screen& screen = allScreens().at(index);
    add(std::string("scrolling/") + screen.name, 200,
        [screen](auto& state) { scrolling(state, screen); });
  }
}

}  // namespace
}  // namespace korvantis::test

int main(int argumentCount, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  benchmark::Initialize(&argumentCount, arguments);
  const QGuiApplication application(argumentCount, arguments);
  static_cast<void>(std::setlocale(LC_NUMERIC, "C"));
  korvantis::test::registerAll();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
