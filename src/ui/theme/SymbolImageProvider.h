#pragma once

#include <QColor>
#include <QImage>
#include <QQuickImageProvider>
#include <QSize>
#include <QString>

namespace korvantis {

/// A system symbol drawn in one colour: the shape of its glyph, wholly in `color`. A symbol that
/// is not in the catalogue gives a transparent picture. Main thread.
QImage tintedSymbol(const QString& symbolName, const QColor& color, const QSize& size);

/// Gives QML the symbols as "image://symbol/<name>/<colour without #>", in the size asked for.
class SymbolImageProvider : public QQuickImageProvider {
 public:
  SymbolImageProvider();

  QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace korvantis
