#include <grp.h>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/statvfs.h>
#include <unistd.h>

#include "platform/PlatformCalls.h"
#include "platform/SMCCalls.h"
#include "support/ChildProcess.h"

namespace korvantis {
namespace {

using test::ChildProcess;

/// Asks everything once; gives what must be so on any machine.
std::string askEverything() {
  const PlatformCalls calls = systemPlatformCalls();
  std::ostringstream text;
  const auto paths = calls.volumes.mountedVolumePaths();
  text << (paths && !paths->empty() && paths->front() == "/" ? "root " : "no root ");
  const auto values = calls.volumes.resourceValues("/");
  struct statvfs root {};
  ::statvfs("/", &root);
  const auto total = static_cast<std::int64_t>(root.f_blocks * root.f_frsize);
  text << (values && values->totalCapacity == total ? "capacity " : "no capacity ");
  const std::int64_t state = calls.processInfo.thermalState();
  text << (state >= 0 && state <= 3 ? "state " : "no state ");
  for (const char* const name : {"IOAccelerator", "AppleH11ANEInterface", "AppleSmartBattery",
                                 "AppleDeviceManagementHIDEventService"}) {
    const auto services = calls.ioRegistry.matchingServices(name);
    text << (services ? "match " : "no match ");
  }
  text << (calls.power.IOPMCopyAssertionsByProcess() ? "assertions" : "no assertions");
  return text.str();
}

const char* const everything = "root capacity state match match match match assertions";

TEST(HardwareLive, EverythingIsAskedOfTheRunningSystem) {
  EXPECT_EQ(askEverything(), everything);
}

TEST(HardwareLive, NobodyGetsTheSameWithoutPrivilege) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become another user";
  constexpr uid_t nobody = 65534;
  EXPECT_EQ(ChildProcess::answerOf([]() -> std::string {
              if (::setgroups(0, nullptr) != 0 || ::setresgid(nobody, nobody, nobody) != 0 ||
                  ::setresuid(nobody, nobody, nobody) != 0) {
                return "still privileged";
              }
              return askEverything();
            }),
            everything);
}

TEST(HardwareLive, TheControllerTakesQuestionsWhateverItHas) {
  const SMCCalls calls = systemSMCCalls();
  const std::uint32_t service = calls.IOServiceGetMatchingService("AppleSMC");
  std::uint32_t connection = 0;
  ASSERT_EQ(calls.IOServiceOpen(service, 0, &connection), 0);
  SMCKeyData question;
  question.key = smcFourCharacterCode("ABCD");
  question.data8 = smcKeyInformationCommand;
  SMCKeyData answer;
  std::size_t size = sizeof answer;
  EXPECT_EQ(calls.IOConnectCallStructMethod(connection, smcExchangeSelector, &question,
                                            sizeof question, &answer, &size),
            0);
  EXPECT_NE(answer.result, 0) << "no machine has such a key";
  EXPECT_EQ(calls.IOServiceClose(connection), 0);
}

}  // namespace
}  // namespace korvantis
