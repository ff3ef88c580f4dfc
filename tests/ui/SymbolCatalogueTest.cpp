#include <QColor>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QSet>
#include <QSvgRenderer>
#include <gtest/gtest.h>

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

TEST(SymbolCatalogue, EveryGlyphIsBuiltInAndCanBeDrawn) {
  ASSERT_GT(SymbolCatalogue::glyphPaths().size(), 60);
  for (const QString& path : SymbolCatalogue::glyphPaths()) {
    EXPECT_TRUE(QSvgRenderer(path).isValid()) << path.toStdString();
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
