#pragma once

#include "core/EngineSnapshot.h"

namespace korvantis {

/// Warm and short of memory, with a fan under manual control and everything else that a card of the
/// overview can show.
SystemSample makeSampleSystem();

/// A developer's machine at work: two applications with helpers, a tool, a part of the system, and
/// something in each of the other lists of the processes pane and in each card of the overview.
EngineSnapshot makeSampleMachine();

/// 300 applications of 1,000 processes in all. Each `round` has other figures, and so another
/// order by load.
EngineSnapshot makeLargeMachine(int round);

}  // namespace korvantis
