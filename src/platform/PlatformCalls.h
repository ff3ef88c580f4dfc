#pragma once

#include "platform/Clock.h"
#include "platform/FileManagerCalls.h"
#include "platform/IORegistryCalls.h"
#include "platform/LibProcCalls.h"
#include "platform/MachHostCalls.h"
#include "platform/PosixCalls.h"
#include "platform/PowerCalls.h"
#include "platform/ProcessInfoCalls.h"
#include "platform/PropertyListCalls.h"
#include "platform/RandomCalls.h"
#include "platform/RunningApplicationCalls.h"
#include "platform/SocketCalls.h"
#include "platform/SysctlCalls.h"
#include "platform/VolumeCalls.h"
#include "platform/WorkQueueCalls.h"

namespace korvantis {

/// Everything that floors 1 to 5 ask of an operating system, gathered for the engine. A test
/// scripts the members that it needs.
struct PlatformCalls {
  Clock clock;
  RandomCalls random;
  ProcessInfoCalls processInfo;
  PosixCalls posix;
  LibProcCalls libProc;
  SysctlCalls sysctl;
  MachHostCalls machHost;
  IORegistryCalls ioRegistry;
  PowerCalls power;
  VolumeCalls volumes;
  FileManagerCalls files;
  SocketCalls sockets;
  WorkQueueCalls workQueues;
  PropertyListCalls propertyLists;
  RunningApplicationCalls runningApplications;
};

/// The operating system's own answers. The operations of one call share what they remember
/// between them (such as the start time of each pid), so ask once and copy the struct.
PlatformCalls systemPlatformCalls();

}  // namespace korvantis
