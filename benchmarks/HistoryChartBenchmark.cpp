// What one redraw of the history chart costs with 100,000 rows, the rows of about a year: its
// curves alone, and the whole item with grid and labels as the software renderer asks for it. The
// argument is the number of pixels to a unit.

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdint>

#include "ui/panes/HistoryChartItem.h"
#include "ui/panes/HistoryChartPicture.h"

namespace korvantis {
namespace {

constexpr int rows = 100'000;
constexpr QSize room(1100, 210);

/// A year of days and nights, with noise from row to row and a spike now and then.
HistorySeries year() {
  HistorySeries series;
  std::uint32_t noise = 1;
  for (int row = 0; row < rows; ++row) {
    noise = noise * 1664525U + 1013904223U;
    const double part = static_cast<double>(noise >> 8U) / (1U << 24U);
    const double avg = 30 + 20 * std::sin(row * 2 * M_PI / 288) + 25 * part;
    series.points.append({1.7e9 + 300.0 * row, avg, row % 97 == 0 ? 98 : avg + 15 * part});
  }
  return series;
}

void curves(benchmark::State& state) {
  const HistorySeries series = year();
  for ([[maybe_unused]] auto iteration : state) {
    const HistoryChartPicture picture{historyChartScale(series.points, 100), QColor(10, 132, 255),
                                      room.width() - 2 * HistoryChartPicture::margin,
                                      room.height() - 2 * HistoryChartPicture::margin,
                                      static_cast<double>(state.range(0))};
    benchmark::DoNotOptimize(picture.draw(series.points).constBits());
  }
}
BENCHMARK(curves)
    ->Name("History chart/curves of 100,000 rows")
    ->Arg(1)
    ->Arg(2)
    ->MinTime(2)
    ->Unit(benchmark::kMillisecond);

void redraw(benchmark::State& state) {
  HistoryChartItem item;
  item.setSize(room);
  item.setColor(QColor(10, 132, 255));
  item.setUnit(QStringLiteral("%"));
  item.setSeries(year());
  const auto ratio = static_cast<int>(state.range(0));
  QImage image(room * ratio, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  for ([[maybe_unused]] auto iteration : state) {
    image.fill(Qt::transparent);
    QPainter painter(&image);
    item.paint(&painter);
  }
}
BENCHMARK(redraw)
    ->Name("History chart/redraw with 100,000 rows")
    ->Arg(1)
    ->Arg(2)
    ->MinTime(2)
    ->Unit(benchmark::kMillisecond);

/// What a move of the pointer costs.
void read(benchmark::State& state) {
  HistoryChartItem item;
  item.setSize(room);
  item.setSeries(year());
  double x = 0;
  for ([[maybe_unused]] auto iteration : state) {
    x = std::fmod(x + 37, room.width());
    item.readAt(x);
  }
}
BENCHMARK(read)->Name("History chart/reading among 100,000 rows")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace korvantis

/// Fonts need an application object.
int main(int argumentCount, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argumentCount, arguments);
  benchmark::Initialize(&argumentCount, arguments);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
