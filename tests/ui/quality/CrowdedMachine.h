#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <vector>

#include "core/EngineSnapshot.h"
#include "core/HardwareInfo.h"
#include "core/HistoricalAppSummary.h"
#include "core/Reading.h"
#include "platform/AudioObjectCalls.h"

namespace korvantis::test {

/// A simulated machine that has everything: applications with helpers, tools and daemons,
/// projects, containers, ports, forgotten servers, agents, findings, fans, volumes, devices. The
/// same turn always gives the same snapshot; from turn to turn figures change, ranks change, and
/// some applications come and go.
struct CrowdedMachine {
  int applications = 300;
  int processes = 1000;
  /// Names as people really have them at their worst: sixty letters and more, other scripts,
  /// written from right to left, with emoji.
  bool hasLongNames = false;
  /// Nothing strains it, holds it awake or waits to be told, and its battery feeds it: what the
  /// screens say in place of all that.
  bool isAtRest = false;

  EngineSnapshot snapshot(int turn) const;
  HardwareInfo hardware() const;
  /// A day of readings.
  std::vector<Reading> readings() const;
  std::vector<HistoricalAppSummary> appSummaries() const;
  /// Three sound devices, each for both directions.
  AudioObjectCalls audio() const;

  /// Whether `text` holds a name of this machine: such a text may be cut at its end where there is
  /// no room, the program's own words and figures may not.
  static bool hasForeignName(const QString& text);

  /// The moment of turn 0.
  static constexpr double startTime = 1'700'000'000;

 private:
  std::string name(int number) const;
  ProcessSample process(int number, int turn) const;
  AppGroup application(int number, int turn) const;
  SystemSample system(int turn) const;
  static void putToRest(EngineSnapshot& snapshot);
  DevProject project(int number, const AppGroup& owner) const;
  ContainerSample container(int number) const;
  Insight insight(int number, int turn) const;
};

}  // namespace korvantis::test
