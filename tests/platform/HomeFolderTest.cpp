#include <cstdlib>
#include <gtest/gtest.h>
#include <pwd.h>
#include <string>
#include <unistd.h>

#include "platform/FileManagerCalls.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::TemporaryFolder;

/// The home folder where `$HOME` is `variable`; with nullptr it is not set.
std::string homeWith(const char* variable) {
  return ChildProcess::answerOf([&] {
    if (variable != nullptr) {
      ::setenv("HOME", variable, 1);
    } else {
      ::unsetenv("HOME");
    }
    return systemFileManagerCalls().homeDirectoryForCurrentUser();
  });
}

std::string homeOfPasswordEntry() {
  const passwd* const entry = ::getpwuid(::getuid());
  return entry == nullptr ? "/" : entry->pw_dir;
}

TEST(HomeFolder, IsWhatTheEnvironmentSays) {
  const TemporaryFolder files;
  EXPECT_EQ(homeWith(files.path().c_str()), files.path());
}

TEST(HomeFolder, HasNoLinksAndNoSlashAtItsEndBecauseWorkingDirectoriesHaveNone) {
  const TemporaryFolder files;
  files.folderAt("disk/ada");
  files.link("home", "disk");
  EXPECT_EQ(homeWith(files.path("home/ada").c_str()), files.path("disk/ada"));
  EXPECT_EQ(homeWith((files.path("home/ada") + "/").c_str()), files.path("disk/ada"));
  EXPECT_EQ(homeWith(files.path("home/../home/./ada").c_str()), files.path("disk/ada"));
}

TEST(HomeFolder, ThatIsNotThereStaysAsItIsWritten) {
  EXPECT_EQ(homeWith("/nonexistent"), "/nonexistent");
}

TEST(HomeFolder, ThatIsNoTextComesAsItsBytes) {
  const TemporaryFolder files;
  const std::string home = files.folderAt("\xFF");
  EXPECT_EQ(homeWith(home.c_str()), home);
}

TEST(HomeFolder, ThatIsMissingEmptyOrRelativeInTheEnvironmentIsThatOfThePasswordEntry) {
  EXPECT_EQ(homeWith(nullptr), homeOfPasswordEntry());
  EXPECT_EQ(homeWith(""), homeOfPasswordEntry());
  EXPECT_EQ(homeWith("ada"), homeOfPasswordEntry());
}

TEST(HomeFolder, OfAUserWithoutAPasswordEntryIsTheTop) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become another user";
  const std::string answer = ChildProcess::answerOf([] {
    constexpr uid_t nobodyAtAll = 3'000'000'000;
    if (::setresuid(nobodyAtAll, nobodyAtAll, nobodyAtAll) != 0) return std::string("refused");
    ::unsetenv("HOME");
    return systemFileManagerCalls().homeDirectoryForCurrentUser();
  });
  EXPECT_EQ(answer, "/");
}

}  // namespace
}  // namespace korvantis
