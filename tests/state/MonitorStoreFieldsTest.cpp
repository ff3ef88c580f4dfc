#include <QMetaProperty>
#include <QSignalSpy>
#include <QVariant>
#include <gtest/gtest.h>
#include <ostream>
#include <set>
#include <string>

#include "state/ScriptedMonitor.h"

namespace korvantis {
namespace {

using test::ScriptedMonitor;

/// One property that screens write, how it starts, and another value that it takes.
struct FieldCase {
  const char* name;
  QVariant start;
  QVariant other;
};

void PrintTo(const FieldCase& field, std::ostream* stream) {
  *stream << field.name;
}

class MonitorStoreField : public ::testing::TestWithParam<FieldCase> {
 protected:
  ScriptedMonitor monitor;
};

TEST_P(MonitorStoreField, NotifiesExactlyOnARealChange) {
  MonitorStore& store = monitor.store();
  const QMetaObject& meta = *store.metaObject();
  const QMetaProperty property = meta.property(meta.indexOfProperty(GetParam().name));
  const QSignalSpy spy(&store, property.notifySignal());

  EXPECT_EQ(property.read(&store), GetParam().start);
  ASSERT_TRUE(property.write(&store, GetParam().start));
  EXPECT_EQ(spy.count(), 0);
  ASSERT_TRUE(property.write(&store, GetParam().other));
  EXPECT_EQ(property.read(&store), GetParam().other);
  EXPECT_EQ(spy.count(), 1);
  ASSERT_TRUE(property.write(&store, GetParam().other));
  EXPECT_EQ(spy.count(), 1);
  ASSERT_TRUE(property.write(&store, GetParam().start));
  EXPECT_EQ(spy.count(), 2);
}

INSTANTIATE_TEST_SUITE_P(
    EveryField, MonitorStoreField,
    ::testing::Values(FieldCase{"selectedPane", "overview", "agents"},
                      FieldCase{"selectedProcessSubTab", "apps", "idleServers"},
                      FieldCase{"processSortField", "memory", "energy"},
                      FieldCase{"processSearchText", "", "node"},
                      FieldCase{"showSystemProcesses", false, true},
                      FieldCase{"showSettingsModal", false, true},
                      FieldCase{"selectedSettingsTab", "Menu Bar", "Remote Alerts"},
                      FieldCase{"selectedHistoryRange", "hour24", "year1"},
                      FieldCase{"selectedHistoryMetric", "cpu", "neuralEngine"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(MonitorStoreFields, EveryPropertyIsConstantOrNotifies) {
  const QMetaObject& meta = MonitorStore::staticMetaObject;
  int notifying = 0;
  std::set<int> signalIndexes;
  for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
    const QMetaProperty property = meta.property(index);
    EXPECT_NE(property.isConstant(), property.hasNotifySignal()) << property.name();
    if (!property.hasNotifySignal()) continue;
    ++notifying;
    signalIndexes.insert(property.notifySignalIndex());
    EXPECT_EQ(property.notifySignal().name(), QByteArray(property.name()) + "Changed");
  }
  EXPECT_EQ(notifying, 27);
  EXPECT_EQ(signalIndexes.size(), 27U);
}

TEST(MonitorStoreFields, ExpandedIdsNotifyExactlyOnARealChange) {
  ScriptedMonitor monitor;
  MonitorStore& store = monitor.store();
  const QSignalSpy spy(&store, &MonitorStore::expandedAppGroupIDsChanged);
  store.setExpandedAppGroupIDs({"daemon:node", "/Applications/Mail.app"});
  store.setExpandedAppGroupIDs({"/Applications/Mail.app", "daemon:node"});

  EXPECT_EQ(spy.count(), 1);
  EXPECT_TRUE(store.expandedAppGroupIDs().contains("daemon:node"));
}

TEST(MonitorStoreFields, TheIntervalNotifiesExactlyOnARealChange) {
  ScriptedMonitor monitor;
  MonitorStore& store = monitor.store();
  const QSignalSpy spy(&store, &MonitorStore::refreshIntervalSecondsChanged);
  store.setRefreshInterval(2.0);
  EXPECT_EQ(spy.count(), 0);
  store.setRefreshInterval(1.0);
  store.setRefreshInterval(1.0);
  EXPECT_EQ(spy.count(), 1);
}

TEST(MonitorStoreFields, ANameThatIsNoCaseChangesNothing) {
  ScriptedMonitor monitor;
  MonitorStore& store = monitor.store();
  store.setSelectedPaneName("Sound");
  store.setSelectedProcessSubTabName("idleservers");
  store.setProcessSortFieldName("");
  store.setSelectedHistoryRangeName("24h");
  store.setSelectedHistoryMetricName("CPU");

  EXPECT_EQ(store.selectedPane(), OstrelPane::overview);
  EXPECT_EQ(store.selectedProcessSubTab(), ProcessesSubTab::apps);
  EXPECT_EQ(store.processSortField(), ProcessSortField::memory);
  EXPECT_EQ(store.selectedHistoryRange(), HistoryRangeOption::hour24);
  EXPECT_EQ(store.selectedHistoryMetric(), HistoryMetricKind::cpu);
}

}  // namespace
}  // namespace korvantis
