#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include "ui/views/SparklineView.h"

namespace korvantis {
namespace {

const QColor ink(10, 132, 255);

/// What a sparkline of 100 by 40 draws over nothing.
QImage drawn(const QList<double>& values) {
  SparklineView view;
  view.setSize({100, 40});
  view.setColor(ink);
  view.setMaxValue(100);
  view.setValues(values);
  QImage image(100, 40, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  view.paint(&painter);
  return image;
}

double opacityAt(const QImage& image, int x, int y) {
  return image.pixelColor(x, y).alphaF();
}

TEST(SparklineView, TheGroundFadesFrom032AtTheTopOfTheViewTo002AtItsBottom) {
  const QImage image = drawn({100, 100, 100});
  EXPECT_NEAR(opacityAt(image, 50, 3), 0.32 - 0.30 * 3.5 / 40, 0.01);
  EXPECT_NEAR(opacityAt(image, 50, 20), 0.32 - 0.30 * 20.5 / 40, 0.01);
  EXPECT_NEAR(opacityAt(image, 50, 39), 0.02, 0.01);
  EXPECT_NEAR(image.pixelColor(50, 20).blue(), 255, 4);
}

TEST(SparklineView, TheGroundOfALowLineHasTheShadeOfItsHeight) {
  EXPECT_NEAR(opacityAt(drawn({25, 25}), 50, 34), 0.32 - 0.30 * 34.5 / 40, 0.01);
}

TEST(SparklineView, TheLineIs175Wide) {
  const QImage image = drawn({50, 50, 50});
  // Above the line there is nothing, below it the ground, which counts where the line leaves off.
  double amount = 0;
  for (int y = 10; y < 30; ++y) {
    const double ground = y < 20 ? 0 : 0.32 - 0.30 * (y + 0.5) / 40;
    amount += (opacityAt(image, 50, y) - ground) / (1 - ground);
  }
  EXPECT_NEAR(amount, 1.75, 0.06);
  EXPECT_GT(opacityAt(image, 50, 19), 0.85);
}

TEST(SparklineView, TheEndsOfTheLineAreRound) {
  const QImage image = drawn({0, 50, 0});
  // At the peak a pointed join would reach far above the line's own half width.
  EXPECT_EQ(opacityAt(image, 50, 17), 0);
  EXPECT_GT(opacityAt(image, 50, 19), 0.5);
}

TEST(SparklineView, AnEmptyListDrawsNothing) {
  QImage nothing(100, 40, QImage::Format_ARGB32_Premultiplied);
  nothing.fill(Qt::transparent);
  EXPECT_EQ(drawn({}), nothing);
}

TEST(SparklineView, ASingleValueIsADotAtTheLeftEdge) {
  const QImage image = drawn({50});
  EXPECT_GT(opacityAt(image, 0, 19), 0.5);
  EXPECT_LT(opacityAt(image, 3, 19), 0.3);
}

TEST(SparklineView, Is38HighUnlessToldOtherwise) {
  EXPECT_EQ(SparklineView().implicitHeight(), 38);
}

}  // namespace
}  // namespace korvantis
