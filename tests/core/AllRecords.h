#pragma once

#include <gtest/gtest.h>

#include "core/AppAudioStream.h"
#include "core/AppLimit.h"
#include "core/AudioDeviceItem.h"
#include "core/EngineSnapshot.h"
#include "core/HardwareInfo.h"
#include "core/HistoricalAppSummary.h"
#include "core/MutedApp.h"
#include "core/QuitSafetyResult.h"
#include "core/Reading.h"

namespace korvantis::test {

/// Every record that has a JSON form.
using AllRecords =
    testing::Types<HardwareInfo, SystemSample, BatterySample, SensorItem, FanReading, ThermalSample,
                   HelperShare, ProcessSample, AppGroup, ContainerSample, DevProject, IdleServer,
                   ListeningPortItem, Insight, AppLimit, MutedApp, QuitSafetyResult, Reading,
                   HistoricalAppSummary, AgentSession, PlanLimitStatus, SleepBlocker,
                   BluetoothPeripheral, MountedVolume, AudioDeviceItem, AppAudioStream,
                   EngineSnapshot>;

}  // namespace korvantis::test
