#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>

#include "support/TemporaryFolder.h"

namespace korvantis::test {
namespace {

/// Gives the whole program a home of its own before its first test: engines over the real system
/// keep a history, which must not be that of the user who runs the tests.
class PrivateHome : public testing::Environment {
 public:
  void SetUp() override {
    home = std::make_unique<TemporaryFolder>();
    ::setenv("HOME", home->path().c_str(), 1);
    ::setenv("TMPDIR", home->folderAt("temporary").c_str(), 1);
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("XDG_CONFIG_HOME");
  }
  void TearDown() override {
    ::unsetenv("TMPDIR");
    home.reset();
  }

 private:
  std::unique_ptr<TemporaryFolder> home;
};

// Owned by GoogleTest.
[[maybe_unused]] const testing::Environment* const privateHome =
    testing::AddGlobalTestEnvironment(new PrivateHome);

}  // namespace
}  // namespace korvantis::test
