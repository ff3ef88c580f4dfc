#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <limits>

#include "ui/ScriptedStore.h"
#include "ui/panes/AppLimitListModel.h"
#include "ui/panes/InsightsPaneModel.h"

namespace korvantis {
namespace {

class AppLimitListModelTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  InsightsPaneModel pane;
  AppLimitListModel& model = *pane.limits();
  QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};

  void SetUp() override { pane.setStore(&scripted.store()); }
  AppAlertsStore& alerts() { return *scripted.store().alerts(); }
  QString at(int row, AppLimitListModel::Role role) {
    return model.index(row).data(role).toString();
  }
  QString ruleOf(AppLimitFigure figure, double limit, std::int64_t minutes) {
    alerts().setAppLimits({});
    alerts().addLimit("id", "App", std::nullopt, figure, limit, minutes);
    return at(0, AppLimitListModel::RuleText);
  }
};

TEST_F(AppLimitListModelTest, TheTwoDefaultLimitsAreListedFromTheFirstLaunch) {
  ASSERT_EQ(model.rowCount(), 2);
  EXPECT_EQ(at(0, AppLimitListModel::AppName), QStringLiteral("Google Chrome"));
  EXPECT_EQ(at(0, AppLimitListModel::RuleText), QStringLiteral("Memory (MB) > 4096 for 5 min"));
  EXPECT_EQ(at(0, AppLimitListModel::BundlePath),
            QStringLiteral("/Applications/Google Chrome.app"));
  EXPECT_EQ(at(1, AppLimitListModel::AppName), QStringLiteral("Xcode"));
  EXPECT_EQ(at(1, AppLimitListModel::RuleText), QStringLiteral("CPU % > 250 for 5 min"));
  EXPECT_EQ(at(1, AppLimitListModel::Description), QStringLiteral("Xcode, CPU % > 250 for 5 min"));
}

TEST_F(AppLimitListModelTest, ADefaultLimitCanBeRemovedForThisRun) {
  pane.removeLimit(at(0, AppLimitListModel::LimitID));
  ASSERT_EQ(model.rowCount(), 1);
  EXPECT_EQ(at(0, AppLimitListModel::AppName), QStringLiteral("Xcode"));
  scripted.tick();
  EXPECT_EQ(model.rowCount(), 1);
  ScriptedStore nextRun;
  EXPECT_EQ(nextRun.store().alerts()->appLimits().size(), 2);
}

TEST_F(AppLimitListModelTest, ALimitTypedAs150Point7ShowsAs150) {
  EXPECT_EQ(ruleOf(AppLimitFigure::cpuPercent, 150.7, 5), QStringLiteral("CPU % > 150 for 5 min"));
}

TEST_F(AppLimitListModelTest, EveryFigureIsNamedByItsRawValue) {
  EXPECT_EQ(ruleOf(AppLimitFigure::memoryMB, 1, 1), QStringLiteral("Memory (MB) > 1 for 1 min"));
  EXPECT_EQ(ruleOf(AppLimitFigure::gpuPercent, 0, 60), QStringLiteral("GPU % > 0 for 60 min"));
  EXPECT_EQ(ruleOf(AppLimitFigure::energyWatts, 9.99, 2),
            QStringLiteral("Energy (W) > 9 for 2 min"));
}

TEST_F(AppLimitListModelTest, ALimitIsCutTowardZeroAndHasNoExponent) {
  EXPECT_EQ(ruleOf(AppLimitFigure::cpuPercent, -0.5, 1), QStringLiteral("CPU % > 0 for 1 min"));
  EXPECT_EQ(ruleOf(AppLimitFigure::cpuPercent, -1.5, 1), QStringLiteral("CPU % > -1 for 1 min"));
  EXPECT_EQ(ruleOf(AppLimitFigure::cpuPercent, 1e15, 1),
            QStringLiteral("CPU % > 1000000000000000 for 1 min"));
}

TEST_F(AppLimitListModelTest, ALimitWithoutABundleHasAnEmptyPath) {
  ruleOf(AppLimitFigure::cpuPercent, 1, 1);
  EXPECT_EQ(at(0, AppLimitListModel::BundlePath), QString());
}

TEST_F(AppLimitListModelTest, ANewLimitEntersAtTheEndAndTheOthersStayUntouched) {
  QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
  QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
  QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
  alerts().addLimit("id", "App", std::nullopt, AppLimitFigure::cpuPercent, 1, 1);
  scripted.tick();
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(changed.size(), 0);
  EXPECT_EQ(reset.size(), 0);
  EXPECT_EQ(at(2, AppLimitListModel::AppName), QStringLiteral("App"));
}

}  // namespace
}  // namespace korvantis
