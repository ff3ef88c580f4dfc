#include <QSignalSpy>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "analysis/InsightEngine.h"
#include "platform/RandomCalls.h"
#include "state/AppAlertsStore.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr double start = 1'700'000'000;

/// A store over a scripted clock, with a count of what it told.
class ScriptedAlerts {
 public:
  double now = start;
  AppAlertsStore store{Clock{[this] { return now; }}};
  QSignalSpy limits{&store, &AppAlertsStore::appLimitsChanged};
  QSignalSpy mutes{&store, &AppAlertsStore::mutedAppsChanged};

  void addLimit(const std::string& name) {
    store.addLimit("/Applications/" + name + ".app", name, std::nullopt, AppLimitFigure::cpuPercent,
                   150, 5);
  }

  void mute(const std::string& name, std::optional<std::int64_t> hours = std::nullopt) {
    store.muteApp("/Applications/" + name + ".app", name, std::nullopt, hours);
  }

  std::vector<std::string> limitNames() const {
    std::vector<std::string> names;
    names.reserve(store.appLimits().size());
    for (const AppLimit& limit : store.appLimits()) names.push_back(limit.appName);
    return names;
  }

  std::vector<std::string> muteNames() const {
    std::vector<std::string> names;
    names.reserve(store.mutedApps().size());
    for (const MutedApp& muted : store.mutedApps()) names.push_back(muted.appName);
    return names;
  }
};

TEST(AppAlertsStore, AFreshStoreHoldsExactlyTwoEnabledLimitsAndNoMutes) {
  const ScriptedAlerts alerts;
  const auto& limits = alerts.store.appLimits();
  ASSERT_THAT(limits, SizeIs(2));
  EXPECT_EQ(limits[0], (AppLimit{.id = limits[0].id,
                                 .appID = "com.google.Chrome",
                                 .appName = "Google Chrome",
                                 .bundlePath = "/Applications/Google Chrome.app",
                                 .figure = AppLimitFigure::memoryMB,
                                 .limit = 4096,
                                 .minutes = 5,
                                 .isEnabled = true}));
  EXPECT_EQ(limits[1], (AppLimit{.id = limits[1].id,
                                 .appID = "com.apple.dt.Xcode",
                                 .appName = "Xcode",
                                 .bundlePath = "/Applications/Xcode.app",
                                 .figure = AppLimitFigure::cpuPercent,
                                 .limit = 250,
                                 .minutes = 5,
                                 .isEnabled = true}));
  EXPECT_THAT(alerts.store.mutedApps(), IsEmpty());
}

TEST(AppAlertsStore, EveryStoreMakesItsDefaultsUnderFreshIDs) {
  const ScriptedAlerts first;
  const ScriptedAlerts second;
  const std::set<Uuid> ids{first.store.appLimits()[0].id, first.store.appLimits()[1].id,
                           second.store.appLimits()[0].id, second.store.appLimits()[1].id};
  EXPECT_THAT(ids, SizeIs(4));
}

TEST(AppAlertsStore, AddLimitAppendsAnEnabledLimitUnderAFreshIDAndNotifiesOnce) {
  ScriptedAlerts alerts;
  alerts.store.addLimit("org.mail", "Mail", "/Applications/Mail.app", AppLimitFigure::energyWatts,
                        0, -3);
  ASSERT_THAT(alerts.store.appLimits(), SizeIs(3));
  const AppLimit& added = alerts.store.appLimits()[2];
  EXPECT_EQ(added, (AppLimit{.id = added.id,
                             .appID = "org.mail",
                             .appName = "Mail",
                             .bundlePath = "/Applications/Mail.app",
                             .figure = AppLimitFigure::energyWatts,
                             .limit = 0,
                             .minutes = -3,
                             .isEnabled = true}))
      << "taken as they are, without a check";
  EXPECT_EQ(alerts.limits.count(), 1);
  EXPECT_EQ(alerts.mutes.count(), 0);
}

TEST(AppAlertsStore, AddingTheSameLimitTwiceGivesTwoRowsWithDifferentIDs) {
  ScriptedAlerts alerts;
  alerts.addLimit("Mail");
  alerts.addLimit("Mail");
  ASSERT_THAT(alerts.limitNames(), ElementsAre("Google Chrome", "Xcode", "Mail", "Mail"));
  EXPECT_NE(alerts.store.appLimits()[2].id, alerts.store.appLimits()[3].id);
  EXPECT_EQ(alerts.limits.count(), 2);
}

TEST(AppAlertsStore, RemoveLimitTakesEveryEntryWithTheIDAndKeepsTheOrderOfTheOthers) {
  ScriptedAlerts alerts;
  alerts.addLimit("Mail");
  auto doubled = alerts.store.appLimits();
  doubled.push_back(doubled[0]);
  alerts.store.setAppLimits(doubled);
  alerts.limits.clear();
  alerts.store.removeLimit(alerts.store.appLimits()[0].id);
  EXPECT_THAT(alerts.limitNames(), ElementsAre("Xcode", "Mail"));
  EXPECT_EQ(alerts.limits.count(), 1);
}

TEST(AppAlertsStore, RemovingAnUnknownLimitChangesNothingThoughTheScreensAreNotified) {
  ScriptedAlerts alerts;
  const auto before = alerts.store.appLimits();
  alerts.store.removeLimit(Uuid::random());
  EXPECT_EQ(alerts.store.appLimits(), before);
  EXPECT_EQ(alerts.limits.count(), 1);
}

TEST(AppAlertsStore, AMuteOf24HoursEnds24HoursFromNow) {
  ScriptedAlerts alerts;
  alerts.store.muteApp("org.mail", "Mail", "/Applications/Mail.app", 24);
  EXPECT_THAT(alerts.store.mutedApps(), ElementsAre(MutedApp{.appID = "org.mail",
                                                             .appName = "Mail",
                                                             .bundlePath = "/Applications/Mail.app",
                                                             .until = Instant{start + 86400}}));
  EXPECT_EQ(alerts.mutes.count(), 1);
  EXPECT_EQ(alerts.limits.count(), 0);
}

TEST(AppAlertsStore, AMuteWithoutHoursHasNoEnd) {
  ScriptedAlerts alerts;
  alerts.mute("Mail");
  EXPECT_EQ(alerts.store.mutedApps().at(0).until, std::nullopt);
}

TEST(AppAlertsStore, MutingAFor24HoursAndAgainFor1LeavesOneEntryExpiringInOneHour) {
  ScriptedAlerts alerts;
  alerts.mute("A", 24);
  alerts.now += 60;
  alerts.mute("A", 1);
  ASSERT_THAT(alerts.muteNames(), ElementsAre("A"));
  EXPECT_EQ(alerts.store.mutedApps()[0].until, Instant{start + 60 + 3600});
  EXPECT_EQ(alerts.mutes.count(), 2) << "taking out and putting in is one change";
}

TEST(AppAlertsStore, ASecondMuteMovesTheAppToTheEndOfTheList) {
  ScriptedAlerts alerts;
  alerts.mute("A");
  alerts.mute("B");
  alerts.mute("A", 1);
  EXPECT_THAT(alerts.muteNames(), ElementsAre("B", "A"));
}

TEST(AppAlertsStore, TheSameMuteAgainNotifiesAlthoughTheListIsTheSame) {
  ScriptedAlerts alerts;
  alerts.mute("A");
  const auto before = alerts.store.mutedApps();
  alerts.mute("A");
  EXPECT_EQ(alerts.store.mutedApps(), before);
  EXPECT_EQ(alerts.mutes.count(), 2);
}

TEST(AppAlertsStore, AMuteReplacesEveryEntryOfTheApp) {
  ScriptedAlerts alerts;
  alerts.mute("A");
  alerts.mute("B");
  auto doubled = alerts.store.mutedApps();
  doubled.push_back(doubled[0]);
  alerts.store.setMutedApps(doubled);
  alerts.mute("A", 2);
  EXPECT_THAT(alerts.muteNames(), ElementsAre("B", "A"));
}

TEST(AppAlertsStore, AMuteOf0HoursEndsNow) {
  ScriptedAlerts alerts;
  alerts.mute("A", 0);
  EXPECT_EQ(alerts.store.mutedApps().at(0).until, Instant{start});
}

TEST(AppAlertsStore, AnExpiredMuteStaysUntilTheAppIsMutedAgain) {
  ScriptedAlerts alerts;
  alerts.mute("A", 1);
  alerts.now += 86400;
  alerts.mute("B", 1);
  EXPECT_THAT(alerts.muteNames(), ElementsAre("A", "B"));
  alerts.mute("A", 1);
  EXPECT_THAT(alerts.muteNames(), ElementsAre("B", "A"));
  EXPECT_EQ(alerts.store.mutedApps()[1].until, Instant{start + 86400 + 3600});
}

TEST(AppAlertsStore, UnmuteTakesEveryEntryOfTheApp) {
  ScriptedAlerts alerts;
  alerts.mute("A");
  alerts.mute("B");
  auto doubled = alerts.store.mutedApps();
  doubled.push_back(doubled[0]);
  alerts.store.setMutedApps(doubled);
  alerts.mutes.clear();
  alerts.store.unmuteApp(alerts.store.mutedApps()[0].appID);
  EXPECT_THAT(alerts.muteNames(), ElementsAre("B"));
  EXPECT_EQ(alerts.mutes.count(), 1);
}

TEST(AppAlertsStore, UnmutingAnAppThatIsNotMutedChangesNothingThoughTheScreensAreNotified) {
  ScriptedAlerts alerts;
  alerts.mute("A");
  alerts.store.unmuteApp("B");
  EXPECT_THAT(alerts.muteNames(), ElementsAre("A"));
  EXPECT_EQ(alerts.mutes.count(), 2);
}

TEST(AppAlertsStore, AssigningAnEqualListNotifiesNobody) {
  ScriptedAlerts alerts;
  alerts.mute("A");
  alerts.mutes.clear();
  alerts.store.setAppLimits(std::vector<AppLimit>(alerts.store.appLimits()));
  alerts.store.setMutedApps(std::vector<MutedApp>(alerts.store.mutedApps()));
  EXPECT_EQ(alerts.limits.count(), 0);
  EXPECT_EQ(alerts.mutes.count(), 0);
}

TEST(AppAlertsStore, AssigningAnotherListNotifiesOnce) {
  ScriptedAlerts alerts;
  auto limits = alerts.store.appLimits();
  limits[1].isEnabled = false;
  alerts.store.setAppLimits(limits);
  EXPECT_EQ(alerts.store.appLimits(), limits);
  EXPECT_EQ(alerts.limits.count(), 1);
  alerts.store.setMutedApps({MutedApp{}});
  EXPECT_EQ(alerts.mutes.count(), 1);
}

/// One application at 300 percent, and how many findings the rules have told of it so far.
class JudgedAlerts : public ScriptedAlerts {
 public:
  std::size_t told() {
    std::size_t count = 0;
    for (const Insight& insight :
         engine.evaluate(system, {busy}, {}, store.appLimits(), store.mutedApps(), 82)
             .newInsights) {
      if (insight.kind != InsightKind::memoryGrowth) ++count;
    }
    return count;
  }

  JudgedAlerts() {
    busy.id = "/Applications/Xcode.app";
    busy.name = "Xcode";
    busy.cpuPercent = 300;
  }

  SystemSample system;
  AppGroup busy;
  InsightEngine engine{Clock{[this] { return now; }}, systemRandomCalls()};
};

TEST(AppAlertsStoreInTheRules, AMuteOf0HoursIsNoLongerInForceAMomentLater) {
  JudgedAlerts alerts;
  alerts.mute("Xcode", 0);
  EXPECT_EQ(alerts.told(), 0U);
  alerts.now += 0.001;
  EXPECT_EQ(alerts.told(), 1U);
}

TEST(AppAlertsStoreInTheRules, AMuteEndsByTimeAlone) {
  JudgedAlerts alerts;
  alerts.mute("Xcode", 1);
  alerts.now += 3600;
  EXPECT_EQ(alerts.told(), 0U);
  alerts.now += 1;
  EXPECT_EQ(alerts.told(), 1U);
  EXPECT_THAT(alerts.muteNames(), ElementsAre("Xcode"));
}

TEST(AppAlertsStoreInTheRules, ADefaultLimitFindsItsAppByNameAfterFiveMinutes) {
  JudgedAlerts alerts;
  EXPECT_EQ(alerts.told(), 1U) << "the rule for busy applications";
  alerts.now += 299;
  EXPECT_EQ(alerts.told(), 1U);
  alerts.now += 1;
  EXPECT_EQ(alerts.told(), 2U);
}

TEST(AppAlertsStoreInTheRules, TheSameLimitTwiceIsToldTwice) {
  JudgedAlerts alerts;
  alerts.store.setAppLimits({});
  alerts.store.addLimit("x", "xcode", std::nullopt, AppLimitFigure::cpuPercent, 100, 1);
  alerts.store.addLimit("x", "xcode", std::nullopt, AppLimitFigure::cpuPercent, 100, 1);
  EXPECT_EQ(alerts.told(), 3U);
}

}  // namespace
}  // namespace korvantis
