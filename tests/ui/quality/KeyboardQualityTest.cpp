// Whatever can be operated on a screen can be reached by the Tab key alone, and shows that it has
// the keyboard.

#include <QImage>
#include <QSet>
#include <QStringList>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "ui/quality/ItemWalk.h"
#include "ui/quality/ScreenStage.h"

namespace korvantis::test {
namespace {

constexpr CrowdedMachine smallMachine{.applications = 12, .processes = 40};
constexpr int mostStops = 400;
/// The rows of a list of which each is made the current one.
constexpr int triedRows = 4;

struct Stop {
  QQuickItem* item = nullptr;
  bool isInSight = false;
  /// How many pixels in and around it change when it loses the keyboard; counted on request.
  int ringPixels = 0;
};

/// Where an item is in a picture of the window, with room for a ring around it.
QRect placeOf(const QQuickItem* item, double scale) {
  const QRectF rect = item->mapRectToScene(QRectF(QPointF(), item->size())).adjusted(-4, -4, 4, 4);
  return QRectF(rect.topLeft() * scale, rect.size() * scale).toAlignedRect();
}

bool isInSight(const QQuickItem* item) {
  QRectF seen = item->mapRectToScene(QRectF(QPointF(), item->size()));
  const double whole = seen.height();
  for (const QQuickItem* above = item->parentItem(); above; above = above->parentItem()) {
    if (above->clip()) seen &= above->mapRectToScene(above->clipRect());
    if (isFlickable(above)) seen &= above->mapRectToScene(QRectF(QPointF(), above->size()));
  }
  seen &= QRectF(QPointF(), QSizeF(item->window()->size()));
  // A list may be taller than what shows of it.
  return seen.height() >= std::min(whole, 24.0) - 1 && seen.width() > 4;
}

/// How many pixels of `place` differ.
int differences(const QImage& one, const QImage& other, const QRect& place) {
  const QRect inside = place & one.rect() & other.rect();
  int count = 0;
  for (int y = inside.top(); y <= inside.bottom(); ++y) {
    for (int x = inside.left(); x <= inside.right(); ++x)
      count += one.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
  }
  return count;
}

/// What shows that `item` has the keyboard: it is taken away for a moment and given back, with
/// nothing else moving.
int ringPixelsOf(QQuickItem* item, ScreenStage& stage) {
  const QRect place = placeOf(item, stage.window().devicePixelRatio());
  const QImage with = stage.picture();
  QQuickItem elsewhere(stage.window().contentItem());
  elsewhere.forceActiveFocus(Qt::OtherFocusReason);
  QCoreApplication::processEvents();
  const QImage without = stage.picture();
  item->forceActiveFocus(Qt::TabFocusReason);
  QCoreApplication::processEvents();
  return differences(with, without, place);
}

/// All items at which Tab stops, from the first one on until it comes round.
std::vector<Stop> tabStops(ScreenStage& stage, bool countsRings) {
  std::vector<Stop> stops;
  QSet<QQuickItem*> seen;
  stage.shown()->forceActiveFocus(Qt::TabFocusReason);
  for (int step = 0; step < mostStops; ++step) {
    QTest::keyClick(&stage.window(), Qt::Key_Tab);
    QQuickItem* const item = stage.window().activeFocusItem();
    if (!item || seen.contains(item)) break;
    seen.insert(item);
    QCoreApplication::processEvents();
    Stop stop{.item = item, .isInSight = isInSight(item)};
    if (countsRings) stop.ringPixels = ringPixelsOf(item, stage);
    stops.push_back(stop);
  }
  return stops;
}

bool isWithin(QQuickItem* item, const QSet<QQuickItem*>& stops) {
  for (QQuickItem* above = item; above; above = above->parentItem()) {
    // A field stands for the buttons drawn in it, a picker for its parts.
    if (stops.contains(above)) return true;
  }
  return false;
}

class KeyboardQuality : public testing::TestWithParam<Screen> {
 protected:
  KeyboardQuality() : stage(smallMachine, {}) {
    stage.show(GetParam());
    stage.tick();
    stage.settle();
  }

  /// Makes each of the first rows of each list the current one in turn: only a current row's
  /// buttons stand in the order of Tab, or it would never end.
  QSet<QQuickItem*> reachable() {
    QSet<QQuickItem*> reached;
    for (int row = 0; row < triedRows; ++row) {
      for (const ShownItem& shown : shownItems(stage.shown())) {
        if (shown.item->inherits("QQuickItemView")) shown.item->setProperty("currentIndex", row);
      }
      for (const Stop& stop : tabStops(stage, false)) reached.insert(stop.item);
    }
    return reached;
  }

  /// Whether the item is one of the rows, or in one of the rows, that were not tried.
  static bool isInUntriedRow(QQuickItem* item) {
    QQuickItem* row = nullptr;
    QQuickItem* const list = listAround(item, &row);
    if (!list) return false;
    for (int index = 0; index < triedRows; ++index) {
      QQuickItem* tried = nullptr;
      QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem*, tried),
                                Q_ARG(int, index));
      if (tried == row) return false;
    }
    return true;
  }

  ScreenStage stage;
};

TEST_P(KeyboardQuality, TabReachesEveryControl) {
  const QSet<QQuickItem*> reached = reachable();
  EXPECT_GE(reached.size(), 2);
  QStringList faults;
  for (const ShownItem& shown : shownItems(stage.shown())) {
    if (!isControl(shown.item) || isWithin(shown.item, reached)) continue;
    QQuickItem* row = nullptr;
    QQuickItem* const list = listAround(shown.item, &row);
    // The list moves through its rows with the arrow keys.
    if (list && row == shown.item && reached.contains(list)) continue;
    if (isInUntriedRow(shown.item)) continue;
    faults += described(shown.item);
  }
  faults.removeDuplicates();
  EXPECT_TRUE(faults.isEmpty()) << "out of reach:\n" << faults.join(u'\n').toStdString();
}

TEST_P(KeyboardQuality, WhatHasTheKeyboardIsInSightAndShowsIt) {
  const std::vector<Stop> stops = tabStops(stage, true);
  ASSERT_GE(stops.size(), 2U);
  EXPECT_LT(stops.size(), static_cast<std::size_t>(mostStops)) << "Tab never comes round";
  QStringList faults;
  for (const Stop& stop : stops) {
    if (!stop.isInSight) faults += QStringLiteral("out of sight: ") + described(stop.item);
    if (stop.isInSight && stop.ringPixels < 12)
      faults += QStringLiteral("shows nothing: ") + described(stop.item);
  }
  EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
}

void scrollToTheEnds(ScreenStage& stage) {
  for (const ShownItem& shown : shownItems(stage.shown())) {
    if (!scrollsDown(shown.item)) continue;
    const double rest = shown.item->property("contentHeight").toDouble() - shown.item->height();
    shown.item->setProperty("contentY", shown.item->property("originY").toDouble() + rest);
  }
  stage.settle();
}

TEST_P(KeyboardQuality, WhatHasTheKeyboardIsInSightInThePanelWhereverItWasScrolledTo) {
  ScreenStage panel(smallMachine, {.isPanel = true});
  panel.resize(820, 560);
  panel.show(GetParam());
  panel.tick();
  panel.settle();
  QStringList faults;
  for (const bool startsAtTheEnds : {false, true}) {
    if (startsAtTheEnds) scrollToTheEnds(panel);
    for (const Stop& stop : tabStops(panel, false)) {
      if (!stop.isInSight) faults += QStringLiteral("out of sight: ") + described(stop.item);
    }
  }
  EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(All, KeyboardQuality, testing::ValuesIn(allScreens()),
                         [](const auto& screen) { return testNameOf(screen.param); });

}  // namespace
}  // namespace korvantis::test
