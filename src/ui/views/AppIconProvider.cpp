#include "ui/views/AppIconProvider.h"

#include <QByteArray>
#include <QColor>
#include <QPainter>
#include <cstddef>

#include "ui/views/AppIconCache.h"

namespace korvantis {
namespace {

/// For an item that asks for no size of its own.
constexpr QSize defaultSize(24, 24);

/// As many as may be in view at once, and more.
constexpr std::size_t mostFittings = 256;

/// A symbol has the height of letters, an icon that of the line.
constexpr double symbolShare = 0.8125;

/// The picture in the middle of so many pixels, as large as `share` of them.
QImage fitted(const QImage& picture, const QSize& pixels, double share) {
  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  const int side = qRound(qMin(pixels.width(), pixels.height()) * share);
  QImage scaled = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  scaled.setDevicePixelRatio(1);
  QPainter painter(&image);
  painter.drawImage((pixels.width() - scaled.width()) / 2, (pixels.height() - scaled.height()) / 2,
                    scaled);
  return image;
}

void tint(QImage& image, const QColor& color) {
  QPainter painter(&image);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(image.rect(), color);
}

}  // namespace

AppIconProvider::AppIconProvider(AppIconCache& iconCache)
    : QQuickImageProvider(QQuickImageProvider::Image), cache(iconCache) {}

QImage AppIconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
  const QString symbol = id.section(u'/', 0, 0);
  const QColor color(u'#' + id.section(u'/', 1, 1));
  const QByteArray path = QByteArray::fromBase64(id.section(u'/', 2).toLatin1());
  const QSize pixels = requestedSize.isEmpty() ? defaultSize : requestedSize;
  if (size) *size = pixels;
  const AppIcon icon = cache.icon(QString::fromUtf8(path), symbol);
  const Fitting fitting{icon.image.cacheKey(), pixels.width(), pixels.height(),
                        icon.isTemplate ? color.rgba() : 0};
  const auto known = fittings.find(fitting);
  if (known != fittings.end()) return known->second;
  QImage image = fitted(icon.image, pixels, icon.isTemplate ? symbolShare : 1);
  if (icon.isTemplate) tint(image, color);
  if (fittings.size() >= mostFittings) fittings.clear();
  fittings.emplace(fitting, image);
  return image;
}

}  // namespace korvantis
