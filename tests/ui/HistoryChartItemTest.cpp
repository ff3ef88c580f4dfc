#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "ui/panes/HistoryChartItem.h"

namespace korvantis {
namespace {

HistorySeries seriesOf(int count) {
  HistorySeries series;
  for (int index = 0; index < count; ++index) {
    series.points.append({1'795'219'200.0 + 300 * index, 20, index == count / 2 ? 90.0 : 40.0});
  }
  return series;
}

class HistoryChartItemTest : public testing::Test {
 protected:
  HistoryChartItem item;

  void show(const HistorySeries& series) {
    item.setSize({1000, 210});
    item.setColor(QColor(10, 132, 255));
    item.setUnit(QStringLiteral("%"));
    item.setSeries(series);
  }
  QImage painted(double ratio) {
    QImage image(QSizeF(item.size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    item.paint(&painter);
    return image;
  }
};

TEST_F(HistoryChartItemTest, LeavesRoomForValuesAtTheRightAndTimesBelow) {
  show(seriesOf(100));
  EXPECT_LT(item.plot().right(), 980);
  EXPECT_GT(item.plot().right(), 900);
  EXPECT_LT(item.plot().bottom(), 195);
  EXPECT_GT(item.plot().height(), 160);
}

TEST_F(HistoryChartItemTest, PaintsTheCurvesWhereItsReadingsLieAtEveryRatio) {
  show(seriesOf(100));
  item.readAt(500);
  const HistoryChartReading reading = item.reading();
  for (const double ratio : {1.0, 1.25, 2.0}) {
    const QImage image = painted(ratio);
    const QPoint at(static_cast<int>(reading.x * ratio),
                    static_cast<int>(reading.averageY * ratio));
    EXPECT_EQ(image.pixelColor(at), QColor(10, 132, 255)) << ratio;
  }
}

TEST_F(HistoryChartItemTest, ReadsTheRowUnderThePointer) {
  show(seriesOf(101));
  QSignalSpy changed(&item, &HistoryChartItem::readingChanged);
  EXPECT_FALSE(item.reading().isShown);
  item.readAt(item.plot().center().x());
  EXPECT_TRUE(item.reading().isShown);
  EXPECT_EQ(item.reading().peak, QStringLiteral("Peak: 90.0 %"));
  EXPECT_EQ(item.reading().average, QStringLiteral("Average: 20.0 %"));
  EXPECT_NEAR(item.reading().x, item.plot().center().x(), 1e-9);
  EXPECT_LT(item.reading().peakY, item.reading().averageY);
  EXPECT_EQ(changed.size(), 1);
  item.stopReading();
  EXPECT_FALSE(item.reading().isShown);
}

TEST_F(HistoryChartItemTest, TheKeysBeginAtTheEndThatTheyPointAwayFrom) {
  show(seriesOf(5));
  item.readNext();
  EXPECT_EQ(item.reading().x, item.plot().left());
  item.stopReading();
  item.readPrevious();
  EXPECT_EQ(item.reading().x, item.plot().right());
  item.readNext();
  EXPECT_EQ(item.reading().x, item.plot().right());
  item.readPrevious();
  EXPECT_EQ(item.reading().x, item.plot().left() + item.plot().width() * 0.75);
  item.readFirst();
  EXPECT_EQ(item.reading().x, item.plot().left());
  item.readLast();
  EXPECT_EQ(item.reading().x, item.plot().right());
}

TEST_F(HistoryChartItemTest, AnotherMetricOfTheSameRowsKeepsTheReadingAndOtherRowsEndIt) {
  show(seriesOf(5));
  item.readFirst();
  HistorySeries watts = seriesOf(5);
  watts.points[0].avg = 7;
  item.setUnit(QStringLiteral("W"));
  item.setSeries(watts);
  EXPECT_EQ(item.reading().average, QStringLiteral("Average: 7.0 W"));
  HistorySeries others = seriesOf(3);
  for (HistoryPoint& point : others.points) point.date += 7;
  item.setSeries(others);
  EXPECT_FALSE(item.reading().isShown);
  item.readLast();
  item.setSeries({});
  EXPECT_FALSE(item.reading().isShown);
}

TEST_F(HistoryChartItemTest, WithoutRowsNothingIsReadAndTheGridStays) {
  show({});
  item.setRestingTop(100);
  item.readAt(300);
  item.readFirst();
  item.readNext();
  EXPECT_FALSE(item.reading().isShown);
  const QImage image = painted(1);
  const auto y = static_cast<int>(item.plot().bottom());
  EXPECT_GT(image.pixelColor(300, y).alpha(), 0);
}

TEST_F(HistoryChartItemTest, TheReadingFollowsTheSize) {
  show(seriesOf(5));
  item.readLast();
  item.setSize({600, 210});
  EXPECT_EQ(item.reading().x, item.plot().right());
  EXPECT_LT(item.reading().x, 600);
  item.setSize({20, 10});
  EXPECT_TRUE(item.plot().isEmpty());
  EXPECT_FALSE(item.reading().isShown);
  painted(1);
}

}  // namespace
}  // namespace korvantis
