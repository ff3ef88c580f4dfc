#include <gtest/gtest.h>

#include "AllRecords.h"
#include "FilledRecord.h"

namespace korvantis {
namespace {

using test::filledRecord;

/// That a record is told apart by one of its fields.
template <typename Record, typename Value>
void expectIdentity(Value Record::*member) {
  const auto record = filledRecord<Record>();
  EXPECT_EQ(record.identity(), record.*member);
}

TEST(RecordIdentities, AreTheNamedFields) {
  expectIdentity(&SensorItem::name);
  expectIdentity(&AppAudioStream::appID);
  expectIdentity(&ContainerSample::id);
  expectIdentity(&PlanLimitStatus::tool);
  expectIdentity(&BluetoothPeripheral::name);
  expectIdentity(&HistoricalAppSummary::appID);
  expectIdentity(&AppGroup::id);
  expectIdentity(&MutedApp::appID);
  expectIdentity(&FanReading::id);
  expectIdentity(&Reading::start);
  expectIdentity(&DevProject::path);
  expectIdentity(&MountedVolume::path);
  expectIdentity(&AudioDeviceItem::id);
  expectIdentity(&IdleServer::pid);
  expectIdentity(&AgentSession::pid);
  expectIdentity(&ProcessSample::pid);
  expectIdentity(&Insight::id);
  expectIdentity(&AppLimit::id);
}

TEST(RecordIdentities, HelperShareIsToldApartByTheRawValueOfItsRole) {
  HelperShare share;
  share.role = HelperRole::extensionHost;
  EXPECT_EQ(share.identity(), "Extensions");
}

TEST(RecordIdentities, ListeningPortItemOfPort3000AndPid812IsToldApartAs3000Hyphen812) {
  ListeningPortItem item;
  item.port = 3000;
  item.pid = 812;
  EXPECT_EQ(item.identity(), "3000-812");
}

TEST(RecordIdentities, SleepBlockerIsToldApartByPidAndAssertionType) {
  SleepBlocker blocker;
  blocker.pid = 77;
  blocker.assertionType = "PreventUserIdleSystemSleep";
  EXPECT_EQ(blocker.identity(), "77-PreventUserIdleSystemSleep");
}

}  // namespace
}  // namespace korvantis
