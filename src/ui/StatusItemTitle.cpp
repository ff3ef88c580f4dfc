#include "ui/StatusItemTitle.h"

#include <QColor>
#include <QImage>

#include "ui/theme/SymbolImageProvider.h"

namespace korvantis {
namespace {

StatusItemImage imageOf(const QImage& picture) {
  StatusItemImage image{picture.width(), {}};
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor color = picture.pixelColor(x, y);
      for (const int part : {color.alpha(), color.red(), color.green(), color.blue()}) {
        image.pixels.push_back(static_cast<std::uint8_t>(part));
      }
    }
  }
  return image;
}

}  // namespace

std::string statusItemTitle(MonitorStore& store, const EngineSnapshot& snapshot) {
  const bool useFahrenheit = store.look()->temperatureUnit() == TemperatureUnit::fahrenheit;
  return " " + store.menuBarSettings()->formattedSummary(snapshot, useFahrenheit).toStdString();
}

std::vector<StatusItemImage> statusItemImages() {
  // At least 3 to 1 against white and against the darkest panels.
  const QColor color(0x8E, 0x95, 0xA3);
  std::vector<StatusItemImage> images;
  for (const int size : {16, 22, 24, 32, 48}) {
    images.push_back(imageOf(
        tintedSymbol(QStringLiteral("chart.bar.xaxis.ascending"), color, QSize(size, size))));
  }
  return images;
}

}  // namespace korvantis
