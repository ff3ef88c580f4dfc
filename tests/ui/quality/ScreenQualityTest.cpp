// What is true of every screen, whatever stands on it: its words are whole and in their places at
// every width, in both themes, with the worst names.

#include <QStringList>
#include <cmath>
#include <gtest/gtest.h>
#include <vector>

#include "ui/quality/ItemWalk.h"
#include "ui/quality/ScreenStage.h"

namespace korvantis::test {
namespace {

constexpr CrowdedMachine worstMachine{.applications = 24, .processes = 80, .hasLongNames = true};
constexpr CrowdedMachine machineAtRest{
    .applications = 12, .processes = 20, .hasLongNames = true, .isAtRest = true};
/// What a letter may stand over an edge: half a pixel of rounding and a soft border.
constexpr double sideways = 1.5;
/// A line is higher than its letters.
constexpr double upOrDown = 3;

struct Text {
  ShownItem shown;
  QRectF letters;
};

std::vector<Text> textsOf(const std::vector<ShownItem>& items) {
  std::vector<Text> texts;
  for (const ShownItem& shown : items) {
    if (isText(shown.item) && !textOf(shown.item).trimmed().isEmpty())
      texts.push_back({shown, shown.rect()});
  }
  return texts;
}

QString placed(const QRectF& rect) {
  return QStringLiteral("%1..%2, %3..%4")
      .arg(rect.left())
      .arg(rect.right())
      .arg(rect.top())
      .arg(rect.bottom());
}

bool isInside(const QRectF& inner, const QRectF& outer) {
  return inner.left() >= outer.left() - sideways && inner.right() <= outer.right() + sideways &&
         inner.top() >= outer.top() - upOrDown && inner.bottom() <= outer.bottom() + upOrDown;
}

void findClipped(const std::vector<Text>& texts, QStringList& faults) {
  for (const Text& text : texts) {
    if (!isInside(text.letters, text.shown.unscrollableClip)) {
      faults += QStringLiteral("is cut off: ") + described(text.shown.item) + u' ' +
                placed(text.letters) + QStringLiteral(" outside ") +
                placed(text.shown.unscrollableClip);
    }
    for (QQuickItem* above = text.shown.item->parentItem(); above; above = above->parentItem()) {
      // What scrolls is wider and higher than what holds it.
      if (isFlickable(above)) break;
      const QRectF frame = above->mapRectToScene(QRectF(QPointF(), above->size()));
      if (!isFramed(above) || isInside(text.letters, frame)) continue;
      faults += QStringLiteral("leaves its frame: ") + described(text.shown.item) + u' ' +
                placed(text.letters) + QStringLiteral(" outside ") + described(above) + u' ' +
                placed(frame);
      break;
    }
  }
}

void findCutWords(const std::vector<Text>& texts, QStringList& faults) {
  for (const Text& text : texts) {
    const QString words = textOf(text.shown.item);
    if (text.shown.item->property("truncated").toBool() && !CrowdedMachine::hasForeignName(words))
      faults += QStringLiteral("is shortened: ") + described(text.shown.item);
  }
}

bool overlaps(const QRectF& one, const QRectF& other) {
  const QRectF shared = one & other;
  return shared.width() > sideways && shared.height() > upOrDown;
}

void findOverlaps(const std::vector<Text>& texts, QStringList& faults) {
  for (std::size_t first = 0; first < texts.size(); ++first) {
    for (std::size_t second = first + 1; second < texts.size(); ++second) {
      const Text& one = texts.at(first);
      const Text& other = texts.at(second);
      if (!overlaps(one.letters & one.shown.clip, other.letters & other.shown.clip)) continue;
      faults += QStringLiteral("overlap: ") + described(one.shown.item) + u' ' +
                placed(one.letters) + QStringLiteral(" and ") + described(other.shown.item) + u' ' +
                placed(other.letters);
    }
  }
}

/// A button over a part of a text that isn't its own.
void findCoveredTexts(const std::vector<ShownItem>& items, const std::vector<Text>& texts,
                      QStringList& faults) {
  for (const ShownItem& shown : items) {
    if (!isControl(shown.item)) continue;
    const QRectF control =
        shown.item->mapRectToScene(QRectF(QPointF(), shown.item->size())) & shown.clip;
    for (const Text& text : texts) {
      if (shown.item == text.shown.item || shown.item->isAncestorOf(text.shown.item)) continue;
      if (control.contains(text.letters) || !overlaps(control, text.shown.visibleRect())) continue;
      faults += QStringLiteral("is covered: ") + described(text.shown.item) +
                QStringLiteral(" by ") + described(shown.item);
    }
  }
}

/// A list that scrolls without a clip paints over its neighbours.
void findUnclippedLists(const std::vector<ShownItem>& items, QStringList& faults) {
  constexpr double margin = 24;
  for (const ShownItem& shown : items) {
    if (!scrollsDown(shown.item) || shown.item->clip()) continue;
    const QRectF list = shown.item->mapRectToScene(QRectF(QPointF(), shown.item->size()));
    if (shown.clip.top() < list.top() - margin || shown.clip.bottom() > list.bottom() + margin)
      faults += QStringLiteral("scrolls over its neighbours: ") + described(shown.item);
  }
}

QStringList faultsOf(ScreenStage& stage) {
  const std::vector<ShownItem> items = shownItems(stage.shown());
  const std::vector<Text> texts = textsOf(items);
  QStringList faults;
  if (texts.size() < 3) faults += QStringLiteral("shows nothing");
  findClipped(texts, faults);
  findCutWords(texts, faults);
  findOverlaps(texts, faults);
  findCoveredTexts(items, texts, faults);
  findUnclippedLists(items, faults);
  faults.removeDuplicates();
  return faults;
}

std::vector<QQuickItem*> scrollers(ScreenStage& stage) {
  std::vector<QQuickItem*> found;
  for (const ShownItem& shown : shownItems(stage.shown())) {
    if (scrollsDown(shown.item)) found.push_back(shown.item);
  }
  return found;
}

/// The faults at the top, in the middle and at the end of what scrolls.
QStringList faultsEverywhere(ScreenStage& stage) {
  QStringList faults = faultsOf(stage);
  for (const double part : {0.5, 1.0}) {
    const std::vector<QQuickItem*> all = scrollers(stage);
    if (all.empty()) break;
    for (QQuickItem* const scroller : all) {
      const double rest = scroller->property("contentHeight").toDouble() - scroller->height();
      const double top = scroller->property("originY").toDouble();
      scroller->setProperty("contentY", top + std::round(rest * part));
    }
    stage.settle();
    faults += faultsOf(stage);
  }
  faults.removeDuplicates();
  return faults;
}

/// For people: what is looked at goes into the folder named by KORVANTIS_PICTURES, if any.
void keepPicture(ScreenStage& stage, const QString& name) {
  const QString folder = qEnvironmentVariable("KORVANTIS_PICTURES");
  if (folder.isEmpty()) return;
  EXPECT_TRUE(stage.picture().save(folder + u'/' + name + QStringLiteral(".png")));
}

class ScreenQuality : public testing::TestWithParam<Screen> {
 protected:
  static void expectGood(ScreenStage::Look look, const std::vector<int>& widths,
                         const CrowdedMachine& machine = worstMachine) {
    ScreenStage stage(machine, look);
    for (const int width : widths) {
      stage.resize(width, look.isPanel ? 560 : 790);
      // From the top, and as it is made at this width.
      stage.show({"", "overview"});
      stage.show(GetParam());
      stage.tick();
      stage.settle();
      keepPicture(stage, QStringLiteral("%1-%2%3")
                             .arg(QString::fromStdString(testNameOf(GetParam())))
                             .arg(width)
                             .arg(machine.isAtRest ? QStringLiteral("-rest")
                                  : look.isDark    ? QString()
                                                   : QStringLiteral("-light")));
      const QStringList faults = faultsEverywhere(stage);
      EXPECT_TRUE(faults.isEmpty())
          << GetParam().name << " at width " << width << ", " << faults.size() << " faults:\n"
          << faults.join(u'\n').toStdString();
    }
    EXPECT_EQ(stage.complaints().join(u'\n').toStdString(), "");
  }
};

TEST_P(ScreenQuality, NoWordIsCutOrCoveredInTheDarkWindow) {
  expectGood({.isDark = true}, {1040, 1220, 1800});
}
TEST_P(ScreenQuality, NoWordIsCutOrCoveredInTheLightWindow) {
  expectGood({.isDark = false}, {1040});
}
TEST_P(ScreenQuality, NoWordIsCutOrCoveredInThePanel) {
  expectGood({.isDark = true, .isPanel = true}, {820});
}
TEST_P(ScreenQuality, NoWordIsCutOrCoveredOnAMachineAtRest) {
  expectGood({.isDark = true}, {1040}, machineAtRest);
  expectGood({.isDark = true, .isPanel = true}, {820}, machineAtRest);
}

INSTANTIATE_TEST_SUITE_P(All, ScreenQuality, testing::ValuesIn(allScreens()),
                         [](const auto& screen) { return testNameOf(screen.param); });

}  // namespace
}  // namespace korvantis::test
