#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/AppLimitEditor.h"

namespace korvantis {
namespace {

AppGroup makeApp(const std::string& name, AppGroupKind kind = AppGroupKind::app) {
  AppGroup group = makeGroup(name);
  group.id = "/apps/" + name;
  group.kind = kind;
  group.bundlePath = "/apps/" + name;
  return group;
}

class AppLimitEditorTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  AppLimitEditor editor;
  QAbstractItemModelTester tester{editor.apps(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal};

  void SetUp() override {
    scripted.next.appGroups = {makeApp("tool", AppGroupKind::other), makeApp("editor"),
                               makeApp("browser"), makeApp("daemon", AppGroupKind::system)};
    editor.setStore(&scripted.store());
    scripted.store().alerts()->setAppLimits({});
  }
  void tickWith(std::vector<AppGroup> groups) {
    scripted.next.appGroups = std::move(groups);
    scripted.tick();
  }
  QStringList names() {
    QStringList names;
    for (int row = 0; row < editor.apps()->rowCount(); ++row) {
      names.append(editor.apps()->index(row).data(RunningAppListModel::Label).toString());
    }
    return names;
  }
  const std::vector<AppLimit>& limits() { return scripted.store().alerts()->appLimits(); }
  AppLimit added() {
    editor.addRule();
    return limits().empty() ? AppLimit{} : limits().back();
  }
  double typed(const char* text) {
    editor.typeLimit(QString::fromUtf8(text));
    return editor.limitThreshold();
  }
};

TEST_F(AppLimitEditorTest, StartsWithNoAppCPU150And5Minutes) {
  EXPECT_EQ(editor.selectedAppID(), QString());
  EXPECT_EQ(editor.appIndex(), 0);
  EXPECT_EQ(editor.figureIndex(), 0);
  EXPECT_EQ(editor.limitThreshold(), 150);
  EXPECT_EQ(editor.limitText(), QStringLiteral("150"));
  EXPECT_EQ(editor.limitMinutes(), 5);
  EXPECT_EQ(editor.minutesText(), QStringLiteral("5 min"));
}

TEST_F(AppLimitEditorTest, OffersTheAppsOfTheTickInItsOrderAfterAnEntryForNone) {
  EXPECT_EQ(names(), (QStringList{"Select Running App...", "editor", "browser"}));
  const QModelIndex none = editor.apps()->index(0);
  const QModelIndex first = editor.apps()->index(1);
  EXPECT_EQ(none.data(RunningAppListModel::Name).toString(), QString());
  EXPECT_EQ(first.data(RunningAppListModel::Name).toString(), QStringLiteral("/apps/editor"));
  EXPECT_EQ(first.data(RunningAppListModel::ModelData).value<Choice>(),
            (Choice{QStringLiteral("/apps/editor"), QStringLiteral("editor")}));
}

TEST_F(AppLimitEditorTest, OffersEveryFigureByItsRawValue) {
  QStringList labels;
  for (const Choice& figure : editor.figures()) labels.append(figure.label);
  EXPECT_EQ(labels, (QStringList{"CPU %", "Memory (MB)", "GPU %", "Energy (W)"}));
}

TEST_F(AppLimitEditorTest, TheRuleHasWhatTheEditorSays) {
  editor.setSelectedAppID(QStringLiteral("/apps/browser"));
  editor.setFigureIndex(1);
  editor.typeLimit(QStringLiteral("2048.5"));
  editor.setLimitMinutes(12);
  const AppLimit rule = added();
  EXPECT_EQ(rule.appID, "/apps/browser");
  EXPECT_EQ(rule.appName, "browser");
  EXPECT_EQ(rule.bundlePath, "/apps/browser");
  EXPECT_EQ(rule.figure, AppLimitFigure::memoryMB);
  EXPECT_EQ(rule.limit, 2048.5);
  EXPECT_EQ(rule.minutes, 12);
  EXPECT_TRUE(rule.isEnabled);
}

TEST_F(AppLimitEditorTest, AddingClearsNothingAndASecondRuleIsAnotherRow) {
  editor.setSelectedAppID(QStringLiteral("/apps/browser"));
  editor.setFigureIndex(3);
  editor.typeLimit(QStringLiteral("7"));
  editor.setLimitMinutes(9);
  const AppLimit first = added();
  EXPECT_EQ(editor.selectedAppID(), QStringLiteral("/apps/browser"));
  EXPECT_EQ(editor.appIndex(), 2);
  EXPECT_EQ(editor.figureIndex(), 3);
  EXPECT_EQ(editor.limitText(), QStringLiteral("7"));
  EXPECT_EQ(editor.limitMinutes(), 9);
  const AppLimit second = added();
  EXPECT_EQ(limits().size(), 2);
  EXPECT_NE(first.id, second.id);
}

TEST_F(AppLimitEditorTest, WithNothingSelectedTheRuleIsForTheFirstApp) {
  EXPECT_EQ(added().appName, "editor");
}

TEST_F(AppLimitEditorTest, WithTheSelectedAppGoneTheRuleIsForTheFirstApp) {
  editor.setSelectedAppID(QStringLiteral("/apps/browser"));
  tickWith({makeApp("tool", AppGroupKind::other), makeApp("editor")});
  EXPECT_EQ(added().appName, "editor");
}

TEST_F(AppLimitEditorTest, ASelectedGroupThatIsNoAppAnyMoreIsStillTaken) {
  editor.setSelectedAppID(QStringLiteral("/apps/browser"));
  tickWith({makeApp("editor"), makeApp("browser", AppGroupKind::other)});
  EXPECT_EQ(added().appName, "browser");
}

TEST_F(AppLimitEditorTest, AddRuleOnAnEmptySnapshotDoesNothing) {
  tickWith({});
  QSignalSpy changed(scripted.store().alerts(), &AppAlertsStore::appLimitsChanged);
  editor.addRule();
  EXPECT_TRUE(limits().empty());
  EXPECT_EQ(changed.size(), 0);
}

TEST_F(AppLimitEditorTest, AddRuleWithoutAnyAppDoesNothing) {
  tickWith({makeApp("tool", AppGroupKind::other), makeApp("daemon", AppGroupKind::system)});
  editor.addRule();
  EXPECT_TRUE(limits().empty());
}

TEST_F(AppLimitEditorTest, TheMinutesStopAt1AndAt60) {
  editor.setLimitMinutes(0);
  EXPECT_EQ(editor.limitMinutes(), 1);
  EXPECT_EQ(editor.minutesText(), QStringLiteral("1 min"));
  editor.setLimitMinutes(61);
  EXPECT_EQ(editor.limitMinutes(), 60);
  EXPECT_EQ(added().minutes, 60);
}

TEST_F(AppLimitEditorTest, ALimitIsDigitsWithAPoint) {
  EXPECT_EQ(typed("150.7"), 150.7);
  EXPECT_EQ(editor.limitText(), QStringLiteral("150.7"));
  EXPECT_EQ(typed(" 80 "), 80);
  EXPECT_EQ(typed("0"), 0);
  EXPECT_EQ(editor.limitText(), QStringLiteral("0"));
  EXPECT_EQ(typed("-2.5"), -2.5);
  EXPECT_EQ(typed("1000000000000000000"), 1e18);
  EXPECT_EQ(editor.limitText(), QStringLiteral("1000000000000000000"));
}

TEST_F(AppLimitEditorTest, WhatIsNoNumberYetLeavesTheLastLimit) {
  typed("42");
  for (const char* const text : {"", " ", "-", ".", "abc", "12x", "1,5", "1e3", "inf", "nan",
                                 "9223372036854775808", "-9223372036854775808"}) {
    EXPECT_EQ(typed(text), 42) << text;
  }
  editor.typeLimit(QString(400, QLatin1Char('9')));
  EXPECT_EQ(editor.limitThreshold(), 42);
}

TEST_F(AppLimitEditorTest, AFigureOutsideTheListChangesNothing) {
  editor.setFigureIndex(2);
  editor.setFigureIndex(-1);
  editor.setFigureIndex(4);
  EXPECT_EQ(editor.figureIndex(), 2);
}

TEST_F(AppLimitEditorTest, TheSelectionFollowsItsAppThroughTheList) {
  editor.setSelectedAppID(QStringLiteral("/apps/browser"));
  QSignalSpy reset(editor.apps(), &QAbstractItemModel::modelReset);
  tickWith({makeApp("browser"), makeApp("viewer"), makeApp("editor")});
  EXPECT_EQ(names(), (QStringList{"Select Running App...", "browser", "viewer", "editor"}));
  EXPECT_EQ(editor.appIndex(), 1);
  EXPECT_EQ(reset.size(), 0);
}

TEST_F(AppLimitEditorTest, ASelectedAppThatIsGoneShowsAsNoneUntilItReturns) {
  editor.setSelectedAppID(QStringLiteral("/apps/browser"));
  tickWith({makeApp("editor")});
  EXPECT_EQ(editor.appIndex(), 0);
  EXPECT_EQ(editor.selectedAppID(), QStringLiteral("/apps/browser"));
  tickWith({makeApp("editor"), makeApp("browser")});
  EXPECT_EQ(editor.appIndex(), 2);
}

TEST_F(AppLimitEditorTest, WhileTheMenuIsOpenTheAppsStayAsTheyAre) {
  editor.setHoldsApps(true);
  QSignalSpy inserted(editor.apps(), &QAbstractItemModel::rowsInserted);
  QSignalSpy removed(editor.apps(), &QAbstractItemModel::rowsRemoved);
  QSignalSpy moved(editor.apps(), &QAbstractItemModel::rowsMoved);
  tickWith({makeApp("viewer"), makeApp("browser")});
  EXPECT_EQ(inserted.size() + removed.size() + moved.size(), 0);
  EXPECT_EQ(names(), (QStringList{"Select Running App...", "editor", "browser"}));
  editor.setSelectedAppID(QStringLiteral("/apps/browser"));
  EXPECT_EQ(editor.appIndex(), 2);
  editor.setHoldsApps(false);
  EXPECT_EQ(names(), (QStringList{"Select Running App...", "viewer", "browser"}));
  EXPECT_EQ(editor.appIndex(), 2);
}

TEST_F(AppLimitEditorTest, WithoutAStoreItKeepsWhatWasEnteredAndAddsNothing) {
  editor.setSelectedAppID(QStringLiteral("/apps/browser"));
  editor.typeLimit(QStringLiteral("7"));
  editor.setStore(nullptr);
  editor.addRule();
  EXPECT_TRUE(limits().empty());
  tickWith({makeApp("browser")});
  EXPECT_EQ(editor.appIndex(), 2);
  editor.setStore(&scripted.store());
  EXPECT_EQ(editor.appIndex(), 1);
  EXPECT_EQ(added().limit, 7);
}

TEST_F(AppLimitEditorTest, ATickWithTheSameAppsSaysNothing) {
  QSignalSpy changed(editor.apps(), &QAbstractItemModel::dataChanged);
  QSignalSpy inserted(editor.apps(), &QAbstractItemModel::rowsInserted);
  QSignalSpy index(&editor, &AppLimitEditor::appIndexChanged);
  scripted.tick();
  EXPECT_EQ(changed.size() + inserted.size() + index.size(), 0);
}

}  // namespace
}  // namespace korvantis
