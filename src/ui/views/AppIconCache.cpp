#include "ui/views/AppIconCache.h"

#include <QByteArray>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <utility>

#include "ui/theme/SymbolCatalogue.h"
#include "ui/theme/SymbolImageProvider.h"

namespace korvantis {
namespace {

constexpr int points = 24;
constexpr int sharpestScale = 4;
constexpr int mostPixels = points * sharpestScale;
constexpr const char* systemMonitor = "/System/Applications/Utilities/Activity Monitor.app";

QImage emptyPicture(int pixels) {
  QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  picture.setDevicePixelRatio(static_cast<double>(pixels) / points);
  return picture;
}

/// The largest rectangle of this shape in the middle of a square.
QRectF centred(const QSizeF& shape, int side) {
  const QSizeF fitted = shape.scaled(side, side, Qt::KeepAspectRatio);
  return {(side - fitted.width()) / 2, (side - fitted.height()) / 2, fitted.width(),
          fitted.height()};
}

/// Painters count in points; here every figure is in pixels.
template <typename Draw>
QImage square(int pixels, const Draw& draw) {
  QImage picture = emptyPicture(pixels);
  const double ratio = picture.devicePixelRatio();
  picture.setDevicePixelRatio(1);
  {
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    draw(painter);
  }
  picture.setDevicePixelRatio(ratio);
  return picture;
}

std::optional<QImage> ofVector(const QByteArray& bytes) {
  QSvgRenderer renderer(bytes);
  if (!renderer.isValid() || renderer.defaultSize().isEmpty()) return std::nullopt;
  return square(mostPixels, [&renderer](QPainter& painter) {
    renderer.render(&painter, centred(renderer.viewBoxF().size(), mostPixels));
  });
}

std::optional<QImage> ofPixels(const QByteArray& bytes) {
  const QImage read = QImage::fromData(bytes, "PNG");
  if (read.isNull()) return std::nullopt;
  const int side = std::min(std::max(read.width(), read.height()), mostPixels);
  // Halving by steps keeps fine lines that one great step would lose.
  const QImage fitted = read.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  return square(side, [&fitted, side](QPainter& painter) {
    painter.drawImage(centred(fitted.size(), side), fitted);
  });
}

}  // namespace

AppIconCache::AppIconCache(IconCalls iconCalls) : calls(std::move(iconCalls)) {}

AppIconCache& AppIconCache::shared() {
  static AppIconCache instance(systemIconCalls());
  return instance;
}

AppIcon AppIconCache::icon(const std::optional<QString>& bundlePath,
                           const QString& fallbackSymbol) {
  if (bundlePath && !bundlePath->isEmpty()) {
    const std::string path = bundlePath->toStdString();
    const auto known = cache.find(path);
    if (known != cache.end()) return {known->second, false};
    if (calls.fileExistsAtPath(path)) {
      if (auto image = ofFile(path)) return {cache.emplace(path, *image).first->second, false};
    }
  }
  if (!SymbolCatalogue::glyphPath(fallbackSymbol).isEmpty()) {
    QImage symbol = tintedSymbol(fallbackSymbol, Qt::black, QSize(mostPixels, mostPixels));
    symbol.setDevicePixelRatio(sharpestScale);
    return {std::move(symbol), true};
  }
  return {ofFile(systemMonitor).value_or(emptyPicture(points)), false};
}

std::optional<QImage> AppIconCache::ofFile(const std::string& path) const {
  const auto bytes = calls.iconForFile(path);
  if (!bytes) return std::nullopt;
  const QByteArray content = QByteArray::fromStdString(*bytes);
  constexpr const char* pngSignature = "\x89PNG";
  return content.startsWith(pngSignature) ? ofPixels(content) : ofVector(content);
}

}  // namespace korvantis
