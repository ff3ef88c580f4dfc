#pragma once

#include "platform/BackgroundCalls.h"
#include "platform/Clock.h"
#include "platform/HTTPCalls.h"
#include "platform/MainRunLoopCalls.h"
#include "platform/TaskCalls.h"
#include "platform/WorkspaceCalls.h"

namespace korvantis {

/// What the delivery of a phone brief needs. Copies are independent: a delivery works on its own.
struct BriefDeliveryCalls {
  Clock clock;
  MainRunLoopCalls mainRunLoop;
  BackgroundCalls background;
  TaskCalls tasks;
  HTTPCalls http;
  WorkspaceCalls workspace;
};

}  // namespace korvantis
