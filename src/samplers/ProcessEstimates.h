#pragma once

#include "core/ProcessSample.h"

namespace korvantis {

/// Fills the figures of a process that no counter gives, from those that are filled already:
/// power from CPU, GPU and wakeups, network traffic from disk traffic. Any thread.
void addEstimates(ProcessSample& sample);

}  // namespace korvantis
