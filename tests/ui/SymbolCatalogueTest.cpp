#include <QColor>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QSet>
#include <QSvgRenderer>
#include <array>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

#include "core/InsightKind.h"
#include "state/AppThemeMode.h"
#include "state/MenuBarReadout.h"
#include "state/OstrelPane.h"
#include "ui/theme/SymbolCatalogue.h"
#include "ui/theme/SymbolImageProvider.h"
#include "ui/views/ModelText.h"

namespace korvantis {
namespace {

QString contentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return QString::fromUtf8(file.readAll());
}

/// Every text in `source` that stands behind one of the words that take a symbol, up to the end
/// of the statement.
QSet<QString> symbolsNamedIn(const QString& source) {
  static const QRegularExpression uses(QStringLiteral(
      "\\b(?:name|icon|iconName|symbol|trailingSymbol)(?::|\\(\\)? *=|\\{)[^\\n;]*"));
  static const QRegularExpression texts(QStringLiteral("\"([a-z0-9]+(?:\\.[a-z0-9]+)*)\""));
  QSet<QString> names;
  for (auto use = uses.globalMatch(source); use.hasNext();) {
    for (auto text = texts.globalMatch(use.next().captured()); text.hasNext();) {
      names.insert(text.next().captured(1));
    }
  }
  return names;
}

void expectResolves(const QString& symbolName, const QString& where) {
  EXPECT_FALSE(SymbolCatalogue::glyphPath(symbolName).isEmpty())
      << symbolName.toStdString() << ", named in " << where.toStdString();
}

/// Every symbol that a screen of the program shows.
constexpr std::array everySymbol{"app.fill",
                                 "arrow.clockwise",
                                 "arrow.down.circle.fill",
                                 "arrow.up.arrow.down",
                                 "arrow.up.circle.fill",
                                 "arrow.up.left.and.arrow.down.right",
                                 "battery.100",
                                 "battery.100.bolt",
                                 "bell.badge.fill",
                                 "bolt.fill",
                                 "bolt.heart.fill",
                                 "brain",
                                 "brain.head.profile",
                                 "chart.bar.xaxis.ascending",
                                 "chart.xyaxis.line",
                                 "checkmark.circle.fill",
                                 "checkmark.shield.fill",
                                 "chevron.down",
                                 "chevron.right",
                                 "chevron.up.chevron.down",
                                 "circle",
                                 "circle.lefthalf.filled",
                                 "cpu",
                                 "cpu.fill",
                                 "cup.and.saucer.fill",
                                 "display",
                                 "exclamationmark.triangle.fill",
                                 "externaldrive.fill",
                                 "fanblade",
                                 "flame.fill",
                                 "folder.badge.gearshape",
                                 "folder.fill.badge.gearshape",
                                 "gauge.with.dots.needle.100percent",
                                 "gearshape.2.fill",
                                 "gearshape.fill",
                                 "headphones",
                                 "internaldrive",
                                 "internaldrive.fill",
                                 "iphone.radiowaves.left.and.right",
                                 "list.bullet.below.rectangle",
                                 "macwindow",
                                 "magnifyingglass",
                                 "memorychip",
                                 "memorychip.fill",
                                 "message.fill",
                                 "moon.stars.fill",
                                 "moon.zzz.fill",
                                 "network",
                                 "paperplane.fill",
                                 "phone.bubble.fill",
                                 "pin.fill",
                                 "pin.slash.fill",
                                 "server.rack",
                                 "shippingbox.fill",
                                 "slider.horizontal.3",
                                 "slider.horizontal.below.waveform",
                                 "sparkles",
                                 "sparkles.rectangle.stack.fill",
                                 "speaker.slash.fill",
                                 "speaker.wave.2.fill",
                                 "speaker.wave.3.fill",
                                 "square.and.arrow.down",
                                 "square.grid.2x2.fill",
                                 "square.stack.3d.up.fill",
                                 "stethoscope",
                                 "stop.circle.fill",
                                 "sun.max.fill",
                                 "terminal.fill",
                                 "thermometer.medium",
                                 "trash",
                                 "xmark",
                                 "xmark.circle",
                                 "xmark.circle.fill"};

/// How much of the picture is drawn on.
double inkShare(const QImage& picture) {
  double ink = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) ink += picture.pixelColor(x, y).alphaF();
  }
  return ink / (picture.width() * picture.height());
}

template <typename Enumeration>
void expectIconsResolve(const char* where) {
  for (const Enumeration value : allCases<Enumeration>()) {
    expectResolves(textOf(iconName(value)), QString::fromUtf8(where));
  }
}

TEST(SymbolCatalogue, EverySymbolOfTheEnumerationsResolves) {
  expectIconsResolve<OstrelPane>("OstrelPane");
  expectIconsResolve<AppThemeMode>("AppThemeMode");
  expectIconsResolve<MenuBarReadout>("MenuBarReadout");
  expectIconsResolve<InsightKind>("InsightKind");
}

TEST(SymbolCatalogue, EverySymbolNamedInQMLResolves) {
  int count = 0;
  QDirIterator files(QStringLiteral(KORVANTIS_SOURCE_FOLDER "/ui"), {QStringLiteral("*.qml")},
                     QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    for (const QString& name : symbolsNamedIn(contentOf(path))) {
      expectResolves(name, path);
      ++count;
    }
  }
  EXPECT_GT(count, 10);
}

TEST(SymbolCatalogue, EverySymbolNamedInTheModelsResolves) {
  static const QRegularExpression dotted(
      QStringLiteral("QStringLiteral\\(\"([a-z0-9]+(?:\\.[a-z0-9]+)+|macwindow)\"\\)"));
  int count = 0;
  QDirIterator files(QStringLiteral(KORVANTIS_SOURCE_FOLDER "/ui/panes"), {QStringLiteral("*.cpp")},
                     QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    for (auto match = dotted.globalMatch(contentOf(path)); match.hasNext(); ++count) {
      expectResolves(match.next().captured(1), path);
    }
  }
  EXPECT_GE(count, 3);
}

TEST(SymbolCatalogue, EverySymbolOfTheProgramResolves) {
  for (const char* const name : everySymbol) expectResolves(QString::fromLatin1(name), "the list");
}

TEST(SymbolCatalogue, EveryGlyphIsBuiltInAndDrawsAShape) {
  ASSERT_GE(SymbolCatalogue::glyphPaths().size(), static_cast<qsizetype>(everySymbol.size()));
  for (const QString& symbol : SymbolCatalogue::glyphPaths().keys()) {
    EXPECT_TRUE(QSvgRenderer(SymbolCatalogue::glyphPath(symbol)).isValid()) << symbol.toStdString();
    const double share = inkShare(tintedSymbol(symbol, Qt::white, QSize(32, 32)));
    EXPECT_GT(share, 0.04) << symbol.toStdString() << " is all but empty";
    EXPECT_LT(share, 0.9) << symbol.toStdString() << " is a block";
  }
}

TEST(SymbolCatalogue, SymbolsThatStandSideBySideDiffer) {
  const std::vector<std::pair<const char*, const char*>> neighbours{
      {"pin.fill", "pin.slash.fill"},
      {"battery.100", "battery.100.bolt"},
      {"speaker.wave.3.fill", "speaker.slash.fill"},
      {"internaldrive", "externaldrive.fill"},
      {"server.rack", "externaldrive.fill"},
      {"checkmark.circle.fill", "circle"},
      {"folder.badge.gearshape", "folder.fill.badge.gearshape"},
      {"moon.stars.fill", "moon.zzz.fill"},
      {"cpu.fill", "memorychip.fill"}};
  for (const auto& [first, second] : neighbours) {
    EXPECT_NE(SymbolCatalogue::glyphPath(QString::fromLatin1(first)),
              SymbolCatalogue::glyphPath(QString::fromLatin1(second)))
        << first;
  }
}

TEST(SymbolCatalogue, AnUnknownSymbolHasNoGlyph) {
  EXPECT_TRUE(SymbolCatalogue::glyphPath(QStringLiteral("no.such.symbol")).isEmpty());
}

TEST(SymbolImageProvider, DrawsTheShapeWhollyInTheColour) {
  const QColor colour(250, 58, 85);
  const QImage image = tintedSymbol(QStringLiteral("stop.circle.fill"), colour, QSize(32, 32));
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
  EXPECT_EQ(image.pixelColor(6, 16), colour);
}

TEST(SymbolImageProvider, AnUnknownSymbolIsTransparent) {
  const QImage image = tintedSymbol(QStringLiteral("no.such.symbol"), Qt::red, QSize(8, 8));
  EXPECT_EQ(image.pixelColor(4, 4).alpha(), 0);
}

TEST(SymbolImageProvider, ReadsNameColourAndOpacityFromTheAddress) {
  SymbolImageProvider provider;
  QSize size;
  const QImage image =
      provider.requestImage(QStringLiteral("stop.circle.fill/80ff0000"), &size, QSize(32, 32));
  EXPECT_EQ(size, QSize(32, 32));
  EXPECT_EQ(image.pixelColor(6, 16).red(), 255);
  EXPECT_EQ(image.pixelColor(6, 16).alpha(), 128);
}

}  // namespace
}  // namespace korvantis
