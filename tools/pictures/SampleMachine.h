#pragma once

#include <string>

#include "core/EngineSnapshot.h"
#include "state/MonitorStoreCalls.h"

namespace korvantis::pictures {

/// A machine that is made up, busy enough that every screen is full and free of anybody's names.
/// Nothing that is done to it has an effect outside. Main thread.
class SampleMachine {
 public:
  /// `bundleFolder` is an empty folder for the applications' bundles.
  explicit SampleMachine(std::string bundleFolder);

  /// What a store asks of outside, answered by this machine, which must outlive the store.
  MonitorStoreCalls storeCalls();

  /// The machine one tick later.
  EngineSnapshot sample();

 private:
  std::string folder;
  double ticks = 0;
  EngineSnapshot last;
};

}  // namespace korvantis::pictures
