#include "ui/theme/SymbolImageProvider.h"

#include <QCache>
#include <QPainter>
#include <QSvgRenderer>

#include "ui/theme/SymbolCatalogue.h"

namespace korvantis {

namespace {

/// For an item that asks for no size of its own.
constexpr QSize defaultSize(16, 16);

/// Glyphs never change, and drawing one from its outlines takes a tenth of a millisecond. Rows
/// without an icon of their own ask for the same few with every tick.
constexpr int keptKilobytes = 1024;

QImage drawn(const QString& symbolName, const QColor& color, const QSize& size) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  const QString path = SymbolCatalogue::glyphPath(symbolName);
  if (path.isEmpty()) return image;
  QSvgRenderer renderer(path);
  QPainter painter(&image);
  renderer.render(&painter);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(image.rect(), color);
  return image;
}

}  // namespace

QImage tintedSymbol(const QString& symbolName, const QColor& color, const QSize& size) {
  static QCache<QString, QImage> kept(keptKilobytes);
  const QString key = QStringLiteral("%1 %2 %3 %4")
                          .arg(symbolName)
                          .arg(color.rgba())
                          .arg(size.width())
                          .arg(size.height());
  if (const QImage* const known = kept.object(key)) return *known;
  const QImage image = drawn(symbolName, color, size);
  kept.insert(key, new QImage(image), static_cast<int>(image.sizeInBytes() / 1024) + 1);
  return image;
}

SymbolImageProvider::SymbolImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage SymbolImageProvider::requestImage(const QString& id, QSize* size,
                                         const QSize& requestedSize) {
  const QString symbolName = id.section(u'/', 0, 0);
  const QColor color(u'#' + id.section(u'/', 1, 1));
  const QSize pixels = requestedSize.isEmpty() ? defaultSize : requestedSize;
  if (size) *size = pixels;
  return tintedSymbol(symbolName, color, pixels);
}

}  // namespace korvantis
