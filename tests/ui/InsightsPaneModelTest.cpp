#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/InsightsPaneModel.h"

namespace korvantis {
namespace {

class InsightsPaneModelTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  InsightsPaneModel model;
  QAbstractItemModelTester tester{model.insights(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal};

  void start() { model.setStore(&scripted.store()); }
  QString at(int row, InsightListModel::Role role) {
    return model.insights()->index(row).data(role).toString();
  }
};

TEST_F(InsightsPaneModelTest, WithNoFindingsTheHeaderShowsACountOf0) {
  start();
  EXPECT_EQ(model.findingsTitle(), QStringLiteral("ACTIVE & RECENT INSIGHTS (0)"));
  EXPECT_EQ(model.insights()->rowCount(), 0);
}

TEST_F(InsightsPaneModelTest, ListsTheFindingsOfTheStoreInItsOrder) {
  scripted.next.newInsights = makeInsights(3);
  start();
  EXPECT_EQ(model.findingsTitle(), QStringLiteral("ACTIVE & RECENT INSIGHTS (3)"));
  ASSERT_EQ(model.insights()->rowCount(), 3);
  EXPECT_EQ(at(0, InsightListModel::Title), QStringLiteral("Finding 2"));
  EXPECT_EQ(at(0, InsightListModel::MetricText), QStringLiteral("150% CPU"));
  EXPECT_EQ(at(0, InsightListModel::Detail),
            QStringLiteral("It has used the processor for minutes."));
  EXPECT_EQ(at(0, InsightListModel::IconName), QStringLiteral("cpu.fill"));
  EXPECT_EQ(at(0, InsightListModel::Description),
            QStringLiteral("Finding 2, 150% CPU. It has used the processor for minutes."));
}

TEST_F(InsightsPaneModelTest, ANewFindingEntersAndTheOthersStayUntouched) {
  scripted.next.newInsights = makeInsights(2);
  start();
  QSignalSpy inserted(model.insights(), &QAbstractItemModel::rowsInserted);
  QSignalSpy changed(model.insights(), &QAbstractItemModel::dataChanged);
  scripted.next.newInsights = makeInsights(3);
  scripted.tick();
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(changed.size(), 0);
  EXPECT_EQ(at(0, InsightListModel::Title), QStringLiteral("Finding 2"));
}

TEST_F(InsightsPaneModelTest, ADismissedFindingLeaves) {
  scripted.next.newInsights = makeInsights(2);
  start();
  const Insight first = scripted.store().insights().front();
  scripted.store().dismissInsight(first);
  ASSERT_EQ(model.insights()->rowCount(), 1);
  EXPECT_EQ(at(0, InsightListModel::Title), QStringLiteral("Finding 0"));
}

TEST_F(InsightsPaneModelTest, APinnedFindingRisesWithTheNextTick) {
  scripted.next.newInsights = makeInsights(3);
  start();
  const Insight last = scripted.store().insights().back();
  scripted.store().togglePinInsight(last);
  scripted.tick();
  EXPECT_EQ(at(0, InsightListModel::Title), QStringLiteral("Finding 0"));
}

TEST_F(InsightsPaneModelTest, SaysTheHeadlineOfTheStore) {
  start();
  scripted.next.activeStrains = {StrainKind::cpu};
  scripted.tick();
  EXPECT_EQ(model.headline(), scripted.store().whatsWrongHeadline());
}

}  // namespace
}  // namespace korvantis
