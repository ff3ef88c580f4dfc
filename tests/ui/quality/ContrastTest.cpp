// Texts stand out from their grounds by at least 4.5 to 1, except for the pairs of the given
// colours that docs/look.md lists. The list is exact: nothing is missing from it, nothing too much
// in it.

#include <QColor>
#include <QImage>
#include <QStringList>
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <vector>

#include "ui/quality/ContrastTable.h"
#include "ui/quality/ItemWalk.h"
#include "ui/quality/ScreenStage.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis::test {
namespace {

constexpr CrowdedMachine smallMachine{.applications = 24, .processes = 80};

double contrastOf(const ColourPair& pair) {
  OstrelTheme::setIsDark(pair.isDark);
  return contrast(colourNamed(pair.text), colourNamed(pair.ground));
}

class Contrast : public testing::Test {
 protected:
  ~Contrast() override { OstrelTheme::setIsDark(true); }
};

TEST_F(Contrast, IsThatOfTheUsualDefinition) {
  EXPECT_DOUBLE_EQ(contrast(Qt::black, Qt::white), 21.0);
  EXPECT_DOUBLE_EQ(contrast(Qt::white, Qt::white), 1.0);
  EXPECT_EQ(ratioText(contrast(QColor(0x77, 0x77, 0x77), Qt::white)), QStringLiteral("4.4"));
}

TEST_F(Contrast, ThePairsOfPlainColoursBelowFourAndAHalfAreTheListedOnes) {
  QStringList expected;
  for (const bool isDark : {true, false}) {
    for (const QString& text : textColourNames()) {
      if (const auto row = plainRow(text, isDark)) expected += *row;
    }
  }
  EXPECT_GE(expected.size(), 10);
  EXPECT_EQ(documentedRows(QStringLiteral("Plain grounds")).join(u'\n').toStdString(),
            expected.join(u'\n').toStdString());
}

TEST_F(Contrast, TheListedMixedGroundsAreBelowFourAndAHalf) {
  EXPECT_EQ(documentedMixedPairs().size(),
            static_cast<std::size_t>(documentedRows(QStringLiteral("Mixed grounds")).size()));
  for (const ColourPair& pair : documentedMixedPairs()) {
    const std::string row = mixedRow(pair).toStdString();
    ASSERT_TRUE(colourNamed(pair.text).isValid()) << row;
    ASSERT_TRUE(colourNamed(pair.ground).isValid()) << row;
    EXPECT_LT(contrastOf(pair), enoughContrast) << row;
    EXPECT_EQ(ratioText(contrastOf(pair)).toStdString(), pair.ratio.toStdString()) << row;
  }
}

/// The colour that most of that part of the picture has: letters cover less than half.
QColor groundIn(const QImage& picture, const QRect& place) {
  std::map<QRgb, int> counts;
  const QRect inside = place & picture.rect();
  for (int y = inside.top(); y <= inside.bottom(); ++y) {
    for (int x = inside.left(); x <= inside.right(); ++x) ++counts[picture.pixel(x, y)];
  }
  const auto most = std::max_element(counts.begin(), counts.end(), [](auto& one, auto& other) {
    return one.second < other.second;
  });
  return most == counts.end() ? QColor() : QColor(most->first);
}

bool isNear(const QColor& one, const QColor& other) {
  constexpr int rounding = 3;
  return std::abs(one.red() - other.red()) <= rounding &&
         std::abs(one.green() - other.green()) <= rounding &&
         std::abs(one.blue() - other.blue()) <= rounding;
}

/// Whether both are colours of the theme as they stand: the first table tells all of those.
bool isPlainPair(const QColor& text, const QColor& ground) {
  const auto isOne = [](const std::vector<QString>& names, const QColor& colour) {
    return std::any_of(names.begin(), names.end(),
                       [&](const QString& name) { return isNear(colourNamed(name), colour); });
  };
  return isOne(textColourNames(), text) && isOne(groundNames(), ground);
}

/// Walks all screens in one theme. Ticks off the mixed pairs that it meets, and returns the faint
/// texts that nothing allows.
QStringList unlistedFaintTexts(bool isDark, const std::vector<ColourPair>& mixed,
                               std::set<QString>& met) {
  QStringList faults;
  ScreenStage stage(smallMachine, {.isDark = isDark});
  for (const Screen& screen : allScreens()) {
    stage.show(screen);
    const QImage picture = stage.picture();
    for (const ShownItem& shown : shownItems(stage.shown())) {
      if (!isText(shown.item) || !shown.item->isEnabled()) continue;
      const QRect place = shown.visibleRect().toRect();
      if (place.width() < 4 || place.height() < 6) continue;
      const QColor ground = groundIn(picture, place);
      QColor text = shown.item->property("color").value<QColor>();
      text.setAlphaF(static_cast<float>(text.alphaF() * shown.opacity));
      text = painted(text, ground);
      if (contrast(text, ground) >= enoughContrast || isPlainPair(text, ground)) continue;
      const auto known = std::find_if(mixed.begin(), mixed.end(), [&](const ColourPair& pair) {
        return pair.isDark == isDark && isNear(colourNamed(pair.text), text) &&
               isNear(colourNamed(pair.ground), ground);
      });
      if (known != mixed.end()) {
        met.insert(mixedRow(*known));
      } else {
        faults += QStringLiteral("%1: %2 on %3, %4: %5")
                      .arg(QString::fromUtf8(screen.name), text.name(), ground.name(),
                           ratioText(contrast(text, ground)), described(shown.item));
      }
    }
  }
  faults.removeDuplicates();
  return faults;
}

TEST_F(Contrast, EveryTextOnEveryScreenStandsOutOrIsListed) {
  const std::vector<ColourPair> mixed = documentedMixedPairs();
  std::set<QString> met;
  for (const bool isDark : {true, false}) {
    const QStringList faults = unlistedFaintTexts(isDark, mixed, met);
    EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
  }
  for (const ColourPair& pair : mixed) {
    EXPECT_TRUE(met.contains(mixedRow(pair)))
        << "on no screen any more: " << mixedRow(pair).toStdString();
  }
}

}  // namespace
}  // namespace korvantis::test
