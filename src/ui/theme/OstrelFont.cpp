#include "ui/theme/OstrelFont.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>

namespace korvantis {

namespace {

double logicalDotsPerInch() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  return screen ? screen->logicalDotsPerInchY() : 96.0;
}

/// The first of `families` that is installed, else the desktop's own `fallback`.
QFont face(const QStringList& families, QFontDatabase::SystemFont fallback) {
  QFont font = QFontDatabase::systemFont(fallback);
  font.setFamilies(families + font.families());
  return font;
}

QFont sized(QFont font, double size, int weight, double tracking) {
  font.setPointSizeF(OstrelFont::pointSize(size, logicalDotsPerInch()));
  font.setWeight(static_cast<QFont::Weight>(weight));
  if (tracking > 0) font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
  return font;
}

}  // namespace

double OstrelFont::pointSize(double size, double logicalDotsPerInch) {
  return size * 72.0 / logicalDotsPerInch;
}

QFont OstrelFont::system(double size, int weight, double tracking) {
  static const QFont font = face({QStringLiteral("Inter")}, QFontDatabase::GeneralFont);
  return sized(font, size, weight, tracking);
}

QFont OstrelFont::rounded(double size, int weight, double tracking) {
  static const QFont font =
      face({QStringLiteral("Quicksand"), QStringLiteral("Inter")}, QFontDatabase::GeneralFont);
  return sized(font, size, weight, tracking);
}

QFont OstrelFont::monospaced(double size, int weight, double tracking) {
  static const QFont font = face({QStringLiteral("JetBrains Mono")}, QFontDatabase::FixedFont);
  return sized(font, size, weight, tracking);
}

}  // namespace korvantis
