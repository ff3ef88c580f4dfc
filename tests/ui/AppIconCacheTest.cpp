#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>

#include "ui/views/AppIconCache.h"
#include "ui/views/AppIconProvider.h"

namespace korvantis {
namespace {

const QString editor = QStringLiteral("/usr/share/applications/editor.app");
const std::string systemMonitor = "/System/Applications/Utilities/Activity Monitor.app";
const QString fallback = QStringLiteral("stop.circle.fill");
const std::string greenVector =
    R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 10 10"><rect width="10" height="10" fill="#00ff00"/></svg>)";

std::string png(int width, int height, const QColor& color) {
  QImage image(width, height, QImage::Format_ARGB32);
  image.fill(color);
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  EXPECT_TRUE(image.save(&file, "PNG"));
  return file.data().toStdString();
}

/// A desktop with the icons that a test puts there.
class AppIconCacheTest : public testing::Test {
 protected:
  std::map<std::string, std::string> icons;
  /// What is there without an icon.
  std::set<std::string> bare;
  std::vector<std::string> checked;
  std::vector<std::string> asked;

  IconCalls calls() {
    return {[this](const std::string& path) {
              checked.push_back(path);
              return icons.count(path) > 0 || bare.count(path) > 0;
            },
            [this](const std::string& path) -> std::optional<std::string> {
              asked.push_back(path);
              const auto icon = icons.find(path);
              return icon == icons.end() ? std::nullopt : std::optional(icon->second);
            }};
  }
  AppIconCache cache{calls()};

  void expectFallback(const AppIcon& icon) {
    EXPECT_TRUE(icon.isTemplate);
    EXPECT_EQ(icon.image.deviceIndependentSize(), QSizeF(24, 24));
    const QPoint left(icon.image.width() / 5, icon.image.height() / 2);
    EXPECT_EQ(icon.image.pixelColor(left).alpha(), 255) << "nothing is drawn";
    EXPECT_EQ(icon.image.pixelColor(0, 0).alpha(), 0);
  }
};

TEST_F(AppIconCacheTest, AnIconIsSetTo24By24WhateverItsPixels) {
  for (const int pixels : {16, 24, 48, 128, 512}) {
    icons[editor.toStdString()] = png(pixels, pixels, Qt::red);
    AppIconCache fresh(calls());
    const AppIcon icon = fresh.icon(editor, fallback);
    EXPECT_FALSE(icon.isTemplate);
    EXPECT_EQ(icon.image.deviceIndependentSize(), QSizeF(24, 24)) << pixels;
    EXPECT_EQ(icon.image.pixelColor(icon.image.width() / 2, icon.image.height() / 2), Qt::red);
    EXPECT_LE(icon.image.width(), 96) << "large pictures are not kept";
  }
}

TEST_F(AppIconCacheTest, AVectorIconIsDrawnSharpEnoughForEveryScreen) {
  icons[editor.toStdString()] = greenVector;
  const AppIcon icon = cache.icon(editor, fallback);
  EXPECT_EQ(icon.image.size(), QSize(96, 96));
  EXPECT_EQ(icon.image.deviceIndependentSize(), QSizeF(24, 24));
  EXPECT_EQ(icon.image.pixelColor(3, 90), Qt::green);
}

TEST_F(AppIconCacheTest, AnOblongIconKeepsItsShape) {
  icons[editor.toStdString()] = png(48, 24, Qt::red);
  const AppIcon icon = cache.icon(editor, fallback);
  EXPECT_EQ(icon.image.size(), QSize(48, 48));
  EXPECT_EQ(icon.image.pixelColor(24, 24), Qt::red);
  EXPECT_EQ(icon.image.pixelColor(24, 4).alpha(), 0);
  EXPECT_EQ(icon.image.pixelColor(24, 44).alpha(), 0);
}

TEST_F(AppIconCacheTest, TheDesktopIsAskedOnceForEachPath) {
  icons[editor.toStdString()] = greenVector;
  const QString other = QStringLiteral("/other.app");
  icons[other.toStdString()] = png(48, 48, Qt::red);
  for (int drawing = 0; drawing < 3; ++drawing) {
    EXPECT_EQ(cache.icon(editor, fallback).image.pixelColor(9, 9), Qt::green);
    EXPECT_EQ(cache.icon(other, fallback).image.pixelColor(9, 9), Qt::red);
  }
  EXPECT_THAT(checked, testing::ElementsAre(editor.toStdString(), "/other.app"));
  EXPECT_THAT(asked, testing::ElementsAre(editor.toStdString(), "/other.app"));
}

TEST_F(AppIconCacheTest, APathThatVanishedAfterItWasCachedStillGivesTheCachedImage) {
  icons[editor.toStdString()] = greenVector;
  const QImage first = cache.icon(editor, fallback).image;
  icons.clear();
  const AppIcon later = cache.icon(editor, fallback);
  EXPECT_FALSE(later.isTemplate);
  EXPECT_EQ(later.image, first);
}

TEST_F(AppIconCacheTest, AnAbsentPathAndAnEmptyPathBothGoToTheFallbackSymbol) {
  expectFallback(cache.icon(std::nullopt, fallback));
  expectFallback(cache.icon(QString(), fallback));
  expectFallback(cache.icon(QStringLiteral(""), fallback));
  EXPECT_TRUE(checked.empty()) << "nothing was looked for on disk";
  EXPECT_TRUE(asked.empty());
}

TEST_F(AppIconCacheTest, MissesAreNotCached) {
  for (int drawing = 0; drawing < 3; ++drawing) expectFallback(cache.icon(editor, fallback));
  EXPECT_EQ(checked.size(), 3U);
  EXPECT_TRUE(asked.empty()) << "nobody is asked for the icon of nothing";
  icons[editor.toStdString()] = greenVector;
  EXPECT_FALSE(cache.icon(editor, fallback).isTemplate);
}

TEST_F(AppIconCacheTest, AnApplicationWithoutAnIconIsAMiss) {
  bare.insert(editor.toStdString());
  expectFallback(cache.icon(editor, fallback));
  expectFallback(cache.icon(editor, fallback));
  EXPECT_EQ(asked.size(), 2U);
}

TEST_F(AppIconCacheTest, ADamagedIconIsAMiss) {
  const std::string whole = png(48, 48, Qt::red);
  for (const std::string& bytes :
       {std::string(), std::string("no picture"), whole.substr(0, 20), std::string("\x89PNG"),
        std::string("<svg"), std::string(3000, '\0')}) {
    icons[editor.toStdString()] = bytes;
    expectFallback(cache.icon(editor, fallback));
  }
}

TEST_F(AppIconCacheTest, TheFallbackSymbolIsDrawnAnewAndNeverKept) {
  expectFallback(cache.icon(editor, fallback));
  const AppIcon other = cache.icon(editor, QStringLiteral("cpu.fill"));
  EXPECT_TRUE(other.isTemplate);
  EXPECT_NE(other.image, cache.icon(editor, fallback).image);
}

TEST_F(AppIconCacheTest, TheLastResortIsTheSystemsOwnMonitorAndIsNotCached) {
  icons[systemMonitor] = greenVector;
  const QString unknown = QStringLiteral("no.such.symbol");
  const AppIcon icon = cache.icon(std::nullopt, unknown);
  EXPECT_FALSE(icon.isTemplate);
  EXPECT_EQ(icon.image.deviceIndependentSize(), QSizeF(24, 24));
  EXPECT_EQ(icon.image.pixelColor(9, 9), Qt::green);
  static_cast<void>(cache.icon(editor, unknown));
  EXPECT_THAT(asked, testing::ElementsAre(systemMonitor, systemMonitor));
}

TEST_F(AppIconCacheTest, WithoutEvenThatThereIsAnEmptyPicture) {
  const AppIcon icon = cache.icon(std::nullopt, QStringLiteral("no.such.symbol"));
  EXPECT_EQ(icon.image.deviceIndependentSize(), QSizeF(24, 24));
  EXPECT_EQ(icon.image.pixelColor(12, 12).alpha(), 0);
}

TEST_F(AppIconCacheTest, AllScreensShareOne) {
  EXPECT_EQ(&AppIconCache::shared(), &AppIconCache::shared());
}

TEST_F(AppIconCacheTest, TheAddressOfAnImageTellsSymbolColourAndPath) {
  const QString path = QStringLiteral("/opt/ä b%20#?/+.app");
  icons[path.toStdString()] = greenVector;
  AppIconProvider provider(cache);
  QSize size;
  const QString code = QString::fromLatin1(path.toUtf8().toBase64());
  const QImage image =
      provider.requestImage(fallback + QStringLiteral("/ff0000/") + code, &size, QSize(36, 36));
  EXPECT_EQ(size, QSize(36, 36));
  EXPECT_EQ(image.size(), QSize(36, 36)) << "a screen of 1.5 pixels a point asks for 36";
  EXPECT_EQ(image.pixelColor(1, 34), Qt::green) << "an icon fills its place";
}

TEST_F(AppIconCacheTest, TheSymbolOfAnImageIsTintedAndSmallerThanAnIcon) {
  AppIconProvider provider(cache);
  const QImage image =
      provider.requestImage(fallback + QStringLiteral("/ff0000/"), nullptr, QSize(48, 48));
  EXPECT_EQ(image.pixelColor(12, 24), Qt::red);
  EXPECT_EQ(image.pixelColor(4, 24).alpha(), 0);
}

TEST_F(AppIconCacheTest, AnAddressWithoutSenseGivesAnEmptyImage) {
  AppIconProvider provider(cache);
  QSize size;
  for (const char* id : {"", "/", "a/b/c/d", "no.such.symbol/x/%%%"}) {
    EXPECT_EQ(provider.requestImage(QString::fromLatin1(id), &size, QSize()).size(), QSize(24, 24));
    EXPECT_EQ(size, QSize(24, 24));
  }
}

}  // namespace
}  // namespace korvantis
